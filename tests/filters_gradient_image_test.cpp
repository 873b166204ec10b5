// Central-difference, Sobel and Scharr gradients: placement of the packed
// (width-2) x (height-2) output, hand-computed goldens, generations and bad
// input, every kind against kind 0, and OpenCV's filter2D.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "filters_gradient_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;
using pxr::test::gradient::gradientOp;

namespace {

// 5 x 4 source; its interior is columns 1..3 of rows 1..2.
const std::vector<uint8_t> kHand = {10, 20, 30, 40, 50,  //
                                    11, 23, 37, 41, 59,  //
                                    90, 80, 70, 60, 50,  //
                                    1,  2,  3,  4,  5};

// A 3 x 3 image: its only interior pixel is the centre.
std::vector<int16_t> sobelCentre(const std::vector<uint8_t>& img) {
    std::vector<int16_t> g(2, 0x5555);
    pxrImageGradientSobelInterleaveds16_v2(img.data(), 3, 3, 3, g.data(), 4);
    return g;
}

}  // namespace

TEST(GradientGolden, CentralDifferencesArePackedFromTheFirstElement) {
    // dx = right - left, dy = below - above, source (x, y) at output (x-1, y-1).
    const std::vector<int16_t> expected = {26, 60, 18, 40, 22, 20, -20, -21, -20, -34, -20, -37};
    std::vector<int16_t> out(16, 0x7777);
    pxrImageGradientInterleaveds16(kHand.data(), 5, 4, 5, out.data());
    EXPECT_EQ(std::vector<int16_t>(out.begin(), out.begin() + 12), expected);
    EXPECT_EQ(std::vector<int16_t>(out.begin() + 12, out.end()), std::vector<int16_t>(4, 0x7777));

    // A wider output stride leaves its slack alone.
    std::vector<int16_t> strided(16, 0x7777);
    pxrImageGradientInterleaveds16_v2(kHand.data(), 5, 4, 5, strided.data(), 8 * sizeof(int16_t));
    EXPECT_EQ(std::vector<int16_t>(strided.begin(), strided.begin() + 6),
              std::vector<int16_t>(expected.begin(), expected.begin() + 6));
    EXPECT_EQ(strided[6], 0x7777);
    EXPECT_EQ(strided[7], 0x7777);
    EXPECT_EQ(std::vector<int16_t>(strided.begin() + 8, strided.begin() + 14),
              std::vector<int16_t>(expected.begin() + 6, expected.end()));

    // Planar and float forms carry the same values.
    std::vector<int16_t> dx(6), dy(6);
    pxrImageGradientPlanars16(kHand.data(), 5, 4, 5, dx.data(), dy.data());
    std::vector<float> f(12), fx(6), fy(6);
    pxrImageGradientInterleavedf32(kHand.data(), 5, 4, 5, f.data());
    pxrImageGradientPlanarf32_v2(kHand.data(), 5, 4, 0, fx.data(), fy.data(), 0);
    for (size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(dx[i], expected[2 * i]);
        EXPECT_EQ(dy[i], expected[2 * i + 1]);
        EXPECT_EQ(f[2 * i], expected[2 * i]);
        EXPECT_EQ(fy[i], expected[2 * i + 1]);
        EXPECT_EQ(fx[i], expected[2 * i]);
    }
}

TEST(GradientGolden, SobelShiftsNegativeSumsArithmetically) {
    // A 1 in the top-left corner: dx = dy = -1, and -1 >> 3 is -1, not 0.
    EXPECT_EQ(sobelCentre({1, 0, 0, 0, 0, 0, 0, 0, 0}), (std::vector<int16_t>{-1, -1}));
    // -9 >> 3 = -2 (floor of -1.125); +9 >> 3 = 1.
    EXPECT_EQ(sobelCentre({9, 0, 0, 0, 0, 0, 0, 0, 0}), (std::vector<int16_t>{-2, -2}));
    EXPECT_EQ(sobelCentre({0, 0, 0, 0, 0, 0, 0, 0, 9}), (std::vector<int16_t>{1, 1}));
    // Weights 1 2 1: a 5 in the middle of the right column gives dx = 10 -> 1.
    EXPECT_EQ(sobelCentre({0, 0, 0, 0, 0, 5, 0, 0, 0}), (std::vector<int16_t>{1, 0}));
    EXPECT_EQ(sobelCentre({0, 0, 0, 0, 0, 0, 0, 8, 0}), (std::vector<int16_t>{0, 2}));

    // Float forms multiply the sum by 0.125.
    const std::vector<uint8_t> corner = {9, 0, 0, 0, 0, 0, 0, 0, 0};
    float f[2] = {}, fx = 0, fy = 0;
    pxrImageGradientSobelInterleavedf32(corner.data(), 3, 3, 3, f);
    EXPECT_EQ(f[0], -1.125f);
    EXPECT_EQ(f[1], -1.125f);
    pxrImageGradientSobelPlanarf32(corner.data(), 3, 3, 3, &fx, &fy);
    EXPECT_EQ(fx, -1.125f);
    const float fsrc[9] = {0.5f, 0, 0, 0, 0, 0.25f, 0, 0, 0};
    pxrImageGradientSobelPlanarf32f32(fsrc, 3, 3, 0, &fx, &fy);
    EXPECT_EQ(fx, (2 * 0.25f - 0.5f) * 0.125f);
    EXPECT_EQ(fy, -0.5f * 0.125f);
}

TEST(GradientGolden, SignedByteStorageHoldsTheExtremes) {
    // Right column 255: dx = 4 x 255 = 1020 -> 127; mirrored -1020 -> -128.
    const std::vector<uint8_t> right = {0, 0, 255, 0, 0, 255, 0, 0, 255};
    const std::vector<uint8_t> left = {255, 0, 0, 255, 0, 0, 255, 0, 0};
    const std::vector<uint8_t> bottom = {0, 0, 0, 0, 0, 0, 255, 255, 255};
    int8_t dx = 0, dy = 0;
    pxrImageGradientSobelPlanars8(right.data(), 3, 3, 3, &dx, &dy);
    EXPECT_EQ(dx, 127);
    EXPECT_EQ(dy, 0);
    pxrImageGradientSobelPlanars8(left.data(), 3, 3, 3, &dx, &dy);
    EXPECT_EQ(dx, -128);
    pxrImageGradientSobelPlanars8_v2(bottom.data(), 3, 3, 0, &dx, &dy, 0);
    EXPECT_EQ(dx, 0);
    EXPECT_EQ(dy, 127);
    int16_t s16x = 0, s16y = 0;
    pxrImageGradientSobelPlanars16(left.data(), 3, 3, 3, &s16x, &s16y);
    EXPECT_EQ(s16x, -128);
}

TEST(GradientGolden, ScharrWeighsDiagonalsThreeAndTheAxisTen) {
    // a b c / d e f / g h i = 1 2 4 / 8 16 32 / 64 128 255:
    //   dx = 3 ((c - a) + (i - g)) + 10 (f - d) = 3 (3 + 191) + 10 x 24 = 822
    //   dy = 3 ((g - a) + (i - c)) + 10 (h - b) = 3 (63 + 251) + 10 x 126 = 2202
    const std::vector<uint8_t> img = {1, 2, 4, 8, 16, 32, 64, 128, 255};
    std::vector<int16_t> g(4, 0x5555);
    pxrImageGradientScharrInterleaveds16(img.data(), 3, 3, 0, g.data(), 0);
    EXPECT_EQ(g, (std::vector<int16_t>{822, 2202, 0x5555, 0x5555}));
    // Unshifted and signed: the mirrored image negates both.
    const std::vector<uint8_t> flipped = {255, 128, 64, 32, 16, 8, 4, 2, 1};
    pxrImageGradientScharrInterleaveds16(flipped.data(), 3, 3, 3, g.data(), 4);
    EXPECT_EQ(g[0], -822);
    EXPECT_EQ(g[1], -2202);
}

TEST(GradientGolden, ImagesWithoutInteriorWriteNothing) {
    pxr::test::LogCapture log;
    for (uint32_t w : {1u, 2u, 3u, 6u})
        for (uint32_t h : {1u, 2u, 3u, 4u}) {
            if (w >= 3 && h >= 3) continue;
            const std::vector<uint8_t> src(w * h, 7);
            std::vector<int16_t> out(64, 0x1234), dy(64, 0x1234);
            pxrImageGradientInterleaveds16(src.data(), w, h, w, out.data());
            pxrImageGradientSobelPlanars16(src.data(), w, h, w, out.data(), dy.data());
            EXPECT_EQ(out, std::vector<int16_t>(64, 0x1234)) << w << "x" << h;
            EXPECT_EQ(dy, std::vector<int16_t>(64, 0x1234)) << w << "x" << h;
        }
    EXPECT_TRUE(log.lines().empty());  // the plain generations accept them
}

TEST(GradientContract, ThirdGenerationReturnsStatus) {
    const auto src = pxr::test::randomBytes(11 * 6, 8);
    std::vector<int16_t> a(9 * 4 * 2), b(9 * 4 * 2), dx(9 * 4), dy(9 * 4), dx2(9 * 4), dy2(9 * 4);
    EXPECT_EQ(pxrImageGradientSobelInterleaveds16_v3(src.data(), 11, 6, 0, a.data(), 0), 0);
    pxrImageGradientSobelInterleaveds16_v2(src.data(), 11, 6, 0, b.data(), 0);
    EXPECT_EQ(a, b);
    EXPECT_EQ(pxrImageGradientSobelPlanars16_v3(src.data(), 11, 6, 0, dx.data(), dy.data(), 0), 0);
    pxrImageGradientSobelPlanars16_v2(src.data(), 11, 6, 0, dx2.data(), dy2.data(), 0);
    EXPECT_EQ(dx, dx2);
    EXPECT_EQ(dy, dy2);
}

TEST(GradientBadInput, LogsTheConditionAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8), out(6, 12, 4);
    int16_t* g = out.as<int16_t>();
    pxrImageGradientInterleaveds16(nullptr, 8, 8, 8, g);
    pxrImageGradientInterleaveds16(src.data(), 8, 8, 7, g);
    pxrImageGradientInterleaveds16_v2(src.data(), 8, 8, 8, g, 23);
    pxrImageGradientInterleaveds16_v2(src.data(), 1, 8, 8, g, 0);
    pxrImageGradientInterleaveds16_v2(src.data(), 8, 0, 8, g, 0);
    pxrImageGradientPlanars16(src.data(), 8, 8, 8, g, nullptr);
    EXPECT_EQ(pxrImageGradientSobelInterleaveds16_v3(src.data(), 8, 8, 8, g, 23), 3);
    EXPECT_EQ(pxrImageGradientSobelInterleaveds16_v3(src.data(), 8, 8, 8, nullptr, 0), 3);
    EXPECT_EQ(pxrImageGradientSobelPlanars16_v3(src.data(), 8, 8, 8, g, g, 11), 3);
    pxrImageGradientSobelPlanarf32f32(nullptr, 8, 8, 32, out.as<float>(), out.as<float>());
    pxrImageGradientSobelPlanarf32f32_v2(out.as<float>(), 8, 8, 31, out.as<float>(), out.as<float>(), 0);
    pxrImageGradientScharrInterleaveds16(src.data(), 8, 8, 8, g, 23);
    EXPECT_TRUE(out.untouched());
    const std::string base = "src && srcWidth && srcHeight && (srcStride >= srcWidth) && ";
    const std::string v2 = base + "gradients && (gradStride >= ((srcWidth-2)*2*sizeof(int16_t)))\n";
    EXPECT_EQ(log.texts(),
              (std::vector<std::string>{
                  "Assertion failed @pxrImageGradientInterleaveds16: " + base + "gradients\n",
                  "Assertion failed @pxrImageGradientInterleaveds16: " + base + "gradients\n",
                  "Assertion failed @pxrImageGradientInterleaveds16_v2: " + v2,
                  "Assertion failed @pxrImageGradientInterleaveds16_v2: " + v2,
                  "Assertion failed @pxrImageGradientInterleaveds16_v2: " + v2,
                  "Assertion failed @pxrImageGradientPlanars16: " + base + "dx && dy\n",
                  "Assertion failed @pxrImageGradientSobelInterleaveds16_v3: " + v2,
                  "Assertion failed @pxrImageGradientSobelInterleaveds16_v3: " + v2,
                  "Assertion failed @pxrImageGradientSobelPlanars16_v3: " + base +
                      "dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(int16_t)))\n",
                  "Assertion failed @pxrImageGradientSobelPlanarf32f32: src && srcWidth && srcHeight && "
                  "srcStride >= srcWidth && dx && dy\n",
                  "Assertion failed @pxrImageGradientSobelPlanarf32f32_v2: src && srcWidth && srcHeight && "
                  "(srcStride >= srcWidth*sizeof(float)) && dx && dy && (dxyStride >= ((srcWidth-2)*sizeof(float)))\n",
                  "Assertion failed @pxrImageGradientScharrInterleaveds16: " + v2,
              }));
    for (const auto& l : log.lines()) {
        EXPECT_EQ(l.tag, "pixora_lib_log");
        EXPECT_EQ(l.priority, 6);
    }
}

TEST(GradientDifferential, EveryMember) {
    const auto s16 = pxr::test::gradient::alignedShapes(2), f32 = pxr::test::gradient::alignedShapes(4);
    using pxr::test::gradient::GradientCall;
    auto check = [](const std::string& name, uint32_t row, uint32_t bytes, bool planar, bool packed,
                    GradientCall call, const std::vector<pxr::test::Shape>& shapes, uint32_t srcBytes = 1) {
        pxr::test::expectAllKindsMatch(gradientOp(name, row, bytes, planar, std::move(call), packed, srcBytes),
                                       shapes);
    };
    check("pxrImageGradientInterleaveds16", PXR_ROW_ImageGradientInterleaveds16, 2, false, true,
          [](GuardedImage& s, GuardedImage& o, uint8_t*) {
              pxrImageGradientInterleaveds16(s.data(), s.width(), s.height(), s.stride(), o.as<int16_t>());
          }, s16);
    check("pxrImageGradientInterleaveds16_v2", PXR_ROW_ImageGradientInterleaveds16, 2, false, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t*) {
              pxrImageGradientInterleaveds16_v2(s.data(), s.width(), s.height(), s.stride(), o.as<int16_t>(),
                                                o.stride());
          }, s16);
    check("pxrImageGradientInterleavedf32_v2", PXR_ROW_ImageGradientInterleavedf32, 4, false, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t*) {
              pxrImageGradientInterleavedf32_v2(s.data(), s.width(), s.height(), s.stride(), o.as<float>(),
                                                o.stride());
          }, f32);
    check("pxrImageGradientPlanars16_v2", PXR_ROW_ImageGradientPlanars16, 2, true, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t* dy) {
              pxrImageGradientPlanars16_v2(s.data(), s.width(), s.height(), s.stride(), o.as<int16_t>(),
                                           reinterpret_cast<int16_t*>(dy), o.stride());
          }, s16);
    check("pxrImageGradientPlanarf32", PXR_ROW_ImageGradientPlanarf32, 4, true, true,
          [](GuardedImage& s, GuardedImage& o, uint8_t* dy) {
              pxrImageGradientPlanarf32(s.data(), s.width(), s.height(), s.stride(), o.as<float>(),
                                        reinterpret_cast<float*>(dy));
          }, f32);
    check("pxrImageGradientSobelInterleaveds16_v2", PXR_ROW_ImageGradientSobelInterleaveds16, 2, false, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t*) {
              pxrImageGradientSobelInterleaveds16_v2(s.data(), s.width(), s.height(), s.stride(), o.as<int16_t>(),
                                                     o.stride());
          }, s16);
    check("pxrImageGradientSobelInterleaveds16_v3", PXR_ROW_ImageGradientSobelInterleaveds16_v3, 2, false, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t*) {
              pxrImageGradientSobelInterleaveds16_v3(s.data(), s.width(), s.height(), s.stride(), o.as<int16_t>(),
                                                     o.stride());
          }, s16);
    check("pxrImageGradientSobelInterleavedf32", PXR_ROW_ImageGradientSobelInterleavedf32, 4, false, true,
          [](GuardedImage& s, GuardedImage& o, uint8_t*) {
              pxrImageGradientSobelInterleavedf32(s.data(), s.width(), s.height(), s.stride(), o.as<float>());
          }, f32);
    check("pxrImageGradientSobelPlanars16", PXR_ROW_ImageGradientSobelPlanars16, 2, true, true,
          [](GuardedImage& s, GuardedImage& o, uint8_t* dy) {
              pxrImageGradientSobelPlanars16(s.data(), s.width(), s.height(), s.stride(), o.as<int16_t>(),
                                             reinterpret_cast<int16_t*>(dy));
          }, s16);
    check("pxrImageGradientSobelPlanars16_v3", PXR_ROW_ImageGradientSobelPlanars16_v3, 2, true, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t* dy) {
              pxrImageGradientSobelPlanars16_v3(s.data(), s.width(), s.height(), s.stride(), o.as<int16_t>(),
                                                reinterpret_cast<int16_t*>(dy), o.stride());
          }, s16);
    check("pxrImageGradientSobelPlanars8_v2", PXR_ROW_ImageGradientSobelPlanars8, 1, true, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t* dy) {
              pxrImageGradientSobelPlanars8_v2(s.data(), s.width(), s.height(), s.stride(), o.as<int8_t>(),
                                               reinterpret_cast<int8_t*>(dy), o.stride());
          }, pxr::test::standardShapes());
    check("pxrImageGradientSobelPlanarf32_v2", PXR_ROW_ImageGradientSobelPlanarf32, 4, true, false,
          [](GuardedImage& s, GuardedImage& o, uint8_t* dy) {
              pxrImageGradientSobelPlanarf32_v2(s.data(), s.width(), s.height(), s.stride(), o.as<float>(),
                                                reinterpret_cast<float*>(dy), o.stride());
          }, f32);
    // The float source is made of finite values from the random bytes (NaN
    // payloads would depend on operand order), at an aligned copy.
    for (bool packed : {true, false}) {
        check(std::string("pxrImageGradientSobelPlanarf32f32") + (packed ? "" : "_v2"),
              PXR_ROW_ImageGradientSobelPlanarf32f32, 4, true, packed,
              [packed](GuardedImage& s, GuardedImage& o, uint8_t* dy) {
                  const uint32_t stride = s.width() * 4 + (packed ? 0 : 12);
                  std::vector<float> f(size_t{stride / 4} * s.height() + 1);
                  const uint8_t* bytes = s.data();
                  for (uint32_t y = 0; y < s.height(); ++y)
                      for (uint32_t x = 0; x < s.width(); ++x) {
                          int16_t v;
                          std::memcpy(&v, bytes + size_t{y} * s.stride() + 4 * x, 2);
                          f[size_t{y} * stride / 4 + x] = v / 64.0f;
                      }
                  if (packed)
                      pxrImageGradientSobelPlanarf32f32(f.data(), s.width(), s.height(), stride, o.as<float>(),
                                                        reinterpret_cast<float*>(dy));
                  else
                      pxrImageGradientSobelPlanarf32f32_v2(f.data(), s.width(), s.height(), stride, o.as<float>(),
                                                           reinterpret_cast<float*>(dy), o.stride());
              },
              f32, 4);
    }
    // The harness forces a public row; the call mirrors that choice onto the
    // Scharr's internal row.
    const uint32_t row = PXR_ROW_ImageGradientInterleaveds16;
    pxr::test::expectAllKindsMatch(
        gradientOp("pxrImageGradientScharrInterleaveds16", row, 2, false,
                   [row](GuardedImage& s, GuardedImage& o, uint8_t*) {
                       const uint32_t saved = pxrInternalImplTable[PXR_IROW_ImageGradientScharrInterleaveds16];
                       pxrInternalImplTable[PXR_IROW_ImageGradientScharrInterleaveds16] = pxrImplTable[row];
                       pxrImageGradientScharrInterleaveds16(s.data(), s.width(), s.height(), s.stride(),
                                                            o.as<int16_t>(), o.stride());
                       pxrInternalImplTable[PXR_IROW_ImageGradientScharrInterleaveds16] = saved;
                   }),
        pxr::test::gradient::alignedShapes(2));
}

#ifdef PIXORA_HAVE_OPENCV
namespace {

// filter2D correlates; its sums are exact in float. Returns the sums of the
// interior, (w-2) x (h-2).
cv::Mat interiorSums(const cv::Mat& src, const cv::Mat& kernel) {
    cv::Mat sums;
    cv::filter2D(src, sums, CV_32F, kernel, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
    return sums(cv::Rect(1, 1, src.cols - 2, src.rows - 2)).clone();
}

}  // namespace

TEST(GradientOpenCV, SobelAndScharrEqualFilter2D) {
    const uint32_t w = 257, h = 99;
    cv::Mat src(static_cast<int>(h), static_cast<int>(w), CV_8UC1);
    const auto bytes = pxr::test::randomBytes(size_t{w} * h, 32);
    std::copy(bytes.begin(), bytes.end(), src.data);
    const cv::Mat sx = interiorSums(src, (cv::Mat_<float>(3, 3) << -1, 0, 1, -2, 0, 2, -1, 0, 1));
    const cv::Mat sy = interiorSums(src, (cv::Mat_<float>(3, 3) << -1, -2, -1, 0, 0, 0, 1, 2, 1));
    const cv::Mat cx = interiorSums(src, (cv::Mat_<float>(3, 3) << -3, 0, 3, -10, 0, 10, -3, 0, 3));
    const cv::Mat cy = interiorSums(src, (cv::Mat_<float>(3, 3) << -3, -10, -3, 0, 0, 0, 3, 10, 3));
    const size_t n = size_t{w - 2} * (h - 2);
    std::vector<int16_t> g(2 * n), scharr(2 * n), dx(n), dy(n);
    std::vector<int8_t> bx(n), by(n);
    std::vector<float> fx(n), fy(n);
    pxrImageGradientSobelInterleaveds16(src.data, w, h, w, g.data());
    pxrImageGradientScharrInterleaveds16(src.data, w, h, w, scharr.data(), 0);
    pxrImageGradientSobelPlanars16_v2(src.data, w, h, w, dx.data(), dy.data(), 0);
    pxrImageGradientSobelPlanars8(src.data, w, h, w, bx.data(), by.data());
    pxrImageGradientSobelPlanarf32(src.data, w, h, w, fx.data(), fy.data());
    for (uint32_t y = 0; y < h - 2; ++y)
        for (uint32_t x = 0; x < w - 2; ++x) {
            const size_t i = size_t{y} * (w - 2) + x;
            const int sumX = static_cast<int>(sx.at<float>(y, x)), sumY = static_cast<int>(sy.at<float>(y, x));
            ASSERT_EQ(g[2 * i], sumX >> 3) << x << "," << y;
            ASSERT_EQ(g[2 * i + 1], sumY >> 3) << x << "," << y;
            ASSERT_EQ(dx[i], sumX >> 3);
            ASSERT_EQ(dy[i], sumY >> 3);
            ASSERT_EQ(bx[i], sumX >> 3);
            ASSERT_EQ(by[i], sumY >> 3);
            ASSERT_EQ(fx[i], sumX * 0.125f);
            ASSERT_EQ(fy[i], sumY * 0.125f);
            ASSERT_EQ(scharr[2 * i], cx.at<float>(y, x)) << x << "," << y;
            ASSERT_EQ(scharr[2 * i + 1], cy.at<float>(y, x)) << x << "," << y;
        }
}
#endif
