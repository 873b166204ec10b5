// Vector (kind 1) implementations: pyramidal Lucas-Kanade tracking, their
// rows, and the vector derivative kernel of the calcIxIy_32f helper.
#pragma once

#include "features/tracking/lk_core.h"
#include "features/tracking/tracking.h"

namespace pxr::lk {
// The vector kind's patch kernels (for tests that compare them directly).
const Kernels& vectorKernels();
}  // namespace pxr::lk

void calcIxIy_32fV(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                   int32_t dstStride);

void pxrTrackLKOpticalFlowf32V(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                               const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr,
                               const pxrPyramidLevel* dx1Pyr, const pxrPyramidLevel* dy1Pyr, const float* featureXY,
                               float* featureXY_out, int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
                               int32_t windowHeight, int32_t maxIterations, int32_t nPyramidLevels);
void pxrTrackLKOpticalFlowu8_v2V(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                 uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                 const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, float* featureXY_out,
                                 int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
                                 int32_t windowHeight, int32_t maxIterations, int32_t nPyramidLevels);
int pxrTrackLKOpticalFlowu8_v3V(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                const pxrPyramidLevel_v2* src2Pyr, const float* featureXY,
                                const float* featureXY_estimate, float* featureXY_out, int32_t* featureStatus,
                                int32_t nFeatures, int32_t windowWidth, int32_t windowHeight, int32_t nPyramidLevels,
                                int32_t terminationMode, int32_t maxIterations, float maxEpsilon,
                                int32_t useInitialEstimate);

PXR_VECTOR(PXR_ROW_TrackLKOpticalFlowf32, pxrTrackLKOpticalFlowf32V)
PXR_VECTOR(PXR_ROW_TrackLKOpticalFlowu8, pxrTrackLKOpticalFlowf32V)
PXR_VECTOR(PXR_ROW_TrackLKOpticalFlowu8_v2, pxrTrackLKOpticalFlowu8_v2V)
PXR_VECTOR(PXR_ROW_TrackLKOpticalFlowu8_v3, pxrTrackLKOpticalFlowu8_v3V)
