// Doubling: the cubic polyphase up-scaler and the [1 3] up-samplers, on
// planes and on interleaved two-channel planes.
#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_up_kernels.h"

namespace {

using namespace pxr::scale::up;

void polyVerticalC(const uint8_t* const* rows, const int32_t* w, int32_t* v, uint32_t n) {
    for (uint32_t c = 0; c < n; ++c) v[c] = polyColumn(rows, w, c);
}
void polyHorizontalC(const int32_t* v, uint8_t* out, uint32_t n, uint32_t ch) {
    polyHorizontalSpan(v, out, 0, n, ch);
}
void blendRowsC(const uint8_t* nearer, const uint8_t* farther, uint8_t* out, uint32_t n) {
    for (uint32_t b = 0; b < n; ++b) out[b] = blend(nearer[b], farther[b]);
}
void columnSumsC(const uint8_t* nearer, const uint8_t* farther, uint16_t* sums, uint32_t n) {
    for (uint32_t b = 0; b < n; ++b) sums[b] = blendSum(nearer[b], farther[b]);
}
void upsampleHorizontalC(const uint16_t* s, uint8_t* out, uint32_t n, uint32_t ch) {
    upsampleHorizontalSpan(s, out, 0, n, ch);
}

constexpr PolyKernels kPoly{polyVerticalC, polyHorizontalC};
constexpr UpsampleKernels kUpsample{blendRowsC, columnSumsC, upsampleHorizontalC};

}  // namespace

void pxrScaleUpPolyu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint8_t* dst, uint32_t dstStride) {
    polyDouble(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kPoly);
}
void pxrScaleUpPolyInterleaveu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride) {
    polyDouble(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kPoly);
}
void pxrUpsampleVerticalu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride) {
    upsampleVertical(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kUpsample);
}
void pxrUpsampleHorizontalu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    upsampleHorizontal(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kUpsample);
}
void pxrUpsample2Du8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                      uint8_t* dst, uint32_t dstStride) {
    upsample2D(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kUpsample);
}
void pxrUpsampleVerticalInterleavedu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    upsampleVertical(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kUpsample);
}
void pxrUpsampleHorizontalInterleavedu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    upsampleHorizontal(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kUpsample);
}
void pxrUpsample2DInterleavedu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride) {
    upsample2D(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kUpsample);
}
