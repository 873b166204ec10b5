// Pyramidal Lucas-Kanade tracking, vector kind: the reference's core with
// vector patch kernels. Window columns sit in lanes: the bilinear samples
// and the derivatives are element-wise; the sums keep one accumulator per
// column in each lane, added down the rows, and the column totals are added
// in the reference's order (eight running sums in two four-lane vectors,
// then its fixed tree), so every float comes out bit for bit the same at
// any vector width. The sampler keeps each row's across values for the row
// below, and the derivatives each source row's taps for the two output
// rows below; samples with a pixel outside the image, and spans narrower
// than four columns, use the reference's scalar code.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/features/tracking/lk_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include <algorithm>
#include <utility>

#include "features/tracking/lk_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::lk::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Column blocks. A span of n columns is covered by vectors of one width:
// the widest that fits in n (at most 16 lanes; the b sums take the widest
// that still gives two vectors, whose narrower loads run faster there),
// whole vectors from the left and a last one ending at n, which overlaps
// the one before and recomputes identical values. Up to four blocks go
// down the rows together, so that their accumulators form independent
// chains; the sums store the last block first, so that the loads of the
// column totals usually find one store that holds all their lanes.
// Spans narrower than four columns use the reference's scalar code.
inline constexpr int32_t kMaxBlocks = kChunkCapacity;  // one-lane vectors included
inline constexpr int kGroup = 4;

template <class D, class Body>
HWY_INLINE void BlocksOfTag(D d, int32_t n, Body& body) {
    const int32_t N = static_cast<int32_t>(hn::Lanes(d));
    int32_t at[kMaxBlocks + kGroup];
    int32_t count = 0;
    for (int32_t c = 0; c + N <= n; c += N) at[count++] = c;
    if (at[count - 1] + N < n) at[count++] = n - N;
    for (int32_t g = 0; g < count; g += kGroup) {
        switch (std::min(kGroup, count - g)) {
            case 1: body.template operator()<1>(d, at + g); break;
            case 2: body.template operator()<2>(d, at + g); break;
            case 3: body.template operator()<3>(d, at + g); break;
            default: body.template operator()<4>(d, at + g); break;
        }
    }
}

// f(k) for k = 0 .. K-1 as compile-time constants, so that arrays indexed
// by k stay in registers.
template <int K, class F>
HWY_INLINE void Each(F&& f) {
    [&]<int... k>(std::integer_sequence<int, k...>) HWY_ATTR { (f(std::integral_constant<int, k>{}), ...); }
    (std::make_integer_sequence<int, K>{});
}

// n columns (at most kChunkCapacity): body<K>(d, offsets) for groups of
// blocks of the widest vector that gives at least Min of them, or
// scalar(0, n) when n < 4.
template <int Min = 1, class Body, class Scalar>
HWY_INLINE void ColumnGroups(int32_t n, Body&& body, Scalar&& scalar) {
    const hn::CappedTag<float, 16> d16;
    const hn::CappedTag<float, 8> d8;
    const hn::CappedTag<float, 4> d4;
    if (n >= Min * static_cast<int32_t>(hn::Lanes(d16)))
        BlocksOfTag(d16, n, body);
    else if (n >= Min * static_cast<int32_t>(hn::Lanes(d8)))
        BlocksOfTag(d8, n, body);
    else if (n >= static_cast<int32_t>(hn::Lanes(d4)) && n >= 4)
        BlocksOfTag(d4, n, body);
    else
        scalar(0, n);
}

// Bytes at p as float lanes of d.
template <class D>
HWY_INLINE hn::Vec<D> Pixels(D d, const uint8_t* p) {
    const hn::Rebind<uint8_t, D> d8;
    const hn::Rebind<int32_t, D> di;
    return hn::ConvertTo(d, hn::PromoteTo(di, hn::LoadU(d8, p)));
}

// The across value of a row: p[k] (1 - ax) + p[k + 1] ax.
template <class D>
HWY_INLINE hn::Vec<D> Across(D d, const uint8_t* p, hn::Vec<D> x0, hn::Vec<D> x1) {
    return hn::Add(hn::Mul(Pixels(d, p), x0), hn::Mul(Pixels(d, p + 1), x1));
}

int SamplePatch(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, float* dst, int32_t n,
                int32_t m, float cx, float cy) {
    SampleSetup s;
    if (const int rc = setupSample(src, width, height, dst, n, m, cx, cy, s)) return rc;
    // Samples with a pixel outside: the reference's edge code.
    if (s.lo > 0 || s.hi < n)
        for (int64_t r = 0; r < m; ++r)
            sampleEdges(s, s.row(src, height, stride, r), s.row(src, height, stride, r + 1), width,
                        dst + static_cast<size_t>(r) * static_cast<size_t>(n), n);
    if (s.hi <= s.lo) return 0;
    // The others in column blocks down the rows, each row's across values
    // computed once and kept for the sample below.
    const int32_t span = static_cast<int32_t>(s.hi - s.lo);
    float* out0 = dst + s.lo;
    const Weights w = s.w;
    const uint8_t* const base = src + s.inside.x;
    const int64_t iy = s.iy, lastY = int64_t{height} - 1;
    const bool rowsInside = iy >= 0 && iy + m <= lastY;
    auto rowAt = [base, iy, lastY, stride](int64_t r) HWY_ATTR {
        return base + static_cast<size_t>(std::clamp<int64_t>(iy + r, 0, lastY)) * stride;
    };
    auto body = [&]<int K>(auto d, const int32_t* at) HWY_ATTR {
        using V = hn::Vec<decltype(d)>;
        const V x0 = hn::Set(d, w.x0), x1 = hn::Set(d, w.x1), y0 = hn::Set(d, w.y0), y1 = hn::Set(d, w.y1);
        int32_t off[K];
        V above[K];
        const uint8_t* top = rowAt(0);
        Each<K>([&](auto k) HWY_ATTR {
            off[k] = at[k];
            above[k] = Across(d, top + off[k], x0, x1);
        });
        float* out = out0;
        const int32_t rows = m, step = n;
        auto down = [&](const uint8_t* row) HWY_ATTR {
            Each<K>([&](auto k) HWY_ATTR {
                const V below = Across(d, row + off[k], x0, x1);
                hn::StoreU(hn::Add(hn::Mul(above[k], y0), hn::Mul(below, y1)), d, out + off[k]);
                above[k] = below;
            });
        };
        if (rowsInside) {
            for (int32_t r = 0; r < rows; ++r, out += step) down(top += stride);
        } else {
            for (int32_t r = 0; r < rows; ++r, out += step) down(rowAt(r + 1));
        }
    };
    auto scalar = [&](int32_t a, int32_t b) {
        for (int32_t r = 0; r < m; ++r)
            bilinearSpan(rowAt(r) + a, rowAt(r + 1) + a, out0 + static_cast<size_t>(r) * n + a, b - a, w);
    };
    if (span > kChunkCapacity) {
        for (int32_t first = 0; first < span;) {
            const int32_t len = chunkLength(first, span);
            auto shifted = [&]<int K>(auto d, const int32_t* at) HWY_ATTR {
                int32_t moved[K];
                for (int k = 0; k < K; ++k) moved[k] = at[k] + first;
                body.template operator()<K>(d, moved);
            };
            auto scalarShifted = [&](int32_t a, int32_t b) { scalar(a + first, b + first); };
            ColumnGroups(len, shifted, scalarShifted);
            first += len;
        }
    } else {
        ColumnGroups(span, body, scalar);
    }
    return 0;
}

void Derivatives(const float* src, int32_t srcStride, int32_t width, int32_t height, float* ix, float* iy,
                 int32_t dstStride) {
    for (int32_t first = 0; first < width;) {
        const int32_t len = chunkLength(first, width);
        const float* const s0 = src + first;
        float* const ox0 = ix + first;
        float* const oy0 = iy + first;
        // Each group of blocks goes down all the rows, loading each source
        // row once: its three taps become the centre row of the output row
        // below and the upper row of the one after.
        auto body = [&]<int K>(auto d, const int32_t* at) HWY_ATTR {
            using V = hn::Vec<decltype(d)>;
            const V centre = hn::Set(d, kScharrCentre), side = hn::Set(d, kScharrSide);
            int32_t off[K];
            V u0[K], u1[K], u2[K], c0[K], c1[K], c2[K];
            const float* row = s0;
            const int32_t ss = srcStride;
            Each<K>([&](auto k) HWY_ATTR {
                off[k] = at[k];
                u0[k] = hn::LoadU(d, row + off[k]);
                u1[k] = hn::LoadU(d, row + off[k] + 1);
                u2[k] = hn::LoadU(d, row + off[k] + 2);
                c0[k] = hn::LoadU(d, row + ss + off[k]);
                c1[k] = hn::LoadU(d, row + ss + off[k] + 1);
                c2[k] = hn::LoadU(d, row + ss + off[k] + 2);
            });
            row += 2 * static_cast<ptrdiff_t>(ss);
            float* ox = ox0;
            float* oy = oy0;
            const int32_t rows = height, ds = dstStride;
            for (int32_t r = 0; r < rows; ++r, row += ss, ox += ds, oy += ds) {
                Each<K>([&](auto k) HWY_ATTR {
                    const int32_t x = off[k];
                    const V l0 = hn::LoadU(d, row + x), l1 = hn::LoadU(d, row + x + 1), l2 = hn::LoadU(d, row + x + 2);
                    const V e0 = hn::Add(hn::Mul(centre, c0[k]), hn::Mul(side, hn::Add(u0[k], l0)));
                    const V e2 = hn::Add(hn::Mul(centre, c2[k]), hn::Mul(side, hn::Add(u2[k], l2)));
                    hn::StoreU(hn::Sub(e2, e0), d, ox + x);
                    const V d0 = hn::Sub(l0, u0[k]), d1 = hn::Sub(l1, u1[k]), d2 = hn::Sub(l2, u2[k]);
                    hn::StoreU(hn::Add(hn::Mul(centre, d1), hn::Mul(side, hn::Add(d0, d2))), d, oy + x);
                    u0[k] = c0[k], u1[k] = c1[k], u2[k] = c2[k];
                    c0[k] = l0, c1[k] = l1, c2[k] = l2;
                });
            }
        };
        auto scalar = [&](int32_t a, int32_t b) {
            for (int32_t r = 0; r < height; ++r) {
                const float* u = s0 + static_cast<ptrdiff_t>(r) * srcStride;
                derivativeRow(u, u + srcStride, u + 2 * static_cast<ptrdiff_t>(srcStride),
                              ox0 + static_cast<ptrdiff_t>(r) * dstStride, oy0 + static_cast<ptrdiff_t>(r) * dstStride,
                              a, b);
            }
        };
        ColumnGroups(len, body, scalar);
        first += len;
    }
}

// addColumns in lanes: sums 0-3 and 4-7 as two four-lane vectors, the same
// additions in the same order (a sum no column reaches stays 0, and adding
// 0 to a sum, which is never -0, leaves it as it is), then the same tree.
// The last columns come from a load ending at column n, shifted down.
HWY_INLINE float AddColumns(float total, const float* columns, int32_t n) {
#if HWY_TARGET == HWY_SCALAR
    return addColumns(total, columns, n);
#else
    if (n < 4) return addColumns(total, columns, n);
    const hn::FixedTag<float, 4> d;
    auto lo = hn::Zero(d), hi = hn::Zero(d);
    int32_t c = 0;
    for (; c + 8 <= n; c += 8) {
        lo = hn::Add(lo, hn::LoadU(d, columns + c));
        hi = hn::Add(hi, hn::LoadU(d, columns + c + 4));
    }
    int32_t rest = n - c;
    if (rest >= 4) {
        lo = hn::Add(lo, hn::LoadU(d, columns + c));
        rest -= 4;
    }
    if (rest > 0) {
        const auto last = hn::LoadU(d, columns + n - 4);
        const auto tail = rest == 1 ? hn::ShiftRightLanes<3>(d, last)
                          : rest == 2 ? hn::ShiftRightLanes<2>(d, last)
                                      : hn::ShiftRightLanes<1>(d, last);
        if (n - c >= 4)
            hi = hn::Add(hi, tail);
        else
            lo = hn::Add(lo, tail);
    }
    const auto l2 = hn::Add(lo, hn::Shuffle2301(lo)), h2 = hn::Add(hi, hn::Shuffle2301(hi));
    const auto l4 = hn::Add(l2, hn::Shuffle1032(l2)), h4 = hn::Add(h2, hn::Shuffle1032(h2));
    return total + (hn::GetLane(l4) + hn::GetLane(h4));
#endif
}

GradientSums GradientSumsOf(const float* ix, const float* iy, int32_t stride, int32_t width, int32_t height) {
    auto chunk = [&](int32_t first, int32_t n, float* xx, float* xy, float* yy) HWY_ATTR {
        const float* x0 = ix + first;
        const float* y0 = iy + first;
        auto body = [&]<int K>(auto d, const int32_t* at) HWY_ATTR {
            using V = hn::Vec<decltype(d)>;
            int32_t off[K];
            V sxx[K], sxy[K], syy[K];
            Each<K>([&](auto k) HWY_ATTR {
                off[k] = at[k];
                sxx[k] = sxy[k] = syy[k] = hn::Zero(d);
            });
            const float* px = x0;
            const float* py = y0;
            const int32_t rows = height, step = stride;
            for (int32_t r = 0; r < rows; ++r, px += step, py += step) {
                Each<K>([&](auto k) HWY_ATTR {
                    const V vx = hn::LoadU(d, px + off[k]), vy = hn::LoadU(d, py + off[k]);
                    sxx[k] = hn::Add(sxx[k], hn::Mul(vx, vx));
                    sxy[k] = hn::Add(sxy[k], hn::Mul(vx, vy));
                    syy[k] = hn::Add(syy[k], hn::Mul(vy, vy));
                });
            }
            Each<K>([&](auto j) HWY_ATTR {  // the last block first
                constexpr int k = K - 1 - j;
                hn::StoreU(sxx[k], d, xx + off[k]);
                hn::StoreU(sxy[k], d, xy + off[k]);
                hn::StoreU(syy[k], d, yy + off[k]);
            });
        };
        auto scalar = [&](int32_t a, int32_t b) { gradientColumns(x0, y0, stride, height, a, b, xx, xy, yy); };
        ColumnGroups(n, body, scalar);
    };
    float xx[kChunkCapacity], xy[kChunkCapacity], yy[kChunkCapacity];
    GradientSums s{0.0f, 0.0f, 0.0f};
    for (int32_t first = 0; first < width;) {
        const int32_t n = chunkLength(first, width);
        chunk(first, n, xx, xy, yy);
        s.xx = AddColumns(s.xx, xx, n);
        s.xy = AddColumns(s.xy, xy, n);
        s.yy = AddColumns(s.yy, yy, n);
        first += n;
    }
    return s;
}

Mismatch MismatchOf(const float* i, int32_t iStride, const float* j, const float* ix, const float* iy,
                    int32_t dStride, int32_t width, int32_t height) {
    auto chunk = [&](int32_t first, int32_t n, float* bx, float* by) HWY_ATTR {
        const float* i0 = i + first;
        const float* j0 = j + first;
        const float* x0 = ix + first;
        const float* y0 = iy + first;
        auto body = [&]<int K>(auto d, const int32_t* at) HWY_ATTR {
            using V = hn::Vec<decltype(d)>;
            int32_t off[K];
            V sx[K], sy[K];
            Each<K>([&](auto k) HWY_ATTR {
                off[k] = at[k];
                sx[k] = sy[k] = hn::Zero(d);
            });
            const float *pi = i0, *pj = j0, *px = x0, *py = y0;
            const int32_t rows = height, is = iStride, js = width, ds = dStride;
            for (int32_t r = 0; r < rows; ++r, pi += is, pj += js, px += ds, py += ds) {
                Each<K>([&](auto k) HWY_ATTR {
                    const V diff = hn::Sub(hn::LoadU(d, pi + off[k]), hn::LoadU(d, pj + off[k]));
                    sx[k] = hn::Add(sx[k], hn::Mul(diff, hn::LoadU(d, px + off[k])));
                    sy[k] = hn::Add(sy[k], hn::Mul(diff, hn::LoadU(d, py + off[k])));
                });
            }
            Each<K>([&](auto j) HWY_ATTR {  // the last block first
                constexpr int k = K - 1 - j;
                hn::StoreU(sx[k], d, bx + off[k]);
                hn::StoreU(sy[k], d, by + off[k]);
            });
        };
        auto scalar = [&](int32_t a, int32_t b) {
            mismatchColumns(i0, iStride, j0, width, x0, y0, dStride, height, a, b, bx, by);
        };
        ColumnGroups<2>(n, body, scalar);
    };
    float bx[kChunkCapacity], by[kChunkCapacity];
    Mismatch s{0.0f, 0.0f};
    for (int32_t first = 0; first < width;) {
        const int32_t n = chunkLength(first, width);
        chunk(first, n, bx, by);
        s.x = AddColumns(s.x, bx, n);
        s.y = AddColumns(s.y, by, n);
        first += n;
    }
    return s;
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
