// Scratch memory for operations: the process-wide entry points, the local
// pool functions behind them, and RAII helpers that release on scope exit.
//
// Without pxrMemInit every request goes to the heap. With the pool active a
// request takes one of 32 slots by try-lock and never waits; when all 32 are
// busy the result is null (operations then return PIXORA_STATUS_NO_SCRATCH).
// A buffer must be released on the thread that got it.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "pixora/memory.h"

extern "C" {

typedef void* (*pxrGetScratchBufferAlignedFn)(size_t size, uint32_t alignment);
typedef void* (*pxrGetScratchBufferUnalignedFn)(size_t size);
typedef void (*pxrReleaseScratchBufferFn)(void* ptr);

// Operations reach scratch memory through these; they point at the local
// functions below.
PXR_API extern pxrGetScratchBufferAlignedFn pxrGetScratchBufferAligned_;
PXR_API extern pxrGetScratchBufferUnalignedFn pxrGetScratchBufferUnaligned_;
PXR_API extern pxrReleaseScratchBufferFn pxrReleaseScratchBuffer_;

// Alignment must be a power of two; any other value is treated as 1.
// A size of 0 is served as 1 byte, so the result is still a releasable buffer.
PXR_API void* local_pxrGetScratchBufferAligned(size_t size, uint32_t alignment);
PXR_API void* local_pxrGetScratchBufferUnaligned(size_t size);
// Null, a pointer the library did not hand out, or one held by another
// thread: nothing happens.
PXR_API void local_pxrReleaseScratchBuffer(void* ptr);

// 1 while a caller of pxrMemInit is registered.
PXR_API extern std::atomic<uint8_t> CPU_initflag;
}

namespace pxr {

// A scratch buffer held for the lifetime of the object; null when none could
// be had. Released on scope exit, on the same thread.
class ScratchBuffer {
public:
    ScratchBuffer(size_t size, uint32_t alignment) : ptr_(pxrGetScratchBufferAligned_(size, alignment)) {}
    explicit ScratchBuffer(size_t size) : ptr_(pxrGetScratchBufferUnaligned_(size)) {}
    ~ScratchBuffer() { release(); }
    ScratchBuffer(ScratchBuffer&& other) noexcept : ptr_(std::exchange(other.ptr_, nullptr)) {}
    ScratchBuffer(const ScratchBuffer&) = delete;
    ScratchBuffer& operator=(const ScratchBuffer&) = delete;
    ScratchBuffer& operator=(ScratchBuffer&&) = delete;

    void* get() const { return ptr_; }
    template <typename T>
    T* as() const { return static_cast<T*>(ptr_); }
    explicit operator bool() const { return ptr_ != nullptr; }

    // Gives the buffer back before scope exit.
    void release() {
        if (ptr_) pxrReleaseScratchBuffer_(std::exchange(ptr_, nullptr));
    }

private:
    void* ptr_;
};

// `count` elements of T; null (like any failed request) when count * sizeof(T)
// does not fit in size_t.
template <typename T>
class ScratchArray : public ScratchBuffer {
public:
    explicit ScratchArray(size_t count, uint32_t alignment = alignof(T))
        : ScratchBuffer(bytesFor(count), alignment) {}

    T* data() const { return as<T>(); }
    T& operator[](size_t i) const { return data()[i]; }

private:
    static size_t bytesFor(size_t count) {
        return count > SIZE_MAX / sizeof(T) ? SIZE_MAX : count * sizeof(T);
    }
};

namespace memory {

inline constexpr unsigned kScratchSlots = 32;
inline constexpr size_t kPreAllocLimit = 33177600;  // 7680 x 4320 bytes

// Inspection for tests and diagnostics. Reads without taking the slot lock:
// call it while no other thread gets or releases scratch buffers.
struct SlotInfo {
    const void* block;
    size_t blockSize;
    const void* user;
    size_t requestedSize;
    bool inUse;
};
SlotInfo scratchSlotInfo(unsigned index);
bool scratchPoolActive();
bool scratchPoolTornDown();
unsigned scratchPoolUsers();
// Heap scratch buffers (got without the pool) not yet released.
size_t liveHeapScratchBuffers();

// Heap path, used while the pool is not active.
void* heapScratchGet(size_t size, uint32_t alignment);
// True when p was a live heap scratch buffer (it is then freed).
bool heapScratchRelease(void* p);

}  // namespace memory
}  // namespace pxr
