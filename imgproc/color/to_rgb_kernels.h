// Row kernels of the YCbCr group shared by the reference and vector kinds:
// the per-pixel arithmetic, the packed-RGB writers, the chroma geometry of
// every layout and the image walks. The vector kinds run the same walks and
// hand the pixels their vectors cannot fill to these spans, so rounding and
// edges cannot drift between kinds.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "imgproc/color/color_common.h"

namespace pxr::ycbcr {

using color::Rgb;
using color::clamp255;

// ---- Per-pixel arithmetic ------------------------------------------------------
// Each returns byte 0 (red), byte 1 (green), byte 2 (blue) of a pixel.

// The 8-bit weights: base = 256 Y + 128, 359 / -88, -183 / 454, >> 8.
struct Weights8 {
    static constexpr Rgb convert(uint32_t y, uint32_t cb, uint32_t cr) {
        const color::YcbcrToRgb t(y, cb, cr);
        return {t.red(), t.green(), t.blue()};
    }
};

// JPEG-style Q15 decoding. The weights 1.402, 0.344136, 0.714136 and 1.772
// are held as 16384ths (22970, 5638, 11700, 29032); the chroma differences
// are doubled so that the sums are Q15, then rounded by + 16384 and >> 15
// (one rounding per component): R = Y + round(1.402 Cr').
struct JpegQ15 {
    static constexpr int32_t kCrR = 22970, kCbG = -5638, kCrG = -11700, kCbB = 29032;
    static constexpr int32_t kHalf = 16384, kShift = 15;
    static constexpr Rgb convert(uint32_t y, uint32_t cb, uint32_t cr) {
        const int32_t Y = static_cast<int32_t>(y);
        const int32_t cb2 = 2 * (static_cast<int32_t>(cb) - 128), cr2 = 2 * (static_cast<int32_t>(cr) - 128);
        return {clamp255(Y + ((kCrR * cr2 + kHalf) >> kShift)),
                clamp255(Y + ((kCbG * cb2 + kCrG * cr2 + kHalf) >> kShift)),
                clamp255(Y + ((kCbB * cb2 + kHalf) >> kShift))};
    }
};

// Video-range 4:2:0 to 565: C = 298 Y - 4768, U' and V' the first and second
// chroma bytes less 128, no rounding constant. The U' component goes to bits
// 11..15, green to bits 5..10, the V' component to bits 0..4.
constexpr uint16_t video565(uint32_t y, uint32_t u, uint32_t v) {
    const int32_t c = 298 * static_cast<int32_t>(y) - 4768;
    const int32_t du = static_cast<int32_t>(u) - 128, dv = static_cast<int32_t>(v) - 128;
    return color::pack565(clamp255((c + 517 * du) >> 8), clamp255((c - 100 * du - 208 * dv) >> 8),
                          clamp255((c + 409 * dv) >> 8));
}

// ---- Packed RGB writers ------------------------------------------------------------

// Destinations with four bytes per pixel write this alpha: opaque.
inline constexpr uint8_t kAlpha = 255;

// Three bytes per pixel, or four with alpha last.
template <uint32_t Bytes>
struct PackedBytes {
    static constexpr uint32_t kBytes = Bytes;
    static void put(uint8_t* row, uint32_t x, Rgb c) {
        uint8_t* p = row + size_t{Bytes} * x;
        p[0] = c.c0;
        p[1] = c.c1;
        p[2] = c.c2;
        if constexpr (Bytes == 4) p[3] = kAlpha;
    }
};
using Rgb888 = PackedBytes<3>;
using Rgba8888 = PackedBytes<4>;
struct Rgb565 {
    static constexpr uint32_t kBytes = 2;
    static void put(uint8_t* row, uint32_t x, Rgb c) { color::store565(row + 2 * x, color::pack565(c.c0, c.c1, c.c2)); }
};

// ---- Chroma planes -------------------------------------------------------------------
// Planar chroma: two planes, one byte per sample. Pseudo-planar chroma: one
// plane of pairs, viewed as two planes with a step of 2 starting one byte
// apart (Cb first for CbCr, Cr first for CrCb).

template <class P>
struct ChromaRow {
    P cb, cr;
    uint32_t step;
};

template <class P>
struct Chroma {
    P cb, cr;
    uint32_t cbStride, crStride, step;
    ChromaRow<P> row(uint32_t y) const { return {cb + size_t{y} * cbStride, cr + size_t{y} * crStride, step}; }
};

template <class P>
constexpr Chroma<P> planarChroma(P cb, P cr, uint32_t cbStride, uint32_t crStride) {
    return {cb, cr, cbStride, crStride, 1};
}
template <class P>
constexpr Chroma<P> pseudoChroma(P c, uint32_t stride, bool crFirst = false) {
    return crFirst ? Chroma<P>{c + 1, c, stride, stride, 2} : Chroma<P>{c, c + 1, stride, stride, 2};
}

using InRow = ChromaRow<const uint8_t*>;
using OutRow = ChromaRow<uint8_t*>;

// ---- YCbCr to packed RGB ---------------------------------------------------------------

struct RgbJob {
    const uint8_t* y;
    uint32_t yStride;
    Chroma<const uint8_t*> c;
    uint32_t width, height, sx, sy;
    uint8_t* dst;
    uint32_t dstStride;
};

// Calls row(yRow, chromaRow, dstRow) for every row; chroma row y / sy.
template <class Row>
void forEachRgbRow(const RgbJob& j, Row&& row) {
    for (uint32_t y = 0; y < j.height; ++y)
        row(j.y + size_t{y} * j.yStride, j.c.row(y / j.sy), j.dst + size_t{y} * j.dstStride);
}

// Pixels [x0, x1) of one row; each chroma sample is replicated over the
// sx pixels it covers.
template <class Math, class Writer>
void rgbSpan(const uint8_t* y, InRow c, uint32_t sx, uint32_t x0, uint32_t x1, uint8_t* dst) {
    for (uint32_t x = x0; x < x1; ++x) {
        const size_t i = size_t{x / sx} * c.step;
        Writer::put(dst, x, Math::convert(y[x], c.cb[i], c.cr[i]));
    }
}

template <class Math, class Writer>
void rgbImage(const RgbJob& j) {
    forEachRgbRow(j, [&](const uint8_t* y, InRow c, uint8_t* dst) { rgbSpan<Math, Writer>(y, c, j.sx, 0, j.width, dst); });
}

// ---- Video-range 4:2:0 to 565 ------------------------------------------------------------
// src holds the Y plane (width x height) followed at once by the chroma
// plane of ceil(height / 2) rows of ceil(width / 2) pairs; dst is packed.
// Rotated, source pixel (x, y) lands on (width-1-x, height-1-y).

struct VideoJob {
    const uint8_t* y;
    const uint8_t* c;
    uint32_t width, height, cStride;
    uint8_t* dst;
    bool rotate;
};

inline VideoJob videoJob(const uint8_t* src, uint32_t width, uint32_t height, uint16_t* dst, bool rotate) {
    return {src, src + size_t{width} * height, width, height, color::chromaRowBytes(width, 2, true),
            reinterpret_cast<uint8_t*>(dst), rotate};
}

// Calls row(yRow, chromaRow, dstRow) with the output row the source row lands on.
template <class Row>
void forEachVideoRow(const VideoJob& j, Row&& row) {
    for (uint32_t y = 0; y < j.height; ++y) {
        const uint32_t out = j.rotate ? j.height - 1 - y : y;
        row(j.y + size_t{y} * j.width, j.c + size_t{y / 2} * j.cStride, j.dst + size_t{out} * j.width * 2);
    }
}

// Source pixels [x0, x1) of one row (x0 even): two pixels per 32-bit store,
// the odd pixel of an odd width alone.
inline void videoSpan(const uint8_t* y, const uint8_t* c, uint32_t x0, uint32_t x1, uint8_t* dst, uint32_t width,
                      bool rotate) {
    for (uint32_t x = x0; x < x1; x += 2) {
        const uint8_t* uv = c + x;  // pair x / 2
        const uint16_t first = video565(y[x], uv[0], uv[1]);
        if (x + 1 < x1) {
            const uint16_t second = video565(y[x + 1], uv[0], uv[1]);
            const uint16_t pair[2] = {rotate ? second : first, rotate ? first : second};
            std::memcpy(dst + 2 * size_t{rotate ? width - 2 - x : x}, pair, sizeof pair);
        } else {
            color::store565(dst + 2 * size_t{rotate ? width - 1 - x : x}, first);
        }
    }
}

inline void videoImage(const VideoJob& j) {
    forEachVideoRow(j, [&](const uint8_t* y, const uint8_t* c, uint8_t* dst) {
        videoSpan(y, c, 0, j.width, dst, j.width, j.rotate);
    });
}

// ---- Layout changes between YCbCr layouts ---------------------------------------------------
// Y is copied. Chroma changes resolution per direction: down to half by the
// rounded mean of the samples covered ((a + b + 1) >> 1 along one direction,
// (a + b + c + d + 2) >> 2 over a 2 x 2 block; at an odd edge the lone
// sample stands for the missing one), up to double by replicating each sample.

struct LayoutJob {
    const uint8_t* srcY;
    uint32_t srcYStride;
    Chroma<const uint8_t*> src;
    uint8_t* dstY;
    uint32_t dstYStride;
    Chroma<uint8_t*> dst;
    uint32_t width, height;
};

// Horizontal resampling of a layout change: the destination has twice the
// samples (Up), as many (Same) or half (Down).
enum class Resample { Up, Same, Down };
constexpr Resample resample(uint32_t srcSub, uint32_t dstSub) {
    return srcSub > dstSub ? Resample::Up : (srcSub < dstSub ? Resample::Down : Resample::Same);
}

// Copies Y, then calls row(rowA, rowB, dstRow, srcSamples, dstSamples) for
// every destination chroma row: rowA and rowB are the source rows it is
// made of (the same row unless the vertical resolution halves).
template <uint32_t Ssx, uint32_t Ssy, uint32_t Dsx, uint32_t Dsy, class Row>
void forEachLayoutRow(const LayoutJob& j, Row&& row) {
    for (uint32_t y = 0; y < j.height; ++y)
        std::memcpy(j.dstY + size_t{y} * j.dstYStride, j.srcY + size_t{y} * j.srcYStride, j.width);
    const uint32_t srcCols = color::chromaCount(j.width, Ssx), srcRows = color::chromaCount(j.height, Ssy);
    const uint32_t dstCols = color::chromaCount(j.width, Dsx), dstRows = color::chromaCount(j.height, Dsy);
    for (uint32_t r = 0; r < dstRows; ++r) {
        uint32_t a = r, b = r;
        if constexpr (resample(Ssy, Dsy) == Resample::Down) {
            a = 2 * r;
            b = std::min(a + 1, srcRows - 1);
        } else if constexpr (resample(Ssy, Dsy) == Resample::Up) {
            a = b = r / 2;
        }
        row(j.src.row(a), j.src.row(b), j.dst.row(r), srcCols, dstCols);
    }
}

// Destination samples [i0, i1) of one chroma row. Blend: the vertical
// resolution halves, so rows a and b are averaged.
template <Resample H, bool Blend>
void layoutSpan(InRow a, InRow b, OutRow d, uint32_t srcCols, uint32_t i0, uint32_t i1) {
    auto cb = [](InRow r, uint32_t s) -> uint32_t { return r.cb[size_t{s} * r.step]; };
    auto cr = [](InRow r, uint32_t s) -> uint32_t { return r.cr[size_t{s} * r.step]; };
    auto one = [&](auto get, uint32_t i) -> uint8_t {
        if constexpr (H == Resample::Down) {
            const uint32_t s0 = 2 * i, s1 = std::min(s0 + 1, srcCols - 1);
            if constexpr (Blend) return static_cast<uint8_t>((get(a, s0) + get(a, s1) + get(b, s0) + get(b, s1) + 2) >> 2);
            return static_cast<uint8_t>((get(a, s0) + get(a, s1) + 1) >> 1);
        } else {
            const uint32_t s = H == Resample::Up ? i / 2 : i;
            if constexpr (Blend) return static_cast<uint8_t>((get(a, s) + get(b, s) + 1) >> 1);
            return static_cast<uint8_t>(get(a, s));
        }
    };
    for (uint32_t i = i0; i < i1; ++i) {
        d.cb[size_t{i} * d.step] = one(cb, i);
        d.cr[size_t{i} * d.step] = one(cr, i);
    }
}

template <uint32_t Ssx, uint32_t Ssy, uint32_t Dsx, uint32_t Dsy>
void layoutImage(const LayoutJob& j) {
    constexpr Resample H = resample(Ssx, Dsx);
    constexpr bool Blend = resample(Ssy, Dsy) == Resample::Down;
    forEachLayoutRow<Ssx, Ssy, Dsx, Dsy>(j, [](InRow a, InRow b, OutRow d, uint32_t srcCols, uint32_t dstCols) {
        layoutSpan<H, Blend>(a, b, d, srcCols, 0, dstCols);
    });
}

// ---- Chroma byte swap ----------------------------------------------------------------
// Pairs [i0, i1) of one row; safe in place (src == dst).
inline void swapSpan(const uint8_t* src, uint8_t* dst, uint32_t i0, uint32_t i1) {
    for (uint32_t i = i0; i < i1; ++i) {
        const uint8_t first = src[2 * i], second = src[2 * i + 1];
        dst[2 * i] = second;
        dst[2 * i + 1] = first;
    }
}

// Byte order of the pairs of an interleaved chroma plane.
enum Order : bool { CbCr = false, CrCb = true };

}  // namespace pxr::ycbcr

// Jobs built from the argument names of each side (to_rgb_members.h), for
// the wrappers of every kind. Planar sources have no pair order.
#define PXR_YCC_IN_PLANAR(order) pxr::ycbcr::planarChroma(srcCb, srcCr, srcCbStride, srcCrStride)
#define PXR_YCC_IN_PSEUDO(order) pxr::ycbcr::pseudoChroma(srcC, srcCStride, order)
#define PXR_YCC_OUT_PLANAR pxr::ycbcr::planarChroma(dstCb, dstCr, dstCbStride, dstCrStride)
#define PXR_YCC_OUT_PSEUDO pxr::ycbcr::pseudoChroma(dstC, dstCStride)
#define PXR_YCC_RGB_JOB(Src, sx, sy, order)                                                               \
    pxr::ycbcr::RgbJob {                                                                                 \
        srcY, srcYStride, PXR_YCC_IN_##Src(order), srcWidth, srcHeight, sx, sy,                          \
            reinterpret_cast<uint8_t*>(dst), dstStride                                                   \
    }
#define PXR_YCC_LAYOUT_JOB(Src, Dst)                                                                      \
    pxr::ycbcr::LayoutJob {                                                                              \
        srcY, srcYStride, PXR_YCC_IN_##Src(pxr::ycbcr::CbCr), dstY, dstYStride, PXR_YCC_OUT_##Dst, srcWidth, \
            srcHeight                                                                                    \
    }
