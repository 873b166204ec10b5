// The 5x5 and 11x11 Gaussians: hand-computed goldens, the direct 2-D model,
// signed rounding, bad input, every kind against the reference, and OpenCV's
// weighted sums.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "filters_smooth_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;
using namespace pxr::test::smooth;

namespace {

Img<uint8_t> gauss5(const Img<uint8_t>& src, int blurBorder, uint8_t fill = 0xEE) {
    Img<uint8_t> dst(src.w, src.h, fill);
    pxrFilterGaussian5x5u8_v2(src.data(), src.w, src.h, 0, dst.data(), 0, blurBorder);
    return dst;
}

// A 5x5 image with one bright pixel in the centre shows every weight.
Img<uint8_t> impulse(uint32_t w, uint32_t h, uint32_t x, uint32_t y, uint8_t v) {
    Img<uint8_t> img(w, h, 0);
    img.at(x, y) = v;
    return img;
}

}  // namespace

TEST(SmoothGaussianGolden, FiveByFiveInteriorTruncatesTheWeightedSum) {
    auto out = gauss5(impulse(5, 5, 2, 2, 255), 0);
    EXPECT_EQ(out.at(2, 2), 255 * 36 / 256);  // 35.86 -> 35
    // Neighbours of the centre see the impulse through weights 4 x 6 = 24
    // and 4 x 4 = 16 in a 7x7 image.
    auto big = gauss5(impulse(7, 7, 3, 3, 200), 0);
    EXPECT_EQ(big.at(2, 3), 200 * 24 / 256);
    EXPECT_EQ(big.at(2, 2), 200 * 16 / 256);
    EXPECT_EQ(big.at(3, 3), 200 * 36 / 256);
}

TEST(SmoothGaussianGolden, FiveByFiveBorderRenormalisesByTheInImageWeights) {
    auto out = gauss5(impulse(5, 5, 2, 2, 242), 1);
    // Corner: rows and columns 0..2 weigh 6 + 4 + 1 = 11 each; the impulse
    // sits at tap weight 1 x 1.
    EXPECT_EQ(out.at(0, 0), 242 * 1 / 121);
    // (1, 1): 15 x 15 in-image weight, impulse weight 4 x 4.
    EXPECT_EQ(out.at(1, 1), 242 * 16 / 225);  // 17.2 -> 17
    // Top edge, centre column: 11 x 16, impulse weight 1 x 6.
    EXPECT_EQ(out.at(2, 0), 242 * 6 / 176);  // 8.25 -> 8
    // (2, 1): 15 x 16, impulse weight 4 x 6.
    EXPECT_EQ(out.at(2, 1), 242 * 24 / 240);
    // The interior pixel keeps the plain shift.
    EXPECT_EQ(out.at(2, 2), 242 * 36 / 256);
}

TEST(SmoothGaussianGolden, BlurBorderOtherThanOneLeavesTwoPixelsUntouched) {
    const auto src = randomImg<uint8_t>(9, 8, 4);
    for (int blurBorder : {0, 2, -1}) {
        auto out = gauss5(src, blurBorder, 0xEE);
        for (uint32_t y = 0; y < 8; ++y)
            for (uint32_t x = 0; x < 9; ++x)
                if (x < 2 || y < 2 || x >= 7 || y >= 6) {
                    EXPECT_EQ(out.at(x, y), 0xEE) << x << "," << y;
                }
    }
}

TEST(SmoothGaussianGolden, ElevenTapKernelIsPascalRowTen) {
    // The weights show at the renormalised corner of an 11x11 image with one
    // bright pixel at (x, 0): v x w[5 + x] x w[5] / (638 x 638), where
    // 638 = 252 + 210 + 120 + 45 + 10 + 1 is the in-image half of the row.
    const int64_t w[11] = {1, 10, 45, 120, 210, 252, 210, 120, 45, 10, 1};
    for (uint32_t x = 0; x <= 5; ++x) {
        auto src = impulse(11, 11, x, 0, 255);
        Img<uint8_t> dst(11, 11, 0);
        pxrFilterGaussian11x11u8_v2(src.data(), 11, 11, 0, dst.data(), 0, 1);
        EXPECT_EQ(dst.at(0, 0), 255 * w[5 + x] * w[5] / (638 * 638)) << x;
    }
    // The centre of the image has every tap inside: the sum shifted by 20.
    auto centre = impulse(12, 11, 6, 5, 255);
    Img<uint8_t> dst(12, 11, 0);
    pxrFilterGaussian11x11u8(centre.data(), 12, 11, dst.data(), 0);
    EXPECT_EQ(dst.at(6, 5), (255 * 252 * 252) >> 20);
    EXPECT_EQ(dst.at(5, 5), (255 * 210 * 252) >> 20);
}

TEST(SmoothGaussianSigned, NegativeResultsRoundDownInTheInteriorAndTheBorder) {
    Img<int16_t> src(5, 5, 0);
    src.at(2, 2) = -255;
    Img<int16_t> dst(5, 5, 0);
    pxrFilterGaussian5x5s16(src.data(), 5, 5, dst.data(), 1);
    EXPECT_EQ(dst.at(2, 2), -36);  // -9180 / 256 = -35.86 -> -36 (an arithmetic shift)
    EXPECT_EQ(dst.at(0, 0), -3);   // -255 / 121 = -2.1 -> -3, not -2
    EXPECT_EQ(dst.at(4, 4), -3);
    Img<int32_t> s32(5, 5, 0), d32(5, 5, 0);
    s32.at(2, 2) = -100;
    pxrFilterGaussian5x5s32(s32.data(), 5, 5, d32.data(), 1);
    EXPECT_EQ(d32.at(0, 0), -1);  // -0.83 -> -1
    EXPECT_EQ(d32.at(2, 2), -15);  // -3600 / 256 = -14.06 -> -15
}

TEST(SmoothGaussianSigned, ExtremeValuesDoNotOverflow) {
    for (int32_t v : {std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::min()}) {
        Img<int32_t> src(9, 7, v), dst(9, 7, 0);
        pxrFilterGaussian5x5s32_v2(src.data(), 9, 7, 0, dst.data(), 0, 1);
        EXPECT_EQ(dst.px, src.px) << v;
    }
    for (int16_t v : {std::numeric_limits<int16_t>::max(), std::numeric_limits<int16_t>::min()}) {
        Img<int16_t> src(9, 7, v), dst(9, 7, 0);
        pxrFilterGaussian5x5s16_v2(src.data(), 9, 7, 0, dst.data(), 0, 1);
        EXPECT_EQ(dst.px, src.px) << v;
    }
}

TEST(SmoothGaussianBadInput, LogsTheConditionAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(16, 16, 4), dst(16, 16, 4);
    auto u8 = [&] { return src.data(); };
    auto d8 = [&] { return dst.data(); };
    pxrFilterGaussian5x5u8(u8(), 4, 16, d8(), 1);
    pxrFilterGaussian5x5u8(u8(), 16, 4, d8(), 1);
    pxrFilterGaussian5x5u8(nullptr, 16, 16, d8(), 1);
    pxrFilterGaussian5x5u8_v2(u8(), 16, 16, 15, d8(), 16, 1);
    pxrFilterGaussian5x5u8_v2(u8(), 16, 16, 16, d8(), 15, 1);
    pxrFilterGaussian5x5u8_v2(u8(), 16, 4, 16, d8(), 16, 1);
    pxrFilterGaussian11x11u8(u8(), 10, 16, d8(), 1);
    pxrFilterGaussian11x11u8_v2(u8(), 16, 10, 16, d8(), 16, 1);
    pxrFilterGaussian11x11u8_v2(u8(), 16, 16, 15, d8(), 16, 1);
    pxrFilterGaussian5x5s16(src.as<int16_t>(), 16, 1, dst.as<int16_t>(), 1);
    pxrFilterGaussian5x5s16_v2(src.as<int16_t>(), 16, 16, 31, dst.as<int16_t>(), 32, 1);
    pxrFilterGaussian5x5s16_v2(src.as<int16_t>(), 16, 16, 32, nullptr, 32, 1);
    pxrFilterGaussian5x5s32(src.as<int32_t>(), 4, 16, dst.as<int32_t>(), 1);
    pxrFilterGaussian5x5s32_v2(src.as<int32_t>(), 16, 16, 64, dst.as<int32_t>(), 63, 1);
    EXPECT_TRUE(dst.untouched());
    const std::string u8Plain = "src && dst && width && height && height > 4 && width > 4";
    const std::string u8V2 = "src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && (dstStride >= srcWidth) && srcHeight > 4 && srcWidth > 4";
    const std::string g11 = "src && dst && width && height && height > 10 && width > 10";
    const std::string g11V2 = "src && dst && srcWidth && srcHeight && (srcStride >= srcWidth) && dstStride && srcHeight > 10 && srcWidth > 10";
    const std::string s16 = "src && dst && width && height && height > 1";
    const std::string s16V2 = "src && dst && srcWidth && srcHeight && srcHeight > 1 && (srcStride >= srcWidth*sizeof(int16_t)) && (dstStride >= srcWidth*sizeof(int16_t))";
    const std::string s32 = "src && dst && width && height && width > 4 && height > 4";
    const std::string s32V2 = "src && dst && srcWidth && srcHeight && srcWidth > 4 && srcHeight > 4 && (srcStride >= srcWidth*sizeof(int32_t)) && (dstStride >= srcWidth*sizeof(int32_t))";
    auto line = [](const char* fn, const std::string& cond) {
        return std::string("Assertion failed @") + fn + ": " + cond + "\n";
    };
    const std::vector<std::string> expected = {
        line("pxrFilterGaussian5x5u8", u8Plain),        line("pxrFilterGaussian5x5u8", u8Plain),
        line("pxrFilterGaussian5x5u8", u8Plain),        line("pxrFilterGaussian5x5u8_v2", u8V2),
        line("pxrFilterGaussian5x5u8_v2", u8V2),        line("pxrFilterGaussian5x5u8_v2", u8V2),
        line("pxrFilterGaussian11x11u8", g11),          line("pxrFilterGaussian11x11u8_v2", g11V2),
        line("pxrFilterGaussian11x11u8_v2", g11V2),     line("pxrFilterGaussian5x5s16", s16),
        line("pxrFilterGaussian5x5s16_v2", s16V2),      line("pxrFilterGaussian5x5s16_v2", s16V2),
        line("pxrFilterGaussian5x5s32", s32),           line("pxrFilterGaussian5x5s32_v2", s32V2)};
    EXPECT_EQ(log.texts(), expected);
    for (const auto& l : log.lines()) {
        EXPECT_EQ(l.tag, "pixora_lib_log");
        EXPECT_EQ(l.priority, 6);
    }
}

TEST(SmoothGaussianContract, ElevenByElevenStridedAcceptsAnyNonZeroDestinationStride) {
    // Its condition asks only for a non-zero destination stride.
    pxr::test::LogCapture log;
    const auto src = randomImg<uint8_t>(12, 11, 8);
    std::vector<uint8_t> dst(12 * 11, 0);
    pxrFilterGaussian11x11u8_v2(src.data(), 12, 11, 12, dst.data(), 11, 0);
    EXPECT_TRUE(log.lines().empty());
}

namespace {

// Gaussian DiffOps: the plain generation on packed rows, the strided one on
// every shape (aligned to the element for the wider types).
template <class T, class Plain, class Strided>
void diffGaussian(const char* name, uint32_t row, Plain plain, Strided strided) {
    const uint32_t bpp = sizeof(T);
    const auto shapes = bpp == 1 ? pxr::test::standardShapes() : alignedShapes(bpp);
    for (int blurBorder : {0, 1}) {
        const std::string suffix = " blurBorder " + std::to_string(blurBorder);
        pxr::test::expectAllKindsMatch(
            pxr::test::unaryOp(std::string(name) + suffix, row, bpp, bpp,
                               [=](GuardedImage& s, GuardedImage& d) {
                                   plain(s.as<T>(), s.width(), s.height(), d.as<T>(), blurBorder);
                               },
                               true),
            shapes);
        pxr::test::expectAllKindsMatch(
            pxr::test::unaryOp(std::string(name) + "_v2" + suffix, row, bpp, bpp,
                               [=](GuardedImage& s, GuardedImage& d) {
                                   strided(s.as<T>(), s.width(), s.height(), s.stride(), d.as<T>(), d.stride(),
                                           blurBorder);
                               }),
            shapes);
    }
}

}  // namespace

TEST(SmoothGaussianDifferential, EveryMemberAndGeneration) {
    diffGaussian<uint8_t>("pxrFilterGaussian5x5u8", PXR_ROW_FilterGaussian5x5u8, pxrFilterGaussian5x5u8,
                          pxrFilterGaussian5x5u8_v2);
    diffGaussian<uint8_t>("pxrFilterGaussian11x11u8", PXR_ROW_FilterGaussian11x11u8, pxrFilterGaussian11x11u8,
                          pxrFilterGaussian11x11u8_v2);
    diffGaussian<int16_t>("pxrFilterGaussian5x5s16", PXR_ROW_FilterGaussian5x5s16, pxrFilterGaussian5x5s16,
                          pxrFilterGaussian5x5s16_v2);
    diffGaussian<int32_t>("pxrFilterGaussian5x5s32", PXR_ROW_FilterGaussian5x5s32, pxrFilterGaussian5x5s32,
                          pxrFilterGaussian5x5s32_v2);
}

#ifdef PIXORA_HAVE_OPENCV
// OpenCV's separable filter gives the same weighted sums (exact in double);
// the shift is ours.
TEST(SmoothGaussianOpenCV, InteriorEqualsWeightedSumShifted) {
    const uint32_t w = 333, h = 207;
    cv::Mat src(h, w, CV_8UC1);
    auto bytes = pxr::test::randomBytes(size_t{w} * h, 91);
    std::copy(bytes.begin(), bytes.end(), src.data);
    cv::Mat smooth;
    cv::GaussianBlur(src, smooth, cv::Size(9, 9), 3.0);  // photograph-like gradients too
    for (int radius : {2, 5}) {
        const auto w1 = pascal(2 * radius);
        cv::Mat k1(1, 2 * radius + 1, CV_64F);
        for (int i = 0; i <= 2 * radius; ++i) k1.at<double>(0, i) = static_cast<double>(w1[i]);
        for (const cv::Mat& img : {src, smooth}) {
            // The separable form sums directly (filter2D may go through a DFT
            // for large kernels, which is not exact).
            cv::Mat sums;
            cv::sepFilter2D(img, sums, CV_64F, k1, k1, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
            std::vector<uint8_t> dst(size_t{w} * h, 0);
            if (radius == 2)
                pxrFilterGaussian5x5u8_v2(img.data, w, h, static_cast<uint32_t>(img.step), dst.data(), w, 0);
            else
                pxrFilterGaussian11x11u8_v2(img.data, w, h, static_cast<uint32_t>(img.step), dst.data(), w, 0);
            const int shift = 4 * radius;
            for (uint32_t y = radius; y + radius < h; ++y)
                for (uint32_t x = radius; x + radius < w; ++x)
                    ASSERT_EQ(dst[y * w + x], static_cast<int64_t>(sums.at<double>(y, x)) >> shift)
                        << radius << ": " << x << "," << y;
        }
    }
}
#endif
