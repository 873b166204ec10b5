// Per-target vector pieces of the conversions from packed RGB: loading and
// storing a vector of pixels of each packed format as byte channels, and the
// even/odd split of byte channels into 16-bit lanes that the arithmetic uses.
// Included by each simd/color/from_rgb_*_v.cpp once per target (no guard of
// its own: Highway's per-target include idiom).
#if defined(PIXORA_SIMD_COLOR_FROM_RGB_PIXELS_V_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PIXORA_SIMD_COLOR_FROM_RGB_PIXELS_V_H_
#undef PIXORA_SIMD_COLOR_FROM_RGB_PIXELS_V_H_
#else
#define PIXORA_SIMD_COLOR_FROM_RGB_PIXELS_V_H_
#endif

#include <hwy/highway.h>

#include "imgproc/color/from_rgb_formats.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::color::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The single-lane fallback target has none of the shuffles used here: on it
// the vector kind does no vector work and the reference spans do it all.
#if HWY_TARGET != HWY_SCALAR

using D8 = hn::ScalableTag<uint8_t>;
using V8 = hn::Vec<D8>;
using D16 = hn::Repartition<uint16_t, D8>;
using V16 = hn::Vec<D16>;

// Pixels per vector step.
inline size_t pixelsPerStep() { return hn::Lanes(D8()); }

// One vector of pixels as byte channels, in the format's component order.
struct Channels {
    V8 c0, c1, c2, a;
};

inline Channels load(Rgb888, const uint8_t* row, size_t x) {
    const D8 d;
    Channels c;
    hn::LoadInterleaved3(d, row + 3 * x, c.c0, c.c1, c.c2);
    c.a = hn::Set(d, 255);
    return c;
}
inline Channels load(Rgba8888, const uint8_t* row, size_t x) {
    const D8 d;
    Channels c;
    hn::LoadInterleaved4(d, row + 4 * x, c.c0, c.c1, c.c2, c.a);
    return c;
}
// 565 words as low and high bytes; fields widened by replicating top bits.
inline Channels load(Rgb565, const uint8_t* row, size_t x) {
    const D8 d;
    V8 lo, hi;
    hn::LoadInterleaved2(d, row + 2 * x, lo, hi);
    Channels c;
    c.c0 = hn::Or(hn::And(hi, hn::Set(d, 0xF8)), hn::ShiftRight<5>(hi));
    const V8 g3 = hn::And(hi, hn::Set(d, 0x07));  // top 3 bits of green
    c.c1 = hn::Or(hn::Or(hn::ShiftLeft<5>(g3), hn::And(hn::ShiftRight<3>(lo), hn::Set(d, 0x1C))),
                  hn::ShiftRight<1>(g3));
    c.c2 = hn::Or(hn::ShiftLeft<3>(lo), hn::ShiftRight<2>(hn::And(lo, hn::Set(d, 0x1F))));
    c.a = hn::Set(d, 255);
    return c;
}

inline void store565(uint8_t* row, size_t x, V8 c0, V8 c1, V8 c2) {
    const D8 d;
    const V8 lo = hn::Or(hn::ShiftLeft<3>(hn::And(c1, hn::Set(d, 0x1C))), hn::ShiftRight<3>(c2));
    const V8 hi = hn::Or(hn::And(c0, hn::Set(d, 0xF8)), hn::ShiftRight<5>(c1));
    hn::StoreInterleaved2(lo, hi, d, row + 2 * x);
}
inline void store(Rgb565, uint8_t* row, size_t x, const Channels& c) { store565(row, x, c.c0, c.c1, c.c2); }
inline void store(Bgr565, uint8_t* row, size_t x, const Channels& c) { store565(row, x, c.c2, c.c1, c.c0); }
inline void store(Rgb888, uint8_t* row, size_t x, const Channels& c) {
    hn::StoreInterleaved3(c.c0, c.c1, c.c2, D8(), row + 3 * x);
}
inline void store(Bgr888, uint8_t* row, size_t x, const Channels& c) {
    hn::StoreInterleaved3(c.c2, c.c1, c.c0, D8(), row + 3 * x);
}
inline void store(Rgba8888, uint8_t* row, size_t x, const Channels& c) {
    hn::StoreInterleaved4(c.c0, c.c1, c.c2, c.a, D8(), row + 4 * x);
}
inline void store(Bgra8888, uint8_t* row, size_t x, const Channels& c) {
    hn::StoreInterleaved4(c.c2, c.c1, c.c0, c.a, D8(), row + 4 * x);
}

// Byte lanes as the 16-bit values of the even and of the odd pixels, both in
// pixel order; join() is the inverse for values up to 255.
inline V16 evens(V8 v) { return hn::And(hn::BitCast(D16(), v), hn::Set(D16(), 0xFF)); }
inline V16 odds(V8 v) { return hn::ShiftRight<8>(hn::BitCast(D16(), v)); }
inline V8 join(V16 even, V16 odd) { return hn::BitCast(D8(), hn::Or(even, hn::ShiftLeft<8>(odd))); }

// Three channels of the even or the odd pixels.
struct Lanes3 {
    V16 c0, c1, c2;
};
inline Lanes3 evens(const Channels& c) { return {evens(c.c0), evens(c.c1), evens(c.c2)}; }
inline Lanes3 odds(const Channels& c) { return {odds(c.c0), odds(c.c1), odds(c.c2)}; }

// A vector step of pixels as the channels of its even and of its odd pixels.
struct Split {
    Lanes3 e, o;
};
template <class S>
Split split(S, const uint8_t* row, size_t x) {
    const Channels c = load(S(), row, x);
    return {evens(c), odds(c)};
}
// Four-byte pixels are 32-bit lanes: even and odd pixels are two lane
// compactions away, their 16-bit halves (b0 | b1 << 8, b2 | a << 8) two more.
inline Split split(Rgba8888, const uint8_t* row, size_t x) {
    const D8 d8;
    const D16 d16;
    const hn::Repartition<uint32_t, D8> d32;
    const size_t n = hn::Lanes(d32);
    auto pixels = [&](size_t i) { return hn::BitCast(d32, hn::LoadU(d8, row + 4 * (x + n * i))); };
    const auto v0 = pixels(0), v1 = pixels(1), v2 = pixels(2), v3 = pixels(3);
    auto channels = [&](decltype(v0) first, decltype(v0) second) {
        const V16 lo = hn::ConcatEven(d16, hn::BitCast(d16, second), hn::BitCast(d16, first));
        const V16 hi = hn::ConcatOdd(d16, hn::BitCast(d16, second), hn::BitCast(d16, first));
        return Lanes3{hn::And(lo, hn::Set(d16, 0xFF)), hn::ShiftRight<8>(lo), hn::And(hi, hn::Set(d16, 0xFF))};
    };
    return {channels(hn::ConcatEven(d32, v1, v0), hn::ConcatEven(d32, v3, v2)),
            channels(hn::ConcatOdd(d32, v1, v0), hn::ConcatOdd(d32, v3, v2))};
}

// Weighted sum w0 c0 + w1 c1 + w2 c2 in 16-bit lanes (the caller keeps it
// below 65536).
template <uint16_t W0, uint16_t W1, uint16_t W2>
V16 weigh(const Lanes3& v) {
    const D16 d;
    return hn::Add(hn::Add(hn::Mul(v.c0, hn::Set(d, W0)), hn::Mul(v.c1, hn::Set(d, W1))),
                   hn::Mul(v.c2, hn::Set(d, W2)));
}

// 255 - v for 16-bit lanes holding bytes.
inline V16 inverse(V16 v) { return hn::Xor(v, hn::Set(D16(), 0xFF)); }
inline Lanes3 inverse(const Lanes3& v) { return {inverse(v.c0), inverse(v.c1), inverse(v.c2)}; }

#endif  // HWY_TARGET != HWY_SCALAR

}  // namespace pxr::color::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // per-target include guard
