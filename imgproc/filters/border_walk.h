// Visits the outermost rows and columns of a width x height image once each.
#pragma once

#include <cstdint>

namespace pxr {

template <class Fn>
inline void forEachBorderPixel(uint32_t w, uint32_t h, Fn&& fn) {
    for (uint32_t x = 0; x < w; ++x) {
        fn(x, 0u);
        if (h > 1) fn(x, h - 1);
    }
    for (uint32_t y = 1; y + 1 < h; ++y) {
        fn(0u, y);
        if (w > 1) fn(w - 1, y);
    }
}

}  // namespace pxr
