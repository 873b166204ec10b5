// Benchmarks of the YCbCr colour group at 1920x1080: every member on each
// kind with code of its own, beside libyuv's and OpenCV's closest call
// where they have the same conversion (their weights differ from ours; the
// work per pixel is what is compared) and memcpy of the bytes the member
// writes.
#ifdef PIXORA_HAVE_LIBYUV
#include <libyuv.h>
#endif
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

#include <functional>
#include <map>
#include <memory>

#include "bench/bench_util.h"
#include "frame/row_ids.h"
#include "imgproc/color/to_rgb_members.h"

namespace {

constexpr uint32_t W = 1920, H = 1080;
constexpr uint32_t kSize = W * H;

// One 64-byte aligned buffer of random bytes per name, made on first use.
uint8_t* buffer(const std::string& name, size_t bytes) {
    static std::map<std::string, std::unique_ptr<pxr::bench::Image>> all;
    auto& img = all[name];
    if (!img) img = std::make_unique<pxr::bench::Image>(pxr::bench::randomImage(static_cast<uint32_t>(bytes), 1,
                                                                                 static_cast<uint32_t>(name.size())));
    return img->data();
}

// The planes of a layout with chroma subsampled by sx, sy.
constexpr uint32_t chromaSamples(uint32_t sx, uint32_t sy) { return ((W + sx - 1) / sx) * ((H + sy - 1) / sy); }
const uint8_t* srcY() { return buffer("srcY", kSize); }
const uint8_t* srcCb(uint32_t sx, uint32_t sy) { return buffer("srcCb" + std::to_string(sx * 10 + sy), chromaSamples(sx, sy)); }
const uint8_t* srcCr(uint32_t sx, uint32_t sy) { return buffer("srcCr" + std::to_string(sx * 10 + sy), chromaSamples(sx, sy)); }
const uint8_t* srcC(uint32_t sx, uint32_t sy) { return buffer("srcC" + std::to_string(sx * 10 + sy), 2 * chromaSamples(sx, sy)); }
uint8_t* dstY() { return buffer("dstY", kSize); }
uint8_t* dstCb() { return buffer("dstCb", kSize); }
uint8_t* dstCr() { return buffer("dstCr", kSize); }
uint8_t* dstC() { return buffer("dstC", 2 * kSize); }
uint8_t* dstRgb() { return buffer("dstRgb", 4 * kSize); }

using Run = std::function<void()>;

struct Op {
    std::string name;
    uint32_t row;
    bool internal;
    size_t writtenBytes;
    Run run;
    std::vector<std::pair<std::string, Run>> peers;
};

void registerOp(const Op& op) {
    const std::string size = std::to_string(W) + "x" + std::to_string(H);
    auto loop = [](benchmark::State& state, const Run& run) {
        for (auto _ : state) {
            run();
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * kSize);
    };
    for (uint32_t kind = 0; kind < PIXORA_NUM_KINDS; ++kind) {
        const uintptr_t* table = op.internal ? pxrInternalFuncTable : pxrFuncTable;
        const uintptr_t e = table[op.row * PIXORA_NUM_KINDS + kind];
        bool own = e != 0;
        for (uint32_t lower = 0; lower < kind; ++lower) own = own && table[op.row * PIXORA_NUM_KINDS + lower] != e;
        if (!own) continue;
        benchmark::RegisterBenchmark((op.name + "/" + pxrImplChar[kind] + "/" + size).c_str(),
                                     [op, kind, loop](benchmark::State& state) {
                                         pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
                                         (op.internal ? pxrInternalImplTable : pxrImplTable)[op.row] = kind;
                                         loop(state, op.run);
                                     });
    }
    for (const auto& [peer, run] : op.peers)
        benchmark::RegisterBenchmark((op.name + "/" + peer + "/" + size).c_str(),
                                     [run, loop](benchmark::State& state) { loop(state, run); });
    const size_t bytes = op.writtenBytes;
    benchmark::RegisterBenchmark((op.name + "/memcpy/" + size).c_str(), [bytes, loop](benchmark::State& state) {
        const uint8_t* from = buffer("memcpyFrom", bytes);
        uint8_t* to = buffer("memcpyTo", bytes);
        loop(state, [=] { std::memcpy(to, from, bytes); });
    });
}

constexpr size_t rgbBytes(const char* writer) { return kSize * (writer[3] == '5' ? 2 : (writer[3] == 'a' ? 4 : 3)); }

// The peers with the same conversion, by member. libyuv's "RAW" is R, G, B
// in memory and "ABGR" is R, G, B, A: our byte orders.
std::map<std::string, std::vector<std::pair<std::string, Run>>> peers() {
    [[maybe_unused]] const int w = W, h = H, cw = W / 2;
    std::map<std::string, std::vector<std::pair<std::string, Run>>> p;
#ifdef PIXORA_HAVE_LIBYUV
    auto yuv = [&](const char* name, Run r) { p[name].push_back({"libyuv", std::move(r)}); };
    yuv("YCbCr444PlanarToRGB888u8", [=] {
        libyuv::I444ToRAW(srcY(), w, srcCb(1, 1), w, srcCr(1, 1), w, dstRgb(), 3 * w, w, h);
    });
    yuv("YCbCr444PlanarToRGBA8888u8", [=] {
        libyuv::I444ToABGR(srcY(), w, srcCb(1, 1), w, srcCr(1, 1), w, dstRgb(), 4 * w, w, h);
    });
    yuv("YCbCr422PlanarToRGB888u8", [=] {
        libyuv::I422ToRAW(srcY(), w, srcCb(2, 1), cw, srcCr(2, 1), cw, dstRgb(), 3 * w, w, h);
    });
    yuv("YCbCr422PlanarToRGBA8888u8", [=] {
        libyuv::I422ToABGR(srcY(), w, srcCb(2, 1), cw, srcCr(2, 1), cw, dstRgb(), 4 * w, w, h);
    });
    yuv("YCbCr422PlanarToRGB565u8", [=] {
        libyuv::I422ToRGB565(srcY(), w, srcCb(2, 1), cw, srcCr(2, 1), cw, dstRgb(), 2 * w, w, h);
    });
    yuv("YCbCr420PlanarToRGB888u8", [=] {
        libyuv::I420ToRAW(srcY(), w, srcCb(2, 2), cw, srcCr(2, 2), cw, dstRgb(), 3 * w, w, h);
    });
    yuv("YCbCr420PlanarToRGBA8888u8", [=] {
        libyuv::I420ToABGR(srcY(), w, srcCb(2, 2), cw, srcCr(2, 2), cw, dstRgb(), 4 * w, w, h);
    });
    yuv("YCbCr420PlanarToRGB565u8", [=] {
        libyuv::I420ToRGB565(srcY(), w, srcCb(2, 2), cw, srcCr(2, 2), cw, dstRgb(), 2 * w, w, h);
    });
    yuv("YCbCr420PseudoPlanarToRGB888u8", [=] { libyuv::NV12ToRAW(srcY(), w, srcC(2, 2), w, dstRgb(), 3 * w, w, h); });
    yuv("YCbCr420PseudoPlanarToRGBA8888u8", [=] { libyuv::NV12ToABGR(srcY(), w, srcC(2, 2), w, dstRgb(), 4 * w, w, h); });
    yuv("YCbCr420PseudoPlanarToRGB565u8", [=] { libyuv::NV12ToRGB565(srcY(), w, srcC(2, 2), w, dstRgb(), 2 * w, w, h); });
    yuv("YCrCb420PseudoPlanarToRGB8888u8", [=] { libyuv::NV21ToABGR(srcY(), w, srcC(2, 2), w, dstRgb(), 4 * w, w, h); });
    yuv("YCrCbH2V2toRGB888u8", [=] { libyuv::NV21ToRAW(srcY(), w, srcC(2, 2), w, dstRgb(), 3 * w, w, h); });
    yuv("YUV420toRGB565u8", [=] { libyuv::NV12ToRGB565(srcY(), w, srcC(2, 2), w, dstRgb(), 2 * w, w, h); });
    yuv("YCbCr420PlanarToYCbCr420PseudoPlanaru8", [=] {
        libyuv::I420ToNV12(srcY(), w, srcCb(2, 2), cw, srcCr(2, 2), cw, dstY(), w, dstC(), w, w, h);
    });
    yuv("YCbCr420PseudoPlanarToYCbCr420Planaru8", [=] {
        libyuv::NV12ToI420(srcY(), w, srcC(2, 2), w, dstY(), w, dstCb(), cw, dstCr(), cw, w, h);
    });
    yuv("YCbCr444PlanarToYCbCr420PseudoPlanaru8", [=] {
        libyuv::I444ToNV12(srcY(), w, srcCb(1, 1), w, srcCr(1, 1), w, dstY(), w, dstC(), w, w, h);
    });
    yuv("YCbCr444PlanarToYCbCr420Planaru8", [=] {
        libyuv::I444ToI420(srcY(), w, srcCb(1, 1), w, srcCr(1, 1), w, dstY(), w, dstCb(), cw, dstCr(), cw, w, h);
    });
    yuv("YCbCr422PlanarToYCbCr420Planaru8", [=] {
        libyuv::I422ToI420(srcY(), w, srcCb(2, 1), cw, srcCr(2, 1), cw, dstY(), w, dstCb(), cw, dstCr(), cw, w, h);
    });
    yuv("YCbCr420PlanarToYCbCr444Planaru8", [=] {
        libyuv::I420ToI444(srcY(), w, srcCb(2, 2), cw, srcCr(2, 2), cw, dstY(), w, dstCb(), w, dstCr(), w, w, h);
    });
    yuv("YCbCr420PlanarToYCbCr422Planaru8", [=] {
        libyuv::I420ToI422(srcY(), w, srcCb(2, 2), cw, srcCr(2, 2), cw, dstY(), w, dstCb(), cw, dstCr(), cw, w, h);
    });
    yuv("CbCrSwapu8", [=] { libyuv::SwapUVPlane(srcC(2, 2), w, dstC(), w, cw, h / 2); });
#endif
#ifdef PIXORA_HAVE_OPENCV
    auto cv = [&](const char* name, int rows, int type, std::function<const uint8_t*()> src, int code, int outType) {
        p[name].push_back({"opencv", [=] {
                               cv::Mat in(rows, w, type, const_cast<uint8_t*>(src()));
                               cv::Mat out(h, w, outType, dstRgb());
                               cv::cvtColor(in, out, code);
                           }});
    };
    // OpenCV's I420 and NV12 decoders want one buffer: Y with the chroma after it.
    auto i420 = [] {
        uint8_t* b = buffer("cvI420", kSize * 3 / 2);
        return static_cast<const uint8_t*>(b);
    };
    cv("YCbCr420PlanarToRGB888u8", h * 3 / 2, CV_8UC1, i420, cv::COLOR_YUV2RGB_I420, CV_8UC3);
    cv("YCbCr420PlanarToRGBA8888u8", h * 3 / 2, CV_8UC1, i420, cv::COLOR_YUV2RGBA_I420, CV_8UC4);
    cv("YCbCr420PseudoPlanarToRGB888u8", h * 3 / 2, CV_8UC1, i420, cv::COLOR_YUV2RGB_NV12, CV_8UC3);
    cv("YCbCr420PseudoPlanarToRGBA8888u8", h * 3 / 2, CV_8UC1, i420, cv::COLOR_YUV2RGBA_NV12, CV_8UC4);
    cv("YCrCb420PseudoPlanarToRGB8888u8", h * 3 / 2, CV_8UC1, i420, cv::COLOR_YUV2RGBA_NV21, CV_8UC4);
    cv("YCrCbH2V2toRGB888u8", h * 3 / 2, CV_8UC1, i420, cv::COLOR_YUV2RGB_NV21, CV_8UC3);
    cv("YUV420toRGB565u8", h * 3 / 2, CV_8UC1, i420, cv::COLOR_YUV2BGR_NV12, CV_8UC3);
    // The H1V1 decoder's peer reads Y, Cr, Cb interleaved per pixel.
    cv("YCrCbH1V1toRGB888u8", h, CV_8UC3, [] { return static_cast<const uint8_t*>(buffer("cvYCrCb", 3 * kSize)); },
       cv::COLOR_YCrCb2RGB, CV_8UC3);
#endif
    return p;
}

}  // namespace

PXR_BENCH_OPERATIONS(color_to_rgb) {
    auto peer = peers();
    std::vector<Op> ops;
// The entry point's arguments of each side, packed.
#define PXR_B_SRC_PLANAR(sx, sy) srcY(), srcCb(sx, sy), srcCr(sx, sy), W, H, 0, 0, 0
#define PXR_B_SRC_PSEUDO(sx, sy) srcY(), srcC(sx, sy), W, H, 0, 0
#define PXR_B_DST_PLANAR dstY(), dstCb(), dstCr(), 0, 0, 0
#define PXR_B_DST_PSEUDO dstY(), dstC(), 0, 0
#define PXR_B_TO_RGB(name, Src, sx, sy, Order, Math, Writer, ...)                                             \
    ops.push_back({"pxrColor" #name, PXR_ROW_Color##name, false, rgbBytes(#Writer), [] {                      \
                       pxrColor##name(PXR_B_SRC_##Src(sx, sy),                                                 \
                                      reinterpret_cast<PXR_YCC_RGB_PIXEL_##Writer*>(dstRgb()), 0);            \
                   }, peer[#name]});
    // Layout changes write Y and the destination chroma.
#define PXR_B_LAYOUT(name, Src, ssx, ssy, Dst, dsx, dsy, ...)                                                 \
    ops.push_back({"pxrColor" #name, PXR_ROW_Color##name, false, kSize + 2 * chromaSamples(dsx, dsy),        \
                   [] { pxrColor##name(PXR_B_SRC_##Src(ssx, ssy), PXR_B_DST_##Dst); }, peer[#name]});
    PXR_YCC_TO_RGB(PXR_B_TO_RGB)
    PXR_YCC_LAYOUTS(PXR_B_LAYOUT)
    // The swap of a 4:2:0 chroma plane (960 x 540 pairs).
    ops.push_back({"pxrColorCbCrSwapu8", PXR_ROW_ColorCbCrSwapu8, false, kSize / 2,
                   [] { pxrColorCbCrSwapu8(srcC(2, 2), W / 2, H / 2, 0, dstC(), 0); }, peer["CbCrSwapu8"]});
    ops.push_back({"pxrColorYUV420toRGB565u8", PXR_ROW_ColorYUV420toRGB565u8, false, 2 * kSize,
                   [] {
                       pxrColorYUV420toRGB565u8(buffer("cvI420", kSize * 3 / 2), W, H,
                                                reinterpret_cast<uint16_t*>(dstRgb()));
                   },
                   peer["YUV420toRGB565u8"]});
    ops.push_back({"pxrColorYUV420toRGB565u8Rotate180", PXR_IROW_ColorYUV420toRGB565u8Rotate180, true, 2 * kSize,
                   [] {
                       pxrColorYUV420toRGB565u8Rotate180(buffer("cvI420", kSize * 3 / 2), W, H,
                                                         reinterpret_cast<uint16_t*>(dstRgb()));
                   },
                   {}});
    for (const Op& op : ops) registerOp(op);
}
