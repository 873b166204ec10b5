// Separable Q15 correlation of 16-bit images, vector kind. Both passes use
// the pairwise multiply-add with even and odd pixels in separate 32-bit
// sums: vertically each row's tap is applied as (k, 0) and (0, k) to the
// same load; horizontally tap pairs come from the loads at x+j and x+j+1.
// The cropped edge columns and narrow rows run the reference's row kernels.
// When dst does not overlap src, the two passes run row by row (tmp's row
// stays in cache); tmp ends up the same either way.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/correlation_sep_q15_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "simd/filters/correlation_core-inl.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET != HWY_SCALAR
using corrv::D16;
using corrv::D32;
using corrv::V16;
using corrv::V32;

// Q15 rounding and saturation of even and odd sums, stored as int16.
HWY_INLINE void StoreQ15(V32 even, V32 odd, uint8_t* out) {
    const D32 d32;
    auto q15 = [&](V32 s) {
        const V32 r = hn::ShiftRight<1>(hn::Add(hn::ShiftRight<14>(s), hn::Set(d32, 1)));
        return hn::Min(hn::Max(r, hn::Set(d32, -32768)), hn::Set(d32, 32767));
    };
    corrv::StorePixels<corr::S16Out>(q15(even), q15(odd), out);
}

// Single taps as (k, 0) and (0, k): from a table, or formed on the fly.
struct TableTaps {
    const int32_t* lo;
    const int32_t* hi;
    HWY_INLINE int32_t Lo(uint32_t t) const { return lo[t]; }
    HWY_INLINE int32_t Hi(uint32_t t) const { return hi[t]; }
};
struct LiveTaps {
    const int16_t* k;
    HWY_INLINE int32_t Lo(uint32_t t) const { return corrv::Pack(k[t], 0); }
    HWY_INLINE int32_t Hi(uint32_t t) const { return corrv::Pack(0, k[t]); }
};

template <class Taps>
void VerticalRow(const uint8_t* src, size_t srcStride, uint32_t w, uint32_t h, const int16_t* k, uint32_t n,
                 const Taps& taps, uint32_t y, uint8_t* tmpRow) {
    const D16 d16;
    const D32 d32;
    const uint32_t lanes = static_cast<uint32_t>(hn::Lanes(d16));
    if (w < lanes) return corr::q15VerticalSpan(src, srcStride, h, k, n, y, tmpRow, 0, w);
    const corr::TapRange r = corr::tapsInside(y, n, h);
    const uint8_t* top = src + (int64_t{y} - n / 2 + r.first) * static_cast<int64_t>(srcStride);
    auto block = [&](uint32_t x) {
        V32 even = hn::Zero(d32), odd = hn::Zero(d32);
        const uint8_t* p = top + size_t{x} * 2;
        for (uint32_t t = r.first; t < r.last; ++t, p += srcStride) {
            const V16 a = hn::LoadU(d16, reinterpret_cast<const int16_t*>(p));
            even = hn::Add(even, corrv::MulPairs(a, hn::BitCast(d16, hn::Set(d32, taps.Lo(t)))));
            odd = hn::Add(odd, corrv::MulPairs(a, hn::BitCast(d16, hn::Set(d32, taps.Hi(t)))));
        }
        StoreQ15(even, odd, tmpRow + size_t{x} * 2);
    };
    uint32_t x = 0;
    for (; x + lanes <= w; x += lanes) block(x);
    if (x < w) block(w - lanes);
}

template <class Pairs>
void HorizontalRow(const uint8_t* tmpRow, uint32_t w, const int16_t* k, uint32_t n, const Pairs& pairs,
                   uint8_t* dstRow) {
    const D16 d16;
    const D32 d32;
    const uint32_t lanes = static_cast<uint32_t>(hn::Lanes(d16));
    // Full-kernel outputs [n/2, n/2 + count); the rest are cropped.
    const uint32_t count = w >= n ? w - n + 1 : 0, first = n / 2;
    if (count < lanes) return corr::q15HorizontalSpan(tmpRow, w, k, n, dstRow, 0, w);
    corr::q15HorizontalSpan(tmpRow, w, k, n, dstRow, 0, first);
    corr::q15HorizontalSpan(tmpRow, w, k, n, dstRow, first + count, w);
    // Output first + x reads tmp values [x, x + n).
    auto block = [&](uint32_t x) {
        V32 even = hn::Zero(d32), odd = hn::Zero(d32);
        const uint8_t* p = tmpRow + size_t{x} * 2;
        size_t idx = 0;
        uint32_t j = 0;
        for (; j + 1 < n; j += 2) {
            const V16 kp = hn::BitCast(d16, hn::Set(d32, pairs.At(idx++, 0, j, 0)));
            even = hn::Add(even, corrv::MulPairs(hn::LoadU(d16, reinterpret_cast<const int16_t*>(p + j * 2)), kp));
            odd = hn::Add(odd, corrv::MulPairs(hn::LoadU(d16, reinterpret_cast<const int16_t*>(p + j * 2 + 2)), kp));
        }
        if (j < n) {
            const V16 a = hn::LoadU(d16, reinterpret_cast<const int16_t*>(p + j * 2));
            even = hn::Add(even, corrv::MulPairs(a, hn::BitCast(d16, hn::Set(d32, pairs.At(idx++, 0, j, 1)))));
            odd = hn::Add(odd, corrv::MulPairs(a, hn::BitCast(d16, hn::Set(d32, pairs.At(idx++, 0, j, 2)))));
        }
        StoreQ15(even, odd, dstRow + size_t{first + x} * 2);
    };
    uint32_t x = 0;
    for (; x + lanes <= count; x += lanes) block(x);
    if (x < count) block(count - lanes);
}

inline constexpr uint32_t kMaxTableTaps = 2048;

template <class Taps, class Pairs>
void Passes(const int16_t* k, uint32_t n, const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride,
            uint8_t* tmp, uint8_t* dst, uint32_t dstStride, const Taps& taps, const Pairs& pairs) {
    const size_t tmpStride = size_t{w} * 2;
    const uintptr_t s0 = reinterpret_cast<uintptr_t>(src), d0 = reinterpret_cast<uintptr_t>(dst);
    const uintptr_t s1 = s0 + size_t{h - 1} * srcStride + tmpStride, d1 = d0 + size_t{h - 1} * dstStride + tmpStride;
    if (s0 >= d1 || d0 >= s1) {
        for (uint32_t y = 0; y < h; ++y) {
            VerticalRow(src, srcStride, w, h, k, n, taps, y, tmp + y * tmpStride);
            HorizontalRow(tmp + y * tmpStride, w, k, n, pairs, dst + size_t{y} * dstStride);
        }
        return;
    }
    // dst overlaps src: every source row is read before any dst row is written.
    for (uint32_t y = 0; y < h; ++y) VerticalRow(src, srcStride, w, h, k, n, taps, y, tmp + y * tmpStride);
    for (uint32_t y = 0; y < h; ++y) HorizontalRow(tmp + y * tmpStride, w, k, n, pairs, dst + size_t{y} * dstStride);
}
#endif  // HWY_TARGET != HWY_SCALAR

void SepQ15(const int16_t* k, uint32_t n, const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride,
            uint8_t* tmp, uint8_t* dst, uint32_t dstStride) {
#if HWY_TARGET == HWY_SCALAR
    const size_t tmpStride = size_t{w} * 2;
    for (uint32_t y = 0; y < h; ++y) corr::q15VerticalSpan(src, srcStride, h, k, n, y, tmp + y * tmpStride, 0, w);
    for (uint32_t y = 0; y < h; ++y)
        corr::q15HorizontalSpan(tmp + y * tmpStride, w, k, n, dst + size_t{y} * dstStride, 0, w);
#else
    if (n > kMaxTableTaps) {
        Passes(k, n, src, w, h, srcStride, tmp, dst, dstStride, LiveTaps{k},
               corrv::LivePairs<false, int16_t>{k, n, n, 0, 0});
        return;
    }
    HWY_ALIGN int32_t lo[kMaxTableTaps], hi[kMaxTableTaps], pairs[kMaxTableTaps / 2 + 2];
    for (uint32_t t = 0; t < n; ++t) {
        lo[t] = corrv::Pack(k[t], 0);
        hi[t] = corrv::Pack(0, k[t]);
    }
    corrv::BuildPairTable<false>(k, n, 1, pairs);
    Passes(k, n, src, w, h, srcStride, tmp, dst, dstStride, TableTaps{lo, hi}, corrv::TablePairs{pairs});
#endif
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/correlation_v.h"

namespace pxr {
HWY_EXPORT(SepQ15);

static void sepQ15(const int16_t* kernel, uint32_t n, const int16_t* src, uint32_t w, uint32_t h, uint32_t srcStride,
                   int16_t* tmp, int16_t* dst, uint32_t dstStride) {
    HWY_DYNAMIC_DISPATCH(SepQ15)(kernel, n, reinterpret_cast<const uint8_t*>(src), w, h, srcStride,
                                 reinterpret_cast<uint8_t*>(tmp), reinterpret_cast<uint8_t*>(dst), dstStride);
}
}  // namespace pxr

void pxrFilterCorrSepNxNs16V(const int16_t* kernel, uint32_t knlSize, const int16_t* srcImg, uint32_t w,
                             uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                             uint32_t dstStride) {
    pxr::sepQ15(kernel, knlSize, srcImg, w, h, srcStride, tmpImg, dstImg, dstStride);
}

#define PXR_CORR_SEP_FIXED(n)                                                                                \
    void pxrFilterCorrSep##n##x##n##s16V(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h, \
                                         uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,               \
                                         uint32_t dstStride) {                                               \
        pxr::sepQ15(kernel, n, srcImg, w, h, srcStride, tmpImg, dstImg, dstStride);                          \
    }
PXR_CORR_SEP_FIXED(9)
PXR_CORR_SEP_FIXED(11)
PXR_CORR_SEP_FIXED(13)
PXR_CORR_SEP_FIXED(15)
PXR_CORR_SEP_FIXED(17)
#undef PXR_CORR_SEP_FIXED
#endif
