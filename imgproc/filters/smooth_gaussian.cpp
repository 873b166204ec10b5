// 5x5 and 11x11 Gaussians (binomial kernels) on bytes, and the 5x5 on
// signed 16- and 32-bit images.
#include "imgproc/filters/smooth.h"
#include "imgproc/filters/smooth_gaussian_kernels.h"

namespace {

template <class K>
void run(const void* src, uint32_t width, uint32_t height, uint32_t srcStride, void* dst, uint32_t dstStride,
         int blurBorder) {
    using T = typename K::T;
    pxr::smooth::gaussFilter<K>({static_cast<const uint8_t*>(src), width, height, srcStride},
                                pxr::smooth::OutPlane<T>{static_cast<uint8_t*>(dst), dstStride}, blurBorder);
}

}  // namespace

void pxrFilterGaussian5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, int blurBorder) {
    run<pxr::smooth::Gauss5u8>(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}

void pxrFilterGaussian11x11u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                               uint8_t* dst, uint32_t dstStride, int blurBorder) {
    run<pxr::smooth::Gauss11u8>(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}

void pxrFilterGaussian5x5s16C(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int16_t* dst, uint32_t dstStride, int blurBorder) {
    run<pxr::smooth::Gauss5s16>(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}

void pxrFilterGaussian5x5s32C(const int32_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              int32_t* dst, uint32_t dstStride, int blurBorder) {
    run<pxr::smooth::Gauss5s32>(src, srcWidth, srcHeight, srcStride, dst, dstStride, blurBorder);
}
