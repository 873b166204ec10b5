// Operation modes and hardware detection: the processor information rules,
// the hardware mask, every mode's choices, the extended and remote-library
// forms, version and clean-up.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "frame/cpu_detect.h"
#include "frame/hardware.h"
#include "frame/mode_lists.h"
#include "frame/modes.h"
#include "frame/row_ids.h"
#include "frame/state.h"
#include "frame/tables.h"
#include "pixora/filters.h"
#include "pixora/frame.h"
#include "support/frame_snapshot.h"
#include "support/log_capture.h"

namespace {

using pxr::test::FrameSnapshot;
using pxr::test::LogCapture;
using pxr::test::ScopedEnv;

std::string fixture(const char* name) { return std::string(PIXORA_TEST_DATA) + "/cpuinfo/" + name; }

std::string readFixture(const char* name) {
    pxr::platform::setCpuInfoPath(fixture(name).c_str());
    std::string text = pxr::platform::readCpuInfo(pxr::detect::kCpuInfoBytes);
    pxr::platform::setCpuInfoPath(nullptr);
    return text;
}

pxr::detect::CpuInfo parseFixture(const char* name) { return pxr::detect::parseCpuInfo(readFixture(name)); }

constexpr uint64_t kSupportedHw = PIXORA_HW_EXAMINED | PIXORA_HW_VECTOR | PIXORA_HW_FPU | PIXORA_HW_ARCH7 |
                                  PIXORA_HW_PLATFORM;
constexpr uint32_t kExt = 0x80000000u;

size_t countKind(uint32_t kind) { return std::count(pxrImplTable, pxrImplTable + PIXORA_NUM_FUNCTIONS, kind); }

bool allCpu() {
    for (uint32_t id = 0; id < PIXORA_NUM_FUNCTIONS; ++id)
        if (pxrImplTable[id] != PIXORA_KIND_CPU) return false;
    for (uint32_t id = 0; id < PIXORA_NUM_INTERNAL_FUNCTIONS; ++id)
        if (id != PXR_IROW_RegisterBuf && pxrInternalImplTable[id] != PIXORA_KIND_CPU) return false;
    return true;
}

// ---------------------------------------------------------------------------
// Processor information: the field rules on fixtures and on short texts.

TEST(CpuInfo, Armv7FixtureGivesNeonVfpArchitecture7AndImplementer41) {
    const auto info = parseFixture("armv7_neon.txt");
    EXPECT_TRUE(info.hasFeatures && info.vector && info.fp);
    EXPECT_TRUE(info.hasArchitecture);
    EXPECT_EQ(info.architecture, 7u);
    EXPECT_EQ(info.implementer, 0x41u);
    EXPECT_EQ(info.hardware, "Generic evaluation board");
    const auto p = pxr::detect::resolve(info, {});
    EXPECT_TRUE(p.vector && p.fp && p.arch7 && p.supportedImplementer);
    EXPECT_FALSE(p.onlyCpu);
}

TEST(CpuInfo, CpuOnlyHardwareNameSetsTheOnlyCpuFlag) {
    EXPECT_TRUE(pxr::detect::resolve(parseFixture("cpu_only.txt"), {}).onlyCpu);
    for (const char* name : {"Goldfish", "ranchu", "DUMMY VIRTUAL MACHINE"})
        EXPECT_TRUE(pxr::detect::cpuOnlyHardware(name)) << name;
    for (const char* name : {"Goldfish2", "Gold", "", "Generic evaluation board"})
        EXPECT_FALSE(pxr::detect::cpuOnlyHardware(name)) << name;
}

TEST(CpuInfo, HostStandsInOnlyForAnAbsentFeaturesLine) {
    const auto none = parseFixture("no_features.txt");
    EXPECT_FALSE(none.hasFeatures);
    pxr::detect::HostFeatures host;
    host.vector = true;
    host.fp = true;
    auto p = pxr::detect::resolve(none, host);
    EXPECT_TRUE(p.vector && p.fp);
    p = pxr::detect::resolve(none, {});
    EXPECT_FALSE(p.vector || p.fp);
    // A present line wins over the host, in both directions.
    host.vector = false;
    host.fp = false;
    p = pxr::detect::resolve(parseFixture("armv7_neon.txt"), host);
    EXPECT_TRUE(p.vector && p.fp);
    host.vector = true;
    host.fp = true;
    p = pxr::detect::resolve(parseFixture("no_fpu.txt"), host);
    EXPECT_FALSE(p.vector || p.fp);
}

TEST(CpuInfo, HostStandsInForAbsentArchitectureAndImplementer) {
    pxr::detect::HostFeatures host;
    host.arch7 = true;
    host.supported = true;
    auto p = pxr::detect::resolve(pxr::detect::parseCpuInfo("flags\t\t: fpu sse2\n"), host);
    EXPECT_TRUE(p.arch7 && p.supportedImplementer);
    p = pxr::detect::resolve(parseFixture("unknown_implementer.txt"), host);
    EXPECT_FALSE(p.supportedImplementer);
}

TEST(CpuInfo, MalformedFieldsWithoutBlankAfterColonAreAbsent) {
    const auto info = parseFixture("malformed.txt");
    EXPECT_FALSE(info.hasFeatures);
    EXPECT_FALSE(info.hasImplementer);
    EXPECT_FALSE(info.hasArchitecture);
    EXPECT_FALSE(info.hasHardware);
    EXPECT_FALSE(pxr::detect::resolve(info, {}).onlyCpu);
}

TEST(CpuInfo, FieldRules) {
    using pxr::detect::cpuInfoField;
    using pxr::detect::parseCpuInfo;
    // The name must start a line; the first such line decides.
    EXPECT_FALSE(cpuInfoField(" Features\t: neon\n", "Features"));
    EXPECT_FALSE(cpuInfoField("x: 1\nmy Features\t: neon\n", "Features"));
    EXPECT_EQ(*cpuInfoField("Features\t: a b\nFeatures\t: c\n", "Features"), "a b");
    EXPECT_FALSE(cpuInfoField("Features\t:\tneon\nFeatures\t: fp\n", "Features"));
    EXPECT_FALSE(cpuInfoField("Features\n: neon\n", "Features"));
    EXPECT_EQ(*cpuInfoField("Hardware\t: Ranchu\r\n", "Hardware"), "Ranchu");
    EXPECT_EQ(*cpuInfoField("Hardware\t: ", "Hardware"), "");
    EXPECT_FALSE(cpuInfoField("", "Hardware"));
    // Whole words only, blank or tab separated.
    auto info = parseCpuInfo("Features\t: vfpv3 vfpd32 asimdhp neonx\n");
    EXPECT_TRUE(info.hasFeatures);
    EXPECT_FALSE(info.fp || info.vector);
    info = parseCpuInfo("Features\t: \tfp\tasimd  \n");
    EXPECT_TRUE(info.fp && info.vector);
    info = parseCpuInfo("Features\t: neon\n");
    EXPECT_TRUE(info.vector && !info.fp);
    // Implementer in any base; architecture in decimal.
    EXPECT_EQ(parseCpuInfo("CPU implementer\t: 65\n").implementer, 0x41u);
    EXPECT_EQ(parseCpuInfo("CPU implementer\t: 0101\n").implementer, 0x41u);
    EXPECT_EQ(parseCpuInfo("CPU implementer\t: 0x51\n").implementer, 0x51u);
    EXPECT_EQ(parseCpuInfo("CPU architecture: 08\n").architecture, 8u);
    EXPECT_EQ(parseCpuInfo("CPU architecture: 0x8\n").architecture, 0u);
    EXPECT_FALSE(pxr::detect::resolve(parseCpuInfo("CPU architecture: 6\n"), {}).arch7);
    EXPECT_TRUE(pxr::detect::resolve(parseCpuInfo("CPU architecture: 7\n"), {}).arch7);
    EXPECT_TRUE(pxr::detect::resolve(parseCpuInfo("CPU architecture: 8\n"), {}).arch7);
}

// ---------------------------------------------------------------------------
// The hardware mask of pxrAvailableHardware.

TEST(HardwareMask, Armv7InCpuPerformanceModeHasExactlyTheProcessorBits) {
    FrameSnapshot keep;
    pxr::test::useCpuInfo(fixture("armv7_neon.txt"));
    EXPECT_EQ(pxrAvailableHardware(PIXORA_OP_CPU_PERFORMANCE), kSupportedHw | PIXORA_HW_BIT32);
}

TEST(HardwareMask, ComponentStartUpTurnsBit32IntoTheDspBitAndClearsStaleFlags) {
    FrameSnapshot keep;
    pxr::test::useCpuInfo(fixture("armv7_neon.txt"));
    KDSP_initflag = 1;
    GPU_initflag = 1;
    // No DSP or GPU libraries here: the start-up reports neither.
    EXPECT_EQ(pxrAvailableHardware(PIXORA_OP_PERFORMANCE), kSupportedHw);
    EXPECT_EQ(KDSP_initflag, 0);
    EXPECT_EQ(GPU_initflag, 0);
    EXPECT_EQ(pxrAvailableHardware(kExt | 0x400), kSupportedHw);
    // Extended CPU selectors start nothing and keep the architecture meaning.
    EXPECT_EQ(pxrAvailableHardware(kExt | 4), kSupportedHw | PIXORA_HW_BIT32);
}

TEST(HardwareMask, PlatformBitFromImplementerOrBoardPrefix) {
    FrameSnapshot keep;
    ScopedEnv board("RO_BOARD_PLATFORM", nullptr);
    pxr::test::useCpuInfo(fixture("unknown_implementer.txt"));
    EXPECT_FALSE(pxrAvailableHardware(PIXORA_OP_CPU_PERFORMANCE) & PIXORA_HW_PLATFORM);
    {
        ScopedEnv gen("RO_BOARD_PLATFORM", "gen42");
        EXPECT_TRUE(pxrAvailableHardware(PIXORA_OP_CPU_PERFORMANCE) & PIXORA_HW_PLATFORM);
    }
    {
        ScopedEnv other("RO_BOARD_PLATFORM", "board9");
        EXPECT_FALSE(pxrAvailableHardware(PIXORA_OP_CPU_PERFORMANCE) & PIXORA_HW_PLATFORM);
    }
    pxr::test::useCpuInfo(fixture("aarch64.txt"));
    EXPECT_TRUE(pxrAvailableHardware(PIXORA_OP_CPU_PERFORMANCE) & PIXORA_HW_PLATFORM);
}

TEST(HardwareMask, ComponentStartUpWithoutAcceleratorsReportsNothingAndLogsTheDspTime) {
    FrameSnapshot keep;
    LogCapture log;
    libLogPrint = 1;
    EXPECT_EQ(pxrAvailableHWComponent(PIXORA_OP_PERFORMANCE), 0u);
    ASSERT_TRUE(log.contains(" K6 Initialization Time : "));
    EXPECT_FALSE(log.contains("GPU Initialization Time"));
    for (const auto& line : log.lines()) {
        if (line.text.find("K6 Initialization") != std::string::npos) {
            EXPECT_EQ(line.tag, "pixora_runtime_log");
        }
    }
    log.clear();
    libLogPrint = 0;
    EXPECT_EQ(pxrAvailableHWComponent(PIXORA_OP_LOW_POWER), 0u);
    EXPECT_FALSE(log.contains("Initialization Time"));
}

// ---------------------------------------------------------------------------
// The mode setter on detected processors.

class ModeSetter : public ::testing::Test {
protected:
    void use(const char* name) { pxr::test::useCpuInfo(fixture(name)); }
    FrameSnapshot keep_;
    ScopedEnv board_{"RO_BOARD_PLATFORM", nullptr};
    ScopedEnv trace_{"VENDOR_RUNTIME_PIXORA_LOG", nullptr};
};

TEST_F(ModeSetter, CpuOnlyPlatformTurnsEveryModeIntoCpuPerformance) {
    use("cpu_only.txt");
    for (uint32_t mode : {0u, 1u, 2u, kExt | 0x400, kExt | 2, kExt | 5}) {
        LogCapture log;
        pxrImplTable[PXR_ROW_FilterGaussian3x3u8] = PIXORA_KIND_CPU;
        EXPECT_EQ(pxrSetOperationMode(mode), 0u) << mode;
        EXPECT_EQ(mode_globalVar, static_cast<uint32_t>(PIXORA_OP_CPU_PERFORMANCE));
        EXPECT_EQ(pxrImplTable[PXR_ROW_FilterGaussian3x3u8], static_cast<uint32_t>(PIXORA_KIND_SIMDX));
        const auto lines = log.lines();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines[0].text, "DSP and GPU not present. Setting PIXORA mode to PIXORA_OP_CPU_PERFORMANCE.\n");
        EXPECT_EQ(lines[0].priority, 6);
        EXPECT_EQ(lines[0].tag, "pixora_lib_log");
    }
}

TEST_F(ModeSetter, CpuPerformanceChoosesKind1ExactlyWhereAVectorImplementationExists) {
    use("armv7_neon.txt");
    std::fill(pxrImplTable, pxrImplTable + PIXORA_NUM_FUNCTIONS, PIXORA_KIND_GPU);
    EXPECT_EQ(pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE), 0u);
    const auto counts = pxr::registryCounts();
    EXPECT_EQ(countKind(PIXORA_KIND_SIMDX), counts.vector);
    EXPECT_EQ(countKind(PIXORA_KIND_CPU) + counts.vector, PIXORA_NUM_FUNCTIONS - 2u);
    EXPECT_EQ(pxrImplTable[PXR_ROW_FilterGaussian3x3u8], static_cast<uint32_t>(PIXORA_KIND_SIMDX));
    EXPECT_EQ(pxrFuncTable[PXR_ROW_FilterGaussian3x3u8 * 7 + 1], pxrFuncTable[PXR_ROW_FilterGaussian3x3u8 * 7 + 2])
        << "column 2 defaults to the vector code";
    EXPECT_EQ(mode_globalVar, static_cast<uint32_t>(PIXORA_OP_CPU_PERFORMANCE));
}

TEST_F(ModeSetter, UnsupportedPlatformLeavesEveryPlainModeOnKind0) {
    use("unknown_implementer.txt");
    for (uint32_t mode : {0u, 1u, 2u, 3u}) {
        EXPECT_EQ(pxrSetOperationMode(mode), 0u) << mode;
        EXPECT_TRUE(allCpu()) << mode;
    }
    // Extended requests do not depend on the platform.
    EXPECT_EQ(pxrSetOperationMode(kExt | 1), 0u);
    EXPECT_EQ(pxrImplTable[PXR_ROW_FilterGaussian3x3u8], static_cast<uint32_t>(PIXORA_KIND_SIMDX));
}

TEST_F(ModeSetter, ExtendedSelectors) {
    use("armv7_neon.txt");
    EXPECT_EQ(pxrSetOperationMode(kExt | 2), 0u);
    EXPECT_TRUE(allCpu());
    for (uint32_t e : {1u, 4u, 0x20u, 8u, 0x400u}) {
        EXPECT_EQ(pxrSetOperationMode(kExt | e), 0u) << e;
        EXPECT_EQ(pxrImplTable[PXR_ROW_FilterGaussian3x3u8], static_cast<uint32_t>(PIXORA_KIND_SIMDX)) << e;
        EXPECT_EQ(mode_globalVar, kExt | e);
    }
    for (uint32_t e : {0u, 3u, 9u, 0x40u, 0x401u, 0x7FFFFFFFu})
        EXPECT_EQ(pxrSetOperationMode(kExt | e), 0xFFFFFFFFu) << e;
}

TEST_F(ModeSetter, ExplicitDspRequestTurnsTheConstraintChecksOff) {
    use("armv7_neon.txt");
    EXPECT_EQ(pxrSetOperationMode(kExt | 0x400), 0u);
    EXPECT_EQ(HW_constraint_checks_enable, 0u);
    EXPECT_EQ(K6_constraint_checks_enable, 0u);
    EXPECT_EQ(pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE), 0u);
    EXPECT_EQ(HW_constraint_checks_enable, 1u);
    EXPECT_EQ(K6_constraint_checks_enable, 1u);
}

TEST_F(ModeSetter, PlainModesAboveThreeReturn0WithEveryKindAt0) {
    use("armv7_neon.txt");
    for (uint32_t mode : {4u, 0x7FFFFFFFu}) {
        EXPECT_EQ(pxrSetOperationMode(mode), 0u) << mode;
        EXPECT_TRUE(allCpu()) << mode;
        EXPECT_EQ(mode_globalVar, mode);
    }
}

TEST_F(ModeSetter, NoFloatingPointAndNoVectorUnitReturns999WithoutTouchingTheTables) {
    use("no_fpu.txt");
    pxrImplTable[PXR_ROW_AbsDiffu8] = PIXORA_KIND_GPU;
    pxrFuncTable[PXR_ROW_AbsDiffu8 * 7 + 2] = 0x1234;
    EXPECT_EQ(pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE), 999u);
    EXPECT_EQ(pxrSetOperationMode(kExt | 2), 999u);
    EXPECT_EQ(pxrImplTable[PXR_ROW_AbsDiffu8], static_cast<uint32_t>(PIXORA_KIND_GPU));
    EXPECT_EQ(pxrFuncTable[PXR_ROW_AbsDiffu8 * 7 + 2], 0x1234u);
}

TEST_F(ModeSetter, ReservedRowsAndBufferRegistrationKeepTheirKindAcrossModeChanges) {
    use("armv7_neon.txt");
    pxrImplTable[PXR_ROW_Reserved362] = PIXORA_KIND_ADSP;
    pxrImplTable[PXR_ROW_Reserved363] = PIXORA_KIND_MDSP;
    pxrInternalImplTable[PXR_IROW_RegisterBuf] = PIXORA_KIND_CDSP;
    pxrInternalImplTable[PXR_IROW_ProbeK6Time] = PIXORA_KIND_CDSP;
    pxrImplTable[PXR_ROW_AbsDiffu8] = PIXORA_KIND_CDSP;
    for (uint32_t mode : {3u, 1u, kExt | 2, 0u}) {
        pxrSetOperationMode(mode);
        EXPECT_EQ(pxrImplTable[PXR_ROW_Reserved362], static_cast<uint32_t>(PIXORA_KIND_ADSP)) << mode;
        EXPECT_EQ(pxrImplTable[PXR_ROW_Reserved363], static_cast<uint32_t>(PIXORA_KIND_MDSP)) << mode;
        EXPECT_EQ(pxrInternalImplTable[PXR_IROW_RegisterBuf], static_cast<uint32_t>(PIXORA_KIND_CDSP)) << mode;
        EXPECT_EQ(pxrInternalImplTable[PXR_IROW_ProbeK6Time], static_cast<uint32_t>(PIXORA_KIND_CPU)) << mode;
        EXPECT_EQ(pxrImplTable[PXR_ROW_AbsDiffu8], static_cast<uint32_t>(PIXORA_KIND_CPU)) << mode;
    }
    for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k) {
        EXPECT_EQ(pxrFuncTable[PXR_ROW_Reserved362 * 7 + k], 0u);
        EXPECT_EQ(pxrFuncTable[PXR_ROW_Reserved363 * 7 + k], 0u);
    }
}

TEST_F(ModeSetter, TraceSwitchIsReadFromThePropertyAtEveryModeChange) {
    use("armv7_neon.txt");
    struct Case {
        const char* value;
        uint8_t on;
    };
    for (const Case c : {Case{"1", 1}, Case{"0", 0}, Case{"7", 1}, Case{"abc", 0}, Case{nullptr, 0}}) {
        ScopedEnv trace("VENDOR_RUNTIME_PIXORA_LOG", c.value);
        libLogPrint = c.on ? 0 : 1;
        pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
        EXPECT_EQ(libLogPrint, c.on) << (c.value ? c.value : "(unset)");
    }
    // With the switch on, an entry point traces its name and kind.
    ScopedEnv trace("VENDOR_RUNTIME_PIXORA_LOG", "1");
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    std::vector<uint8_t> src(16 * 16, 7), dst(16 * 16, 0);
    LogCapture log;
    pxrFilterGaussian3x3u8_v2(src.data(), 16, 16, 16, dst.data(), 16, 1);
    const auto lines = log.lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].text, "pxrFilterGaussian3x3u8_v2_SIMDX");
    EXPECT_EQ(lines[0].tag, "pixora_runtime_log");
}

TEST_F(ModeSetter, ExtOptionsMapOntoTheExtendedRequests) {
    use("armv7_neon.txt");
    EXPECT_EQ(pxrSetOperationModeExt(PIXORA_OP_EXT_KDSP), 0u);
    EXPECT_EQ(mode_globalVar, 0x80000400u);
    EXPECT_EQ(pxrSetOperationModeExt(PIXORA_OP_EXT_GPU), 0u);
    EXPECT_EQ(mode_globalVar, 0x80000020u);
    use("no_fpu.txt");
    EXPECT_EQ(pxrSetOperationModeExt(PIXORA_OP_EXT_GPU), 1u) << "a failing setter gives 1";
}

TEST_F(ModeSetter, ExtRefusesOtherOptionsWithThreeLinesAndChangesNothing) {
    use("armv7_neon.txt");
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    std::vector<uint32_t> before(pxrImplTable, pxrImplTable + PIXORA_NUM_FUNCTIONS);
    for (uint32_t option : {2u, 0xFFFFFFFFu}) {
        LogCapture log;
        EXPECT_EQ(pxrSetOperationModeExt(option), 1u);
        const auto lines = log.lines();
        ASSERT_EQ(lines.size(), 3u);
        EXPECT_EQ(lines[0].text,
                  "Failed in pxrSetOperationModeExt. Please select appropriate option for mode to "
                  "pxrSetOperationModeExt based on the target of interest");
        EXPECT_EQ(lines[1].text,
                  "For mobile targets, pxrSetOperationModeExt supports only PIXORA_OP_EXT_KDSP and "
                  "PIXORA_OP_EXT_GPU options");
        for (const char* name : {"pxrSetOperationModeExt", "PIXORA_OP_EXT_KDSP", "PIXORA_OP_EXT_GPU",
                                 "PIXORA_OP_EXT_ADSP", "PIXORA_OP_EXT_CDSP", "PIXORA_OP_EXT_MDSP"})
            EXPECT_NE(lines[2].text.find(name), std::string::npos) << name;
        for (const auto& line : lines) {
            EXPECT_EQ(line.priority, 3);
            EXPECT_EQ(line.tag, "pixora_lib_log");
        }
    }
    EXPECT_EQ(mode_globalVar, static_cast<uint32_t>(PIXORA_OP_CPU_PERFORMANCE));
    EXPECT_TRUE(std::equal(before.begin(), before.end(), pxrImplTable));
}

// ---------------------------------------------------------------------------
// The choices of each mode, with accelerators reported present.

class ModeChoices : public ::testing::Test {
protected:
    void SetUp() override {
        // Build the tables once so that the descriptor exists.
        pxr::test::useCpuInfo(fixture("armv7_neon.txt"));
        pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
        KDSP_initflag = 1;
        GPU_initflag = 1;
        defaultDSP = 1;
    }
    FrameSnapshot keep_;
};

TEST_F(ModeChoices, PerformanceModePutsItsListsOnTheDspAndTheGpu) {
    const uint64_t hw = kSupportedHw | PIXORA_HW_DSP | PIXORA_HW_GPU;
    LogCapture log;
    EXPECT_EQ(pxr::applyMode(PIXORA_OP_PERFORMANCE, hw), 0u);
    for (uint32_t id : pxr::modes::kPerformanceDsp) EXPECT_EQ(pxrImplTable[id], 5u) << id;
    for (uint32_t id : pxr::modes::kPerformanceGpu) EXPECT_EQ(pxrImplTable[id], 3u) << id;
    EXPECT_EQ(countKind(5), std::size(pxr::modes::kPerformanceDsp));
    EXPECT_EQ(countKind(3), std::size(pxr::modes::kPerformanceGpu));
    EXPECT_EQ(pxrInternalImplTable[PXR_IROW_ProbeK6Time], 5u);
    EXPECT_EQ(pxrInternalImplTable[PXR_IROW_RegisterBuf], 5u);
    EXPECT_EQ(pxrImplTable[PXR_ROW_FilterGaussian3x3u8], 1u);
    EXPECT_TRUE(log.contains("CDSP is available"));
    EXPECT_TRUE(log.contains("GPU is available"));
}

TEST_F(ModeChoices, LowPowerAndCpuOffloadListsGoToKind5) {
    const uint64_t hw = kSupportedHw | PIXORA_HW_DSP | PIXORA_HW_GPU;
    EXPECT_EQ(pxr::applyMode(PIXORA_OP_LOW_POWER, hw), 0u);
    for (uint32_t id : pxr::modes::kLowPowerDsp) EXPECT_EQ(pxrImplTable[id], 5u) << id;
    EXPECT_EQ(countKind(5), std::size(pxr::modes::kLowPowerDsp));
    EXPECT_EQ(countKind(3), 0u);
    EXPECT_EQ(pxr::applyMode(PIXORA_OP_CPU_OFFLOAD, hw), 0u);
    for (uint32_t id : pxr::modes::kCpuOffloadDsp) EXPECT_EQ(pxrImplTable[id], 5u) << id;
    EXPECT_EQ(countKind(5), std::size(pxr::modes::kCpuOffloadDsp));
    EXPECT_EQ(pxrInternalImplTable[PXR_IROW_ProbeK6Time], 5u);
}

TEST_F(ModeChoices, ModeTablesNeedAnOpenChannelAndASupportedPlatform) {
    KDSP_initflag = 0;
    GPU_initflag = 0;
    EXPECT_EQ(pxr::applyMode(PIXORA_OP_PERFORMANCE, kSupportedHw | PIXORA_HW_DSP | PIXORA_HW_GPU), 0u);
    EXPECT_EQ(countKind(5) + countKind(3), 0u);
    KDSP_initflag = 1;
    GPU_initflag = 1;
    EXPECT_EQ(pxr::applyMode(PIXORA_OP_PERFORMANCE, (kSupportedHw & ~PIXORA_HW_PLATFORM) | PIXORA_HW_DSP), 0u);
    EXPECT_TRUE(allCpu());
}

TEST_F(ModeChoices, ExtendedDspRequestWithoutDomainLogsAndChoosesNoDsp) {
    defaultDSP = 7;
    LogCapture log;
    EXPECT_EQ(pxr::applyMode(kExt | 8, kSupportedHw | PIXORA_HW_DSP), 0u);
    EXPECT_TRUE(log.contains("defaultDSP flag is not set. Hence failed to set index for K Tables"));
    EXPECT_TRUE(log.contains("defaultDSP flag is not set. Hence unable to set memory pointers for PIXORA function"));
    EXPECT_EQ(countKind(4) + countKind(5) + countKind(6), 0u);
    EXPECT_EQ(HW_constraint_checks_enable, 0u);
}

// ---------------------------------------------------------------------------
// The remote-library form.

class RemoteLib : public ModeChoices {};

TEST_F(RemoteLib, ClearsStalePointersAndLeavesTheChosenKinds) {
    pxrFilterGaussian3x3u8_v2R_ = 0x1000;
    pxrDotProducts8R_ = 0x2000;
    pxrImplTable[PXR_ROW_AbsDiffu8] = PIXORA_KIND_GPU;
    pxrInternalImplTable[PXR_IROW_Copy] = PIXORA_KIND_CDSP;
    EXPECT_EQ(pxrSetOperationModeRemoteLib(PIXORA_OP_PERFORMANCE), 0u);
    EXPECT_EQ(pxrFilterGaussian3x3u8_v2R_, 0u);
    EXPECT_EQ(pxrDotProducts8R_, 0u);
    EXPECT_EQ(pxrImplTable[PXR_ROW_AbsDiffu8], static_cast<uint32_t>(PIXORA_KIND_GPU));
    EXPECT_EQ(pxrInternalImplTable[PXR_IROW_Copy], static_cast<uint32_t>(PIXORA_KIND_CDSP));
    EXPECT_EQ(mode_globalVar, static_cast<uint32_t>(PIXORA_OP_PERFORMANCE));
}

TEST_F(RemoteLib, UnsetDomainLogsBothLinesAndReturnCodesMatchTheSetter) {
    defaultDSP = 3;
    LogCapture log;
    EXPECT_EQ(pxr::applyRemoteMode(PIXORA_OP_LOW_POWER, kSupportedHw | PIXORA_HW_DSP), 0u);
    EXPECT_TRUE(log.contains("defaultDSP flag is not set. Hence unable to set memory pointers for Pixora functions"));
    EXPECT_TRUE(log.contains("defaultDSP flag is not set. Hence unable to set index for Pixora functions"));
    EXPECT_EQ(pxr::applyRemoteMode(kExt | 5, kSupportedHw), 0xFFFFFFFFu);
    EXPECT_EQ(pxr::applyRemoteMode(PIXORA_OP_CPU_PERFORMANCE, PIXORA_HW_EXAMINED), 999u);
}

// ---------------------------------------------------------------------------
// Version, switches, DSP selection and clean-up.

TEST(Version, CopiesTheVersionOrZeroesAShortBuffer) {
    LogCapture log;
    struct Case {
        uint32_t size;
        const char* expected;
    };
    char buffer[8];
    for (const Case c : {Case{6, "1.7.1\0xx"}, Case{5, "\0\0\0\0\0xxx"}, Case{0, "xxxxxxxx"}, Case{8, "1.7.1\0xx"}}) {
        std::memset(buffer, 'x', sizeof buffer);
        pxrGetVersion(buffer, c.size);
        EXPECT_EQ(std::memcmp(buffer, c.expected, 8), 0) << c.size << " (only six bytes are ever written)";
    }
    pxrGetVersion(nullptr, 6);
    const auto lines = log.lines();
    ASSERT_EQ(lines.size(), 5u);
    for (const auto& line : lines) {
        EXPECT_EQ(line.text, "Pixora vendor library");
        EXPECT_EQ(line.priority, 3);
    }
}

TEST(Lifecycle, SwitchesAndDspSelection) {
    FrameSnapshot keep;
    pxrSetHWFlag(0);
    EXPECT_EQ(HW_constraint_checks_enable, 0u);
    EXPECT_EQ(K6_constraint_checks_enable, 0u);
    pxrSetHWFlag(1);
    EXPECT_EQ(HW_constraint_checks_enable, 1u);
    EXPECT_EQ(K6_constraint_checks_enable, 1u);
    setDefaultDSPValue(2);
    EXPECT_EQ(defaultDSP, 2u);
    // Without a DSP the channel cannot open; nothing is marked up.
    KDSP_initflag = 0;
    EXPECT_EQ(pxrSelectKDSP6Mode(0), -1);
    EXPECT_EQ(KDSP_initflag, 0);
}

TEST(Lifecycle, CleanUpClearsTheFlagsAndKeepsTheTables) {
    FrameSnapshot keep;
    pxr::test::useCpuInfo(fixture("armv7_neon.txt"));
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    KDSP_initflag = 1;
    GPU_initflag = 1;
    std::vector<uint32_t> kinds(pxrImplTable, pxrImplTable + PIXORA_NUM_FUNCTIONS);
    std::vector<uintptr_t> funcs(pxrFuncTable, pxrFuncTable + PIXORA_NUM_FUNCTIONS * PIXORA_NUM_KINDS);
    pxrCleanUp();
    EXPECT_EQ(KDSP_initflag, 0);
    EXPECT_EQ(GPU_initflag, 0);
    EXPECT_TRUE(std::equal(kinds.begin(), kinds.end(), pxrImplTable));
    EXPECT_TRUE(std::equal(funcs.begin(), funcs.end(), pxrFuncTable));
    pxrCleanUp();  // twice is harmless
}

}  // namespace
