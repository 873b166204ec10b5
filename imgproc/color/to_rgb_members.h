// The members of the YCbCr colour group, one line each. The reference and
// vector kinds, the registrations, the entry points, the tests and the
// benchmarks are all generated from these lists, so a member is added in
// one place. Each list passes what follows X to every X (a suffix, say).
//
// Names drop the "pxrColor" prefix. A layout side is PLANAR (three planes)
// or PSEUDO (a Y plane and one plane of chroma pairs); `sx, sy` are its
// chroma subsampling factors (1 or 2).
#pragma once

// YCbCr to packed RGB: X(name, source side, sx, sy, Order, Math, Writer).
// Order CbCr or CrCb is the byte order of the chroma pairs (planar
// sources: CbCr); Math Weights8 (8-bit weights) or JpegQ15.
#define PXR_YCC_TO_RGB(X, ...)                                                               \
    X(YCbCr444PlanarToRGB565u8, PLANAR, 1, 1, CbCr, Weights8, Rgb565, __VA_ARGS__)           \
    X(YCbCr444PlanarToRGB888u8, PLANAR, 1, 1, CbCr, Weights8, Rgb888, __VA_ARGS__)           \
    X(YCbCr444PlanarToRGBA8888u8, PLANAR, 1, 1, CbCr, Weights8, Rgba8888, __VA_ARGS__)       \
    X(YCbCr422PlanarToRGB565u8, PLANAR, 2, 1, CbCr, Weights8, Rgb565, __VA_ARGS__)           \
    X(YCbCr422PlanarToRGB888u8, PLANAR, 2, 1, CbCr, Weights8, Rgb888, __VA_ARGS__)           \
    X(YCbCr422PlanarToRGBA8888u8, PLANAR, 2, 1, CbCr, Weights8, Rgba8888, __VA_ARGS__)       \
    X(YCbCr420PlanarToRGB565u8, PLANAR, 2, 2, CbCr, Weights8, Rgb565, __VA_ARGS__)           \
    X(YCbCr420PlanarToRGB888u8, PLANAR, 2, 2, CbCr, Weights8, Rgb888, __VA_ARGS__)           \
    X(YCbCr420PlanarToRGBA8888u8, PLANAR, 2, 2, CbCr, Weights8, Rgba8888, __VA_ARGS__)       \
    X(YCbCr444PseudoPlanarToRGB565u8, PSEUDO, 1, 1, CbCr, Weights8, Rgb565, __VA_ARGS__)     \
    X(YCbCr444PseudoPlanarToRGB888u8, PSEUDO, 1, 1, CbCr, Weights8, Rgb888, __VA_ARGS__)     \
    X(YCbCr444PseudoPlanarToRGBA8888u8, PSEUDO, 1, 1, CbCr, Weights8, Rgba8888, __VA_ARGS__) \
    X(YCbCr422PseudoPlanarToRGB565u8, PSEUDO, 2, 1, CbCr, Weights8, Rgb565, __VA_ARGS__)     \
    X(YCbCr422PseudoPlanarToRGB888u8, PSEUDO, 2, 1, CbCr, Weights8, Rgb888, __VA_ARGS__)     \
    X(YCbCr422PseudoPlanarToRGBA8888u8, PSEUDO, 2, 1, CbCr, Weights8, Rgba8888, __VA_ARGS__) \
    X(YCbCr420PseudoPlanarToRGB565u8, PSEUDO, 2, 2, CbCr, Weights8, Rgb565, __VA_ARGS__)     \
    X(YCbCr420PseudoPlanarToRGB888u8, PSEUDO, 2, 2, CbCr, Weights8, Rgb888, __VA_ARGS__)     \
    X(YCbCr420PseudoPlanarToRGBA8888u8, PSEUDO, 2, 2, CbCr, Weights8, Rgba8888, __VA_ARGS__) \
    X(YCrCb420PseudoPlanarToRGB8888u8, PSEUDO, 2, 2, CrCb, Weights8, Rgba8888, __VA_ARGS__)  \
    X(YCrCbH1V1toRGB888u8, PSEUDO, 1, 1, CrCb, JpegQ15, Rgb888, __VA_ARGS__)                 \
    X(YCrCbH2V1toRGB888u8, PSEUDO, 2, 1, CrCb, JpegQ15, Rgb888, __VA_ARGS__)                 \
    X(YCrCbH1V2toRGB888u8, PSEUDO, 1, 2, CrCb, JpegQ15, Rgb888, __VA_ARGS__)                 \
    X(YCrCbH2V2toRGB888u8, PSEUDO, 2, 2, CrCb, JpegQ15, Rgb888, __VA_ARGS__)

// Layout changes: X(name, source side, sx, sy, destination side, sx, sy).
#define PXR_YCC_LAYOUTS(X, ...)                                                              \
    X(YCbCr444PlanarToYCbCr422Planaru8, PLANAR, 1, 1, PLANAR, 2, 1, __VA_ARGS__)             \
    X(YCbCr444PlanarToYCbCr420Planaru8, PLANAR, 1, 1, PLANAR, 2, 2, __VA_ARGS__)             \
    X(YCbCr422PlanarToYCbCr444Planaru8, PLANAR, 2, 1, PLANAR, 1, 1, __VA_ARGS__)             \
    X(YCbCr422PlanarToYCbCr420Planaru8, PLANAR, 2, 1, PLANAR, 2, 2, __VA_ARGS__)             \
    X(YCbCr420PlanarToYCbCr444Planaru8, PLANAR, 2, 2, PLANAR, 1, 1, __VA_ARGS__)             \
    X(YCbCr420PlanarToYCbCr422Planaru8, PLANAR, 2, 2, PLANAR, 2, 1, __VA_ARGS__)             \
    X(YCbCr444PlanarToYCbCr444PseudoPlanaru8, PLANAR, 1, 1, PSEUDO, 1, 1, __VA_ARGS__)       \
    X(YCbCr444PlanarToYCbCr422PseudoPlanaru8, PLANAR, 1, 1, PSEUDO, 2, 1, __VA_ARGS__)       \
    X(YCbCr444PlanarToYCbCr420PseudoPlanaru8, PLANAR, 1, 1, PSEUDO, 2, 2, __VA_ARGS__)       \
    X(YCbCr422PlanarToYCbCr444PseudoPlanaru8, PLANAR, 2, 1, PSEUDO, 1, 1, __VA_ARGS__)       \
    X(YCbCr422PlanarToYCbCr422PseudoPlanaru8, PLANAR, 2, 1, PSEUDO, 2, 1, __VA_ARGS__)       \
    X(YCbCr422PlanarToYCbCr420PseudoPlanaru8, PLANAR, 2, 1, PSEUDO, 2, 2, __VA_ARGS__)       \
    X(YCbCr420PlanarToYCbCr444PseudoPlanaru8, PLANAR, 2, 2, PSEUDO, 1, 1, __VA_ARGS__)       \
    X(YCbCr420PlanarToYCbCr422PseudoPlanaru8, PLANAR, 2, 2, PSEUDO, 2, 1, __VA_ARGS__)       \
    X(YCbCr420PlanarToYCbCr420PseudoPlanaru8, PLANAR, 2, 2, PSEUDO, 2, 2, __VA_ARGS__)       \
    X(YCbCr444PseudoPlanarToYCbCr444Planaru8, PSEUDO, 1, 1, PLANAR, 1, 1, __VA_ARGS__)       \
    X(YCbCr444PseudoPlanarToYCbCr422Planaru8, PSEUDO, 1, 1, PLANAR, 2, 1, __VA_ARGS__)       \
    X(YCbCr444PseudoPlanarToYCbCr420Planaru8, PSEUDO, 1, 1, PLANAR, 2, 2, __VA_ARGS__)       \
    X(YCbCr422PseudoPlanarToYCbCr444Planaru8, PSEUDO, 2, 1, PLANAR, 1, 1, __VA_ARGS__)       \
    X(YCbCr422PseudoPlanarToYCbCr422Planaru8, PSEUDO, 2, 1, PLANAR, 2, 1, __VA_ARGS__)       \
    X(YCbCr422PseudoPlanarToYCbCr420Planaru8, PSEUDO, 2, 1, PLANAR, 2, 2, __VA_ARGS__)       \
    X(YCbCr420PseudoPlanarToYCbCr444Planaru8, PSEUDO, 2, 2, PLANAR, 1, 1, __VA_ARGS__)       \
    X(YCbCr420PseudoPlanarToYCbCr422Planaru8, PSEUDO, 2, 2, PLANAR, 2, 1, __VA_ARGS__)       \
    X(YCbCr420PseudoPlanarToYCbCr420Planaru8, PSEUDO, 2, 2, PLANAR, 2, 2, __VA_ARGS__)       \
    X(YCbCr444PseudoPlanarToYCbCr422PseudoPlanaru8, PSEUDO, 1, 1, PSEUDO, 2, 1, __VA_ARGS__) \
    X(YCbCr444PseudoPlanarToYCbCr420PseudoPlanaru8, PSEUDO, 1, 1, PSEUDO, 2, 2, __VA_ARGS__) \
    X(YCbCr422PseudoPlanarToYCbCr444PseudoPlanaru8, PSEUDO, 2, 1, PSEUDO, 1, 1, __VA_ARGS__) \
    X(YCbCr422PseudoPlanarToYCbCr420PseudoPlanaru8, PSEUDO, 2, 1, PSEUDO, 2, 2, __VA_ARGS__) \
    X(YCbCr420PseudoPlanarToYCbCr444PseudoPlanaru8, PSEUDO, 2, 2, PSEUDO, 1, 1, __VA_ARGS__) \
    X(YCbCr420PseudoPlanarToYCbCr422PseudoPlanaru8, PSEUDO, 2, 2, PSEUDO, 2, 1, __VA_ARGS__)

// ---- Parameter lists of each side ---------------------------------------------
// Every plane has its own stride in bytes.

#define PXR_YCC_SRC_ARGS_PLANAR                                                                 \
    const uint8_t *srcY, const uint8_t *srcCb, const uint8_t *srcCr, uint32_t srcWidth,        \
        uint32_t srcHeight, uint32_t srcYStride, uint32_t srcCbStride, uint32_t srcCrStride
#define PXR_YCC_SRC_ARGS_PSEUDO                                                                 \
    const uint8_t *srcY, const uint8_t *srcC, uint32_t srcWidth, uint32_t srcHeight,           \
        uint32_t srcYStride, uint32_t srcCStride
#define PXR_YCC_DST_ARGS_PLANAR                                                                 \
    uint8_t *dstY, uint8_t *dstCb, uint8_t *dstCr, uint32_t dstYStride, uint32_t dstCbStride,  \
        uint32_t dstCrStride
#define PXR_YCC_DST_ARGS_PSEUDO uint8_t *dstY, uint8_t *dstC, uint32_t dstYStride, uint32_t dstCStride

// Whether a side is pseudo-planar.
#define PXR_YCC_IS_PSEUDO_PLANAR false
#define PXR_YCC_IS_PSEUDO_PSEUDO true

// The pixel type of each packed destination (565 words are 16-bit).
#define PXR_YCC_RGB_PIXEL_Rgb565 uint16_t
#define PXR_YCC_RGB_PIXEL_Rgb888 uint8_t
#define PXR_YCC_RGB_PIXEL_Rgba8888 uint8_t
#define PXR_YCC_RGB_DST_ARGS(Writer) PXR_YCC_RGB_PIXEL_##Writer *dst, uint32_t dstStride

#define PXR_YCC_SWAP_ARGS                                                                          \
    const uint8_t *src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t *dst, \
        uint32_t dstStride
#define PXR_YCC_VIDEO_ARGS const uint8_t *src, uint32_t srcWidth, uint32_t srcHeight, uint16_t *dst

// Declarations of every member with a suffix (C: reference, V: vector).
#define PXR_YCC_DECLARE_TO_RGB(name, Src, sx, sy, Order, Math, Writer, S) \
    void pxrColor##name##S(PXR_YCC_SRC_ARGS_##Src, PXR_YCC_RGB_DST_ARGS(Writer));
#define PXR_YCC_DECLARE_LAYOUT(name, Src, ssx, ssy, Dst, dsx, dsy, S) \
    void pxrColor##name##S(PXR_YCC_SRC_ARGS_##Src, PXR_YCC_DST_ARGS_##Dst);
#define PXR_YCC_DECLARE_MEMBERS(S)                         \
    PXR_YCC_TO_RGB(PXR_YCC_DECLARE_TO_RGB, S)              \
    PXR_YCC_LAYOUTS(PXR_YCC_DECLARE_LAYOUT, S)             \
    void pxrColorCbCrSwapu8##S(PXR_YCC_SWAP_ARGS);         \
    void pxrColorYUV420toRGB565u8##S(PXR_YCC_VIDEO_ARGS);  \
    void pxrColorYUV420toRGB565u8Rotate180##S(PXR_YCC_VIDEO_ARGS);

// Registrations of every public member: R is PXR_REFERENCE or PXR_VECTOR,
// S the suffix of the functions.
#define PXR_YCC_REGISTER_ONE(name, p1, p2, p3, p4, p5, p6, R, S) R(PXR_ROW_Color##name, pxrColor##name##S)
#define PXR_YCC_REGISTER_MEMBERS(R, S)                          \
    PXR_YCC_TO_RGB(PXR_YCC_REGISTER_ONE, R, S)                  \
    PXR_YCC_LAYOUTS(PXR_YCC_REGISTER_ONE, R, S)                 \
    R(PXR_ROW_ColorCbCrSwapu8, pxrColorCbCrSwapu8##S)           \
    R(PXR_ROW_ColorYUV420toRGB565u8, pxrColorYUV420toRGB565u8##S)
