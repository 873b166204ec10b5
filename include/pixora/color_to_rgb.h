/* Pixora colour: conversions from YCbCr (to packed RGB, between YCbCr layouts, the JPEG-style and video-range decoders). */
#ifndef PIXORA_COLOR_TO_RGB_H
#define PIXORA_COLOR_TO_RGB_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* Layouts. Planar YCbCr: three planes Y, Cb, Cr. Pseudo-planar: a Y plane
   and one plane of interleaved chroma pairs, Cb in the even byte and Cr in
   the odd byte (YCrCb: Cr first). 444 has a chroma sample per pixel, 422 one
   per two pixels of a row, 420 one per 2 x 2 block. With an odd width or
   height the last chroma column or row covers the single pixel column or
   row left: a 420 plane has ceil(width / 2) x ceil(height / 2) samples.

   Strides are in bytes, one per plane; 0 means packed: the width for Y,
   the chroma width for planar chroma (width for 444, ceil(width / 2) for 422
   and 420), 2 x ceil(width / 2) for 422/420 pseudo-planar chroma (2 x width
   for 444), width x 2, 3 or 4 for RGB565, RGB888, RGBA8888. Buffers must not
   overlap (except the chroma byte swap, which may run in place).

   A bad argument (a null plane, a zero size, a stride below its packed
   value) logs "Assertion failed @<function>: <condition>" and writes
   nothing. */

/* YCbCr to packed RGB. Per pixel, with Cb' = Cb - 128, Cr' = Cr - 128 and
   base = 256 Y + 128: byte 0 (red) = (base + 359 Cr') >> 8, byte 1 (green) =
   (base - 88 Cb' - 183 Cr') >> 8, byte 2 (blue) = (base + 454 Cb') >> 8, each
   clamped to 0..255. Each chroma sample is used unchanged for every pixel it
   covers. RGBA8888 writes alpha 255. RGB565 packs red in bits 11..15, green
   in bits 5..10 and blue in bits 0..4 of a 16-bit word (the top bits of each
   component). */
PXR_API void pxrColorYCbCr444PlanarToRGB565u8(const uint8_t* srcY, const uint8_t* srcCb,
                                              const uint8_t* srcCr, uint32_t srcWidth,
                                              uint32_t srcHeight, uint32_t srcYStride,
                                              uint32_t srcCbStride, uint32_t srcCrStride,
                                              uint16_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr444PlanarToRGB888u8(const uint8_t* srcY, const uint8_t* srcCb,
                                              const uint8_t* srcCr, uint32_t srcWidth,
                                              uint32_t srcHeight, uint32_t srcYStride,
                                              uint32_t srcCbStride, uint32_t srcCrStride,
                                              uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr444PlanarToRGBA8888u8(const uint8_t* srcY, const uint8_t* srcCb,
                                                const uint8_t* srcCr, uint32_t srcWidth,
                                                uint32_t srcHeight, uint32_t srcYStride,
                                                uint32_t srcCbStride, uint32_t srcCrStride,
                                                uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr422PlanarToRGB565u8(const uint8_t* srcY, const uint8_t* srcCb,
                                              const uint8_t* srcCr, uint32_t srcWidth,
                                              uint32_t srcHeight, uint32_t srcYStride,
                                              uint32_t srcCbStride, uint32_t srcCrStride,
                                              uint16_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr422PlanarToRGB888u8(const uint8_t* srcY, const uint8_t* srcCb,
                                              const uint8_t* srcCr, uint32_t srcWidth,
                                              uint32_t srcHeight, uint32_t srcYStride,
                                              uint32_t srcCbStride, uint32_t srcCrStride,
                                              uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr422PlanarToRGBA8888u8(const uint8_t* srcY, const uint8_t* srcCb,
                                                const uint8_t* srcCr, uint32_t srcWidth,
                                                uint32_t srcHeight, uint32_t srcYStride,
                                                uint32_t srcCbStride, uint32_t srcCrStride,
                                                uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr420PlanarToRGB565u8(const uint8_t* srcY, const uint8_t* srcCb,
                                              const uint8_t* srcCr, uint32_t srcWidth,
                                              uint32_t srcHeight, uint32_t srcYStride,
                                              uint32_t srcCbStride, uint32_t srcCrStride,
                                              uint16_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr420PlanarToRGB888u8(const uint8_t* srcY, const uint8_t* srcCb,
                                              const uint8_t* srcCr, uint32_t srcWidth,
                                              uint32_t srcHeight, uint32_t srcYStride,
                                              uint32_t srcCbStride, uint32_t srcCrStride,
                                              uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr420PlanarToRGBA8888u8(const uint8_t* srcY, const uint8_t* srcCb,
                                                const uint8_t* srcCr, uint32_t srcWidth,
                                                uint32_t srcHeight, uint32_t srcYStride,
                                                uint32_t srcCbStride, uint32_t srcCrStride,
                                                uint8_t* dst, uint32_t dstStride);

PXR_API void pxrColorYCbCr444PseudoPlanarToRGB565u8(const uint8_t* srcY, const uint8_t* srcC,
                                                    uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcYStride, uint32_t srcCStride,
                                                    uint16_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr444PseudoPlanarToRGB888u8(const uint8_t* srcY, const uint8_t* srcC,
                                                    uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcYStride, uint32_t srcCStride,
                                                    uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr444PseudoPlanarToRGBA8888u8(const uint8_t* srcY, const uint8_t* srcC,
                                                      uint32_t srcWidth, uint32_t srcHeight,
                                                      uint32_t srcYStride, uint32_t srcCStride,
                                                      uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToRGB565u8(const uint8_t* srcY, const uint8_t* srcC,
                                                    uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcYStride, uint32_t srcCStride,
                                                    uint16_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToRGB888u8(const uint8_t* srcY, const uint8_t* srcC,
                                                    uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcYStride, uint32_t srcCStride,
                                                    uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToRGBA8888u8(const uint8_t* srcY, const uint8_t* srcC,
                                                      uint32_t srcWidth, uint32_t srcHeight,
                                                      uint32_t srcYStride, uint32_t srcCStride,
                                                      uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToRGB565u8(const uint8_t* srcY, const uint8_t* srcC,
                                                    uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcYStride, uint32_t srcCStride,
                                                    uint16_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToRGB888u8(const uint8_t* srcY, const uint8_t* srcC,
                                                    uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcYStride, uint32_t srcCStride,
                                                    uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToRGBA8888u8(const uint8_t* srcY, const uint8_t* srcC,
                                                      uint32_t srcWidth, uint32_t srcHeight,
                                                      uint32_t srcYStride, uint32_t srcCStride,
                                                      uint8_t* dst, uint32_t dstStride);

/* The same from a 420 pseudo-planar image whose chroma pairs hold Cr first,
   to four bytes per pixel (R, G, B, 255). */
PXR_API void pxrColorYCrCb420PseudoPlanarToRGB8888u8(const uint8_t* srcY, const uint8_t* srcC,
                                                     uint32_t srcWidth, uint32_t srcHeight,
                                                     uint32_t srcYStride, uint32_t srcCStride,
                                                     uint8_t* dst, uint32_t dstStride);

/* JPEG-style decoders from a Y plane and an interleaved chroma plane of Cr,
   Cb pairs, the chroma subsampled by H (1 or 2) horizontally and V (1 or 2)
   vertically, to RGB888 (byte 0 red). Full-range JPEG weights in fixed
   point: R = Y + round(1.402 Cr'), G = Y + round(-0.344136 Cb' - 0.714136
   Cr'), B = Y + round(1.772 Cb'), each clamped to 0..255. The weights are
   held as 22970, 5638, 11700 and 29032 / 16384; with the chroma differences
   doubled each sum is rounded once by + 16384 and >> 15.
   H1V1 inverts pxrColorRGB888toYCrCbu8 within one step. */
PXR_API void pxrColorYCrCbH1V1toRGB888u8(const uint8_t* srcY, const uint8_t* srcC,
                                         uint32_t srcWidth, uint32_t srcHeight, uint32_t srcYStride,
                                         uint32_t srcCStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCrCbH2V1toRGB888u8(const uint8_t* srcY, const uint8_t* srcC,
                                         uint32_t srcWidth, uint32_t srcHeight, uint32_t srcYStride,
                                         uint32_t srcCStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCrCbH1V2toRGB888u8(const uint8_t* srcY, const uint8_t* srcC,
                                         uint32_t srcWidth, uint32_t srcHeight, uint32_t srcYStride,
                                         uint32_t srcCStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrColorYCrCbH2V2toRGB888u8(const uint8_t* srcY, const uint8_t* srcC,
                                         uint32_t srcWidth, uint32_t srcHeight, uint32_t srcYStride,
                                         uint32_t srcCStride, uint8_t* dst, uint32_t dstStride);

/* Video-range YUV 4:2:0 to RGB565. src holds the Y plane (width x height
   bytes) followed at once by the interleaved chroma plane (ceil(height / 2)
   rows of ceil(width / 2) pairs, U first); dst receives width x height
   16-bit words, packed. With C = 298 (Y - 16), U' = U - 128, V' = V - 128:
   (C + 517 U') >> 8 goes to bits 11..15, (C - 100 U' - 208 V') >> 8 to bits
   5..10 and (C + 409 V') >> 8 to bits 0..4 (each clamped to 0..255, top bits
   kept). The Rotate180 form writes the same image turned by 180 degrees. */
PXR_API void pxrColorYUV420toRGB565u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint16_t* dst);
PXR_API void pxrColorYUV420toRGB565u8Rotate180(const uint8_t* src, uint32_t srcWidth,
                                               uint32_t srcHeight, uint16_t* dst);

/* Layout changes between YCbCr layouts. Y is copied. Chroma is split or
   interleaved, and changes resolution as the names say: halving takes the
   rounded mean of the samples covered ((a + b + 1) >> 1 along one direction,
   (a + b + c + d + 2) >> 2 over a 2 x 2 block; at an odd edge the lone
   sample is taken as it is), doubling replicates each sample. */
PXR_API void pxrColorYCbCr444PlanarToYCbCr422Planaru8(const uint8_t* srcY, const uint8_t* srcCb,
                                                      const uint8_t* srcCr, uint32_t srcWidth,
                                                      uint32_t srcHeight, uint32_t srcYStride,
                                                      uint32_t srcCbStride, uint32_t srcCrStride,
                                                      uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr,
                                                      uint32_t dstYStride, uint32_t dstCbStride,
                                                      uint32_t dstCrStride);
PXR_API void pxrColorYCbCr444PlanarToYCbCr420Planaru8(const uint8_t* srcY, const uint8_t* srcCb,
                                                      const uint8_t* srcCr, uint32_t srcWidth,
                                                      uint32_t srcHeight, uint32_t srcYStride,
                                                      uint32_t srcCbStride, uint32_t srcCrStride,
                                                      uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr,
                                                      uint32_t dstYStride, uint32_t dstCbStride,
                                                      uint32_t dstCrStride);
PXR_API void pxrColorYCbCr422PlanarToYCbCr444Planaru8(const uint8_t* srcY, const uint8_t* srcCb,
                                                      const uint8_t* srcCr, uint32_t srcWidth,
                                                      uint32_t srcHeight, uint32_t srcYStride,
                                                      uint32_t srcCbStride, uint32_t srcCrStride,
                                                      uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr,
                                                      uint32_t dstYStride, uint32_t dstCbStride,
                                                      uint32_t dstCrStride);
PXR_API void pxrColorYCbCr422PlanarToYCbCr420Planaru8(const uint8_t* srcY, const uint8_t* srcCb,
                                                      const uint8_t* srcCr, uint32_t srcWidth,
                                                      uint32_t srcHeight, uint32_t srcYStride,
                                                      uint32_t srcCbStride, uint32_t srcCrStride,
                                                      uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr,
                                                      uint32_t dstYStride, uint32_t dstCbStride,
                                                      uint32_t dstCrStride);
PXR_API void pxrColorYCbCr420PlanarToYCbCr444Planaru8(const uint8_t* srcY, const uint8_t* srcCb,
                                                      const uint8_t* srcCr, uint32_t srcWidth,
                                                      uint32_t srcHeight, uint32_t srcYStride,
                                                      uint32_t srcCbStride, uint32_t srcCrStride,
                                                      uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr,
                                                      uint32_t dstYStride, uint32_t dstCbStride,
                                                      uint32_t dstCrStride);
PXR_API void pxrColorYCbCr420PlanarToYCbCr422Planaru8(const uint8_t* srcY, const uint8_t* srcCb,
                                                      const uint8_t* srcCr, uint32_t srcWidth,
                                                      uint32_t srcHeight, uint32_t srcYStride,
                                                      uint32_t srcCbStride, uint32_t srcCrStride,
                                                      uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr,
                                                      uint32_t dstYStride, uint32_t dstCbStride,
                                                      uint32_t dstCrStride);

PXR_API void pxrColorYCbCr444PlanarToYCbCr444PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr444PlanarToYCbCr422PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr444PlanarToYCbCr420PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr422PlanarToYCbCr444PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr422PlanarToYCbCr422PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr422PlanarToYCbCr420PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr420PlanarToYCbCr444PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr420PlanarToYCbCr422PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);
PXR_API void pxrColorYCbCr420PlanarToYCbCr420PseudoPlanaru8(const uint8_t* srcY,
                                                            const uint8_t* srcCb,
                                                            const uint8_t* srcCr, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCbStride,
                                                            uint32_t srcCrStride, uint8_t* dstY,
                                                            uint8_t* dstC, uint32_t dstYStride,
                                                            uint32_t dstCStride);

PXR_API void pxrColorYCbCr444PseudoPlanarToYCbCr444Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr444PseudoPlanarToYCbCr422Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr444PseudoPlanarToYCbCr420Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToYCbCr444Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToYCbCr422Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToYCbCr420Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToYCbCr444Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToYCbCr422Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToYCbCr420Planaru8(const uint8_t* srcY,
                                                            const uint8_t* srcC, uint32_t srcWidth,
                                                            uint32_t srcHeight, uint32_t srcYStride,
                                                            uint32_t srcCStride, uint8_t* dstY,
                                                            uint8_t* dstCb, uint8_t* dstCr,
                                                            uint32_t dstYStride,
                                                            uint32_t dstCbStride,
                                                            uint32_t dstCrStride);

PXR_API void pxrColorYCbCr444PseudoPlanarToYCbCr422PseudoPlanaru8(const uint8_t* srcY,
                                                                  const uint8_t* srcC,
                                                                  uint32_t srcWidth,
                                                                  uint32_t srcHeight,
                                                                  uint32_t srcYStride,
                                                                  uint32_t srcCStride,
                                                                  uint8_t* dstY, uint8_t* dstC,
                                                                  uint32_t dstYStride,
                                                                  uint32_t dstCStride);
PXR_API void pxrColorYCbCr444PseudoPlanarToYCbCr420PseudoPlanaru8(const uint8_t* srcY,
                                                                  const uint8_t* srcC,
                                                                  uint32_t srcWidth,
                                                                  uint32_t srcHeight,
                                                                  uint32_t srcYStride,
                                                                  uint32_t srcCStride,
                                                                  uint8_t* dstY, uint8_t* dstC,
                                                                  uint32_t dstYStride,
                                                                  uint32_t dstCStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToYCbCr444PseudoPlanaru8(const uint8_t* srcY,
                                                                  const uint8_t* srcC,
                                                                  uint32_t srcWidth,
                                                                  uint32_t srcHeight,
                                                                  uint32_t srcYStride,
                                                                  uint32_t srcCStride,
                                                                  uint8_t* dstY, uint8_t* dstC,
                                                                  uint32_t dstYStride,
                                                                  uint32_t dstCStride);
PXR_API void pxrColorYCbCr422PseudoPlanarToYCbCr420PseudoPlanaru8(const uint8_t* srcY,
                                                                  const uint8_t* srcC,
                                                                  uint32_t srcWidth,
                                                                  uint32_t srcHeight,
                                                                  uint32_t srcYStride,
                                                                  uint32_t srcCStride,
                                                                  uint8_t* dstY, uint8_t* dstC,
                                                                  uint32_t dstYStride,
                                                                  uint32_t dstCStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToYCbCr444PseudoPlanaru8(const uint8_t* srcY,
                                                                  const uint8_t* srcC,
                                                                  uint32_t srcWidth,
                                                                  uint32_t srcHeight,
                                                                  uint32_t srcYStride,
                                                                  uint32_t srcCStride,
                                                                  uint8_t* dstY, uint8_t* dstC,
                                                                  uint32_t dstYStride,
                                                                  uint32_t dstCStride);
PXR_API void pxrColorYCbCr420PseudoPlanarToYCbCr422PseudoPlanaru8(const uint8_t* srcY,
                                                                  const uint8_t* srcC,
                                                                  uint32_t srcWidth,
                                                                  uint32_t srcHeight,
                                                                  uint32_t srcYStride,
                                                                  uint32_t srcCStride,
                                                                  uint8_t* dstY, uint8_t* dstC,
                                                                  uint32_t dstYStride,
                                                                  uint32_t dstCStride);

/* Exchanges the two bytes of every chroma pair of an interleaved plane
   (CbCr <-> CrCb). srcWidth counts pairs per row; strides are in bytes
   (0: 2 x srcWidth). src and dst may be the same buffer with equal strides. */
PXR_API void pxrColorCbCrSwapu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

PXR_EXTERN_C_END

#endif
