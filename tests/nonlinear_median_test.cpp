// Medians: every kind of the 3x3 median against kind 0, and the M x N median
// on 16-bit pixels (exact medians, untouched outside the full-window area,
// bad input, every kind).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"
#include "support/nonlinear_shapes.h"

using pxr::test::GuardedImage;

namespace {

int16_t s16At(GuardedImage& img, uint32_t x, uint32_t y) {
    int16_t v;
    std::memcpy(&v, img.row(y) + 2 * x, 2);
    return v;
}

}  // namespace

TEST(NonlinearMedianDifferential, Median3x3AllGenerations) {
    pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
        "pxrFilterMedian3x3u8", PXR_ROW_FilterMedian3x3u8, 1, 1,
        [](GuardedImage& s, GuardedImage& d) { pxrFilterMedian3x3u8(s.data(), s.width(), s.height(), d.data()); },
        true));
    pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
        "pxrFilterMedian3x3u8_v2", PXR_ROW_FilterMedian3x3u8, 1, 1, [](GuardedImage& s, GuardedImage& d) {
            pxrFilterMedian3x3u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
        }));
    for (auto type : {PIXORA_BORDER_DEFAULT, PIXORA_BORDER_CONSTANT, PIXORA_BORDER_REPLICATE}) {
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrFilterMedian3x3u8_v3 border " + std::to_string(type), PXR_ROW_FilterMedian3x3u8_v3, 1, 1,
            [type](GuardedImage& s, GuardedImage& d) {
                EXPECT_EQ(pxrFilterMedian3x3u8_v3(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(),
                                                  type, 77),
                          0);
            }));
    }
}

// Few grey levels make many ties, where a sorting network slips first.
TEST(NonlinearMedianGolden, Median3x3ManyTies) {
    const uint32_t w = 203, h = 9;
    GuardedImage src(w, h), dst(w, h);
    auto bytes = pxr::test::randomBytes(size_t{w} * h, 5);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) src.at(x, y) = bytes[y * w + x] % 3;
    pxrFilterMedian3x3u8_v2(src.data(), w, h, src.stride(), dst.data(), dst.stride());
    for (uint32_t y = 1; y + 1 < h; ++y)
        for (uint32_t x = 1; x + 1 < w; ++x) {
            std::vector<uint8_t> taps;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx) taps.push_back(src.at(x + dx, y + dy));
            std::nth_element(taps.begin(), taps.begin() + 4, taps.end());
            ASSERT_EQ(dst.at(x, y), taps[4]) << x << "," << y;
        }
}

TEST(NonlinearMedianMxN, ExactMedianOnFullWindowsOnly) {
    for (auto [m, n] : {std::pair{5u, 3u}, {1u, 7u}, {15u, 15u}}) {
        const uint32_t w = 40, h = 21;
        GuardedImage src(w, h, 2, 6, 1), dst(w, h, 2, 2, 3);
        // Values spread over the whole signed range, with repeats.
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x) {
                const int16_t v = static_cast<int16_t>(((x * 7919u + y * 104729u) % 23u) * 2900u - 32768);
                std::memcpy(src.row(y) + 2 * x, &v, 2);
            }
        dst.fillRandom(9);
        const auto before = dst.pixels();
        ASSERT_EQ(pxrFilterMedianMxNs16(src.as<int16_t>(), w, h, src.stride(), m, n, dst.as<int16_t>(), dst.stride()),
                  0);
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x) {
                const bool full = x >= m / 2 && x + m / 2 < w && y >= n / 2 && y + n / 2 < h;
                if (!full) {
                    ASSERT_EQ(std::memcmp(dst.row(y) + 2 * x, before.data() + (size_t{y} * w + x) * 2, 2), 0)
                        << m << "x" << n << " wrote " << x << "," << y;
                    continue;
                }
                std::vector<int16_t> taps;
                for (uint32_t i = 0; i < n; ++i)
                    for (uint32_t j = 0; j < m; ++j) taps.push_back(s16At(src, x - m / 2 + j, y - n / 2 + i));
                std::nth_element(taps.begin(), taps.begin() + taps.size() / 2, taps.end());
                ASSERT_EQ(s16At(dst, x, y), taps[taps.size() / 2]) << m << "x" << n << " at " << x << "," << y;
            }
        EXPECT_TRUE(dst.outsideUntouched());
    }
}

TEST(NonlinearMedianMxN, WindowLargerThanImageWritesNothing) {
    GuardedImage src(4, 20, 2), dst(4, 20, 2);
    EXPECT_EQ(pxrFilterMedianMxNs16(src.as<int16_t>(), 4, 20, 0, 5, 3, dst.as<int16_t>(), 0), 0);
    EXPECT_TRUE(dst.untouched());
}

TEST(NonlinearMedianMxN, BadInputReturnsThreeSilently) {
    pxr::test::LogCapture log;
    GuardedImage src(16, 8, 2), dst(16, 8, 2);
    auto run = [&](const int16_t* s, uint32_t w, uint32_t h, uint32_t ss, uint32_t m, uint32_t n, int16_t* d,
                   uint32_t ds) { return pxrFilterMedianMxNs16(s, w, h, ss, m, n, d, ds); };
    int16_t* s = src.as<int16_t>();
    int16_t* d = dst.as<int16_t>();
    EXPECT_EQ(run(nullptr, 16, 8, 32, 3, 3, d, 32), 3);
    EXPECT_EQ(run(s, 16, 8, 32, 3, 3, nullptr, 32), 3);
    EXPECT_EQ(run(s, 0, 8, 32, 3, 3, d, 32), 3);
    EXPECT_EQ(run(s, 16, 0, 32, 3, 3, d, 32), 3);
    EXPECT_EQ(run(s, 16, 8, 31, 3, 3, d, 32), 3);  // stride below the row size
    EXPECT_EQ(run(s, 16, 8, 32, 3, 3, d, 16), 3);
    EXPECT_EQ(run(s, 16, 8, 32, 4, 3, d, 32), 3);  // even side
    EXPECT_EQ(run(s, 16, 8, 32, 3, 0, d, 32), 3);
    EXPECT_EQ(run(s, 16, 8, 32, 17, 3, d, 32), 3);  // above 15
    EXPECT_TRUE(dst.untouched());
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(run(s, 16, 8, 0, 15, 1, d, 0), 0);  // stride 0: packed
}

TEST(NonlinearMedianMxN, EveryKindMatches) {
    const auto smaller = pxr::test::shapesUpTo(100000);
    for (auto [m, n] : {std::pair{1u, 1u}, {3u, 3u}, {5u, 5u}, {7u, 3u}, {3u, 9u}, {15u, 15u}}) {
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrFilterMedianMxNs16 " + std::to_string(m) + "x" + std::to_string(n), PXR_ROW_FilterMedianMxNs16, 2, 2,
            [m = m, n = n](GuardedImage& s, GuardedImage& d) {
                EXPECT_EQ(pxrFilterMedianMxNs16(s.as<int16_t>(), s.width(), s.height(), s.stride(), m, n,
                                                d.as<int16_t>(), d.stride()),
                          0);
            }),
            m * n > 25 ? smaller : pxr::test::standardShapes());
    }
}
