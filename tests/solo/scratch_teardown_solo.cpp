// The last pxrMemDeInit tears the pool down for good: it is never started
// again in this process, and every later scratch request is null.
#include <gtest/gtest.h>

#include "memory/scratch.h"
#include "pixora.h"

TEST(ScratchLifecycle, LastDeInitTearsThePoolDownForGood) {
    using namespace pxr::memory;
    pxrMemDeInit();  // nobody registered: nothing happens
    EXPECT_FALSE(scratchPoolActive());
    EXPECT_EQ(scratchPoolUsers(), 0u);

    void* early = local_pxrGetScratchBufferAligned(256, 32);  // a heap buffer
    ASSERT_NE(early, nullptr);

    pxrMemInit();
    void* p = local_pxrGetScratchBufferAligned(4096, 64);
    ASSERT_NE(p, nullptr);
    local_pxrReleaseScratchBuffer(p);
    ASSERT_NE(scratchSlotInfo(0).block, nullptr);

    pxrMemDeInit();
    EXPECT_TRUE(scratchPoolTornDown());
    EXPECT_TRUE(scratchPoolActive());  // the flag is never cleared
    EXPECT_EQ(scratchPoolUsers(), 0u);
    EXPECT_EQ(CPU_initflag.load(), 1);  // the last user's tear-down leaves it set
    for (unsigned i = 0; i < kScratchSlots; ++i) {
        const SlotInfo s = scratchSlotInfo(i);
        EXPECT_EQ(s.block, nullptr) << i;
        EXPECT_EQ(s.blockSize, 0u) << i;
        EXPECT_EQ(s.user, nullptr) << i;
    }
    EXPECT_EQ(local_pxrGetScratchBufferAligned(16, 16), nullptr);
    EXPECT_EQ(local_pxrGetScratchBufferUnaligned(16), nullptr);

    // Starting it again registers a user but brings no slot back.
    pxrMemInitPreAlloc(1 << 20);
    EXPECT_EQ(scratchPoolUsers(), 1u);
    EXPECT_EQ(scratchSlotInfo(0).block, nullptr);
    EXPECT_FALSE(pxr::ScratchBuffer(16, 16));
    pxrMemDeInit();  // the tear-down runs once only
    EXPECT_EQ(local_pxrGetScratchBufferUnaligned(16), nullptr);

    // A buffer from before the pool is still freed.
    local_pxrReleaseScratchBuffer(early);
    EXPECT_EQ(liveHeapScratchBuffers(), 0u);
}
