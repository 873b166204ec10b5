// Pre-allocation caps the block at one 7680x4320 frame and zeroes it once.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "memory/scratch.h"
#include "memory/scratch_layout.h"
#include "pixora.h"

TEST(ScratchLifecycle, PreAllocCapsAtOneFrameAndZeroesTheBlock) {
    using namespace pxr::memory;
    pxrMemInitPreAlloc(40000000);
    ASSERT_TRUE(scratchPoolActive());
    EXPECT_EQ(scratchPoolUsers(), 1u);

    const SlotInfo first = scratchSlotInfo(0);
    EXPECT_EQ(first.requestedSize, kPreAllocLimit);
    EXPECT_EQ(first.blockSize, blockBytes(kPreAllocLimit, 16));
    EXPECT_FALSE(first.inUse);
    for (unsigned i = 1; i < kScratchSlots; ++i) EXPECT_EQ(scratchSlotInfo(i).block, nullptr) << i;

    // The frame-sized request is served from that block, and it reads as zeros.
    auto* p = static_cast<const uint8_t*>(local_pxrGetScratchBufferAligned(kPreAllocLimit, 16));
    ASSERT_EQ(p, first.user);
    EXPECT_TRUE(std::all_of(p, p + kPreAllocLimit, [](uint8_t v) { return v == 0; }));
    local_pxrReleaseScratchBuffer(const_cast<uint8_t*>(p));

    // Size 0 only registers a user; a small size reuses the block.
    pxrMemInitPreAlloc(0);
    pxrMemInitPreAlloc(1000);
    EXPECT_EQ(scratchPoolUsers(), 3u);
    EXPECT_EQ(scratchSlotInfo(0).block, first.block);
    EXPECT_EQ(scratchSlotInfo(1).block, nullptr);
}
