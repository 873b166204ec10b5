// 3x3 median on bytes.
#include "imgproc/filters/filters.h"
#include "imgproc/filters/nonlinear_median_kernels.h"

void pxrFilterMedian3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                           uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    if (srcWidth < 3 || srcHeight < 3) return;
    for (uint32_t y = 1; y + 1 < srcHeight; ++y) {
        const uint8_t* m = src + size_t{y} * srcStride;
        pxr::median3::interiorSpan(m - srcStride, m, m + srcStride, dst + size_t{y} * dstStride, 1,
                                   srcWidth - 1);
    }
}

// Border types (see docs/decisions.md): CONSTANT pads with the border value;
// REPLICATE and DEFAULT repeat the nearest edge pixel, which keeps edges
// where a zero pad would pull the border dark.
int pxrFilterMedian3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                             uint32_t borderType, uint8_t borderValue) {
    pxrFilterMedian3x3u8C(src, srcWidth, srcHeight, srcStride, dst, dstStride);
    pxr::median3::border(src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType, borderValue);
    return 0;
}
