// Benchmarks of the scaling family: each kind beside OpenCV (one thread),
// libyuv where it has a comparable filter, and memcpy of the larger of the
// source and destination images. Names follow bench_util.h; the size in a
// name is the source's.
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif
#ifdef PIXORA_HAVE_LIBYUV
#include <libyuv/scale.h>
#endif

#include <algorithm>
#include <cstring>
#include <vector>

#include "bench/bench_util.h"
#include "frame/row_ids.h"

namespace {

using pxr::bench::Image;
using Call = std::function<void(const Image& src, Image& dst)>;

struct Peer {
    std::string name;
    Call call;
};

struct ScaleOp {
    std::string name;
    uint32_t row;
    pxr::bench::Size src, dst;
    Call run;
    std::vector<Peer> peers;
};

#ifdef PIXORA_HAVE_OPENCV
cv::Mat wrap(const Image& img) {
    return cv::Mat(static_cast<int>(img.height()), static_cast<int>(img.width()), CV_8UC1,
                   const_cast<uint8_t*>(img.data()), img.stride());
}
#endif

void loop(benchmark::State& state, const ScaleOp& op, const Call& call) {
    const Image src = pxr::bench::randomImage(op.src.width, op.src.height);
    Image dst(op.dst.width, op.dst.height);
    for (auto _ : state) {
        call(src, dst);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * op.src.width * op.src.height);
}

void registerScale(const ScaleOp& op) {
    const std::string size = std::to_string(op.src.width) + "x" + std::to_string(op.src.height);
    for (uint32_t kind = 0; kind < PIXORA_NUM_KINDS; ++kind) {
        if (!pxr::demo::kindHasOwnCode(op.row, kind)) continue;
        benchmark::RegisterBenchmark((op.name + "/" + pxrImplChar[kind] + "/" + size).c_str(),
                                     [op, kind](benchmark::State& state) {
                                         pxr::bench::forceKind(op.row, kind);
                                         loop(state, op, op.run);
                                     });
    }
    for (const Peer& p : op.peers)
        benchmark::RegisterBenchmark((op.name + "/" + p.name + "/" + size).c_str(),
                                     [op, p](benchmark::State& state) { loop(state, op, p.call); });
    const size_t bytes = std::max(size_t{op.src.width} * op.src.height, size_t{op.dst.width} * op.dst.height);
    benchmark::RegisterBenchmark((op.name + "/memcpy/" + size).c_str(), [bytes](benchmark::State& state) {
        std::vector<uint8_t> a(bytes, 1), b(bytes);
        for (auto _ : state) {
            std::memcpy(b.data(), a.data(), bytes);
            benchmark::DoNotOptimize(b.data());
            benchmark::ClobberMemory();
        }
    });
}

// A 4-level pyramid of the source (levels 1-3 preallocated once).
struct Pyramid {
    pxrPyramidLevel levels[4] = {};
    Pyramid() { pxrPyramidAllocate(levels, 640, 480, 1, 4, 0); }
    ~Pyramid() { pxrPyramidDelete(levels, 4, 1); }
};

}  // namespace

PXR_BENCH_OPERATIONS(scale) {
    const pxr::bench::Size hd{1920, 1080}, half{960, 540}, third{640, 360}, p720{1280, 720}, vga{640, 480};

    ScaleOp by2{"pxrScaleDownBy2u8_v2", PXR_ROW_ScaleDownBy2u8, hd, half,
                [](const Image& s, Image& d) {
                    pxrScaleDownBy2u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
                },
                {}};
    ScaleOp gaussDown{"pxrScaleDownBy2Gaussian5x5u8_v2", PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2, hd, half,
                      [](const Image& s, Image& d) {
                          pxrScaleDownBy2Gaussian5x5u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(),
                                                          d.stride());
                      },
                      {}};
    ScaleOp gaussUp{"pxrScaleUpBy2Gaussian5x5u8_v2", PXR_ROW_ScaleUpBy2Gaussian5x5u8, half, hd,
                    [](const Image& s, Image& d) {
                        pxrScaleUpBy2Gaussian5x5u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(),
                                                      d.stride());
                    },
                    {}};
    ScaleOp mn{"pxrScaleDownMNu8", PXR_ROW_ScaleDownMNu8, hd, third,
               [](const Image& s, Image& d) {
                   pxrScaleDownMNu8(s.data(), s.width(), s.height(), s.stride(), d.data(), d.width(), d.height(),
                                    d.stride());
               },
               {}};
    ScaleOp bilinear{"pxrScaleu8", PXR_ROW_Scaleu8, hd, p720,
                     [](const Image& s, Image& d) {
                         pxrScaleu8(s.data(), s.width(), s.height(), s.stride(), d.data(), d.width(), d.height(),
                                    d.stride());
                     },
                     {}};
    ScaleOp pyramid{"pxrPyramidCreateu8", PXR_ROW_PyramidCreateu8, vga, vga,
                    [](const Image& s, Image&) {
                        static Pyramid p;
                        pxrPyramidCreateu8(s.data(), 640, 480, 4, p.levels);
                    },
                    {}};
#ifdef PIXORA_HAVE_OPENCV
    auto resize = [](int interpolation) {
        return [interpolation](const Image& s, Image& d) {
            cv::Mat out = wrap(d);
            cv::resize(wrap(s), out, out.size(), 0, 0, interpolation);
        };
    };
    by2.peers.push_back({"opencv", resize(cv::INTER_AREA)});
    mn.peers.push_back({"opencv", resize(cv::INTER_AREA)});
    bilinear.peers.push_back({"opencv", resize(cv::INTER_LINEAR)});
    gaussDown.peers.push_back({"opencv", [](const Image& s, Image& d) {
                                   cv::Mat out = wrap(d);
                                   cv::pyrDown(wrap(s), out, out.size());
                               }});
    gaussUp.peers.push_back({"opencv", [](const Image& s, Image& d) {
                                 cv::Mat out = wrap(d);
                                 cv::pyrUp(wrap(s), out, out.size());
                             }});
    pyramid.peers.push_back({"opencv", [](const Image& s, Image&) {
                                 static std::vector<cv::Mat> levels;
                                 cv::buildPyramid(wrap(s), levels, 3);
                             }});
#endif
#ifdef PIXORA_HAVE_LIBYUV
    // libyuv's box filter rounds where the halving truncates, and its
    // bilinear filter has weights of its own: the same work, not the same bytes.
    auto plane = [](libyuv::FilterMode mode) {
        return [mode](const Image& s, Image& d) {
            libyuv::ScalePlane(s.data(), static_cast<int>(s.stride()), static_cast<int>(s.width()),
                               static_cast<int>(s.height()), d.data(), static_cast<int>(d.stride()),
                               static_cast<int>(d.width()), static_cast<int>(d.height()), mode);
        };
    };
    by2.peers.push_back({"libyuv", plane(libyuv::kFilterBox)});
    mn.peers.push_back({"libyuv", plane(libyuv::kFilterBox)});
    bilinear.peers.push_back({"libyuv", plane(libyuv::kFilterBilinear)});
#endif
    for (const ScaleOp* op : {&by2, &gaussDown, &gaussUp, &mn, &bilinear, &pyramid}) registerScale(*op);
}
