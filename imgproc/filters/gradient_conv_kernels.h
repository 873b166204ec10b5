// The separable M x N byte-to-int16 convolution with border handling,
// shared by the reference and vector kinds: the padded source row, the ring
// of horizontal sums, and the scalar horizontal and vertical passes.
//
// out(x, y) = saturate(sum_i sum_j kernelY[i] kernelX[j] p(x + M/2 - j, y + N/2 - i)),
// p being the source extended by the border rule (PIXORA_BORDER_DEFAULT: 0).
// The sums are exact (32-bit, or 64-bit where the kernels could overflow 32
// bits) and saturated once, so any order of summation gives the same result.
#pragma once

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "pixora/types.h"

namespace pxr::convsep {

// Longest kernel side accepted (odd sizes only, so the anchor is the centre).
inline constexpr uint32_t kMaxTaps = 31;

inline bool validTaps(uint32_t n) { return n >= 1 && n <= kMaxTaps && (n & 1u); }

struct Job {
    const int16_t* kx;
    uint32_t M;
    const int16_t* ky;
    uint32_t N;
    const uint8_t* src;
    uint32_t width, height, srcStride;
    int16_t* dst;
    uint32_t dstStride;
    uint32_t border;
    uint8_t value;
};

inline int64_t absSum(const int16_t* k, uint32_t n) {
    int64_t s = 0;
    for (uint32_t i = 0; i < n; ++i) s += k[i] < 0 ? -int64_t{k[i]} : int64_t{k[i]};
    return s;
}
// Largest magnitude a horizontal sum or a final sum can reach.
inline int64_t horizontalBound(const Job& j) { return 255 * absSum(j.kx, j.M); }
inline int64_t bound(const Job& j) { return horizontalBound(j) * absSum(j.ky, j.N); }

// Scratch of one job, in 64-byte multiples: the padded row, the vertical
// accumulators (room for 64-bit sums), then N rows of horizontal sums.
inline size_t roundUp64(size_t n) { return (n + 63) & ~size_t{63}; }
inline size_t padBytes(const Job& j) { return roundUp64(size_t{j.width} + j.M - 1); }
inline size_t accBytes(const Job& j) { return roundUp64(size_t{j.width} * sizeof(int64_t)); }
inline size_t scratchBytes(const Job& j) {
    return padBytes(j) + accBytes(j) + size_t{j.N} * j.width * sizeof(int32_t);
}
// The accumulators within a job's scratch.
inline void* accumulators(const Job& j, uint8_t* scratch) { return scratch + padBytes(j); }

// The value of pixels outside the image for the constant rules
// (PIXORA_BORDER_DEFAULT pads with 0).
inline uint8_t outsideValue(const Job& j) { return j.border == PIXORA_BORDER_CONSTANT ? j.value : 0; }

// Row y of the extended source, from column -M/2: pad[k] = p(k - M/2, y),
// k in [0, width + M - 1).
inline void paddedRow(const Job& j, int64_t y, uint8_t* pad) {
    const uint32_t r = j.M / 2;
    const bool replicate = j.border == PIXORA_BORDER_REPLICATE;
    if (!replicate && (y < 0 || y >= j.height)) {
        std::memset(pad, outsideValue(j), size_t{j.width} + j.M - 1);
        return;
    }
    const uint8_t* row = j.src + std::clamp<int64_t>(y, 0, j.height - 1) * j.srcStride;
    std::memset(pad, replicate ? row[0] : outsideValue(j), r);
    std::memcpy(pad + r, row, j.width);
    std::memset(pad + r + j.width, replicate ? row[j.width - 1] : outsideValue(j), r);
}

// Horizontal sums of columns [x0, x1): h[x] = sum_k kx[k] pad[x + M - 1 - k],
// one tap at a time along the row (zero taps skipped).
inline void horizontal(const Job& j, const uint8_t* pad, int32_t* h, uint32_t x0, uint32_t x1) {
    std::fill(h + x0, h + x1, 0);
    for (uint32_t k = 0; k < j.M; ++k) {
        const int32_t c = j.kx[k];
        if (!c) continue;
        const uint8_t* p = pad + j.M - 1 - k;
        for (uint32_t x = x0; x < x1; ++x) h[x] += c * p[x];
    }
}

template <class Acc> inline int16_t saturate(Acc s) {
    return static_cast<int16_t>(std::clamp<Acc>(s, INT16_MIN, INT16_MAX));
}

// Output columns [x0, x1) of one row; rows[i] holds the horizontal sums of
// source row y + N/2 - i. The sums gather in acc, one tap at a time.
template <class Acc>
inline void vertical(const Job& j, const int32_t* const* rows, Acc* acc, int16_t* out, uint32_t x0, uint32_t x1) {
    std::fill(acc + x0, acc + x1, Acc{0});
    for (uint32_t i = 0; i < j.N; ++i) {
        const Acc c = j.ky[i];
        if (!c) continue;
        const int32_t* r = rows[i];
        for (uint32_t x = x0; x < x1; ++x) acc[x] += c * r[x];
    }
    for (uint32_t x = x0; x < x1; ++x) out[x] = saturate(acc[x]);
}

// The horizontal sums of the N source rows around an output row, kept in a
// ring of N rows so that each source row is filtered once per pass.
class Ring {
public:
    Ring(const Job& j, uint8_t* scratch)
        : j_(j), pad_(scratch), base_(reinterpret_cast<int32_t*>(scratch + padBytes(j) + accBytes(j))) {}

    // Makes the rows of output row y available, computing the missing ones
    // with rowFn(pad, h); rows[i] then points at source row y + N/2 - i.
    template <class RowFn> void at(int64_t y, RowFn rowFn, const int32_t** rows) {
        const int64_t r = j_.N / 2, lo = y - r, hi = y + r;
        const int64_t start = (next_ > lo && next_ <= hi + 1) ? next_ : lo;
        for (int64_t sy = start; sy <= hi; ++sy) {
            paddedRow(j_, sy, pad_);
            rowFn(pad_, slot(sy));
        }
        next_ = hi + 1;
        for (uint32_t i = 0; i < j_.N; ++i) rows[i] = slot(hi - i);
    }

private:
    int32_t* slot(int64_t sy) {
        const int64_t n = j_.N;
        return base_ + ((sy % n + n) % n) * j_.width;
    }
    const Job& j_;
    uint8_t* pad_;
    int32_t* base_;
    int64_t next_ = INT64_MIN;
};

// Output rows [y0, y1) by the scalar passes; scratch holds scratchBytes(j).
inline void rowsScalar(const Job& j, uint32_t y0, uint32_t y1, uint8_t* scratch) {
    Ring ring(j, scratch);
    const int32_t* rows[kMaxTaps];
    void* acc = accumulators(j, scratch);
    const bool wide = bound(j) > INT32_MAX;
    for (uint32_t y = y0; y < y1; ++y) {
        ring.at(y, [&](const uint8_t* pad, int32_t* h) { horizontal(j, pad, h, 0, j.width); }, rows);
        int16_t* out = reinterpret_cast<int16_t*>(reinterpret_cast<uint8_t*>(j.dst) + size_t{y} * j.dstStride);
        if (wide)
            vertical(j, rows, static_cast<int64_t*>(acc), out, 0, j.width);
        else
            vertical(j, rows, static_cast<int32_t*>(acc), out, 0, j.width);
    }
}

// The 3x3 Sobel derivatives at a border column x (0 or width-1) of an inner
// row y (1 <= y <= height-2, width >= 3): only the one column outside the
// image follows the border rule. Exact, so equal to the separable passes.
inline void sobel3Column(const uint8_t* src, uint32_t width, uint32_t stride, uint32_t border, uint8_t value,
                         uint32_t x, uint32_t y, int32_t& dx, int32_t& dy) {
    const uint8_t* rows[3] = {src + size_t{y - 1} * stride, src + size_t{y} * stride, src + size_t{y + 1} * stride};
    const uint8_t outside = border == PIXORA_BORDER_CONSTANT ? value : 0;
    auto p = [&](int64_t c, int r) -> int32_t {
        if (c >= 0 && c < width) return rows[r][c];
        return border == PIXORA_BORDER_REPLICATE ? rows[r][c < 0 ? 0 : width - 1] : outside;
    };
    const int64_t l = int64_t{x} - 1, c = x, r = int64_t{x} + 1;
    dx = (p(r, 0) - p(l, 0)) + 2 * (p(r, 1) - p(l, 1)) + (p(r, 2) - p(l, 2));
    dy = (p(l, 2) - p(l, 0)) + 2 * (p(c, 2) - p(c, 0)) + (p(r, 2) - p(r, 0));
}

// The binomial Sobel kernels of side 3, 5 and 7: smoothing (a row of
// Pascal's triangle) and difference (the smoothing of side n-2 convolved
// with [1 0 -1]), stored for the true convolution so that dx is right minus
// left and dy bottom minus top.
struct SobelKernels {
    const int16_t* smooth;
    const int16_t* diff;
    uint32_t n;
};
inline constexpr int16_t kSmooth3[] = {1, 2, 1}, kDiff3[] = {1, 0, -1};
inline constexpr int16_t kSmooth5[] = {1, 4, 6, 4, 1}, kDiff5[] = {1, 2, 0, -2, -1};
inline constexpr int16_t kSmooth7[] = {1, 6, 15, 20, 15, 6, 1}, kDiff7[] = {1, 4, 5, 0, -5, -4, -1};
inline constexpr SobelKernels kSobel3{kSmooth3, kDiff3, 3}, kSobel5{kSmooth5, kDiff5, 5}, kSobel7{kSmooth7, kDiff7, 7};

// The jobs of dx (differentiate across, smooth down) and dy (the reverse).
inline Job sobelJob(const SobelKernels& k, bool isDx, const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss,
                    int16_t* dst, uint32_t ds, uint32_t border, uint8_t value) {
    return isDx ? Job{k.diff, k.n, k.smooth, k.n, src, w, h, ss, dst, ds, border, value}
                : Job{k.smooth, k.n, k.diff, k.n, src, w, h, ss, dst, ds, border, value};
}

}  // namespace pxr::convsep
