// Adaptive thresholds: the strict comparison with the offset, the zero
// border of the mean variants against the renormalised border of the
// Gaussian ones, the asymmetric short cuts (which never read the source),
// the type check, bad input and every kind.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/fuzz.h"
#include "support/log_capture.h"

using pxr::test::GuardedImage;

namespace {

using Adaptive = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t, uint32_t, int32_t, uint8_t*,
                          uint32_t);

struct Member {
    const char* name;
    uint32_t row;
    Adaptive fn;
    bool gaussian;
};

const Member kMembers[] = {
    {"pxrAdaptiveThresholdGaussian3x3u8", PXR_ROW_AdaptiveThresholdGaussian3x3u8, pxrAdaptiveThresholdGaussian3x3u8,
     true},
    {"pxrAdaptiveThresholdGaussian5x5u8", PXR_ROW_AdaptiveThresholdGaussian5x5u8, pxrAdaptiveThresholdGaussian5x5u8,
     true},
    {"pxrAdaptiveThresholdGaussian11x11u8", PXR_ROW_AdaptiveThresholdGaussian11x11u8,
     pxrAdaptiveThresholdGaussian11x11u8, true},
    {"pxrAdaptiveThresholdMean3x3u8", PXR_ROW_AdaptiveThresholdMean3x3u8, pxrAdaptiveThresholdMean3x3u8, false},
    {"pxrAdaptiveThresholdMean5x5u8", PXR_ROW_AdaptiveThresholdMean5x5u8, pxrAdaptiveThresholdMean5x5u8, false},
    {"pxrAdaptiveThresholdMean11x11u8", PXR_ROW_AdaptiveThresholdMean11x11u8, pxrAdaptiveThresholdMean11x11u8,
     false},
};

// A page that faults on any access: a source that must not be read.
class Unreadable {
public:
    Unreadable() : size_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
        p_ = mmap(nullptr, size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    }
    ~Unreadable() { munmap(p_, size_); }
    const uint8_t* data() const { return static_cast<const uint8_t*>(p_); }

private:
    size_t size_;
    void* p_;
};

}  // namespace

TEST(NonlinearAdaptiveGolden, StrictComparisonWithTheOffset) {
    // A flat image equals its mean in the interior: it passes binary only
    // with a positive offset. The mean variants pad with 0, so their border
    // means are low and the border passes even without an offset; the
    // Gaussian border is renormalised and stays flat.
    const uint32_t w = 24, h = 24;
    const std::vector<uint8_t> src(w * h, 100);
    for (const Member& m : kMembers) {
        std::vector<uint8_t> dst(w * h);
        m.fn(src.data(), w, h, 0, 200, 0, 0, dst.data(), 0);
        EXPECT_EQ(dst[12 * w + 12], 0) << m.name;
        EXPECT_EQ(dst[0], m.gaussian ? 0 : 200) << m.name;
        m.fn(src.data(), w, h, 0, 200, 0, 1, dst.data(), 0);
        EXPECT_EQ(dst, std::vector<uint8_t>(w * h, 200)) << m.name;
        m.fn(src.data(), w, h, 0, 200, 1, 0, dst.data(), 0);
        EXPECT_EQ(dst[12 * w + 12], 200) << m.name;
        EXPECT_EQ(dst[0], m.gaussian ? 200 : 0) << m.name;
        m.fn(src.data(), w, h, 0, 200, 1, 1, dst.data(), 0);
        EXPECT_EQ(dst, std::vector<uint8_t>(w * h, 0)) << m.name;
        // A negative offset raises the bar: a bright dot passes, its flat
        // surroundings do not.
        auto dot = src;
        dot[12 * w + 12] = 180;
        m.fn(dot.data(), w, h, 0, 255, 0, -20, dst.data(), 0);
        EXPECT_EQ(dst[12 * w + 12], 255) << m.name;
        EXPECT_EQ(dst[12 * w + 5], 0) << m.name;
    }
}

TEST(NonlinearAdaptiveGolden, ShortCutsNeverReadTheSource) {
    const Unreadable src;
    const uint32_t w = 40, h = 30;
    struct Case {
        uint32_t type;
        int32_t value;
        uint8_t expected;
    };
    // Binary: +256 all maxValue, -256 all 0; inverted: +256 all 0, -255 all
    // maxValue; any other type: all 0.
    const Case cases[] = {{0, 256, 77}, {0, 100000, 77}, {0, -256, 0}, {1, 256, 0},
                          {1, -255, 77}, {1, -100000, 77}, {2, 0, 0},   {9, -300, 0}};
    for (const Member& m : kMembers)
        for (const Case& c : cases) {
            std::vector<uint8_t> dst(w * h, 0x33);
            m.fn(src.data(), w, h, w, 77, c.type, c.value, dst.data(), 0);
            EXPECT_EQ(dst, std::vector<uint8_t>(w * h, c.expected)) << m.name << " " << c.type << " " << c.value;
        }
}

TEST(NonlinearAdaptiveBadInput, AssertionAndNothingWritten) {
    for (const Member& m : kMembers) {
        pxr::test::LogCapture log;
        GuardedImage src(16, 8), dst(16, 8);
        m.fn(src.data(), 16, 8, 16, 255, 0, 5, nullptr, 16);
        m.fn(src.data(), 16, 8, 15, 255, 0, 5, dst.data(), 16);
        m.fn(src.data(), 16, 0, 16, 255, 7, 5, dst.data(), 16);
        EXPECT_TRUE(dst.untouched()) << m.name;
        const std::string line = std::string("Assertion failed @") + m.name +
                                 ": src && dst && width && height && (srcStride >= width) && (dstStride >= width)\n";
        EXPECT_EQ(log.texts(), (std::vector<std::string>{line, line, line}));
    }
}

TEST(NonlinearAdaptiveDifferential, EveryKindMatches) {
    for (const Member& m : kMembers)
        for (auto [type, value] : {std::pair{0u, 5}, {1u, -3}, {0u, 0}, {1u, 255}, {0u, -255}})
            pxr::test::expectAllKindsMatch(pxr::test::unaryOp(
                std::string(m.name) + " " + std::to_string(type) + " " + std::to_string(value), m.row, 1, 1,
                [&m, type = type, value = value](GuardedImage& s, GuardedImage& d) {
                    m.fn(s.data(), s.width(), s.height(), s.stride(), 201, type, value, d.data(), d.stride());
                }));
}

TEST(NonlinearAdaptiveFuzz, RandomArgumentsOnExactBuffers) {
    for (const Member& m : kMembers)
        pxr::test::fuzzEntry({m.name, m.row, 1, 1, false, [fn = m.fn](const pxr::test::FuzzArgs& a, uint8_t* s, uint8_t* d) {
                                  fn(s, a.width, a.height, a.srcStride, a.value, a.border % 3u,
                                     (int32_t(a.value) - 128) * 3, d, a.dstStride);
                              }}, 600);
}
