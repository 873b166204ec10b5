/* Pixora memory: scratch pool set-up and aligned allocation. */
#ifndef PIXORA_MEMORY_H
#define PIXORA_MEMORY_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

PXR_API void pxrMemInit(void);
PXR_API void pxrMemInitPreAlloc(uint32_t size);
PXR_API void pxrMemDeInit(void);

PXR_API void* pxrMemAlign(size_t size, uint32_t alignment);
PXR_API void pxrMemAlignFree(void* ptr);
PXR_API void* pxrMemAlloc(size_t size, uint32_t alignment);
PXR_API void pxrMemFree(void* ptr);

/* Accounting hooks, called at every allocation and free. */
PXR_API void pxrHeapStatsInit(void);
PXR_API void pxrHeapStatsMalloc(void* ptr, size_t size);
PXR_API void pxrHeapStatsFree(void* ptr);
PXR_API void pxrHeapStats(void);

PXR_EXTERN_C_END

#endif
