/* Pixora linear filters: correlation and convolution with caller kernels. */
#ifndef PIXORA_FILTERS_CORRELATION_H
#define PIXORA_FILTERS_CORRELATION_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* Integer results of the u8 correlations and convolutions: the sum (32-bit
   for the correlations, exact for the convolutions) is scaled by `shift`.
   shift > 0: (sum + 2^(shift-1)) >> shift (rounds half up); shift <= 0:
   sum x 2^-shift; a shift of 32 or more either way gives 0. The value is
   then clamped to 0..255 (u8) or saturated to int16 (s16). Kernels are
   row-major; 16-bit and float strides are in bytes. */

/* 3x3 correlation with an s8 kernel; writes rows and columns 1..size-2. */
PXR_API void pxrFilterCorr3x3s8(const int8_t* kernel, int32_t shift, const uint8_t* src, uint32_t w,
                                uint32_t h, uint8_t* dst);
PXR_API void pxrFilterCorr3x3s8_v2(const int8_t* kernel, int32_t shift, const uint8_t* src,
                                   uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint8_t* dst, uint32_t dstStride);

/* N x N correlation with an s8 kernel anchored at (N/2, N/2). Only pixels
   with a full neighbourhood are written (rows and columns N/2 to
   size - N/2 - 1). Returns 0, or 3 for bad arguments. */
PXR_API int pxrFilterCorrNxNu8(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src,
                               uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                               uint32_t dstStride);
PXR_API int pxrFilterCorrNxNu8s16(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src,
                                  uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, int16_t* dst,
                                  uint32_t dstStride);
/* Float kernel; stores the unclamped float sum, taps added in raster order. */
PXR_API int pxrFilterCorrNxNu8f32(const float* kernel, uint32_t N, const uint8_t* src, uint32_t srcWidth,
                                  uint32_t srcHeight, uint32_t srcStride, float* dst, uint32_t dstStride);

/* Separable correlation: the M x N correlation with the kernel
   kernelY[i] x kernelX[j] (M taps across, N down), scaled like
   pxrFilterCorrNxNu8. Writes columns M/2..width-M/2-1 of rows
   N/2..height-N/2-1. Returns 0, 3 for bad arguments, 5 without scratch
   memory. */
PXR_API int pxrFilterCorrSepMxNu8(const int8_t* kernelX, uint32_t M, const int8_t* kernelY, uint32_t N,
                                  int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                  uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Separable Q15 correlation on 16-bit images: a vertical pass from src into
   tmp, then a horizontal pass from tmp into dst, with the same kernel. Each
   sum is rounded as ((sum >> 14) + 1) >> 1 and saturated to int16; the
   kernel is cropped at the image edges without renormalisation. tmp holds
   w x h packed values and must not overlap src or dst. */
PXR_API void pxrFilterCorrSep9x9s16(const int16_t* knl, const int16_t* src, uint32_t w, uint32_t h,
                                    int16_t* tmp, int16_t* dst);
PXR_API void pxrFilterCorrSep9x9s16_v2(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h,
                                       uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                                       uint32_t dstStride);
PXR_API void pxrFilterCorrSep11x11s16(const int16_t* knl, const int16_t* src, uint32_t w, uint32_t h,
                                      int16_t* tmp, int16_t* dst);
PXR_API void pxrFilterCorrSep11x11s16_v2(const int16_t* kernel, const int16_t* srcImg, uint32_t w,
                                         uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                                         uint32_t dstStride);
PXR_API void pxrFilterCorrSep13x13s16(const int16_t* knl, const int16_t* src, uint32_t w, uint32_t h,
                                      int16_t* tmp, int16_t* dst);
PXR_API void pxrFilterCorrSep13x13s16_v2(const int16_t* kernel, const int16_t* srcImg, uint32_t w,
                                         uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                                         uint32_t dstStride);
PXR_API void pxrFilterCorrSep15x15s16(const int16_t* knl, const int16_t* src, uint32_t w, uint32_t h,
                                      int16_t* tmp, int16_t* dst);
PXR_API void pxrFilterCorrSep15x15s16_v2(const int16_t* kernel, const int16_t* srcImg, uint32_t w,
                                         uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                                         uint32_t dstStride);
PXR_API void pxrFilterCorrSep17x17s16(const int16_t* knl, const int16_t* src, uint32_t w, uint32_t h,
                                      int16_t* tmp, int16_t* dst);
PXR_API void pxrFilterCorrSep17x17s16_v2(const int16_t* kernel, const int16_t* srcImg, uint32_t w,
                                         uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                                         uint32_t dstStride);
PXR_API void pxrFilterCorrSepNxNs16(const int16_t* kernel, uint32_t knlSize, const int16_t* srcImg,
                                    uint32_t w, uint32_t h, uint32_t srcStride, int16_t* tmpImg,
                                    int16_t* dstImg, uint32_t dstStride);

/* Convolution with an s16 kernel (kernelWidth x kernelHeight, the kernel's
   last element meets the neighbourhood's first pixel) over a padded copy of
   src: every dst pixel is written. Border: PIXORA_BORDER_REPLICATE repeats
   the edge, PIXORA_BORDER_CONSTANT uses borderValue, PIXORA_BORDER_DEFAULT
   uses 0. Returns 0, 3 for bad arguments, 5 without scratch memory. */
PXR_API int pxrFilterConvolveMxNu8(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight,
                                   int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                   uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                                   pxrBorderType borderType, uint8_t borderValue);
PXR_API int pxrFilterConvolveMxNu8s16(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight,
                                      int32_t shift, const uint8_t* src, uint32_t srcWidth,
                                      uint32_t srcHeight, uint32_t srcStride, int16_t* dst,
                                      uint32_t dstStride, pxrBorderType borderType, uint8_t borderValue);

PXR_EXTERN_C_END

#endif
