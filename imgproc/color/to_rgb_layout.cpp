// Layout changes between YCbCr layouts and the chroma byte swap, reference
// kind: every member is one instantiation of the walk of to_rgb_kernels.h.
#include "imgproc/color/to_rgb.h"
#include "imgproc/color/to_rgb_kernels.h"

using namespace pxr::ycbcr;

#define PXR_YCC_DEFINE_LAYOUT(name, Src, ssx, ssy, Dst, dsx, dsy, ...)               \
    void pxrColor##name##C(PXR_YCC_SRC_ARGS_##Src, PXR_YCC_DST_ARGS_##Dst) {           \
        layoutImage<ssx, ssy, dsx, dsy>(PXR_YCC_LAYOUT_JOB(Src, Dst));                 \
    }
PXR_YCC_LAYOUTS(PXR_YCC_DEFINE_LAYOUT)

void pxrColorCbCrSwapu8C(PXR_YCC_SWAP_ARGS) {
    for (uint32_t y = 0; y < srcHeight; ++y)
        swapSpan(src + size_t{y} * srcStride, dst + size_t{y} * dstStride, 0, srcWidth);
}
