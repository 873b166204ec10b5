// Reference implementations of the colour family: conversions from packed RGB (to YCbCr, to other packed RGB, grey, HSV, LAB).
#pragma once

#include <cstdint>

#include "frame/registry.h"

namespace pxr::color {

// Row signatures (the public entry points' full argument lists; strides in
// bytes, already defaulted by the entry point).
// (src, srcWidth, srcHeight, srcStride, dstY, dstCb, dstCr, dstYStride, dstCbStride, dstCrStride)
template <class Src>
using ToPlanarFn = void(const Src*, uint32_t, uint32_t, uint32_t, uint8_t*, uint8_t*, uint8_t*, uint32_t, uint32_t,
                        uint32_t);
// (src, srcWidth, srcHeight, srcStride, dstY, dstC, dstYStride, dstCStride)
template <class Src>
using ToPseudoPlanarFn = void(const Src*, uint32_t, uint32_t, uint32_t, uint8_t*, uint8_t*, uint32_t, uint32_t);
// (src, srcWidth, srcHeight, srcStride, dst, dstStride)
template <class Src, class Dst>
using PackedFn = void(const Src*, uint32_t, uint32_t, uint32_t, Dst*, uint32_t);

}  // namespace pxr::color

#define PXR_FROM_RGB_DECL(Name, ...) \
    __VA_ARGS__ pxr##Name##C;        \
    PXR_REFERENCE(PXR_ROW_##Name, pxr##Name##C)
#include "imgproc/color/from_rgb_declare.h"
#undef PXR_FROM_RGB_DECL

// Internal row 0: RGB888 to RGB565, rotated by 180 degrees.
pxr::color::PackedFn<uint8_t, uint16_t> pxrColorRGB888ToRGB565Rotate180u8C;
PXR_INTERNAL_REFERENCE(PXR_IROW_ColorRGB888ToRGB565Rotate180u8, pxrColorRGB888ToRGB565Rotate180u8C)
