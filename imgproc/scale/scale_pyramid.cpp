// Pyramids: allocation and deletion of level buffers, and creation by
// repeated Gaussian halving.
#include <cstdint>
#include <limits>

#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_gauss_ref.h"
#include "imgproc/scale/scale_pyramid.h"
#include "pixora/memory.h"

namespace pxr::scale::pyramid {

LevelMemory& levelMemory() {
    static LevelMemory memory{pxrMemAlloc, pxrMemFree};
    return memory;
}

}  // namespace pxr::scale::pyramid

namespace {

using namespace pxr::scale;
using pyramid::levelMemory;

constexpr uint32_t kLevelAlignment = 16;

// A level buffer of stride x height bytes; null when the size does not fit.
void* levelBuffer(uint64_t stride, uint32_t height, uint32_t alignment) {
    const uint64_t bytes = stride * height;
    if (height && bytes / height != stride) return nullptr;
    if (bytes > std::numeric_limits<size_t>::max()) return nullptr;
    return levelMemory().alloc(static_cast<size_t>(bytes), alignment);
}

uint64_t roundUp(uint64_t v, uint32_t alignment) { return alignment > 1 ? (v + alignment - 1) / alignment * alignment : v; }

template <class Level>
void deleteLevels(Level* pyramid, uint32_t numLevels, uint32_t startLevel) {
    for (uint32_t k = startLevel; k < numLevels; ++k) {
        if (pyramid[k].ptr) levelMemory().free(pyramid[k].ptr);
        pyramid[k].ptr = nullptr;
    }
}

// Levels with strides (_v2 and _v3): level 0 is allocated only when the
// caller asks, else its pointer is null; a failure frees what was made.
int allocateStrided(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                    uint32_t bytesPerPixel, uint32_t numLevels, uint32_t allocateBase, uint32_t rowAlignment,
                    bool ceil) {
    const uint32_t alignment = rowAlignment > kLevelAlignment ? rowAlignment : kLevelAlignment;
    pyramid[0] = {nullptr, baseWidth, baseHeight, baseStride};
    if (allocateBase) {
        pyramid[0].ptr = levelBuffer(baseStride, baseHeight, alignment);
        if (!pyramid[0].ptr) return -1;
    }
    uint32_t w = baseWidth, h = baseHeight;
    for (uint32_t k = 1; k < numLevels; ++k) {
        w = pyramid::nextSize(w, ceil);
        h = pyramid::nextSize(h, ceil);
        const uint64_t stride = roundUp(uint64_t{w} * bytesPerPixel, rowAlignment);
        pyramid[k] = {nullptr, w, h, static_cast<uint32_t>(stride)};
        if (stride <= std::numeric_limits<uint32_t>::max()) pyramid[k].ptr = levelBuffer(stride, h, alignment);
        if (!pyramid[k].ptr) {
            deleteLevels(pyramid, k, allocateBase ? 0 : 1);
            return -1;
        }
    }
    return 0;
}

}  // namespace

int pxrPyramidAllocateC(pxrPyramidLevel* pyramid, uint32_t baseWidth, uint32_t baseHeight, uint32_t bytesPerPixel,
                        uint32_t numLevels, uint32_t allocateBase) {
    // Level 0 is left as it is unless the caller asks for its buffer; a
    // failure returns at once, keeping the levels already made.
    uint32_t w = baseWidth, h = baseHeight;
    for (uint32_t k = 0; k < numLevels; ++k) {
        if (k > 0) {
            w >>= 1;
            h >>= 1;
        } else if (!allocateBase) {
            continue;
        }
        pyramid[k].width = w;
        pyramid[k].height = h;
        pyramid[k].ptr = levelBuffer(uint64_t{w} * bytesPerPixel, h, kLevelAlignment);
        if (!pyramid[k].ptr) return -1;
    }
    return 0;
}

int pxrPyramidAllocate_v2C(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                           uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels, uint32_t allocateBase) {
    return allocateStrided(pyramid, baseWidth, baseHeight, baseStride, bytesPerPixel, numLevels, allocateBase, 1,
                           false);
}

int pxrPyramidAllocate_v3C(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                           uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels, uint32_t allocateBase,
                           uint32_t rowAlignment, uint32_t levelSize) {
    return allocateStrided(pyramid, baseWidth, baseHeight, baseStride, bytesPerPixel, numLevels, allocateBase,
                           rowAlignment ? rowAlignment : 1, levelSize == PIXORA_PYRAMID_LEVEL_CEIL);
}

void pxrPyramidDeleteC(pxrPyramidLevel* pyramid, uint32_t numLevels, uint32_t startLevel) {
    deleteLevels(pyramid, numLevels, startLevel);
}

void pxrPyramidDelete_v2C(pxrPyramidLevel_v2* pyramid, uint32_t numLevels, uint32_t startLevel) {
    deleteLevels(pyramid, numLevels, startLevel);
}

namespace {

// One level by the reference Gaussian halving (the pxrScaleDownBy2Gaussian5x5
// members, with the output size of the pyramid's rule).
template <class T>
void halveRef(const T* src, uint32_t w, uint32_t h, uint32_t srcStride, T* dst, uint32_t dw, uint32_t dh,
              uint32_t dstStride) {
    if constexpr (sizeof(T) == 1)
        gauss::halveImage<2>(src, w, h, srcStride, dst, dw, dh, dstStride, gauss::kHalve5u8Reference);
    else
        gauss::halveImage<2>(src, w, h, srcStride, dst, dw, dh, dstStride, gauss::kHalve5f32Reference);
}

}  // namespace

int pxrPyramidCreateu8C(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                        pxrPyramidLevel* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseWidth, numLevels, pyramid, false, halveRef<uint8_t>);
}

int pxrPyramidCreateu8_v2C(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseStride, numLevels, pyramid, false, halveRef<uint8_t>);
}

int pxrPyramidCreateu8_v3C(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid, uint32_t levelSize) {
    const bool ceil = levelSize == PIXORA_PYRAMID_LEVEL_CEIL;
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, !ceil);
    return pyramid::create(base, baseWidth, baseHeight, baseStride, numLevels, pyramid, ceil, halveRef<uint8_t>);
}

int pxrPyramidCreatef32C(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                         pxrPyramidLevel* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseWidth * 4, numLevels, pyramid, false, halveRef<float>);
}

int pxrPyramidCreatef32_v2C(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                            uint32_t numLevels, pxrPyramidLevel_v2* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseStride, numLevels, pyramid, false, halveRef<float>);
}
