// Operation modes: the setter, its extended and remote-library forms.
#include "frame/modes.h"

#include "frame/hardware.h"
#include "frame/row_ids.h"
#include "frame/state.h"
#include "frame/tables.h"
#include "gpu/gpu_system.h"
#include "platform/platform.h"

#define PXR_REMOTE(name, row) extern "C" uintptr_t name;
#include "frame/remote_pointers.def"
#undef PXR_REMOTE

namespace pxr {
namespace {

using platform::kLibTag;

bool noFloatingPoint(uint64_t hw) {
    return !(hw & PIXORA_HW_FPU) && (hw & (PIXORA_HW_EXAMINED | PIXORA_HW_VECTOR)) == PIXORA_HW_EXAMINED;
}

bool knownSelector(uint32_t e) { return e == 1 || e == 2 || e == 4 || e == 8 || e == 0x20 || e == 0x400; }
bool dspSelector(uint32_t e) { return e == 8 || e == 0x400; }

// The DSP kind of the domain selected by defaultDSP; 0 when none is selected.
uint32_t selectedDspKind() {
    switch (defaultDSP) {
        case 0: return PIXORA_KIND_ADSP;
        case 1: return PIXORA_KIND_CDSP;
        case 2: return PIXORA_KIND_MDSP;
        default: return 0;
    }
}

void chooseVector(uint64_t hw) {
    if (!(hw & PIXORA_HW_VECTOR)) return;
    uVHelper();
    uVIndex();
}

void startGpuFunctions(PXR_FUNC_MANAGER* m) {
    gpu::startFunctionLayer();
    uGIndex(m);
}

// Shared preface of the setter and its remote-library form.
uint32_t effectiveMode(uint32_t mode) {
    if (pxr_check_only_cpu()) {
        platform::log(platform::kError, kLibTag, "%s\n",
                      "DSP and GPU not present. Setting PIXORA mode to PIXORA_OP_CPU_PERFORMANCE.");
        mode = PIXORA_OP_CPU_PERFORMANCE;
    }
    mode_globalVar = mode;
    return mode;
}

uint64_t detectFor(uint32_t mode) {
    pxrSetHWFlag(1);
    nPxrAvailableProc = pxrAvailableProcessors();
    libLogPrint = readLogSwitch() ? 1 : 0;
    return pxrAvailableHardware(mode);
}

// Points every remote-variant pointer whose row has an implementation of
// `kind` at that column's entry.
void setRemotePointers(uint32_t kind) {
#define PXR_REMOTE(name, row) \
    if (hasAccelerator(row, kind)) name = pxrFuncTable[(row) * kNumKinds + kind];
#include "frame/remote_pointers.def"
#undef PXR_REMOTE
}

}  // namespace

uint32_t applyMode(uint32_t mode, uint64_t hw) {
    if (noFloatingPoint(hw)) return kModeUnsupportedCpu;
    buildTables(hw & PIXORA_HW_VECTOR, hw & PIXORA_HW_DSP, hw & PIXORA_HW_GPU);
    resetChoices();
    PXR_FUNC_MANAGER* m = masterManager();

    if (isExtended(mode)) {
        const uint32_t e = selectorOf(mode);
        if (e == 2) return kModeOk;  // everything stays on kind 0
        chooseVector(hw);
        if (e == 1 || e == 4) return kModeOk;
        if (e == 0x20) {
            if (hw & PIXORA_HW_GPU) startGpuFunctions(m);
            return kModeOk;
        }
        if (dspSelector(e)) {
            pxrSetHWFlag(0);  // an explicit DSP request is honoured for any size
            if (hw & PIXORA_HW_DSP) {
                if (const uint32_t kind = selectedDspKind())
                    uKacmIndex(m, kind);
                else
                    platform::log(platform::kError, kLibTag,
                                  "defaultDSP flag is not set. Hence failed to set index for K Tables");
            }
            return kModeOk;
        }
        return kModeUnknownSelector;
    }

    if (!(hw & PIXORA_HW_PLATFORM)) return kModeOk;
    switch (mode) {
        case PIXORA_OP_LOW_POWER:
            chooseVector(hw);
            if (hw & PIXORA_HW_DSP) pxrSelectKDSP6Mode(0);  // keep the channel in low power
            uHWLowPowerModeTable(m);
            break;
        case PIXORA_OP_PERFORMANCE:
            chooseVector(hw);
            uHWPerformanceModeTable(m);
            break;
        case PIXORA_OP_CPU_OFFLOAD:
            chooseVector(hw);
            // The extra engines of bits 0x10 and 0x200 have no driver in this
            // library, so there is nothing to start for them.
            if (hw & PIXORA_HW_GPU) startGpuFunctions(m);
            uKCpuOffloadModeTable(m);  // a DSP choice overrides the GPU's
            break;
        case PIXORA_OP_CPU_PERFORMANCE:
            chooseVector(hw);
            break;
        default:
            break;
    }
    return kModeOk;
}

// The remote variants follow the modes' accelerators: the GPU for modes 1,
// 2 and selector 0x20, then the DSP (overriding) for modes 0 to 2 and
// selectors 8 and 0x400; see docs/modes.md.
uint32_t applyRemoteMode(uint32_t mode, uint64_t hw) {
    if (noFloatingPoint(hw)) return kModeUnsupportedCpu;
    buildTables(hw & PIXORA_HW_VECTOR, false, hw & PIXORA_HW_GPU);
    const uint32_t dspKind = selectedDspKind();
    if (hw & PIXORA_HW_DSP) {
        PXR_FUNC_MANAGER* m = masterManager();
        switch (dspKind) {
            case PIXORA_KIND_ADSP: uKaTable(m, dspKind); break;
            case PIXORA_KIND_CDSP: uKcTable(m, dspKind); break;
            case PIXORA_KIND_MDSP: uKmTable(m, dspKind); break;
            default:
                platform::log(platform::kError, kLibTag,
                              "defaultDSP flag is not set. Hence unable to set memory pointers for Pixora "
                              "functions");
        }
    }
    uRNull();

    const bool extended = isExtended(mode);
    const uint32_t e = selectorOf(mode);
    if (extended && !knownSelector(e)) return kModeUnknownSelector;
    if (!extended && !(hw & PIXORA_HW_PLATFORM)) return kModeOk;
    if (extended && dspSelector(e)) pxrSetHWFlag(0);

    const bool gpuMode = extended ? e == 0x20 : (mode == PIXORA_OP_PERFORMANCE || mode == PIXORA_OP_CPU_OFFLOAD);
    const bool dspMode = extended ? dspSelector(e) : mode <= PIXORA_OP_CPU_OFFLOAD;
    if (gpuMode && (hw & PIXORA_HW_GPU)) setRemotePointers(PIXORA_KIND_GPU);
    if (dspMode && (hw & PIXORA_HW_DSP)) {
        if (dspKind)
            setRemotePointers(dspKind);
        else
            platform::log(platform::kError, kLibTag,
                          "defaultDSP flag is not set. Hence unable to set index for Pixora functions");
    }
    return kModeOk;
}

}  // namespace pxr

extern "C" {

uint32_t ipxrSetOperationMode(uint32_t mode) { return pxr::applyMode(mode, pxr::detectFor(mode)); }

PXR_API uint32_t pxrSetOperationMode(uint32_t mode) { return ipxrSetOperationMode(pxr::effectiveMode(mode)); }

PXR_API uint32_t pxrSetOperationModeExt(uint32_t option) {
    using pxr::platform::kDebug;
    using pxr::platform::kLibTag;
    switch (option) {
        case PIXORA_OP_EXT_KDSP: return pxrSetOperationMode(0x80000400u) != 0 ? 1 : 0;
        case PIXORA_OP_EXT_GPU: return pxrSetOperationMode(0x80000020u) != 0 ? 1 : 0;
        default:
            pxr::platform::log(kDebug, kLibTag,
                               "Failed in %s. Please select appropriate option for mode to %s based on the "
                               "target of interest",
                               __func__, __func__);
            pxr::platform::log(kDebug, kLibTag,
                               "For mobile targets, %s supports only PIXORA_OP_EXT_KDSP and PIXORA_OP_EXT_GPU "
                               "options",
                               __func__);
            pxr::platform::log(kDebug, kLibTag,
                               "For non-mobile targets, %s supports PIXORA_OP_EXT_KDSP, PIXORA_OP_EXT_GPU, "
                               "PIXORA_OP_EXT_ADSP, PIXORA_OP_EXT_CDSP and PIXORA_OP_EXT_MDSP options",
                               __func__);
            return 1;
    }
}

PXR_API uint32_t pxrSetOperationModeRemoteLib(uint32_t mode) {
    mode = pxr::effectiveMode(mode);
    return pxr::applyRemoteMode(mode, pxr::detectFor(mode));
}

}  // extern "C"
