// Recursive bilateral filter: flat regions keep their value, a tiny spatial
// sigma is the identity, a small colour sigma keeps a step edge that a large
// one blurs; bad input and every kind.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/fuzz.h"
#include "support/log_capture.h"

using pxr::test::GuardedImage;

namespace {

std::vector<uint8_t> run(const std::vector<uint8_t>& src, uint32_t w, uint32_t h, float sc, float ss) {
    std::vector<uint8_t> dst(src.size(), 0xEE);
    EXPECT_EQ(pxrBilateralFilterRecursiveu8(src.data(), w, h, 0, dst.data(), 0, sc, ss), 0);
    return dst;
}

// Left half 30, right half 220.
std::vector<uint8_t> step(uint32_t w, uint32_t h) {
    std::vector<uint8_t> img(size_t{w} * h);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) img[y * w + x] = x < w / 2 ? 30 : 220;
    return img;
}

}  // namespace

TEST(NonlinearRecursiveGolden, UniformImageKeepsItsValue) {
    for (uint8_t v : {0, 255}) {
        const std::vector<uint8_t> src(45 * 17, v);
        EXPECT_EQ(run(src, 45, 17, 20.0f, 5.0f), src) << int(v);
    }
}

TEST(NonlinearRecursiveGolden, TinySpatialSigmaIsTheIdentity) {
    auto src = pxr::test::randomBytes(61 * 29, 3);
    EXPECT_EQ(run(src, 61, 29, 30.0f, 0.01f), src);
}

TEST(NonlinearRecursiveGolden, SmallColourSigmaKeepsAStepEdge) {
    const uint32_t w = 64, h = 16;
    const auto src = step(w, h);
    EXPECT_EQ(run(src, w, h, 5.0f, 8.0f), src);
    const auto blurred = run(src, w, h, 1000.0f, 8.0f);
    EXPECT_GT(blurred[5 * w + w / 2 - 1], 30);
    EXPECT_LT(blurred[5 * w + w / 2], 220);
    EXPECT_LT(blurred[5 * w + w / 2 - 1], blurred[5 * w + w / 2]);
}

TEST(NonlinearRecursiveBadInput, ReturnsThreeAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(16, 8), dst(16, 8);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(pxrBilateralFilterRecursiveu8(src.data(), 16, 8, 16, dst.data(), 16, 0.0f, 2.0f), 3);
    EXPECT_EQ(pxrBilateralFilterRecursiveu8(src.data(), 16, 8, 16, dst.data(), 16, 10.0f, nan), 3);
    EXPECT_EQ(pxrBilateralFilterRecursiveu8(src.data(), 16, 8, 16, nullptr, 16, 10.0f, 2.0f), 3);
    EXPECT_EQ(pxrBilateralFilterRecursiveu8(src.data(), 0, 8, 16, dst.data(), 16, 10.0f, 2.0f), 3);
    EXPECT_EQ(pxrBilateralFilterRecursiveu8(src.data(), 16, 8, 16, dst.data(), 12, 10.0f, 2.0f), 3);
    EXPECT_TRUE(dst.untouched());
    EXPECT_TRUE(log.lines().empty());
}

TEST(NonlinearRecursiveDifferential, EveryKindMatches) {
    // Wide images cross the strip width; a tiny sigmaColor drives the
    // states into the subnormal range.
    for (auto [sc, ss] : {std::pair{25.0f, 6.0f}, {0.5f, 2.0f}, {200.0f, 40.0f}})
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrBilateralFilterRecursiveu8 " + std::to_string(sc) + "/" + std::to_string(ss),
            PXR_ROW_BilateralFilterRecursiveu8, 1, 1, [sc = sc, ss = ss](GuardedImage& a, GuardedImage& b) {
                EXPECT_EQ(pxrBilateralFilterRecursiveu8(a.data(), a.width(), a.height(), a.stride(), b.data(),
                                                        b.stride(), sc, ss),
                          0);
            }));
}

TEST(NonlinearRecursiveFuzz, RandomArgumentsOnExactBuffers) {
    pxr::test::fuzzEntry({"pxrBilateralFilterRecursiveu8", PXR_ROW_BilateralFilterRecursiveu8, 1, 1, false,
                          [](const pxr::test::FuzzArgs& a, uint8_t* s, uint8_t* d) {
                              pxrBilateralFilterRecursiveu8(s, a.width, a.height, a.srcStride, d, a.dstStride,
                                                            float(a.value) * 0.5f, float(a.border) * 0.7f - 0.7f);
                          }}, 600);
}
