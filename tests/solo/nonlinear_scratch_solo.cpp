// With the scratch pool active and all 32 slots held, the NxN morphology and
// the recursive bilateral filter return 5 on every kind and write nothing;
// with a slot free again they run. Leaves the pool active: a process of its
// own.
#include <gtest/gtest.h>

#include <vector>

#include "frame/row_ids.h"
#include "memory/scratch.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/guarded_image.h"

using pxr::test::GuardedImage;

TEST(NonlinearScratchSolo, ExhaustedPoolGivesStatusFive) {
    pxrMemInit();
    std::vector<void*> held;
    for (unsigned i = 0; i < pxr::memory::kScratchSlots; ++i) {
        held.push_back(local_pxrGetScratchBufferAligned(64, 16));
        ASSERT_NE(held.back(), nullptr);
    }
    auto runAll = [](uint32_t kind, GuardedImage& src, GuardedImage& a, GuardedImage& b, GuardedImage& c) {
        pxr::test::ForceKind e(PXR_ROW_FilterErodeNxNu8, kind), d(PXR_ROW_FilterDilateNxNu8, kind),
            r(PXR_ROW_BilateralFilterRecursiveu8, kind);
        return std::vector<int>{
            pxrFilterErodeNxNu8(src.data(), 40, 30, src.stride(), 5, a.data(), a.stride()),
            pxrFilterDilateNxNu8(src.data(), 40, 30, src.stride(), 7, b.data(), b.stride()),
            pxrBilateralFilterRecursiveu8(src.data(), 40, 30, src.stride(), c.data(), c.stride(), 20.0f, 3.0f)};
    };
    for (uint32_t kind : {0u, 1u}) {
        GuardedImage src(40, 30), a(40, 30), b(40, 30), c(40, 30);
        EXPECT_EQ(runAll(kind, src, a, b, c), (std::vector<int>{5, 5, 5})) << kind;
        EXPECT_TRUE(a.untouched() && b.untouched() && c.untouched()) << kind;
    }
    local_pxrReleaseScratchBuffer(held.back());
    held.pop_back();
    for (uint32_t kind : {0u, 1u}) {
        GuardedImage src(40, 30), a(40, 30), b(40, 30), c(40, 30);
        EXPECT_EQ(runAll(kind, src, a, b, c), (std::vector<int>{0, 0, 0})) << kind;
        EXPECT_FALSE(a.untouched()) << kind;
        EXPECT_TRUE(a.outsideUntouched() && b.outsideUntouched() && c.outsideUntouched()) << kind;
    }
    for (void* p : held) local_pxrReleaseScratchBuffer(p);
}
