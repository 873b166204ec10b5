// Vector (kind 1) implementations: non-linear filters: median, bilateral, morphology and thresholds.
#pragma once

#include "imgproc/filters/filters.h"
#include "imgproc/filters/nonlinear.h"

// 3x3 median (reference rows in imgproc/filters/filters.h).
void pxrFilterMedian3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride);
int pxrFilterMedian3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
int pxrFilterMedianMxNs16V(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint32_t M, uint32_t N, int16_t* dst, uint32_t dstStride);

void pxrBilateralFilter5x5u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
void pxrBilateralFilter7x7u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
void pxrBilateralFilter9x9u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
int pxrBilateralFilter5x5u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);
int pxrBilateralFilter7x7u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);
int pxrBilateralFilter9x9u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);
int pxrBilateralFilterRecursiveu8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                   uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace);

void pxrFilterErode3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride);
void pxrFilterDilate3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride);
int pxrFilterErode3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
int pxrFilterDilate3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
int pxrFilterErodeNxNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         uint8_t* dst, uint32_t dstStride);
int pxrFilterDilateNxNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint32_t N, uint8_t* dst, uint32_t dstStride);

void pxrFilterThresholdu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride, int32_t threshold);
int pxrFilterThresholdu8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int32_t threshold, uint32_t thresholdType);
void pxrFilterThresholdRangeu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold);
int pxrFilterThresholdRangeu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride, uint8_t lowThreshold, uint8_t highThreshold);
void pxrFilterThresholdOtsuu8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, uint32_t thresholdType);

void pxrAdaptiveThresholdGaussian3x3u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride);
void pxrAdaptiveThresholdGaussian5x5u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                        uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                        uint32_t dstStride);
void pxrAdaptiveThresholdGaussian11x11u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                          uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                          uint32_t dstStride);
void pxrAdaptiveThresholdMean3x3u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride);
void pxrAdaptiveThresholdMean5x5u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                    uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                    uint32_t dstStride);
void pxrAdaptiveThresholdMean11x11u8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                      uint8_t maxValue, uint32_t thresholdType, int32_t value, uint8_t* dst,
                                      uint32_t dstStride);

PXR_VECTOR(PXR_ROW_FilterMedian3x3u8, pxrFilterMedian3x3u8V)
PXR_VECTOR(PXR_ROW_FilterMedian3x3u8_v3, pxrFilterMedian3x3u8_v3V)
PXR_VECTOR(PXR_ROW_FilterMedianMxNs16, pxrFilterMedianMxNs16V)
PXR_VECTOR(PXR_ROW_BilateralFilter5x5u8, pxrBilateralFilter5x5u8V)
PXR_VECTOR(PXR_ROW_BilateralFilter7x7u8, pxrBilateralFilter7x7u8V)
PXR_VECTOR(PXR_ROW_BilateralFilter9x9u8, pxrBilateralFilter9x9u8V)
PXR_VECTOR(PXR_ROW_BilateralFilter5x5u8_v2, pxrBilateralFilter5x5u8_v2V)
PXR_VECTOR(PXR_ROW_BilateralFilter7x7u8_v2, pxrBilateralFilter7x7u8_v2V)
PXR_VECTOR(PXR_ROW_BilateralFilter9x9u8_v2, pxrBilateralFilter9x9u8_v2V)
PXR_VECTOR(PXR_ROW_BilateralFilterRecursiveu8, pxrBilateralFilterRecursiveu8V)
PXR_VECTOR(PXR_ROW_FilterErode3x3u8, pxrFilterErode3x3u8V)
PXR_VECTOR(PXR_ROW_FilterDilate3x3u8, pxrFilterDilate3x3u8V)
PXR_VECTOR(PXR_ROW_FilterErode3x3u8_v3, pxrFilterErode3x3u8_v3V)
PXR_VECTOR(PXR_ROW_FilterDilate3x3u8_v3, pxrFilterDilate3x3u8_v3V)
PXR_VECTOR(PXR_ROW_FilterErodeNxNu8, pxrFilterErodeNxNu8V)
PXR_VECTOR(PXR_ROW_FilterDilateNxNu8, pxrFilterDilateNxNu8V)
PXR_VECTOR(PXR_ROW_FilterThresholdu8, pxrFilterThresholdu8V)
PXR_VECTOR(PXR_ROW_FilterThresholdu8_v3, pxrFilterThresholdu8_v3V)
PXR_VECTOR(PXR_ROW_FilterThresholdRangeu8, pxrFilterThresholdRangeu8V)
PXR_VECTOR(PXR_ROW_FilterThresholdRangeu8_v2, pxrFilterThresholdRangeu8_v2V)
PXR_VECTOR(PXR_ROW_FilterThresholdOtsuu8, pxrFilterThresholdOtsuu8V)
PXR_VECTOR(PXR_ROW_AdaptiveThresholdGaussian3x3u8, pxrAdaptiveThresholdGaussian3x3u8V)
PXR_VECTOR(PXR_ROW_AdaptiveThresholdGaussian5x5u8, pxrAdaptiveThresholdGaussian5x5u8V)
PXR_VECTOR(PXR_ROW_AdaptiveThresholdGaussian11x11u8, pxrAdaptiveThresholdGaussian11x11u8V)
PXR_VECTOR(PXR_ROW_AdaptiveThresholdMean3x3u8, pxrAdaptiveThresholdMean3x3u8V)
PXR_VECTOR(PXR_ROW_AdaptiveThresholdMean5x5u8, pxrAdaptiveThresholdMean5x5u8V)
PXR_VECTOR(PXR_ROW_AdaptiveThresholdMean11x11u8, pxrAdaptiveThresholdMean11x11u8V)
