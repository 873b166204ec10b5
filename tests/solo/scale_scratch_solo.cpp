// With the scratch pool active and all 32 slots held, the scaling members
// that need scratch memory write nothing on every kind (the status members
// return 5); with a slot free again they run. Leaves the pool active: a
// process of its own.
#include <gtest/gtest.h>

#include <vector>

#include "frame/row_ids.h"
#include "memory/scratch.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/guarded_image.h"

using pxr::test::GuardedImage;

namespace {

// Runs every scratch user on `kind`; returns the statuses of those that
// have one and leaves their outputs in dst[0..6].
std::vector<int> runAll(uint32_t kind, GuardedImage& src, std::vector<GuardedImage>& dst) {
    pxr::test::ForceKind a(PXR_ROW_ScaleDownMNu8, kind), b(PXR_ROW_ScaleDownMNInterleaveu8, kind),
        c(PXR_ROW_Scaleu8, kind), d(PXR_ROW_Scaleu8_v2, kind), e(PXR_ROW_ScaleDownNNu8, kind),
        f(PXR_ROW_ScaleDownBLu8, kind), g(PXR_ROW_ScaleDownu8, kind);
    std::vector<int> status{
        pxrScaleDownMNu8(src.data(), 40, 30, src.stride(), dst[0].data(), 13, 10, dst[0].stride()),
        pxrScaleDownMNInterleaveu8(src.data(), 20, 30, src.stride(), dst[1].data(), 6, 10, dst[1].stride()),
        pxrScaleu8(src.data(), 40, 30, src.stride(), dst[2].data(), 13, 10, dst[2].stride()),
        pxrScaleu8_v2(src.data(), 40, 30, src.stride(), dst[3].data(), 13, 10, dst[3].stride(),
                      PIXORA_INTERPOLATION_AREA)};
    pxrScaleDownNNu8(src.data(), 40, 30, src.stride(), dst[4].data(), 13, 10, dst[4].stride());
    pxrScaleDownBLu8(src.data(), 40, 30, src.stride(), dst[5].data(), 13, 10, dst[5].stride());
    pxrScaleDownu8_v2(src.data(), 40, 30, src.stride(), dst[6].data(), 13, 10, dst[6].stride());
    return status;
}

std::vector<GuardedImage> outputs() {
    std::vector<GuardedImage> v;
    for (int i = 0; i < 7; ++i) v.emplace_back(i == 1 ? 6 : 13, 10, i == 1 ? 2 : 1);
    return v;
}

}  // namespace

TEST(ScaleScratchSolo, ExhaustedPoolWritesNothing) {
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    pxrMemInit();
    std::vector<void*> held;
    for (unsigned i = 0; i < pxr::memory::kScratchSlots; ++i) {
        held.push_back(local_pxrGetScratchBufferAligned(64, 16));
        ASSERT_NE(held.back(), nullptr);
    }
    for (uint32_t kind : {0u, 1u}) {
        GuardedImage src(40, 30);
        auto dst = outputs();
        EXPECT_EQ(runAll(kind, src, dst), (std::vector<int>{5, 5, 5, 5})) << kind;
        for (const auto& d : dst) EXPECT_TRUE(d.untouched()) << kind;
    }
    local_pxrReleaseScratchBuffer(held.back());
    held.pop_back();
    for (uint32_t kind : {0u, 1u}) {
        GuardedImage src(40, 30);
        auto dst = outputs();
        EXPECT_EQ(runAll(kind, src, dst), (std::vector<int>{0, 0, 0, 0})) << kind;
        for (const auto& d : dst) {
            EXPECT_FALSE(d.untouched()) << kind;
            EXPECT_TRUE(d.outsideUntouched()) << kind;
        }
    }
    for (void* p : held) local_pxrReleaseScratchBuffer(p);
}
