/* Pixora non-linear filters: median, bilateral, morphology and thresholds.
   (The 3x3 median is declared in pixora/filters.h.) Images are single
   channel, row-major; strides are in bytes and a stride of 0 means packed.
   Neighbourhood filters need dst apart from src; the fixed, range and Otsu
   thresholds may run in place. Threshold types: 0 binary, 1 inverted. */
#ifndef PIXORA_FILTERS_NONLINEAR_H
#define PIXORA_FILTERS_NONLINEAR_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* Median of the M x N window (M columns, N rows; both odd, 1 to 15) on
   signed 16-bit pixels. Writes the pixels with a full window only: columns
   M/2 .. width-M/2-1 of rows N/2 .. height-N/2-1. Returns 0, or 3 for bad
   arguments. */
PXR_API int pxrFilterMedianMxNs16(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                  uint32_t srcStride, uint32_t M, uint32_t N, int16_t* dst,
                                  uint32_t dstStride);

/* Bilateral filters over the disc of squared radius 4 (5x5: 13 taps), 9
   (7x7: 29 taps) or 16 (9x9: 49 taps). Each tap weighs
   fastexp(-r^2 / (2 sigmaSpace^2)) x fastexp(-d^2 / (2 sigmaColor^2)), d the
   grey difference to the centre; the result is the weighted mean rounded
   half up. Every pixel is written; a tap outside the image counts as grey 0.
   The fixed forms use sigmaColor 50 and sigmaSpace 1.0 (5x5), 1.5 (7x7),
   2.0 (9x9); the _v2 forms take the sigmas (finite, above 0) and return 0,
   or 3 for bad arguments. */
PXR_API void pxrBilateralFilter5x5u8(const uint8_t* src, uint32_t width, uint32_t height,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrBilateralFilter7x7u8(const uint8_t* src, uint32_t width, uint32_t height,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrBilateralFilter9x9u8(const uint8_t* src, uint32_t width, uint32_t height,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API int pxrBilateralFilter5x5u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                       float sigmaColor, float sigmaSpace);
PXR_API int pxrBilateralFilter7x7u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                       float sigmaColor, float sigmaSpace);
PXR_API int pxrBilateralFilter9x9u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                       float sigmaColor, float sigmaSpace);

/* Recursive bilateral filter: edge-aware first-order recursions left to
   right and right to left along the rows, then top to bottom and bottom to
   top along the columns, each step damped by exp(-sqrt(2) / sigmaSpace)
   times the colour weight of the grey step between the two source pixels;
   sigmaSpace in pixels, sigmaColor in grey levels (finite, above 0).
   Returns 0, 3 for bad arguments, 5 without scratch memory. */
PXR_API int pxrBilateralFilterRecursiveu8(const uint8_t* src, uint32_t width, uint32_t height,
                                          uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                          float sigmaColor, float sigmaSpace);

/* 3x3 erosion (minimum) and dilation (maximum). Every pixel is written; at
   the edge only the taps inside the image count. _v3: PIXORA_BORDER_CONSTANT
   adds the border value to the outside taps; PIXORA_BORDER_REPLICATE and
   PIXORA_BORDER_DEFAULT behave as the plain form. Returns 0, or 3. */
PXR_API void pxrFilterErode3x3u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst);
PXR_API void pxrFilterErode3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API int pxrFilterErode3x3u8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                   uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                   pxrBorderType borderType, uint8_t borderValue);
PXR_API void pxrFilterDilate3x3u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst);
PXR_API void pxrFilterDilate3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API int pxrFilterDilate3x3u8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                    pxrBorderType borderType, uint8_t borderValue);

/* N x N erosion and dilation (N odd, 1 or more) over a padded copy of the
   image in scratch memory; the pad never wins (255 for erosion, 0 for
   dilation), so at the edge only the taps inside the image count. Returns 0,
   3 for bad arguments, 5 without scratch memory. */
PXR_API int pxrFilterErodeNxNu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                uint32_t srcStride, uint32_t N, uint8_t* dst, uint32_t dstStride);
PXR_API int pxrFilterDilateNxNu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                 uint32_t srcStride, uint32_t N, uint8_t* dst, uint32_t dstStride);

/* Fixed threshold: a threshold below 0 or above 254 becomes 255; then
   binary writes 255 where src >= threshold and 0 elsewhere, inverted the
   opposite. The plain and _v2 forms are binary; _v3 takes the type and
   returns 0, or 3 for bad arguments (a type other than 0 or 1 included). */
PXR_API void pxrFilterThresholdu8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst,
                                  int32_t threshold);
PXR_API void pxrFilterThresholdu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                     int32_t threshold);
PXR_API int pxrFilterThresholdu8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                    int32_t threshold, uint32_t thresholdType);

/* Range threshold: 255 where lowThreshold <= src <= highThreshold, else 0
   (all 0 when low > high). _v2 returns 0, or 3 for bad arguments. */
PXR_API void pxrFilterThresholdRangeu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                       uint8_t lowThreshold, uint8_t highThreshold);
PXR_API int pxrFilterThresholdRangeu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                         uint8_t lowThreshold, uint8_t highThreshold);

/* Otsu threshold: the grey level t of largest between-class variance (bins
   0..t against t+1..255, the lowest t on a tie; 0 when no split exists, as
   for an image of one grey level), then the fixed threshold with t:
   thresholdType 1 inverted, any other value binary. */
PXR_API void pxrFilterThresholdOtsuu8(const uint8_t* src, uint32_t width, uint32_t height,
                                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                      uint32_t thresholdType);

/* Adaptive thresholds against the local mean m (the 3x3, 5x5 or 11x11
   Gaussian with renormalised border, or the box mean with a zero border):
   binary (thresholdType 0) writes maxValue where src > m - value, inverted
   (1) where src <= m - value, and 0 elsewhere. Any other type fills dst with
   0. value >= 256 gives all maxValue (binary) or all 0 (inverted);
   value <= -256 (binary) or <= -255 (inverted) the opposite. dst holds the
   mean on the way, so it must not be src. */
PXR_API void pxrAdaptiveThresholdGaussian3x3u8(const uint8_t* src, uint32_t width, uint32_t height,
                                               uint32_t srcStride, uint8_t maxValue,
                                               uint32_t thresholdType, int32_t value, uint8_t* dst,
                                               uint32_t dstStride);
PXR_API void pxrAdaptiveThresholdGaussian5x5u8(const uint8_t* src, uint32_t width, uint32_t height,
                                               uint32_t srcStride, uint8_t maxValue,
                                               uint32_t thresholdType, int32_t value, uint8_t* dst,
                                               uint32_t dstStride);
PXR_API void pxrAdaptiveThresholdGaussian11x11u8(const uint8_t* src, uint32_t width, uint32_t height,
                                                 uint32_t srcStride, uint8_t maxValue,
                                                 uint32_t thresholdType, int32_t value, uint8_t* dst,
                                                 uint32_t dstStride);
PXR_API void pxrAdaptiveThresholdMean3x3u8(const uint8_t* src, uint32_t width, uint32_t height,
                                           uint32_t srcStride, uint8_t maxValue, uint32_t thresholdType,
                                           int32_t value, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrAdaptiveThresholdMean5x5u8(const uint8_t* src, uint32_t width, uint32_t height,
                                           uint32_t srcStride, uint8_t maxValue, uint32_t thresholdType,
                                           int32_t value, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrAdaptiveThresholdMean11x11u8(const uint8_t* src, uint32_t width, uint32_t height,
                                             uint32_t srcStride, uint8_t maxValue, uint32_t thresholdType,
                                             int32_t value, uint8_t* dst, uint32_t dstStride);

PXR_EXTERN_C_END

#endif
