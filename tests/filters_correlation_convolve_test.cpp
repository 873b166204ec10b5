// Convolution of bytes with s16 kernels over a padded copy: the reversed
// kernel on an impulse, anchors of even kernels, scaling and saturation,
// each border type of the padded copy, the BigKernel path, bad input,
// every kind against kind 0, and OpenCV's filter2D with the flipped kernel.
#include <gtest/gtest.h>

#include <vector>

#include "filters_correlation_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;
using pxr::test::corr::randomKernel;

namespace {

std::vector<int16_t> convolveS16(const std::vector<int16_t>& k, uint32_t kw, uint32_t kh, int32_t shift,
                                 const std::vector<uint8_t>& src, uint32_t w, uint32_t h,
                                 pxrBorderType border = PIXORA_BORDER_DEFAULT, uint8_t value = 0) {
    std::vector<int16_t> dst(size_t{w} * h, 0x5A5A);
    EXPECT_EQ(pxrFilterConvolveMxNu8s16(k.data(), kw, kh, shift, src.data(), w, h, 0, dst.data(), 0, border, value),
              0);
    return dst;
}

std::vector<uint8_t> convolveU8(const std::vector<int16_t>& k, uint32_t kw, uint32_t kh, int32_t shift,
                                const std::vector<uint8_t>& src, uint32_t w, uint32_t h,
                                pxrBorderType border = PIXORA_BORDER_DEFAULT, uint8_t value = 0) {
    std::vector<uint8_t> dst(size_t{w} * h, 0x5A);
    EXPECT_EQ(pxrFilterConvolveMxNu8(k.data(), kw, kh, shift, src.data(), w, h, 0, dst.data(), 0, border, value), 0);
    return dst;
}

}  // namespace

TEST(ConvolutionGolden, ReversedKernelShowsUprightOnAnImpulse) {
    // True convolution: the kernel's last element meets the window's first
    // pixel, so an impulse reproduces the kernel as it is written.
    const std::vector<int16_t> k = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    std::vector<uint8_t> src(49, 0);
    src[3 * 7 + 3] = 1;
    const auto out = convolveS16(k, 3, 3, 0, src, 7, 7);
    for (uint32_t y = 0; y < 7; ++y)
        for (uint32_t x = 0; x < 7; ++x) {
            const int dx = static_cast<int>(x) - 3, dy = static_cast<int>(y) - 3;
            const int expect = (std::abs(dx) <= 1 && std::abs(dy) <= 1) ? k[(1 + dy) * 3 + 1 + dx] : 0;
            EXPECT_EQ(out[y * 7 + x], expect) << x << "," << y;
        }
    // The correlation of the same kernel shows it turned round.
    std::vector<int16_t> corr(49, 0);
    const std::vector<int8_t> k8(k.begin(), k.end());
    ASSERT_EQ(pxrFilterCorrNxNu8s16(k8.data(), 3, 0, src.data(), 7, 7, 0, corr.data(), 0), 0);
    EXPECT_EQ(corr[2 * 7 + 2], 9);
    EXPECT_EQ(out[2 * 7 + 2], 1);
}

TEST(ConvolutionGolden, EvenKernelsAnchorAtHalfTheirSize) {
    // Padding is kw/2 left and kh/2 above: a 2 x 2 kernel spreads an impulse
    // at (a, b) over (a..a+1, b..b+1); a 4 x 1 kernel over a-1..a+2.
    std::vector<uint8_t> src(36, 0);
    src[2 * 6 + 2] = 1;
    const auto square = convolveS16({1, 2, 3, 4}, 2, 2, 0, src, 6, 6);
    EXPECT_EQ(square[2 * 6 + 2], 1);
    EXPECT_EQ(square[2 * 6 + 3], 2);
    EXPECT_EQ(square[3 * 6 + 2], 3);
    EXPECT_EQ(square[3 * 6 + 3], 4);
    EXPECT_EQ(square[1 * 6 + 1] + square[1 * 6 + 2] + square[2 * 6 + 1], 0);
    const auto row = convolveS16({1, 2, 3, 4}, 4, 1, 0, src, 6, 6);
    EXPECT_EQ(std::vector<int16_t>(row.begin() + 12, row.begin() + 18), (std::vector<int16_t>{0, 1, 2, 3, 4, 0}));
}

TEST(ConvolutionGolden, ScalingClampsBytesAndSaturatesShorts) {
    const std::vector<uint8_t> white = {255};
    EXPECT_EQ(convolveS16({32767}, 1, 1, 0, white, 1, 1)[0], 32767);  // 8355585
    EXPECT_EQ(convolveS16({-32768}, 1, 1, 0, white, 1, 1)[0], -32768);
    EXPECT_EQ(convolveU8({32767}, 1, 1, 0, white, 1, 1)[0], 255);
    EXPECT_EQ(convolveU8({-32768}, 1, 1, 0, white, 1, 1)[0], 0);
    EXPECT_EQ(convolveS16({32767}, 1, 1, 8, white, 1, 1)[0], 32639);  // 32638.99
    EXPECT_EQ(convolveS16({3}, 1, 1, 1, {1}, 1, 1)[0], 2);            // 1.5 -> 2
    EXPECT_EQ(convolveS16({-3}, 1, 1, 1, {1}, 1, 1)[0], -1);          // -1.5 -> -1
    EXPECT_EQ(convolveS16({100}, 1, 1, -2, {3}, 1, 1)[0], 1200);
    EXPECT_EQ(convolveU8({100}, 1, 1, -2, {3}, 1, 1)[0], 255);
    for (int32_t shift : {-32, 32, 40})
        EXPECT_EQ(convolveS16({32767}, 1, 1, shift, white, 1, 1)[0], 0) << shift;
}

TEST(ConvolutionBorder, EachBorderTypeOfThePaddedCopy) {
    const std::vector<int16_t> ones(9, 1);
    const std::vector<uint8_t> flat(5 * 4, 10);
    EXPECT_EQ(convolveS16(ones, 3, 3, 0, flat, 5, 4, PIXORA_BORDER_REPLICATE, 7), std::vector<int16_t>(20, 90));
    const auto constant = convolveS16(ones, 3, 3, 0, flat, 5, 4, PIXORA_BORDER_CONSTANT, 7);
    EXPECT_EQ(constant[0], 4 * 10 + 5 * 7);   // corner
    EXPECT_EQ(constant[2], 6 * 10 + 3 * 7);   // top edge
    EXPECT_EQ(constant[5], 6 * 10 + 3 * 7);   // left edge
    EXPECT_EQ(constant[5 + 2], 90);           // inside
    const auto zero = convolveS16(ones, 3, 3, 0, flat, 5, 4, PIXORA_BORDER_DEFAULT, 7);  // the value is ignored
    EXPECT_EQ(zero[0], 40);
    EXPECT_EQ(zero[19], 40);
    EXPECT_EQ(zero[2], 60);
    EXPECT_EQ(zero[5 + 2], 90);
}

TEST(ConvolutionBorder, KernelLargerThanTheImage) {
    // 5 x 5 ones over [1 2; 3 4]: with replication the first row and column
    // count three times around (0, 0) and twice around (1, 1).
    const std::vector<int16_t> ones(25, 1);
    const std::vector<uint8_t> src = {1, 2, 3, 4};
    const auto rep = convolveS16(ones, 5, 5, 0, src, 2, 2, PIXORA_BORDER_REPLICATE);
    EXPECT_EQ(rep[0], 3 * (3 * 1 + 2 * 2) + 2 * (3 * 3 + 2 * 4));
    EXPECT_EQ(rep[3], 2 * (2 * 1 + 3 * 2) + 3 * (2 * 3 + 3 * 4));
    const auto con = convolveS16(ones, 5, 5, 0, src, 2, 2, PIXORA_BORDER_CONSTANT, 100);
    EXPECT_EQ(con, std::vector<int16_t>(4, 10 + 21 * 100));
}

TEST(ConvolutionBigKernel, SumsBeyondThirtyTwoBitsAreExact) {
    const std::vector<uint8_t> white(20 * 20, 255);
    // 289 taps of 32767 over 255: 2414747665, past the int32 range.
    const std::vector<int16_t> big(17 * 17, 32767);
    const int64_t sum = int64_t{289} * 32767 * 255;
    for (uint32_t kind : {0u, 1u}) {
        pxr::test::ForceKind force(PXR_ROW_FilterConvolveMxNu8s16, kind);
        const auto out = convolveS16(big, 17, 17, 20, white, 20, 20, PIXORA_BORDER_REPLICATE);
        EXPECT_EQ(out, std::vector<int16_t>(400, static_cast<int16_t>((sum + (1 << 19)) >> 20))) << kind;
        const auto neg = convolveS16(std::vector<int16_t>(289, -32768), 17, 17, 21, white, 20, 20,
                                     PIXORA_BORDER_REPLICATE);
        EXPECT_EQ(neg[0], static_cast<int16_t>((int64_t{289} * -32768 * 255 + (1 << 20)) >> 21)) << kind;
    }
    // Just inside the first path's limit (257 taps of 32767) and just past it.
    for (uint32_t taps : {257u, 258u}) {
        const std::vector<int16_t> k(taps, 32767);
        const std::vector<uint8_t> row(300, 255);
        const int64_t s = int64_t{taps} * 32767 * 255;
        for (uint32_t kind : {0u, 1u}) {
            pxr::test::ForceKind force(PXR_ROW_FilterConvolveMxNu8s16, kind);
            const auto out = convolveS16(k, taps, 1, 17, row, 300, 1, PIXORA_BORDER_REPLICATE);
            EXPECT_EQ(out[150], static_cast<int16_t>((s + (1 << 16)) >> 17)) << taps << " kind " << kind;
        }
    }
}

TEST(ConvolutionBadInput, ReturnsThreeAndWritesNothing) {
    pxr::test::LogCapture log;
    const std::vector<int16_t> k(9, 1);
    GuardedImage src(8, 8), dst(8, 8, 2);
    const uint8_t* s = src.data();
    uint8_t* d = dst.data();
    auto* d16 = dst.as<int16_t>();
    auto conv = [&](const int16_t* kk, uint32_t kw, uint32_t kh, const uint8_t* ss, uint32_t w, uint32_t h,
                    uint32_t sst, uint8_t* dd, uint32_t dst_, uint32_t border) {
        return pxrFilterConvolveMxNu8(kk, kw, kh, 0, ss, w, h, sst, dd, dst_, static_cast<pxrBorderType>(border), 0);
    };
    EXPECT_EQ(conv(k.data(), 3, 3, s, 8, 8, 8, d, 8, 3), 3);
    EXPECT_EQ(conv(k.data(), 3, 3, s, 8, 8, 8, d, 8, 0xFFFFFFFFu), 3);
    EXPECT_EQ(conv(nullptr, 3, 3, s, 8, 8, 8, d, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 0, 3, s, 8, 8, 8, d, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 3, 0, s, 8, 8, 8, d, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 3, 3, nullptr, 8, 8, 8, d, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 3, 3, s, 8, 8, 8, nullptr, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 3, 3, s, 0, 8, 8, d, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 3, 3, s, 8, 0, 8, d, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 3, 3, s, 8, 8, 7, d, 8, 0), 3);
    EXPECT_EQ(conv(k.data(), 3, 3, s, 8, 8, 8, d, 7, 0), 3);
    EXPECT_EQ(pxrFilterConvolveMxNu8s16(k.data(), 3, 3, 0, s, 8, 8, 8, d16, 15, PIXORA_BORDER_DEFAULT, 0), 3);
    EXPECT_EQ(pxrFilterConvolveMxNu8s16(k.data(), 3, 3, 0, s, 8, 8, 8, d16, 16, static_cast<pxrBorderType>(3), 0),
              3);
    EXPECT_EQ(pxrFilterConvolveMxNu8s16(k.data(), 3, 0, 0, s, 8, 8, 8, d16, 16, PIXORA_BORDER_DEFAULT, 0), 3);
    EXPECT_TRUE(dst.untouched());
    EXPECT_TRUE(log.lines().empty());
}

namespace {

pxr::test::DiffOp convolveOp(uint32_t kw, uint32_t kh, int32_t shift, pxrBorderType border, bool wide, int range) {
    const auto k = randomKernel<int16_t>(size_t{kw} * kh, -range, range - 1, kw * 31 + kh);
    return pxr::test::unaryOp(
        std::string(wide ? "ConvolveMxNu8s16 " : "ConvolveMxNu8 ") + std::to_string(kw) + "x" + std::to_string(kh) +
            " shift " + std::to_string(shift) + " border " + std::to_string(border),
        wide ? PXR_ROW_FilterConvolveMxNu8s16 : PXR_ROW_FilterConvolveMxNu8, 1, wide ? 2 : 1,
        [=](GuardedImage& s, GuardedImage& d) {
            const int rc = wide ? pxrFilterConvolveMxNu8s16(k.data(), kw, kh, shift, s.data(), s.width(), s.height(),
                                                            s.stride(), d.as<int16_t>(), d.stride(), border, 77)
                                : pxrFilterConvolveMxNu8(k.data(), kw, kh, shift, s.data(), s.width(), s.height(),
                                                         s.stride(), d.data(), d.stride(), border, 77);
            EXPECT_EQ(rc, 0);
        });
}

}  // namespace

TEST(ConvolutionDifferential, KernelShapesAndBorders) {
    for (auto border : {PIXORA_BORDER_DEFAULT, PIXORA_BORDER_CONSTANT, PIXORA_BORDER_REPLICATE})
        pxr::test::expectAllKindsMatch(convolveOp(5, 5, 15, border, false, 32768));
    for (auto [kw, kh] : {std::pair{1u, 1u}, {3u, 3u}, {2u, 3u}, {7u, 1u}, {1u, 9u}, {4u, 4u}}) {
        pxr::test::expectAllKindsMatch(convolveOp(kw, kh, 12, PIXORA_BORDER_REPLICATE, false, 32768));
        pxr::test::expectAllKindsMatch(convolveOp(kw, kh, -1, PIXORA_BORDER_CONSTANT, true, 200));
    }
    pxr::test::expectAllKindsMatch(convolveOp(3, 3, 3, PIXORA_BORDER_CONSTANT, true, 32768));
}

TEST(ConvolutionDifferential, BigKernelAndLargeKernels) {
    const std::vector<pxr::test::Shape> shapes = {{5, 4, 0, 0},   {33, 7, 0, 1},  {65, 20, 3, 0},
                                                  {97, 92, 0, 0}, {130, 31, 5, 3}, {17, 129, 0, 2}};
    // Taps up to 32767: 17 x 17 and 1 x 300 take the BigKernel path.
    pxr::test::expectAllKindsMatch(convolveOp(17, 17, 22, PIXORA_BORDER_REPLICATE, true, 32768), shapes);
    pxr::test::expectAllKindsMatch(convolveOp(300, 1, 20, PIXORA_BORDER_CONSTANT, false, 32768), shapes);
    // 91 x 91 small taps: the first path, with pairs formed on the fly.
    pxr::test::expectAllKindsMatch(convolveOp(91, 91, 10, PIXORA_BORDER_DEFAULT, true, 1000), shapes);
}

#ifdef PIXORA_HAVE_OPENCV
// filter2D correlates; given our kernel turned round it convolves. With
// taps below 1000 its float sums are exact integers, so after our shift
// rule the two agree pixel for pixel, borders included.
TEST(ConvolutionOpenCV, FlippedKernelThroughFilter2D) {
    const uint32_t w = 131, h = 57;
    cv::Mat src(static_cast<int>(h), static_cast<int>(w), CV_8UC1);
    const auto bytes = pxr::test::randomBytes(size_t{w} * h, 17);
    std::copy(bytes.begin(), bytes.end(), src.data);
    struct Border {
        pxrBorderType ours;
        int theirs;
        uint8_t value;
    };
    for (const Border b : {Border{PIXORA_BORDER_REPLICATE, cv::BORDER_REPLICATE, 0},
                           Border{PIXORA_BORDER_CONSTANT, cv::BORDER_CONSTANT, 201},
                           Border{PIXORA_BORDER_DEFAULT, cv::BORDER_CONSTANT, 0}})
        for (auto [kw, kh] : {std::pair{3u, 3u}, {5u, 5u}, {5u, 3u}}) {
            const auto k = randomKernel<int16_t>(size_t{kw} * kh, -1000, 999, kw + 10 * kh);
            cv::Mat kf(static_cast<int>(kh), static_cast<int>(kw), CV_32F), flipped;
            for (uint32_t i = 0; i < kw * kh; ++i) kf.at<float>(static_cast<int>(i / kw), static_cast<int>(i % kw)) = k[i];
            cv::flip(kf, flipped, -1);
            cv::Mat sums;
            cv::filter2D(src, sums, CV_32F, flipped, cv::Point(-1, -1), 0, b.theirs);
            if (b.theirs == cv::BORDER_CONSTANT) {  // filter2D pads with 0: add the border value's share
                cv::Mat padded;
                cv::copyMakeBorder(src, padded, kh / 2, kh / 2, kw / 2, kw / 2, cv::BORDER_CONSTANT, b.value);
                cv::filter2D(padded, sums, CV_32F, flipped, cv::Point(-1, -1), 0, cv::BORDER_CONSTANT);
                sums = sums(cv::Rect(kw / 2, kh / 2, static_cast<int>(w), static_cast<int>(h))).clone();
            }
            for (int32_t shift : {0, 5}) {
                std::vector<uint8_t> u8(size_t{w} * h);
                std::vector<int16_t> s16(size_t{w} * h);
                ASSERT_EQ(pxrFilterConvolveMxNu8(k.data(), kw, kh, shift, src.data, w, h, 0, u8.data(), 0, b.ours,
                                                 b.value),
                          0);
                ASSERT_EQ(pxrFilterConvolveMxNu8s16(k.data(), kw, kh, shift, src.data, w, h, 0, s16.data(), 0,
                                                    b.ours, b.value),
                          0);
                for (uint32_t y = 0; y < h; ++y)
                    for (uint32_t x = 0; x < w; ++x) {
                        const int64_t sum = static_cast<int64_t>(sums.at<float>(static_cast<int>(y), static_cast<int>(x)));
                        const int64_t r = shift ? (sum + (1 << (shift - 1))) >> shift : sum;
                        ASSERT_EQ(u8[y * w + x], std::clamp<int64_t>(r, 0, 255)) << x << "," << y;
                        ASSERT_EQ(s16[y * w + x], std::clamp<int64_t>(r, -32768, 32767)) << x << "," << y;
                    }
            }
        }
}
#endif
