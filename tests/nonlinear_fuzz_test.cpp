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

TEST(NonlinearFuzz, Bilateral) {
    using Fixed = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);
    using Sigmas = int (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t, float, float);
    const struct {
        const char* name;
        uint32_t row;
        Fixed fn;
    } fixed[] = {{"pxrBilateralFilter5x5u8", PXR_ROW_BilateralFilter5x5u8, pxrBilateralFilter5x5u8},
                 {"pxrBilateralFilter7x7u8", PXR_ROW_BilateralFilter7x7u8, pxrBilateralFilter7x7u8},
                 {"pxrBilateralFilter9x9u8", PXR_ROW_BilateralFilter9x9u8, pxrBilateralFilter9x9u8}};
    for (const auto& f : fixed)
        fuzzEntry({f.name, f.row, 1, 1, false, [fn = f.fn](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       fn(s, a.width, a.height, a.srcStride, d, a.dstStride);
                   }}, 600);
    const struct {
        const char* name;
        uint32_t row;
        Sigmas fn;
    } sigmas[] = {{"pxrBilateralFilter5x5u8_v2", PXR_ROW_BilateralFilter5x5u8_v2, pxrBilateralFilter5x5u8_v2},
                  {"pxrBilateralFilter7x7u8_v2", PXR_ROW_BilateralFilter7x7u8_v2, pxrBilateralFilter7x7u8_v2},
                  {"pxrBilateralFilter9x9u8_v2", PXR_ROW_BilateralFilter9x9u8_v2, pxrBilateralFilter9x9u8_v2},
                  {"pxrBilateralFilterRecursiveu8", PXR_ROW_BilateralFilterRecursiveu8,
                   pxrBilateralFilterRecursiveu8}};
    for (const auto& f : sigmas)
        fuzzEntry({f.name, f.row, 1, 1, false, [fn = f.fn](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       fn(s, a.width, a.height, a.srcStride, d, a.dstStride, float(a.value) * 0.5f,
                          float(a.border) * 0.7f - 0.7f);
                   }}, 600);
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

TEST(NonlinearFuzz, AdaptiveThresholds) {
    using Adaptive = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t, uint32_t, int32_t, uint8_t*,
                              uint32_t);
    const struct {
        const char* name;
        uint32_t row;
        Adaptive fn;
    } members[] = {
        {"pxrAdaptiveThresholdGaussian3x3u8", PXR_ROW_AdaptiveThresholdGaussian3x3u8,
         pxrAdaptiveThresholdGaussian3x3u8},
        {"pxrAdaptiveThresholdGaussian5x5u8", PXR_ROW_AdaptiveThresholdGaussian5x5u8,
         pxrAdaptiveThresholdGaussian5x5u8},
        {"pxrAdaptiveThresholdGaussian11x11u8", PXR_ROW_AdaptiveThresholdGaussian11x11u8,
         pxrAdaptiveThresholdGaussian11x11u8},
        {"pxrAdaptiveThresholdMean3x3u8", PXR_ROW_AdaptiveThresholdMean3x3u8, pxrAdaptiveThresholdMean3x3u8},
        {"pxrAdaptiveThresholdMean5x5u8", PXR_ROW_AdaptiveThresholdMean5x5u8, pxrAdaptiveThresholdMean5x5u8},
        {"pxrAdaptiveThresholdMean11x11u8", PXR_ROW_AdaptiveThresholdMean11x11u8, pxrAdaptiveThresholdMean11x11u8}};
    for (const auto& m : members)
        fuzzEntry({m.name, m.row, 1, 1, false, [fn = m.fn](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       fn(s, a.width, a.height, a.srcStride, a.value, a.border % 3u, (int32_t(a.value) - 128) * 3, d,
                          a.dstStride);
                   }}, 600);
}
