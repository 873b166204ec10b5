// Between packed RGB formats, vector kind: a vector of pixels loaded as byte
// channels and stored in the destination's order; the 180-degree RGB565
// conversion reverses 565 words. The rest of a row goes to the reference span.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/color/from_rgb_packed_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/color/from_rgb_kernels.h"
#include "simd/color/from_rgb_pixels_v.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::color::HWY_NAMESPACE {

#if HWY_TARGET != HWY_SCALAR

template <class S, class D>
uint32_t reorderRow(const uint8_t* s, uint8_t* d, uint32_t width) {
    const size_t n = pixelsPerStep();
    size_t x = 0;
    for (; x + n <= width; x += n) store(D(), d, x, load(S(), s, x));
    return static_cast<uint32_t>(x);
}

// 565 words of byte channels (values in 16-bit lanes).
inline V16 word565(V16 c0, V16 c1, V16 c2) {
    const D16 d;
    return hn::Or(hn::Or(hn::ShiftLeft<8>(hn::And(c0, hn::Set(d, 0xF8))), hn::ShiftLeft<3>(hn::And(c1, hn::Set(d, 0xFC)))),
                  hn::ShiftRight<3>(c2));
}

// `s` is the mirrored source row: output pixels [x, x + n) are its pixels
// [width - x - n, width - x) in reverse order.
inline uint32_t rotate180Row(const uint8_t* s, uint8_t* d, uint32_t width) {
    const D8 d8;
    const D16 d16;
    const hn::Half<D8> dh;
    const size_t n = pixelsPerStep();
    size_t x = 0;
    for (; x + n <= width; x += n) {
        const Channels c = load(Rgb888(), s, width - x - n);
        const V16 first = word565(hn::PromoteTo(d16, hn::LowerHalf(dh, c.c0)), hn::PromoteTo(d16, hn::LowerHalf(dh, c.c1)),
                                  hn::PromoteTo(d16, hn::LowerHalf(dh, c.c2)));
        const V16 second = word565(hn::PromoteTo(d16, hn::UpperHalf(dh, c.c0)),
                                   hn::PromoteTo(d16, hn::UpperHalf(dh, c.c1)),
                                   hn::PromoteTo(d16, hn::UpperHalf(dh, c.c2)));
        hn::StoreU(hn::BitCast(d8, hn::Reverse(d16, second)), d8, d + 2 * x);
        hn::StoreU(hn::BitCast(d8, hn::Reverse(d16, first)), d8, d + 2 * x + n);
    }
    return static_cast<uint32_t>(x);
}

#endif  // HWY_TARGET != HWY_SCALAR

template <class S, class D>
void reorder(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
             uint32_t dstStride) {
    forEachRow(src, height, srcStride, dst, dstStride, [&](const uint8_t* s, uint8_t* d) {
        uint32_t done = 0;
#if HWY_TARGET != HWY_SCALAR
        done = reorderRow<S, D>(s, d, width);
#endif
        reorderSpan<S, D>(s, d, done, width);
    });
}

#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp)                               \
    void Name(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,       \
              uint32_t dstStride) {                                                                        \
        reorder<Src, Dst>(src, width, height, srcStride, dst, dstStride);                                  \
    }
#include "imgproc/color/from_rgb_members.def"

void Rotate180(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
               uint32_t dstStride) {
    forEachRowUpward(src, height, srcStride, dst, dstStride, [&](const uint8_t* s, uint8_t* d) {
        uint32_t done = 0;
#if HWY_TARGET != HWY_SCALAR
        done = rotate180Row(s, d, width);
#endif
        rotate180Span(s, d, width, done, width);
    });
}

}  // namespace pxr::color::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "imgproc/color/from_rgb_define.h"
#include "simd/color/from_rgb_v.h"

namespace pxr::color {
#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp) PXR_FROM_RGB_UNARY_DISPATCH(Name)
#include "imgproc/color/from_rgb_members.def"
PXR_FROM_RGB_UNARY_DISPATCH(Rotate180)
}  // namespace pxr::color

#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp) \
    PXR_COLOR_DEFINE_PACKED(pxr##Name##V, SrcType, DstType, pxr::color::Name##V)
#include "imgproc/color/from_rgb_members.def"
PXR_COLOR_DEFINE_PACKED(pxrColorRGB888ToRGB565Rotate180u8V, uint8_t, uint16_t, pxr::color::Rotate180V)
#endif
