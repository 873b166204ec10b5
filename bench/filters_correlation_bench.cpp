// Benchmarks of the correlation and convolution filters.
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#endif

#include <functional>
#include <string>
#include <vector>

#include "bench/bench_util.h"
#include "frame/row_ids.h"

namespace {

using pxr::bench::Image;
using pxr::bench::Size;

// 5 x 5 convolution kernel, sum 256 (shift 8): the binomial blur tilted by
// 2 (j - i), so that it is not symmetric and turning it round matters.
std::vector<int16_t> convolutionKernel() {
    const int b[5] = {1, 4, 6, 4, 1};
    std::vector<int16_t> k(25);
    for (int i = 0; i < 5; ++i)
        for (int j = 0; j < 5; ++j) k[i * 5 + j] = static_cast<int16_t>(b[i] * b[j] + 2 * (j - i));
    return k;
}

// 9-tap Q15 binomial kernel, sum 32768.
const std::vector<int16_t> kQ15Kernel = {128, 1024, 3584, 7168, 8960, 7168, 3584, 1024, 128};

#ifdef PIXORA_HAVE_OPENCV
cv::Mat wrap(const Image& img, int type = CV_8UC1, uint32_t bytesPerPixel = 1) {
    return cv::Mat(static_cast<int>(img.height()), static_cast<int>(img.width() / bytesPerPixel), type,
                   const_cast<uint8_t*>(img.data()), img.stride());
}
#endif

// registerOperation for 16-bit images: the same names and variants, with
// images of 2 bytes per pixel.
using Call16 = std::function<void(const Image& src, Image& tmp, Image& dst, Size s)>;
void registerS16Operation(const std::string& name, uint32_t row, Call16 run, const std::string& peerName,
                          Call16 peer) {
    auto loop = [](benchmark::State& state, Size s, const Call16& call) {
        const Image src = pxr::bench::randomImage(s.width * 2, s.height);
        Image tmp(s.width * 2, s.height), dst(s.width * 2, s.height);
        for (auto _ : state) {
            call(src, tmp, dst, s);
            benchmark::DoNotOptimize(dst.data());
            benchmark::ClobberMemory();
        }
        state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * s.width * s.height * 2);
    };
    for (Size s : pxr::bench::kSizes) {
        const std::string size = std::to_string(s.width) + "x" + std::to_string(s.height);
        for (uint32_t kind = 0; kind < PIXORA_NUM_KINDS; ++kind) {
            if (!pxr::demo::kindHasOwnCode(row, kind)) continue;
            benchmark::RegisterBenchmark((name + "/" + pxrImplChar[kind] + "/" + size).c_str(),
                                         [=](benchmark::State& state) {
                                             pxr::bench::forceKind(row, kind);
                                             loop(state, s, run);
                                         });
        }
        if (peer)
            benchmark::RegisterBenchmark((name + "/" + peerName + "/" + size).c_str(),
                                         [=](benchmark::State& state) { loop(state, s, peer); });
        benchmark::RegisterBenchmark((name + "/memcpy/" + size).c_str(), [=](benchmark::State& state) {
            loop(state, s, [](const Image& src, Image&, Image& dst, Size) {
                std::memcpy(dst.data(), src.data(), src.bytes());
            });
        });
    }
}

}  // namespace

PXR_BENCH_OPERATIONS(filters_correlation) {
    using pxr::bench::Operation;
    static const std::vector<int16_t> k5 = convolutionKernel();
    Operation convolve{"pxrFilterConvolveMxNu8 5x5", PXR_ROW_FilterConvolveMxNu8,
                       [](const Image& src, Image& dst) {
                           pxrFilterConvolveMxNu8(k5.data(), 5, 5, 8, src.data(), src.width(), src.height(),
                                                  src.stride(), dst.data(), dst.stride(), PIXORA_BORDER_REPLICATE, 0);
                       },
                       {}, {}};
    Call16 sep = [](const Image& src, Image& tmp, Image& dst, Size s) {
        pxrFilterCorrSep9x9s16_v2(kQ15Kernel.data(), reinterpret_cast<const int16_t*>(src.data()), s.width, s.height,
                                  src.stride(), reinterpret_cast<int16_t*>(tmp.data()),
                                  reinterpret_cast<int16_t*>(dst.data()), dst.stride());
    };
    Call16 sepPeer;
#ifdef PIXORA_HAVE_OPENCV
    // The same kernel for the peer: ours turned round (filter2D correlates),
    // as floats divided by 2^shift, with the edge replicated. The peer rounds
    // its float sum to nearest even, we round the integer sum half up.
    static const cv::Mat k5Peer = [] {
        cv::Mat k(5, 5, CV_32F), flipped;
        for (int i = 0; i < 25; ++i) k.at<float>(i / 5, i % 5) = k5[i] / 256.0f;
        cv::flip(k, flipped, -1);
        return flipped;
    }();
    convolve.peerName = "opencv";
    convolve.peer = [](const Image& src, Image& dst) {
        cv::Mat out = wrap(dst);
        cv::filter2D(wrap(src), out, CV_8U, k5Peer, cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
    };
    // The Q15 taps as floats (tap / 32768) across and down, with a zero
    // border (our kernel is cropped at the edges without renormalising).
    static const cv::Mat kSepPeer = [] {
        cv::Mat k(1, 9, CV_32F);
        for (int i = 0; i < 9; ++i) k.at<float>(0, i) = kQ15Kernel[i] / 32768.0f;
        return k;
    }();
    sepPeer = [](const Image& src, Image&, Image& dst, Size) {
        cv::Mat out = wrap(dst, CV_16SC1, 2);
        cv::sepFilter2D(wrap(src, CV_16SC1, 2), out, CV_16S, kSepPeer, kSepPeer, cv::Point(-1, -1), 0,
                        cv::BORDER_CONSTANT);
    };
#endif
    pxr::bench::registerOperation(convolve);
    registerS16Operation("pxrFilterCorrSep9x9s16_v2", PXR_ROW_FilterCorrSep9x9s16, sep, "opencv", sepPeer);
}
