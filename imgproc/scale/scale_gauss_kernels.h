// Gaussian halving (5x5 on bytes and floats, 3x3 on bytes) and doubling
// (5x5 on bytes), shared by the reference and vector kinds. A driver walks
// the output rows in column strips; each kind brings the two row passes
// (vertical column sums, then the horizontal kernel), while the edge
// columns, mirrored about the edge sample, are always summed here.
#pragma once

#include <algorithm>
#include <cstdint>

#include "imgproc/scale/scale_common.h"

namespace pxr::scale::gauss {

// Output columns per strip: the column sums of a strip stay in L1.
constexpr uint32_t kStrip = 1024;

// Vertical column sum of the [1 4 6 4 1] (R = 2) or [1 2 1] (R = 1) kernel.
// Floats keep one fixed order of operations, which the vector kind repeats.
template <int R>
inline uint16_t columnSum(const uint8_t* const* r, size_t c) {
    if constexpr (R == 2)
        return static_cast<uint16_t>(r[0][c] + r[4][c] + 4 * (r[1][c] + r[3][c]) + 6 * r[2][c]);
    else
        return static_cast<uint16_t>(r[0][c] + 2 * r[1][c] + r[2][c]);
}
template <int R>
inline float columnSum(const float* const* r, size_t c) {
    static_assert(R == 2, "floats have the 5x5 kernel only");
    return ((r[0][c] + r[4][c]) + (r[1][c] + r[3][c]) * 4.0f) + r[2][c] * 6.0f;
}

// Horizontal kernel of output i of a strip, from sums s[2i .. 2i + 2R].
template <int R>
inline uint8_t halve(const uint16_t* s) {
    if constexpr (R == 2)
        return static_cast<uint8_t>((s[0] + s[4] + 4 * (s[1] + s[3]) + 6 * s[2] + 128) >> 8);
    else
        return static_cast<uint8_t>((s[0] + 2 * s[1] + s[2] + 8) >> 4);
}
template <int R>
inline float halve(const float* s) {
    return (((s[0] + s[4]) + (s[1] + s[3]) * 4.0f) + s[2] * 6.0f) * (1.0f / 256.0f);
}

// The two row passes of one kind. T: pixel type, S: column-sum type.
template <class T, class S>
struct DownKernels {
    // sums[c] = columnSum(rows, c) for c in [0, n); rows[] already point at column 0.
    void (*vertical)(const T* const* rows, S* sums, uint32_t n);
    // out[i] = halve(sums + 2i) for i in [0, n). May read sums[2n + 2R - 1] (set to 0).
    void (*horizontal)(const S* sums, T* out, uint32_t n);
};

// Halving with radius R: output (x, y) is centred on source (2x, 2y).
// dw x dh is the output size (half the source, rounded down or up).
template <int R, class T, class S>
void halveImage(const T* src, uint32_t w, uint32_t h, uint32_t srcStride, T* dst, uint32_t dw, uint32_t dh,
                uint32_t dstStride, const DownKernels<T, S>& k) {
    S sums[2 * kStrip + 2 * R + 2];
    const T* rows[2 * R + 1];
    for (uint32_t y = 0; y < dh; ++y) {
        for (int i = 0; i <= 2 * R; ++i) rows[i] = rowAt(src, reflect101(2 * int64_t{y} + i - R, h), srcStride);
        T* out = rowAt(dst, y, dstStride);
        for (uint32_t x0 = 0; x0 < dw; x0 += kStrip) {
            const uint32_t n = std::min(kStrip, dw - x0);
            // Column sums for source columns [lo, hi).
            const int64_t lo = 2 * int64_t{x0} - R, hi = lo + 2 * int64_t{n} + 2 * R - 1;
            const int64_t a = std::max<int64_t>(lo, 0), b = std::min<int64_t>(hi, w);
            for (int64_t c = lo; c < a; ++c) sums[c - lo] = columnSum<R>(rows, reflect101(c, w));
            for (int64_t c = b; c < hi; ++c) sums[c - lo] = columnSum<R>(rows, reflect101(c, w));
            const T* inside[2 * R + 1];
            for (int i = 0; i <= 2 * R; ++i) inside[i] = rows[i] + a;
            k.vertical(inside, sums + (a - lo), static_cast<uint32_t>(b - a));
            sums[hi - lo] = S{};
            k.horizontal(sums, out + x0, n);
        }
    }
}

// Doubling: output rows 2i and 2i+1 come from the vertical sums
// even = r[i-1] + 6 r[i] + r[i+1] and odd = 4 (r[i] + r[i+1]); output
// columns likewise from the sums: (s[j-1] + 6 s[j] + s[j+1] + 32) >> 6 and
// (4 (s[j] + s[j+1]) + 32) >> 6.
inline uint16_t evenSum(const uint8_t* a, const uint8_t* b, const uint8_t* c, size_t x) {
    return static_cast<uint16_t>(a[x] + 6 * b[x] + c[x]);
}
inline uint16_t oddSum(const uint8_t* b, const uint8_t* c, size_t x) { return static_cast<uint16_t>(4 * (b[x] + c[x])); }
inline uint8_t doubleEven(const uint16_t* s) { return static_cast<uint8_t>((s[0] + 6 * s[1] + s[2] + 32) >> 6); }
inline uint8_t doubleOdd(const uint16_t* s) { return static_cast<uint8_t>((4 * (s[1] + s[2]) + 32) >> 6); }

struct UpKernels {
    // even[c], odd[c] for c in [0, n) from rows a = i-1, b = i, c = i+1.
    void (*vertical)(const uint8_t* a, const uint8_t* b, const uint8_t* c, uint16_t* even, uint16_t* odd,
                     uint32_t n);
    // out[2j] = doubleEven(s + j), out[2j+1] = doubleOdd(s + j), j in [0, n).
    void (*horizontal)(const uint16_t* s, uint8_t* out, uint32_t n);
};

inline void doubleImage(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst,
                        uint32_t dstStride, const UpKernels& k) {
    uint16_t even[kStrip + 2], odd[kStrip + 2];
    for (uint32_t i = 0; i < h; ++i) {
        const uint8_t* a = src + size_t{reflect101(int64_t{i} - 1, h)} * srcStride;
        const uint8_t* b = src + size_t{i} * srcStride;
        const uint8_t* c = src + size_t{reflect101(int64_t{i} + 1, h)} * srcStride;
        uint8_t* outEven = dst + 2 * size_t{i} * dstStride;
        uint8_t* outOdd = outEven + dstStride;
        for (uint32_t x0 = 0; x0 < w; x0 += kStrip) {
            const uint32_t n = std::min(kStrip, w - x0);
            // Sums for source columns [x0 - 1, x0 + n + 1).
            const int64_t lo = int64_t{x0} - 1, hi = int64_t{x0} + n + 1;
            const int64_t ia = std::max<int64_t>(lo, 0), ib = std::min<int64_t>(hi, w);
            auto edge = [&](int64_t col) {
                const uint32_t m = reflect101(col, w);
                even[col - lo] = evenSum(a, b, c, m);
                odd[col - lo] = oddSum(b, c, m);
            };
            for (int64_t col = lo; col < ia; ++col) edge(col);
            for (int64_t col = ib; col < hi; ++col) edge(col);
            k.vertical(a + ia, b + ia, c + ia, even + (ia - lo), odd + (ia - lo), static_cast<uint32_t>(ib - ia));
            k.horizontal(even, outEven + 2 * size_t{x0}, n);
            k.horizontal(odd, outOdd + 2 * size_t{x0}, n);
        }
    }
}

}  // namespace pxr::scale::gauss
