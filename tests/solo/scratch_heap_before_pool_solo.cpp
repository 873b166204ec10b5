// Before the pool is active scratch requests go to the heap without limit;
// such buffers are still freed correctly once the pool has become active.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "memory/scratch.h"
#include "memory/scratch_layout.h"
#include "pixora.h"

TEST(ScratchLifecycle, HeapBuffersGotBeforeThePoolAreFreedAfterIt) {
    using namespace pxr::memory;
    ASSERT_FALSE(scratchPoolActive());

    std::vector<void*> early;
    for (unsigned i = 0; i < kScratchSlots + 8; ++i) {
        const uint32_t a = 1u << (i % 8);
        void* p = local_pxrGetScratchBufferAligned(100 + i, a);
        ASSERT_NE(p, nullptr) << i;  // no 32-buffer limit without the pool
        EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % a, 0u);
        EXPECT_EQ(readTag(p), kHeapTag);
        early.push_back(p);
    }
    EXPECT_EQ(liveHeapScratchBuffers(), early.size());

    // Foreign pointers are ignored without being read.
    void* foreign = std::malloc(32);
    local_pxrReleaseScratchBuffer(foreign);
    std::free(foreign);

    pxrMemInit();
    ASSERT_TRUE(scratchPoolActive());
    EXPECT_EQ(scratchPoolUsers(), 1u);
    EXPECT_EQ(CPU_initflag.load(), 1);
    void* pooled = local_pxrGetScratchBufferUnaligned(64);
    ASSERT_NE(pooled, nullptr);
    EXPECT_EQ(readTag(pooled), kPoolTag);

    for (void* p : early) local_pxrReleaseScratchBuffer(p);
    EXPECT_EQ(liveHeapScratchBuffers(), 0u);
    local_pxrReleaseScratchBuffer(early.front());  // a second release does nothing
    EXPECT_TRUE(scratchSlotInfo(0).inUse);          // and leaves pool buffers alone
    local_pxrReleaseScratchBuffer(pooled);
    EXPECT_FALSE(scratchSlotInfo(0).inUse);
}
