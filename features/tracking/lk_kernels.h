// The patch kernels of the Lucas-Kanade tracker, as scalar code shared by
// the reference and the vector kind (which uses them for borders and for
// spans narrower than a vector, so neither can drift from the other).
//
// Summation order. Every sum over a window is taken column by column: each
// column has an accumulator that starts at 0 and adds the column's samples
// from the top row down; the column totals are then added in a fixed order
// (addColumns), chunk by chunk (chunkLength) from the left. A vector of any
// width reproduces this bit for bit by holding columns in its lanes and
// doing the last additions in the same scalar code. The library is
// compiled with -ffp-contract=off, so no product is fused into a sum.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "features/tracking/lk_core.h"

namespace pxr::lk {

// Positions at or beyond this magnitude (and NaN) are outside every image;
// below it, floor() fits in 32 bits with room for any window offset.
inline constexpr float kPositionLimit = 1073741824.0f;  // 2^30

inline bool usablePosition(float v) { return std::fabs(v) < kPositionLimit; }

// ---------------------------------------------------------------------------
// Sub-pixel sampler.

struct Rect {
    int64_t x, y, width, height;
};

// Clips r to a width x height image. False when nothing of it is inside.
inline bool adjustRect(const Rect& r, int64_t width, int64_t height, Rect& clipped) {
    const int64_t x0 = std::max<int64_t>(r.x, 0), y0 = std::max<int64_t>(r.y, 0);
    const int64_t x1 = std::min(r.x + r.width, width), y1 = std::min(r.y + r.height, height);
    if (x1 <= x0 || y1 <= y0) return false;
    clipped = {x0, y0, x1 - x0, y1 - y0};
    return true;
}

// Bilinear weights for fractions (ax, ay): 1 - ax and ax across, 1 - ay
// and ay down.
struct Weights {
    float x0, x1, y0, y1;
};

inline Weights bilinearWeights(float ax, float ay) { return {1.0f - ax, ax, 1.0f - ay, ay}; }

// Across first, in each of the two rows, then down. (A kernel that keeps
// the across value of a row for the sample below gets the same bits.)
inline float bilinear(float p00, float p01, float p10, float p11, const Weights& w) {
    const float top = p00 * w.x0 + p01 * w.x1;
    const float bottom = p10 * w.x0 + p11 * w.x1;
    return top * w.y0 + bottom * w.y1;
}

// n samples whose pixels are all inside: sample k from columns k and k + 1
// of rows r0 and r1.
inline void bilinearSpan(const uint8_t* r0, const uint8_t* r1, float* out, int64_t n, const Weights& w) {
    for (int64_t k = 0; k < n; ++k) out[k] = bilinear(r0[k], r0[k + 1], r1[k], r1[k + 1], w);
}

// getRectSubPix: n x m samples of an 8-bit image into dst (stride n).
//
// Centring: sample (k, r) lies at (cx + 0.5 - (n - 1) / 2 + k, cy + 0.5 -
// (m - 1) / 2 + r), i.e. the samples are centred on (cx + 0.5, cy + 0.5).
// The core passes the centre of the kept window minus half a pixel, so an
// unclipped W x H window is centred on the feature itself.
// Interpolation: from the floor (x0, y0) of the first sample's position
// with the fractions ax, ay, the same for every sample; across, then down
// (bilinear()).
// Border: pixels outside the image are replaced by the nearest edge pixel
// (adjustRect gives the part of the rectangle that is inside).
// Failure (-1): null pointers, an empty patch or image, a first sample at
// or beyond 2^30 pixels (or NaN); (-2): the n + 1 by m + 1 pixels the
// samples need lie wholly outside the image.

// Where a patch's samples fall: the first pixel (ix, iy), the weights, and
// the samples [lo, hi) of each row whose two columns are both inside.
struct SampleSetup {
    int64_t ix, iy;
    Weights w;
    Rect inside;
    int64_t lo, hi;
    // Source row of sample row r (r = m for the bottom pixels of the last).
    const uint8_t* row(const uint8_t* src, uint32_t height, uint32_t stride, int64_t r) const {
        return src + static_cast<size_t>(std::clamp<int64_t>(iy + r, 0, int64_t{height} - 1)) * stride;
    }
};

// The samples of one row outside [lo, hi), from rows r0 and r1, with the
// columns clamped to the image.
inline void sampleEdges(const SampleSetup& s, const uint8_t* r0, const uint8_t* r1, uint32_t width, float* out,
                        int32_t n) {
    const int64_t lastX = int64_t{width} - 1;
    auto edge = [&](int64_t k) {
        const int64_t xa = std::clamp<int64_t>(s.ix + k, 0, lastX), xb = std::clamp<int64_t>(s.ix + k + 1, 0, lastX);
        return bilinear(r0[xa], r0[xb], r1[xa], r1[xb], s.w);
    };
    for (int64_t k = 0; k < s.lo && k < n; ++k) out[k] = edge(k);
    for (int64_t k = std::max(s.hi, s.lo); k < n; ++k) out[k] = edge(k);
}

// 0 with the setup filled, or the failure code.
inline int setupSample(const uint8_t* src, uint32_t width, uint32_t height, const float* dst, int32_t n, int32_t m,
                       float cx, float cy, SampleSetup& s) {
    if (!src || !dst || n < 1 || m < 1 || width == 0 || height == 0) return -1;
    const float x0 = cx + 0.5f - 0.5f * static_cast<float>(n - 1);
    const float y0 = cy + 0.5f - 0.5f * static_cast<float>(m - 1);
    if (!usablePosition(x0) || !usablePosition(y0)) return -1;
    const float fx = std::floor(x0), fy = std::floor(y0);
    s.ix = static_cast<int64_t>(fx);
    s.iy = static_cast<int64_t>(fy);
    if (!adjustRect({s.ix, s.iy, int64_t{n} + 1, int64_t{m} + 1}, width, height, s.inside)) return -2;
    s.w = bilinearWeights(x0 - fx, y0 - fy);
    s.lo = s.inside.x - s.ix;
    s.hi = std::max(s.lo, s.inside.x + s.inside.width - 1 - s.ix);
    return 0;
}

// The samples row by row; `span` computes the samples whose pixels are all
// inside (bilinearSpan's contract), the others replicate the edges here.
template <class Span>
void sampleRows(Span&& span, const SampleSetup& s, const uint8_t* src, uint32_t width, uint32_t height,
                uint32_t stride, float* dst, int32_t n, int32_t m) {
    for (int64_t r = 0; r < m; ++r) {
        const uint8_t* r0 = s.row(src, height, stride, r);
        const uint8_t* r1 = s.row(src, height, stride, r + 1);
        float* out = dst + static_cast<size_t>(r) * static_cast<size_t>(n);
        sampleEdges(s, r0, r1, width, out, n);
        if (s.hi > s.lo) span(r0 + s.inside.x, r1 + s.inside.x, out + s.lo, s.hi - s.lo, s.w);
    }
}

template <class Span>
int samplePatch(Span&& span, const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, float* dst,
                int32_t n, int32_t m, float cx, float cy) {
    SampleSetup s;
    if (const int rc = setupSample(src, width, height, dst, n, m, cx, cy, s)) return rc;
    sampleRows(span, s, src, width, height, stride, dst, n, m);
    return 0;
}

// ---------------------------------------------------------------------------
// Derivatives: Scharr (3, 10, 3) / 32 of a patch with a one-pixel margin.

inline constexpr float kScharrCentre = 0.3125f;  // 10 / 32
inline constexpr float kScharrSide = 0.09375f;   // 3 / 32

// Outputs [a, b) of one row; u, c, l are the patch rows above, at and below
// (column c of the output is column c + 1 of the patch).
inline void derivativeRow(const float* u, const float* c, const float* l, float* ix, float* iy, int32_t a,
                          int32_t b) {
    for (int32_t x = a; x < b; ++x) {
        const float s0 = kScharrCentre * c[x] + kScharrSide * (u[x] + l[x]);
        const float s2 = kScharrCentre * c[x + 2] + kScharrSide * (u[x + 2] + l[x + 2]);
        const float d0 = l[x] - u[x], d1 = l[x + 1] - u[x + 1], d2 = l[x + 2] - u[x + 2];
        ix[x] = s2 - s0;
        iy[x] = kScharrCentre * d1 + kScharrSide * (d0 + d2);
    }
}

// ---------------------------------------------------------------------------
// Column sums.

// Chunks of columns: a chunk is kChunk wide, except the last, which takes
// the remainder when that is at most kChunkCapacity (so no chunk is
// narrower than a vector unless the window is).
inline constexpr int32_t kChunk = 64;
inline constexpr int32_t kChunkCapacity = kChunk + kChunk / 4;

inline int32_t chunkLength(int32_t first, int32_t width) {
    const int32_t rest = width - first;
    return rest <= kChunkCapacity ? rest : kChunk;
}

// Column accumulators of Gxx, Gxy, Gyy for columns [a, b) of `height` rows
// (stride in floats), into xx[a..b) and so on.
inline void gradientColumns(const float* ix, const float* iy, int32_t stride, int32_t height, int32_t a, int32_t b,
                            float* xx, float* xy, float* yy) {
    for (int32_t c = a; c < b; ++c) xx[c] = xy[c] = yy[c] = 0.0f;
    for (int32_t r = 0; r < height; ++r) {
        const float* x = ix + static_cast<ptrdiff_t>(r) * stride;
        const float* y = iy + static_cast<ptrdiff_t>(r) * stride;
        for (int32_t c = a; c < b; ++c) {
            xx[c] += x[c] * x[c];
            xy[c] += x[c] * y[c];
            yy[c] += y[c] * y[c];
        }
    }
}

// Column accumulators of b for columns [a, b): (i - j) * ix and (i - j) * iy.
inline void mismatchColumns(const float* i, int32_t iStride, const float* j, int32_t jStride, const float* ix,
                            const float* iy, int32_t dStride, int32_t height, int32_t a, int32_t b, float* bx,
                            float* by) {
    for (int32_t c = a; c < b; ++c) bx[c] = by[c] = 0.0f;
    for (int32_t r = 0; r < height; ++r) {
        const float* ir = i + static_cast<ptrdiff_t>(r) * iStride;
        const float* jr = j + static_cast<ptrdiff_t>(r) * jStride;
        const float* xr = ix + static_cast<ptrdiff_t>(r) * dStride;
        const float* yr = iy + static_cast<ptrdiff_t>(r) * dStride;
        for (int32_t c = a; c < b; ++c) {
            const float diff = ir[c] - jr[c];
            bx[c] += diff * xr[c];
            by[c] += diff * yr[c];
        }
    }
}

// The n column totals of a chunk added onto `total`: eight running sums,
// column c going to sum c mod 8 from left to right, then added in a fixed
// tree, ((s0 + s1) + (s2 + s3)) + ((s4 + s5) + (s6 + s7)). (Eight short
// chains instead of one long one.)
inline float addColumns(float total, const float* columns, int32_t n) {
    float s0 = 0.0f, s1 = 0.0f, s2 = 0.0f, s3 = 0.0f, s4 = 0.0f, s5 = 0.0f, s6 = 0.0f, s7 = 0.0f;
    int32_t c = 0;
    for (; c + 8 <= n; c += 8) {
        const float* p = columns + c;
        s0 += p[0], s1 += p[1], s2 += p[2], s3 += p[3], s4 += p[4], s5 += p[5], s6 += p[6], s7 += p[7];
    }
    const float* p = columns + c;
    switch (n - c) {  // the last columns, to sums 0 .. n - c - 1
        case 7: s6 += p[6]; [[fallthrough]];
        case 6: s5 += p[5]; [[fallthrough]];
        case 5: s4 += p[4]; [[fallthrough]];
        case 4: s3 += p[3]; [[fallthrough]];
        case 3: s2 += p[2]; [[fallthrough]];
        case 2: s1 += p[1]; [[fallthrough]];
        case 1: s0 += p[0]; break;
        default: break;
    }
    return total + (((s0 + s1) + (s2 + s3)) + ((s4 + s5) + (s6 + s7)));
}

// Whole-window sums over chunks; `columns` fills the accumulators of
// columns [0, n) of the chunk starting at the given column.
template <class Columns>
GradientSums gradientSumsWith(Columns&& columns, int32_t width) {
    float xx[kChunkCapacity], xy[kChunkCapacity], yy[kChunkCapacity];
    GradientSums s{0.0f, 0.0f, 0.0f};
    for (int32_t first = 0; first < width;) {
        const int32_t n = chunkLength(first, width);
        columns(first, n, xx, xy, yy);
        s.xx = addColumns(s.xx, xx, n);
        s.xy = addColumns(s.xy, xy, n);
        s.yy = addColumns(s.yy, yy, n);
        first += n;
    }
    return s;
}

template <class Columns>
Mismatch mismatchWith(Columns&& columns, int32_t width) {
    float bx[kChunkCapacity], by[kChunkCapacity];
    Mismatch s{0.0f, 0.0f};
    for (int32_t first = 0; first < width;) {
        const int32_t n = chunkLength(first, width);
        columns(first, n, bx, by);
        s.x = addColumns(s.x, bx, n);
        s.y = addColumns(s.y, by, n);
        first += n;
    }
    return s;
}

}  // namespace pxr::lk
