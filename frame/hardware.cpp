// Hardware detection: the processor (once per process), the platform check
// and the start-up of the DSP channel and the GPU.
#include "frame/hardware.h"

#include <chrono>
#include <cstdlib>
#include <string>

#include "dsp/dsp_session.h"
#include "frame/cpu_detect.h"
#include "frame/state.h"
#include "gpu/gpu_system.h"
#include "memory/shared_alloc.h"
#include "platform/platform.h"

namespace pxr {
namespace {

constexpr const char* kSource = "hardware.cpp";

long long microsecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start)
        .count();
}

// Start-up times go to the runtime log next to the per-call trace, in
// microseconds (docs/modes.md).
void logTime(const char* what, long long us) {
    if (libLogPrint) platform::log(platform::kError, platform::kRuntimeTag, "%s %lld", what, us);
}

void logDomainFailure(uint32_t domain) {
    using platform::kError;
    using platform::kLibTag;
    switch (domain) {
        case 0:
            platform::log(kError, kLibTag,
                          "Failed to open channel on ADSP!! ADSP does not support Domains on this target %d %s",
                          __LINE__, kSource);
            break;
        case 1:
            platform::log(kError, kLibTag,
                          "Failed to open channel on CDSP!! CDSP does not support Domains on this target %d %s",
                          __LINE__, kSource);
            break;
        case 2:
            platform::log(kError, kLibTag,
                          "Failed to open channel on MDSP!! MDSP does not support Domains on this target %d %s",
                          __LINE__, kSource);
            break;
        default:
            platform::log(kError, kLibTag, "Unknown DSP type selected.%d %s", __LINE__, kSource);
    }
}

// Brings the DSP channel up in `power` on the domain of defaultDSP.
bool startDsp(uint32_t power) {
    if (dsp::isOpen() && dsp::powerMode() == static_cast<int32_t>(power)) {
        if (defaultDSP == dsp::domain()) return true;
        dsp::close();
        if (dsp::open(defaultDSP, power, PIXORA_VERSION_STRING)) return true;
        logDomainFailure(defaultDSP);
        return false;
    }
    dsp::close();
    return dsp::open(defaultDSP, power, PIXORA_VERSION_STRING);
}

}  // namespace

bool readLogSwitch() {
    const std::string value = platform::property("vendor.runtime.pixora.log");
    return std::strtol(value.c_str(), nullptr, 10) != 0;
}

}  // namespace pxr

extern "C" {

uint64_t pxrAvailableHWComponent(uint32_t mode) {
    using Clock = std::chrono::steady_clock;
    uint64_t parts = 0;
    const auto dspStart = Clock::now();
    if (pxr::startDsp(pxr::dspPowerMode(mode))) parts |= PIXORA_HW_DSP;
    pxr::logTime(" K6 Initialization Time :", pxr::microsecondsSince(dspStart));
    // Low-power mode never starts the GPU.
    if (mode != PIXORA_OP_LOW_POWER) {
        const auto gpuStart = Clock::now();
        if (pxr::gpu::start()) {
            parts |= PIXORA_HW_GPU;
            pxr::logTime(" GPU Initialization Time :", pxr::microsecondsSince(gpuStart));
        }
    }
    pxr::memory::setupSharedAllocator((parts & PIXORA_HW_DSP) != 0, (parts & PIXORA_HW_GPU) != 0);
    return parts;
}

PXR_API uint64_t pxrAvailableHardware(uint32_t mode) {
    const pxr::detect::Processor cpu = pxr::detect::processor();
    libLogPrint = pxr::readLogSwitch() ? 1 : 0;
    uint64_t hw = PIXORA_HW_EXAMINED;
    if (cpu.vector) hw |= PIXORA_HW_VECTOR;
    if (cpu.fp) hw |= PIXORA_HW_FPU;
    if (cpu.arch7) hw |= PIXORA_HW_ARCH7 | PIXORA_HW_BIT32;
    if (cpu.supportedImplementer ||
        pxr::detect::supportedBoard(pxr::platform::property("ro.board.platform")))
        hw |= PIXORA_HW_PLATFORM;
    if ((hw & PIXORA_HW_PLATFORM) && pxr::startsComponents(mode)) {
        // After a start-up, bit 32 tells whether the DSP channel is open.
        const uint64_t parts = pxrAvailableHWComponent(mode);
        hw = (hw & ~PIXORA_HW_BIT32) | parts | ((parts & PIXORA_HW_DSP) ? PIXORA_HW_BIT32 : 0);
        KDSP_initflag = (parts & PIXORA_HW_DSP) ? 1 : 0;
        GPU_initflag = (parts & PIXORA_HW_GPU) ? 1 : 0;
    }
    return hw;
}

PXR_API int pxr_check_only_cpu(void) { return pxr::detect::processor().onlyCpu ? 1 : 0; }

PXR_API uint32_t pxrAvailableProcessors(void) {
    const long n = pxr::platform::onlineProcessors();
    if (n <= 0) {
        pxr::platform::log(pxr::platform::kError, pxr::platform::kLibTag,
                           "Error in getting the number of available processor");
        return 1;
    }
    return static_cast<uint32_t>(n);
}

}  // extern "C"
