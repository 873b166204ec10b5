// Look-up tables of the HSV and LAB conversions, built at compile time (the
// same values on every platform). 32-bit entries, so that the vector kinds
// can gather from them directly.
#pragma once

#include <array>
#include <cstdint>

#include "imgproc/color/color_common.h"

namespace pxr::color {

// OneByxLUT[x] = 65536 / x rounded to nearest (1/x in Q16); entry 0 is 0.
inline constexpr std::array<uint32_t, 256> OneByxLUT = [] {
    std::array<uint32_t, 256> t{};
    for (uint32_t x = 1; x < 256; ++x) t[x] = (65536 + x / 2) / x;
    return t;
}();

namespace lab {

// The n-th root of v in (0, 1] by Newton's method (compile-time only).
constexpr double root(double v, int n) {
    if (v <= 0) return 0;
    double x = 1;
    for (int i = 0; i < 200; ++i) {
        double p = 1;
        for (int k = 1; k < n; ++k) p *= x;
        const double next = ((n - 1) * x + v / p) / n;
        if (next == x) break;
        x = next;
    }
    return x;
}

constexpr int32_t roundToInt(double v) { return static_cast<int32_t>(v + 0.5); }

// sRGB transfer function: encoded byte -> linear light in Q14 (0..16384).
inline constexpr int kLinearShift = 14;
inline constexpr std::array<int32_t, 256> kLinear = [] {
    std::array<int32_t, 256> t{};
    for (int v = 0; v < 256; ++v) {
        const double c = v / 255.0;
        double lin = c / 12.92;
        if (c > 0.04045) {
            const double b = (c + 0.055) / 1.055;
            lin = b * b * root(b * b, 5);  // b^2.4
        }
        t[v] = roundToInt(lin * (1 << kLinearShift));
    }
    return t;
}();

// Linear sRGB to XYZ (D65) divided by the white point, in Q12; each row sums
// to 4096, so white maps to exactly 1.0 on every axis.
inline constexpr int kMatrixShift = 12;
inline constexpr int32_t kX[3] = {1777, 1541, 778};
inline constexpr int32_t kY[3] = {871, 2929, 296};
inline constexpr int32_t kZ[3] = {73, 448, 3575};
static_assert(kX[0] + kX[1] + kX[2] == 4096 && kY[0] + kY[1] + kY[2] == 4096 && kZ[0] + kZ[1] + kZ[2] == 4096);

// Index of the f table: t = X/Xn (or Y, Z) in Q12, 0..4096.
constexpr int32_t axis(const int32_t (&w)[3], int32_t r, int32_t g, int32_t b) {
    return (w[0] * r + w[1] * g + w[2] * b + (1 << (kLinearShift - 1))) >> kLinearShift;
}

// f(t) = cbrt(t) above (6/29)^3, else t (29/6)^2 / 3 + 4/29; in Q15.
inline constexpr int kFShift = 15;
inline constexpr std::array<int32_t, 4097> kF = [] {
    std::array<int32_t, 4097> t{};
    for (int i = 0; i <= 4096; ++i) {
        const double v = i / 4096.0;
        const double f = v > 216.0 / 24389.0 ? root(v, 3) : v * 841.0 / 108.0 + 4.0 / 29.0;
        t[i] = roundToInt(f * (1 << kFShift));
    }
    return t;
}();

// L* (0..100) scaled to 0..255: (116 fy - 16) x 2.55, with 2.55 as 653 / 256.
constexpr uint8_t lightness(int32_t fy) {
    return clamp255((653 * (116 * fy - (16 << kFShift)) + (1 << 22)) >> 23);
}
// a* = 500 (fx - fy), b* = 200 (fy - fz), each plus 128, rounded and clamped.
constexpr uint8_t opponent(int32_t weight, int32_t f0, int32_t f1) {
    return clamp255((weight * (f0 - f1) + (128 << kFShift) + (1 << (kFShift - 1))) >> kFShift);
}

}  // namespace lab
}  // namespace pxr::color
