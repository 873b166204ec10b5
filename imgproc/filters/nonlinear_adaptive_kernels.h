// Kernels of the adaptive thresholds shared by the reference and vector
// kinds: the type check and short cuts, and the comparison of each pixel
// with its local mean (already written into dst).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pxr::adaptive {

// A type other than 0 (binary) or 1 (inverted) fills dst with 0. Offsets far
// enough out decide every pixel without filtering, asymmetrically because
// the comparison is strict: binary fills maxValue from +256 and 0 from -256,
// inverted fills 0 from +256 and maxValue from -255. True when dst is done.
inline bool shortCut(uint32_t width, uint32_t height, uint8_t* dst, uint32_t dstStride, uint8_t maxValue,
                     uint32_t type, int32_t value) {
    int fill = -1;
    if (type > 1)
        fill = 0;
    else if (type == 0)
        fill = value >= 256 ? maxValue : value <= -256 ? 0 : -1;
    else
        fill = value >= 256 ? 0 : value <= -255 ? maxValue : -1;
    if (fill < 0) return false;
    for (uint32_t y = 0; y < height; ++y) std::memset(dst + size_t{y} * dstStride, fill, width);
    return true;
}

// Columns [x0, x1) of one row: `io` holds the local mean m on entry and the
// result on return. Binary writes maxValue where src - m > -value, inverted
// where src - m <= -value (the offset lowers the mean the source must pass).
inline void compareSpan(const uint8_t* src, uint8_t* io, uint32_t x0, uint32_t x1, uint8_t maxValue, int32_t value,
                        bool inverted) {
    for (uint32_t x = x0; x < x1; ++x)
        io[x] = ((int32_t{src[x]} - int32_t{io[x]} > -value) != inverted) ? maxValue : 0;
}

}  // namespace pxr::adaptive
