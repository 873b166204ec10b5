// Kernels of the fixed, range and Otsu thresholds shared by the reference
// and vector kinds.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace pxr::thresh {

// A threshold below 0 or above 254 becomes 255.
inline uint8_t effective(int32_t threshold) {
    return threshold < 0 || threshold > 254 ? uint8_t{255} : static_cast<uint8_t>(threshold);
}

// Binary: 255 where src >= t, else 0; inverted: 255 where src < t.
inline void span(const uint8_t* src, uint8_t* dst, uint32_t x0, uint32_t x1, uint8_t t, bool inverted) {
    for (uint32_t x = x0; x < x1; ++x) dst[x] = (src[x] >= t) != inverted ? 255 : 0;
}

// 255 where lo <= src <= hi, else 0.
inline void rangeSpan(const uint8_t* src, uint8_t* dst, uint32_t x0, uint32_t x1, uint8_t lo, uint8_t hi) {
    for (uint32_t x = x0; x < x1; ++x) dst[x] = src[x] >= lo && src[x] <= hi ? 255 : 0;
}

// Adds the grey levels of columns [x0, x1) of one row to a histogram.
inline void countSpan(const uint8_t* src, uint32_t x0, uint32_t x1, uint32_t* hist) {
    for (uint32_t x = x0; x < x1; ++x) ++hist[src[x]];
}

// The grey level t of largest between-class variance w (1 - w) (mu0 - mu1)^2
// with class 0 the bins 0..t. A bin where min(w, 1 - w) is below
// 1.1920928955078125e-7 or max(w, 1 - w) above 0.9999998807907104 is
// skipped; only a strictly greater variance replaces the best, so the lowest
// t wins a tie. An empty bin repeats the previous bin's variance exactly (it
// is passed over, so rounding cannot drift across a gap in the histogram).
// With no eligible bin the result is 0.
inline uint8_t otsu(const uint32_t* hist, uint64_t count) {
    constexpr double kEps = 1.1920928955078125e-7;
    const double scale = 1.0 / static_cast<double>(count);
    double muT = 0.0;
    for (int i = 0; i < 256; ++i) muT += i * static_cast<double>(hist[i]);
    muT *= scale;
    double w = 0.0, mu0 = 0.0, best = 0.0;
    uint8_t t = 0;  // the initial threshold, kept when no bin qualifies
    for (int i = 0; i < 256; ++i) {
        if (!hist[i]) continue;
        const double p = hist[i] * scale;
        const double sum = mu0 * w + i * p;  // sum of j p(j) over bins 0..i
        w += p;
        if (w > 0.0) mu0 = sum / w;
        const double w1 = 1.0 - w;
        if (std::min(w, w1) < kEps || std::max(w, w1) > 1.0 - kEps) continue;
        const double mu1 = (muT - w * mu0) / w1;
        const double variance = w * w1 * (mu0 - mu1) * (mu0 - mu1);
        if (variance > best) {
            best = variance;
            t = static_cast<uint8_t>(i);
        }
    }
    return t;
}

}  // namespace pxr::thresh
