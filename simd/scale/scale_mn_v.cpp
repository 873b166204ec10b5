// M-by-N block reduction, vector kind: column sums of each row block in
// 16-bit lanes; where every destination column takes the same number (1 to
// 4) of source columns, the block sums and the rounded division (an exact
// 16-bit reciprocal) in vectors too. Everything else by the reference's
// kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/scale/scale_mn_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/scale/scale_mn_kernels.h"


HWY_BEFORE_NAMESPACE();
namespace pxr::scale::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR
// One lane: the reference's column sums, no uniform shortcut.
void ColumnSums16(const uint8_t* src, uint32_t stride, uint32_t rows, uint32_t n, uint16_t* sums) {
    for (uint32_t c = 0; c < n; ++c) {
        uint32_t s = 0;
        for (uint32_t r = 0; r < rows; ++r) s += src[size_t{r} * stride + c];
        sums[c] = static_cast<uint16_t>(s);
    }
}
uint32_t AverageUniform(const uint16_t*, uint32_t, uint32_t, uint8_t*, uint32_t, uint32_t) { return 0; }
#else
// sums[c] = sum of `rows` rows at byte c, c in [0, n); rows x 255 < 2^16.
void ColumnSums16(const uint8_t* src, uint32_t stride, uint32_t rows, uint32_t n, uint16_t* sums) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    auto at = [&](uint32_t c) {
        auto acc = hn::PromoteTo(d16, hn::LoadU(d8, src + c));
        for (uint32_t r = 1; r < rows; ++r) acc = hn::Add(acc, hn::PromoteTo(d16, hn::LoadU(d8, src + size_t{r} * stride + c)));
        hn::StoreU(acc, d16, sums + c);
    };
    if (n < N) {
        for (uint32_t c = 0; c < n; ++c) {
            uint32_t s = 0;
            for (uint32_t r = 0; r < rows; ++r) s += src[size_t{r} * stride + c];
            sums[c] = static_cast<uint16_t>(s);
        }
        return;
    }
    uint32_t c = 0;
    for (; c + N <= n; c += N) at(c);
    if (c < n) at(n - N);  // overlaps the previous vector with the same sums
}

// Block means of one output row when every column takes `count` source
// columns (1 to 4): channels 1, or 2 with a pixel pair per 32-bit lane.
// Returns the number of output columns written, from the left.
template <class D>
uint32_t AverageUniformT(D d, const uint16_t* sums, uint32_t count, uint32_t n, uint8_t* out, uint32_t dw,
                         uint32_t channels) {
    using T = hn::TFromD<D>;
    const hn::Repartition<uint16_t, D> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const hn::RebindToSigned<decltype(d16)> di16;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d));  // output pixels per step
    const mn::Reciprocal r = mn::reciprocal(n);
    if (n >= 2 && !r.exact) return 0;
    const auto add = hn::Set(d16, r.add), mul = hn::Set(d16, r.mul);
    const T* s = reinterpret_cast<const T*>(sums);
    uint32_t x = 0;
    for (; x + N <= dw; x += N) {
        const T* at = s + size_t{x} * count;
        hn::Vec<D> v0, v1, v2, v3;
        hn::Vec<decltype(d16)> sum;
        switch (count) {
            case 1: sum = hn::BitCast(d16, hn::LoadU(d, at)); break;
            case 2:
                hn::LoadInterleaved2(d, at, v0, v1);
                sum = hn::Add(hn::BitCast(d16, v0), hn::BitCast(d16, v1));
                break;
            case 3:
                hn::LoadInterleaved3(d, at, v0, v1, v2);
                sum = hn::Add(hn::Add(hn::BitCast(d16, v0), hn::BitCast(d16, v1)), hn::BitCast(d16, v2));
                break;
            default:
                hn::LoadInterleaved4(d, at, v0, v1, v2, v3);
                sum = hn::Add(hn::Add(hn::BitCast(d16, v0), hn::BitCast(d16, v1)),
                              hn::Add(hn::BitCast(d16, v2), hn::BitCast(d16, v3)));
                break;
        }
        const auto mean = n >= 2 ? hn::MulHigh(hn::Add(sum, add), mul) : sum;
        hn::StoreU(hn::DemoteTo(d8, hn::BitCast(di16, mean)), d8, out + size_t{x} * channels);
    }
    return x;
}

uint32_t AverageUniform(const uint16_t* sums, uint32_t count, uint32_t n, uint8_t* out, uint32_t dw,
                        uint32_t channels) {
    if (count < 1 || count > 4) return 0;
    if (channels == 2) return AverageUniformT(hn::ScalableTag<uint32_t>(), sums, count, n, out, dw, 2);
    return AverageUniformT(hn::ScalableTag<uint16_t>(), sums, count, n, out, dw, 1);
}

#endif  // HWY_TARGET == HWY_SCALAR

}  // namespace pxr::scale::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "memory/scratch.h"
#include "simd/scale/scale_v.h"

namespace pxr::scale {
HWY_EXPORT(ColumnSums16);
HWY_EXPORT(AverageUniform);

static void columnSums16(const uint8_t* src, uint32_t stride, uint32_t rows, uint32_t n, uint16_t* sums) {
    HWY_DYNAMIC_DISPATCH(ColumnSums16)(src, stride, rows, n, sums);
}
static uint32_t averageUniform(const uint16_t* sums, uint32_t count, uint32_t n, uint8_t* out, uint32_t dw,
                               uint32_t channels) {
    return HWY_DYNAMIC_DISPATCH(AverageUniform)(sums, count, n, out, dw, channels);
}

// The reference's loop and scratch layout, with the vector passes.
static int reduceMN(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                    uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride, uint32_t channels) {
    using namespace mn;
    const Layout l = layout(srcWidth * channels, dstWidth, dstHeight);
    ScratchBuffer scratch(l.bytes, 32);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    auto* base = scratch.as<uint8_t>();
    auto* columns = reinterpret_cast<uint32_t*>(base + l.columnTable);
    auto* rows = reinterpret_cast<uint32_t*>(base + l.rowTable);
    buildCountTable(srcWidth, dstWidth, columns);
    buildCountTable(srcHeight, dstHeight, rows);
    // Equal counts everywhere exactly when the widths divide.
    const uint32_t uniform = srcWidth % dstWidth == 0 ? srcWidth / dstWidth : 0;
    const uint8_t* block = src;
    for (uint32_t y = 0; y < dstHeight; ++y) {
        uint8_t* out = dst + size_t{y} * dstStride;
        if (rows[y] <= 257) {  // 16-bit column sums
            auto* sums = reinterpret_cast<uint16_t*>(base + l.sums);
            columnSums16(block, srcStride, rows[y], srcWidth * channels, sums);
            const uint32_t done = uniform ? averageUniform(sums, uniform, uniform * rows[y], out, dstWidth, channels) : 0;
            averageBlocks(sums, columns, rows[y], channels, out, done, dstWidth, done * uniform);
        } else {
            auto* sums = reinterpret_cast<uint32_t*>(base + l.sums);
            columnSums(block, srcStride, rows[y], srcWidth * channels, sums);
            averageBlocks(sums, columns, rows[y], channels, out, 0, dstWidth, 0);
        }
        block += size_t{rows[y]} * srcStride;
    }
    return PIXORA_STATUS_OK;
}

}  // namespace pxr::scale

int pxrScaleDownMNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                      uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    return pxr::scale::reduceMN(src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride, 1);
}

int pxrScaleDownMNInterleaveu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    return pxr::scale::reduceMN(src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride, 2);
}
#endif
