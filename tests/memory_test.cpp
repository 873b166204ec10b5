// Scratch pool with the pool active (it is never torn down in this process),
// aligned allocation, and the installed shared allocator. Lifecycle cases
// that need a fresh process are in tests/solo/scratch_*_solo.cpp.
#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "memory/scratch.h"
#include "memory/scratch_layout.h"
#include "memory/shared_alloc.h"
#include "pixora.h"

namespace {

using pxr::memory::kScratchSlots;
using pxr::memory::scratchSlotInfo;

uintptr_t addr(const void* p) { return reinterpret_cast<uintptr_t>(p); }

// Index of the slot whose buffer is p, or kScratchSlots.
unsigned slotOf(const void* p) {
    for (unsigned i = 0; i < kScratchSlots; ++i)
        if (scratchSlotInfo(i).user == p) return i;
    return kScratchSlots;
}

class ScratchPool : public ::testing::Test {
protected:
    static void SetUpTestSuite() { pxrMemInit(); }
    void SetUp() override {
        ASSERT_TRUE(pxr::memory::scratchPoolActive());
        ASSERT_FALSE(pxr::memory::scratchPoolTornDown());
        for (unsigned i = 0; i < kScratchSlots; ++i) ASSERT_FALSE(scratchSlotInfo(i).inUse) << i;
    }
    void TearDown() override {
        for (unsigned i = 0; i < kScratchSlots; ++i) EXPECT_FALSE(scratchSlotInfo(i).inUse) << i;
    }
};

using ScratchConcurrency = ScratchPool;

}  // namespace

TEST_F(ScratchPool, ThirtyThirdRequestIsNullWhileThirtyTwoAreHeld) {
    std::vector<void*> held;
    std::set<void*> distinct;
    for (unsigned i = 0; i < kScratchSlots; ++i) {
        const size_t size = 64 + 32 * i;
        void* p = local_pxrGetScratchBufferAligned(size, 16);
        ASSERT_NE(p, nullptr) << i;
        std::memset(p, static_cast<int>(i), size);
        held.push_back(p);
        distinct.insert(p);
        EXPECT_EQ(pxr::memory::readTag(p), pxr::memory::kPoolTag);
    }
    EXPECT_EQ(distinct.size(), kScratchSlots);
    EXPECT_EQ(local_pxrGetScratchBufferAligned(16, 16), nullptr);
    EXPECT_EQ(local_pxrGetScratchBufferUnaligned(1), nullptr);
    EXPECT_FALSE(pxr::ScratchBuffer(16, 16));
    // The live heap count proves there was no heap fall-back.
    EXPECT_EQ(pxr::memory::liveHeapScratchBuffers(), 0u);

    // One release frees exactly one slot, and its block is served again.
    local_pxrReleaseScratchBuffer(held[7]);
    void* again = local_pxrGetScratchBufferAligned(64 + 32 * 7, 16);
    EXPECT_EQ(again, held[7]);
    EXPECT_EQ(local_pxrGetScratchBufferAligned(16, 16), nullptr);

    for (unsigned i = 0; i < kScratchSlots; ++i) {
        const auto* bytes = static_cast<const uint8_t*>(held[i]);
        EXPECT_EQ(bytes[0], i) << "buffer " << i << " was overwritten";
        local_pxrReleaseScratchBuffer(held[i]);
    }
}

TEST_F(ScratchPool, SameOrSmallerRequestsReuseTheBlock) {
    void* p = local_pxrGetScratchBufferAligned(4096, 64);
    ASSERT_NE(p, nullptr);
    const unsigned slot = slotOf(p);
    ASSERT_LT(slot, kScratchSlots);
    const auto before = scratchSlotInfo(slot);
    local_pxrReleaseScratchBuffer(p);

    for (size_t size : {size_t{4096}, size_t{4000}, size_t{1}}) {
        void* q = local_pxrGetScratchBufferAligned(size, 64);
        EXPECT_EQ(q, p) << size;
        local_pxrReleaseScratchBuffer(q);
        void* u = local_pxrGetScratchBufferUnaligned(size);
        EXPECT_EQ(u, p) << size;
        local_pxrReleaseScratchBuffer(u);
    }
    const auto after = scratchSlotInfo(slot);
    EXPECT_EQ(after.block, before.block);
    EXPECT_EQ(after.blockSize, before.blockSize);
}

TEST_F(ScratchPool, AlignmentIsHonouredAndMisalignedReuseReplacesTheBlock) {
    for (uint32_t a = 1; a <= 4096; a *= 2) {
        void* p = local_pxrGetScratchBufferAligned(100 + a, a);
        ASSERT_NE(p, nullptr) << a;
        EXPECT_EQ(addr(p) % a, 0u) << a;
        std::memset(p, 0x5A, 100 + a);
        local_pxrReleaseScratchBuffer(p);
    }
    // Zero and non-powers of two mean no alignment; they still give a buffer.
    for (uint32_t a : {0u, 3u, 24u, 100u}) {
        void* p = local_pxrGetScratchBufferAligned(10, a);
        ASSERT_NE(p, nullptr) << a;
        local_pxrReleaseScratchBuffer(p);
    }

    // A block of its own for the first free slot, placed with no alignment...
    const size_t size = std::max<size_t>(scratchSlotInfo(0).blockSize + 1, 65536);
    void* p = local_pxrGetScratchBufferAligned(size, 1);
    ASSERT_EQ(slotOf(p), 0u);
    EXPECT_EQ(scratchSlotInfo(0).blockSize, pxr::memory::blockBytes(size, 1));
    uint32_t a = 32;
    while (addr(p) % a == 0) a *= 2;
    local_pxrReleaseScratchBuffer(p);

    // ...then the same size at an alignment it misses: a larger block replaces it.
    void* q = local_pxrGetScratchBufferAligned(size, a);
    ASSERT_EQ(slotOf(q), 0u);
    EXPECT_EQ(addr(q) % a, 0u);
    const auto grown = scratchSlotInfo(0);
    EXPECT_EQ(grown.blockSize, pxr::memory::blockBytes(size, a));
    EXPECT_EQ(grown.requestedSize, size);
    local_pxrReleaseScratchBuffer(q);

    // A small request at a stricter alignment fits in that block: it moves
    // the pointer but keeps the block, which never shrinks.
    uint32_t a2 = a * 2;
    while (addr(q) % a2 == 0) a2 *= 2;
    ASSERT_LE(pxr::memory::blockBytes(16, a2), grown.blockSize);
    void* r = local_pxrGetScratchBufferAligned(16, a2);
    ASSERT_EQ(slotOf(r), 0u);
    EXPECT_EQ(addr(r) % a2, 0u);
    EXPECT_EQ(scratchSlotInfo(0).block, grown.block);
    EXPECT_EQ(scratchSlotInfo(0).blockSize, grown.blockSize);
    local_pxrReleaseScratchBuffer(r);
}

TEST_F(ScratchPool, ZeroSizeGivesADistinctReleasableBuffer) {
    void* p = local_pxrGetScratchBufferAligned(0, 16);
    void* q = local_pxrGetScratchBufferUnaligned(0);
    ASSERT_NE(p, nullptr);
    ASSERT_NE(q, nullptr);
    EXPECT_NE(p, q);
    EXPECT_EQ(addr(p) % 16, 0u);
    local_pxrReleaseScratchBuffer(q);
    local_pxrReleaseScratchBuffer(p);
}

TEST_F(ScratchPool, ForeignPointersAreIgnored) {
    void* held = local_pxrGetScratchBufferAligned(256, 16);
    ASSERT_NE(held, nullptr);
    const unsigned slot = slotOf(held);

    void* heap = std::malloc(64);
    int onStack[4] = {1, 2, 3, 4};
    void* aligned = pxrMemAlign(64, 16);
    local_pxrReleaseScratchBuffer(nullptr);
    local_pxrReleaseScratchBuffer(heap);
    local_pxrReleaseScratchBuffer(onStack + 1);
    local_pxrReleaseScratchBuffer(aligned);
    local_pxrReleaseScratchBuffer(static_cast<char*>(held) + 16);  // inside a scratch buffer
    EXPECT_EQ(onStack[0] + onStack[1], 3);
    EXPECT_TRUE(scratchSlotInfo(slot).inUse);

    local_pxrReleaseScratchBuffer(held);
    EXPECT_FALSE(scratchSlotInfo(slot).inUse);
    local_pxrReleaseScratchBuffer(held);  // twice: the slot is free, nothing happens
    EXPECT_FALSE(scratchSlotInfo(slot).inUse);
    std::free(heap);
    pxrMemAlignFree(aligned);
}

TEST_F(ScratchPool, HeapFailureLeavesTheSlotFreeAndItsBlockInPlace) {
    void* p = local_pxrGetScratchBufferAligned(512, 16);
    ASSERT_EQ(slotOf(p), 0u);
    local_pxrReleaseScratchBuffer(p);
    const auto before = scratchSlotInfo(0);

    EXPECT_EQ(local_pxrGetScratchBufferAligned(SIZE_MAX - 4, 64), nullptr);
    EXPECT_EQ(local_pxrGetScratchBufferUnaligned(SIZE_MAX), nullptr);
    const auto after = scratchSlotInfo(0);
    EXPECT_FALSE(after.inUse);
    EXPECT_EQ(after.block, before.block);
    EXPECT_EQ(after.blockSize, before.blockSize);
    // No slot was left locked: all 32 can still be had.
    std::vector<void*> held;
    for (unsigned i = 0; i < kScratchSlots; ++i) {
        held.push_back(local_pxrGetScratchBufferUnaligned(8));
        EXPECT_NE(held.back(), nullptr) << i;
    }
    for (void* h : held) local_pxrReleaseScratchBuffer(h);
}

TEST_F(ScratchPool, ScratchHelpersReleaseOnScopeExit) {
    unsigned slot = kScratchSlots;
    {
        pxr::ScratchArray<int32_t> ints(1000, 64);
        ASSERT_TRUE(ints);
        EXPECT_EQ(addr(ints.data()) % 64, 0u);
        ints[999] = 7;
        slot = slotOf(ints.get());
        ASSERT_LT(slot, kScratchSlots);
        EXPECT_TRUE(scratchSlotInfo(slot).inUse);

        pxr::ScratchBuffer source(32);
        pxr::ScratchBuffer moved(std::move(source));
        EXPECT_TRUE(moved);
        EXPECT_FALSE(source);
        pxr::ScratchBuffer early(64, 8);
        early.release();
        EXPECT_FALSE(early);
    }
    EXPECT_FALSE(scratchSlotInfo(slot).inUse);
    pxr::ScratchArray<double> tooMany(SIZE_MAX / 4);
    EXPECT_FALSE(tooMany);
}

TEST_F(ScratchConcurrency, ThirtyTwoThreadsHoldThirtyThirdGetsNull) {
    std::vector<void*> got(kScratchSlots, nullptr);
    std::atomic<int> intact{0};
    std::barrier allHeld(kScratchSlots + 1);
    std::barrier checked(kScratchSlots + 1);
    std::vector<std::thread> threads;
    for (unsigned t = 0; t < kScratchSlots; ++t) {
        threads.emplace_back([&, t] {
            const size_t size = 1000 + 100 * t;
            auto* p = static_cast<uint8_t*>(local_pxrGetScratchBufferAligned(size, 32));
            got[t] = p;
            if (p) std::memset(p, static_cast<int>(t + 1), size);
            allHeld.arrive_and_wait();
            checked.arrive_and_wait();  // the 33rd request happens in between
            if (p && p[0] == t + 1 && p[size - 1] == t + 1) ++intact;
            local_pxrReleaseScratchBuffer(p);
        });
    }
    allHeld.arrive_and_wait();
    EXPECT_EQ(local_pxrGetScratchBufferAligned(16, 16), nullptr);
    EXPECT_EQ(local_pxrGetScratchBufferUnaligned(16), nullptr);
    checked.arrive_and_wait();
    for (auto& th : threads) th.join();

    EXPECT_EQ(intact.load(), static_cast<int>(kScratchSlots));
    EXPECT_EQ(std::set<void*>(got.begin(), got.end()).size(), kScratchSlots);
    for (unsigned t = 0; t < kScratchSlots; ++t) EXPECT_NE(got[t], nullptr) << t;
    void* p = local_pxrGetScratchBufferAligned(16, 16);
    EXPECT_NE(p, nullptr);
    local_pxrReleaseScratchBuffer(p);
}

TEST_F(ScratchConcurrency, ReleaseFromAnotherThreadIsIgnored) {
    void* p = local_pxrGetScratchBufferAligned(128, 16);
    ASSERT_NE(p, nullptr);
    const unsigned slot = slotOf(p);
    std::thread([p] { local_pxrReleaseScratchBuffer(p); }).join();
    EXPECT_TRUE(scratchSlotInfo(slot).inUse);
    local_pxrReleaseScratchBuffer(p);
    EXPECT_FALSE(scratchSlotInfo(slot).inUse);
}

TEST(AlignedMemory, MemAlignRecordsTheDistanceToTheBlock) {
    for (uint32_t a = 1; a <= 128; a *= 2) {
        for (size_t size : {size_t{0}, size_t{1}, size_t{1000}}) {
            auto* p = static_cast<uint8_t*>(pxrMemAlign(size, a));
            ASSERT_NE(p, nullptr) << a;
            EXPECT_EQ(addr(p) % a, 0u) << a;
            const unsigned distance = p[-1];
            EXPECT_GE(distance, 2u) << a;
            EXPECT_LE(distance, a + 1) << a;
            if (size) std::memset(p, 0xA5, size);
            pxrMemAlignFree(p);  // a wrong distance frees a wrong pointer: the sanitizer build catches it
        }
    }
}

TEST(AlignedMemory, MemAlignAlignmentChoices) {
    for (uint32_t a : {0u, 3u, 48u}) {  // no alignment
        void* p = pxrMemAlign(33, a);
        ASSERT_NE(p, nullptr) << a;
        pxrMemAlignFree(p);
    }
    // The distance byte cannot describe more than 128.
    EXPECT_EQ(pxrMemAlign(64, 256), nullptr);
    EXPECT_EQ(pxrMemAlign(64, 4096), nullptr);
    EXPECT_EQ(pxrMemAlign(SIZE_MAX - 8, 16), nullptr);
    pxrMemAlignFree(nullptr);
    pxrMemFree(nullptr);
}

namespace {

// A fake accelerator allocator: a few fixed buffers, owned pointers known.
struct FakeShared {
    alignas(4096) static inline uint8_t arena[4][4096];
    static inline bool used[4] = {};
    static inline bool exhausted = false;
    static inline int allocCalls = 0;
    static inline int freeCalls = 0;

    static void* alloc(size_t size, uint32_t) {
        ++allocCalls;
        if (exhausted || size > 4096) return nullptr;
        for (int i = 0; i < 4; ++i)
            if (!used[i]) {
                used[i] = true;
                return arena[i];
            }
        return nullptr;
    }
    static int free(void* p) {
        ++freeCalls;
        for (int i = 0; i < 4; ++i)
            if (p == arena[i] && used[i]) {
                used[i] = false;
                return 0;
            }
        return -1;
    }
};

class SharedAllocator : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(ppxrSharedMemAlloc, &pxrSharedMemAlloc_);
        ASSERT_EQ(ppxrSharedMemFree, &pxrSharedMemFree_);
        ASSERT_EQ(pxrSharedMemAlloc_, nullptr);
        ASSERT_EQ(pxrSharedMemFree_, nullptr);
        FakeShared::exhausted = false;
        FakeShared::allocCalls = FakeShared::freeCalls = 0;
        for (bool& u : FakeShared::used) u = false;
    }
    void TearDown() override {
        pxrSharedMemAlloc_ = nullptr;
        pxrSharedMemFree_ = nullptr;
    }
    static void install() {
        pxrSharedMemAlloc_ = FakeShared::alloc;
        pxrSharedMemFree_ = FakeShared::free;
    }
};

}  // namespace

TEST_F(SharedAllocator, InstalledAllocatorIsPreferredAndOwnsItsFree) {
    install();
    void* p = pxrMemAlloc(1000, 64);
    EXPECT_EQ(p, FakeShared::arena[0]);
    pxrMemFree(p);
    EXPECT_EQ(FakeShared::freeCalls, 1);
    EXPECT_FALSE(FakeShared::used[0]);
}

TEST_F(SharedAllocator, FallsBackToTheHeapAndFreesWhatTheAllocatorRefuses) {
    install();
    FakeShared::exhausted = true;
    auto* p = static_cast<uint8_t*>(pxrMemAlloc(1000, 64));
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(FakeShared::allocCalls, 1);
    EXPECT_EQ(addr(p) % 64, 0u);
    std::memset(p, 1, 1000);
    pxrMemFree(p);  // refused by the fake (-1), then freed as aligned heap memory
    EXPECT_EQ(FakeShared::freeCalls, 1);
}

TEST_F(SharedAllocator, HalfAnAllocatorIsNotUsedForAllocation) {
    pxrSharedMemAlloc_ = FakeShared::alloc;
    void* p = pxrMemAlloc(100, 16);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(FakeShared::allocCalls, 0);
    pxrMemFree(p);

    pxr::memory::setupSharedAllocator(true, true);  // nothing to install yet
    EXPECT_EQ(pxrSharedMemFree_, nullptr);
    pxr::memory::teardownSharedAllocator();
}
