// Pyramidal Lucas-Kanade tracking, reference kind: the scalar patch
// kernels and the implementations of the four rows.
#include "features/tracking/lk_core.h"
#include "features/tracking/lk_kernels.h"
#include "features/tracking/tracking.h"

pxrCalcIxIyFn calcIxIy_32f = calcIxIy_32fC;

void calcIxIy_32fC(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                   int32_t dstStride) {
    for (int32_t r = 0; r < height; ++r) {
        const float* u = src + static_cast<ptrdiff_t>(r) * srcStride;
        pxr::lk::derivativeRow(u, u + srcStride, u + 2 * srcStride, ix + static_cast<ptrdiff_t>(r) * dstStride,
                               iy + static_cast<ptrdiff_t>(r) * dstStride, 0, width);
    }
}

namespace pxr::lk {
namespace {

int sampleC(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, float* dst, int32_t n, int32_t m,
            float cx, float cy) {
    return samplePatch(bilinearSpan, src, width, height, stride, dst, n, m, cx, cy);
}

void derivativesThroughHelper(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix,
                              float* iy, int32_t dstStride) {
    calcIxIy_32f(src, srcStride, width, height, ix, iy, dstStride);
}

GradientSums gradientSumsC(const float* ix, const float* iy, int32_t stride, int32_t width, int32_t height) {
    return gradientSumsWith(
        [&](int32_t first, int32_t n, float* xx, float* xy, float* yy) {
            gradientColumns(ix + first, iy + first, stride, height, 0, n, xx, xy, yy);
        },
        width);
}

Mismatch mismatchC(const float* i, int32_t iStride, const float* j, const float* ix, const float* iy,
                   int32_t dStride, int32_t width, int32_t height) {
    return mismatchWith(
        [&](int32_t first, int32_t n, float* bx, float* by) {
            mismatchColumns(i + first, iStride, j + first, width, ix + first, iy + first, dStride, height, 0, n, bx,
                            by);
        },
        width);
}

constexpr Kernels kReference{&sampleC, &derivativesThroughHelper, &gradientSumsC, &mismatchC};

}  // namespace

const Kernels& referenceKernels() { return kReference; }

}  // namespace pxr::lk

void pxrTrackLKOpticalFlowf32C(const uint8_t* src1, const uint8_t* src2, uint32_t, uint32_t,
                               const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr, const pxrPyramidLevel*,
                               const pxrPyramidLevel*, const float* featureXY, float* featureXY_out,
                               int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                               int32_t maxIterations, int32_t nPyramidLevels) {
    pxr::lk::trackLevels(pxr::lk::referenceKernels(), src1, src2, src1Pyr, src2Pyr, featureXY, featureXY_out,
                         featureStatus, nFeatures, windowWidth, windowHeight, maxIterations, nPyramidLevels);
}

void pxrTrackLKOpticalFlowu8_v2C(const uint8_t* src1, const uint8_t* src2, uint32_t, uint32_t, uint32_t,
                                 const pxrPyramidLevel_v2* src1Pyr, const pxrPyramidLevel_v2* src2Pyr,
                                 const float* featureXY, float* featureXY_out, int32_t* featureStatus,
                                 int32_t nFeatures, int32_t windowWidth, int32_t windowHeight, int32_t maxIterations,
                                 int32_t nPyramidLevels) {
    pxr::lk::trackV2(pxr::lk::referenceKernels(), src1, src2, src1Pyr, src2Pyr, featureXY, featureXY_out,
                     featureStatus, nFeatures, windowWidth, windowHeight, maxIterations, nPyramidLevels);
}

int pxrTrackLKOpticalFlowu8_v3C(const uint8_t* src1, const uint8_t* src2, uint32_t, uint32_t, uint32_t,
                                const pxrPyramidLevel_v2* src1Pyr, const pxrPyramidLevel_v2* src2Pyr,
                                const float* featureXY, const float* featureXY_estimate, float* featureXY_out,
                                int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                                int32_t nPyramidLevels, int32_t terminationMode, int32_t maxIterations,
                                float maxEpsilon, int32_t useInitialEstimate) {
    return pxr::lk::trackV3(pxr::lk::referenceKernels(), src1, src2, src1Pyr, src2Pyr, featureXY,
                            featureXY_estimate, featureXY_out, featureStatus, nFeatures, windowWidth, windowHeight,
                            nPyramidLevels, terminationMode, maxIterations, maxEpsilon, useInitialEstimate);
}
