// The Lucas-Kanade entry points' contract: refusals (logged, or status 3)
// write nothing; odd input that passes the checks never crashes; the trace
// line; random arguments.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "features_lk_helpers.h"
#include "frame/row_ids.h"
#include "frame/state.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/fuzz.h"
#include "support/log_capture.h"

using namespace pxr::test::lk;
using pxr::test::ForceKind;
using pxr::test::LogCapture;

namespace {

const std::string kCondition =
    "src1 && src2 && src1Pyr && src2Pyr && featureXY && featureXY_out && featureStatus && (windowWidth & 0x1) && "
    "(windowHeight & 0x1)";

// The arguments of one call, each of which a case may spoil.
struct Args {
    const uint8_t *src1, *src2;
    const pxrPyramidLevel *p1, *p2;
    const pxrPyramidLevel_v2 *q1, *q2;
    const float *xy, *estimate;
    float* out;
    int32_t* status;
    int32_t n, ww, wh, levels, useEstimate;
};

struct Fixture {
    Frame a = texture(64, 48), b = texture(64, 48, 0.5f, 0.5f);
    Pyramid pa{a, 2}, pb{b, 2};
    std::vector<float> xy{20.0f, 20.0f, 40.5f, 30.25f};
    Guarded<float> out{4};
    Guarded<int32_t> status{2};
    Args good() {
        return {a.data(), b.data(), pa.v1(), pb.v1(), pa.v2(), pb.v2(), xy.data(), xy.data(), out.data(),
                status.data(), 2, 7, 7, 2, 0};
    }
};

// Every way to fail the entry points' checks.
std::vector<Args> spoiled(Args g) {
    std::vector<Args> v;
    auto with = [&](auto change) {
        Args x = g;
        change(x);
        v.push_back(x);
    };
    with([](Args& x) { x.src1 = nullptr; });
    with([](Args& x) { x.src2 = nullptr; });
    with([](Args& x) { x.p1 = nullptr, x.q1 = nullptr; });
    with([](Args& x) { x.p2 = nullptr, x.q2 = nullptr; });
    with([](Args& x) { x.xy = nullptr; });
    with([](Args& x) { x.out = nullptr; });
    with([](Args& x) { x.status = nullptr; });
    with([](Args& x) { x.ww = 8; });
    with([](Args& x) { x.wh = 0; });
    with([](Args& x) { x.ww = -2, x.wh = 2; });
    return v;
}

void callU8(const Args& x) {
    pxrTrackLKOpticalFlowu8(x.src1, x.src2, 64, 48, x.p1, x.p2, nullptr, nullptr, x.xy, x.out, x.status, x.n, x.ww,
                            x.wh, 10, x.levels);
}
void callF32(const Args& x) {
    pxrTrackLKOpticalFlowf32(x.src1, x.src2, 64, 48, x.p1, x.p2, nullptr, nullptr, x.xy, x.out, x.status, x.n, x.ww,
                             x.wh, 10, x.levels);
}
void callV2(const Args& x) {
    pxrTrackLKOpticalFlowu8_v2(x.src1, x.src2, 64, 48, 0, x.q1, x.q2, x.xy, x.out, x.status, x.n, x.ww, x.wh, 10,
                               x.levels);
}
int callV3(const Args& x) {
    return pxrTrackLKOpticalFlowu8_v3(x.src1, x.src2, 64, 48, 0, x.q1, x.q2, x.xy, x.estimate, x.out, x.status, x.n,
                                      x.ww, x.wh, x.levels, PIXORA_LK_TERM_BOTH, 10, 0.01f, x.useEstimate);
}

struct Logging {
    const char* name;
    uint32_t row;
    void (*call)(const Args&);
};
const Logging kLogging[] = {{"pxrTrackLKOpticalFlowu8", PXR_ROW_TrackLKOpticalFlowu8, callU8},
                            {"pxrTrackLKOpticalFlowf32", PXR_ROW_TrackLKOpticalFlowf32, callF32},
                            {"pxrTrackLKOpticalFlowu8_v2", PXR_ROW_TrackLKOpticalFlowu8_v2, callV2}};

}  // namespace

TEST(FeaturesLkContract, BadArgumentsLogTheConditionAndWriteNothing) {
    for (const Logging& e : kLogging)
        for (uint32_t kind : {0u, 1u, 3u, 5u}) {
            ForceKind force(e.row, kind);
            Fixture f;
            for (const Args& x : spoiled(f.good())) {
                LogCapture log;
                e.call(x);
                EXPECT_EQ(log.texts(), std::vector<std::string>{"Assertion failed @" + std::string(e.name) + ": " +
                                                                kCondition + "\n"})
                    << e.name;
                EXPECT_TRUE(f.out.untouched()) << e.name;
                EXPECT_TRUE(f.status.untouched()) << e.name;
            }
            // The good call writes both.
            e.call(f.good());
            EXPECT_FALSE(f.status.untouched()) << e.name;
        }
}

TEST(FeaturesLkContract, StatusGenerationReturnsThreeSilently) {
    for (uint32_t kind : {0u, 1u, 2u, 3u}) {
        ForceKind force(PXR_ROW_TrackLKOpticalFlowu8_v3, kind);
        Fixture f;
        auto cases = spoiled(f.good());
        Args noEstimate = f.good();
        noEstimate.estimate = nullptr;
        noEstimate.useEstimate = 1;
        cases.push_back(noEstimate);
        for (const Args& x : cases) {
            LogCapture log;
            EXPECT_EQ(callV3(x), PIXORA_STATUS_BAD_PARAM);
            EXPECT_TRUE(log.texts().empty());
            EXPECT_TRUE(f.out.untouched());
            EXPECT_TRUE(f.status.untouched());
        }
        // A null estimate that is not used is no error.
        noEstimate.useEstimate = 0;
        EXPECT_EQ(callV3(noEstimate), PIXORA_STATUS_OK);
        EXPECT_FALSE(f.status.untouched());
    }
}

TEST(FeaturesLkContract, TraceLineNamesTheChosenKind) {
    Fixture f;
    const uint8_t saved = libLogPrint;
    libLogPrint = 1;
    {
        ForceKind force(PXR_ROW_TrackLKOpticalFlowu8_v2, PIXORA_KIND_SIMDX);
        LogCapture log;
        callV2(f.good());
        EXPECT_EQ(log.texts(), std::vector<std::string>{"pxrTrackLKOpticalFlowu8_v2_SIMDX"});
    }
    {
        // A DSP kind on a 64 x 48 image (below 176 x 144 + 1 pixels) moves to kind 1.
        ForceKind force(PXR_ROW_TrackLKOpticalFlowu8_v3, PIXORA_KIND_CDSP);
        LogCapture log;
        Args bad = f.good();
        bad.src1 = nullptr;
        EXPECT_EQ(callV3(bad), PIXORA_STATUS_BAD_PARAM);
        EXPECT_EQ(log.texts(), std::vector<std::string>{"pxrTrackLKOpticalFlowu8_v3_SIMDX"});
    }
    libLogPrint = saved;
}

TEST(FeaturesLkContract, OddInputThatPassesTheChecksNeverCrashes) {
    for (uint32_t kind : {0u, 1u}) {
        ForceKind f1(PXR_ROW_TrackLKOpticalFlowu8, kind), f2(PXR_ROW_TrackLKOpticalFlowf32, kind),
            f3(PXR_ROW_TrackLKOpticalFlowu8_v2, kind), f4(PXR_ROW_TrackLKOpticalFlowu8_v3, kind);
        // No features, or a negative count: nothing written, status 0.
        for (int32_t n : {0, INT_MIN}) {
            Fixture f;
            Args x = f.good();
            x.n = n;
            callU8(x);
            callF32(x);
            callV2(x);
            EXPECT_EQ(callV3(x), 0);
            EXPECT_TRUE(f.out.untouched() && f.status.untouched()) << n;
        }
        // Negative level counts and windows narrower than 5 (odd ones pass
        // the entry point): the starting copy, statuses not written.
        for (auto [levels, ww, wh] : {std::tuple{INT_MIN, 7, 7}, std::tuple{2, -5, 7}, std::tuple{2, INT_MIN + 1, 5}}) {
            Fixture f;
            Args x = f.good();
            x.levels = levels, x.ww = ww, x.wh = wh;
            for (int g = 0; g < 4; ++g) {
                Guarded<float> out{4};
                Guarded<int32_t> status{2};
                x.out = out.data();
                x.status = status.data();
                if (g == 0) callU8(x);
                if (g == 1) callF32(x);
                if (g == 2) callV2(x);
                if (g == 3) {
                    EXPECT_EQ(callV3(x), 0);
                }
                EXPECT_EQ(out.values(), f.xy) << g;
                EXPECT_TRUE(status.untouched()) << g;
            }
        }
        // Windows whose working memory is beyond any allocation: nothing
        // written, status 5.
        for (auto [ww, wh] : {std::pair{INT_MAX, 5}, std::pair{65537, 65537}}) {
            Fixture f;
            Args x = f.good();
            x.ww = ww, x.wh = wh;
            callU8(x);
            callV2(x);
            EXPECT_EQ(callV3(x), PIXORA_STATUS_NO_SCRATCH);
            EXPECT_TRUE(f.out.untouched() && f.status.untouched());
        }
        // A window far larger than the image is clipped to it and tracks.
        {
            Fixture f;
            Args x = f.good();
            x.ww = 1025, x.wh = 301;
            EXPECT_EQ(callV3(x), 0);
            EXPECT_EQ(f.status.values(), (std::vector<int32_t>{1, 1}));
        }
        // More levels than any image has (the first generations copy the
        // records beyond 32 levels on the heap): lost on the empty coarsest
        // level, in its coordinates.
        {
            Fixture f;
            std::vector<pxrPyramidLevel> many(40, pxrPyramidLevel{nullptr, 0, 0});
            many[0] = f.pa.v1()[0];
            many[1] = f.pa.v1()[1];
            Args x = f.good();
            x.p1 = many.data(), x.p2 = many.data(), x.levels = 40;
            callU8(x);
            EXPECT_EQ(f.status.values(), (std::vector<int32_t>{-4, -4}));
            EXPECT_EQ(f.out.values()[0], 20.0f * std::ldexp(1.0f, -39));
        }
        // Levels without pixels or without size: the features are lost there.
        {
            Fixture f;
            pxrPyramidLevel_v2 q1[3] = {f.pa.v2()[0], f.pa.v2()[1], {nullptr, 16, 12, 16}};
            pxrPyramidLevel_v2 q2[3] = {f.pb.v2()[0], {nullptr, 32, 24, 32}, {nullptr, 16, 12, 16}};
            Args x = f.good();
            x.q1 = q1, x.q2 = q2, x.levels = 3;
            EXPECT_EQ(callV3(x), 0);
            EXPECT_EQ(f.status.values(), (std::vector<int32_t>{-4, -4}));
            pxrPyramidLevel_v2 empty[2] = {f.pa.v2()[0], {f.pa.v2()[1].ptr, 0, 0, 0}};
            x.q1 = empty, x.q2 = f.pb.v2(), x.levels = 2;
            EXPECT_EQ(callV3(x), 0);
            EXPECT_EQ(f.status.values(), (std::vector<int32_t>{-4, -4}));
        }
    }
}

// ---------------------------------------------------------------------------
// Random arguments, every kind.

namespace {

using pxr::test::FuzzArgs;

// Levels 1.. of a w x h image (sizes rounded up), with their own pixels.
struct FuzzLevels {
    std::vector<pxrPyramidLevel_v2> v2;
    std::vector<pxrPyramidLevel> v1;
    std::vector<std::vector<uint8_t>> pixels;
    FuzzLevels(const uint8_t* base, uint32_t w, uint32_t h, uint32_t stride, int32_t levels, uint8_t fill) {
        for (int32_t l = 0; l < std::max(levels, 1); ++l) {
            if (l == 0) {
                v2.push_back({const_cast<uint8_t*>(base), w, h, stride});
            } else {
                w = (w + 1) / 2, h = (h + 1) / 2;
                pixels.emplace_back(size_t{w} * h + 1, fill);
                v2.push_back({pixels.back().data(), w, h, w});
            }
            v1.push_back({v2.back().ptr, v2.back().width, v2.back().height});
        }
    }
};

void fuzzTracker(const char* name, uint32_t row, bool packed, int generation) {
    pxr::test::fuzzEntry({name, row, 1, 1, packed, [generation, packed](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                              std::mt19937 gen(a.value * 131u + a.width * 7u + a.height);
                              const int32_t levels = static_cast<int32_t>(gen() % 5) - 1;
                              const int32_t n = static_cast<int32_t>(gen() % 7) - 1;
                              const int32_t windows[] = {5, 3, 7, 21, 1, 4, 9, -3};
                              const int32_t ww = windows[a.border + (gen() % 2) * 3];
                              const int32_t wh = windows[gen() % 8];
                              const uint32_t stride = packed || !a.srcStride ? a.width : a.srcStride;
                              FuzzLevels l1(s, a.width, a.height, stride, levels, a.value);
                              FuzzLevels l2(s, a.width, a.height, stride, levels, uint8_t(a.value + 9));
                              std::vector<float> xy, estimate;
                              for (int32_t i = 0; i < std::max(n, 0); ++i) {
                                  const float x = static_cast<float>(gen() % 60) - 10.0f + 0.25f * (gen() % 4);
                                  const float y = static_cast<float>(gen() % 40) - 8.0f + 0.5f * (gen() % 2);
                                  xy.insert(xy.end(), {x, y});
                                  estimate.insert(estimate.end(), {x + 1.5f, y - 0.5f});
                              }
                              std::vector<float> out(xy.size());
                              std::vector<int32_t> status(size_t(std::max(n, 0)));
                              // The fuzzer's null destination stands for null outputs.
                              float* o = d ? (out.empty() ? nullptr : out.data()) : nullptr;
                              int32_t* st = d ? (status.empty() ? nullptr : status.data()) : nullptr;
                              const float* f = xy.empty() ? nullptr : xy.data();
                              const int32_t iters = static_cast<int32_t>(gen() % 8) - 1;
                              switch (generation) {
                                  case 0:
                                      pxrTrackLKOpticalFlowu8(s, s, a.width, a.height, l1.v1.data(), l2.v1.data(),
                                                              nullptr, nullptr, f, o, st, n, ww, wh, iters, levels);
                                      break;
                                  case 1:
                                      pxrTrackLKOpticalFlowf32(s, s, a.width, a.height, l1.v1.data(), l2.v1.data(),
                                                               nullptr, nullptr, f, o, st, n, ww, wh, iters, levels);
                                      break;
                                  case 2:
                                      pxrTrackLKOpticalFlowu8_v2(s, s, a.width, a.height, a.srcStride, l1.v2.data(),
                                                                 l2.v2.data(), f, o, st, n, ww, wh, iters, levels);
                                      break;
                                  default:
                                      pxrTrackLKOpticalFlowu8_v3(
                                          s, s, a.width, a.height, a.srcStride, l1.v2.data(), l2.v2.data(), f,
                                          estimate.empty() ? nullptr : estimate.data(), o, st, n, ww, wh, levels,
                                          static_cast<pxrLKTermination>(gen() % 4), iters,
                                          static_cast<float>(gen() % 5) * 0.01f - 0.01f, static_cast<int32_t>(gen() % 2));
                                      break;
                              }
                          }},
                         600);
}

}  // namespace

TEST(EntryFuzz, TrackLKOpticalFlow) {
    fuzzTracker("pxrTrackLKOpticalFlowu8", PXR_ROW_TrackLKOpticalFlowu8, true, 0);
    fuzzTracker("pxrTrackLKOpticalFlowf32", PXR_ROW_TrackLKOpticalFlowf32, true, 1);
    fuzzTracker("pxrTrackLKOpticalFlowu8_v2", PXR_ROW_TrackLKOpticalFlowu8_v2, false, 2);
    fuzzTracker("pxrTrackLKOpticalFlowu8_v3", PXR_ROW_TrackLKOpticalFlowu8_v3, false, 3);
}
