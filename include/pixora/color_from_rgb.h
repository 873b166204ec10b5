/* Pixora colour: conversions from packed RGB (to YCbCr, to other packed RGB, grey, HSV, LAB). */
#ifndef PIXORA_COLOR_FROM_RGB_H
#define PIXORA_COLOR_FROM_RGB_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_EXTERN_C_END

#endif
