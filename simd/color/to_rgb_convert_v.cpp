// YCbCr to packed RGB and the video-range decoder, vector kind. A vector of
// Y bytes is widened to two halves of 16-bit lanes; the chroma of each half
// is loaded already spread over its pixels; the arithmetic is the
// reference's, rearranged so that every intermediate fits 16 bits; the
// pixels left at the end of a row go through the reference's own span.
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
using D8Q = hn::Rebind<uint8_t, DU32>;  // one byte per 32-bit lane
using VI16 = hn::Vec<DI16>;

// Where the chroma of a row comes from: planar planes, or pairs in the
// order Cb, Cr or Cr, Cb.
enum class Src { Planar, CbCr, CrCb };

// Cb - 128 and Cr - 128 of the pixels [xp, xp + lanes) of a row, each chroma
// sample repeated over the Sx pixels it covers (xp even when Sx is 2).
template <uint32_t Sx, Src S>
HWY_INLINE void ChromaHalf(ycbcr::InRow c, size_t xp, VI16& cb, VI16& cr) {
    const DI16 di16;
    const DU16 du16;
    const DU32 du32;
    // Doubles each 16-bit lane of the lower half in order: (v, v) per 32 bits.
    auto twice = [&](hn::Vec<DU32> w) { return hn::BitCast(du16, hn::Or(w, hn::ShiftLeft<16>(w))); };
    if constexpr (S == Src::Planar) {
        if constexpr (Sx == 1) {
            const D8H d8h;
            cb = hn::PromoteTo(di16, hn::LoadU(d8h, c.cb + xp));
            cr = hn::PromoteTo(di16, hn::LoadU(d8h, c.cr + xp));
        } else {
            const D8Q d8q;
            cb = hn::BitCast(di16, twice(hn::PromoteTo(du32, hn::LoadU(d8q, c.cb + xp / 2))));
            cr = hn::BitCast(di16, twice(hn::PromoteTo(du32, hn::LoadU(d8q, c.cr + xp / 2))));
        }
    } else {
        const uint8_t* pairs = S == Src::CbCr ? c.cb : c.cr;
        hn::Vec<DU16> v;
        if constexpr (Sx == 1) {
            v = hn::BitCast(du16, hn::LoadU(D8(), pairs + 2 * xp));
        } else {
            const D8H d8h;
            const hn::Repartition<uint16_t, D8H> du16h;
            v = twice(hn::PromoteTo(du32, hn::BitCast(du16h, hn::LoadU(d8h, pairs + xp))));
        }
        const VI16 first = hn::BitCast(di16, hn::And(v, hn::Set(du16, 0xFF)));
        const VI16 second = hn::BitCast(di16, hn::ShiftRight<8>(v));
        cb = S == Src::CbCr ? first : second;
        cr = S == Src::CbCr ? second : first;
    }
    const VI16 k128 = hn::Set(di16, 128);
    cb = hn::Sub(cb, k128);
    cr = hn::Sub(cr, k128);
}

// The 8-bit weights. (256 Y + 128 + w C) >> 8 = Y + ((128 + w C) >> 8), and
// the weights above 127 are split so the products fit 16 bits:
// 359 = 256 + 103, -183 = -256 + 73, 454 = 512 - 58.
struct Weights8V {
    using Scalar = ycbcr::Weights8;
    static HWY_INLINE void Rgb(VI16 y, VI16 cb, VI16 cr, VI16& r, VI16& g, VI16& b) {
        const DI16 d;
        const VI16 k128 = hn::Set(d, 128);
        r = hn::Add(hn::Add(y, cr), hn::ShiftRight<8>(hn::Add(hn::Mul(cr, hn::Set(d, 103)), k128)));
        g = hn::Add(hn::Sub(y, cr),
                    hn::ShiftRight<8>(hn::Add(hn::Sub(k128, hn::Mul(cb, hn::Set(d, 88))), hn::Mul(cr, hn::Set(d, 73)))));
        b = hn::Add(hn::Add(y, hn::Add(cb, cb)), hn::ShiftRight<8>(hn::Sub(k128, hn::Mul(cb, hn::Set(d, 58)))));
    }
};

// JPEG-style Q15: (w x 2C + 16384) >> 15 is exactly MulFixedPoint15(2C, w);
// green sums two products before its one rounding, in 32-bit lanes.
struct JpegQ15V {
    using Scalar = ycbcr::JpegQ15;
    static HWY_INLINE void Rgb(VI16 y, VI16 cb, VI16 cr, VI16& r, VI16& g, VI16& b) {
        using J = ycbcr::JpegQ15;
        const DI16 d;
        const hn::Half<DI16> dh;
        const hn::Repartition<int32_t, DI16> d32;
        const VI16 cb2 = hn::Add(cb, cb), cr2 = hn::Add(cr, cr);
        r = hn::Add(y, hn::MulFixedPoint15(cr2, hn::Set(d, J::kCrR)));
        b = hn::Add(y, hn::MulFixedPoint15(cb2, hn::Set(d, J::kCbB)));
        auto green = [&](hn::Vec<decltype(d32)> cb32, hn::Vec<decltype(d32)> cr32) {
            const auto sum = hn::Add(hn::Add(hn::Mul(cb32, hn::Set(d32, J::kCbG)), hn::Mul(cr32, hn::Set(d32, J::kCrG))),
                                     hn::Set(d32, J::kHalf));
            return hn::DemoteTo(dh, hn::ShiftRight<J::kShift>(sum));
        };
        const auto lo = green(hn::PromoteTo(d32, hn::LowerHalf(dh, cb2)), hn::PromoteTo(d32, hn::LowerHalf(dh, cr2)));
        const auto hi = green(hn::PromoteTo(d32, hn::UpperHalf(dh, cb2)), hn::PromoteTo(d32, hn::UpperHalf(dh, cr2)));
        g = hn::Add(y, hn::Combine(d, hi, lo));
    }
};

// Writers: the two halves of a vector of pixels at pixel x.
struct Rgb888V {
    using Scalar = ycbcr::Rgb888;
    static HWY_INLINE void Store(const VI16 (&lo)[3], const VI16 (&hi)[3], uint8_t* dst, size_t x) {
        const D8 d8;
        const D8H d8h;
        auto bytes = [&](int i) { return hn::Combine(d8, hn::DemoteTo(d8h, hi[i]), hn::DemoteTo(d8h, lo[i])); };
        hn::StoreInterleaved3(bytes(0), bytes(1), bytes(2), d8, dst + 3 * x);
    }
};
struct Rgba8888V {
    using Scalar = ycbcr::Rgba8888;
    static HWY_INLINE void Store(const VI16 (&lo)[3], const VI16 (&hi)[3], uint8_t* dst, size_t x) {
        const D8 d8;
        const D8H d8h;
        auto bytes = [&](int i) { return hn::Combine(d8, hn::DemoteTo(d8h, hi[i]), hn::DemoteTo(d8h, lo[i])); };
        hn::StoreInterleaved4(bytes(0), bytes(1), bytes(2), hn::Set(d8, ycbcr::kAlpha), d8, dst + 4 * x);
    }
};

// 565 word of three components (clamped to 0..255 first): the top 5, 6 and 5 bits.
HWY_INLINE hn::Vec<DU16> Pack565(VI16 c0, VI16 c1, VI16 c2) {
    const DI16 di16;
    const DU16 du16;
    auto clamp = [&](VI16 v) { return hn::BitCast(du16, hn::Min(hn::Max(v, hn::Zero(di16)), hn::Set(di16, 255))); };
    return hn::Or(hn::Or(hn::ShiftLeft<8>(hn::And(clamp(c0), hn::Set(du16, 0xF8))),
                         hn::ShiftLeft<3>(hn::And(clamp(c1), hn::Set(du16, 0xFC)))),
                  hn::ShiftRight<3>(clamp(c2)));
}

struct Rgb565V {
    using Scalar = ycbcr::Rgb565;
    static HWY_INLINE void Store(const VI16 (&lo)[3], const VI16 (&hi)[3], uint8_t* dst, size_t x) {
        const D8 d8;
        const size_t half = hn::Lanes(DI16());
        hn::StoreU(hn::BitCast(d8, Pack565(lo[0], lo[1], lo[2])), d8, dst + 2 * x);
        hn::StoreU(hn::BitCast(d8, Pack565(hi[0], hi[1], hi[2])), d8, dst + 2 * (x + half));
    }
};

// Y of the pixels [x, x + lanes of D8) as two halves.
HWY_INLINE void LumaHalves(const uint8_t* y, size_t x, VI16& lo, VI16& hi) {
    const D8 d8;
    const D8H d8h;
    const DI16 di16;
    const auto v = hn::LoadU(d8, y + x);
    lo = hn::PromoteTo(di16, hn::LowerHalf(d8h, v));
    hi = hn::PromoteTo(di16, hn::UpperHalf(d8h, v));
}

template <class Math, class Writer, uint32_t Sx, Src S>
void RgbRow(const uint8_t* y, ycbcr::InRow c, uint32_t width, uint8_t* dst) {
    const size_t n = hn::Lanes(D8()), half = n / 2;
    size_t x = 0;
    for (; x + n <= width; x += n) {
        VI16 yl, yh, cbl, crl, cbh, crh;
        LumaHalves(y, x, yl, yh);
        ChromaHalf<Sx, S>(c, x, cbl, crl);
        ChromaHalf<Sx, S>(c, x + half, cbh, crh);
        VI16 lo[3], hi[3];
        Math::Rgb(yl, cbl, crl, lo[0], lo[1], lo[2]);
        Math::Rgb(yh, cbh, crh, hi[0], hi[1], hi[2]);
        Writer::Store(lo, hi, dst, x);
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
#define PXR_YCC_V_PLANAR_ROWS(name, sx, sy, Writer) \
    void name##Rows(const ycbcr::RgbJob& j) { RgbImage<Weights8V, Writer##V, sx, Src::Planar>(j); }
#define PXR_YCC_V_PSEUDO_ROWS(name, sx, sy, Order, Math, Writer) \
    void name##Rows(const ycbcr::RgbJob& j) { RgbImage<Math##V, Writer##V, sx, Src::Order>(j); }
PXR_YCC_PLANAR_TO_RGB(PXR_YCC_V_PLANAR_ROWS)
PXR_YCC_PSEUDO_TO_RGB(PXR_YCC_V_PSEUDO_ROWS)

#if HWY_TARGET != HWY_SCALAR
// Video range, rearranged for 16-bit lanes with m = Y - 16 and t = 42 m:
// 298 m = 256 m + t, 517 = 512 + 5, -208 = -256 + 48, 409 = 512 - 103.
HWY_INLINE hn::Vec<DU16> Video565(VI16 y, VI16 u, VI16 v) {
    const DI16 d;
    const VI16 m = hn::Sub(y, hn::Set(d, 16));
    const VI16 t = hn::Mul(m, hn::Set(d, 42));
    const VI16 c0 = hn::Add(hn::Add(m, hn::Add(u, u)), hn::ShiftRight<8>(hn::Add(t, hn::Mul(u, hn::Set(d, 5)))));
    const VI16 c1 = hn::Add(hn::Sub(m, v), hn::ShiftRight<8>(hn::Add(hn::Sub(t, hn::Mul(u, hn::Set(d, 100))),
                                                                     hn::Mul(v, hn::Set(d, 48)))));
    const VI16 c2 = hn::Add(hn::Add(m, hn::Add(v, v)), hn::ShiftRight<8>(hn::Sub(t, hn::Mul(v, hn::Set(d, 103)))));
    return Pack565(c0, c1, c2);
}

void VideoRows(const ycbcr::VideoJob& j) {
    const D8 d8;
    const DU16 du16;
    const size_t n = hn::Lanes(d8), half = n / 2;
    ycbcr::forEachVideoRow(j, [&](const uint8_t* y, const uint8_t* c, uint8_t* dst) {
        const ycbcr::InRow uv{c, c + 1, 2};
        size_t x = 0;
        for (; x + n <= j.width; x += n) {
            VI16 yl, yh, ul, vl, uh, vh;
            LumaHalves(y, x, yl, yh);
            ChromaHalf<2, Src::CbCr>(uv, x, ul, vl);
            ChromaHalf<2, Src::CbCr>(uv, x + half, uh, vh);
            const auto lo = Video565(yl, ul, vl), hi = Video565(yh, uh, vh);
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
PXR_YCC_PLANAR_TO_RGB(PXR_YCC_EXPORT_ROWS)
PXR_YCC_PSEUDO_TO_RGB(PXR_YCC_EXPORT_ROWS)
HWY_EXPORT(VideoRows);
static void videoDispatch(const ycbcr::VideoJob& j) { HWY_DYNAMIC_DISPATCH(VideoRows)(j); }
}  // namespace pxr

#define PXR_YCC_V_PLANAR_TO_RGB(name, sx, sy, Writer)                                      \
    void pxrColor##name##V(PXR_YCC_PLANAR_SRC_ARGS, PXR_YCC_RGB_DST_ARGS(Writer)) {        \
        pxr::name##Dispatch(PXR_YCC_PLANAR_RGB_JOB(sx, sy));                               \
    }
#define PXR_YCC_V_PSEUDO_TO_RGB(name, sx, sy, Order, Math, Writer)                         \
    void pxrColor##name##V(PXR_YCC_PSEUDO_SRC_ARGS, PXR_YCC_RGB_DST_ARGS(Writer)) {        \
        pxr::name##Dispatch(PXR_YCC_PSEUDO_RGB_JOB(sx, sy, pxr::ycbcr::Order));            \
    }
PXR_YCC_PLANAR_TO_RGB(PXR_YCC_V_PLANAR_TO_RGB)
PXR_YCC_PSEUDO_TO_RGB(PXR_YCC_V_PSEUDO_TO_RGB)

void pxrColorYUV420toRGB565u8V(PXR_YCC_VIDEO_ARGS) {
    pxr::videoDispatch(pxr::ycbcr::videoJob(src, srcWidth, srcHeight, dst, false));
}
void pxrColorYUV420toRGB565u8Rotate180V(PXR_YCC_VIDEO_ARGS) {
    pxr::videoDispatch(pxr::ycbcr::videoJob(src, srcWidth, srcHeight, dst, true));
}
#endif
