// Resampling to a given size: nearest neighbour, bilinear, exact area and
// the M-by-N count tables. Goldens from the definitions, agreement between
// members that must coincide, bad input, and OpenCV where it computes the
// same thing.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "imgproc/scale/scale_mn_kernels.h"
#include "pixora.h"
#include "support/guarded_image.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

namespace {

using Resize = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t, uint32_t, uint32_t);

std::vector<uint8_t> resize(Resize fn, const std::vector<uint8_t>& src, uint32_t w, uint32_t h, uint32_t dw,
                            uint32_t dh) {
    std::vector<uint8_t> dst(size_t{dw} * dh, 0xEE);
    fn(src.data(), w, h, 0, dst.data(), dw, dh, 0);
    return dst;
}

std::vector<uint8_t> scaleV2(const std::vector<uint8_t>& src, uint32_t w, uint32_t h, uint32_t dw, uint32_t dh,
                             pxrInterpolationType interpolation, int* status = nullptr) {
    std::vector<uint8_t> dst(size_t{dw} * dh, 0xEE);
    const int rc = pxrScaleu8_v2(src.data(), w, h, 0, dst.data(), dw, dh, 0, interpolation);
    if (status) *status = rc;
    return dst;
}

void mn(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t dw, uint32_t dh,
        uint32_t ds) {
    EXPECT_EQ(pxrScaleDownMNu8(src, w, h, ss, dst, dw, dh, ds), 0);
}
void bilinear(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t dw, uint32_t dh,
              uint32_t ds) {
    EXPECT_EQ(pxrScaleu8(src, w, h, ss, dst, dw, dh, ds), 0);
}

std::vector<uint32_t> countTable(uint32_t src, uint32_t dst) {
    std::vector<uint32_t> t(dst, 0);
    pxr::scale::mn::buildCountTable(src, dst, t.data());
    return t;
}

}  // namespace

TEST(ScaleMNGolden, CountTableForAwkwardRatios) {
    EXPECT_EQ(countTable(7, 3), (std::vector<uint32_t>{3, 2, 2}));
    EXPECT_EQ(countTable(5, 5), (std::vector<uint32_t>(5, 1)));
    EXPECT_EQ(countTable(1920, 640), (std::vector<uint32_t>(640, 3)));
    EXPECT_EQ(countTable(13, 1), std::vector<uint32_t>{13});
}

TEST(ScaleMNGolden, BlocksFollowTheTableAndRound) {
    // One row of 7 to 3: blocks {10 20 30}, {40 50}, {60 71}.
    const std::vector<uint8_t> row = {10, 20, 30, 40, 50, 60, 71};
    EXPECT_EQ(resize(mn, row, 7, 1, 3, 1), (std::vector<uint8_t>{20, 45, 66}));  // 131/2 = 65.5 -> 66
    // 7 x 7 to 3 x 3: row blocks of 3, 2, 2 as well.
    std::vector<uint8_t> img(49);
    for (uint32_t y = 0; y < 7; ++y)
        for (uint32_t x = 0; x < 7; ++x) img[y * 7 + x] = static_cast<uint8_t>(10 * y + x);
    const auto out = resize(mn, img, 7, 7, 3, 3);
    // Block (1, 2): rows 5-6, columns 3-4: mean of 53 54 63 64 = 58.5 -> 59.
    EXPECT_EQ(out[2 * 3 + 1], 59);
    EXPECT_EQ(out[0], 11);  // rows 0-2, columns 0-2: mean 11
}

TEST(ScaleMNGolden, InterleavedAveragesEachChannel) {
    // Four CbCr pairs to two: (1,200),(3,100) and (5,0),(8,1).
    const std::vector<uint8_t> src = {1, 200, 3, 100, 5, 0, 8, 1};
    std::vector<uint8_t> dst(4, 0xEE);
    EXPECT_EQ(pxrScaleDownMNInterleaveu8(src.data(), 4, 1, 0, dst.data(), 2, 1, 0), 0);
    EXPECT_EQ(dst, (std::vector<uint8_t>{2, 150, 7, 1}));  // 6.5 -> 7, 0.5 -> 1
}

TEST(ScaleAreaGolden, AreaCoincidesWithTheBlockMembers) {
    const uint32_t w = 48, h = 30;
    const auto src = pxr::test::randomBytes(w * h, 21);
    // Whole-number ratios: area averaging is the M-by-N block mean.
    EXPECT_EQ(resize(pxrScaleDownu8_v2, src, w, h, 16, 10), resize(mn, src, w, h, 16, 10));
    EXPECT_EQ(resize(pxrScaleDownu8_v2, src, w, h, 12, 15), resize(mn, src, w, h, 12, 15));
    // 3:2 is the fixed-ratio reduction.
    std::vector<uint8_t> fixed(32 * 20, 0xEE);
    pxrScaleDown3To2u8(src.data(), w, h, 0, fixed.data(), 0);
    EXPECT_EQ(resize(pxrScaleDownu8_v2, src, w, h, 32, 20), fixed);
    // The same size is a copy.
    EXPECT_EQ(resize(pxrScaleDownu8_v2, src, w, h, w, h), src);
    std::vector<uint8_t> plain(16 * 10, 0xEE);
    pxrScaleDownu8(src.data(), w, h, plain.data(), 16, 10);
    EXPECT_EQ(plain, resize(mn, src, w, h, 16, 10));
}

TEST(ScaleAreaGolden, FractionalFootprintsWeighTheirOverlap) {
    // 5 to 2: output 0 covers pixels 0, 1 and half of 2.
    const std::vector<uint8_t> row = {10, 20, 100, 40, 51};
    // (2 x 10 + 2 x 20 + 1 x 100) / 5 = 32; (100 + 2 x 40 + 2 x 51) / 5 = 56.4 -> 56
    EXPECT_EQ(resize(pxrScaleDownu8_v2, row, 5, 1, 2, 1), (std::vector<uint8_t>{32, 56}));
}

TEST(ScaleNearestGolden, PicksThePixelUnderTheCentre) {
    const std::vector<uint8_t> row = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(resize(pxrScaleDownNNu8, row, 9, 1, 3, 1), (std::vector<uint8_t>{1, 4, 7}));
    EXPECT_EQ(resize(pxrScaleDownNNu8, row, 8, 1, 4, 1), (std::vector<uint8_t>{1, 3, 5, 7}));
    EXPECT_EQ(resize(pxrScaleDownNNu8, row, 9, 1, 9, 1), row);
    // Enlarging (pxrScaleu8_v2 only) repeats pixels; the centre of output 2
    // (source 1.0) lies on the boundary and takes the pixel to its right.
    EXPECT_EQ(scaleV2({5, 9}, 2, 1, 5, 1, PIXORA_INTERPOLATION_NEAREST), (std::vector<uint8_t>{5, 5, 9, 9, 9}));
}

TEST(ScaleBilinearGolden, CentreAlignedWithOneRounding) {
    // 2 to 1: position 0.5, the mean rounded half up.
    EXPECT_EQ(resize(bilinear, {10, 21}, 2, 1, 1, 1), std::vector<uint8_t>{16});
    // 2 x 2 to 1 x 1: the mean of four, one rounding: 37 / 4 = 9.25 -> 9.
    EXPECT_EQ(resize(bilinear, {0, 10, 12, 15}, 2, 2, 1, 1), std::vector<uint8_t>{9});
    // 3 to 2: positions 0.25 and 1.75 (weights 96/32 and 32/96 of 128).
    EXPECT_EQ(resize(bilinear, {0, 128, 255}, 3, 1, 2, 1), (std::vector<uint8_t>{32, 223}));
    // Enlarging: before the first centre and after the last the edge pixel.
    EXPECT_EQ(resize(bilinear, {40, 80}, 2, 1, 4, 1), (std::vector<uint8_t>{40, 50, 70, 80}));
    const auto src = pxr::test::randomBytes(30 * 20, 5);
    EXPECT_EQ(resize(bilinear, src, 30, 20, 30, 20), src);
    EXPECT_EQ(resize(pxrScaleDownBLu8, src, 30, 20, 17, 9), resize(bilinear, src, 30, 20, 17, 9));
}

TEST(ScaleInterpolation, SecondGenerationChoosesTheMember) {
    const uint32_t w = 37, h = 23;
    const auto src = pxr::test::randomBytes(w * h, 8);
    EXPECT_EQ(scaleV2(src, w, h, 20, 9, PIXORA_INTERPOLATION_NEAREST), resize(pxrScaleDownNNu8, src, w, h, 20, 9));
    EXPECT_EQ(scaleV2(src, w, h, 20, 9, PIXORA_INTERPOLATION_BILINEAR), resize(bilinear, src, w, h, 20, 9));
    EXPECT_EQ(scaleV2(src, w, h, 20, 9, PIXORA_INTERPOLATION_AREA), resize(pxrScaleDownu8_v2, src, w, h, 20, 9));
    // Area enlarging in either direction is bilinear.
    EXPECT_EQ(scaleV2(src, w, h, 50, 9, PIXORA_INTERPOLATION_AREA), resize(bilinear, src, w, h, 50, 9));
    int status = -1;
    EXPECT_EQ(scaleV2(src, w, h, 20, 9, static_cast<pxrInterpolationType>(3), &status),
              std::vector<uint8_t>(20 * 9, 0xEE));
    EXPECT_EQ(status, PIXORA_STATUS_BAD_PARAM);
}

TEST(ScaleResampleContract, ReductionsRefuseLargerOutputs) {
    pxr::test::LogCapture log;
    std::vector<uint8_t> src(64, 3), dst(128, 0xEE);
    for (Resize fn : {pxrScaleDownNNu8, pxrScaleDownBLu8, pxrScaleDownu8_v2})
        fn(src.data(), 8, 8, 0, dst.data(), 9, 4, 0);
    pxrScaleDownu8(src.data(), 8, 8, dst.data(), 4, 0);
    EXPECT_EQ(dst, std::vector<uint8_t>(128, 0xEE));
    EXPECT_EQ(log.lines().size(), 4u);
    EXPECT_TRUE(log.contains("Assertion failed @pxrScaleDownNNu8: src && dst && srcWidth && srcHeight && dstWidth && "
                             "dstHeight && (dstWidth <= srcWidth) && (dstHeight <= srcHeight) && (srcStride >= "
                             "srcWidth) && (dstStride >= dstWidth)\n"));
    log.clear();
    // The status members say 3 and log nothing.
    EXPECT_EQ(pxrScaleDownMNu8(src.data(), 8, 8, 0, dst.data(), 9, 4, 0), PIXORA_STATUS_BAD_PARAM);
    EXPECT_EQ(pxrScaleDownMNInterleaveu8(src.data(), 4, 8, 7, dst.data(), 2, 4, 0), PIXORA_STATUS_BAD_PARAM);
    EXPECT_EQ(pxrScaleu8(src.data(), 8, 8, 0, nullptr, 4, 4, 0), PIXORA_STATUS_BAD_PARAM);
    EXPECT_EQ(pxrScaleu8(src.data(), 8, 8, 0, dst.data(), 4, 4, 3), PIXORA_STATUS_BAD_PARAM);
    EXPECT_EQ(dst, std::vector<uint8_t>(128, 0xEE));
    EXPECT_TRUE(log.lines().empty());
}

#ifdef PIXORA_HAVE_OPENCV
namespace {
cv::Mat asMat(const std::vector<uint8_t>& v, uint32_t w, uint32_t h) {
    return cv::Mat(static_cast<int>(h), static_cast<int>(w), CV_8UC1, const_cast<uint8_t*>(v.data()));
}
}  // namespace

TEST(ScaleOpenCV, AreaMatchesInterAreaForWholeRatios) {
    const uint32_t w = 96, h = 60;
    const auto src = pxr::test::randomBytes(w * h, 4);
    for (uint32_t n : {2u, 3u}) {
        cv::Mat ref;
        cv::resize(asMat(src, w, h), ref, cv::Size(static_cast<int>(w / n), static_cast<int>(h / n)), 0, 0,
                   cv::INTER_AREA);
        const auto ours = resize(mn, src, w, h, w / n, h / n);
        EXPECT_EQ(ours, std::vector<uint8_t>(ref.data, ref.data + ref.total())) << n;
        EXPECT_EQ(resize(pxrScaleDownu8_v2, src, w, h, w / n, h / n), ours) << n;
    }
}

#endif
