// Gaussian halving (5x5 and 3x3 binomial kernels, rounded) and doubling
// (5-tap binomial interpolation), edges mirrored about the edge sample.
#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_gauss_kernels.h"
#include "imgproc/scale/scale_gauss_ref.h"

using namespace pxr::scale;

void pxrScaleDownBy2Gaussian5x5u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    gauss::halveImage<2>(src, srcWidth, srcHeight, srcStride, dst, srcWidth / 2, srcHeight / 2, dstStride,
                         gauss::kHalve5u8Reference);
}

void pxrScaleDownBy2Gaussian5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    pxrScaleDownBy2Gaussian5x5u8_v2C(src, srcWidth, srcHeight, srcWidth, dst, srcWidth / 2);
}

int pxrScaleDownBy2Gaussian3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride) {
    gauss::halveImage<1>(src, srcWidth, srcHeight, srcStride, dst, srcWidth / 2, srcHeight / 2, dstStride,
                         gauss::kHalve3u8Reference);
    return 0;
}

void pxrScaleDownBy2Gaussian5x5f32_v2C(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, float* dst, uint32_t dstStride) {
    gauss::halveImage<2>(src, srcWidth, srcHeight, srcStride, dst, srcWidth / 2, srcHeight / 2, dstStride,
                         gauss::kHalve5f32Reference);
}

void pxrScaleDownBy2Gaussian5x5f32C(const float* src, uint32_t srcWidth, uint32_t srcHeight, float* dst) {
    pxrScaleDownBy2Gaussian5x5f32_v2C(src, srcWidth, srcHeight, srcWidth * 4, dst, srcWidth / 2 * 4);
}

void pxrScaleUpBy2Gaussian5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride) {
    gauss::doubleImage(src, srcWidth, srcHeight, srcStride, dst, dstStride, gauss::kDoubleReference);
}
