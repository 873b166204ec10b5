// Benchmarks of the conversions from packed RGB at 1920x1080, every member
// (the member table the tests use), beside libyuv and OpenCV where they have
// the same conversion (or the same work with other coefficients), and memcpy
// of the source's bytes.
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif
#ifdef PIXORA_HAVE_LIBYUV
#include <libyuv.h>
#endif

#include "bench/bench_util.h"
#include "tests/color_from_rgb_members.h"

namespace {

using pxr::test::from_rgb::Member;
using pxr::test::from_rgb::Planes;

constexpr pxr::bench::Size kSize{1920, 1080};

// A member's source image and destination planes, packed.
struct Buffers {
    pxr::bench::Image src;
    std::vector<pxr::bench::Image> dst;
    Planes planes{};
    Buffers(const Member& m, uint32_t w, uint32_t h) : src(pxr::bench::randomImage(w * m.srcBpp, h)) {
        for (uint32_t i = 0; i < m.planes(); ++i) dst.emplace_back(m.planeWidth(i, w) * m.planeBpp(i), m.planeHeight(i, h));
        for (uint32_t i = 0; i < m.planes(); ++i) planes.data[i] = dst[i].data(), planes.stride[i] = dst[i].stride();
    }
};

using Peer = std::function<void(const uint8_t* src, uint32_t w, uint32_t h, const Planes& dst)>;
using Peers = std::vector<std::pair<std::string, Peer>>;

void loop(benchmark::State& state, const Member& m, const std::function<void(Buffers&)>& call) {
    Buffers b(m, kSize.width, kSize.height);
    for (auto _ : state) {
        call(b);
        benchmark::DoNotOptimize(b.planes.data[0]);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * b.src.bytes());
}

std::string nameOf(const Member& m, const std::string& variant) {
    return m.name + "/" + variant + "/" + std::to_string(kSize.width) + "x" + std::to_string(kSize.height);
}

// Each kind with code of its own, the peers, and memcpy of the source bytes.
// `kinds` forces a kind (the public row's, or the internal row's).
void registerMember(const Member& m, const Peers& peers, const std::function<void(uint32_t)>& force,
                    const std::vector<uint32_t>& kinds) {
    for (uint32_t kind : kinds) {
        benchmark::RegisterBenchmark(nameOf(m, pxrImplChar[kind]).c_str(), [&m, force, kind](benchmark::State& s) {
            force(kind);
            loop(s, m, [&m](Buffers& b) { m.call(b.src.data(), kSize.width, kSize.height, 0, b.planes); });
        });
    }
    for (const auto& [peerName, peer] : peers)
        benchmark::RegisterBenchmark(nameOf(m, peerName).c_str(), [&m, peer](benchmark::State& s) {
            loop(s, m, [&peer](Buffers& b) { peer(b.src.data(), kSize.width, kSize.height, b.planes); });
        });
    benchmark::RegisterBenchmark(nameOf(m, "memcpy").c_str(), [&m](benchmark::State& s) {
        pxr::bench::Image copy(kSize.width * m.srcBpp, kSize.height);
        loop(s, m, [&copy](Buffers& b) { std::memcpy(copy.data(), b.src.data(), b.src.bytes()); });
    });
}

int i(uint32_t v) { return static_cast<int>(v); }

// The peers of each member, by name.
Peers peersOf(const std::string& name) {
    Peers p;
#ifdef PIXORA_HAVE_LIBYUV
    // libyuv formats by memory order: RGB24 = B,G,R; RAW = R,G,B; ARGB = B,G,R,A.
    using Yuv3 = int (*)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int);
    using Yuv2 = int (*)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int);
    using Yuv1 = int (*)(const uint8_t*, int, uint8_t*, int, int, int);
    auto planar = [](Yuv3 fn, uint32_t bpp) {
        return [fn, bpp](const uint8_t* s, uint32_t w, uint32_t h, const Planes& d) {
            fn(s, i(w * bpp), d.data[0], i(d.stride[0]), d.data[1], i(d.stride[1]), d.data[2], i(d.stride[2]), i(w), i(h));
        };
    };
    auto pseudo = [](Yuv2 fn, uint32_t bpp) {
        return [fn, bpp](const uint8_t* s, uint32_t w, uint32_t h, const Planes& d) {
            fn(s, i(w * bpp), d.data[0], i(d.stride[0]), d.data[1], i(d.stride[1]), i(w), i(h));
        };
    };
    auto packed = [](Yuv1 fn, uint32_t bpp) {
        return [fn, bpp](const uint8_t* s, uint32_t w, uint32_t h, const Planes& d) {
            fn(s, i(w * bpp), d.data[0], i(d.stride[0]), i(w), i(h));
        };
    };
    const std::pair<const char*, Peer> yuv[] = {
        {"pxrColorRGB888ToYCbCr420Planaru8", planar(libyuv::RGB24ToJ420, 3)},
        {"pxrColorRGB888ToYCbCr420PseudoPlanaru8", pseudo(libyuv::RAWToJNV21, 3)},
        {"pxrColorRGBA8888ToYCbCr444Planaru8", planar(libyuv::ARGBToI444, 4)},
        {"pxrColorRGBA8888ToYCbCr422Planaru8", planar(libyuv::ARGBToJ422, 4)},
        {"pxrColorRGBA8888ToYCbCr420Planaru8", planar(libyuv::ARGBToJ420, 4)},
        {"pxrColorRGBA8888ToYCbCr420PseudoPlanaru8", pseudo(libyuv::ARGBToNV12, 4)},
        {"pxrColorRGB565ToYCbCr420Planaru8", planar(libyuv::RGB565ToI420, 2)},
        {"pxrColorRGB565ToBGRA8888u8", packed(libyuv::RGB565ToARGB, 2)},
        {"pxrColorRGB888ToRGBA8888u8", packed(libyuv::RGB24ToARGB, 3)},
        {"pxrColorRGB888ToBGRA8888u8", packed(libyuv::RAWToARGB, 3)},
        {"pxrColorRGB888ToBGR888u8", packed(libyuv::RAWToRGB24, 3)},
        {"pxrColorRGBA8888ToRGB565u8", packed(libyuv::ARGBToRGB565, 4)},
        {"pxrColorRGBA8888ToBGR565u8", packed(libyuv::ARGBToRGB565, 4)},
        {"pxrColorRGBA8888ToRGB888u8", packed(libyuv::ARGBToRGB24, 4)},
        {"pxrColorRGBA8888ToBGR888u8", packed(libyuv::ARGBToRAW, 4)},
        {"pxrColorRGBA8888ToBGRA8888u8", packed(libyuv::ARGBToABGR, 4)},
        {"pxrColorRGB888ToGrayu8", packed(libyuv::RAWToJ400, 3)},
    };
    for (const auto& [member, peer] : yuv)
        if (name == member) p.emplace_back("libyuv", peer);
#endif
#ifdef PIXORA_HAVE_OPENCV
    auto ocvPeer = [](int code, int srcChannels, int dstType) {
        // I420 comes out as one buffer (Y, U, V one after another): a buffer of
        // the peer's own, allocated on the first call.
        auto i420 = std::make_shared<cv::Mat>();
        return [code, srcChannels, dstType, i420](const uint8_t* s, uint32_t w, uint32_t h, const Planes& d) {
            const cv::Mat in(i(h), i(w), CV_8UC(srcChannels), const_cast<uint8_t*>(s));
            if (code == cv::COLOR_RGB2YUV_I420 || code == cv::COLOR_RGBA2YUV_I420) {
                cv::cvtColor(in, *i420, code);
                return;
            }
            cv::Mat out(i(h), i(w), dstType, d.data[0]);
            cv::cvtColor(in, out, code);
        };
    };
    const std::pair<const char*, Peer> ocv[] = {
        {"pxrColorRGB888ToYCbCr420Planaru8", ocvPeer(cv::COLOR_RGB2YUV_I420, 3, CV_8UC1)},
        {"pxrColorRGBA8888ToYCbCr420Planaru8", ocvPeer(cv::COLOR_RGBA2YUV_I420, 4, CV_8UC1)},
        {"pxrColorRGB888toYCrCbu8", ocvPeer(cv::COLOR_RGB2YCrCb, 3, CV_8UC3)},
        {"pxrColorRGB888ToGrayu8", ocvPeer(cv::COLOR_RGB2GRAY, 3, CV_8UC1)},
        {"pxrColorRGB888ToHSV888u8", ocvPeer(cv::COLOR_RGB2HSV, 3, CV_8UC3)},
        {"pxrColorRGBA8888ToLABu8", ocvPeer(cv::COLOR_RGB2Lab, 4, CV_8UC3)},
        {"pxrColorRGB565ToRGB888u8", ocvPeer(cv::COLOR_BGR5652RGB, 2, CV_8UC3)},
        {"pxrColorRGB565ToRGBA8888u8", ocvPeer(cv::COLOR_BGR5652RGBA, 2, CV_8UC4)},
        {"pxrColorRGB565ToBGR888u8", ocvPeer(cv::COLOR_BGR5652BGR, 2, CV_8UC3)},
        {"pxrColorRGB565ToBGRA8888u8", ocvPeer(cv::COLOR_BGR5652BGRA, 2, CV_8UC4)},
        {"pxrColorRGB888ToRGB565u8", ocvPeer(cv::COLOR_RGB2BGR565, 3, CV_8UC2)},
        {"pxrColorRGB888ToBGR565u8", ocvPeer(cv::COLOR_BGR2BGR565, 3, CV_8UC2)},
        {"pxrColorRGB888ToRGBA8888u8", ocvPeer(cv::COLOR_RGB2RGBA, 3, CV_8UC4)},
        {"pxrColorRGB888ToBGR888u8", ocvPeer(cv::COLOR_RGB2BGR, 3, CV_8UC3)},
        {"pxrColorRGB888ToBGRA8888u8", ocvPeer(cv::COLOR_RGB2BGRA, 3, CV_8UC4)},
        {"pxrColorRGBA8888ToRGB565u8", ocvPeer(cv::COLOR_RGBA2BGR565, 4, CV_8UC2)},
        {"pxrColorRGBA8888ToBGR565u8", ocvPeer(cv::COLOR_BGRA2BGR565, 4, CV_8UC2)},
        {"pxrColorRGBA8888ToRGB888u8", ocvPeer(cv::COLOR_RGBA2RGB, 4, CV_8UC3)},
        {"pxrColorRGBA8888ToBGR888u8", ocvPeer(cv::COLOR_RGBA2BGR, 4, CV_8UC3)},
        {"pxrColorRGBA8888ToBGRA8888u8", ocvPeer(cv::COLOR_RGBA2BGRA, 4, CV_8UC4)},
    };
    for (const auto& [member, peer] : ocv)
        if (name == member) p.emplace_back("opencv", peer);
#endif
    return p;
}

// The 180-degree conversion as a member of the table's shape.
const Member& rotate180() {
    static const Member m{"pxrColorRGB888ToRGB565Rotate180u8", 0, pxr::test::from_rgb::Shape::Packed, 3, 2, 1, 1,
                          [](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, const Planes& d) {
                              pxrColorRGB888ToRGB565Rotate180u8(s, w, h, ss, reinterpret_cast<uint16_t*>(d.data[0]),
                                                                d.stride[0]);
                          }};
    return m;
}

}  // namespace

PXR_BENCH_OPERATIONS(color_from_rgb) {
    for (const auto& m : pxr::test::from_rgb::members()) {
        std::vector<uint32_t> kinds;
        for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k)
            if (pxr::demo::kindHasOwnCode(m.row, k)) kinds.push_back(k);
        const uint32_t row = m.row;
        registerMember(m, peersOf(m.name), [row](uint32_t k) { pxr::bench::forceKind(row, k); }, kinds);
    }
    registerMember(rotate180(), {}, [](uint32_t k) {
        pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
        pxrInternalImplTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8] = k;
    }, {0, 1});
}
