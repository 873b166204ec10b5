// The box filters on bytes and the float box mean: fixed-point rounding,
// the three border rules, bad input, every kind against the reference, and
// OpenCV's box sums.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "filters_smooth_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;
using namespace pxr::test::smooth;

namespace {

Img<uint8_t> box3(const Img<uint8_t>& src, pxrBorderType type, uint8_t value) {
    Img<uint8_t> dst(src.w, src.h, 0xEE);
    EXPECT_EQ(pxrBoxFilter3x3u8_v2(src.data(), src.w, src.h, 0, dst.data(), 0, type, value), 0);
    return dst;
}

uint8_t mean3(uint32_t sum) { return boxRoundModel(sum, 7282); }

}  // namespace

TEST(SmoothBoxGolden, FixedPointMeanRoundsToNearest) {
    // 3x3 window summing to 5: 5 x 7282 = 36410, + 32768 -> 1 (truncation would give 0).
    Img<uint8_t> src(3, 3, 0);
    src.at(1, 1) = 5;
    EXPECT_EQ(box3(src, PIXORA_BORDER_DEFAULT, 0).at(1, 1), 1);
    src.at(1, 1) = 4;  // 29128 + 32768 < 65536 -> 0
    EXPECT_EQ(box3(src, PIXORA_BORDER_DEFAULT, 0).at(1, 1), 0);
    // Every uniform interior keeps its value at each size, 255 included.
    for (uint8_t v : {uint8_t{1}, uint8_t{128}, uint8_t{255}}) {
        Img<uint8_t> flat(13, 12, v), d3(13, 12, 0), d5(13, 12, 0), d11(13, 12, 0);
        pxrBoxFilter3x3u8(flat.data(), 13, 12, d3.data());
        pxrBoxFilter5x5u8(flat.data(), 13, 12, d5.data());
        pxrBoxFilter11x11u8(flat.data(), 13, 12, d11.data());
        EXPECT_EQ(d3.at(6, 6), v);
        EXPECT_EQ(d5.at(6, 6), v);
        EXPECT_EQ(d11.at(6, 6), v);
    }
}

TEST(SmoothBoxBorder, EachRulePadsCornersAndEdges) {
    // Default: zero outside (a corner of a uniform image has 4 of 9 taps inside).
    Img<uint8_t> src(6, 5, 200);
    auto out = box3(src, PIXORA_BORDER_DEFAULT, 99);
    EXPECT_EQ(out.at(0, 0), mean3(4 * 200));
    EXPECT_EQ(out.at(3, 0), mean3(6 * 200));
    EXPECT_EQ(out.at(3, 2), 200);
    // The plain generation is border type 0 with value 0.
    Img<uint8_t> plain(6, 5, 0xEE);
    const auto rnd = randomImg<uint8_t>(6, 5, 12);
    pxrBoxFilter3x3u8(rnd.data(), 6, 5, plain.data());
    EXPECT_EQ(plain.px, box3(rnd, PIXORA_BORDER_DEFAULT, 0).px);
    EXPECT_EQ(plain.px, box3(rnd, PIXORA_BORDER_CONSTANT, 0).px);
    // Constant: the border value outside.
    out = box3(Img<uint8_t>(6, 5, 100), PIXORA_BORDER_CONSTANT, 50);
    EXPECT_EQ(out.at(5, 4), mean3(4 * 100 + 5 * 50));
    EXPECT_EQ(out.at(2, 0), mean3(6 * 100 + 3 * 50));
    // Replicate: corner 160, right 16, below 32, diagonal 48 weigh 4, 2, 2, 1.
    Img<uint8_t> quad(2, 2);
    quad.px = {160, 16, 32, 48};
    out = box3(quad, PIXORA_BORDER_REPLICATE, 0);
    EXPECT_EQ(out.at(0, 0), mean3(4 * 160 + 2 * (16 + 32) + 48));
    EXPECT_EQ(out.at(1, 1), mean3(4 * 48 + 2 * (16 + 32) + 160));
}

TEST(SmoothBoxBadInput, StatusGenerationReturnsThreeSilentlyAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8), dst(8, 8);
    auto v2 = [&](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds, uint32_t type) {
        return pxrBoxFilter3x3u8_v2(s, w, h, ss, d, ds, static_cast<pxrBorderType>(type), 0);
    };
    EXPECT_EQ(v2(src.data(), 8, 8, 8, dst.data(), 8, 3), 3);
    EXPECT_EQ(v2(src.data(), 8, 8, 8, dst.data(), 8, 0x80000000u), 3);
    EXPECT_EQ(v2(nullptr, 8, 8, 8, dst.data(), 8, 0), 3);
    EXPECT_EQ(v2(src.data(), 8, 8, 8, nullptr, 8, 0), 3);
    EXPECT_EQ(v2(src.data(), 0, 8, 8, dst.data(), 8, 0), 3);
    EXPECT_EQ(v2(src.data(), 8, 0, 8, dst.data(), 8, 0), 3);
    EXPECT_EQ(v2(src.data(), 8, 8, 7, dst.data(), 8, 0), 3);
    EXPECT_EQ(v2(src.data(), 8, 8, 8, dst.data(), 7, 0), 3);
    EXPECT_TRUE(dst.untouched());
    EXPECT_TRUE(log.lines().empty());
}

TEST(SmoothBoxBadInput, PlainGenerationsLogTheConditionAndWriteNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(16, 16), dst(16, 16);
    pxrBoxFilter3x3u8(src.data(), 2, 16, dst.data());
    pxrBoxFilter3x3u8(src.data(), 16, 2, dst.data());
    pxrBoxFilter3x3u8(nullptr, 16, 16, dst.data());
    pxrBoxFilter5x5u8(src.data(), 4, 16, dst.data());
    pxrBoxFilter5x5u8(src.data(), 16, 16, nullptr);
    pxrBoxFilter11x11u8(src.data(), 16, 10, dst.data());
    EXPECT_TRUE(dst.untouched());
    const std::string b3 =
        "Assertion failed @pxrBoxFilter3x3u8: src && dst && srcWidth && srcHeight && srcStride && dstStride && ( "
        "srcStride >=srcWidth ) && srcWidth > 2 && srcHeight > 2\n";
    const std::string b5 =
        "Assertion failed @pxrBoxFilter5x5u8: src && dst && srcWidth && srcHeight && srcWidth > 4 && srcHeight > 4\n";
    const std::string b11 =
        "Assertion failed @pxrBoxFilter11x11u8: src && dst && srcWidth && srcHeight && srcWidth > 10 && srcHeight > "
        "10\n";
    EXPECT_EQ(log.texts(), (std::vector<std::string>{b3, b3, b3, b5, b5, b11}));
    for (const auto& l : log.lines()) {
        EXPECT_EQ(l.tag, "pixora_lib_log");
        EXPECT_EQ(l.priority, 6);
    }
}

TEST(SmoothBoxDifferential, BytesEveryMemberAndBorderRule) {
    for (auto type : {PIXORA_BORDER_DEFAULT, PIXORA_BORDER_CONSTANT, PIXORA_BORDER_REPLICATE}) {
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            "pxrBoxFilter3x3u8_v2 border " + std::to_string(type), PXR_ROW_BoxFilter3x3u8_v2, 1, 1,
            [type](GuardedImage& s, GuardedImage& d) {
                EXPECT_EQ(pxrBoxFilter3x3u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(),
                                               type, 201),
                          0);
            }));
    }
    using Plain = void (*)(const uint8_t*, uint32_t, uint32_t, uint8_t*);
    const std::tuple<const char*, uint32_t, Plain> plain[] = {
        {"pxrBoxFilter3x3u8", PXR_ROW_BoxFilter3x3u8, pxrBoxFilter3x3u8},
        {"pxrBoxFilter5x5u8", PXR_ROW_BoxFilter5x5u8, pxrBoxFilter5x5u8},
        {"pxrBoxFilter11x11u8", PXR_ROW_BoxFilter11x11u8, pxrBoxFilter11x11u8}};
    for (const auto& [name, row, fn] : plain)
        pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
            name, row, 1, 1,
            [fn](GuardedImage& s, GuardedImage& d) { fn(s.data(), s.width(), s.height(), d.data()); }, true));
}

// ---- Float box mean ----

namespace {

Img<float> boxF32(const Img<float>& src, uint32_t n) {
    Img<float> dst(src.w, src.h, -1.0f);
    pxrBoxFilterNxNf32(src.data(), src.w, src.h, 0, n, dst.data(), 0);
    return dst;
}


}  // namespace

TEST(SmoothBoxF32Golden, MeanOverTheCroppedWindow) {
    Img<float> src(5, 5, 0.0f);
    for (uint32_t i = 0; i < 25; ++i) src.px[i] = static_cast<float>(i);
    auto out = boxF32(src, 3);
    // Corner: pixels 0, 1, 5, 6 summed down, then across, divided by 4.
    EXPECT_EQ(out.at(0, 0), ((0.0f + 5.0f) + (1.0f + 6.0f)) / 4.0f);
    // Edge: six pixels; interior: nine.
    EXPECT_EQ(out.at(2, 0), ((1.0f + 6.0f) + (2.0f + 7.0f) + (3.0f + 8.0f)) / 6.0f);
    EXPECT_EQ(out.at(2, 2), 12.0f);  // 108 / 9
    // Even N: the window is [x - N/2, x + N/2 - 1].
    auto even = boxF32(src, 2);
    EXPECT_EQ(even.at(0, 0), 0.0f);
    EXPECT_EQ(even.at(1, 1), 3.0f);  // (0 + 5 + 1 + 6) / 4
    EXPECT_EQ(even.at(4, 0), 3.5f);
    // A window larger than the image is the mean of the whole image.
    auto all = boxF32(src, 99);
    EXPECT_EQ(all.at(3, 1), 12.0f);  // 300 / 25
}

TEST(SmoothBoxF32Contract, InPlaceEqualsOutOfPlace) {
    for (uint32_t n : {2u, 40u}) {
        const auto src = randomFloatImg(31, 17, n);
        auto expect = boxF32(src, n);
        // In place with slack in the rows.
        const uint32_t stride = 31 * 4 + 12;
        std::vector<uint8_t> buf(size_t{stride} * 17, 0xAB);
        for (uint32_t y = 0; y < 17; ++y) std::memcpy(&buf[size_t{y} * stride], &src.px[size_t{y} * 31], 31 * 4);
        auto* img = reinterpret_cast<float*>(buf.data());
        pxrBoxFilterNxNf32(img, 31, 17, stride, n, img, stride);
        for (uint32_t y = 0; y < 17; ++y)
            ASSERT_EQ(std::memcmp(&buf[size_t{y} * stride], &expect.px[size_t{y} * 31], 31 * 4), 0) << n << " row " << y;
        EXPECT_EQ(buf[31 * 4], 0xAB) << "slack untouched";
    }
}

TEST(SmoothBoxF32BadInput, LogsTheConditionAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8, 4), dst(8, 8, 4);
    auto* s = src.as<float>();
    auto* d = dst.as<float>();
    pxrBoxFilterNxNf32(s, 8, 8, 32, 1, d, 32);
    pxrBoxFilterNxNf32(s, 4, 8, 32, 3, d, 32);
    pxrBoxFilterNxNf32(s, 8, 4, 32, 3, d, 32);
    pxrBoxFilterNxNf32(s, 8, 8, 31, 3, d, 32);
    pxrBoxFilterNxNf32(s, 8, 8, 32, 3, d, 28);
    pxrBoxFilterNxNf32(nullptr, 8, 8, 32, 3, d, 32);
    pxrBoxFilterNxNf32(d, 8, 8, 32, 3, d, 36);  // in place needs equal strides
    EXPECT_TRUE(dst.untouched());
    const std::string text =
        "Assertion failed @pxrBoxFilterNxNf32: src && dst && srcWidth && srcHeight && (N > 1) && ((src == dst && "
        "srcStride == dstStride) || (src != dst)) && (srcStride >=srcWidth*4) && (dstStride >=srcWidth*4) && "
        "srcWidth > 4 && srcHeight > 4\n";
    EXPECT_EQ(log.texts(), std::vector<std::string>(7, text));
}

TEST(SmoothBoxF32Differential, EveryKindMatchesTheReferenceAlsoInPlace) {
    for (uint32_t n : {2u, 3u, 8u, 21u}) {
        pxr::test::DiffOp op = pxr::test::unaryOp(
            "pxrBoxFilterNxNf32 N " + std::to_string(n), PXR_ROW_BoxFilterNxNf32, 4, 4,
            [n](GuardedImage& s, GuardedImage& d) {
                GuardedImage finite = finiteCopy(s);
                pxrBoxFilterNxNf32(finite.as<float>(), s.width(), s.height(), s.stride(), n, d.as<float>(),
                                   d.stride());
            });
        pxr::test::expectAllKindsMatch(op, alignedShapes(4));
    }
    pxr::test::DiffOp op;
    op.name = "pxrBoxFilterNxNf32 in place";
    op.row = PXR_ROW_BoxFilterNxNf32;
    op.inputs = [](const pxr::test::Shape&) { return std::vector<pxr::test::PlaneSpec>{}; };
    op.outputs = [](const pxr::test::Shape& s) { return std::vector<pxr::test::PlaneSpec>{{s.width, s.height, 4}}; };
    op.call = [](std::vector<GuardedImage>&, std::vector<GuardedImage>& out) {
        makeFinite(out[0]);
        float* p = out[0].as<float>();
        pxrBoxFilterNxNf32(p, out[0].width(), out[0].height(), out[0].stride(), 4, p, out[0].stride());
    };
    pxr::test::expectAllKindsMatch(op, alignedShapes(4));
}

#ifdef PIXORA_HAVE_OPENCV
// OpenCV's unnormalised box filter gives the sums before our rounding; its
// constant border is zero, so the border value is padded on beforehand.
TEST(SmoothBoxOpenCV, SumsBeforeRoundingMatchEveryRuleAndSize) {
    const int w = 203, h = 117;
    cv::Mat src(h, w, CV_8UC1);
    auto bytes = pxr::test::randomBytes(size_t{w} * h, 43);
    std::copy(bytes.begin(), bytes.end(), src.data);
    auto sums = [&](int n, int cvBorder, int value) {
        const int r = n / 2;
        cv::Mat padded, out;
        cv::copyMakeBorder(src, padded, r, r, r, r, cvBorder, cv::Scalar(value));
        cv::boxFilter(padded, out, CV_32F, cv::Size(n, n), cv::Point(-1, -1), false, cv::BORDER_CONSTANT);
        return cv::Mat(out, cv::Rect(r, r, w, h)).clone();
    };
    auto check = [&](const std::vector<uint8_t>& ours, const cv::Mat& s, uint32_t multiplier, const char* what) {
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                ASSERT_EQ(ours[size_t(y) * w + x], boxRoundModel(static_cast<uint32_t>(s.at<float>(y, x)), multiplier))
                    << what << " at " << x << "," << y;
    };
    std::vector<uint8_t> dst(size_t{w} * h);
    pxrBoxFilter3x3u8_v2(src.data, w, h, 0, dst.data(), 0, PIXORA_BORDER_DEFAULT, 0);
    check(dst, sums(3, cv::BORDER_CONSTANT, 0), 7282, "3x3 default");
    pxrBoxFilter3x3u8_v2(src.data, w, h, 0, dst.data(), 0, PIXORA_BORDER_CONSTANT, 173);
    check(dst, sums(3, cv::BORDER_CONSTANT, 173), 7282, "3x3 constant");
    pxrBoxFilter3x3u8_v2(src.data, w, h, 0, dst.data(), 0, PIXORA_BORDER_REPLICATE, 0);
    check(dst, sums(3, cv::BORDER_REPLICATE, 0), 7282, "3x3 replicate");
    pxrBoxFilter5x5u8(src.data, w, h, dst.data());
    check(dst, sums(5, cv::BORDER_CONSTANT, 0), 2621, "5x5");
    pxrBoxFilter11x11u8(src.data, w, h, dst.data());
    check(dst, sums(11, cv::BORDER_CONSTANT, 0), 542, "11x11");
}

#endif
