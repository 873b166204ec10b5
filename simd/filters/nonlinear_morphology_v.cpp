// Erosion and dilation, vector kind: 3x3 rows and the NxN column and row
// extremes in whole vectors of bytes (NxN without the padded copy); edge
// columns and short rows by the reference's kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/nonlinear_morphology_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/nonlinear_morphology_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

namespace {

template <class Op>
struct VecOp;
template <>
struct VecOp<morph::Min> {
    template <class V>
    static HWY_INLINE V Apply(V a, V b) { return hn::Min(a, b); }
};
template <>
struct VecOp<morph::Max> {
    template <class V>
    static HWY_INLINE V Apply(V a, V b) { return hn::Max(a, b); }
};

// Calls fn(x) for vectors covering [x0, x1) (x1 - x0 >= lanes); the last
// one overlaps its predecessor, recomputing equal values.
template <class Fn>
HWY_INLINE void Cover(size_t x0, size_t x1, size_t lanes, Fn&& fn) {
    size_t x = x0;
    for (; x + lanes <= x1; x += lanes) fn(x);
    if (x < x1) fn(x1 - lanes);
}

template <class Op>
void Filter3(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
             uint32_t dstStride, bool constant, uint8_t value) {
    using V = VecOp<Op>;
    const hn::ScalableTag<uint8_t> d;
    const size_t L = hn::Lanes(d);
    for (uint32_t y = 0; y < height; ++y) {
        const morph::Rows3 r = morph::rows3(src, height, srcStride, y);
        uint8_t* out = dst + size_t{y} * dstStride;
        if (width > 2 && width - 2 < L) {
            morph::span3<Op>(r.t, r.m, r.b, out, 1, width - 1);
        } else if (width > 2) {
            Cover(1, width - 1, L, [&](size_t x) {
                auto col = [&](size_t i) {
                    return V::Apply(V::Apply(hn::LoadU(d, r.t + i), hn::LoadU(d, r.m + i)), hn::LoadU(d, r.b + i));
                };
                hn::StoreU(V::Apply(V::Apply(col(x - 1), col(x)), col(x + 1)), d, out + x);
            });
        }
        morph::edges3<Op>(r, width, height, y, out, constant, value);
    }
}

}  // namespace

void Erode3(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
            uint32_t dstStride, bool constant, uint8_t value) {
    Filter3<morph::Min>(src, width, height, srcStride, dst, dstStride, constant, value);
}
void Dilate3(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
             uint32_t dstStride, bool constant, uint8_t value) {
    Filter3<morph::Max>(src, width, height, srcStride, dst, dstStride, constant, value);
}

namespace {

// Output rows straight from the source: the column extreme of the in-image
// rows of each window goes into the middle of a line whose `half` bytes on
// either side hold the neutral value, then the row extreme of n line
// entries. Rows outside the image would hold the neutral value in the
// padded copy, so leaving them out gives the same extremes.
template <class Op>
void FilterN(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t n, uint8_t* line,
             uint8_t* dst, uint32_t dstStride) {
    using V = VecOp<Op>;
    const hn::ScalableTag<uint8_t> d;
    const size_t L = hn::Lanes(d);
    const uint32_t half = n / 2;
    std::memset(line, Op::kNeutral, half);
    std::memset(line + half + width, Op::kNeutral, half);
    uint8_t* mid = line + half;
    for (uint32_t y = 0; y < height; ++y) {
        const uint32_t r0 = y > half ? y - half : 0, r1 = std::min<uint64_t>(uint64_t{y} + half, height - 1);
        const uint8_t* top = src + size_t{r0} * srcStride;
        const uint32_t rows = r1 - r0 + 1;
        if (width < L) {
            morph::columnExtreme<Op>(top, srcStride, rows, mid, 0, width);
        } else {
            Cover(0, width, L, [&](size_t x) {
                auto v = hn::LoadU(d, top + x);
                for (uint32_t i = 1; i < rows; ++i) v = V::Apply(v, hn::LoadU(d, top + size_t{i} * srcStride + x));
                hn::StoreU(v, d, mid + x);
            });
        }
        uint8_t* out = dst + size_t{y} * dstStride;
        if (width < L) {
            morph::rowExtreme<Op>(line, n, out, 0, width);
        } else {
            Cover(0, width, L, [&](size_t x) {
                auto v = hn::LoadU(d, line + x);
                for (uint32_t i = 1; i < n; ++i) v = V::Apply(v, hn::LoadU(d, line + x + i));
                hn::StoreU(v, d, out + x);
            });
        }
    }
}

}  // namespace

void ErodeN(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t n, uint8_t* line,
            uint8_t* dst, uint32_t dstStride) {
    FilterN<morph::Min>(src, width, height, srcStride, n, line, dst, dstStride);
}
void DilateN(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t n, uint8_t* line,
             uint8_t* dst, uint32_t dstStride) {
    FilterN<morph::Max>(src, width, height, srcStride, n, line, dst, dstStride);
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "memory/scratch.h"
#include "pixora/types.h"
#include "simd/filters/nonlinear_v.h"

namespace pxr {
HWY_EXPORT(Erode3);
HWY_EXPORT(Dilate3);
HWY_EXPORT(ErodeN);
HWY_EXPORT(DilateN);

namespace {

template <bool Erode>
void filter3(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
             uint32_t dstStride, bool constant, uint8_t value) {
    if (Erode)
        HWY_DYNAMIC_DISPATCH(Erode3)(src, width, height, srcStride, dst, dstStride, constant, value);
    else
        HWY_DYNAMIC_DISPATCH(Dilate3)(src, width, height, srcStride, dst, dstStride, constant, value);
}

template <bool Erode>
int filterN(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t n, uint8_t* dst,
            uint32_t dstStride) {
    // The same request as the reference's padded copy, so both kinds meet
    // the same scratch limits; only its first line is used here.
    morph::Padded p;
    if (!morph::paddedShape(width, height, n, p)) return PIXORA_STATUS_NO_SCRATCH;
    ScratchArray<uint8_t> buf(p.bytes(), 16);
    if (!buf) return PIXORA_STATUS_NO_SCRATCH;
    if (Erode)
        HWY_DYNAMIC_DISPATCH(ErodeN)(src, width, height, srcStride, n, buf.data(), dst, dstStride);
    else
        HWY_DYNAMIC_DISPATCH(DilateN)(src, width, height, srcStride, n, buf.data(), dst, dstStride);
    return PIXORA_STATUS_OK;
}

}  // namespace
}  // namespace pxr

void pxrFilterErode3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride) {
    pxr::filter3<true>(src, srcWidth, srcHeight, srcStride, dst, dstStride, false, 0);
}

void pxrFilterDilate3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint8_t* dst, uint32_t dstStride) {
    pxr::filter3<false>(src, srcWidth, srcHeight, srcStride, dst, dstStride, false, 0);
}

int pxrFilterErode3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    pxr::filter3<true>(src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType == 1, borderValue);
    return PIXORA_STATUS_OK;
}

int pxrFilterDilate3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    pxr::filter3<false>(src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType == 1, borderValue);
    return PIXORA_STATUS_OK;
}

int pxrFilterErodeNxNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint32_t N,
                         uint8_t* dst, uint32_t dstStride) {
    return pxr::filterN<true>(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}

int pxrFilterDilateNxNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint32_t N, uint8_t* dst, uint32_t dstStride) {
    return pxr::filterN<false>(src, srcWidth, srcHeight, srcStride, N, dst, dstStride);
}
#endif
