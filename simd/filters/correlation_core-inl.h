// Vector core of the integer correlations over bytes, included once per
// vector target by the correlation and convolution files.
//
// Products are summed in pairs with a 16 x 16 -> 32-bit multiply-add
// (lane m = a[2m] b[2m] + a[2m+1] b[2m+1]). Even and odd output pixels are
// kept in separate 32-bit accumulators: the even pixel x+2m takes taps
// (j, j+1) from lanes 2m and 2m+1 of the bytes loaded at x+j, the odd pixel
// x+2m+1 from the bytes loaded at x+j+1. No lane ever crosses a block, and
// the two halves are re-interleaved for free when the results are narrowed.
// Integer sums wrap exactly like the reference's 32-bit sums.

#if defined(PIXORA_SIMD_FILTERS_CORRELATION_CORE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXORA_SIMD_FILTERS_CORRELATION_CORE_INL_H_
#undef PIXORA_SIMD_FILTERS_CORRELATION_CORE_INL_H_
#else
#define PIXORA_SIMD_FILTERS_CORRELATION_CORE_INL_H_
#endif

#include <hwy/highway.h>

#include "imgproc/filters/correlation_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace corrv {
namespace hn = hwy::HWY_NAMESPACE;

using D16 = hn::ScalableTag<int16_t>;
using D32 = hn::Repartition<int32_t, D16>;
using D8 = hn::Rebind<uint8_t, D16>;
using V16 = hn::Vec<D16>;
using V32 = hn::Vec<D32>;

// A single lane holds no pair: the scalar target runs the shared row
// kernels instead (WindowRow reports that it did nothing).
#if HWY_TARGET != HWY_SCALAR

// ---- Pairwise 16-bit multiply-add ----------------------------------------

template <class V>
HWY_INLINE auto MulPairs(V a, V b) {
    const hn::DFromV<V> d16;
    const hn::RepartitionToWide<decltype(d16)> d32;
    const auto a32 = hn::BitCast(d32, a), b32 = hn::BitCast(d32, b);
    const auto even = hn::Mul(hn::ShiftRight<16>(hn::ShiftLeft<16>(a32)), hn::ShiftRight<16>(hn::ShiftLeft<16>(b32)));
    return hn::Add(even, hn::Mul(hn::ShiftRight<16>(a32), hn::ShiftRight<16>(b32)));
}
#if HWY_ARCH_X86 && HWY_TARGET <= HWY_SSSE3
template <size_t N>
HWY_INLINE hn::Vec128<int32_t, (N + 1) / 2> MulPairs(hn::Vec128<int16_t, N> a, hn::Vec128<int16_t, N> b) {
    return hn::Vec128<int32_t, (N + 1) / 2>{_mm_madd_epi16(a.raw, b.raw)};
}
#endif
#if HWY_ARCH_X86 && HWY_TARGET <= HWY_AVX2
HWY_INLINE hn::Vec256<int32_t> MulPairs(hn::Vec256<int16_t> a, hn::Vec256<int16_t> b) {
    return hn::Vec256<int32_t>{_mm256_madd_epi16(a.raw, b.raw)};
}
#endif
#if HWY_ARCH_X86 && HWY_TARGET <= HWY_AVX3
HWY_INLINE hn::Vec512<int32_t> MulPairs(hn::Vec512<int16_t> a, hn::Vec512<int16_t> b) {
    return hn::Vec512<int32_t>{_mm512_madd_epi16(a.raw, b.raw)};
}
#endif
#if HWY_TARGET == HWY_NEON
HWY_INLINE hn::Vec128<int32_t> MulPairs(hn::Vec128<int16_t> a, hn::Vec128<int16_t> b) {
    const int32x4_t lo = vmull_s16(vget_low_s16(a.raw), vget_low_s16(b.raw));
    const int32x4_t hi = vmull_s16(vget_high_s16(a.raw), vget_high_s16(b.raw));
    return hn::Vec128<int32_t>(vcombine_s32(vpadd_s32(vget_low_s32(lo), vget_high_s32(lo)),
                                            vpadd_s32(vget_low_s32(hi), vget_high_s32(hi))));
}
#endif

#endif  // HWY_TARGET != HWY_SCALAR

// Two 16-bit taps packed in one 32-bit word: lo in the low half.
HWY_INLINE int32_t Pack(int32_t lo, int32_t hi) {
    return static_cast<int32_t>((static_cast<uint32_t>(lo) & 0xFFFFu) | (static_cast<uint32_t>(hi) << 16));
}

// ---- Kernel tap pairs ------------------------------------------------------
// Each kernel row of kw taps gives kw/2 pairs (j, j+1) and, when kw is odd,
// the last tap twice: as (k, 0) for the even pixels and (0, k) for the odd.

inline constexpr size_t kMaxTablePairs = 4096;

inline size_t PairsPerRow(uint32_t kw) { return kw / 2 + 2 * (kw & 1); }

// Pairs read from a table built once per call (kernels of up to
// kMaxTablePairs pairs).
struct TablePairs {
    const int32_t* v;
    HWY_INLINE int32_t At(size_t idx, uint32_t, uint32_t, int) const { return v[idx]; }
};

// Pairs formed on the fly from the kernel, for kernels too large for the
// table; (i0, j0) places a sub-window of the kernel.
template <bool Reversed, class K>
struct LivePairs {
    const K* k;
    size_t count;
    uint32_t kw, i0, j0;
    // part: 0 the pair (j, j+1), 1 the single tap j as (k, 0), 2 as (0, k).
    HWY_INLINE int32_t At(size_t, uint32_t i, uint32_t j, int part) const {
        const size_t idx = size_t{i + i0} * kw + j + j0;
        const int32_t a = corr::tap<Reversed>(k, count, idx);
        if (part == 1) return Pack(a, 0);
        if (part == 2) return Pack(0, a);
        return Pack(a, corr::tap<Reversed>(k, count, idx + 1));
    }
};

// Fills `table` for the whole kernel; false when it does not fit.
template <bool Reversed, class K>
inline bool BuildPairTable(const K* k, uint32_t kw, uint32_t kh, int32_t* table) {
    if (uint64_t{kh} * PairsPerRow(kw) > kMaxTablePairs) return false;
    const LivePairs<Reversed, K> live{k, size_t{kw} * kh, kw, 0, 0};
    size_t idx = 0;
    for (uint32_t i = 0; i < kh; ++i) {
        uint32_t j = 0;
        for (; j + 1 < kw; j += 2) table[idx++] = live.At(0, i, j, 0);
        if (j < kw) {
            table[idx++] = live.At(0, i, j, 1);
            table[idx++] = live.At(0, i, j, 2);
        }
    }
    return true;
}

#if HWY_TARGET != HWY_SCALAR
// ---- Window sums -------------------------------------------------------------

// Sums of the kw x kh windows of Lanes(D16) consecutive pixels, the first
// window's top-left pixel at p: even pixels in `even`, odd ones in `odd`.
template <class Pairs>
HWY_INLINE void WindowSums(const uint8_t* p, size_t stride, uint32_t kw, uint32_t kh, const Pairs& pairs, V32& even,
                           V32& odd) {
    const D16 d16;
    const D32 d32;
    const D8 d8;
    even = hn::Zero(d32);
    odd = hn::Zero(d32);
    size_t idx = 0;
    for (uint32_t i = 0; i < kh; ++i, p += stride) {
        uint32_t j = 0;
        for (; j + 1 < kw; j += 2) {
            const V16 kp = hn::BitCast(d16, hn::Set(d32, pairs.At(idx++, i, j, 0)));
            even = hn::Add(even, MulPairs(hn::PromoteTo(d16, hn::LoadU(d8, p + j)), kp));
            odd = hn::Add(odd, MulPairs(hn::PromoteTo(d16, hn::LoadU(d8, p + j + 1)), kp));
        }
        if (j < kw) {
            const V16 a = hn::PromoteTo(d16, hn::LoadU(d8, p + j));
            even = hn::Add(even, MulPairs(a, hn::BitCast(d16, hn::Set(d32, pairs.At(idx++, i, j, 1)))));
            odd = hn::Add(odd, MulPairs(a, hn::BitCast(d16, hn::Set(d32, pairs.At(idx++, i, j, 2)))));
        }
    }
}

#endif  // HWY_TARGET != HWY_SCALAR

// ---- Scaling and stores ------------------------------------------------------

// The vector form of corr::scaled for 32-bit sums.
template <class Out>
struct Scale {
    enum Mode { kZero, kRight, kLeft } mode;
    int bits;
    explicit Scale(int32_t shift) {
        if (shift >= corr::kShiftLimit || shift <= -corr::kShiftLimit) {
            mode = kZero;
            bits = 0;
        } else if (shift > 0) {
            mode = kRight;
            bits = shift;
        } else {
            // Clamped first, the value needs at most 8 (u8) or 16 (s16)
            // more bits to saturate: the cap keeps it inside 32 bits.
            mode = kLeft;
            bits = std::min<int>(-shift, Out::hi == 255 ? 8 : 16);
        }
    }
    HWY_INLINE V32 operator()(V32 s) const {
        const D32 d32;
        const V32 lo = hn::Set(d32, Out::lo), hi = hn::Set(d32, Out::hi);
        if (mode == kZero) return hn::Zero(d32);
        if (mode == kRight)
            s = hn::Add(hn::ShiftRightSame(s, bits), hn::And(hn::ShiftRightSame(s, bits - 1), hn::Set(d32, 1)));
        else
            s = hn::ShiftLeftSame(hn::Min(hn::Max(s, lo), hi), bits);
        return hn::Min(hn::Max(s, lo), hi);
    }
};

// Stores Lanes(D16) results, given the scaled even and odd pixels.
template <class Out>
HWY_INLINE void StorePixels(V32 even, V32 odd, uint8_t* out) {
    const D16 d16;
    const D32 d32;
    if constexpr (Out::hi == 255) {
        const D8 d8;
        hn::StoreU(hn::DemoteTo(d8, hn::BitCast(d16, hn::Or(even, hn::ShiftLeft<16>(odd)))), d8, out);
    } else {
        const V32 packed = hn::Or(hn::And(even, hn::Set(d32, 0xFFFF)), hn::ShiftLeft<16>(odd));
        hn::StoreU(hn::BitCast(d16, packed), d16, reinterpret_cast<int16_t*>(out));
    }
}

#if HWY_TARGET == HWY_SCALAR
template <class Out, class Pairs>
HWY_INLINE bool WindowRow(const uint8_t*, size_t, uint32_t, uint32_t, const Pairs&, const Scale<Out>&, uint8_t*,
                          uint32_t) {
    return false;
}
#else
// Outputs [0, n) of one row: output x is the window whose top-left pixel is
// top + x, stored as Out::T at out + x * sizeof(Out::T). The last vector
// overlaps the one before it, so nothing past the row is read. False (and
// nothing written) when n is below one vector.
template <class Out, class Pairs>
HWY_INLINE bool WindowRow(const uint8_t* top, size_t stride, uint32_t kw, uint32_t kh, const Pairs& pairs,
                          const Scale<Out>& scale, uint8_t* out, uint32_t n) {
    const D16 d16;
    const uint32_t lanes = static_cast<uint32_t>(hn::Lanes(d16));
    if (n < lanes) return false;
    auto block = [&](uint32_t x) {
        V32 even, odd;
        WindowSums(top + x, stride, kw, kh, pairs, even, odd);
        StorePixels<Out>(scale(even), scale(odd), out + size_t{x} * sizeof(typename Out::T));
    };
    uint32_t x = 0;
    for (; x + lanes <= n; x += lanes) block(x);
    if (x < n) block(n - lanes);
    return true;
}
#endif

}  // namespace corrv
}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
