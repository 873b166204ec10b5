// Benchmarks of FAST-9 on a real 640x480 photograph (basketball1.png from
// PIXORA_PHOTO_DIR; a synthetic textured image when it cannot be read):
// detection alone and detection with scores and suppression, each kind
// beside OpenCV's FAST (TYPE_9_16, same threshold, without and with its
// suppression, one thread) and memcpy of the image's bytes.
//
// Kind 0 of the suppressing member is the reference all the way down: its
// detection row and the scorer pointer are put on the reference too (in the
// CPU performance mode they would be on the vector kind).
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/features2d.hpp>
#include <opencv2/imgcodecs.hpp>
#endif

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/bench_util.h"
#include "features/fast/fast.h"
#include "frame/row_ids.h"
#include "frame/tables.h"

namespace {

using pxr::bench::Image;

constexpr uint32_t kThreshold = 20;

// The photograph, or blurred random blocks with fine noise.
const Image& frame() {
    static const Image img = [] {
#ifdef PIXORA_HAVE_OPENCV
        const cv::Mat photo = cv::imread(std::string(PIXORA_PHOTO_DIR) + "/basketball1.png", cv::IMREAD_GRAYSCALE);
        if (!photo.empty()) {
            Image out(static_cast<uint32_t>(photo.cols), static_cast<uint32_t>(photo.rows));
            for (int y = 0; y < photo.rows; ++y)
                std::memcpy(out.data() + size_t(y) * out.stride(), photo.ptr(y), static_cast<size_t>(photo.cols));
            return out;
        }
#endif
        Image out(640, 480);
        std::mt19937 gen(7);
        std::vector<int> blocks((640 / 8 + 1) * (480 / 8 + 1));
        for (auto& b : blocks) b = static_cast<int>(gen() % 200) + 20;
        for (uint32_t y = 0; y < 480; ++y)
            for (uint32_t x = 0; x < 640; ++x)
                out.data()[y * 640 + x] =
                    static_cast<uint8_t>(blocks[(y / 8) * 81 + x / 8] + static_cast<int>(gen() % 17) - 8);
        return out;
    }();
    return img;
}

struct Buffers {
    std::vector<uint32_t> xy, scores, temp;
    uint32_t n = 0;
    explicit Buffers(const Image& img)
        : xy(2 * size_t{img.width()} * img.height()), scores(size_t{img.width()} * img.height()),
          temp(3 * size_t{img.width()} * img.height() + img.height()) {}
};

using Run = void (*)(const Image&, Buffers&);

void detect(const Image& img, Buffers& b) {
    pxrCornerFast9u8(img.data(), img.width(), img.height(), img.stride(), kThreshold, 3, b.xy.data(),
                     static_cast<uint32_t>(b.scores.size()), &b.n);
}

void suppressed(const Image& img, Buffers& b) {
    pxrCornerFast9Scoreu8_v2(img.data(), img.width(), img.height(), img.stride(), kThreshold, 3, b.xy.data(),
                             b.scores.data(), static_cast<uint32_t>(b.scores.size()), &b.n, 1, b.temp.data());
}

void loop(benchmark::State& state, Run run) {
    const Image& img = frame();
    Buffers b(img);
    for (auto _ : state) {
        run(img, b);
        benchmark::DoNotOptimize(b.n);
        benchmark::ClobberMemory();
    }
    state.counters["corners"] = b.n;
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * img.width() * img.height());
}

void registerFast(const std::string& name, uint32_t row, Run run, bool suppress) {
    const Image& img = frame();
    const std::string size = std::to_string(img.width()) + "x" + std::to_string(img.height());
    for (uint32_t kind = 0; kind < PIXORA_NUM_KINDS; ++kind) {
        if (!pxr::demo::kindHasOwnCode(row, kind)) continue;
        benchmark::RegisterBenchmark((name + "/" + pxrImplChar[kind] + "/" + size).c_str(),
                                     [row, kind, run](benchmark::State& state) {
                                         pxr::bench::forceKind(row, kind);
                                         // Kind 0 is the reference all the way down: its
                                         // detection row and the scorer pointers too.
                                         if (kind == PIXORA_KIND_CPU) {
                                             pxrImplTable[PXR_ROW_CornerFast9u8] = PIXORA_KIND_CPU;
                                             uCHelper();
                                         } else {
                                             uVHelper();
                                         }
                                         loop(state, run);
                                     });
    }
#ifdef PIXORA_HAVE_OPENCV
    benchmark::RegisterBenchmark((name + "/opencv/" + size).c_str(), [suppress](benchmark::State& state) {
        const Image& src = frame();
        const cv::Mat m(static_cast<int>(src.height()), static_cast<int>(src.width()), CV_8UC1,
                        const_cast<uint8_t*>(src.data()), src.stride());
        std::vector<cv::KeyPoint> kps;
        for (auto _ : state) {
            cv::FAST(m, kps, static_cast<int>(kThreshold), suppress, cv::FastFeatureDetector::TYPE_9_16);
            benchmark::DoNotOptimize(kps.data());
            benchmark::ClobberMemory();
        }
        state.counters["corners"] = static_cast<double>(kps.size());
    });
#else
    (void)suppress;
#endif
    benchmark::RegisterBenchmark((name + "/memcpy/" + size).c_str(), [](benchmark::State& state) {
        const Image& src = frame();
        Image dst(src.width(), src.height());
        for (auto _ : state) {
            std::memcpy(dst.data(), src.data(), src.bytes());
            benchmark::DoNotOptimize(dst.data());
            benchmark::ClobberMemory();
        }
    });
}

}  // namespace

PXR_BENCH_OPERATIONS(features_fast) {
    registerFast("pxrCornerFast9u8", PXR_ROW_CornerFast9u8, detect, false);
    registerFast("pxrCornerFast9Scoreu8_v2+nms", PXR_ROW_CornerFast9Scoreu8_v2, suppressed, true);
}
