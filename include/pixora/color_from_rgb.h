/* Pixora colour: conversions from packed RGB (to YCbCr, to other packed RGB, grey, HSV, LAB).

   Common to every function here:
   - Strides are in bytes, one per plane; a stride of 0 means packed rows
     (the width times the bytes per pixel; for chroma planes the chroma row,
     see below). Nothing is returned: bad arguments are logged
     ("Assertion failed @<function>: <condition>") and nothing is written.
   - RGB565 pixels are 16-bit little-endian words at any byte address: bits
     11..15 red, 5..10 green, 0..4 blue (BGR565: blue in 11..15). Widening to
     bytes replicates the top bits into the low bits; narrowing drops them.
   - RGB888 / RGBA8888 are bytes R, G, B (, A) in memory; BGR forms exchange
     the first and third bytes. A four-byte destination from a three-byte or
     565 source gets alpha 255. */
#ifndef PIXORA_COLOR_FROM_RGB_H
#define PIXORA_COLOR_FROM_RGB_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* The three argument lists of this family (undefined at the end). */
#define PXR_FROM_RGB_TO_PLANAR(name, SrcType)                                                            \
    PXR_API void name(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,     \
                      uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr, uint32_t dstYStride,                \
                      uint32_t dstCbStride, uint32_t dstCrStride)
#define PXR_FROM_RGB_TO_PSEUDO_PLANAR(name, SrcType)                                                     \
    PXR_API void name(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,     \
                      uint8_t* dstY, uint8_t* dstC, uint32_t dstYStride, uint32_t dstCStride)
#define PXR_FROM_RGB_PACKED_FN(name, SrcType, DstType)                                                   \
    PXR_API void name(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,     \
                      DstType* dst, uint32_t dstStride)

/* Packed RGB to YCbCr, per pixel with the bytes b0 b1 b2 in memory order:
     Y  = (29 b0 + 150 b1 + 77 b2 + 128) >> 8
     Cb = 128 + ((128 b0 - 85 b1 - 43 b2 + 128) >> 8)
     Cr = 128 + ((-21 b0 - 107 b1 + 128 b2 + 128) >> 8)
   (these weights read b0 as blue); a chroma value above 127 before the offset
   gives 255. RGB565 sources are widened to b0 b1 b2 first; the fourth byte of
   RGBA8888 is ignored.
   Subsampling: 444 one chroma sample per pixel, 422 per 2 x 1 pixels, 420 per
   2 x 2 pixels, computed from the rounded mean of the covered pixels. With an
   odd width (422, 420) or odd height (420) the last chroma column or row
   covers the one pixel column or row left, so chroma planes are
   chromaWidth = (srcWidth + 1) / 2 samples wide (srcWidth for 444) and
   (srcHeight + 1) / 2 rows high (420).
   Planar: dstY, dstCb, dstCr, each with its stride (packed: srcWidth,
   chromaWidth, chromaWidth). PseudoPlanar: dstY and one plane dstC of Cb, Cr
   byte pairs (packed: srcWidth and 2 x chromaWidth). */

PXR_FROM_RGB_TO_PLANAR(pxrColorRGB565ToYCbCr444Planaru8, uint16_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGB565ToYCbCr422Planaru8, uint16_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGB565ToYCbCr420Planaru8, uint16_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGB888ToYCbCr444Planaru8, uint8_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGB888ToYCbCr422Planaru8, uint8_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGB888ToYCbCr420Planaru8, uint8_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGBA8888ToYCbCr444Planaru8, uint8_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGBA8888ToYCbCr422Planaru8, uint8_t);
PXR_FROM_RGB_TO_PLANAR(pxrColorRGBA8888ToYCbCr420Planaru8, uint8_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGB565ToYCbCr444PseudoPlanaru8, uint16_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGB565ToYCbCr422PseudoPlanaru8, uint16_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGB565ToYCbCr420PseudoPlanaru8, uint16_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGB888ToYCbCr444PseudoPlanaru8, uint8_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGB888ToYCbCr422PseudoPlanaru8, uint8_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGB888ToYCbCr420PseudoPlanaru8, uint8_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGBA8888ToYCbCr444PseudoPlanaru8, uint8_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGBA8888ToYCbCr422PseudoPlanaru8, uint8_t);
PXR_FROM_RGB_TO_PSEUDO_PLANAR(pxrColorRGBA8888ToYCbCr420PseudoPlanaru8, uint8_t);

/* JPEG-style RGB888 (R, G, B) to Y, Cr, Cb interleaved, 3 bytes per pixel,
   full range, Q15 weights with rounding constant 16384 and a shift by 15:
     Y  = ( 9798 R + 19235 G +  3735 B + 16384) >> 15
     Cr = ((16384 R - 13720 G -  2664 B + 16384) >> 15) + 128, at most 255
     Cb = ((-5529 R - 10855 G + 16384 B + 16384) >> 15) + 128, at most 255 */
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888toYCrCbu8, uint8_t, uint8_t);

/* Between packed RGB formats: pure rearrangement of components (see the
   565 and alpha rules above). dst is uint16_t* for 565 destinations. */
PXR_FROM_RGB_PACKED_FN(pxrColorRGB565ToRGB888u8, uint16_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB565ToRGBA8888u8, uint16_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB565ToBGR565u8, uint16_t, uint16_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB565ToBGR888u8, uint16_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB565ToBGRA8888u8, uint16_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToRGB565u8, uint8_t, uint16_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToRGBA8888u8, uint8_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToBGR565u8, uint8_t, uint16_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToBGR888u8, uint8_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToBGRA8888u8, uint8_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGBA8888ToRGB565u8, uint8_t, uint16_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGBA8888ToRGB888u8, uint8_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGBA8888ToBGR565u8, uint8_t, uint16_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGBA8888ToBGR888u8, uint8_t, uint8_t);
PXR_FROM_RGB_PACKED_FN(pxrColorRGBA8888ToBGRA8888u8, uint8_t, uint8_t);
/* RGB888 to RGB565 with the image turned by 180 degrees: dst pixel (x, y)
   is src pixel (srcWidth - 1 - x, srcHeight - 1 - y). */
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToRGB565Rotate180u8, uint8_t, uint16_t);

/* RGB888 (R, G, B) to grey: (19595 R + 38469 G + 7471 B + 32768) >> 16. */
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToGrayu8, uint8_t, uint8_t);

/* RGB888 (R, G, B) to H, S, V bytes. V = max(R, G, B); S = (V - min) x 255 / V
   and the hue through a table of reciprocals in Q16; H is the hue in degrees
   divided by 2 (0..179), S and V are 0..255. */
PXR_FROM_RGB_PACKED_FN(pxrColorRGB888ToHSV888u8, uint8_t, uint8_t);

/* RGBA8888 (R, G, B, A; alpha ignored) to CIE L*a*b* (sRGB, D65), 3 bytes per
   pixel: L* x 255 / 100, a* + 128, b* + 128, rounded and clamped to 0..255.
   Fixed point throughout (see docs/color-from_rgb.md). */
PXR_FROM_RGB_PACKED_FN(pxrColorRGBA8888ToLABu8, uint8_t, uint8_t);

#undef PXR_FROM_RGB_TO_PLANAR
#undef PXR_FROM_RGB_TO_PSEUDO_PLANAR
#undef PXR_FROM_RGB_PACKED_FN

PXR_EXTERN_C_END

#endif
