// FAST-9 and FAST-10 scores, vector kind.
//
// The reference's binary search finds the highest t in barrier .. 254 at
// which the pixel still passes (barrier itself when none above does). The
// test is monotone in t, and it passes at t exactly when some arc has all
// its differences above t, where the differences are p - c (brighter) or
// c - p (darker). So the highest passing t is M - 1, M being the largest
// over the 32 arcs (16 starts, two kinds) of the smallest difference on
// the arc, and the score is max(barrier, M - 1). The vector scorer
// computes M with 16-bit lanes, one lane per start: a running minimum over
// the arc's length from the ring written twice, then a maximum over lanes.
// Barriers of 255 or more come back unchanged, as from the reference.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/features/fast/fast_score_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

#include "features/fast/fast_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::fast::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <int Arc>
HWY_INLINE uint32_t ScoreOne(const uint8_t* p, const ptrdiff_t* off, uint32_t barrier) {
    if (barrier >= 255) return barrier;
    const int c = p[0];
    // Ring differences written twice, so every arc is a contiguous run.
    HWY_ALIGN int16_t bright[32], dark[32];
    for (int k = 0; k < 16; ++k) {
        const int v = p[off[k]];
        bright[k] = bright[k + 16] = static_cast<int16_t>(v - c);
        dark[k] = dark[k + 16] = static_cast<int16_t>(c - v);
    }
    int best;
#if HWY_TARGET == HWY_SCALAR
    best = -256;
    for (int s = 0; s < 16; ++s) {
        int mb = bright[s], md = dark[s];
        for (int k = 1; k < Arc; ++k) {
            mb = mb < bright[s + k] ? mb : bright[s + k];
            md = md < dark[s + k] ? md : dark[s + k];
        }
        best = best > mb ? best : mb;
        best = best > md ? best : md;
    }
#else
    const hn::CappedTag<int16_t, 16> d;
    const size_t N = hn::Lanes(d);
    auto top = hn::Set(d, int16_t{-256});
    for (size_t s = 0; s < 16; s += N) {
        auto mb = hn::LoadU(d, bright + s), md = hn::LoadU(d, dark + s);
        for (int k = 1; k < Arc; ++k) {
            mb = hn::Min(mb, hn::LoadU(d, bright + s + k));
            md = hn::Min(md, hn::LoadU(d, dark + s + k));
        }
        top = hn::Max(top, hn::Max(mb, md));
    }
    best = hn::GetLane(hn::MaxOfLanes(d, top));
#endif
    const int highest = best - 1;
    return highest > static_cast<int>(barrier) ? static_cast<uint32_t>(highest) : barrier;
}

uint32_t Score9(const uint8_t* p, const ptrdiff_t* off, uint32_t barrier) { return ScoreOne<9>(p, off, barrier); }
uint32_t Score10(const uint8_t* p, const ptrdiff_t* off, uint32_t barrier) { return ScoreOne<10>(p, off, barrier); }

// Scores of a corner list (stride already resolved).
template <int Arc>
void ScoreListT(const uint8_t* src, size_t stride, uint32_t barrier, uint32_t n, const uint32_t* xy,
                uint32_t* scores) {
    ptrdiff_t off[16];
    ringOffsets(off, static_cast<uint32_t>(stride));
    for (uint32_t i = 0; i < n; ++i) {
        const uint32_t x = xy[2 * size_t{i}], y = xy[2 * size_t{i} + 1];
        scores[i] = ScoreOne<Arc>(src + y * stride + x, off, barrier);
    }
}
void ScoreList9(const uint8_t* src, size_t stride, uint32_t barrier, uint32_t n, const uint32_t* xy,
                uint32_t* scores) {
    ScoreListT<9>(src, stride, barrier, n, xy, scores);
}
void ScoreList10(const uint8_t* src, size_t stride, uint32_t barrier, uint32_t n, const uint32_t* xy,
                 uint32_t* scores) {
    ScoreListT<10>(src, stride, barrier, n, xy, scores);
}

}  // namespace pxr::fast::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "features/fast/fast_pipeline.h"
#include "simd/features/fast/fast_v.h"

namespace pxr::fast {
HWY_EXPORT(Score9);
HWY_EXPORT(Score10);
HWY_EXPORT(ScoreList9);
HWY_EXPORT(ScoreList10);

namespace {

// The vector scorer over a list, in the form the pipeline takes.
auto vectorScore(int arc, const uint8_t* src, uint32_t width, uint32_t stride, uint32_t barrier) {
    const size_t pitch = stride ? stride : width;
    return [=](uint32_t n, const uint32_t* xy, uint32_t* scores) {
        if (arc == 9)
            HWY_DYNAMIC_DISPATCH(ScoreList9)(src, pitch, barrier, n, xy, scores);
        else
            HWY_DYNAMIC_DISPATCH(ScoreList10)(src, pitch, barrier, n, xy, scores);
    };
}

// Vector detection, in the form the pipeline takes.
template <class Fn, class... Extra>
auto vectorDetect(Fn fn, const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride, uint32_t barrier,
                  uint32_t border, Extra... extra) {
    return [=](uint32_t* xy, uint32_t max, uint32_t* n) { fn(src, w, h, stride, barrier, border, xy, max, n, extra...); };
}

}  // namespace
}  // namespace pxr::fast

using pxr::fast::detectScoreSuppress;
using pxr::fast::vectorDetect;
using pxr::fast::vectorScore;

uint32_t fast9_corner_scoreV(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return HWY_DYNAMIC_DISPATCH(pxr::fast::Score9)(p, offsets, barrier);
}

uint32_t fast10_corner_scoreV(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return HWY_DYNAMIC_DISPATCH(pxr::fast::Score10)(p, offsets, barrier);
}

void pxrCornerFast9Scoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t nCornersMax,
                            uint32_t* nCorners) {
    detectScoreSuppress(vectorDetect(pxrCornerFast9u8V, src, srcWidth, srcHeight, srcStride, barrier, border),
                        vectorScore(9, src, srcWidth, srcStride, barrier), xy, scores, nCornersMax, nCorners, false,
                        nullptr);
}

void pxrCornerFast9InMaskScoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                  uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* bitMask,
                                  uint32_t maskWidth, uint32_t maskHeight) {
    detectScoreSuppress(vectorDetect(pxrCornerFast9InMasku8V, src, srcWidth, srcHeight, srcStride, barrier, border,
                                     bitMask, maskWidth, maskHeight),
                        vectorScore(9, src, srcWidth, srcStride, barrier), xy, scores, nCornersMax, nCorners, false,
                        nullptr);
}

void pxrCornerFast9Scoreu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                               uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf9(tempBuf);
    detectScoreSuppress(vectorDetect(pxrCornerFast9u8V, src, srcWidth, srcHeight, srcStride, barrier, border),
                        vectorScore(9, src, srcWidth, srcStride, barrier), xy, scores, nCornersMax, nCorners,
                        nmsEnabled != 0, tempBuf);
}

void pxrCornerFast9InMaskScoreu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                     uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                     const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight,
                                     uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf9(tempBuf);
    detectScoreSuppress(vectorDetect(pxrCornerFast9InMasku8V, src, srcWidth, srcHeight, srcStride, barrier, border,
                                     bitMask, maskWidth, maskHeight),
                        vectorScore(9, src, srcWidth, srcStride, barrier), xy, scores, nCornersMax, nCorners,
                        nmsEnabled != 0, tempBuf);
}

void pxrCornerFast10Scoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                             uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf10(tempBuf);
    detectScoreSuppress(vectorDetect(pxrCornerFast10u8V, src, srcWidth, srcHeight, srcStride, barrier, border),
                        vectorScore(10, src, srcWidth, srcStride, barrier), xy, scores, nCornersMax, nCorners,
                        nmsEnabled != 0, tempBuf);
}

void pxrCornerFast10InMaskScoreu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                   uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* mask,
                                   uint32_t maskWidth, uint32_t maskHeight, uint32_t nmsEnabled,
                                   uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf10(tempBuf);
    detectScoreSuppress(vectorDetect(pxrCornerFast10InMasku8V, src, srcWidth, srcHeight, srcStride, barrier, border,
                                     mask, maskWidth, maskHeight),
                        vectorScore(10, src, srcWidth, srcStride, barrier), xy, scores, nCornersMax, nCorners,
                        nmsEnabled != 0, tempBuf);
}
#endif
