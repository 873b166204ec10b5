// Pyramid internals shared by the reference and vector kinds: the fatal
// preconditions of creation, the level loop (each kind brings its halving),
// and the allocator of level buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/entry.h"
#include "pixora/scale.h"

namespace pxr::scale::pyramid {

// Level buffers come from pxrMemAlloc and go back through pxrMemFree; tests
// swap in allocators that fail on purpose.
struct LevelMemory {
    void* (*alloc)(size_t size, uint32_t alignment);
    void (*free)(void* ptr);
};
LevelMemory& levelMemory();

// The preconditions of creation end the process. They live here, not in
// each kind, so that every kind reports the same line.
inline void checkCreate(const void* base, uint32_t numLevels, uint32_t baseHeight, uint32_t baseWidth,
                        const void* pyramid, bool divisible) {
    PXR_INVARIANT("pixoraPyramidC", base && numLevels && baseHeight && baseWidth && pyramid);
    if (!divisible) return;
    // Both sides divisible by 2^(numLevels-1); beyond 32 levels no side is.
    const uint32_t mask = numLevels > 32 ? ~0u : static_cast<uint32_t>((uint64_t{1} << (numLevels - 1)) - 1);
    if (!(((baseWidth & mask) == 0) & ((baseHeight & mask) == 0)))
        pxr::fatal("pixoraPyramidC", __LINE__,
                   "( (baseWidth & ((1 << (numLevels - 1)) - 1)) == 0 ) & "
                   "( (baseHeight & ((1 << (numLevels - 1)) - 1)) == 0 )");
}

inline uint32_t nextSize(uint32_t size, bool ceil) { return ceil ? size / 2 + (size & 1) : size / 2; }

// Stride of a level record: the record's own (v2), or packed rows (v1).
// A v2 level with stride 0 is given the packed stride.
template <class Level>
inline bool levelStride(Level& level, uint32_t bytesPerPixel, uint32_t* stride) {
    const uint64_t row = uint64_t{level.width} * bytesPerPixel;
    if constexpr (requires { level.stride; }) {
        if (level.stride == 0) level.stride = static_cast<uint32_t>(row);
        *stride = level.stride;
        return level.stride >= row;
    } else {
        *stride = static_cast<uint32_t>(row);
        return true;
    }
}

// Fills levels 1 .. numLevels-1 from level 0, which is the base image.
// halve(src, w, h, srcStride, dst, dw, dh, dstStride) produces one level.
template <class T, class Level, class Halve>
int create(const T* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride, uint32_t numLevels,
           Level* pyramid, bool ceil, Halve halve) {
    pyramid[0].ptr = const_cast<T*>(base);
    pyramid[0].width = baseWidth;
    pyramid[0].height = baseHeight;
    if constexpr (requires { pyramid[0].stride; }) pyramid[0].stride = baseStride;
    for (uint32_t k = 1; k < numLevels; ++k) {
        Level& above = pyramid[k - 1];
        Level& level = pyramid[k];
        level.width = nextSize(above.width, ceil);
        level.height = nextSize(above.height, ceil);
        uint32_t aboveStride = 0, stride = 0;
        if (!level.ptr || !above.ptr) return -1;
        if (!levelStride(above, sizeof(T), &aboveStride) || !levelStride(level, sizeof(T), &stride)) return -1;
        halve(static_cast<const T*>(above.ptr), above.width, above.height, aboveStride, static_cast<T*>(level.ptr),
              level.width, level.height, stride);
    }
    return 0;
}

// Sobel gradient levels: dx and dy levels take the size of their image
// level and hold its (width-2) x (height-2) gradients packed from the start
// of the buffer, as the plain planar gradient writes them.
// gradient(src, w, h, srcStride, dx, dy, dxyStride) is one kind's planar Sobel.
template <class T, class Gradient>
int gradientLevels(const pxrPyramidLevel* image, pxrPyramidLevel* dx, pxrPyramidLevel* dy, uint32_t numLevels,
                   Gradient gradient) {
    for (uint32_t k = 0; k < numLevels; ++k) {
        const uint32_t w = image[k].width, h = image[k].height;
        dx[k].width = dy[k].width = w;
        dx[k].height = dy[k].height = h;
        if (!dx[k].ptr || !dy[k].ptr || !image[k].ptr) return -1;
        const uint32_t packed = static_cast<uint32_t>((w > 2 ? w - 2 : 1) * sizeof(T));
        gradient(static_cast<const uint8_t*>(image[k].ptr), w, h, w, static_cast<T*>(dx[k].ptr),
                 static_cast<T*>(dy[k].ptr), packed);
    }
    return 0;
}

}  // namespace pxr::scale::pyramid
