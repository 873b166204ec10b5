// The separable M x N convolution to int16 and the Sobel derivatives, vector
// kind: horizontal and vertical passes in 32-bit lanes over the reference's
// padded rows and ring; narrow rows use the reference's scalar passes. The
// sums are exact, as in the reference, and saturated by the narrowing.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/gradient_conv_sep_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/gradient_conv_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using D32 = hn::ScalableTag<int32_t>;

// Runs at(x) over [0, n) in vectors of N, the last one overlapping.
template <class At> HWY_INLINE void Columns(uint32_t n, uint32_t N, At at) {
    uint32_t x = 0;
    for (; x + N <= n; x += N) at(x);
    if (x < n) at(n - N);
}

// h[x] = sum_k kx[k] pad[x + M - 1 - k], zero taps skipped.
HWY_INLINE void Horizontal(const convsep::Job& j, const uint8_t* pad, int32_t* h) {
    const D32 d;
    const hn::Rebind<uint8_t, D32> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d));
    if (j.width < N) {
        convsep::horizontal(j, pad, h, 0, j.width);
        return;
    }
    Columns(j.width, N, [&](uint32_t x) HWY_ATTR {
        auto acc = hn::Zero(d);
        for (uint32_t k = 0; k < j.M; ++k) {
            if (!j.kx[k]) continue;
            const auto p = hn::PromoteTo(d, hn::LoadU(d8, pad + x + j.M - 1 - k));
            acc = hn::Add(acc, hn::Mul(hn::Set(d, j.kx[k]), p));
        }
        hn::StoreU(acc, d, h + x);
    });
}

// out[x] = saturate(sum_i ky[i] rows[i][x]); the bound keeps it in 32 bits.
HWY_INLINE void Vertical(const convsep::Job& j, const int32_t* const* rows, int32_t* acc, int16_t* out) {
    const D32 d;
    const hn::Rebind<int16_t, D32> d16;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d));
    if (j.width < N) {
        convsep::vertical(j, rows, acc, out, 0, j.width);
        return;
    }
    Columns(j.width, N, [&](uint32_t x) HWY_ATTR {
        auto acc = hn::Zero(d);
        for (uint32_t i = 0; i < j.N; ++i) {
            if (!j.ky[i]) continue;
            acc = hn::Add(acc, hn::Mul(hn::Set(d, j.ky[i]), hn::LoadU(d, rows[i] + x)));
        }
        hn::StoreU(hn::DemoteTo(d16, acc), d16, out + x);
    });
}

// Output rows [y0, y1) of a job; scratch holds convsep::scratchBytes(j).
void ConvRows(const convsep::Job& j, uint32_t y0, uint32_t y1, uint8_t* scratch) {
    if (convsep::bound(j) > INT32_MAX) {  // 64-bit sums: the reference's passes
        convsep::rowsScalar(j, y0, y1, scratch);
        return;
    }
    convsep::Ring ring(j, scratch);
    const int32_t* rows[convsep::kMaxTaps];
    int32_t* acc = static_cast<int32_t*>(convsep::accumulators(j, scratch));
    for (uint32_t y = y0; y < y1; ++y) {
        ring.at(y, [&](const uint8_t* pad, int32_t* h) HWY_ATTR { Horizontal(j, pad, h); }, rows);
        Vertical(j, rows, acc, reinterpret_cast<int16_t*>(reinterpret_cast<uint8_t*>(j.dst) + size_t{y} * j.dstStride));
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "memory/scratch.h"
#include "simd/filters/gradient_v.h"

namespace pxr {
HWY_EXPORT(ConvRows);

// The dispatch names the function unqualified, from the namespace of its
// export: with a single compiled target (32-bit ARM) it becomes a direct call.
static void convRows(const convsep::Job& j, uint32_t y0, uint32_t y1, uint8_t* scratch) {
    HWY_DYNAMIC_DISPATCH(ConvRows)(j, y0, y1, scratch);
}

namespace {

// Both derivatives with one scratch buffer (nothing is written without it).
// The 3x3 member computes only its first and last rows by the convolution's
// passes and its first and last columns by the exact 3x3 sums; its interior
// is the dedicated 3x3 pass.
int sobelDerivatives(const convsep::SobelKernels& k, const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss,
                     int16_t* dx, int16_t* dy, uint32_t ds, uint32_t border, uint8_t value) {
    const convsep::Job jobs[2] = {convsep::sobelJob(k, true, src, w, h, ss, dx, ds, border, value),
                                  convsep::sobelJob(k, false, src, w, h, ss, dy, ds, border, value)};
    ScratchBuffer scratch(convsep::scratchBytes(jobs[0]), 64);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    uint8_t* buffer = scratch.as<uint8_t>();
    const bool borderOnly = k.n == 3 && w >= 3 && h >= 3;
    for (const convsep::Job& j : jobs) {
        if (!j.dst) continue;
        if (!borderOnly) {
            convRows(j, 0, h, buffer);
            continue;
        }
        convRows(j, 0, 1, buffer);
        convRows(j, h - 1, h, buffer);
    }
    if (!borderOnly) return PIXORA_STATUS_OK;
    auto at = [ds](int16_t* plane, uint32_t y) {
        return reinterpret_cast<int16_t*>(reinterpret_cast<uint8_t*>(plane) + size_t{y} * ds);
    };
    for (uint32_t y = 1; y + 1 < h; ++y)
        for (uint32_t x : {0u, w - 1}) {
            int32_t gx, gy;
            convsep::sobel3Column(src, w, ss, border, value, x, y, gx, gy);
            if (dx) at(dx, y)[x] = static_cast<int16_t>(gx);
            if (dy) at(dy, y)[x] = static_cast<int16_t>(gy);
        }
    sobelDerivativesInteriorV(src, w, h, ss, dx, dy, ds);
    return PIXORA_STATUS_OK;
}

}  // namespace
}  // namespace pxr

int pxrFilterConvSepMxNs16V(const int16_t* kernelX, uint32_t M, const int16_t* kernelY, uint32_t N,
                            const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    if (!pxr::convsep::validTaps(M) || !pxr::convsep::validTaps(N)) return PIXORA_STATUS_BAD_PARAM;
    const pxr::convsep::Job job{kernelX, M, kernelY, N, src, srcWidth, srcHeight, srcStride, dst, dstStride,
                                borderType, borderValue};
    pxr::ScratchBuffer scratch(pxr::convsep::scratchBytes(job), 64);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    pxr::convRows(job, 0, srcHeight, scratch.as<uint8_t>());
    return PIXORA_STATUS_OK;
}

int pxrFilterSobel3x3u8s16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue) {
    return pxr::sobelDerivatives(pxr::convsep::kSobel3, src, srcWidth, srcHeight, srcStride, dx, dy, dstStride,
                                 borderType, borderValue);
}

int pxrFilterSobel5x5u8s16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue) {
    return pxr::sobelDerivatives(pxr::convsep::kSobel5, src, srcWidth, srcHeight, srcStride, dx, dy, dstStride,
                                 borderType, borderValue);
}

int pxrFilterSobel7x7u8s16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue) {
    return pxr::sobelDerivatives(pxr::convsep::kSobel7, src, srcWidth, srcHeight, srcStride, dx, dy, dstStride,
                                 borderType, borderValue);
}
#endif
