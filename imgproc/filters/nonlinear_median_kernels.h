// Row kernels of the 3x3 median shared by the reference and vector kinds:
// sorted columns reused along the row, and the border pixels of the status
// generation.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "imgproc/filters/border_walk.h"

namespace pxr::median3 {

struct Sorted3 {
    uint8_t lo, mid, hi;
};

inline Sorted3 sort3(uint8_t a, uint8_t b, uint8_t c) {
    uint8_t lo = std::min(a, b), hi = std::max(a, b);
    return {std::min(lo, c), std::max(lo, std::min(hi, c)), std::max(hi, c)};
}

inline uint8_t med3(uint8_t a, uint8_t b, uint8_t c) {
    return std::max(std::min(a, b), std::min(std::max(a, b), c));
}

// Median of nine from three sorted columns: max of the minima, median of the
// medians, min of the maxima.
inline uint8_t median9(const Sorted3& a, const Sorted3& b, const Sorted3& c) {
    uint8_t lo = std::max({a.lo, b.lo, c.lo});
    uint8_t mid = med3(a.mid, b.mid, c.mid);
    uint8_t hi = std::min({a.hi, b.hi, c.hi});
    return med3(lo, mid, hi);
}

// Interior of one output row, columns [x0, x1) with 1 <= x0, x1 <= width-1;
// each column is sorted once and reused for three outputs.
inline void interiorSpan(const uint8_t* t, const uint8_t* m, const uint8_t* b, uint8_t* out, uint32_t x0,
                         uint32_t x1) {
    if (x0 >= x1) return;
    Sorted3 c0 = sort3(t[x0 - 1], m[x0 - 1], b[x0 - 1]);
    Sorted3 c1 = sort3(t[x0], m[x0], b[x0]);
    for (uint32_t x = x0; x < x1; ++x) {
        Sorted3 c2 = sort3(t[x + 1], m[x + 1], b[x + 1]);
        out[x] = median9(c0, c1, c2);
        c0 = c1;
        c1 = c2;
    }
}

// A border pixel of the _v3 generation: the median of the nine taps with the
// outside taps taken from the border rule (constant value or nearest pixel).
inline uint8_t borderMedian(const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride, uint32_t x, uint32_t y,
                            bool constant, uint8_t value) {
    uint8_t taps[9];
    int n = 0;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            int64_t sx = int64_t{x} + dx, sy = int64_t{y} + dy;
            bool inside = sx >= 0 && sy >= 0 && sx < w && sy < h;
            if (!inside && constant) {
                taps[n++] = value;
                continue;
            }
            sx = std::clamp<int64_t>(sx, 0, w - 1);
            sy = std::clamp<int64_t>(sy, 0, h - 1);
            taps[n++] = src[sy * stride + sx];
        }
    }
    std::nth_element(taps, taps + 4, taps + 9);
    return taps[4];
}

// Border types of the _v3 generation (see docs/decisions.md): CONSTANT pads
// with the border value; REPLICATE and DEFAULT repeat the nearest pixel.
inline void border(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds,
                   uint32_t borderType, uint8_t value) {
    const bool constant = borderType == 1;
    forEachBorderPixel(w, h, [&](uint32_t x, uint32_t y) {
        dst[size_t{y} * ds + x] = borderMedian(src, w, h, ss, x, y, constant, value);
    });
}

}  // namespace pxr::median3
