// Entry points of the FAST corner detectors. Each checks its arguments with
// the effective stride (0: the width) and the effective border (below 4: 3);
// the local names match the condition texts that a failed check logs. The
// constraint rule is the common image rule on the source. The border is
// checked in 64 bits, so a huge border is refused rather than wrapping.
#include "features/fast/fast.h"
#include "features/fast/fast_kernels.h"
#include "frame/entry.h"
#include "pixora/corners.h"

namespace {

pxr::Rule rule(uint32_t width, uint32_t height, const uint8_t* src, uint32_t stride) {
    return pxr::imageRule(width, height, src, stride, src, stride);
}

uint64_t borderOf(uint32_t given) { return pxr::fast::effectiveBorder(given); }

}  // namespace

extern "C" {

PXR_API void pxrCornerFast9u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint32_t barrier, uint32_t givenBorder, uint32_t* xy, uint32_t nCornersMax,
                              uint32_t* nCorners) {
    const uint32_t width = srcWidth, height = srcHeight, stride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    uint32_t* const numcorners = nCorners;
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_CornerFast9u8, rule(width, height, src, stride));
    PXR_ASSERT(src && xy && numcorners && stride >= width && border*2 < width && border*2 < height);
    pxr::dispatch<PXR_ROW_CornerFast9u8>(k, src, width, height, stride, barrier, static_cast<uint32_t>(border), xy,
                                         nCornersMax, numcorners);
}

PXR_API void pxrCornerFast9InMasku8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint32_t barrier, uint32_t givenBorder, uint32_t* xy, uint32_t nCornersMax,
                                    uint32_t* nCorners, const uint8_t* bitMask, uint32_t maskWidth,
                                    uint32_t maskHeight) {
    const uint32_t width = srcWidth, height = srcHeight, stride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    uint32_t* const numcorners = nCorners;
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_CornerFast9InMasku8, rule(width, height, src, stride));
    PXR_ASSERT(src && xy && numcorners && bitMask && stride >= width && border*2 < width && border*2 < height);
    pxr::dispatch<PXR_ROW_CornerFast9InMasku8>(k, src, width, height, stride, barrier, static_cast<uint32_t>(border),
                                               xy, nCornersMax, numcorners, bitMask, maskWidth, maskHeight);
}

PXR_API void pxrCornerFast9Scoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t barrier, uint32_t givenBorder, uint32_t* xy, uint32_t* scores,
                                   uint32_t nCornersMax, uint32_t* nCorners) {
    const uint32_t width = srcWidth, height = srcHeight, stride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    uint32_t* const numcorners = nCorners;
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_CornerFast9Scoreu8, rule(width, height, src, stride));
    PXR_ASSERT(src && xy && scores && numcorners && stride >= width && border*2 < width && border*2 < height);
    pxr::dispatch<PXR_ROW_CornerFast9Scoreu8>(k, src, width, height, stride, barrier, static_cast<uint32_t>(border),
                                              xy, scores, nCornersMax, numcorners);
}

PXR_API void pxrCornerFast9InMaskScoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint32_t barrier, uint32_t givenBorder, uint32_t* xy,
                                         uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                         const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight) {
    const uint32_t width = srcWidth, height = srcHeight, stride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    uint32_t* const numcorners = nCorners;
    const uint32_t k =
        pxr::selectKind(__func__, PXR_ROW_CornerFast9InMaskScoreu8, rule(width, height, src, stride));
    PXR_ASSERT(src && xy && scores && numcorners && bitMask && stride >= width && border*2 < width &&
               border*2 < height);
    pxr::dispatch<PXR_ROW_CornerFast9InMaskScoreu8>(k, src, width, height, stride, barrier,
                                                    static_cast<uint32_t>(border), xy, scores, nCornersMax,
                                                    numcorners, bitMask, maskWidth, maskHeight);
}

PXR_API void pxrCornerFast9Scoreu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint32_t barrier, uint32_t givenBorder, uint32_t* xy,
                                      uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                      uint32_t nmsEnabled, uint32_t* tempBuf) {
    const uint32_t width = srcWidth, height = srcHeight, stride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    uint32_t* const numcorners = nCorners;
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_CornerFast9Scoreu8_v2, rule(width, height, src, stride));
    PXR_ASSERT(src && xy && scores && numcorners && stride >= width && border*2 < width && border*2 < height);
    pxr::dispatch<PXR_ROW_CornerFast9Scoreu8_v2>(k, src, width, height, stride, barrier,
                                                 static_cast<uint32_t>(border), xy, scores, nCornersMax, numcorners,
                                                 nmsEnabled, tempBuf);
}

PXR_API void pxrCornerFast9InMaskScoreu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, uint32_t barrier, uint32_t givenBorder, uint32_t* xy,
                                            uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                            const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight,
                                            uint32_t nmsEnabled, uint32_t* tempBuf) {
    const uint32_t width = srcWidth, height = srcHeight, stride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    uint32_t* const numcorners = nCorners;
    const uint32_t k =
        pxr::selectKind(__func__, PXR_ROW_CornerFast9InMaskScoreu8_v2, rule(width, height, src, stride));
    PXR_ASSERT(src && xy && scores && numcorners && bitMask && stride >= width && border*2 < width &&
               border*2 < height);
    pxr::dispatch<PXR_ROW_CornerFast9InMaskScoreu8_v2>(k, src, width, height, stride, barrier,
                                                       static_cast<uint32_t>(border), xy, scores, nCornersMax,
                                                       numcorners, bitMask, maskWidth, maskHeight, nmsEnabled,
                                                       tempBuf);
}

PXR_API void pxrCornerFast10u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint32_t barrier, uint32_t givenBorder, uint32_t* xy, uint32_t nCornersMax,
                               uint32_t* nCorners) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_CornerFast10u8, rule(srcWidth, srcHeight, src, srcStride));
    PXR_ASSERT(src && xy && nCorners && srcStride >= srcWidth && border*2 < srcWidth && border*2 < srcHeight);
    pxr::dispatch<PXR_ROW_CornerFast10u8>(k, src, srcWidth, srcHeight, srcStride, barrier,
                                          static_cast<uint32_t>(border), xy, nCornersMax, nCorners);
}

PXR_API void pxrCornerFast10InMasku8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                     uint32_t barrier, uint32_t givenBorder, uint32_t* xy, uint32_t nCornersMax,
                                     uint32_t* nCorners, const uint8_t* mask, uint32_t maskWidth,
                                     uint32_t maskHeight) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    const uint32_t k =
        pxr::selectKind(__func__, PXR_ROW_CornerFast10InMasku8, rule(srcWidth, srcHeight, src, srcStride));
    PXR_ASSERT(src && xy && nCorners && mask && srcStride >= srcWidth && border*2 < srcWidth && border*2 < srcHeight);
    pxr::dispatch<PXR_ROW_CornerFast10InMasku8>(k, src, srcWidth, srcHeight, srcStride, barrier,
                                                static_cast<uint32_t>(border), xy, nCornersMax, nCorners, mask,
                                                maskWidth, maskHeight);
}

PXR_API void pxrCornerFast10Scoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint32_t barrier, uint32_t givenBorder, uint32_t* xy, uint32_t* scores,
                                    uint32_t nCornersMax, uint32_t* nCorners, uint32_t nmsEnabled,
                                    uint32_t* tempBuf) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    const uint32_t k =
        pxr::selectKind(__func__, PXR_ROW_CornerFast10Scoreu8, rule(srcWidth, srcHeight, src, srcStride));
    PXR_ASSERT(src && xy && scores && nCorners && srcStride >= srcWidth && border*2 < srcWidth && border*2 < srcHeight);
    pxr::dispatch<PXR_ROW_CornerFast10Scoreu8>(k, src, srcWidth, srcHeight, srcStride, barrier,
                                               static_cast<uint32_t>(border), xy, scores, nCornersMax, nCorners,
                                               nmsEnabled, tempBuf);
}

PXR_API void pxrCornerFast10InMaskScoreu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, uint32_t barrier, uint32_t givenBorder, uint32_t* xy,
                                          uint32_t* scores, uint32_t nCornersMax, uint32_t* nCorners,
                                          const uint8_t* mask, uint32_t maskWidth, uint32_t maskHeight,
                                          uint32_t nmsEnabled, uint32_t* tempBuf) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint64_t border = borderOf(givenBorder);
    const uint32_t k =
        pxr::selectKind(__func__, PXR_ROW_CornerFast10InMaskScoreu8, rule(srcWidth, srcHeight, src, srcStride));
    PXR_ASSERT(src && xy && scores && nCorners && mask && srcStride >= srcWidth && border*2 < srcWidth &&
               border*2 < srcHeight);
    pxr::dispatch<PXR_ROW_CornerFast10InMaskScoreu8>(k, src, srcWidth, srcHeight, srcStride, barrier,
                                                     static_cast<uint32_t>(border), xy, scores, nCornersMax,
                                                     nCorners, mask, maskWidth, maskHeight, nmsEnabled, tempBuf);
}

}  // extern "C"
