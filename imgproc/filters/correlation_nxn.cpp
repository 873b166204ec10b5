// 3x3 and N x N correlation of bytes with s8 kernels (integer results) and
// float kernels (float sums). Only pixels with a full neighbourhood are written.
#include "imgproc/filters/correlation.h"
#include "imgproc/filters/correlation_kernels.h"
#include "pixora/types.h"

using namespace pxr::corr;

namespace {

template <class Out>
void corrNxN(const int8_t* kernel, uint32_t n, int32_t shift, const uint8_t* src, uint32_t w, uint32_t h,
             uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    const uint32_t cols = fullWindows(w, n), rows = fullWindows(h, n), half = n / 2;
    for (uint32_t r = 0; r < rows; ++r) {
        // Output (half + x, half + r) is the window whose top-left pixel is (x, r).
        uint8_t* out = dst + size_t{r + half} * dstStride + size_t{half} * sizeof(typename Out::T);
        windowRow<Out, false>(src + size_t{r} * srcStride, srcStride, kernel, n, n, shift, out, 0, cols);
    }
}

}  // namespace

void pxrFilterCorr3x3s8C(const int8_t* kernel, int32_t shift, const uint8_t* src, uint32_t srcWidth,
                         uint32_t srcHeight, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    corrNxN<U8Out>(kernel, 3, shift, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

int pxrFilterCorrNxNu8C(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src, uint32_t srcWidth,
                        uint32_t srcHeight, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    corrNxN<U8Out>(kernel, N, shift, src, srcWidth, srcHeight, srcStride, dst, dstStride);
    return PIXORA_STATUS_OK;
}

int pxrFilterCorrNxNu8s16C(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src,
                           uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, int16_t* dst,
                           uint32_t dstStride) {
    corrNxN<S16Out>(kernel, N, shift, src, srcWidth, srcHeight, srcStride, reinterpret_cast<uint8_t*>(dst),
                    dstStride);
    return PIXORA_STATUS_OK;
}

int pxrFilterCorrNxNu8f32C(const float* kernel, uint32_t N, const uint8_t* src, uint32_t srcWidth,
                           uint32_t srcHeight, uint32_t srcStride, float* dst, uint32_t dstStride) {
    const uint32_t cols = fullWindows(srcWidth, N), rows = fullWindows(srcHeight, N), half = N / 2;
    auto* out = reinterpret_cast<uint8_t*>(dst);
    for (uint32_t r = 0; r < rows; ++r)
        windowRowF32(src + size_t{r} * srcStride, srcStride, kernel, N,
                     out + size_t{r + half} * dstStride + size_t{half} * 4, 0, cols);
    return PIXORA_STATUS_OK;
}
