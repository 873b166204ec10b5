// Entry points of the pyramidal Lucas-Kanade tracker. The constraint rule
// is the common image rule on the two level-0 images.
#include "features/tracking/tracking.h"
#include "frame/entry.h"
#include "pixora/tracking.h"

// The argument check of every generation, written once; its text is what a
// failed check logs.
#define PXR_LK_ARGUMENTS_OK \
    src1 && src2 && src1Pyr && src2Pyr && featureXY && featureXY_out && featureStatus && (windowWidth & 0x1) && (windowHeight & 0x1)
#define PXR_LK_TEXT(...) #__VA_ARGS__
#define PXR_LK_EXPANDED_TEXT(cond) PXR_LK_TEXT(cond)

namespace {

// The two oldest generations differ only in their row.
template <uint32_t Row>
void trackOldest(const char* name, const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                 const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr, const pxrPyramidLevel* dx1Pyr,
                 const pxrPyramidLevel* dy1Pyr, const float* featureXY, float* featureXY_out,
                 int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                 int32_t maxIterations, int32_t nPyramidLevels) {
    const uint32_t k = pxr::selectKind(name, Row, pxr::imageRule(width, height, src1, width, src2, width));
    if (!(PXR_LK_ARGUMENTS_OK)) {
        pxr::assertionFailed(name, PXR_LK_EXPANDED_TEXT(PXR_LK_ARGUMENTS_OK));
        return;
    }
    pxr::dispatch<Row>(k, src1, src2, width, height, src1Pyr, src2Pyr, dx1Pyr, dy1Pyr, featureXY, featureXY_out,
                       featureStatus, nFeatures, windowWidth, windowHeight, maxIterations, nPyramidLevels);
}

}  // namespace

extern "C" {

PXR_API void pxrTrackLKOpticalFlowu8(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                     const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr,
                                     const pxrPyramidLevel* dx1Pyr, const pxrPyramidLevel* dy1Pyr,
                                     const float* featureXY, float* featureXY_out, int32_t* featureStatus,
                                     int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                                     int32_t maxIterations, int32_t nPyramidLevels) {
    trackOldest<PXR_ROW_TrackLKOpticalFlowu8>(__func__, src1, src2, width, height, src1Pyr, src2Pyr, dx1Pyr, dy1Pyr,
                                              featureXY, featureXY_out, featureStatus, nFeatures, windowWidth,
                                              windowHeight, maxIterations, nPyramidLevels);
}

PXR_API void pxrTrackLKOpticalFlowf32(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                      const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr,
                                      const pxrPyramidLevel* dx1Pyr, const pxrPyramidLevel* dy1Pyr,
                                      const float* featureXY, float* featureXY_out, int32_t* featureStatus,
                                      int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                                      int32_t maxIterations, int32_t nPyramidLevels) {
    trackOldest<PXR_ROW_TrackLKOpticalFlowf32>(__func__, src1, src2, width, height, src1Pyr, src2Pyr, dx1Pyr,
                                               dy1Pyr, featureXY, featureXY_out, featureStatus, nFeatures,
                                               windowWidth, windowHeight, maxIterations, nPyramidLevels);
}

PXR_API void pxrTrackLKOpticalFlowu8_v2(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                        uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                        const pxrPyramidLevel_v2* src2Pyr, const float* featureXY,
                                        float* featureXY_out, int32_t* featureStatus, int32_t nFeatures,
                                        int32_t windowWidth, int32_t windowHeight, int32_t maxIterations,
                                        int32_t nPyramidLevels) {
    srcStride = pxr::packedStride(srcStride, width);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_TrackLKOpticalFlowu8_v2,
                                       pxr::imageRule(width, height, src1, srcStride, src2, srcStride));
    if (!(PXR_LK_ARGUMENTS_OK)) {
        pxr::assertionFailed(__func__, PXR_LK_EXPANDED_TEXT(PXR_LK_ARGUMENTS_OK));
        return;
    }
    pxr::dispatch<PXR_ROW_TrackLKOpticalFlowu8_v2>(k, src1, src2, width, height, srcStride, src1Pyr, src2Pyr,
                                                   featureXY, featureXY_out, featureStatus, nFeatures, windowWidth,
                                                   windowHeight, maxIterations, nPyramidLevels);
}

PXR_API int pxrTrackLKOpticalFlowu8_v3(const uint8_t* src1, const uint8_t* src2, uint32_t width, uint32_t height,
                                       uint32_t srcStride, const pxrPyramidLevel_v2* src1Pyr,
                                       const pxrPyramidLevel_v2* src2Pyr, const float* featureXY,
                                       const float* featureXY_estimate, float* featureXY_out,
                                       int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
                                       int32_t windowHeight, int32_t nPyramidLevels,
                                       pxrLKTermination terminationMode, int32_t maxIterations, float maxEpsilon,
                                       int32_t useInitialEstimate) {
    srcStride = pxr::packedStride(srcStride, width);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_TrackLKOpticalFlowu8_v3,
                                       pxr::imageRule(width, height, src1, srcStride, src2, srcStride));
    PXR_REQUIRE(PXR_LK_ARGUMENTS_OK, PIXORA_STATUS_BAD_PARAM);
    PXR_REQUIRE(!useInitialEstimate || featureXY_estimate, PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_TrackLKOpticalFlowu8_v3>(
        k, src1, src2, width, height, srcStride, src1Pyr, src2Pyr, featureXY, featureXY_estimate, featureXY_out,
        featureStatus, nFeatures, windowWidth, windowHeight, nPyramidLevels, static_cast<int32_t>(terminationMode),
        maxIterations, maxEpsilon, useInitialEstimate);
}

}  // extern "C"
