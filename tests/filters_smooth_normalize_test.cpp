// Local normalisation on box means: hand-computed goldens, a double model,
// the deviation floors, in place, bad input, and every kind against the
// reference.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "filters_smooth_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

using pxr::test::GuardedImage;
using namespace pxr::test::smooth;

namespace {

Img<uint8_t> normU8(const Img<uint8_t>& src, uint32_t n, int* status = nullptr) {
    Img<uint8_t> dst(src.w, src.h, 0xEE);
    const int rc = pxrNormalizeLocalBoxu8(src.data(), src.w, src.h, 0, n, dst.data(), 0);
    if (status) *status = rc;
    return dst;
}

Img<float> normF32(const Img<float>& src, uint32_t n, int* status = nullptr) {
    Img<float> dst(src.w, src.h, -7.0f);
    const int rc = pxrNormalizeLocalBoxf32(src.data(), src.w, src.h, 0, n, dst.data(), 0);
    if (status) *status = rc;
    return dst;
}


}  // namespace

TEST(SmoothNormalizeGolden, BytesMapPlusMinusTwoDeviationsOntoTheRange) {
    // [0, 255], N = 2: pixel 1's window is both pixels, mean 127.5, deviation
    // 127.5, z = 1 -> 128 + 64. Pixel 0's window is itself: no deviation -> 128.
    Img<uint8_t> two(2, 1);
    two.px = {0, 255};
    int status = -1;
    EXPECT_EQ(normU8(two, 2, &status).px, (std::vector<uint8_t>{128, 192}));
    EXPECT_EQ(status, 0);
    // [0, 0, 255], N = 3: pixel 1 sees all three: mean 85, variance 14450,
    // z = -85 / 120.2 = -0.707 -> 128 - 45.25 = 82.75 -> 83.
    Img<uint8_t> three(3, 1);
    three.px = {0, 0, 255};
    EXPECT_EQ(normU8(three, 3).px, (std::vector<uint8_t>{128, 83, 192}));
    // Saturation: one bright pixel among 24 dark ones is z = 4.9 deviations.
    Img<uint8_t> spot(5, 5, 10);
    spot.at(2, 2) = 250;
    auto out = normU8(spot, 5);
    EXPECT_EQ(out.at(2, 2), 255);
    EXPECT_LT(out.at(0, 0), 128);
}

TEST(SmoothNormalizeGolden, BytesFloorTheVarianceAtOneGreyLevel) {
    Img<uint8_t> flat(9, 7, 93);
    EXPECT_EQ(normU8(flat, 5).px, Img<uint8_t>(9, 7, 128).px);
    // A single step of one grey level in a flat 3x3 window: the true
    // variance is 8/81, floored to 1, so z = (101 - 100.11) / 1 -> 128 + 57.
    Img<uint8_t> step(3, 3, 100);
    step.at(1, 1) = 101;
    EXPECT_EQ(normU8(step, 3).at(1, 1), 128 + 57);
}

TEST(SmoothNormalizeGolden, FloatsAreZScores) {
    Img<float> two(2, 1);
    two.px = {1.0f, 3.0f};
    // Pixel 1: mean 2, mean square 5, variance 1 -> z = 1. Pixel 0 alone:
    // variance 0, floored at 1 / 2^20 -> z = 0.
    EXPECT_EQ(normF32(two, 2).px, (std::vector<float>{0.0f, 1.0f}));
    // An all-zero window gives 0, not a division by zero.
    Img<float> zeros(4, 4, 0.0f);
    EXPECT_EQ(normF32(zeros, 3).px, zeros.px);
    // The result does not depend on the image's scale or offset.
    const auto src = randomFloatImg(23, 19, 4);
    Img<float> scaled = src;
    for (auto& v : scaled.px) v = v * 4.0f;
    EXPECT_EQ(normF32(src, 5).px, normF32(scaled, 5).px);
}

TEST(SmoothNormalizeContract, InPlaceEqualsOutOfPlace) {
    const auto bytes = randomImg<uint8_t>(33, 21, 6);
    const auto expect = normU8(bytes, 7);
    Img<uint8_t> inplace = bytes;
    EXPECT_EQ(pxrNormalizeLocalBoxu8(inplace.data(), 33, 21, 0, 7, inplace.data(), 0), 0);
    EXPECT_EQ(inplace.px, expect.px);
    const auto floats = randomFloatImg(33, 21, 6);
    const auto expectF = normF32(floats, 6);
    Img<float> inplaceF = floats;
    EXPECT_EQ(pxrNormalizeLocalBoxf32(inplaceF.data(), 33, 21, 0, 6, inplaceF.data(), 33 * 4), 0);
    EXPECT_EQ(inplaceF.px, expectF.px);
}

TEST(SmoothNormalizeBadInput, ReturnsThreeSilentlyAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8, 4), dst(8, 8, 4);
    struct Bad {
        bool nullSrc, nullDst, inPlace;
        uint32_t w, h, srcStride, n, dstStride;  // strides in elements
    };
    const Bad bad[] = {{false, false, false, 8, 8, 8, 1, 8},   {false, false, false, 8, 8, 8, 0, 8},
                       {false, false, false, 8, 8, 8, 256, 8}, {true, false, false, 8, 8, 8, 3, 8},
                       {false, true, false, 8, 8, 8, 3, 8},    {false, false, false, 0, 8, 8, 3, 8},
                       {false, false, false, 8, 0, 8, 3, 8},   {false, false, false, 8, 8, 7, 3, 8},
                       {false, false, false, 8, 8, 8, 3, 7},   {false, false, true, 8, 8, 8, 3, 9}};
    for (const Bad& b : bad) {
        const uint8_t* s = b.nullSrc ? nullptr : b.inPlace ? dst.data() : src.data();
        uint8_t* d = b.nullDst ? nullptr : dst.data();
        EXPECT_EQ(pxrNormalizeLocalBoxu8(s, b.w, b.h, b.srcStride, b.n, d, b.dstStride), 3);
        EXPECT_EQ(pxrNormalizeLocalBoxf32(reinterpret_cast<const float*>(s), b.w, b.h, b.srcStride * 4, b.n,
                                          reinterpret_cast<float*>(d), b.dstStride * 4),
                  3);
    }
    EXPECT_TRUE(dst.untouched());
    EXPECT_TRUE(log.lines().empty());
}

TEST(SmoothNormalizeDifferential, Bytes) {
    for (uint32_t n : {2u, 3u, 6u, 17u, 255u}) {
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrNormalizeLocalBoxu8 N " + std::to_string(n), PXR_ROW_NormalizeLocalBoxu8, 1, 1,
            [n](GuardedImage& s, GuardedImage& d) {
                EXPECT_EQ(pxrNormalizeLocalBoxu8(s.data(), s.width(), s.height(), s.stride(), n, d.data(), d.stride()),
                          0);
            }));
    }
}

TEST(SmoothNormalizeDifferential, Floats) {
    for (uint32_t n : {2u, 5u, 16u}) {
        pxr::test::expectAllKindsMatch(
            pxr::test::unaryOp("pxrNormalizeLocalBoxf32 N " + std::to_string(n), PXR_ROW_NormalizeLocalBoxf32, 4, 4,
                               [n](GuardedImage& s, GuardedImage& d) {
                                   GuardedImage finite = finiteCopy(s);
                                   EXPECT_EQ(pxrNormalizeLocalBoxf32(finite.as<float>(), s.width(), s.height(),
                                                                     s.stride(), n, d.as<float>(), d.stride()),
                                             0);
                               }),
            alignedShapes(4));
    }
}
