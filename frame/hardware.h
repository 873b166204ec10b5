// Hardware detection and accelerator start-up of the mode setter.
#pragma once

#include <cstdint>

#include "pixora/frame.h"

namespace pxr {

// Extended requests carry bit 31 and a selector in the other bits.
inline constexpr uint32_t kExtendedBit = 0x80000000u;
constexpr bool isExtended(uint32_t mode) { return (mode & kExtendedBit) != 0; }
constexpr uint32_t selectorOf(uint32_t mode) { return mode & ~kExtendedBit; }

// DSP power mode of an operation mode: 0 -> 0, 1 -> 2, 2 -> 1, other plain
// modes -> 1, extended requests -> 2.
constexpr uint32_t dspPowerMode(uint32_t mode) {
    if (isExtended(mode)) return 2;
    constexpr uint32_t kByMode[] = {0, 2, 1};
    return mode < 3 ? kByMode[mode] : 1;
}

// Whether pxrAvailableHardware starts the accelerators for `mode` (on a
// supported platform): every mode but 3 and the extended CPU selectors.
constexpr bool startsComponents(uint32_t mode) {
    if (!isExtended(mode)) return mode != PIXORA_OP_CPU_PERFORMANCE;
    const uint32_t e = selectorOf(mode);
    return e != 1 && e != 2 && e != 4;
}

// The trace switch: the number in "vendor.runtime.pixora.log" is non-zero.
bool readLogSwitch();

}  // namespace pxr

extern "C" {
// Starts the DSP channel and the GPU for `mode`; returns PIXORA_HW_DSP and
// PIXORA_HW_GPU for what came up, and installs the shared-buffer allocator.
uint64_t pxrAvailableHWComponent(uint32_t mode);
}
