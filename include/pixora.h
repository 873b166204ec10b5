/* Pixora (libpixoraopt): image processing and computer vision with
   run-time choice of CPU, vector unit, GPU or DSP for every operation. */
#ifndef PIXORA_H
#define PIXORA_H

#include "pixora/types.h"
#include "pixora/frame.h"
#include "pixora/memory.h"
#include "pixora/filters.h"
#include "pixora/color_from_rgb.h"
#include "pixora/color_to_rgb.h"
#include "pixora/scale.h"
#include "pixora/tracking.h"
#include "pixora/corners.h"

#endif
