// The smoothing filters that need scratch memory, with the pool exhausted:
// the normalisations return 5 and the float box mean (which has no status)
// writes nothing; both work again once a slot is free. The pool stays active
// afterwards, hence a process of its own.
#include <gtest/gtest.h>

#include <vector>

#include "frame/row_ids.h"
#include "memory/scratch.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/guarded_image.h"

TEST(SmoothScratch, ExhaustedPoolGivesStatusFiveOrLeavesDstAlone) {
    pxrMemInit();
    std::vector<void*> held;
    for (unsigned i = 0; i < pxr::memory::kScratchSlots; ++i) {
        held.push_back(local_pxrGetScratchBufferAligned(64, 16));
        ASSERT_NE(held.back(), nullptr);
    }
    pxr::test::GuardedImage src(24, 16, 4), dst(24, 16, 4);
    for (uint32_t kind : {0u, 1u}) {
        SCOPED_TRACE(kind);
        pxr::test::ForceKind a(PXR_ROW_NormalizeLocalBoxu8, kind), b(PXR_ROW_NormalizeLocalBoxf32, kind),
            c(PXR_ROW_BoxFilterNxNf32, kind);
        EXPECT_EQ(pxrNormalizeLocalBoxu8(src.data(), 24, 16, 0, 5, dst.data(), 0), 5);
        std::vector<float> finite(24 * 16, 1.5f);
        EXPECT_EQ(pxrNormalizeLocalBoxf32(finite.data(), 24, 16, 0, 5, dst.as<float>(), 0), 5);
        pxrBoxFilterNxNf32(finite.data(), 24, 16, 0, 5, dst.as<float>(), 0);
        EXPECT_TRUE(dst.untouched());
    }
    local_pxrReleaseScratchBuffer(held.back());
    held.pop_back();
    std::vector<float> finite(24 * 16, 1.5f), out(24 * 16, 0.0f);
    pxrBoxFilterNxNf32(finite.data(), 24, 16, 0, 5, out.data(), 0);
    EXPECT_EQ(out, finite);
    EXPECT_EQ(pxrNormalizeLocalBoxu8(src.data(), 24, 16, 0, 5, dst.data(), 0), 0);
    for (void* p : held) local_pxrReleaseScratchBuffer(p);
}
