// The entry-point contract: constraint rules per kind, the trace line and
// its place before the argument check, dispatch through the table, the
// retry on kind 1 after 32768.
#include <gtest/gtest.h>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

using pxr::test::ForceKind;
using pxr::test::GuardedImage;
using pxr::test::LogCapture;

namespace {

// Turns the trace on and sets the check flag for one test.
class TraceOn {
public:
    explicit TraceOn(uint32_t checks = 1) : log_(libLogPrint), checks_(HW_constraint_checks_enable) {
        libLogPrint = 1;
        HW_constraint_checks_enable = checks;
    }
    ~TraceOn() {
        libLogPrint = log_;
        HW_constraint_checks_enable = checks_;
    }

private:
    uint8_t log_;
    uint32_t checks_;
};

std::vector<std::string> runtimeLines(const LogCapture& log) {
    std::vector<std::string> out;
    for (const auto& l : log.lines())
        if (l.tag == "pixora_runtime_log") out.push_back(l.text);
    return out;
}

std::string traceOfGaussianV2(uint32_t kind, uint32_t w, uint32_t h, uint32_t checks, uint32_t misalign = 0) {
    TraceOn trace(checks);
    ForceKind force(PXR_ROW_FilterGaussian3x3u8, kind);
    LogCapture log;
    GuardedImage src(w, h, 1, 0, misalign), dst(w, h), ref(w, h);
    pxrFilterGaussian3x3u8_v2(src.data(), w, h, src.stride(), dst.data(), dst.stride(), 1);
    {
        ForceKind cpu(PXR_ROW_FilterGaussian3x3u8, 0);
        pxrFilterGaussian3x3u8_v2(src.data(), w, h, src.stride(), ref.data(), ref.stride(), 1);
    }
    EXPECT_EQ(dst.pixels(), ref.pixels()) << "every kind computes the reference result";
    auto lines = runtimeLines(log);
    return lines.size() == 2 ? lines[0] : "";  // the call under test, then the reference
}

}  // namespace

TEST(EntryRules, DspKindNeedsMoreThanQcifUnderTheCheckFlag) {
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_CDSP, 176, 144, 1), "pxrFilterGaussian3x3u8_v2_SIMDX");
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_CDSP, 176, 145, 1), "pxrFilterGaussian3x3u8_v2_CDSP");
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_ADSP, 176, 145, 1, 2), "pxrFilterGaussian3x3u8_v2_SIMDX");
    // An explicit DSP request (check flag off) is honoured for small images.
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_MDSP, 16, 16, 0), "pxrFilterGaussian3x3u8_v2_MDSP");
}

TEST(EntryRules, GpuNeedsEvenSizesAndCpuKindsNeverMove) {
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_GPU, 177, 146, 1), "pxrFilterGaussian3x3u8_v2_SIMDX");
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_GPU, 178, 146, 1), "pxrFilterGaussian3x3u8_v2_GPU");
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_CPU, 7, 3, 1), "pxrFilterGaussian3x3u8_v2_CPU");
    EXPECT_EQ(traceOfGaussianV2(PIXORA_KIND_SIMDX, 7, 3, 1, 1), "pxrFilterGaussian3x3u8_v2_SIMDX");
}

TEST(EntryRules, PlainGaussianDspRuleIgnoresTheCheckFlag) {
    TraceOn trace(0);
    ForceKind force(PXR_ROW_FilterGaussian3x3u8, PIXORA_KIND_CDSP);
    LogCapture log;
    GuardedImage src(18, 8), dst(18, 8);
    pxrFilterGaussian3x3u8(src.data(), 18, 8, dst.data(), 1);
    GuardedImage src4(20, 8), dst4(20, 8);
    pxrFilterGaussian3x3u8(src4.data(), 20, 8, dst4.data(), 1);
    EXPECT_EQ(runtimeLines(log), (std::vector<std::string>{"pxrFilterGaussian3x3u8_SIMDX", "pxrFilterGaussian3x3u8_CDSP"}));
}

TEST(EntryRules, MedianRules) {
    TraceOn trace(1);
    LogCapture log;
    GuardedImage src(176, 152), dst(176, 152), odd(176, 152, 1, 0, 8);
    {
        ForceKind force(PXR_ROW_FilterMedian3x3u8, PIXORA_KIND_GPU);
        pxrFilterMedian3x3u8_v2(src.data(), 176, 152, 0, dst.data(), 0);   // 16-aligned, width % 8 == 0
        pxrFilterMedian3x3u8_v2(odd.data(), 176, 152, 0, dst.data(), 0);   // src only 8-aligned
    }
    {
        ForceKind force(PXR_ROW_FilterMedian3x3u8, PIXORA_KIND_CDSP);
        pxrFilterMedian3x3u8_v2(odd.data(), 176, 152, 0, dst.data(), 0);   // 8-aligned is enough
        pxrFilterMedian3x3u8_v2(src.data(), 176, 144, 0, dst.data(), 0);   // too few pixels
    }
    EXPECT_EQ(runtimeLines(log),
              (std::vector<std::string>{"pxrFilterMedian3x3u8_v2_GPU", "pxrFilterMedian3x3u8_v2_SIMDX",
                                        "pxrFilterMedian3x3u8_v2_CDSP", "pxrFilterMedian3x3u8_v2_SIMDX"}));
}

TEST(EntryTrace, RejectedCallLeavesTraceThenAssertion) {
    TraceOn trace;
    ForceKind force(PXR_ROW_FilterGaussian3x3u8, PIXORA_KIND_CPU);
    LogCapture log;
    GuardedImage src(8, 8);
    pxrFilterGaussian3x3u8_v2(src.data(), 8, 8, 8, nullptr, 8, 1);
    auto lines = log.lines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].tag, "pixora_runtime_log");
    EXPECT_EQ(lines[0].text, "pxrFilterGaussian3x3u8_v2_CPU");
    EXPECT_EQ(lines[0].priority, 6);
    EXPECT_EQ(lines[1].tag, "pixora_lib_log");
    EXPECT_EQ(lines[1].text.rfind("Assertion failed @pxrFilterGaussian3x3u8_v2: ", 0), 0u);
}

TEST(EntryTrace, SilentWhileTheSwitchIsOff) {
    ASSERT_EQ(libLogPrint, 0);
    LogCapture log;
    GuardedImage src(9, 9), dst(9, 9);
    pxrFilterGaussian3x3u8_v2(src.data(), 9, 9, 9, dst.data(), 9, 1);
    EXPECT_TRUE(log.lines().empty());
}

namespace {

int gFakeCalls = 0;
int fakeUnsupported(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t, uint32_t, uint8_t) {
    ++gFakeCalls;
    return PIXORA_STATUS_UNSUPPORTED;
}

}  // namespace

TEST(EntryDispatch, StatusUnsupportedRetriesOnKindOne) {
    const size_t slot = size_t{PXR_ROW_FilterGaussian3x3u8_v3} * PIXORA_NUM_KINDS + PIXORA_KIND_GPU;
    const uintptr_t saved = pxrFuncTable[slot];
    pxrFuncTable[slot] = reinterpret_cast<uintptr_t>(&fakeUnsupported);
    ForceKind force(PXR_ROW_FilterGaussian3x3u8_v3, PIXORA_KIND_GPU);
    GuardedImage src(16, 8), dst(16, 8), ref(16, 8);
    gFakeCalls = 0;
    EXPECT_EQ(pxrFilterGaussian3x3u8_v3(src.data(), 16, 8, 16, dst.data(), 16, PIXORA_BORDER_REPLICATE, 0), 0);
    pxrFuncTable[slot] = saved;
    EXPECT_EQ(gFakeCalls, 1);
    {
        ForceKind cpu(PXR_ROW_FilterGaussian3x3u8_v3, PIXORA_KIND_CPU);
        pxrFilterGaussian3x3u8_v3(src.data(), 16, 8, 16, ref.data(), 16, PIXORA_BORDER_REPLICATE, 0);
    }
    EXPECT_EQ(dst.pixels(), ref.pixels());
}

TEST(EntryDispatch, EveryKindOfEveryFilledRowIsCallable) {
    // After a mode is set, no column a mode may choose is left empty for a
    // row that has a reference: CPU kinds directly, others through kind 1.
    for (uint32_t row = 0; row < PIXORA_NUM_FUNCTIONS; ++row) {
        if (!pxrFuncTable[row * PIXORA_NUM_KINDS]) continue;
        for (uint32_t k = 0; k <= PIXORA_KIND_GPU; ++k)
            EXPECT_NE(pxrFuncTable[row * PIXORA_NUM_KINDS + k], 0u) << "row " << row << " kind " << k;
    }
}
