#include "frame/cpu_detect.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <strings.h>

#include "frame/platform_lists.h"
#include "platform/platform.h"

#if defined(__linux__) && (defined(__arm__) || defined(__aarch64__))
#include <sys/auxv.h>
#endif

namespace pxr::detect {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

uint32_t toNumber(std::string_view value, int base) {
    const std::string text(value);
    return static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, base));
}

std::mutex gDetectMutex;
std::atomic<bool> gDetected{false};
Processor gProcessor;

}  // namespace

std::optional<std::string_view> cpuInfoField(std::string_view text, std::string_view name) {
    for (size_t pos = 0; pos < text.size();) {
        size_t end = text.find('\n', pos);
        if (end == std::string_view::npos) end = text.size();
        const std::string_view line = text.substr(pos, end - pos);
        if (line.starts_with(name)) {
            const size_t colon = line.find(':', name.size());
            if (colon == std::string_view::npos || colon + 1 >= line.size() || line[colon + 1] != ' ')
                return std::nullopt;
            std::string_view value = line.substr(colon + 2);
            if (!value.empty() && value.back() == '\r') value.remove_suffix(1);
            return value;
        }
        pos = end + 1;
    }
    return std::nullopt;
}

CpuInfo parseCpuInfo(std::string_view text) {
    CpuInfo info;
    if (auto v = cpuInfoField(text, "CPU architecture")) {
        info.hasArchitecture = true;
        info.architecture = toNumber(*v, 10);
    }
    if (auto v = cpuInfoField(text, "CPU implementer")) {
        info.hasImplementer = true;
        info.implementer = toNumber(*v, 0);
    }
    if (auto v = cpuInfoField(text, "Features")) {
        info.hasFeatures = true;
        for (size_t i = 0; i < v->size();) {
            while (i < v->size() && isBlank((*v)[i])) ++i;
            size_t j = i;
            while (j < v->size() && !isBlank((*v)[j])) ++j;
            const std::string_view word = v->substr(i, j - i);
            if (word == "vfp" || word == "fp") info.fp = true;
            if (word == "neon" || word == "asimd") info.vector = true;
            i = j;
        }
    }
    if (auto v = cpuInfoField(text, "Hardware")) {
        info.hasHardware = true;
        info.hardware = std::string(*v);
    }
    return info;
}

HostFeatures hostFeatures() {
    HostFeatures host;
#if defined(__x86_64__)
    // The x86-64 processor answers for the fields of the ARM text: SSE4.1 is
    // the vector level kind 1 is tuned for; floating point is architectural.
    __builtin_cpu_init();
    host.vector = __builtin_cpu_supports("sse4.1") != 0;
    host.fp = true;
    host.arch7 = true;
    host.supported = true;
#elif defined(__linux__) && defined(__aarch64__)
    // Emulators may hide the "Features" line; the kernel's capability word does not.
#ifndef HWCAP_FP
#define HWCAP_FP (1UL << 0)
#endif
#ifndef HWCAP_ASIMD
#define HWCAP_ASIMD (1UL << 1)
#endif
    const unsigned long caps = getauxval(AT_HWCAP);
    host.vector = (caps & HWCAP_ASIMD) != 0;
    host.fp = (caps & HWCAP_FP) != 0;
#elif defined(__linux__) && defined(__arm__)
#ifndef HWCAP_VFP
#define HWCAP_VFP (1UL << 6)
#endif
#ifndef HWCAP_NEON
#define HWCAP_NEON (1UL << 12)
#endif
    const unsigned long caps = getauxval(AT_HWCAP);
    host.vector = (caps & HWCAP_NEON) != 0;
    host.fp = (caps & HWCAP_VFP) != 0;
#endif
#if defined(__linux__) && (defined(__arm__) || defined(__aarch64__))
    // The kernel's platform string ("v7l", "v8l", "aarch64") gives the
    // architecture when the text has no "CPU architecture" line; and an ARM
    // core whose text names no implementer (an emulator) counts as supported,
    // as the x86-64 host does. See docs/platforms.md.
    if (const char* platform = reinterpret_cast<const char*>(getauxval(AT_PLATFORM))) {
        if (platform[0] == 'v' && platform[1] >= '0' && platform[1] <= '9')
            host.arch7 = std::strtoul(platform + 1, nullptr, 10) >= 7;
        else if (std::string_view(platform).rfind("aarch64", 0) == 0)
            host.arch7 = true;
    }
    host.supported = true;
#endif
    return host;
}

Processor resolve(const CpuInfo& info, const HostFeatures& host) {
    Processor p;
    p.vector = info.hasFeatures ? info.vector : host.vector.value_or(false);
    p.fp = info.hasFeatures ? info.fp : host.fp.value_or(false);
    p.arch7 = info.hasArchitecture ? info.architecture >= 7 : host.arch7.value_or(false);
    p.supportedImplementer =
        info.hasImplementer ? acceptedImplementer(info.implementer) : host.supported.value_or(false);
    p.onlyCpu = info.hasHardware && cpuOnlyHardware(info.hardware);
    return p;
}

bool acceptedImplementer(uint32_t code) {
    for (uint32_t accepted : platforms::kAcceptedImplementers)
        if (code == accepted) return true;
    return false;
}

bool cpuOnlyHardware(std::string_view name) {
    for (const char* listed : platforms::kCpuOnlyHardware) {
        const std::string_view l(listed);
        if (l.size() == name.size() && strncasecmp(l.data(), name.data(), l.size()) == 0) return true;
    }
    return false;
}

bool supportedBoard(std::string_view boardPlatform) {
    for (const char* prefix : platforms::kBoardPrefixes)
        if (boardPlatform.starts_with(prefix)) return true;
    return false;
}

Processor processor() {
    if (!gDetected.load(std::memory_order_acquire)) {
        std::lock_guard<std::mutex> lock(gDetectMutex);
        if (!gDetected.load(std::memory_order_relaxed)) {
            gProcessor = resolve(parseCpuInfo(platform::readCpuInfo(kCpuInfoBytes)), hostFeatures());
            gDetected.store(true, std::memory_order_release);
        }
    }
    return gProcessor;
}

void resetForTest() {
    std::lock_guard<std::mutex> lock(gDetectMutex);
    gDetected.store(false, std::memory_order_release);
}

}  // namespace pxr::detect
