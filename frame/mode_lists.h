// The per-mode choice lists: function ids that leave the CPU in each mode.
// Every list is in ascending order, so a descriptor that declares fewer rows
// stops the list at its bound. A list may name only ids whose accelerator
// column some build fills; an id whose column is still 0 is harmless, since
// the entry point then runs kind 1 of the same row.
#pragma once

#include <cstdint>

namespace pxr::modes {

// PIXORA_OP_PERFORMANCE, GPU (kind 3).
inline constexpr uint32_t kPerformanceGpu[] = {1, 2, 29, 43, 136, 160, 338, 394, 395};

// PIXORA_OP_PERFORMANCE, DSP (kind 5).
inline constexpr uint32_t kPerformanceDsp[] = {18,  146, 148, 149, 150, 151, 152, 153,
                                               154, 155, 156, 157, 200, 201, 202, 215,
                                               217, 283, 345, 346, 349, 353, 354, 401,
                                               407, 408, 415, 468, 469, 474, 475};

// PIXORA_OP_LOW_POWER, DSP (kind 5): the three-channel warps, the float
// absolute difference, the 3x3 Gaussian adaptive threshold and the two-plane
// warp, which the DSP runs at a fraction of the CPU's power.
inline constexpr uint32_t kLowPowerDsp[] = {0, 1, 2, 3, 16, 470};

// PIXORA_OP_CPU_OFFLOAD, DSP (kind 5): the three-channel warps and the
// two-plane warp.
inline constexpr uint32_t kCpuOffloadDsp[] = {0, 1, 2, 470};

// Internal rows chosen for the DSP in every DSP mode: the timing probe and
// buffer registration.
inline constexpr uint32_t kInternalDsp[] = {10, 11};

}  // namespace pxr::modes
