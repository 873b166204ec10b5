// Processor detection of the mode setter: the fields of the processor
// information text, the processor's own report where the text is silent,
// and the once-per-process result.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pxr::detect {

// Bytes of the processor information read at detection.
inline constexpr size_t kCpuInfoBytes = 4096;

// The fields found in the processor information text.
struct CpuInfo {
    bool hasArchitecture = false;  // "CPU architecture" (decimal)
    bool hasImplementer = false;   // "CPU implementer" (any base)
    bool hasFeatures = false;      // "Features"
    bool hasHardware = false;      // "Hardware"
    uint32_t architecture = 0;
    uint32_t implementer = 0;
    bool fp = false;      // a "Features" word is "vfp" or "fp"
    bool vector = false;  // a "Features" word is "neon" or "asimd"
    std::string hardware;
};

// The value of field `name`: the name at the start of a line, anything up to
// the colon, which must be followed by one blank, then the rest of the line.
// Only the first line that starts with the name counts; none if malformed.
std::optional<std::string_view> cpuInfoField(std::string_view text, std::string_view name);

CpuInfo parseCpuInfo(std::string_view text);

// What the processor itself reports; empty where it cannot tell.
struct HostFeatures {
    std::optional<bool> vector, fp, arch7, supported;
};
HostFeatures hostFeatures();

// The processor as the mode setter sees it.
struct Processor {
    bool vector = false;
    bool fp = false;
    bool arch7 = false;
    bool supportedImplementer = false;
    bool onlyCpu = false;
};

// Text fields win; the host's report stands in for a field the text lacks.
Processor resolve(const CpuInfo& info, const HostFeatures& host);

bool acceptedImplementer(uint32_t code);
bool cpuOnlyHardware(std::string_view name);
bool supportedBoard(std::string_view boardPlatform);

// The processor, detected on first use under a one-time guard.
Processor processor();

// Test only: forgets the detection, so the next use reads the text again.
void resetForTest();

}  // namespace pxr::detect
