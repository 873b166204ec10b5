// The Lucas-Kanade tracker, kind 1 against kind 0 on every vector target:
// every entry point, identical output bits and statuses, guards intact; odd
// sizes, slack, misaligned starts, windows 5x5 to 41x41, one to four levels,
// features inside, on and past the borders, and non-positions (NaN, 1e20).
// The patch kernels are compared directly too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "features/tracking/lk_kernels.h"
#include "features_lk_helpers.h"
#include "frame/row_ids.h"
#include "frame/tables.h"
#include "pixora.h"
#include "simd/features/tracking/tracking_v.h"
#include "support/differential.h"
#include "support/log_capture.h"

using namespace pxr::test::lk;
using pxr::test::ForceKind;

namespace {

enum class Entry { U8, F32, V2, V3Iterations, V3Epsilon, V3Both, V3Estimate };

struct EntryInfo {
    Entry entry;
    const char* name;
    uint32_t row;
};
const EntryInfo kEntries[] = {
    {Entry::U8, "pxrTrackLKOpticalFlowu8", PXR_ROW_TrackLKOpticalFlowu8},
    {Entry::F32, "pxrTrackLKOpticalFlowf32", PXR_ROW_TrackLKOpticalFlowf32},
    {Entry::V2, "pxrTrackLKOpticalFlowu8_v2", PXR_ROW_TrackLKOpticalFlowu8_v2},
    {Entry::V3Iterations, "pxrTrackLKOpticalFlowu8_v3 (iterations)", PXR_ROW_TrackLKOpticalFlowu8_v3},
    {Entry::V3Epsilon, "pxrTrackLKOpticalFlowu8_v3 (epsilon)", PXR_ROW_TrackLKOpticalFlowu8_v3},
    {Entry::V3Both, "pxrTrackLKOpticalFlowu8_v3 (both)", PXR_ROW_TrackLKOpticalFlowu8_v3},
    {Entry::V3Estimate, "pxrTrackLKOpticalFlowu8_v3 (estimate)", PXR_ROW_TrackLKOpticalFlowu8_v3},
};

struct Case {
    uint32_t width, height, slack;
    int32_t levels, windowWidth, windowHeight, maxIterations;
    float dx, dy;
};

// Two frames, their pyramids and the features of one case. The first
// generation needs packed levels, so it gets frames without slack.
struct Scene {
    Frame a, b;
    Pyramid pa, pb;
    std::vector<float> features, estimate;
    Scene(const Case& c, uint32_t slack, uint32_t seed)
        : a(withSlack(texture(c.width, c.height), slack, seed % 7)),
          b(withSlack(texture(c.width, c.height, c.dx, c.dy), slack, seed % 7)),
          pa(a, c.levels), pb(b, c.levels) {
        std::mt19937 gen(seed * 31 + 7);
        auto uniform = [&](float lo, float hi) { return lo + (hi - lo) * static_cast<float>(gen() % 10000) / 10000.0f; };
        const float w = static_cast<float>(c.width), h = static_cast<float>(c.height);
        for (int i = 0; i < 40; ++i) features.insert(features.end(), {uniform(-8, w + 8), uniform(-8, h + 8)});
        const float special[][2] = {{0, 0}, {w - 1, h - 1}, {w - 0.5f, h - 0.5f}, {w / 2, h / 2},
                                    {2, h / 2},  {w - 3, 1.5f}, {-1.25f, h / 3}, {w / 3, -2.75f},
                                    {std::numeric_limits<float>::quiet_NaN(), 5}, {1e20f, 3}, {-3e9f, -3e9f}};
        for (const auto& p : special) features.insert(features.end(), {p[0], p[1]});
        for (size_t i = 0; i < features.size(); i += 2)
            estimate.insert(estimate.end(), {features[i] + c.dx + 0.3f, features[i + 1] + c.dy - 0.2f});
    }
    static Frame withSlack(const Frame& f, uint32_t slack, uint32_t misalign) {
        Frame out(f.width, f.height, slack, misalign);
        for (uint32_t y = 0; y < f.height; ++y)
            for (uint32_t x = 0; x < f.width; ++x) out.at(x, y) = f.at(x, y);
        return out;
    }
    int32_t count() const { return static_cast<int32_t>(features.size() / 2); }
};

struct Result {
    std::vector<uint8_t> out, status;  // with their guard words
    std::vector<int32_t> statuses;
    int rc;
};

Result run(Entry e, Scene& s, const Case& c) {
    const int32_t n = s.count();
    Guarded<float> out{2 * size_t(n)};
    Guarded<int32_t> status{size_t(n)};
    int rc = 0;
    switch (e) {
        case Entry::U8:
            pxrTrackLKOpticalFlowu8(s.a.data(), s.b.data(), c.width, c.height, s.pa.v1(), s.pb.v1(), nullptr, nullptr,
                                    s.features.data(), out.data(), status.data(), n, c.windowWidth, c.windowHeight,
                                    c.maxIterations, c.levels);
            break;
        case Entry::F32:
            pxrTrackLKOpticalFlowf32(s.a.data(), s.b.data(), c.width, c.height, s.pa.v1(), s.pb.v1(), s.pa.v1(),
                                     s.pb.v1(), s.features.data(), out.data(), status.data(), n, c.windowWidth,
                                     c.windowHeight, c.maxIterations, c.levels);
            break;
        case Entry::V2:
            pxrTrackLKOpticalFlowu8_v2(s.a.data(), s.b.data(), c.width, c.height, s.a.stride, s.pa.v2(), s.pb.v2(),
                                       s.features.data(), out.data(), status.data(), n, c.windowWidth,
                                       c.windowHeight, c.maxIterations, c.levels);
            break;
        default: {
            const bool estimate = e == Entry::V3Estimate;
            const auto mode = e == Entry::V3Iterations ? PIXORA_LK_TERM_ITERATIONS
                              : e == Entry::V3Epsilon  ? PIXORA_LK_TERM_EPSILON
                                                       : PIXORA_LK_TERM_BOTH;
            rc = pxrTrackLKOpticalFlowu8_v3(s.a.data(), s.b.data(), c.width, c.height, s.a.stride, s.pa.v2(),
                                            s.pb.v2(), s.features.data(), estimate ? s.estimate.data() : nullptr,
                                            out.data(), status.data(), n, c.windowWidth, c.windowHeight, c.levels,
                                            mode, c.maxIterations, e == Entry::V3Epsilon ? 0.0004f : 0.0f,
                                            estimate ? 1 : 0);
            break;
        }
    }
    EXPECT_TRUE(out.guardsIntact()) << "wrote past featureXY_out";
    EXPECT_TRUE(status.guardsIntact()) << "wrote past featureStatus";
    return {out.bytes(), status.bytes(), status.values(), rc};
}

const Case kCases[] = {
    {37, 29, 3, 2, 5, 5, 10, 1.7f, -0.9f},     {160, 120, 7, 4, 21, 21, 30, -4.6f, -3.1f},
    {23, 5, 0, 1, 7, 9, 5, 0.8f, -0.2f},       {131, 67, 2, 4, 11, 5, 100, 6.1f, -1.2f},
    {45, 33, 0, 2, 41, 41, 10, 1.1f, 0.7f},
};

}  // namespace

TEST(FeaturesLkDiff, EveryEntryPointMatchesKindZero) {
    pxr::test::LogCapture quiet;
    uint32_t seed = 1;
    for (const Case& c : kCases) {
        for (const EntryInfo& info : kEntries) {
            SCOPED_TRACE(info.name);
            const Entry e = info.entry;
            const bool packed = e == Entry::U8 || e == Entry::F32;
            Scene scene(c, packed ? 0 : c.slack, seed++);
            const uint32_t row = info.row;
            Result expected;
            {
                uCHelper();  // kind 0 entirely on the reference kernels
                ForceKind force(row, 0);
                expected = run(e, scene, c);
                uVHelper();
            }
            // Something was tracked: the comparison is not between two copies.
            EXPECT_GT(std::count(expected.statuses.begin(), expected.statuses.end(), 1), 0) << info.name;
            const auto kinds = pxr::test::kindsToCompare(row);
            ASSERT_FALSE(kinds.empty());
            pxr::test::forEachVectorTarget([&](const char* target) {
                ForceKind force(row, PIXORA_KIND_SIMDX);
                const Result got = run(e, scene, c);
                const std::string where = std::string(info.name) + " on " + target + ", " + std::to_string(c.width) +
                                          "x" + std::to_string(c.height) + " window " +
                                          std::to_string(c.windowWidth) + "x" + std::to_string(c.windowHeight) +
                                          " levels " + std::to_string(c.levels);
                EXPECT_EQ(got.out, expected.out) << where;
                EXPECT_EQ(got.status, expected.status) << where;
                EXPECT_EQ(got.rc, expected.rc) << where;
            });
        }
    }
}

// The kernels around the vector widths, the 64 and 80 column chunks and the
// narrow scalar spans.
TEST(FeaturesLkDiff, PatchKernelsMatchBitForBit) {
    const auto& ref = pxr::lk::referenceKernels();
    const auto& vec = pxr::lk::vectorKernels();
    std::mt19937 gen(5);
    auto value = [&] { return static_cast<float>(static_cast<int>(gen() % 4001) - 2000) / 7.0f; };
    pxr::test::forEachVectorTarget([&](const char* target) {
        for (int32_t w : {1, 3, 4, 5, 8, 9, 16, 17, 63, 64, 65, 80, 81, 150}) {
            for (int32_t h : {1, 5}) {
                SCOPED_TRACE(std::string(target) + " " + std::to_string(w) + "x" + std::to_string(h));
                const int32_t ps = w + 2;
                std::vector<float> patch(size_t(ps) * (h + 2)), j(size_t(w) * h);
                for (float& v : patch) v = value();
                for (float& v : j) v = value();
                std::vector<float> ix0(size_t(w) * h), iy0(ix0.size()), ix1(ix0.size()), iy1(ix0.size());
                calcIxIy_32fC(patch.data(), ps, w, h, ix0.data(), iy0.data(), w);
                calcIxIy_32fV(patch.data(), ps, w, h, ix1.data(), iy1.data(), w);
                ASSERT_EQ(bitsOf(ix0), bitsOf(ix1));
                ASSERT_EQ(bitsOf(iy0), bitsOf(iy1));
                const auto g0 = ref.gradientSums(ix0.data(), iy0.data(), w, w, h);
                const auto g1 = vec.gradientSums(ix0.data(), iy0.data(), w, w, h);
                EXPECT_EQ(bitsOf({g0.xx, g0.xy, g0.yy}), bitsOf({g1.xx, g1.xy, g1.yy}));
                const auto b0 = ref.mismatch(patch.data() + ps + 1, ps, j.data(), ix0.data(), iy0.data(), w, w, h);
                const auto b1 = vec.mismatch(patch.data() + ps + 1, ps, j.data(), ix0.data(), iy0.data(), w, w, h);
                EXPECT_EQ(bitsOf({b0.x, b0.y}), bitsOf({b1.x, b1.y}));
            }
        }
        // The sampler at centres inside, across and outside the edges.
        Frame img = texture(53, 31, 0.0f, 0.0f, 3);
        for (int32_t n : {1, 4, 5, 8, 17, 40})
            for (float cx : {-30.3f, -2.7f, 0.25f, 26.01f, 52.2f, 70.0f})
                for (float cy : {-1.6f, 14.75f, 29.9f}) {
                    const int32_t m = n % 7 + 1;
                    std::vector<float> p0(size_t(n) * m, -1), p1(p0.size(), -1);
                    const int r0 = ref.sample(img.data(), img.width, img.height, img.stride, p0.data(), n, m, cx, cy);
                    const int r1 = vec.sample(img.data(), img.width, img.height, img.stride, p1.data(), n, m, cx, cy);
                    ASSERT_EQ(r0, r1) << target << " " << n << " at " << cx << "," << cy;
                    ASSERT_EQ(bitsOf(p0), bitsOf(p1)) << target << " " << n << " at " << cx << "," << cy;
                }
    });
}
