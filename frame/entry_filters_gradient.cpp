// Entry points of the gradient filters: Sobel magnitude, Sobel derivatives,
// central-difference, Sobel and Scharr gradients.
#include "frame/entry.h"
#include "imgproc/filters/gradient.h"
#include "pixora/filters_gradient.h"

namespace {

// Packed row size of a (width-2)-wide gradient output; 0 for images without
// an interior, whose outputs are never written.
uint32_t packedOut(uint32_t stride, uint32_t srcWidth, uint32_t bytesPerPixel) {
    if (stride) return stride;
    return srcWidth >= 2 ? (srcWidth - 2) * bytesPerPixel : 0;
}

// The common image rule; a planar output also needs its second plane aligned.
pxr::Rule planarRule(uint32_t w, uint32_t h, const void* src, uint32_t srcStride, const void* dx, const void* dy,
                     uint32_t dxyStride) {
    pxr::Rule r = pxr::imageRule(w, h, src, srcStride, dx, dxyStride);
    r.dspOk = r.dspOk && pxr::aligned(dy, 4);
    return r;
}

// The Sobel derivatives to 16 bits (status generation, no log).
template <uint32_t Row>
int sobelDerivatives(const char* name, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                     uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dstStride, pxrBorderType borderType,
                     uint8_t borderValue) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth, sizeof(int16_t));
    const uint32_t k = pxr::selectKind(name, Row, planarRule(srcWidth, srcHeight, src, srcStride, dx ? dx : dy,
                                                             dy ? dy : dx, dstStride));
    PXR_REQUIRE(static_cast<uint32_t>(borderType) <= PIXORA_BORDER_REPLICATE && src && (dx || dy) && srcWidth &&
                    srcHeight && srcStride >= srcWidth && dstStride >= uint64_t{srcWidth} * sizeof(int16_t),
                PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<Row>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dstStride,
                              static_cast<uint32_t>(borderType), borderValue);
}

}  // namespace

extern "C" {

PXR_API void pxrFilterSobel3x3u8(const uint8_t* src, uint32_t width, uint32_t height, uint8_t* dst) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterSobel3x3u8,
                                       pxr::imageRule(width, height, src, width, dst, width));
    PXR_ASSERT(src && width && height && dst);
    pxr::dispatch<PXR_ROW_FilterSobel3x3u8>(k, src, width, height, width, dst, width);
}

PXR_API void pxrFilterSobel3x3u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                    uint8_t* dst, uint32_t dstStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dstStride = pxr::packedStride(dstStride, srcWidth);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_FilterSobel3x3u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dst && (dstStride >= srcWidth));
    pxr::dispatch<PXR_ROW_FilterSobel3x3u8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

PXR_API int pxrFilterSobel3x3u8s16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   int16_t* dx, int16_t* dy, uint32_t dstStride, pxrBorderType borderType,
                                   uint8_t borderValue) {
    return sobelDerivatives<PXR_ROW_FilterSobel3x3u8s16>(__func__, src, srcWidth, srcHeight, srcStride, dx, dy,
                                                         dstStride, borderType, borderValue);
}

PXR_API int pxrFilterSobel5x5u8s16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   int16_t* dx, int16_t* dy, uint32_t dstStride, pxrBorderType borderType,
                                   uint8_t borderValue) {
    return sobelDerivatives<PXR_ROW_FilterSobel5x5u8s16>(__func__, src, srcWidth, srcHeight, srcStride, dx, dy,
                                                         dstStride, borderType, borderValue);
}

PXR_API int pxrFilterSobel7x7u8s16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                   int16_t* dx, int16_t* dy, uint32_t dstStride, pxrBorderType borderType,
                                   uint8_t borderValue) {
    return sobelDerivatives<PXR_ROW_FilterSobel7x7u8s16>(__func__, src, srcWidth, srcHeight, srcStride, dx, dy,
                                                         dstStride, borderType, borderValue);
}

// ---- central differences -------------------------------------------------

PXR_API void pxrImageGradientInterleaveds16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* gradients) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t gradStride = packedOut(0, srcWidth, 2 * sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientInterleaveds16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients);
    pxr::dispatch<PXR_ROW_ImageGradientInterleaveds16>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                        gradStride);
}

PXR_API void pxrImageGradientInterleaveds16_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    gradStride = packedOut(gradStride, srcWidth, 2 * sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientInterleaveds16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients && (gradStride >= ((srcWidth-2)*2*sizeof(int16_t))));
    pxr::dispatch<PXR_ROW_ImageGradientInterleaveds16>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                        gradStride);
}

PXR_API void pxrImageGradientInterleavedf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, float* gradients) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t gradStride = packedOut(0, srcWidth, 2 * sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientInterleavedf32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients);
    pxr::dispatch<PXR_ROW_ImageGradientInterleavedf32>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                        gradStride);
}

PXR_API void pxrImageGradientInterleavedf32_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, float* gradients, uint32_t gradStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    gradStride = packedOut(gradStride, srcWidth, 2 * sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientInterleavedf32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients && (gradStride >= ((srcWidth-2)*2*sizeof(float))));
    pxr::dispatch<PXR_ROW_ImageGradientInterleavedf32>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                        gradStride);
}

PXR_API void pxrImageGradientPlanars16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, int16_t* dx, int16_t* dy) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t dxyStride = packedOut(0, srcWidth, sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientPlanars16,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy);
    pxr::dispatch<PXR_ROW_ImageGradientPlanars16>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API void pxrImageGradientPlanars16_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dxyStride = packedOut(dxyStride, srcWidth, sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientPlanars16,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(int16_t))));
    pxr::dispatch<PXR_ROW_ImageGradientPlanars16>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API void pxrImageGradientPlanarf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, float* dx, float* dy) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t dxyStride = packedOut(0, srcWidth, sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientPlanarf32,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy);
    pxr::dispatch<PXR_ROW_ImageGradientPlanarf32>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API void pxrImageGradientPlanarf32_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dxyStride = packedOut(dxyStride, srcWidth, sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientPlanarf32,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(float))));
    pxr::dispatch<PXR_ROW_ImageGradientPlanarf32>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

// ---- Sobel gradients -------------------------------------------------------

PXR_API void pxrImageGradientSobelInterleaveds16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                 uint32_t srcStride, int16_t* gradients) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t gradStride = packedOut(0, srcWidth, 2 * sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelInterleaveds16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients);
    pxr::dispatch<PXR_ROW_ImageGradientSobelInterleaveds16>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                             gradStride);
}

PXR_API void pxrImageGradientSobelInterleaveds16_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    gradStride = packedOut(gradStride, srcWidth, 2 * sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelInterleaveds16,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients && (gradStride >= ((srcWidth-2)*2*sizeof(int16_t))));
    pxr::dispatch<PXR_ROW_ImageGradientSobelInterleaveds16>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                             gradStride);
}

PXR_API int pxrImageGradientSobelInterleaveds16_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                   uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    gradStride = packedOut(gradStride, srcWidth, 2 * sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelInterleaveds16_v3,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients && (gradStride >= ((srcWidth-2)*2*sizeof(int16_t))), PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_ImageGradientSobelInterleaveds16_v3>(k, src, srcWidth, srcHeight, srcStride,
                                                                       gradients, gradStride);
}

PXR_API void pxrImageGradientSobelInterleavedf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                 uint32_t srcStride, float* gradients) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t gradStride = packedOut(0, srcWidth, 2 * sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelInterleavedf32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients);
    pxr::dispatch<PXR_ROW_ImageGradientSobelInterleavedf32>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                             gradStride);
}

PXR_API void pxrImageGradientSobelInterleavedf32_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                    uint32_t srcStride, float* gradients, uint32_t gradStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    gradStride = packedOut(gradStride, srcWidth, 2 * sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelInterleavedf32,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients && (gradStride >= ((srcWidth-2)*2*sizeof(float))));
    pxr::dispatch<PXR_ROW_ImageGradientSobelInterleavedf32>(k, src, srcWidth, srcHeight, srcStride, gradients,
                                                             gradStride);
}

PXR_API void pxrImageGradientSobelPlanars16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* dx, int16_t* dy) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t dxyStride = packedOut(0, srcWidth, sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanars16,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy);
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanars16>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API void pxrImageGradientSobelPlanars16_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dxyStride = packedOut(dxyStride, srcWidth, sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanars16,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(int16_t))));
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanars16>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API int pxrImageGradientSobelPlanars16_v3(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dxyStride = packedOut(dxyStride, srcWidth, sizeof(int16_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanars16_v3,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(int16_t))), PIXORA_STATUS_BAD_PARAM);
    return pxr::dispatch<PXR_ROW_ImageGradientSobelPlanars16_v3>(k, src, srcWidth, srcHeight, srcStride, dx, dy,
                                                                  dxyStride);
}

PXR_API void pxrImageGradientSobelPlanars8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, int8_t* dx, int8_t* dy) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t dxyStride = packedOut(0, srcWidth, sizeof(int8_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanars8,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy);
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanars8>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API void pxrImageGradientSobelPlanars8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, int8_t* dx, int8_t* dy, uint32_t dxyStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dxyStride = packedOut(dxyStride, srcWidth, sizeof(int8_t));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanars8,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(int8_t))));
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanars8>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API void pxrImageGradientSobelPlanarf32(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, float* dx, float* dy) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    const uint32_t dxyStride = packedOut(0, srcWidth, sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanarf32,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy);
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanarf32>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

PXR_API void pxrImageGradientSobelPlanarf32_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    dxyStride = packedOut(dxyStride, srcWidth, sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanarf32,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(float))));
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanarf32>(k, src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

// The float source's stride is in bytes, like every stride; the plain
// generation's check compares it with the width as it always has.
PXR_API void pxrImageGradientSobelPlanarf32f32(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                               uint32_t srcStride, float* dx, float* dy) {
    srcStride = pxr::packedStride(srcStride, srcWidth, sizeof(float));
    const uint32_t dxyStride = packedOut(0, srcWidth, sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanarf32f32,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && srcStride >= srcWidth && dx && dy);
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanarf32f32>(k, src, srcWidth, srcHeight, srcStride, dx, dy,
                                                           dxyStride);
}

PXR_API void pxrImageGradientSobelPlanarf32f32_v2(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                                  uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth, sizeof(float));
    dxyStride = packedOut(dxyStride, srcWidth, sizeof(float));
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ImageGradientSobelPlanarf32f32,
                                       planarRule(srcWidth, srcHeight, src, srcStride, dx, dy, dxyStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth*sizeof(float)) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(float))));
    pxr::dispatch<PXR_ROW_ImageGradientSobelPlanarf32f32>(k, src, srcWidth, srcHeight, srcStride, dx, dy,
                                                           dxyStride);
}

// ---- Scharr (internal row with an entry point of its own) ----------------

PXR_API void pxrImageGradientScharrInterleaveds16(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                  uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    srcStride = pxr::packedStride(srcStride, srcWidth);
    gradStride = packedOut(gradStride, srcWidth, 2 * sizeof(int16_t));
    const uint32_t k =
        pxr::selectInternalKind(__func__, PXR_IROW_ImageGradientScharrInterleaveds16,
                                pxr::imageRule(srcWidth, srcHeight, src, srcStride, gradients, gradStride));
    PXR_ASSERT(src && srcWidth && srcHeight && (srcStride >= srcWidth) && gradients && (gradStride >= ((srcWidth-2)*2*sizeof(int16_t))));
    pxr::dispatchInternal<PXR_IROW_ImageGradientScharrInterleaveds16>(k, src, srcWidth, srcHeight, srcStride,
                                                                       gradients, gradStride);
}

}  // extern "C"
