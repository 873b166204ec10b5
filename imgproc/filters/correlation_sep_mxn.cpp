// Separable correlation of bytes: the M x N correlation with the kernel
// kernelY[i] x kernelX[j], formed as column sums then row sums (the same
// 32-bit sum as the 2-D form), scaled like the N x N correlation.
#include "imgproc/filters/correlation.h"
#include "imgproc/filters/correlation_kernels.h"
#include "memory/scratch.h"
#include "pixora/types.h"

using namespace pxr::corr;

int pxrFilterCorrSepMxNu8C(const int8_t* kernelX, uint32_t M, const int8_t* kernelY, uint32_t N, int32_t shift,
                           const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride) {
    const uint32_t cols = fullWindows(srcWidth, M), rows = fullWindows(srcHeight, N);
    if (!cols || !rows) return PIXORA_STATUS_OK;
    pxr::ScratchArray<int32_t> sums(srcWidth, 64);  // one row of column sums
    if (!sums) return PIXORA_STATUS_NO_SCRATCH;
    for (uint32_t r = 0; r < rows; ++r) {
        sepColumns(src + size_t{r} * srcStride, srcStride, kernelY, N, sums.data(), 0, srcWidth);
        sepRow(sums.data(), kernelX, M, shift, dst + size_t{r + N / 2} * dstStride + M / 2, 0, cols);
    }
    return PIXORA_STATUS_OK;
}
