/* Pixora linear filters: Gaussian 5x5/11x11 (u8, s16, s32), box filters and local normalisation. */
#ifndef PIXORA_FILTERS_SMOOTH_H
#define PIXORA_FILTERS_SMOOTH_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* Gaussian blurs with binomial kernels: 5x5 is [1 4 6 4 1] x [1 4 6 4 1]
   (sum 256), 11x11 is row 10 of Pascal's triangle,
   [1 10 45 120 210 252 210 120 45 10 1], with itself (sum 2^20). Pixels with
   the whole kernel inside the image get the weighted sum shifted right by 8
   (5x5) or 20 (11x11). With blurBorder 1, every pixel within 2 (5x5) or 5
   (11x11) of an edge gets the sum over its in-image taps divided by those
   taps' weights; any other blurBorder leaves those pixels of dst unwritten.
   Results round towards minus infinity (truncation on bytes; the signed
   images' shift is arithmetic and their border division floors too).
   Strides are in bytes; 0 means packed. The plain forms take packed rows. */
PXR_API void pxrFilterGaussian5x5u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst,
                                    int blurBorder);
PXR_API void pxrFilterGaussian5x5u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder);
PXR_API void pxrFilterGaussian11x11u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst,
                                      int blurBorder);
PXR_API void pxrFilterGaussian11x11u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder);
PXR_API void pxrFilterGaussian5x5s16(const int16_t* src, uint32_t width, uint32_t height, int16_t* dst,
                                     int blurBorder);
PXR_API void pxrFilterGaussian5x5s16_v2(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, int16_t* dst, uint32_t dstStride, int blurBorder);
PXR_API void pxrFilterGaussian5x5s32(const int32_t* src, uint32_t width, uint32_t height, int32_t* dst,
                                     int blurBorder);
PXR_API void pxrFilterGaussian5x5s32_v2(const int32_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, int32_t* dst, uint32_t dstStride, int blurBorder);

/* Box filters on bytes: the N x N mean in fixed point,
   (sum x multiplier + 32768) >> 16 with multiplier 7282 (3x3), 2621 (5x5) or
   542 (11x11). Every pixel of dst is written. Taps outside the image are 0
   for the plain forms (packed rows) and follow borderType for
   pxrBoxFilter3x3u8_v2: PIXORA_BORDER_CONSTANT takes borderValue,
   PIXORA_BORDER_REPLICATE the nearest edge pixel, PIXORA_BORDER_DEFAULT 0.
   pxrBoxFilter3x3u8_v2 returns 0, or 3 for a border type above 2, a null
   image or a zero size or a stride (after 0 became the width) below the
   width. */
PXR_API void pxrBoxFilter3x3u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst);
PXR_API int pxrBoxFilter3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride, pxrBorderType borderType,
                                 uint8_t borderValue);
PXR_API void pxrBoxFilter5x5u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst);
PXR_API void pxrBoxFilter11x11u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst);

/* Float box mean over the N x N window [x - N/2, x - N/2 + N - 1] (likewise
   in y), cropped to the image: near an edge the mean is over the in-image
   pixels. The sum runs down the window, then across it, and is divided by
   the pixel count. src and dst may be the same buffer with equal strides. Every
   pixel of dst is written, or none when no scratch memory can be had.
   Strides in bytes; 0 means packed. */
PXR_API void pxrBoxFilterNxNf32(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint32_t N, float* dst, uint32_t dstStride);

/* Local normalisation over the same cropped N x N box window (2 <= N <= 255):
   mean m = E[x], variance v = E[x^2] - m^2 from box sums, z = (x - m) / sqrt(v).
   - u8: v is floored at 1 (one grey level) and dst = 128 + 64 z rounded to
     nearest and saturated to 0..255 (+-2 deviations span the byte range);
   - f32: v is floored at E[x^2] / 2^20 and dst = z (0 where the window is
     all zeros).
   src and dst may be the same buffer with equal strides. Returns 0; 3 for a
   null image, a zero size, N outside 2..255, a stride (after 0 became the
   packed row size) below the row size, or src == dst with different
   strides; 5 when no scratch memory can be had. dst is unchanged on 3 and 5. */
PXR_API int pxrNormalizeLocalBoxu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t N, uint8_t* dst, uint32_t dstStride);
PXR_API int pxrNormalizeLocalBoxf32(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint32_t N, float* dst, uint32_t dstStride);

PXR_EXTERN_C_END

#endif
