// Grey-level erosion (minimum) and dilation (maximum): 3x3 without a padded
// copy, NxN over a padded copy in scratch memory.
#include "imgproc/filters/nonlinear.h"
#include "imgproc/filters/nonlinear_morphology_kernels.h"
#include "memory/scratch.h"
#include "pixora/types.h"

namespace {

using namespace pxr::morph;

// Every pixel: interior columns from the column extremes, edge rows with
// the edge row repeated (which adds nothing to a minimum or maximum), edge
// columns from the in-image columns; the constant border adds its value.
template <class Op>
void filter3(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
             uint32_t dstStride, bool constant, uint8_t value) {
    for (uint32_t y = 0; y < height; ++y) {
        const Rows3 r = rows3(src, height, srcStride, y);
        uint8_t* out = dst + size_t{y} * dstStride;
        if (width > 2) span3<Op>(r.t, r.m, r.b, out, 1, width - 1);
        edges3<Op>(r, width, height, y, out, constant, value);
    }
}

template <class Op>
int filterN(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t n, uint8_t* dst,
            uint32_t dstStride) {
    Padded p;
    if (!paddedShape(width, height, n, p)) return PIXORA_STATUS_NO_SCRATCH;
    pxr::ScratchArray<uint8_t> buf(p.bytes(), 16);
    if (!buf) return PIXORA_STATUS_NO_SCRATCH;
    fillPadded<Op>(src, width, height, srcStride, p, buf.data());
    uint8_t* line = buf.data() + p.width * p.height;
    for (uint32_t y = 0; y < height; ++y) {
        columnExtreme<Op>(buf.data() + y * p.width, p.width, n, line, 0, p.width);
        rowExtreme<Op>(line, n, dst + size_t{y} * dstStride, 0, width);
    }
    return PIXORA_STATUS_OK;
}

}  // namespace

void pxrFilterErode3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride) {
    filter3<Min>(src, srcWidth, srcHeight, srcStride, dst, dstStride, false, 0);
}

void pxrFilterDilate3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride) {
    filter3<Max>(src, srcWidth, srcHeight, srcStride, dst, dstStride, false, 0);
}

// PIXORA_BORDER_CONSTANT adds the border value; REPLICATE and DEFAULT take
// the in-image taps only (a repeated edge pixel never changes an extreme).
int pxrFilterErode3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    filter3<Min>(src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType == 1, borderValue);
    return PIXORA_STATUS_OK;
}

int pxrFilterDilate3x3u8_v3C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    filter3<Max>(src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType == 1, borderValue);
    return PIXORA_STATUS_OK;
}

int pxrFilterErodeNxNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         uint8_t* dst, uint32_t dstStride) {
    return filterN<Min>(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

int pxrFilterDilateNxNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint32_t N, uint8_t* dst, uint32_t dstStride) {
    return filterN<Max>(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}
