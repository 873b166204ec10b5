// Adaptive thresholds: each pixel against its local mean, the Gaussian with
// renormalised border or the box mean with a zero border, written into dst
// first.
#include "imgproc/filters/filters.h"
#include "imgproc/filters/nonlinear.h"
#include "imgproc/filters/nonlinear_adaptive_kernels.h"
#include "imgproc/filters/smooth.h"

namespace {

using MeanFn = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);

// The 3x3 Gaussian with renormalised border through its status generation,
// which also filters images one pixel wide or high.
void gaussian3(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    pxrFilterGaussian3x3u8_v3C(s, w, h, ss, d, ds, 0, 0);
}
void gaussian5(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    pxrFilterGaussian5x5u8C(s, w, h, ss, d, ds, 1);
}
void gaussian11(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    pxrFilterGaussian11x11u8C(s, w, h, ss, d, ds, 1);
}

void adaptive(MeanFn mean, const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t maxValue,
              uint32_t thresholdType, int32_t value, uint8_t* dst, uint32_t dstStride) {
    if (pxr::adaptive::shortCut(width, height, dst, dstStride, maxValue, thresholdType, value)) return;
    mean(src, width, height, srcStride, dst, dstStride);
    for (uint32_t y = 0; y < height; ++y)
        pxr::adaptive::compareSpan(src + size_t{y} * srcStride, dst + size_t{y} * dstStride, 0, width, maxValue, value,
                                   thresholdType == 1);
}

}  // namespace

void pxrAdaptiveThresholdGaussian3x3u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride) {
    adaptive(gaussian3, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdGaussian5x5u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride) {
    adaptive(gaussian5, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdGaussian11x11u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                          uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                          uint32_t dstStride) {
    adaptive(gaussian11, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdMean3x3u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride) {
    adaptive(pxrBoxFilter3x3u8C, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdMean5x5u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride) {
    adaptive(pxrBoxFilter5x5u8C, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}

void pxrAdaptiveThresholdMean11x11u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                      uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                      uint32_t dstStride) {
    adaptive(pxrBoxFilter11x11u8C, src, width, height, srcStride, maxValue, thresholdType, value, dst, dstStride);
}
