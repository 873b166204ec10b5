// Declares the row function of every member of from_rgb_members.def through
// PXR_FROM_RGB_DECL(Name, Type...), which the includer defines (name suffix
// and registration). No include guard: included once per kind.
#include <cstdint>

#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout) \
    PXR_FROM_RGB_DECL(Name, pxr::color::To##Layout##Fn<SrcType>)
#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp) \
    PXR_FROM_RGB_DECL(Name, pxr::color::PackedFn<SrcType, DstType>)
#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel) PXR_FROM_RGB_DECL(Name, pxr::color::PackedFn<uint8_t, uint8_t>)
#include "imgproc/color/from_rgb_members.def"
