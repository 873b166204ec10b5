// Reference implementations of the filter family and their rows.
#pragma once

#include <cstdint>

#include "frame/registry.h"

void pxrFilterGaussian3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder);
int pxrFilterGaussian3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                               uint32_t borderType, uint8_t borderValue);
void pxrFilterMedian3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                           uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
int pxrFilterMedian3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                             uint32_t borderType, uint8_t borderValue);

PXR_REFERENCE(PXR_ROW_FilterGaussian3x3u8, pxrFilterGaussian3x3u8C)
PXR_REFERENCE(PXR_ROW_FilterGaussian3x3u8_v3, pxrFilterGaussian3x3u8_v3C)
PXR_REFERENCE(PXR_ROW_FilterMedian3x3u8, pxrFilterMedian3x3u8C)
PXR_REFERENCE(PXR_ROW_FilterMedian3x3u8_v3, pxrFilterMedian3x3u8_v3C)
