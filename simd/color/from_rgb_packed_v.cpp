// Between packed RGB formats, vector kind: a vector of pixels loaded as byte
// channels and stored in the destination's order; the 180-degree RGB565
// conversion reverses 565 words. The rest of a row goes to the reference span.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/color/from_rgb_packed_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <array>

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

// Formats of one byte per component: which component (0..2, 3 alpha) each
// byte of a pixel holds. Conversions among them are byte shuffles.
template <class F> struct ByteLayout;
template <> struct ByteLayout<Rgb888> { static constexpr int kBytes = 3, kComp[4] = {0, 1, 2, -1}; };
template <> struct ByteLayout<Bgr888> { static constexpr int kBytes = 3, kComp[4] = {2, 1, 0, -1}; };
template <> struct ByteLayout<Rgba8888> { static constexpr int kBytes = 4, kComp[4] = {0, 1, 2, 3}; };
template <> struct ByteLayout<Bgra8888> { static constexpr int kBytes = 4, kComp[4] = {2, 1, 0, 3}; };
template <class F> concept ByteFormat = requires { ByteLayout<F>::kBytes; };

// Byte indices that turn the four source pixels at the start of a 16-byte
// block into four destination pixels (0x80: zero, for alpha filled after).
template <class S, class D>
constexpr std::array<uint8_t, 16> blockShuffle() {
    std::array<uint8_t, 16> idx{};
    idx.fill(0x80);
    for (int k = 0; k < 4; ++k)
        for (int c = 0; c < ByteLayout<D>::kBytes; ++c)
            for (int b = 0; b < ByteLayout<S>::kBytes; ++b)
                if (ByteLayout<S>::kComp[b] == ByteLayout<D>::kComp[c])
                    idx[k * ByteLayout<D>::kBytes + c] = static_cast<uint8_t>(k * ByteLayout<S>::kBytes + b);
    return idx;
}

// Four pixels per 16-byte block: 3-byte sources are spread so that block b
// starts at source byte 12 b (32-bit lane moves; 12 is a multiple of 4),
// shuffled within the block, and 3-byte destinations compacted back. A
// 3-byte side keeps its vector inside the row: the last 4 bytes of every 16
// are read past the pixels used or written with bytes that the next step
// (or the reference span) overwrites.
template <class S, class D>
uint32_t shuffleRow(const uint8_t* s, uint8_t* d, uint32_t width) {
    constexpr int kS = ByteLayout<S>::kBytes, kD = ByteLayout<D>::kBytes;
    const D8 d8;
    const hn::Repartition<uint32_t, D8> d32;
    const size_t n = hn::Lanes(d32);  // pixels per step
    alignas(16) static constexpr std::array<uint8_t, 16> kShuffle = blockShuffle<S, D>();
    const V8 shuffle = hn::LoadDup128(d8, kShuffle.data());
    HWY_ALIGN uint32_t spread[64], compact[64];
    for (size_t i = 0; i < n; ++i) {
        spread[i] = static_cast<uint32_t>(i / 4 * 3 + i % 4);
        compact[i] = static_cast<uint32_t>(i < n / 4 * 3 ? i / 3 * 4 + i % 3 : i);
    }
    const auto spreadIdx = hn::SetTableIndices(d32, spread);
    const auto compactIdx = hn::SetTableIndices(d32, compact);
    const bool threeByte = kS == 3 || kD == 3;
    size_t x = 0;
    for (; x + n <= width && (!threeByte || 3 * (x + n) + n <= 3 * size_t{width}); x += n) {
        V8 v = hn::LoadU(d8, s + kS * x);
        if constexpr (kS == 3) v = hn::BitCast(d8, hn::TableLookupLanes(hn::BitCast(d32, v), spreadIdx));
        v = hn::TableLookupBytesOr0(v, shuffle);
        if constexpr (kS == 3 && kD == 4) v = hn::Or(v, hn::BitCast(d8, hn::Set(d32, 0xFF000000u)));
        if constexpr (kD == 3) v = hn::BitCast(d8, hn::TableLookupLanes(hn::BitCast(d32, v), compactIdx));
        hn::StoreU(v, d8, d + kD * x);
    }
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
        if constexpr (ByteFormat<S> && ByteFormat<D>)
            done = shuffleRow<S, D>(s, d, width);
        else
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
