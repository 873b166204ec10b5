// Reference implementations of the conversions from packed RGB: every member
// of imgproc/color/from_rgb_members.def, as the row kernels over all rows.
#include "imgproc/color/from_rgb.h"

#include "imgproc/color/from_rgb_define.h"

namespace pxr::color {
namespace {

template <class S, uint32_t SX, uint32_t SY>
void toYcbcr(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, const YcbcrPlanes& p) {
    forEachChromaRow<SY>(src, height, srcStride, p,
                         [&](const ChromaRow& r) { ycbcrSpan<S, SX, SY>(r, width, 0, chromaCount(width, SX)); });
}

template <void (*Span)(const uint8_t*, uint8_t*, uint32_t, uint32_t)>
void unary(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    forEachRow(src, height, srcStride, dst, dstStride, [&](const uint8_t* s, uint8_t* d) { Span(s, d, 0, width); });
}

void rotate180(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
               uint32_t dstStride) {
    forEachRowUpward(src, height, srcStride, dst, dstStride,
                     [&](const uint8_t* s, uint8_t* d) { rotate180Span(s, d, width, 0, width); });
}

}  // namespace
}  // namespace pxr::color

using namespace pxr::color;

#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout) \
    PXR_COLOR_DEFINE_##Layout(pxr##Name##C, SrcType, (toYcbcr<Src, SX, SY>))
#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp) \
    PXR_COLOR_DEFINE_PACKED(pxr##Name##C, SrcType, DstType, (unary<reorderSpan<Src, Dst>>))
#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel) \
    PXR_COLOR_DEFINE_PACKED(pxr##Name##C, uint8_t, uint8_t, unary<kernel##Span>)
#include "imgproc/color/from_rgb_members.def"

PXR_COLOR_DEFINE_PACKED(pxrColorRGB888ToRGB565Rotate180u8C, uint8_t, uint16_t, rotate180)
