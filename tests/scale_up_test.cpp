// Doubling: the cubic polyphase up-scaler and the [1 3] up-samplers, on
// planes and interleaved two-channel planes. Phases, rounding, clamping,
// replicated edges, channel separation and bad input.
#include <gtest/gtest.h>

#include <vector>

#include "pixora.h"
#include "support/log_capture.h"

namespace {

using Double = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);

std::vector<uint8_t> run(Double fn, const std::vector<uint8_t>& src, uint32_t w, uint32_t h, uint32_t outBytes) {
    std::vector<uint8_t> dst(outBytes, 0xEE);
    fn(src.data(), w, h, 0, dst.data(), 0);
    return dst;
}

}  // namespace

TEST(ScalePolyGolden, CubicPhasesReproduceARamp) {
    // One row 0, 10, ..., 70: inside, output 2i sits at i - 1/4 and 2i+1 at
    // i + 1/4, so 10i - 2.5 -> 10i - 2 and 10i + 2.5 -> 10i + 3 (half up).
    std::vector<uint8_t> ramp(8);
    for (uint32_t i = 0; i < 8; ++i) ramp[i] = static_cast<uint8_t>(10 * i);
    const auto out = run(pxrScaleUpPolyu8, ramp, 8, 1, 32);
    for (uint32_t i = 2; i < 6; ++i) {
        EXPECT_EQ(out[2 * i], 10 * i - 2) << i;
        EXPECT_EQ(out[2 * i + 1], 10 * i + 3) << i;
    }
    // The second output row (height 1: every tap is row 0) is the same.
    EXPECT_EQ(std::vector<uint8_t>(out.begin(), out.begin() + 16), std::vector<uint8_t>(out.begin() + 16, out.end()));
}

TEST(ScalePolyGolden, OvershootIsClampedAndEdgesReplicate) {
    const std::vector<uint8_t> step = {0, 0, 255, 255, 255};
    const auto out = run(pxrScaleUpPolyu8, step, 5, 1, 20);
    EXPECT_EQ(out[0], 0);    // edge replicated: all taps 0
    EXPECT_EQ(out[2], 0);    // 0.75: -9 x 255 / 128 -> -17.9, clamped
    EXPECT_EQ(out[3], 52);   // 1.25: 26 x 255 / 128 = 51.8
    EXPECT_EQ(out[4], 203);  // 1.75: 102 x 255 / 128 = 203.2
    EXPECT_EQ(out[9], 255);  // last: all taps 255
    const std::vector<uint8_t> flat(6 * 5, 99);
    EXPECT_EQ(run(pxrScaleUpPolyu8, flat, 6, 5, 4 * 30), std::vector<uint8_t>(4 * 30, 99));
}

TEST(ScalePolyGolden, InterleavedChannelsAreScaledApart) {
    // Channel 0 is a step, channel 1 flat: the step must not leak.
    const std::vector<uint8_t> src = {0, 7, 0, 7, 255, 7, 255, 7};
    const auto out = run(pxrScaleUpPolyInterleaveu8, src, 4, 1, 32);
    const auto single = run(pxrScaleUpPolyu8, {0, 0, 255, 255}, 4, 1, 16);
    for (uint32_t i = 0; i < 8; ++i) {
        EXPECT_EQ(out[2 * i], single[i]) << i;
        EXPECT_EQ(out[2 * i + 1], 7) << i;
    }
}

TEST(ScaleUpsampleGolden, OneDirectionWeighsThreeToOne) {
    // [a b] -> [a, (3a + b + 2) / 4, (a + 3b + 2) / 4, b], edges replicated.
    EXPECT_EQ(run(pxrUpsampleHorizontalu8, {10, 21}, 2, 1, 4), (std::vector<uint8_t>{10, 13, 18, 21}));
    EXPECT_EQ(run(pxrUpsampleVerticalu8, {10, 21}, 1, 2, 4), (std::vector<uint8_t>{10, 13, 18, 21}));
    // Interleaved: each channel alone.
    EXPECT_EQ(run(pxrUpsampleHorizontalInterleavedu8, {10, 200, 21, 100}, 2, 1, 8),
              (std::vector<uint8_t>{10, 200, 13, 175, 18, 125, 21, 100}));
    EXPECT_EQ(run(pxrUpsampleVerticalInterleavedu8, {10, 200, 21, 100}, 1, 2, 8),
              (std::vector<uint8_t>{10, 200, 13, 175, 18, 125, 21, 100}));
}

TEST(ScaleUpsampleGolden, TwoDirectionsRoundOnce) {
    // 2 x 2 [a b; c d] = [0 16; 32 100]. Output (1, 1): (9a + 3b + 3c + d + 8)
    // / 16 = 252 / 16 -> 15. Output (1, 0) (row 0 mirrors a onto itself):
    // (12a + 4b + 8) / 16 = 72 / 16 -> 4.
    const auto out = run(pxrUpsample2Du8, {0, 16, 32, 100}, 2, 2, 16);
    EXPECT_EQ(out[0], 0);
    EXPECT_EQ(out[1 * 4 + 1], 15);
    EXPECT_EQ(out[1], 4);
    EXPECT_EQ(out[3 * 4 + 3], 100);
    const auto pairs = run(pxrUpsample2DInterleavedu8, {0, 9, 16, 9, 32, 9, 100, 9}, 2, 2, 32);
    for (uint32_t i = 0; i < 16; ++i) {
        EXPECT_EQ(pairs[2 * i], out[i]) << i;
        EXPECT_EQ(pairs[2 * i + 1], 9) << i;
    }
}

TEST(ScaleDoublingContract, BadInput) {
    pxr::test::LogCapture log;
    std::vector<uint8_t> src(64, 1), dst(256, 0xEE);
    pxrUpsampleHorizontalu8(src.data(), 0, 4, 0, dst.data(), 0);
    pxrUpsample2DInterleavedu8(src.data(), 4, 4, 7, dst.data(), 0);  // stride below 2 x 4
    pxrUpsampleVerticalu8(src.data(), 4, 4, 0, dst.data(), 3);       // dst stride below 4
    pxrScaleUpPolyInterleaveu8(nullptr, 4, 4, 0, dst.data(), 0);
    EXPECT_EQ(dst, std::vector<uint8_t>(256, 0xEE));
    EXPECT_EQ(log.lines().size(), 4u);
    EXPECT_TRUE(log.contains("Assertion failed @pxrUpsample2DInterleavedu8: "));
}
