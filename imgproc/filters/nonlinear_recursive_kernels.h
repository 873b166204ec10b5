// Kernels of the recursive bilateral filter shared by the reference and
// vector kinds. Every recursion starts from a zero state and runs the same
// first-order step on a numerator (grey values) and a denominator (ones):
//   s = beta x input + a x s,  a = alpha x colour(|grey step|),
// with alpha = fastexp(-sqrt(2) / sigmaSpace) and beta = 1 - alpha. The
// horizontal passes (left to right, right to left) are added into float
// planes; the vertical passes over those planes use the grey steps between
// vertically adjacent source pixels and are added too; the result is
// num / den rounded half up.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "imgproc/filters/nonlinear_bilateral_kernels.h"

namespace pxr::recursive {

struct Params {
    float alpha = 0.0f, beta = 0.0f;
    float color[256] = {};
};

inline Params makeParams(float sigmaColor, float sigmaSpace) {
    Params p;
    const float kc = bilateral::gaussianFactor(sigmaColor);
    for (int d = 0; d < 256; ++d) p.color[d] = bilateral::gaussianWeight(kc, static_cast<float>(d * d));
    p.alpha = bilateral::fastPow2((-1.41421356f / sigmaSpace) * 1.442695f);
    p.beta = 1.0f - p.alpha;
    return p;
}

// Columns per vertical strip: the right-to-left state of one strip stays
// small while the planes are walked bottom to top.
inline constexpr uint32_t kStrip = 256;

// Floats of scratch memory for a width x height image: the two planes, the
// two strip buffers of the bottom-to-top pass and the two running states of
// the top-to-bottom pass. 0 when the count does not fit in memory.
inline size_t scratchFloats(uint32_t width, uint32_t height) {
    const uint64_t strip = std::min(width, kStrip);
    const uint64_t n = 2 * uint64_t{width} * height + 2 * (uint64_t{height} + 1) * strip;
    return n > SIZE_MAX / sizeof(float) ? 0 : static_cast<size_t>(n);
}

// Both horizontal passes of one row into num and den (width floats each).
inline void horizontalRow(const uint8_t* in, uint32_t width, const Params& p, float* num, float* den) {
    float n = p.beta * static_cast<float>(in[0]), d = p.beta;
    num[0] = n;
    den[0] = d;
    for (uint32_t x = 1; x < width; ++x) {
        const float a = p.alpha * p.color[std::abs(in[x] - in[x - 1])];
        n = p.beta * static_cast<float>(in[x]) + a * n;
        d = p.beta + a * d;
        num[x] = n;
        den[x] = d;
    }
    n = p.beta * static_cast<float>(in[width - 1]);
    d = p.beta;
    num[width - 1] += n;
    den[width - 1] += d;
    for (uint32_t x = width - 1; x-- > 0;) {
        const float a = p.alpha * p.color[std::abs(in[x] - in[x + 1])];
        n = p.beta * static_cast<float>(in[x]) + a * n;
        d = p.beta + a * d;
        num[x] += n;
        den[x] += d;
    }
}

// The planes of the horizontal passes and the buffers of one strip.
struct Planes {
    float* num;        // width x height, row pitch `width`
    float* den;
    float* upNum;      // height x strip, row pitch `pitch`: bottom-to-top pass
    float* upDen;
    uint32_t width, height, pitch;
};

// Bottom-to-top pass of columns [x0, x1) of the strip starting at column s0
// (the strip buffers hold column x at index x - s0).
inline void upwardColumns(const uint8_t* src, uint32_t srcStride, const Params& p, const Planes& pl, uint32_t s0,
                          uint32_t x0, uint32_t x1) {
    const uint32_t h = pl.height;
    for (uint32_t y = h; y-- > 0;) {
        const float* hn = pl.num + size_t{y} * pl.width;
        const float* hd = pl.den + size_t{y} * pl.width;
        float* un = pl.upNum + size_t{y} * pl.pitch;
        float* ud = pl.upDen + size_t{y} * pl.pitch;
        if (y + 1 == h) {
            for (uint32_t x = x0; x < x1; ++x) {
                un[x - s0] = p.beta * hn[x];
                ud[x - s0] = p.beta * hd[x];
            }
            continue;
        }
        const uint8_t* in = src + size_t{y} * srcStride;
        const uint8_t* below = in + srcStride;
        const float* un1 = un + pl.pitch;
        const float* ud1 = ud + pl.pitch;
        for (uint32_t x = x0; x < x1; ++x) {
            const float a = p.alpha * p.color[std::abs(in[x] - below[x])];
            un[x - s0] = p.beta * hn[x] + a * un1[x - s0];
            ud[x - s0] = p.beta * hd[x] + a * ud1[x - s0];
        }
    }
}

// One row of the top-to-bottom pass over columns [x0, x1), added to the
// upward pass, and the result. n and d hold the running state of the strip
// (index x - s0); row 0 starts it.
inline void downwardRow(const uint8_t* src, uint32_t srcStride, const Params& p, const Planes& pl, uint32_t s0,
                        uint32_t x0, uint32_t x1, uint32_t y, float* n, float* d, uint8_t* out) {
    const float* hn = pl.num + size_t{y} * pl.width;
    const float* hd = pl.den + size_t{y} * pl.width;
    const float* un = pl.upNum + size_t{y} * pl.pitch;
    const float* ud = pl.upDen + size_t{y} * pl.pitch;
    const uint8_t* in = src + size_t{y} * srcStride;
    for (uint32_t x = x0; x < x1; ++x) {
        const uint32_t i = x - s0;
        if (y == 0) {
            n[i] = p.beta * hn[x];
            d[i] = p.beta * hd[x];
        } else {
            const float a = p.alpha * p.color[std::abs(in[x] - (in - srcStride)[x])];
            n[i] = p.beta * hn[x] + a * n[i];
            d[i] = p.beta * hd[x] + a * d[i];
        }
        out[x] = bilateral::finish(n[i] + un[i], d[i] + ud[i]);
    }
}

}  // namespace pxr::recursive
