// The DSP side's constraint-check switch, written together with the entry
// points' own switch by pxrSetHWFlag.
#include "pixora/frame.h"

extern "C" PXR_API void pxrUpdateK6ConstraintCheckFlag(uint32_t flag) { K6_constraint_checks_enable = flag; }
