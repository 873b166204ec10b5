// Platform lists of the hardware detection. The values are neutral
// placeholders chosen for this library, see docs/platforms.md.
#pragma once

#include <cstdint>

namespace pxr::platforms {

// "CPU implementer" codes of processors the accelerator modes support.
inline constexpr uint32_t kAcceptedImplementers[] = {0x41, 0x51};

// Three-letter prefixes of "ro.board.platform" that mark a supported board.
inline constexpr const char* kBoardPrefixes[] = {"pxr", "gen", "evb", "ref"};

// "Hardware" names of platforms that have only the CPU (emulators and
// virtual machines); compared with the whole field, ignoring case.
inline constexpr const char* kCpuOnlyHardware[] = {"Goldfish", "Ranchu", "Dummy Virtual Machine"};

}  // namespace pxr::platforms
