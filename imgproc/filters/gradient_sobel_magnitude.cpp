// Sobel edge magnitude: min(|Gx| + |Gy|, 255) on the interior.
#include "imgproc/filters/gradient.h"
#include "imgproc/filters/gradient_kernels.h"

void pxrFilterSobel3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride) {
    using namespace pxr::grad;
    interiorRows(src, srcWidth, srcHeight, srcStride, [&](uint32_t oy, const uint8_t* t, const uint8_t* m,
                                                          const uint8_t* b) {
        uint8_t* out = rowAt(dst, oy + 1, dstStride);
        for (uint32_t x = 1; x + 1 < srcWidth; ++x) out[x] = magnitude(t, m, b, x);
    });
}
