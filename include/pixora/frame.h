/* Pixora dispatch frame: operation modes, detection, version and clean-up. */
#ifndef PIXORA_FRAME_H
#define PIXORA_FRAME_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

#define PIXORA_NUM_FUNCTIONS 506
#define PIXORA_NUM_INTERNAL_FUNCTIONS 16
#define PIXORA_NUM_KINDS 7

/* Hardware mask bits of pxrAvailableHardware. */
#define PIXORA_HW_EXAMINED 0x2ULL
#define PIXORA_HW_VECTOR 0x4ULL
#define PIXORA_HW_DSP 0x8ULL
#define PIXORA_HW_EXTRA0 0x10ULL
#define PIXORA_HW_GPU 0x20ULL
#define PIXORA_HW_FPU 0x80ULL
#define PIXORA_HW_ARCH7 0x100ULL
#define PIXORA_HW_EXTRA1 0x200ULL
#define PIXORA_HW_PLATFORM 0x800ULL
#define PIXORA_HW_BIT32 0x100000000ULL

PXR_API uint32_t pxrSetOperationMode(uint32_t mode);
PXR_API uint32_t pxrSetOperationModeExt(uint32_t option);
PXR_API uint32_t pxrSetOperationModeRemoteLib(uint32_t mode);
PXR_API uint64_t pxrAvailableHardware(uint32_t mode);
PXR_API uint32_t pxrAvailableProcessors(void);
PXR_API int pxr_check_only_cpu(void);
PXR_API void pxrSetHWFlag(uint32_t value);
/* Writes the DSP side's constraint-check switch (set with pxrSetHWFlag). */
PXR_API void pxrUpdateK6ConstraintCheckFlag(uint32_t flag);
PXR_API void setDefaultDSPValue(uint32_t value);
PXR_API int pxrSelectKDSP6Mode(uint32_t powerMode);
PXR_API void pxrGetVersion(char* buffer, uint32_t length);
PXR_API void pxrCleanUp(void);
PXR_API void pxrCleanUpHW(void);

/* Process-wide dispatch state. Entries are pointer-sized. */
PXR_API extern uintptr_t pxrFuncTable[PIXORA_NUM_FUNCTIONS * PIXORA_NUM_KINDS];
PXR_API extern uint32_t pxrImplTable[PIXORA_NUM_FUNCTIONS];
PXR_API extern uintptr_t pxrInternalFuncTable[PIXORA_NUM_INTERNAL_FUNCTIONS * PIXORA_NUM_KINDS];
PXR_API extern uint32_t pxrInternalImplTable[PIXORA_NUM_INTERNAL_FUNCTIONS];
PXR_API extern const char* const pxrImplChar[PIXORA_NUM_KINDS];
PXR_API extern uint32_t HW_constraint_checks_enable;
PXR_API extern uint32_t K6_constraint_checks_enable;
PXR_API extern uint8_t libLogPrint;
PXR_API extern uint32_t mode_globalVar;
PXR_API extern uint32_t defaultDSP;

/* Descriptor handed to the table fillers. */
typedef struct {
    uint8_t initialised;
    uint32_t* implTable;
    uint32_t numFunctions;
    uintptr_t* funcTable;
    uint32_t* internalImplTable;
    uint32_t numInternalFunctions;
    uintptr_t* internalFuncTable;
    uint32_t numKinds;
} PXR_FUNC_MANAGER;

PXR_API int pxrInitializeMasterFuncManager(PXR_FUNC_MANAGER* manager);

PXR_EXTERN_C_END

#endif
