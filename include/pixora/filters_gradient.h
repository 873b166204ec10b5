/* Pixora linear filters: Sobel magnitude, Sobel derivatives and image gradients. */
#ifndef PIXORA_FILTERS_GRADIENT_H
#define PIXORA_FILTERS_GRADIENT_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_EXTERN_C_END

#endif
