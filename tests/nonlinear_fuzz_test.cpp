// Random arguments against the entry points of the non-linear filters, on
// buffers sized exactly to what the arguments claim.
#include <gtest/gtest.h>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/fuzz.h"

using pxr::test::FuzzArgs;
using pxr::test::fuzzEntry;

namespace {

auto border(const FuzzArgs& a) { return static_cast<pxrBorderType>(a.border); }

}  // namespace

TEST(NonlinearFuzz, Medians) {
    fuzzEntry({"pxrFilterMedianMxNs16", PXR_ROW_FilterMedianMxNs16, 2, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterMedianMxNs16(reinterpret_cast<const int16_t*>(s), a.width, a.height, a.srcStride,
                                         a.value % 9u, a.value / 9u % 9u, reinterpret_cast<int16_t*>(d), a.dstStride);
               }});
}

TEST(NonlinearFuzz, Morphology) {
    fuzzEntry({"pxrFilterErode3x3u8", PXR_ROW_FilterErode3x3u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) { pxrFilterErode3x3u8(s, a.width, a.height, d); }});
    fuzzEntry({"pxrFilterDilate3x3u8_v2", PXR_ROW_FilterDilate3x3u8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterDilate3x3u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride);
               }});
    fuzzEntry({"pxrFilterErode3x3u8_v3", PXR_ROW_FilterErode3x3u8_v3, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterErode3x3u8_v3(s, a.width, a.height, a.srcStride, d, a.dstStride, border(a), a.value);
               }});
    fuzzEntry({"pxrFilterDilate3x3u8_v3", PXR_ROW_FilterDilate3x3u8_v3, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterDilate3x3u8_v3(s, a.width, a.height, a.srcStride, d, a.dstStride, border(a), a.value);
               }});
    fuzzEntry({"pxrFilterErodeNxNu8", PXR_ROW_FilterErodeNxNu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterErodeNxNu8(s, a.width, a.height, a.srcStride, a.value % 12u, d, a.dstStride);
               }});
    fuzzEntry({"pxrFilterDilateNxNu8", PXR_ROW_FilterDilateNxNu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterDilateNxNu8(s, a.width, a.height, a.srcStride, a.value % 12u, d, a.dstStride);
               }});
}

TEST(NonlinearFuzz, Thresholds) {
    fuzzEntry({"pxrFilterThresholdu8", PXR_ROW_FilterThresholdu8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterThresholdu8(s, a.width, a.height, d, int32_t(a.value) * 2 - 200);
               }});
    fuzzEntry({"pxrFilterThresholdu8_v2", PXR_ROW_FilterThresholdu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterThresholdu8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride, a.value);
               }});
    fuzzEntry({"pxrFilterThresholdu8_v3", PXR_ROW_FilterThresholdu8_v3, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterThresholdu8_v3(s, a.width, a.height, a.srcStride, d, a.dstStride, a.value, a.border % 3u);
               }});
    fuzzEntry({"pxrFilterThresholdRangeu8", PXR_ROW_FilterThresholdRangeu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterThresholdRangeu8(s, a.width, a.height, a.srcStride, d, a.dstStride, a.value,
                                             static_cast<uint8_t>(a.value * 3));
               }});
    fuzzEntry({"pxrFilterThresholdRangeu8_v2", PXR_ROW_FilterThresholdRangeu8_v2, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterThresholdRangeu8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride, a.value,
                                                static_cast<uint8_t>(a.value * 5));
               }});
    fuzzEntry({"pxrFilterThresholdOtsuu8", PXR_ROW_FilterThresholdOtsuu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterThresholdOtsuu8(s, a.width, a.height, a.srcStride, d, a.dstStride, a.border);
               }});
}
