// Every family's row registrations. Included by the table builder only
// (and by the entry points of each family, through the family's own header).
#pragma once

#include "dsp/dsp_rows.h"
#include "imgproc/filters/filters.h"
#include "simd/filters/filters_v.h"
#include "imgproc/filters/smooth.h"
#include "simd/filters/smooth_v.h"
#include "imgproc/filters/gradient.h"
#include "simd/filters/gradient_v.h"
#include "imgproc/filters/correlation.h"
#include "simd/filters/correlation_v.h"
#include "imgproc/color/from_rgb.h"
#include "simd/color/from_rgb_v.h"
#include "imgproc/color/to_rgb.h"
#include "simd/color/to_rgb_v.h"
#include "imgproc/filters/nonlinear.h"
#include "simd/filters/nonlinear_v.h"
#include "imgproc/scale/scale.h"
#include "simd/scale/scale_v.h"
#include "features/tracking/tracking.h"
#include "simd/features/tracking/tracking_v.h"
