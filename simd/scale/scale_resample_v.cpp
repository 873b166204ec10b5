// Resampling to a given size, vector kind: the row passes of nearest
// neighbour (32-bit gathers), bilinear (16-bit vertical blend, gathered
// horizontal pairs) and exact area (32-bit vertical sums). Tables, scratch
// and the area division are the reference's (scale_resample_drivers.h).
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/scale/scale_resample_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/scale/scale_resample_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::scale::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR
// One lane: the reference's row passes.
void NearestRow(const uint8_t* row, const uint32_t* index, uint8_t* out, uint32_t n, uint32_t /*srcWidth*/) {
    for (uint32_t x = 0; x < n; ++x) out[x] = row[index[x]];
}
void LinearVertical(const uint8_t* top, const uint8_t* bottom, uint32_t g, uint16_t* sums, uint32_t n) {
    resample::linearVertical(top, bottom, g, sums, 0, n);
}
void LinearHorizontal(const uint16_t* sums, const uint32_t* index, const uint32_t* frac, uint8_t* out, uint32_t n,
                      uint32_t /*srcWidth*/) {
    resample::linearHorizontal(sums, index, frac, out, 0, n);
}
void AreaVertical(const uint8_t* row, uint32_t stride, const uint32_t* weights, uint32_t taps, uint32_t* sums,
                  uint32_t n) {
    resample::areaVertical(row, stride, weights, taps, sums, 0, n);
}
#else
// Gathers take signed 32-bit byte offsets.
constexpr uint32_t kGatherLimit = 1u << 30;

// Columns x in [0, n) whose 4-byte gather at index[x] stays inside the row
// (index is non-decreasing).
inline uint32_t gatherable(const uint32_t* index, uint32_t n, uint32_t srcBytes, uint32_t width) {
    if (srcBytes < width || srcBytes >= kGatherLimit) return 0;
    while (n > 0 && index[n - 1] + width > srcBytes) --n;
    return n;
}

void NearestRow(const uint8_t* row, const uint32_t* index, uint8_t* out, uint32_t n, uint32_t srcWidth) {
    const hn::ScalableTag<int32_t> di;
    const hn::RebindToUnsigned<decltype(di)> du;
    const hn::Rebind<uint8_t, decltype(di)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(di));
    const uint32_t safe = gatherable(index, n, srcWidth, 4);
    const auto mask = hn::Set(di, 0xFF);
    uint32_t x = 0;
    for (; x + N <= safe; x += N) {
        const auto offsets = hn::BitCast(di, hn::LoadU(du, index + x));
        const auto v = hn::And(hn::GatherOffset(di, reinterpret_cast<const int32_t*>(row), offsets), mask);
        hn::StoreU(hn::DemoteTo(d8, v), d8, out + x);
    }
    for (; x < n; ++x) out[x] = row[index[x]];
}

void LinearVertical(const uint8_t* top, const uint8_t* bottom, uint32_t g, uint16_t* sums, uint32_t n) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    const auto wt = hn::Set(d16, static_cast<uint16_t>(resample::kOne - g)), wb = hn::Set(d16, static_cast<uint16_t>(g));
    uint32_t c = 0;
    for (; c + N <= n; c += N) {
        const auto t = hn::PromoteTo(d16, hn::LoadU(d8, top + c));
        const auto b = hn::PromoteTo(d16, hn::LoadU(d8, bottom + c));
        hn::StoreU(hn::Add(hn::Mul(t, wt), hn::Mul(b, wb)), d16, sums + c);
    }
    resample::linearVertical(top, bottom, g, sums, c, n);
}

// Each output gathers the 32-bit pair (sums[i], sums[i + 1]) and forms
// s0 (128 - f) + s1 f in 32-bit lanes.
void LinearHorizontal(const uint16_t* sums, const uint32_t* index, const uint32_t* frac, uint8_t* out, uint32_t n,
                      uint32_t srcWidth) {
    const hn::ScalableTag<int32_t> di;
    const hn::RebindToUnsigned<decltype(di)> du;
    const hn::Rebind<uint8_t, decltype(di)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(di));
    // sums has srcWidth + 1 entries: every pair lies inside.
    const uint32_t safe = srcWidth < kGatherLimit / 2 ? n : 0;
    const auto low = hn::Set(du, 0xFFFF), one = hn::Set(du, resample::kOne), half = hn::Set(du, 1u << 13);
    uint32_t x = 0;
    for (; x + N <= safe; x += N) {
        const auto offsets = hn::BitCast(di, hn::ShiftLeft<1>(hn::LoadU(du, index + x)));
        const auto pair = hn::BitCast(du, hn::GatherOffset(di, reinterpret_cast<const int32_t*>(sums), offsets));
        const auto f = hn::LoadU(du, frac + x);
        const auto sum = hn::Add(hn::Add(hn::Mul(hn::And(pair, low), hn::Sub(one, f)),
                                         hn::Mul(hn::ShiftRight<16>(pair), f)),
                                 half);
        hn::StoreU(hn::DemoteTo(d8, hn::BitCast(di, hn::ShiftRight<14>(sum))), d8, out + x);
    }
    resample::linearHorizontal(sums, index, frac, out, x, n);
}

void AreaVertical(const uint8_t* row, uint32_t stride, const uint32_t* weights, uint32_t taps, uint32_t* sums,
                  uint32_t n) {
    const hn::ScalableTag<uint32_t> d32;
    const hn::Rebind<uint8_t, decltype(d32)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d32));
    uint32_t c = 0;
    for (; c + N <= n; c += N) {
        auto acc = hn::Mul(hn::PromoteTo(d32, hn::LoadU(d8, row + c)), hn::Set(d32, weights[0]));
        for (uint32_t t = 1; t < taps; ++t)
            acc = hn::Add(acc, hn::Mul(hn::PromoteTo(d32, hn::LoadU(d8, row + size_t{t} * stride + c)),
                                       hn::Set(d32, weights[t])));
        hn::StoreU(acc, d32, sums + c);
    }
    if (c < n) resample::areaVertical(row + c, stride, weights, taps, sums + c, 0, n - c);
}

#endif  // HWY_TARGET == HWY_SCALAR

}  // namespace pxr::scale::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "imgproc/scale/scale_resample_drivers.h"
#include "simd/scale/scale_v.h"

namespace pxr::scale {
HWY_EXPORT(NearestRow);
HWY_EXPORT(LinearVertical);
HWY_EXPORT(LinearHorizontal);
HWY_EXPORT(AreaVertical);

static void nearestRow(const uint8_t* row, const uint32_t* index, uint8_t* out, uint32_t n, uint32_t srcWidth) {
    HWY_DYNAMIC_DISPATCH(NearestRow)(row, index, out, n, srcWidth);
}
static void linearVertical(const uint8_t* top, const uint8_t* bottom, uint32_t g, uint16_t* sums, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(LinearVertical)(top, bottom, g, sums, n);
}
static void linearHorizontal(const uint16_t* sums, const uint32_t* index, const uint32_t* frac, uint8_t* out,
                             uint32_t n, uint32_t srcWidth) {
    HWY_DYNAMIC_DISPATCH(LinearHorizontal)(sums, index, frac, out, n, srcWidth);
}
static void areaVertical(const uint8_t* row, uint32_t stride, const uint32_t* weights, uint32_t taps,
                         uint32_t* sums, uint32_t n) {
    HWY_DYNAMIC_DISPATCH(AreaVertical)(row, stride, weights, taps, sums, n);
}

static constexpr resample::Kernels kVector{nearestRow, linearVertical, linearHorizontal, areaVertical};

}  // namespace pxr::scale

using pxr::scale::kVector;
using pxr::scale::resample::Image;

void pxrScaleDownNNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    pxr::scale::resample::nearest(Image{src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride},
                                  kVector);
}

void pxrScaleDownu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                     uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    pxr::scale::resample::area(Image{src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride},
                               kVector);
}

void pxrScaleDownBLu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    pxr::scale::resample::linear(Image{src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride},
                                 kVector);
}

int pxrScaleu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride) {
    return pxr::scale::resample::linear(
        Image{src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride}, kVector);
}

int pxrScaleu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                   uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride, uint32_t interpolation) {
    return pxr::scale::resample::scale(
        Image{src, srcWidth, srcHeight, srcStride, dst, dstWidth, dstHeight, dstStride}, interpolation, kVector);
}
#endif
