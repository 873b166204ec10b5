/* Pixora corner detectors: FAST-9 and FAST-10 segment tests. */
#ifndef PIXORA_CORNERS_H
#define PIXORA_CORNERS_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* FAST corners of an 8-bit image (srcStride in bytes, 0: packed).

   A pixel of value c is a corner when at least 9 (FAST-9) or 10 (FAST-10)
   contiguous pixels of the radius-3 ring of 16 around it are all brighter
   than c + barrier or all darker than c - barrier (strictly, in plain
   integers). Pixels closer than `border` to an edge are not tested; a
   border below 4 means 3.

   Corners go to `xy` as (x, y) pairs of 32-bit words in raster order, the
   count to *nCorners. The scan stops at the first nCornersMax corners
   (the count is tested after each write: a capacity of 0 still takes one).

   Score functions also write, per corner, the highest threshold from
   barrier up at which the pixel is still a corner (barrier .. 254).
   With nmsEnabled, corners touching a corner of equal or higher score are
   removed (equal neighbours remove each other); tempBuf then needs
   3 * nCornersMax + srcHeight words, and a null tempBuf ends the process.

   Masked functions skip pixels whose mask bit is set. The mask has one bit
   per pixel, rows of (maskWidth + 7) / 8 bytes, most significant bit
   leftmost; it is the image's size or 2, 4 or 8 times larger or smaller in
   both directions. A mask of any other size gives no corners.

   Bad arguments (null pointers, a stride below the width, 2 * border not
   below the width and height) are logged and nothing is written. Decisions
   and details: docs/features-fast.md. */

PXR_API void pxrCornerFast9u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                              uint32_t* nCorners);
PXR_API void pxrCornerFast9InMasku8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                                    uint32_t* nCorners, const uint8_t* bitMask, uint32_t maskWidth,
                                    uint32_t maskHeight);
PXR_API void pxrCornerFast9Scoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                   uint32_t nCornersMax, uint32_t* nCorners);
PXR_API void pxrCornerFast9InMaskScoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                         uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                         const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight);
PXR_API void pxrCornerFast9Scoreu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                      uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                      uint32_t nmsEnabled, uint32_t* tempBuf);
PXR_API void pxrCornerFast9InMaskScoreu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                            uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                            const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight,
                                            uint32_t nmsEnabled, uint32_t* tempBuf);

PXR_API void pxrCornerFast10u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                               uint32_t* nCorners);
PXR_API void pxrCornerFast10InMasku8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                     uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                                     uint32_t* nCorners, const uint8_t* mask, uint32_t maskWidth,
                                     uint32_t maskHeight);
PXR_API void pxrCornerFast10Scoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                    uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled,
                                    uint32_t* tempBuf);
PXR_API void pxrCornerFast10InMaskScoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                          uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                          const uint8_t* mask, uint32_t maskWidth, uint32_t maskHeight,
                                          uint32_t nmsEnabled, uint32_t* tempBuf);

PXR_EXTERN_C_END

#endif
