// Bilateral filters: the fast exponential bit for bit, the sums against the
// definition, the hand-over of the _v2 forms at their exact sigma pair, the
// zero border band, bad input and every kind.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "frame/row_ids.h"
#include "imgproc/filters/nonlinear_bilateral_kernels.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/fuzz.h"
#include "support/log_capture.h"
#include "support/nonlinear_shapes.h"

using pxr::test::GuardedImage;

namespace {

uint32_t bits(float f) {
    uint32_t b;
    std::memcpy(&b, &f, 4);
    return b;
}

// The definition, written out: every tap of the disc dx^2 + dy^2 <= R^2 in
// row order, an outside tap counting as grey 0.
std::vector<uint8_t> definition(GuardedImage& src, int radius, float sigmaColor, float sigmaSpace) {
    const int w = static_cast<int>(src.width()), h = static_cast<int>(src.height());
    auto weight = [](float sigma, float q) {
        return pxr::bilateral::fastPow2(-0.5f / (sigma * sigma) * q * 1.442695f);
    };
    std::vector<uint8_t> out(size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const int v = src.at(x, y);
            float num = 0.0f, den = 0.0f;
            for (int dy = -radius; dy <= radius; ++dy)
                for (int dx = -radius; dx <= radius; ++dx) {
                    if (dx * dx + dy * dy > radius * radius) continue;
                    const bool inside = x + dx >= 0 && y + dy >= 0 && x + dx < w && y + dy < h;
                    const int p = inside ? src.at(x + dx, y + dy) : 0;
                    const float wgt = weight(sigmaSpace, float(dx * dx + dy * dy)) *
                                      weight(sigmaColor, float((p - v) * (p - v)));
                    num += wgt * float(p);
                    den += wgt;
                }
            out[size_t(y) * w + x] = static_cast<uint8_t>(num / den + 0.5f);
        }
    return out;
}

using Fixed = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);
using Sigmas = int (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t, float, float);

struct Size {
    const char* name;
    int radius;
    uint32_t fixedRow, sigmasRow;
    Fixed fixed;
    Sigmas sigmas;
    float fixedSpace;
};

const Size kSizes[] = {
    {"5x5", 2, PXR_ROW_BilateralFilter5x5u8, PXR_ROW_BilateralFilter5x5u8_v2, pxrBilateralFilter5x5u8,
     pxrBilateralFilter5x5u8_v2, 1.0f},
    {"7x7", 3, PXR_ROW_BilateralFilter7x7u8, PXR_ROW_BilateralFilter7x7u8_v2, pxrBilateralFilter7x7u8,
     pxrBilateralFilter7x7u8_v2, 1.5f},
    {"9x9", 4, PXR_ROW_BilateralFilter9x9u8, PXR_ROW_BilateralFilter9x9u8_v2, pxrBilateralFilter9x9u8,
     pxrBilateralFilter9x9u8_v2, 2.0f},
};

}  // namespace

TEST(NonlinearBilateralGolden, FastExponentialBitForBit) {
    using pxr::bilateral::fastPow2;
    EXPECT_EQ(bits(fastPow2(0.0f)), 0x3f78aa40u);
    EXPECT_EQ(bits(fastPow2(-1.0f)), 0x3ef8aa40u);
    // Raised to -126: a subnormal float, the same for anything lower.
    EXPECT_EQ(bits(fastPow2(-126.0f)), 0x0078aa40u);
    EXPECT_EQ(bits(fastPow2(-200.0f)), 0x0078aa40u);
    EXPECT_EQ(bits(fastPow2(-std::numeric_limits<float>::infinity())), 0x0078aa40u);
}

TEST(NonlinearBilateralGolden, MatchesTheDefinition) {
    for (const Size& s : {kSizes[0]}) {
        GuardedImage src(37, 23, 1, 5, 3), dst(37, 23, 1, 2, 1);
        src.fillRandom(31);
        s.fixed(src.data(), 37, 23, src.stride(), dst.data(), dst.stride());
        EXPECT_EQ(dst.pixels(), definition(src, s.radius, 50.0f, s.fixedSpace)) << s.name;
        ASSERT_EQ(s.sigmas(src.data(), 37, 23, src.stride(), dst.data(), dst.stride(), 12.5f, 0.7f), 0);
        EXPECT_EQ(dst.pixels(), definition(src, s.radius, 12.5f, 0.7f)) << s.name;
        EXPECT_TRUE(dst.outsideUntouched());
    }
}

TEST(NonlinearBilateralGolden, HandOverAtTheExactSigmaPairOnly) {
    for (const Size& s : kSizes) {
        GuardedImage src(96, 64);
        src.fillRandom(7);
        std::vector<uint8_t> fixed(96 * 64), handed(96 * 64), general(96 * 64);
        s.fixed(src.data(), 96, 64, src.stride(), fixed.data(), 96);
        ASSERT_EQ(s.sigmas(src.data(), 96, 64, src.stride(), handed.data(), 96, 50.0f, s.fixedSpace), 0);
        EXPECT_EQ(handed, fixed) << s.name;
        // A sigma a hair away runs the general path with its own weights.
        ASSERT_EQ(s.sigmas(src.data(), 96, 64, src.stride(), general.data(), 96, 50.0f, s.fixedSpace + 0.0001f), 0);
        EXPECT_NE(general, fixed) << s.name;
        EXPECT_EQ(general, definition(src, s.radius, 50.0f, s.fixedSpace + 0.0001f)) << s.name;
    }
}

TEST(NonlinearBilateralGolden, UniformImageDarkensOnlyInTheBorderBand) {
    // Grey 40 against sigmaColor 50, and grey 200 against sigmaColor 1000:
    // an outside tap (grey 0) weighs enough to pull the band down.
    for (const Size& s : kSizes) {
        for (auto [v, sigmaColor] : {std::pair{40, 50.0f}, {200, 1000.0f}}) {
            const uint32_t w = 20, h = 15, r = static_cast<uint32_t>(s.radius);
            std::vector<uint8_t> src(w * h, static_cast<uint8_t>(v)), dst(w * h, 0);
            ASSERT_EQ(s.sigmas(src.data(), w, h, w, dst.data(), w, sigmaColor, s.fixedSpace), 0);
            for (uint32_t y = 0; y < h; ++y)
                for (uint32_t x = 0; x < w; ++x) {
                    // Inner band pixels have only far, light outside taps
                    // and may round back to v; the outermost ring cannot.
                    const bool band = x < r || y < r || x + r >= w || y + r >= h;
                    const bool edge = x == 0 || y == 0 || x + 1 == w || y + 1 == h;
                    if (edge)
                        EXPECT_LT(dst[y * w + x], v) << s.name << " " << x << "," << y;
                    else if (band)
                        EXPECT_LE(dst[y * w + x], v) << s.name << " " << x << "," << y;
                    else
                        EXPECT_EQ(dst[y * w + x], v) << s.name << " " << x << "," << y;
                }
            // The corner has the most outside taps, the middle of an edge
            // fewer, the next row fewer still.
            EXPECT_LT(dst[0], dst[w / 2]) << s.name;
            EXPECT_LT(dst[w / 2], dst[w + w / 2]) << s.name;
        }
    }
}

TEST(NonlinearBilateralBadInput, StatusAndAssertion) {
    const float inf = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    for (const Size& s : kSizes) {
        pxr::test::LogCapture log;
        GuardedImage src(16, 16), dst(16, 16);
        for (auto [sc, ss] : {std::pair{0.0f, 1.0f}, {1.0f, 0.0f}, {-3.0f, 1.0f}, {nan, 1.0f}, {1.0f, inf}})
            EXPECT_EQ(s.sigmas(src.data(), 16, 16, 16, dst.data(), 16, sc, ss), 3) << s.name << " " << sc << " " << ss;
        EXPECT_EQ(s.sigmas(nullptr, 16, 16, 16, dst.data(), 16, 10, 1), 3);
        EXPECT_EQ(s.sigmas(src.data(), 16, 0, 16, dst.data(), 16, 10, 1), 3);
        EXPECT_EQ(s.sigmas(src.data(), 16, 16, 15, dst.data(), 16, 10, 1), 3);
        EXPECT_TRUE(log.lines().empty());
        s.fixed(src.data(), 16, 16, 16, dst.data(), 8);
        EXPECT_TRUE(dst.untouched());
        ASSERT_EQ(log.texts().size(), 1u);
        EXPECT_EQ(log.texts()[0], std::string("Assertion failed @pxrBilateralFilter") + s.name +
                                      "u8: src && dst && width && height && (srcStride >= width) && "
                                      "(dstStride >= width)\n");
    }
}

TEST(NonlinearBilateralDifferential, EveryKindMatches) {
    // The larger discs skip the 640x480 shape: same code paths, far more taps.
    const auto shapes = pxr::test::shapesUpTo(100000);
    for (const Size& s : kSizes) {
        const auto& use = s.radius == 2 ? pxr::test::standardShapes() : shapes;
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            std::string("fixed ") + s.name, s.fixedRow, 1, 1, [&s](GuardedImage& a, GuardedImage& b) {
                s.fixed(a.data(), a.width(), a.height(), a.stride(), b.data(), b.stride());
            }), use);
        // The hand-over pair, ordinary sigmas, a small sigmaColor whose
        // weights run into the subnormal range, and one whose square
        // underflows (an infinite factor: the vector kind reads the table).
        for (auto [sc, ss] : {std::pair{50.0f, s.fixedSpace}, {20.0f, 3.0f}, {6.0f, 0.8f}, {1e-20f, 1.0f}})
            pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
                std::string("_v2 ") + s.name + " " + std::to_string(sc) + "/" + std::to_string(ss), s.sigmasRow, 1,
                1, [&s, sc = sc, ss = ss](GuardedImage& a, GuardedImage& b) {
                    EXPECT_EQ(s.sigmas(a.data(), a.width(), a.height(), a.stride(), b.data(), b.stride(), sc, ss), 0);
                }), use);
    }
}

TEST(NonlinearBilateralFuzz, RandomArgumentsOnExactBuffers) {
    using pxr::test::FuzzArgs;
    for (const Size& s : kSizes) {
        const std::string name = std::string("pxrBilateralFilter") + s.name + "u8";
        pxr::test::fuzzEntry({name.c_str(), s.fixedRow, 1, 1, false, [fn = s.fixed](const FuzzArgs& a, uint8_t* p, uint8_t* d) {
                                  fn(p, a.width, a.height, a.srcStride, d, a.dstStride);
                              }}, 600);
        const std::string v2 = name + "_v2";
        pxr::test::fuzzEntry({v2.c_str(), s.sigmasRow, 1, 1, false, [fn = s.sigmas](const FuzzArgs& a, uint8_t* p, uint8_t* d) {
                                  fn(p, a.width, a.height, a.srcStride, d, a.dstStride, float(a.value) * 0.5f,
                                     float(a.border) * 0.7f - 0.7f);
                              }}, 600);
    }
}
