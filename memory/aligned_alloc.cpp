// Aligned heap memory for applications (pxrMemAlign) and buffers meant for
// the accelerators (pxrMemAlloc, which prefers the installed shared allocator).
#include <cstdlib>

#include "memory/scratch_layout.h"
#include "memory/shared_alloc.h"
#include "pixora/memory.h"

namespace {

// The byte just before the pointer holds its distance from the block start
// (at most alignment + 1), so the alignment must stay within 128.
constexpr uint32_t kMaxAlignment = 128;

}  // namespace

extern "C" {

void* pxrMemAlign(size_t size, uint32_t alignment) {
    // Zero and non-powers of two mean no alignment; above 128 the distance
    // cannot be recorded, so the request is refused rather than under-aligned.
    const uint32_t a = pxr::memory::effectiveAlignment(alignment);
    if (a > kMaxAlignment || size > SIZE_MAX - a - 1) return nullptr;
    const size_t bytes = size + a + 1;
    auto* block = static_cast<std::byte*>(std::malloc(bytes));
    if (block == nullptr) return nullptr;
    pxrHeapStatsMalloc(block, bytes);
    const uintptr_t start = reinterpret_cast<uintptr_t>(block);
    const size_t distance = ((start + a + 1) & ~(uintptr_t{a} - 1)) - start;
    block[distance - 1] = static_cast<std::byte>(distance);
    return block + distance;
}

void pxrMemAlignFree(void* ptr) {
    if (ptr == nullptr) return;
    auto* user = static_cast<std::byte*>(ptr);
    std::byte* block = user - static_cast<size_t>(user[-1]);
    pxrHeapStatsFree(block);
    std::free(block);
}

void* pxrMemAlloc(size_t size, uint32_t alignment) {
    if (*ppxrSharedMemAlloc != nullptr && *ppxrSharedMemFree != nullptr) {
        if (void* p = (*ppxrSharedMemAlloc)(size, alignment)) return p;
    }
    return pxrMemAlign(size, alignment);
}

void pxrMemFree(void* ptr) {
    if (ptr == nullptr) return;
    if (*ppxrSharedMemFree != nullptr && (*ppxrSharedMemFree)(ptr) == 0) return;
    pxrMemAlignFree(ptr);
}

// Accounting hooks: called at every allocation and free, and do nothing.
void pxrHeapStatsInit(void) {}
void pxrHeapStatsMalloc(void* /*ptr*/, size_t /*size*/) {}
void pxrHeapStatsFree(void* /*ptr*/) {}
void pxrHeapStats(void) {}

}  // extern "C"
