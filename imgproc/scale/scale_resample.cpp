// Resampling to a given size: nearest neighbour, bilinear and exact area.
#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_resample_drivers.h"

namespace {

using namespace pxr::scale::resample;

void nearestRowC(const uint8_t* row, const uint32_t* index, uint8_t* out, uint32_t n, uint32_t /*srcWidth*/) {
    for (uint32_t x = 0; x < n; ++x) out[x] = row[index[x]];
}
void linearVerticalC(const uint8_t* top, const uint8_t* bottom, uint32_t g, uint16_t* sums, uint32_t n) {
    linearVertical(top, bottom, g, sums, 0, n);
}
void linearHorizontalC(const uint16_t* sums, const uint32_t* index, const uint32_t* frac, uint8_t* out, uint32_t n,
                       uint32_t /*srcWidth*/) {
    linearHorizontal(sums, index, frac, out, 0, n);
}
void areaVerticalC(const uint8_t* row, uint32_t stride, const uint32_t* weights, uint32_t taps, uint32_t* sums,
                   uint32_t n) {
    areaVertical(row, stride, weights, taps, sums, 0, n);
}

constexpr Kernels kReference{nearestRowC, linearVerticalC, linearHorizontalC, areaVerticalC};

}  // namespace

void pxrScaleDownNNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    nearest({src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride}, kReference);
}

void pxrScaleDownu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                     uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    area({src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride}, kReference);
}

void pxrScaleDownBLu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    linear({src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride}, kReference);
}

int pxrScaleu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    return linear({src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride}, kReference);
}

int pxrScaleu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                   uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride, uint32_t interpolation) {
    return scale({src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride}, interpolation,
                 kReference);
}
