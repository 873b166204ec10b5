// Vector (kind 1) implementations of the linear filters: Sobel magnitude, Sobel derivatives and image gradients.
#pragma once

#include "imgproc/filters/gradient.h"

void pxrFilterSobel3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride);

int pxrFilterConvSepMxNs16V(const int16_t* kernelX, uint32_t M, const int16_t* kernelY, uint32_t N,
                            const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue);
int pxrFilterSobel3x3u8s16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue);
int pxrFilterSobel5x5u8s16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue);
int pxrFilterSobel7x7u8s16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue);

void pxrImageGradientInterleaveds16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* gradients, uint32_t gradStride);
void pxrImageGradientInterleavedf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* gradients, uint32_t gradStride);
void pxrImageGradientPlanars16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                int16_t* dx, int16_t* dy, uint32_t dxyStride);
void pxrImageGradientPlanarf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                float* dx, float* dy, uint32_t dxyStride);

void pxrImageGradientSobelInterleaveds16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, int16_t* gradients, uint32_t gradStride);
int pxrImageGradientSobelInterleaveds16_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* gradients, uint32_t gradStride);
void pxrImageGradientSobelInterleavedf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, float* gradients, uint32_t gradStride);
void pxrImageGradientSobelPlanars16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride);
int pxrImageGradientSobelPlanars16_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride);
void pxrImageGradientSobelPlanars8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, int8_t* dx, int8_t* dy, uint32_t dxyStride);
void pxrImageGradientSobelPlanarf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride);
void pxrImageGradientSobelPlanarf32f32V(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride);

void pxrImageGradientScharrInterleaveds16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, int16_t* gradients, uint32_t gradStride);

namespace pxr {
// The dedicated 3x3 pass of the Sobel derivatives in vectors: the interior
// of full-size dx and dy (either may be null).
void sobelDerivativesInteriorV(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, int16_t* dx,
                               int16_t* dy, uint32_t dstStride);
}  // namespace pxr

PXR_VECTOR(PXR_ROW_FilterSobel3x3u8, pxrFilterSobel3x3u8V)
PXR_VECTOR(PXR_ROW_FilterSobel3x3u8s16, pxrFilterSobel3x3u8s16V)
PXR_VECTOR(PXR_ROW_FilterSobel5x5u8s16, pxrFilterSobel5x5u8s16V)
PXR_VECTOR(PXR_ROW_FilterSobel7x7u8s16, pxrFilterSobel7x7u8s16V)
PXR_VECTOR(PXR_ROW_ImageGradientInterleavedf32, pxrImageGradientInterleavedf32V)
PXR_VECTOR(PXR_ROW_ImageGradientInterleaveds16, pxrImageGradientInterleaveds16V)
PXR_VECTOR(PXR_ROW_ImageGradientPlanarf32, pxrImageGradientPlanarf32V)
PXR_VECTOR(PXR_ROW_ImageGradientPlanars16, pxrImageGradientPlanars16V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelInterleavedf32, pxrImageGradientSobelInterleavedf32V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelInterleaveds16, pxrImageGradientSobelInterleaveds16V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelInterleaveds16_v3, pxrImageGradientSobelInterleaveds16_v3V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelPlanarf32, pxrImageGradientSobelPlanarf32V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelPlanarf32f32, pxrImageGradientSobelPlanarf32f32V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelPlanars16, pxrImageGradientSobelPlanars16V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelPlanars16_v3, pxrImageGradientSobelPlanars16_v3V)
PXR_VECTOR(PXR_ROW_ImageGradientSobelPlanars8, pxrImageGradientSobelPlanars8V)
PXR_INTERNAL_VECTOR(PXR_IROW_ImageGradientScharrInterleaveds16, pxrImageGradientScharrInterleaveds16V)
PXR_INTERNAL_VECTOR(PXR_IROW_FilterConvSepMxNs16, pxrFilterConvSepMxNs16V)
