// Vector (kind 1) implementations of the colour family: conversions from packed RGB (to YCbCr, to other packed RGB, grey, HSV, LAB).
#pragma once

#include "imgproc/color/from_rgb.h"

#define PXR_FROM_RGB_SUFFIX V
#define PXR_FROM_RGB_REGISTER PXR_VECTOR
#define PXR_FROM_RGB_REGISTER_INTERNAL PXR_INTERNAL_VECTOR
#include "imgproc/color/from_rgb_declare.h"
#undef PXR_FROM_RGB_SUFFIX
#undef PXR_FROM_RGB_REGISTER
#undef PXR_FROM_RGB_REGISTER_INTERNAL

// Used inside namespace pxr::color by the simd/color/from_rgb_*_v.cpp files:
// exports a per-target function and defines Name##V, which dispatches to it.
// The dispatch names the function unqualified, from the namespace of its
// export: with a single compiled target (32-bit ARM) it is a direct call.
#define PXR_FROM_RGB_UNARY_DISPATCH(Name)                                                                  \
    HWY_EXPORT(Name);                                                                                      \
    static void Name##V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst, \
                        uint32_t dstStride) {                                                              \
        HWY_DYNAMIC_DISPATCH(Name)(src, width, height, srcStride, dst, dstStride);                         \
    }
#define PXR_FROM_RGB_YCBCR_DISPATCH(Name)                                                                  \
    HWY_EXPORT(Name);                                                                                      \
    static void Name##V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,           \
                        const pxr::color::YcbcrPlanes& p) {                                                \
        HWY_DYNAMIC_DISPATCH(Name)(src, width, height, srcStride, p);                                      \
    }
