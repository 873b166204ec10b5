// Packed RGB to YCbCr, vector kind: 16-bit lanes of the even and odd pixels
// of each vector step; the chroma clamp is a saturating add. The rest of a
// row goes to the reference span.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/color/from_rgb_ycbcr_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/color/from_rgb_kernels.h"
#include "simd/color/from_rgb_pixels_v.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::color::HWY_NAMESPACE {

#if HWY_TARGET != HWY_SCALAR

// (29 b0 + 150 b1 + 77 b2 + 128) >> 8.
inline V16 luma(const Lanes3& v) { return hn::ShiftRight<8>(hn::Add(weigh<29, 150, 77>(v), hn::Set(D16(), 128))); }
inline V8 luma(const Split& p) { return join(luma(p.e), luma(p.o)); }

// The chroma weights with 128 + 32768 added: 128 m0 + 85 (255 - m1) +
// 43 (255 - m2) + 256 is never negative, and reaches 65536 exactly when the
// value before the offset is 128: saturating there gives 255, the clamp.
inline V16 cb(const Lanes3& m) {
    const Lanes3 inv = inverse(m);
    const V16 t = hn::Add(hn::ShiftLeft<7>(m.c0), weigh<0, 85, 43>(inv));
    return hn::ShiftRight<8>(hn::SaturatedAdd(t, hn::Set(D16(), 256)));
}
inline V16 cr(const Lanes3& m) {
    const Lanes3 inv = inverse(m);
    const V16 t = hn::Add(weigh<21, 107, 0>(inv), hn::ShiftLeft<7>(m.c2));
    return hn::ShiftRight<8>(hn::SaturatedAdd(t, hn::Set(D16(), 256)));
}

inline Lanes3 operator+(const Lanes3& a, const Lanes3& b) {
    return {hn::Add(a.c0, b.c0), hn::Add(a.c1, b.c1), hn::Add(a.c2, b.c2)};
}

// Vector steps over the start of one chroma row; returns the chroma columns done.
template <class S, uint32_t SX, uint32_t SY, bool Pseudo>
uint32_t ycbcrRow(const ChromaRow& r, uint32_t width) {
    const D8 d8;
    const D16 d16;
    const size_t n = pixelsPerStep();
    size_t x = 0;
    for (; x + n <= width; x += n) {
        const Split p0 = split(S(), r.s0, x);
        hn::StoreU(luma(p0), d8, r.y0 + x);
        if constexpr (SX == 1) {
            const V8 vb = join(cb(p0.e), cb(p0.o)), vr = join(cr(p0.e), cr(p0.o));
            if constexpr (Pseudo) {
                hn::StoreInterleaved2(vb, vr, d8, r.cb + 2 * x);
            } else {
                hn::StoreU(vb, d8, r.cb + x);
                hn::StoreU(vr, d8, r.cr + x);
            }
        } else {
            Lanes3 m = p0.e + p0.o;  // sums of horizontal pairs
            if constexpr (SY == 2) {
                const Split p1 = split(S(), r.s1, x);
                if (r.y1) hn::StoreU(luma(p1), d8, r.y1 + x);
                m = m + p1.e + p1.o;
            }
            // Rounded means of the 2 or 4 pixels.
            constexpr int kShift = SY == 2 ? 2 : 1;
            const V16 half = hn::Set(d16, SY == 2 ? 2 : 1);
            m = {hn::ShiftRight<kShift>(hn::Add(m.c0, half)), hn::ShiftRight<kShift>(hn::Add(m.c1, half)),
                 hn::ShiftRight<kShift>(hn::Add(m.c2, half))};
            const V16 vb = cb(m), vr = cr(m);
            const size_t cx = x / 2;
            if constexpr (Pseudo) {
                hn::StoreU(join(vb, vr), d8, r.cb + 2 * cx);
            } else {
                const hn::Half<D8> dh;
                const V8 both = hn::ConcatEven(d8, hn::BitCast(d8, vr), hn::BitCast(d8, vb));
                hn::StoreU(hn::LowerHalf(dh, both), dh, r.cb + cx);
                hn::StoreU(hn::UpperHalf(dh, both), dh, r.cr + cx);
            }
        }
    }
    return static_cast<uint32_t>(x / SX);
}

#endif  // HWY_TARGET != HWY_SCALAR

template <class S, uint32_t SX, uint32_t SY, bool Pseudo>
void toYcbcr(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, const YcbcrPlanes& p) {
    forEachChromaRow<SY>(src, height, srcStride, p, [&](const ChromaRow& r) {
        uint32_t done = 0;
#if HWY_TARGET != HWY_SCALAR
        done = ycbcrRow<S, SX, SY, Pseudo>(r, width);
#endif
        ycbcrSpan<S, SX, SY>(r, width, done, chromaCount(width, SX));
    });
}

inline constexpr bool kPlanar = false, kPseudoPlanar = true;

#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout)                       \
    void Name(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,       \
              const YcbcrPlanes& p) {                                                        \
        toYcbcr<Src, SX, SY, k##Layout>(src, width, height, srcStride, p);                   \
    }
#include "imgproc/color/from_rgb_members.def"

}  // namespace pxr::color::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "imgproc/color/from_rgb_define.h"
#include "simd/color/from_rgb_v.h"

namespace pxr::color {
#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout) PXR_FROM_RGB_YCBCR_DISPATCH(Name)
#include "imgproc/color/from_rgb_members.def"
}  // namespace pxr::color

#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout) \
    PXR_COLOR_DEFINE_##Layout(pxr##Name##V, SrcType, pxr::color::Name##V)
#include "imgproc/color/from_rgb_members.def"
#endif
