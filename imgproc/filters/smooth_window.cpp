// The N x N float box mean and the local normalisations on box means.
#include "imgproc/filters/smooth.h"
#include "imgproc/filters/smooth_window_kernels.h"

using pxr::smooth::ScalarWindowOps;

void pxrBoxFilterNxNf32C(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         float* dst, uint32_t dstStride) {
    // No status to report a lack of scratch memory: dst is then left as it was.
    pxr::smooth::boxF32<ScalarWindowOps>(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

int pxrNormalizeLocalBoxu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint32_t N, uint8_t* dst, uint32_t dstStride) {
    return pxr::smooth::normaliseLocal<ScalarWindowOps, uint8_t, uint32_t>(src, srcWidth, srcHeight, srcStride, N,
                                                                          dst, dstStride);
}

int pxrNormalizeLocalBoxf32C(const float* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t N, float* dst, uint32_t dstStride) {
    return pxr::smooth::normaliseLocal<ScalarWindowOps, float, float>(src, srcWidth, srcHeight, srcStride, N, dst,
                                                                     dstStride);
}
