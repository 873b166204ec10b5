// Kernels of the bilateral filters shared by the reference and vector kinds:
// the fast exponential, the weight tables of one call, the tap offsets and
// the per-pixel sums (interior and zero-border band).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace pxr::bilateral {

// 2^y from the bits of a float: y below -126 is raised to -126 (NaN too),
// then the bit pattern is the truncating conversion of
// (y + 126.942696) x 2^23.
inline float fastPow2(float y) {
    if (!(y >= -126.0f)) y = -126.0f;
    const uint32_t bits = static_cast<uint32_t>((y + 126.942696f) * 8388608.0f);
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

// The Gaussian weight exp(-0.5 q / sigma^2) by the fast exponential, with
// k = -0.5 / sigma^2: y = k x q x log2(e).
inline float gaussianWeight(float k, float q) { return fastPow2(k * q * 1.442695f); }

inline float gaussianFactor(float sigma) { return -0.5f / (sigma * sigma); }

// The largest disc: 9x9, 49 taps.
inline constexpr int kMaxRadius = 4;
inline constexpr uint32_t kMaxTaps = 49;

// Weights of one call: the taps of the disc dx^2 + dy^2 <= radius^2 in row
// order with their spatial weights, and the colour weight of every grey
// difference.
struct Weights {
    int radius = 0;
    uint32_t count = 0;
    int8_t dx[kMaxTaps] = {}, dy[kMaxTaps] = {};
    float space[kMaxTaps] = {};
    float color[256] = {};
    float colorFactor = 0.0f;  // -0.5 / sigmaColor^2: color[d] = gaussianWeight(colorFactor, d^2)
};

inline Weights makeWeights(int radius, float sigmaColor, float sigmaSpace) {
    Weights w;
    w.radius = radius;
    const float ks = gaussianFactor(sigmaSpace), kc = gaussianFactor(sigmaColor);
    for (int dy = -radius; dy <= radius; ++dy)
        for (int dx = -radius; dx <= radius; ++dx) {
            const int r2 = dx * dx + dy * dy;
            if (r2 > radius * radius) continue;
            w.dx[w.count] = static_cast<int8_t>(dx);
            w.dy[w.count] = static_cast<int8_t>(dy);
            w.space[w.count] = gaussianWeight(ks, static_cast<float>(r2));
            ++w.count;
        }
    for (int d = 0; d < 256; ++d) w.color[d] = gaussianWeight(kc, static_cast<float>(d * d));
    w.colorFactor = kc;
    return w;
}

// The fixed-parameter filters: sigmaColor 50 and these sigmaSpace values.
inline constexpr float kFixedSigmaColor = 50.0f;
inline float fixedSigmaSpace(int radius) { return radius == 2 ? 1.0f : radius == 3 ? 1.5f : 2.0f; }

// Byte offsets of the taps from the centre pixel for one stride.
inline void tapOffsets(const Weights& w, uint32_t stride, ptrdiff_t* offsets) {
    for (uint32_t k = 0; k < w.count; ++k) offsets[k] = ptrdiff_t{w.dy[k]} * static_cast<ptrdiff_t>(stride) + w.dx[k];
}

// The weighted mean rounded half up: truncating conversion of num/den + 0.5.
inline uint8_t finish(float num, float den) { return static_cast<uint8_t>(num / den + 0.5f); }

// A pixel whose taps all lie inside the image. Per tap, in row order:
// wgt = space x color(|p - v|); num += wgt x p; den += wgt.
inline uint8_t interiorPixel(const uint8_t* centre, const ptrdiff_t* offsets, const Weights& w) {
    const int v = centre[0];
    float num = 0.0f, den = 0.0f;
    for (uint32_t k = 0; k < w.count; ++k) {
        const int p = centre[offsets[k]];
        const float wgt = w.space[k] * w.color[std::abs(p - v)];
        num += wgt * static_cast<float>(p);
        den += wgt;
    }
    return finish(num, den);
}

// A pixel of the border band: an outside tap counts as grey 0, adding
// space x color(v) to den and nothing to num.
inline uint8_t bandPixel(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, uint32_t x,
                         uint32_t y, const Weights& w) {
    const int v = src[size_t{y} * stride + x];
    float num = 0.0f, den = 0.0f;
    for (uint32_t k = 0; k < w.count; ++k) {
        const int64_t sx = int64_t{x} + w.dx[k], sy = int64_t{y} + w.dy[k];
        if (sx < 0 || sy < 0 || sx >= width || sy >= height) {
            den += w.space[k] * w.color[v];
            continue;
        }
        const int p = src[size_t(sy) * stride + size_t(sx)];
        const float wgt = w.space[k] * w.color[std::abs(p - v)];
        num += wgt * static_cast<float>(p);
        den += wgt;
    }
    return finish(num, den);
}

// Interior columns [x0, x1) of an interior row y.
inline void interiorSpan(const uint8_t* src, uint32_t stride, uint32_t y, uint8_t* out, uint32_t x0, uint32_t x1,
                         const ptrdiff_t* offsets, const Weights& w) {
    const uint8_t* row = src + size_t{y} * stride;
    for (uint32_t x = x0; x < x1; ++x) out[x] = interiorPixel(row + x, offsets, w);
}

// The band: rows [0, r) and [h-r, h) whole, and the first and last r
// columns of the rows between (everything when the image is too small for
// an interior).
inline void band(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
                 uint32_t dstStride, const Weights& w) {
    const uint32_t r = static_cast<uint32_t>(w.radius);
    for (uint32_t y = 0; y < height; ++y) {
        uint8_t* out = dst + size_t{y} * dstStride;
        const bool bandRow = y < r || y + r >= height || width <= 2 * r;
        const uint32_t left = bandRow ? width : r;
        for (uint32_t x = 0; x < left; ++x) out[x] = bandPixel(src, width, height, srcStride, x, y, w);
        if (!bandRow)
            for (uint32_t x = width - r; x < width; ++x) out[x] = bandPixel(src, width, height, srcStride, x, y, w);
    }
}

}  // namespace pxr::bilateral
