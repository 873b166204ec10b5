// Entry points of the fixed, range, Otsu and adaptive thresholds.
#include "frame/entry.h"
#include "imgproc/filters/nonlinear.h"
#include "pixora/filters_nonlinear.h"

extern "C" {

PXR_API void pxrFilterThresholdu8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst,
                                  int32_t threshold) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterThresholdu8,
                                       pxr::imageRule(width, height, src, width, dst, width));
    PXR_ASSERT(src && dst && width && height);
    pxr::dispatch<PXR_ROW_FilterThresholdu8>(k, src, width, height, width, dst, width, threshold);
}

PXR_API void pxrFilterThresholdu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                     uint8_t* dst, uint32_t dstStride, int32_t threshold) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterThresholdu8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && (dstStride >= srcWidth));
    pxr::dispatch<PXR_ROW_FilterThresholdu8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride, threshold);
}

PXR_API int pxrFilterThresholdu8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint8_t* dst, uint32_t dstStride, int32_t threshold, uint32_t thresholdType) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterThresholdu8_v3,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth && srcHeight && srcStride >= srcWidth && dstStride >= srcWidth &&
                    thresholdType <= 1,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterThresholdu8_v3>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                                       threshold, thresholdType);
}

PXR_API void pxrFilterThresholdRangeu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold,
                                       uint8_t highThreshold) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterThresholdRangeu8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && (dstStride >= srcWidth));
    pxr::dispatch<PXR_ROW_FilterThresholdRangeu8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                                  lowThreshold, highThreshold);
}

PXR_API int pxrFilterThresholdRangeu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold,
                                         uint8_t highThreshold) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterThresholdRangeu8_v2,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth && srcHeight && srcStride >= srcWidth && dstStride >= srcWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterThresholdRangeu8_v2>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                                            lowThreshold, highThreshold);
}

PXR_API void pxrFilterThresholdOtsuu8(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                      uint8_t* dst, uint32_t dstStride, uint32_t thresholdType) {
    srcStride = pxr::packedStride(srcStride, width);
    dstStride = pxr::packedStride(dstStride, width);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterThresholdOtsuu8,
                                       pxr::imageRule(width, height, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && width && height && (srcStride >= width) && (dstStride >= width));
    pxr::dispatch<PXR_ROW_FilterThresholdOtsuu8>(k, src, width, height, srcStride, dst, dstStride, thresholdType);
}

// Adaptive thresholds: the type, the offset and the mean are checked and
// applied by the implementations; the entry point checks the buffers.
#define PXR_ADAPTIVE_ENTRY(Name, Row)                                                                         \
    PXR_API void Name(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t maxValue, \
                      uint32_t thresholdType, int32_t value, uint8_t* dst, uint32_t dstStride) {              \
        srcStride = pxr::packedStride(srcStride, width);                                                      \
        dstStride = pxr::packedStride(dstStride, width);                                                      \
        const uint32_t k =                                                                                    \
            pxr::selectKind(__func__, Row, pxr::imageRule(width, height, src, srcStride, dst, dstStride));    \
        PXR_ASSERT(src && dst && width && height && (srcStride >= width) && (dstStride >= width));           \
        pxr::dispatch<Row>(k, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride); \
    }

PXR_ADAPTIVE_ENTRY(pxrAdaptiveThresholdGaussian3x3u8, PXR_ROW_AdaptiveThresholdGaussian3x3u8)
PXR_ADAPTIVE_ENTRY(pxrAdaptiveThresholdGaussian5x5u8, PXR_ROW_AdaptiveThresholdGaussian5x5u8)
PXR_ADAPTIVE_ENTRY(pxrAdaptiveThresholdGaussian11x11u8, PXR_ROW_AdaptiveThresholdGaussian11x11u8)
PXR_ADAPTIVE_ENTRY(pxrAdaptiveThresholdMean3x3u8, PXR_ROW_AdaptiveThresholdMean3x3u8)
PXR_ADAPTIVE_ENTRY(pxrAdaptiveThresholdMean5x5u8, PXR_ROW_AdaptiveThresholdMean5x5u8)
PXR_ADAPTIVE_ENTRY(pxrAdaptiveThresholdMean11x11u8, PXR_ROW_AdaptiveThresholdMean11x11u8)

}  // extern "C"
