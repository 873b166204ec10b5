// FAST-9 against OpenCV's FAST (TYPE_9_16) on real photographs: both use the
// strict segment test and skip 3 pixels at every edge.
#include <gtest/gtest.h>

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/features2d.hpp>
#include <opencv2/imgcodecs.hpp>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "features_fast_helpers.h"
#include "support/differential.h"

namespace {

using Point = std::pair<uint32_t, uint32_t>;

cv::Mat photo(const char* name) { return cv::imread(std::string(PIXORA_PHOTO_DIR) + "/" + name, cv::IMREAD_GRAYSCALE); }

std::set<Point> opencvCorners(const cv::Mat& img, int threshold, bool suppress,
                              std::vector<std::pair<Point, float>>* responses = nullptr) {
    std::vector<cv::KeyPoint> kps;
    cv::FAST(img, kps, threshold, suppress, cv::FastFeatureDetector::TYPE_9_16);
    std::set<Point> s;
    for (const auto& k : kps) {
        const Point p{static_cast<uint32_t>(k.pt.x), static_cast<uint32_t>(k.pt.y)};
        // Compare over the interior both scan: 3 pixels from every edge.
        if (p.first < 3 || p.second < 3 || p.first + 3 >= static_cast<uint32_t>(img.cols) ||
            p.second + 3 >= static_cast<uint32_t>(img.rows))
            continue;
        s.insert(p);
        if (responses) responses->emplace_back(p, k.response);
    }
    return s;
}

struct Ours {
    std::set<Point> corners;
    std::vector<Point> ordered;
    std::vector<uint32_t> scores;
};

Ours ourCorners(const cv::Mat& img, uint32_t threshold, bool suppress) {
    const uint32_t w = static_cast<uint32_t>(img.cols), h = static_cast<uint32_t>(img.rows);
    const uint32_t max = w * h;
    std::vector<uint32_t> xy(2 * size_t{max}), scores(max), temp(3 * size_t{max} + h);
    uint32_t n = 0;
    pxrCornerFast9Scoreu8_v2(img.data, w, h, static_cast<uint32_t>(img.step), threshold, 3, xy.data(), scores.data(),
                             max, &n, suppress ? 1 : 0, temp.data());
    Ours o;
    for (uint32_t i = 0; i < n; ++i) {
        o.corners.emplace(xy[2 * i], xy[2 * i + 1]);
        o.ordered.emplace_back(xy[2 * i], xy[2 * i + 1]);
        o.scores.push_back(scores[i]);
    }
    return o;
}

const char* const kPhotos[] = {"basketball1.png", "basketball2.png", "box.png", "graf1.png", "building.jpg",
                               "chessboard.png", "left01.jpg", "fruits.jpg"};

}  // namespace

// OpenCV's response is the same strength (the highest threshold that still
// passes) and its suppression keeps a corner only above all its touching
// corners: raw sets, suppressed sets and scores agree, on kinds 0 and 1.
TEST(FastPeer, Fast9CornersScoresAndSuppressionAreOpenCvs) {
    if (photo("basketball1.png").empty())
        GTEST_SKIP() << "basketball1.png not found in " << PIXORA_PHOTO_DIR << " (package opencv-doc)";
    for (const char* name : kPhotos) {
        const cv::Mat img = photo(name);
        if (img.empty()) continue;
        for (int threshold : {1, 30}) {
            std::vector<std::pair<Point, float>> responses;
            const auto kept = opencvCorners(img, threshold, true, &responses);
            const auto expected = opencvCorners(img, threshold, false);
            ASSERT_GT(expected.size(), 20u) << name;
            for (uint32_t kind : {0u, 1u}) {
                SCOPED_TRACE(std::string(name) + " threshold " + std::to_string(threshold) + " kind " +
                             std::to_string(kind));
                pxr::test::ForceKind score(PXR_ROW_CornerFast9Scoreu8_v2, kind), detect(PXR_ROW_CornerFast9u8, kind);
                const Ours raw = ourCorners(img, static_cast<uint32_t>(threshold), false);
                EXPECT_EQ(raw.corners.size(), raw.ordered.size());
                EXPECT_TRUE(std::is_sorted(raw.ordered.begin(), raw.ordered.end(),
                                           [](const Point& a, const Point& b) {
                                               return std::pair(a.second, a.first) < std::pair(b.second, b.first);
                                           }))
                    << "raster order";
                EXPECT_EQ(raw.corners, expected);
                EXPECT_EQ(ourCorners(img, static_cast<uint32_t>(threshold), true).corners, kept);
                std::map<Point, uint32_t> ourScore;
                for (size_t i = 0; i < raw.ordered.size(); ++i) ourScore[raw.ordered[i]] = raw.scores[i];
                size_t mismatched = 0;
                for (const auto& [p, r] : responses)
                    if (!ourScore.count(p) || static_cast<float>(ourScore[p]) != r) ++mismatched;
                EXPECT_EQ(mismatched, 0u);
            }
        }
    }
}

#endif  // PIXORA_HAVE_OPENCV
