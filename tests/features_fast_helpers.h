// Shared pieces of the FAST tests: every entry point behind one call shape,
// and small image builders.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"

namespace fast_test {

// Every argument any member takes; each member uses its own.
struct Args {
    const uint8_t* src = nullptr;
    uint32_t width = 0, height = 0, stride = 0, barrier = 0, border = 0;
    uint32_t* xy = nullptr;
    uint32_t* scores = nullptr;
    uint32_t max = 0;
    uint32_t* count = nullptr;
    const uint8_t* mask = nullptr;
    uint32_t maskWidth = 0, maskHeight = 0;
    uint32_t nms = 0;
    uint32_t* tempBuf = nullptr;
};

struct Member {
    const char* name;
    uint32_t row;
    int arc;
    bool masked, scored, suppressible;
    void (*call)(const Args&);
    // The detection row a score member detects through (its own row otherwise).
    uint32_t detectRow;
};

#define FAST_HEAD a.src, a.width, a.height, a.stride, a.barrier, a.border, a.xy
#define FAST_MASK a.mask, a.maskWidth, a.maskHeight
inline const std::vector<Member>& members() {
    static const std::vector<Member> list = {
        {"pxrCornerFast9u8", PXR_ROW_CornerFast9u8, 9, false, false, false,
         [](const Args& a) { pxrCornerFast9u8(FAST_HEAD, a.max, a.count); }, PXR_ROW_CornerFast9u8},
        {"pxrCornerFast9InMasku8", PXR_ROW_CornerFast9InMasku8, 9, true, false, false,
         [](const Args& a) { pxrCornerFast9InMasku8(FAST_HEAD, a.max, a.count, FAST_MASK); },
         PXR_ROW_CornerFast9InMasku8},
        {"pxrCornerFast9Scoreu8", PXR_ROW_CornerFast9Scoreu8, 9, false, true, false,
         [](const Args& a) { pxrCornerFast9Scoreu8(FAST_HEAD, a.scores, a.max, a.count); }, PXR_ROW_CornerFast9u8},
        {"pxrCornerFast9InMaskScoreu8", PXR_ROW_CornerFast9InMaskScoreu8, 9, true, true, false,
         [](const Args& a) { pxrCornerFast9InMaskScoreu8(FAST_HEAD, a.scores, a.max, a.count, FAST_MASK); },
         PXR_ROW_CornerFast9InMasku8},
        {"pxrCornerFast9Scoreu8_v2", PXR_ROW_CornerFast9Scoreu8_v2, 9, false, true, true,
         [](const Args& a) { pxrCornerFast9Scoreu8_v2(FAST_HEAD, a.scores, a.max, a.count, a.nms, a.tempBuf); },
         PXR_ROW_CornerFast9u8},
        {"pxrCornerFast9InMaskScoreu8_v2", PXR_ROW_CornerFast9InMaskScoreu8_v2, 9, true, true, true,
         [](const Args& a) {
             pxrCornerFast9InMaskScoreu8_v2(FAST_HEAD, a.scores, a.max, a.count, FAST_MASK, a.nms, a.tempBuf);
         },
         PXR_ROW_CornerFast9InMasku8},
        {"pxrCornerFast10u8", PXR_ROW_CornerFast10u8, 10, false, false, false,
         [](const Args& a) { pxrCornerFast10u8(FAST_HEAD, a.max, a.count); }, PXR_ROW_CornerFast10u8},
        {"pxrCornerFast10InMasku8", PXR_ROW_CornerFast10InMasku8, 10, true, false, false,
         [](const Args& a) { pxrCornerFast10InMasku8(FAST_HEAD, a.max, a.count, FAST_MASK); },
         PXR_ROW_CornerFast10InMasku8},
        {"pxrCornerFast10Scoreu8", PXR_ROW_CornerFast10Scoreu8, 10, false, true, true,
         [](const Args& a) { pxrCornerFast10Scoreu8(FAST_HEAD, a.scores, a.max, a.count, a.nms, a.tempBuf); },
         PXR_ROW_CornerFast10u8},
        {"pxrCornerFast10InMaskScoreu8", PXR_ROW_CornerFast10InMaskScoreu8, 10, true, true, true,
         [](const Args& a) {
             pxrCornerFast10InMaskScoreu8(FAST_HEAD, a.scores, a.max, a.count, FAST_MASK, a.nms, a.tempBuf);
         },
         PXR_ROW_CornerFast10InMasku8},
    };
    return list;
}
#undef FAST_HEAD
#undef FAST_MASK

inline const Member& member(const std::string& name) {
    for (const auto& m : members())
        if (name == m.name) return m;
    return members().front();
}

// A packed grey image.
struct Image {
    uint32_t width, height;
    std::vector<uint8_t> pixels;
    Image(uint32_t w, uint32_t h, uint8_t value = 100) : width(w), height(h), pixels(size_t{w} * h, value) {}
    uint8_t& at(uint32_t x, uint32_t y) { return pixels[size_t{y} * width + x]; }
    const uint8_t* data() const { return pixels.data(); }
};

// The ring of 16, in ring order (dx, dy).
inline constexpr int kDx[16] = {0, 1, 2, 3, 3, 3, 2, 1, 0, -1, -2, -3, -3, -3, -2, -1};
inline constexpr int kDy[16] = {3, 3, 2, 1, 0, -1, -2, -3, -3, -3, -2, -1, 0, 1, 2, 3};

// Sets ring pixels first .. first + length - 1 (circularly) around (x, y).
inline void paintArc(Image& img, uint32_t x, uint32_t y, int first, int length, uint8_t value) {
    for (int i = 0; i < length; ++i) {
        const int k = (first + i) & 15;
        const int px = static_cast<int>(x) + kDx[k], py = static_cast<int>(y) + kDy[k];
        img.at(static_cast<uint32_t>(px), static_cast<uint32_t>(py)) = value;
    }
}

// A detection result: the pairs and scores actually written.
struct Found {
    uint32_t count = 0;
    std::vector<std::pair<uint32_t, uint32_t>> xy;
    std::vector<uint32_t> scores;
};

// Runs a member on a packed image with room for `max` corners (at least one).
inline Found run(const Member& m, const Image& img, uint32_t barrier, uint32_t border = 3, uint32_t max = 1u << 16,
                 uint32_t nms = 0, const std::vector<uint8_t>* mask = nullptr, uint32_t maskWidth = 0,
                 uint32_t maskHeight = 0) {
    const uint32_t room = max ? max : 1;
    std::vector<uint32_t> xy(2 * size_t{room}, 0xDEADBEEF), scores(room, 0xDEADBEEF);
    std::vector<uint32_t> temp(3 * size_t{room} + img.height, 0xDEADBEEF);
    uint32_t count = 0xDEADBEEF;
    m.call({.src = img.data(), .width = img.width, .height = img.height, .barrier = barrier, .border = border,
            .xy = xy.data(), .scores = scores.data(), .max = max, .count = &count,
            .mask = mask ? mask->data() : nullptr, .maskWidth = maskWidth, .maskHeight = maskHeight, .nms = nms,
            .tempBuf = temp.data()});
    Found f;
    f.count = count;
    if (count == 0xDEADBEEF) return f;
    for (uint32_t i = 0; i < count && i < room; ++i) {
        f.xy.emplace_back(xy[2 * i], xy[2 * i + 1]);
        if (m.scored) f.scores.push_back(scores[i]);
    }
    return f;
}

// An all-clear mask of the given size (one bit per pixel, rows of whole bytes).
inline std::vector<uint8_t> clearMask(uint32_t maskWidth, uint32_t maskHeight) {
    return std::vector<uint8_t>((size_t{maskWidth} + 7) / 8 * maskHeight, 0);
}
inline void setMaskBit(std::vector<uint8_t>& mask, uint32_t maskWidth, uint32_t mx, uint32_t my) {
    mask[size_t{my} * ((maskWidth + 7) / 8) + mx / 8] |= static_cast<uint8_t>(0x80u >> (mx % 8));
}

}  // namespace fast_test
