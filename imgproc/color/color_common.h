// Pieces shared by every colour conversion, reference and vector kinds alike:
// 565 packing, clamps, the YCbCr coefficient kernels and the chroma geometry
// of the subsampled layouts. Each kernel is the readable definition of its
// arithmetic; the vector kinds must reproduce it bit for bit.
#pragma once

#include <cstdint>
#include <cstring>

namespace pxr::color {

// ---- Clamps -----------------------------------------------------------------

constexpr uint8_t clamp255(int32_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// ---- 565 words --------------------------------------------------------------
// A 565 pixel is one 16-bit word in the machine's (little-endian) order:
// bits 11..15 hold the first component (red in RGB565), bits 5..10 the
// second, bits 0..4 the third. Words may sit at any byte address.

inline uint16_t load565(const void* p) {
    uint16_t w;
    std::memcpy(&w, p, sizeof w);
    return w;
}
inline void store565(void* p, uint16_t w) { std::memcpy(p, &w, sizeof w); }

// Widening replicates the top bits into the low bits, so 0 -> 0 and the
// field maximum -> 255 (a 565 white stays white).
constexpr uint8_t widen5(uint32_t f) { return static_cast<uint8_t>((f << 3) | (f >> 2)); }
constexpr uint8_t widen6(uint32_t f) { return static_cast<uint8_t>((f << 2) | (f >> 4)); }

// The three components of a word, in field order (bits 11..15 first).
struct Rgb {
    uint8_t c0, c1, c2;
};
constexpr Rgb unpack565(uint16_t w) { return {widen5(w >> 11), widen6((w >> 5) & 0x3F), widen5(w & 0x1F)}; }

// Narrowing drops the low bits.
constexpr uint16_t pack565(uint32_t c0, uint32_t c1, uint32_t c2) {
    return static_cast<uint16_t>(((c0 >> 3) << 11) | ((c1 >> 2) << 5) | (c2 >> 3));
}

// ---- RGB to YCbCr (8-bit weights) ------------------------------------------
// Bytes b0, b1, b2 in memory order; the weights read b0 as blue and b2 as red
// (the opposite of the grey and YCbCr-to-RGB conversions, on purpose).

constexpr uint8_t lumaOf(uint32_t b0, uint32_t b1, uint32_t b2) {
    return static_cast<uint8_t>((29 * b0 + 150 * b1 + 77 * b2 + 128) >> 8);
}

// 128 + (weighted sum >> 8); a value above 127 before the offset gives 255.
// The sums never fall below -127, so there is no lower clamp to apply.
constexpr uint8_t chromaOffset(int32_t weighted) {
    const int32_t c = (weighted + 128) >> 8;
    return static_cast<uint8_t>(c > 127 ? 255 : 128 + c);
}
constexpr uint8_t cbOf(int32_t b0, int32_t b1, int32_t b2) { return chromaOffset(128 * b0 - 85 * b1 - 43 * b2); }
constexpr uint8_t crOf(int32_t b0, int32_t b1, int32_t b2) { return chromaOffset(-21 * b0 - 107 * b1 + 128 * b2); }

// ---- YCbCr to RGB (8-bit weights) ------------------------------------------
// base = 256 Y + 128; byte 0 (red) takes Cr, byte 2 (blue) takes Cb.

struct YcbcrToRgb {
    int32_t base, cb, cr;  // 256 Y + 128, Cb - 128, Cr - 128
    constexpr YcbcrToRgb(uint32_t y, uint32_t cb_, uint32_t cr_)
        : base(256 * static_cast<int32_t>(y) + 128), cb(static_cast<int32_t>(cb_) - 128),
          cr(static_cast<int32_t>(cr_) - 128) {}
    constexpr uint8_t red() const { return clamp255((base + 359 * cr) >> 8); }
    constexpr uint8_t green() const { return clamp255((base - 88 * cb - 183 * cr) >> 8); }
    constexpr uint8_t blue() const { return clamp255((base + 454 * cb) >> 8); }
};

// ---- JPEG-style RGB to YCrCb (Q15) -------------------------------------------
// The full-range JPEG weights 0.299 0.587 0.114 / 0.5 0.418688 0.081312 /
// 0.168736 0.331264 0.5, times 32768 and rounded so that each row sums
// exactly to 32768 (Y) or 0 (Cr, Cb): white is 255 and grey has no chroma.
// Rounding constant 16384, shift 15; Cr and Cb add 128 and clamp at 255.
namespace jpeg {
inline constexpr int32_t kYR = 9798, kYG = 19235, kYB = 3735;
inline constexpr int32_t kCrR = 16384, kCrG = -13720, kCrB = -2664;
inline constexpr int32_t kCbR = -5529, kCbG = -10855, kCbB = 16384;
inline constexpr int32_t kOne = 32768, kHalf = 16384, kShift = 15;
static_assert(kYR + kYG + kYB == kOne && kCrR + kCrG + kCrB == 0 && kCbR + kCbG + kCbB == 0);

constexpr uint8_t luma(int32_t r, int32_t g, int32_t b) {
    return static_cast<uint8_t>((kYR * r + kYG * g + kYB * b + kHalf) >> kShift);
}
constexpr uint8_t chroma(int32_t weighted) { return clamp255(((weighted + kHalf) >> kShift) + 128); }
constexpr uint8_t cr(int32_t r, int32_t g, int32_t b) { return chroma(kCrR * r + kCrG * g + kCrB * b); }
constexpr uint8_t cb(int32_t r, int32_t g, int32_t b) { return chroma(kCbR * r + kCbG * g + kCbB * b); }
}  // namespace jpeg

// ---- Grey --------------------------------------------------------------------
// 0.299 0.587 0.114 in 16-bit fixed point, b0 as red, rounding to nearest.
constexpr uint8_t greyOf(uint32_t r, uint32_t g, uint32_t b) {
    return static_cast<uint8_t>((19595 * r + 38469 * g + 7471 * b + 32768) >> 16);
}

// ---- Chroma geometry -----------------------------------------------------------
// A chroma sample covers sub x sub pixels (sub 1 or 2 per direction). With an
// odd width or height the last sample covers the one column or row left.

constexpr uint32_t chromaCount(uint32_t pixels, uint32_t sub) { return (pixels + sub - 1) / sub; }

// Bytes of one chroma row: planar planes hold one byte per sample,
// pseudo-planar planes a Cb, Cr pair per sample.
constexpr uint32_t chromaRowBytes(uint32_t width, uint32_t subX, bool pseudoPlanar) {
    return chromaCount(width, subX) * (pseudoPlanar ? 2u : 1u);
}

}  // namespace pxr::color
