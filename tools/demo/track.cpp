#include "tools/demo/track.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "simd/target_info.h"
#include "tools/demo/draw.h"
#include "tools/demo/image_io.h"
#include "tools/demo/kinds.h"

namespace pxr::demo {
namespace {

// The rows the pipeline goes through. The score function detects through
// the public detection entry point, so both FAST rows are forced.
constexpr uint32_t kRows[] = {PXR_ROW_PyramidCreateu8_v3, PXR_ROW_CornerFast9u8, PXR_ROW_CornerFast9Scoreu8_v2,
                              PXR_ROW_TrackLKOpticalFlowu8_v3};

// A pyramid whose level 0 is the frame itself.
class Pyramid {
public:
    Pyramid(const Image& img, uint32_t levels, pxrPyramidLevelSize size)
        : img_(img), levels_(levels), size_(size), records_(levels) {
        ok_ = pxrPyramidAllocate_v3(records_.data(), img.width, img.height, img.width, 1, levels, 0, 0, size) == 0;
    }
    ~Pyramid() {
        if (ok_)
            pxrPyramidDelete_v2(records_.data(), levels_, 1);
    }
    Pyramid(const Pyramid&) = delete;
    Pyramid& operator=(const Pyramid&) = delete;

    bool ok() const { return ok_; }
    int build() {
        return pxrPyramidCreateu8_v3(img_.pixels.data(), img_.width, img_.height, img_.width, levels_, records_.data(),
                                     size_);
    }
    pxrPyramidLevel_v2* records() { return records_.data(); }

private:
    const Image& img_;
    uint32_t levels_;
    pxrPyramidLevelSize size_;
    std::vector<pxrPyramidLevel_v2> records_;
    bool ok_ = false;
};

// What one kind produced, and how long each stage took (median of runs).
struct Result {
    uint32_t kind = 0;
    std::vector<uint32_t> xy, scores;
    uint32_t corners = 0;
    std::vector<float> out;
    std::vector<int32_t> status;
    int trackStatus = 0;
    double pyramidMs = 0, detectMs = 0, trackMs = 0;

    uint32_t tracked() const { return static_cast<uint32_t>(std::count(status.begin(), status.end(), 1)); }
    bool sameAs(const Result& o) const {
        return corners == o.corners && xy == o.xy && scores == o.scores && status == o.status &&
               trackStatus == o.trackStatus && std::memcmp(out.data(), o.out.data(), out.size() * sizeof(float)) == 0;
    }
};

double median(std::vector<double> v) {
    std::nth_element(v.begin(), v.begin() + v.size() / 2, v.end());
    return v[v.size() / 2];
}

template <class F>
double timed(F&& f) {
    const auto t0 = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
}

Result runKind(uint32_t kind, const TrackOptions& opt, const Image& a, const Image& b, Pyramid& pa, Pyramid& pb) {
    const ForcedKind forced[] = {{kRows[0], kind}, {kRows[1], kind}, {kRows[2], kind}, {kRows[3], kind}};
    static_assert(std::size(kRows) == std::size(forced));
    Result r;
    r.kind = kind;
    const uint32_t cap = opt.maxCorners;
    r.xy.assign(size_t{cap} * 2, 0);
    r.scores.assign(cap, 0);
    std::vector<uint32_t> temp(size_t{cap} * 3 + a.height, 0);
    std::vector<double> pyr, det, trk;
    for (int run = 0; run < std::max(1, opt.repeat); ++run) {
        int built = 0;
        pyr.push_back(timed([&] { built = pa.build() | pb.build(); }));
        if (built) {
            r.trackStatus = -1;
            break;
        }
        det.push_back(timed([&] {
            pxrCornerFast9Scoreu8_v2(a.pixels.data(), a.width, a.height, a.width, opt.barrier, 3, r.xy.data(),
                                     r.scores.data(), cap, &r.corners, 1, temp.data());
        }));
        const uint32_t n = std::min(r.corners, cap);
        std::vector<float> start(size_t{n} * 2);
        for (size_t i = 0; i < start.size(); ++i)
            start[i] = static_cast<float>(r.xy[i]);
        r.out.assign(start.size(), 0.0f);
        r.status.assign(n, 0);
        trk.push_back(timed([&] {
            if (n == 0)
                return;
            r.trackStatus = pxrTrackLKOpticalFlowu8_v3(
                a.pixels.data(), b.pixels.data(), a.width, a.height, a.width, pa.records(), pb.records(), start.data(),
                nullptr, r.out.data(), r.status.data(), static_cast<int32_t>(n), static_cast<int32_t>(opt.window),
                static_cast<int32_t>(opt.window), static_cast<int32_t>(opt.levels), PIXORA_LK_TERM_BOTH, 20, 0.0009f,
                0);
        }));
    }
    if (!pyr.empty())
        r.pyramidMs = median(pyr);
    if (!det.empty())
        r.detectMs = median(det);
    if (!trk.empty())
        r.trackMs = median(trk);
    return r;
}

bool load(const std::string& path, Image& img) {
    std::string error;
    if (!readImage(path, img, error)) {
        std::fprintf(stderr, "pixora-demo: %s\n", error.c_str());
        return false;
    }
    img = toGrey(img);
    return true;
}

// The picture: the second frame, each tracked corner's path from its place
// in the first frame (green) to its place in the second (yellow); corners
// that were lost are red at their place in the first frame.
Image drawTracks(const Image& second, const Result& r) {
    Image pic = dimmedRgb(second);
    for (uint32_t i = 0; i < r.status.size(); ++i) {
        const float x0 = static_cast<float>(r.xy[2 * i]), y0 = static_cast<float>(r.xy[2 * i + 1]);
        if (r.status[i] == 1) {
            drawLine(pic, x0, y0, r.out[2 * i], r.out[2 * i + 1], {40, 220, 40});
            drawDot(pic, r.out[2 * i], r.out[2 * i + 1], 1, {255, 230, 0});
        } else {
            drawDot(pic, x0, y0, 1, {230, 30, 30});
        }
    }
    return pic;
}

}  // namespace

int runTrack(const TrackOptions& opt) {
    Image a, b;
    if (!load(opt.first, a) || !load(opt.second, b))
        return 1;
    if (a.width != b.width || a.height != b.height) {
        std::fprintf(stderr, "pixora-demo: the two frames differ in size (%ux%u and %ux%u)\n", a.width, a.height,
                     b.width, b.height);
        return 1;
    }
    if (a.width < 16 || a.height < 16 || opt.window < 5 || !(opt.window & 1) || opt.levels < 1 || opt.levels > 8) {
        std::fprintf(stderr,
                     "pixora-demo: frames of at least 16x16, an odd window "
                     "of 5 or more, 1 to 8 levels\n");
        return 1;
    }

    const uint32_t modeStatus = pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    char version[16] = {};
    pxrGetVersion(version, sizeof version);
    std::printf(
        "Pixora %s; pixora-demo: detect and track, %ux%u\n  first:  %s\n "
        " second: %s\n",
        version, a.width, a.height, opt.first.c_str(), opt.second.c_str());
    std::printf("mode CPU_PERFORMANCE (status %u); vector target %s\n", modeStatus, pxr::simd::chosenTargetName());
    std::printf(
        "FAST-9 threshold %u with suppression (at most %u corners); "
        "Lucas-Kanade %ux%u window, %u levels\n\n",
        opt.barrier, opt.maxCorners, opt.window, opt.window, opt.levels);

    // Levels halve exactly where the sides allow it, else round up.
    const uint32_t mask = (1u << (opt.levels - 1)) - 1;
    const auto size = (a.width & mask) || (a.height & mask) ? PIXORA_PYRAMID_LEVEL_CEIL : PIXORA_PYRAMID_LEVEL_FLOOR;
    Pyramid pa(a, opt.levels, size), pb(b, opt.levels, size);
    if (!pa.ok() || !pb.ok()) {
        std::fprintf(stderr, "pixora-demo: cannot allocate the pyramids\n");
        return 1;
    }
    std::vector<Result> results;
    for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k) {
        const bool own =
            std::any_of(std::begin(kRows), std::end(kRows), [k](uint32_t row) { return kindHasOwnCode(row, k); });
        if (own)
            results.push_back(runKind(k, opt, a, b, pa, pb));
    }

    std::printf("%-6s %8s %8s %12s %10s %10s %10s  %s\n", "kind", "corners", "tracked", "pyramids ms", "FAST ms",
                "LK ms", "total ms", "result");
    const Result& ref = results.front();
    int failures = 0;
    for (const Result& r : results) {
        const bool same = r.sameAs(ref);
        failures += !same;
        std::printf("%-6s %8u %8u %12.3f %10.3f %10.3f %10.3f  %s\n", pxrImplChar[r.kind], r.corners, r.tracked(),
                    r.pyramidMs, r.detectMs, r.trackMs, r.pyramidMs + r.detectMs + r.trackMs,
                    r.kind == 0 ? "reference"
                    : same      ? "same as CPU"
                                : "DIFFERS from CPU");
    }
    if (ref.trackStatus != 0) {
        std::fprintf(stderr, "pixora-demo: tracking returned status %d\n", ref.trackStatus);
        return 1;
    }

    std::error_code ec;
    std::filesystem::create_directories(opt.outDir, ec);
    std::string error;
    const std::string path = opt.outDir + "/tracks.png";
    if (ec || !writePng(path, drawTracks(b, ref), error)) {
        std::fprintf(stderr, "pixora-demo: cannot write %s: %s\n", path.c_str(),
                     ec ? ec.message().c_str() : error.c_str());
        return 1;
    }
    std::printf(
        "\nTracks drawn in %s (green: path of a tracked corner, yellow: "
        "where it went, red: lost).\n",
        path.c_str());
    if (failures) {
        std::printf("FAILED: %d kind(s) differ from the CPU reference\n", failures);
        return 1;
    }
    std::printf(
        "Every kind found the same corners and tracked them to the same "
        "positions.\n");
    return 0;
}

}  // namespace pxr::demo
