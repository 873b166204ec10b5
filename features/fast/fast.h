// Reference implementations: FAST-9 and FAST-10 corner detection, their
// scorers and suppression, and their rows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/registry.h"

// Detection (fast_detect.cpp). The count is written through nCorners; the
// corners are the first nCornersMax (at least one) in raster order.
void pxrCornerFast9u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners);
void pxrCornerFast9InMasku8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                             uint32_t* nCorners, const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight);
void pxrCornerFast10u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners);
void pxrCornerFast10InMasku8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                              uint32_t* nCorners, const uint8_t* mask, uint32_t maskWidth, uint32_t maskHeight);

// Detection with scores, optionally suppressed (fast_score.cpp).
void pxrCornerFast9Scoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t nCornersMax,
                            uint32_t* nCorners);
void pxrCornerFast9InMaskScoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                  uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* bitMask,
                                  uint32_t maskWidth, uint32_t maskHeight);
void pxrCornerFast9Scoreu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                               uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf);
void pxrCornerFast9InMaskScoreu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                     uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                     const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight,
                                     uint32_t nmsEnabled, uint32_t* tempBuf);
void pxrCornerFast10Scoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                             uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf);
void pxrCornerFast10InMaskScoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                   uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* mask,
                                   uint32_t maskWidth, uint32_t maskHeight, uint32_t nmsEnabled,
                                   uint32_t* tempBuf);

// Shared internals (fast_score.cpp).

// The 16 ring offsets, dy * stride + dx, in ring order.
void make_offsets(ptrdiff_t* table, uint32_t stride);

// Score of the pixel at p: the highest threshold from barrier up at which it
// is still a corner, found by binary search over barrier .. 255.
uint32_t fast9_corner_scoreC(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier);
uint32_t fast10_corner_scoreC(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier);

// The scorers the score functions call; uCHelper / uVHelper switch them
// between the reference and the vector scorer (same results).
using pxrFastScoreFn = uint32_t (*)(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier);
extern pxrFastScoreFn fast9_corner_score_;
extern pxrFastScoreFn fast10_corner_score_;

// Scores a corner list through fast9_corner_score_ (stride 0: the width).
void score_9(const uint8_t* src, uint32_t width, uint32_t height, uint32_t barrier, uint32_t nCorners,
             const uint32_t* xy, uint32_t* scores, uint32_t stride);
// The same through fast10_corner_score_.
void score_10(const uint8_t* src, uint32_t width, uint32_t height, uint32_t barrier, uint32_t nCorners,
              const uint32_t* xy, uint32_t* scores, uint32_t stride);

// 8-neighbour suppression of a raw list in raster order: a corner goes when
// a touching raw corner scores at least as high. rowStart needs one word per
// row up to the last corner's row.
void nms_processing(const uint32_t* xy, const uint32_t* scores, uint32_t* rowStart, uint32_t n, uint32_t* outXy,
                    uint32_t* outScores, uint32_t* outCount);

namespace pxr::fast {
// The fatal stops of the suppressing score functions when tempBuf is null
// ("pixoraFastC" for FAST-9, "pixoraFast10C" for FAST-10); every kind calls
// them, so the message and its line are those of fast_score.cpp.
void requireTempBuf9(const uint32_t* tempBuf);
void requireTempBuf10(const uint32_t* tempBuf);
}  // namespace pxr::fast

PXR_REFERENCE(PXR_ROW_CornerFast9u8, pxrCornerFast9u8C)
PXR_REFERENCE(PXR_ROW_CornerFast9InMasku8, pxrCornerFast9InMasku8C)
PXR_REFERENCE(PXR_ROW_CornerFast9Scoreu8, pxrCornerFast9Scoreu8C)
PXR_REFERENCE(PXR_ROW_CornerFast9InMaskScoreu8, pxrCornerFast9InMaskScoreu8C)
PXR_REFERENCE(PXR_ROW_CornerFast9Scoreu8_v2, pxrCornerFast9Scoreu8_v2C)
PXR_REFERENCE(PXR_ROW_CornerFast9InMaskScoreu8_v2, pxrCornerFast9InMaskScoreu8_v2C)
PXR_REFERENCE(PXR_ROW_CornerFast10u8, pxrCornerFast10u8C)
PXR_REFERENCE(PXR_ROW_CornerFast10InMasku8, pxrCornerFast10InMasku8C)
PXR_REFERENCE(PXR_ROW_CornerFast10Scoreu8, pxrCornerFast10Scoreu8C)
PXR_REFERENCE(PXR_ROW_CornerFast10InMaskScoreu8, pxrCornerFast10InMaskScoreu8C)
