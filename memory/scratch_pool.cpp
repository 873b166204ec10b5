// The scratch pool: 32 reusable blocks, each guarded by its own mutex, which
// the holder of a buffer keeps locked until it releases the buffer.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "memory/scratch.h"
#include "memory/scratch_layout.h"

using namespace pxr::memory;

extern "C" {
pxrGetScratchBufferAlignedFn pxrGetScratchBufferAligned_ = local_pxrGetScratchBufferAligned;
pxrGetScratchBufferUnalignedFn pxrGetScratchBufferUnaligned_ = local_pxrGetScratchBufferUnaligned;
pxrReleaseScratchBufferFn pxrReleaseScratchBuffer_ = local_pxrReleaseScratchBuffer;
std::atomic<uint8_t> CPU_initflag{0};
}

namespace {

struct Slot {
    void* block = nullptr;          // heap block owned by the slot
    size_t blockSize = 0;           // bytes of that block
    std::atomic<void*> user{nullptr};  // aligned pointer last handed out (read by any releaser)
    size_t requestedSize = 0;       // size asked for when the buffer was last placed
    std::atomic<uint32_t> inUse{0};   // non-zero while a caller holds the buffer
    std::mutex lock;                // held by the caller for as long as it holds the buffer
    std::atomic<const void*> holder{nullptr};  // thread that holds the buffer
};

Slot g_slots[kScratchSlots];
std::atomic<bool> g_poolActive{false};  // set once, never cleared
std::atomic<bool> g_tornDown{false};
std::mutex g_countMutex;
unsigned g_userCount = 0;  // guarded by g_countMutex
std::once_flag g_setUpOnce;
std::once_flag g_tearDownOnce;

// A per-thread address identifies the holder of a slot.
thread_local const char t_threadMarker = 0;
const void* thisThread() { return &t_threadMarker; }

void setUpPool() {
    pxrHeapStatsInit();
    for (Slot& s : g_slots) {
        const std::lock_guard lock(s.lock);
        s.block = nullptr;
        s.blockSize = 0;
        s.user.store(nullptr, std::memory_order_relaxed);
        s.requestedSize = 0;
        s.inUse.store(0, std::memory_order_relaxed);
    }
    g_poolActive.store(true, std::memory_order_release);
}

// Runs once per process; the pool cannot be started again afterwards. The
// slot mutexes are static objects, so "destroying" them is the torn-down mark
// that makes every later request fail.
void tearDownPool() {
    g_tornDown.store(true, std::memory_order_release);
    for (Slot& s : g_slots) {
        const std::lock_guard lock(s.lock);  // waits for a holder to release
        if (s.block != nullptr) {
            pxrHeapStatsFree(s.block);
            std::free(s.block);
        }
        s.block = nullptr;
        s.blockSize = 0;
        s.user.store(nullptr, std::memory_order_relaxed);
        s.requestedSize = 0;
        s.inUse.store(0, std::memory_order_relaxed);
    }
}

// Places a buffer of `size` bytes at `alignment` in a locked slot. A block
// with room enough is kept (the pointer only moves), so blocks never shrink
// and a pre-allocated block survives a request with a stricter alignment;
// otherwise a larger block replaces it. False (old block kept) on heap failure.
bool placeInSlot(Slot& s, size_t size, uint32_t alignment) {
    const size_t bytes = blockBytes(size, alignment);
    if (bytes == 0) return false;
    if (s.block == nullptr || s.blockSize < bytes) {
        void* block = std::malloc(bytes);
        if (block == nullptr) return false;
        pxrHeapStatsMalloc(block, bytes);
        if (s.block != nullptr) {
            pxrHeapStatsFree(s.block);
            std::free(s.block);
        }
        s.block = block;
        s.blockSize = bytes;
    }
    s.user.store(placeUser(s.block, alignment), std::memory_order_relaxed);
    s.requestedSize = size;
    return true;
}

void* poolGet(size_t size, uint32_t alignment) {
    for (Slot& s : g_slots) {
        if (s.inUse.load(std::memory_order_acquire) != 0) continue;
        if (!s.lock.try_lock()) continue;
        if (g_tornDown.load(std::memory_order_acquire)) {
            s.lock.unlock();
            return nullptr;
        }
        void* user = s.user.load(std::memory_order_relaxed);
        if (s.requestedSize < size || !isAligned(user, alignment)) {
            if (!placeInSlot(s, size, alignment)) {
                s.lock.unlock();
                return nullptr;
            }
            user = s.user.load(std::memory_order_relaxed);
        }
        writeHeader(user, kPoolTag, &s);
        s.holder.store(thisThread(), std::memory_order_relaxed);
        s.inUse.store(1, std::memory_order_release);
        return user;  // the slot stays locked until release
    }
    return nullptr;  // all slots busy: no heap fall-back while the pool is active
}

// True when p is the buffer of a slot (released then if this thread holds it).
bool poolRelease(void* p) {
    for (Slot& s : g_slots) {
        if (s.user.load(std::memory_order_acquire) != p) continue;
        if (s.inUse.load(std::memory_order_acquire) == 0 ||
            s.holder.load(std::memory_order_relaxed) != thisThread())
            return true;  // not held by this thread: its mutex is not ours to unlock
        if (readTag(p) == kPoolTag && readBackPointer(p) == &s) {
            s.holder.store(nullptr, std::memory_order_relaxed);
            s.inUse.store(0, std::memory_order_release);
            s.lock.unlock();
        }
        return true;
    }
    return false;
}

}  // namespace

extern "C" {

void* local_pxrGetScratchBufferAligned(size_t size, uint32_t alignment) {
    // Callers never ask for 0 bytes; serving it as 1 keeps an empty slot
    // (requested size 0, no block) from "matching" and handing out null.
    if (size == 0) size = 1;
    alignment = effectiveAlignment(alignment);
    if (g_poolActive.load(std::memory_order_acquire)) return poolGet(size, alignment);
    return heapScratchGet(size, alignment);
}

void* local_pxrGetScratchBufferUnaligned(size_t size) {
    return local_pxrGetScratchBufferAligned(size, 1);
}

void local_pxrReleaseScratchBuffer(void* ptr) {
    if (ptr == nullptr) return;
    if (g_poolActive.load(std::memory_order_acquire) && poolRelease(ptr)) return;
    // A buffer got before the pool became active is still a heap buffer.
    heapScratchRelease(ptr);
}

void pxrMemInit(void) {
    std::call_once(g_setUpOnce, setUpPool);
    {
        const std::lock_guard lock(g_countMutex);
        ++g_userCount;
    }
    CPU_initflag.store(1);
}

void pxrMemInitPreAlloc(uint32_t size) {
    pxrMemInit();
    if (size == 0) return;
    const size_t s = std::min<size_t>(size, kPreAllocLimit);
    void* p = local_pxrGetScratchBufferAligned(s, 16);
    if (p == nullptr) return;
    std::memset(p, 0, s);  // touch every page now, not on first real use
    local_pxrReleaseScratchBuffer(p);
}

void pxrMemDeInit(void) {
    if (CPU_initflag.load() == 0) return;
    std::unique_lock lock(g_countMutex);
    // An unbalanced call finds no user to remove; the count does not wrap.
    const unsigned was = g_userCount;
    if (was > 0) --g_userCount;
    if (was == 1) {
        std::call_once(g_tearDownOnce, tearDownPool);
        return;  // CPU_initflag stays set
    }
    lock.unlock();
    CPU_initflag.store(0);
}

}  // extern "C"

namespace pxr::memory {

SlotInfo scratchSlotInfo(unsigned index) {
    if (index >= kScratchSlots) return SlotInfo{};
    const Slot& s = g_slots[index];
    return SlotInfo{s.block, s.blockSize, s.user.load(), s.requestedSize, s.inUse.load() != 0};
}

bool scratchPoolActive() { return g_poolActive.load(); }
bool scratchPoolTornDown() { return g_tornDown.load(); }

unsigned scratchPoolUsers() {
    const std::lock_guard lock(g_countMutex);
    return g_userCount;
}

}  // namespace pxr::memory
