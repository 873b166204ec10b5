/* Pixora scaling and pyramids. */
#ifndef PIXORA_SCALE_H
#define PIXORA_SCALE_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_EXTERN_C_END

#endif
