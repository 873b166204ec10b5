// Block-average reductions (2x2, 4x4, 3:2): goldens from the definitions,
// odd remainders, rounding, and bad input.
#include <gtest/gtest.h>

#include <vector>

#include "pixora.h"
#include "support/guarded_image.h"
#include "support/log_capture.h"

namespace {

std::vector<uint8_t> by2(const std::vector<uint8_t>& src, uint32_t w, uint32_t h) {
    std::vector<uint8_t> dst((w / 2) * (h / 2), 0xEE);
    pxrScaleDownBy2u8_v2(src.data(), w, h, 0, dst.data(), 0);
    return dst;
}

}  // namespace

TEST(ScaleBlockGolden, ThreeByThreeHalvedIsTheTopLeftBlock) {
    const std::vector<uint8_t> src = {10, 21, 99, 30, 41, 99, 99, 99, 99};
    // (10 + 21 + 30 + 41) >> 2 = 102 >> 2 = 25 (25.5 truncated); the odd
    // last row and column are not read.
    EXPECT_EQ(by2(src, 3, 3), std::vector<uint8_t>{25});
    std::vector<uint8_t> dst(1, 0xEE);
    pxrScaleDownBy2u8(src.data(), 3, 3, dst.data());
    EXPECT_EQ(dst[0], 25);
}

TEST(ScaleBlockGolden, QuarteringTruncatesFourByFourBlocks) {
    const uint32_t w = 9, h = 9;  // 2 x 2 outputs; column and row 8 unread
    std::vector<uint8_t> src(w * h, 200);
    src[0] = 15;  // block (0,0): 15 x 200 + 15 = 3015 -> 3015 >> 4 = 188 (188.4)
    std::vector<uint8_t> dst(4, 0xEE);
    pxrScaleDownBy4u8_v2(src.data(), w, h, 0, dst.data(), 0);
    EXPECT_EQ(dst, (std::vector<uint8_t>{188, 200, 200, 200}));
    std::vector<uint8_t> plain(4, 0xEE);
    pxrScaleDownBy4u8(src.data(), w, h, plain.data());
    EXPECT_EQ(plain, dst);
}

TEST(ScaleBlockGolden, ThreeToTwoWeighsCoveredArea) {
    // An impulse shows the weights 4, 2, 2, 1 (in ninths) of the four outputs.
    std::vector<uint8_t> src(9, 0);
    src[4] = 90;  // the shared middle pixel: a quarter (1/9 x 90 = 10) in every output
    std::vector<uint8_t> dst(4, 0xEE);
    pxrScaleDown3To2u8(src.data(), 3, 3, 0, dst.data(), 0);
    EXPECT_EQ(dst, (std::vector<uint8_t>{10, 10, 10, 10}));
    src.assign(9, 0);
    src[0] = 90;  // wholly in output (0,0): 4/9 x 90
    pxrScaleDown3To2u8(src.data(), 3, 3, 0, dst.data(), 0);
    EXPECT_EQ(dst, (std::vector<uint8_t>{40, 0, 0, 0}));
    // Rounding to nearest: 5 x 1/9 = 0.56 -> 1 everywhere; 1 x 4/9 = 0.44 -> 0.
    src.assign(9, 0);
    src[4] = 5;
    pxrScaleDown3To2u8(src.data(), 3, 3, 0, dst.data(), 0);
    EXPECT_EQ(dst, (std::vector<uint8_t>{1, 1, 1, 1}));
    src.assign(9, 0);
    src[8] = 1;
    pxrScaleDown3To2u8(src.data(), 3, 3, 0, dst.data(), 0);
    EXPECT_EQ(dst, (std::vector<uint8_t>{0, 0, 0, 0}));
}

TEST(ScaleBlockContract, RefusesImagesWithoutAWholeBlock) {
    pxr::test::LogCapture log;
    std::vector<uint8_t> src(64, 1), dst(64, 0xEE);
    pxrScaleDownBy2u8_v2(src.data(), 1, 8, 0, dst.data(), 0);
    pxrScaleDownBy4u8(src.data(), 3, 8, dst.data());
    pxrScaleDown3To2u8(src.data(), 8, 1, 0, dst.data(), 0);
    pxrScaleDownBy2u8_v2(src.data(), 8, 8, 7, dst.data(), 0);   // stride below the width
    pxrScaleDownBy2u8_v2(src.data(), 8, 8, 0, nullptr, 0);
    EXPECT_EQ(dst, std::vector<uint8_t>(64, 0xEE));
    EXPECT_TRUE(log.contains("Assertion failed @pxrScaleDownBy2u8_v2: src && dst && (srcWidth > 1) && "
                             "(srcHeight > 1) && (srcStride >= srcWidth) && (dstStride >= dstWidth)\n"));
    EXPECT_TRUE(log.contains("Assertion failed @pxrScaleDownBy4u8: src && dst && (srcWidth > 3) && (srcHeight > 3)\n"));
    EXPECT_TRUE(log.contains("Assertion failed @pxrScaleDown3To2u8: "));
    EXPECT_EQ(log.lines().size(), 5u);
}
