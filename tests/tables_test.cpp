// Function and implementation tables: filler return codes, descriptor
// bounds, column fills, the accelerator-column set-up and the registry size.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "frame/mode_lists.h"
#include "frame/row_ids.h"
#include "frame/state.h"
#include "frame/tables.h"
#include "pixora/frame.h"
#include "support/frame_snapshot.h"
#include "support/log_capture.h"

namespace {

using pxr::test::FrameSnapshot;
using pxr::test::LogCapture;

constexpr uint32_t kSentinel = 9;

// A descriptor over tables of its own, so fillers can be driven without
// touching the process-wide ones.
struct LocalTables {
    explicit LocalTables(uint32_t functions, uint32_t kinds = PIXORA_NUM_KINDS)
        : impl(PIXORA_NUM_FUNCTIONS, kSentinel),
          func(PIXORA_NUM_FUNCTIONS * PIXORA_NUM_KINDS, 0),
          iimpl(PIXORA_NUM_INTERNAL_FUNCTIONS, kSentinel),
          ifunc(PIXORA_NUM_INTERNAL_FUNCTIONS * PIXORA_NUM_KINDS, 0) {
        m = PXR_FUNC_MANAGER{1,           impl.data(),  functions, func.data(), iimpl.data(),
                             PIXORA_NUM_INTERNAL_FUNCTIONS, ifunc.data(), kinds};
    }
    std::vector<uint32_t> impl;
    std::vector<uintptr_t> func;
    std::vector<uint32_t> iimpl;
    std::vector<uintptr_t> ifunc;
    PXR_FUNC_MANAGER m;
};

struct Filler {
    const char* name;
    uint32_t kind;  // the kind the filler writes
    std::function<int(PXR_FUNC_MANAGER*)> run;
};

std::vector<Filler> descriptorFillers() {
    return {
        {"uKTable", 2, [](PXR_FUNC_MANAGER* m) { return uKTable(m, 2); }},
        {"uGTable", 3, [](PXR_FUNC_MANAGER* m) { return uGTable(m, 3); }},
        {"uKaTable", 4, [](PXR_FUNC_MANAGER* m) { return uKaTable(m, 4); }},
        {"uKcTable", 5, [](PXR_FUNC_MANAGER* m) { return uKcTable(m, 5); }},
        {"uKmTable", 6, [](PXR_FUNC_MANAGER* m) { return uKmTable(m, 6); }},
        {"uKIndex", 2, [](PXR_FUNC_MANAGER* m) { return uKIndex(m); }},
        {"uGIndex", 3, [](PXR_FUNC_MANAGER* m) { return uGIndex(m); }},
        {"uKacmIndex", 6, [](PXR_FUNC_MANAGER* m) { return uKacmIndex(m, 6); }},
        {"uHWLowPowerModeTable", 5, [](PXR_FUNC_MANAGER* m) { return uHWLowPowerModeTable(m); }},
        {"uHWPerformanceModeTable", 5, [](PXR_FUNC_MANAGER* m) { return uHWPerformanceModeTable(m); }},
        {"uKCpuOffloadModeTable", 5, [](PXR_FUNC_MANAGER* m) { return uKCpuOffloadModeTable(m); }},
    };
}

TEST(TableFillers, ReturnCodesForMissingDescriptorTablesAndKinds) {
    FrameSnapshot keep;
    KDSP_initflag = 1;
    GPU_initflag = 1;
    for (const Filler& f : descriptorFillers()) {
        SCOPED_TRACE(f.name);
        EXPECT_EQ(f.run(nullptr), 1);
        LocalTables noFunc(PIXORA_NUM_FUNCTIONS);
        noFunc.m.funcTable = nullptr;
        EXPECT_EQ(f.run(&noFunc.m), 2);
        LocalTables noImpl(PIXORA_NUM_FUNCTIONS);
        noImpl.m.implTable = nullptr;
        EXPECT_EQ(f.run(&noImpl.m), 2);
        LocalTables fewKinds(PIXORA_NUM_FUNCTIONS, f.kind);
        EXPECT_EQ(f.run(&fewKinds.m), 4);
        EXPECT_TRUE(std::all_of(fewKinds.impl.begin(), fewKinds.impl.end(), [](uint32_t k) { return k == kSentinel; }));
        LocalTables enough(PIXORA_NUM_FUNCTIONS, f.kind + 1);
        EXPECT_EQ(f.run(&enough.m), 0);
    }
    EXPECT_EQ(uCTable(PIXORA_NUM_KINDS), 4);
    EXPECT_EQ(uVTable(PIXORA_NUM_KINDS), 4);
    LocalTables full(PIXORA_NUM_FUNCTIONS);
    EXPECT_NE(uKacmIndex(&full.m, PIXORA_KIND_GPU), 0) << "only DSP kinds 4 to 6";
    EXPECT_EQ(pxrTableHWInit(nullptr, pxrInternalFuncTable, 1, 1), 1);
    EXPECT_EQ(pxrTableHWInit(pxrFuncTable, nullptr, 1, 1), 1);
}

TEST(TableFillers, ModeTablesStopAtTheDescriptorsBound) {
    FrameSnapshot keep;
    KDSP_initflag = 1;
    GPU_initflag = 1;
    for (uint32_t bound : {0u, 100u, 470u}) {
        SCOPED_TRACE(bound);
        LocalTables t(bound);
        EXPECT_EQ(uHWPerformanceModeTable(&t.m), 0);
        EXPECT_EQ(uHWLowPowerModeTable(&t.m), 0);
        EXPECT_EQ(uKCpuOffloadModeTable(&t.m), 0);
        for (uint32_t id = 0; id < PIXORA_NUM_FUNCTIONS; ++id) {
            const bool gpu = std::count(std::begin(pxr::modes::kPerformanceGpu), std::end(pxr::modes::kPerformanceGpu), id);
            const bool dsp =
                std::count(std::begin(pxr::modes::kPerformanceDsp), std::end(pxr::modes::kPerformanceDsp), id) ||
                std::count(std::begin(pxr::modes::kLowPowerDsp), std::end(pxr::modes::kLowPowerDsp), id);
            uint32_t expected = kSentinel;
            if (id < bound && dsp) expected = 5;
            if (id < bound && gpu && !dsp) expected = 3;
            ASSERT_EQ(t.impl[id], expected) << "row " << id;
        }
        EXPECT_EQ(t.iimpl[PXR_IROW_ProbeK6Time], 5u);
        EXPECT_EQ(t.iimpl[PXR_IROW_RegisterBuf], 5u);
        EXPECT_EQ(t.iimpl[PXR_IROW_Copy], kSentinel);
    }
    // Without an open channel or GPU the mode tables choose nothing.
    KDSP_initflag = 0;
    GPU_initflag = 0;
    LocalTables idle(PIXORA_NUM_FUNCTIONS);
    EXPECT_EQ(uHWPerformanceModeTable(&idle.m), 0);
    EXPECT_TRUE(std::all_of(idle.impl.begin(), idle.impl.end(), [](uint32_t k) { return k == kSentinel; }));
}

TEST(TableFillers, ColumnFillersKeepRowsWithoutAnImplementation) {
    FrameSnapshot keep;
    pxrFuncTable[PXR_ROW_AbsDiffu8 * 7 + 2] = 0x1234;
    EXPECT_EQ(uVTable(2), 0);
    EXPECT_EQ(pxrFuncTable[PXR_ROW_AbsDiffu8 * 7 + 2], 0x1234u) << "no vector code for this row";
    const uintptr_t ref = pxr::staticFuncEntry(PXR_ROW_FilterGaussian3x3u8, 0);
    ASSERT_NE(ref, 0u);
    EXPECT_NE(pxrFuncTable[PXR_ROW_FilterGaussian3x3u8 * 7 + 2], ref) << "vector code replaced the reference";
    EXPECT_EQ(uCTable(2), 0);
    EXPECT_EQ(pxrFuncTable[PXR_ROW_AbsDiffu8 * 7 + 2], pxr::staticFuncEntry(PXR_ROW_AbsDiffu8, 2));
    EXPECT_EQ(pxrFuncTable[PXR_ROW_FilterGaussian3x3u8 * 7 + 2], ref);
    for (uint32_t k = 0; k < 4; ++k) {
        EXPECT_EQ(pxrFuncTable[PXR_ROW_Reserved362 * 7 + k], 0u);
        EXPECT_EQ(pxrFuncTable[PXR_ROW_Reserved363 * 7 + k], 0u);
    }
    // A descriptor of fewer rows bounds the column fills as well.
    LocalTables small(PXR_ROW_FilterGaussian3x3u8);
    ASSERT_EQ(pxrInitializeMasterFuncManager(&small.m), 0);
    pxrFuncTable[PXR_ROW_FilterGaussian3x3u8 * 7 + 1] = 0x5678;
    EXPECT_EQ(uCTable(1), 0);
    EXPECT_EQ(pxrFuncTable[PXR_ROW_FilterGaussian3x3u8 * 7 + 1], 0x5678u);
}

TEST(TableFillers, MasterDescriptorNeedsAllFourTables) {
    FrameSnapshot keep;
    PXR_FUNC_MANAGER* before = pxr::masterManager();
    EXPECT_EQ(pxrInitializeMasterFuncManager(nullptr), 1);
    for (int missing = 0; missing < 4; ++missing) {
        LocalTables t(PIXORA_NUM_FUNCTIONS);
        if (missing == 0) t.m.funcTable = nullptr;
        if (missing == 1) t.m.implTable = nullptr;
        if (missing == 2) t.m.internalFuncTable = nullptr;
        if (missing == 3) t.m.internalImplTable = nullptr;
        EXPECT_EQ(pxrInitializeMasterFuncManager(&t.m), 1) << missing;
        EXPECT_EQ(pxr::masterManager(), before) << "nothing recorded";
    }
}

TEST(TableFillers, AcceleratorColumnSetUpLogsTheDomainAndTheGpu) {
    FrameSnapshot keep;
    struct Case {
        uint32_t domain;
        const char* text;
        int priority;
    };
    for (const Case c : {Case{0, "ADSP is available", 3}, Case{1, "CDSP is available", 3},
                         Case{2, "MDSP is available", 3},
                         Case{3, "defaultDSP flag is not set. Hence unable to set memory pointers for PIXORA function", 6}}) {
        defaultDSP = c.domain;
        LogCapture log;
        EXPECT_EQ(pxrTableHWInit(pxrFuncTable, pxrInternalFuncTable, 1, 0), 0);
        const auto lines = log.lines();
        ASSERT_EQ(lines.size(), 1u) << c.domain;
        EXPECT_EQ(lines[0].text, c.text);
        EXPECT_EQ(lines[0].priority, c.priority);
    }
    LogCapture log;
    std::vector<uintptr_t> before(pxrFuncTable, pxrFuncTable + PIXORA_NUM_FUNCTIONS * PIXORA_NUM_KINDS);
    EXPECT_EQ(pxrTableHWInit(pxrFuncTable, pxrInternalFuncTable, 0, 1), 0);
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_EQ(log.lines()[0].text, "GPU is available");
    EXPECT_EQ(log.lines()[0].priority, 3);
    for (uint32_t id = 0; id < PIXORA_NUM_FUNCTIONS; ++id) {
        if (!pxr::hasAccelerator(id, PIXORA_KIND_GPU)) {
            ASSERT_EQ(pxrFuncTable[id * 7 + 3], before[id * 7 + 3]) << "row " << id << " keeps its CPU code";
        }
    }
    log.clear();
    EXPECT_EQ(pxrTableHWInit(pxrFuncTable, pxrInternalFuncTable, 0, 0), 0);
    EXPECT_TRUE(log.lines().empty());
}

TEST(TableFillers, ResetPutsEveryRowOnKind0ExceptTheKeptOnes) {
    FrameSnapshot keep;
    std::fill(pxrImplTable, pxrImplTable + PIXORA_NUM_FUNCTIONS, PIXORA_KIND_MDSP);
    std::fill(pxrInternalImplTable, pxrInternalImplTable + PIXORA_NUM_INTERNAL_FUNCTIONS, PIXORA_KIND_MDSP);
    pxr::resetChoices();
    for (uint32_t id = 0; id < PIXORA_NUM_FUNCTIONS; ++id) {
        const bool kept = id == PXR_ROW_Reserved362 || id == PXR_ROW_Reserved363;
        ASSERT_EQ(pxrImplTable[id], kept ? 6u : 0u) << id;
    }
    for (uint32_t id = 0; id < PIXORA_NUM_INTERNAL_FUNCTIONS; ++id)
        EXPECT_EQ(pxrInternalImplTable[id], id == PXR_IROW_RegisterBuf ? 6u : 0u) << id;
}

}  // namespace
