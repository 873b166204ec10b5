// Reference implementations of the colour family: conversions from YCbCr (to packed RGB, between YCbCr layouts, the JPEG-style and video-range decoders).
#pragma once

#include <cstdint>

#include "frame/registry.h"
#include "imgproc/color/to_rgb_members.h"

PXR_YCC_DECLARE_MEMBERS(C)
PXR_YCC_REGISTER_MEMBERS(PXR_REFERENCE, C)
PXR_INTERNAL_REFERENCE(PXR_IROW_ColorYUV420toRGB565u8Rotate180, pxrColorYUV420toRGB565u8Rotate180C)
