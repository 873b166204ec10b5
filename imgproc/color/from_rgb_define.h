// Definitions of the row functions of the conversions from packed RGB with
// their full argument lists, forwarding to one templated implementation.
// Used by the reference and the vector kinds with the member list.
#pragma once

#include <cstdint>

#include "imgproc/color/from_rgb_kernels.h"

namespace pxr::color {

inline const uint8_t* bytes(const void* p) { return static_cast<const uint8_t*>(p); }
inline uint8_t* bytes(void* p) { return static_cast<uint8_t*>(p); }

}  // namespace pxr::color

// impl(const uint8_t* src, width, height, srcStride, const YcbcrPlanes&)
#define PXR_COLOR_DEFINE_Planar(fn, SrcType, impl)                                                   \
    void fn(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dstY, \
            uint8_t* dstCb, uint8_t* dstCr, uint32_t dstYStride, uint32_t dstCbStride, uint32_t dstCrStride) { \
        impl(pxr::color::bytes(src), srcWidth, srcHeight, srcStride,                                \
             pxr::color::YcbcrPlanes{dstY, dstCb, dstCr, dstYStride, dstCbStride, dstCrStride, 1}); \
    }
#define PXR_COLOR_DEFINE_PseudoPlanar(fn, SrcType, impl)                                            \
    void fn(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dstY, \
            uint8_t* dstC, uint32_t dstYStride, uint32_t dstCStride) {                              \
        impl(pxr::color::bytes(src), srcWidth, srcHeight, srcStride,                                \
             pxr::color::YcbcrPlanes{dstY, dstC, dstC + 1, dstYStride, dstCStride, dstCStride, 2}); \
    }
// impl(const uint8_t* src, width, height, srcStride, uint8_t* dst, dstStride)
#define PXR_COLOR_DEFINE_PACKED(fn, SrcType, DstType, impl)                                          \
    void fn(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, DstType* dst, \
            uint32_t dstStride) {                                                                    \
        impl(pxr::color::bytes(src), srcWidth, srcHeight, srcStride, pxr::color::bytes(dst), dstStride); \
    }
