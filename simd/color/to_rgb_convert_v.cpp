// YCbCr to packed RGB and the video-range decoder, vector kind. The
// reference's arithmetic is rearranged as Y plus a term of the chroma alone,
// formed in 16-bit lanes once per chroma sample; with subsampled chroma the
// terms are added to the Y bytes with saturation (the reference's clamp),
// otherwise in 16-bit lanes. The video-range decoder stays in 16-bit lanes.
// The pixels left at the end of a row go through the reference's own span.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/color/to_rgb_convert_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/color/to_rgb_kernels.h"
#include "imgproc/color/to_rgb_members.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET != HWY_SCALAR
using D8 = hn::ScalableTag<uint8_t>;
using DI16 = hn::ScalableTag<int16_t>;
using DU16 = hn::ScalableTag<uint16_t>;
using DU32 = hn::ScalableTag<uint32_t>;
using D8H = hn::Rebind<uint8_t, DI16>;  // one byte per 16-bit lane
using V8 = hn::Vec<D8>;
using VI16 = hn::Vec<DI16>;

// Where the chroma of a row comes from: planar planes, or pairs in the
// order Cb, Cr or Cr, Cb.
enum class Src { Planar, CbCr, CrCb };

// Cb - 128 and Cr - 128 of the chroma samples [s, s + lanes of DI16).
template <Src S>
HWY_INLINE void ChromaSamples(ycbcr::InRow c, size_t s, VI16& cb, VI16& cr) {
    const DI16 di16;
    const DU16 du16;
    if constexpr (S == Src::Planar) {
        const D8H d8h;
        cb = hn::PromoteTo(di16, hn::LoadU(d8h, c.cb + s));
        cr = hn::PromoteTo(di16, hn::LoadU(d8h, c.cr + s));
    } else {
        const auto pairs = hn::BitCast(du16, hn::LoadU(D8(), (S == Src::CbCr ? c.cb : c.cr) + 2 * s));
        const VI16 first = hn::BitCast(di16, hn::And(pairs, hn::Set(du16, 0xFF)));
        const VI16 second = hn::BitCast(di16, hn::ShiftRight<8>(pairs));
        cb = S == Src::CbCr ? first : second;
        cr = S == Src::CbCr ? second : first;
    }
    const VI16 k128 = hn::Set(di16, 128);
    cb = hn::Sub(cb, k128);
    cr = hn::Sub(cr, k128);
}

// What each chroma sample adds to Y, per component (the arithmetic is
// Y + term, clamped, for both weight sets).
struct Terms {
    VI16 r, g, b;
};

// The 8-bit weights. (256 Y + 128 + w C) >> 8 = Y + ((128 + w C) >> 8), and
// the weights above 127 are split so the products fit 16 bits:
// 359 = 256 + 103, -183 = -256 + 73, 454 = 512 - 58.
struct Weights8V {
    using Scalar = ycbcr::Weights8;
    static HWY_INLINE Terms Of(VI16 cb, VI16 cr) {
        const DI16 d;
        const VI16 k128 = hn::Set(d, 128);
        return {hn::Add(cr, hn::ShiftRight<8>(hn::Add(hn::Mul(cr, hn::Set(d, 103)), k128))),
                hn::Sub(hn::ShiftRight<8>(hn::Add(hn::Sub(k128, hn::Mul(cb, hn::Set(d, 88))), hn::Mul(cr, hn::Set(d, 73)))),
                        cr),
                hn::Add(hn::Add(cb, cb), hn::ShiftRight<8>(hn::Sub(k128, hn::Mul(cb, hn::Set(d, 58)))))};
    }
};

// JPEG-style Q15: (w x 2C + 16384) >> 15 is exactly MulFixedPoint15(2C, w);
// green sums two products before its one rounding, in 32-bit lanes.
struct JpegQ15V {
    using Scalar = ycbcr::JpegQ15;
    static HWY_INLINE Terms Of(VI16 cb, VI16 cr) {
        using J = ycbcr::JpegQ15;
        const DI16 d;
        const hn::Half<DI16> dh;
        const hn::Repartition<int32_t, DI16> d32;
        const VI16 cb2 = hn::Add(cb, cb), cr2 = hn::Add(cr, cr);
        auto green = [&](hn::Vec<decltype(d32)> cb32, hn::Vec<decltype(d32)> cr32) {
            const auto sum = hn::Add(hn::Add(hn::Mul(cb32, hn::Set(d32, J::kCbG)), hn::Mul(cr32, hn::Set(d32, J::kCrG))),
                                     hn::Set(d32, J::kHalf));
            return hn::DemoteTo(dh, hn::ShiftRight<J::kShift>(sum));
        };
        const auto lo = green(hn::PromoteTo(d32, hn::LowerHalf(dh, cb2)), hn::PromoteTo(d32, hn::LowerHalf(dh, cr2)));
        const auto hi = green(hn::PromoteTo(d32, hn::UpperHalf(dh, cb2)), hn::PromoteTo(d32, hn::UpperHalf(dh, cr2)));
        return {hn::MulFixedPoint15(cr2, hn::Set(d, J::kCrR)), hn::Combine(d, hi, lo),
                hn::MulFixedPoint15(cb2, hn::Set(d, J::kCbB))};
    }
};

// A term as two byte vectors, its positive and negative parts, so that
// clamp(Y + term) = SaturatedSub(SaturatedAdd(Y, pos), neg) on bytes (every
// term lies within -255..255). Used where one term serves two pixels.
struct Offset {
    V8 pos, neg;
};
HWY_INLINE V8 Apply(V8 y, const Offset& o) { return hn::SaturatedSub(hn::SaturatedAdd(y, o.pos), o.neg); }

// From a term per chroma sample, each sample spread over two pixels: a
// 16-bit lane t becomes the bytes t, t in order.
HWY_INLINE Offset Spread(VI16 t) {
    const DI16 di16;
    const DU16 du16;
    auto twice = [&](VI16 v) {
        const auto u = hn::BitCast(du16, hn::Max(v, hn::Zero(di16)));
        return hn::BitCast(D8(), hn::Or(u, hn::ShiftLeft<8>(u)));
    };
    return {twice(t), twice(hn::Neg(t))};
}

// Y plus terms per pixel, in two halves of 16-bit lanes, clamped to bytes.
HWY_INLINE V8 Sum(VI16 yLo, VI16 yHi, VI16 tLo, VI16 tHi) {
    const D8H d8h;
    return hn::Combine(D8(), hn::DemoteTo(d8h, hn::Add(yHi, tHi)), hn::DemoteTo(d8h, hn::Add(yLo, tLo)));
}

// Writers: a vector of pixels at pixel x.
struct Rgb888V {
    using Scalar = ycbcr::Rgb888;
    static HWY_INLINE void Store(V8 r, V8 g, V8 b, uint8_t* dst, size_t x) {
        hn::StoreInterleaved3(r, g, b, D8(), dst + 3 * x);
    }
};
struct Rgba8888V {
    using Scalar = ycbcr::Rgba8888;
    static HWY_INLINE void Store(V8 r, V8 g, V8 b, uint8_t* dst, size_t x) {
        const D8 d8;
        hn::StoreInterleaved4(r, g, b, hn::Set(d8, ycbcr::kAlpha), d8, dst + 4 * x);
    }
};
// The 565 word's high byte is r & 0xF8 | g >> 5, its low byte
// (g << 3) & 0xE0 | b >> 3; little-endian words store the low byte first.
struct Rgb565V {
    using Scalar = ycbcr::Rgb565;
    static HWY_INLINE void Store(V8 r, V8 g, V8 b, uint8_t* dst, size_t x) {
        const D8 d8;
        const V8 high = hn::Or(hn::And(r, hn::Set(d8, 0xF8)), hn::ShiftRight<5>(g));
        const V8 low = hn::Or(hn::And(hn::ShiftLeft<3>(g), hn::Set(d8, 0xE0)), hn::ShiftRight<3>(b));
        hn::StoreInterleaved2(low, high, d8, dst + 2 * x);
    }
};

template <class Math, class Writer, uint32_t Sx, Src S>
void RgbRow(const uint8_t* y, ycbcr::InRow c, uint32_t width, uint8_t* dst) {
    const D8 d8;
    const size_t n = hn::Lanes(d8), half = n / 2;
    size_t x = 0;
    for (; x + n <= width; x += n) {
        const V8 yv = hn::LoadU(d8, y + x);
        if constexpr (Sx == 2) {  // one chroma sample per two pixels: terms at chroma resolution
            VI16 cb, cr;
            ChromaSamples<S>(c, x / 2, cb, cr);
            const Terms t = Math::Of(cb, cr);
            Writer::Store(Apply(yv, Spread(t.r)), Apply(yv, Spread(t.g)), Apply(yv, Spread(t.b)), dst, x);
        } else {
            const DI16 di16;
            const D8H d8h;
            const VI16 yLo = hn::PromoteTo(di16, hn::LowerHalf(d8h, yv)), yHi = hn::PromoteTo(di16, hn::UpperHalf(d8h, yv));
            VI16 cb0, cr0, cb1, cr1;
            ChromaSamples<S>(c, x, cb0, cr0);
            ChromaSamples<S>(c, x + half, cb1, cr1);
            const Terms t0 = Math::Of(cb0, cr0), t1 = Math::Of(cb1, cr1);
            Writer::Store(Sum(yLo, yHi, t0.r, t1.r), Sum(yLo, yHi, t0.g, t1.g), Sum(yLo, yHi, t0.b, t1.b), dst, x);
        }
    }
    ycbcr::rgbSpan<typename Math::Scalar, typename Writer::Scalar>(y, c, Sx, static_cast<uint32_t>(x), width, dst);
}

template <class Math, class Writer, uint32_t Sx, Src S>
void RgbImage(const ycbcr::RgbJob& j) {
    ycbcr::forEachRgbRow(j, [&](const uint8_t* y, ycbcr::InRow c, uint8_t* dst) {
        RgbRow<Math, Writer, Sx, S>(y, c, j.width, dst);
    });
}

#else  // One-lane vectors: the reference walks themselves.
enum class Src { Planar, CbCr, CrCb };
struct Weights8V { using Scalar = ycbcr::Weights8; };
struct JpegQ15V { using Scalar = ycbcr::JpegQ15; };
struct Rgb888V { using Scalar = ycbcr::Rgb888; };
struct Rgba8888V { using Scalar = ycbcr::Rgba8888; };
struct Rgb565V { using Scalar = ycbcr::Rgb565; };
template <class Math, class Writer, uint32_t Sx, Src S>
void RgbImage(const ycbcr::RgbJob& j) {
    ycbcr::rgbImage<typename Math::Scalar, typename Writer::Scalar>(j);
}
#endif  // HWY_TARGET != HWY_SCALAR

// One function per member, for export.
#define PXR_YCC_V_SRC_PLANAR(Order) Src::Planar
#define PXR_YCC_V_SRC_PSEUDO(Order) Src::Order
#define PXR_YCC_V_ROWS(name, Side, sx, sy, Order, Math, Writer, ...) \
    void name##Rows(const ycbcr::RgbJob& j) { RgbImage<Math##V, Writer##V, sx, PXR_YCC_V_SRC_##Side(Order)>(j); }
PXR_YCC_TO_RGB(PXR_YCC_V_ROWS)

#if HWY_TARGET != HWY_SCALAR
// Video range, rearranged for 16-bit lanes with m = Y - 16 and t = 42 m:
// 298 m = 256 m + t, 517 = 512 + 5, -208 = -256 + 48, 409 = 512 - 103.
HWY_INLINE hn::Vec<DU16> Video565(VI16 y, VI16 u, VI16 v) {
    const DI16 d;
    const DU16 du16;
    const VI16 m = hn::Sub(y, hn::Set(d, 16));
    const VI16 t = hn::Mul(m, hn::Set(d, 42));
    const VI16 c0 = hn::Add(hn::Add(m, hn::Add(u, u)), hn::ShiftRight<8>(hn::Add(t, hn::Mul(u, hn::Set(d, 5)))));
    const VI16 c1 = hn::Add(hn::Sub(m, v), hn::ShiftRight<8>(hn::Add(hn::Sub(t, hn::Mul(u, hn::Set(d, 100))),
                                                                     hn::Mul(v, hn::Set(d, 48)))));
    const VI16 c2 = hn::Add(hn::Add(m, hn::Add(v, v)), hn::ShiftRight<8>(hn::Sub(t, hn::Mul(v, hn::Set(d, 103)))));
    auto clamp = [&](VI16 c) { return hn::BitCast(du16, hn::Min(hn::Max(c, hn::Zero(d)), hn::Set(d, 255))); };
    return hn::Or(hn::Or(hn::ShiftLeft<8>(hn::And(clamp(c0), hn::Set(du16, 0xF8))),
                         hn::ShiftLeft<3>(hn::And(clamp(c1), hn::Set(du16, 0xFC)))),
                  hn::ShiftRight<3>(clamp(c2)));
}

// The lower or upper half of the lanes of v, each lane twice, in order.
template <bool Upper>
HWY_INLINE VI16 Twice(VI16 v) {
    const DU16 du16;
    const hn::Half<DU16> dh;
    const DU32 du32;
    const auto u = hn::BitCast(du16, v);
    const auto w = hn::PromoteTo(du32, Upper ? hn::UpperHalf(dh, u) : hn::LowerHalf(dh, u));
    return hn::BitCast(DI16(), hn::Or(w, hn::ShiftLeft<16>(w)));
}

void VideoRows(const ycbcr::VideoJob& j) {
    const D8 d8;
    const D8H d8h;
    const DI16 di16;
    const DU16 du16;
    const size_t n = hn::Lanes(d8), half = n / 2;
    ycbcr::forEachVideoRow(j, [&](const uint8_t* y, const uint8_t* c, uint8_t* dst) {
        const ycbcr::InRow uv{c, c + 1, 2};
        size_t x = 0;
        for (; x + n <= j.width; x += n) {
            const auto yv = hn::LoadU(d8, y + x);
            VI16 u, v;
            ChromaSamples<Src::CbCr>(uv, x / 2, u, v);
            const auto lo = Video565(hn::PromoteTo(di16, hn::LowerHalf(d8h, yv)), Twice<false>(u), Twice<false>(v));
            const auto hi = Video565(hn::PromoteTo(di16, hn::UpperHalf(d8h, yv)), Twice<true>(u), Twice<true>(v));
            if (j.rotate) {  // pixels [x, x + n) land reversed on [width - x - n, width - x)
                hn::StoreU(hn::BitCast(d8, hn::Reverse(du16, hi)), d8, dst + 2 * (j.width - x - n));
                hn::StoreU(hn::BitCast(d8, hn::Reverse(du16, lo)), d8, dst + 2 * (j.width - x - half));
            } else {
                hn::StoreU(hn::BitCast(d8, lo), d8, dst + 2 * x);
                hn::StoreU(hn::BitCast(d8, hi), d8, dst + 2 * (x + half));
            }
        }
        ycbcr::videoSpan(y, c, static_cast<uint32_t>(x), j.width, dst, j.width, j.rotate);
    });
}
#else
void VideoRows(const ycbcr::VideoJob& j) { ycbcr::videoImage(j); }
#endif  // HWY_TARGET != HWY_SCALAR

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/color/to_rgb_v.h"

// The dispatch names each function unqualified, from the namespace of its
// export: with a single compiled target (32-bit ARM) it becomes a direct call.
namespace pxr {
#define PXR_YCC_EXPORT_ROWS(name, ...) \
    HWY_EXPORT(name##Rows);            \
    static void name##Dispatch(const ycbcr::RgbJob& j) { HWY_DYNAMIC_DISPATCH(name##Rows)(j); }
PXR_YCC_TO_RGB(PXR_YCC_EXPORT_ROWS)
HWY_EXPORT(VideoRows);
static void videoDispatch(const ycbcr::VideoJob& j) { HWY_DYNAMIC_DISPATCH(VideoRows)(j); }
}  // namespace pxr

#define PXR_YCC_V_TO_RGB(name, Src, sx, sy, Order, Math, Writer, ...)              \
    void pxrColor##name##V(PXR_YCC_SRC_ARGS_##Src, PXR_YCC_RGB_DST_ARGS(Writer)) {  \
        pxr::name##Dispatch(PXR_YCC_RGB_JOB(Src, sx, sy, pxr::ycbcr::Order));        \
    }
PXR_YCC_TO_RGB(PXR_YCC_V_TO_RGB)

void pxrColorYUV420toRGB565u8V(PXR_YCC_VIDEO_ARGS) {
    pxr::videoDispatch(pxr::ycbcr::videoJob(src, srcWidth, srcHeight, dst, false));
}
void pxrColorYUV420toRGB565u8Rotate180V(PXR_YCC_VIDEO_ARGS) {
    pxr::videoDispatch(pxr::ycbcr::videoJob(src, srcWidth, srcHeight, dst, true));
}
#endif
