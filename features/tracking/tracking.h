// Reference implementations: pyramidal Lucas-Kanade tracking, their rows,
// and the per-helper derivative pointer.
#pragma once

#include <cstdint>

#include "frame/registry.h"
#include "pixora/types.h"

// Scharr derivatives / 32 of a (width + 2) x (height + 2) float patch
// (stride srcStride floats) into width x height planes ix, iy (stride
// dstStride floats). The tracker reaches them through calcIxIy_32f, which
// uCHelper points at calcIxIy_32fC and uVHelper at the vector kernel.
using pxrCalcIxIyFn = void (*)(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix,
                               float* iy, int32_t dstStride);
void calcIxIy_32fC(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                   int32_t dstStride);
extern pxrCalcIxIyFn calcIxIy_32f;

// Rows 377 and 378 (the plain u8 generation is served by the float one).
void pxrTrackLKOpticalFlowf32C(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                               const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr,
                               const pxrPyramidLevel* dx1Pyr, const pxrPyramidLevel* dy1Pyr, const float* featureXY,
                               float* featureXY_out, int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
                               int32_t windowHeight, int32_t maxIterations, int32_t nPyramidLevels);
void pxrTrackLKOpticalFlowu8_v2C(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                 uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                 const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, float* featureXY_out,
                                 int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
                                 int32_t windowHeight, int32_t maxIterations, int32_t nPyramidLevels);
int pxrTrackLKOpticalFlowu8_v3C(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                const pxrPyramidLevel_v2* src2Pyr, const float* featureXY,
                                const float* featureXY_estimate, float* featureXY_out, int32_t* featureStatus,
                                int32_t nFeatures, int32_t windowWidth, int32_t windowHeight, int32_t nPyramidLevels,
                                int32_t terminationMode, int32_t maxIterations, float maxEpsilon,
                                int32_t useInitialEstimate);

PXR_REFERENCE(PXR_ROW_TrackLKOpticalFlowf32, pxrTrackLKOpticalFlowf32C)
PXR_REFERENCE(PXR_ROW_TrackLKOpticalFlowu8, pxrTrackLKOpticalFlowf32C)
PXR_REFERENCE(PXR_ROW_TrackLKOpticalFlowu8_v2, pxrTrackLKOpticalFlowu8_v2C)
PXR_REFERENCE(PXR_ROW_TrackLKOpticalFlowu8_v3, pxrTrackLKOpticalFlowu8_v3C)
