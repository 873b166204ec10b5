// Reference implementations of the linear filters: Gaussian 5x5/11x11 (u8, s16, s32), box filters and local normalisation.
#pragma once

#include <cstdint>

#include "frame/registry.h"
