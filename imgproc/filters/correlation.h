// Reference implementations of the linear filters: correlation and convolution with caller kernels.
#pragma once

#include <cstdint>

#include "frame/registry.h"
