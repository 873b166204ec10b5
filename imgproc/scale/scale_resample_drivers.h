// The row loops of the resampling members, shared by both kinds: each kind
// passes its own row kernels; tables, scratch and edges are handled here once.
#pragma once

#include <cstdint>

#include "imgproc/scale/scale_resample_kernels.h"
#include "memory/scratch.h"
#include "pixora/scale.h"

namespace pxr::scale::resample {

struct Image {
    const uint8_t* src;
    uint32_t srcWidth, srcHeight, srcStride;
    uint8_t* dst;
    uint32_t dstWidth, dstHeight, dstStride;
};

// Row kernels of one kind.
struct Kernels {
    // out[x] = row[index[x]] for x in [0, n).
    void (*nearestRow)(const uint8_t* row, const uint32_t* index, uint8_t* out, uint32_t n, uint32_t srcWidth);
    // linearVertical over columns [0, n).
    void (*linearVertical)(const uint8_t* top, const uint8_t* bottom, uint32_t g, uint16_t* sums, uint32_t n);
    // linearHorizontal over output columns [0, n).
    void (*linearHorizontal)(const uint16_t* sums, const uint32_t* index, const uint32_t* frac, uint8_t* out,
                             uint32_t n, uint32_t srcWidth);
    // areaVertical over columns [0, n).
    void (*areaVertical)(const uint8_t* row, uint32_t stride, const uint32_t* weights, uint32_t taps,
                         uint32_t* sums, uint32_t n);
};

inline int nearest(const Image& im, const Kernels& k) {
    ScratchArray<uint32_t> index(im.dstWidth, 64);
    if (!index) return PIXORA_STATUS_NO_SCRATCH;
    for (uint32_t x = 0; x < im.dstWidth; ++x) index[x] = nearestIndex(x, im.srcWidth, im.dstWidth);
    for (uint32_t y = 0; y < im.dstHeight; ++y) {
        const uint32_t sy = nearestIndex(y, im.srcHeight, im.dstHeight);
        k.nearestRow(im.src + size_t{sy} * im.srcStride, index.data(), im.dst + size_t{y} * im.dstStride,
                     im.dstWidth, im.srcWidth);
    }
    return PIXORA_STATUS_OK;
}

inline int linear(const Image& im, const Kernels& k) {
    const LinearLayout l = linearLayout(im.srcWidth, im.dstWidth);
    ScratchBuffer scratch(l.bytes, 64);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    auto* base = scratch.as<uint8_t>();
    auto* index = reinterpret_cast<uint32_t*>(base + l.index);
    auto* frac = reinterpret_cast<uint32_t*>(base + l.frac);
    auto* sums = reinterpret_cast<uint16_t*>(base + l.sums);
    for (uint32_t x = 0; x < im.dstWidth; ++x) {
        const LinearTap t = linearTap(x, im.srcWidth, im.dstWidth);
        index[x] = t.index;
        frac[x] = t.frac;
    }
    sums[im.srcWidth] = 0;  // second tap of the edge column, weight 0
    for (uint32_t y = 0; y < im.dstHeight; ++y) {
        const LinearTap t = linearTap(y, im.srcHeight, im.dstHeight);
        const uint8_t* top = im.src + size_t{t.index} * im.srcStride;
        const uint8_t* bottom = t.frac ? top + im.srcStride : top;
        k.linearVertical(top, bottom, t.frac, sums, im.srcWidth);
        k.linearHorizontal(sums, index, frac, im.dst + size_t{y} * im.dstStride, im.dstWidth, im.srcWidth);
    }
    return PIXORA_STATUS_OK;
}

// Needs dstWidth <= srcWidth and dstHeight <= srcHeight.
inline int area(const Image& im, const Kernels& k) {
    const AreaAxis ax = areaAxis(im.srcWidth, im.dstWidth), ay = areaAxis(im.srcHeight, im.dstHeight);
    const AreaLayout l = areaLayout(im.srcWidth, im.dstWidth, areaMaxTaps(ay));
    ScratchBuffer scratch(l.bytes, 64);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    auto* base = scratch.as<uint8_t>();
    auto* first = reinterpret_cast<uint32_t*>(base + l.first);
    auto* count = reinterpret_cast<uint32_t*>(base + l.count);
    auto* offset = reinterpret_cast<uint32_t*>(base + l.offset);
    auto* weights = reinterpret_cast<uint32_t*>(base + l.weights);
    auto* rowWeights = reinterpret_cast<uint32_t*>(base + l.rowWeights);
    auto* sums = reinterpret_cast<uint32_t*>(base + l.sums);
    uint32_t packed = 0;
    for (uint32_t x = 0; x < im.dstWidth; ++x) {
        offset[x] = packed;
        count[x] = areaTaps(ax, x, &first[x], weights + packed);
        packed += count[x];
    }
    const uint64_t den = uint64_t{ax.unitSrc} * ay.unitSrc;
    for (uint32_t y = 0; y < im.dstHeight; ++y) {
        uint32_t firstRow = 0;
        const uint32_t taps = areaTaps(ay, y, &firstRow, rowWeights);
        k.areaVertical(im.src + size_t{firstRow} * im.srcStride, im.srcStride, rowWeights, taps, sums,
                       im.srcWidth);
        areaHorizontal(sums, first, count, offset, weights, den, im.dst + size_t{y} * im.dstStride, 0,
                       im.dstWidth);
    }
    return PIXORA_STATUS_OK;
}

// The interpolations of pxrScaleu8_v2; area where the output is no larger
// in either direction, bilinear otherwise.
inline int scale(const Image& im, uint32_t interpolation, const Kernels& k) {
    switch (interpolation) {
        case PIXORA_INTERPOLATION_NEAREST: return nearest(im, k);
        case PIXORA_INTERPOLATION_AREA:
            if (im.dstWidth <= im.srcWidth && im.dstHeight <= im.srcHeight) return area(im, k);
            return linear(im, k);
        default: return linear(im, k);
    }
}

}  // namespace pxr::scale::resample
