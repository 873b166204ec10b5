// Conversions from packed RGB against libyuv and OpenCV where they compute
// the same thing. 565 packing and byte order match exactly; libyuv's
// full-range ("J") luma uses the same 8-bit weights, so Y matches exactly;
// the peers' chroma, grey, JPEG YCrCb, HSV and LAB use other fixed-point
// constants and are held to stated tolerances.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "color_from_rgb_members.h"
#include "pixora.h"
#include "support/guarded_image.h"

#ifdef PIXORA_HAVE_LIBYUV
#include <libyuv.h>
#endif
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::from_rgb::member;
using Bytes = std::vector<uint8_t>;

#if defined(PIXORA_HAVE_LIBYUV) || defined(PIXORA_HAVE_OPENCV)
namespace {

constexpr uint32_t kW = 331, kH = 97;  // odd, past every vector width

std::vector<Bytes> run(const char* name, const Bytes& src) {
    return pxr::test::from_rgb::runPacked(member(name), src, kW, kH);
}

Bytes image(uint32_t bpp, uint32_t seed) { return pxr::test::randomBytes(size_t{kW} * kH * bpp, seed); }

// Largest difference of two equally long byte vectors; `circular` for hue (0..179).
int maxDiff(const Bytes& a, const Bytes& b, size_t step = 1, size_t offset = 0, bool circular = false) {
    int worst = 0;
    for (size_t i = offset; i < a.size(); i += step) {
        int d = std::abs(a[i] - b[i]);
        if (circular) d = std::min(d, 180 - d);
        worst = std::max(worst, d);
    }
    return worst;
}

}  // namespace
#endif

#ifdef PIXORA_HAVE_LIBYUV
TEST(ColorFromRgbLibyuv, FullRangeLumaMatchesExactlyAndChromaWithinTwo) {
    // libyuv's chroma weights are 127 / -84 / -43 and it averages pairs of
    // pairs; ours 128 / -85 / -43 on the rounded mean of the block.
    using J = int (*)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int);
    auto check = [](J fn, const char* name, uint32_t bpp, uint32_t chromaRows) {
        const Bytes src = image(bpp, bpp);
        const uint32_t cw = (kW + 1) / 2;
        Bytes y(size_t{kW} * kH), u(size_t{cw} * chromaRows), v(u.size());
        fn(src.data(), static_cast<int>(bpp * kW), y.data(), static_cast<int>(kW), u.data(), static_cast<int>(cw),
           v.data(), static_cast<int>(cw), static_cast<int>(kW), static_cast<int>(kH));
        const auto ours = run(name, src);
        EXPECT_EQ(ours[0], y) << name;
        EXPECT_LE(maxDiff(ours[1], u), 2) << name;
        EXPECT_LE(maxDiff(ours[2], v), 2) << name;
    };
    check(libyuv::RGB24ToJ420, "pxrColorRGB888ToYCbCr420Planaru8", 3, (kH + 1) / 2);
    check(libyuv::ARGBToJ420, "pxrColorRGBA8888ToYCbCr420Planaru8", 4, (kH + 1) / 2);
    check(libyuv::ARGBToJ422, "pxrColorRGBA8888ToYCbCr422Planaru8", 4, kH);
}
#endif

#ifdef PIXORA_HAVE_OPENCV
namespace {
cv::Mat wrap(const Bytes& b, int channels, uint32_t w = kW, uint32_t h = kH) {
    return cv::Mat(static_cast<int>(h), static_cast<int>(w), CV_8UC(channels), const_cast<uint8_t*>(b.data()));
}
Bytes bytesOf(const cv::Mat& m) { return Bytes(m.data, m.data + m.total() * m.elemSize()); }
}  // namespace

TEST(ColorFromRgbOpenCV, NarrowingTo565MatchesExactly) {
    // OpenCV's BGR565 word holds the first byte in bits 0..4: our BGR565.
    const Bytes rgb = image(3, 6), rgba = image(4, 7);
    cv::Mat out;
    cv::cvtColor(wrap(rgb, 3), out, cv::COLOR_BGR2BGR565);
    EXPECT_EQ(run("pxrColorRGB888ToBGR565u8", rgb)[0], bytesOf(out));
    cv::cvtColor(wrap(rgba, 4), out, cv::COLOR_BGRA2BGR565);
    EXPECT_EQ(run("pxrColorRGBA8888ToBGR565u8", rgba)[0], bytesOf(out));
    cv::cvtColor(wrap(rgb, 3), out, cv::COLOR_RGB2BGR);
    EXPECT_EQ(run("pxrColorRGB888ToBGR888u8", rgb)[0], bytesOf(out));
}

TEST(ColorFromRgbOpenCV, GreyJpegHsvAndLabWithinTheirRounding) {
    const Bytes rgb = image(3, 8), rgba = image(4, 9);
    cv::Mat out;
    // OpenCV: Q14 grey weights, Q14 YCrCb weights, Q12 HSV reciprocals and
    // its own fixed-point LAB; each differs from ours by its rounding only.
    cv::cvtColor(wrap(rgb, 3), out, cv::COLOR_RGB2GRAY);
    EXPECT_LE(maxDiff(run("pxrColorRGB888ToGrayu8", rgb)[0], bytesOf(out)), 1);
    cv::cvtColor(wrap(rgb, 3), out, cv::COLOR_RGB2YCrCb);
    EXPECT_LE(maxDiff(run("pxrColorRGB888toYCrCbu8", rgb)[0], bytesOf(out)), 1);
    cv::cvtColor(wrap(rgb, 3), out, cv::COLOR_RGB2HSV);
    const Bytes hsv = run("pxrColorRGB888ToHSV888u8", rgb)[0], cvHsv = bytesOf(out);
    EXPECT_LE(maxDiff(hsv, cvHsv, 3, 0, true), 1);
    EXPECT_LE(maxDiff(hsv, cvHsv, 3, 1), 1);
    EXPECT_EQ(maxDiff(hsv, cvHsv, 3, 2), 0);
    cv::cvtColor(wrap(rgba, 4), out, cv::COLOR_RGBA2RGB);
    cv::Mat lab;
    cv::cvtColor(out, lab, cv::COLOR_RGB2Lab);
    EXPECT_LE(maxDiff(run("pxrColorRGBA8888ToLABu8", rgba)[0], bytesOf(lab)), 2);
}
#endif
