/* Pixora non-linear filters: median, bilateral, morphology and thresholds. */
#ifndef PIXORA_FILTERS_NONLINEAR_H
#define PIXORA_FILTERS_NONLINEAR_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_EXTERN_C_END

#endif
