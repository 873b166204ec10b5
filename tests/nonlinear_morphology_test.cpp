// Erosion and dilation: the extreme of the in-image taps at every pixel, the
// constant border of the status generation, NxN against the definition and
// against 3x3, bad input, every kind, and OpenCV's erode and dilate.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;

namespace {

// Extreme of the in-image taps of the n x n window; `pad` joins it when a
// tap lies outside (the constant border).
std::vector<uint8_t> definition(GuardedImage& src, bool erode, int n, int pad = -1) {
    const int w = static_cast<int>(src.width()), h = static_cast<int>(src.height()), half = n / 2;
    std::vector<uint8_t> out(size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            int r = src.at(x, y);
            for (int dy = -half; dy <= half; ++dy)
                for (int dx = -half; dx <= half; ++dx) {
                    const bool inside = x + dx >= 0 && y + dy >= 0 && x + dx < w && y + dy < h;
                    const int v = inside ? src.at(x + dx, y + dy) : pad;
                    if (v < 0) continue;
                    r = erode ? std::min(r, v) : std::max(r, v);
                }
            out[size_t(y) * w + x] = static_cast<uint8_t>(r);
        }
    return out;
}

}  // namespace

TEST(NonlinearMorphologyGolden, ThreeByThreeEveryPixel) {
    for (auto [w, h] : {std::pair{1u, 1u}, {1u, 6u}, {35u, 12u}}) {
        GuardedImage src(w, h, 1, 3, 1), dst(w, h, 1, 1, 2);
        src.fillRandom(w * 5 + h);
        pxrFilterErode3x3u8_v2(src.data(), w, h, src.stride(), dst.data(), dst.stride());
        EXPECT_EQ(dst.pixels(), definition(src, true, 3)) << w << "x" << h;
        pxrFilterDilate3x3u8_v2(src.data(), w, h, src.stride(), dst.data(), dst.stride());
        EXPECT_EQ(dst.pixels(), definition(src, false, 3)) << w << "x" << h;
        EXPECT_TRUE(dst.outsideUntouched());
    }
}

TEST(NonlinearMorphologyGolden, BorderTypesOfTheStatusGeneration) {
    GuardedImage src(23, 9), dst(23, 9);
    src.fillRandom(4);
    for (auto type : {PIXORA_BORDER_DEFAULT, PIXORA_BORDER_REPLICATE}) {
        EXPECT_EQ(pxrFilterErode3x3u8_v3(src.data(), 23, 9, src.stride(), dst.data(), dst.stride(), type, 0), 0);
        EXPECT_EQ(dst.pixels(), definition(src, true, 3)) << type;
        EXPECT_EQ(pxrFilterDilate3x3u8_v3(src.data(), 23, 9, src.stride(), dst.data(), dst.stride(), type, 255), 0);
        EXPECT_EQ(dst.pixels(), definition(src, false, 3)) << type;
    }
    EXPECT_EQ(pxrFilterErode3x3u8_v3(src.data(), 23, 9, src.stride(), dst.data(), dst.stride(),
                                     PIXORA_BORDER_CONSTANT, 40),
              0);
    EXPECT_EQ(dst.pixels(), definition(src, true, 3, 40));
    EXPECT_EQ(pxrFilterDilate3x3u8_v3(src.data(), 23, 9, src.stride(), dst.data(), dst.stride(),
                                      PIXORA_BORDER_CONSTANT, 200),
              0);
    EXPECT_EQ(dst.pixels(), definition(src, false, 3, 200));
}

TEST(NonlinearMorphologyGolden, NxNIsTheExtremeOfTheInImageWindow) {
    for (uint32_t n : {5u, 31u}) {
        GuardedImage src(41, 19, 1, 2, 5), dst(41, 19, 1, 7, 0);
        src.fillRandom(n);
        ASSERT_EQ(pxrFilterErodeNxNu8(src.data(), 41, 19, src.stride(), n, dst.data(), dst.stride()), 0);
        EXPECT_EQ(dst.pixels(), definition(src, true, int(n))) << n;
        ASSERT_EQ(pxrFilterDilateNxNu8(src.data(), 41, 19, src.stride(), n, dst.data(), dst.stride()), 0);
        EXPECT_EQ(dst.pixels(), definition(src, false, int(n))) << n;
        EXPECT_TRUE(dst.outsideUntouched());
    }
    // N = 1 copies; N = 3 is the 3x3 filter.
    GuardedImage src(30, 10), a(30, 10), b(30, 10);
    src.fillRandom(2);
    ASSERT_EQ(pxrFilterErodeNxNu8(src.data(), 30, 10, 0, 1, a.data(), 0), 0);
    EXPECT_EQ(a.pixels(), src.pixels());
    ASSERT_EQ(pxrFilterDilateNxNu8(src.data(), 30, 10, 0, 3, a.data(), 0), 0);
    pxrFilterDilate3x3u8(src.data(), 30, 10, b.data());
    EXPECT_EQ(a.pixels(), b.pixels());
}

TEST(NonlinearMorphologyBadInput, StatusAndAssertion) {
    pxr::test::LogCapture log;
    GuardedImage src(12, 8), dst(12, 8);
    EXPECT_EQ(pxrFilterErode3x3u8_v3(src.data(), 12, 8, 12, dst.data(), 12, static_cast<pxrBorderType>(3), 0), 3);
    EXPECT_EQ(pxrFilterDilate3x3u8_v3(nullptr, 12, 8, 12, dst.data(), 12, PIXORA_BORDER_CONSTANT, 0), 3);
    EXPECT_EQ(pxrFilterDilate3x3u8_v3(src.data(), 12, 8, 11, dst.data(), 12, PIXORA_BORDER_CONSTANT, 0), 3);
    EXPECT_EQ(pxrFilterErodeNxNu8(src.data(), 12, 8, 12, 4, dst.data(), 12), 3);
    EXPECT_EQ(pxrFilterErodeNxNu8(src.data(), 12, 8, 12, 0, dst.data(), 12), 3);
    EXPECT_EQ(pxrFilterDilateNxNu8(src.data(), 12, 0, 12, 3, dst.data(), 12), 3);
    EXPECT_EQ(pxrFilterDilateNxNu8(src.data(), 12, 8, 12, 3, dst.data(), 10), 3);
    EXPECT_TRUE(log.lines().empty());
    pxrFilterErode3x3u8(src.data(), 0, 8, dst.data());
    pxrFilterDilate3x3u8_v2(src.data(), 12, 8, 12, dst.data(), 11);
    EXPECT_TRUE(dst.untouched());
    EXPECT_EQ(log.texts(), (std::vector<std::string>{
                               "Assertion failed @pxrFilterErode3x3u8: src && dst && width && height\n",
                               "Assertion failed @pxrFilterDilate3x3u8_v2: src && dst && srcWidth && srcHeight && "
                               "(srcStride >= srcWidth) && (dstStride >= srcWidth)\n"}));
}

TEST(NonlinearMorphologyDifferential, EveryKindMatches) {
    using pxr::test::unaryOp;
    pxr::test::expectAllKindsMatch(unaryOp(
        "pxrFilterErode3x3u8", PXR_ROW_FilterErode3x3u8, 1, 1,
        [](GuardedImage& s, GuardedImage& d) { pxrFilterErode3x3u8(s.data(), s.width(), s.height(), d.data()); },
        true));
    pxr::test::expectAllKindsMatch(
        unaryOp("pxrFilterDilate3x3u8_v2", PXR_ROW_FilterDilate3x3u8, 1, 1, [](GuardedImage& s, GuardedImage& d) {
            pxrFilterDilate3x3u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
        }));
    for (bool erode : {true, false}) {
        const std::string name = erode ? "pxrFilterErode" : "pxrFilterDilate";
        auto v3 = erode ? pxrFilterErode3x3u8_v3 : pxrFilterDilate3x3u8_v3;
        auto nxn = erode ? pxrFilterErodeNxNu8 : pxrFilterDilateNxNu8;
        for (auto type : {PIXORA_BORDER_DEFAULT, PIXORA_BORDER_CONSTANT, PIXORA_BORDER_REPLICATE})
            pxr::test::expectAllKindsMatch(unaryOp(
                name + "3x3u8_v3 " + std::to_string(type),
                erode ? PXR_ROW_FilterErode3x3u8_v3 : PXR_ROW_FilterDilate3x3u8_v3, 1, 1,
                [v3, type, erode](GuardedImage& s, GuardedImage& d) {
                    EXPECT_EQ(v3(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(), type,
                                 erode ? 60 : 190),
                              0);
                }));
        for (uint32_t n : {1u, 3u, 7u, 15u})
            pxr::test::expectAllKindsMatch(unaryOp(
                name + "NxNu8 " + std::to_string(n), erode ? PXR_ROW_FilterErodeNxNu8 : PXR_ROW_FilterDilateNxNu8, 1,
                1, [nxn, n](GuardedImage& s, GuardedImage& d) {
                    EXPECT_EQ(nxn(s.data(), s.width(), s.height(), s.stride(), n, d.data(), d.stride()), 0);
                }));
    }
}

#ifdef PIXORA_HAVE_OPENCV
// A repeated edge never changes a minimum or maximum, so OpenCV's replicated
// border gives every pixel, not just the interior.
TEST(NonlinearMorphologyOpenCV, ErodeAndDilateMatch) {
    const int w = 203, h = 97;
    cv::Mat src(h, w, CV_8UC1);
    auto bytes = pxr::test::randomBytes(size_t(w) * h, 8);
    std::copy(bytes.begin(), bytes.end(), src.data);
    for (int n : {3, 7}) {
        const cv::Mat k = cv::getStructuringElement(cv::MORPH_RECT, cv::Size(n, n));
        cv::Mat eroded, dilated;
        cv::erode(src, eroded, k, cv::Point(-1, -1), 1, cv::BORDER_REPLICATE);
        cv::dilate(src, dilated, k, cv::Point(-1, -1), 1, cv::BORDER_REPLICATE);
        cv::Mat ours(h, w, CV_8UC1), ours2(h, w, CV_8UC1);
        if (n == 3) {
            pxrFilterErode3x3u8_v2(src.data, w, h, static_cast<uint32_t>(src.step), ours.data, w);
            pxrFilterDilate3x3u8_v2(src.data, w, h, static_cast<uint32_t>(src.step), ours2.data, w);
        } else {
            ASSERT_EQ(pxrFilterErodeNxNu8(src.data, w, h, static_cast<uint32_t>(src.step), n, ours.data, w), 0);
            ASSERT_EQ(pxrFilterDilateNxNu8(src.data, w, h, static_cast<uint32_t>(src.step), n, ours2.data, w), 0);
        }
        EXPECT_EQ(cv::countNonZero(ours != eroded), 0) << n;
        EXPECT_EQ(cv::countNonZero(ours2 != dilated), 0) << n;
    }
}
#endif
