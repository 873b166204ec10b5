// Reference implementations of the linear filters: correlation and convolution with caller kernels.
#pragma once

#include <cstdint>

#include "frame/registry.h"

// 3x3 and N x N correlation with s8 kernels (interior only).
void pxrFilterCorr3x3s8C(const int8_t* kernel, int32_t shift, const uint8_t* src, uint32_t srcWidth,
                         uint32_t srcHeight, uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
int pxrFilterCorrNxNu8C(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src, uint32_t srcWidth,
                        uint32_t srcHeight, uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
int pxrFilterCorrNxNu8s16C(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src,
                           uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, int16_t* dst,
                           uint32_t dstStride);
int pxrFilterCorrNxNu8f32C(const float* kernel, uint32_t N, const uint8_t* src, uint32_t srcWidth,
                           uint32_t srcHeight, uint32_t srcStride, float* dst, uint32_t dstStride);

// Separable correlation on bytes with s8 kernels.
int pxrFilterCorrSepMxNu8C(const int8_t* kernelX, uint32_t M, const int8_t* kernelY, uint32_t N, int32_t shift,
                           const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride);

// Separable Q15 correlation on 16-bit images through the caller's tmp image.
void pxrFilterCorrSep9x9s16C(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h,
                             uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg, uint32_t dstStride);
void pxrFilterCorrSep11x11s16C(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h,
                               uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg, uint32_t dstStride);
void pxrFilterCorrSep13x13s16C(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h,
                               uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg, uint32_t dstStride);
void pxrFilterCorrSep15x15s16C(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h,
                               uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg, uint32_t dstStride);
void pxrFilterCorrSep17x17s16C(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h,
                               uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg, uint32_t dstStride);
void pxrFilterCorrSepNxNs16C(const int16_t* kernel, uint32_t knlSize, const int16_t* srcImg, uint32_t w,
                             uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                             uint32_t dstStride);

// Convolution with s16 kernels over a padded copy in scratch memory.
int pxrFilterConvolveMxNu8C(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight, int32_t shift,
                            const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
int pxrFilterConvolveMxNu8s16C(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight,
                               int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, int16_t* dst, uint32_t dstStride, uint32_t borderType,
                               uint8_t borderValue);

PXR_REFERENCE(PXR_ROW_FilterCorr3x3s8_v2, pxrFilterCorr3x3s8C)
PXR_REFERENCE(PXR_ROW_FilterCorrNxNu8, pxrFilterCorrNxNu8C)
PXR_REFERENCE(PXR_ROW_FilterCorrNxNu8s16, pxrFilterCorrNxNu8s16C)
PXR_REFERENCE(PXR_ROW_FilterCorrNxNu8f32, pxrFilterCorrNxNu8f32C)
PXR_REFERENCE(PXR_ROW_FilterCorrSepMxNu8, pxrFilterCorrSepMxNu8C)
PXR_REFERENCE(PXR_ROW_FilterCorrSep9x9s16, pxrFilterCorrSep9x9s16C)
PXR_REFERENCE(PXR_ROW_FilterCorrSep11x11s16, pxrFilterCorrSep11x11s16C)
PXR_REFERENCE(PXR_ROW_FilterCorrSep13x13s16, pxrFilterCorrSep13x13s16C)
PXR_REFERENCE(PXR_ROW_FilterCorrSep15x15s16, pxrFilterCorrSep15x15s16C)
PXR_REFERENCE(PXR_ROW_FilterCorrSep17x17s16, pxrFilterCorrSep17x17s16C)
PXR_REFERENCE(PXR_ROW_FilterCorrSepNxNs16, pxrFilterCorrSepNxNs16C)
PXR_REFERENCE(PXR_ROW_FilterConvolveMxNu8, pxrFilterConvolveMxNu8C)
PXR_REFERENCE(PXR_ROW_FilterConvolveMxNu8s16, pxrFilterConvolveMxNu8s16C)
