// Benchmarks of the Lucas-Kanade tracker: a real 640x480 frame pair
// (basketball1/2.png from PIXORA_PHOTO_DIR; a textured pair moved by a
// sub-pixel shift when the photographs or OpenCV are missing), 500
// corners, 21x21 window, 3 levels. Pyramids are built once, outside the
// timed loop, for Pixora and for OpenCV (with its derivative levels), so
// only the tracking is timed. Each kind beside cv::calcOpticalFlowPyrLK
// with the same stopping rule, and memcpy of the frame's bytes.
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/video/tracking.hpp>
#endif

#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "bench/bench_util.h"
#include "frame/row_ids.h"
#include "frame/tables.h"

namespace {

using pxr::bench::Image;

constexpr uint32_t kW = 640, kH = 480;
constexpr int32_t kWindow = 21, kLevels = 3;

// The frames, their pyramids and the corners, made once.
struct Scene {
    Image a{kW, kH}, b{kW, kH};
    pxrPyramidLevel_v2 pa[kLevels] = {}, pb[kLevels] = {};
    std::vector<float> xy;
    bool real = false;
#ifdef PIXORA_HAVE_OPENCV
    std::vector<cv::Mat> cvA, cvB;
    std::vector<cv::Point2f> corners;
#endif

    Scene() {
        load();
        for (auto* p : {pa, pb}) pxrPyramidAllocate_v2(p, kW, kH, 0, 1, kLevels, 0);
        pxrPyramidCreateu8_v2(a.data(), kW, kH, a.stride(), kLevels, pa);
        pxrPyramidCreateu8_v2(b.data(), kW, kH, b.stride(), kLevels, pb);
#ifdef PIXORA_HAVE_OPENCV
        const cv::Mat ma(kH, kW, CV_8UC1, a.data(), a.stride()), mb(kH, kW, CV_8UC1, b.data(), b.stride());
        cv::goodFeaturesToTrack(ma, corners, 500, 0.002, 5);
        for (const auto& c : corners) xy.insert(xy.end(), {c.x, c.y});
        cv::buildOpticalFlowPyramid(ma, cvA, cv::Size(kWindow, kWindow), kLevels - 1);
        cv::buildOpticalFlowPyramid(mb, cvB, cv::Size(kWindow, kWindow), kLevels - 1);
#else
        for (uint32_t y = 0; y < 20; ++y)
            for (uint32_t x = 0; x < 25; ++x) xy.insert(xy.end(), {12.0f + 25.6f * x, 12.0f + 24.0f * y});
#endif
    }
    ~Scene() {
        pxrPyramidDelete_v2(pa, kLevels, 1);
        pxrPyramidDelete_v2(pb, kLevels, 1);
    }

    void load() {
#ifdef PIXORA_HAVE_OPENCV
        const std::string dir = PIXORA_PHOTO_DIR;
        const cv::Mat g1 = cv::imread(dir + "/basketball1.png", cv::IMREAD_GRAYSCALE);
        const cv::Mat g2 = cv::imread(dir + "/basketball2.png", cv::IMREAD_GRAYSCALE);
        if (g1.rows == int(kH) && g1.cols == int(kW) && g2.size() == g1.size()) {
            for (uint32_t y = 0; y < kH; ++y) {
                std::memcpy(a.data() + size_t{y} * a.stride(), g1.ptr(int(y)), kW);
                std::memcpy(b.data() + size_t{y} * b.stride(), g2.ptr(int(y)), kW);
            }
            real = true;
            return;
        }
#endif
        // Smooth texture, and the same moved by (1.3, -0.7).
        for (int k = 0; k < 2; ++k)
            for (uint32_t y = 0; y < kH; ++y)
                for (uint32_t x = 0; x < kW; ++x) {
                    const float fx = float(x) - (k ? 1.3f : 0.0f), fy = float(y) + (k ? 0.7f : 0.0f);
                    const float v = 128 + 50 * std::sin(0.29f * fx + 0.13f * fy) + 40 * std::sin(0.41f * fx - 0.37f * fy);
                    (k ? b : a).data()[size_t{y} * kW + x] = static_cast<uint8_t>(v);
                }
    }
};

Scene& scene() {
    static Scene s;
    return s;
}

std::string name(const char* op, const char* variant) {
    return std::string(op) + "/" + variant + "/" + std::to_string(kW) + "x" + std::to_string(kH);
}

// One run of an entry point; returns nothing the optimiser may drop.
using Run = void (*)(Scene&, float*, int32_t*);

void runV3(Scene& s, float* out, int32_t* status) {
    pxrTrackLKOpticalFlowu8_v3(s.a.data(), s.b.data(), kW, kH, s.a.stride(), s.pa, s.pb, s.xy.data(), nullptr, out,
                               status, static_cast<int32_t>(s.xy.size() / 2), kWindow, kWindow, kLevels,
                               PIXORA_LK_TERM_BOTH, 30, 0.0001f, 0);
}

void runV2(Scene& s, float* out, int32_t* status) {
    pxrTrackLKOpticalFlowu8_v2(s.a.data(), s.b.data(), kW, kH, s.a.stride(), s.pa, s.pb, s.xy.data(), out, status,
                               static_cast<int32_t>(s.xy.size() / 2), kWindow, kWindow, 30, kLevels);
}

void loop(benchmark::State& state, Run run) {
    Scene& s = scene();
    std::vector<float> out(s.xy.size());
    std::vector<int32_t> status(s.xy.size() / 2);
    for (auto _ : state) {
        run(s, out.data(), status.data());
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.counters["features"] = static_cast<double>(status.size());
    state.counters["real"] = s.real ? 1 : 0;
}

// OpenCV's tracker on the prebuilt pyramids; epsilon is OpenCV's step
// length (it squares it), so 0.01 is our 0.0001 and 0.03 our 0.0009.
[[maybe_unused]] void loopOpenCV(benchmark::State& state, double epsilon) {
#ifdef PIXORA_HAVE_OPENCV
    Scene& s = scene();
    std::vector<cv::Point2f> next;
    std::vector<uint8_t> found;
    std::vector<float> err;
    const cv::TermCriteria criteria(cv::TermCriteria::COUNT | cv::TermCriteria::EPS, 30, epsilon);
    for (auto _ : state) {
        cv::calcOpticalFlowPyrLK(s.cvA, s.cvB, s.corners, next, found, err, cv::Size(kWindow, kWindow), kLevels - 1,
                                 criteria);
        benchmark::DoNotOptimize(next.data());
        benchmark::ClobberMemory();
    }
    state.counters["features"] = static_cast<double>(s.corners.size());
#else
    (void)epsilon;
    state.SkipWithError("no OpenCV");
#endif
}

void registerTracker(const char* op, uint32_t row, Run run, double cvEpsilon) {
    for (uint32_t kind = 0; kind < PIXORA_NUM_KINDS; ++kind) {
        if (!pxr::demo::kindHasOwnCode(row, kind)) continue;
        benchmark::RegisterBenchmark(name(op, pxrImplChar[kind]).c_str(), [row, kind, run](benchmark::State& st) {
            pxr::bench::forceKind(row, kind);
            // Kind 0 is the reference all the way down: the derivative
            // kernel's pointer too.
            if (kind == PIXORA_KIND_CPU)
                uCHelper();
            else
                uVHelper();
            loop(st, run);
        });
    }
#ifdef PIXORA_HAVE_OPENCV
    benchmark::RegisterBenchmark(name(op, "opencv").c_str(),
                                 [cvEpsilon](benchmark::State& st) { loopOpenCV(st, cvEpsilon); });
#else
    (void)cvEpsilon;
#endif
    benchmark::RegisterBenchmark(name(op, "memcpy").c_str(), [](benchmark::State& st) {
        std::vector<uint8_t> from(size_t{kW} * kH, 1), to(from.size());
        for (auto _ : st) {
            std::memcpy(to.data(), from.data(), from.size());
            benchmark::DoNotOptimize(to.data());
            benchmark::ClobberMemory();
        }
    });
}

}  // namespace

PXR_BENCH_OPERATIONS(features_lk) {
    // 30 iterations or a step below 0.01 pixel (OpenCV's default rule).
    registerTracker("pxrTrackLKOpticalFlowu8_v3", PXR_ROW_TrackLKOpticalFlowu8_v3, runV3, 0.01);
    // The older generations' rule: a step below 0.03 pixel.
    registerTracker("pxrTrackLKOpticalFlowu8_v2", PXR_ROW_TrackLKOpticalFlowu8_v2, runV2, 0.03);
}
