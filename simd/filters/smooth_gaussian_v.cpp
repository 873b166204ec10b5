// 5x5 and 11x11 Gaussians, vector kind: the interior in vectors of wide
// column sums (16-bit for the 5x5 on bytes, 32-bit for the 11x11 and the
// 16-bit images, 64-bit for the 32-bit images), the border by the
// reference's own renormalised rule.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/smooth_gaussian_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/smooth_gaussian_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using smooth::Plane;

// a + 4b + 6c + 4d + e with shifts and adds (any integer lane type).
template <class V>
HWY_INLINE V Weigh5(V a, V b, V c, V d, V e) {
    const V outer = hn::Add(a, e);
    const V inner = hn::ShiftLeft<2>(hn::Add(b, d));
    const V centre = hn::Add(hn::ShiftLeft<2>(c), hn::ShiftLeft<1>(c));
    return hn::Add(hn::Add(outer, inner), centre);
}

// The 11-tap binomial row, folded around its centre (32-bit lanes).
template <class D, class V>
HWY_INLINE V Weigh11(D d, const V* v) {
    V s = hn::Add(v[0], v[10]);
    s = hn::Add(s, hn::Mul(hn::Set(d, 10), hn::Add(v[1], v[9])));
    s = hn::Add(s, hn::Mul(hn::Set(d, 45), hn::Add(v[2], v[8])));
    s = hn::Add(s, hn::Mul(hn::Set(d, 120), hn::Add(v[3], v[7])));
    s = hn::Add(s, hn::Mul(hn::Set(d, 210), hn::Add(v[4], v[6])));
    return hn::Add(s, hn::Mul(hn::Set(d, 252), v[5]));
}

template <uint32_t R, class D, class V>
HWY_INLINE V Weigh(D d, const V* v) {
    if constexpr (R == 2) {
        (void)d;
        return Weigh5(v[0], v[1], v[2], v[3], v[4]);
    } else {
        return Weigh11(d, v);
    }
}

// Narrows the shifted sums (which fit the pixel type) and stores them.
template <class T, class DW, class V>
HWY_INLINE void StoreNarrow(DW, V s, uint8_t* p) {
    using W = hn::TFromD<DW>;
    const hn::Rebind<T, DW> dn;
    T* out = reinterpret_cast<T*>(p);
    if constexpr (sizeof(W) == 8) {
        const hn::RebindToUnsigned<DW> du;
        const hn::Rebind<uint32_t, DW> du32;
        hn::StoreU(hn::BitCast(dn, hn::TruncateTo(du32, hn::BitCast(du, s))), dn, out);
    } else {
        const hn::RebindToSigned<DW> di;  // values fit: demote as signed
        hn::StoreU(hn::DemoteTo(dn, hn::BitCast(di, s)), dn, out);
    }
}

// Interior of row y (R <= y < height-R), columns [R, width-R), width > 2R.
template <class K, class DW>
void InteriorRow(DW dw, const Plane<typename K::T>& src, uint32_t y, uint8_t* out) {
    using T = typename K::T;
    using W = hn::TFromD<DW>;
    using V = hn::Vec<DW>;
    constexpr uint32_t R = K::R, taps = K::kTaps;
    const hn::Rebind<T, DW> dn;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(dw));
    HWY_ALIGN W col[smooth::kGaussStrip + 2 * R];
    const uint32_t x0 = R, x1 = src.width - R;
    for (uint32_t s0 = x0; s0 < x1; s0 += smooth::kGaussStrip) {
        const uint32_t s1 = std::min(x1, s0 + smooth::kGaussStrip);
        const uint32_t n = s1 - s0;
        if (n < N) {
            smooth::gaussInteriorSpan<K>(src, y, out, s0, s1);
            continue;
        }
        const uint32_t cols = n + 2 * R;
        const uint8_t* rows[taps];
        for (uint32_t j = 0; j < taps; ++j) rows[j] = src.row(y + j - R) + size_t{s0 - R} * sizeof(T);
        auto down = [&](uint32_t i) {  // vertical sums of columns [i, i + N)
            V v[taps];
            for (uint32_t j = 0; j < taps; ++j)
                v[j] = hn::PromoteTo(dw, hn::LoadU(dn, reinterpret_cast<const T*>(rows[j] + size_t{i} * sizeof(T))));
            hn::StoreU(Weigh<R>(dw, v), dw, col + i);
        };
        uint32_t i = 0;
        for (; i + N <= cols; i += N) down(i);
        if (i < cols) down(cols - N);  // overlaps the previous vector with equal sums
        auto across = [&](uint32_t j) {  // outputs s0 + [j, j + N)
            V v[taps];
            for (uint32_t t = 0; t < taps; ++t) v[t] = hn::LoadU(dw, col + j + t);
            StoreNarrow<T>(dw, hn::ShiftRight<K::kShift>(Weigh<R>(dw, v)), out + size_t{s0 + j} * sizeof(T));
        };
        uint32_t j = 0;
        for (; j + N <= n; j += N) across(j);
        if (j < n) across(n - N);
    }
}

template <class K, class DW>
void Filter(DW dw, const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
            uint32_t dstStride, int blurBorder) {
    constexpr uint32_t R = K::R;
    const Plane<typename K::T> in{src, width, height, srcStride};
    if (width > 2 * R)
        for (uint32_t y = R; y + R < height; ++y) InteriorRow<K>(dw, in, y, dst + size_t{y} * dstStride);
    if (blurBorder == 1) smooth::gaussBorder<K>(in, {dst, dstStride});
}

void Gauss5u8(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds, int bb) {
    Filter<smooth::Gauss5u8>(hn::ScalableTag<uint16_t>(), src, w, h, ss, dst, ds, bb);
}
void Gauss11u8(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds, int bb) {
    Filter<smooth::Gauss11u8>(hn::ScalableTag<uint32_t>(), src, w, h, ss, dst, ds, bb);
}
void Gauss5s16(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds, int bb) {
    Filter<smooth::Gauss5s16>(hn::ScalableTag<int32_t>(), src, w, h, ss, dst, ds, bb);
}
void Gauss5s32(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds, int bb) {
    Filter<smooth::Gauss5s32>(hn::ScalableTag<int64_t>(), src, w, h, ss, dst, ds, bb);
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/smooth_v.h"

namespace pxr {
HWY_EXPORT(Gauss5u8);
HWY_EXPORT(Gauss11u8);
HWY_EXPORT(Gauss5s16);
HWY_EXPORT(Gauss5s32);

// Unqualified names from the namespace of the exports: with a single
// compiled target (32-bit ARM) the dispatch becomes a direct call.
static void gauss5u8(const void* s, uint32_t w, uint32_t h, uint32_t ss, void* d, uint32_t ds, int bb) {
    HWY_DYNAMIC_DISPATCH(Gauss5u8)(static_cast<const uint8_t*>(s), w, h, ss, static_cast<uint8_t*>(d), ds, bb);
}
static void gauss11u8(const void* s, uint32_t w, uint32_t h, uint32_t ss, void* d, uint32_t ds, int bb) {
    HWY_DYNAMIC_DISPATCH(Gauss11u8)(static_cast<const uint8_t*>(s), w, h, ss, static_cast<uint8_t*>(d), ds, bb);
}
static void gauss5s16(const void* s, uint32_t w, uint32_t h, uint32_t ss, void* d, uint32_t ds, int bb) {
    HWY_DYNAMIC_DISPATCH(Gauss5s16)(static_cast<const uint8_t*>(s), w, h, ss, static_cast<uint8_t*>(d), ds, bb);
}
static void gauss5s32(const void* s, uint32_t w, uint32_t h, uint32_t ss, void* d, uint32_t ds, int bb) {
    HWY_DYNAMIC_DISPATCH(Gauss5s32)(static_cast<const uint8_t*>(s), w, h, ss, static_cast<uint8_t*>(d), ds, bb);
}
}  // namespace pxr

void pxrFilterGaussian5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int blurBorder) {
    pxr::gauss5u8(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}

void pxrFilterGaussian11x11u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, int blurBorder) {
    pxr::gauss11u8(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}

void pxrFilterGaussian5x5s16V(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int16_t* dst, uint32_t dstStride, int blurBorder) {
    pxr::gauss5s16(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}

void pxrFilterGaussian5x5s32V(const int32_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int32_t* dst, uint32_t dstStride, int blurBorder) {
    pxr::gauss5s32(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}
#endif
