// With every scratch slot held, the Sobel derivatives and the separable
// convolution beneath them return 5 on every kind and write nothing. (The
// pool stays active afterwards, hence a process of its own.)
#include <gtest/gtest.h>

#include <vector>

#include "frame/row_ids.h"
#include "imgproc/filters/gradient.h"
#include "memory/scratch.h"
#include "pixora.h"
#include "simd/filters/gradient_v.h"

TEST(GradientScratch, ExhaustedPoolGivesFiveAndLeavesTheOutputs) {
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    pxrMemInit();
    std::vector<void*> held;
    for (unsigned i = 0; i < pxr::memory::kScratchSlots; ++i) {
        held.push_back(local_pxrGetScratchBufferAligned(64, 16));
        ASSERT_NE(held.back(), nullptr);
    }
    ASSERT_EQ(local_pxrGetScratchBufferAligned(64, 16), nullptr);

    using Fn = int (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, int16_t*, int16_t*, uint32_t, pxrBorderType,
                       uint8_t);
    const std::pair<uint32_t, Fn> members[] = {{PXR_ROW_FilterSobel3x3u8s16, pxrFilterSobel3x3u8s16},
                                               {PXR_ROW_FilterSobel5x5u8s16, pxrFilterSobel5x5u8s16},
                                               {PXR_ROW_FilterSobel7x7u8s16, pxrFilterSobel7x7u8s16}};
    const std::vector<uint8_t> src(32 * 9, 40);
    const std::vector<int16_t> pristine(32 * 9, 0x5555);
    std::vector<int16_t> dx = pristine, dy = pristine;
    for (const auto& [row, fn] : members)
        for (uint32_t kind : {PIXORA_KIND_CPU, PIXORA_KIND_SIMDX}) {
            pxrImplTable[row] = kind;
            EXPECT_EQ(fn(src.data(), 32, 9, 0, dx.data(), dy.data(), 0, PIXORA_BORDER_REPLICATE, 0), 5)
                << row << " kind " << kind;
            EXPECT_EQ(fn(src.data(), 32, 9, 0, nullptr, dy.data(), 0, PIXORA_BORDER_DEFAULT, 0), 5);
        }
    const int16_t k3[3] = {1, 2, 1};
    for (auto conv : {pxrFilterConvSepMxNs16C, pxrFilterConvSepMxNs16V})
        EXPECT_EQ(conv(k3, 3, k3, 3, src.data(), 32, 9, 32, dx.data(), 64, PIXORA_BORDER_CONSTANT, 1), 5);
    EXPECT_EQ(dx, pristine);
    EXPECT_EQ(dy, pristine);

    // One slot back is enough.
    local_pxrReleaseScratchBuffer(held.back());
    held.pop_back();
    for (const auto& [row, fn] : members) {
        EXPECT_EQ(fn(src.data(), 32, 9, 0, dx.data(), dy.data(), 0, PIXORA_BORDER_REPLICATE, 0), 0) << row;
        EXPECT_EQ(dx, std::vector<int16_t>(32 * 9, 0)) << row;
    }
    for (void* p : held) local_pxrReleaseScratchBuffer(p);
}
