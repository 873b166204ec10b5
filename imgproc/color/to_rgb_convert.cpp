// YCbCr to packed RGB, reference kind: every member is one instantiation of
// the row walk of to_rgb_kernels.h.
#include "imgproc/color/to_rgb.h"
#include "imgproc/color/to_rgb_kernels.h"

using namespace pxr::ycbcr;

#define PXR_YCC_DEFINE_TO_RGB(name, Src, sx, sy, Order, Math, Writer, ...)          \
    void pxrColor##name##C(PXR_YCC_SRC_ARGS_##Src, PXR_YCC_RGB_DST_ARGS(Writer)) {  \
        rgbImage<Math, Writer>(PXR_YCC_RGB_JOB(Src, sx, sy, Order));                 \
    }
PXR_YCC_TO_RGB(PXR_YCC_DEFINE_TO_RGB)

void pxrColorYUV420toRGB565u8C(PXR_YCC_VIDEO_ARGS) { videoImage(videoJob(src, srcWidth, srcHeight, dst, false)); }

void pxrColorYUV420toRGB565u8Rotate180C(PXR_YCC_VIDEO_ARGS) {
    videoImage(videoJob(src, srcWidth, srcHeight, dst, true));
}
