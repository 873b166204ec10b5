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

#define PXR_FROM_RGB_SUFFIX C
#define PXR_FROM_RGB_REGISTER PXR_REFERENCE
#define PXR_FROM_RGB_REGISTER_INTERNAL PXR_INTERNAL_REFERENCE
#include "imgproc/color/from_rgb_declare.h"
#undef PXR_FROM_RGB_SUFFIX
#undef PXR_FROM_RGB_REGISTER
#undef PXR_FROM_RGB_REGISTER_INTERNAL
