// The operation-mode setter, split so that the part after detection can be
// driven with a given hardware mask.
#pragma once

#include <cstdint>

namespace pxr {

// Results of the mode setter.
inline constexpr uint32_t kModeOk = 0;
inline constexpr uint32_t kModeUnsupportedCpu = 999;
inline constexpr uint32_t kModeUnknownSelector = 0xFFFFFFFFu;

// Builds the tables for the hardware mask `hw` (of pxrAvailableHardware),
// resets every choice and writes the kinds of `mode`.
uint32_t applyMode(uint32_t mode, uint64_t hw);

// The remote-library form: fills the tables and the remote-variant pointers
// for `mode`, leaving the chosen kinds as they are.
uint32_t applyRemoteMode(uint32_t mode, uint64_t hw);

}  // namespace pxr

extern "C" {
// The internal setter: constraint switch, processor count, trace switch,
// detection, then applyMode.
uint32_t ipxrSetOperationMode(uint32_t mode);
}
