// Gaussian halving and doubling, vector kind: the two row passes of each
// (16-bit lanes for bytes, the reference's order of float operations for
// floats). Strips, edges and the mirrored columns are the reference's
// drivers (scale_gauss_kernels.h).
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/scale/scale_gauss_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/scale/scale_gauss_ref.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::scale::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR
// One lane: the reference's row passes.
void HalveVerticalF32(const float* const* rows, float* sums, uint32_t n) {
    gauss::verticalRef<2, float, float>(rows, sums, n);
}
void HalveHorizontalF32(const float* sums, float* out, uint32_t n) {
    gauss::horizontalRef<2, float, float>(sums, out, n);
}
void DoubleVertical(const uint8_t* a, const uint8_t* b, const uint8_t* c, uint16_t* even, uint16_t* odd,
                    uint32_t n) {
    gauss::doubleVerticalRef(a, b, c, even, odd, n);
}
void DoubleHorizontal(const uint16_t* s, uint8_t* out, uint32_t n) { gauss::doubleHorizontalRef(s, out, n); }
void Halve5VerticalU8(const uint8_t* const* rows, uint16_t* sums, uint32_t n) {
    gauss::verticalRef<2, uint8_t, uint16_t>(rows, sums, n);
}
void Halve5HorizontalU8(const uint16_t* sums, uint8_t* out, uint32_t n) {
    gauss::horizontalRef<2, uint8_t, uint16_t>(sums, out, n);
}
void Halve3VerticalU8(const uint8_t* const* rows, uint16_t* sums, uint32_t n) {
    gauss::verticalRef<1, uint8_t, uint16_t>(rows, sums, n);
}
void Halve3HorizontalU8(const uint16_t* sums, uint8_t* out, uint32_t n) {
    gauss::horizontalRef<1, uint8_t, uint16_t>(sums, out, n);
}
#else
// Runs body(i) for i = 0, N, 2N, ... and once more for the last N lanes
// (overlapping; the kernels recompute identical values there); n < N goes
// to the scalar tail(0, n).
template <class Body, class Tail>
HWY_INLINE void Strided(uint32_t n, uint32_t N, Body body, Tail tail) {
    if (n < N) return tail(0, n);
    uint32_t i = 0;
    for (; i + N <= n; i += N) body(i);
    if (i < n) body(n - N);
}

template <int R>
void HalveVerticalU8(const uint8_t* const* rows, uint16_t* sums, uint32_t n) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    auto at = [&](uint32_t k, uint32_t c) { return hn::PromoteTo(d16, hn::LoadU(d8, rows[k] + c)); };
    Strided(
        n, static_cast<uint32_t>(hn::Lanes(d16)),
        [&](uint32_t c) {
            if constexpr (R == 2) {
                const auto mid = at(2, c);
                const auto near = hn::ShiftLeft<2>(hn::Add(at(1, c), at(3, c)));
                const auto six = hn::Add(hn::ShiftLeft<2>(mid), hn::Add(mid, mid));
                hn::StoreU(hn::Add(hn::Add(at(0, c), at(4, c)), hn::Add(near, six)), d16, sums + c);
            } else {
                const auto mid = at(1, c);
                hn::StoreU(hn::Add(hn::Add(at(0, c), at(2, c)), hn::Add(mid, mid)), d16, sums + c);
            }
        },
        [&](uint32_t c0, uint32_t c1) {
            for (uint32_t c = c0; c < c1; ++c) sums[c] = gauss::columnSum<R>(rows, c);
        });
}

template <int R>
void HalveHorizontalU8(const uint16_t* sums, uint8_t* out, uint32_t n) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const hn::RebindToSigned<decltype(d16)> di16;
    Strided(
        n, static_cast<uint32_t>(hn::Lanes(d16)),
        [&](uint32_t i) {
            hn::Vec<decltype(d16)> e0, o0, e1, o1;
            hn::LoadInterleaved2(d16, sums + 2 * size_t{i}, e0, o0);      // s[2i], s[2i+1]
            hn::LoadInterleaved2(d16, sums + 2 * size_t{i} + 2, e1, o1);  // s[2i+2], s[2i+3]
            hn::Vec<decltype(d16)> q;
            if constexpr (R == 2) {
                hn::Vec<decltype(d16)> e2, o2;
                hn::LoadInterleaved2(d16, sums + 2 * size_t{i} + 4, e2, o2);  // s[2i+4]
                const auto six = hn::Add(hn::ShiftLeft<2>(e1), hn::Add(e1, e1));
                const auto sum = hn::Add(hn::Add(e0, e2), hn::Add(hn::ShiftLeft<2>(hn::Add(o0, o1)), six));
                q = hn::ShiftRight<8>(hn::Add(sum, hn::Set(d16, 128)));
            } else {
                const auto sum = hn::Add(hn::Add(e0, e1), hn::Add(o0, o0));
                q = hn::ShiftRight<4>(hn::Add(sum, hn::Set(d16, 8)));
            }
            hn::StoreU(hn::DemoteTo(d8, hn::BitCast(di16, q)), d8, out + i);
        },
        [&](uint32_t i0, uint32_t i1) {
            for (uint32_t i = i0; i < i1; ++i) out[i] = gauss::halve<R>(sums + 2 * size_t{i});
        });
}

void HalveVerticalF32(const float* const* rows, float* sums, uint32_t n) {
    const hn::ScalableTag<float> d;
    const auto four = hn::Set(d, 4.0f), six = hn::Set(d, 6.0f);
    Strided(
        n, static_cast<uint32_t>(hn::Lanes(d)),
        [&](uint32_t c) {
            auto at = [&](int k) { return hn::LoadU(d, rows[k] + c); };
            // ((r0 + r4) + (r1 + r3) * 4) + r2 * 6, as the reference.
            const auto s = hn::Add(hn::Add(hn::Add(at(0), at(4)), hn::Mul(hn::Add(at(1), at(3)), four)),
                                   hn::Mul(at(2), six));
            hn::StoreU(s, d, sums + c);
        },
        [&](uint32_t c0, uint32_t c1) {
            for (uint32_t c = c0; c < c1; ++c) sums[c] = gauss::columnSum<2>(rows, c);
        });
}

void HalveHorizontalF32(const float* sums, float* out, uint32_t n) {
    const hn::ScalableTag<float> d;
    const auto four = hn::Set(d, 4.0f), six = hn::Set(d, 6.0f), scale = hn::Set(d, 1.0f / 256.0f);
    Strided(
        n, static_cast<uint32_t>(hn::Lanes(d)),
        [&](uint32_t i) {
            hn::Vec<decltype(d)> e0, o0, e1, o1, e2, o2;
            hn::LoadInterleaved2(d, sums + 2 * size_t{i}, e0, o0);
            hn::LoadInterleaved2(d, sums + 2 * size_t{i} + 2, e1, o1);
            hn::LoadInterleaved2(d, sums + 2 * size_t{i} + 4, e2, o2);
            const auto s = hn::Add(hn::Add(hn::Add(e0, e2), hn::Mul(hn::Add(o0, o1), four)), hn::Mul(e1, six));
            hn::StoreU(hn::Mul(s, scale), d, out + i);
        },
        [&](uint32_t i0, uint32_t i1) {
            for (uint32_t i = i0; i < i1; ++i) out[i] = gauss::halve<2>(sums + 2 * size_t{i});
        });
}

void DoubleVertical(const uint8_t* a, const uint8_t* b, const uint8_t* c, uint16_t* even, uint16_t* odd,
                    uint32_t n) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    Strided(
        n, static_cast<uint32_t>(hn::Lanes(d16)),
        [&](uint32_t x) {
            const auto va = hn::PromoteTo(d16, hn::LoadU(d8, a + x));
            const auto vb = hn::PromoteTo(d16, hn::LoadU(d8, b + x));
            const auto vc = hn::PromoteTo(d16, hn::LoadU(d8, c + x));
            const auto six = hn::Add(hn::ShiftLeft<2>(vb), hn::Add(vb, vb));
            hn::StoreU(hn::Add(hn::Add(va, vc), six), d16, even + x);
            hn::StoreU(hn::ShiftLeft<2>(hn::Add(vb, vc)), d16, odd + x);
        },
        [&](uint32_t x0, uint32_t x1) { gauss::doubleVerticalRef(a + x0, b + x0, c + x0, even + x0, odd + x0, x1 - x0); });
}

void DoubleHorizontal(const uint16_t* s, uint8_t* out, uint32_t n) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const hn::RebindToSigned<decltype(d16)> di16;
    const auto round = hn::Set(d16, 32);
    Strided(
        n, static_cast<uint32_t>(hn::Lanes(d16)),
        [&](uint32_t j) {
            const auto l = hn::LoadU(d16, s + j), m = hn::LoadU(d16, s + j + 1), r = hn::LoadU(d16, s + j + 2);
            const auto six = hn::Add(hn::ShiftLeft<2>(m), hn::Add(m, m));
            const auto e = hn::ShiftRight<6>(hn::Add(hn::Add(hn::Add(l, r), six), round));
            const auto o = hn::ShiftRight<6>(hn::Add(hn::ShiftLeft<2>(hn::Add(m, r)), round));
            hn::StoreInterleaved2(hn::DemoteTo(d8, hn::BitCast(di16, e)), hn::DemoteTo(d8, hn::BitCast(di16, o)), d8,
                                  out + 2 * size_t{j});
        },
        [&](uint32_t j0, uint32_t j1) { gauss::doubleHorizontalRef(s + j0, out + 2 * size_t{j0}, j1 - j0); });
}

void Halve5VerticalU8(const uint8_t* const* rows, uint16_t* sums, uint32_t n) { HalveVerticalU8<2>(rows, sums, n); }
void Halve5HorizontalU8(const uint16_t* sums, uint8_t* out, uint32_t n) { HalveHorizontalU8<2>(sums, out, n); }
void Halve3VerticalU8(const uint8_t* const* rows, uint16_t* sums, uint32_t n) { HalveVerticalU8<1>(rows, sums, n); }
void Halve3HorizontalU8(const uint16_t* sums, uint8_t* out, uint32_t n) { HalveHorizontalU8<1>(sums, out, n); }

#endif  // HWY_TARGET == HWY_SCALAR

}  // namespace pxr::scale::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/scale/scale_v.h"

namespace pxr::scale {
HWY_EXPORT(Halve5VerticalU8);
HWY_EXPORT(Halve5HorizontalU8);
HWY_EXPORT(Halve3VerticalU8);
HWY_EXPORT(Halve3HorizontalU8);
HWY_EXPORT(HalveVerticalF32);
HWY_EXPORT(HalveHorizontalF32);
HWY_EXPORT(DoubleVertical);
HWY_EXPORT(DoubleHorizontal);

static void halve5Vertical(const uint8_t* const* rows, uint16_t* sums, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(Halve5VerticalU8)(rows, sums, n);
}
static void halve5Horizontal(const uint16_t* sums, uint8_t* out, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(Halve5HorizontalU8)(sums, out, n);
}
static void halve3Vertical(const uint8_t* const* rows, uint16_t* sums, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(Halve3VerticalU8)(rows, sums, n);
}
static void halve3Horizontal(const uint16_t* sums, uint8_t* out, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(Halve3HorizontalU8)(sums, out, n);
}
static void halveVerticalF32(const float* const* rows, float* sums, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(HalveVerticalF32)(rows, sums, n);
}
static void halveHorizontalF32(const float* sums, float* out, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(HalveHorizontalF32)(sums, out, n);
}
static void doubleVertical(const uint8_t* a, const uint8_t* b, const uint8_t* c, uint16_t* even, uint16_t* odd,
                           uint32_t n) {
    HWY_DYNAMIC_DISPATCH(DoubleVertical)(a, b, c, even, odd, n);
}
static void doubleHorizontal(const uint16_t* s, uint8_t* out, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(DoubleHorizontal)(s, out, n);
}

namespace gauss {
const DownKernels<uint8_t, uint16_t> kHalve5u8Vector{halve5Vertical, halve5Horizontal};
const DownKernels<float, float> kHalve5f32Vector{halveVerticalF32, halveHorizontalF32};
}  // namespace gauss

static constexpr gauss::DownKernels<uint8_t, uint16_t> kHalve3u8Vector{halve3Vertical, halve3Horizontal};
static constexpr gauss::UpKernels kDoubleVector{doubleVertical, doubleHorizontal};

}  // namespace pxr::scale

using namespace pxr::scale;

void pxrScaleDownBy2Gaussian5x5u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    gauss::halveImage<2>(src, srcWidth, srcHeight, srcStride, dst, srcWidth / 2, srcHeight / 2, dstStride,
                         gauss::kHalve5u8Vector);
}

void pxrScaleDownBy2Gaussian5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    pxrScaleDownBy2Gaussian5x5u8_v2V(src, srcWidth, srcHeight, srcWidth, dst, srcWidth / 2);
}

int pxrScaleDownBy2Gaussian3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride) {
    gauss::halveImage<1>(src, srcWidth, srcHeight, srcStride, dst, srcWidth / 2, srcHeight / 2, dstStride,
                         kHalve3u8Vector);
    return 0;
}

void pxrScaleDownBy2Gaussian5x5f32_v2V(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, float* dst, uint32_t dstStride) {
    gauss::halveImage<2>(src, srcWidth, srcHeight, srcStride, dst, srcWidth / 2, srcHeight / 2, dstStride,
                         gauss::kHalve5f32Vector);
}

void pxrScaleDownBy2Gaussian5x5f32V(const float* src, uint32_t srcWidth, uint32_t srcHeight, float* dst) {
    pxrScaleDownBy2Gaussian5x5f32_v2V(src, srcWidth, srcHeight, srcWidth * 4, dst, srcWidth / 2 * 4);
}

void pxrScaleUpBy2Gaussian5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride) {
    gauss::doubleImage(src, srcWidth, srcHeight, srcStride, dst, dstStride, kDoubleVector);
}
#endif
