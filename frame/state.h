// Process-wide values of the dispatch frame, written only by the mode setter.
#pragma once

#include <cstdint>

#include "pixora/frame.h"

extern "C" {
PXR_API extern uint8_t KDSP_initflag;
PXR_API extern uint8_t GPU_initflag;
PXR_API extern uint32_t nPxrAvailableProc;
}
