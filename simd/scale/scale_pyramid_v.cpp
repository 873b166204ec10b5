// Pyramid creation, vector kind: the reference's level loop and
// preconditions with the vector Gaussian halving.
#include "imgproc/scale/scale_pyramid.h"
#include "simd/scale/scale_v.h"

namespace {

using namespace pxr::scale;

template <class T>
void halveVector(const T* src, uint32_t w, uint32_t h, uint32_t srcStride, T* dst, uint32_t dw, uint32_t dh,
                 uint32_t dstStride) {
    if constexpr (sizeof(T) == 1)
        gauss::halveImage<2>(src, w, h, srcStride, dst, dw, dh, dstStride, gauss::kHalve5u8Vector);
    else
        gauss::halveImage<2>(src, w, h, srcStride, dst, dw, dh, dstStride, gauss::kHalve5f32Vector);
}

}  // namespace

int pxrPyramidCreateu8V(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                        pxrPyramidLevel* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseWidth, numLevels, pyramid, false, halveVector<uint8_t>);
}

int pxrPyramidCreateu8_v2V(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseStride, numLevels, pyramid, false, halveVector<uint8_t>);
}

int pxrPyramidCreateu8_v3V(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid, uint32_t levelSize) {
    const bool ceil = levelSize == PIXORA_PYRAMID_LEVEL_CEIL;
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, !ceil);
    return pyramid::create(base, baseWidth, baseHeight, baseStride, numLevels, pyramid, ceil, halveVector<uint8_t>);
}

int pxrPyramidCreatef32V(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                         pxrPyramidLevel* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseWidth * 4, numLevels, pyramid, false, halveVector<float>);
}

int pxrPyramidCreatef32_v2V(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                            uint32_t numLevels, pxrPyramidLevel_v2* pyramid) {
    pyramid::checkCreate(base, numLevels, baseHeight, baseWidth, pyramid, true);
    return pyramid::create(base, baseWidth, baseHeight, baseStride, numLevels, pyramid, false, halveVector<float>);
}
