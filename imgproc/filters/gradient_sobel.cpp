// 3x3 Sobel gradients normalised by 8, packed (width-2) x (height-2) outputs.
#include "imgproc/filters/gradient.h"
#include "imgproc/filters/gradient_kernels.h"

using namespace pxr::grad;

void pxrImageGradientSobelInterleaveds16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    interleavedImage<uint8_t, int16_t, Shift3<int16_t>>(src, srcWidth, srcHeight, srcStride, gradients,
                                                        gradStride, sobel);
}

int pxrImageGradientSobelInterleaveds16_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    pxrImageGradientSobelInterleaveds16C(src, srcWidth, srcHeight, srcStride, gradients, gradStride);
    return 0;
}

void pxrImageGradientSobelInterleavedf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, float* gradients, uint32_t gradStride) {
    interleavedImage<uint8_t, float, Eighth>(src, srcWidth, srcHeight, srcStride, gradients, gradStride, sobel);
}

void pxrImageGradientSobelPlanars16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    planarImage<uint8_t, int16_t, Shift3<int16_t>>(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride, sobel);
}

int pxrImageGradientSobelPlanars16_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    pxrImageGradientSobelPlanars16C(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
    return 0;
}

void pxrImageGradientSobelPlanars8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, int8_t* dx, int8_t* dy, uint32_t dxyStride) {
    planarImage<uint8_t, int8_t, Shift3<int8_t>>(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride, sobel);
}

void pxrImageGradientSobelPlanarf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride) {
    planarImage<uint8_t, float, Eighth>(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride, sobel);
}

void pxrImageGradientSobelPlanarf32f32C(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride) {
    planarImage<float, float, Same<float>>(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride, sobelF32);
}
