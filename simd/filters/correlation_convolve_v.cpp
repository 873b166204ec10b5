// Convolution of bytes with an s16 kernel, vector kind: the padded copy is
// built by the reference's own routine, then every row goes through the
// pairwise multiply-add core with the kernel read back to front. Kernels
// for the BigKernel path are summed in chunks of at most 256 taps (exact in
// 32 bits) that are added up in 64 bits.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/correlation_convolve_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "simd/filters/correlation_core-inl.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <class Out>
void FirstPath(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* pad, size_t padStride,
               uint32_t w, uint32_t h, uint8_t* dst, uint32_t dstStride) {
    HWY_ALIGN int32_t table[corrv::kMaxTablePairs];
    const bool tabled = corrv::BuildPairTable<true>(kernel, kw, kh, table);
    const corrv::TablePairs fromTable{table};
    const corrv::LivePairs<true, int16_t> live{kernel, size_t{kw} * kh, kw, 0, 0};
    const corrv::Scale<Out> scale(shift);
    for (uint32_t y = 0; y < h; ++y) {
        const uint8_t* top = pad + y * padStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        const bool done = tabled ? corrv::WindowRow<Out>(top, padStride, kw, kh, fromTable, scale, out, w)
                                 : corrv::WindowRow<Out>(top, padStride, kw, kh, live, scale, out, w);
        if (!done) corr::windowRow<Out, true>(top, padStride, kernel, kw, kh, shift, out, 0, w);
    }
}

// Chunks of at most 256 taps: 256 x 32768 x 255 < 2^31, whatever the taps.
inline constexpr uint32_t kChunkTaps = 256;

template <class Out>
void BigKernel(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* pad, size_t padStride,
               uint32_t w, uint32_t h, uint8_t* dst, uint32_t dstStride) {
#if HWY_TARGET == HWY_SCALAR
    for (uint32_t y = 0; y < h; ++y)
        corr::windowRow<Out, true, true>(pad + y * padStride, padStride, kernel, kw, kh, shift,
                                         dst + size_t{y} * dstStride, 0, w);
#else
    using T = typename Out::T;
    const corrv::D16 d16;
    const corrv::D32 d32;
    const uint32_t lanes = static_cast<uint32_t>(hn::Lanes(d16));
    const uint32_t chunkCols = std::min(kw, kChunkTaps), chunkRows = std::max(1u, kChunkTaps / chunkCols);
    HWY_ALIGN int32_t even[HWY_MAX_BYTES / 4], odd[HWY_MAX_BYTES / 4];
    int64_t sums[HWY_MAX_BYTES / 2];
    for (uint32_t y = 0; y < h; ++y) {
        const uint8_t* top = pad + y * padStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        if (w < lanes) {
            corr::windowRow<Out, true, true>(top, padStride, kernel, kw, kh, shift, out, 0, w);
            continue;
        }
        auto block = [&](uint32_t x) {
            std::fill(sums, sums + lanes, int64_t{0});
            for (uint32_t i0 = 0; i0 < kh; i0 += chunkRows)
                for (uint32_t j0 = 0; j0 < kw; j0 += chunkCols) {
                    const corrv::LivePairs<true, int16_t> chunk{kernel, size_t{kw} * kh, kw, i0, j0};
                    corrv::V32 e, o;
                    corrv::WindowSums(top + x + i0 * padStride + j0, padStride, std::min(chunkCols, kw - j0),
                                      std::min(chunkRows, kh - i0), chunk, e, o);
                    hn::Store(e, d32, even);
                    hn::Store(o, d32, odd);
                    for (uint32_t m = 0; m < lanes / 2; ++m) {
                        sums[2 * m] += even[m];
                        sums[2 * m + 1] += odd[m];
                    }
                }
            for (uint32_t p = 0; p < lanes; ++p)
                corr::storeAt<T>(out + size_t{x + p} * sizeof(T),
                                 static_cast<T>(corr::scaled(sums[p], shift, Out::lo, Out::hi)));
        };
        uint32_t x = 0;
        for (; x + lanes <= w; x += lanes) block(x);
        if (x < w) block(w - lanes);
    }
#endif
}

template <class Out>
void ConvolvePadded(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* pad,
                    size_t padStride, uint32_t w, uint32_t h, uint8_t* dst, uint32_t dstStride) {
    if (corr::fitsFirstPath(kernel, kw, kh))
        FirstPath<Out>(kernel, kw, kh, shift, pad, padStride, w, h, dst, dstStride);
    else
        BigKernel<Out>(kernel, kw, kh, shift, pad, padStride, w, h, dst, dstStride);
}

void ConvolvePaddedU8(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* pad,
                      size_t padStride, uint32_t w, uint32_t h, uint8_t* dst, uint32_t dstStride) {
    ConvolvePadded<corr::U8Out>(kernel, kw, kh, shift, pad, padStride, w, h, dst, dstStride);
}

void ConvolvePaddedS16(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* pad,
                       size_t padStride, uint32_t w, uint32_t h, uint8_t* dst, uint32_t dstStride) {
    ConvolvePadded<corr::S16Out>(kernel, kw, kh, shift, pad, padStride, w, h, dst, dstStride);
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "memory/scratch.h"
#include "pixora/types.h"
#include "simd/filters/correlation_v.h"

namespace pxr {
HWY_EXPORT(ConvolvePaddedU8);
HWY_EXPORT(ConvolvePaddedS16);

// The padded copy in scratch memory, exactly as the reference builds it.
template <bool Wide>
static int convolveV(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* src,
                     uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                     uint32_t borderType, uint8_t borderValue) {
    corr::PaddedShape shape;
    if (!corr::paddedShape(w, h, kw, kh, shape)) return PIXORA_STATUS_NO_SCRATCH;
    ScratchArray<uint8_t> pad(shape.bytes(), 64);
    if (!pad) return PIXORA_STATUS_NO_SCRATCH;
    corr::fillPadded(src, w, h, srcStride, borderType, borderValue, shape, pad.data());
    if constexpr (Wide)
        HWY_DYNAMIC_DISPATCH(ConvolvePaddedS16)(kernel, kw, kh, shift, pad.data(), shape.stride, w, h, dst,
                                                dstStride);
    else
        HWY_DYNAMIC_DISPATCH(ConvolvePaddedU8)(kernel, kw, kh, shift, pad.data(), shape.stride, w, h, dst,
                                               dstStride);
    return PIXORA_STATUS_OK;
}
}  // namespace pxr

int pxrFilterConvolveMxNu8V(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight, int32_t shift,
                            const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    return pxr::convolveV<false>(kernel, kernelWidth, kernelHeight, shift, src, srcWidth, srcHeight, srcStride, dst,
                                 dstStride, borderType, borderValue);
}

int pxrFilterConvolveMxNu8s16V(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight,
                               int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, int16_t* dst, uint32_t dstStride, uint32_t borderType,
                               uint8_t borderValue) {
    return pxr::convolveV<true>(kernel, kernelWidth, kernelHeight, shift, src, srcWidth, srcHeight, srcStride,
                                reinterpret_cast<uint8_t*>(dst), dstStride, borderType, borderValue);
}
#endif
