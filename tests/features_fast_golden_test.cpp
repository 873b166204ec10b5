// FAST goldens worked out by hand, on kind 0 and kind 1.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <tuple>

#include "features/fast/fast.h"
#include "features/fast/fast_kernels.h"
#include "features_fast_helpers.h"
#include "frame/tables.h"
#include "simd/features/fast/fast_v.h"
#include "support/differential.h"
#include "support/log_capture.h"

using fast_test::Found;
using fast_test::Image;
using fast_test::member;
using fast_test::paintArc;
using fast_test::run;
using XY = std::pair<uint32_t, uint32_t>;

namespace {

template <class Body>
void onBothKinds(Body body) {
    for (uint32_t kind : {0u, 1u}) {
        SCOPED_TRACE(kind ? "kind 1" : "kind 0");
        std::vector<std::unique_ptr<pxr::test::ForceKind>> force;
        for (const auto& m : fast_test::members()) force.push_back(std::make_unique<pxr::test::ForceKind>(m.row, kind));
        const auto saved9 = fast9_corner_score_;
        const auto saved10 = fast10_corner_score_;
        fast9_corner_score_ = kind ? fast9_corner_scoreV : fast9_corner_scoreC;
        fast10_corner_score_ = kind ? fast10_corner_scoreV : fast10_corner_scoreC;
        body();
        fast9_corner_score_ = saved9;
        fast10_corner_score_ = saved10;
    }
}

// A 7 x 7 image: the only candidate is its centre (3, 3).
Image single(uint8_t centre, uint8_t background) {
    Image img(7, 7, background);
    img.at(3, 3) = centre;
    return img;
}

bool cornerAtCentre(const char* name, const Image& img, uint32_t barrier) {
    const Found f = run(member(name), img, barrier);
    EXPECT_LE(f.count, 1u);
    return f.count == 1 && f.xy[0] == XY(3, 3);
}

// Isolated bright pixels every 4 columns and rows from (3, 3): the only corners.
Image dotGrid(uint32_t w, uint32_t h) {
    Image img(w, h, 100);
    for (uint32_t y = 3; y + 3 < h; y += 4)
        for (uint32_t x = 3; x + 3 < w; x += 4) img.at(x, y) = 200;
    return img;
}

std::vector<XY> dotGridCorners(uint32_t w, uint32_t h) {
    std::vector<XY> v;
    for (uint32_t y = 3; y + 3 < h; y += 4)
        for (uint32_t x = 3; x + 3 < w; x += 4) v.emplace_back(x, y);
    return v;
}

}  // namespace

TEST(FastGoldenSegment, ArcsComparisonsAndBarriers) {
    struct Arc {
        int first, length;
        uint8_t value;
    };
    struct Case {
        const char* what;
        uint8_t centre, background;
        std::vector<Arc> arcs;
        bool fast10;
        uint32_t barrier;
        bool corner;
    };
    const std::vector<Case> cases = {
        {"nine bright across ring index 15 -> 0", 100, 100, {{12, 9, 200}}, false, 20, true},
        {"nine are not ten", 100, 100, {{12, 9, 200}}, true, 20, false},
        {"ten across 15 -> 0", 100, 100, {{12, 10, 200}}, true, 20, true},
        {"eight plus one apart", 100, 100, {{12, 8, 200}, {6, 1, 200}}, false, 20, false},
        {"nine dark", 100, 100, {{10, 9, 10}}, false, 20, true},
        {"nine dark are not ten", 100, 100, {{10, 9, 10}}, true, 20, false},
        {"bright and dark never join", 100, 100, {{0, 5, 200}, {5, 5, 10}}, false, 20, false},
        {"equal to c + barrier is not brighter", 100, 100, {{0, 9, 120}}, false, 20, false},
        {"one above c + barrier", 100, 100, {{0, 9, 120}}, false, 19, true},
        {"equal to c - barrier is not darker", 100, 100, {{0, 9, 80}}, false, 20, false},
        {"one below c - barrier", 100, 100, {{0, 9, 80}}, false, 19, true},
        {"barrier 0, flat", 100, 100, {}, false, 0, false},
        {"barrier 0, one level above", 100, 100, {{3, 9, 101}}, false, 0, true},
        {"barrier 0, nine above are not ten", 100, 100, {{3, 9, 101}}, true, 0, false},
        {"barrier 0, ten below", 100, 100, {{3, 10, 99}}, true, 0, true},
        {"nothing above 260", 250, 255, {}, false, 10, false},
        {"255 > 254", 250, 255, {}, false, 4, true},
        {"white centre, darker at 0", 255, 255, {{0, 16, 254}}, true, 0, true},
        {"white centre, darker at 1", 255, 255, {{0, 16, 254}}, true, 1, false},
        {"black in white at 254", 0, 255, {}, false, 254, true},
        {"white in black at 254", 255, 0, {}, false, 254, true},
        {"black in white at 255", 0, 255, {}, false, 255, false},
        {"white in black at 255", 255, 0, {}, false, 255, false},
        {"no wrap-around in c + barrier", 0, 255, {}, false, 0x80000000u, false},
        {"no wrap-around in c - barrier", 255, 0, {}, false, 0xFFFFFFFFu, false},
    };
    onBothKinds([&] {
        for (const Case& c : cases) {
            Image img = single(c.centre, c.background);
            for (const Arc& a : c.arcs) paintArc(img, 3, 3, a.first, a.length, a.value);
            EXPECT_EQ(cornerAtCentre(c.fast10 ? "pxrCornerFast10u8" : "pxrCornerFast9u8", img, c.barrier), c.corner)
                << c.what;
        }
    });
}

TEST(FastGoldenScan, RasterOrderAndCapacity) {
    onBothKinds([] {
        const Image img = dotGrid(24, 15);  // corners at x 3, 7, 11, 15, 19 on rows 3, 7, 11
        const auto all = dotGridCorners(24, 15);
        ASSERT_EQ(all.size(), 15u);
        Found f = run(member("pxrCornerFast9u8"), img, 30);
        EXPECT_EQ(f.count, 15u);
        EXPECT_EQ(f.xy, all);

        // Full in the middle of row 7: exactly the first 7, the rest never written.
        std::vector<uint32_t> xy(2 * 15, 0xDEADBEEF);
        uint32_t n = 0;
        pxrCornerFast9u8(img.data(), 24, 15, 0, 30, 3, xy.data(), 7, &n);
        EXPECT_EQ(n, 7u);
        EXPECT_EQ(xy[12], 7u);
        EXPECT_EQ(xy[13], 7u);
        EXPECT_TRUE(std::all_of(xy.begin() + 14, xy.end(), [](uint32_t v) { return v == 0xDEADBEEF; }));

        // Capacity 0 still takes the first corner.
        std::vector<uint32_t> one(4, 0xDEADBEEF);
        n = 99;
        pxrCornerFast10u8(img.data(), 24, 15, 24, 30, 0, one.data(), 0, &n);
        EXPECT_EQ(n, 1u);
        EXPECT_EQ(one[0], 3u);
        EXPECT_EQ(one[1], 3u);
        EXPECT_EQ(one[2], 0xDEADBEEFu);

        // With suppression too: the raw regions of tempBuf are empty then, the
        // row starts begin at word 0, and the lone corner survives.
        std::vector<uint32_t> temp(15, 0xDEADBEEF);
        uint32_t score = 0;
        n = 99;
        pxrCornerFast9Scoreu8_v2(img.data(), 24, 15, 0, 30, 3, one.data(), &score, 0, &n, 1, temp.data());
        EXPECT_EQ(n, 1u);
        EXPECT_EQ(one[0], 3u);
        EXPECT_EQ(one[1], 3u);
        EXPECT_EQ(score, 99u);
        std::vector<uint32_t> expected(15, 0xDEADBEEF);
        expected[0] = expected[1] = expected[2] = 0xFFFFFFFF;  // rows 0 .. 2: none
        expected[3] = 0;                                       // row 3: raw corner 0
        EXPECT_EQ(temp, expected);
    });
}

TEST(FastGoldenScan, BorderBelowFourIsThreeAndOneRowImages) {
    onBothKinds([] {
        std::mt19937 gen(5);
        Image img(40, 30);
        for (auto& p : img.pixels) p = static_cast<uint8_t>(gen());
        const Found three = run(member("pxrCornerFast9u8"), img, 25, 3);
        ASSERT_GT(three.count, 10u);
        EXPECT_TRUE(std::any_of(three.xy.begin(), three.xy.end(),
                                [](const XY& p) { return p.first == 3 || p.second == 3; }));
        for (uint32_t border : {0u, 1u, 2u}) EXPECT_EQ(run(member("pxrCornerFast9u8"), img, 25, border).xy, three.xy);
        const Found four = run(member("pxrCornerFast9u8"), img, 25, 4);
        EXPECT_LT(four.count, three.count);
        for (const auto& p : four.xy) EXPECT_TRUE(p.first >= 4 && p.first < 36 && p.second >= 4 && p.second < 26);

        // Height 2 border + 1: one candidate row.
        Image strip(40, 11);
        for (auto& p : strip.pixels) p = static_cast<uint8_t>(gen());
        const Found f = run(member("pxrCornerFast10u8"), strip, 10, 5);
        ASSERT_GT(f.count, 0u);
        for (const auto& p : f.xy) EXPECT_EQ(p.second, 5u);
        // Width 2 border + 1: one candidate column.
        Image column(11, 40);
        for (auto& p : column.pixels) p = static_cast<uint8_t>(gen());
        const Found g = run(member("pxrCornerFast9u8"), column, 10, 5);
        ASSERT_GT(g.count, 0u);
        for (const auto& p : g.xy) EXPECT_EQ(p.first, 5u);
    });
}

TEST(FastGoldenMask, EveryScalingExcludesItsBlock) {
    onBothKinds([] {
        const Image img = dotGrid(48, 48);
        const auto all = dotGridCorners(48, 48);
        // Per scaling: mask size, the bits set, the corners they remove.
        struct Case {
            uint32_t maskSize;
            std::vector<XY> bits;
            std::set<XY> removed;
        };
        const std::vector<Case> cases = {
            {48, {{11, 11}, {12, 11}}, {{11, 11}}},
            {96, {{22, 22}, {23, 23}}, {{11, 11}}},    // mask twice the image: pixel (x, y) reads (2x, 2y)
            {24, {{5, 5}}, {{11, 11}}},                // image twice the mask: 2 x 2 pixels per bit
            {192, {{44, 44}, {45, 44}}, {{11, 11}}},   // mask four times
            {12, {{2, 2}, {0, 10}}, {{11, 11}, {3, 43}}},  // image four times: 4 x 4 blocks
            {384, {{88, 88}}, {{11, 11}}},             // mask eight times
            {6, {{1, 1}}, {{11, 11}, {15, 11}, {11, 15}, {15, 15}}},  // image eight times: 8 x 8 blocks
        };
        for (const char* name : {"pxrCornerFast9InMasku8", "pxrCornerFast10InMaskScoreu8"}) {
            for (const auto& c : cases) {
                SCOPED_TRACE(std::string(name) + " mask " + std::to_string(c.maskSize));
                auto mask = fast_test::clearMask(c.maskSize, c.maskSize);
                for (const auto& b : c.bits) fast_test::setMaskBit(mask, c.maskSize, b.first, b.second);
                std::vector<XY> expected;
                for (const auto& p : all)
                    if (!c.removed.count(p)) expected.push_back(p);
                const Found f = run(member(name), img, 30, 3, 1000, 0, &mask, c.maskSize, c.maskSize);
                EXPECT_EQ(f.xy, expected);
            }
        }
    });
}

TEST(FastGoldenMask, BitOrderAndSizesThatDoNotMatch) {
    onBothKinds([] {
        const Image img = dotGrid(16, 12);  // corners (3,3) (7,3) (11,3) (3,7) (7,7) (11,7)
        // Rows of 2 bytes; byte 0 of row 3 = 0x11 excludes columns 3 and 7.
        std::vector<uint8_t> mask(2 * 12, 0);
        mask[2 * 3] = 0x11;
        Found f = run(member("pxrCornerFast9InMasku8"), img, 30, 3, 100, 0, &mask, 16, 12);
        EXPECT_EQ(f.xy, (std::vector<XY>{{11, 3}, {3, 7}, {7, 7}, {11, 7}}));

        // Sizes that are no allowed scaling: no corners, no message.
        pxr::test::LogCapture log;
        std::vector<uint8_t> big(64 * 64, 0);
        for (auto [mw, mh] : {std::pair{16u, 24u}, std::pair{15u, 12u}, std::pair{48u, 36u}, std::pair{0u, 0u}}) {
            const Found g = run(member("pxrCornerFast9InMaskScoreu8_v2"), img, 30, 3, 100, 1, &big, mw, mh);
            EXPECT_EQ(g.count, 0u) << mw << "x" << mh;
            const Found h = run(member("pxrCornerFast10InMasku8"), img, 30, 3, 100, 0, &big, mw, mh);
            EXPECT_EQ(h.count, 0u) << mw << "x" << mh;
        }
        EXPECT_TRUE(log.texts().empty());
    });
}

TEST(FastGoldenScore, BinarySearchValues) {
    onBothKinds([] {
        // Nine at 160 around 100: passes up to t = 59 (160 > 159), not at 60.
        Image img = single(100, 100);
        paintArc(img, 3, 3, 2, 9, 160);
        Found f = run(member("pxrCornerFast9Scoreu8"), img, 20);
        ASSERT_EQ(f.count, 1u);
        EXPECT_EQ(f.scores[0], 59u);
        // A tenth at 130 leaves FAST-9 at 59 and gives FAST-10 29.
        paintArc(img, 3, 3, 11, 1, 130);
        EXPECT_EQ(run(member("pxrCornerFast9Scoreu8"), img, 20).scores, std::vector<uint32_t>{59});
        EXPECT_EQ(run(member("pxrCornerFast10Scoreu8"), img, 20).scores, std::vector<uint32_t>{29});
        // The weakest pixel of the best arc decides: 9 of 16 at 200 but one at 121.
        Image weak = single(100, 100);
        paintArc(weak, 3, 3, 0, 16, 200);
        paintArc(weak, 3, 3, 4, 1, 121);
        paintArc(weak, 3, 3, 12, 1, 121);
        // Arcs of 9 avoiding both 4 and 12 do not exist (they are 8 apart):
        // every arc holds a 121, so 121 > 100 + t up to t = 20.
        const auto clear7 = fast_test::clearMask(7, 7);
        EXPECT_EQ(run(member("pxrCornerFast9InMaskScoreu8"), weak, 10, 3, 10, 0, &clear7, 7, 7).scores,
                  std::vector<uint32_t>{20});
        // Top of the range: 0 in a ring of 255 scores 254 whatever the barrier below it.
        Image black = single(0, 255);
        for (uint32_t barrier : {0u, 254u})
            EXPECT_EQ(run(member("pxrCornerFast9Scoreu8_v2"), black, barrier).scores, std::vector<uint32_t>{254u});
        // The barrier itself when the search finds nothing above it.
        Image barely = single(100, 100);
        paintArc(barely, 3, 3, 0, 9, 131);
        const auto clear14 = fast_test::clearMask(14, 14);  // twice the image
        EXPECT_EQ(run(member("pxrCornerFast10InMaskScoreu8"), barely, 30, 3, 10, 0, &clear14, 14, 14).count, 0u);
        paintArc(barely, 3, 3, 9, 1, 131);
        EXPECT_EQ(run(member("pxrCornerFast10Scoreu8"), barely, 30).scores, std::vector<uint32_t>{30});
    });
}

TEST(FastGoldenSuppression, NeighbourRules) {
    struct Raw {
        uint32_t x, y, s;
    };
    auto suppress = [](const std::vector<Raw>& raw) {
        std::vector<uint32_t> xy, scores, rowStart(64, 0xAB);
        std::vector<uint32_t> outXy(2 * raw.size() + 2, 7), outScores(raw.size() + 1, 7);
        for (const auto& r : raw) {
            xy.push_back(r.x);
            xy.push_back(r.y);
            scores.push_back(r.s);
        }
        uint32_t n = 12345;
        nms_processing(xy.data(), scores.data(), rowStart.data(), static_cast<uint32_t>(raw.size()), outXy.data(),
                       outScores.data(), &n);
        std::vector<std::tuple<uint32_t, uint32_t, uint32_t>> out;
        for (uint32_t i = 0; i < n; ++i) out.emplace_back(outXy[2 * i], outXy[2 * i + 1], outScores[i]);
        return out;
    };
    using T = std::tuple<uint32_t, uint32_t, uint32_t>;
    using L = std::vector<T>;
    EXPECT_EQ(suppress({}), L{});
    EXPECT_EQ(suppress({{5, 5, 30}, {6, 5, 30}}), L{}) << "equal horizontal neighbours remove each other";
    EXPECT_EQ(suppress({{5, 5, 30}, {6, 5, 31}}), (L{{6, 5, 31}}));
    EXPECT_EQ(suppress({{5, 5, 31}, {6, 5, 30}}), (L{{5, 5, 31}}));
    EXPECT_EQ(suppress({{5, 5, 30}, {5, 6, 31}}), (L{{5, 6, 31}})) << "vertical";
    EXPECT_EQ(suppress({{5, 5, 31}, {5, 6, 30}}), (L{{5, 5, 31}}));
    EXPECT_EQ(suppress({{5, 5, 31}, {6, 6, 30}}), (L{{5, 5, 31}})) << "diagonal";
    EXPECT_EQ(suppress({{6, 5, 30}, {5, 6, 30}}), L{}) << "anti-diagonal, equal";
    EXPECT_EQ(suppress({{5, 5, 30}, {7, 5, 30}, {5, 7, 30}}), (L{{5, 5, 30}, {7, 5, 30}, {5, 7, 30}})) << "apart";
    // Equal peaks side by side both go, and so does what they beat.
    EXPECT_EQ(suppress({{1, 2, 10}, {2, 2, 20}, {3, 2, 20}, {9, 2, 5}}), (L{{9, 2, 5}}));
    EXPECT_EQ(suppress({{1, 0, 10}, {2, 0, 40}, {3, 0, 20}, {0, 1, 50}, {3, 1, 30}}), (L{{2, 0, 40}, {0, 1, 50}}));
}

TEST(FastGoldenSuppression, ThroughTheEntryPoints) {
    onBothKinds([] {
        // Two touching bright pixels: each has a ring of 100 (the other is not on it).
        Image img(20, 9, 100);
        img.at(10, 4) = 200;
        img.at(11, 4) = 200;
        img.at(15, 4) = 180;
        const Found raw = run(member("pxrCornerFast9Scoreu8_v2"), img, 20, 3, 100, 0);
        EXPECT_EQ(raw.xy, (std::vector<XY>{{10, 4}, {11, 4}, {15, 4}}));
        EXPECT_EQ(raw.scores, (std::vector<uint32_t>{99, 99, 79}));
        const Found kept = run(member("pxrCornerFast9Scoreu8_v2"), img, 20, 3, 100, 1);
        EXPECT_EQ(kept.xy, (std::vector<XY>{{15, 4}}));
        img.at(11, 4) = 201;
        const Found one = run(member("pxrCornerFast10Scoreu8"), img, 20, 3, 100, 1);
        EXPECT_EQ(one.xy, (std::vector<XY>{{11, 4}, {15, 4}}));
        EXPECT_EQ(one.scores, (std::vector<uint32_t>{100, 79}));
    });
}

TEST(FastGoldenSuppression, TempBufLayoutAndUntouchedWithoutSuppression) {
    onBothKinds([] {
        const Image img = dotGrid(24, 15);
        const uint32_t max = 20;
        std::vector<uint32_t> xy(2 * max, 1), scores(max, 1), temp(3 * max + 15 + 4, 0xC0FFEE);
        uint32_t n = 0;
        pxrCornerFast9Scoreu8_v2(img.data(), 24, 15, 0, 30, 3, xy.data(), scores.data(), max, &n, 0, temp.data());
        EXPECT_EQ(n, 15u);
        EXPECT_TRUE(std::all_of(temp.begin(), temp.end(), [](uint32_t v) { return v == 0xC0FFEE; }));

        pxrCornerFast9Scoreu8_v2(img.data(), 24, 15, 0, 30, 3, xy.data(), scores.data(), max, &n, 1, temp.data());
        EXPECT_EQ(n, 15u);  // isolated corners all survive
        // Raw list, raw scores at 2 max, row starts at 3 max (rows 0 .. 11).
        EXPECT_EQ(temp[0], 3u);
        EXPECT_EQ(temp[1], 3u);
        EXPECT_EQ(temp[2 * 14], 19u);
        EXPECT_EQ(temp[2 * 14 + 1], 11u);
        EXPECT_EQ(temp[2 * max], 99u);
        EXPECT_EQ(temp[3 * max + 3], 0u);
        EXPECT_EQ(temp[3 * max + 7], 5u);
        EXPECT_EQ(temp[3 * max + 11], 10u);
        EXPECT_EQ(temp[3 * max + 4], 0xFFFFFFFFu);
        EXPECT_EQ(temp[3 * max + 12], 0xC0FFEEu) << "rows past the last corner's are not written";
    });
}

TEST(FastGoldenDispatch, ScoreFunctionsDetectThroughThePublicEntryPoint) {
    pxr::test::ForceKind score(PXR_ROW_CornerFast9Scoreu8, 0);
    pxr::test::ForceKind detect(PXR_ROW_CornerFast9u8, 1);
    const uint8_t savedLog = libLogPrint;
    libLogPrint = 1;
    pxr::test::LogCapture log;
    run(member("pxrCornerFast9Scoreu8"), dotGrid(12, 12), 30);
    libLogPrint = savedLog;
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"pxrCornerFast9Scoreu8_CPU", "pxrCornerFast9u8_SIMDX"}));
}
