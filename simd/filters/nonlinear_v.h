// Vector (kind 1) implementations: non-linear filters: median, bilateral, morphology and thresholds.
#pragma once

#include "imgproc/filters/nonlinear.h"
