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

// 3:2 by its definition: 2-D area weights (2, 1) / (1, 2) per axis, sum 9,
// rounded to nearest.
uint8_t threeToTwo(const std::vector<uint8_t>& src, uint32_t w, uint32_t x, uint32_t y) {
    auto taps = [](uint32_t o, uint32_t* first, uint32_t wt[2]) {
        *first = 3 * (o / 2) + (o & 1);
        wt[0] = (o & 1) ? 1 : 2;
        wt[1] = (o & 1) ? 2 : 1;
    };
    uint32_t fx, fy, wx[2], wy[2];
    taps(x, &fx, wx);
    taps(y, &fy, wy);
    uint32_t sum = 0;
    for (int j = 0; j < 2; ++j)
        for (int i = 0; i < 2; ++i) sum += wx[i] * wy[j] * src[(fy + j) * w + fx + i];
    return static_cast<uint8_t>((sum + 4) / 9);
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

TEST(ScaleBlockGolden, HalvingTruncatesEveryBlockAcrossTheFourPixelSteps) {
    // Width 22: 11 outputs, two steps of four and three single ones.
    const uint32_t w = 22, h = 4;
    auto src = pxr::test::randomBytes(w * h, 3);
    auto out = by2(src, w, h);
    for (uint32_t y = 0; y < h / 2; ++y)
        for (uint32_t x = 0; x < w / 2; ++x) {
            const uint32_t s = src[2 * y * w + 2 * x] + src[2 * y * w + 2 * x + 1] + src[(2 * y + 1) * w + 2 * x] +
                               src[(2 * y + 1) * w + 2 * x + 1];
            EXPECT_EQ(out[y * (w / 2) + x], s >> 2) << x << "," << y;
        }
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

TEST(ScaleBlockGolden, ThreeToTwoOddSizesKeepWholeOutputs) {
    // 8 x 7 -> 5 x 4: the fifth column covers source columns 6 and 7.
    const uint32_t w = 8, h = 7;
    auto src = pxr::test::randomBytes(w * h, 11);
    std::vector<uint8_t> dst(5 * 4, 0xEE);
    pxrScaleDown3To2u8(src.data(), w, h, 0, dst.data(), 0);
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 5; ++x) EXPECT_EQ(dst[y * 5 + x], threeToTwo(src, w, x, y)) << x << "," << y;
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
