// 3x3 gradient filters, vector kind: Sobel magnitude, the dedicated 3x3
// pass of the Sobel derivatives, central-difference, Sobel and Scharr
// gradients. Each row is done in whole vectors, the last one overlapping the
// one before (it recomputes identical values); rows narrower than a vector
// use the reference's row kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/gradient_3x3_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/gradient_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Bytes at p widened to the lanes of d (int16 or int32).
template <class D> HWY_INLINE hn::Vec<D> Bytes(D d, const uint8_t* p) {
    const hn::Rebind<uint8_t, D> d8;
    return hn::PromoteTo(d, hn::LoadU(d8, p));
}

// The derivatives of the lanes whose left neighbours start at t, m, b.
struct CentralOp {
    template <class D> HWY_INLINE void operator()(D d, const uint8_t* t, const uint8_t* m, const uint8_t* b,
                                                  hn::Vec<D>& dx, hn::Vec<D>& dy) const {
        dx = hn::Sub(Bytes(d, m + 2), Bytes(d, m));
        dy = hn::Sub(Bytes(d, b + 1), Bytes(d, t + 1));
    }
};

struct SobelOp {
    template <class D> HWY_INLINE void operator()(D d, const uint8_t* t, const uint8_t* m, const uint8_t* b,
                                                  hn::Vec<D>& dx, hn::Vec<D>& dy) const {
        const auto tl = Bytes(d, t), tc = Bytes(d, t + 1), tr = Bytes(d, t + 2);
        const auto bl = Bytes(d, b), bc = Bytes(d, b + 1), br = Bytes(d, b + 2);
        const auto mid = hn::Sub(Bytes(d, m + 2), Bytes(d, m));
        dx = hn::Add(hn::Add(hn::Sub(tr, tl), hn::Sub(br, bl)), hn::Add(mid, mid));
        const auto centre = hn::Sub(bc, tc);
        dy = hn::Add(hn::Add(hn::Sub(bl, tl), hn::Sub(br, tr)), hn::Add(centre, centre));
    }
};

struct ScharrOp {
    template <class D> HWY_INLINE void operator()(D d, const uint8_t* t, const uint8_t* m, const uint8_t* b,
                                                  hn::Vec<D>& dx, hn::Vec<D>& dy) const {
        const auto tl = Bytes(d, t), tc = Bytes(d, t + 1), tr = Bytes(d, t + 2);
        const auto bl = Bytes(d, b), bc = Bytes(d, b + 1), br = Bytes(d, b + 2);
        const auto three = hn::Set(d, 3), ten = hn::Set(d, 10);
        dx = hn::Add(hn::Mul(three, hn::Add(hn::Sub(tr, tl), hn::Sub(br, bl))),
                     hn::Mul(ten, hn::Sub(Bytes(d, m + 2), Bytes(d, m))));
        dy = hn::Add(hn::Mul(three, hn::Add(hn::Sub(bl, tl), hn::Sub(br, tr))), hn::Mul(ten, hn::Sub(bc, tc)));
    }
};

// Float source, in the order of grad::sobelF32 (2 x v is formed as v + v,
// which is exact).
struct SobelF32Op {
    template <class D> HWY_INLINE void operator()(D d, const float* t, const float* m, const float* b,
                                                  hn::Vec<D>& dx, hn::Vec<D>& dy) const {
        const auto tl = hn::LoadU(d, t), tc = hn::LoadU(d, t + 1), tr = hn::LoadU(d, t + 2);
        const auto ml = hn::LoadU(d, m), mr = hn::LoadU(d, m + 2);
        const auto bl = hn::LoadU(d, b), bc = hn::LoadU(d, b + 1), br = hn::LoadU(d, b + 2);
        const auto eighth = hn::Set(d, 0.125f);
        const auto left = hn::Add(hn::Add(tl, hn::Add(ml, ml)), bl);
        const auto right = hn::Add(hn::Add(tr, hn::Add(mr, mr)), br);
        dx = hn::Mul(hn::Sub(right, left), eighth);
        const auto dl = hn::Sub(bl, tl), dc = hn::Sub(bc, tc), dr = hn::Sub(br, tr);
        dy = hn::Mul(hn::Add(hn::Add(dl, hn::Add(dc, dc)), dr), eighth);
    }
};

// Conversions of the integer lanes to what is stored.
struct RawConv {
    template <class D, class V> HWY_INLINE V operator()(D, V v) const { return v; }
};
struct Shift3Conv {
    template <class D, class V> HWY_INLINE V operator()(D, V v) const { return hn::ShiftRight<3>(v); }
};
struct FloatConv {  // int32 lanes to float
    template <class D, class V> HWY_INLINE auto operator()(D, V v) const {
        return hn::ConvertTo(hn::Rebind<float, D>(), v);
    }
};
struct EighthConv {  // int32 lanes to float x 0.125
    template <class D, class V> HWY_INLINE auto operator()(D, V v) const {
        const hn::Rebind<float, D> df;
        return hn::Mul(hn::ConvertTo(df, v), hn::Set(df, 0.125f));
    }
};

// Writers of one vector of outputs at output column i.
template <class T, class Conv> struct InterleavedOut {
    T* out;
    template <class D, class V> HWY_INLINE void operator()(D d, uint32_t i, V dx, V dy) const {
        const Conv conv;
        const auto x = conv(d, dx), y = conv(d, dy);
        hn::StoreInterleaved2(x, y, hn::DFromV<decltype(x)>(), out + 2 * size_t{i});
    }
};
template <class T, class Conv> struct PlanarOut {
    T* dx;
    T* dy;
    template <class D, class V> HWY_INLINE void operator()(D d, uint32_t i, V vx, V vy) const {
        const Conv conv;
        const auto x = conv(d, vx), y = conv(d, vy);
        hn::StoreU(x, hn::DFromV<decltype(x)>(), dx + i);
        hn::StoreU(y, hn::DFromV<decltype(y)>(), dy + i);
    }
};
struct PlanarS8Out {  // int16 lanes, shifted, narrowed (exact: -128..127)
    int8_t* dx;
    int8_t* dy;
    template <class D, class V> HWY_INLINE void operator()(D, uint32_t i, V vx, V vy) const {
        const hn::Rebind<int8_t, D> d8;
        hn::StoreU(hn::DemoteTo(d8, hn::ShiftRight<3>(vx)), d8, dx + i);
        hn::StoreU(hn::DemoteTo(d8, hn::ShiftRight<3>(vy)), d8, dy + i);
    }
};
struct MagnitudeOut {  // int16 lanes; the narrowing saturates at 255
    uint8_t* out;
    template <class D, class V> HWY_INLINE void operator()(D, uint32_t i, V vx, V vy) const {
        const hn::Rebind<uint8_t, D> d8;
        hn::StoreU(hn::DemoteTo(d8, hn::Add(hn::Abs(vx), hn::Abs(vy))), d8, out + i);
    }
};
struct DerivativesOut {  // full-size int16 planes, either may be null
    int16_t* dx;
    int16_t* dy;
    template <class D, class V> HWY_INLINE void operator()(D d, uint32_t i, V vx, V vy) const {
        if (dx) hn::StoreU(vx, d, dx + i);
        if (dy) hn::StoreU(vy, d, dy + i);
    }
};

// Output columns [0, n) of one row, n = width - 2; output i belongs to
// source column i + 1. Rows narrower than a vector go to scalarRow().
template <class D, class Src, class Op, class Out, class Scalar>
HWY_INLINE void Row(D d, const Src* t, const Src* m, const Src* b, uint32_t n, Op op, Out out, Scalar scalarRow) {
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d));
    if (n < N) {
        scalarRow();
        return;
    }
    auto one = [&](uint32_t i) HWY_ATTR {
        hn::Vec<D> dx, dy;
        op(d, t + i, m + i, b + i, dx, dy);
        out(d, i, dx, dy);
    };
    uint32_t i = 0;
    for (; i + N <= n; i += N) one(i);
    if (i < n) one(n - N);
}

using D16 = hn::ScalableTag<int16_t>;
using D32 = hn::ScalableTag<int32_t>;
using DF = hn::ScalableTag<float>;

// A packed (width-2) x (height-2) interleaved image.
template <class D, class Src, class T, class Conv, class ScalarConv, class Op, class ScalarOp>
HWY_INLINE void Interleaved(const Src* src, uint32_t w, uint32_t h, uint32_t ss, T* out, uint32_t os, Op op,
                            ScalarOp sop) {
    grad::interiorRows(src, w, h, ss, [&](uint32_t oy, const Src* t, const Src* m, const Src* b) HWY_ATTR {
        T* row = grad::rowAt(out, oy, os);
        Row(D(), t, m, b, w - 2, op, InterleavedOut<T, Conv>{row},
            [&] { grad::span(t, m, b, 1, w - 1, sop, grad::Interleaved<T, ScalarConv>{row}); });
    });
}

// A packed (width-2) x (height-2) planar pair.
template <class D, class Src, class T, class Conv, class ScalarConv, class Op, class ScalarOp, class Out>
HWY_INLINE void Planar(const Src* src, uint32_t w, uint32_t h, uint32_t ss, T* dx, T* dy, uint32_t os, Op op,
                       ScalarOp sop) {
    grad::interiorRows(src, w, h, ss, [&](uint32_t oy, const Src* t, const Src* m, const Src* b) HWY_ATTR {
        T* rx = grad::rowAt(dx, oy, os);
        T* ry = grad::rowAt(dy, oy, os);
        Row(D(), t, m, b, w - 2, op, Out{rx, ry},
            [&] { grad::span(t, m, b, 1, w - 1, sop, grad::Planar<T, ScalarConv>{rx, ry}); });
    });
}

void GradInterleavedS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* o, uint32_t os) {
    Interleaved<D16, uint8_t, int16_t, RawConv, grad::Raw<int16_t>>(s, w, h, ss, o, os, CentralOp(), grad::central);
}
void GradInterleavedF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* o, uint32_t os) {
    Interleaved<D32, uint8_t, float, FloatConv, grad::Raw<float>>(s, w, h, ss, o, os, CentralOp(), grad::central);
}
void GradPlanarS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* dx, int16_t* dy, uint32_t os) {
    Planar<D16, uint8_t, int16_t, RawConv, grad::Raw<int16_t>, CentralOp, decltype(grad::central),
           PlanarOut<int16_t, RawConv>>(s, w, h, ss, dx, dy, os, CentralOp(), grad::central);
}
void GradPlanarF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* dx, float* dy, uint32_t os) {
    Planar<D32, uint8_t, float, FloatConv, grad::Raw<float>, CentralOp, decltype(grad::central),
           PlanarOut<float, FloatConv>>(s, w, h, ss, dx, dy, os, CentralOp(), grad::central);
}
void SobelInterleavedS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* o, uint32_t os) {
    Interleaved<D16, uint8_t, int16_t, Shift3Conv, grad::Shift3<int16_t>>(s, w, h, ss, o, os, SobelOp(),
                                                                          grad::sobel);
}
void SobelInterleavedF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* o, uint32_t os) {
    Interleaved<D32, uint8_t, float, EighthConv, grad::Eighth>(s, w, h, ss, o, os, SobelOp(), grad::sobel);
}
void SobelPlanarS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* dx, int16_t* dy,
                    uint32_t os) {
    Planar<D16, uint8_t, int16_t, Shift3Conv, grad::Shift3<int16_t>, SobelOp, decltype(grad::sobel),
           PlanarOut<int16_t, Shift3Conv>>(s, w, h, ss, dx, dy, os, SobelOp(), grad::sobel);
}
void SobelPlanarS8(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int8_t* dx, int8_t* dy, uint32_t os) {
    Planar<D16, uint8_t, int8_t, Shift3Conv, grad::Shift3<int8_t>, SobelOp, decltype(grad::sobel), PlanarS8Out>(
        s, w, h, ss, dx, dy, os, SobelOp(), grad::sobel);
}
void SobelPlanarF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* dx, float* dy, uint32_t os) {
    Planar<D32, uint8_t, float, EighthConv, grad::Eighth, SobelOp, decltype(grad::sobel),
           PlanarOut<float, EighthConv>>(s, w, h, ss, dx, dy, os, SobelOp(), grad::sobel);
}
void SobelPlanarF32F32(const float* s, uint32_t w, uint32_t h, uint32_t ss, float* dx, float* dy, uint32_t os) {
    Planar<DF, float, float, RawConv, grad::Same<float>, SobelF32Op, decltype(grad::sobelF32),
           PlanarOut<float, RawConv>>(s, w, h, ss, dx, dy, os, SobelF32Op(), grad::sobelF32);
}
void ScharrInterleavedS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* o, uint32_t os) {
    Interleaved<D16, uint8_t, int16_t, RawConv, grad::Raw<int16_t>>(s, w, h, ss, o, os, ScharrOp(), grad::scharr);
}

// Sobel magnitude into the interior of a full-size image.
void SobelMagnitude(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds) {
    grad::interiorRows(s, w, h, ss, [&](uint32_t oy, const uint8_t* t, const uint8_t* m, const uint8_t* b)
                                        HWY_ATTR {
        uint8_t* row = grad::rowAt(dst, oy + 1, ds);
        Row(D16(), t, m, b, w - 2, SobelOp(), MagnitudeOut{row + 1}, [&] {
            for (uint32_t x = 1; x + 1 < w; ++x) row[x] = grad::magnitude(t, m, b, x);
        });
    });
}

// The dedicated 3x3 pass of the Sobel derivatives: the interior of
// full-size, unnormalised dx and dy (either may be null).
void SobelDerivativesInterior(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* dx, int16_t* dy,
                              uint32_t ds) {
    grad::interiorRows(s, w, h, ss, [&](uint32_t oy, const uint8_t* t, const uint8_t* m, const uint8_t* b)
                                        HWY_ATTR {
        int16_t* rx = dx ? grad::rowAt(dx, oy + 1, ds) : nullptr;
        int16_t* ry = dy ? grad::rowAt(dy, oy + 1, ds) : nullptr;
        Row(D16(), t, m, b, w - 2, SobelOp(), DerivativesOut{rx ? rx + 1 : nullptr, ry ? ry + 1 : nullptr}, [&] {
            for (uint32_t x = 1; x + 1 < w; ++x) {
                const grad::Pair<int32_t> g = grad::sobel(t, m, b, x);
                if (rx) rx[x] = static_cast<int16_t>(g.dx);
                if (ry) ry[x] = static_cast<int16_t>(g.dy);
            }
        });
    });
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/gradient_v.h"

namespace pxr {
HWY_EXPORT(GradInterleavedS16);
HWY_EXPORT(GradInterleavedF32);
HWY_EXPORT(GradPlanarS16);
HWY_EXPORT(GradPlanarF32);
HWY_EXPORT(SobelInterleavedS16);
HWY_EXPORT(SobelInterleavedF32);
HWY_EXPORT(SobelPlanarS16);
HWY_EXPORT(SobelPlanarS8);
HWY_EXPORT(SobelPlanarF32);
HWY_EXPORT(SobelPlanarF32F32);
HWY_EXPORT(ScharrInterleavedS16);
HWY_EXPORT(SobelMagnitude);
HWY_EXPORT(SobelDerivativesInterior);

// The dispatch names each function unqualified, from the namespace of its
// export: with a single compiled target (32-bit ARM) it becomes a direct call.
void sobelDerivativesInteriorV(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, int16_t* dx, int16_t* dy,
                               uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(SobelDerivativesInterior)(src, w, h, ss, dx, dy, ds);
}
static void sobelMagnitude(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(SobelMagnitude)(s, w, h, ss, d, ds);
}
static void gradInterleavedS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* o, uint32_t os) {
    HWY_DYNAMIC_DISPATCH(GradInterleavedS16)(s, w, h, ss, o, os);
}
static void gradInterleavedF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* o, uint32_t os) {
    HWY_DYNAMIC_DISPATCH(GradInterleavedF32)(s, w, h, ss, o, os);
}
static void gradPlanarS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* dx, int16_t* dy,
                          uint32_t os) {
    HWY_DYNAMIC_DISPATCH(GradPlanarS16)(s, w, h, ss, dx, dy, os);
}
static void gradPlanarF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* dx, float* dy,
                          uint32_t os) {
    HWY_DYNAMIC_DISPATCH(GradPlanarF32)(s, w, h, ss, dx, dy, os);
}
static void sobelInterleavedS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* o, uint32_t os) {
    HWY_DYNAMIC_DISPATCH(SobelInterleavedS16)(s, w, h, ss, o, os);
}
static void sobelInterleavedF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* o, uint32_t os) {
    HWY_DYNAMIC_DISPATCH(SobelInterleavedF32)(s, w, h, ss, o, os);
}
static void sobelPlanarS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* dx, int16_t* dy,
                           uint32_t os) {
    HWY_DYNAMIC_DISPATCH(SobelPlanarS16)(s, w, h, ss, dx, dy, os);
}
static void sobelPlanarS8(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int8_t* dx, int8_t* dy,
                          uint32_t os) {
    HWY_DYNAMIC_DISPATCH(SobelPlanarS8)(s, w, h, ss, dx, dy, os);
}
static void sobelPlanarF32(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, float* dx, float* dy,
                           uint32_t os) {
    HWY_DYNAMIC_DISPATCH(SobelPlanarF32)(s, w, h, ss, dx, dy, os);
}
static void sobelPlanarF32F32(const float* s, uint32_t w, uint32_t h, uint32_t ss, float* dx, float* dy,
                              uint32_t os) {
    HWY_DYNAMIC_DISPATCH(SobelPlanarF32F32)(s, w, h, ss, dx, dy, os);
}
static void scharrInterleavedS16(const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, int16_t* o, uint32_t os) {
    HWY_DYNAMIC_DISPATCH(ScharrInterleavedS16)(s, w, h, ss, o, os);
}
}  // namespace pxr

void pxrFilterSobel3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstStride) {
    pxr::sobelMagnitude(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

void pxrImageGradientInterleaveds16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    pxr::gradInterleavedS16(src, srcWidth, srcHeight, srcStride, gradients, gradStride);
}

void pxrImageGradientInterleavedf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* gradients, uint32_t gradStride) {
    pxr::gradInterleavedF32(src, srcWidth, srcHeight, srcStride, gradients, gradStride);
}

void pxrImageGradientPlanars16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    pxr::gradPlanarS16(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

void pxrImageGradientPlanarf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                float* dx, float* dy, uint32_t dxyStride) {
    pxr::gradPlanarF32(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

void pxrImageGradientSobelInterleaveds16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    pxr::sobelInterleavedS16(src, srcWidth, srcHeight, srcStride, gradients, gradStride);
}

int pxrImageGradientSobelInterleaveds16_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                            uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    pxr::sobelInterleavedS16(src, srcWidth, srcHeight, srcStride, gradients, gradStride);
    return 0;
}

void pxrImageGradientSobelInterleavedf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint32_t srcStride, float* gradients, uint32_t gradStride) {
    pxr::sobelInterleavedF32(src, srcWidth, srcHeight, srcStride, gradients, gradStride);
}

void pxrImageGradientSobelPlanars16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    pxr::sobelPlanarS16(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

int pxrImageGradientSobelPlanars16_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, int16_t* dx, int16_t* dy, uint32_t dxyStride) {
    pxr::sobelPlanarS16(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
    return 0;
}

void pxrImageGradientSobelPlanars8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                    uint32_t srcStride, int8_t* dx, int8_t* dy, uint32_t dxyStride) {
    pxr::sobelPlanarS8(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

void pxrImageGradientSobelPlanarf32V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride) {
    pxr::sobelPlanarF32(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

void pxrImageGradientSobelPlanarf32f32V(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, float* dx, float* dy, uint32_t dxyStride) {
    pxr::sobelPlanarF32F32(src, srcWidth, srcHeight, srcStride, dx, dy, dxyStride);
}

void pxrImageGradientScharrInterleaveds16V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, int16_t* gradients, uint32_t gradStride) {
    pxr::scharrInterleavedS16(src, srcWidth, srcHeight, srcStride, gradients, gradStride);
}
#endif
