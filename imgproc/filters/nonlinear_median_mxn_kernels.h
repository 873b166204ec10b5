// Kernels of the M x N median on signed 16-bit pixels shared by the
// reference and vector kinds. Rows are addressed in bytes and pixels are
// read and written through memcpy, so any alignment works.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pxr::medianmxn {

inline constexpr uint32_t kMaxSide = 15;
inline constexpr uint32_t kMaxTaps = kMaxSide * kMaxSide;

// Outputs [x0, x1) of output row y (a row with a full window): the window of
// output x has its top-left tap at (x - M/2, y - N/2).
inline void span(const uint8_t* src, uint32_t srcStride, uint32_t m, uint32_t n, size_t y, uint8_t* out,
                 uint32_t x0, uint32_t x1) {
    int16_t taps[kMaxTaps];
    const uint32_t count = m * n, mid = count / 2;
    for (uint32_t x = x0; x < x1; ++x) {
        for (uint32_t i = 0; i < n; ++i)
            std::memcpy(taps + i * m, src + (y - n / 2 + i) * srcStride + size_t{x - m / 2} * 2, size_t{m} * 2);
        std::nth_element(taps, taps + mid, taps + count);
        std::memcpy(out + size_t{x} * 2, taps + mid, 2);
    }
}

}  // namespace pxr::medianmxn
