// Gaussian halving (5x5 and 3x3 on bytes, 5x5 on floats) and doubling:
// rounding, the mirrored edges, bad input, and OpenCV's pyrDown and pyrUp.
#include <gtest/gtest.h>

#include <vector>

#include "pixora.h"
#include "support/guarded_image.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

namespace {

std::vector<uint8_t> halve5(const std::vector<uint8_t>& src, uint32_t w, uint32_t h) {
    std::vector<uint8_t> dst((w / 2) * (h / 2), 0xEE);
    pxrScaleDownBy2Gaussian5x5u8_v2(src.data(), w, h, 0, dst.data(), 0);
    return dst;
}

std::vector<uint8_t> halve3(const std::vector<uint8_t>& src, uint32_t w, uint32_t h) {
    std::vector<uint8_t> dst((w / 2) * (h / 2), 0xEE);
    EXPECT_EQ(pxrScaleDownBy2Gaussian3x3u8(src.data(), w, h, 0, dst.data(), 0), 0);
    return dst;
}

std::vector<uint8_t> double5(const std::vector<uint8_t>& src, uint32_t w, uint32_t h) {
    std::vector<uint8_t> dst(4 * w * h, 0xEE);
    pxrScaleUpBy2Gaussian5x5u8_v2(src.data(), w, h, 0, dst.data(), 0);
    return dst;
}

std::vector<uint8_t> impulse(uint32_t w, uint32_t h, uint32_t x, uint32_t y, uint8_t v) {
    std::vector<uint8_t> img(w * h, 0);
    img[y * w + x] = v;
    return img;
}

}  // namespace

TEST(ScaleGaussianGolden, HalvingRoundsHalfUp) {
    // Centre weight 36/256: 36 x 32 / 256 = 4.5 -> 5. At the mirrored edges
    // the impulse weighs 2 x 6 (= 1.5 -> 2) and 2 x 2 (= 0.5 -> 1).
    EXPECT_EQ(halve5(impulse(5, 5, 2, 2, 32), 5, 5), (std::vector<uint8_t>{1, 2, 2, 5}));
    std::vector<uint8_t> plain(4, 0xEE);
    pxrScaleDownBy2Gaussian5x5u8(impulse(5, 5, 2, 2, 32).data(), 5, 5, plain.data());
    EXPECT_EQ(plain, (std::vector<uint8_t>{1, 2, 2, 5}));
    // 3x3: centre weight 4/16: 4 x 6 / 16 = 1.5 -> 2.
    EXPECT_EQ(halve3(impulse(4, 4, 2, 2, 6), 4, 4)[3], 2);
    EXPECT_EQ(halve3(impulse(4, 4, 2, 2, 1), 4, 4)[3], 0);
}

TEST(ScaleGaussianGolden, HalvingMirrorsAboutTheEdgeSample) {
    // Two equal rows 0 16 32 255: outputs centred on columns 0 and 2.
    const std::vector<uint8_t> row = {0, 16, 32, 255};
    std::vector<uint8_t> src = row;
    src.insert(src.end(), row.begin(), row.end());
    // Column 0: taps c b a b c -> 6a + 8b + 2c = 192; column 2: taps a b c d c
    // (column 4 mirrors to 2, not to 3) -> a + 4b + 7c + 4d = 1308.
    EXPECT_EQ(halve5(src, 4, 2), (std::vector<uint8_t>{(16 * 192 + 128) >> 8, (16 * 1308 + 128) >> 8}));
}

TEST(ScaleGaussianGolden, FloatHalvingKeepsTheWeightsExact) {
    std::vector<float> src(25, 0.0f), dst(4, -1.0f);
    src[12] = 256.0f;
    pxrScaleDownBy2Gaussian5x5f32(src.data(), 5, 5, dst.data());
    EXPECT_EQ(dst, (std::vector<float>{4.0f, 12.0f, 12.0f, 36.0f}));
    std::vector<float> flat(9 * 6, 3.25f), out(4 * 3, -1.0f);
    pxrScaleDownBy2Gaussian5x5f32_v2(flat.data(), 9, 6, 0, out.data(), 0);
    EXPECT_EQ(out, std::vector<float>(12, 3.25f));
}

TEST(ScaleGaussianGolden, DoublingInterpolatesWithRounding) {
    // Impulse 8 at (1,1) of 3x3: co-sited output 36 x 8 / 64 = 4.5 -> 5; half
    // a step right 24 x 8 / 64 = 3; diagonal 16 x 8 / 64 = 2.
    const auto out = double5(impulse(3, 3, 1, 1, 8), 3, 3);
    EXPECT_EQ(out[2 * 6 + 2], 5);
    EXPECT_EQ(out[2 * 6 + 3], 3);
    EXPECT_EQ(out[3 * 6 + 3], 2);
    EXPECT_EQ(double5({77}, 1, 1), std::vector<uint8_t>(4, 77));
    std::vector<uint8_t> plain(36, 0xEE);
    pxrScaleUpBy2Gaussian5x5u8(impulse(3, 3, 1, 1, 8).data(), 3, 3, plain.data());
    EXPECT_EQ(plain, out);
}

TEST(ScaleGaussianGolden, DoublingMirrorsTheLastColumnToo) {
    // [0 200]: the sample half a step past the last one mirrors back onto
    // the mean of the last two (100), not onto the last pixel.
    const auto out = double5({0, 200}, 2, 1);
    const std::vector<uint8_t> row = {50, 100, 150, 100};
    EXPECT_EQ(std::vector<uint8_t>(out.begin(), out.begin() + 4), row);
    EXPECT_EQ(std::vector<uint8_t>(out.begin() + 4, out.end()), row);
}

TEST(ScaleGaussianContract, BadInput) {
    pxr::test::LogCapture log;
    std::vector<uint8_t> src(64, 1), dst(256, 0xEE);
    pxrScaleDownBy2Gaussian5x5u8_v2(src.data(), 1, 8, 0, dst.data(), 0);
    pxrScaleDownBy2Gaussian5x5u8(src.data(), 8, 1, dst.data());
    pxrScaleUpBy2Gaussian5x5u8_v2(src.data(), 8, 8, 0, dst.data(), 15);  // below 2 x 8
    pxrScaleDownBy2Gaussian5x5f32_v2(reinterpret_cast<const float*>(src.data()), 4, 4, 15, nullptr, 0);
    EXPECT_EQ(log.lines().size(), 4u);
    EXPECT_TRUE(log.contains("Assertion failed @pxrScaleUpBy2Gaussian5x5u8_v2: src && dst && srcWidth && srcHeight "
                             "&& (srcStride >= srcRow) && (dstStride >= dstRow)\n"));
    EXPECT_EQ(pxrScaleDownBy2Gaussian3x3u8(src.data(), 8, 8, 0, nullptr, 0), PIXORA_STATUS_BAD_PARAM);
    EXPECT_EQ(pxrScaleDownBy2Gaussian3x3u8(src.data(), 1, 8, 0, dst.data(), 0), PIXORA_STATUS_BAD_PARAM);
    EXPECT_EQ(log.lines().size(), 4u);
    EXPECT_EQ(dst, std::vector<uint8_t>(256, 0xEE));
}

#ifdef PIXORA_HAVE_OPENCV
TEST(ScaleOpenCV, GaussianHalvingIsPyrDown) {
    // pyrDown mirrors (BORDER_REFLECT_101) and rounds as the halving does:
    // the whole image agrees, edges included, for even and odd sizes.
    for (auto [w, h] : {std::pair{64u, 48u}, std::pair{101u, 37u}}) {
        const auto src = pxr::test::randomBytes(w * h, 12);
        cv::Mat ref;
        cv::pyrDown(cv::Mat(static_cast<int>(h), static_cast<int>(w), CV_8UC1, const_cast<uint8_t*>(src.data())), ref,
                    cv::Size(static_cast<int>(w / 2), static_cast<int>(h / 2)));
        EXPECT_EQ(halve5(src, w, h), std::vector<uint8_t>(ref.data, ref.data + ref.total())) << w << "x" << h;
    }
}

#endif
