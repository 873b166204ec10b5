// Grey, JPEG-style YCrCb, HSV and LAB from packed RGB, vector kind. Grey and
// YCrCb split their 16-bit (Q16, Q15) weights into a high and a low byte so
// that every sum fits 16-bit lanes; HSV and LAB gather from the reference's
// own tables in 32-bit lanes. The rest of a row goes to the reference span.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/color/from_rgb_other_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/color/from_rgb_kernels.h"
#include "simd/color/from_rgb_pixels_v.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::color::HWY_NAMESPACE {

#if HWY_TARGET != HWY_SCALAR

// With w = 256 h + l for each weight, sum(w c) = 256 H + L, where H and L
// (the sums over the high and the low bytes) each fit 16 bits, and
// (256 H + L + 256 k) >> (8 + s) = (H + k + (L >> 8)) >> s.
template <int S>
V16 splitSum(V16 high, V16 low, uint16_t k) {
    return hn::ShiftRight<S>(hn::Add(hn::Add(high, hn::Set(D16(), k)), hn::ShiftRight<8>(low)));
}

// (19595 R + 38469 G + 7471 B + 32768) >> 16.
inline V16 grey(const Lanes3& v) { return splitSum<8>(weigh<76, 150, 29>(v), weigh<139, 69, 47>(v), 128); }

// Q15 JPEG weights, see color_common.h. The chroma forms use 255 - c for the
// negative weights, which adds 128 x 32768 + 16384 to the sum's constant.
inline V16 jpegY(const Lanes3& v) { return splitSum<7>(weigh<38, 75, 14>(v), weigh<70, 35, 151>(v), 64); }
inline V16 jpegCr(const Lanes3& v) {
    const Lanes3 inv = inverse(v);  // 16384 R + 13720 G' + 2664 B' + 32768
    const V16 high = hn::Add(hn::ShiftLeft<6>(v.c0), weigh<0, 53, 10>(inv));
    return hn::Min(splitSum<7>(high, weigh<0, 152, 104>(inv), 128), hn::Set(D16(), 255));
}
inline V16 jpegCb(const Lanes3& v) {
    const Lanes3 inv = inverse(v);  // 5529 R' + 10855 G' + 16384 B + 32768
    const V16 high = hn::Add(weigh<21, 42, 0>(inv), hn::ShiftLeft<6>(v.c2));
    return hn::Min(splitSum<7>(high, weigh<153, 103, 0>(inv), 128), hn::Set(D16(), 255));
}

inline uint32_t greyRow(const uint8_t* s, uint8_t* d, uint32_t width) {
    const size_t n = pixelsPerStep();
    size_t x = 0;
    for (; x + n <= width; x += n) {
        const Channels p = load(Rgb888(), s, x);
        hn::StoreU(join(grey(evens(p)), grey(odds(p))), D8(), d + x);
    }
    return static_cast<uint32_t>(x);
}

inline uint32_t jpegRow(const uint8_t* s, uint8_t* d, uint32_t width) {
    const size_t n = pixelsPerStep();
    size_t x = 0;
    for (; x + n <= width; x += n) {
        const Channels p = load(Rgb888(), s, x);
        const Lanes3 e = evens(p), o = odds(p);
        hn::StoreInterleaved3(join(jpegY(e), jpegY(o)), join(jpegCr(e), jpegCr(o)), join(jpegCb(e), jpegCb(o)), D8(),
                              d + 3 * x);
    }
    return static_cast<uint32_t>(x);
}

// 32-bit lanes and the bytes of as many pixels.
using D32 = hn::ScalableTag<int32_t>;
using V32 = hn::Vec<D32>;
using D8Q = hn::Rebind<uint8_t, D32>;

inline V32 gather(const int32_t* table, V32 index) { return hn::GatherIndex(D32(), table, index); }
inline V32 gather(const uint32_t* table, V32 index) {
    return gather(reinterpret_cast<const int32_t*>(table), index);  // entries below 2^31
}

inline uint32_t hsvRow(const uint8_t* s, uint8_t* d, uint32_t width) {
    const D32 d32;
    const D8Q d8;
    const size_t n = hn::Lanes(d32);
    size_t x = 0;
    for (; x + n <= width; x += n) {
        hn::Vec<D8Q> r8, g8, b8;
        hn::LoadInterleaved3(d8, s + 3 * x, r8, g8, b8);
        const V32 r = hn::PromoteTo(d32, r8), g = hn::PromoteTo(d32, g8), b = hn::PromoteTo(d32, b8);
        const V32 v = hn::Max(hn::Max(r, g), b);
        const V32 diff = hn::Sub(v, hn::Min(hn::Min(r, g), b));
        const V32 inv = gather(OneByxLUT.data(), diff);
        const V32 hueR = hn::Add(hn::Mul(hn::Sub(g, b), inv), hn::IfThenElseZero(hn::Lt(g, b), hn::Set(d32, 0x60000)));
        const V32 hueG = hn::Add(hn::Mul(hn::Sub(b, r), inv), hn::Set(d32, 0x20000));
        const V32 hueB = hn::Add(hn::Mul(hn::Sub(r, g), inv), hn::Set(d32, 0x40000));
        const V32 hue = hn::IfThenElse(hn::Eq(v, r), hueR, hn::IfThenElse(hn::Eq(v, g), hueG, hueB));
        V32 h = hn::ShiftRight<16>(hn::Add(hn::Mul(hue, hn::Set(d32, 30)), hn::Set(d32, 32768)));
        h = hn::IfThenZeroElse(hn::Eq(h, hn::Set(d32, 180)), h);
        const V32 sat = hn::ShiftRight<16>(
            hn::Add(hn::Mul(hn::Mul(diff, hn::Set(d32, 255)), gather(OneByxLUT.data(), v)), hn::Set(d32, 32768)));
        hn::StoreInterleaved3(hn::DemoteTo(d8, h), hn::DemoteTo(d8, sat), hn::DemoteTo(d8, v), d8, d + 3 * x);
    }
    return static_cast<uint32_t>(x);
}

inline uint32_t labRow(const uint8_t* s, uint8_t* d, uint32_t width) {
    using namespace lab;
    const D32 d32;
    const D8Q d8;
    const size_t n = hn::Lanes(d32);
    auto axisOf = [&](const int32_t (&w)[3], V32 r, V32 g, V32 b) {
        const V32 sum = hn::Add(hn::Add(hn::Mul(r, hn::Set(d32, w[0])), hn::Mul(g, hn::Set(d32, w[1]))),
                                hn::Mul(b, hn::Set(d32, w[2])));
        return gather(kF.data(), hn::ShiftRight<kLinearShift>(hn::Add(sum, hn::Set(d32, 1 << (kLinearShift - 1)))));
    };
    auto opponentOf = [&](int32_t weight, V32 f0, V32 f1) {
        const V32 t = hn::Add(hn::Mul(hn::Sub(f0, f1), hn::Set(d32, weight)),
                              hn::Set(d32, (128 << kFShift) + (1 << (kFShift - 1))));
        return hn::DemoteTo(d8, hn::ShiftRight<kFShift>(t));  // saturating: the clamp
    };
    size_t x = 0;
    for (; x + n <= width; x += n) {
        hn::Vec<D8Q> r8, g8, b8, a8;
        hn::LoadInterleaved4(d8, s + 4 * x, r8, g8, b8, a8);
        const V32 r = gather(kLinear.data(), hn::PromoteTo(d32, r8));
        const V32 g = gather(kLinear.data(), hn::PromoteTo(d32, g8));
        const V32 b = gather(kLinear.data(), hn::PromoteTo(d32, b8));
        const V32 fx = axisOf(kX, r, g, b), fy = axisOf(kY, r, g, b), fz = axisOf(kZ, r, g, b);
        const V32 l = hn::Add(hn::Mul(hn::Sub(hn::Mul(fy, hn::Set(d32, 116)), hn::Set(d32, 16 << kFShift)),
                                      hn::Set(d32, 653)),
                              hn::Set(d32, 1 << 22));
        hn::StoreInterleaved3(hn::DemoteTo(d8, hn::ShiftRight<23>(l)), opponentOf(500, fx, fy), opponentOf(200, fy, fz),
                              d8, d + 3 * x);
    }
    return static_cast<uint32_t>(x);
}

#endif  // HWY_TARGET != HWY_SCALAR

// A row: vector steps, then the reference span for the rest.
#if HWY_TARGET != HWY_SCALAR
#define PXR_FROM_RGB_VECTOR_STEPS(kernel) done = kernel##Row(s, d, width);
#else
#define PXR_FROM_RGB_VECTOR_STEPS(kernel)
#endif
#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel)                                                     \
    void Name(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,       \
              uint32_t dstStride) {                                                                        \
        forEachRow(src, height, srcStride, dst, dstStride, [&](const uint8_t* s, uint8_t* d) {            \
            uint32_t done = 0;                                                                             \
            PXR_FROM_RGB_VECTOR_STEPS(kernel)                                                              \
            kernel##Span(s, d, done, width);                                                               \
        });                                                                                                \
    }
#include "imgproc/color/from_rgb_members.def"
#undef PXR_FROM_RGB_VECTOR_STEPS

}  // namespace pxr::color::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "imgproc/color/from_rgb_define.h"
#include "simd/color/from_rgb_v.h"

namespace pxr::color {
#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel) PXR_FROM_RGB_UNARY_DISPATCH(Name)
#include "imgproc/color/from_rgb_members.def"
}  // namespace pxr::color

#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel) \
    PXR_COLOR_DEFINE_PACKED(pxr##Name##V, uint8_t, uint8_t, pxr::color::Name##V)
#include "imgproc/color/from_rgb_members.def"
#endif
