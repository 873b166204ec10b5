// Doubling of planes and of interleaved two-channel planes, shared by the
// reference and vector kinds: the cubic polyphase up-scaler and the [1 3]
// up-samplers. Drivers walk column strips and fill the edge columns
// (replicated) themselves; each kind brings the row passes.
#pragma once

#include <algorithm>
#include <cstdint>

#include "imgproc/scale/scale_common.h"

namespace pxr::scale::up {

// Source pixels per strip.
constexpr uint32_t kStrip = 1024;

// Byte column `col` of a row of `w` pixels of `ch` channels, with the pixel
// index replicated at the edges (col may lie outside the row).
inline uint32_t clampColumn(int64_t col, uint32_t w, uint32_t ch) {
    const int64_t pixel = col >= 0 ? col / ch : -((-col + ch - 1) / ch);
    const int64_t c = col - pixel * ch;
    return clampIndex(pixel, w) * ch + static_cast<uint32_t>(c);
}

// ---- Polyphase cubic doubling ----
// Output sample 2i sits at source position i - 1/4, output 2i+1 at i + 1/4
// (centre-aligned). Catmull-Rom weights at those phases are exact in 1/128:
//   2i:   [-3 29 111 -9] on samples i-2 .. i+1
//   2i+1: [-9 111 29 -3] on samples i-1 .. i+2
// Vertical then horizontal sums are exact (32-bit); one rounding,
// (sum + 2^13) >> 14, clamped to 0..255.
inline constexpr int32_t kEvenTaps[4] = {-3, 29, 111, -9};
inline constexpr int32_t kOddTaps[4] = {-9, 111, 29, -3};

inline int32_t polyColumn(const uint8_t* const* r, const int32_t* w, size_t c) {
    return w[0] * r[0][c] + w[1] * r[1][c] + w[2] * r[2][c] + w[3] * r[3][c];
}
inline uint8_t polyRound(int32_t sum) { return clampByte((sum + (1 << 13)) >> 14); }

struct PolyKernels {
    // v[c] = polyColumn(rows, w, c) for c in [0, n); rows[] point at column 0.
    void (*vertical)(const uint8_t* const* rows, const int32_t* w, int32_t* v, uint32_t n);
    // For source bytes b in [0, n) (channel c = b mod ch): out[2b - c] from
    // v[b - 2ch .. b + ch] with kEvenTaps, out[2b - c + ch] from
    // v[b - ch .. b + 2ch] with kOddTaps. n is a multiple of ch.
    void (*horizontal)(const int32_t* v, uint8_t* out, uint32_t n, uint32_t ch);
};

inline void polyHorizontalSpan(const int32_t* v, uint8_t* out, uint32_t b0, uint32_t b1, uint32_t ch) {
    const int64_t s = ch;
    for (uint32_t b = b0; b < b1; ++b) {
        const int64_t i = b;
        const int32_t even = kEvenTaps[0] * v[i - 2 * s] + kEvenTaps[1] * v[i - s] + kEvenTaps[2] * v[i] +
                             kEvenTaps[3] * v[i + s];
        const int32_t odd = kOddTaps[0] * v[i - s] + kOddTaps[1] * v[i] + kOddTaps[2] * v[i + s] +
                            kOddTaps[3] * v[i + 2 * s];
        const size_t o = 2 * size_t{b} - b % ch;
        out[o] = polyRound(even);
        out[o + ch] = polyRound(odd);
    }
}

inline void polyDouble(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstStride, uint32_t ch, const PolyKernels& k) {
    int32_t v[2 * kStrip + 8];  // a strip of 2 channels plus 2 pixels each side
    const uint32_t rowBytes = w * ch;
    for (uint32_t y = 0; y < 2 * h; ++y) {
        const int64_t i = y / 2;
        const int64_t top = (y & 1) ? i - 1 : i - 2;
        const int32_t* taps = (y & 1) ? kOddTaps : kEvenTaps;
        const uint8_t* rows[4];
        for (int t = 0; t < 4; ++t) rows[t] = src + size_t{clampIndex(top + t, h)} * srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        for (uint32_t b0 = 0; b0 < rowBytes; b0 += kStrip * ch) {
            const uint32_t n = std::min(kStrip * ch, rowBytes - b0);
            // v[j] holds byte column lo + j, for columns [lo, hi).
            const int64_t lo = int64_t{b0} - 2 * ch, hi = int64_t{b0} + n + 2 * ch;
            const int64_t a = std::max<int64_t>(lo, 0), b = std::min<int64_t>(hi, rowBytes);
            for (int64_t col = lo; col < a; ++col) v[col - lo] = polyColumn(rows, taps, clampColumn(col, w, ch));
            for (int64_t col = b; col < hi; ++col) v[col - lo] = polyColumn(rows, taps, clampColumn(col, w, ch));
            const uint8_t* inside[4] = {rows[0] + a, rows[1] + a, rows[2] + a, rows[3] + a};
            k.vertical(inside, taps, v + (a - lo), static_cast<uint32_t>(b - a));
            k.horizontal(v + 2 * ch, out + 2 * size_t{b0}, n, ch);
        }
    }
}

// ---- [1 3] up-sampling ----
// Centre-aligned doubling: each output sample weighs its source sample 3
// and the neighbour on its side 1. One direction: (3 p + q + 2) >> 2; both
// directions: (9 p + 3 q + 3 r + s + 8) >> 4, formed from column sums
// 3 p + q. Edges replicate.
inline uint16_t blendSum(uint8_t nearer, uint8_t farther) { return static_cast<uint16_t>(3 * nearer + farther); }
inline uint8_t blend(uint8_t nearer, uint8_t farther) { return static_cast<uint8_t>((blendSum(nearer, farther) + 2) >> 2); }
inline uint8_t blendSums(uint16_t nearer, uint16_t farther) {
    return static_cast<uint8_t>((3 * nearer + farther + 8) >> 4);
}

struct UpsampleKernels {
    // out[b] = blend(nearer[b], farther[b]) for b in [0, n).
    void (*blendRows)(const uint8_t* nearer, const uint8_t* farther, uint8_t* out, uint32_t n);
    // sums[b] = blendSum(nearer[b], farther[b]) for b in [0, n).
    void (*columnSums)(const uint8_t* nearer, const uint8_t* farther, uint16_t* sums, uint32_t n);
    // For bytes b in [0, n) (channel c = b mod ch): out[2b - c] =
    // blendSums(s[b], s[b - ch]), out[2b - c + ch] = blendSums(s[b], s[b + ch]).
    void (*horizontal)(const uint16_t* s, uint8_t* out, uint32_t n, uint32_t ch);
};

inline void upsampleHorizontalSpan(const uint16_t* s, uint8_t* out, uint32_t b0, uint32_t b1, uint32_t ch) {
    const int64_t d = ch;
    for (uint32_t b = b0; b < b1; ++b) {
        const int64_t i = b;
        const size_t o = 2 * size_t{b} - b % ch;
        out[o] = blendSums(s[i], s[i - d]);
        out[o + ch] = blendSums(s[i], s[i + d]);
    }
}

// Vertical doubling: rows 2i and 2i+1 blend row i with rows i-1 and i+1.
inline void upsampleVertical(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst,
                             uint32_t dstStride, uint32_t ch, const UpsampleKernels& k) {
    for (uint32_t i = 0; i < h; ++i) {
        const uint8_t* row = src + size_t{i} * srcStride;
        const uint8_t* above = src + size_t{clampIndex(int64_t{i} - 1, h)} * srcStride;
        const uint8_t* below = src + size_t{clampIndex(int64_t{i} + 1, h)} * srcStride;
        k.blendRows(row, above, dst + 2 * size_t{i} * dstStride, w * ch);
        k.blendRows(row, below, dst + (2 * size_t{i} + 1) * dstStride, w * ch);
    }
}

// Horizontal doubling of the sums 3 near + far of two rows (near == far
// gives 4 p, so that one direction rounds as (3 p + q + 2) >> 2).
inline void upsampleRowPair(const uint8_t* nearer, const uint8_t* farther, uint32_t w, uint32_t ch, uint8_t* out,
                            const UpsampleKernels& k) {
    uint16_t s[2 * kStrip + 4];  // a strip of 2 channels plus 1 pixel each side
    const uint32_t rowBytes = w * ch;
    for (uint32_t b0 = 0; b0 < rowBytes; b0 += kStrip * ch) {
        const uint32_t n = std::min(kStrip * ch, rowBytes - b0);
        // s[j] holds byte column lo + j, for columns [lo, hi).
        const int64_t lo = int64_t{b0} - ch, hi = int64_t{b0} + n + ch;
        const int64_t a = std::max<int64_t>(lo, 0), b = std::min<int64_t>(hi, rowBytes);
        auto edge = [&](int64_t col) {
            const uint32_t m = clampColumn(col, w, ch);
            s[col - lo] = blendSum(nearer[m], farther[m]);
        };
        for (int64_t col = lo; col < a; ++col) edge(col);
        for (int64_t col = b; col < hi; ++col) edge(col);
        k.columnSums(nearer + a, farther + a, s + (a - lo), static_cast<uint32_t>(b - a));
        k.horizontal(s + ch, out + 2 * size_t{b0}, n, ch);
    }
}

inline void upsampleHorizontal(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst,
                               uint32_t dstStride, uint32_t ch, const UpsampleKernels& k) {
    for (uint32_t i = 0; i < h; ++i) {
        const uint8_t* row = src + size_t{i} * srcStride;
        upsampleRowPair(row, row, w, ch, dst + size_t{i} * dstStride, k);
    }
}

inline void upsample2D(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstStride, uint32_t ch, const UpsampleKernels& k) {
    for (uint32_t i = 0; i < h; ++i) {
        const uint8_t* row = src + size_t{i} * srcStride;
        const uint8_t* above = src + size_t{clampIndex(int64_t{i} - 1, h)} * srcStride;
        const uint8_t* below = src + size_t{clampIndex(int64_t{i} + 1, h)} * srcStride;
        upsampleRowPair(row, above, w, ch, dst + 2 * size_t{i} * dstStride, k);
        upsampleRowPair(row, below, w, ch, dst + (2 * size_t{i} + 1) * dstStride, k);
    }
}

}  // namespace pxr::scale::up
