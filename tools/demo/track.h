// pixora-demo's main job: detect FAST-9 corners in the first of two frames
// and track them into the second with pyramidal Lucas-Kanade, on every kind.
#pragma once

#include <cstdint>
#include <string>

namespace pxr::demo {

struct TrackOptions {
    std::string first, second;  // two grey or colour frames of one size
    std::string outDir;
    int repeat = 5;
    uint32_t barrier = 20;       // FAST threshold
    uint32_t maxCorners = 4000;  // corner list capacity
    uint32_t window = 15;        // tracking window side (odd)
    uint32_t levels = 4;         // pyramid levels
};

// Returns the process exit status: 0 when every kind found the same
// corners and tracked them to the same positions as kind 0.
int runTrack(const TrackOptions& opt);

}  // namespace pxr::demo
