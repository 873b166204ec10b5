// The Lucas-Kanade tracker beside OpenCV's calcOpticalFlowPyrLK on real
// photographs moved by a known motion (a sub-pixel translation and a small
// rotation with scaling, by cv::warpAffine): over the corners both track,
// away from the borders, Pixora's mean and median error against the true
// positions are no worse than OpenCV's, within a small tolerance, and it
// loses or mistracks hardly more corners. Same
// window, same number of levels, same stopping rule (30 iterations or a
// step below 0.01 pixel).
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

struct Errors {
    double mean, median;
    size_t count;
};

Errors summary(std::vector<double> e) {
    if (e.empty()) return {0, 0, 0};
    std::sort(e.begin(), e.end());
    double sum = 0;
    for (double v : e) sum += v;
    return {sum / double(e.size()), e[e.size() / 2], e.size()};
}

// Errors over the inliers of both (within 2 pixels of the truth); the
// outliers and the lost corners of each are counted apart.
struct Comparison {
    Errors pixora, opencv;
    size_t pixoraLost, opencvLost, pixoraOutliers, opencvOutliers;
};

constexpr double kInlier = 2.0;

Comparison compare(const cv::Mat& gray, const cv::Mat& motion, int window, int levels, uint32_t kind) {
    cv::Mat moved;
    cv::warpAffine(gray, moved, motion, gray.size(), cv::INTER_LINEAR, cv::BORDER_REFLECT_101);
    std::vector<cv::Point2f> corners;
    cv::goodFeaturesToTrack(gray, corners, 500, 0.01, 8);

    // Pixora.
    Frame a = frameOf(gray), b = frameOf(moved);
    Pyramid pa(a, levels), pb(b, levels);
    std::vector<float> xy;
    for (const auto& c : corners) xy.insert(xy.end(), {c.x, c.y});
    const auto n = static_cast<int32_t>(corners.size());
    std::vector<float> out(xy.size());
    std::vector<int32_t> status(corners.size());
    {
        pxr::test::ForceKind force(PXR_ROW_TrackLKOpticalFlowu8_v3, kind);
        EXPECT_EQ(pxrTrackLKOpticalFlowu8_v3(a.data(), b.data(), a.width, a.height, a.stride, pa.v2(), pb.v2(),
                                             xy.data(), nullptr, out.data(), status.data(), n, window, window, levels,
                                             PIXORA_LK_TERM_BOTH, 30, 0.0001f, 0),
                  0);
    }

    // OpenCV.
    std::vector<cv::Point2f> next;
    std::vector<uint8_t> found;
    std::vector<float> err;
    cv::calcOpticalFlowPyrLK(gray, moved, corners, next, found, err, cv::Size(window, window), levels - 1);

    // Errors where both tracked, the true position well inside.
    std::vector<double> ep, eo;
    Comparison c{};
    const double margin = window / 2 + 2;
    for (size_t i = 0; i < corners.size(); ++i) {
        const double tx = motion.at<double>(0, 0) * corners[i].x + motion.at<double>(0, 1) * corners[i].y +
                          motion.at<double>(0, 2);
        const double ty = motion.at<double>(1, 0) * corners[i].x + motion.at<double>(1, 1) * corners[i].y +
                          motion.at<double>(1, 2);
        if (tx < margin || ty < margin || tx > gray.cols - 1 - margin || ty > gray.rows - 1 - margin) continue;
        c.pixoraLost += status[i] != 1;
        c.opencvLost += found[i] == 0;
        if (status[i] != 1 || !found[i]) continue;
        const double p = std::hypot(out[2 * i] - tx, out[2 * i + 1] - ty);
        const double o = std::hypot(next[i].x - tx, next[i].y - ty);
        c.pixoraOutliers += p >= kInlier;
        c.opencvOutliers += o >= kInlier;
        if (p >= kInlier || o >= kInlier) continue;
        ep.push_back(p);
        eo.push_back(o);
    }
    c.pixora = summary(ep);
    c.opencv = summary(eo);
    return c;
}

}  // namespace

TEST(FeaturesLkOpenCV, TrackingErrorOnRealPhotographsIsNoWorse) {
    const std::string dir = PIXORA_PHOTO_DIR;
    const char* photos[] = {"basketball1.png", "baboon.jpg", "building.jpg", "rubberwhale1.png"};
    cv::Mat translate = (cv::Mat_<double>(2, 3) << 1, 0, 1.3, 0, 1, -0.7);
    cv::Mat affine = cv::getRotationMatrix2D(cv::Point2f(300.0f, 220.0f), 2.0, 1.02);
    affine.at<double>(0, 2) += 0.4;
    affine.at<double>(1, 2) -= 0.9;
    int used = 0;
    for (const char* name : photos) {
        const cv::Mat gray = cv::imread(dir + "/" + name, cv::IMREAD_GRAYSCALE);
        if (gray.empty()) continue;
        ++used;
        for (const auto& [motionName, motion] : {std::pair{"translation", translate}, std::pair{"affine", affine}})
            for (auto [window, levels] : {std::pair{21, 4}, std::pair{11, 3}})
                for (uint32_t kind : {0u, 1u}) {
                    const Comparison c = compare(gray, motion, window, levels, kind);
                    SCOPED_TRACE(std::string(name) + " " + motionName + " window " + std::to_string(window) +
                                 " levels " + std::to_string(levels) + " kind " + std::to_string(kind));
                    ASSERT_GT(c.pixora.count, 50u);
                    RecordProperty(std::string(name) + "_" + motionName + "_" + std::to_string(window),
                                   std::to_string(c.pixora.mean) + "/" + std::to_string(c.opencv.mean));
                    EXPECT_LE(c.pixora.mean, c.opencv.mean * 1.1 + 0.01)
                        << "median " << c.pixora.median << " vs " << c.opencv.median;
                    EXPECT_LE(c.pixora.median, c.opencv.median * 1.1 + 0.01)
                        << "mean " << c.pixora.mean << " vs " << c.opencv.mean;
                    // Corners lost or tracked to a wrong place: at most a
                    // few more than OpenCV's.
                    EXPECT_LE(c.pixoraLost + c.pixoraOutliers,
                              c.opencvLost + c.opencvOutliers + c.pixora.count / 100 + 2);
                }
    }
    if (used == 0) GTEST_SKIP() << "no photographs in " << dir << " (package opencv-doc)";
    if (cv::imread(dir + "/basketball1.png", cv::IMREAD_GRAYSCALE).empty())
        GTEST_SKIP() << "basketball1.png missing from " << dir;
}

TEST(FeaturesLkOpenCV, RealFramePairAgreesWithOpenCV) {
    // basketball1/2: real motion, no ground truth. Where both trackers keep
    // a corner, they agree to a fraction of a pixel for most corners.
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
    ASSERT_GT(both, corners.size() / 2);
    EXPECT_GT(double(close), 0.9 * double(both)) << close << " of " << both;
}

#endif  // PIXORA_HAVE_OPENCV
