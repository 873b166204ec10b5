// Every member of the YCbCr group: each kind against kind 0, byte for byte,
// over odd, tiny, slack-strided and misaligned images on every vector target.
#include <gtest/gtest.h>

#include <string>

#include "pixora.h"
#include "support/color_to_rgb_cases.h"
#include "support/log_capture.h"

using namespace pxr::test;
using pxr::test::ycbcr::members;

namespace {

// Runs the harness over the public members whose names contain `part`;
// returns how many there were.
size_t expectMembersMatch(const std::string& part) {
    size_t checked = 0;
    for (const auto& m : members()) {
        if (m.internal || m.name.find(part) == std::string::npos) continue;
        expectAllKindsMatch(ycbcr::diffOp(m));
        if (::testing::Test::HasFatalFailure()) break;
        ++checked;
    }
    return checked;
}

}  // namespace

TEST(ColorToRgbDifferential, ToPackedRgb) {
    EXPECT_EQ(expectMembersMatch("toRGB") + expectMembersMatch("ToRGB"), 24u);  // 18 + YCrCb + 4 H + video
}

TEST(ColorToRgbDifferential, LayoutChanges) { EXPECT_EQ(expectMembersMatch("ToYCbCr"), 30u); }

TEST(ColorToRgbDifferential, ChromaSwap) { EXPECT_EQ(expectMembersMatch("CbCrSwap"), 1u); }

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
