// Reference implementations of the colour family: conversions from packed RGB (to YCbCr, to other packed RGB, grey, HSV, LAB).
#pragma once

#include <cstdint>

#include "frame/registry.h"
