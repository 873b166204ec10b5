// Vector (kind 1) implementations of the colour family: conversions from YCbCr (to packed RGB, between YCbCr layouts, the JPEG-style and video-range decoders).
#pragma once

#include "imgproc/color/to_rgb.h"

PXR_YCC_DECLARE_MEMBERS(V)
PXR_YCC_REGISTER_MEMBERS(PXR_VECTOR, V)
PXR_INTERNAL_VECTOR(PXR_IROW_ColorYUV420toRGB565u8Rotate180, pxrColorYUV420toRGB565u8Rotate180V)
