// Vector (kind 1) implementations of the filter family and their rows.
#pragma once

#include "imgproc/filters/filters.h"

void pxrFilterGaussian3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder);
int pxrFilterGaussian3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                               uint32_t borderType, uint8_t borderValue);

PXR_VECTOR(PXR_ROW_FilterGaussian3x3u8, pxrFilterGaussian3x3u8V)
PXR_VECTOR(PXR_ROW_FilterGaussian3x3u8_v3, pxrFilterGaussian3x3u8_v3V)
