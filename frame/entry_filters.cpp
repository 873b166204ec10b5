// Entry points of the filter family.
#include "frame/entry.h"
#include "imgproc/filters/filters.h"

namespace {

// The 3x3 Gaussian's size pattern, in unsigned 32-bit arithmetic on purpose:
// widths 2 to 6 are refused, while 0 and 1 wrap round and are caught later.
bool gaussianWidthPattern(uint32_t width) {
    const uint32_t a = width - 2;
    return a - (a % 6) >= width - 7;
}

// Rule of the 3x3 median (plain and _v2).
pxr::Rule medianRule(uint32_t width, uint32_t height, const void* src, const void* dst) {
    pxr::Rule r;
    r.gpuOk = pxr::aligned(src, 16) && pxr::aligned(dst, 16) && width % 8 == 0;
    r.dspOk = width % 8 == 0 && height >= 4 && uint64_t{width} * height >= pxr::kAcceleratorMinPixels &&
              pxr::aligned(src, 8) && pxr::aligned(dst, 8);
    return r;
}

}  // namespace

extern "C" {

PXR_API void pxrFilterGaussian3x3u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst,
                                    int blurBorder) {
    if (!gaussianWidthPattern(width)) return pxr::errorAt(__func__);
    pxr::Rule rule{.gpuOk = !(width & 1) && !(height & 1),
                   .dspOk = pxr::aligned(src, 4) && pxr::aligned(dst, 4) && width % 4 == 0,
                   .dspChecked = false};
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian3x3u8, rule);
    PXR_ASSERT(src && dst && width && height);
    pxr::dispatch<PXR_ROW_FilterGaussian3x3u8>(k, src, width, height, width, dst, width, blurBorder);
}

PXR_API void pxrFilterGaussian3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                       int blurBorder) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    if (!gaussianWidthPattern(srcWidth)) return pxr::errorAt(__func__);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian3x3u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1) && (srcStride >= srcWidth) && (dstStride >= srcWidth));
    pxr::dispatch<PXR_ROW_FilterGaussian3x3u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                               blurBorder);
}

PXR_API int pxrFilterGaussian3x3u8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                      pxrBorderType borderType, uint8_t borderValue) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian3x3u8_v3,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(static_cast<uint32_t>(borderType) <= PIXORA_BORDER_REPLICATE && src && dst && srcWidth &&
                    srcHeight && srcStride >= srcWidth && dstStride >= srcWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterGaussian3x3u8_v3>(k, src, srcWidth, srcHeight, srcStride, dst,
                                                         dstStride, static_cast<uint32_t>(borderType),
                                                         borderValue);
}

PXR_API void pxrFilterMedian3x3u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterMedian3x3u8, medianRule(width, height, src, dst));
    PXR_ASSERT(src && dst && width && height);
    pxr::dispatch<PXR_ROW_FilterMedian3x3u8>(k, src, width, height, width, dst, width);
}

PXR_API void pxrFilterMedian3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterMedian3x3u8,
                                       medianRule(srcWidth, srcHeight, src, dst));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && (dstStride >= srcWidth));
    pxr::dispatch<PXR_ROW_FilterMedian3x3u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

PXR_API int pxrFilterMedian3x3u8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                    pxrBorderType borderType, uint8_t borderValue) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterMedian3x3u8_v3,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(static_cast<uint32_t>(borderType) <= PIXORA_BORDER_REPLICATE && src && dst && srcWidth &&
                    srcHeight && srcStride >= srcWidth && dstStride >= srcWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterMedian3x3u8_v3>(k, src, srcWidth, srcHeight, srcStride, dst,
                                                       dstStride, static_cast<uint32_t>(borderType),
                                                       borderValue);
}

}  // extern "C"
