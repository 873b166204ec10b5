// The installed shared-buffer allocator. No accelerator allocator exists yet,
// so set-up installs nothing and the pointers stay null.
#include "memory/shared_alloc.h"

extern "C" {
pxrSharedMemAllocFn pxrSharedMemAlloc_ = nullptr;
pxrSharedMemAllocFn pxrSharedMemAllocR_ = nullptr;
pxrSharedMemFreeFn pxrSharedMemFree_ = nullptr;
pxrSharedMemFreeFn pxrSharedMemFreeR_ = nullptr;
pxrSharedMemAllocFn* ppxrSharedMemAlloc = &pxrSharedMemAlloc_;
pxrSharedMemFreeFn* ppxrSharedMemFree = &pxrSharedMemFree_;
}

namespace pxr::memory {

void setupSharedAllocator(bool /*dsp*/, bool /*gpu*/) {}

void teardownSharedAllocator() {}

}  // namespace pxr::memory
