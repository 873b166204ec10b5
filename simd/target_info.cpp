#include "simd/target_info.h"

#include <hwy/targets.h>

namespace pxr::simd {

const char* chosenTargetName() {
#if HWY_TARGETS == HWY_STATIC_TARGET
    // A single compiled target (32-bit ARM): every dispatch is a direct call
    // to it, whatever the Highway library reports for the processor.
    return hwy::TargetName(HWY_STATIC_TARGET);
#else
    // The best compiled target the processor supports; Highway orders the
    // bits so that the lowest set bit is the best.
    const int64_t targets = hwy::SupportedTargets() & HWY_TARGETS;
    return hwy::TargetName(targets & -targets);
#endif
}

}  // namespace pxr::simd
