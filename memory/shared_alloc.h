// The installed shared-buffer allocator: memory the accelerators can map,
// preferred by pxrMemAlloc/pxrMemFree while one is installed. All four
// pointers are null when none is.
#pragma once

#include <cstddef>
#include <cstdint>

#include "pixora/types.h"

extern "C" {

// alloc(size, alignment) -> buffer or null.
typedef void* (*pxrSharedMemAllocFn)(size_t size, uint32_t alignment);
// free(buffer) -> 0 when the allocator owned the buffer, non-zero otherwise.
typedef int (*pxrSharedMemFreeFn)(void* ptr);

PXR_API extern pxrSharedMemAllocFn pxrSharedMemAlloc_;
PXR_API extern pxrSharedMemAllocFn pxrSharedMemAllocR_;
PXR_API extern pxrSharedMemFreeFn pxrSharedMemFree_;
PXR_API extern pxrSharedMemFreeFn pxrSharedMemFreeR_;

// Point at pxrSharedMemAlloc_ and pxrSharedMemFree_; pxrMemAlloc and
// pxrMemFree reach the allocator through them.
PXR_API extern pxrSharedMemAllocFn* ppxrSharedMemAlloc;
PXR_API extern pxrSharedMemFreeFn* ppxrSharedMemFree;
}

namespace pxr::memory {

// Called by the mode setter with the accelerators that came up, and at
// clean-up. Installing must not overlap allocation calls.
void setupSharedAllocator(bool dsp, bool gpu);
void teardownSharedAllocator();

}  // namespace pxr::memory
