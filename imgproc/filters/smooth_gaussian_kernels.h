// Row kernels of the 5x5 and 11x11 Gaussians (binomial kernels), shared by
// the reference and vector kinds: the interior span (the readable
// definition) and the renormalised border.
//
// Kernel: the outer product of a Pascal row with itself; the 1-D weights sum
// to 2^(taps-1), so the interior result is the weighted sum shifted right by
// 2 x (taps - 1). With blurBorder 1 every pixel within the radius of an edge
// is the sum over its in-image taps divided by those taps' weights, rounded
// towards minus infinity (truncation for the unsigned images).
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "imgproc/filters/smooth_rows.h"

namespace pxr::smooth {

template <class Pixel, class Sum, uint32_t Radius>
struct Binomial {
    using T = Pixel;
    using A = Sum;  // wide enough for the full 2-D sum
    static constexpr uint32_t R = Radius;
    static constexpr uint32_t kTaps = 2 * Radius + 1;
    static constexpr std::array<A, kTaps> w = pascalRow<A, 2 * Radius>();
    static constexpr uint32_t kShift = 4 * Radius;  // log2 of the 2-D weight sum
    // Sum of the weights of taps [i0, i1).
    static constexpr A weights(uint32_t i0, uint32_t i1) {
        A s = 0;
        for (uint32_t i = i0; i < i1; ++i) s += w[i];
        return s;
    }
};

using Gauss5u8 = Binomial<uint8_t, uint32_t, 2>;
using Gauss5s16 = Binomial<int16_t, int32_t, 2>;
using Gauss5s32 = Binomial<int32_t, int64_t, 2>;
// 11 taps: row 10 of Pascal's triangle, 1 10 45 120 210 252 210 120 45 10 1.
using Gauss11u8 = Binomial<uint8_t, uint32_t, 5>;

static_assert(Gauss11u8::w[5] == 252 && Gauss11u8::weights(0, 11) == 1024);
static_assert(Gauss5u8::w[2] == 6 && Gauss5u8::weights(0, 5) == 16);

// Output columns per strip: the vertical sums of one strip live on the stack.
inline constexpr uint32_t kGaussStrip = 512;

// Interior of output row y (R <= y < height-R), columns [x0, x1) with
// R <= x0 and x1 <= width-R. Vertical sums per column, then the horizontal
// kernel over them; the result is the sum shifted right by kShift.
template <class K>
void gaussInteriorSpan(const Plane<typename K::T>& src, uint32_t y, uint8_t* out, uint32_t x0, uint32_t x1) {
    using T = typename K::T;
    using A = typename K::A;
    constexpr uint32_t R = K::R;
    A col[kGaussStrip + 2 * R];
    for (uint32_t s0 = x0; s0 < x1; s0 += kGaussStrip) {
        const uint32_t s1 = std::min(x1, s0 + kGaussStrip);
        const uint32_t c0 = s0 - R, cols = s1 - s0 + 2 * R;
        std::fill(col, col + cols, A{0});
        for (uint32_t j = 0; j < K::kTaps; ++j) {
            const uint8_t* r = src.row(y + j - R) + size_t{c0} * sizeof(T);
            const A wj = K::w[j];
            for (size_t i = 0; i < cols; ++i) col[i] += wj * A{load<T>(r + i * sizeof(T))};
        }
        uint8_t* o = out + size_t{s0} * sizeof(T);
        for (size_t x = 0; x < s1 - s0; ++x) {
            A s = 0;
            for (uint32_t i = 0; i < K::kTaps; ++i) s += K::w[i] * col[x + i];
            store<T>(o + x * sizeof(T), static_cast<T>(s >> K::kShift));
        }
    }
}

// Output row y, columns [x0, x1), with the kernel cropped to the image and
// renormalised by the weights that remain.
template <class K>
void gaussRenormalisedSpan(const Plane<typename K::T>& src, uint32_t y, uint8_t* out, uint32_t x0, uint32_t x1) {
    using T = typename K::T;
    using A = typename K::A;
    constexpr uint32_t R = K::R;
    const uint32_t w = src.width, h = src.height;
    // In-image vertical taps: j in [j0, j1).
    const uint32_t j0 = y < R ? R - y : 0;
    const uint32_t j1 = static_cast<uint32_t>(std::min<uint64_t>(K::kTaps, uint64_t{h} + R - y));
    const A wy = K::weights(j0, j1);
    A col[kGaussStrip + 2 * R];
    for (uint32_t s0 = x0; s0 < x1; s0 += kGaussStrip) {
        const uint32_t s1 = std::min(x1, s0 + kGaussStrip);
        // In-image columns the strip reads: [c0, c1).
        const uint32_t c0 = s0 > R ? s0 - R : 0;
        const uint32_t c1 = static_cast<uint32_t>(std::min<uint64_t>(w, uint64_t{s1} + R));
        std::fill(col, col + (c1 - c0), A{0});
        for (uint32_t j = j0; j < j1; ++j) {
            const uint8_t* r = src.row(y + j - R);
            for (uint32_t c = c0; c < c1; ++c) col[c - c0] += K::w[j] * A{load<T>(r + size_t{c} * sizeof(T))};
        }
        for (uint32_t x = s0; x < s1; ++x) {
            const uint32_t i0 = x < R ? R - x : 0;
            const uint32_t i1 = static_cast<uint32_t>(std::min<uint64_t>(K::kTaps, uint64_t{w} + R - x));
            A s = 0;
            for (uint32_t i = i0; i < i1; ++i) s += K::w[i] * col[x + i - R - c0];
            store<T>(out + size_t{x} * sizeof(T), static_cast<T>(floorDiv<A>(s, wy * K::weights(i0, i1))));
        }
    }
}

// Every pixel within R of an edge, renormalised.
template <class K>
void gaussBorder(const Plane<typename K::T>& src, const OutPlane<typename K::T>& dst) {
    constexpr uint32_t R = K::R;
    const uint32_t w = src.width, h = src.height;
    const uint32_t left = std::min(R, w), right = std::max(w > R ? w - R : 0, left);
    for (uint32_t y = 0; y < h; ++y) {
        uint8_t* out = dst.row(y);
        if (y < R || y + R >= h) {
            gaussRenormalisedSpan<K>(src, y, out, 0, w);
        } else {
            gaussRenormalisedSpan<K>(src, y, out, 0, left);
            gaussRenormalisedSpan<K>(src, y, out, right, w);
        }
    }
}

// The whole filter: interior, then the border when blurBorder is 1 (any
// other value leaves the border of dst as it was).
template <class K>
void gaussFilter(const Plane<typename K::T>& src, const OutPlane<typename K::T>& dst, int blurBorder) {
    constexpr uint32_t R = K::R;
    if (src.width > 2 * R)
        for (uint32_t y = R; y + R < src.height; ++y) gaussInteriorSpan<K>(src, y, dst.row(y), R, src.width - R);
    if (blurBorder == 1) gaussBorder<K>(src, dst);
}

}  // namespace pxr::smooth
