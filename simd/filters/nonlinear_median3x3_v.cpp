// 3x3 median, vector kind: the interior by a min/max network on whole
// vectors of bytes, the border and short rows by the reference's kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/nonlinear_median3x3_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/nonlinear_median_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

// Median of nine taps at output columns [x, x + lanes): the three columns
// are sorted, then med3(max of minima, med3 of medians, min of maxima).
template <class D>
HWY_INLINE hn::Vec<D> Median9At(D d, const uint8_t* t, const uint8_t* m, const uint8_t* b, size_t x) {
    auto sort3 = [](auto& a, auto& b2, auto& c) {
        const auto lo = hn::Min(a, b2), hi = hn::Max(a, b2);
        a = hn::Min(lo, c);
        b2 = hn::Max(lo, hn::Min(hi, c));
        c = hn::Max(hi, c);
    };
    auto med3 = [](auto a, auto b2, auto c) { return hn::Max(hn::Min(a, b2), hn::Min(hn::Max(a, b2), c)); };
    auto l0 = hn::LoadU(d, t + x - 1), m0 = hn::LoadU(d, m + x - 1), h0 = hn::LoadU(d, b + x - 1);
    auto l1 = hn::LoadU(d, t + x), m1 = hn::LoadU(d, m + x), h1 = hn::LoadU(d, b + x);
    auto l2 = hn::LoadU(d, t + x + 1), m2 = hn::LoadU(d, m + x + 1), h2 = hn::LoadU(d, b + x + 1);
    sort3(l0, m0, h0);
    sort3(l1, m1, h1);
    sort3(l2, m2, h2);
    const auto lo = hn::Max(hn::Max(l0, l1), l2);
    const auto hi = hn::Min(hn::Min(h0, h1), h2);
    return med3(lo, med3(m0, m1, m2), hi);
}

}  // namespace

// Interior rows [1, height-1), columns [1, width-1).
void MedianInterior(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
                    uint32_t dstStride) {
    const hn::ScalableTag<uint8_t> d;
    const size_t N = hn::Lanes(d);
    if (width < 3 || height < 3) return;
    const size_t n = width - 2;  // outputs per row
    for (uint32_t y = 1; y + 1 < height; ++y) {
        const uint8_t* m = src + size_t{y} * srcStride;
        const uint8_t* t = m - srcStride;
        const uint8_t* b = m + srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        if (n < N) {
            median3::interiorSpan(t, m, b, out, 1, width - 1);
            continue;
        }
        size_t x = 1;
        for (; x + N <= n + 1; x += N) hn::StoreU(Median9At(d, t, m, b, x), d, out + x);
        // The last vector overlaps the previous one with identical results.
        if (x < n + 1) hn::StoreU(Median9At(d, t, m, b, n + 1 - N), d, out + n + 1 - N);
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/nonlinear_v.h"

namespace pxr {
HWY_EXPORT(MedianInterior);

static void medianInterior(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
                           uint32_t dstStride) {
    HWY_DYNAMIC_DISPATCH(MedianInterior)(src, width, height, srcStride, dst, dstStride);
}
}  // namespace pxr

void pxrFilterMedian3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride) {
    pxr::medianInterior(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

int pxrFilterMedian3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    pxr::medianInterior(src, srcWidth, srcHeight, srcStride, dst, dstStride);
    pxr::median3::border(src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType, borderValue);
    return 0;
}
#endif
