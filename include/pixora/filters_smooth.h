/* Pixora linear filters: Gaussian 5x5/11x11 (u8, s16, s32), box filters and local normalisation. */
#ifndef PIXORA_FILTERS_SMOOTH_H
#define PIXORA_FILTERS_SMOOTH_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_EXTERN_C_END

#endif
