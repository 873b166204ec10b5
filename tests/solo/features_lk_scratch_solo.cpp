// With the scratch pool active and all 32 slots held, the Lucas-Kanade
// entry points write nothing on either kind (the status generation returns
// 5); with a slot free again they track. Leaves the pool active: a process
// of its own.
#include <gtest/gtest.h>

#include <vector>

#include "features_lk_helpers.h"
#include "frame/row_ids.h"
#include "memory/scratch.h"
#include "pixora.h"
#include "support/differential.h"

using namespace pxr::test::lk;

namespace {

struct Outputs {
    Guarded<float> out{4};
    Guarded<int32_t> status{2};
};

// Runs the four generations on `kind`; returns the status of _v3.
int runAll(uint32_t kind, std::vector<Outputs>& o) {
    pxr::test::ForceKind a(PXR_ROW_TrackLKOpticalFlowu8, kind), b(PXR_ROW_TrackLKOpticalFlowf32, kind),
        c(PXR_ROW_TrackLKOpticalFlowu8_v2, kind), d(PXR_ROW_TrackLKOpticalFlowu8_v3, kind);
    static Frame f1 = texture(64, 48), f2 = texture(64, 48, 0.5f, -0.5f);
    static Pyramid p1(f1, 2), p2(f2, 2);
    static const std::vector<float> xy{20.0f, 20.0f, 40.5f, 30.0f};
    pxrTrackLKOpticalFlowu8(f1.data(), f2.data(), 64, 48, p1.v1(), p2.v1(), nullptr, nullptr, xy.data(),
                            o[0].out.data(), o[0].status.data(), 2, 7, 7, 10, 2);
    pxrTrackLKOpticalFlowf32(f1.data(), f2.data(), 64, 48, p1.v1(), p2.v1(), nullptr, nullptr, xy.data(),
                             o[1].out.data(), o[1].status.data(), 2, 7, 7, 10, 2);
    pxrTrackLKOpticalFlowu8_v2(f1.data(), f2.data(), 64, 48, 0, p1.v2(), p2.v2(), xy.data(), o[2].out.data(),
                               o[2].status.data(), 2, 7, 7, 10, 2);
    return pxrTrackLKOpticalFlowu8_v3(f1.data(), f2.data(), 64, 48, 0, p1.v2(), p2.v2(), xy.data(), nullptr,
                                      o[3].out.data(), o[3].status.data(), 2, 7, 7, 2, PIXORA_LK_TERM_BOTH, 10, 0.01f,
                                      0);
}

}  // namespace

TEST(FeaturesLkScratchSolo, ExhaustedPoolWritesNothing) {
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    pxrMemInit();
    std::vector<void*> held;
    for (unsigned i = 0; i < pxr::memory::kScratchSlots; ++i) {
        held.push_back(local_pxrGetScratchBufferAligned(64, 16));
        ASSERT_NE(held.back(), nullptr);
    }
    for (uint32_t kind : {0u, 1u}) {
        std::vector<Outputs> o(4);
        EXPECT_EQ(runAll(kind, o), PIXORA_STATUS_NO_SCRATCH) << kind;
        for (const auto& x : o) EXPECT_TRUE(x.out.untouched() && x.status.untouched()) << kind;
    }
    local_pxrReleaseScratchBuffer(held.back());
    held.pop_back();
    for (uint32_t kind : {0u, 1u}) {
        std::vector<Outputs> o(4);
        EXPECT_EQ(runAll(kind, o), PIXORA_STATUS_OK) << kind;
        for (const auto& x : o) {
            EXPECT_EQ(x.status.values(), (std::vector<int32_t>{1, 1})) << kind;
            EXPECT_TRUE(x.out.guardsIntact() && x.status.guardsIntact()) << kind;
        }
    }
    for (void* p : held) local_pxrReleaseScratchBuffer(p);
}
