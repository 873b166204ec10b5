// Random arguments against the 3x3 Gaussian and median entry points.
#include <gtest/gtest.h>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/fuzz.h"

using pxr::test::FuzzArgs;
using pxr::test::fuzzEntry;

TEST(EntryFuzz, Gaussian3x3) {
    fuzzEntry({"pxrFilterGaussian3x3u8", PXR_ROW_FilterGaussian3x3u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian3x3u8(s, a.width, a.height, d, int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian3x3u8_v2", PXR_ROW_FilterGaussian3x3u8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian3x3u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride, int(a.border) - 1);
               }});
    fuzzEntry({"pxrFilterGaussian3x3u8_v3", PXR_ROW_FilterGaussian3x3u8_v3, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterGaussian3x3u8_v3(s, a.width, a.height, a.srcStride, d, a.dstStride,
                                             static_cast<pxrBorderType>(a.border), a.value);
               }});
}

TEST(EntryFuzz, Median3x3) {
    fuzzEntry({"pxrFilterMedian3x3u8", PXR_ROW_FilterMedian3x3u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) { pxrFilterMedian3x3u8(s, a.width, a.height, d); }});
    fuzzEntry({"pxrFilterMedian3x3u8_v2", PXR_ROW_FilterMedian3x3u8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterMedian3x3u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride);
               }});
    fuzzEntry({"pxrFilterMedian3x3u8_v3", PXR_ROW_FilterMedian3x3u8_v3, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterMedian3x3u8_v3(s, a.width, a.height, a.srcStride, d, a.dstStride,
                                           static_cast<pxrBorderType>(a.border), a.value);
               }});
}
