// Row kernels of the block-average reductions (2x2, 4x4 and 3:2), shared by
// the reference and the vector kinds: the vector code covers the bulk of a
// row and hands the remainder to these.
#pragma once

#include <cstdint>

#include "imgproc/scale/scale_common.h"

namespace pxr::scale::block {

// Output columns [x0, x1) of a 2x2 halving: (a + b + c + d) >> 2.
inline void by2Span(const uint8_t* r0, const uint8_t* r1, uint8_t* out, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x)
        out[x] = static_cast<uint8_t>((r0[2 * x] + r0[2 * x + 1] + r1[2 * x] + r1[2 * x + 1]) >> 2);
}

// Output columns [x0, x1) of a 4x4 quartering: the sum of 16 pixels >> 4.
inline void by4Span(const uint8_t* const r[4], uint8_t* out, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        uint32_t sum = 0;
        for (int k = 0; k < 4; ++k)
            sum += r[k][4 * x] + r[k][4 * x + 1] + r[k][4 * x + 2] + r[k][4 * x + 3];
        out[x] = static_cast<uint8_t>(sum >> 4);
    }
}

// 3:2 by area. Along each axis output 2m covers source pixels 3m (whole)
// and 3m+1 (half), output 2m+1 covers 3m+1 (half) and 3m+2 (whole): weights
// (2, 1) and (1, 2) in units of half a pixel. An output row is made of the
// row it covers wholly ("heavy", weight 2) and the shared middle row
// ("light", weight 1); the 2-D weights sum to 9.
inline uint32_t col3To2(const uint8_t* heavy, const uint8_t* light, uint32_t c) {
    return 2u * heavy[c] + light[c];
}

// Output columns [x0, x1) of one output row.
inline void threeToTwoSpan(const uint8_t* heavy, const uint8_t* light, uint8_t* out, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const uint32_t m = 3 * (x / 2);
        const uint32_t sum = (x & 1) ? col3To2(heavy, light, m + 1) + 2 * col3To2(heavy, light, m + 2)
                                     : 2 * col3To2(heavy, light, m) + col3To2(heavy, light, m + 1);
        out[x] = roundDiv9(sum);
    }
}

// Rows of output row j of the 3:2 reduction.
inline void rows3To2(const uint8_t* src, uint32_t stride, uint32_t j, const uint8_t** heavy,
                     const uint8_t** light) {
    const size_t base = 3 * size_t{j / 2};
    *heavy = src + (base + ((j & 1) ? 2 : 0)) * stride;
    *light = src + (base + 1) * stride;
}

}  // namespace pxr::scale::block
