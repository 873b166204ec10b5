// Layout changes between YCbCr layouts and the chroma byte swap, reference
// kind: every member is one instantiation of the walk of to_rgb_kernels.h.
#include "imgproc/color/to_rgb.h"
#include "imgproc/color/to_rgb_kernels.h"

using namespace pxr::ycbcr;

#define PXR_YCC_DEFINE_LAYOUT(name, ssx, ssy, dsx, dsy, srcArgs, dstArgs, in, out) \
    void pxrColor##name##C(srcArgs, dstArgs) { layoutImage<ssx, ssy, dsx, dsy>(PXR_YCC_LAYOUT_JOB(in, out)); }
#define PXR_YCC_DEFINE_P2P(name, ...) \
    PXR_YCC_DEFINE_LAYOUT(name, __VA_ARGS__, PXR_YCC_PLANAR_SRC_ARGS, PXR_YCC_PLANAR_DST_ARGS, PXR_YCC_PLANAR_IN, PXR_YCC_PLANAR_OUT)
#define PXR_YCC_DEFINE_P2S(name, ...) \
    PXR_YCC_DEFINE_LAYOUT(name, __VA_ARGS__, PXR_YCC_PLANAR_SRC_ARGS, PXR_YCC_PSEUDO_DST_ARGS, PXR_YCC_PLANAR_IN, PXR_YCC_PSEUDO_OUT)
#define PXR_YCC_DEFINE_S2P(name, ...) \
    PXR_YCC_DEFINE_LAYOUT(name, __VA_ARGS__, PXR_YCC_PSEUDO_SRC_ARGS, PXR_YCC_PLANAR_DST_ARGS, PXR_YCC_PSEUDO_IN, PXR_YCC_PLANAR_OUT)
#define PXR_YCC_DEFINE_S2S(name, ...) \
    PXR_YCC_DEFINE_LAYOUT(name, __VA_ARGS__, PXR_YCC_PSEUDO_SRC_ARGS, PXR_YCC_PSEUDO_DST_ARGS, PXR_YCC_PSEUDO_IN, PXR_YCC_PSEUDO_OUT)
PXR_YCC_PLANAR_TO_PLANAR(PXR_YCC_DEFINE_P2P)
PXR_YCC_PLANAR_TO_PSEUDO(PXR_YCC_DEFINE_P2S)
PXR_YCC_PSEUDO_TO_PLANAR(PXR_YCC_DEFINE_S2P)
PXR_YCC_PSEUDO_TO_PSEUDO(PXR_YCC_DEFINE_S2S)

void pxrColorCbCrSwapu8C(PXR_YCC_SWAP_ARGS) {
    for (uint32_t y = 0; y < srcHeight; ++y)
        swapSpan(src + size_t{y} * srcStride, dst + size_t{y} * dstStride, 0, srcWidth);
}
