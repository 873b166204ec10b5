// Reference implementations: non-linear filters: median, bilateral, morphology and thresholds.
// (The 3x3 median's reference is in imgproc/filters/filters.h.)
#pragma once

#include <cstdint>

#include "frame/registry.h"

// M x N median on s16 (byte strides); full-window pixels only. Returns 0.
int pxrFilterMedianMxNs16C(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint32_t M, uint32_t N, int16_t* dst, uint32_t dstStride);

// Bilateral: fixed sigmas, caller sigmas (hand-over at the fixed pair), recursive.
void pxrBilateralFilter5x5u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
void pxrBilateralFilter7x7u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
void pxrBilateralFilter9x9u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
int pxrBilateralFilter5x5u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);
int pxrBilateralFilter7x7u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);
int pxrBilateralFilter9x9u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);
int pxrBilateralFilterRecursiveu8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                   uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);

// Morphology: 3x3 (every pixel, in-image taps; _v3 border type) and NxN (padded copy).
void pxrFilterErode3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride);
void pxrFilterDilate3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride);
int pxrFilterErode3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
int pxrFilterDilate3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
int pxrFilterErodeNxNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         uint8_t* dst, uint32_t dstStride);
int pxrFilterDilateNxNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint32_t N, uint8_t* dst, uint32_t dstStride);

// Thresholds: fixed (binary; _v3 typed), range, Otsu.
void pxrFilterThresholdu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride, int32_t threshold);
int pxrFilterThresholdu8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int32_t threshold, uint32_t thresholdType);
void pxrFilterThresholdRangeu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold);
int pxrFilterThresholdRangeu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold);
void pxrFilterThresholdOtsuu8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, uint32_t thresholdType);

// Adaptive thresholds against the local Gaussian or box mean.
void pxrAdaptiveThresholdGaussian3x3u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride);
void pxrAdaptiveThresholdGaussian5x5u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride);
void pxrAdaptiveThresholdGaussian11x11u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                          uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                          uint32_t dstStride);
void pxrAdaptiveThresholdMean3x3u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride);
void pxrAdaptiveThresholdMean5x5u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride);
void pxrAdaptiveThresholdMean11x11u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                      uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                      uint32_t dstStride);

PXR_REFERENCE(PXR_ROW_FilterMedianMxNs16, pxrFilterMedianMxNs16C)
PXR_REFERENCE(PXR_ROW_BilateralFilter5x5u8, pxrBilateralFilter5x5u8C)
PXR_REFERENCE(PXR_ROW_BilateralFilter7x7u8, pxrBilateralFilter7x7u8C)
PXR_REFERENCE(PXR_ROW_BilateralFilter9x9u8, pxrBilateralFilter9x9u8C)
PXR_REFERENCE(PXR_ROW_BilateralFilter5x5u8_v2, pxrBilateralFilter5x5u8_v2C)
PXR_REFERENCE(PXR_ROW_BilateralFilter7x7u8_v2, pxrBilateralFilter7x7u8_v2C)
PXR_REFERENCE(PXR_ROW_BilateralFilter9x9u8_v2, pxrBilateralFilter9x9u8_v2C)
PXR_REFERENCE(PXR_ROW_BilateralFilterRecursiveu8, pxrBilateralFilterRecursiveu8C)
PXR_REFERENCE(PXR_ROW_FilterErode3x3u8, pxrFilterErode3x3u8C)
PXR_REFERENCE(PXR_ROW_FilterDilate3x3u8, pxrFilterDilate3x3u8C)
PXR_REFERENCE(PXR_ROW_FilterErode3x3u8_v3, pxrFilterErode3x3u8_v3C)
PXR_REFERENCE(PXR_ROW_FilterDilate3x3u8_v3, pxrFilterDilate3x3u8_v3C)
PXR_REFERENCE(PXR_ROW_FilterErodeNxNu8, pxrFilterErodeNxNu8C)
PXR_REFERENCE(PXR_ROW_FilterDilateNxNu8, pxrFilterDilateNxNu8C)
PXR_REFERENCE(PXR_ROW_FilterThresholdu8, pxrFilterThresholdu8C)
PXR_REFERENCE(PXR_ROW_FilterThresholdu8_v3, pxrFilterThresholdu8_v3C)
PXR_REFERENCE(PXR_ROW_FilterThresholdRangeu8, pxrFilterThresholdRangeu8C)
PXR_REFERENCE(PXR_ROW_FilterThresholdRangeu8_v2, pxrFilterThresholdRangeu8_v2C)
PXR_REFERENCE(PXR_ROW_FilterThresholdOtsuu8, pxrFilterThresholdOtsuu8C)
PXR_REFERENCE(PXR_ROW_AdaptiveThresholdGaussian3x3u8, pxrAdaptiveThresholdGaussian3x3u8C)
PXR_REFERENCE(PXR_ROW_AdaptiveThresholdGaussian5x5u8, pxrAdaptiveThresholdGaussian5x5u8C)
PXR_REFERENCE(PXR_ROW_AdaptiveThresholdGaussian11x11u8, pxrAdaptiveThresholdGaussian11x11u8C)
PXR_REFERENCE(PXR_ROW_AdaptiveThresholdMean3x3u8, pxrAdaptiveThresholdMean3x3u8C)
PXR_REFERENCE(PXR_ROW_AdaptiveThresholdMean5x5u8, pxrAdaptiveThresholdMean5x5u8C)
PXR_REFERENCE(PXR_ROW_AdaptiveThresholdMean11x11u8, pxrAdaptiveThresholdMean11x11u8C)
