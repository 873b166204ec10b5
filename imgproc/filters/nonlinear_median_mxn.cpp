// M x N median on signed 16-bit pixels; pixels with a full window only.
#include "imgproc/filters/nonlinear.h"
#include "imgproc/filters/nonlinear_median_mxn_kernels.h"
#include "pixora/types.h"

int pxrFilterMedianMxNs16C(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint32_t M, uint32_t N, int16_t* dst, uint32_t dstStride) {
    if (srcWidth < M || srcHeight < N) return PIXORA_STATUS_OK;
    const auto* in = reinterpret_cast<const uint8_t*>(src);
    auto* out = reinterpret_cast<uint8_t*>(dst);
    for (uint32_t y = N / 2; y + N / 2 < srcHeight; ++y)
        pxr::medianmxn::span(in, srcStride, M, N, y, out + size_t{y} * dstStride, M / 2, srcWidth - M / 2);
    return PIXORA_STATUS_OK;
}
