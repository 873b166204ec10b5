/* Pixora linear filters: correlation and convolution with caller kernels. */
#ifndef PIXORA_FILTERS_CORRELATION_H
#define PIXORA_FILTERS_CORRELATION_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_EXTERN_C_END

#endif
