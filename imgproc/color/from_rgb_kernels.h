// Row kernels of the conversions from packed RGB, shared by the reference and
// vector kinds: the vector kinds run their vectors over the start of a row and
// hand the rest to these spans, and both use the same row loops, so rounding,
// clamps and odd edges cannot drift apart.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "imgproc/color/color_common.h"
#include "imgproc/color/from_rgb_formats.h"
#include "imgproc/color/from_rgb_tables.h"

namespace pxr::color {

// ---- Row loops ---------------------------------------------------------------

// span(srcRow, dstRow) for every row.
template <class Span>
void forEachRow(const uint8_t* src, uint32_t height, uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                Span span) {
    for (uint32_t y = 0; y < height; ++y) span(src + size_t{y} * srcStride, dst + size_t{y} * dstStride);
}

// The same with the source rows taken from the bottom up (180-degree turns).
template <class Span>
void forEachRowUpward(const uint8_t* src, uint32_t height, uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                      Span span) {
    for (uint32_t y = 0; y < height; ++y)
        span(src + size_t{height - 1 - y} * srcStride, dst + size_t{y} * dstStride);
}

// Destination planes of a YCbCr conversion. Planar: Cb and Cr planes with a
// step of 1; pseudo-planar: cr = cb + 1 in one plane, step 2.
struct YcbcrPlanes {
    uint8_t* y;
    uint8_t* cb;
    uint8_t* cr;
    uint32_t yStride, cbStride, crStride, step;
};

// One chroma row's worth of rows: two source rows (the second is the first
// again on the last row of an odd height, or when chroma is not subsampled
// vertically), their Y rows (y1 null when there is no second row), and the
// chroma row.
struct ChromaRow {
    const uint8_t* s0;
    const uint8_t* s1;
    uint8_t* y0;
    uint8_t* y1;
    uint8_t* cb;
    uint8_t* cr;
    uint32_t step;
};

template <uint32_t SY, class Span>
void forEachChromaRow(const uint8_t* src, uint32_t height, uint32_t srcStride, const YcbcrPlanes& p, Span span) {
    for (uint32_t cy = 0; cy < chromaCount(height, SY); ++cy) {
        const uint32_t y = cy * SY;
        const bool second = SY == 2 && y + 1 < height;
        ChromaRow r;
        r.s0 = src + size_t{y} * srcStride;
        r.s1 = second ? r.s0 + srcStride : r.s0;
        r.y0 = p.y + size_t{y} * p.yStride;
        r.y1 = second ? r.y0 + p.yStride : nullptr;
        r.cb = p.cb + size_t{cy} * p.cbStride;
        r.cr = p.cr + size_t{cy} * p.crStride;
        r.step = p.step;
        span(r);
    }
}

// ---- RGB to YCbCr --------------------------------------------------------------

// Chroma columns [cx0, cx1) of one chroma row, with the Y of the pixels they
// cover. Chroma is taken from the rounded mean of the SX x SY covered pixels;
// a column or row past an odd edge repeats the edge pixel, which gives the
// mean of the pixels that exist.
template <class S, uint32_t SX, uint32_t SY>
void ycbcrSpan(const ChromaRow& r, uint32_t width, uint32_t cx0, uint32_t cx1) {
    constexpr uint32_t kShift = (SX == 2) + (SY == 2), kHalf = (1u << kShift) >> 1;
    for (uint32_t cx = cx0; cx < cx1; ++cx) {
        const uint32_t xa = cx * SX, xb = std::min(xa + SX - 1, width - 1);
        const Pixel a0 = S::read(r.s0, xa), b0 = S::read(r.s0, xb);
        const Pixel a1 = S::read(r.s1, xa), b1 = S::read(r.s1, xb);
        r.y0[xa] = lumaOf(a0.c0, a0.c1, a0.c2);
        if (xb != xa) r.y0[xb] = lumaOf(b0.c0, b0.c1, b0.c2);
        if (r.y1) {
            r.y1[xa] = lumaOf(a1.c0, a1.c1, a1.c2);
            if (xb != xa) r.y1[xb] = lumaOf(b1.c0, b1.c1, b1.c2);
        }
        auto mean = [&](uint8_t Pixel::*c) {
            uint32_t sum = a0.*c + (SX == 2 ? b0.*c : 0u);
            if (SY == 2) sum += a1.*c + (SX == 2 ? b1.*c : 0u);
            return static_cast<int32_t>((sum + kHalf) >> kShift);
        };
        const int32_t m0 = mean(&Pixel::c0), m1 = mean(&Pixel::c1), m2 = mean(&Pixel::c2);
        r.cb[size_t{cx} * r.step] = cbOf(m0, m1, m2);
        r.cr[size_t{cx} * r.step] = crOf(m0, m1, m2);
    }
}

// ---- Between packed formats ------------------------------------------------------

template <class S, class D>
void reorderSpan(const uint8_t* s, uint8_t* d, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) D::write(d, x, S::read(s, x));
}

// Pixels [x0, x1) of a row rotated by 180 degrees: `s` is the mirrored source
// row, whose pixel width - 1 - x lands at x.
inline void rotate180Span(const uint8_t* s, uint8_t* d, uint32_t width, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) Rgb565::write(d, x, Rgb888::read(s, width - 1 - x));
}

// ---- Grey, JPEG YCrCb, HSV, LAB -------------------------------------------------------

inline void greySpan(const uint8_t* s, uint8_t* d, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) d[x] = greyOf(s[3 * x], s[3 * x + 1], s[3 * x + 2]);
}

inline void jpegSpan(const uint8_t* s, uint8_t* d, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const int32_t r = s[3 * x], g = s[3 * x + 1], b = s[3 * x + 2];
        d[3 * x] = jpeg::luma(r, g, b);
        d[3 * x + 1] = jpeg::cr(r, g, b);
        d[3 * x + 2] = jpeg::cb(r, g, b);
    }
}

// HSV: V = max; S = (max - min) x 255 / V; hue in sextants of Q16 (red
// maximum 0..1, or 5..6 when G < B; green 1..3; blue 3..5), times 30 and
// rounded: 0..179 (degrees / 2), a full turn folding back to 0.
struct Hsv {
    uint8_t h, s, v;
};
constexpr Hsv hsvOf(int32_t r, int32_t g, int32_t b) {
    const int32_t v = std::max({r, g, b}), d = v - std::min({r, g, b});
    const int32_t inv = static_cast<int32_t>(OneByxLUT[d]);
    int32_t hue;
    if (v == r)
        hue = (g - b) * inv + (g < b ? 0x60000 : 0);
    else if (v == g)
        hue = (b - r) * inv + 0x20000;
    else
        hue = (r - g) * inv + 0x40000;
    int32_t h = (hue * 30 + 32768) >> 16;
    if (h == 180) h = 0;
    const uint32_t s = (static_cast<uint32_t>(d) * 255u * OneByxLUT[v] + 32768u) >> 16;
    return {static_cast<uint8_t>(h), static_cast<uint8_t>(s), static_cast<uint8_t>(v)};
}

inline void hsvSpan(const uint8_t* s, uint8_t* d, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const Hsv o = hsvOf(s[3 * x], s[3 * x + 1], s[3 * x + 2]);
        d[3 * x] = o.h, d[3 * x + 1] = o.s, d[3 * x + 2] = o.v;
    }
}

// LAB: sRGB bytes -> linear light (Q14 table) -> X/Xn, Y/Yn, Z/Zn (Q12) ->
// f (Q15 table) -> L scaled to 0..255, a and b offset by 128.
inline void labSpan(const uint8_t* s, uint8_t* d, uint32_t x0, uint32_t x1) {
    using namespace lab;
    for (uint32_t x = x0; x < x1; ++x) {
        const int32_t r = kLinear[s[4 * x]], g = kLinear[s[4 * x + 1]], b = kLinear[s[4 * x + 2]];
        const int32_t fx = kF[axis(kX, r, g, b)], fy = kF[axis(kY, r, g, b)], fz = kF[axis(kZ, r, g, b)];
        d[3 * x] = lightness(fy);
        d[3 * x + 1] = opponent(500, fx, fy);
        d[3 * x + 2] = opponent(200, fy, fz);
    }
}

}  // namespace pxr::color
