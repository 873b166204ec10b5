// Row kernels of the N x N box filters on bytes, shared by the reference and
// vector kinds. The mean is formed in fixed point with a 16-bit reciprocal,
// rounding to nearest: (sum x multiplier + 32768) >> 16. Every pixel is
// written; taps outside the image follow the border rule.
#pragma once

#include <algorithm>
#include <cstdint>

#include "imgproc/filters/smooth_rows.h"

namespace pxr::smooth {

enum class BoxBorder { Zero, Constant, Replicate };

// PIXORA_BORDER_CONSTANT (1) pads with the border value, REPLICATE (2)
// repeats the nearest edge pixel; DEFAULT (0) pads with 0.
inline BoxBorder boxBorderFromType(uint32_t borderType) {
    switch (borderType) {
        case 1: return BoxBorder::Constant;
        case 2: return BoxBorder::Replicate;
        default: return BoxBorder::Zero;
    }
}

template <uint32_t Radius>
struct BoxU8 {
    static constexpr uint32_t R = Radius;
    static constexpr uint32_t kTaps = 2 * Radius + 1;
    // About 65536 / taps^2: 7282 (3x3), 2621 (5x5), 542 (11x11).
    static constexpr uint32_t kMultiplier = Radius == 1 ? 7282u : Radius == 2 ? 2621u : 542u;
    static_assert(Radius == 1 || Radius == 2 || Radius == 5);
    // The largest sum still maps into a byte.
    static_assert(((kTaps * kTaps * 255u * kMultiplier + 32768u) >> 16) <= 255u);
};

template <class K>
constexpr uint8_t boxRound(uint32_t sum) {
    return static_cast<uint8_t>((sum * K::kMultiplier + 32768u) >> 16);
}

inline constexpr uint32_t kBoxStrip = 512;

// Output row y, columns [x0, x1), by the border rule: vertical sums per
// column (outside rows add the pad value or repeat the edge row), then the
// horizontal sum over them (outside columns likewise).
template <class K>
void boxPaddedSpan(const Plane<uint8_t>& src, uint32_t y, uint8_t* out, uint32_t x0, uint32_t x1, BoxBorder rule,
                   uint8_t value) {
    constexpr uint32_t R = K::R, taps = K::kTaps;
    const uint32_t w = src.width, h = src.height;
    const uint32_t pad = rule == BoxBorder::Constant ? value : 0u;
    // The source row of each vertical tap; null where the tap takes the pad.
    const uint8_t* rows[taps];
    uint32_t padRows = 0;
    for (uint32_t j = 0; j < taps; ++j) {
        const int64_t sy = int64_t{y} + j - R;
        if (sy >= 0 && sy < h) {
            rows[j] = src.row(static_cast<uint32_t>(sy));
        } else if (rule == BoxBorder::Replicate) {
            rows[j] = src.row(sy < 0 ? 0u : h - 1);
        } else {
            rows[j] = nullptr;
            ++padRows;
        }
    }
    uint32_t col[kBoxStrip + 2 * R];
    for (uint32_t s0 = x0; s0 < x1; s0 += kBoxStrip) {
        const uint32_t s1 = std::min(x1, s0 + kBoxStrip);
        // col[i] holds column s0 - R + i; in-image columns are [c0, c1).
        const int64_t first = int64_t{s0} - R;
        const uint32_t cols = s1 - s0 + 2 * R;
        const uint32_t c0 = static_cast<uint32_t>(std::max<int64_t>(first, 0));
        const uint32_t c1 = static_cast<uint32_t>(std::min<int64_t>(w, int64_t{s1} + R));
        uint32_t* in = col + (c0 - first);
        const size_t n = c1 - c0;
        std::fill(in, in + n, padRows * pad);
        for (uint32_t j = 0; j < taps; ++j) {
            if (!rows[j]) continue;
            const uint8_t* r = rows[j] + c0;
            for (size_t i = 0; i < n; ++i) in[i] += r[i];
        }
        // Columns outside the image: the edge column's sum, or all pad.
        for (uint32_t i = 0; i < cols; ++i) {
            const int64_t c = first + i;
            if (c >= 0 && c < w) continue;
            if (rule == BoxBorder::Replicate)
                col[i] = col[(c < 0 ? 0 : int64_t{w} - 1) - first];
            else
                col[i] = taps * pad;
        }
        uint8_t* o = out + s0;
        for (size_t x = 0; x < s1 - s0; ++x) {
            uint32_t s = 0;
            for (uint32_t i = 0; i < taps; ++i) s += col[x + i];
            o[x] = boxRound<K>(s);
        }
    }
}

// Every pixel within R of an edge, by the border rule.
template <class K>
void boxBorder(const Plane<uint8_t>& src, const OutPlane<uint8_t>& dst, BoxBorder rule, uint8_t value) {
    constexpr uint32_t R = K::R;
    const uint32_t w = src.width, h = src.height;
    const uint32_t left = std::min(R, w), right = std::max(w > R ? w - R : 0, left);
    for (uint32_t y = 0; y < h; ++y) {
        uint8_t* out = dst.row(y);
        if (y < R || y + R >= h) {
            boxPaddedSpan<K>(src, y, out, 0, w, rule, value);
        } else {
            boxPaddedSpan<K>(src, y, out, 0, left, rule, value);
            boxPaddedSpan<K>(src, y, out, right, w, rule, value);
        }
    }
}

}  // namespace pxr::smooth
