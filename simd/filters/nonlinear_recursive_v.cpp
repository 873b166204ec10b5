// Recursive bilateral filter, vector kind: the vertical passes run across
// the columns of a strip in vectors of float lanes, each lane doing the
// reference's steps in the reference's order; the horizontal passes (one
// long dependency chain per row) and the strip remainders use the
// reference's kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/nonlinear_recursive_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/nonlinear_recursive_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Both vertical passes of columns [s0, s1) of one strip and the result;
// returns the first column left to the scalar kernels.
uint32_t VerticalStrip(const uint8_t* src, uint32_t srcStride, const recursive::Params* p,
                       const recursive::Planes* pl, uint32_t s0, uint32_t s1, float* n, float* d, uint8_t* dst,
                       uint32_t dstStride) {
#if HWY_ARCH_ARM_V7
    // 32-bit ARM vectors flush subnormal floats, which the decaying states
    // reach: the scalar kernels do the whole strip there.
    (void)src, (void)srcStride, (void)p, (void)pl, (void)s1, (void)n, (void)d, (void)dst, (void)dstStride;
    return s0;
#else
    const hn::ScalableTag<float> df;
    const hn::RebindToSigned<decltype(df)> di;
    const hn::Rebind<uint8_t, decltype(df)> d8;
    const size_t L = hn::Lanes(df);
    const uint32_t end = s0 + static_cast<uint32_t>((s1 - s0) / L * L);
    const auto alpha = hn::Set(df, p->alpha), beta = hn::Set(df, p->beta), half = hn::Set(df, 0.5f);
    const uint32_t h = pl->height;
    auto step = [&](const uint8_t* a, const uint8_t* b, size_t x) {
        const auto va = hn::PromoteTo(di, hn::LoadU(d8, a + x)), vb = hn::PromoteTo(di, hn::LoadU(d8, b + x));
        return hn::Mul(alpha, hn::GatherIndex(df, p->color, hn::Abs(hn::Sub(va, vb))));
    };
    for (uint32_t y = h; y-- > 0;) {
        const float* hn_ = pl->num + size_t{y} * pl->width;
        const float* hd = pl->den + size_t{y} * pl->width;
        float* un = pl->upNum + size_t{y} * pl->pitch;
        float* ud = pl->upDen + size_t{y} * pl->pitch;
        const uint8_t* in = src + size_t{y} * srcStride;
        for (size_t x = s0; x < end; x += L) {
            const auto bn = hn::Mul(beta, hn::LoadU(df, hn_ + x)), bd = hn::Mul(beta, hn::LoadU(df, hd + x));
            const size_t i = x - s0;
            if (y + 1 == h) {
                hn::StoreU(bn, df, un + i);
                hn::StoreU(bd, df, ud + i);
                continue;
            }
            const auto a = step(in, in + srcStride, x);
            hn::StoreU(hn::Add(bn, hn::Mul(a, hn::LoadU(df, un + pl->pitch + i))), df, un + i);
            hn::StoreU(hn::Add(bd, hn::Mul(a, hn::LoadU(df, ud + pl->pitch + i))), df, ud + i);
        }
    }
    for (uint32_t y = 0; y < h; ++y) {
        const float* hn_ = pl->num + size_t{y} * pl->width;
        const float* hd = pl->den + size_t{y} * pl->width;
        const float* un = pl->upNum + size_t{y} * pl->pitch;
        const float* ud = pl->upDen + size_t{y} * pl->pitch;
        const uint8_t* in = src + size_t{y} * srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        for (size_t x = s0; x < end; x += L) {
            const size_t i = x - s0;
            auto vn = hn::Mul(beta, hn::LoadU(df, hn_ + x)), vd = hn::Mul(beta, hn::LoadU(df, hd + x));
            if (y > 0) {
                const auto a = step(in, in - srcStride, x);
                vn = hn::Add(vn, hn::Mul(a, hn::LoadU(df, n + i)));
                vd = hn::Add(vd, hn::Mul(a, hn::LoadU(df, d + i)));
            }
            hn::StoreU(vn, df, n + i);
            hn::StoreU(vd, df, d + i);
            const auto q = hn::Div(hn::Add(vn, hn::LoadU(df, un + i)), hn::Add(vd, hn::LoadU(df, ud + i)));
            hn::StoreU(hn::DemoteTo(d8, hn::ConvertTo(di, hn::Add(q, half))), d8, out + x);
        }
    }
    return end;
#endif
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "memory/scratch.h"
#include "pixora/types.h"
#include "simd/filters/nonlinear_v.h"

namespace pxr {
HWY_EXPORT(VerticalStrip);

static uint32_t verticalStrip(const uint8_t* src, uint32_t srcStride, const recursive::Params* p,
                              const recursive::Planes* pl, uint32_t s0, uint32_t s1, float* n, float* d,
                              uint8_t* dst, uint32_t dstStride) {
    return HWY_DYNAMIC_DISPATCH(VerticalStrip)(src, srcStride, p, pl, s0, s1, n, d, dst, dstStride);
}
}  // namespace pxr

int pxrBilateralFilterRecursiveu8V(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                                   uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    using namespace pxr::recursive;
    const size_t floats = scratchFloats(width, height);
    if (!floats) return PIXORA_STATUS_NO_SCRATCH;
    pxr::ScratchArray<float> buf(floats, 64);
    if (!buf) return PIXORA_STATUS_NO_SCRATCH;
    const Params p = makeParams(sigmaColor, sigmaSpace);
    const uint32_t pitch = std::min(width, kStrip);
    const size_t plane = size_t{width} * height, strip = size_t{height} * pitch;
    const Planes pl{buf.data(), buf.data() + plane, buf.data() + 2 * plane, buf.data() + 2 * plane + strip,
                    width, height, pitch};
    float* n = pl.upDen + strip;
    float* d = n + pitch;
    for (uint32_t y = 0; y < height; ++y)
        horizontalRow(src + size_t{y} * srcStride, width, p, pl.num + size_t{y} * width, pl.den + size_t{y} * width);
    for (uint32_t s0 = 0; s0 < width; s0 += pitch) {
        const uint32_t s1 = std::min(width, s0 + pitch);
        const uint32_t rest = pxr::verticalStrip(src, srcStride, &p, &pl, s0, s1, n, d, dst, dstStride);
        if (rest == s1) continue;
        upwardColumns(src, srcStride, p, pl, s0, rest, s1);
        for (uint32_t y = 0; y < height; ++y)
            downwardRow(src, srcStride, p, pl, s0, rest, s1, y, n, d, dst + size_t{y} * dstStride);
    }
    return PIXORA_STATUS_OK;
}
#endif
