// The 3x3 Gaussian: hand-computed goldens, border rules, bad input, the
// differential check of every kind, and OpenCV's weighted sums.
#include <gtest/gtest.h>

#include <vector>

#include "frame/entry.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;

namespace {

std::vector<uint8_t> run_v2(const std::vector<uint8_t>& src, uint32_t w, uint32_t h, int blurBorder,
                            uint8_t fill = 0xEE) {
    std::vector<uint8_t> dst(src.size(), fill);
    pxrFilterGaussian3x3u8_v2(src.data(), w, h, 0, dst.data(), 0, blurBorder);
    return dst;
}

std::vector<uint8_t> run_v3(const std::vector<uint8_t>& src, uint32_t w, uint32_t h, pxrBorderType type,
                            uint8_t value, int* status = nullptr) {
    std::vector<uint8_t> dst(src.size(), 0xEE);
    int rc = pxrFilterGaussian3x3u8_v3(src.data(), w, h, 0, dst.data(), 0, type, value);
    if (status) *status = rc;
    return dst;
}

// A single bright pixel in the centre of a 3x3 image shows every weight.
const std::vector<uint8_t> kImpulse = {0, 0, 0, 0, 144, 0, 0, 0, 0};

}  // namespace

// Images narrower than 7 go through the status generation: the strided
// generations refuse widths 2 to 6 (see Gaussian3x3Contract).
TEST(Gaussian3x3Golden, InteriorTruncatesAndBorderRenormalisesByNineAndTwelve) {
    auto out = run_v3(kImpulse, 3, 3, PIXORA_BORDER_DEFAULT, 0);
    EXPECT_EQ(out[4], 144 * 4 / 16);
    EXPECT_EQ(out[0], 144 / 9);       // corner: diagonal neighbour, weight 1 of 9
    EXPECT_EQ(out[1], 2 * 144 / 12);  // top edge: inner neighbour, weight 2 of 12
    EXPECT_EQ(out[3], 2 * 144 / 12);  // left edge
    EXPECT_EQ(out[8], 144 / 9);
    // Truncation, not rounding: 4 x 7 + 2 x 1 = 30 -> 30 / 16 = 1.875 -> 1.
    EXPECT_EQ(run_v3({0, 0, 0, 0, 7, 1, 0, 0, 0}, 3, 3, PIXORA_BORDER_DEFAULT, 0)[4], 1);
    // Truncating division: 20 / 9 = 2.2 -> 2 at a corner.
    EXPECT_EQ(run_v3({0, 0, 0, 0, 20, 0, 0, 0, 0}, 3, 3, PIXORA_BORDER_DEFAULT, 0)[0], 2);
    // The same on a width the strided generation takes.
    std::vector<uint8_t> wide(7 * 3, 0);
    wide[7 + 3] = 7;
    wide[7 + 4] = 1;
    EXPECT_EQ(run_v2(wide, 7, 3, 0)[7 + 3], 1);
}

TEST(Gaussian3x3Golden, BlurBorderZeroLeavesBorderUntouched) {
    auto src = pxr::test::randomBytes(9 * 6, 5);
    auto out = run_v2(src, 9, 6, 0, 0xEE);
    for (uint32_t y = 0; y < 6; ++y)
        for (uint32_t x = 0; x < 9; ++x)
            if (x == 0 || y == 0 || x == 8 || y == 5) {
                EXPECT_EQ(out[y * 9 + x], 0xEE) << x << "," << y;
            }
}

TEST(Gaussian3x3Golden, TwoByTwoIsAllCorners) {
    std::vector<uint8_t> src = {90, 0, 0, 0};
    // The strided generation's size pattern refuses width 2 before its
    // assertion (which alone would take it); the status generation runs it.
    EXPECT_EQ(run_v2(src, 2, 2, 1), std::vector<uint8_t>(4, 0xEE));
    auto out = run_v3(src, 2, 2, PIXORA_BORDER_DEFAULT, 0);
    EXPECT_EQ(out[0], 4 * 90 / 9);
    EXPECT_EQ(out[1], 2 * 90 / 9);
    EXPECT_EQ(out[2], 2 * 90 / 9);
    EXPECT_EQ(out[3], 90 / 9);
}

TEST(Gaussian3x3Border, ConstantAddsOutsideTapsAndReplicateWeighsTheCornerNine) {
    const uint8_t v = 200;
    std::vector<uint8_t> src(6 * 4, v);
    auto out = run_v3(src, 6, 4, PIXORA_BORDER_CONSTANT, 0);
    EXPECT_EQ(out[0], (9 * v) >> 4);   // corner: 7 of 16 weights outside
    EXPECT_EQ(out[2], (12 * v) >> 4);  // edge: 4 of 16 outside
    EXPECT_EQ(out[6 + 2], v);          // interior
    auto lifted = run_v3(src, 6, 4, PIXORA_BORDER_CONSTANT, 10);
    EXPECT_EQ(lifted[0], (9 * v + 7 * 10) >> 4);
    EXPECT_EQ(lifted[2], (12 * v + 4 * 10) >> 4);
    // Replicate: corner 160, right 16, below 32, diagonal 48.
    EXPECT_EQ(run_v3({160, 16, 32, 48}, 2, 2, PIXORA_BORDER_REPLICATE, 0)[0], (9 * 160 + 3 * (16 + 32) + 48) >> 4);
    std::vector<uint8_t> flat(5 * 5, 77);
    EXPECT_EQ(run_v3(flat, 5, 5, PIXORA_BORDER_REPLICATE, 0), flat);
}

TEST(Gaussian3x3Border, OnePixelWideImageUsesTheCroppedKernel) {
    std::vector<uint8_t> src = {80, 40, 0, 0};
    int status = -1;
    auto out = run_v3(src, 1, 4, PIXORA_BORDER_DEFAULT, 0, &status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(out[0], (4 * 80 + 2 * 40) / 6);
    EXPECT_EQ(out[1], (2 * 80 + 4 * 40) / 8);
}

TEST(Gaussian3x3Contract, WidthsTwoToSixAreRefusedWithErrorAt) {
    pxr::test::LogCapture log;
    for (uint32_t w = 2; w <= 6; ++w) {
        std::vector<uint8_t> src(w * 4, 9), dst(w * 4, 0xEE);
        pxrFilterGaussian3x3u8_v2(src.data(), w, 4, 0, dst.data(), 0, 1);
        EXPECT_EQ(dst, std::vector<uint8_t>(w * 4, 0xEE)) << w;
        pxrFilterGaussian3x3u8(src.data(), w, 4, dst.data(), 1);
        EXPECT_EQ(dst, std::vector<uint8_t>(w * 4, 0xEE)) << w;
    }
    EXPECT_TRUE(log.contains("Error at pxrFilterGaussian3x3u8_v2\n"));
    EXPECT_TRUE(log.contains("Error at pxrFilterGaussian3x3u8\n"));
    log.clear();
    std::vector<uint8_t> src(7 * 4, 9), dst(7 * 4, 0xEE);
    pxrFilterGaussian3x3u8_v2(src.data(), 7, 4, 0, dst.data(), 0, 1);
    EXPECT_EQ(dst, src);
    EXPECT_TRUE(log.lines().empty());
}

TEST(Gaussian3x3BadInput, LogsTheConditionAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8), dst(8, 8);
    pxrFilterGaussian3x3u8_v2(nullptr, 8, 8, 8, dst.data(), 8, 1);
    pxrFilterGaussian3x3u8_v2(src.data(), 8, 8, 8, nullptr, 8, 1);
    pxrFilterGaussian3x3u8_v2(src.data(), 8, 1, 8, dst.data(), 8, 1);
    pxrFilterGaussian3x3u8_v2(src.data(), 8, 8, 7, dst.data(), 8, 1);
    pxrFilterGaussian3x3u8_v2(src.data(), 8, 8, 8, dst.data(), 7, 1);
    EXPECT_TRUE(dst.untouched());
    const std::string v2 =
        "Assertion failed @pxrFilterGaussian3x3u8_v2: src && dst && (srcWidth > 1) && (srcHeight > 1) && "
        "(srcStride >= srcWidth) && (dstStride >= srcWidth)\n";
    ASSERT_EQ(log.lines().size(), 5u);
    for (const auto& l : log.lines()) {
        EXPECT_EQ(l.text, v2);
        EXPECT_EQ(l.tag, "pixora_lib_log");
        EXPECT_EQ(l.priority, 6);
    }
    log.clear();
    pxrFilterGaussian3x3u8(src.data(), 8, 0, dst.data(), 1);
    pxrFilterGaussian3x3u8(src.data(), 8, 8, nullptr, 1);
    EXPECT_TRUE(dst.untouched());
    ASSERT_EQ(log.texts(), std::vector<std::string>(
                               2, "Assertion failed @pxrFilterGaussian3x3u8: src && dst && width && height\n"));
}

TEST(Gaussian3x3BadInput, StatusGenerationReturnsThreeSilently) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8), dst(8, 8);
    auto v3 = [&](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds, uint32_t type) {
        return pxrFilterGaussian3x3u8_v3(s, w, h, ss, d, ds, static_cast<pxrBorderType>(type), 0);
    };
    EXPECT_EQ(v3(src.data(), 8, 8, 8, dst.data(), 8, 3), 3);
    EXPECT_EQ(v3(src.data(), 8, 8, 8, dst.data(), 8, 0xFFFFFFFFu), 3);
    EXPECT_EQ(v3(nullptr, 8, 8, 8, dst.data(), 8, 0), 3);
    EXPECT_EQ(v3(src.data(), 8, 8, 8, nullptr, 8, 0), 3);
    EXPECT_EQ(v3(src.data(), 0, 8, 8, dst.data(), 8, 0), 3);
    EXPECT_EQ(v3(src.data(), 8, 0, 8, dst.data(), 8, 0), 3);
    EXPECT_EQ(v3(src.data(), 8, 8, 5, dst.data(), 8, 0), 3);
    EXPECT_TRUE(dst.untouched());
    EXPECT_TRUE(log.lines().empty());
}

TEST(Gaussian3x3Invariant, FailureEndsTheProcessWithItsSourceText) {
    // Cannot fail for any width of at least 2; the failure path itself is
    // what is checked here: message on the library tag, then exit status 1.
    EXPECT_EXIT({ PXR_INVARIANT("pixoraBlurC", 2 + 2 == 5); }, ::testing::ExitedWithCode(1),
                "pixora_lib_log: pixoraBlurC@[0-9]+: 2 \\+ 2 == 5 Assertion failed");
}

TEST(Gaussian3x3Differential, EveryGenerationBorderAndBlurBorder) {
    for (int blurBorder : {0, 1, 2}) {
        const std::string suffix = " blurBorder " + std::to_string(blurBorder);
        if (blurBorder < 2)
            pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
                "pxrFilterGaussian3x3u8" + suffix, PXR_ROW_FilterGaussian3x3u8, 1, 1,
                [blurBorder](GuardedImage& s, GuardedImage& d) {
                    pxrFilterGaussian3x3u8(s.data(), s.width(), s.height(), d.data(), blurBorder);
                },
                true));
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrFilterGaussian3x3u8_v2" + suffix, PXR_ROW_FilterGaussian3x3u8, 1, 1,
            [blurBorder](GuardedImage& s, GuardedImage& d) {
                pxrFilterGaussian3x3u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(), blurBorder);
            }));
    }
    for (auto type : {PIXORA_BORDER_DEFAULT, PIXORA_BORDER_CONSTANT, PIXORA_BORDER_REPLICATE}) {
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrFilterGaussian3x3u8_v3 border " + std::to_string(type), PXR_ROW_FilterGaussian3x3u8_v3, 1, 1,
            [type](GuardedImage& s, GuardedImage& d) {
                EXPECT_EQ(pxrFilterGaussian3x3u8_v3(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(),
                                                    type, 201),
                          0);
            }));
    }
}

#ifdef PIXORA_HAVE_OPENCV
// OpenCV's filter2D gives the same weighted sums (exact in float); the shift is ours.
TEST(Gaussian3x3OpenCV, InteriorEqualsWeightedSumShiftedByFour) {
    const uint32_t w = 321, h = 203;
    cv::Mat src(h, w, CV_8UC1);
    auto bytes = pxr::test::randomBytes(size_t{w} * h, 77);
    std::copy(bytes.begin(), bytes.end(), src.data);
    cv::Mat smooth;
    cv::GaussianBlur(src, smooth, cv::Size(9, 9), 3.0);  // photograph-like gradients too
    for (const cv::Mat& img : {src, smooth}) {
        cv::Mat sums;
        cv::Mat kernel = (cv::Mat_<float>(3, 3) << 1, 2, 1, 2, 4, 2, 1, 2, 1);
        cv::filter2D(img, sums, CV_32F, kernel, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
        std::vector<uint8_t> dst(size_t{w} * h, 0);
        pxrFilterGaussian3x3u8_v2(img.data, w, h, static_cast<uint32_t>(img.step), dst.data(), w, 0);
        for (uint32_t y = 1; y + 1 < h; ++y)
            for (uint32_t x = 1; x + 1 < w; ++x)
                ASSERT_EQ(dst[y * w + x], static_cast<int>(sums.at<float>(y, x)) >> 4) << x << "," << y;
    }
}
#endif
