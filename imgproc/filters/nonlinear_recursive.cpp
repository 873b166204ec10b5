// Recursive bilateral filter on bytes (passes in nonlinear_recursive_kernels.h).
#include "imgproc/filters/nonlinear.h"
#include "imgproc/filters/nonlinear_recursive_kernels.h"
#include "memory/scratch.h"
#include "pixora/types.h"

int pxrBilateralFilterRecursiveu8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                   uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    using namespace pxr::recursive;
    const size_t floats = scratchFloats(width, height);
    if (!floats) return PIXORA_STATUS_NO_SCRATCH;
    pxr::ScratchArray<float> buf(floats, 16);
    if (!buf) return PIXORA_STATUS_NO_SCRATCH;
    const Params p = makeParams(sigmaColor, sigmaSpace);
    const uint32_t pitch = std::min(width, kStrip);
    const size_t plane = size_t{width} * height, strip = size_t{height} * pitch;
    const Planes pl{buf.data(), buf.data() + plane, buf.data() + 2 * plane, buf.data() + 2 * plane + strip,
                    width, height, pitch};
    float* n = pl.upDen + strip;
    float* d = n + pitch;
    for (uint32_t y = 0; y < height; ++y)
        horizontalRow(src + size_t{y} * srcStride, width, p, pl.num + size_t{y} * width, pl.den + size_t{y} * width);
    for (uint32_t s0 = 0; s0 < width; s0 += pitch) {
        const uint32_t s1 = std::min(width, s0 + pitch);
        upwardColumns(src, srcStride, p, pl, s0, s0, s1);
        for (uint32_t y = 0; y < height; ++y)
            downwardRow(src, srcStride, p, pl, s0, s0, s1, y, n, d, dst + size_t{y} * dstStride);
    }
    return PIXORA_STATUS_OK;
}
