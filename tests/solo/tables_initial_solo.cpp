// Before any mode is set: the static tables and an
// entry point that runs its reference implementation. Needs a fresh process.
#include <gtest/gtest.h>

#include <vector>

#include "frame/row_ids.h"
#include "frame/state.h"
#include "frame/tables.h"
#include "imgproc/filters/filters.h"
#include "pixora/filters.h"
#include "pixora/frame.h"
#include "support/log_capture.h"

namespace {

TEST(TablesBeforeAnyMode, EveryRowIsOnKind0WithReferenceCodeInColumns0To3) {
    EXPECT_EQ(pxr::masterManager(), nullptr) << "nothing is built when the library loads";
    for (uint32_t id = 0; id < PIXORA_NUM_FUNCTIONS; ++id) {
        ASSERT_EQ(pxrImplTable[id], 0u) << id;
        for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k)
            ASSERT_EQ(pxrFuncTable[id * 7 + k], pxr::staticFuncEntry(id, k)) << id << "/" << k;
    }
    for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k) {
        EXPECT_EQ(pxrFuncTable[PXR_ROW_Reserved362 * 7 + k], 0u);
        EXPECT_EQ(pxrFuncTable[PXR_ROW_Reserved363 * 7 + k], 0u);
    }
    const uintptr_t gaussian = reinterpret_cast<uintptr_t>(&pxrFilterGaussian3x3u8C);
    for (uint32_t k = 0; k < 4; ++k) EXPECT_EQ(pxrFuncTable[PXR_ROW_FilterGaussian3x3u8 * 7 + k], gaussian);
    for (uint32_t id = 0; id < PIXORA_NUM_INTERNAL_FUNCTIONS; ++id) {
        EXPECT_EQ(pxrInternalImplTable[id], 0u) << id;
        for (uint32_t k = 1; k < 4; ++k) EXPECT_EQ(pxrInternalFuncTable[id * 7 + k], pxrInternalFuncTable[id * 7]);
        for (uint32_t k = 4; k < 7; ++k) EXPECT_EQ(pxrInternalFuncTable[id * 7 + k], 0u);
    }
}

TEST(TablesBeforeAnyMode, EntryPointRunsTheReferenceImplementation) {
    constexpr uint32_t w = 37, h = 11;
    std::vector<uint8_t> src(w * h), viaEntry(w * h, 0), viaReference(w * h, 0);
    for (uint32_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i * 53 + (i >> 3));
    libLogPrint = 1;
    pxr::test::LogCapture log;
    pxrFilterGaussian3x3u8_v2(src.data(), w, h, 0, viaEntry.data(), 0, 1);
    libLogPrint = 0;
    pxrFilterGaussian3x3u8C(src.data(), w, h, w, viaReference.data(), w, 1);
    EXPECT_EQ(viaEntry, viaReference);
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_EQ(log.lines()[0].text, "pxrFilterGaussian3x3u8_v2_CPU");
    EXPECT_EQ(pxr::masterManager(), nullptr) << "a call builds nothing either";
}

}  // namespace
