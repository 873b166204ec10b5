/* Pixora colour: conversions from YCbCr (to packed RGB, between YCbCr layouts, the JPEG-style and video-range decoders). */
#ifndef PIXORA_COLOR_TO_RGB_H
#define PIXORA_COLOR_TO_RGB_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_EXTERN_C_END

#endif
