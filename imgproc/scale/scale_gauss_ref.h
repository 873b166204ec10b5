// The reference row passes of the Gaussian halving and doubling, as kernel
// sets for the drivers of scale_gauss_kernels.h. The pyramid members use
// them directly.
#pragma once

#include "imgproc/scale/scale_gauss_kernels.h"

namespace pxr::scale::gauss {

template <int R, class T, class S>
void verticalRef(const T* const* rows, S* sums, uint32_t n) {
    for (uint32_t c = 0; c < n; ++c) sums[c] = columnSum<R>(rows, c);
}
template <int R, class T, class S>
void horizontalRef(const S* sums, T* out, uint32_t n) {
    for (uint32_t i = 0; i < n; ++i) out[i] = halve<R>(sums + 2 * size_t{i});
}
inline void doubleVerticalRef(const uint8_t* a, const uint8_t* b, const uint8_t* c, uint16_t* even, uint16_t* odd,
                              uint32_t n) {
    for (uint32_t x = 0; x < n; ++x) {
        even[x] = evenSum(a, b, c, x);
        odd[x] = oddSum(b, c, x);
    }
}
inline void doubleHorizontalRef(const uint16_t* s, uint8_t* out, uint32_t n) {
    for (uint32_t j = 0; j < n; ++j) {
        out[2 * size_t{j}] = doubleEven(s + j);
        out[2 * size_t{j} + 1] = doubleOdd(s + j);
    }
}

inline constexpr DownKernels<uint8_t, uint16_t> kHalve5u8Reference{verticalRef<2, uint8_t, uint16_t>,
                                                                   horizontalRef<2, uint8_t, uint16_t>};
inline constexpr DownKernels<uint8_t, uint16_t> kHalve3u8Reference{verticalRef<1, uint8_t, uint16_t>,
                                                                   horizontalRef<1, uint8_t, uint16_t>};
inline constexpr DownKernels<float, float> kHalve5f32Reference{verticalRef<2, float, float>,
                                                               horizontalRef<2, float, float>};
inline constexpr UpKernels kDoubleReference{doubleVerticalRef, doubleHorizontalRef};

}  // namespace pxr::scale::gauss
