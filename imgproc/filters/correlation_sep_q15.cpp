// Separable Q15 correlation of 16-bit images: a vertical pass from src into
// the caller's packed tmp image, then a horizontal pass from tmp into dst,
// the kernel cropped at the edges without renormalisation. The fixed sizes
// are the N x N routine with N fixed.
#include "imgproc/filters/correlation.h"
#include "imgproc/filters/correlation_kernels.h"

using namespace pxr::corr;

void pxrFilterCorrSepNxNs16C(const int16_t* kernel, uint32_t knlSize, const int16_t* srcImg, uint32_t w,
                             uint32_t h, uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,
                             uint32_t dstStride) {
    const auto* src = reinterpret_cast<const uint8_t*>(srcImg);
    auto* tmp = reinterpret_cast<uint8_t*>(tmpImg);
    auto* dst = reinterpret_cast<uint8_t*>(dstImg);
    const size_t tmpStride = size_t{w} * 2;
    for (uint32_t y = 0; y < h; ++y) q15VerticalSpan(src, srcStride, h, kernel, knlSize, y, tmp + y * tmpStride, 0, w);
    for (uint32_t y = 0; y < h; ++y)
        q15HorizontalSpan(tmp + y * tmpStride, w, kernel, knlSize, dst + size_t{y} * dstStride, 0, w);
}

#define PXR_CORR_SEP_FIXED(n)                                                                                \
    void pxrFilterCorrSep##n##x##n##s16C(const int16_t* kernel, const int16_t* srcImg, uint32_t w, uint32_t h, \
                                         uint32_t srcStride, int16_t* tmpImg, int16_t* dstImg,               \
                                         uint32_t dstStride) {                                               \
        pxrFilterCorrSepNxNs16C(kernel, n, srcImg, w, h, srcStride, tmpImg, dstImg, dstStride);              \
    }
PXR_CORR_SEP_FIXED(9)
PXR_CORR_SEP_FIXED(11)
PXR_CORR_SEP_FIXED(13)
PXR_CORR_SEP_FIXED(15)
PXR_CORR_SEP_FIXED(17)
#undef PXR_CORR_SEP_FIXED
