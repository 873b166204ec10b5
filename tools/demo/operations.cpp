// To show a new operation, add a line to the table below.
#include "tools/demo/operations.h"

#include "frame/row_ids.h"
#include "pixora.h"

namespace pxr::demo {
namespace {

using S = const SrcView&;
using D = const DstView&;

// Entry points without strides need packed rows: the demo's images are.
const Operation kOperations[] = {
    {"pxrFilterGaussian3x3u8", PXR_ROW_FilterGaussian3x3u8, "blurBorder 1",
     [](S s, D d) {
         pxrFilterGaussian3x3u8(s.data, s.width, s.height, d.data, 1);
         return 0;
     }},
    {"pxrFilterGaussian3x3u8_v2", PXR_ROW_FilterGaussian3x3u8, "blurBorder 1",
     [](S s, D d) {
         pxrFilterGaussian3x3u8_v2(s.data, s.width, s.height, s.stride, d.data, d.stride, 1);
         return 0;
     }},
    {"pxrFilterGaussian3x3u8_v3", PXR_ROW_FilterGaussian3x3u8_v3, "replicated border",
     [](S s, D d) {
         return pxrFilterGaussian3x3u8_v3(s.data, s.width, s.height, s.stride, d.data, d.stride,
                                          PIXORA_BORDER_REPLICATE, 0);
     }},
    {"pxrFilterMedian3x3u8", PXR_ROW_FilterMedian3x3u8, "interior only",
     [](S s, D d) {
         pxrFilterMedian3x3u8(s.data, s.width, s.height, d.data);
         return 0;
     }},
    {"pxrFilterMedian3x3u8_v2", PXR_ROW_FilterMedian3x3u8, "interior only",
     [](S s, D d) {
         pxrFilterMedian3x3u8_v2(s.data, s.width, s.height, s.stride, d.data, d.stride);
         return 0;
     }},
    {"pxrFilterMedian3x3u8_v3", PXR_ROW_FilterMedian3x3u8_v3, "replicated border",
     [](S s, D d) {
         return pxrFilterMedian3x3u8_v3(s.data, s.width, s.height, s.stride, d.data, d.stride,
                                        PIXORA_BORDER_REPLICATE, 0);
     }},
};

}  // namespace

std::span<const Operation> operations() { return kOperations; }

}  // namespace pxr::demo
