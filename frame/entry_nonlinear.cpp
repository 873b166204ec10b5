// Entry points of the non-linear filters: M x N median, bilateral and
// morphology (the 3x3 median is in entry_filters.cpp).
#include <cmath>

#include "frame/entry.h"
#include "imgproc/filters/nonlinear.h"
#include "imgproc/filters/nonlinear_median_mxn_kernels.h"
#include "pixora/filters_nonlinear.h"

namespace {

constexpr uint64_t rowBytes(uint32_t width, uint32_t bytesPerPixel) { return uint64_t{width} * bytesPerPixel; }

// Window sides of the M x N median: odd, 1 to 15.
constexpr bool medianSide(uint32_t n) { return (n & 1) && n <= pxr::medianmxn::kMaxSide; }

bool sigmaOk(float sigma) { return std::isfinite(sigma) && sigma > 0.0f; }

}  // namespace

extern "C" {

PXR_API int pxrFilterMedianMxNs16(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint32_t M, uint32_t N, int16_t* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth, 2);
    dstStride = pxr::packedStride(dstStride, srcWidth, 2);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterMedianMxNs16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth && srcHeight && srcStride >= rowBytes(srcWidth, 2) &&
                    dstStride >= rowBytes(srcWidth, 2) && medianSide(M) && medianSide(N),
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_FilterMedianMxNs16>(k, src, srcWidth, srcHeight, srcStride, M, N, dst, dstStride);
}

// ---- Bilateral ---------------------------------------------------------------

#define PXR_BILATERAL_FIXED(Name, Row)                                                                                \
    PXR_API void Name(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,          \
                      uint32_t dstStride) {                                                                           \
        srcStride = pxr::packedStride(srcStride, width);                                                              \
        dstStride = pxr::packedStride(dstStride, width);                                                              \
        const uint32_t k =                                                                                            \
            pxr::selectKind(__func__, Row, pxr::imageRule(width, height, src, srcStride, dst, dstStride));            \
        PXR_ASSERT(src && dst && width && height && (srcStride >= width) && (dstStride >= width));                    \
        pxr::dispatch<Row>(k, src, width, height, srcStride, dst, dstStride);                                         \
    }

#define PXR_BILATERAL_SIGMAS(Name, Row)                                                                               \
    PXR_API int Name(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,     \
                     uint32_t dstStride, float sigmaColor, float sigmaSpace) {                                        \
        srcStride = pxr::packedStride(srcStride, srcWidth);                                                           \
        dstStride = pxr::packedStride(dstStride, srcWidth);                                                           \
        const uint32_t k = pxr::selectKind(__func__, Row,                                                             \
                                           pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));      \
        PXR_REQUIRE(src && dst && srcWidth && srcHeight && srcStride >= srcWidth && dstStride >= srcWidth &&          \
                        sigmaOk(sigmaColor) && sigmaOk(sigmaSpace),                                                   \
                    PIXORA_STATUS_BAD_PARAM);                                                                         \
        return pxr::dispatch<Row>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride, sigmaColor,                 \
                                             sigmaSpace);                                                             \
    }

PXR_BILATERAL_FIXED(pxrBilateralFilter5x5u8, PXR_ROW_BilateralFilter5x5u8)
PXR_BILATERAL_FIXED(pxrBilateralFilter7x7u8, PXR_ROW_BilateralFilter7x7u8)
PXR_BILATERAL_FIXED(pxrBilateralFilter9x9u8, PXR_ROW_BilateralFilter9x9u8)
PXR_BILATERAL_SIGMAS(pxrBilateralFilter5x5u8_v2, PXR_ROW_BilateralFilter5x5u8_v2)
PXR_BILATERAL_SIGMAS(pxrBilateralFilter7x7u8_v2, PXR_ROW_BilateralFilter7x7u8_v2)
PXR_BILATERAL_SIGMAS(pxrBilateralFilter9x9u8_v2, PXR_ROW_BilateralFilter9x9u8_v2)
PXR_BILATERAL_SIGMAS(pxrBilateralFilterRecursiveu8, PXR_ROW_BilateralFilterRecursiveu8)

// ---- Morphology --------------------------------------------------------------

#define PXR_MORPHOLOGY_3X3(Name, Row)                                                                                 \
    PXR_API void Name(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst) {                            \
        const uint32_t k = pxr::selectKind(__func__, Row, pxr::imageRule(width, height, src, width, dst, width));     \
        PXR_ASSERT(src && dst && width && height);                                                                    \
        pxr::dispatch<Row>(k, src, width, height, width, dst, width);                                                 \
    }                                                                                                                 \
    PXR_API void Name##_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,             \
                           uint8_t* dst, uint32_t dstStride) {                                                        \
        srcStride = pxr::packedStride(srcStride, srcWidth);                                                           \
        dstStride = pxr::packedStride(dstStride, srcWidth);                                                           \
        const uint32_t k =                                                                                            \
            pxr::selectKind(__func__, Row, pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));      \
        PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && (dstStride >= srcWidth));        \
        pxr::dispatch<Row>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);                                   \
    }                                                                                                                 \
    PXR_API int Name##_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,              \
                          uint8_t* dst, uint32_t dstStride, pxrBorderType borderType, uint8_t borderValue) {          \
        srcStride = pxr::packedStride(srcStride, srcWidth);                                                           \
        dstStride = pxr::packedStride(dstStride, srcWidth);                                                           \
        const uint32_t k = pxr::selectKind(__func__, Row##_v3,                                                        \
                                           pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));      \
        PXR_REQUIRE(static_cast<uint32_t>(borderType) <= PIXORA_BORDER_REPLICATE && src && dst && srcWidth &&         \
                        srcHeight && srcStride >= srcWidth && dstStride >= srcWidth,                                  \
                    PIXORA_STATUS_BAD_PARAM);                                                                         \
        return pxr::dispatch<Row##_v3>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride,                        \
                                       static_cast<uint32_t>(borderType), borderValue);                               \
    }

PXR_MORPHOLOGY_3X3(pxrFilterErode3x3u8, PXR_ROW_FilterErode3x3u8)
PXR_MORPHOLOGY_3X3(pxrFilterDilate3x3u8, PXR_ROW_FilterDilate3x3u8)

#define PXR_MORPHOLOGY_NXN(Name, Row)                                                                                 \
    PXR_API int Name(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,       \
                     uint8_t* dst, uint32_t dstStride) {                                                              \
        srcStride = pxr::packedStride(srcStride, srcWidth);                                                           \
        dstStride = pxr::packedStride(dstStride, srcWidth);                                                           \
        const uint32_t k =                                                                                            \
            pxr::selectKind(__func__, Row, pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));      \
        PXR_REQUIRE(src && dst && srcWidth && srcHeight && srcStride >= srcWidth && dstStride >= srcWidth &&          \
                        (N & 1),                                                                                      \
                    PIXORA_STATUS_BAD_PARAM);                                                                         \
        return pxr::dispatch<Row>(k, src, srcWidth, srcHeight, srcStride, N, dst, dstStride);                         \
    }

PXR_MORPHOLOGY_NXN(pxrFilterErodeNxNu8, PXR_ROW_FilterErodeNxNu8)
PXR_MORPHOLOGY_NXN(pxrFilterDilateNxNu8, PXR_ROW_FilterDilateNxNu8)

}  // extern "C"
