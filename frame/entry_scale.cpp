// Entry points of the scaling family: block averages, resampling to a given
// size, Gaussian halving and doubling, polyphase up-scaling, up-sampling.
// Every member takes the common image rule (that of the 3x3 Gaussian _v2).
#include "frame/entry.h"
#include "imgproc/scale/scale.h"
#include "pixora/scale.h"

namespace {

pxr::Rule rule(uint32_t w, uint32_t h, const void* src, uint32_t srcStride, const void* dst, uint32_t dstStride) {
    return pxr::imageRule(w, h, src, srcStride, dst, dstStride);
}

// Shrinking and resampling members with the source and destination sizes given.
template <uint32_t Row, class R>
R resampleEntry(const char* name, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(name, Row, rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    if (!(src && dst && srcWidth && srcHeight && dstWidth && dstHeight && (dstWidth <= srcWidth) &&
          (dstHeight <= srcHeight) && (srcStride >= srcWidth) && (dstStride >= dstWidth))) {
        if constexpr (std::is_void_v<R>) {
            pxr::assertionFailed(name,
                                 "src && dst && srcWidth && srcHeight && dstWidth && dstHeight && (dstWidth <= "
                                 "srcWidth) && (dstHeight <= srcHeight) && (srcStride >= srcWidth) && (dstStride "
                                 ">= dstWidth)");
            return;
        } else {
            return PIXORA_STATUS_BAD_PARAM;
        }
    }
    return pxr::dispatch<Row>(k, src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride);
}

// The M-by-N reductions (status; a pixel pair per column when interleaved).
template <uint32_t Row>
int mnEntry(const char* name, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
            uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride, uint32_t channels) {
    srcStride = pxr::packedStride(srcStride, srcWidth, channels);
    dstStride = pxr::packedStride(dstStride, dstWidth, channels);
    const uint32_t k = pxr::selectKind(name, Row, rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth && srcHeight && dstWidth && dstHeight && dstWidth <= srcWidth &&
                    dstHeight <= srcHeight && srcStride >= uint64_t{srcWidth} * channels &&
                    dstStride >= uint64_t{dstWidth} * channels,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<Row>(k, src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride);
}

// Doubling members: `channels` bytes per pixel, output rows of
// widthFactor x width pixels and 2 x height rows.
template <uint32_t Row>
void doubleEntry(const char* name, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                 uint8_t* dst, uint32_t dstStride, uint32_t channels, uint32_t widthFactor) {
    const uint64_t srcRow = uint64_t{srcWidth} * channels, dstRow = srcRow * widthFactor;
    srcStride = srcStride ? srcStride : static_cast<uint32_t>(srcRow);
    dstStride = dstStride ? dstStride : static_cast<uint32_t>(dstRow);
    const uint32_t k = pxr::selectKind(name, Row, rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    if (!(src && dst && srcWidth && srcHeight && (srcStride >= srcRow) && (dstStride >= dstRow)))
        return pxr::assertionFailed(name, "src && dst && srcWidth && srcHeight && (srcStride >= srcRow) && "
                                          "(dstStride >= dstRow)");
    pxr::dispatch<Row>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

}  // namespace

extern "C" {

PXR_API void pxrScaleDownBy2u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDownBy2u8,
                                       rule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth / 2));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1));
    pxr::dispatch<PXR_ROW_ScaleDownBy2u8>(k, src, srcWidth, srcHeight, srcWidth, dst, srcWidth / 2);
}

PXR_API void pxrScaleDownBy2u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride) {
    const uint32_t dstWidth = srcWidth / 2;
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDownBy2u8,
                                       rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1) && (srcStride >= srcWidth) && (dstStride >= dstWidth));
    pxr::dispatch<PXR_ROW_ScaleDownBy2u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

PXR_API void pxrScaleDownBy4u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDownBy4u8,
                                       rule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth / 4));
    PXR_ASSERT(src && dst && (srcWidth > 3) && (srcHeight > 3));
    pxr::dispatch<PXR_ROW_ScaleDownBy4u8>(k, src, srcWidth, srcHeight, srcWidth, dst, srcWidth / 4);
}

PXR_API void pxrScaleDownBy4u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride) {
    const uint32_t dstWidth = srcWidth / 4;
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDownBy4u8,
                                       rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && (srcWidth > 3) && (srcHeight > 3) && (srcStride >= srcWidth) && (dstStride >= dstWidth));
    pxr::dispatch<PXR_ROW_ScaleDownBy4u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

PXR_API void pxrScaleDown3To2u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride) {
    const uint32_t dstWidth = static_cast<uint32_t>(2 * uint64_t{srcWidth} / 3);
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDown3To2u8,
                                       rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1) && (srcStride >= srcWidth) && (dstStride >= dstWidth));
    pxr::dispatch<PXR_ROW_ScaleDown3To2u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

PXR_API void pxrScaleDownNNu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    resampleEntry<PXR_ROW_ScaleDownNNu8, void>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstWidth,
                                               dstHeight, dstStride);
}

PXR_API void pxrScaleDownu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst,
                            uint32_t dstWidth, uint32_t dstHeight) {
    resampleEntry<PXR_ROW_ScaleDownu8, void>(__func__, src, srcWidth, srcHeight, srcWidth, dst, dstWidth,
                                             dstHeight, dstWidth);
}

PXR_API void pxrScaleDownu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    resampleEntry<PXR_ROW_ScaleDownu8, void>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstWidth,
                                             dstHeight, dstStride);
}

PXR_API void pxrScaleDownBLu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    resampleEntry<PXR_ROW_ScaleDownBLu8, void>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstWidth,
                                               dstHeight, dstStride);
}

PXR_API int pxrScaleDownMNu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    return mnEntry<PXR_ROW_ScaleDownMNu8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight,
                                          dstStride, 1);
}

PXR_API int pxrScaleDownMNInterleaveu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight,
                                       uint32_t dstStride) {
    return mnEntry<PXR_ROW_ScaleDownMNInterleaveu8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstWidth,
                                                    dstHeight, dstStride, 2);
}

PXR_API int pxrScaleu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_Scaleu8,
                                       rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth && srcHeight && dstWidth && dstHeight && srcStride >= srcWidth &&
                    dstStride >= dstWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_Scaleu8>(k, src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight,
                                          dstStride);
}

PXR_API int pxrScaleu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride,
                          pxrInterpolationType interpolation) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_Scaleu8_v2,
                                       rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(static_cast<uint32_t>(interpolation) <= PIXORA_INTERPOLATION_AREA && src && dst && srcWidth &&
                    srcHeight && dstWidth && dstHeight && srcStride >= srcWidth && dstStride >= dstWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_Scaleu8_v2>(k, src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight,
                                             dstStride, static_cast<uint32_t>(interpolation));
}

PXR_API void pxrScaleDownBy2Gaussian5x5u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDownBy2Gaussian5x5u8,
                                       rule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth / 2));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1));
    pxr::dispatch<PXR_ROW_ScaleDownBy2Gaussian5x5u8>(k, src, srcWidth, srcHeight, dst);
}

PXR_API void pxrScaleDownBy2Gaussian5x5u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    const uint32_t dstWidth = srcWidth / 2;
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2,
                                       rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1) && (srcStride >= srcWidth) && (dstStride >= dstWidth));
    pxr::dispatch<PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

PXR_API int pxrScaleDownBy2Gaussian3x3u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    const uint32_t dstWidth = srcWidth / 2;
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, dstWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleDownBy2Gaussian3x3u8,
                                       rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_REQUIRE(src && dst && srcWidth > 1 && srcHeight > 1 && srcStride >= srcWidth && dstStride >= dstWidth,
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_ScaleDownBy2Gaussian3x3u8>(k, src, srcWidth, srcHeight, srcStride, dst,
                                                            dstStride);
}

PXR_API void pxrScaleDownBy2Gaussian5x5f32(const float* src, uint32_t srcWidth, uint32_t srcHeight, float* dst) {
    const uint32_t k = pxr::selectInternalKind(__func__, PXR_IROW_ScaleDownBy2Gaussian5x5f32,
                                               rule(srcWidth, srcHeight, src, srcWidth * 4, dst, srcWidth / 2 * 4));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1));
    pxr::dispatchInternal<PXR_IROW_ScaleDownBy2Gaussian5x5f32>(k, src, srcWidth, srcHeight, dst);
}

PXR_API void pxrScaleDownBy2Gaussian5x5f32_v2(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, float* dst, uint32_t dstStride) {
    const uint64_t srcRow = uint64_t{srcWidth} * sizeof(float), dstRow = uint64_t{srcWidth / 2} * sizeof(float);
    srcStride = srcStride ? srcStride : static_cast<uint32_t>(srcRow);
    dstStride = dstStride ? dstStride : static_cast<uint32_t>(dstRow);
    const uint32_t k = pxr::selectInternalKind(__func__, PXR_IROW_ScaleDownBy2Gaussian5x5f32_v2,
                                               rule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && (srcWidth > 1) && (srcHeight > 1) && (srcStride >= srcRow) && (dstStride >= dstRow));
    pxr::dispatchInternal<PXR_IROW_ScaleDownBy2Gaussian5x5f32_v2>(k, src, srcWidth, srcHeight, srcStride, dst,
                                                                  dstStride);
}

PXR_API void pxrScaleUpBy2Gaussian5x5u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ScaleUpBy2Gaussian5x5u8,
                                       rule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth * 2));
    PXR_ASSERT(src && dst && srcWidth && srcHeight);
    pxr::dispatch<PXR_ROW_ScaleUpBy2Gaussian5x5u8>(k, src, srcWidth, srcHeight, srcWidth, dst, srcWidth * 2);
}

PXR_API void pxrScaleUpBy2Gaussian5x5u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_ScaleUpBy2Gaussian5x5u8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, 2);
}

PXR_API void pxrScaleUpPolyu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_ScaleUpPolyu8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, 2);
}

PXR_API void pxrScaleUpPolyInterleaveu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_ScaleUpPolyInterleaveu8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstStride, 2,
                                                 2);
}

PXR_API void pxrUpsampleVerticalu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_UpsampleVerticalu8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, 1);
}

PXR_API void pxrUpsampleHorizontalu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_UpsampleHorizontalu8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, 2);
}

PXR_API void pxrUpsample2Du8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_Upsample2Du8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstStride, 1, 2);
}

PXR_API void pxrUpsampleVerticalInterleavedu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_UpsampleVerticalInterleavedu8>(__func__, src, srcWidth, srcHeight, srcStride, dst,
                                                       dstStride, 2, 1);
}

PXR_API void pxrUpsampleHorizontalInterleavedu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_UpsampleHorizontalInterleavedu8>(__func__, src, srcWidth, srcHeight, srcStride, dst,
                                                         dstStride, 2, 2);
}

PXR_API void pxrUpsample2DInterleavedu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    doubleEntry<PXR_ROW_Upsample2DInterleavedu8>(__func__, src, srcWidth, srcHeight, srcStride, dst, dstStride, 2,
                                                 2);
}

}  // extern "C"
