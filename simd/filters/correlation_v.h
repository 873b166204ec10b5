// Vector (kind 1) implementations of the linear filters: correlation and convolution with caller kernels.
#pragma once

#include "imgproc/filters/correlation.h"
