// Entry points of the conversions from packed RGB, one per member of
// imgproc/color/from_rgb_members.def, plus the 180-degree RGB565 conversion
// (an internal row with an entry point of its own).
#include "frame/entry.h"
#include "imgproc/color/color_common.h"
#include "imgproc/color/from_rgb.h"
#include "pixora/color_from_rgb.h"

namespace {

// The common image rule over the source and the first destination plane;
// the DSP kinds also need the chroma planes aligned.
pxr::Rule ycbcrRule(uint32_t width, uint32_t height, const void* src, uint32_t srcStride, const void* y,
                    uint32_t yStride, const void* cb, uint32_t cbStride, const void* cr, uint32_t crStride) {
    pxr::Rule r = pxr::imageRule(width, height, src, srcStride, y, yStride);
    r.dspOk = r.dspOk && pxr::aligned(cb, 4) && pxr::aligned(cbStride, 4) && pxr::aligned(cr, 4) &&
              pxr::aligned(crStride, 4);
    return r;
}

}  // namespace

#define PXR_FROM_RGB_ENTRY_Planar(Name, SrcType, srcBpp, SX)                                                     \
    PXR_API void pxr##Name(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,         \
                           uint8_t* dstY, uint8_t* dstCb, uint8_t* dstCr, uint32_t dstYStride,                    \
                           uint32_t dstCbStride, uint32_t dstCrStride) {                                          \
        const uint32_t chromaWidth = pxr::color::chromaCount(srcWidth, SX);                                      \
        srcStride = pxr::packedStride(srcStride, srcWidth, srcBpp);                                               \
        dstYStride = pxr::packedStride(dstYStride, srcWidth);                                                     \
        dstCbStride = pxr::packedStride(dstCbStride, chromaWidth);                                                \
        dstCrStride = pxr::packedStride(dstCrStride, chromaWidth);                                                \
        const uint32_t k = pxr::selectKind(__func__, PXR_ROW_##Name,                                              \
                                           ycbcrRule(srcWidth, srcHeight, src, srcStride, dstY, dstYStride, dstCb, \
                                                     dstCbStride, dstCr, dstCrStride));                           \
        PXR_ASSERT(src && dstY && dstCb && dstCr && srcWidth && srcHeight && (srcStride >= srcWidth * srcBpp) &&  \
                   (dstYStride >= srcWidth) && (dstCbStride >= chromaWidth) && (dstCrStride >= chromaWidth));     \
        pxr::dispatch<PXR_ROW_##Name>(k, src, srcWidth, srcHeight, srcStride, dstY, dstCb, dstCr, dstYStride,    \
                                      dstCbStride, dstCrStride);                                                  \
    }

#define PXR_FROM_RGB_ENTRY_PseudoPlanar(Name, SrcType, srcBpp, SX)                                                \
    PXR_API void pxr##Name(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,         \
                           uint8_t* dstY, uint8_t* dstC, uint32_t dstYStride, uint32_t dstCStride) {              \
        const uint32_t chromaWidth = pxr::color::chromaCount(srcWidth, SX);                                      \
        srcStride = pxr::packedStride(srcStride, srcWidth, srcBpp);                                               \
        dstYStride = pxr::packedStride(dstYStride, srcWidth);                                                     \
        dstCStride = pxr::packedStride(dstCStride, chromaWidth, 2);                                               \
        const uint32_t k = pxr::selectKind(                                                                       \
            __func__, PXR_ROW_##Name,                                                                             \
            ycbcrRule(srcWidth, srcHeight, src, srcStride, dstY, dstYStride, dstC, dstCStride, dstC, dstCStride)); \
        PXR_ASSERT(src && dstY && dstC && srcWidth && srcHeight && (srcStride >= srcWidth * srcBpp) &&            \
                   (dstYStride >= srcWidth) && (dstCStride >= chromaWidth * 2));                                  \
        pxr::dispatch<PXR_ROW_##Name>(k, src, srcWidth, srcHeight, srcStride, dstY, dstC, dstYStride, dstCStride); \
    }

// One source and one destination plane; `select` and `call` name the table.
#define PXR_FROM_RGB_ENTRY_PACKED(Name, SrcType, srcBpp, DstType, dstBpp, select, call, row)                     \
    PXR_API void pxr##Name(const SrcType* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,         \
                           DstType* dst, uint32_t dstStride) {                                                    \
        srcStride = pxr::packedStride(srcStride, srcWidth, srcBpp);                                               \
        dstStride = pxr::packedStride(dstStride, srcWidth, dstBpp);                                               \
        const uint32_t k =                                                                                        \
            pxr::select(__func__, row, pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));      \
        PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= srcWidth * srcBpp) &&                     \
                   (dstStride >= srcWidth * dstBpp));                                                             \
        pxr::call<row>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);                                   \
    }

extern "C" {

#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout) \
    PXR_FROM_RGB_ENTRY_##Layout(Name, SrcType, srcBpp, SX)
#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp) \
    PXR_FROM_RGB_ENTRY_PACKED(Name, SrcType, srcBpp, DstType, dstBpp, selectKind, dispatch, PXR_ROW_##Name)
#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel) \
    PXR_FROM_RGB_ENTRY_PACKED(Name, uint8_t, srcBpp, uint8_t, dstBpp, selectKind, dispatch, PXR_ROW_##Name)
#include "imgproc/color/from_rgb_members.def"

PXR_FROM_RGB_ENTRY_PACKED(ColorRGB888ToRGB565Rotate180u8, uint8_t, 3, uint16_t, 2, selectInternalKind,
                          dispatchInternal, PXR_IROW_ColorRGB888ToRGB565Rotate180u8)

}  // extern "C"
