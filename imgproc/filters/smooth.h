// Reference implementations of the linear filters: Gaussian 5x5/11x11 (u8, s16, s32), box filters and local normalisation.
#pragma once

#include <cstdint>

#include "frame/registry.h"

// Gaussians: binomial kernels; blurBorder 1 renormalises the border, any
// other value leaves it unwritten. Strides in bytes.
void pxrFilterGaussian5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int blurBorder);
void pxrFilterGaussian11x11u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, int blurBorder);
void pxrFilterGaussian5x5s16C(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int16_t* dst, uint32_t dstStride, int blurBorder);
void pxrFilterGaussian5x5s32C(const int32_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int32_t* dst, uint32_t dstStride, int blurBorder);

// Box filters on bytes: every pixel written; the plain ones pad with 0.
void pxrBoxFilter3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
int pxrBoxFilter3x3u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
void pxrBoxFilter5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
void pxrBoxFilter11x11u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride);

// Float box mean over the cropped N x N window; dst may be src.
void pxrBoxFilterNxNf32C(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         float* dst, uint32_t dstStride);

// Local normalisation on N x N box means; 0, or 5 without scratch memory.
int pxrNormalizeLocalBoxu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t N, uint8_t* dst, uint32_t dstStride);
int pxrNormalizeLocalBoxf32C(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t N, float* dst, uint32_t dstStride);

PXR_REFERENCE(PXR_ROW_FilterGaussian5x5u8, pxrFilterGaussian5x5u8C)
PXR_REFERENCE(PXR_ROW_FilterGaussian11x11u8, pxrFilterGaussian11x11u8C)
PXR_REFERENCE(PXR_ROW_FilterGaussian5x5s16, pxrFilterGaussian5x5s16C)
PXR_REFERENCE(PXR_ROW_FilterGaussian5x5s32, pxrFilterGaussian5x5s32C)
PXR_REFERENCE(PXR_ROW_BoxFilter3x3u8, pxrBoxFilter3x3u8C)
PXR_REFERENCE(PXR_ROW_BoxFilter3x3u8_v2, pxrBoxFilter3x3u8_v2C)
PXR_REFERENCE(PXR_ROW_BoxFilter5x5u8, pxrBoxFilter5x5u8C)
PXR_REFERENCE(PXR_ROW_BoxFilter11x11u8, pxrBoxFilter11x11u8C)
PXR_REFERENCE(PXR_ROW_BoxFilterNxNf32, pxrBoxFilterNxNf32C)
PXR_REFERENCE(PXR_ROW_NormalizeLocalBoxu8, pxrNormalizeLocalBoxu8C)
PXR_REFERENCE(PXR_ROW_NormalizeLocalBoxf32, pxrNormalizeLocalBoxf32C)
