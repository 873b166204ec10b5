// Vector (kind 1) implementations of the colour family: conversions from packed RGB (to YCbCr, to other packed RGB, grey, HSV, LAB).
#pragma once

#include "imgproc/color/from_rgb.h"
