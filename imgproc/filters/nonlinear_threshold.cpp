// Fixed, range and Otsu thresholds on bytes.
#include "imgproc/filters/nonlinear.h"
#include "imgproc/filters/nonlinear_threshold_kernels.h"
#include "pixora/types.h"

namespace {

void applyThreshold(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
               uint32_t dstStride, uint8_t t, bool inverted) {
    for (uint32_t y = 0; y < height; ++y)
        pxr::thresh::span(src + size_t{y} * srcStride, dst + size_t{y} * dstStride, 0, width, t, inverted);
}

void range(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
           uint32_t dstStride, uint8_t lo, uint8_t hi) {
    for (uint32_t y = 0; y < height; ++y)
        pxr::thresh::rangeSpan(src + size_t{y} * srcStride, dst + size_t{y} * dstStride, 0, width, lo, hi);
}

}  // namespace

void pxrFilterThresholdu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride, int32_t threshold) {
    applyThreshold(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::thresh::effective(threshold), false);
}

int pxrFilterThresholdu8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int32_t threshold, uint32_t thresholdType) {
    applyThreshold(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::thresh::effective(threshold),
                thresholdType == 1);
    return PIXORA_STATUS_OK;
}

void pxrFilterThresholdRangeu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold) {
    range(src, srcWidth, srcHeight, srcStride, dst, dstStride, lowThreshold, highThreshold);
}

int pxrFilterThresholdRangeu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold) {
    range(src, srcWidth, srcHeight, srcStride, dst, dstStride, lowThreshold, highThreshold);
    return PIXORA_STATUS_OK;
}

void pxrFilterThresholdOtsuu8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, uint32_t thresholdType) {
    uint32_t hist[256] = {};
    for (uint32_t y = 0; y < height; ++y) pxr::thresh::countSpan(src + size_t{y} * srcStride, 0, width, hist);
    const uint8_t t = pxr::thresh::otsu(hist, uint64_t{width} * height);
    applyThreshold(src, width, height, srcStride, dst, dstStride, pxr::thresh::effective(t), thresholdType == 1);
}
