// Pyramidal Lucas-Kanade tracking: the core routine shared by every entry
// point and both kinds, its working-buffer layout, and the kernels it runs
// on each patch. The reference and the vector kind differ only in the
// kernels they hand to the core; the kernels of both compute the same float
// results bit for bit (see lk_kernels.h for the summation order).
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixora/types.h"

namespace pxr::lk {

// The sums of the gradient matrix over a window.
struct GradientSums {
    float xx, xy, yy;
};

// The mismatch vector b = sum of (I - J) * (Ix, Iy) over a window.
struct Mismatch {
    float x, y;
};

// What the core computes on patches. All planes are float, rows packed at
// the given strides (in floats).
struct Kernels {
    // Sub-pixel sampler (getRectSubPix): n x m samples into dst (stride n)
    // around (cx, cy) of an 8-bit level; 0, or negative on failure.
    int (*sample)(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, float* dst, int32_t n,
                  int32_t m, float cx, float cy);
    // Scharr derivatives / 32 of a (width + 2) x (height + 2) patch into
    // width x height planes (calcIxIy_32f).
    void (*derivatives)(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                        int32_t dstStride);
    // Gxx, Gxy, Gyy over width x height derivative samples.
    GradientSums (*gradientSums)(const float* ix, const float* iy, int32_t stride, int32_t width, int32_t height);
    // b over width x height samples: i (stride iStride) minus j (stride
    // width), times the derivatives (stride dStride).
    Mismatch (*mismatch)(const float* i, int32_t iStride, const float* j, const float* ix, const float* iy,
                         int32_t dStride, int32_t width, int32_t height);
};

// The reference's kernels (derivatives through the calcIxIy_32f pointer).
const Kernels& referenceKernels();

// Bytes of the working buffer for half-window sizes hw x hh and `levels`
// levels: two tables of level pointers (pointer-sized entries), one of
// float scale factors, then (W + 2)(H + 2) + 3 W H floats of patches, with
// W = 2 hw + 1, H = 2 hh + 1. Negative arguments count as 0. A size that
// does not fit in size_t, or beyond kMaxWorkingBytes, gives SIZE_MAX: no
// allocator hands that out.
size_t workingBufferBytes(int32_t hw, int32_t hh, int32_t levels);
inline constexpr uint64_t kMaxWorkingBytes = uint64_t{1} << 30;

// Termination modes (pxrLKTermination).
inline constexpr int32_t kTermIterations = 0, kTermEpsilon = 1;

// The core: tracks nFeatures features from src1 to src2 (see
// docs/tracking-lk.md). featureXY_out holds the starting guesses on entry.
// Returns at once, writing nothing, on a null pointer, nFeatures < 1,
// hw < 2 or hh < 2, nPyramidLevels < 0 or a buffer smaller than
// workingBufferBytes(hw, hh, nPyramidLevels).
void lkOpticalFlow_v3(const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel_v2* src1Pyr,
                      const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, float* featureXY_out,
                      int32_t* featureStatus, int32_t nFeatures, int32_t hw, int32_t hh, int32_t maxIterations,
                      int32_t nPyramidLevels, void* buffer, size_t bufferSize, int32_t terminationMode,
                      float maxEpsilon, const Kernels& kernels = referenceKernels());

// The bodies of the implementations of the four rows, on a kernel set:
// request the working buffer, copy the starting positions, run the core,
// release. trackV3 returns 0, or 5 without scratch memory.
void trackLevels(const Kernels& k, const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel* src1Pyr,
                 const pxrPyramidLevel* src2Pyr, const float* featureXY, float* featureXY_out,
                 int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                 int32_t maxIterations, int32_t nPyramidLevels);
void trackV2(const Kernels& k, const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel_v2* src1Pyr,
             const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, float* featureXY_out, int32_t* featureStatus,
             int32_t nFeatures, int32_t windowWidth, int32_t windowHeight, int32_t maxIterations,
             int32_t nPyramidLevels);
int trackV3(const Kernels& k, const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel_v2* src1Pyr,
            const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, const float* featureXY_estimate,
            float* featureXY_out, int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
            int32_t windowHeight, int32_t nPyramidLevels, int32_t terminationMode, int32_t maxIterations,
            float maxEpsilon, int32_t useInitialEstimate);

}  // namespace pxr::lk
