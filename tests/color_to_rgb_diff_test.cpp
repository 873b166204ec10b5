// Every member of the YCbCr group: each kind against kind 0, byte for byte,
// over odd, tiny, slack-strided and misaligned images on every vector target.
#include <gtest/gtest.h>

#include "pixora.h"
#include "support/color_to_rgb_cases.h"

using namespace pxr::test;
using pxr::test::ycbcr::members;

TEST(ColorToRgbDifferential, EveryPublicMember) {
    size_t checked = 0;
    for (const auto& m : members()) {
        if (m.internal) continue;
        expectAllKindsMatch(ycbcr::diffOp(m));
        if (::testing::Test::HasFatalFailure()) return;
        ++checked;
    }
    EXPECT_EQ(checked, 55u);  // 24 to packed RGB, 30 layout changes, the chroma swap
}

// The rotated video decoder is internal row 1: its kinds are chosen in
// pxrInternalImplTable, so the harness's row forcing does not reach it.
TEST(ColorToRgbDifferential, RotatedVideoDecoderMatchesTheReference) {
    const auto& m = ycbcr::member("pxrColorYUV420toRGB565u8Rotate180");
    const uint32_t row = m.row;
    ASSERT_NE(pxrInternalFuncTable[row * PIXORA_NUM_KINDS + 1], pxrInternalFuncTable[row * PIXORA_NUM_KINDS]);
    const uint32_t saved = pxrInternalImplTable[row];
    auto run = [&](const Shape& s, uint32_t kind) {
        pxrInternalImplTable[row] = kind;
        GuardedImage src(m.inputs(s.width, s.height)[0].width, 1, 1, 0, s.misalign);
        GuardedImage dst(s.width, s.height, 2, 0, s.misalign);
        src.fillRandom(s.width * 31 + s.height);
        dst.fillRandom(7);
        m.call({s.width, s.height, {src.data()}, {0}, {dst.data()}, {0}});
        EXPECT_TRUE(dst.outsideUntouched()) << describe(s);
        EXPECT_TRUE(src.untouched()) << describe(s);
        return dst.guarded();
    };
    forEachVectorTarget([&](const char* target) {
        for (const Shape& s : standardShapes()) {
            ASSERT_EQ(run(s, 0), run(s, PIXORA_KIND_SIMDX)) << target << " " << describe(s);
        }
    });
    pxrInternalImplTable[row] = saved;
}
