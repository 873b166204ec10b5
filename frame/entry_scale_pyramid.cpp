// Entry points of the pyramids: allocation, deletion and creation. The
// preconditions of creation are checked (fatally) by the implementations.
#include "frame/entry.h"
#include "imgproc/scale/scale.h"
#include "pixora/scale.h"

namespace {

// Pyramid buffers are no images of their own: allocation and deletion have
// no constraint; creation takes the image rule on its base.
constexpr pxr::Rule kNoConstraint{};

pxr::Rule baseRule(uint32_t w, uint32_t h, const void* base, uint32_t stride) {
    return pxr::imageRule(w, h, base, stride, base, stride);
}

}  // namespace

extern "C" {

PXR_API int pxrPyramidAllocate(pxrPyramidLevel* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                               uint32_t bytesPerPixel, uint32_t numLevels, uint32_t allocateBase) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidAllocate, kNoConstraint);
    PXR_ASSERT(pyramid && baseWidth && baseHeight && bytesPerPixel && numLevels, -1);
    return pxr::dispatch<PXR_ROW_PyramidAllocate>(k, pyramid, baseWidth, baseHeight, bytesPerPixel, numLevels,
                                                  allocateBase);
}

PXR_API int pxrPyramidAllocate_v2(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels,
                                  uint32_t allocateBase) {
    baseStride = pxr::packedStride(baseStride, baseWidth, bytesPerPixel);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidAllocate_v2, kNoConstraint);
    PXR_ASSERT(pyramid && baseWidth && baseHeight && bytesPerPixel && numLevels &&
                   (baseStride >= uint64_t{baseWidth} * bytesPerPixel),
               -1);
    return pxr::dispatch<PXR_ROW_PyramidAllocate_v2>(k, pyramid, baseWidth, baseHeight, baseStride, bytesPerPixel,
                                                     numLevels, allocateBase);
}

PXR_API int pxrPyramidAllocate_v3(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels,
                                  uint32_t allocateBase, uint32_t rowAlignment, pxrPyramidLevelSize levelSize) {
    // A packed base stride is rounded up to the row alignment, as the other levels.
    if (!baseStride && rowAlignment && !(rowAlignment & (rowAlignment - 1)))
        baseStride = static_cast<uint32_t>((uint64_t{baseWidth} * bytesPerPixel + rowAlignment - 1) /
                                           rowAlignment * rowAlignment);
    baseStride = pxr::packedStride(baseStride, baseWidth, bytesPerPixel);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidAllocate_v3, kNoConstraint);
    PXR_ASSERT(pyramid && baseWidth && baseHeight && bytesPerPixel && numLevels &&
                   (baseStride >= uint64_t{baseWidth} * bytesPerPixel) && ((rowAlignment & (rowAlignment - 1)) == 0) &&
                   (rowAlignment <= 128) && (static_cast<uint32_t>(levelSize) <= PIXORA_PYRAMID_LEVEL_CEIL),
               -1);
    return pxr::dispatch<PXR_ROW_PyramidAllocate_v3>(k, pyramid, baseWidth, baseHeight, baseStride, bytesPerPixel,
                                                     numLevels, allocateBase, rowAlignment,
                                                     static_cast<uint32_t>(levelSize));
}

PXR_API void pxrPyramidDelete(pxrPyramidLevel* pyramid, uint32_t numLevels, uint32_t startLevel) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidDelete, kNoConstraint);
    PXR_ASSERT(pyramid);
    pxr::dispatch<PXR_ROW_PyramidDelete>(k, pyramid, numLevels, startLevel);
}

PXR_API void pxrPyramidDelete_v2(pxrPyramidLevel_v2* pyramid, uint32_t numLevels, uint32_t startLevel) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidDelete_v2, kNoConstraint);
    PXR_ASSERT(pyramid);
    pxr::dispatch<PXR_ROW_PyramidDelete_v2>(k, pyramid, numLevels, startLevel);
}

PXR_API int pxrPyramidCreateu8(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                               pxrPyramidLevel* pyramid) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidCreateu8,
                                       baseRule(baseWidth, baseHeight, base, baseWidth));
    return pxr::dispatch<PXR_ROW_PyramidCreateu8>(k, base, baseWidth, baseHeight, numLevels, pyramid);
}

PXR_API int pxrPyramidCreateu8_v2(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t numLevels, pxrPyramidLevel_v2* pyramid) {
    baseStride = pxr::packedStride(baseStride, baseWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidCreateu8_v2,
                                       baseRule(baseWidth, baseHeight, base, baseStride));
    PXR_ASSERT(baseStride >= baseWidth, -1);
    return pxr::dispatch<PXR_ROW_PyramidCreateu8_v2>(k, base, baseWidth, baseHeight, baseStride, numLevels, pyramid);
}

PXR_API int pxrPyramidCreateu8_v3(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t numLevels, pxrPyramidLevel_v2* pyramid,
                                  pxrPyramidLevelSize levelSize) {
    baseStride = pxr::packedStride(baseStride, baseWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidCreateu8_v3,
                                       baseRule(baseWidth, baseHeight, base, baseStride));
    PXR_ASSERT((baseStride >= baseWidth) && (static_cast<uint32_t>(levelSize) <= PIXORA_PYRAMID_LEVEL_CEIL), -1);
    return pxr::dispatch<PXR_ROW_PyramidCreateu8_v3>(k, base, baseWidth, baseHeight, baseStride, numLevels, pyramid,
                                                     static_cast<uint32_t>(levelSize));
}

PXR_API int pxrPyramidCreatef32(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                                pxrPyramidLevel* pyramid) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidCreatef32,
                                       baseRule(baseWidth, baseHeight, base, baseWidth * 4));
    return pxr::dispatch<PXR_ROW_PyramidCreatef32>(k, base, baseWidth, baseHeight, numLevels, pyramid);
}

PXR_API int pxrPyramidCreatef32_v2(const float* base, uint32_t baseWidth, uint32_t baseHeight,
                                   uint32_t baseStride, uint32_t numLevels, pxrPyramidLevel_v2* pyramid) {
    baseStride = pxr::packedStride(baseStride, baseWidth, sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_PyramidCreatef32_v2,
                                       baseRule(baseWidth, baseHeight, base, baseStride));
    PXR_ASSERT(baseStride >= uint64_t{baseWidth} * sizeof(float), -1);
    return pxr::dispatch<PXR_ROW_PyramidCreatef32_v2>(k, base, baseWidth, baseHeight, baseStride, numLevels,
                                                      pyramid);
}

}  // extern "C"

namespace {

template <uint32_t Row>
int gradientEntry(const char* name, const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                  pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    const uint32_t k = pxr::selectKind(name, Row, kNoConstraint);
    if (!(imagePyramid && dxPyramid && dyPyramid && numLevels)) {
        pxr::assertionFailed(name, "imagePyramid && dxPyramid && dyPyramid && numLevels");
        return -1;
    }
    return pxr::dispatch<Row>(k, imagePyramid, dxPyramid, dyPyramid, numLevels);
}

}  // namespace

extern "C" {

PXR_API int pxrPyramidSobelGradientCreatei16(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                             pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientEntry<PXR_ROW_PyramidSobelGradientCreatei16>(__func__, imagePyramid, dxPyramid, dyPyramid,
                                                                numLevels);
}

PXR_API int pxrPyramidSobelGradientCreatei8(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                            pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientEntry<PXR_ROW_PyramidSobelGradientCreatei8>(__func__, imagePyramid, dxPyramid, dyPyramid,
                                                               numLevels);
}

PXR_API int pxrPyramidSobelGradientCreatef32(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                             pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientEntry<PXR_ROW_PyramidSobelGradientCreatef32>(__func__, imagePyramid, dxPyramid, dyPyramid,
                                                                numLevels);
}

}  // extern "C"
