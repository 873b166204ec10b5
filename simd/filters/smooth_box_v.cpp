// Box filters on bytes, vector kind: the interior in vectors of 16-bit sums
// with the fixed-point rounding done in 16-bit halves, the border by the
// reference's own padded rule.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/smooth_box_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/smooth_box_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using smooth::Plane;

// (sum x m + 32768) >> 16 on 16-bit lanes: the high half of the product,
// plus one where its low half reaches 32768.
template <class D, class V>
HWY_INLINE V RoundedMean(D d, V sum, uint16_t m) {
    const V mul = hn::Set(d, m);
    return hn::Add(hn::MulHigh(sum, mul), hn::ShiftRight<15>(hn::Mul(sum, mul)));
}

// Interior of row y (R <= y < height-R), columns [R, width-R), width > 2R.
template <class K>
void InteriorRow(const Plane<uint8_t>& src, uint32_t y, uint8_t* out) {
    constexpr uint32_t R = K::R, taps = K::kTaps;
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const hn::RebindToSigned<decltype(d16)> di16;
    using V = hn::Vec<decltype(d16)>;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    HWY_ALIGN uint16_t col[smooth::kBoxStrip + 2 * R];
    const uint32_t x0 = R, x1 = src.width - R;
    for (uint32_t s0 = x0; s0 < x1; s0 += smooth::kBoxStrip) {
        const uint32_t s1 = std::min(x1, s0 + smooth::kBoxStrip);
        const uint32_t n = s1 - s0;
        if (n < N) {
            smooth::boxPaddedSpan<K>(src, y, out, s0, s1, smooth::BoxBorder::Zero, 0);
            continue;
        }
        const uint32_t cols = n + 2 * R;
        const uint8_t* rows[taps];
        for (uint32_t j = 0; j < taps; ++j) rows[j] = src.row(y + j - R) + (s0 - R);
        auto down = [&](uint32_t i) {
            V s = hn::PromoteTo(d16, hn::LoadU(d8, rows[0] + i));
            for (uint32_t j = 1; j < taps; ++j) s = hn::Add(s, hn::PromoteTo(d16, hn::LoadU(d8, rows[j] + i)));
            hn::StoreU(s, d16, col + i);
        };
        uint32_t i = 0;
        for (; i + N <= cols; i += N) down(i);
        if (i < cols) down(cols - N);  // overlaps the previous vector with equal sums
        auto across = [&](uint32_t j) {
            V s = hn::LoadU(d16, col + j);
            for (uint32_t t = 1; t < taps; ++t) s = hn::Add(s, hn::LoadU(d16, col + j + t));
            const V mean = RoundedMean(d16, s, static_cast<uint16_t>(K::kMultiplier));
            hn::StoreU(hn::DemoteTo(d8, hn::BitCast(di16, mean)), d8, out + s0 + j);
        };
        uint32_t j = 0;
        for (; j + N <= n; j += N) across(j);
        if (j < n) across(n - N);
    }
}

template <class K>
void Filter(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
            uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    constexpr uint32_t R = K::R;
    const Plane<uint8_t> in{src, width, height, srcStride};
    if (width > 2 * R)
        for (uint32_t y = R; y + R < height; ++y) InteriorRow<K>(in, y, dst + size_t{y} * dstStride);
    smooth::boxBorder<K>(in, {dst, dstStride}, smooth::boxBorderFromType(borderType), borderValue);
}

void Box3(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds, uint32_t t, uint8_t v) {
    Filter<smooth::BoxU8<1>>(s, w, h, ss, d, ds, t, v);
}
void Box5(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds, uint32_t t, uint8_t v) {
    Filter<smooth::BoxU8<2>>(s, w, h, ss, d, ds, t, v);
}
void Box11(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds, uint32_t t, uint8_t v) {
    Filter<smooth::BoxU8<5>>(s, w, h, ss, d, ds, t, v);
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/smooth_v.h"

namespace pxr {
HWY_EXPORT(Box3);
HWY_EXPORT(Box5);
HWY_EXPORT(Box11);

// Unqualified names from the namespace of the exports (see gaussian3x3_v.cpp).
static void box3(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds, uint32_t t,
                 uint8_t v) {
    HWY_DYNAMIC_DISPATCH(Box3)(s, w, h, ss, d, ds, t, v);
}
static void box5(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(Box5)(s, w, h, ss, d, ds, 0u, 0);
}
static void box11(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(Box11)(s, w, h, ss, d, ds, 0u, 0);
}
}  // namespace pxr

void pxrBoxFilter3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    pxr::box3(src, srcWidth, srcHeight, srcStride, dst, dstStride, 0u, 0);
}

int pxrBoxFilter3x3u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    pxr::box3(src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType, borderValue);
    return 0;
}

void pxrBoxFilter5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    pxr::box5(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

void pxrBoxFilter11x11u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride) {
    pxr::box11(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}
#endif
