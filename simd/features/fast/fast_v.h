// Vector (kind 1) implementations: FAST-9 and FAST-10 corner detection and
// scores, their rows, and the vector scorers behind the scorer pointers.
#pragma once

#include "features/fast/fast.h"

// Detection (fast_detect_v.cpp).
void pxrCornerFast9u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners);
void pxrCornerFast9InMasku8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                             uint32_t* nCorners, const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight);
void pxrCornerFast10u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners);
void pxrCornerFast10InMasku8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                              uint32_t* nCorners, const uint8_t* mask, uint32_t maskWidth, uint32_t maskHeight);

// Scores and suppression (fast_score_v.cpp): vector detection that scores
// as it finds, then the shared suppression.
void pxrCornerFast9Scoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t nCornersMax,
                            uint32_t* nCorners);
void pxrCornerFast9InMaskScoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                  uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* bitMask,
                                  uint32_t maskWidth, uint32_t maskHeight);
void pxrCornerFast9Scoreu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                               uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf);
void pxrCornerFast9InMaskScoreu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                     uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                     const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight,
                                     uint32_t nmsEnabled, uint32_t* tempBuf);
void pxrCornerFast10Scoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                             uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf);
void pxrCornerFast10InMaskScoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                   uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* mask,
                                   uint32_t maskWidth, uint32_t maskHeight, uint32_t nmsEnabled,
                                   uint32_t* tempBuf);

// Vector scorers: the same values as fast9_corner_scoreC / fast10_corner_scoreC
// (fast_score_v.cpp).
uint32_t fast9_corner_scoreV(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier);
uint32_t fast10_corner_scoreV(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier);

namespace pxr::fast {
// Vector detection of arc 9 or 10 that also writes each corner's score when
// `scores` is not null; masked when maskBits is not null (fast_detect_v.cpp).
void detectScoredV(int arc, const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, uint32_t barrier,
                   uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t max, uint32_t* nCorners,
                   const uint8_t* maskBits, uint32_t maskWidth, uint32_t maskHeight);
}  // namespace pxr::fast

PXR_VECTOR(PXR_ROW_CornerFast9u8, pxrCornerFast9u8V)
PXR_VECTOR(PXR_ROW_CornerFast9InMasku8, pxrCornerFast9InMasku8V)
PXR_VECTOR(PXR_ROW_CornerFast9Scoreu8, pxrCornerFast9Scoreu8V)
PXR_VECTOR(PXR_ROW_CornerFast9InMaskScoreu8, pxrCornerFast9InMaskScoreu8V)
PXR_VECTOR(PXR_ROW_CornerFast9Scoreu8_v2, pxrCornerFast9Scoreu8_v2V)
PXR_VECTOR(PXR_ROW_CornerFast9InMaskScoreu8_v2, pxrCornerFast9InMaskScoreu8_v2V)
PXR_VECTOR(PXR_ROW_CornerFast10u8, pxrCornerFast10u8V)
PXR_VECTOR(PXR_ROW_CornerFast10InMasku8, pxrCornerFast10InMasku8V)
PXR_VECTOR(PXR_ROW_CornerFast10Scoreu8, pxrCornerFast10Scoreu8V)
PXR_VECTOR(PXR_ROW_CornerFast10InMaskScoreu8, pxrCornerFast10InMaskScoreu8V)
