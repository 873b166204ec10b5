// Bilateral filters, vector kind: the interior in vectors of float lanes
// (one output pixel per lane, the taps in the reference's order, multiply
// and add never fused), the border band and short rows by the reference's
// kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/nonlinear_bilateral_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cmath>

#include "imgproc/filters/nonlinear_bilateral_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Interior rows [r, height-r), columns [r, width-r).
void BilateralInterior(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstStride, const bilateral::Weights* w, const ptrdiff_t* offsets) {
    const hn::ScalableTag<float> df;
    const hn::RebindToSigned<decltype(df)> di;
    const hn::Rebind<uint8_t, decltype(df)> d8;
    const size_t L = hn::Lanes(df);
    const uint32_t r = static_cast<uint32_t>(w->radius);
    if (width <= 2 * r) return;
    const uint32_t x0 = r, x1 = width - r;
    const auto half = hn::Set(df, 0.5f);
    // The colour weight: the table entry recomputed in the lanes step for
    // step as the table was built, which is more than twice as fast as a
    // gather from the table, even where the processor gathers. The gather
    // stays for an infinite factor (a sigma whose square underflows), where
    // 0 x inf would differ from the table's clamped NaN.
    const bool compute = std::isfinite(w->colorFactor);
    const auto kc = hn::Set(df, w->colorFactor), log2e = hn::Set(df, 1.442695f), floor = hn::Set(df, -126.0f),
               bias = hn::Set(df, 126.942696f), scale = hn::Set(df, 8388608.0f);
    auto color = [&](auto p, auto v) {
        const auto d = hn::Abs(hn::Sub(p, v));
        if (!compute) return hn::GatherIndex(df, w->color, d);
        const auto y = hn::Max(hn::Mul(hn::Mul(kc, hn::ConvertTo(df, hn::Mul(d, d))), log2e), floor);
        return hn::BitCast(df, hn::ConvertTo(di, hn::Mul(hn::Add(y, bias), scale)));
    };
    auto at = [&](const uint8_t* row, uint8_t* out, size_t x) {
        const auto v = hn::PromoteTo(di, hn::LoadU(d8, row + x));
        auto num = hn::Zero(df), den = hn::Zero(df);
        for (uint32_t k = 0; k < w->count; ++k) {
            const auto p = hn::PromoteTo(di, hn::LoadU(d8, row + x + offsets[k]));
            const auto c = color(p, v);
            const auto wgt = hn::Mul(hn::Set(df, w->space[k]), c);
            num = hn::Add(num, hn::Mul(wgt, hn::ConvertTo(df, p)));
            den = hn::Add(den, wgt);
        }
#if HWY_ARCH_ARM_V7
        // No exact vector division here: divide lane by lane.
        HWY_ALIGN float n[HWY_MAX_BYTES / sizeof(float)], dd[HWY_MAX_BYTES / sizeof(float)];
        hn::Store(num, df, n);
        hn::Store(den, df, dd);
        for (size_t i = 0; i < L; ++i) out[x + i] = bilateral::finish(n[i], dd[i]);
        (void)half;
#else
        const auto q = hn::Add(hn::Div(num, den), half);
        hn::StoreU(hn::DemoteTo(d8, hn::ConvertTo(di, q)), d8, out + x);
#endif
    };
    for (uint32_t y = r; y + r < height; ++y) {
        const uint8_t* row = src + size_t{y} * srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        if (x1 - x0 < L) {
            bilateral::interiorSpan(src, srcStride, y, out, x0, x1, offsets, *w);
            continue;
        }
        size_t x = x0;
        for (; x + L <= x1; x += L) at(row, out, x);
        if (x < x1) at(row, out, x1 - L);  // overlaps the previous vector with equal results
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <cfloat>

#include "simd/filters/nonlinear_v.h"

namespace pxr {
namespace {

// 32-bit ARM vector arithmetic flushes subnormal floats to zero, unlike the
// scalar unit. There the vectors run only when no weight, product or sum can
// fall below the normal range: every tap weight at least 2^-120.
bool vectorsExact(const bilateral::Weights& w) {
#if HWY_ARCH_ARM_V7
    float s = w.space[0], c = w.color[0];
    for (uint32_t k = 1; k < w.count; ++k) s = std::min(s, w.space[k]);
    for (float v : w.color) c = std::min(c, v);
    return s * c >= 0x1p-120f;
#else
    (void)w;
    return true;
#endif
}

HWY_EXPORT(BilateralInterior);

void filter(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
            uint32_t dstStride, const bilateral::Weights& w) {
    ptrdiff_t offsets[bilateral::kMaxTaps];
    bilateral::tapOffsets(w, srcStride, offsets);
    const uint32_t r = static_cast<uint32_t>(w.radius);
    if (vectorsExact(w)) {
        HWY_DYNAMIC_DISPATCH(BilateralInterior)(src, width, height, srcStride, dst, dstStride, &w, offsets);
    } else if (width > 2 * r) {
        for (uint32_t y = r; y + r < height; ++y)
            bilateral::interiorSpan(src, srcStride, y, dst + size_t{y} * dstStride, r, width - r, offsets, w);
    }
    bilateral::band(src, width, height, srcStride, dst, dstStride, w);
}

template <int Radius>
const bilateral::Weights& fixedWeights() {
    static const bilateral::Weights w =
        bilateral::makeWeights(Radius, bilateral::kFixedSigmaColor, bilateral::fixedSigmaSpace(Radius));
    return w;
}

}  // namespace
}  // namespace pxr

void pxrBilateralFilter5x5u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    pxr::filter(src, width, height, srcStride, dst, dstStride, pxr::fixedWeights<2>());
}

void pxrBilateralFilter7x7u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    pxr::filter(src, width, height, srcStride, dst, dstStride, pxr::fixedWeights<3>());
}

void pxrBilateralFilter9x9u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    pxr::filter(src, width, height, srcStride, dst, dstStride, pxr::fixedWeights<4>());
}

int pxrBilateralFilter5x5u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    if (sigmaColor == 50.0f && sigmaSpace == 1.0f) {
        pxrBilateralFilter5x5u8V(src, srcWidth, srcHeight, srcStride, dst, dstStride);
        return 0;
    }
    pxr::filter(src, srcWidth, srcHeight, srcStride, dst, dstStride,
                pxr::bilateral::makeWeights(2, sigmaColor, sigmaSpace));
    return 0;
}

int pxrBilateralFilter7x7u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    if (sigmaColor == 50.0f && sigmaSpace == 1.5f) {
        pxrBilateralFilter7x7u8V(src, srcWidth, srcHeight, srcStride, dst, dstStride);
        return 0;
    }
    pxr::filter(src, srcWidth, srcHeight, srcStride, dst, dstStride,
                pxr::bilateral::makeWeights(3, sigmaColor, sigmaSpace));
    return 0;
}

int pxrBilateralFilter9x9u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    if (sigmaColor == 50.0f && sigmaSpace == 2.0f) {
        pxrBilateralFilter9x9u8V(src, srcWidth, srcHeight, srcStride, dst, dstStride);
        return 0;
    }
    pxr::filter(src, srcWidth, srcHeight, srcStride, dst, dstStride,
                pxr::bilateral::makeWeights(4, sigmaColor, sigmaSpace));
    return 0;
}
#endif
