// Separable correlation of bytes, vector kind: 32-bit column sums, then
// 32-bit row sums, both wrapping like the reference's.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/correlation_sep_mxn_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "simd/filters/correlation_core-inl.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// `sums` holds one row of column sums (w values).
void SepMxN(const int8_t* kx, uint32_t m, const int8_t* ky, uint32_t n, int32_t shift, const uint8_t* src,
            uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int32_t* sums) {
    const hn::ScalableTag<int32_t> d32;
    const hn::Rebind<uint8_t, decltype(d32)> d8;
    const uint32_t lanes = static_cast<uint32_t>(hn::Lanes(d32));
    const uint32_t cols = corr::fullWindows(w, m), rows = corr::fullWindows(h, n);
    const corrv::Scale<corr::U8Out> scale(shift);
    for (uint32_t r = 0; r < rows; ++r) {
        const uint8_t* top = src + size_t{r} * srcStride;
        if (w < lanes) {
            corr::sepColumns(top, srcStride, ky, n, sums, 0, w);
        } else {
            auto columns = [&](uint32_t x) {
                auto acc = hn::Zero(d32);
                const uint8_t* p = top + x;
                for (uint32_t i = 0; i < n; ++i, p += srcStride)
                    acc = hn::Add(acc, hn::Mul(hn::Set(d32, ky[i]), hn::PromoteTo(d32, hn::LoadU(d8, p))));
                hn::StoreU(acc, d32, sums + x);
            };
            uint32_t x = 0;
            for (; x + lanes <= w; x += lanes) columns(x);
            if (x < w) columns(w - lanes);
        }
        uint8_t* out = dst + size_t{r + n / 2} * dstStride + m / 2;
        if (cols < lanes) {
            corr::sepRow(sums, kx, m, shift, out, 0, cols);
            continue;
        }
        auto outputs = [&](uint32_t x) {
            auto acc = hn::Zero(d32);
            for (uint32_t j = 0; j < m; ++j) acc = hn::Add(acc, hn::Mul(hn::Set(d32, kx[j]), hn::LoadU(d32, sums + x + j)));
            hn::StoreU(hn::DemoteTo(d8, scale(acc)), d8, out + x);
        };
        uint32_t x = 0;
        for (; x + lanes <= cols; x += lanes) outputs(x);
        if (x < cols) outputs(cols - lanes);
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "memory/scratch.h"
#include "pixora/types.h"
#include "simd/filters/correlation_v.h"

namespace pxr {
HWY_EXPORT(SepMxN);

static void sepMxN(const int8_t* kx, uint32_t m, const int8_t* ky, uint32_t n, int32_t shift, const uint8_t* src,
                   uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int32_t* sums) {
    HWY_DYNAMIC_DISPATCH(SepMxN)(kx, m, ky, n, shift, src, w, h, srcStride, dst, dstStride, sums);
}
}  // namespace pxr

int pxrFilterCorrSepMxNu8V(const int8_t* kernelX, uint32_t M, const int8_t* kernelY, uint32_t N, int32_t shift,
                           const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride) {
    if (!pxr::corr::fullWindows(srcWidth, M) || !pxr::corr::fullWindows(srcHeight, N)) return PIXORA_STATUS_OK;
    pxr::ScratchArray<int32_t> sums(srcWidth, 64);
    if (!sums) return PIXORA_STATUS_NO_SCRATCH;
    pxr::sepMxN(kernelX, M, kernelY, N, shift, src, srcWidth, srcHeight, srcStride, dst, dstStride, sums.data());
    return PIXORA_STATUS_OK;
}
#endif
