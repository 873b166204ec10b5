// Entry points of the YCbCr colour group: to packed RGB, between YCbCr
// layouts, the chroma byte swap and the video-range decoder. Each shape of
// arguments has one body, instantiated per member from to_rgb_members.h.
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

// Stride defaulting and the conditions of each side of a member.
#define PXR_YCC_PLANAR_SRC_DEFAULTS(sx)                                              \
    const uint32_t srcChromaWidth = pxr::color::chromaCount(srcWidth, sx);           \
    srcYStride = pxr::packedStride(srcYStride, srcWidth);                            \
    srcCbStride = pxr::packedStride(srcCbStride, srcChromaWidth);                    \
    srcCrStride = pxr::packedStride(srcCrStride, srcChromaWidth)
#define PXR_YCC_PSEUDO_SRC_DEFAULTS(sx)                                              \
    const uint32_t srcChromaBytes = pxr::color::chromaRowBytes(srcWidth, sx, true);  \
    srcYStride = pxr::packedStride(srcYStride, srcWidth);                            \
    srcCStride = pxr::packedStride(srcCStride, srcChromaBytes)
#define PXR_YCC_PLANAR_DST_DEFAULTS(dsx)                                             \
    const uint32_t dstChromaWidth = pxr::color::chromaCount(srcWidth, dsx);          \
    dstYStride = pxr::packedStride(dstYStride, srcWidth);                            \
    dstCbStride = pxr::packedStride(dstCbStride, dstChromaWidth);                    \
    dstCrStride = pxr::packedStride(dstCrStride, dstChromaWidth)
#define PXR_YCC_PSEUDO_DST_DEFAULTS(dsx)                                             \
    const uint32_t dstChromaBytes = pxr::color::chromaRowBytes(srcWidth, dsx, true); \
    dstYStride = pxr::packedStride(dstYStride, srcWidth);                            \
    dstCStride = pxr::packedStride(dstCStride, dstChromaBytes)
#define PXR_YCC_RGB_DST_DEFAULTS(Writer)                                             \
    const uint64_t dstRowBytes = uint64_t{srcWidth} * pxr::ycbcr::Writer::kBytes;    \
    dstStride = pxr::packedStride(dstStride, srcWidth, pxr::ycbcr::Writer::kBytes)

#define PXR_YCC_PLANAR_SRC_OK                                                                            \
    srcY && srcCb && srcCr && srcWidth && srcHeight && (srcYStride >= srcWidth) &&                       \
        (srcCbStride >= srcChromaWidth) && (srcCrStride >= srcChromaWidth)
#define PXR_YCC_PSEUDO_SRC_OK \
    srcY && srcC && srcWidth && srcHeight && (srcYStride >= srcWidth) && (srcCStride >= srcChromaBytes)
#define PXR_YCC_PLANAR_DST_OK \
    dstY && dstCb && dstCr && (dstYStride >= srcWidth) && (dstCbStride >= dstChromaWidth) && (dstCrStride >= dstChromaWidth)
#define PXR_YCC_PSEUDO_DST_OK dstY && dstC && (dstYStride >= srcWidth) && (dstCStride >= dstChromaBytes)
#define PXR_YCC_RGB_DST_OK dst && (dstStride >= dstRowBytes)

// The bodies of each shape: defaults, kind and rule, assertion, dispatch.
#define PXR_YCC_RUN(name, rule, ...)                                                                   \
    const uint32_t k = pxr::selectKind(__func__, PXR_ROW_Color##name, rule);                         \
    PXR_YCC_ASSERT(__VA_ARGS__)

#define PXR_YCC_PLANAR_SRC_NAMES srcY, srcCb, srcCr, srcWidth, srcHeight, srcYStride, srcCbStride, srcCrStride
#define PXR_YCC_PSEUDO_SRC_NAMES srcY, srcC, srcWidth, srcHeight, srcYStride, srcCStride
#define PXR_YCC_PLANAR_DST_NAMES dstY, dstCb, dstCr, dstYStride, dstCbStride, dstCrStride
#define PXR_YCC_PSEUDO_DST_NAMES dstY, dstC, dstYStride, dstCStride

extern "C" {

#define PXR_YCC_ENTRY_PLANAR_TO_RGB(name, sx, sy, Writer)                                               \
    PXR_API void pxrColor##name(PXR_YCC_PLANAR_SRC_ARGS, PXR_YCC_RGB_DST_ARGS(Writer)) {                \
        PXR_YCC_PLANAR_SRC_DEFAULTS(sx);                                                                \
        PXR_YCC_RGB_DST_DEFAULTS(Writer);                                                               \
        PXR_YCC_RUN(name,                                                                               \
                    planesRule(srcWidth, srcHeight, {srcY, srcYStride}, {dst, dstStride},               \
                               {{srcCb, srcCbStride}, {srcCr, srcCrStride}}),                           \
                    PXR_YCC_PLANAR_SRC_OK && PXR_YCC_RGB_DST_OK);                                       \
        pxr::dispatch<PXR_ROW_Color##name>(k, PXR_YCC_PLANAR_SRC_NAMES, dst, dstStride);                \
    }
#define PXR_YCC_ENTRY_PSEUDO_TO_RGB(name, sx, sy, Order, Math, Writer)                                  \
    PXR_API void pxrColor##name(PXR_YCC_PSEUDO_SRC_ARGS, PXR_YCC_RGB_DST_ARGS(Writer)) {                \
        PXR_YCC_PSEUDO_SRC_DEFAULTS(sx);                                                                \
        PXR_YCC_RGB_DST_DEFAULTS(Writer);                                                               \
        PXR_YCC_RUN(name,                                                                               \
                    planesRule(srcWidth, srcHeight, {srcY, srcYStride}, {dst, dstStride},               \
                               {{srcC, srcCStride}}),                                                   \
                    PXR_YCC_PSEUDO_SRC_OK && PXR_YCC_RGB_DST_OK);                                       \
        pxr::dispatch<PXR_ROW_Color##name>(k, PXR_YCC_PSEUDO_SRC_NAMES, dst, dstStride);                \
    }
#define PXR_YCC_ENTRY_P2P(name, ssx, ssy, dsx, dsy)                                                     \
    PXR_API void pxrColor##name(PXR_YCC_PLANAR_SRC_ARGS, PXR_YCC_PLANAR_DST_ARGS) {                     \
        PXR_YCC_PLANAR_SRC_DEFAULTS(ssx);                                                               \
        PXR_YCC_PLANAR_DST_DEFAULTS(dsx);                                                               \
        PXR_YCC_RUN(name,                                                                               \
                    planesRule(srcWidth, srcHeight, {srcY, srcYStride}, {dstY, dstYStride},             \
                               {{srcCb, srcCbStride}, {srcCr, srcCrStride}, {dstCb, dstCbStride},       \
                                {dstCr, dstCrStride}}),                                                 \
                    PXR_YCC_PLANAR_SRC_OK && PXR_YCC_PLANAR_DST_OK);                                    \
        pxr::dispatch<PXR_ROW_Color##name>(k, PXR_YCC_PLANAR_SRC_NAMES, PXR_YCC_PLANAR_DST_NAMES);      \
    }
#define PXR_YCC_ENTRY_P2S(name, ssx, ssy, dsx, dsy)                                                     \
    PXR_API void pxrColor##name(PXR_YCC_PLANAR_SRC_ARGS, PXR_YCC_PSEUDO_DST_ARGS) {                     \
        PXR_YCC_PLANAR_SRC_DEFAULTS(ssx);                                                               \
        PXR_YCC_PSEUDO_DST_DEFAULTS(dsx);                                                               \
        PXR_YCC_RUN(name,                                                                               \
                    planesRule(srcWidth, srcHeight, {srcY, srcYStride}, {dstY, dstYStride},             \
                               {{srcCb, srcCbStride}, {srcCr, srcCrStride}, {dstC, dstCStride}}),       \
                    PXR_YCC_PLANAR_SRC_OK && PXR_YCC_PSEUDO_DST_OK);                                    \
        pxr::dispatch<PXR_ROW_Color##name>(k, PXR_YCC_PLANAR_SRC_NAMES, PXR_YCC_PSEUDO_DST_NAMES);      \
    }
#define PXR_YCC_ENTRY_S2P(name, ssx, ssy, dsx, dsy)                                                     \
    PXR_API void pxrColor##name(PXR_YCC_PSEUDO_SRC_ARGS, PXR_YCC_PLANAR_DST_ARGS) {                     \
        PXR_YCC_PSEUDO_SRC_DEFAULTS(ssx);                                                               \
        PXR_YCC_PLANAR_DST_DEFAULTS(dsx);                                                               \
        PXR_YCC_RUN(name,                                                                               \
                    planesRule(srcWidth, srcHeight, {srcY, srcYStride}, {dstY, dstYStride},             \
                               {{srcC, srcCStride}, {dstCb, dstCbStride}, {dstCr, dstCrStride}}),       \
                    PXR_YCC_PSEUDO_SRC_OK && PXR_YCC_PLANAR_DST_OK);                                    \
        pxr::dispatch<PXR_ROW_Color##name>(k, PXR_YCC_PSEUDO_SRC_NAMES, PXR_YCC_PLANAR_DST_NAMES);      \
    }
#define PXR_YCC_ENTRY_S2S(name, ssx, ssy, dsx, dsy)                                                     \
    PXR_API void pxrColor##name(PXR_YCC_PSEUDO_SRC_ARGS, PXR_YCC_PSEUDO_DST_ARGS) {                     \
        PXR_YCC_PSEUDO_SRC_DEFAULTS(ssx);                                                               \
        PXR_YCC_PSEUDO_DST_DEFAULTS(dsx);                                                               \
        PXR_YCC_RUN(name,                                                                               \
                    planesRule(srcWidth, srcHeight, {srcY, srcYStride}, {dstY, dstYStride},             \
                               {{srcC, srcCStride}, {dstC, dstCStride}}),                               \
                    PXR_YCC_PSEUDO_SRC_OK && PXR_YCC_PSEUDO_DST_OK);                                    \
        pxr::dispatch<PXR_ROW_Color##name>(k, PXR_YCC_PSEUDO_SRC_NAMES, PXR_YCC_PSEUDO_DST_NAMES);      \
    }

PXR_YCC_PLANAR_TO_RGB(PXR_YCC_ENTRY_PLANAR_TO_RGB)
PXR_YCC_PSEUDO_TO_RGB(PXR_YCC_ENTRY_PSEUDO_TO_RGB)
PXR_YCC_PLANAR_TO_PLANAR(PXR_YCC_ENTRY_P2P)
PXR_YCC_PLANAR_TO_PSEUDO(PXR_YCC_ENTRY_P2S)
PXR_YCC_PSEUDO_TO_PLANAR(PXR_YCC_ENTRY_S2P)
PXR_YCC_PSEUDO_TO_PSEUDO(PXR_YCC_ENTRY_S2S)

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
