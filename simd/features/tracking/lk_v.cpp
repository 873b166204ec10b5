// Pyramidal Lucas-Kanade tracking, vector kind: the reference's core with
// vector patch kernels. Window columns sit in lanes: the bilinear samples
// and the derivatives are element-wise; the sums keep one accumulator per
// column in each lane, added down the rows, and the column totals are added
// left to right in scalar code, exactly the reference's order, so every
// float comes out bit for bit the same at any vector width. A row is done
// in vectors of up to 16 lanes, its tail in a narrower vector that overlaps
// columns already done (recomputing identical values); spans narrower than
// four columns use the reference's scalar kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/features/tracking/lk_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "features/tracking/lk_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::lk::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Calls block(d, c) for vectors of d's lanes covering columns [a, b); a
// tail narrower than half a vector goes to a narrower tag, otherwise to a
// last vector that ends at b. Spans narrower than every vector go to
// scalar(a, b).
template <size_t kCap, class Block, class Scalar>
HWY_INLINE void BlocksOf(int32_t a, int32_t b, Block& block, Scalar& scalar) {
    const hn::CappedTag<float, kCap> d;
    const int32_t N = static_cast<int32_t>(hn::Lanes(d));
    int32_t c = a;
    for (; c + N <= b; c += N) block(d, c);
    if (c == b) return;
    if constexpr (kCap > 4) {
        if (b - c <= N / 2) {
            BlocksOf<kCap / 2>(c, b, block, scalar);
            return;
        }
    }
    if (b - a >= N)
        block(d, b - N);
    else
        scalar(c, b);
}

template <class Block, class Scalar>
HWY_INLINE void ColumnBlocks(int32_t a, int32_t b, Block&& block, Scalar&& scalar) {
    BlocksOf<16>(a, b, block, scalar);
}

// n samples from the two rows (bilinearSpan's contract).
HWY_INLINE void BilinearSpan(const uint8_t* r0, const uint8_t* r1, float* out, int32_t n, const Weights& w) {
    auto block = [&](auto d, int32_t c) HWY_ATTR {
        using D = decltype(d);
        const hn::Rebind<uint8_t, D> d8;
        const hn::Rebind<int32_t, D> di;
        auto px = [&](const uint8_t* p) HWY_ATTR { return hn::ConvertTo(d, hn::PromoteTo(di, hn::LoadU(d8, p))); };
        const auto top = hn::Add(hn::Mul(px(r0 + c), hn::Set(d, w.w00)), hn::Mul(px(r0 + c + 1), hn::Set(d, w.w01)));
        const auto bottom =
            hn::Add(hn::Mul(px(r1 + c), hn::Set(d, w.w10)), hn::Mul(px(r1 + c + 1), hn::Set(d, w.w11)));
        hn::StoreU(hn::Add(top, bottom), d, out + c);
    };
    auto scalar = [&](int32_t a, int32_t b) { bilinearSpan(r0 + a, r1 + a, out + a, b - a, w); };
    ColumnBlocks(0, n, block, scalar);
}

int SamplePatch(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, float* dst, int32_t n,
                int32_t m, float cx, float cy) {
    auto span = [](const uint8_t* r0, const uint8_t* r1, float* out, int64_t count, const Weights& w) HWY_ATTR {
        BilinearSpan(r0, r1, out, static_cast<int32_t>(count), w);
    };
    return samplePatch(span, src, width, height, stride, dst, n, m, cx, cy);
}

void Derivatives(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                 int32_t dstStride) {
    for (int32_t r = 0; r < height; ++r) {
        const float* u = src + static_cast<ptrdiff_t>(r) * srcStride;
        const float* c = u + srcStride;
        const float* l = c + srcStride;
        float* ox = ix + static_cast<ptrdiff_t>(r) * dstStride;
        float* oy = iy + static_cast<ptrdiff_t>(r) * dstStride;
        auto block = [&](auto d, int32_t x) HWY_ATTR {
            const auto centre = hn::Set(d, kScharrCentre), side = hn::Set(d, kScharrSide);
            const auto u0 = hn::LoadU(d, u + x), u1 = hn::LoadU(d, u + x + 1), u2 = hn::LoadU(d, u + x + 2);
            const auto l0 = hn::LoadU(d, l + x), l1 = hn::LoadU(d, l + x + 1), l2 = hn::LoadU(d, l + x + 2);
            const auto s0 = hn::Add(hn::Mul(centre, hn::LoadU(d, c + x)), hn::Mul(side, hn::Add(u0, l0)));
            const auto s2 = hn::Add(hn::Mul(centre, hn::LoadU(d, c + x + 2)), hn::Mul(side, hn::Add(u2, l2)));
            hn::StoreU(hn::Sub(s2, s0), d, ox + x);
            const auto d0 = hn::Sub(l0, u0), d1 = hn::Sub(l1, u1), d2 = hn::Sub(l2, u2);
            hn::StoreU(hn::Add(hn::Mul(centre, d1), hn::Mul(side, hn::Add(d0, d2))), d, oy + x);
        };
        auto scalar = [&](int32_t a, int32_t b) { derivativeRow(u, c, l, ox, oy, a, b); };
        ColumnBlocks(0, width, block, scalar);
    }
}

GradientSums GradientSumsOf(const float* ix, const float* iy, int32_t stride, int32_t width, int32_t height) {
    auto chunk = [&](int32_t first, int32_t n, float* xx, float* xy, float* yy) HWY_ATTR {
        const float* x0 = ix + first;
        const float* y0 = iy + first;
        auto block = [&](auto d, int32_t c) HWY_ATTR {
            auto sxx = hn::Zero(d), sxy = hn::Zero(d), syy = hn::Zero(d);
            const float* px = x0 + c;
            const float* py = y0 + c;
            for (int32_t r = 0; r < height; ++r, px += stride, py += stride) {
                const auto vx = hn::LoadU(d, px), vy = hn::LoadU(d, py);
                sxx = hn::Add(sxx, hn::Mul(vx, vx));
                sxy = hn::Add(sxy, hn::Mul(vx, vy));
                syy = hn::Add(syy, hn::Mul(vy, vy));
            }
            hn::StoreU(sxx, d, xx + c);
            hn::StoreU(sxy, d, xy + c);
            hn::StoreU(syy, d, yy + c);
        };
        auto scalar = [&](int32_t a, int32_t b) { gradientColumns(x0, y0, stride, height, a, b, xx, xy, yy); };
        ColumnBlocks(0, n, block, scalar);
    };
    return gradientSumsWith(chunk, width);
}

Mismatch MismatchOf(const float* i, int32_t iStride, const float* j, const float* ix, const float* iy,
                    int32_t dStride, int32_t width, int32_t height) {
    auto chunk = [&](int32_t first, int32_t n, float* bx, float* by) HWY_ATTR {
        const float* i0 = i + first;
        const float* j0 = j + first;
        const float* x0 = ix + first;
        const float* y0 = iy + first;
        auto block = [&](auto d, int32_t c) HWY_ATTR {
            auto sx = hn::Zero(d), sy = hn::Zero(d);
            const float *pi = i0 + c, *pj = j0 + c, *px = x0 + c, *py = y0 + c;
            for (int32_t r = 0; r < height; ++r, pi += iStride, pj += width, px += dStride, py += dStride) {
                const auto diff = hn::Sub(hn::LoadU(d, pi), hn::LoadU(d, pj));
                sx = hn::Add(sx, hn::Mul(diff, hn::LoadU(d, px)));
                sy = hn::Add(sy, hn::Mul(diff, hn::LoadU(d, py)));
            }
            hn::StoreU(sx, d, bx + c);
            hn::StoreU(sy, d, by + c);
        };
        auto scalar = [&](int32_t a, int32_t b) {
            mismatchColumns(i0, iStride, j0, width, x0, y0, dStride, height, a, b, bx, by);
        };
        ColumnBlocks(0, n, block, scalar);
    };
    return mismatchWith(chunk, width);
}

}  // namespace pxr::lk::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/features/tracking/tracking_v.h"

namespace pxr::lk {
HWY_EXPORT(SamplePatch);
HWY_EXPORT(Derivatives);
HWY_EXPORT(GradientSumsOf);
HWY_EXPORT(MismatchOf);

namespace {

int sampleV(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, float* dst, int32_t n, int32_t m,
            float cx, float cy) {
    return HWY_DYNAMIC_DISPATCH(SamplePatch)(src, width, height, stride, dst, n, m, cx, cy);
}

GradientSums gradientSumsV(const float* ix, const float* iy, int32_t stride, int32_t width, int32_t height) {
    return HWY_DYNAMIC_DISPATCH(GradientSumsOf)(ix, iy, stride, width, height);
}

Mismatch mismatchV(const float* i, int32_t iStride, const float* j, const float* ix, const float* iy,
                   int32_t dStride, int32_t width, int32_t height) {
    return HWY_DYNAMIC_DISPATCH(MismatchOf)(i, iStride, j, ix, iy, dStride, width, height);
}

constexpr Kernels kVector{&sampleV, &calcIxIy_32fV, &gradientSumsV, &mismatchV};

}  // namespace

const Kernels& vectorKernels() { return kVector; }

void derivativesV(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                  int32_t dstStride) {
    HWY_DYNAMIC_DISPATCH(Derivatives)(src, srcStride, width, height, ix, iy, dstStride);
}

}  // namespace pxr::lk

void calcIxIy_32fV(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                   int32_t dstStride) {
    pxr::lk::derivativesV(src, srcStride, width, height, ix, iy, dstStride);
}

void pxrTrackLKOpticalFlowf32V(const uint8_t* src1, const uint8_t* src2, uint32_t, uint32_t,
                               const pxrPyramidLevel* src1Pyr, const pxrPyramidLevel* src2Pyr, const pxrPyramidLevel*,
                               const pxrPyramidLevel*, const float* featureXY, float* featureXY_out,
                               int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                               int32_t maxIterations, int32_t nPyramidLevels) {
    pxr::lk::trackLevels(pxr::lk::kVector, src1, src2, src1Pyr, src2Pyr, featureXY, featureXY_out, featureStatus,
                         nFeatures, windowWidth, windowHeight, maxIterations, nPyramidLevels);
}

void pxrTrackLKOpticalFlowu8_v2V(const uint8_t* src1, const uint8_t* src2, uint32_t, uint32_t, uint32_t,
                                 const pxrPyramidLevel_v2* src1Pyr, const pxrPyramidLevel_v2* src2Pyr,
                                 const float* featureXY, float* featureXY_out, int32_t* featureStatus,
                                 int32_t nFeatures, int32_t windowWidth, int32_t windowHeight, int32_t maxIterations,
                                 int32_t nPyramidLevels) {
    pxr::lk::trackV2(pxr::lk::kVector, src1, src2, src1Pyr, src2Pyr, featureXY, featureXY_out, featureStatus,
                     nFeatures, windowWidth, windowHeight, maxIterations, nPyramidLevels);
}

int pxrTrackLKOpticalFlowu8_v3V(const uint8_t* src1, const uint8_t* src2, uint32_t, uint32_t, uint32_t,
                                const pxrPyramidLevel_v2* src1Pyr, const pxrPyramidLevel_v2* src2Pyr,
                                const float* featureXY, const float* featureXY_estimate, float* featureXY_out,
                                int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                                int32_t nPyramidLevels, int32_t terminationMode, int32_t maxIterations,
                                float maxEpsilon, int32_t useInitialEstimate) {
    return pxr::lk::trackV3(pxr::lk::kVector, src1, src2, src1Pyr, src2Pyr, featureXY, featureXY_estimate,
                            featureXY_out, featureStatus, nFeatures, windowWidth, windowHeight, nPyramidLevels,
                            terminationMode, maxIterations, maxEpsilon, useInitialEstimate);
}
#endif
