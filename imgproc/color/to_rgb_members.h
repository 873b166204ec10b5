// The members of the YCbCr colour group, one line each. The reference and
// vector kinds, the registrations and the entry points are all generated
// from these lists, so a member is added in one place.
//
// Names drop the "pxrColor" prefix; `sx, sy` are the chroma subsampling
// factors (1 or 2) of a layout.
#pragma once

// YCbCr planar to packed RGB: X(name, sx, sy, Writer).
#define PXR_YCC_PLANAR_TO_RGB(X)                      \
    X(YCbCr444PlanarToRGB565u8, 1, 1, Rgb565)           \
    X(YCbCr444PlanarToRGB888u8, 1, 1, Rgb888)           \
    X(YCbCr444PlanarToRGBA8888u8, 1, 1, Rgba8888)       \
    X(YCbCr422PlanarToRGB565u8, 2, 1, Rgb565)           \
    X(YCbCr422PlanarToRGB888u8, 2, 1, Rgb888)           \
    X(YCbCr422PlanarToRGBA8888u8, 2, 1, Rgba8888)       \
    X(YCbCr420PlanarToRGB565u8, 2, 2, Rgb565)           \
    X(YCbCr420PlanarToRGB888u8, 2, 2, Rgb888)           \
    X(YCbCr420PlanarToRGBA8888u8, 2, 2, Rgba8888)

// Y plane plus one interleaved chroma plane to packed RGB:
// X(name, sx, sy, Order, Math, Writer). Order CbCr or CrCb names the byte
// order of the chroma pairs; Math Weights8 (8-bit weights) or JpegQ15.
#define PXR_YCC_PSEUDO_TO_RGB(X)                                     \
    X(YCbCr444PseudoPlanarToRGB565u8, 1, 1, CbCr, Weights8, Rgb565)     \
    X(YCbCr444PseudoPlanarToRGB888u8, 1, 1, CbCr, Weights8, Rgb888)     \
    X(YCbCr444PseudoPlanarToRGBA8888u8, 1, 1, CbCr, Weights8, Rgba8888) \
    X(YCbCr422PseudoPlanarToRGB565u8, 2, 1, CbCr, Weights8, Rgb565)     \
    X(YCbCr422PseudoPlanarToRGB888u8, 2, 1, CbCr, Weights8, Rgb888)     \
    X(YCbCr422PseudoPlanarToRGBA8888u8, 2, 1, CbCr, Weights8, Rgba8888) \
    X(YCbCr420PseudoPlanarToRGB565u8, 2, 2, CbCr, Weights8, Rgb565)     \
    X(YCbCr420PseudoPlanarToRGB888u8, 2, 2, CbCr, Weights8, Rgb888)     \
    X(YCbCr420PseudoPlanarToRGBA8888u8, 2, 2, CbCr, Weights8, Rgba8888) \
    X(YCrCb420PseudoPlanarToRGB8888u8, 2, 2, CrCb, Weights8, Rgba8888)  \
    X(YCrCbH1V1toRGB888u8, 1, 1, CrCb, JpegQ15, Rgb888)                 \
    X(YCrCbH2V1toRGB888u8, 2, 1, CrCb, JpegQ15, Rgb888)                 \
    X(YCrCbH1V2toRGB888u8, 1, 2, CrCb, JpegQ15, Rgb888)                 \
    X(YCrCbH2V2toRGB888u8, 2, 2, CrCb, JpegQ15, Rgb888)

// Layout changes between YCbCr layouts, by the shape of their arguments:
// X(name, source sx, sy, destination sx, sy).
#define PXR_YCC_PLANAR_TO_PLANAR(X)                           \
    X(YCbCr444PlanarToYCbCr422Planaru8, 1, 1, 2, 1)             \
    X(YCbCr444PlanarToYCbCr420Planaru8, 1, 1, 2, 2)             \
    X(YCbCr422PlanarToYCbCr444Planaru8, 2, 1, 1, 1)             \
    X(YCbCr422PlanarToYCbCr420Planaru8, 2, 1, 2, 2)             \
    X(YCbCr420PlanarToYCbCr444Planaru8, 2, 2, 1, 1)             \
    X(YCbCr420PlanarToYCbCr422Planaru8, 2, 2, 2, 1)

#define PXR_YCC_PLANAR_TO_PSEUDO(X)                            \
    X(YCbCr444PlanarToYCbCr444PseudoPlanaru8, 1, 1, 1, 1)        \
    X(YCbCr444PlanarToYCbCr422PseudoPlanaru8, 1, 1, 2, 1)        \
    X(YCbCr444PlanarToYCbCr420PseudoPlanaru8, 1, 1, 2, 2)        \
    X(YCbCr422PlanarToYCbCr444PseudoPlanaru8, 2, 1, 1, 1)        \
    X(YCbCr422PlanarToYCbCr422PseudoPlanaru8, 2, 1, 2, 1)        \
    X(YCbCr422PlanarToYCbCr420PseudoPlanaru8, 2, 1, 2, 2)        \
    X(YCbCr420PlanarToYCbCr444PseudoPlanaru8, 2, 2, 1, 1)        \
    X(YCbCr420PlanarToYCbCr422PseudoPlanaru8, 2, 2, 2, 1)        \
    X(YCbCr420PlanarToYCbCr420PseudoPlanaru8, 2, 2, 2, 2)

#define PXR_YCC_PSEUDO_TO_PLANAR(X)                            \
    X(YCbCr444PseudoPlanarToYCbCr444Planaru8, 1, 1, 1, 1)        \
    X(YCbCr444PseudoPlanarToYCbCr422Planaru8, 1, 1, 2, 1)        \
    X(YCbCr444PseudoPlanarToYCbCr420Planaru8, 1, 1, 2, 2)        \
    X(YCbCr422PseudoPlanarToYCbCr444Planaru8, 2, 1, 1, 1)        \
    X(YCbCr422PseudoPlanarToYCbCr422Planaru8, 2, 1, 2, 1)        \
    X(YCbCr422PseudoPlanarToYCbCr420Planaru8, 2, 1, 2, 2)        \
    X(YCbCr420PseudoPlanarToYCbCr444Planaru8, 2, 2, 1, 1)        \
    X(YCbCr420PseudoPlanarToYCbCr422Planaru8, 2, 2, 2, 1)        \
    X(YCbCr420PseudoPlanarToYCbCr420Planaru8, 2, 2, 2, 2)

#define PXR_YCC_PSEUDO_TO_PSEUDO(X)                                  \
    X(YCbCr444PseudoPlanarToYCbCr422PseudoPlanaru8, 1, 1, 2, 1)        \
    X(YCbCr444PseudoPlanarToYCbCr420PseudoPlanaru8, 1, 1, 2, 2)        \
    X(YCbCr422PseudoPlanarToYCbCr444PseudoPlanaru8, 2, 1, 1, 1)        \
    X(YCbCr422PseudoPlanarToYCbCr420PseudoPlanaru8, 2, 1, 2, 2)        \
    X(YCbCr420PseudoPlanarToYCbCr444PseudoPlanaru8, 2, 2, 1, 1)        \
    X(YCbCr420PseudoPlanarToYCbCr422PseudoPlanaru8, 2, 2, 2, 1)

// ---- Parameter lists of each shape ------------------------------------------
// Planar sources name three planes, pseudo-planar ones a Y plane and the
// interleaved chroma plane; every plane has its own stride in bytes.

#define PXR_YCC_PLANAR_SRC_ARGS                                                                    \
    const uint8_t *srcY, const uint8_t *srcCb, const uint8_t *srcCr, uint32_t srcWidth,        \
        uint32_t srcHeight, uint32_t srcYStride, uint32_t srcCbStride, uint32_t srcCrStride
#define PXR_YCC_PSEUDO_SRC_ARGS                                                                    \
    const uint8_t *srcY, const uint8_t *srcC, uint32_t srcWidth, uint32_t srcHeight,           \
        uint32_t srcYStride, uint32_t srcCStride
#define PXR_YCC_PLANAR_DST_ARGS                                                                    \
    uint8_t *dstY, uint8_t *dstCb, uint8_t *dstCr, uint32_t dstYStride, uint32_t dstCbStride,  \
        uint32_t dstCrStride
#define PXR_YCC_PSEUDO_DST_ARGS uint8_t *dstY, uint8_t *dstC, uint32_t dstYStride, uint32_t dstCStride

// The pixel type of each packed destination (565 words are 16-bit).
#define PXR_YCC_RGB_PIXEL_Rgb565 uint16_t
#define PXR_YCC_RGB_PIXEL_Rgb888 uint8_t
#define PXR_YCC_RGB_PIXEL_Rgba8888 uint8_t
#define PXR_YCC_RGB_DST_ARGS(Writer) PXR_YCC_RGB_PIXEL_##Writer *dst, uint32_t dstStride

#define PXR_YCC_SWAP_ARGS                                                                          \
    const uint8_t *src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t *dst, \
        uint32_t dstStride
#define PXR_YCC_VIDEO_ARGS const uint8_t *src, uint32_t srcWidth, uint32_t srcHeight, uint16_t *dst
