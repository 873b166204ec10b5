// FAST-9 and FAST-10 scores and suppression, reference kind. The score
// functions detect through the public detection entry points (dispatched
// afresh, on whatever kind their rows have chosen), score through the
// process-wide scorer pointers, and suppress here.
#include "features/fast/fast_kernels.h"
#include "features/fast/fast_pipeline.h"
#include "frame/entry.h"
#include "pixora/corners.h"

pxrFastScoreFn fast9_corner_score_ = fast9_corner_scoreC;
pxrFastScoreFn fast10_corner_score_ = fast10_corner_scoreC;

namespace pxr::fast {

// The fatal stops, first in the file so that their lines (the numbers in
// the messages) move only when these lines do.
void requireTempBuf9(const uint32_t* tempBuf) { PXR_INVARIANT("pixoraFastC", tempBuf); }
void requireTempBuf10(const uint32_t* tempBuf) { PXR_INVARIANT("pixoraFast10C", tempBuf); }

namespace {

// Binary search for the highest threshold that still passes, from barrier
// (taken as passing) up to 255 (which no pixel passes). Barriers of 255 and
// more are returned as they are: there is nothing above them to search.
template <int Arc>
uint32_t binarySearchScore(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    if (barrier >= 255) return barrier;
    uint32_t lower = barrier, upper = 255;
    while (upper - lower > 1) {
        const uint32_t t = (lower + upper) / 2;
        if (isCorner<Arc>(p, offsets, static_cast<int>(t)))
            lower = t;
        else
            upper = t;
    }
    return lower;
}

void scoreList(pxrFastScoreFn scorer, const uint8_t* src, uint32_t width, uint32_t barrier, uint32_t nCorners,
               const uint32_t* xy, uint32_t* scores, uint32_t stride) {
    stride = stride ? stride : width;
    ptrdiff_t offsets[16];
    make_offsets(offsets, stride);
    for (uint32_t i = 0; i < nCorners; ++i) {
        const uint32_t x = xy[2 * size_t{i}], y = xy[2 * size_t{i} + 1];
        scores[i] = scorer(src + size_t{y} * stride + x, offsets, barrier);
    }
}

// Detection through a public entry point, then scores through the scorer
// pointer: the form the pipeline takes.
template <int Arc, class Entry, class... Extra>
auto publicDetectThenScore(Entry entry, const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride,
                           uint32_t barrier, uint32_t border, Extra... extra) {
    return [=](uint32_t* xy, uint32_t* scores, uint32_t max, uint32_t* n) {
        entry(src, w, h, stride, barrier, border, xy, max, n, extra...);
        if constexpr (Arc == 9)
            score_9(src, w, h, barrier, *n, xy, scores, stride);
        else
            score_10(src, w, h, barrier, *n, xy, scores, stride);
    };
}

}  // namespace
}  // namespace pxr::fast

using pxr::fast::detectScoreSuppress;
using pxr::fast::publicDetectThenScore;

void make_offsets(ptrdiff_t* table, uint32_t stride) { pxr::fast::ringOffsets(table, stride); }

uint32_t fast9_corner_scoreC(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return pxr::fast::binarySearchScore<9>(p, offsets, barrier);
}

uint32_t fast10_corner_scoreC(const uint8_t* p, const ptrdiff_t* offsets, uint32_t barrier) {
    return pxr::fast::binarySearchScore<10>(p, offsets, barrier);
}

void score_9(const uint8_t* src, uint32_t width, uint32_t /*height*/, uint32_t barrier, uint32_t nCorners,
             const uint32_t* xy, uint32_t* scores, uint32_t stride) {
    pxr::fast::scoreList(fast9_corner_score_, src, width, barrier, nCorners, xy, scores, stride);
}

void score_10(const uint8_t* src, uint32_t width, uint32_t /*height*/, uint32_t barrier, uint32_t nCorners,
              const uint32_t* xy, uint32_t* scores, uint32_t stride) {
    pxr::fast::scoreList(fast10_corner_score_, src, width, barrier, nCorners, xy, scores, stride);
}

void nms_processing(const uint32_t* xy, const uint32_t* scores, uint32_t* rowStart, uint32_t n, uint32_t* outXy,
                    uint32_t* outScores, uint32_t* outCount) {
    constexpr uint32_t kNone = 0xFFFFFFFFu;
    if (n == 0) {
        *outCount = 0;
        return;
    }
    auto X = [xy](uint32_t i) { return xy[2 * size_t{i}]; };
    auto Y = [xy](uint32_t i) { return xy[2 * size_t{i} + 1]; };
    const uint32_t lastRow = Y(n - 1);
    for (uint32_t r = 0; r <= lastRow; ++r) rowStart[r] = kNone;
    for (uint32_t i = 0; i < n; ++i)
        if (i == 0 || Y(i) != Y(i - 1)) rowStart[Y(i)] = i;

    // Whether a corner of row `row`, from cursor `at` on, at x - 1, x or
    // x + 1 scores at least s. The cursor skips corners left of x - 1 for
    // good: later corners of this row lie further right.
    auto rowBeats = [&](uint32_t& at, uint32_t row, uint32_t x, uint32_t s) {
        while (at < n && Y(at) == row && X(at) + 1 < x) ++at;
        for (uint32_t j = at; j < n && Y(j) == row && X(j) <= x + 1; ++j)
            if (scores[j] >= s) return true;
        return false;
    };

    uint32_t count = 0, above = kNone, below = kNone, cursorRow = kNone;
    for (uint32_t i = 0; i < n; ++i) {
        const uint32_t x = X(i), y = Y(i), s = scores[i];
        if (y != cursorRow) {  // a new row: both cursors restart at their rows
            cursorRow = y;
            above = y > 0 ? rowStart[y - 1] : kNone;
            below = y != lastRow ? rowStart[y + 1] : kNone;
        }
        bool suppressed = (i > 0 && X(i - 1) + 1 == x && Y(i - 1) == y && scores[i - 1] >= s) ||
                          (i + 1 < n && X(i + 1) == x + 1 && Y(i + 1) == y && scores[i + 1] >= s);
        if (!suppressed && above != kNone) suppressed = rowBeats(above, y - 1, x, s);
        if (!suppressed && below != kNone) suppressed = rowBeats(below, y + 1, x, s);
        if (suppressed) continue;
        outXy[2 * size_t{count}] = x;
        outXy[2 * size_t{count} + 1] = y;
        outScores[count] = s;
        ++count;
    }
    *outCount = count;
}

// The score functions: the public detection entry point of their family,
// the scorer pointer, and suppression when asked.

void pxrCornerFast9Scoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t nCornersMax,
                            uint32_t* nCorners) {
    const auto detect = publicDetectThenScore<9>(pxrCornerFast9u8, src, srcWidth, srcHeight, srcStride, barrier,
                                                 border);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, false, nullptr);
}

void pxrCornerFast9InMaskScoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                  uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* bitMask,
                                  uint32_t maskWidth, uint32_t maskHeight) {
    const auto detect = publicDetectThenScore<9>(pxrCornerFast9InMasku8, src, srcWidth, srcHeight, srcStride,
                                                 barrier, border, bitMask, maskWidth, maskHeight);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, false, nullptr);
}

void pxrCornerFast9Scoreu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                               uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf9(tempBuf);
    const auto detect = publicDetectThenScore<9>(pxrCornerFast9u8, src, srcWidth, srcHeight, srcStride, barrier,
                                                 border);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}

void pxrCornerFast9InMaskScoreu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint32_t barrier, uint32_t border, uint32_t* xy,
                                     uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                     const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight,
                                     uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf9(tempBuf);
    const auto detect = publicDetectThenScore<9>(pxrCornerFast9InMasku8, src, srcWidth, srcHeight, srcStride,
                                                 barrier, border, bitMask, maskWidth, maskHeight);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}

void pxrCornerFast10Scoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                             uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled, uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf10(tempBuf);
    const auto detect = publicDetectThenScore<10>(pxrCornerFast10u8, src, srcWidth, srcHeight, srcStride, barrier,
                                                  border);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}

void pxrCornerFast10InMaskScoreu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t* scores,
                                   uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* mask,
                                   uint32_t maskWidth, uint32_t maskHeight, uint32_t nmsEnabled,
                                   uint32_t* tempBuf) {
    if (nmsEnabled) pxr::fast::requireTempBuf10(tempBuf);
    const auto detect = publicDetectThenScore<10>(pxrCornerFast10InMasku8, src, srcWidth, srcHeight, srcStride,
                                                  barrier, border, mask, maskWidth, maskHeight);
    detectScoreSuppress(detect, xy, scores, nCornersMax, nCorners, nmsEnabled != 0, tempBuf);
}
