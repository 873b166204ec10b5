// Vector (kind 1) implementations of the linear filters: Gaussian 5x5/11x11 (u8, s16, s32), box filters and local normalisation.
#pragma once

#include "imgproc/filters/smooth.h"

void pxrFilterGaussian5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int blurBorder);
void pxrFilterGaussian11x11u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, int blurBorder);
void pxrFilterGaussian5x5s16V(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int16_t* dst, uint32_t dstStride, int blurBorder);
void pxrFilterGaussian5x5s32V(const int32_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int32_t* dst, uint32_t dstStride, int blurBorder);
void pxrBoxFilter3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
int pxrBoxFilter3x3u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
void pxrBoxFilter5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
void pxrBoxFilter11x11u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride);
void pxrBoxFilterNxNf32V(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         float* dst, uint32_t dstStride);
int pxrNormalizeLocalBoxu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t N, uint8_t* dst, uint32_t dstStride);
int pxrNormalizeLocalBoxf32V(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t N, float* dst, uint32_t dstStride);

PXR_VECTOR(PXR_ROW_FilterGaussian5x5u8, pxrFilterGaussian5x5u8V)
PXR_VECTOR(PXR_ROW_FilterGaussian11x11u8, pxrFilterGaussian11x11u8V)
PXR_VECTOR(PXR_ROW_FilterGaussian5x5s16, pxrFilterGaussian5x5s16V)
PXR_VECTOR(PXR_ROW_FilterGaussian5x5s32, pxrFilterGaussian5x5s32V)
PXR_VECTOR(PXR_ROW_BoxFilter3x3u8, pxrBoxFilter3x3u8V)
PXR_VECTOR(PXR_ROW_BoxFilter3x3u8_v2, pxrBoxFilter3x3u8_v2V)
PXR_VECTOR(PXR_ROW_BoxFilter5x5u8, pxrBoxFilter5x5u8V)
PXR_VECTOR(PXR_ROW_BoxFilter11x11u8, pxrBoxFilter11x11u8V)
PXR_VECTOR(PXR_ROW_BoxFilterNxNf32, pxrBoxFilterNxNf32V)
PXR_VECTOR(PXR_ROW_NormalizeLocalBoxu8, pxrNormalizeLocalBoxu8V)
PXR_VECTOR(PXR_ROW_NormalizeLocalBoxf32, pxrNormalizeLocalBoxf32V)
