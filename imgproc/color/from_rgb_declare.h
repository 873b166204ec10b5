// Declares and registers the row function of every member of
// from_rgb_members.def, and of internal row 0, for one kind. The includer
// defines PXR_FROM_RGB_SUFFIX (C or V), PXR_FROM_RGB_REGISTER and
// PXR_FROM_RGB_REGISTER_INTERNAL (the registry's macros of that kind).
// No include guard: included once per kind.
#include <cstdint>

#define PXR_FROM_RGB_CAT(a, b, c) a##b##c
#define PXR_FROM_RGB_FN(Name, suffix) PXR_FROM_RGB_CAT(pxr, Name, suffix)
#define PXR_FROM_RGB_DECL(Name, ...)                         \
    __VA_ARGS__ PXR_FROM_RGB_FN(Name, PXR_FROM_RGB_SUFFIX); \
    PXR_FROM_RGB_REGISTER(PXR_ROW_##Name, PXR_FROM_RGB_FN(Name, PXR_FROM_RGB_SUFFIX))

#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout) \
    PXR_FROM_RGB_DECL(Name, pxr::color::To##Layout##Fn<SrcType>)
#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp) \
    PXR_FROM_RGB_DECL(Name, pxr::color::PackedFn<SrcType, DstType>)
#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel) PXR_FROM_RGB_DECL(Name, pxr::color::PackedFn<uint8_t, uint8_t>)
#include "imgproc/color/from_rgb_members.def"

// Internal row 0: RGB888 to RGB565, rotated by 180 degrees.
pxr::color::PackedFn<uint8_t, uint16_t> PXR_FROM_RGB_FN(ColorRGB888ToRGB565Rotate180u8, PXR_FROM_RGB_SUFFIX);
PXR_FROM_RGB_REGISTER_INTERNAL(PXR_IROW_ColorRGB888ToRGB565Rotate180u8,
                               PXR_FROM_RGB_FN(ColorRGB888ToRGB565Rotate180u8, PXR_FROM_RGB_SUFFIX))

#undef PXR_FROM_RGB_DECL
#undef PXR_FROM_RGB_FN
#undef PXR_FROM_RGB_CAT
