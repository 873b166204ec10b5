// FAST-9 and FAST-10 scores, vector kind: the per-pixel scorers behind the
// scorer pointers (fast_strength-inl.h), and the score functions, which take
// their scores from the vector detection itself and suppress as the
// reference does.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/features/fast/fast_score_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "simd/features/fast/fast_strength-inl.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::fast::HWY_NAMESPACE {

uint32_t Score9(const uint8_t* p, const ptrdiff_t* off, uint32_t barrier) { return ScoreOne<9>(p, off, barrier); }
uint32_t Score10(const uint8_t* p, const ptrdiff_t* off, uint32_t barrier) { return ScoreOne<10>(p, off, barrier); }

}  // namespace pxr::fast::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "features/fast/fast_pipeline.h"
#include "simd/features/fast/fast_v.h"

namespace pxr::fast {
HWY_EXPORT(Score9);
HWY_EXPORT(Score10);

// Dispatch names the function unqualified, from the namespace of its export.
static uint32_t score9(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return HWY_DYNAMIC_DISPATCH(Score9)(p, offsets, barrier);
}
static uint32_t score10(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return HWY_DYNAMIC_DISPATCH(Score10)(p, offsets, barrier);
}

namespace {

// Vector detection with scores, in the form the pipeline takes.
auto vectorDetect(int arc, const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride, uint32_t barrier,
                  uint32_t border, const uint8_t* maskBits = nullptr, uint32_t maskWidth = 0, uint32_t maskHeight = 0) {
    return [=](uint32_t* xy, uint32_t* scores, uint32_t max, uint32_t* n) {
        detectScoredV(arc, src, w, h, stride, barrier, border, xy, scores, max, n, maskBits, maskWidth, maskHeight);
    };
}

}  // namespace
}  // namespace pxr::fast

using pxr::fast::detectScoreSuppress;
using pxr::fast::vectorDetect;

uint32_t fast9_corner_scoreV(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return pxr::fast::score9(p, offsets, barrier);
}

uint32_t fast10_corner_scoreV(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return pxr::fast::score10(p, offsets, barrier);
}

void pxrCornerFast9Scoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t nCornersMax,
                            uint32_t* nCorners) {
    const auto detect = vectorDetect(9, src, srcWidth, srcHeight, srcStride, barrier, border);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, false, nullptr);
}

void pxrCornerFast9InMaskScoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                  uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* bitMask,
                                  uint32_t maskWidth, uint32_t maskHeight) {
    const auto detect =
        vectorDetect(9, src, srcWidth, srcHeight, srcStride, barrier, border, bitMask, maskWidth, maskHeight);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, false, nullptr);
}

void pxrCornerFast9Scoreu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                               uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf9(tempBuf);
    const auto detect = vectorDetect(9, src, srcWidth, srcHeight, srcStride, barrier, border);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}

void pxrCornerFast9InMaskScoreu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                     uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                     const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight,
                                     uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf9(tempBuf);
    const auto detect =
        vectorDetect(9, src, srcWidth, srcHeight, srcStride, barrier, border, bitMask, maskWidth, maskHeight);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}

void pxrCornerFast10Scoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                             uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf10(tempBuf);
    const auto detect = vectorDetect(10, src, srcWidth, srcHeight, srcStride, barrier, border);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}

void pxrCornerFast10InMaskScoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                   uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* mask,
                                   uint32_t maskWidth, uint32_t maskHeight, uint32_t nmsEnabled,
                                   uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf10(tempBuf);
    const auto detect = vectorDetect(10, src, srcWidth, srcHeight, srcStride, barrier, border, mask, maskWidth,
                                     maskHeight);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}
#endif
