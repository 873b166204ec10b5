// M-by-N block reduction: whole source columns and rows per destination
// pixel, from count tables kept in scratch memory; rounded block means.
#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_mn_kernels.h"
#include "memory/scratch.h"
#include "pixora/types.h"

namespace {

int reduceMN(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
             uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride, uint32_t channels) {
    using namespace pxr::scale::mn;
    const Layout l = layout(srcWidth * channels, dstWidth, dstHeight);
    pxr::ScratchBuffer scratch(l.bytes, 32);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    auto* base = scratch.as<uint8_t>();
    auto* columns = reinterpret_cast<uint32_t*>(base + l.columnTable);
    auto* rows = reinterpret_cast<uint32_t*>(base + l.rowTable);
    auto* sums = reinterpret_cast<uint32_t*>(base + l.sums);
    buildCountTable(srcWidth, dstWidth, columns);
    buildCountTable(srcHeight, dstHeight, rows);
    const uint8_t* block = src;
    for (uint32_t y = 0; y < dstHeight; ++y) {
        columnSums(block, srcStride, rows[y], srcWidth * channels, sums);
        averageBlocks(sums, columns, rows[y], channels, dst + size_t{y} * dstStride, 0, dstWidth, 0);
        block += size_t{rows[y]} * srcStride;
    }
    return PIXORA_STATUS_OK;
}

}  // namespace

int pxrScaleDownMNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                      uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    return reduceMN(src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride, 1);
}

int pxrScaleDownMNInterleaveu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    return reduceMN(src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride, 2);
}
