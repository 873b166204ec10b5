// 3x3 and N x N correlation of bytes, vector kind: integer windows through
// the pairwise multiply-add core, float windows tap by tap in the
// reference's order (a product, then an add, never fused).
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/correlation_nxn_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "simd/filters/correlation_core-inl.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <class Out>
void CorrNxN(const int8_t* kernel, uint32_t n, int32_t shift, const uint8_t* src, uint32_t w, uint32_t h,
             uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    const uint32_t cols = corr::fullWindows(w, n), rows = corr::fullWindows(h, n), half = n / 2;
    if (!cols || !rows) return;
    HWY_ALIGN int32_t table[corrv::kMaxTablePairs];
    const bool tabled = corrv::BuildPairTable<false>(kernel, n, n, table);
    const corrv::TablePairs fromTable{table};
    const corrv::LivePairs<false, int8_t> live{kernel, size_t{n} * n, n, 0, 0};
    const corrv::Scale<Out> scale(shift);
    for (uint32_t r = 0; r < rows; ++r) {
        const uint8_t* top = src + size_t{r} * srcStride;
        uint8_t* out = dst + size_t{r + half} * dstStride + size_t{half} * sizeof(typename Out::T);
        const bool done = tabled ? corrv::WindowRow<Out>(top, srcStride, n, n, fromTable, scale, out, cols)
                                 : corrv::WindowRow<Out>(top, srcStride, n, n, live, scale, out, cols);
        if (!done) corr::windowRow<Out, false>(top, srcStride, kernel, n, n, shift, out, 0, cols);
    }
}

void CorrNxNU8(const int8_t* kernel, uint32_t n, int32_t shift, const uint8_t* src, uint32_t w, uint32_t h,
               uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    CorrNxN<corr::U8Out>(kernel, n, shift, src, w, h, srcStride, dst, dstStride);
}

void CorrNxNS16(const int8_t* kernel, uint32_t n, int32_t shift, const uint8_t* src, uint32_t w, uint32_t h,
                uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    CorrNxN<corr::S16Out>(kernel, n, shift, src, w, h, srcStride, dst, dstStride);
}

// Float windows: lane by lane the same sequence of roundings as the
// reference, sum = 0, then sum + k x p for each tap in raster order.
void CorrNxNF32(const float* kernel, uint32_t n, const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride,
                uint8_t* dst, uint32_t dstStride) {
    const hn::ScalableTag<float> df;
    const hn::Rebind<int32_t, decltype(df)> di;
    const hn::Rebind<uint8_t, decltype(df)> d8;
    const uint32_t lanes = static_cast<uint32_t>(hn::Lanes(df));
    const uint32_t cols = corr::fullWindows(w, n), rows = corr::fullWindows(h, n), half = n / 2;
    for (uint32_t r = 0; r < rows; ++r) {
        const uint8_t* top = src + size_t{r} * srcStride;
        uint8_t* out = dst + size_t{r + half} * dstStride + size_t{half} * 4;
        if (cols < lanes) {
            corr::windowRowF32(top, srcStride, kernel, n, out, 0, cols);
            continue;
        }
        auto block = [&](uint32_t x) {
            auto sum = hn::Zero(df);
            const uint8_t* p = top + x;
            const float* k = kernel;
            for (uint32_t i = 0; i < n; ++i, p += srcStride)
                for (uint32_t j = 0; j < n; ++j, ++k) {
                    const auto pixels = hn::ConvertTo(df, hn::PromoteTo(di, hn::LoadU(d8, p + j)));
                    sum = hn::Add(sum, hn::Mul(hn::Set(df, *k), pixels));
                }
            hn::StoreU(sum, df, reinterpret_cast<float*>(out + size_t{x} * 4));
        };
        uint32_t x = 0;
        for (; x + lanes <= cols; x += lanes) block(x);
        if (x < cols) block(cols - lanes);
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "pixora/types.h"
#include "simd/filters/correlation_v.h"

namespace pxr {
HWY_EXPORT(CorrNxNU8);
HWY_EXPORT(CorrNxNS16);
HWY_EXPORT(CorrNxNF32);

// The dispatch names each function unqualified, from the namespace of its
// export: with a single compiled target (32-bit ARM) it becomes a direct call.
static void corrNxNU8(const int8_t* kernel, uint32_t n, int32_t shift, const uint8_t* src, uint32_t w, uint32_t h,
                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    HWY_DYNAMIC_DISPATCH(CorrNxNU8)(kernel, n, shift, src, w, h, srcStride, dst, dstStride);
}
static void corrNxNS16(const int8_t* kernel, uint32_t n, int32_t shift, const uint8_t* src, uint32_t w,
                       uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    HWY_DYNAMIC_DISPATCH(CorrNxNS16)(kernel, n, shift, src, w, h, srcStride, dst, dstStride);
}
static void corrNxNF32(const float* kernel, uint32_t n, const uint8_t* src, uint32_t w, uint32_t h,
                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    HWY_DYNAMIC_DISPATCH(CorrNxNF32)(kernel, n, src, w, h, srcStride, dst, dstStride);
}
}  // namespace pxr

void pxrFilterCorr3x3s8V(const int8_t* kernel, int32_t shift, const uint8_t* src, uint32_t srcWidth,
                         uint32_t srcHeight, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    pxr::corrNxNU8(kernel, 3, shift, src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

int pxrFilterCorrNxNu8V(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src, uint32_t srcWidth,
                        uint32_t srcHeight, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    pxr::corrNxNU8(kernel, N, shift, src, srcWidth, srcHeight, srcStride, dst, dstStride);
    return PIXORA_STATUS_OK;
}

int pxrFilterCorrNxNu8s16V(const int8_t* kernel, uint32_t N, int32_t shift, const uint8_t* src,
                           uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, int16_t* dst,
                           uint32_t dstStride) {
    pxr::corrNxNS16(kernel, N, shift, src, srcWidth, srcHeight, srcStride, reinterpret_cast<uint8_t*>(dst),
                    dstStride);
    return PIXORA_STATUS_OK;
}

int pxrFilterCorrNxNu8f32V(const float* kernel, uint32_t N, const uint8_t* src, uint32_t srcWidth,
                           uint32_t srcHeight, uint32_t srcStride, float* dst, uint32_t dstStride) {
    pxr::corrNxNF32(kernel, N, src, srcWidth, srcHeight, srcStride, reinterpret_cast<uint8_t*>(dst), dstStride);
    return PIXORA_STATUS_OK;
}
#endif
