// Entry points of the smoothing filters: Gaussian 5x5/11x11, box filters and
// local normalisation.
#include "frame/entry.h"
#include "imgproc/filters/smooth.h"
#include "pixora/filters_smooth.h"

namespace {

constexpr uint64_t rowBytes(uint32_t width, uint32_t bytesPerPixel) { return uint64_t{width} * bytesPerPixel; }

// The local normalisations' window sizes: squares of 255 x 255 bytes still
// sum in 32 bits.
constexpr uint32_t kMaxNormaliseWindow = 255;

}  // namespace

extern "C" {

PXR_API void pxrFilterGaussian5x5u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst,
                                    int blurBorder) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian5x5u8,
                                       pxr::imageRule(width, height, src, width, dst, width));
    PXR_ASSERT(src && dst && width && height && height > 4 && width > 4);
    pxr::dispatch<PXR_ROW_FilterGaussian5x5u8>(k, src, width, height, width, dst, width, blurBorder);
}

PXR_API void pxrFilterGaussian5x5u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian5x5u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && (dstStride >= srcWidth) && srcHeight > 4 && srcWidth > 4);
    pxr::dispatch<PXR_ROW_FilterGaussian5x5u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}

PXR_API void pxrFilterGaussian11x11u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst,
                                      int blurBorder) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian11x11u8,
                                       pxr::imageRule(width, height, src, width, dst, width));
    PXR_ASSERT(src && dst && width && height && height > 10 && width > 10);
    pxr::dispatch<PXR_ROW_FilterGaussian11x11u8>(k, src, width, height, width, dst, width, blurBorder);
}

PXR_API void pxrFilterGaussian11x11u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian11x11u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && dstStride && srcHeight > 10 && srcWidth > 10);
    pxr::dispatch<PXR_ROW_FilterGaussian11x11u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                                 blurBorder);
}

PXR_API void pxrFilterGaussian5x5s16(const int16_t* src, uint32_t width, uint32_t height, int16_t* dst,
                                     int blurBorder) {
    const uint32_t stride = width * 2;
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian5x5s16,
                                       pxr::imageRule(width, height, src, stride, dst, stride));
    PXR_ASSERT(src && dst && width && height && height > 1);
    pxr::dispatch<PXR_ROW_FilterGaussian5x5s16>(k, src, width, height, stride, dst, stride, blurBorder);
}

PXR_API void pxrFilterGaussian5x5s16_v2(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, int16_t* dst, uint32_t dstStride, int blurBorder) {
    srcStride = pxr::packedStride(srcStride, srcWidth, 2);
    dstStride = pxr::packedStride(dstStride, srcWidth, 2);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian5x5s16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && srcHeight > 1 && (srcStride >= srcWidth*sizeof(int16_t)) && (dstStride >= srcWidth*sizeof(int16_t)));
    pxr::dispatch<PXR_ROW_FilterGaussian5x5s16>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                                blurBorder);
}

PXR_API void pxrFilterGaussian5x5s32(const int32_t* src, uint32_t width, uint32_t height, int32_t* dst,
                                     int blurBorder) {
    const uint32_t stride = width * 4;
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian5x5s32,
                                       pxr::imageRule(width, height, src, stride, dst, stride));
    PXR_ASSERT(src && dst && width && height && width > 4 && height > 4);
    pxr::dispatch<PXR_ROW_FilterGaussian5x5s32>(k, src, width, height, stride, dst, stride, blurBorder);
}

PXR_API void pxrFilterGaussian5x5s32_v2(const int32_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, int32_t* dst, uint32_t dstStride, int blurBorder) {
    srcStride = pxr::packedStride(srcStride, srcWidth, 4);
    dstStride = pxr::packedStride(dstStride, srcWidth, 4);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterGaussian5x5s32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && srcWidth > 4 && srcHeight > 4 && (srcStride >= srcWidth*sizeof(int32_t)) && (dstStride >= srcWidth*sizeof(int32_t)));
    pxr::dispatch<PXR_ROW_FilterGaussian5x5s32>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                                blurBorder);
}

PXR_API void pxrBoxFilter3x3u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    const uint32_t srcStride = srcWidth, dstStride = srcWidth;  // packed rows
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_BoxFilter3x3u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && srcStride && dstStride && ( srcStride >=srcWidth ) && srcWidth > 2 && srcHeight > 2);
    pxr::dispatch<PXR_ROW_BoxFilter3x3u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

PXR_API int pxrBoxFilter3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride, pxrBorderType borderType,
                                 uint8_t borderValue) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_BoxFilter3x3u8_v2,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(static_cast<uint32_t>(borderType) <= PIXORA_BORDER_REPLICATE && src && dst && srcWidth &&
                    srcHeight && srcStride >= srcWidth && dstStride >= srcWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_BoxFilter3x3u8_v2>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                                    static_cast<uint32_t>(borderType), borderValue);
}

PXR_API void pxrBoxFilter5x5u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_BoxFilter5x5u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && srcWidth > 4 && srcHeight > 4);
    pxr::dispatch<PXR_ROW_BoxFilter5x5u8>(k, src, srcWidth, srcHeight, srcWidth, dst, srcWidth);
}

PXR_API void pxrBoxFilter11x11u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_BoxFilter11x11u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && srcWidth > 10 && srcHeight > 10);
    pxr::dispatch<PXR_ROW_BoxFilter11x11u8>(k, src, srcWidth, srcHeight, srcWidth, dst, srcWidth);
}

PXR_API void pxrBoxFilterNxNf32(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint32_t N, float* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth, 4);
    dstStride = pxr::packedStride(dstStride, srcWidth, 4);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_BoxFilterNxNf32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && (N > 1) && ((src == dst && srcStride == dstStride) || (src != dst)) && (srcStride >=srcWidth*4) && (dstStride >=srcWidth*4) && srcWidth > 4 && srcHeight > 4);
    pxr::dispatch<PXR_ROW_BoxFilterNxNf32>(k, src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

PXR_API int pxrNormalizeLocalBoxu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint32_t N, uint8_t* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_NormalizeLocalBoxu8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth && srcHeight && N >= 2 && N <= kMaxNormaliseWindow && srcStride >= srcWidth &&
                    dstStride >= srcWidth && (src != dst || srcStride == dstStride),
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_NormalizeLocalBoxu8>(k, src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

PXR_API int pxrNormalizeLocalBoxf32(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint32_t N, float* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth, 4);
    dstStride = pxr::packedStride(dstStride, srcWidth, 4);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_NormalizeLocalBoxf32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth && srcHeight && N >= 2 && N <= kMaxNormaliseWindow &&
                    srcStride >= rowBytes(srcWidth, 4) && dstStride >= rowBytes(srcWidth, 4) &&
                    (src != dst || srcStride == dstStride),
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_NormalizeLocalBoxf32>(k, src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

}  // extern "C"
