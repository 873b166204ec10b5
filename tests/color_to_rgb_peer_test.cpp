// Cross-checks of the YCbCr group against peer libraries: layout changes and
// the chroma swap exactly, the decoders within a tolerance that still catches
// a wrong weight, a swapped chroma plane or a swapped 565 field.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "pixora.h"
#include "support/guarded_image.h"

#ifdef PIXORA_HAVE_LIBYUV
#include <libyuv.h>
#endif
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

using pxr::test::randomBytes;
using Plane = std::vector<uint8_t>;

namespace {

struct Size {
    uint32_t w, h;
    uint32_t cw() const { return (w + 1) / 2; }
    uint32_t ch() const { return (h + 1) / 2; }
};
constexpr Size kSizes[] = {{37, 11}, {1, 1}, {2, 3}};

}  // namespace

#ifdef PIXORA_HAVE_LIBYUV

// The peer's 444-to-NV12 halving is the rounded 2 x 2 mean, with the lone
// edge samples treated as ours are.
TEST(ColorToRgbLibyuv, HalvingBothWaysMatchesTheBoxMean) {
    for (Size s : kSizes) {
        const int w = int(s.w), h = int(s.h), cw = int(s.cw());
        auto y = randomBytes(s.w * s.h, 4), u = randomBytes(s.w * s.h, 5), v = randomBytes(s.w * s.h, 6);
        Plane oursY(y.size()), oursC(2 * s.cw() * s.ch()), peerY(y.size()), peerC(oursC.size());
        pxrColorYCbCr444PlanarToYCbCr420PseudoPlanaru8(y.data(), u.data(), v.data(), s.w, s.h, 0, 0, 0, oursY.data(),
                                                       oursC.data(), 0, 0);
        libyuv::I444ToNV12(y.data(), w, u.data(), w, v.data(), w, peerY.data(), w, peerC.data(), 2 * cw, w, h);
        EXPECT_EQ(oursY, peerY);
        EXPECT_EQ(oursC, peerC) << s.w << "x" << s.h;
    }
}

#endif  // PIXORA_HAVE_LIBYUV

#ifdef PIXORA_HAVE_OPENCV

namespace {

// Largest difference per component between our RGB888 and OpenCV's.
int worstDifference(const Plane& ours, const cv::Mat& peer) {
    int worst = 0;
    for (size_t i = 0; i < ours.size(); ++i) worst = std::max(worst, std::abs(int(ours[i]) - int(peer.data[i])));
    return worst;
}

}  // namespace

// OpenCV's YCrCb (full-range JPEG weights 1.403, 0.714, 0.344, 1.773 in
// Q14, rounded) lands within one step of both our weight sets.
TEST(ColorToRgbOpenCV, FullRangeDecodersWithinOne) {
    const uint32_t w = 256, h = 256;
    Plane y(w * h), c(2 * w * h);
    cv::Mat ycrcb(int(h), int(w), CV_8UC3);
    auto noise = randomBytes(w * h, 11);
    for (uint32_t i = 0; i < w * h; ++i) {  // every (Cr, Cb) pair, Y random
        y[i] = noise[i];
        c[2 * i] = uint8_t(i / w);      // Cr
        c[2 * i + 1] = uint8_t(i % w);  // Cb
        ycrcb.data[3 * i] = y[i];
        ycrcb.data[3 * i + 1] = c[2 * i];
        ycrcb.data[3 * i + 2] = c[2 * i + 1];
    }
    cv::Mat peer;
    cv::cvtColor(ycrcb, peer, cv::COLOR_YCrCb2RGB);
    Plane jpeg(3 * w * h), weights8(3 * w * h), swapped(c.size());
    pxrColorYCrCbH1V1toRGB888u8(y.data(), c.data(), w, h, 0, 0, jpeg.data(), 0);
    pxrColorCbCrSwapu8(c.data(), w, h, 0, swapped.data(), 0);
    pxrColorYCbCr444PseudoPlanarToRGB888u8(y.data(), swapped.data(), w, h, 0, 0, weights8.data(), 0);
    EXPECT_LE(worstDifference(jpeg, peer), 1);
    EXPECT_LE(worstDifference(weights8, peer), 1);
}

// OpenCV's video-range NV12 decoder (BT.601 weights in Q20, rounded) lands
// within one step of every 565 field; the U-derived component is its blue.
// The peer raises Y below 16 to 16 before weighting, ours does not (C may be
// negative), so Y stays at 16 and above here.
TEST(ColorToRgbOpenCV, VideoRangeWithinOneStepPerField) {
    const uint32_t w = 512, h = 256;  // 256 x 128 chroma pairs: every (U, V)
    Plane src(w * h + w * h / 2);
    auto noise = randomBytes(w * h, 12);
    for (uint32_t i = 0; i < w * h; ++i) src[i] = uint8_t(16 + noise[i] % 240);
    for (uint32_t i = 0; i < w * h / 4; ++i) {
        src[w * h + 2 * i] = uint8_t(i % 256);
        src[w * h + 2 * i + 1] = uint8_t((i / 256) * 2);
    }
    std::vector<uint16_t> ours(w * h);
    pxrColorYUV420toRGB565u8(src.data(), w, h, ours.data());
    cv::Mat nv12(int(h + h / 2), int(w), CV_8UC1, src.data()), bgr;
    cv::cvtColor(nv12, bgr, cv::COLOR_YUV2BGR_NV12);
    int worst = 0;
    for (uint32_t i = 0; i < w * h; ++i) {
        const uint8_t* p = bgr.data + 3 * i;  // B, G, R
        worst = std::max({worst, std::abs((ours[i] >> 11) - (p[0] >> 3)), std::abs(((ours[i] >> 5) & 63) - (p[1] >> 2)),
                          std::abs((ours[i] & 31) - (p[2] >> 3))});
    }
    EXPECT_LE(worst, 1);
}

#endif  // PIXORA_HAVE_OPENCV
