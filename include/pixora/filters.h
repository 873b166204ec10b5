/* Pixora filters: linear and non-linear neighbourhood filters on images. */
#ifndef PIXORA_FILTERS_H
#define PIXORA_FILTERS_H

#include "pixora/types.h"
#include "pixora/filters_correlation.h"
#include "pixora/filters_gradient.h"
#include "pixora/filters_nonlinear.h"
#include "pixora/filters_smooth.h"

PXR_EXTERN_C_BEGIN

/* 3x3 Gaussian ([1 2 1] x [1 2 1] / 16, truncating). blurBorder 1 also
   writes the border with the kernel cropped and renormalised. */
PXR_API void pxrFilterGaussian3x3u8(const uint8_t* src, uint32_t width, uint32_t height,
                                    uint8_t* dst, int blurBorder);
PXR_API void pxrFilterGaussian3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                       int blurBorder);
PXR_API int pxrFilterGaussian3x3u8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                      pxrBorderType borderType, uint8_t borderValue);

/* 3x3 median. The plain and _v2 forms write only the interior. */
PXR_API void pxrFilterMedian3x3u8(const uint8_t* src, uint32_t width, uint32_t height,
                                  uint8_t* dst);
PXR_API void pxrFilterMedian3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API int pxrFilterMedian3x3u8_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                    pxrBorderType borderType, uint8_t borderValue);

PXR_EXTERN_C_END

#endif
