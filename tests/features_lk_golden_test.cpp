// The Lucas-Kanade tracker against hand-computed expectations (public cases
// on kinds 0 and 1); the termination rules counted through instrumented
// kernels; the sampler and the derivatives.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "features/tracking/lk_core.h"
#include "features/tracking/tracking.h"
#include "features_lk_helpers.h"
#include "frame/row_ids.h"
#include "frame/tables.h"
#include "pixora.h"
#include "simd/features/tracking/tracking_v.h"
#include "support/differential.h"

using namespace pxr::test::lk;
using pxr::test::ForceKind;

namespace {

constexpr uint32_t kRows[] = {PXR_ROW_TrackLKOpticalFlowu8, PXR_ROW_TrackLKOpticalFlowf32,
                              PXR_ROW_TrackLKOpticalFlowu8_v2, PXR_ROW_TrackLKOpticalFlowu8_v3};

// Forces one kind on all four rows.
struct AllRows {
    ForceKind a, b, c, d;
    explicit AllRows(uint32_t kind)
        : a(kRows[0], kind), b(kRows[1], kind), c(kRows[2], kind), d(kRows[3], kind) {}
};

// A frame pair and its pyramids.
struct Pair {
    Frame a, b;
    Pyramid pa, pb;
    int32_t levels;
    Pair(Frame first, Frame second, int32_t n)
        : a(std::move(first)), b(std::move(second)), pa(a, n), pb(b, n), levels(n) {}
};

struct Tracked {
    std::vector<float> out;
    std::vector<int32_t> status;
    int rc = 0;
};

enum class Gen { U8, F32, V2, V3 };
constexpr Gen kGens[] = {Gen::U8, Gen::F32, Gen::V2, Gen::V3};

// Runs one generation; statuses start as 77 (untouched marker).
Tracked track(Gen gen, Pair& p, const std::vector<float>& xy, int32_t ww, int32_t wh, int32_t maxIterations = 30,
              int32_t levels = -100, const float* estimate = nullptr) {
    if (levels == -100) levels = p.levels;
    const auto n = static_cast<int32_t>(xy.size() / 2);
    Tracked t{std::vector<float>(xy.size(), -999.0f), std::vector<int32_t>(size_t(n), 77), 0};
    switch (gen) {
        case Gen::U8:
            pxrTrackLKOpticalFlowu8(p.a.data(), p.b.data(), p.a.width, p.a.height, p.pa.v1(), p.pb.v1(), nullptr,
                                    nullptr, xy.data(), t.out.data(), t.status.data(), n, ww, wh, maxIterations,
                                    levels);
            break;
        case Gen::F32:
            pxrTrackLKOpticalFlowf32(p.a.data(), p.b.data(), p.a.width, p.a.height, p.pa.v1(), p.pb.v1(), nullptr,
                                     nullptr, xy.data(), t.out.data(), t.status.data(), n, ww, wh, maxIterations,
                                     levels);
            break;
        case Gen::V2:
            pxrTrackLKOpticalFlowu8_v2(p.a.data(), p.b.data(), p.a.width, p.a.height, p.a.stride, p.pa.v2(),
                                       p.pb.v2(), xy.data(), t.out.data(), t.status.data(), n, ww, wh, maxIterations,
                                       levels);
            break;
        case Gen::V3:
            t.rc = pxrTrackLKOpticalFlowu8_v3(p.a.data(), p.b.data(), p.a.width, p.a.height, p.a.stride, p.pa.v2(),
                                              p.pb.v2(), xy.data(), estimate, t.out.data(), t.status.data(), n, ww,
                                              wh, levels, PIXORA_LK_TERM_ITERATIONS, maxIterations, 0.0f,
                                              estimate ? 1 : 0);
            break;
    }
    return t;
}

std::vector<float> grid(uint32_t w, uint32_t h, float margin, float step) {
    std::vector<float> xy;
    for (float y = margin; y <= static_cast<float>(h) - 1 - margin; y += step)
        for (float x = margin; x <= static_cast<float>(w) - 1 - margin; x += step) xy.insert(xy.end(), {x, y});
    return xy;
}

}  // namespace

// ---------------------------------------------------------------------------
// Tracking results.

// Runs the body for every generation, with all four rows on kind 0, then on kind 1.
template <class Body>
void everyKindAndGeneration(Body body) {
    for (uint32_t kind : {0u, 1u}) {
        AllRows force(kind);
        for (Gen gen : kGens) {
            SCOPED_TRACE("kind " + std::to_string(kind) + " generation " + std::to_string(int(gen)));
            body(gen);
        }
    }
}

TEST(FeaturesLkGolden, SubPixelShiftIsRecoveredOnThreeLevelsAndOnOne) {
    struct Shift {
        uint32_t w, h;
        float dx, dy;
        int32_t levels, window;
        std::vector<float> xy;
    };
    const Shift shifts[] = {{160, 120, 1.3f, -0.7f, 3, 21, grid(160, 120, 4.0f, 12.5f)},
                            {96, 64, 0.6f, 0.35f, 1, 9, {30.0f, 30.0f, 61.5f, 20.25f}}};
    for (const Shift& s : shifts) {
        Pair p(texture(s.w, s.h), texture(s.w, s.h, s.dx, s.dy), 3);
        everyKindAndGeneration([&](Gen gen) {
            const Tracked t = track(gen, p, s.xy, s.window, s.window, 30, s.levels);
            for (size_t i = 0; i < s.xy.size() / 2; ++i) {
                ASSERT_EQ(t.status[i], 1) << "feature " << i;
                EXPECT_NEAR(t.out[2 * i], s.xy[2 * i] + s.dx, 0.05f) << "feature " << i;
                EXPECT_NEAR(t.out[2 * i + 1], s.xy[2 * i + 1] + s.dy, 0.05f) << "feature " << i;
            }
        });
    }
}

TEST(FeaturesLkGolden, ZeroLevelsCopyTheStartAndMarkEveryFeatureTracked) {
    Pair p(texture(64, 48), texture(64, 48, 1.0f, 1.0f), 2);
    const std::vector<float> xy{10.5f, 7.25f, -40.0f, 1e9f};
    everyKindAndGeneration([&](Gen gen) {
        const Tracked t = track(gen, p, xy, 7, 7, 10, 0);
        EXPECT_EQ(bitsOf(t.out), bitsOf(xy));
        EXPECT_EQ(t.status, (std::vector<int32_t>{1, 1}));
    });
}

TEST(FeaturesLkGolden, FlatPatchIsSingular) {
    Frame flat(64, 48);
    for (auto& v : flat.px) v = 100;
    Pair p(flat, flat, 3);
    const std::vector<float> xy{30.0f, 20.5f};
    everyKindAndGeneration([&](Gen gen) {
        // One level: the guess is the start.
        Tracked t = track(gen, p, xy, 7, 7, 10, 1);
        EXPECT_EQ(t.status[0], -2);
        EXPECT_EQ(t.out, xy);
        // Three levels: lost on the coarsest, in its coordinates.
        t = track(gen, p, xy, 7, 7, 10, 3);
        EXPECT_EQ(t.status[0], -2);
        EXPECT_EQ(t.out, (std::vector<float>{7.5f, 5.125f}));
    });
}

TEST(FeaturesLkGolden, WindowOutsideTheCoarsestLevelKeepsThatLevelsCoordinates) {
    Pair p(texture(128, 96), texture(128, 96, 1.0f, 0.5f), 3);
    // (-60, 40) is (-15, 10) on level 2, whose 7x7 window ends at x = -12;
    // (40, 200) is (10, 50) there, below the 24-row level.
    const std::vector<float> xy{-60.0f, 40.0f, 40.0f, 200.0f, 64.0f, 48.0f};
    everyKindAndGeneration([&](Gen gen) {
        const Tracked t = track(gen, p, xy, 7, 7);
        EXPECT_EQ(t.status, (std::vector<int32_t>{-4, -4, 1}));
        EXPECT_EQ(std::vector<float>(t.out.begin(), t.out.begin() + 4),
                  (std::vector<float>{-15.0f, 10.0f, 10.0f, 50.0f}));
        EXPECT_NEAR(t.out[4], 65.0f, 0.05f);
        EXPECT_NEAR(t.out[5], 48.5f, 0.05f);
    });
}

TEST(FeaturesLkGolden, WindowOfThreeIsRejectedByTheCore) {
    Pair p(texture(64, 48), texture(64, 48, 1.0f, 1.0f), 2);
    const std::vector<float> xy{20.0f, 20.0f, 30.5f, 12.0f};
    everyKindAndGeneration([&](Gen gen) {
        for (auto [ww, wh] : {std::pair{3, 9}, std::pair{9, 3}}) {
            const Tracked t = track(gen, p, xy, ww, wh);
            EXPECT_EQ(t.out, xy);                                 // the starting copy
            EXPECT_EQ(t.status, (std::vector<int32_t>{77, 77}));  // not written
            EXPECT_EQ(t.rc, 0);
        }
    });
}

TEST(FeaturesLkGolden, InitialEstimateIsTheStartInTheSecondImage) {
    // Shift of 7 pixels on one level with a 9x9 window: beyond reach from
    // the first image's positions, found from a nearby estimate.
    const float dx = 7.0f, dy = -2.0f;
    Pair p(texture(120, 90), texture(120, 90, dx, dy), 1);
    const std::vector<float> xy{40.0f, 40.0f, 70.0f, 50.0f};
    const std::vector<float> estimate{46.6f, 38.3f, 77.4f, 47.8f};
    for (uint32_t kind : {0u, 1u}) {
        AllRows force(kind);
        Tracked t = track(Gen::V3, p, xy, 9, 9, 30, 1, estimate.data());
        for (size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(t.status[i], 1);
            EXPECT_NEAR(t.out[2 * i], xy[2 * i] + dx, 0.05f);
            EXPECT_NEAR(t.out[2 * i + 1], xy[2 * i + 1] + dy, 0.05f);
        }
        // Without levels the estimate is what comes back.
        t = track(Gen::V3, p, xy, 9, 9, 30, 0, estimate.data());
        EXPECT_EQ(t.out, estimate);
    }
}

// ---------------------------------------------------------------------------
// The iteration, observed through instrumented kernels on the core.

namespace {

using pxr::lk::GradientSums;
using pxr::lk::Kernels;

// The reference kernels, counting and recording. With `freeze`, every
// sampling of the second image uses the centre of the feature's first
// one: each step is then the same, so only the termination rules end the
// iteration.
struct Recorder {
    static inline const uint8_t* second = nullptr;
    static inline bool freeze = false;
    static inline float cx0 = 0, cy0 = 0;
    static inline int secondSamples = 0;
    static inline std::vector<std::array<float, 4>> firstSamples;  // cx, cy, n, m
    static inline std::vector<GradientSums> gradients;

    static int sample(const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride, float* dst, int32_t n, int32_t m,
                      float cx, float cy) {
        if (src == second) {
            if (secondSamples++ == 0) cx0 = cx, cy0 = cy;
            if (freeze) cx = cx0, cy = cy0;
        } else {
            firstSamples.push_back({cx, cy, float(n), float(m)});
        }
        return pxr::lk::referenceKernels().sample(src, w, h, stride, dst, n, m, cx, cy);
    }
    static GradientSums gradient(const float* ix, const float* iy, int32_t stride, int32_t w, int32_t h) {
        gradients.push_back(pxr::lk::referenceKernels().gradientSums(ix, iy, stride, w, h));
        return gradients.back();
    }
    static Kernels kernels() {
        const Kernels& ref = pxr::lk::referenceKernels();
        return {&sample, ref.derivatives, &gradient, ref.mismatch};
    }
    static void reset(const uint8_t* secondImage, bool frozen) {
        second = secondImage;
        freeze = frozen;
        secondSamples = 0;
        firstSamples.clear();
        gradients.clear();
    }
};

// One feature through the core on one level with the recorder.
struct CoreRun {
    float x, y;
    int32_t status;
};

CoreRun runCore(Pair& p, float x, float y, int32_t hw, int32_t hh, int32_t mode, int32_t maxIterations,
                float maxEpsilon, bool frozen) {
    const size_t bytes = pxr::lk::workingBufferBytes(hw, hh, 1);
    std::vector<uint64_t> buffer(bytes / 8 + 1);
    const float xy[2] = {x, y};
    float out[2] = {x, y};
    int32_t status = 77;
    Recorder::reset(p.b.data(), frozen);
    pxr::lk::lkOpticalFlow_v3(p.a.data(), p.b.data(), p.pa.v2(), p.pb.v2(), xy, out, &status, 1, hw, hh,
                              maxIterations, 1, buffer.data(), bytes, mode, maxEpsilon, Recorder::kernels());
    return {out[0], out[1], status};
}

constexpr int32_t kIterations = 0, kEpsilon = 1, kBoth = 2;

}  // namespace

TEST(FeaturesLkTermination, IterationLimitsAreClamped) {
    // Every frozen step is about (0.5, 0.25): never converged, never reversed.
    Pair p(texture(200, 200), texture(200, 200, 0.5f, 0.25f), 1);
    auto iterations = [&](int32_t mode, int32_t maxIterations, float eps) {
        const CoreRun r = runCore(p, 60.0f, 60.0f, 3, 3, mode, maxIterations, eps, true);
        EXPECT_EQ(r.status, 1);
        EXPECT_EQ(Recorder::gradients.size(), 1u) << "the gradient matrix is computed once per window";
        return Recorder::secondSamples;
    };
    // Mode 0: maxIterations clamped to 1..100.
    EXPECT_EQ(iterations(kIterations, 0, 0), 1);
    EXPECT_EQ(iterations(kIterations, 7, 0), 7);
    EXPECT_EQ(iterations(kIterations, 101, 0), 100);
    // Mode 1 ignores maxIterations: 30.
    EXPECT_EQ(iterations(kEpsilon, 5, -1.0f), 30);
    // Mode 2 (and any other value): both.
    EXPECT_EQ(iterations(kBoth, 500, 0.0f), 100);
    EXPECT_EQ(iterations(kBoth, 12, -3.0f), 12);  // a negative epsilon acts as 0
    EXPECT_EQ(iterations(7, 12, std::numeric_limits<float>::quiet_NaN()), 12);
    // A threshold above the squared step stops after one.
    EXPECT_EQ(iterations(kBoth, 50, 0.5f), 1);
    EXPECT_EQ(iterations(kEpsilon, 50, 10.0f), 1);
    // Mode 0's threshold is 0.0009: a frozen step of 0.02 pixel converges at once.
    Pair slow(texture(200, 200), texture(200, 200, 0.02f, 0.0f), 1);
    EXPECT_EQ((runCore(slow, 60.0f, 60.0f, 3, 3, kIterations, 50, 0, true), Recorder::secondSamples), 1);
}

TEST(FeaturesLkTermination, EpsilonIsClampedToTen) {
    // Find a shift whose frozen step is between sqrt(10) and sqrt(20) long:
    // there an epsilon of 20 taken as 20 would stop after one iteration.
    const Frame a = texture(240, 160, 0.0f, 0.0f, 0, 3.0f);
    bool found = false;
    for (float s = 2.5f; s < 8.0f && !found; s += 0.25f) {
        Pair p(a, texture(240, 160, s, 0.0f, 0, 3.0f), 1);
        const CoreRun one = runCore(p, 80.0f, 80.0f, 10, 10, kBoth, 1, 0.0f, true);
        const float step2 = (one.x - 80.0f) * (one.x - 80.0f) + (one.y - 80.0f) * (one.y - 80.0f);
        if (one.status != 1 || step2 <= 10.5f || step2 >= 19.5f) continue;
        found = true;
        for (float eps : {20.0f, 1000.0f, 10.0f}) {
            const CoreRun r = runCore(p, 80.0f, 80.0f, 10, 10, kBoth, 4, eps, true);
            EXPECT_EQ(Recorder::secondSamples, 4) << "epsilon " << eps << ", squared step " << step2;
            EXPECT_EQ(r.status, 1);
        }
    }
    EXPECT_TRUE(found) << "no shift gave a step between sqrt(10) and sqrt(20)";
}

TEST(FeaturesLkTermination, UnclippedWindowIsCentredOnTheFeature) {
    // The first patch has a one-pixel margin: its sample hw + 1 (the middle
    // of the window) must lie on the feature, by the sampler's convention
    // that sample k lies at cx + 0.5 - (n - 1) / 2 + k.
    Pair p(texture(100, 80), texture(100, 80, 0.5f, 0.5f), 1);
    for (auto [x, y] : {std::pair{40.0f, 30.0f}, std::pair{50.3f, 41.7f}, std::pair{33.9f, 22.05f}}) {
        runCore(p, x, y, 4, 3, kIterations, 3, 0, false);
        ASSERT_FALSE(Recorder::firstSamples.empty());
        const auto [cx, cy, n, m] = Recorder::firstSamples[0];
        EXPECT_EQ(n, 9.0f + 2);
        EXPECT_EQ(m, 7.0f + 2);
        EXPECT_FLOAT_EQ(cx + 0.5f - (n - 1) / 2 + (4 + 1), x);
        EXPECT_FLOAT_EQ(cy + 0.5f - (m - 1) / 2 + (3 + 1), y);
    }
}

// ---------------------------------------------------------------------------
// The sampler (getRectSubPix) and the derivatives.

TEST(FeaturesLkSampler, BilinearOnARampWithReplicatedBorders) {
    // value = 3x + 5y reproduces exactly under bilinear interpolation.
    Frame ramp(24, 20, 5);
    for (uint32_t y = 0; y < 20; ++y)
        for (uint32_t x = 0; x < 24; ++x) ramp.at(x, y) = static_cast<uint8_t>(3 * x + 5 * y);
    auto clampX = [](float v) { return std::clamp(v, 0.0f, 23.0f); };
    auto clampY = [](float v) { return std::clamp(v, 0.0f, 19.0f); };
    for (const auto* kernels : {&pxr::lk::referenceKernels(), &pxr::lk::vectorKernels()})
        for (auto [cx, cy, n, m] : {std::tuple{10.3f, 8.6f, 5, 4}, std::tuple{-0.7f, 3.2f, 6, 3},
                                    std::tuple{21.6f, 18.9f, 9, 5}, std::tuple{3.0f, -2.25f, 17, 6}}) {
            std::vector<float> patch(size_t(n) * m);
            ASSERT_EQ(kernels->sample(ramp.data(), 24, 20, ramp.stride, patch.data(), n, m, cx, cy), 0);
            for (int r = 0; r < m; ++r)
                for (int k = 0; k < n; ++k) {
                    const float x = cx + 0.5f - 0.5f * float(n - 1) + float(k);
                    const float y = cy + 0.5f - 0.5f * float(m - 1) + float(r);
                    // Outside, the edge pixel: the ramp clamped (between the
                    // last pixel and past it the value is the last pixel's).
                    const float expected = 3 * clampX(x) + 5 * clampY(y);
                    EXPECT_NEAR(patch[size_t(r) * n + k], expected, 2e-4f) << k << "," << r << " at " << x << "," << y;
                }
        }
}

TEST(FeaturesLkSampler, FailuresAreNegative) {
    Frame img(16, 12);
    std::vector<float> patch(64);
    const auto& s = *pxr::lk::referenceKernels().sample;
    EXPECT_EQ(s(nullptr, 16, 12, 16, patch.data(), 4, 4, 5, 5), -1);
    EXPECT_EQ(s(img.data(), 16, 12, 16, nullptr, 4, 4, 5, 5), -1);
    EXPECT_EQ(s(img.data(), 0, 12, 16, patch.data(), 4, 4, 5, 5), -1);
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 0, 4, 5, 5), -1);
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 4, -1, 5, 5), -1);
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 4, 4, std::numeric_limits<float>::quiet_NaN(), 5), -1);
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 4, 4, 5, 2e9f), -1);
    // Wholly outside: the pixels the samples need end before column 0.
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 4, 4, -6.5f, 5), -2);
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 4, 4, 5, 14.0f), -2);
    // One pixel column inside is enough.
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 4, 4, -2.5f, 5), 0);
    EXPECT_EQ(s(img.data(), 16, 12, 16, patch.data(), 4, 4, -3.5f, 5), -2);
}

TEST(FeaturesLkDerivatives, ScharrOverThirtyTwoOnARamp) {
    // value = 3x + 5y: (3 + 10 + 3) * 2 * 3 / 32 = 3 across, 5 down.
    const int32_t w = 7, h = 5, ps = w + 2;
    std::vector<float> patch(size_t(ps) * (h + 2));
    for (int32_t y = 0; y < h + 2; ++y)
        for (int32_t x = 0; x < ps; ++x) patch[size_t(y) * ps + x] = float(3 * x + 5 * y);
    std::vector<float> ix(size_t(w) * h), iy(ix.size());
    calcIxIy_32fC(patch.data(), ps, w, h, ix.data(), iy.data(), w);
    EXPECT_EQ(ix, std::vector<float>(ix.size(), 3.0f));
    EXPECT_EQ(iy, std::vector<float>(iy.size(), 5.0f));
}
