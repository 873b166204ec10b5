// Random arguments against the smoothing filters' entry points.
#include <gtest/gtest.h>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/fuzz.h"

using pxr::test::FuzzArgs;
using pxr::test::fuzzEntry;

namespace {

// The byte border value doubles as a window size (0 and 1 are refused).
uint32_t windowFrom(const FuzzArgs& a) { return a.value % 24; }

}  // namespace

TEST(EntryFuzz, SmoothGaussians) {
    fuzzEntry({"pxrFilterGaussian5x5u8", PXR_ROW_FilterGaussian5x5u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian5x5u8(s, a.width, a.height, d, int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian5x5u8_v2", PXR_ROW_FilterGaussian5x5u8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian5x5u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride, int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian11x11u8", PXR_ROW_FilterGaussian11x11u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian11x11u8(s, a.width, a.height, d, int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian11x11u8_v2", PXR_ROW_FilterGaussian11x11u8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian11x11u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride, int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian5x5s16", PXR_ROW_FilterGaussian5x5s16, 2, 2, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian5x5s16(reinterpret_cast<const int16_t*>(s), a.width, a.height,
                                           reinterpret_cast<int16_t*>(d), int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian5x5s16_v2", PXR_ROW_FilterGaussian5x5s16, 2, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian5x5s16_v2(reinterpret_cast<const int16_t*>(s), a.width, a.height, a.srcStride,
                                              reinterpret_cast<int16_t*>(d), a.dstStride, int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian5x5s32", PXR_ROW_FilterGaussian5x5s32, 4, 4, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian5x5s32(reinterpret_cast<const int32_t*>(s), a.width, a.height,
                                           reinterpret_cast<int32_t*>(d), int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian5x5s32_v2", PXR_ROW_FilterGaussian5x5s32, 4, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian5x5s32_v2(reinterpret_cast<const int32_t*>(s), a.width, a.height, a.srcStride,
                                              reinterpret_cast<int32_t*>(d), a.dstStride, int(a.border) - 1);
               }});
}

TEST(EntryFuzz, SmoothBoxFilters) {
    fuzzEntry({"pxrBoxFilter3x3u8", PXR_ROW_BoxFilter3x3u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) { pxrBoxFilter3x3u8(s, a.width, a.height, d); }});
    fuzzEntry({"pxrBoxFilter3x3u8_v2", PXR_ROW_BoxFilter3x3u8_v2, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrBoxFilter3x3u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride,
                                        static_cast<pxrBorderType>(a.border), a.value);
               }});
    fuzzEntry({"pxrBoxFilter5x5u8", PXR_ROW_BoxFilter5x5u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) { pxrBoxFilter5x5u8(s, a.width, a.height, d); }});
    fuzzEntry({"pxrBoxFilter11x11u8", PXR_ROW_BoxFilter11x11u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) { pxrBoxFilter11x11u8(s, a.width, a.height, d); }});
    fuzzEntry({"pxrBoxFilterNxNf32", PXR_ROW_BoxFilterNxNf32, 4, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrBoxFilterNxNf32(reinterpret_cast<const float*>(s), a.width, a.height, a.srcStride,
                                      windowFrom(a), reinterpret_cast<float*>(d), a.dstStride);
               }});
}

TEST(EntryFuzz, SmoothLocalNormalisation) {
    fuzzEntry({"pxrNormalizeLocalBoxu8", PXR_ROW_NormalizeLocalBoxu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrNormalizeLocalBoxu8(s, a.width, a.height, a.srcStride, windowFrom(a), d, a.dstStride);
               }});
    fuzzEntry({"pxrNormalizeLocalBoxf32", PXR_ROW_NormalizeLocalBoxf32, 4, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrNormalizeLocalBoxf32(reinterpret_cast<const float*>(s), a.width, a.height, a.srcStride,
                                           windowFrom(a), reinterpret_cast<float*>(d), a.dstStride);
               }});
}
