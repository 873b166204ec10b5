// 3x3 Gaussian on bytes: [1 2 1] x [1 2 1] / 16, truncating.
#include "frame/entry.h"
#include "imgproc/filters/filters.h"
#include "imgproc/filters/gaussian3x3_kernels.h"

using namespace pxr::gauss3;

void pxrFilterGaussian3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder) {
    // A one-pixel-wide or -high image has no 3x3 neighbourhood to speak of:
    // nothing is written rather than ending the process on the invariant.
    if (srcWidth < 2 || srcHeight < 2) return;
    const int w_2 = static_cast<int>(srcWidth) - 2;
    const int w6 = (w_2 / 6) * 6;
    PXR_INVARIANT("pixoraBlurC", w6<=w_2 && w6>=w_2-5);
    for (uint32_t y = 1; y + 1 < srcHeight; ++y) {
        const uint8_t* m = src + size_t{y} * srcStride;
        const uint8_t* t = m - srcStride;
        const uint8_t* b = m + srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        // Six columns per step, then the 0..5 that remain.
        uint32_t c0 = t[0] + 2u * m[0] + b[0];
        uint32_t c1 = t[1] + 2u * m[1] + b[1];
        uint32_t x = 1;
        for (; x < 1u + static_cast<uint32_t>(w6); x += 6) {
            uint32_t c2 = t[x + 1] + 2u * m[x + 1] + b[x + 1];
            uint32_t c3 = t[x + 2] + 2u * m[x + 2] + b[x + 2];
            uint32_t c4 = t[x + 3] + 2u * m[x + 3] + b[x + 3];
            uint32_t c5 = t[x + 4] + 2u * m[x + 4] + b[x + 4];
            uint32_t c6 = t[x + 5] + 2u * m[x + 5] + b[x + 5];
            uint32_t c7 = t[x + 6] + 2u * m[x + 6] + b[x + 6];
            out[x + 0] = static_cast<uint8_t>((c0 + 2u * c1 + c2) >> 4);
            out[x + 1] = static_cast<uint8_t>((c1 + 2u * c2 + c3) >> 4);
            out[x + 2] = static_cast<uint8_t>((c2 + 2u * c3 + c4) >> 4);
            out[x + 3] = static_cast<uint8_t>((c3 + 2u * c4 + c5) >> 4);
            out[x + 4] = static_cast<uint8_t>((c4 + 2u * c5 + c6) >> 4);
            out[x + 5] = static_cast<uint8_t>((c5 + 2u * c6 + c7) >> 4);
            c0 = c6;
            c1 = c7;
        }
        interiorSpan(t, m, b, out, x, srcWidth - 1);
    }
    if (blurBorder == 1) border(src, srcWidth, srcHeight, srcStride, dst, dstStride, Border::Renormalise, 0);
}

int pxrFilterGaussian3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                               uint32_t borderType, uint8_t borderValue) {
    const Border rule = fromType(borderType);
    if (srcWidth >= 2 && srcHeight >= 2)
        pxrFilterGaussian3x3u8C(src, srcWidth, srcHeight, srcStride, dst, dstStride, 0);
    border(src, srcWidth, srcHeight, srcStride, dst, dstStride, rule, borderValue);
    return 0;
}
