// Pieces shared by the smoothing filters' row kernels: element access on
// byte-addressed rows, floor division and the binomial weights.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace pxr::smooth {

// Rows are addressed in bytes (strides are byte counts), so elements are
// read and written through memcpy: no alignment is assumed beyond a byte.
template <class T>
inline T load(const uint8_t* p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
template <class T>
inline void store(uint8_t* p, T v) {
    std::memcpy(p, &v, sizeof v);
}

// Quotient rounded towards minus infinity (b > 0). For the interior's power
// of two it equals an arithmetic shift right, so one rule covers every pixel.
template <class A>
constexpr A floorDiv(A a, A b) {
    if constexpr (std::is_signed_v<A>) {
        const A q = a / b;
        return (a % b != 0 && a < 0) ? q - 1 : q;
    } else {
        return a / b;
    }
}

// Row n of Pascal's triangle: the 1-D binomial kernel of n + 1 taps, whose
// weights sum to 2^n.
template <class A, uint32_t n>
constexpr std::array<A, n + 1> pascalRow() {
    std::array<A, n + 1> row{};
    row[0] = 1;
    for (uint32_t i = 1; i <= n; ++i)
        for (uint32_t k = i; k > 0; --k) row[k] += row[k - 1];
    return row;
}

// An image plane: first pixel, size in pixels, stride in bytes.
template <class T>
struct Plane {
    const uint8_t* data;
    uint32_t width, height, stride;
    const uint8_t* row(uint32_t y) const { return data + size_t{y} * stride; }
    T at(uint32_t x, uint32_t y) const { return load<T>(row(y) + size_t{x} * sizeof(T)); }
};

template <class T>
struct OutPlane {
    uint8_t* data;
    uint32_t stride;
    uint8_t* row(uint32_t y) const { return data + size_t{y} * stride; }
};

}  // namespace pxr::smooth
