// Random arguments against every FAST entry point, every kind. The corner
// list, scores, count, tempBuf and mask are allocated here, exactly as large
// as the arguments claim, so the sanitizers see their ends; now and then
// one of them is null, the capacity 0, the mask of a size that fits no
// scaling, the stride short of the width.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "features_fast_helpers.h"
#include "support/fuzz.h"

using pxr::test::FuzzArgs;
using pxr::test::fuzzEntry;

namespace {

// Words that exist only when asked for (null otherwise).
class Words {
public:
    Words(bool present, size_t n) : words_(present ? std::max<size_t>(n, 1) : 0) {}
    uint32_t* data() { return words_.empty() ? nullptr : words_.data(); }

private:
    std::vector<uint32_t> words_;
};

void call(const fast_test::Member& m, const FuzzArgs& a, const uint8_t* src, bool dstPresent) {
    const uint32_t pick = a.value;
    const uint32_t max = pick % 5 == 0 ? 0 : pick % 13;
    const bool nullOne = !dstPresent;  // the fuzzer's null destination: one output goes null
    const uint32_t which = pick % 4;
    Words xy(!(nullOne && which == 0), 2 * size_t{std::max(max, 1u)});
    Words scores(!(nullOne && which == 1), std::max(max, 1u));
    Words count(!(nullOne && which == 2), 1);
    Words temp(true, 3 * size_t{max} + a.height);  // never null with suppression: that ends the process
    // Mask sizes: the image's, one of the scalings, or one that fits none.
    static const int kShifts[] = {0, -1, 1, -2, 2, -3, 3, 5};
    const int k = kShifts[(pick >> 3) % 8];
    const uint32_t mw = k == 5 ? a.width + 3 : k >= 0 ? a.width >> k : a.width << -k;
    const uint32_t mh = k == 5 ? a.height : k >= 0 ? a.height >> k : a.height << -k;
    std::vector<uint8_t> maskBits(std::max<size_t>((size_t{mw} + 7) / 8 * mh, 1), static_cast<uint8_t>(pick * 37));
    m.call({.src = src, .width = a.width, .height = a.height, .stride = a.srcStride,
            .barrier = pick % 3 == 0 ? 0 : pick * 3, .border = a.border + (pick % 7 == 0 ? 3 : 0), .xy = xy.data(),
            .scores = scores.data(), .max = max, .count = count.data(),
            .mask = nullOne && which == 3 ? nullptr : maskBits.data(), .maskWidth = mw, .maskHeight = mh,
            .nms = pick & 1, .tempBuf = temp.data()});
}

}  // namespace

TEST(EntryFuzz, FastCorners) {
    for (const auto& m : fast_test::members())
        fuzzEntry({m.name, m.row, 1, 1, false, [&m](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       call(m, a, s, d != nullptr);
                   }});
}
