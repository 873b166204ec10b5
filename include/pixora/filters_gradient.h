/* Pixora linear filters: Sobel magnitude, Sobel derivatives and image gradients. */
#ifndef PIXORA_FILTERS_GRADIENT_H
#define PIXORA_FILTERS_GRADIENT_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* Strides are in bytes; a stride of 0 means packed rows. */

/* Sobel edge magnitude: min(|Gx| + |Gy|, 255) for every interior pixel; the
   outermost rows and columns of dst are not written. */
PXR_API void pxrFilterSobel3x3u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst);
PXR_API void pxrFilterSobel3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Sobel derivatives to signed 16 bits, unnormalised, for every pixel: dx
   smooths vertically with the binomial kernel and differentiates
   horizontally (right minus left), dy the reverse. Outside pixels come from
   the border rule: PIXORA_BORDER_CONSTANT uses borderValue,
   PIXORA_BORDER_REPLICATE the nearest edge pixel, PIXORA_BORDER_DEFAULT the
   value 0. dx and dy share dstStride; either may be null (only the other is
   written). The 7x7 sums are saturated to the int16 range.
   Returns 0; 3 for bad arguments (both outputs null, a border type above 2,
   a zero size, a stride below the row size); 5 without scratch memory. On 3
   and 5 nothing is written. */
PXR_API int pxrFilterSobel3x3u8s16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                   uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dstStride,
                                   pxrBorderType borderType, uint8_t borderValue);
PXR_API int pxrFilterSobel5x5u8s16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                   uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dstStride,
                                   pxrBorderType borderType, uint8_t borderValue);
PXR_API int pxrFilterSobel7x7u8s16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                   uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dstStride,
                                   pxrBorderType borderType, uint8_t borderValue);

/* Gradients of the interior pixels. The output is (width-2) x (height-2),
   packed from its first element: the gradient of source pixel (x, y) is at
   output (x-1, y-1). Interleaved forms store dx then dy; planar forms write
   dx and dy to two images that share one stride (dxyStride). The forms
   without an output stride write packed rows. Images narrower or lower than
   3 have no interior and leave the output untouched. */

/* Central differences, unscaled: dx = src(x+1, y) - src(x-1, y),
   dy = src(x, y+1) - src(x, y-1). */
PXR_API void pxrImageGradientInterleaveds16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* gradients);
PXR_API void pxrImageGradientInterleaveds16_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, int16_t* gradients, uint32_t gradStride);
PXR_API void pxrImageGradientInterleavedf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, float* gradients);
PXR_API void pxrImageGradientInterleavedf32_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, float* gradients, uint32_t gradStride);
PXR_API void pxrImageGradientPlanars16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, int16_t* dx, int16_t* dy);
PXR_API void pxrImageGradientPlanars16_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride);
PXR_API void pxrImageGradientPlanarf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, float* dx, float* dy);
PXR_API void pxrImageGradientPlanarf32_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride);

/* 3x3 Sobel gradients normalised by 8: integer forms shift the sum right by
   3 (arithmetic, so -1 becomes -1), float forms multiply it by 0.125. The
   _v3 forms compute the same and return 0, or 3 after logging a failed
   argument check. */
PXR_API void pxrImageGradientSobelInterleaveds16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                 uint32_t srcStride, int16_t* gradients);
PXR_API void pxrImageGradientSobelInterleaveds16_v2(const uint8_t* src, uint32_t srcWidth,
                                                    uint32_t srcHeight, uint32_t srcStride,
                                                    int16_t* gradients, uint32_t gradStride);
PXR_API int pxrImageGradientSobelInterleaveds16_v3(const uint8_t* src, uint32_t srcWidth,
                                                   uint32_t srcHeight, uint32_t srcStride,
                                                   int16_t* gradients, uint32_t gradStride);
PXR_API void pxrImageGradientSobelInterleavedf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                 uint32_t srcStride, float* gradients);
PXR_API void pxrImageGradientSobelInterleavedf32_v2(const uint8_t* src, uint32_t srcWidth,
                                                    uint32_t srcHeight, uint32_t srcStride, float* gradients,
                                                    uint32_t gradStride);
PXR_API void pxrImageGradientSobelPlanars16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* dx, int16_t* dy);
PXR_API void pxrImageGradientSobelPlanars16_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, int16_t* dx, int16_t* dy,
                                               uint32_t dxyStride);
PXR_API int pxrImageGradientSobelPlanars16_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, int16_t* dx, int16_t* dy,
                                              uint32_t dxyStride);
/* The shifted sums lie in -128..127 and are stored as signed bytes. */
PXR_API void pxrImageGradientSobelPlanars8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, int8_t* dx, int8_t* dy);
PXR_API void pxrImageGradientSobelPlanars8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, int8_t* dx, int8_t* dy, uint32_t dxyStride);
PXR_API void pxrImageGradientSobelPlanarf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, float* dx, float* dy);
PXR_API void pxrImageGradientSobelPlanarf32_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride);
/* Float source. Each side is summed as (a + 2 b) + c, then
   dx = (right - left) x 0.125 and dy = ((dl + 2 dc) + dr) x 0.125 with
   d = bottom - top per column. */
PXR_API void pxrImageGradientSobelPlanarf32f32(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, float* dx, float* dy);
PXR_API void pxrImageGradientSobelPlanarf32f32_v2(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                                  uint32_t srcStride, float* dx, float* dy,
                                                  uint32_t dxyStride);

/* Scharr gradients, unshifted: dx = 3 x (the two diagonal differences
   right - left, summed) + 10 x the axial one, dy likewise down the rows. */
PXR_API void pxrImageGradientScharrInterleaveds16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                  uint32_t srcStride, int16_t* gradients, uint32_t gradStride);

PXR_EXTERN_C_END

#endif
