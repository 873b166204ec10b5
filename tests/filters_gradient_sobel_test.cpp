// Sobel magnitude and Sobel derivatives to 16 bits, and the separable
// convolution beneath them: goldens, border rules, saturation, bad input,
// every kind against kind 0, and OpenCV's Sobel.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "filters_gradient_helpers.h"
#include "frame/row_ids.h"
#include "imgproc/filters/gradient.h"
#include "pixora.h"
#include "simd/filters/gradient_v.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;

namespace {

using SobelFn = int (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, int16_t*, int16_t*, uint32_t, pxrBorderType,
                        uint8_t);
struct SobelMember {
    const char* name;
    uint32_t row;
    SobelFn fn;
    uint32_t n;
};
const SobelMember kSobel[] = {{"pxrFilterSobel3x3u8s16", PXR_ROW_FilterSobel3x3u8s16, pxrFilterSobel3x3u8s16, 3},
                              {"pxrFilterSobel5x5u8s16", PXR_ROW_FilterSobel5x5u8s16, pxrFilterSobel5x5u8s16, 5},
                              {"pxrFilterSobel7x7u8s16", PXR_ROW_FilterSobel7x7u8s16, pxrFilterSobel7x7u8s16, 7}};

uint8_t magnitudeCentre(const std::vector<uint8_t>& img) {
    std::vector<uint8_t> dst(9, 0xEE);
    pxrFilterSobel3x3u8(img.data(), 3, 3, dst.data());
    return dst[4];
}

struct Derivatives {
    std::vector<int16_t> dx, dy;
    int status;
};
Derivatives derive(SobelFn fn, const std::vector<uint8_t>& src, uint32_t w, uint32_t h, pxrBorderType type,
                   uint8_t value) {
    Derivatives d{std::vector<int16_t>(size_t{w} * h, 0x5555), std::vector<int16_t>(size_t{w} * h, 0x5555), -1};
    d.status = fn(src.data(), w, h, 0, d.dx.data(), d.dy.data(), 0, type, value);
    return d;
}

}  // namespace

TEST(SobelMagnitudeGolden, SumsAbsoluteDerivativesAndClampsAt255) {
    EXPECT_EQ(magnitudeCentre({0, 0, 10, 0, 0, 10, 0, 0, 10}), 40);   // |Gx| = 4 x 10
    EXPECT_EQ(magnitudeCentre({0, 0, 0, 0, 0, 0, 0, 0, 30}), 60);     // |Gx| + |Gy| = 30 + 30
    EXPECT_EQ(magnitudeCentre({0, 0, 0, 0, 0, 0, 0, 0, 127}), 254);
    EXPECT_EQ(magnitudeCentre({0, 0, 0, 0, 0, 0, 0, 0, 128}), 255);   // 256 clamps
    EXPECT_EQ(magnitudeCentre({255, 0, 0, 255, 0, 0, 255, 255, 255}), 255);
    EXPECT_EQ(magnitudeCentre({9, 9, 9, 9, 200, 9, 9, 9, 9}), 0);     // the centre has no weight
}

TEST(SobelMagnitudeGolden, BorderIsNotWritten) {
    const auto src = pxr::test::randomBytes(9 * 6, 12);
    std::vector<uint8_t> dst(9 * 6, 0xEE);
    pxrFilterSobel3x3u8_v2(src.data(), 9, 6, 0, dst.data(), 0);
    for (uint32_t y = 0; y < 6; ++y)
        for (uint32_t x = 0; x < 9; ++x)
            if (x == 0 || y == 0 || x == 8 || y == 5) {
                EXPECT_EQ(dst[y * 9 + x], 0xEE) << x << "," << y;
            }
}

TEST(SobelMagnitudeBadInput, LogsTheConditionAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8), dst(8, 8);
    pxrFilterSobel3x3u8(nullptr, 8, 8, dst.data());
    pxrFilterSobel3x3u8(src.data(), 0, 8, dst.data());
    pxrFilterSobel3x3u8_v2(src.data(), 8, 8, 7, dst.data(), 8);
    pxrFilterSobel3x3u8_v2(src.data(), 8, 8, 8, dst.data(), 7);
    pxrFilterSobel3x3u8_v2(src.data(), 8, 8, 8, nullptr, 8);
    EXPECT_TRUE(dst.untouched());
    const std::string plain = "Assertion failed @pxrFilterSobel3x3u8: src && width && height && dst\n";
    const std::string v2 = "Assertion failed @pxrFilterSobel3x3u8_v2: src && srcWidth && srcHeight && "
                           "(srcStride >= srcWidth) && dst && (dstStride >= srcWidth)\n";
    EXPECT_EQ(log.texts(), (std::vector<std::string>{plain, plain, v2, v2, v2}));
}

TEST(SobelDerivativesGolden, ImpulseShowsTheWeights) {
    // 100 at the centre of a 5 x 5 image: dx is +1 2 1 left of it and
    // -1 2 1 right of it (right minus left), dy the same transposed.
    std::vector<uint8_t> src(25, 0);
    src[12] = 100;
    const auto d = derive(pxrFilterSobel3x3u8s16, src, 5, 5, PIXORA_BORDER_DEFAULT, 0);
    ASSERT_EQ(d.status, 0);
    const std::vector<int16_t> dx = {0, 0,   0, 0,    0,  //
                                     0, 100, 0, -100, 0,  //
                                     0, 200, 0, -200, 0,  //
                                     0, 100, 0, -100, 0,  //
                                     0, 0,   0, 0,    0};
    EXPECT_EQ(d.dx, dx);
    for (uint32_t y = 0; y < 5; ++y)
        for (uint32_t x = 0; x < 5; ++x) EXPECT_EQ(d.dy[y * 5 + x], dx[x * 5 + y]) << x << "," << y;
}

TEST(SobelDerivativesGolden, BorderRules) {
    // A uniform 50: the outside is 0 for the default rule, the border value
    // for the constant rule, the edge for the replicate rule.
    const std::vector<uint8_t> flat(4 * 3, 50);
    const auto def = derive(pxrFilterSobel3x3u8s16, flat, 4, 3, PIXORA_BORDER_DEFAULT, 99);
    EXPECT_EQ(def.dx[0], 2 * 50 + 50);      // corner: rows 0 and 1 have 0 on their left
    EXPECT_EQ(def.dy[0], 2 * 50 + 50);
    EXPECT_EQ(def.dx[1], 0);                // top edge: no horizontal change
    EXPECT_EQ(def.dy[1], 50 + 2 * 50 + 50); // but a step from the 0 above
    EXPECT_EQ(def.dx[3], -(2 * 50 + 50));
    EXPECT_EQ(def.dx[4 + 1], 0);            // interior
    const auto ten = derive(pxrFilterSobel3x3u8s16, flat, 4, 3, PIXORA_BORDER_CONSTANT, 10);
    EXPECT_EQ(ten.dx[0], 2 * 40 + 40);
    EXPECT_EQ(ten.dy[2 * 4 + 2], -(40 + 2 * 40 + 40));
    for (auto [type, value] :
         {std::pair{PIXORA_BORDER_CONSTANT, uint8_t{50}}, std::pair{PIXORA_BORDER_REPLICATE, uint8_t{0}}})
        for (const auto& m : kSobel) {
            const auto d = derive(m.fn, flat, 4, 3, type, value);
            EXPECT_EQ(d.status, 0);
            EXPECT_EQ(d.dx, std::vector<int16_t>(12, 0)) << m.name << " border " << type;
            EXPECT_EQ(d.dy, std::vector<int16_t>(12, 0)) << m.name << " border " << type;
        }
    // Replicate at the corner of 0 10 / 20 30: each of the rows -1, 0, 1
    // differs by 10 across (weights 1 2 1), each column by 20 down.
    const auto rep = derive(pxrFilterSobel3x3u8s16, {0, 10, 20, 30}, 2, 2, PIXORA_BORDER_REPLICATE, 0);
    EXPECT_EQ(rep.dx[0], 4 * 10);
    EXPECT_EQ(rep.dy[0], 4 * 20);
}

TEST(SobelDerivativesGolden, LargerKernelsAreBinomialAndSaturate) {
    // A vertical step 0 | 255 between columns 3 and 4 of an 8 x 8 image.
    std::vector<uint8_t> step(64, 0);
    for (uint32_t y = 0; y < 8; ++y)
        for (uint32_t x = 4; x < 8; ++x) step[y * 8 + x] = 255;
    const auto d5 = derive(pxrFilterSobel5x5u8s16, step, 8, 8, PIXORA_BORDER_REPLICATE, 0);
    // 5x5: smoothing 1 4 6 4 1 (sum 16) times difference 1 2 0 -2 -1.
    EXPECT_EQ(d5.dx[3 * 8 + 3], 16 * 255 * (2 + 1));  // right taps 2, 1 see 255
    EXPECT_EQ(d5.dx[3 * 8 + 2], 16 * 255 * 1);
    EXPECT_EQ(d5.dy[3 * 8 + 3], 0);
    // 7x7: smoothing sum 64 times 1 + 4 + 5: 163200, saturated.
    const auto d7 = derive(pxrFilterSobel7x7u8s16, step, 8, 8, PIXORA_BORDER_REPLICATE, 0);
    EXPECT_EQ(d7.dx[3 * 8 + 3], 32767);
    EXPECT_EQ(d7.dx[3 * 8 + 1], 64 * 255 * 1);  // only the outermost tap reaches the step
    std::vector<uint8_t> inverse(step);
    for (auto& v : inverse) v = static_cast<uint8_t>(255 - v);
    EXPECT_EQ(derive(pxrFilterSobel7x7u8s16, inverse, 8, 8, PIXORA_BORDER_REPLICATE, 0).dx[3 * 8 + 4], -32768);
}

TEST(SobelDerivativesGolden, EitherOutputMayBeNull) {
    const auto src = pxr::test::randomBytes(13 * 7, 21);
    for (const auto& m : kSobel) {
        const auto both = derive(m.fn, src, 13, 7, PIXORA_BORDER_REPLICATE, 0);
        std::vector<int16_t> only(13 * 7, 0x5555);
        EXPECT_EQ(m.fn(src.data(), 13, 7, 13, only.data(), nullptr, 26, PIXORA_BORDER_REPLICATE, 0), 0);
        EXPECT_EQ(only, both.dx) << m.name;
        EXPECT_EQ(m.fn(src.data(), 13, 7, 13, nullptr, only.data(), 26, PIXORA_BORDER_REPLICATE, 0), 0);
        EXPECT_EQ(only, both.dy) << m.name;
    }
}

TEST(SobelDerivativesBadInput, ReturnsThreeSilentlyAndWritesNothing) {
    pxr::test::LogCapture log;
    GuardedImage src(8, 8), dx(8, 8, 2), dy(8, 8, 2);
    for (const auto& m : kSobel) {
        auto call = [&](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* x, int16_t* y, uint32_t ds,
                        uint32_t type) { return m.fn(s, w, h, ss, x, y, ds, static_cast<pxrBorderType>(type), 0); };
        int16_t* px = dx.as<int16_t>();
        int16_t* py = dy.as<int16_t>();
        EXPECT_EQ(call(src.data(), 8, 8, 8, nullptr, nullptr, 16, 0), 3) << m.name;
        EXPECT_EQ(call(nullptr, 8, 8, 8, px, py, 16, 0), 3);
        EXPECT_EQ(call(src.data(), 8, 8, 8, px, py, 16, 3), 3);
        EXPECT_EQ(call(src.data(), 8, 8, 8, px, py, 16, 0xFFFFFFFFu), 3);
        EXPECT_EQ(call(src.data(), 0, 8, 8, px, py, 16, 0), 3);
        EXPECT_EQ(call(src.data(), 8, 0, 8, px, py, 16, 0), 3);
        EXPECT_EQ(call(src.data(), 8, 8, 7, px, py, 16, 0), 3);
        EXPECT_EQ(call(src.data(), 8, 8, 8, px, py, 15, 0), 3);
    }
    EXPECT_TRUE(dx.untouched());
    EXPECT_TRUE(dy.untouched());
    EXPECT_TRUE(log.lines().empty());
}

TEST(ConvSepMxN, RejectsEvenAndOversizedKernels) {
    const int16_t k[33] = {1};
    std::vector<uint8_t> src(16, 3);
    std::vector<int16_t> dst(16, 0x5555);
    for (auto fn : {pxrFilterConvSepMxNs16C, pxrFilterConvSepMxNs16V})
        for (auto [m, n] : {std::pair{2u, 3u}, std::pair{3u, 0u}, std::pair{33u, 1u}, std::pair{1u, 4u}})
            EXPECT_EQ(fn(k, m, k, n, src.data(), 4, 4, 4, dst.data(), 8, 0, 0), 3) << m << "x" << n;
    EXPECT_EQ(dst, std::vector<int16_t>(16, 0x5555));
}

TEST(ConvSepMxN, VectorKindOnEveryTargetMatchesTheReference) {
    // Random kernels, some large enough to need 64-bit sums, every border rule.
    struct Case {
        uint32_t m, n;
        int16_t lo, hi;
    };
    const Case cases[] = {{1, 1, -9, 9}, {7, 3, -32768, 32767}, {5, 31, -2000, 2000}};
    const std::vector<pxr::test::Shape> shapes = {{1, 1, 0, 0}, {2, 9, 1, 0}, {40, 23, 6, 2}, {301, 5, 2, 4}};
    uint32_t seed = 1;
    for (const Case& c : cases)
        for (const auto& s : shapes)
            for (uint32_t border : {0u, 1u, 2u}) {
                auto kb = pxr::test::randomBytes(2 * (c.m + c.n), seed++);
                std::vector<int16_t> kx(c.m), ky(c.n);
                auto tap = [&](size_t i) {
                    const int32_t span = int32_t{c.hi} - c.lo + 1;
                    return static_cast<int16_t>(c.lo + (kb[2 * i] | kb[2 * i + 1] << 8) % span);
                };
                for (uint32_t i = 0; i < c.m; ++i) kx[i] = tap(i);
                for (uint32_t i = 0; i < c.n; ++i) ky[i] = tap(c.m + i);
                GuardedImage src(s.width, s.height, 1, s.slack, s.misalign);
                src.fillRandom(seed++);
                GuardedImage ref(s.width, s.height, 2, 2 * s.slack);
                ASSERT_EQ(pxrFilterConvSepMxNs16C(kx.data(), c.m, ky.data(), c.n, src.data(), s.width, s.height,
                                                  src.stride(), ref.as<int16_t>(), ref.stride(), border, 77),
                          0);
                EXPECT_TRUE(ref.outsideUntouched());
                pxr::test::forEachVectorTarget([&](const char* target) {
                    GuardedImage vec(s.width, s.height, 2, 2 * s.slack);
                    ASSERT_EQ(pxrFilterConvSepMxNs16V(kx.data(), c.m, ky.data(), c.n, src.data(), s.width, s.height,
                                                      src.stride(), vec.as<int16_t>(), vec.stride(), border, 77),
                              0);
                    EXPECT_EQ(vec.pixels(), ref.pixels()) << target << " " << pxr::test::describe(s) << " "
                                                          << c.m << "x" << c.n << " border " << border;
                    EXPECT_TRUE(vec.outsideUntouched()) << target;
                });
                EXPECT_TRUE(src.untouched());
            }
}

TEST(SobelDifferential, MagnitudeGenerations) {
    pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
        "pxrFilterSobel3x3u8", PXR_ROW_FilterSobel3x3u8, 1, 1,
        [](GuardedImage& s, GuardedImage& d) { pxrFilterSobel3x3u8(s.data(), s.width(), s.height(), d.data()); },
        true));
    pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
        "pxrFilterSobel3x3u8_v2", PXR_ROW_FilterSobel3x3u8, 1, 1, [](GuardedImage& s, GuardedImage& d) {
            pxrFilterSobel3x3u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
        }));
}

TEST(SobelDifferential, DerivativesEveryBorderAndOutput) {
    // dx in the first rows of one output image, dy in the rows below.
    enum Outputs { Both, DxOnly, DyOnly };
    const auto shapes = pxr::test::gradient::alignedShapes(2);
    for (const auto& m : kSobel)
        for (uint32_t border : {0u, 1u, 2u})
            for (Outputs outputs : {Both, DxOnly, DyOnly}) {
                if (outputs != Both && border != 2) continue;
                pxr::test::DiffOp op;
                op.name = std::string(m.name) + " border " + std::to_string(border) + " outputs " +
                          std::to_string(outputs);
                op.row = m.row;
                op.inputs = [](const pxr::test::Shape& s) {
                    return std::vector<pxr::test::PlaneSpec>{{s.width, s.height, 1}};
                };
                op.outputs = [](const pxr::test::Shape& s) {
                    return std::vector<pxr::test::PlaneSpec>{{s.width, 2 * s.height, 2}};
                };
                op.call = [m, border, outputs](std::vector<GuardedImage>& in, std::vector<GuardedImage>& out) {
                    GuardedImage& s = in[0];
                    int16_t* dx = outputs == DyOnly ? nullptr : out[0].as<int16_t>();
                    int16_t* dy = outputs == DxOnly ? nullptr : reinterpret_cast<int16_t*>(out[0].row(s.height()));
                    EXPECT_EQ(m.fn(s.data(), s.width(), s.height(), s.stride(), dx, dy, out[0].stride(),
                                   static_cast<pxrBorderType>(border), 201),
                              0);
                };
                pxr::test::expectAllKindsMatch(op, shapes);
            }
}

#ifdef PIXORA_HAVE_OPENCV
TEST(SobelOpenCV, DerivativesEqualCvSobelTo16Bits) {
    const uint32_t w = 211, h = 97;
    cv::Mat src(h, w, CV_8UC1);
    const auto bytes = pxr::test::randomBytes(size_t{w} * h, 55);
    std::copy(bytes.begin(), bytes.end(), src.data);
    for (const auto& m : kSobel)
        for (auto [ours, theirs] : {std::pair{PIXORA_BORDER_REPLICATE, int{cv::BORDER_REPLICATE}},
                                    std::pair{PIXORA_BORDER_DEFAULT, int{cv::BORDER_CONSTANT}}}) {
            cv::Mat cx, cy;
            cv::Sobel(src, cx, CV_16S, 1, 0, static_cast<int>(m.n), 1, 0, theirs);
            cv::Sobel(src, cy, CV_16S, 0, 1, static_cast<int>(m.n), 1, 0, theirs);
            std::vector<int16_t> dx(size_t{w} * h), dy(size_t{w} * h);
            ASSERT_EQ(m.fn(src.data, w, h, w, dx.data(), dy.data(), 0, ours, 0), 0);
            for (uint32_t y = 0; y < h; ++y)
                for (uint32_t x = 0; x < w; ++x) {
                    ASSERT_EQ(dx[y * w + x], cx.at<int16_t>(y, x)) << m.name << " " << x << "," << y;
                    ASSERT_EQ(dy[y * w + x], cy.at<int16_t>(y, x)) << m.name << " " << x << "," << y;
                }
        }
}
#endif
