// Row kernels of the 3x3 Gaussian shared by the reference and vector kinds:
// the interior row (the readable definition) and the three border rules.
#pragma once

#include <algorithm>
#include <cstdint>

#include "imgproc/filters/border_walk.h"

namespace pxr::gauss3 {

// Interior of one output row, columns [x0, x1) with 1 <= x0, x1 <= width-1.
// Vertical column sums are reused along the row:
//   out(x) = (col(x-1) + 2 col(x) + col(x+1)) >> 4, col = top + 2 mid + bottom.
inline void interiorSpan(const uint8_t* t, const uint8_t* m, const uint8_t* b, uint8_t* out,
                         uint32_t x0, uint32_t x1) {
    if (x0 >= x1) return;
    uint32_t c0 = t[x0 - 1] + 2u * m[x0 - 1] + b[x0 - 1];
    uint32_t c1 = t[x0] + 2u * m[x0] + b[x0];
    for (uint32_t x = x0; x < x1; ++x) {
        uint32_t c2 = t[x + 1] + 2u * m[x + 1] + b[x + 1];
        out[x] = static_cast<uint8_t>((c0 + 2u * c1 + c2) >> 4);
        c0 = c1;
        c1 = c2;
    }
}

// Weight of tap (dx, dy) of the [1 2 1] x [1 2 1] kernel.
constexpr uint32_t weight(int dx, int dy) { return (dx == 0 ? 2u : 1u) * (dy == 0 ? 2u : 1u); }

enum class Border { Renormalise, Constant, Replicate };

// One border pixel: the kernel cropped and renormalised (truncating division
// by the in-image weights: 9 at a corner, 12 along an edge), or the full kernel
// over a constant or replicated outside, shifted right by 4.
inline uint8_t borderPixel(const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride, uint32_t x,
                           uint32_t y, Border border, uint8_t value) {
    uint32_t sum = 0, weights = 0;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            int64_t sx = int64_t{x} + dx, sy = int64_t{y} + dy;
            bool inside = sx >= 0 && sy >= 0 && sx < w && sy < h;
            uint32_t wt = weight(dx, dy);
            if (inside) {
                sum += wt * src[sy * stride + sx];
                weights += wt;
            } else if (border == Border::Constant) {
                sum += wt * value;
            } else if (border == Border::Replicate) {
                sx = std::clamp<int64_t>(sx, 0, w - 1);
                sy = std::clamp<int64_t>(sy, 0, h - 1);
                sum += wt * src[sy * stride + sx];
            }
        }
    }
    return static_cast<uint8_t>(border == Border::Renormalise ? sum / weights : sum >> 4);
}

// Writes the outermost rows and columns of dst by one border rule.
inline void border(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst,
                   uint32_t ds, Border rule, uint8_t value) {
    forEachBorderPixel(w, h, [&](uint32_t x, uint32_t y) {
        dst[size_t{y} * ds + x] = borderPixel(src, w, h, ss, x, y, rule, value);
    });
}

// Maps a border type of the _v3 generation to its rule.
inline Border fromType(uint32_t borderType) {
    switch (borderType) {
        case 1: return Border::Constant;
        case 2: return Border::Replicate;
        default: return Border::Renormalise;
    }
}

}  // namespace pxr::gauss3
