// Reference implementations of the linear filters: Sobel magnitude, Sobel derivatives and image gradients.
#pragma once

#include <cstdint>

#include "frame/registry.h"

// Sobel magnitude (row 217).
void pxrFilterSobel3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride);

// Separable M x N convolution of bytes to int16 with border handling
// (internal row 12): kernelX has M taps across, kernelY N taps down, both
// odd; true convolution (the last tap meets the first pixel), exact sums
// saturated to int16. Returns 0, 3 for kernel sizes that are even, 0 or
// above 31, 5 without scratch memory.
int pxrFilterConvSepMxNs16C(const int16_t* kernelX, uint32_t M, const int16_t* kernelY, uint32_t N,
                            const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);

// Sobel derivatives to 16 bits (rows 409-411).
int pxrFilterSobel3x3u8s16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue);
int pxrFilterSobel5x5u8s16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue);
int pxrFilterSobel7x7u8s16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue);

// Central-difference gradients (rows 270-273).
void pxrImageGradientInterleaveds16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* gradients, uint32_t gradStride);
void pxrImageGradientInterleavedf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* gradients, uint32_t gradStride);
void pxrImageGradientPlanars16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                int16_t* dx, int16_t* dy, uint32_t dxyStride);
void pxrImageGradientPlanarf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                float* dx, float* dy, uint32_t dxyStride);

// Sobel gradients normalised by 8 (rows 274-281).
void pxrImageGradientSobelInterleaveds16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, int16_t* gradients, uint32_t gradStride);
int pxrImageGradientSobelInterleaveds16_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* gradients, uint32_t gradStride);
void pxrImageGradientSobelInterleavedf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, float* gradients, uint32_t gradStride);
void pxrImageGradientSobelPlanars16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride);
int pxrImageGradientSobelPlanars16_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride);
void pxrImageGradientSobelPlanars8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, int8_t* dx, int8_t* dy, uint32_t dxyStride);
void pxrImageGradientSobelPlanarf32C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride);
void pxrImageGradientSobelPlanarf32f32C(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride);

// Scharr gradients (internal row 3).
void pxrImageGradientScharrInterleaveds16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, int16_t* gradients, uint32_t gradStride);

PXR_REFERENCE(PXR_ROW_FilterSobel3x3u8, pxrFilterSobel3x3u8C)
PXR_REFERENCE(PXR_ROW_FilterSobel3x3u8s16, pxrFilterSobel3x3u8s16C)
PXR_REFERENCE(PXR_ROW_FilterSobel5x5u8s16, pxrFilterSobel5x5u8s16C)
PXR_REFERENCE(PXR_ROW_FilterSobel7x7u8s16, pxrFilterSobel7x7u8s16C)
PXR_REFERENCE(PXR_ROW_ImageGradientInterleavedf32, pxrImageGradientInterleavedf32C)
PXR_REFERENCE(PXR_ROW_ImageGradientInterleaveds16, pxrImageGradientInterleaveds16C)
PXR_REFERENCE(PXR_ROW_ImageGradientPlanarf32, pxrImageGradientPlanarf32C)
PXR_REFERENCE(PXR_ROW_ImageGradientPlanars16, pxrImageGradientPlanars16C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelInterleavedf32, pxrImageGradientSobelInterleavedf32C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelInterleaveds16, pxrImageGradientSobelInterleaveds16C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelInterleaveds16_v3, pxrImageGradientSobelInterleaveds16_v3C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelPlanarf32, pxrImageGradientSobelPlanarf32C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelPlanarf32f32, pxrImageGradientSobelPlanarf32f32C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelPlanars16, pxrImageGradientSobelPlanars16C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelPlanars16_v3, pxrImageGradientSobelPlanars16_v3C)
PXR_REFERENCE(PXR_ROW_ImageGradientSobelPlanars8, pxrImageGradientSobelPlanars8C)
PXR_INTERNAL_REFERENCE(PXR_IROW_ImageGradientScharrInterleaveds16, pxrImageGradientScharrInterleaveds16C)
PXR_INTERNAL_REFERENCE(PXR_IROW_FilterConvSepMxNs16, pxrFilterConvSepMxNs16C)
