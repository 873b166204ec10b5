// Function and implementation tables: fillers and choice setters.
#pragma once

#include <cstdint>

#include "pixora/frame.h"

namespace pxr {

inline constexpr uint32_t kNumFunctions = PIXORA_NUM_FUNCTIONS;
inline constexpr uint32_t kNumInternal = PIXORA_NUM_INTERNAL_FUNCTIONS;
inline constexpr uint32_t kNumKinds = PIXORA_NUM_KINDS;

// Return codes of the fillers and setters.
inline constexpr int kNoManager = 1;
inline constexpr int kNoTable = 2;
inline constexpr int kTooFewKinds = 4;

// The process-wide descriptor (null until pxrInitializeMasterFuncManager).
PXR_FUNC_MANAGER* masterManager();
// The descriptor instance the mode setter fills.
PXR_FUNC_MANAGER& defaultManager();

// Counts of the registry, for diagnostics and tests.
struct RegistryCounts {
    uint32_t reference, vector, gpu, dsp, internalReference, internalVector;
};
RegistryCounts registryCounts();

// Builds the tables on the first call (all columns) and refreshes column 2
// and the accelerator columns on later calls.
void buildTables(bool vectorUnit, bool dspPresent, bool gpuPresent);

// Puts every row back on kind 0 (except internal row 11 and rows 362, 363)
// and the helper pointers on their reference kernels.
void resetChoices();

// Whether row `id` has an implementation of accelerator kind `kind`
// (2 to 6): the registry behind columns 2 to 6.
bool hasAccelerator(uint32_t id, uint32_t kind);

// Static content of the function tables (reference code in columns 0..3).
uintptr_t staticFuncEntry(uint32_t id, uint32_t kind);

}  // namespace pxr

extern "C" {
int uCTable(uint32_t kind);
int uVTable(uint32_t kind);
int uKTable(PXR_FUNC_MANAGER* manager, uint32_t kind);
int uGTable(PXR_FUNC_MANAGER* manager, uint32_t kind);
int uKaTable(PXR_FUNC_MANAGER* manager, uint32_t kind);
int uKcTable(PXR_FUNC_MANAGER* manager, uint32_t kind);
int uKmTable(PXR_FUNC_MANAGER* manager, uint32_t kind);
int uVIndex(void);
int uKIndex(PXR_FUNC_MANAGER* manager);
int uGIndex(PXR_FUNC_MANAGER* manager);
int uKacmIndex(PXR_FUNC_MANAGER* manager, uint32_t kind);
int uHWLowPowerModeTable(PXR_FUNC_MANAGER* manager);
int uHWPerformanceModeTable(PXR_FUNC_MANAGER* manager);
int uKCpuOffloadModeTable(PXR_FUNC_MANAGER* manager);
void uCHelper(void);
void uVHelper(void);
void uRNull(void);
int pxrTableHWInit(uintptr_t* funcTable, uintptr_t* internalFuncTable, uint32_t dspPresent,
                   uint32_t gpuPresent);
}
