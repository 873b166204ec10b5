// Fixed, range and Otsu thresholds: the 255 substitution, the inverted type,
// inclusive ranges, Otsu's tie rule and its threshold on an image of one
// grey level, bad input, every kind, and OpenCV's Otsu threshold.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "frame/row_ids.h"
#include "imgproc/filters/nonlinear_threshold_kernels.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;

namespace {

// Every grey level once.
std::vector<uint8_t> ramp() {
    std::vector<uint8_t> v(256);
    for (int i = 0; i < 256; ++i) v[i] = static_cast<uint8_t>(i);
    return v;
}

std::vector<uint8_t> expectBinary(const std::vector<uint8_t>& src, int t, bool inverted) {
    std::vector<uint8_t> out(src.size());
    for (size_t i = 0; i < src.size(); ++i) out[i] = (src[i] >= t) != inverted ? 255 : 0;
    return out;
}

uint8_t otsuOf(const std::vector<uint8_t>& px) {
    uint32_t hist[256] = {};
    for (uint8_t v : px) ++hist[v];
    return pxr::thresh::otsu(hist, px.size());
}

}  // namespace

TEST(NonlinearThresholdGolden, ThresholdsOutsideZeroTo254Become255) {
    const auto src = ramp();
    std::vector<uint8_t> dst(256);
    for (int t : {0, 128, 254}) {
        pxrFilterThresholdu8(src.data(), 16, 16, dst.data(), t);
        EXPECT_EQ(dst, expectBinary(src, t, false)) << t;
        ASSERT_EQ(pxrFilterThresholdu8_v3(src.data(), 16, 16, 0, dst.data(), 0, t, 1), 0);
        EXPECT_EQ(dst, expectBinary(src, t, true)) << t;
    }
    // 255, -1 and anything else out of range: only grey 255 passes.
    for (int t : {255, -1, 256}) {
        pxrFilterThresholdu8_v2(src.data(), 16, 16, 0, dst.data(), 0, t);
        EXPECT_EQ(dst, expectBinary(src, 255, false)) << t;
        ASSERT_EQ(pxrFilterThresholdu8_v3(src.data(), 16, 16, 0, dst.data(), 0, t, 1), 0);
        EXPECT_EQ(dst, expectBinary(src, 255, true)) << t;
    }
}

TEST(NonlinearThresholdGolden, RangeIsInclusive) {
    const auto src = ramp();
    std::vector<uint8_t> dst(256);
    pxrFilterThresholdRangeu8(src.data(), 256, 1, 0, dst.data(), 0, 10, 20);
    for (int i = 0; i < 256; ++i) ASSERT_EQ(dst[i], i >= 10 && i <= 20 ? 255 : 0) << i;
    ASSERT_EQ(pxrFilterThresholdRangeu8_v2(src.data(), 64, 4, 0, dst.data(), 0, 7, 7), 0);
    for (int i = 0; i < 256; ++i) ASSERT_EQ(dst[i], i == 7 ? 255 : 0) << i;
    ASSERT_EQ(pxrFilterThresholdRangeu8_v2(src.data(), 64, 4, 0, dst.data(), 0, 0, 255), 0);
    EXPECT_EQ(dst, std::vector<uint8_t>(256, 255));
    ASSERT_EQ(pxrFilterThresholdRangeu8_v2(src.data(), 64, 4, 0, dst.data(), 0, 200, 100), 0);
    EXPECT_EQ(dst, std::vector<uint8_t>(256, 0));
}

TEST(NonlinearThresholdGolden, InPlace) {
    auto img = ramp();
    pxrFilterThresholdu8_v2(img.data(), 37, 6, 0, img.data(), 0, 100);  // 222 pixels, a ragged last vector
    for (int i = 0; i < 222; ++i) ASSERT_EQ(img[i], i >= 100 ? 255 : 0) << i;
    EXPECT_EQ(img[222], 222);
}

TEST(NonlinearOtsuGolden, OneGreyLevelKeepsTheInitialThreshold) {
    // No bin splits the image: the threshold stays 0, so every pixel passes.
    for (uint8_t v : {0, 90, 255}) {
        std::vector<uint8_t> src(40 * 9, v), dst(src.size(), 0x5A);
        EXPECT_EQ(otsuOf(src), 0);
        pxrFilterThresholdOtsuu8(src.data(), 40, 9, 0, dst.data(), 0, 0);
        EXPECT_EQ(dst, std::vector<uint8_t>(src.size(), 255)) << int(v);
        pxrFilterThresholdOtsuu8(src.data(), 40, 9, 0, dst.data(), 0, 1);
        EXPECT_EQ(dst, std::vector<uint8_t>(src.size(), 0)) << int(v);
    }
}

TEST(NonlinearOtsuGolden, TwoLevelsAndTies) {
    // Two grey levels: every t from the lower level up to just below the
    // upper one gives the same variance; the lowest wins.
    std::vector<uint8_t> src(100, 40);
    std::fill(src.begin() + 30, src.end(), 200);
    EXPECT_EQ(otsuOf(src), 40);
    std::vector<uint8_t> dst(src.size());
    pxrFilterThresholdOtsuu8(src.data(), 10, 10, 0, dst.data(), 0, 0);
    EXPECT_EQ(dst, expectBinary(src, 40, false));  // bin t itself passes the fixed threshold
    // Black and white in equal parts: every t from 0 to 254 ties.
    std::vector<uint8_t> bw(64, 0);
    std::fill(bw.begin() + 32, bw.end(), 255);
    EXPECT_EQ(otsuOf(bw), 0);
}

TEST(NonlinearThresholdBadInput, StatusAndAssertion) {
    pxr::test::LogCapture log;
    GuardedImage src(12, 8), dst(12, 8);
    EXPECT_EQ(pxrFilterThresholdu8_v3(src.data(), 12, 8, 12, dst.data(), 12, 10, 2), 3);
    EXPECT_EQ(pxrFilterThresholdu8_v3(src.data(), 12, 8, 11, dst.data(), 12, 10, 0), 3);
    EXPECT_EQ(pxrFilterThresholdu8_v3(nullptr, 12, 8, 12, dst.data(), 12, 10, 0), 3);
    EXPECT_EQ(pxrFilterThresholdRangeu8_v2(src.data(), 12, 0, 12, dst.data(), 12, 1, 2), 3);
    EXPECT_EQ(pxrFilterThresholdRangeu8_v2(src.data(), 12, 8, 12, dst.data(), 9, 1, 2), 3);
    EXPECT_TRUE(log.lines().empty());
    pxrFilterThresholdu8(src.data(), 12, 8, nullptr, 3);
    pxrFilterThresholdu8_v2(src.data(), 12, 8, 12, dst.data(), 5, 3);
    pxrFilterThresholdRangeu8(src.data(), 0, 8, 12, dst.data(), 12, 1, 2);
    pxrFilterThresholdOtsuu8(src.data(), 12, 8, 10, dst.data(), 12, 0);
    EXPECT_TRUE(dst.untouched());
    EXPECT_EQ(log.texts(),
              (std::vector<std::string>{
                  "Assertion failed @pxrFilterThresholdu8: src && dst && width && height\n",
                  "Assertion failed @pxrFilterThresholdu8_v2: src && dst && srcWidth && srcHeight && (srcStride >= "
                  "srcWidth) && (dstStride >= srcWidth)\n",
                  "Assertion failed @pxrFilterThresholdRangeu8: src && dst && srcWidth && srcHeight && (srcStride "
                  ">= srcWidth) && (dstStride >= srcWidth)\n",
                  "Assertion failed @pxrFilterThresholdOtsuu8: src && dst && width && height && (srcStride >= "
                  "width) && (dstStride >= width)\n"}));
}

TEST(NonlinearThresholdDifferential, EveryKindMatches) {
    using pxr::test::unaryOp;
    pxr::test::expectAllKindsMatch(unaryOp(
        "pxrFilterThresholdu8", PXR_ROW_FilterThresholdu8, 1, 1,
        [](GuardedImage& s, GuardedImage& d) { pxrFilterThresholdu8(s.data(), s.width(), s.height(), d.data(), 77); },
        true));
    for (int t : {0, 128, 255, -5})
        pxr::test::expectAllKindsMatch(unaryOp(
            "pxrFilterThresholdu8_v2 " + std::to_string(t), PXR_ROW_FilterThresholdu8, 1, 1,
            [t](GuardedImage& s, GuardedImage& d) {
                pxrFilterThresholdu8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(), t);
            }));
    for (uint32_t type : {0u, 1u})
        pxr::test::expectAllKindsMatch(unaryOp(
            "pxrFilterThresholdu8_v3 " + std::to_string(type), PXR_ROW_FilterThresholdu8_v3, 1, 1,
            [type](GuardedImage& s, GuardedImage& d) {
                EXPECT_EQ(pxrFilterThresholdu8_v3(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(),
                                                  140, type),
                          0);
            }));
    for (auto [lo, hi] : {std::pair{30, 90}, {90, 30}, {0, 255}}) {
        const auto l = static_cast<uint8_t>(lo), h = static_cast<uint8_t>(hi);
        pxr::test::expectAllKindsMatch(unaryOp(
            "pxrFilterThresholdRangeu8 " + std::to_string(lo), PXR_ROW_FilterThresholdRangeu8, 1, 1,
            [l, h](GuardedImage& s, GuardedImage& d) {
                pxrFilterThresholdRangeu8(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(), l, h);
            }));
        pxr::test::expectAllKindsMatch(unaryOp(
            "pxrFilterThresholdRangeu8_v2 " + std::to_string(lo), PXR_ROW_FilterThresholdRangeu8_v2, 1, 1,
            [l, h](GuardedImage& s, GuardedImage& d) {
                EXPECT_EQ(pxrFilterThresholdRangeu8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(),
                                                       d.stride(), l, h),
                          0);
            }));
    }
    for (uint32_t type : {0u, 1u, 7u})
        pxr::test::expectAllKindsMatch(unaryOp(
            "pxrFilterThresholdOtsuu8 " + std::to_string(type), PXR_ROW_FilterThresholdOtsuu8, 1, 1,
            [type](GuardedImage& s, GuardedImage& d) {
                pxrFilterThresholdOtsuu8(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(), type);
            }));
}

#ifdef PIXORA_HAVE_OPENCV
namespace {

// Smooth shading, a few objects of their own brightness, blur and sensor
// noise: histograms with two or more broad humps, like photographs.
cv::Mat naturalLooking(uint32_t seed, int w, int h) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    cv::Mat img(h, w, CV_32FC1);
    const double base = 40 + 80 * u(rng), gx = 60 * (u(rng) - 0.5), gy = 60 * (u(rng) - 0.5);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) img.at<float>(y, x) = float(base + gx * x / w + gy * y / h);
    for (int i = 0; i < 6; ++i) {
        const cv::Point c(int(u(rng) * w), int(u(rng) * h));
        const int r = 10 + int(u(rng) * h / 4);
        cv::circle(img, c, r, cv::Scalar(100 + 130 * u(rng)), cv::FILLED);
    }
    cv::GaussianBlur(img, img, cv::Size(0, 0), 2.0);
    cv::Mat noise(h, w, CV_32FC1);
    cv::randn(noise, 0, 6 + 6 * u(rng));
    img += noise;
    cv::Mat out;
    img.convertTo(out, CV_8UC1);
    return out;
}

}  // namespace

TEST(NonlinearThresholdOpenCV, OtsuChoosesOpenCVsThreshold) {
    std::vector<cv::Mat> images;
    for (uint32_t seed = 1; seed <= 12; ++seed) images.push_back(naturalLooking(seed, 320 + seed * 17, 240));
    cv::Mat photo = cv::imread(std::string(PIXORA_TEST_DATA) + "/../../tools/demo/sample.jpg", cv::IMREAD_GRAYSCALE);
    if (!photo.empty()) images.push_back(photo);
    for (size_t i = 0; i < images.size(); ++i) {
        const cv::Mat& src = images[i];
        cv::Mat scratch;
        const double expected = cv::threshold(src, scratch, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
        std::vector<uint8_t> px(src.begin<uint8_t>(), src.end<uint8_t>());
        const uint8_t t = otsuOf(px);
        EXPECT_EQ(t, expected) << "image " << i;
        std::vector<uint8_t> dst(px.size());
        pxrFilterThresholdOtsuu8(px.data(), src.cols, src.rows, 0, dst.data(), 0, 0);
        EXPECT_EQ(dst, expectBinary(px, t, false)) << "image " << i;
    }
}
#endif
