// Central-difference and Scharr gradients of the interior, packed
// (width-2) x (height-2) outputs.
#include "imgproc/filters/gradient.h"
#include "imgproc/filters/gradient_kernels.h"

using namespace pxr::grad;

void pxrImageGradientInterleaveds16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    interleavedImage<uint8_t, int16_t, Raw<int16_t>>(src, srcWidth, srcHeight, srcStride, gradients, gradStride,
                                                     central);
}

void pxrImageGradientInterleavedf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* gradients, uint32_t gradStride) {
    interleavedImage<uint8_t, float, Raw<float>>(src, srcWidth, srcHeight, srcStride, gradients, gradStride,
                                                 central);
}

void pxrImageGradientPlanars16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    planarImage<uint8_t, int16_t, Raw<int16_t>>(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride, central);
}

void pxrImageGradientPlanarf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                float* dx, float* dy, uint32_t dxyStride) {
    planarImage<uint8_t, float, Raw<float>>(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride, central);
}

void pxrImageGradientScharrInterleaveds16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    interleavedImage<uint8_t, int16_t, Raw<int16_t>>(src, srcWidth, srcHeight, srcStride, gradients, gradStride,
                                                     scharr);
}
