// With the scratch pool active and all 32 slots held, the filters that need
// scratch memory return 5 on every kind and write nothing; with a slot free
// again they run. Leaves the pool active: a process of its own.
#include <gtest/gtest.h>

#include <vector>

#include "frame/row_ids.h"
#include "memory/scratch.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/guarded_image.h"

using pxr::test::GuardedImage;

TEST(CorrelationScratchSolo, ExhaustedPoolGivesStatusFive) {
    pxrMemInit();
    std::vector<void*> held;
    for (unsigned i = 0; i < pxr::memory::kScratchSlots; ++i) {
        held.push_back(local_pxrGetScratchBufferAligned(64, 16));
        ASSERT_NE(held.back(), nullptr);
    }
    const std::vector<int16_t> k(25, 3);
    const std::vector<int8_t> k8(5, 2);
    auto runAll = [&](uint32_t kind, GuardedImage& src, GuardedImage& dst8, GuardedImage& dst16) {
        pxr::test::ForceKind a(PXR_ROW_FilterConvolveMxNu8, kind), b(PXR_ROW_FilterConvolveMxNu8s16, kind),
            c(PXR_ROW_FilterCorrSepMxNu8, kind);
        return std::vector<int>{
            pxrFilterConvolveMxNu8(k.data(), 5, 5, 4, src.data(), 40, 30, src.stride(), dst8.data(), dst8.stride(),
                                   PIXORA_BORDER_REPLICATE, 0),
            pxrFilterConvolveMxNu8s16(k.data(), 5, 5, 4, src.data(), 40, 30, src.stride(), dst16.as<int16_t>(),
                                      dst16.stride(), PIXORA_BORDER_CONSTANT, 9),
            pxrFilterCorrSepMxNu8(k8.data(), 5, k8.data(), 5, 4, src.data(), 40, 30, src.stride(), dst8.data(),
                                  dst8.stride())};
    };
    for (uint32_t kind : {0u, 1u}) {
        GuardedImage src(40, 30), dst8(40, 30), dst16(40, 30, 2);
        EXPECT_EQ(runAll(kind, src, dst8, dst16), (std::vector<int>{5, 5, 5})) << kind;
        EXPECT_TRUE(dst8.untouched()) << kind;
        EXPECT_TRUE(dst16.untouched()) << kind;
    }
    local_pxrReleaseScratchBuffer(held.back());
    held.pop_back();
    for (uint32_t kind : {0u, 1u}) {
        GuardedImage src(40, 30), dst8(40, 30), dst16(40, 30, 2);
        EXPECT_EQ(runAll(kind, src, dst8, dst16), (std::vector<int>{0, 0, 0})) << kind;
        EXPECT_FALSE(dst8.untouched()) << kind;
        EXPECT_TRUE(dst8.outsideUntouched()) << kind;
    }
    for (void* p : held) local_pxrReleaseScratchBuffer(p);
}
