#include "simd/target_info.h"

#include <hwy/targets.h>

namespace pxr::simd {

const char* chosenTargetName() {
    const int64_t targets = hwy::SupportedTargets();
    // The lowest set bit is the best target (Highway orders them that way).
    return hwy::TargetName(targets & -targets);
}

}  // namespace pxr::simd
