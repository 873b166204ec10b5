// The float box mean and the local normalisations, vector kind: the row
// driver and the edges are the reference's; the vertical sums and the
// horizontal sums of full windows run in vectors, in the reference's order
// of additions, and the per-pixel formulas use the same operations (no fused
// multiply-add, true division). Where the vector unit's division and square root are only
// approximations (32-bit ARM NEON), the formulas run per lane in scalar code.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/smooth_window_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/smooth_window_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using smooth::RowRing;
using smooth::Window;

// Division and square root are correctly rounded on every target but
// 32-bit ARM's.
constexpr bool kExactDivSqrt = !HWY_ARCH_ARM_V7;

// uint32 -> float, correctly rounded: both halves convert exactly, the
// scaling by 2^16 is exact, and the one addition rounds once.
template <class DF, class VU>
HWY_INLINE hn::Vec<DF> U32ToF32(DF df, VU v) {
    const hn::RebindToSigned<DF> di;
    const hn::RebindToUnsigned<DF> du;
    const auto hi = hn::ConvertTo(df, hn::BitCast(di, hn::ShiftRight<16>(v)));
    const auto lo = hn::ConvertTo(df, hn::BitCast(di, hn::And(v, hn::Set(du, 0xFFFFu))));
    return hn::Add(hn::Mul(hi, hn::Set(df, 65536.0f)), lo);
}

struct VectorWindowOps {
    static void sumRows(const RowRing<float>& ring, uint32_t r0, uint32_t r1, float* col, uint32_t width) {
        const hn::ScalableTag<float> df;
        const uint32_t N = static_cast<uint32_t>(hn::Lanes(df));
        uint32_t x = 0;
        for (; x + N <= width; x += N) {
            auto s = hn::LoadU(df, ring.crow(r0) + x);
            for (uint32_t r = r0 + 1; r <= r1; ++r) s = hn::Add(s, hn::LoadU(df, ring.crow(r) + x));
            hn::StoreU(s, df, col + x);
        }
        smooth::scalar::sumRows(ring, r0, r1, col, x, width);
    }

    static void sumRowsAndSquares(const RowRing<float>& ring, uint32_t r0, uint32_t r1, float* col1, float* col2,
                                  uint32_t width) {
        const hn::ScalableTag<float> df;
        const uint32_t N = static_cast<uint32_t>(hn::Lanes(df));
        uint32_t x = 0;
        for (; x + N <= width; x += N) {
            auto v = hn::LoadU(df, ring.crow(r0) + x);
            auto s1 = v;
            auto s2 = hn::Mul(v, v);
            for (uint32_t r = r0 + 1; r <= r1; ++r) {
                v = hn::LoadU(df, ring.crow(r) + x);
                s1 = hn::Add(s1, v);
                s2 = hn::Add(s2, hn::Mul(v, v));
            }
            hn::StoreU(s1, df, col1 + x);
            hn::StoreU(s2, df, col2 + x);
        }
        smooth::scalar::sumRowsAndSquares(ring, r0, r1, col1, col2, x, width);
    }

    static void sumRowsAndSquares(const RowRing<uint8_t>& ring, uint32_t r0, uint32_t r1, uint32_t* col1,
                                  uint32_t* col2, uint32_t width) {
        const hn::ScalableTag<uint32_t> du;
        const hn::Rebind<uint8_t, decltype(du)> d8;
        const uint32_t N = static_cast<uint32_t>(hn::Lanes(du));
        uint32_t x = 0;
        for (; x + N <= width; x += N) {
            auto s1 = hn::Zero(du);
            auto s2 = hn::Zero(du);
            for (uint32_t r = r0; r <= r1; ++r) {
                const auto v = hn::PromoteTo(du, hn::LoadU(d8, ring.crow(r) + x));
                s1 = hn::Add(s1, v);
                s2 = hn::Add(s2, hn::Mul(v, v));
            }
            hn::StoreU(s1, du, col1 + x);
            hn::StoreU(s2, du, col2 + x);
        }
        smooth::scalar::sumRowsAndSquares(ring, r0, r1, col1, col2, x, width);
    }

    // Outputs whose horizontal window is whole: [win.full0(), win.full1(width)).
    static void boxRow(const float* col, uint32_t width, const Window& win, uint32_t rows, uint8_t* out) {
        const hn::ScalableTag<float> df;
        const uint32_t N = static_cast<uint32_t>(hn::Lanes(df));
        const uint32_t taps = win.before + win.after + 1;
        const uint32_t f0 = std::min(win.full0(), width), f1 = std::max(win.full1(width), f0);
        const float n = smooth::windowCount(rows, taps);
        const auto count = hn::Set(df, n);
        smooth::scalar::boxSpan(col, width, win, rows, out, 0, f0);
        uint32_t x = f0;
        for (; x + N <= f1; x += N) {
            const float* c = col + (x - win.before);
            auto s = hn::LoadU(df, c);
            for (uint32_t t = 1; t < taps; ++t) s = hn::Add(s, hn::LoadU(df, c + t));
            if constexpr (kExactDivSqrt) {
                hn::StoreU(hn::Div(s, count), df, reinterpret_cast<float*>(out + size_t{x} * 4));
            } else {
                HWY_ALIGN float a[hn::MaxLanes(df)];
                hn::Store(s, df, a);
                for (uint32_t i = 0; i < N; ++i) smooth::store<float>(out + size_t{x + i} * 4, smooth::boxMean(a[i], n));
            }
        }
        smooth::scalar::boxSpan(col, width, win, rows, out, x, width);
    }

    static void normaliseRow(const float* centre, const float* col1, const float* col2, uint32_t width,
                             const Window& win, uint32_t rows, uint8_t* out) {
        const hn::ScalableTag<float> df;
        const uint32_t N = static_cast<uint32_t>(hn::Lanes(df));
        const uint32_t taps = win.before + win.after + 1;
        const uint32_t f0 = std::min(win.full0(), width), f1 = std::max(win.full1(width), f0);
        const float n = smooth::windowCount(rows, taps);
        const auto count = hn::Set(df, n);
        smooth::scalar::normaliseSpan(centre, col1, col2, width, win, rows, out, 0, f0);
        uint32_t x = f0;
        for (; x + N <= f1; x += N) {
            const uint32_t c = x - win.before;
            auto s1 = hn::LoadU(df, col1 + c);
            auto s2 = hn::LoadU(df, col2 + c);
            for (uint32_t t = 1; t < taps; ++t) {
                s1 = hn::Add(s1, hn::LoadU(df, col1 + c + t));
                s2 = hn::Add(s2, hn::LoadU(df, col2 + c + t));
            }
            float* o = reinterpret_cast<float*>(out + size_t{x} * 4);
            if constexpr (kExactDivSqrt) {
                const auto mean = hn::Div(s1, count);
                const auto msq = hn::Div(s2, count);
                const auto var = hn::Max(hn::Sub(msq, hn::Mul(mean, mean)), hn::Mul(msq, hn::Set(df, 0x1p-20f)));
                const auto z = hn::Div(hn::Sub(hn::LoadU(df, centre + x), mean), hn::Sqrt(var));
                hn::StoreU(hn::IfThenElseZero(hn::Gt(var, hn::Zero(df)), z), df, o);
            } else {
                HWY_ALIGN float a1[hn::MaxLanes(df)], a2[hn::MaxLanes(df)];
                hn::Store(s1, df, a1);
                hn::Store(s2, df, a2);
                for (uint32_t i = 0; i < N; ++i)
                    smooth::store<float>(out + size_t{x + i} * 4, smooth::normaliseF32(centre[x + i], a1[i], a2[i], n));
                (void)o;
            }
        }
        smooth::scalar::normaliseSpan(centre, col1, col2, width, win, rows, out, x, width);
    }

    static void normaliseRow(const uint8_t* centre, const uint32_t* col1, const uint32_t* col2, uint32_t width,
                             const Window& win, uint32_t rows, uint8_t* out) {
        const hn::ScalableTag<float> df;
        const hn::RebindToSigned<decltype(df)> di;
        const hn::RebindToUnsigned<decltype(df)> du;
        const hn::Rebind<uint8_t, decltype(df)> d8;
        const uint32_t N = static_cast<uint32_t>(hn::Lanes(df));
        const uint32_t taps = win.before + win.after + 1;
        const uint32_t f0 = std::min(win.full0(), width), f1 = std::max(win.full1(width), f0);
        const float n = smooth::windowCount(rows, taps);
        const auto count = hn::Set(df, n);
        smooth::scalar::normaliseSpan(centre, col1, col2, width, win, rows, out, 0, f0);
        uint32_t x = f0;
        for (; x + N <= f1; x += N) {
            const uint32_t c = x - win.before;
            auto s1 = hn::LoadU(du, col1 + c);
            auto s2 = hn::LoadU(du, col2 + c);
            for (uint32_t t = 1; t < taps; ++t) {
                s1 = hn::Add(s1, hn::LoadU(du, col1 + c + t));
                s2 = hn::Add(s2, hn::LoadU(du, col2 + c + t));
            }
            if constexpr (kExactDivSqrt) {
                const auto mean = hn::Div(hn::ConvertTo(df, hn::BitCast(di, s1)), count);  // s1 < 2^24
                const auto msq = hn::Div(U32ToF32(df, s2), count);
                const auto var = hn::Max(hn::Sub(msq, hn::Mul(mean, mean)), hn::Set(df, 1.0f));
                const auto xf = hn::ConvertTo(df, hn::BitCast(di, hn::PromoteTo(du, hn::LoadU(d8, centre + x))));
                const auto z = hn::Div(hn::Sub(xf, mean), hn::Sqrt(var));
                const auto t = hn::Round(hn::Add(hn::Mul(z, hn::Set(df, 64.0f)), hn::Set(df, 128.0f)));
                hn::StoreU(hn::DemoteTo(d8, hn::ConvertTo(di, t)), d8, out + x);  // saturates to 0..255
            } else {
                HWY_ALIGN uint32_t a1[hn::MaxLanes(du)], a2[hn::MaxLanes(du)];
                hn::Store(s1, du, a1);
                hn::Store(s2, du, a2);
                for (uint32_t i = 0; i < N; ++i) out[x + i] = smooth::normaliseU8(centre[x + i], a1[i], a2[i], n);
            }
        }
        smooth::scalar::normaliseSpan(centre, col1, col2, width, win, rows, out, x, width);
    }
};

void BoxF32(const float* src, uint32_t w, uint32_t h, uint32_t ss, uint32_t n, float* dst, uint32_t ds) {
    smooth::boxF32<VectorWindowOps>(src, w, h, ss, n, dst, ds);
}
int NormaliseU8(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint32_t n, uint8_t* dst, uint32_t ds) {
    return smooth::normaliseLocal<VectorWindowOps, uint8_t, uint32_t>(src, w, h, ss, n, dst, ds);
}
int NormaliseF32(const float* src, uint32_t w, uint32_t h, uint32_t ss, uint32_t n, float* dst, uint32_t ds) {
    return smooth::normaliseLocal<VectorWindowOps, float, float>(src, w, h, ss, n, dst, ds);
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/smooth_v.h"

namespace pxr {
HWY_EXPORT(BoxF32);
HWY_EXPORT(NormaliseU8);
HWY_EXPORT(NormaliseF32);

// Unqualified names from the namespace of the exports (see gaussian3x3_v.cpp).
static void boxF32(const float* s, uint32_t w, uint32_t h, uint32_t ss, uint32_t n, float* d, uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(BoxF32)(s, w, h, ss, n, d, ds);
}
static int normaliseU8(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint32_t n, uint8_t* d,
                       uint32_t ds) {
    return HWY_DYNAMIC_DISPATCH(NormaliseU8)(s, w, h, ss, n, d, ds);
}
static int normaliseF32(const float* s, uint32_t w, uint32_t h, uint32_t ss, uint32_t n, float* d, uint32_t ds) {
    return HWY_DYNAMIC_DISPATCH(NormaliseF32)(s, w, h, ss, n, d, ds);
}
}  // namespace pxr

void pxrBoxFilterNxNf32V(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         float* dst, uint32_t dstStride) {
    pxr::boxF32(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

int pxrNormalizeLocalBoxu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t N, uint8_t* dst, uint32_t dstStride) {
    return pxr::normaliseU8(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

int pxrNormalizeLocalBoxf32V(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t N, float* dst, uint32_t dstStride) {
    return pxr::normaliseF32(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}
#endif
