// Separable Q15 correlation of 16-bit images: the rounding
// ((sum >> 14) + 1) >> 1 on hand values, saturation, the cropped kernel at
// every edge, the caller's tmp image, the entry-point contract, every kind
// against kind 0, and OpenCV's sepFilter2D.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include "filters_correlation_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::GuardedImage;
using pxr::test::corr::Image16;
using pxr::test::corr::randomKernel;

namespace {

// A 9-tap kernel with the given taps (index 4 is the centre).
std::vector<int16_t> kernel9(std::initializer_list<std::pair<int, int16_t>> taps) {
    std::vector<int16_t> k(9, 0);
    for (auto [i, v] : taps) k[i] = v;
    return k;
}

}  // namespace

TEST(CorrelationQ15Golden, RoundsHalfUpIncludingNegatives) {
    // A single row: only the centre tap is inside vertically. With the
    // centre at 16384 (one half) each pass halves and rounds half up.
    const std::vector<int16_t> v = {3, -3, 1, -1, 2, -2, 32767, -32768, 100, -100};
    const uint32_t w = static_cast<uint32_t>(v.size());
    const auto half = kernel9({{4, 16384}});
    std::vector<int16_t> tmp(w, 0x5A5A), dst(w, 0x5A5A);
    pxrFilterCorrSep9x9s16(half.data(), v.data(), w, 1, tmp.data(), dst.data());
    EXPECT_EQ(tmp, (std::vector<int16_t>{2, -1, 1, 0, 1, -1, 16384, -16384, 50, -50}));
    EXPECT_EQ(dst, (std::vector<int16_t>{1, 0, 1, 0, 1, 0, 8192, -8192, 25, -25}));
    // 10000 / 32768 of +-100: 30.52 -> 31 and -30.52 -> -31.
    const auto odd = kernel9({{4, 10000}});
    pxrFilterCorrSep9x9s16(odd.data(), v.data(), w, 1, tmp.data(), dst.data());
    EXPECT_EQ(tmp[8], 31);
    EXPECT_EQ(tmp[9], -31);
    EXPECT_EQ(tmp[0], 1);   // 0.92 -> 1
    EXPECT_EQ(tmp[1], -1);  // -0.92 -> -1
}

TEST(CorrelationQ15Golden, SaturatesToSixteenBits) {
    // Taps 4 and 5 (centre and the row below), both 32767, on a 1 x 2 column.
    const auto k = kernel9({{4, 32767}, {5, 32767}});
    for (int16_t v : {int16_t{32767}, int16_t{-32768}}) {
        const std::vector<int16_t> src = {v, v};
        std::vector<int16_t> tmp(2), dst(2);
        pxrFilterCorrSep9x9s16(k.data(), src.data(), 1, 2, tmp.data(), dst.data());
        if (v > 0) {
            EXPECT_EQ(tmp[0], 32767);  // 2 x 32767^2 / 32768 = 65534: saturated
            EXPECT_EQ(tmp[1], 32766);  // 32767^2 / 32768 = 32766.00003
        } else {
            EXPECT_EQ(tmp[0], -32768);  // -65534
            EXPECT_EQ(tmp[1], -32767);  // -32767 exactly
        }
    }
}

TEST(CorrelationQ15Golden, KernelIsCroppedWithoutRenormalisation) {
    // Taps at -2, 0 and +2 weighing 1/4, 1/2, 1/4 on a uniform image: inside,
    // the value stays; within two pixels of an edge a quarter is lost per pass.
    const uint32_t w = 12, h = 10;
    const auto k = kernel9({{2, 8192}, {4, 16384}, {6, 8192}});
    Image16 src(w, h, 1000), tmp(w, h, 0), dst(w, h, 0);
    pxrFilterCorrSep9x9s16_v2(k.data(), src.data(), w, h, 0, tmp.data(), dst.data(), 0);
    auto near = [](uint32_t p, uint32_t size) { return p < 2 || p + 2 >= size; };
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) {
            const int t = near(y, h) ? 750 : 1000;
            EXPECT_EQ(tmp.at(x, y), t) << x << "," << y;
            // 3/4 of 750 = 562.5 rounds up to 563.
            const int d = near(x, w) ? (t == 750 ? 563 : 750) : t;
            EXPECT_EQ(dst.at(x, y), d) << x << "," << y;
        }
}

TEST(CorrelationQ15Golden, KernelLongerThanTheImage) {
    // 31 taps over a 5 x 3 image: only the taps that land inside count.
    std::vector<int16_t> k(31, 1024);
    Image16 src(5, 3, 3200), tmp(5, 3), dst(5, 3);
    pxrFilterCorrSepNxNs16(k.data(), 31, src.data(), 5, 3, 0, tmp.data(), dst.data(), 0);
    // Vertical: 3 taps of 1/32 -> 300; horizontal: 5 taps of 1/32 -> 46.875 -> 47.
    for (uint32_t y = 0; y < 3; ++y)
        for (uint32_t x = 0; x < 5; ++x) {
            EXPECT_EQ(tmp.at(x, y), 300);
            EXPECT_EQ(dst.at(x, y), 47);
        }
}

TEST(CorrelationQ15Contract, TmpIsPackedAndStridesAreBytes) {
    const uint32_t w = 37, h = 11;
    const auto k = randomKernel<int16_t>(13, -6000, 9000, 3);
    Image16 src(w, h, 0, w * 2 + 10);
    const auto bytes = pxr::test::randomBytes(size_t{w} * h * 2, 5);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) src.set(x, y, static_cast<int16_t>(bytes[(y * w + x) * 2] << 7));
    std::vector<int16_t> tmp(size_t{w} * h + 8, 0x5A5A);
    Image16 dst(w, h, 0, w * 2 + 6), packedDst(w, h);
    pxrFilterCorrSep13x13s16_v2(k.data(), src.data(), w, h, src.stride(), tmp.data(), dst.data(), dst.stride());
    for (size_t i = size_t{w} * h; i < tmp.size(); ++i) EXPECT_EQ(tmp[i], 0x5A5A) << "tmp holds w x h values";
    // The same values from packed copies, through the plain generation.
    Image16 packedSrc(w, h);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) packedSrc.set(x, y, src.at(x, y));
    std::vector<int16_t> tmp2(size_t{w} * h);
    pxrFilterCorrSep13x13s16(k.data(), packedSrc.data(), w, h, tmp2.data(), packedDst.data());
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) ASSERT_EQ(dst.at(x, y), packedDst.at(x, y)) << x << "," << y;
    EXPECT_TRUE(std::equal(tmp2.begin(), tmp2.end(), tmp.begin()));
}

TEST(CorrelationQ15Contract, BadArgumentsLogTheirConditions) {
    using Plain = void (*)(const int16_t*, const int16_t*, uint32_t, uint32_t, int16_t*, int16_t*);
    using V2 = void (*)(const int16_t*, const int16_t*, uint32_t, uint32_t, uint32_t, int16_t*, int16_t*, uint32_t);
    const std::vector<std::tuple<std::string, Plain, V2>> fixed = {
        {"9x9", pxrFilterCorrSep9x9s16, pxrFilterCorrSep9x9s16_v2},
        {"11x11", pxrFilterCorrSep11x11s16, pxrFilterCorrSep11x11s16_v2},
        {"13x13", pxrFilterCorrSep13x13s16, pxrFilterCorrSep13x13s16_v2},
        {"15x15", pxrFilterCorrSep15x15s16, pxrFilterCorrSep15x15s16_v2},
        {"17x17", pxrFilterCorrSep17x17s16, pxrFilterCorrSep17x17s16_v2}};
    const std::vector<int16_t> k(17, 1000);
    GuardedImage src(8, 8, 2), tmp(8, 8, 2), dst(8, 8, 2);
    const auto* s = src.as<int16_t>();
    auto* t = tmp.as<int16_t>();
    auto* d = dst.as<int16_t>();
    for (const auto& [size, plain, v2] : fixed) {
        pxr::test::LogCapture log;
        plain(nullptr, s, 8, 8, t, d);
        plain(k.data(), s, 8, 8, nullptr, d);
        plain(k.data(), s, 0, 8, t, d);
        plain(k.data(), s, 8, 0, t, d);
        const std::string plainName = "pxrFilterCorrSep" + size + "s16";
        EXPECT_EQ(log.texts(), std::vector<std::string>(4, "Assertion failed @" + plainName +
                                                               ": knl && src && tmp && dst && w && h\n"));
        log.clear();
        v2(k.data(), nullptr, 8, 8, 16, t, d, 16);
        v2(k.data(), s, 8, 8, 15, t, d, 16);
        v2(k.data(), s, 8, 8, 16, t, d, 15);
        v2(k.data(), s, 8, 8, 16, t, nullptr, 16);
        EXPECT_EQ(log.texts(), std::vector<std::string>(
                                   4, "Assertion failed @" + plainName +
                                          "_v2: kernel && srcImg && tmpImg && dstImg && w && h && (srcStride >= "
                                          "w*sizeof(int16_t)) && (dstStride >= w*sizeof(int16_t))\n"));
    }
    pxr::test::LogCapture log;
    pxrFilterCorrSepNxNs16(k.data(), 0, s, 8, 8, 16, t, d, 16);
    pxrFilterCorrSepNxNs16(k.data(), 5, s, 8, 8, 16, nullptr, d, 16);
    pxrFilterCorrSepNxNs16(k.data(), 5, s, 8, 8, 14, t, d, 16);
    EXPECT_EQ(log.texts(), std::vector<std::string>(
                               3, "Assertion failed @pxrFilterCorrSepNxNs16: kernel && knlSize && srcImg && tmpImg && "
                                  "dstImg && w && h && (srcStride >= w*sizeof(int16_t)) && (dstStride >= "
                                  "w*sizeof(int16_t))\n"));
    EXPECT_TRUE(tmp.untouched());
    EXPECT_TRUE(dst.untouched());
}

namespace {

// tmp is one row of w x h values, so the harness guards exactly what the
// operation may write.
pxr::test::DiffOp q15Op(const std::string& name, uint32_t row, uint32_t n, bool packed,
                        std::function<void(const int16_t*, GuardedImage&, GuardedImage&, GuardedImage&)> call) {
    pxr::test::DiffOp op;
    op.name = name + " n " + std::to_string(n);
    op.row = row;
    op.inputs = [](const pxr::test::Shape& s) { return std::vector<pxr::test::PlaneSpec>{{s.width, s.height, 2}}; };
    op.outputs = [](const pxr::test::Shape& s) {
        return std::vector<pxr::test::PlaneSpec>{{s.width * s.height, 1, 2}, {s.width, s.height, 2}};
    };
    // Large taps make the 32-bit sums wrap now and then: the kinds must agree there too.
    const auto k = std::make_shared<std::vector<int16_t>>(randomKernel<int16_t>(n, -32768, 32767, 40 + n));
    op.call = [k, call](std::vector<GuardedImage>& in, std::vector<GuardedImage>& out) {
        call(k->data(), in[0], out[0], out[1]);
    };
    op.packedOnly = packed;
    return op;
}

}  // namespace

TEST(CorrelationQ15Differential, FixedSizes) {
    using V2 = void (*)(const int16_t*, const int16_t*, uint32_t, uint32_t, uint32_t, int16_t*, int16_t*, uint32_t);
    using Plain = void (*)(const int16_t*, const int16_t*, uint32_t, uint32_t, int16_t*, int16_t*);
    const std::vector<std::tuple<uint32_t, uint32_t, Plain, V2>> fixed = {
        {9, PXR_ROW_FilterCorrSep9x9s16, pxrFilterCorrSep9x9s16, pxrFilterCorrSep9x9s16_v2},
        {11, PXR_ROW_FilterCorrSep11x11s16, pxrFilterCorrSep11x11s16, pxrFilterCorrSep11x11s16_v2},
        {13, PXR_ROW_FilterCorrSep13x13s16, pxrFilterCorrSep13x13s16, pxrFilterCorrSep13x13s16_v2},
        {15, PXR_ROW_FilterCorrSep15x15s16, pxrFilterCorrSep15x15s16, pxrFilterCorrSep15x15s16_v2},
        {17, PXR_ROW_FilterCorrSep17x17s16, pxrFilterCorrSep17x17s16, pxrFilterCorrSep17x17s16_v2}};
    for (const auto& [n, row, plain, v2] : fixed) {
        pxr::test::expectAllKindsMatch(q15Op("CorrSep_v2", row, n, false,
                                             [v2](const int16_t* k, GuardedImage& s, GuardedImage& t, GuardedImage& d) {
                                                 v2(k, s.as<int16_t>(), s.width(), s.height(), s.stride(),
                                                    t.as<int16_t>(), d.as<int16_t>(), d.stride());
                                             }));
        pxr::test::expectAllKindsMatch(q15Op("CorrSep plain", row, n, true,
                                             [plain](const int16_t* k, GuardedImage& s, GuardedImage& t,
                                                     GuardedImage& d) {
                                                 plain(k, s.as<int16_t>(), s.width(), s.height(), t.as<int16_t>(),
                                                       d.as<int16_t>());
                                             }));
    }
}

TEST(CorrelationQ15Differential, AnySize) {
    for (uint32_t n : {1u, 2u, 3u, 8u, 31u, 2049u}) {
        pxr::test::expectAllKindsMatch(
            q15Op("CorrSepNxN", PXR_ROW_FilterCorrSepNxNs16, n, false,
                  [n](const int16_t* k, GuardedImage& s, GuardedImage& t, GuardedImage& d) {
                      pxrFilterCorrSepNxNs16(k, n, s.as<int16_t>(), s.width(), s.height(), s.stride(), t.as<int16_t>(),
                                             d.as<int16_t>(), d.stride());
                  }));
    }
}

TEST(CorrelationQ15Differential, DstOverSrc) {
    // dst may be src itself: the vector kind then runs the passes one after
    // the other, like the reference.
    const uint32_t w = 301, h = 37;
    const auto k = randomKernel<int16_t>(11, -5000, 12000, 9);
    Image16 base(w, h);
    const auto bytes = pxr::test::randomBytes(size_t{w} * h * 2, 12);
    std::memcpy(base.data(), bytes.data(), bytes.size());
    std::vector<std::vector<uint8_t>> results;
    for (uint32_t kind : {0u, 1u}) {
        pxr::test::ForceKind force(PXR_ROW_FilterCorrSep11x11s16, kind);
        Image16 img = base;
        std::vector<int16_t> tmp(size_t{w} * h);
        pxrFilterCorrSep11x11s16(k.data(), img.data(), w, h, tmp.data(), img.data());
        results.push_back(img.bytes());
    }
    EXPECT_EQ(results[0], results[1]);
    // And in place equals out of place.
    Image16 out(w, h);
    std::vector<int16_t> tmp(size_t{w} * h);
    pxrFilterCorrSep11x11s16(k.data(), base.data(), w, h, tmp.data(), out.data());
    EXPECT_EQ(out.bytes(), results[0]);
}

#ifdef PIXORA_HAVE_OPENCV
namespace {

cv::Mat q15ToFloat(const std::vector<int16_t>& k) {
    cv::Mat m(1, static_cast<int>(k.size()), CV_32F);
    for (size_t i = 0; i < k.size(); ++i) m.at<float>(0, static_cast<int>(i)) = k[i] / 32768.0f;
    return m;
}

}  // namespace

// sepFilter2D with a zero constant border crops the kernel the same way.
// It keeps the intermediate in float and rounds once, to nearest even; we
// round after each pass, half up. With weights in eighths and values in
// multiples of 64 nothing is ever rounded, so the two agree exactly;
// otherwise they differ by at most one.
TEST(CorrelationQ15OpenCV, MatchesSepFilter2DWithZeroBorder) {
    const uint32_t w = 203, h = 77;
    for (bool exact : {true, false}) {
        std::vector<int16_t> k(9, 0);
        if (exact) {
            k = {0, 0, 4096, 8192, 8192, 8192, 4096, 0, 0};
        } else {
            const auto r = randomKernel<int16_t>(9, 0, 7000, 4);
            int sum = 0;
            for (auto v : r) sum += v;
            for (size_t i = 0; i < 9; ++i) k[i] = static_cast<int16_t>(r[i] * 32767 / sum);
        }
        cv::Mat src(static_cast<int>(h), static_cast<int>(w), CV_16SC1);
        const auto bytes = pxr::test::randomBytes(size_t{w} * h, exact ? 21 : 22);
        for (uint32_t i = 0; i < w * h; ++i) {
            const int v = (bytes[i] - 128) * 256 + bytes[(i * 7) % (w * h)];
            src.at<int16_t>(static_cast<int>(i / w), static_cast<int>(i % w)) =
                static_cast<int16_t>(exact ? (v / 64) * 64 : v);
        }
        cv::Mat ref;
        cv::sepFilter2D(src, ref, CV_16S, q15ToFloat(k), q15ToFloat(k), cv::Point(-1, -1), 0, cv::BORDER_CONSTANT);
        std::vector<int16_t> tmp(size_t{w} * h), dst(size_t{w} * h);
        pxrFilterCorrSep9x9s16_v2(k.data(), reinterpret_cast<const int16_t*>(src.data), w, h,
                                  static_cast<uint32_t>(src.step), tmp.data(), dst.data(), 0);
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x) {
                const int ours = dst[y * w + x], theirs = ref.at<int16_t>(static_cast<int>(y), static_cast<int>(x));
                if (exact)
                    ASSERT_EQ(ours, theirs) << x << "," << y;
                else
                    ASSERT_LE(std::abs(ours - theirs), 1) << x << "," << y;
            }
    }
}
#endif
