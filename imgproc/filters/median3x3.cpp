// 3x3 median on bytes.
#include <algorithm>

#include "imgproc/filters/border_walk.h"
#include "imgproc/filters/filters.h"

namespace {

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

// A border pixel of the _v3 generation: the median of the nine taps with the
// outside taps taken from the border rule (constant value or nearest pixel).
uint8_t borderMedian(const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride, uint32_t x,
                     uint32_t y, bool constant, uint8_t value) {
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

}  // namespace

void pxrFilterMedian3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                           uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    if (srcWidth < 3 || srcHeight < 3) return;
    for (uint32_t y = 1; y + 1 < srcHeight; ++y) {
        const uint8_t* m = src + size_t{y} * srcStride;
        const uint8_t* t = m - srcStride;
        const uint8_t* b = m + srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        Sorted3 c0 = sort3(t[0], m[0], b[0]);
        Sorted3 c1 = sort3(t[1], m[1], b[1]);
        for (uint32_t x = 1; x + 1 < srcWidth; ++x) {
            Sorted3 c2 = sort3(t[x + 1], m[x + 1], b[x + 1]);
            out[x] = median9(c0, c1, c2);
            c0 = c1;
            c1 = c2;
        }
    }
}

// Border types (see docs/decisions.md): CONSTANT pads with the border value;
// REPLICATE and DEFAULT repeat the nearest edge pixel, which keeps edges
// where a zero pad would pull the border dark.
int pxrFilterMedian3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                             uint32_t borderType, uint8_t borderValue) {
    pxrFilterMedian3x3u8C(src, srcWidth, srcHeight, srcStride, dst, dstStride);
    const bool constant = borderType == 1;
    pxr::forEachBorderPixel(srcWidth, srcHeight, [&](uint32_t x, uint32_t y) {
        dst[size_t{y} * dstStride + x] =
            borderMedian(src, srcWidth, srcHeight, srcStride, x, y, constant, borderValue);
    });
    return 0;
}
