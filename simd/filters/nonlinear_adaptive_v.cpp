// Adaptive thresholds, vector kind: the local mean from the vector kinds of
// the Gaussian and box filters, the comparison in 16-bit lanes.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/nonlinear_adaptive_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/nonlinear_adaptive_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Every row: dst holds the mean on entry and the result on return.
void Compare(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
             uint32_t dstStride, uint8_t maxValue, int32_t value, bool inverted) {
    const hn::ScalableTag<int16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const size_t L = hn::Lanes(d16);
    const auto limit = hn::Set(d16, static_cast<int16_t>(-value));
    const auto on = hn::Set(d16, maxValue);
    for (uint32_t y = 0; y < height; ++y) {
        const uint8_t* s = src + size_t{y} * srcStride;
        uint8_t* io = dst + size_t{y} * dstStride;
        size_t x = 0;
        for (; x + L <= width; x += L) {
            const auto v = hn::PromoteTo(d16, hn::LoadU(d8, s + x)), m = hn::PromoteTo(d16, hn::LoadU(d8, io + x));
            const auto diff = hn::Sub(v, m);
            auto pass = hn::Gt(diff, limit);
            if (inverted) pass = hn::Not(pass);
            hn::StoreU(hn::DemoteTo(d8, hn::IfThenElseZero(pass, on)), d8, io + x);
        }
        // The mean is overwritten in place, so the remainder is not redone
        // by an overlapping vector.
        adaptive::compareSpan(s, io, static_cast<uint32_t>(x), width, maxValue, value, inverted);
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/filters_v.h"
#include "simd/filters/nonlinear_v.h"
#include "simd/filters/smooth_v.h"

namespace pxr {
namespace {

HWY_EXPORT(Compare);

using MeanFn = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);

void gaussian3(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    pxrFilterGaussian3x3u8_v3V(s, w, h, ss, d, ds, 0, 0);
}
void gaussian5(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    pxrFilterGaussian5x5u8V(s, w, h, ss, d, ds, 1);
}
void gaussian11(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    pxrFilterGaussian11x11u8V(s, w, h, ss, d, ds, 1);
}

void runAdaptive(MeanFn mean, const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                 uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst, uint32_t dstStride) {
    if (adaptive::shortCut(width, height, dst, dstStride, maxValue, thresholdType, value)) return;
    mean(src, width, height, srcStride, dst, dstStride);
    HWY_DYNAMIC_DISPATCH(Compare)(src, width, height, srcStride, dst, dstStride, maxValue, value, thresholdType == 1);
}

}  // namespace
}  // namespace pxr

void pxrAdaptiveThresholdGaussian3x3u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride) {
    pxr::runAdaptive(pxr::gaussian3, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdGaussian5x5u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride) {
    pxr::runAdaptive(pxr::gaussian5, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdGaussian11x11u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                          uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                          uint32_t dstStride) {
    pxr::runAdaptive(pxr::gaussian11, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdMean3x3u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride) {
    pxr::runAdaptive(pxrBoxFilter3x3u8V, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdMean5x5u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride) {
    pxr::runAdaptive(pxrBoxFilter5x5u8V, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdMean11x11u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                      uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                      uint32_t dstStride) {
    pxr::runAdaptive(pxrBoxFilter11x11u8V, src, width, height, srcStride, maxValue, thresholdType, value, dst,
                     dstStride);
}
#endif
