// The score functions' common order, shared by every kind: detect with
// scores, then (when asked) suppress through the caller's tempBuf.
#pragma once

#include <cstddef>
#include <cstdint>

#include "features/fast/fast.h"

namespace pxr::fast {

// detectScored(xy, scores, capacity, count) fills a raw list and its
// scores. Without suppression it works on the caller's arrays. With it,
// tempBuf holds the raw list (words 0 .. 2 max - 1), the raw scores (2 max ..
// 3 max - 1) and the row-start table (from 3 max on), and the suppressed
// list goes to the caller's arrays. The caller has checked tempBuf.
template <class DetectScored>
void detectScoreSuppress(const DetectScored& detectScored, uint32_t* xy, uint32_t* scores, uint32_t nCornersMax,
                         uint32_t* nCorners, bool suppress, uint32_t* tempBuf) {
    if (!suppress) {
        uint32_t n = 0;
        detectScored(xy, scores, nCornersMax, &n);
        *nCorners = n;
        return;
    }
    // A capacity of 0 leaves the raw regions empty, yet detection still
    // takes one corner: that corner is kept here, not over the row starts.
    uint32_t spareXy[2], spareScore[1];
    uint32_t* rawXy = nCornersMax ? tempBuf : spareXy;
    uint32_t* rawScores = nCornersMax ? tempBuf + 2 * size_t{nCornersMax} : spareScore;
    uint32_t* rowStart = tempBuf + 3 * size_t{nCornersMax};
    uint32_t raw = 0;
    detectScored(rawXy, rawScores, nCornersMax, &raw);
    nms_processing(rawXy, rawScores, rowStart, raw, xy, scores, nCorners);
}

}  // namespace pxr::fast
