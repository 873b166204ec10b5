// The N x N window filters over a row ring: the float box mean and the local
// normalisations. Shared by the reference and vector kinds: the row driver,
// the scratch layout and the per-pixel formulas are here; a kind supplies
// only its vertical and horizontal row passes (`Ops`).
//
// Window of pixel i along an axis: [i - N/2, i - N/2 + N - 1], cropped to the
// image; the mean is taken over the in-image pixels only. Source rows are
// copied into a ring of min(N, height) rows as they enter the window, so dst
// may be the source itself (same stride): a source row is overwritten only
// after every window that needs it has been read.
//
// Float sums are formed in a fixed order (down the window, then across it,
// starting from the first element) and divided by the pixel count, so every
// kind gives the same bits.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "imgproc/filters/smooth_rows.h"
#include "memory/scratch.h"

namespace pxr::smooth {

// The window along one axis.
struct Window {
    uint32_t before, after;
    explicit Window(uint32_t n) : before(n / 2), after(n - 1 - n / 2) {}
    uint32_t first(uint32_t i) const { return i > before ? i - before : 0; }
    uint32_t last(uint32_t i, uint32_t size) const {
        return static_cast<uint32_t>(std::min<uint64_t>(size - 1, uint64_t{i} + after));
    }
    // Positions whose window lies wholly inside [0, size): [full0, full1).
    uint32_t full0() const { return before; }
    uint32_t full1(uint32_t size) const { return size > after ? size - after : 0; }
};

// Number of pixels in a cropped window, as the divisor of its sums.
inline float windowCount(uint32_t rows, uint32_t cols) { return static_cast<float>(uint64_t{rows} * cols); }

// Box mean: the sum divided by the count (a uniform window gives its value).
inline float boxMean(float sum, float count) { return sum / count; }

// Local normalisation of a byte: z = (x - mean) / deviation, with the
// variance floored at 1 (one grey level), mapped to 128 + 64 z, rounded to
// nearest (ties to even) and saturated: +-2 deviations span the byte range.
inline uint8_t normaliseU8(uint8_t x, uint32_t s1, uint32_t s2, float count) {
    const float mean = static_cast<float>(s1) / count;
    const float msq = static_cast<float>(s2) / count;
    const float var = std::max(msq - mean * mean, 1.0f);
    const float z = (static_cast<float>(x) - mean) / std::sqrt(var);
    const float scaled = z * 64.0f;
    const float t = std::nearbyint(scaled + 128.0f);
    return static_cast<uint8_t>(std::clamp(static_cast<int32_t>(t), 0, 255));
}

// Local normalisation of a float: z = (x - mean) / deviation, with the
// variance floored at 2^-20 of the mean square (deviations below 1/1024 of
// the local RMS are rounding noise of E[x^2] - E[x]^2); 0 where the window
// is all zeros.
inline float normaliseF32(float x, float s1, float s2, float count) {
    const float mean = s1 / count;
    const float msq = s2 / count;
    const float var = std::max(msq - mean * mean, msq * 0x1p-20f);
    return var > 0.0f ? (x - mean) / std::sqrt(var) : 0.0f;
}

// Source rows in a ring of `slots` rows of `width` elements.
template <class T>
struct RowRing {
    T* base;
    uint32_t width, slots;
    T* row(uint32_t y) const { return base + size_t{y % slots} * width; }
    const T* crow(uint32_t y) const { return row(y); }
};

// Scalar row passes: the definition, and the vector kinds' edges and tails.
namespace scalar {

// col[x] = sum of ring rows r0..r1 at x, x in [x0, x1), top to bottom.
inline void sumRows(const RowRing<float>& ring, uint32_t r0, uint32_t r1, float* col, uint32_t x0, uint32_t x1) {
    const float* first = ring.crow(r0);
    for (uint32_t x = x0; x < x1; ++x) col[x] = first[x];
    for (uint32_t r = r0 + 1; r <= r1; ++r) {
        const float* p = ring.crow(r);
        for (uint32_t x = x0; x < x1; ++x) col[x] += p[x];
    }
}

// The same for values and squares.
inline void sumRowsAndSquares(const RowRing<float>& ring, uint32_t r0, uint32_t r1, float* col1, float* col2,
                              uint32_t x0, uint32_t x1) {
    const float* first = ring.crow(r0);
    for (uint32_t x = x0; x < x1; ++x) {
        col1[x] = first[x];
        col2[x] = first[x] * first[x];
    }
    for (uint32_t r = r0 + 1; r <= r1; ++r) {
        const float* p = ring.crow(r);
        for (uint32_t x = x0; x < x1; ++x) {
            col1[x] += p[x];
            col2[x] += p[x] * p[x];
        }
    }
}

inline void sumRowsAndSquares(const RowRing<uint8_t>& ring, uint32_t r0, uint32_t r1, uint32_t* col1,
                              uint32_t* col2, uint32_t x0, uint32_t x1) {
    std::fill(col1 + x0, col1 + x1, 0u);
    std::fill(col2 + x0, col2 + x1, 0u);
    for (uint32_t r = r0; r <= r1; ++r) {
        const uint8_t* p = ring.crow(r);
        for (uint32_t x = x0; x < x1; ++x) {
            col1[x] += p[x];
            col2[x] += uint32_t{p[x]} * p[x];
        }
    }
}

// Sum of col[c0..c1], left to right.
template <class S>
inline S sumAcross(const S* col, uint32_t c0, uint32_t c1) {
    S s = col[c0];
    for (uint32_t c = c0 + 1; c <= c1; ++c) s += col[c];
    return s;
}

// Box means of output columns [x0, x1) of one row.
// `out` is the output row in bytes (rows need not be 4-byte aligned).
inline void boxSpan(const float* col, uint32_t width, const Window& win, uint32_t rows, uint8_t* out, uint32_t x0,
                    uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const uint32_t c0 = win.first(x), c1 = win.last(x, width);
        store<float>(out + size_t{x} * 4, boxMean(sumAcross(col, c0, c1), windowCount(rows, c1 - c0 + 1)));
    }
}

template <class T, class S>
inline void normaliseSpan(const T* centre, const S* col1, const S* col2, uint32_t width, const Window& win,
                          uint32_t rows, uint8_t* out, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const uint32_t c0 = win.first(x), c1 = win.last(x, width);
        const float count = windowCount(rows, c1 - c0 + 1);
        if constexpr (sizeof(T) == 1)
            out[x] = normaliseU8(centre[x], sumAcross(col1, c0, c1), sumAcross(col2, c0, c1), count);
        else
            store<float>(out + size_t{x} * 4,
                         normaliseF32(centre[x], sumAcross(col1, c0, c1), sumAcross(col2, c0, c1), count));
    }
}

}  // namespace scalar

// Scratch for the ring and `columns` arrays of `width` sums of type S, each
// part 64-byte aligned. Null when it cannot be had.
template <class T, class S>
struct WindowScratch {
    ScratchBuffer buffer;
    RowRing<T> ring;
    S* col[2];

    static size_t roundUp(size_t n) { return (n + 63) & ~size_t{63}; }
    static size_t bytes(uint32_t width, uint32_t slots, uint32_t columns) {
        const uint64_t total = roundUp(uint64_t{width} * slots * sizeof(T)) + columns * roundUp(uint64_t{width} * sizeof(S));
        return total > SIZE_MAX ? SIZE_MAX : static_cast<size_t>(total);
    }
    WindowScratch(uint32_t width, uint32_t slots, uint32_t columns)
        : buffer(bytes(width, slots, columns), 64), ring{nullptr, width, slots}, col{nullptr, nullptr} {
        if (!buffer) return;
        auto* p = buffer.as<uint8_t>();
        ring.base = reinterpret_cast<T*>(p);
        p += roundUp(size_t{width} * slots * sizeof(T));
        for (uint32_t i = 0; i < columns; ++i, p += roundUp(size_t{width} * sizeof(S))) col[i] = reinterpret_cast<S*>(p);
    }
    explicit operator bool() const { return static_cast<bool>(buffer); }
};

// Walks the output rows: loads source rows into the ring as they enter the
// window, then calls row(y, r0, r1) with the window's row range.
template <class T, class RowFn>
void walkRows(const Plane<T>& src, const RowRing<T>& ring, const Window& win, RowFn&& row) {
    uint32_t loaded = 0;
    for (uint32_t y = 0; y < src.height; ++y) {
        const uint32_t r0 = win.first(y), r1 = win.last(y, src.height);
        for (; loaded <= r1; ++loaded) std::memcpy(ring.row(loaded), src.row(loaded), size_t{src.width} * sizeof(T));
        row(y, r0, r1);
    }
}

// pxrBoxFilterNxNf32: false when no scratch memory could be had (nothing is
// written then).
template <class Ops>
bool boxF32(const float* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t n, float* dst,
            uint32_t dstStride) {
    const Window win(n);
    WindowScratch<float, float> scratch(width, std::min(n, height), 1);
    if (!scratch) return false;
    const Plane<float> in{reinterpret_cast<const uint8_t*>(src), width, height, srcStride};
    float* col = scratch.col[0];
    walkRows(in, scratch.ring, win, [&](uint32_t y, uint32_t r0, uint32_t r1) {
        Ops::sumRows(scratch.ring, r0, r1, col, width);
        uint8_t* out = reinterpret_cast<uint8_t*>(dst) + size_t{y} * dstStride;
        Ops::boxRow(col, width, win, r1 - r0 + 1, out);
    });
    return true;
}

// pxrNormalizeLocalBoxu8 and pxrNormalizeLocalBoxf32: 0, or 5 without
// scratch memory.
template <class Ops, class T, class S>
int normaliseLocal(const T* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t n, T* dst,
                   uint32_t dstStride) {
    const Window win(n);
    WindowScratch<T, S> scratch(width, std::min(n, height), 2);
    if (!scratch) return 5;
    const Plane<T> in{reinterpret_cast<const uint8_t*>(src), width, height, srcStride};
    S* col1 = scratch.col[0];
    S* col2 = scratch.col[1];
    walkRows(in, scratch.ring, win, [&](uint32_t y, uint32_t r0, uint32_t r1) {
        Ops::sumRowsAndSquares(scratch.ring, r0, r1, col1, col2, width);
        uint8_t* out = reinterpret_cast<uint8_t*>(dst) + size_t{y} * dstStride;
        Ops::normaliseRow(scratch.ring.crow(y), col1, col2, width, win, r1 - r0 + 1, out);
    });
    return 0;
}

// The reference's passes.
struct ScalarWindowOps {
    static void sumRows(const RowRing<float>& ring, uint32_t r0, uint32_t r1, float* col, uint32_t width) {
        scalar::sumRows(ring, r0, r1, col, 0, width);
    }
    template <class T, class S>
    static void sumRowsAndSquares(const RowRing<T>& ring, uint32_t r0, uint32_t r1, S* col1, S* col2,
                                  uint32_t width) {
        scalar::sumRowsAndSquares(ring, r0, r1, col1, col2, 0, width);
    }
    static void boxRow(const float* col, uint32_t width, const Window& win, uint32_t rows, uint8_t* out) {
        scalar::boxSpan(col, width, win, rows, out, 0, width);
    }
    template <class T, class S>
    static void normaliseRow(const T* centre, const S* col1, const S* col2, uint32_t width, const Window& win,
                             uint32_t rows, uint8_t* out) {
        scalar::normaliseSpan(centre, col1, col2, width, win, rows, out, 0, width);
    }
};

}  // namespace pxr::smooth
