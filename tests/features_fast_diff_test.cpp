// Every kind of every FAST entry point against kind 0: corners, scores,
// count and tempBuf words equal, guard words intact, over the standard
// shapes, several thresholds and capacities, three contents and every mask
// scaling.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

#include "features/fast/fast.h"
#include "features_fast_helpers.h"
#include "simd/features/fast/fast_v.h"
#include "support/differential.h"
#include "support/log_capture.h"

using fast_test::Member;
using pxr::test::GuardedImage;
using pxr::test::Shape;

namespace {

enum Content { kNoise, kBlocks, kSmooth };

struct Case {
    uint32_t barrier;
    uint32_t max;  // kPlenty: one per pixel
    uint32_t nms;
    Content content;
};
constexpr uint32_t kPlenty = 0xFFFFFFFF;

const Case kCases[] = {
    {20, kPlenty, 0, kNoise}, {0, 5, 1, kNoise},    {40, kPlenty, 1, kBlocks},
    {8, 0, 0, kBlocks},       {3, kPlenty, 1, kSmooth}, {255, kPlenty, 1, kNoise},
};

// Mask scalings cycled over the shapes: the shift k, or 9 for a size that
// matches none of them.
const int kMaskShifts[] = {0, -1, 1, -2, 2, -3, 3, 9};

// Writes structured content over the (random) pixels of the source.
void paint(GuardedImage& img, Content content, uint32_t seed) {
    std::mt19937 gen(seed);
    const uint32_t w = img.width(), h = img.height();
    if (content == kBlocks) {
        // 3 x 3 cells of few grey levels, with +-1 noise: many ties.
        std::vector<uint8_t> cells((w / 3 + 1) * (h / 3 + 1));
        for (auto& c : cells) c = static_cast<uint8_t>(60 + 40 * (gen() % 4));
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x)
                img.at(x, y) = static_cast<uint8_t>(cells[(y / 3) * (w / 3 + 1) + x / 3] + gen() % 3 - 1);
    } else if (content == kSmooth) {
        // A slow ramp with sparse spikes, near black and near white.
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x) {
                const uint32_t r = gen() % 64;
                img.at(x, y) = r == 0 ? 255 : r == 1 ? 0 : static_cast<uint8_t>((x * 3 + y * 5) % 256);
            }
    }
}

// An output array of 32-bit words between guard words, every word set
// from a cheap hash of its index and a seed (the outputs are large).
class GuardedWords {
public:
    static constexpr size_t kGuard = 16;
    GuardedWords(size_t n, uint32_t seed) : words_(n + 2 * kGuard) {
        for (size_t i = 0; i < words_.size(); ++i) words_[i] = static_cast<uint32_t>(i * 2654435761u) ^ seed;
        pristine_ = words_;
    }
    uint32_t* data() { return words_.data() + kGuard; }
    bool outsideUntouched() const {
        return std::equal(words_.begin(), words_.begin() + kGuard, pristine_.begin()) &&
               std::equal(words_.end() - kGuard, words_.end(), pristine_.end() - kGuard);
    }
    const std::vector<uint32_t>& guarded() const { return words_; }

private:
    std::vector<uint32_t> words_, pristine_;
};

// One run of a member on one kind; returns the outputs with their guards.
struct Outputs {
    GuardedWords xy, scores, count, temp;
    std::vector<std::string> log;
};

std::unique_ptr<Outputs> runKind(const Member& m, const Shape& s, const Case& c, uint32_t kind,
                                 const GuardedImage& src, const GuardedImage* mask, uint32_t maskWidth,
                                 uint32_t maskHeight) {
    // Plenty: more than any content here yields (under half the pixels).
    const uint32_t max = c.max == kPlenty ? s.width * s.height / 2 + 16 : c.max;
    const size_t room = std::max(max, 1u);
    const uint32_t seed = s.width * 31u + s.height * 7u + c.barrier + c.max;
    auto out = std::make_unique<Outputs>(Outputs{GuardedWords(2 * room, seed), GuardedWords(room, seed + 1),
                                                 GuardedWords(1, seed + 2),
                                                 GuardedWords(3 * room + s.height, seed + 3), {}});

    pxr::test::ForceKind own(m.row, kind), detect(m.detectRow, kind);
    const auto saved9 = fast9_corner_score_;
    const auto saved10 = fast10_corner_score_;
    fast9_corner_score_ = kind ? fast9_corner_scoreV : fast9_corner_scoreC;
    fast10_corner_score_ = kind ? fast10_corner_scoreV : fast10_corner_scoreC;
    pxr::test::LogCapture log;
    m.call({.src = src.data(), .width = s.width, .height = s.height, .stride = s.slack ? src.stride() : 0,
            .barrier = c.barrier, .border = s.width % 5,  // 0 .. 4: effective 3 or 4
            .xy = out->xy.data(), .scores = out->scores.data(), .max = max, .count = out->count.data(),
            .mask = mask ? mask->data() : nullptr, .maskWidth = maskWidth, .maskHeight = maskHeight, .nms = c.nms,
            .tempBuf = out->temp.data()});
    out->log = log.texts();
    fast9_corner_score_ = saved9;
    fast10_corner_score_ = saved10;
    return out;
}

void compareMember(const Member& m) {
    const auto& shapes = pxr::test::standardShapes();
    const auto kinds = pxr::test::kindsToCompare(m.row);
    ASSERT_FALSE(kinds.empty()) << m.name << ": no kind besides 0 to compare";
    for (uint32_t kind : kinds) {
        auto runShapes = [&](const char* target) {
            for (size_t si = 0; si < shapes.size(); ++si) {
                const Shape& s = shapes[si];
                for (const Case& c : kCases) {
                    if (c.nms && !m.suppressible) continue;
                    SCOPED_TRACE(std::string(m.name) + " kind " + std::to_string(kind) + " target " + target + " " +
                                 pxr::test::describe(s) + " barrier " + std::to_string(c.barrier) + " max " +
                                 std::to_string(c.max) + " nms " + std::to_string(c.nms));
                    GuardedImage src(s.width, s.height, 1, s.slack, s.misalign);
                    paint(src, c.content, static_cast<uint32_t>(si) * 977u + c.barrier);
                    const auto before = src.guarded();

                    // The mask: one of the scalings (or none that fits), random bits.
                    std::unique_ptr<GuardedImage> mask;
                    uint32_t mw = 0, mh = 0;
                    if (m.masked) {
                        const int k = kMaskShifts[si % 8];
                        mw = k == 9 ? s.width + 1 : k >= 0 ? s.width >> k : s.width << -k;
                        mh = k == 9 ? s.height : k >= 0 ? s.height >> k : s.height << -k;
                        mask = std::make_unique<GuardedImage>(std::max(1u, (mw + 7) / 8), std::max(1u, mh), 1, 0,
                                                              s.misalign);
                        mask->fillRandom(static_cast<uint32_t>(si) + 17u);
                    }
                    const auto ref = runKind(m, s, c, 0, src, mask.get(), mw, mh);
                    const auto got = runKind(m, s, c, kind, src, mask.get(), mw, mh);
                    EXPECT_EQ(src.guarded(), before) << "the source was written";
                    const GuardedWords* r[] = {&ref->xy, &ref->scores, &ref->count, &ref->temp};
                    const GuardedWords* g[] = {&got->xy, &got->scores, &got->count, &got->temp};
                    const char* names[] = {"xy", "scores", "count", "tempBuf"};
                    for (int i = 0; i < 4; ++i) {
                        EXPECT_TRUE(r[i]->outsideUntouched()) << "kind 0 wrote past " << names[i];
                        EXPECT_TRUE(g[i]->outsideUntouched()) << "wrote past " << names[i];
                        ASSERT_EQ(r[i]->guarded(), g[i]->guarded()) << names[i] << " differs from kind 0";
                    }
                    EXPECT_EQ(got->log, ref->log);
                }
            }
        };
        if (kind == PIXORA_KIND_SIMDX)
            pxr::test::forEachVectorTarget(runShapes);
        else
            runShapes("-");
    }
}

}  // namespace

TEST(FastDiff, EveryMemberMatchesKindZero) {
    for (const auto& m : fast_test::members()) compareMember(m);
}
