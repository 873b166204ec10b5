// Entry points of the YCbCr colour group: to packed RGB, between YCbCr
// layouts, the chroma byte swap and the video-range decoder. The members of
// to_rgb_members.h share one body, assembled from the macros of their sides.
#include <initializer_list>

#include "frame/entry.h"
#include "imgproc/color/to_rgb.h"
#include "imgproc/color/to_rgb_kernels.h"
#include "pixora/color_to_rgb.h"

namespace {

struct PlaneRef {
    const void* data;
    uint32_t stride;
};

// The common image rule over the first source and destination planes; the
// DSP kinds also need every other plane and stride aligned.
pxr::Rule planesRule(uint32_t width, uint32_t height, PlaneRef src, PlaneRef dst,
                     std::initializer_list<PlaneRef> others) {
    pxr::Rule r = pxr::imageRule(width, height, src.data, src.stride, dst.data, dst.stride);
    for (const PlaneRef& p : others) r.dspOk = r.dspOk && pxr::aligned(p.data, 4) && pxr::aligned(p.stride, 4);
    return r;
}

}  // namespace

// The argument assertion with the condition's text after macro expansion,
// so that the composed conditions below log as the expressions they are.
#define PXR_YCC_STR_(...) #__VA_ARGS__
#define PXR_YCC_STR(...) PXR_YCC_STR_(__VA_ARGS__)
#define PXR_YCC_ASSERT(...)                                               \
    do {                                                                  \
        if (!(__VA_ARGS__)) {                                             \
            pxr::assertionFailed(__func__, PXR_YCC_STR(__VA_ARGS__));     \
            return;                                                       \
        }                                                                 \
    } while (0)

// Each side of a member: stride defaulting, its part of the condition, its
// planes other than Y (for the rule) and its argument names. The defaults
// of side p (src or dst), chroma subsampled by sx horizontally:
#define PXR_YCC_DEFAULTS_PLANAR(p, sx)                                               \
    const uint32_t p##ChromaWidth = pxr::color::chromaCount(srcWidth, sx);           \
    p##YStride = pxr::packedStride(p##YStride, srcWidth);                            \
    p##CbStride = pxr::packedStride(p##CbStride, p##ChromaWidth);                    \
    p##CrStride = pxr::packedStride(p##CrStride, p##ChromaWidth)
#define PXR_YCC_DEFAULTS_PSEUDO(p, sx)                                               \
    const uint32_t p##ChromaBytes = pxr::color::chromaRowBytes(srcWidth, sx, true);  \
    p##YStride = pxr::packedStride(p##YStride, srcWidth);                            \
    p##CStride = pxr::packedStride(p##CStride, p##ChromaBytes)
#define PXR_YCC_SRC_DEFAULTS_PLANAR(sx) PXR_YCC_DEFAULTS_PLANAR(src, sx)
#define PXR_YCC_SRC_DEFAULTS_PSEUDO(sx) PXR_YCC_DEFAULTS_PSEUDO(src, sx)
#define PXR_YCC_DST_DEFAULTS_PLANAR(sx) PXR_YCC_DEFAULTS_PLANAR(dst, sx)
#define PXR_YCC_DST_DEFAULTS_PSEUDO(sx) PXR_YCC_DEFAULTS_PSEUDO(dst, sx)
#define PXR_YCC_DST_DEFAULTS_RGB(Writer)                                             \
    const uint64_t dstRowBytes = uint64_t{srcWidth} * pxr::ycbcr::Writer::kBytes;    \
    dstStride = pxr::packedStride(dstStride, srcWidth, pxr::ycbcr::Writer::kBytes)

#define PXR_YCC_SRC_OK_PLANAR                                                                            \
    srcY && srcCb && srcCr && srcWidth && srcHeight && (srcYStride >= srcWidth) &&                       \
        (srcCbStride >= srcChromaWidth) && (srcCrStride >= srcChromaWidth)
#define PXR_YCC_SRC_OK_PSEUDO \
    srcY && srcC && srcWidth && srcHeight && (srcYStride >= srcWidth) && (srcCStride >= srcChromaBytes)
#define PXR_YCC_DST_OK_PLANAR \
    dstY && dstCb && dstCr && (dstYStride >= srcWidth) && (dstCbStride >= dstChromaWidth) && (dstCrStride >= dstChromaWidth)
#define PXR_YCC_DST_OK_PSEUDO dstY && dstC && (dstYStride >= srcWidth) && (dstCStride >= dstChromaBytes)
#define PXR_YCC_DST_OK_RGB dst && (dstStride >= dstRowBytes)

#define PXR_YCC_SRC_CHROMA_PLANAR {srcCb, srcCbStride}, {srcCr, srcCrStride},
#define PXR_YCC_SRC_CHROMA_PSEUDO {srcC, srcCStride},
#define PXR_YCC_DST_CHROMA_PLANAR {dstCb, dstCbStride}, {dstCr, dstCrStride},
#define PXR_YCC_DST_CHROMA_PSEUDO {dstC, dstCStride},
#define PXR_YCC_DST_CHROMA_RGB

#define PXR_YCC_SRC_NAMES_PLANAR srcY, srcCb, srcCr, srcWidth, srcHeight, srcYStride, srcCbStride, srcCrStride
#define PXR_YCC_SRC_NAMES_PSEUDO srcY, srcC, srcWidth, srcHeight, srcYStride, srcCStride
#define PXR_YCC_DST_NAMES_PLANAR dstY, dstCb, dstCr, dstYStride, dstCbStride, dstCrStride
#define PXR_YCC_DST_NAMES_PSEUDO dstY, dstC, dstYStride, dstCStride
#define PXR_YCC_DST_NAMES_RGB dst, dstStride
#define PXR_YCC_DST_FIRST_PLANAR {dstY, dstYStride}
#define PXR_YCC_DST_FIRST_PSEUDO {dstY, dstYStride}
#define PXR_YCC_DST_FIRST_RGB {dst, dstStride}

// One member: defaults, kind and rule (Y against the first destination
// plane, every plane aligned), assertion, dispatch. dstParam is the
// destination's subsampling, or its writer for packed RGB.
#define PXR_YCC_ENTRY(name, dstArgs, Src, sx, Dst, dstParam)                                              \
    PXR_API void pxrColor##name(PXR_YCC_SRC_ARGS_##Src, dstArgs) {                                        \
        PXR_YCC_SRC_DEFAULTS_##Src(sx);                                                                   \
        PXR_YCC_DST_DEFAULTS_##Dst(dstParam);                                                             \
        const uint32_t k = pxr::selectKind(                                                               \
            __func__, PXR_ROW_Color##name,                                                                \
            planesRule(srcWidth, srcHeight, {srcY, srcYStride}, PXR_YCC_DST_FIRST_##Dst,                  \
                       {PXR_YCC_SRC_CHROMA_##Src PXR_YCC_DST_CHROMA_##Dst}));                             \
        PXR_YCC_ASSERT(PXR_YCC_SRC_OK_##Src && PXR_YCC_DST_OK_##Dst);                                     \
        pxr::dispatch<PXR_ROW_Color##name>(k, PXR_YCC_SRC_NAMES_##Src, PXR_YCC_DST_NAMES_##Dst);          \
    }

extern "C" {

#define PXR_YCC_ENTRY_TO_RGB(name, Src, sx, sy, Order, Math, Writer, ...) \
    PXR_YCC_ENTRY(name, PXR_YCC_RGB_DST_ARGS(Writer), Src, sx, RGB, Writer)
#define PXR_YCC_ENTRY_LAYOUT(name, Src, ssx, ssy, Dst, dsx, dsy, ...) \
    PXR_YCC_ENTRY(name, PXR_YCC_DST_ARGS_##Dst, Src, ssx, Dst, dsx)
PXR_YCC_TO_RGB(PXR_YCC_ENTRY_TO_RGB)
PXR_YCC_LAYOUTS(PXR_YCC_ENTRY_LAYOUT)

// srcWidth counts chroma pairs.
PXR_API void pxrColorCbCrSwapu8(PXR_YCC_SWAP_ARGS) {
    const uint64_t rowBytes = uint64_t{srcWidth} * 2;
    srcStride = pxr::packedStride(srcStride, srcWidth, 2);
    dstStride = pxr::packedStride(dstStride, srcWidth, 2);
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ColorCbCrSwapu8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcStride, dst, dstStride));
    PXR_ASSERT(src && dst && srcWidth && srcHeight && (srcStride >= rowBytes) && (dstStride >= rowBytes));
    pxr::dispatch<PXR_ROW_ColorCbCrSwapu8>(k, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

// The video-range decoder has no strides: the source and destination are packed.
PXR_API void pxrColorYUV420toRGB565u8(PXR_YCC_VIDEO_ARGS) {
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_ColorYUV420toRGB565u8,
                                       pxr::imageRule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth * 2));
    PXR_ASSERT(src && dst && srcWidth && srcHeight);
    pxr::dispatch<PXR_ROW_ColorYUV420toRGB565u8>(k, src, srcWidth, srcHeight, dst);
}

// Internal row 1, also a public entry point.
PXR_API void pxrColorYUV420toRGB565u8Rotate180(PXR_YCC_VIDEO_ARGS) {
    const uint32_t k =
        pxr::selectInternalKind(__func__, PXR_IROW_ColorYUV420toRGB565u8Rotate180,
                                pxr::imageRule(srcWidth, srcHeight, src, srcWidth, dst, srcWidth * 2));
    PXR_ASSERT(src && dst && srcWidth && srcHeight);
    pxr::dispatchInternal<PXR_IROW_ColorYUV420toRGB565u8Rotate180>(k, src, srcWidth, srcHeight, dst);
}

}  // extern "C"
