// Box filters on bytes: 3x3, 5x5 and 11x11 means in 16-bit fixed point.
#include "imgproc/filters/smooth.h"
#include "imgproc/filters/smooth_box_kernels.h"

namespace {

template <class K>
void run(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
         pxr::smooth::BoxBorder rule, uint8_t value) {
    const pxr::smooth::Plane<uint8_t> in{src, width, height, srcStride};
    for (uint32_t y = 0; y < height; ++y)
        pxr::smooth::boxPaddedSpan<K>(in, y, dst + size_t{y} * dstStride, 0, width, rule, value);
}

}  // namespace

using pxr::smooth::BoxBorder;
using pxr::smooth::BoxU8;

void pxrBoxFilter3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    run<BoxU8<1>>(src, srcWidth, srcHeight, srcStride, dst, dstStride, BoxBorder::Zero, 0);
}

int pxrBoxFilter3x3u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    run<BoxU8<1>>(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::smooth::boxBorderFromType(borderType),
                  borderValue);
    return 0;
}

void pxrBoxFilter5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    run<BoxU8<2>>(src, srcWidth, srcHeight, srcStride, dst, dstStride, BoxBorder::Zero, 0);
}

void pxrBoxFilter11x11u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride) {
    run<BoxU8<5>>(src, srcWidth, srcHeight, srcStride, dst, dstStride, BoxBorder::Zero, 0);
}
