/* Pixora sparse feature tracking: pyramidal Lucas-Kanade optical flow. */
#ifndef PIXORA_TRACKING_H
#define PIXORA_TRACKING_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* Pyramidal Lucas-Kanade tracking of 8-bit grey images. Details, decisions
   and the sampler's conventions: docs/tracking-lk.md.

   - src1, src2: level 0 of the first and second image; the pyramids
     src1Pyr, src2Pyr hold nPyramidLevels levels each (level 0 the full
     image, every further level half the previous, as pxrPyramidCreateu8*
     builds them). The geometry of every level (width, height, stride) is
     read from src1Pyr and used for both images: the two pyramids must have
     the same geometry. Level 0's pixels are src1 and src2, not the records'
     pointers.
   - featureXY: nFeatures (x, y) float pairs, positions in the first image in
     full-resolution pixels. featureXY_out receives the tracked positions in
     the second image; featureStatus one status per feature:
       1  tracked;
      -2  the window's gradient matrix is singular (determinant below 1e-7);
      -4  the window left the image, or its patch could not be sampled.
     A feature lost on a coarse level keeps that level's coordinates (not
     rescaled to full resolution) and is not visited again.
   - windowWidth, windowHeight: odd window sizes, at least 5. A window of 3
     passes the argument check but is not tracked: featureXY_out holds the
     starting positions and featureStatus is not written.
   - maxIterations: iterations per level, clamped to 1..100; the iteration
     also stops when a step is shorter than 0.03 pixel or nearly reverses
     the one before (then half of it is taken back).

   A null pointer or an even window size logs "Assertion failed" with the
   function name and writes nothing. */

/* dx1Pyr and dy1Pyr are gradient pyramids of the first image, accepted for
   callers that keep them (pxrPyramidSobelGradientCreate*). They are never
   read, and may be null: the tracker derives its own gradients from each
   patch. Level records without strides: every level is packed. */
PXR_API void pxrTrackLKOpticalFlowu8(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                     const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr,
                                     const pxrPyramidLevel* dx1Pyr, const pxrPyramidLevel* dy1Pyr,
                                     const float* featureXY, float* featureXY_out, int32_t* featureStatus,
                                     int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                                     int32_t maxIterations, int32_t nPyramidLevels);
PXR_API void pxrTrackLKOpticalFlowf32(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                      const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr,
                                      const pxrPyramidLevel* dx1Pyr, const pxrPyramidLevel* dy1Pyr,
                                      const float* featureXY, float* featureXY_out, int32_t* featureStatus,
                                      int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                                      int32_t maxIterations, int32_t nPyramidLevels);

/* Level records with strides. srcStride (0: packed) is that of src1 and
   src2; the levels' own strides are read from the records. */
PXR_API void pxrTrackLKOpticalFlowu8_v2(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                        uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                        const pxrPyramidLevel_v2* src2Pyr, const float* featureXY,
                                        float* featureXY_out, int32_t* featureStatus, int32_t nFeatures,
                                        int32_t windowWidth, int32_t windowHeight, int32_t maxIterations,
                                        int32_t nPyramidLevels);

/* When the iteration of pxrTrackLKOpticalFlowu8_v3 stops. maxEpsilon is a
   bound on the squared step length dx^2 + dy^2 (not squared again),
   clamped to 0..10; maxIterations is clamped to 1..100. */
typedef enum {
    /* maxIterations iterations, or a step shorter than 0.03 pixel
       (dx^2 + dy^2 < 0.0009), as the older generations. */
    PIXORA_LK_TERM_ITERATIONS = 0,
    /* 30 iterations, or dx^2 + dy^2 < maxEpsilon; maxIterations is ignored. */
    PIXORA_LK_TERM_EPSILON = 1,
    /* maxIterations iterations, or dx^2 + dy^2 < maxEpsilon (any other
       value means the same). */
    PIXORA_LK_TERM_BOTH = 2
} pxrLKTermination;

/* As _v2, with the stopping rule chosen by terminationMode, and starting
   positions in the second image taken from featureXY_estimate when
   useInitialEstimate is non-zero (featureXY otherwise; featureXY_estimate
   may then be null). Returns 0; 3 for bad arguments (those of the older
   generations, or a null featureXY_estimate that is to be used; nothing
   logged); 5 when no scratch memory could be had. On 3 and 5 nothing is
   written. */
PXR_API int pxrTrackLKOpticalFlowu8_v3(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                       uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                       const pxrPyramidLevel_v2* src2Pyr, const float* featureXY,
                                       const float* featureXY_estimate, float* featureXY_out,
                                       int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
                                       int32_t windowHeight, int32_t nPyramidLevels,
                                       pxrLKTermination terminationMode, int32_t maxIterations, float maxEpsilon,
                                       int32_t useInitialEstimate);

PXR_EXTERN_C_END

#endif
