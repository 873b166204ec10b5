// Resampling to a given size, shared by the reference and vector kinds:
// nearest neighbour, bilinear and exact area. Each builds per-column tables
// in one scratch buffer (the layouts below) and works row by row.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace pxr::scale::resample {

// Positions are centre-aligned: output pixel x covers source coordinates
// [x, x + 1) * src / dst, its centre at (x + 0.5) * src / dst.

// Nearest neighbour: the source pixel under the output pixel's centre,
// floor((2x + 1) src / (2 dst)).
inline uint32_t nearestIndex(uint32_t x, uint32_t srcSize, uint32_t dstSize) {
    return static_cast<uint32_t>((2 * uint64_t{x} + 1) * srcSize / (2 * uint64_t{dstSize}));
}

// Bilinear: the sample position (x + 0.5) src / dst - 0.5 rounded to 1/128
// of a pixel; taps index and index + 1 with weights 128 - frac and frac.
// Positions before the first centre or past the last one take the edge
// pixel (frac 0).
constexpr uint32_t kFracBits = 7, kOne = 1u << kFracBits;
struct LinearTap {
    uint32_t index, frac;
};
inline LinearTap linearTap(uint32_t x, uint32_t srcSize, uint32_t dstSize) {
    // 128 x position = (128 ((2x + 1) src - dst) + dst) / (2 dst), floored;
    // split so that nothing overflows 64 bits.
    const uint64_t d = 2 * uint64_t{dstSize};
    const uint64_t a = (2 * uint64_t{x} + 1) * srcSize;
    const int64_t q = static_cast<int64_t>(a / d), r = static_cast<int64_t>(a % d);
    const int64_t num = int64_t{kOne} * r - int64_t{kOne - 1} * dstSize;  // may be negative
    const int64_t sd = static_cast<int64_t>(d);
    const int64_t fl = num >= 0 ? num / sd : -((-num + sd - 1) / sd);
    const int64_t pos = q * kOne + fl;
    if (pos < 0) return {0, 0};
    const uint64_t index = static_cast<uint64_t>(pos) >> kFracBits;
    if (index + 1 >= srcSize) return {srcSize - 1, 0};
    return {static_cast<uint32_t>(index), static_cast<uint32_t>(pos) & (kOne - 1)};
}

// Scratch of the bilinear members: column indices, column fractions, and
// one row of vertical sums (srcWidth + 1 entries, the last one 0 so that
// the second tap of the edge column may be read; padded for vectors).
struct LinearLayout {
    size_t index, frac, sums, bytes;
};
inline LinearLayout linearLayout(uint32_t srcWidth, uint32_t dstWidth) {
    auto up64 = [](size_t n) { return (n + 63) & ~size_t{63}; };
    LinearLayout l{};
    l.frac = up64(size_t{dstWidth} * 4);
    l.sums = l.frac + up64(size_t{dstWidth} * 4);
    l.bytes = l.sums + up64((size_t{srcWidth} + 1) * 2 + 64);
    return l;
}

// Vertical pass: sums[c] = top[c] (128 - g) + bottom[c] g for c in [c0, c1).
inline void linearVertical(const uint8_t* top, const uint8_t* bottom, uint32_t g, uint16_t* sums, uint32_t c0,
                           uint32_t c1) {
    for (uint32_t c = c0; c < c1; ++c)
        sums[c] = static_cast<uint16_t>(top[c] * (kOne - g) + bottom[c] * g);
}

// Horizontal pass for output columns [x0, x1), one rounding for both passes:
// (s[i] (128 - f) + s[i + 1] f + 2^13) >> 14.
inline void linearHorizontal(const uint16_t* sums, const uint32_t* index, const uint32_t* frac, uint8_t* out,
                             uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const uint32_t i = index[x], f = frac[x];
        out[x] = static_cast<uint8_t>((sums[i] * (kOne - f) + sums[i + 1] * f + (1u << 13)) >> 14);
    }
}

// Exact area: in units where a source pixel spans dst / g and an output
// pixel src / g (g = gcd), output x covers [x src, (x + 1) src) / g; each
// source pixel weighs its overlap with that span. The weights of one
// output sum to src / g.
struct AreaAxis {
    uint32_t unitSrc, unitDst;  // a source pixel spans unitDst units, an output pixel unitSrc
};
inline AreaAxis areaAxis(uint32_t srcSize, uint32_t dstSize) {
    const uint32_t g = std::gcd(srcSize, dstSize);
    return {srcSize / g, dstSize / g};
}
// Source pixels [first, first + count) of output x and their weights.
inline uint32_t areaTaps(const AreaAxis& a, uint32_t x, uint32_t* first, uint32_t* weights) {
    const uint64_t start = uint64_t{x} * a.unitSrc, end = start + a.unitSrc;
    const uint64_t i0 = start / a.unitDst, i1 = (end - 1) / a.unitDst;
    for (uint64_t i = i0; i <= i1; ++i)
        weights[i - i0] = static_cast<uint32_t>(std::min(end, (i + 1) * a.unitDst) - std::max(start, i * a.unitDst));
    *first = static_cast<uint32_t>(i0);
    return static_cast<uint32_t>(i1 - i0 + 1);
}
// Most taps any output pixel has.
inline uint32_t areaMaxTaps(const AreaAxis& a) { return (a.unitSrc + a.unitDst - 1) / a.unitDst + 1; }

// Scratch of the area members: per output column its first source column,
// tap count and offset into the packed weights (at most src + dst of
// them), the row's vertical weights, and one row of 32-bit vertical sums.
struct AreaLayout {
    size_t first, count, offset, weights, rowWeights, sums, bytes;
};
inline AreaLayout areaLayout(uint32_t srcWidth, uint32_t dstWidth, uint32_t rowTaps) {
    auto up64 = [](size_t n) { return (n + 63) & ~size_t{63}; };
    AreaLayout l{};
    l.count = up64(size_t{dstWidth} * 4);
    l.offset = l.count + up64(size_t{dstWidth} * 4);
    l.weights = l.offset + up64(size_t{dstWidth} * 4);
    l.rowWeights = l.weights + up64((size_t{srcWidth} + dstWidth) * 4);
    l.sums = l.rowWeights + up64(size_t{rowTaps} * 4);
    l.bytes = l.sums + up64(size_t{srcWidth} * 4 + 64);
    return l;
}

// Vertical pass over `taps` rows from `row`: sums[c] = sum of weight x
// pixel, c in [c0, c1).
inline void areaVertical(const uint8_t* row, uint32_t stride, const uint32_t* weights, uint32_t taps,
                         uint32_t* sums, uint32_t c0, uint32_t c1) {
    for (uint32_t c = c0; c < c1; ++c) sums[c] = row[c] * weights[0];
    for (uint32_t t = 1; t < taps; ++t) {
        row += stride;
        for (uint32_t c = c0; c < c1; ++c) sums[c] += row[c] * weights[t];
    }
}

// Horizontal pass for output columns [x0, x1): the weighted sum divided by
// the total weight `den`, rounded to nearest.
inline void areaHorizontal(const uint32_t* sums, const uint32_t* first, const uint32_t* count,
                           const uint32_t* offset, const uint32_t* weights, uint64_t den, uint8_t* out,
                           uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const uint32_t* s = sums + first[x];
        const uint32_t* w = weights + offset[x];
        uint64_t sum = 0;
        for (uint32_t t = 0; t < count[x]; ++t) sum += uint64_t{s[t]} * w[t];
        out[x] = static_cast<uint8_t>((sum + den / 2) / den);
    }
}

}  // namespace pxr::scale::resample
