// The Lucas-Kanade tracker beside OpenCV's calcOpticalFlowPyrLK on a real
// frame pair (no ground truth): where both keep a corner, they agree to a
// fraction of a pixel for most corners, on kinds 0 and 1.
#include <gtest/gtest.h>

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "features_lk_helpers.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"

using namespace pxr::test::lk;

namespace {

Frame frameOf(const cv::Mat& m) {
    Frame f(static_cast<uint32_t>(m.cols), static_cast<uint32_t>(m.rows));
    for (int y = 0; y < m.rows; ++y) std::copy(m.ptr<uint8_t>(y), m.ptr<uint8_t>(y) + m.cols, &f.at(0, uint32_t(y)));
    return f;
}

}  // namespace

TEST(FeaturesLkOpenCV, RealFramePairAgreesWithOpenCV) {
    const std::string dir = PIXORA_PHOTO_DIR;
    const cv::Mat g1 = cv::imread(dir + "/basketball1.png", cv::IMREAD_GRAYSCALE);
    const cv::Mat g2 = cv::imread(dir + "/basketball2.png", cv::IMREAD_GRAYSCALE);
    if (g1.empty() || g2.empty()) GTEST_SKIP() << "basketball1.png / basketball2.png missing from " << dir;
    std::vector<cv::Point2f> corners, next;
    cv::goodFeaturesToTrack(g1, corners, 500, 0.01, 8);
    std::vector<uint8_t> found;
    std::vector<float> err;
    cv::calcOpticalFlowPyrLK(g1, g2, corners, next, found, err, cv::Size(21, 21), 3);
    Frame a = frameOf(g1), b = frameOf(g2);
    Pyramid pa(a, 4), pb(b, 4);
    std::vector<float> xy;
    for (const auto& c : corners) xy.insert(xy.end(), {c.x, c.y});
    for (uint32_t kind : {0u, 1u}) {
        pxr::test::ForceKind force(PXR_ROW_TrackLKOpticalFlowu8_v3, kind);
        std::vector<float> out(xy.size());
        std::vector<int32_t> status(corners.size());
        pxrTrackLKOpticalFlowu8_v3(a.data(), b.data(), a.width, a.height, 0, pa.v2(), pb.v2(), xy.data(), nullptr,
                                   out.data(), status.data(), static_cast<int32_t>(corners.size()), 21, 21, 4,
                                   PIXORA_LK_TERM_BOTH, 30, 0.0001f, 0);
        size_t both = 0, close = 0;
        for (size_t i = 0; i < corners.size(); ++i) {
            if (status[i] != 1 || !found[i]) continue;
            ++both;
            close += std::hypot(out[2 * i] - next[i].x, out[2 * i + 1] - next[i].y) < 0.25;
        }
        ASSERT_GT(both, corners.size() / 2) << "kind " << kind;
        EXPECT_GT(double(close), 0.9 * double(both)) << close << " of " << both << ", kind " << kind;
    }
}

#endif  // PIXORA_HAVE_OPENCV
