// Doubling, vector kind: the row passes of the cubic polyphase up-scaler
// (32-bit lanes) and of the [1 3] up-samplers (16-bit lanes), for one or two
// interleaved channels. Strips and replicated edges are the reference's
// drivers (scale_up_kernels.h).
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/scale/scale_up_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/scale/scale_up_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::scale::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR
// One lane: the reference's row passes.
void PolyVertical(const uint8_t* const* rows, const int32_t* w, int32_t* v, uint32_t n) {
    for (uint32_t c = 0; c < n; ++c) v[c] = up::polyColumn(rows, w, c);
}
void PolyHorizontal(const int32_t* v, uint8_t* out, uint32_t n, uint32_t ch) {
    up::polyHorizontalSpan(v, out, 0, n, ch);
}
void BlendRows(const uint8_t* nearer, const uint8_t* farther, uint8_t* out, uint32_t n) {
    for (uint32_t b = 0; b < n; ++b) out[b] = up::blend(nearer[b], farther[b]);
}
void ColumnSums(const uint8_t* nearer, const uint8_t* farther, uint16_t* sums, uint32_t n) {
    for (uint32_t b = 0; b < n; ++b) sums[b] = up::blendSum(nearer[b], farther[b]);
}
void UpsampleHorizontal(const uint16_t* s, uint8_t* out, uint32_t n, uint32_t ch) {
    up::upsampleHorizontalSpan(s, out, 0, n, ch);
}
#else
// Stores even and odd byte vectors interleaved by pixel: bytes for one
// channel, byte pairs for two.
template <class D8>
HWY_INLINE void StorePixelsInterleaved(D8 d8, hn::Vec<D8> even, hn::Vec<D8> odd, uint32_t ch, uint8_t* out) {
    if (ch == 1) {
        hn::StoreInterleaved2(even, odd, d8, out);
    } else {
        const hn::Repartition<uint16_t, D8> d16;
        hn::StoreInterleaved2(hn::BitCast(d16, even), hn::BitCast(d16, odd), d16, reinterpret_cast<uint16_t*>(out));
    }
}

void PolyVertical(const uint8_t* const* rows, const int32_t* w, int32_t* v, uint32_t n) {
    const hn::ScalableTag<int32_t> di;
    const hn::Rebind<uint8_t, decltype(di)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(di));
    const auto w0 = hn::Set(di, w[0]), w1 = hn::Set(di, w[1]), w2 = hn::Set(di, w[2]), w3 = hn::Set(di, w[3]);
    auto at = [&](int k, uint32_t c) { return hn::PromoteTo(di, hn::LoadU(d8, rows[k] + c)); };
    uint32_t c = 0;
    for (; c + N <= n; c += N) {
        const auto s = hn::Add(hn::Add(hn::Mul(at(0, c), w0), hn::Mul(at(1, c), w1)),
                               hn::Add(hn::Mul(at(2, c), w2), hn::Mul(at(3, c), w3)));
        hn::StoreU(s, di, v + c);
    }
    for (; c < n; ++c) v[c] = up::polyColumn(rows, w, c);
}

void PolyHorizontal(const int32_t* v, uint8_t* out, uint32_t n, uint32_t ch) {
    const hn::ScalableTag<int32_t> di;
    const hn::Rebind<uint8_t, decltype(di)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(di));
    const int64_t s = ch;
    const auto half = hn::Set(di, 1 << 13);
    auto tap = [&](int32_t w) { return hn::Set(di, w); };
    uint32_t b = 0;
    for (; b + N <= n; b += N) {
        const int32_t* p = v + b;
        const auto m2 = hn::LoadU(di, p - 2 * s), m1 = hn::LoadU(di, p - s), c0 = hn::LoadU(di, p);
        const auto p1 = hn::LoadU(di, p + s), p2 = hn::LoadU(di, p + 2 * s);
        const auto even = hn::Add(hn::Add(hn::Mul(m2, tap(up::kEvenTaps[0])), hn::Mul(m1, tap(up::kEvenTaps[1]))),
                                  hn::Add(hn::Mul(c0, tap(up::kEvenTaps[2])), hn::Mul(p1, tap(up::kEvenTaps[3]))));
        const auto odd = hn::Add(hn::Add(hn::Mul(m1, tap(up::kOddTaps[0])), hn::Mul(c0, tap(up::kOddTaps[1]))),
                                 hn::Add(hn::Mul(p1, tap(up::kOddTaps[2])), hn::Mul(p2, tap(up::kOddTaps[3]))));
        // Arithmetic shift, then the saturating narrowing clamps to 0..255.
        const auto e8 = hn::DemoteTo(d8, hn::ShiftRight<14>(hn::Add(even, half)));
        const auto o8 = hn::DemoteTo(d8, hn::ShiftRight<14>(hn::Add(odd, half)));
        StorePixelsInterleaved(d8, e8, o8, ch, out + 2 * size_t{b});
    }
    up::polyHorizontalSpan(v, out, b, n, ch);
}

void BlendRows(const uint8_t* nearer, const uint8_t* farther, uint8_t* out, uint32_t n) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const hn::RebindToSigned<decltype(d16)> di16;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    const auto two = hn::Set(d16, 2);
    uint32_t b = 0;
    for (; b + N <= n; b += N) {
        const auto p = hn::PromoteTo(d16, hn::LoadU(d8, nearer + b));
        const auto q = hn::PromoteTo(d16, hn::LoadU(d8, farther + b));
        const auto s = hn::Add(hn::Add(hn::Add(p, p), hn::Add(p, q)), two);
        hn::StoreU(hn::DemoteTo(d8, hn::BitCast(di16, hn::ShiftRight<2>(s))), d8, out + b);
    }
    for (; b < n; ++b) out[b] = up::blend(nearer[b], farther[b]);
}

void ColumnSums(const uint8_t* nearer, const uint8_t* farther, uint16_t* sums, uint32_t n) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    uint32_t b = 0;
    for (; b + N <= n; b += N) {
        const auto p = hn::PromoteTo(d16, hn::LoadU(d8, nearer + b));
        const auto q = hn::PromoteTo(d16, hn::LoadU(d8, farther + b));
        hn::StoreU(hn::Add(hn::Add(p, p), hn::Add(p, q)), d16, sums + b);
    }
    for (; b < n; ++b) sums[b] = up::blendSum(nearer[b], farther[b]);
}

void UpsampleHorizontal(const uint16_t* s, uint8_t* out, uint32_t n, uint32_t ch) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const hn::RebindToSigned<decltype(d16)> di16;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    const int64_t d = ch;
    const auto eight = hn::Set(d16, 8);
    uint32_t b = 0;
    for (; b + N <= n; b += N) {
        const uint16_t* p = s + b;
        const auto c = hn::LoadU(d16, p), l = hn::LoadU(d16, p - d), r = hn::LoadU(d16, p + d);
        const auto c3 = hn::Add(hn::Add(c, c), hn::Add(c, eight));
        const auto even = hn::ShiftRight<4>(hn::Add(c3, l)), odd = hn::ShiftRight<4>(hn::Add(c3, r));
        StorePixelsInterleaved(d8, hn::DemoteTo(d8, hn::BitCast(di16, even)), hn::DemoteTo(d8, hn::BitCast(di16, odd)),
                               ch, out + 2 * size_t{b});
    }
    up::upsampleHorizontalSpan(s, out, b, n, ch);
}

#endif  // HWY_TARGET == HWY_SCALAR

}  // namespace pxr::scale::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/scale/scale_v.h"

namespace pxr::scale {
HWY_EXPORT(PolyVertical);
HWY_EXPORT(PolyHorizontal);
HWY_EXPORT(BlendRows);
HWY_EXPORT(ColumnSums);
HWY_EXPORT(UpsampleHorizontal);

static void polyVertical(const uint8_t* const* rows, const int32_t* w, int32_t* v, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(PolyVertical)(rows, w, v, n);
}
static void polyHorizontal(const int32_t* v, uint8_t* out, uint32_t n, uint32_t ch) {
    HWY_DYNAMIC_DISPATCH(PolyHorizontal)(v, out, n, ch);
}
static void blendRows(const uint8_t* nearer, const uint8_t* farther, uint8_t* out, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(BlendRows)(nearer, farther, out, n);
}
static void columnSums(const uint8_t* nearer, const uint8_t* farther, uint16_t* sums, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(ColumnSums)(nearer, farther, sums, n);
}
static void upsampleHorizontal(const uint16_t* s, uint8_t* out, uint32_t n, uint32_t ch) {
    HWY_DYNAMIC_DISPATCH(UpsampleHorizontal)(s, out, n, ch);
}

static constexpr up::PolyKernels kPolyVector{polyVertical, polyHorizontal};
static constexpr up::UpsampleKernels kUpsampleVector{blendRows, columnSums, upsampleHorizontal};

}  // namespace pxr::scale

using namespace pxr::scale;

void pxrScaleUpPolyu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint8_t* dst, uint32_t dstStride) {
    up::polyDouble(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kPolyVector);
}
void pxrScaleUpPolyInterleaveu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride) {
    up::polyDouble(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kPolyVector);
}
void pxrUpsampleVerticalu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride) {
    up::upsampleVertical(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kUpsampleVector);
}
void pxrUpsampleHorizontalu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    up::upsampleHorizontal(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kUpsampleVector);
}
void pxrUpsample2Du8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                      uint8_t* dst, uint32_t dstStride) {
    up::upsample2D(src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, kUpsampleVector);
}
void pxrUpsampleVerticalInterleavedu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    up::upsampleVertical(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kUpsampleVector);
}
void pxrUpsampleHorizontalInterleavedu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    up::upsampleHorizontal(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kUpsampleVector);
}
void pxrUpsample2DInterleavedu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride) {
    up::upsample2D(src, srcWidth, srcHeight, srcStride, dst, dstStride, 2, kUpsampleVector);
}
#endif
