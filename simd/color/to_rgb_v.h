// Vector (kind 1) implementations of the colour family: conversions from YCbCr (to packed RGB, between YCbCr layouts, the JPEG-style and video-range decoders).
#pragma once

#include "imgproc/color/to_rgb.h"
