// The vector target that kind 1 runs on in this process.
#pragma once

namespace pxr::simd {

// Name of the best vector target the dispatcher picks ("AVX2", "NEON", ...).
const char* chosenTargetName();

}  // namespace pxr::simd
