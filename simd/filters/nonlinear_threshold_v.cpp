// Fixed, range and Otsu thresholds, vector kind: compare and select on whole
// vectors of bytes; the Otsu histogram in four interleaved tables.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/nonlinear_threshold_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/nonlinear_threshold_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

// Runs fn(src row, dst row, x) over vectors of each row; rows shorter than a
// vector go to `scalar`.
template <class Fn, class Scalar>
HWY_INLINE void Rows(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
                     uint32_t dstStride, Fn&& fn, Scalar&& scalar) {
    const size_t L = hn::Lanes(hn::ScalableTag<uint8_t>());
    for (uint32_t y = 0; y < height; ++y) {
        const uint8_t* s = src + size_t{y} * srcStride;
        uint8_t* d = dst + size_t{y} * dstStride;
        if (width < L) {
            scalar(s, d);
            continue;
        }
        size_t x = 0;
        for (; x + L <= width; x += L) fn(s, d, x);
        // The last vector overlaps the previous one; in place it rereads
        // bytes already written, so it is finished by the scalar kernel.
        if (x < width) {
            if (s == d)
                scalar(s + x, d + x, width - x);
            else
                fn(s, d, width - L);
        }
    }
}

}  // namespace

void Threshold(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
               uint32_t dstStride, uint8_t t, bool inverted) {
    const hn::ScalableTag<uint8_t> d;
    const auto vt = hn::Set(d, t);
    Rows(
        src, width, height, srcStride, dst, dstStride,
        [&](const uint8_t* s, uint8_t* o, size_t x) {
            const auto v = hn::LoadU(d, s + x);
            const auto ge = hn::Eq(hn::Max(v, vt), v);
            hn::StoreU(inverted ? hn::VecFromMask(d, hn::Not(ge)) : hn::VecFromMask(d, ge), d, o + x);
        },
        [&](const uint8_t* s, uint8_t* o, size_t n = 0) { thresh::span(s, o, 0, n ? n : width, t, inverted); });
}

void Range(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
           uint32_t dstStride, uint8_t lo, uint8_t hi) {
    const hn::ScalableTag<uint8_t> d;
    const auto vlo = hn::Set(d, lo), vhi = hn::Set(d, hi);
    Rows(
        src, width, height, srcStride, dst, dstStride,
        [&](const uint8_t* s, uint8_t* o, size_t x) {
            const auto v = hn::LoadU(d, s + x);
            const auto in = hn::And(hn::Eq(hn::Max(v, vlo), v), hn::Eq(hn::Min(v, vhi), v));
            hn::StoreU(hn::VecFromMask(d, in), d, o + x);
        },
        [&](const uint8_t* s, uint8_t* o, size_t n = 0) { thresh::rangeSpan(s, o, 0, n ? n : width, lo, hi); });
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "pixora/types.h"
#include "simd/filters/nonlinear_v.h"

namespace pxr {
HWY_EXPORT(Threshold);
HWY_EXPORT(Range);

static void threshold(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
                      uint32_t dstStride, uint8_t t, bool inverted) {
    HWY_DYNAMIC_DISPATCH(Threshold)(src, width, height, srcStride, dst, dstStride, t, inverted);
}

static void range(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
                  uint32_t dstStride, uint8_t lo, uint8_t hi) {
    HWY_DYNAMIC_DISPATCH(Range)(src, width, height, srcStride, dst, dstStride, lo, hi);
}

// Four tables take consecutive pixels, so repeated grey levels do not wait
// on one counter.
static void histogram(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, uint32_t* hist) {
    uint32_t part[4][256] = {};
    for (uint32_t y = 0; y < height; ++y) {
        const uint8_t* s = src + size_t{y} * stride;
        uint32_t x = 0;
        for (; x + 4 <= width; x += 4) {
            ++part[0][s[x]];
            ++part[1][s[x + 1]];
            ++part[2][s[x + 2]];
            ++part[3][s[x + 3]];
        }
        thresh::countSpan(s, x, width, part[0]);
    }
    for (int i = 0; i < 256; ++i) hist[i] = part[0][i] + part[1][i] + part[2][i] + part[3][i];
}
}  // namespace pxr

void pxrFilterThresholdu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride, int32_t threshold) {
    pxr::threshold(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::thresh::effective(threshold), false);
}

int pxrFilterThresholdu8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int32_t threshold, uint32_t thresholdType) {
    pxr::threshold(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::thresh::effective(threshold),
                   thresholdType == 1);
    return PIXORA_STATUS_OK;
}

void pxrFilterThresholdRangeu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold) {
    pxr::range(src, srcWidth, srcHeight, srcStride, dst, dstStride, lowThreshold, highThreshold);
}

int pxrFilterThresholdRangeu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold) {
    pxr::range(src, srcWidth, srcHeight, srcStride, dst, dstStride, lowThreshold, highThreshold);
    return PIXORA_STATUS_OK;
}

void pxrFilterThresholdOtsuu8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, uint32_t thresholdType) {
    uint32_t hist[256];
    pxr::histogram(src, width, height, srcStride, hist);
    const uint8_t t = pxr::thresh::otsu(hist, uint64_t{width} * height);
    pxr::threshold(src, width, height, srcStride, dst, dstStride, pxr::thresh::effective(t), thresholdType == 1);
}
#endif
