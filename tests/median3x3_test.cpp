// The 3x3 median: exact medians, untouched borders, the border types of the
// status generation, bad input, and OpenCV's medianBlur on the interior.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "pixora.h"
#include "support/guarded_image.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

namespace {

uint8_t naiveMedian(const std::vector<uint8_t>& src, uint32_t w, uint32_t x, uint32_t y) {
    std::vector<uint8_t> taps;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) taps.push_back(src[(y + dy) * w + (x + dx)]);
    std::sort(taps.begin(), taps.end());
    return taps[4];
}

}  // namespace

TEST(Median3x3Golden, InteriorIsTheExactMedianAndBorderIsUntouched) {
    const uint32_t w = 37, h = 19;
    // Few grey levels make many ties, which is where sorting networks slip.
    auto src = pxr::test::randomBytes(w * h, 11);
    for (auto& v : src) v %= 4;
    std::vector<uint8_t> dst(w * h, 0xEE);
    pxrFilterMedian3x3u8_v2(src.data(), w, h, 0, dst.data(), 0);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) {
            if (x == 0 || y == 0 || x + 1 == w || y + 1 == h)
                ASSERT_EQ(dst[y * w + x], 0xEE);
            else
                ASSERT_EQ(dst[y * w + x], naiveMedian(src, w, x, y)) << x << "," << y;
        }
    std::vector<uint8_t> plain(w * h, 0xEE);
    pxrFilterMedian3x3u8(src.data(), w, h, plain.data());
    EXPECT_EQ(plain, dst);
}

TEST(Median3x3Border, ConstantAndReplicate) {
    std::vector<uint8_t> src(4 * 4, 100);
    std::vector<uint8_t> dst(src.size(), 0);
    // Corner: 5 outside taps of value 0 against 4 of 100 -> 0; edge: 3 outside -> 100.
    EXPECT_EQ(pxrFilterMedian3x3u8_v3(src.data(), 4, 4, 0, dst.data(), 0, PIXORA_BORDER_CONSTANT, 0), 0);
    EXPECT_EQ(dst[0], 0);
    EXPECT_EQ(dst[1], 100);
    EXPECT_EQ(dst[5], 100);
    EXPECT_EQ(pxrFilterMedian3x3u8_v3(src.data(), 4, 4, 0, dst.data(), 0, PIXORA_BORDER_REPLICATE, 0), 0);
    EXPECT_EQ(dst, src);
    std::fill(dst.begin(), dst.end(), 0);
    EXPECT_EQ(pxrFilterMedian3x3u8_v3(src.data(), 4, 4, 0, dst.data(), 0, PIXORA_BORDER_DEFAULT, 0), 0);
    EXPECT_EQ(dst, src);
}

TEST(Median3x3BadInput, StatusAndAssertion) {
    pxr::test::LogCapture log;
    pxr::test::GuardedImage src(8, 8), dst(8, 8);
    EXPECT_EQ(pxrFilterMedian3x3u8_v3(src.data(), 8, 8, 8, dst.data(), 8, static_cast<pxrBorderType>(3), 0), 3);
    EXPECT_EQ(pxrFilterMedian3x3u8_v3(nullptr, 8, 8, 8, dst.data(), 8, PIXORA_BORDER_CONSTANT, 0), 3);
    EXPECT_EQ(pxrFilterMedian3x3u8_v3(src.data(), 0, 8, 8, dst.data(), 8, PIXORA_BORDER_CONSTANT, 0), 3);
    EXPECT_TRUE(log.lines().empty());
    pxrFilterMedian3x3u8_v2(src.data(), 8, 8, 4, dst.data(), 8);
    pxrFilterMedian3x3u8(src.data(), 8, 8, nullptr);
    EXPECT_TRUE(dst.untouched());
    EXPECT_EQ(log.texts(), (std::vector<std::string>{
                               "Assertion failed @pxrFilterMedian3x3u8_v2: src && dst && srcWidth && srcHeight && "
                               "(srcStride >= srcWidth) && (dstStride >= srcWidth)\n",
                               "Assertion failed @pxrFilterMedian3x3u8: src && dst && width && height\n"}));
}

#ifdef PIXORA_HAVE_OPENCV
TEST(Median3x3OpenCV, InteriorEqualsMedianBlur) {
    const int w = 257, h = 131;
    cv::Mat src(h, w, CV_8UC1);
    auto bytes = pxr::test::randomBytes(size_t(w) * h, 21);
    std::copy(bytes.begin(), bytes.end(), src.data);
    cv::Mat expected;
    cv::medianBlur(src, expected, 3);
    std::vector<uint8_t> dst(size_t(w) * h, 0);
    pxrFilterMedian3x3u8_v2(src.data, w, h, static_cast<uint32_t>(src.step), dst.data(), w);
    for (int y = 1; y + 1 < h; ++y)
        for (int x = 1; x + 1 < w; ++x) ASSERT_EQ(dst[y * w + x], expected.at<uint8_t>(y, x)) << x << "," << y;
}
#endif
