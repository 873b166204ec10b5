// The FAST entry points' contract: every refused argument logs its entry
// point's name and condition text and writes nothing (the count included);
// the effective stride and border are what is checked; a missing tempBuf
// with suppression ends the process on every kind.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "features_fast_helpers.h"
#include "support/differential.h"
#include "support/log_capture.h"

using fast_test::Args;
using fast_test::Member;

namespace {

std::string conditionOf(const Member& m) {
    const bool n9 = m.arc == 9;
    std::string c = "src && xy && ";
    if (m.scored) c += "scores && ";
    c += n9 ? "numcorners && " : "nCorners && ";
    if (m.masked) c += n9 ? "bitMask && " : "mask && ";
    return c + (n9 ? "stride >= width && border*2 < width && border*2 < height"
                   : "srcStride >= srcWidth && border*2 < srcWidth && border*2 < srcHeight");
}

// Buffers for one call on a 16 x 12 image full of corners, every output
// word preset to a marker.
struct Call {
    fast_test::Image img = fast_test::Image(16, 12);
    std::vector<uint32_t> xy = std::vector<uint32_t>(2 * 64, 0xA5A5A5A5);
    std::vector<uint32_t> scores = std::vector<uint32_t>(64, 0xA5A5A5A5);
    std::vector<uint32_t> temp = std::vector<uint32_t>(3 * 64 + 16, 0xA5A5A5A5);
    std::vector<uint8_t> mask = std::vector<uint8_t>(2 * 12, 0);
    uint32_t count = 0xA5A5A5A5;
    Args a{.src = img.data(), .width = 16, .height = 12, .stride = 0, .barrier = 10, .border = 3,
           .xy = xy.data(), .scores = scores.data(), .max = 64, .count = &count, .mask = mask.data(),
           .maskWidth = 16, .maskHeight = 12, .nms = 1, .tempBuf = temp.data()};
    Call() {
        for (size_t i = 0; i < img.pixels.size(); ++i) img.pixels[i] = static_cast<uint8_t>(i * 97 % 251);
    }
    bool untouched() const {
        auto marked = [](const std::vector<uint32_t>& v) {
            return std::all_of(v.begin(), v.end(), [](uint32_t w) { return w == 0xA5A5A5A5; });
        };
        return count == 0xA5A5A5A5 && marked(xy) && marked(scores) && marked(temp);
    }
};

struct BadCase {
    const char* what;
    std::function<void(Args&)> spoil;
    bool applies;
};

}  // namespace

TEST(FastContract, EveryRefusalLogsItsConditionAndWritesNothing) {
    for (const Member& m : fast_test::members()) {
        const std::string expected = std::string("Assertion failed @") + m.name + ": " + conditionOf(m) + "\n";
        const std::vector<BadCase> cases = {
            {"null src", [](Args& a) { a.src = nullptr; }, true},
            {"null xy", [](Args& a) { a.xy = nullptr; }, true},
            {"null scores", [](Args& a) { a.scores = nullptr; }, m.scored},
            {"null count", [](Args& a) { a.count = nullptr; }, true},
            {"null mask", [](Args& a) { a.mask = nullptr; }, m.masked},
            {"stride below the width", [](Args& a) { a.stride = 15; }, true},
            {"2 border = height", [](Args& a) { a.border = 6; }, true},
            {"2 border = width", [](Args& a) { a.height = 20; a.border = 8; }, true},
            {"huge border", [](Args& a) { a.border = 0x80000001u; }, true},
            {"border 0 counts as 3 (height 6)", [](Args& a) { a.height = 6; a.border = 0; }, true},
            {"border 2 counts as 3 (width 6)", [](Args& a) { a.width = 6; a.stride = 6; a.border = 2; }, true},
            {"empty image", [](Args& a) { a.width = 0; a.height = 0; }, true},
        };
        for (uint32_t kind : {0u, 1u}) {
            pxr::test::ForceKind force(m.row, kind);
            for (const auto& c : cases) {
                if (!c.applies) continue;
                SCOPED_TRACE(std::string(m.name) + ": " + c.what + " kind " + std::to_string(kind));
                Call call;
                c.spoil(call.a);
                pxr::test::LogCapture log;
                m.call(call.a);
                EXPECT_EQ(log.texts(), std::vector<std::string>{expected});
                EXPECT_TRUE(call.untouched());
            }
        }
    }
}

TEST(FastContract, EffectiveStrideAndBorderAreAccepted) {
    for (const Member& m : fast_test::members()) {
        SCOPED_TRACE(m.name);
        pxr::test::LogCapture log;
        // Stride 0 is the width; border 0 on a 7 x 7 image is 3 (one candidate).
        Call call;
        call.a.width = call.a.height = 7;
        call.a.stride = 0;
        call.a.border = 0;
        call.a.maskWidth = call.a.maskHeight = 7;
        m.call(call.a);
        EXPECT_TRUE(log.texts().empty());
        EXPECT_LE(call.count, 1u);
        // A stride with slack, the nCornersMax and tempBuf never checked.
        Call slack;
        slack.a.stride = 17;
        slack.a.width = 16;
        slack.a.height = 11;
        slack.a.maskHeight = 11;
        slack.a.max = 3;
        slack.a.nms = 0;
        slack.a.tempBuf = nullptr;
        m.call(slack.a);
        EXPECT_TRUE(log.texts().empty());
        EXPECT_EQ(slack.count, 3u);
    }
}

TEST(FastContractDeathTest, SuppressionWithoutTempBufEndsTheProcess) {
    for (const char* name : {"pxrCornerFast9Scoreu8_v2", "pxrCornerFast10Scoreu8"})
        for (uint32_t kind : {0u, 1u}) {
            const Member& m = fast_test::member(name);
            pxr::test::ForceKind force(m.row, kind);
            Call call;
            call.a.tempBuf = nullptr;
            EXPECT_EXIT(m.call(call.a), ::testing::ExitedWithCode(1),
                        m.arc == 9 ? "pixoraFastC@[0-9]+: tempBuf Assertion failed"
                                   : "pixoraFast10C@[0-9]+: tempBuf Assertion failed")
                << name << " kind " << kind;
        }
}
