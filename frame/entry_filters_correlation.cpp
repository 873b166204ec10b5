// Entry points of the correlation and convolution filters.
#include "frame/entry.h"
#include "imgproc/filters/correlation.h"
#include "pixora/filters_correlation.h"

namespace {

// Row sizes of the wider pixel types, without 32-bit wrap-around.
constexpr uint64_t rowBytes(uint32_t width, uint32_t bytesPerPixel) { return uint64_t{width} * bytesPerPixel; }

}  // namespace

extern "C" {

PXR_API void pxrFilterCorr3x3s8(const int8_t* kernel, int32_t shift, const uint8_t* src, uint32_t w, uint32_t h,
                                uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorr3x3s8_v2, pxr::imageRule(w, h, src, w, dst, w));
    PXR_ASSERT(kernel && src && dst && w && h);
    pxr::dispatch<PXR_ROW_FilterCorr3x3s8_v2>(k, kernel, shift, src, w, h, w, dst, w);
}

PXR_API void pxrFilterCorr3x3s8_v2(const int8_t* kernel, int32_t shift, const uint8_t* src, uint32_t srcWidth,
                                   uint32_t srcHeight, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorr3x3s8_v2,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(kernel && src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && (dstStride >= srcWidth));
    pxr::dispatch<PXR_ROW_FilterCorr3x3s8_v2>(k, kernel, shift, src, srcWidth, srcHeight, srcStride, dst,
                                              dstStride);
}

PXR_API int pxrFilterCorrNxNu8(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src,
                               uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                               uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorrNxNu8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(kernel && N && src && dst && srcWidth && srcHeight && srcStride >= srcWidth && dstStride >= srcWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterCorrNxNu8>(k, kernel, N, shift, src, srcWidth, srcHeight, srcStride, dst,
                                                  dstStride);
}

PXR_API int pxrFilterCorrNxNu8s16(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src,
                                  uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, int16_t* dst,
                                  uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth, 2);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorrNxNu8s16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(kernel && N && src && dst && srcWidth && srcHeight && srcStride >= srcWidth &&
                    dstStride >= rowBytes(srcWidth, 2),
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterCorrNxNu8s16>(k, kernel, N, shift, src, srcWidth, srcHeight, srcStride, dst,
                                                     dstStride);
}

PXR_API int pxrFilterCorrNxNu8f32(const float* kernel, uint32_t N, const uint8_t* src, uint32_t srcWidth,
                                  uint32_t srcHeight, uint32_t srcStride, float* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth, 4);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorrNxNu8f32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(kernel && N && src && dst && srcWidth && srcHeight && srcStride >= srcWidth &&
                    dstStride >= rowBytes(srcWidth, 4),
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterCorrNxNu8f32>(k, kernel, N, src, srcWidth, srcHeight, srcStride, dst,
                                                     dstStride);
}

PXR_API int pxrFilterCorrSepMxNu8(const int8_t* kernelX, uint32_t M, const int8_t* kernelY, uint32_t N,
                                  int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                  uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorrSepMxNu8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(kernelX && M && kernelY && N && src && dst && srcWidth && srcHeight && srcStride >= srcWidth &&
                    dstStride >= srcWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterCorrSepMxNu8>(k, kernelX, M, kernelY, N, shift, src, srcWidth, srcHeight,
                                                     srcStride, dst, dstStride);
}

// The plain and _v2 generations of the fixed-size separable Q15 filters.
#define PXR_CORR_SEP_ENTRIES(n)                                                                                   \
    PXR_API void pxrFilterCorrSep##n##x##n##s16(const int16_t* knl, const int16_t* src, uint32_t w, uint32_t h,  \
                                                int16_t* tmp, int16_t* dst) {                                     \
        const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorrSep##n##x##n##s16,                         \
                                           pxr::imageRule(w, h, src, w * 2, dst, w * 2));                         \
        PXR_ASSERT(knl && src && tmp && dst && w && h);                                                           \
        pxr::dispatch<PXR_ROW_FilterCorrSep##n##x##n##s16>(k, knl, src, w, h, w * 2, tmp, dst, w * 2);            \
    }                                                                                                             \
    PXR_API void pxrFilterCorrSep##n##x##n##s16_v2(const int16_t* kernel, const int16_t* srcImg, uint32_t w,      \
                                                   uint32_t h, uint32_t srcStride, int16_t* tmpImg,               \
                                                   int16_t* dstImg, uint32_t dstStride) {                         \
        srcStride = pxr::packedStride(srcStride, w, 2);                                                           \
        dstStride = pxr::packedStride(dstStride, w, 2);                                                           \
        const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorrSep##n##x##n##s16,                         \
                                           pxr::imageRule(w, h, srcImg, srcStride, dstImg, dstStride));           \
        PXR_ASSERT(kernel && srcImg && tmpImg && dstImg && w && h && (srcStride >= w*sizeof(int16_t)) &&         \
                   (dstStride >= w*sizeof(int16_t)));                                                             \
        pxr::dispatch<PXR_ROW_FilterCorrSep##n##x##n##s16>(k, kernel, srcImg, w, h, srcStride, tmpImg, dstImg,    \
                                                           dstStride);                                            \
    }
PXR_CORR_SEP_ENTRIES(9)
PXR_CORR_SEP_ENTRIES(11)
PXR_CORR_SEP_ENTRIES(13)
PXR_CORR_SEP_ENTRIES(15)
PXR_CORR_SEP_ENTRIES(17)
#undef PXR_CORR_SEP_ENTRIES

PXR_API void pxrFilterCorrSepNxNs16(const int16_t* kernel, uint32_t knlSize, const int16_t* srcImg, uint32_t w,
                                    uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                                    uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, w, 2);
    dstStride = pxr::packedStride(dstStride, w, 2);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterCorrSepNxNs16,
                                       pxr::imageRule(w, h, srcImg, srcStride, dstImg, dstStride));
    PXR_ASSERT(kernel && knlSize && srcImg && tmpImg && dstImg && w && h && (srcStride >= w*sizeof(int16_t)) && (dstStride >= w*sizeof(int16_t)));
    pxr::dispatch<PXR_ROW_FilterCorrSepNxNs16>(k, kernel, knlSize, srcImg, w, h, srcStride, tmpImg, dstImg,
                                               dstStride);
}

PXR_API int pxrFilterConvolveMxNu8(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight,
                                   int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                   uint32_t srcStride, uint8_t* dst, uint32_t dstStride, pxrBorderType borderType,
                                   uint8_t borderValue) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterConvolveMxNu8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(static_cast<uint32_t>(borderType) <= PIXORA_BORDER_REPLICATE && kernel && kernelWidth &&
                    kernelHeight && src && dst && srcWidth && srcHeight && srcStride >= srcWidth &&
                    dstStride >= srcWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterConvolveMxNu8>(k, kernel, kernelWidth, kernelHeight, shift, src, srcWidth,
                                                      srcHeight, srcStride, dst, dstStride,
                                                      static_cast<uint32_t>(borderType), borderValue);
}

PXR_API int pxrFilterConvolveMxNu8s16(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight,
                                      int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, int16_t* dst, uint32_t dstStride,
                                      pxrBorderType borderType, uint8_t borderValue) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth, 2);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterConvolveMxNu8s16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(static_cast<uint32_t>(borderType) <= PIXORA_BORDER_REPLICATE && kernel && kernelWidth &&
                    kernelHeight && src && dst && srcWidth && srcHeight && srcStride >= srcWidth &&
                    dstStride >= rowBytes(srcWidth, 2),
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterConvolveMxNu8s16>(k, kernel, kernelWidth, kernelHeight, shift, src,
                                                         srcWidth, srcHeight, srcStride, dst, dstStride,
                                                         static_cast<uint32_t>(borderType), borderValue);
}

}  // extern "C"
