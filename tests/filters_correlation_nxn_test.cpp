// Correlation of bytes with s8 and float kernels (3x3, N x N, separable
// M x N): the scaling rule on hand sums, kernel orientation, the written
// region, bad input, every kind against kind 0, and OpenCV's sums.
#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "filters_correlation_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;
using pxr::test::corr::randomKernel;

namespace {

// One pixel, one tap: the result is the scaled product c x p.
int16_t scaledS16(int8_t c, uint8_t p, int32_t shift) {
    int16_t out = 0x5A5A;
    EXPECT_EQ(pxrFilterCorrNxNu8s16(&c, 1, shift, &p, 1, 1, 0, &out, 0), 0);
    return out;
}
uint8_t scaledU8(int8_t c, uint8_t p, int32_t shift) {
    uint8_t out = 0x5A;
    EXPECT_EQ(pxrFilterCorrNxNu8(&c, 1, shift, &p, 1, 1, 0, &out, 0), 0);
    return out;
}

}  // namespace

TEST(CorrelationScaling, ShiftsRoundHalfUpSaturateAndVanishFromThirtyTwo) {
    struct Case {
        int8_t c;
        uint8_t p;
        int32_t shift;
        int16_t s16;
    };
    const Case cases[] = {
        {100, 2, 0, 200}, {-128, 255, 0, -32640}, {100, 2, -1, 400}, {127, 1, -8, 32512},
        {64, 2, -8, 32767},                      // 32768 saturates
        {1, 1, -31, 32767}, {-1, 1, -31, -32768}, // exact before the clamp: 1 << 31 does not wrap
        {5, 1, 1, 3}, {-5, 1, 1, -2}, {4, 1, 1, 2}, {-3, 1, 1, -1}, {-1, 1, 1, 0},  // half up: 2.5, -2.5, -1.5, -0.5
        {6, 1, 2, 2}, {-6, 1, 2, -1}, {-7, 1, 2, -2}, {5, 1, 2, 1}, {127, 255, 15, 1}, {-128, 255, 31, 0}};
    for (const Case& c : cases) EXPECT_EQ(scaledS16(c.c, c.p, c.shift), c.s16) << int(c.c) << " " << c.shift;
    for (int32_t shift : {-32, -33, INT_MIN, 32, 33, INT_MAX}) {
        EXPECT_EQ(scaledS16(1, 1, shift), 0) << shift;
        EXPECT_EQ(scaledS16(-128, 255, shift), 0) << shift;
        EXPECT_EQ(scaledU8(127, 255, shift), 0) << shift;
    }
    EXPECT_EQ(scaledU8(1, 1, -31), 255);
}

TEST(CorrelationScaling, BytesClampAndShortsSaturate) {
    EXPECT_EQ(scaledU8(-5, 1, 0), 0);
    EXPECT_EQ(scaledU8(100, 3, 0), 255);
    EXPECT_EQ(scaledU8(100, 2, -1), 255);  // 400
    EXPECT_EQ(scaledU8(-5, 1, 1), 0);
    EXPECT_EQ(scaledU8(100, 2, 0), 200);
    // Nine taps of 127 over 255: 291465, beyond 16 bits either way.
    std::vector<int8_t> plus(9, 127), minus(9, -128);
    std::vector<uint8_t> white(9, 255);
    std::vector<int16_t> d(9, 7);
    ASSERT_EQ(pxrFilterCorrNxNu8s16(plus.data(), 3, 0, white.data(), 3, 3, 0, d.data(), 0), 0);
    EXPECT_EQ(d[4], 32767);
    ASSERT_EQ(pxrFilterCorrNxNu8s16(minus.data(), 3, 0, white.data(), 3, 3, 0, d.data(), 0), 0);
    EXPECT_EQ(d[4], -32768);
    ASSERT_EQ(pxrFilterCorrNxNu8s16(plus.data(), 3, 4, white.data(), 3, 3, 0, d.data(), 0), 0);
    EXPECT_EQ(d[4], 18217);  // 291465 / 16 = 18216.56
}

TEST(CorrelationGolden, KernelIsNotFlipped) {
    // Output (x, y) = sum k(i, j) src(x - 1 + j, y - 1 + i): an impulse shows
    // the kernel rotated by 180 degrees around it.
    const std::vector<int8_t> k = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    std::vector<uint8_t> src(25, 0), dst(25, 0xEE);
    src[2 * 5 + 2] = 10;
    pxrFilterCorr3x3s8_v2(k.data(), 0, src.data(), 5, 5, 0, dst.data(), 0);
    for (int dy = 0; dy < 3; ++dy)
        for (int dx = 0; dx < 3; ++dx) EXPECT_EQ(dst[(1 + dy) * 5 + 1 + dx], k[(2 - dy) * 3 + 2 - dx] * 10);
    // Same through the plain and N x N forms.
    std::vector<uint8_t> plain(25, 0xEE), nxn(25, 0xEE);
    pxrFilterCorr3x3s8(k.data(), 0, src.data(), 5, 5, plain.data());
    ASSERT_EQ(pxrFilterCorrNxNu8(k.data(), 3, 0, src.data(), 5, 5, 5, nxn.data(), 5), 0);
    EXPECT_EQ(plain, dst);
    EXPECT_EQ(nxn, dst);
}

TEST(CorrelationGolden, EvenKernelAnchorsAtHalfAndWritesFullNeighbourhoodsOnly) {
    // N = 4: output (x, y) reads columns x-2 .. x+1; written columns and rows
    // are 2 .. size-3.
    const uint32_t w = 8, h = 7;
    std::vector<int8_t> k(16);
    for (int i = 0; i < 16; ++i) k[i] = static_cast<int8_t>(i + 1);
    std::vector<uint8_t> src(w * h, 0);
    src[3 * w + 4] = 2;  // impulse at (4, 3)
    std::vector<uint8_t> dst(w * h, 0xEE);
    ASSERT_EQ(pxrFilterCorrNxNu8(k.data(), 4, 0, src.data(), w, h, 0, dst.data(), 0), 0);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) {
            const bool written = x >= 2 && x <= w - 3 && y >= 2 && y <= h - 3;
            if (!written) {
                EXPECT_EQ(dst[y * w + x], 0xEE) << x << "," << y;
                continue;
            }
            const int j = 4 + 2 - static_cast<int>(x), i = 3 + 2 - static_cast<int>(y);
            const int expect = (i >= 0 && i < 4 && j >= 0 && j < 4) ? k[i * 4 + j] * 2 : 0;
            EXPECT_EQ(dst[y * w + x], expect) << x << "," << y;
        }
}

TEST(CorrelationGolden, ImageSmallerThanTheKernelIsLeftAlone) {
    GuardedImage src(4, 9), dst(4, 9);
    const auto k = randomKernel<int8_t>(25, -5, 5, 1);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 5, 0, src.data(), 4, 9, src.stride(), dst.data(), dst.stride()), 0);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 5, 0, src.data(), 9, 4, 9, dst.data(), 9), 0);
    pxrFilterCorr3x3s8(k.data(), 0, src.data(), 1, 9, dst.data());
    EXPECT_TRUE(dst.untouched());
}

TEST(CorrelationGolden, FloatKernelKeepsTheUnclampedSum) {
    std::vector<uint8_t> src(9, 200);
    std::vector<float> plus(9, 0.5f), minus(9, -0.125f), dst(9, -1.0f);
    ASSERT_EQ(pxrFilterCorrNxNu8f32(plus.data(), 3, src.data(), 3, 3, 0, dst.data(), 0), 0);
    EXPECT_EQ(dst[4], 900.0f);
    EXPECT_EQ(dst[0], -1.0f);  // no full neighbourhood: untouched
    ASSERT_EQ(pxrFilterCorrNxNu8f32(minus.data(), 3, src.data(), 3, 3, 0, dst.data(), 0), 0);
    EXPECT_EQ(dst[4], -225.0f);
    std::vector<float> k = {0.5f, -0.25f, 0, 0, 1.5f, 0, 0, 0, 2.0f};
    std::vector<uint8_t> ramp = {10, 20, 30, 40, 50, 60, 70, 80, 90};
    ASSERT_EQ(pxrFilterCorrNxNu8f32(k.data(), 3, ramp.data(), 3, 3, 3, dst.data(), 12), 0);
    EXPECT_EQ(dst[4], 5.0f - 5.0f + 75.0f + 180.0f);
}

TEST(CorrelationGolden, SeparableIsTheOuterProductKernel) {
    // kernelX [1 2 3] across, kernelY [-1 1] down: output (x, 1) is
    // sum_j kx[j] (row1 - row0)(x - 1 + j).
    const std::vector<int8_t> kx = {1, 2, 3}, ky = {-1, 1};
    const std::vector<uint8_t> src = {1, 2, 3, 4, 10, 20, 30, 40, 5, 5, 5, 5};
    std::vector<uint8_t> dst(12, 0xEE);
    ASSERT_EQ(pxrFilterCorrSepMxNu8(kx.data(), 3, ky.data(), 2, 0, src.data(), 4, 3, 0, dst.data(), 0), 0);
    const std::vector<uint8_t> expect = {0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 126, 180, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE};
    EXPECT_EQ(dst, expect);
}

TEST(CorrelationContract, PlainAndStridedGenerationsLogTheirConditions) {
    pxr::test::LogCapture log;
    const std::vector<int8_t> k(9, 1);
    GuardedImage src(8, 8), dst(8, 8);
    pxrFilterCorr3x3s8(nullptr, 0, src.data(), 8, 8, dst.data());
    pxrFilterCorr3x3s8(k.data(), 0, nullptr, 8, 8, dst.data());
    pxrFilterCorr3x3s8(k.data(), 0, src.data(), 8, 8, nullptr);
    pxrFilterCorr3x3s8(k.data(), 0, src.data(), 0, 8, dst.data());
    pxrFilterCorr3x3s8(k.data(), 0, src.data(), 8, 0, dst.data());
    EXPECT_EQ(log.texts(), std::vector<std::string>(
                               5, "Assertion failed @pxrFilterCorr3x3s8: kernel && src && dst && w && h\n"));
    log.clear();
    pxrFilterCorr3x3s8_v2(nullptr, 0, src.data(), 8, 8, 8, dst.data(), 8);
    pxrFilterCorr3x3s8_v2(k.data(), 0, src.data(), 8, 8, 7, dst.data(), 8);
    pxrFilterCorr3x3s8_v2(k.data(), 0, src.data(), 8, 8, 8, dst.data(), 7);
    pxrFilterCorr3x3s8_v2(k.data(), 0, src.data(), 8, 0, 8, dst.data(), 8);
    const std::string v2 =
        "Assertion failed @pxrFilterCorr3x3s8_v2: kernel && src && dst && srcWidth && srcHeight && "
        "(srcStride >= srcWidth) && (dstStride >= srcWidth)\n";
    ASSERT_EQ(log.lines().size(), 4u);
    for (const auto& l : log.lines()) {
        EXPECT_EQ(l.text, v2);
        EXPECT_EQ(l.tag, "pixora_lib_log");
        EXPECT_EQ(l.priority, 6);
    }
    EXPECT_TRUE(dst.untouched());
}

TEST(CorrelationBadInput, StatusGenerationsReturnThreeSilently) {
    pxr::test::LogCapture log;
    const std::vector<int8_t> k(9, 1);
    const std::vector<float> kf(9, 1.0f);
    GuardedImage src(8, 8), dst(8, 8, 4);
    uint8_t* d = dst.data();
    auto* d16 = dst.as<int16_t>();
    auto* d32 = dst.as<float>();
    const uint8_t* s = src.data();
    EXPECT_EQ(pxrFilterCorrNxNu8(nullptr, 3, 0, s, 8, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 0, 0, s, 8, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 3, 0, nullptr, 8, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 3, 0, s, 8, 8, 8, nullptr, 8), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 3, 0, s, 0, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 3, 0, s, 8, 0, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 3, 0, s, 8, 8, 7, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8(k.data(), 3, 0, s, 8, 8, 8, d, 7), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8s16(k.data(), 3, 0, s, 8, 8, 8, d16, 15), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8s16(k.data(), 0, 0, s, 8, 8, 8, d16, 16), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8s16(k.data(), 3, 0, s, 8, 8, 8, nullptr, 16), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8f32(kf.data(), 3, s, 8, 8, 8, d32, 31), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8f32(nullptr, 3, s, 8, 8, 8, d32, 32), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8f32(kf.data(), 0, s, 8, 8, 8, d32, 32), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8f32(kf.data(), 3, s, 8, 8, 7, d32, 32), 3);
    // A width whose 16- and 32-bit row size wraps round 32 bits.
    EXPECT_EQ(pxrFilterCorrNxNu8s16(k.data(), 3, 0, s, 0x80000000u, 1, 0x80000000u, d16, 0), 3);
    EXPECT_EQ(pxrFilterCorrNxNu8f32(kf.data(), 3, s, 0x40000000u, 1, 0x40000000u, d32, 0), 3);
    EXPECT_EQ(pxrFilterCorrSepMxNu8(nullptr, 3, k.data(), 3, 0, s, 8, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrSepMxNu8(k.data(), 0, k.data(), 3, 0, s, 8, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrSepMxNu8(k.data(), 3, nullptr, 3, 0, s, 8, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrSepMxNu8(k.data(), 3, k.data(), 0, 0, s, 8, 8, 8, d, 8), 3);
    EXPECT_EQ(pxrFilterCorrSepMxNu8(k.data(), 3, k.data(), 3, 0, s, 8, 8, 8, d, 5), 3);
    EXPECT_EQ(pxrFilterCorrSepMxNu8(k.data(), 3, k.data(), 3, 0, s, 8, 8, 8, nullptr, 8), 3);
    EXPECT_TRUE(dst.untouched());
    EXPECT_TRUE(log.lines().empty());
}

namespace {

// Kernels for the differential runs: every size from 1 to 7 and one whose
// tap pairs do not fit the vector kind's table.
pxr::test::DiffOp nxnOp(uint32_t n, int32_t shift, uint32_t dstBpp) {
    const auto k = randomKernel<int8_t>(size_t{n} * n, -128, 127, 100 + n);
    const auto kf = pxr::test::corr::randomFloatKernel(size_t{n} * n, 200 + n);
    const uint32_t row = dstBpp == 1 ? PXR_ROW_FilterCorrNxNu8 : dstBpp == 2 ? PXR_ROW_FilterCorrNxNu8s16
                                                                               : PXR_ROW_FilterCorrNxNu8f32;
    return pxr::test::unaryOp(
        "CorrNxN n " + std::to_string(n) + " shift " + std::to_string(shift) + " bpp " + std::to_string(dstBpp), row, 1,
        dstBpp, [=](GuardedImage& s, GuardedImage& d) {
            int rc = -1;
            if (dstBpp == 1)
                rc = pxrFilterCorrNxNu8(k.data(), n, shift, s.data(), s.width(), s.height(), s.stride(), d.data(),
                                        d.stride());
            else if (dstBpp == 2)
                rc = pxrFilterCorrNxNu8s16(k.data(), n, shift, s.data(), s.width(), s.height(), s.stride(),
                                           d.as<int16_t>(), d.stride());
            else
                rc = pxrFilterCorrNxNu8f32(kf.data(), n, s.data(), s.width(), s.height(), s.stride(), d.as<float>(),
                                           d.stride());
            EXPECT_EQ(rc, 0);
        });
}

}  // namespace

TEST(CorrelationDifferential, NxNBytes) {
    for (uint32_t n : {1u, 2u, 3u, 4u, 5u, 7u})
        for (int32_t shift : {0, 9, -1}) pxr::test::expectAllKindsMatch(nxnOp(n, shift, 1));
    pxr::test::expectAllKindsMatch(nxnOp(3, 40, 1));
}

TEST(CorrelationDifferential, NxNShortsAndFloats) {
    for (uint32_t n : {1u, 2u, 3u, 5u, 6u}) {
        pxr::test::expectAllKindsMatch(nxnOp(n, 2, 2));
        pxr::test::expectAllKindsMatch(nxnOp(n, -3, 2));
        pxr::test::expectAllKindsMatch(nxnOp(n, 0, 4));
    }
}

TEST(CorrelationDifferential, KernelBeyondThePairTable) {
    const std::vector<pxr::test::Shape> shapes = {{97, 92, 0, 0}, {160, 93, 5, 3}, {91, 91, 0, 1}};
    pxr::test::expectAllKindsMatch(nxnOp(91, 12, 1), shapes);
    pxr::test::expectAllKindsMatch(nxnOp(91, 0, 4), shapes);
}

TEST(CorrelationDifferential, ThreeByThree) {
    const auto k = randomKernel<int8_t>(9, -128, 127, 33);
    for (int32_t shift : {0, 8}) {
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrFilterCorr3x3s8_v2 shift " + std::to_string(shift), PXR_ROW_FilterCorr3x3s8_v2, 1, 1,
            [&](GuardedImage& s, GuardedImage& d) {
                pxrFilterCorr3x3s8_v2(k.data(), shift, s.data(), s.width(), s.height(), s.stride(), d.data(),
                                      d.stride());
            }));
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrFilterCorr3x3s8 shift " + std::to_string(shift), PXR_ROW_FilterCorr3x3s8_v2, 1, 1,
            [&](GuardedImage& s, GuardedImage& d) {
                pxrFilterCorr3x3s8(k.data(), shift, s.data(), s.width(), s.height(), d.data());
            },
            true));
    }
}

TEST(CorrelationDifferential, Separable) {
    for (auto [m, n] : {std::pair{1u, 1u}, {3u, 3u}, {5u, 2u}, {2u, 7u}, {9u, 4u}}) {
        const auto kx = randomKernel<int8_t>(m, -128, 127, m * 7 + n), ky = randomKernel<int8_t>(n, -128, 127, n * 5);
        for (int32_t shift : {0, 11}) {
            pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
                "pxrFilterCorrSepMxNu8 " + std::to_string(m) + "x" + std::to_string(n) + " shift " +
                    std::to_string(shift),
                PXR_ROW_FilterCorrSepMxNu8, 1, 1, [&](GuardedImage& s, GuardedImage& d) {
                    EXPECT_EQ(pxrFilterCorrSepMxNu8(kx.data(), m, ky.data(), n, shift, s.data(), s.width(),
                                                    s.height(), s.stride(), d.data(), d.stride()),
                              0);
                }));
        }
    }
}

#ifdef PIXORA_HAVE_OPENCV
namespace {

cv::Mat randomMat(uint32_t w, uint32_t h, uint32_t seed) {
    cv::Mat m(static_cast<int>(h), static_cast<int>(w), CV_8UC1);
    const auto bytes = pxr::test::randomBytes(size_t{w} * h, seed);
    std::copy(bytes.begin(), bytes.end(), m.data);
    return m;
}

}  // namespace

// filter2D is a correlation too. With integer weights its float sums are
// exact (below 2^24), so they must equal ours tap for tap.
TEST(CorrelationOpenCV, IntegerSumsEqualFilter2D) {
    const uint32_t w = 157, h = 61;
    const cv::Mat src = randomMat(w, h, 5);
    for (uint32_t n : {3u, 5u, 7u}) {
        const auto k = randomKernel<int8_t>(size_t{n} * n, -128, 127, n);
        cv::Mat kf(static_cast<int>(n), static_cast<int>(n), CV_32F);
        for (uint32_t i = 0; i < n * n; ++i) kf.at<float>(static_cast<int>(i / n), static_cast<int>(i % n)) = k[i];
        cv::Mat sums;
        cv::filter2D(src, sums, CV_32F, kf, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
        std::vector<int16_t> ours(size_t{w} * h, 0);
        ASSERT_EQ(pxrFilterCorrNxNu8s16(k.data(), n, -2, src.data, w, h, static_cast<uint32_t>(src.step), ours.data(),
                                        0),
                  0);
        const uint32_t r = n / 2;
        for (uint32_t y = r; y + r < h; ++y)
            for (uint32_t x = r; x + r < w; ++x) {
                const long expect = std::clamp(static_cast<long>(sums.at<float>(y, x)) * 4, -32768L, 32767L);
                ASSERT_EQ(ours[y * w + x], expect) << n << ": " << x << "," << y;
            }
    }
}

#endif
