// Scratch buffers straight from the heap, used while the pool is not active.
//
// Every live heap scratch buffer is recorded, so that a release reads the
// words before a pointer only after it is known to be one we handed out: a
// foreign pointer (a caller's own malloc or stack memory) is never read.
#include <cstdlib>
#include <mutex>
#include <new>
#include <unordered_set>

#include "memory/scratch.h"
#include "memory/scratch_layout.h"

namespace pxr::memory {
namespace {

struct HeapRegistry {
    std::mutex mutex;
    std::unordered_set<const void*> live;
};

// Never destroyed, so that buffers released from static destructors still work.
HeapRegistry& registry() {
    static auto* instance = new HeapRegistry;
    return *instance;
}

}  // namespace

void* heapScratchGet(size_t size, uint32_t alignment) {
    const size_t bytes = blockBytes(size, alignment);
    if (bytes == 0) return nullptr;
    void* block = std::malloc(bytes);
    if (block == nullptr) return nullptr;
    pxrHeapStatsMalloc(block, bytes);
    std::byte* user = placeUser(block, alignment);
    writeHeader(user, kHeapTag, block);
    try {
        HeapRegistry& reg = registry();
        const std::lock_guard lock(reg.mutex);
        reg.live.insert(user);
    } catch (const std::bad_alloc&) {
        pxrHeapStatsFree(block);
        std::free(block);
        return nullptr;
    }
    return user;
}

bool heapScratchRelease(void* p) {
    {
        HeapRegistry& reg = registry();
        const std::lock_guard lock(reg.mutex);
        if (reg.live.erase(p) == 0) return false;
    }
    // The tag decides; a header the caller overwrote leaves the block alone.
    if (readTag(p) == kHeapTag) {
        void* block = readBackPointer(p);
        pxrHeapStatsFree(block);
        std::free(block);
    }
    return true;
}

size_t liveHeapScratchBuffers() {
    HeapRegistry& reg = registry();
    const std::lock_guard lock(reg.mutex);
    return reg.live.size();
}

}  // namespace pxr::memory
