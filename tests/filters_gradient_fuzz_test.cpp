// Random arguments against every gradient filter entry point. Strides of
// 16-bit and float planes are rounded down to whole elements (a stride below
// the row is still refused); second planes are exact-size heap buffers. The
// plain gradients take a source stride, so their buffers are sized by it.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/fuzz.h"

using pxr::test::FuzzArgs;
using pxr::test::fuzzEntry;

namespace {

uint32_t whole(uint32_t stride, uint32_t bytes) { return stride / bytes * bytes; }

// The dy plane of a planar gradient: exactly the rows the arguments claim
// (the fuzz's own dst is dx), or null now and then.
class SecondPlane {
public:
    SecondPlane(const FuzzArgs& a, uint32_t bytes, uint32_t stride, bool fullSize = false) {
        if (a.value % 13 == 0) return;
        const uint32_t w = fullSize ? a.width : (a.width >= 2 ? a.width - 2 : 0);
        const uint32_t h = fullSize ? a.height : (a.height >= 2 ? a.height - 2 : 0);
        const size_t row = size_t{w} * bytes;
        const size_t s = stride ? stride : row;
        bytes_.resize((h ? (h - 1) * std::max(s, row) + row : 0) + 8);
    }
    template <class T> T* as() { return bytes_.empty() ? nullptr : reinterpret_cast<T*>(bytes_.data()); }

private:
    std::vector<uint8_t> bytes_;
};

}  // namespace

TEST(EntryFuzz, SobelMagnitude) {
    fuzzEntry({"pxrFilterSobel3x3u8", PXR_ROW_FilterSobel3x3u8, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) { pxrFilterSobel3x3u8(s, a.width, a.height, d); }});
    fuzzEntry({"pxrFilterSobel3x3u8_v2", PXR_ROW_FilterSobel3x3u8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrFilterSobel3x3u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride);
               }});
}

TEST(EntryFuzz, SobelDerivatives) {
    using Fn = int (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, int16_t*, int16_t*, uint32_t, pxrBorderType,
                       uint8_t);
    const std::pair<uint32_t, Fn> members[] = {{PXR_ROW_FilterSobel3x3u8s16, pxrFilterSobel3x3u8s16},
                                               {PXR_ROW_FilterSobel5x5u8s16, pxrFilterSobel5x5u8s16},
                                               {PXR_ROW_FilterSobel7x7u8s16, pxrFilterSobel7x7u8s16}};
    for (const auto& [row, fn] : members)
        fuzzEntry({"pxrFilterSobelNxNu8s16", row, 1, 2, false, [fn](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       const uint32_t ds = whole(a.dstStride, 2);
                       SecondPlane dy(a, 2, ds, true);
                       int16_t* dx = a.value % 5 == 0 ? nullptr : reinterpret_cast<int16_t*>(d);
                       fn(s, a.width, a.height, a.srcStride, dx, dy.as<int16_t>(), ds,
                          static_cast<pxrBorderType>(a.border), a.value);
                   }});
}

TEST(EntryFuzz, CentralDifferenceGradients) {
    fuzzEntry({"pxrImageGradientInterleaveds16", PXR_ROW_ImageGradientInterleaveds16, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientInterleaveds16(s, a.width, a.height, a.srcStride, reinterpret_cast<int16_t*>(d));
               }});
    fuzzEntry({"pxrImageGradientInterleaveds16_v2", PXR_ROW_ImageGradientInterleaveds16, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientInterleaveds16_v2(s, a.width, a.height, a.srcStride, reinterpret_cast<int16_t*>(d),
                                                     whole(a.dstStride, 2));
               }});
    fuzzEntry({"pxrImageGradientInterleavedf32", PXR_ROW_ImageGradientInterleavedf32, 1, 8, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientInterleavedf32(s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d));
               }});
    fuzzEntry({"pxrImageGradientInterleavedf32_v2", PXR_ROW_ImageGradientInterleavedf32, 1, 8, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientInterleavedf32_v2(s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d),
                                                     whole(a.dstStride, 4));
               }});
    fuzzEntry({"pxrImageGradientPlanars16", PXR_ROW_ImageGradientPlanars16, 1, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   SecondPlane dy(a, 2, 0);
                   pxrImageGradientPlanars16(s, a.width, a.height, a.srcStride, reinterpret_cast<int16_t*>(d),
                                             dy.as<int16_t>());
               }});
    fuzzEntry({"pxrImageGradientPlanars16_v2", PXR_ROW_ImageGradientPlanars16, 1, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t ds = whole(a.dstStride, 2);
                   SecondPlane dy(a, 2, ds);
                   pxrImageGradientPlanars16_v2(s, a.width, a.height, a.srcStride, reinterpret_cast<int16_t*>(d),
                                                dy.as<int16_t>(), ds);
               }});
    fuzzEntry({"pxrImageGradientPlanarf32", PXR_ROW_ImageGradientPlanarf32, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   SecondPlane dy(a, 4, 0);
                   pxrImageGradientPlanarf32(s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d),
                                             dy.as<float>());
               }});
    fuzzEntry({"pxrImageGradientPlanarf32_v2", PXR_ROW_ImageGradientPlanarf32, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t ds = whole(a.dstStride, 4);
                   SecondPlane dy(a, 4, ds);
                   pxrImageGradientPlanarf32_v2(s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d),
                                                dy.as<float>(), ds);
               }});
}

TEST(EntryFuzz, SobelGradients) {
    fuzzEntry({"pxrImageGradientSobelInterleaveds16", PXR_ROW_ImageGradientSobelInterleaveds16, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientSobelInterleaveds16(s, a.width, a.height, a.srcStride,
                                                       reinterpret_cast<int16_t*>(d));
               }});
    fuzzEntry({"pxrImageGradientSobelInterleaveds16_v2", PXR_ROW_ImageGradientSobelInterleaveds16, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientSobelInterleaveds16_v2(s, a.width, a.height, a.srcStride,
                                                          reinterpret_cast<int16_t*>(d), whole(a.dstStride, 2));
               }});
    fuzzEntry({"pxrImageGradientSobelInterleaveds16_v3", PXR_ROW_ImageGradientSobelInterleaveds16_v3, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientSobelInterleaveds16_v3(s, a.width, a.height, a.srcStride,
                                                          reinterpret_cast<int16_t*>(d), whole(a.dstStride, 2));
               }});
    fuzzEntry({"pxrImageGradientSobelInterleavedf32", PXR_ROW_ImageGradientSobelInterleavedf32, 1, 8, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientSobelInterleavedf32(s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d));
               }});
    fuzzEntry({"pxrImageGradientSobelInterleavedf32_v2", PXR_ROW_ImageGradientSobelInterleavedf32, 1, 8, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   pxrImageGradientSobelInterleavedf32_v2(s, a.width, a.height, a.srcStride,
                                                          reinterpret_cast<float*>(d), whole(a.dstStride, 4));
               }});
    fuzzEntry({"pxrImageGradientSobelPlanars16", PXR_ROW_ImageGradientSobelPlanars16, 1, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   SecondPlane dy(a, 2, 0);
                   pxrImageGradientSobelPlanars16(s, a.width, a.height, a.srcStride, reinterpret_cast<int16_t*>(d),
                                                  dy.as<int16_t>());
               }});
    fuzzEntry({"pxrImageGradientSobelPlanars16_v2", PXR_ROW_ImageGradientSobelPlanars16, 1, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t ds = whole(a.dstStride, 2);
                   SecondPlane dy(a, 2, ds);
                   pxrImageGradientSobelPlanars16_v2(s, a.width, a.height, a.srcStride, reinterpret_cast<int16_t*>(d),
                                                     dy.as<int16_t>(), ds);
               }});
    fuzzEntry({"pxrImageGradientSobelPlanars16_v3", PXR_ROW_ImageGradientSobelPlanars16_v3, 1, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t ds = whole(a.dstStride, 2);
                   SecondPlane dy(a, 2, ds);
                   pxrImageGradientSobelPlanars16_v3(s, a.width, a.height, a.srcStride, reinterpret_cast<int16_t*>(d),
                                                     dy.as<int16_t>(), ds);
               }});
    fuzzEntry({"pxrImageGradientSobelPlanars8", PXR_ROW_ImageGradientSobelPlanars8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   SecondPlane dy(a, 1, 0);
                   pxrImageGradientSobelPlanars8(s, a.width, a.height, a.srcStride, reinterpret_cast<int8_t*>(d),
                                                 dy.as<int8_t>());
               }});
    fuzzEntry({"pxrImageGradientSobelPlanars8_v2", PXR_ROW_ImageGradientSobelPlanars8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   SecondPlane dy(a, 1, a.dstStride);
                   pxrImageGradientSobelPlanars8_v2(s, a.width, a.height, a.srcStride, reinterpret_cast<int8_t*>(d),
                                                    dy.as<int8_t>(), a.dstStride);
               }});
    fuzzEntry({"pxrImageGradientSobelPlanarf32", PXR_ROW_ImageGradientSobelPlanarf32, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   SecondPlane dy(a, 4, 0);
                   pxrImageGradientSobelPlanarf32(s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d),
                                                  dy.as<float>());
               }});
    fuzzEntry({"pxrImageGradientSobelPlanarf32_v2", PXR_ROW_ImageGradientSobelPlanarf32, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t ds = whole(a.dstStride, 4);
                   SecondPlane dy(a, 4, ds);
                   pxrImageGradientSobelPlanarf32_v2(s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d),
                                                     dy.as<float>(), ds);
               }});
    fuzzEntry({"pxrImageGradientSobelPlanarf32f32", PXR_ROW_ImageGradientSobelPlanarf32f32, 4, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   SecondPlane dy(a, 4, 0);
                   pxrImageGradientSobelPlanarf32f32(reinterpret_cast<const float*>(s), a.width, a.height,
                                                     whole(a.srcStride, 4), reinterpret_cast<float*>(d),
                                                     dy.as<float>());
               }});
    fuzzEntry({"pxrImageGradientSobelPlanarf32f32_v2", PXR_ROW_ImageGradientSobelPlanarf32f32, 4, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t ds = whole(a.dstStride, 4);
                   SecondPlane dy(a, 4, ds);
                   pxrImageGradientSobelPlanarf32f32_v2(reinterpret_cast<const float*>(s), a.width, a.height,
                                                        whole(a.srcStride, 4), reinterpret_cast<float*>(d),
                                                        dy.as<float>(), ds);
               }});
}

TEST(EntryFuzz, ScharrGradient) {
    // The fuzz forces a public row's kind; the call copies it to the
    // Scharr's internal row.
    const uint32_t row = PXR_ROW_ImageGradientInterleaveds16;
    fuzzEntry({"pxrImageGradientScharrInterleaveds16", row, 1, 4, false,
               [row](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t saved = pxrInternalImplTable[PXR_IROW_ImageGradientScharrInterleaveds16];
                   pxrInternalImplTable[PXR_IROW_ImageGradientScharrInterleaveds16] = pxrImplTable[row];
                   pxrImageGradientScharrInterleaveds16(s, a.width, a.height, a.srcStride,
                                                        reinterpret_cast<int16_t*>(d), whole(a.dstStride, 2));
                   pxrInternalImplTable[PXR_IROW_ImageGradientScharrInterleaveds16] = saved;
               }});
}
