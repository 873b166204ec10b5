// Switches, DSP selection, version and clean-up of the dispatch frame.
#include <cstring>

#include "dsp/dsp_session.h"
#include "frame/state.h"
#include "gpu/gpu_system.h"
#include "memory/shared_alloc.h"
#include "pixora/frame.h"
#include "platform/platform.h"

namespace {
constexpr char kVersion[] = PIXORA_VERSION_STRING;
static_assert(sizeof kVersion == 6, "the version and its terminator fill six bytes");
}  // namespace

extern "C" {

PXR_API void pxrSetHWFlag(uint32_t value) {
    HW_constraint_checks_enable = value;
    pxrUpdateK6ConstraintCheckFlag(value);
}

PXR_API void setDefaultDSPValue(uint32_t value) { defaultDSP = value; }

PXR_API int pxrSelectKDSP6Mode(uint32_t powerMode) {
    char version[sizeof kVersion];
    pxrGetVersion(version, sizeof version);
    if (!pxr::dsp::open(defaultDSP, powerMode, version)) return -1;
    KDSP_initflag = 1;
    return 0;
}

PXR_API void pxrGetVersion(char* buffer, uint32_t length) {
    pxr::platform::log(pxr::platform::kDebug, pxr::platform::kLibTag, "Pixora vendor library");
    if (!buffer) return;
    if (length >= sizeof kVersion)
        std::memcpy(buffer, kVersion, sizeof kVersion);
    else
        std::memset(buffer, 0, length);
}

PXR_API void pxrCleanUpHW(void) {
    pxr::dsp::close();
    pxr::gpu::stop();
    pxr::memory::teardownSharedAllocator();
}

// The tables and chosen kinds stay as they are.
PXR_API void pxrCleanUp(void) {
    pxrCleanUpHW();
    GPU_initflag = 0;
    KDSP_initflag = 0;
}

}  // extern "C"
