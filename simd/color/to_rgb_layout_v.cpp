// Layout changes between YCbCr layouts and the chroma byte swap, vector
// kind: chroma is read and written with the interleaved loads and stores
// (pairs split or merged, samples paired for halving or doubled), averaged
// as the reference does; the samples left at the end of a row go through
// the reference's own span, and Y is copied by the shared walk.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/color/to_rgb_layout_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/color/to_rgb_kernels.h"
#include "imgproc/color/to_rgb_members.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET != HWY_SCALAR
using D8 = hn::ScalableTag<uint8_t>;
using V8 = hn::Vec<D8>;
using ycbcr::InRow;
using ycbcr::OutRow;
using ycbcr::Resample;

// (a + b + c + d + 2) >> 2 per lane, exactly, in 16-bit lanes.
HWY_INLINE V8 Average4(V8 a, V8 b, V8 c, V8 d) {
    const D8 d8;
    const hn::Half<D8> d8h;
    const hn::RepartitionToWide<D8> d16;
    const hn::RebindToSigned<decltype(d16)> di16;
    auto sum = [&](auto half) {
        const auto s = hn::Add(hn::Add(hn::PromoteTo(d16, half(a)), hn::PromoteTo(d16, half(b))),
                               hn::Add(hn::Add(hn::PromoteTo(d16, half(c)), hn::PromoteTo(d16, half(d))),
                                       hn::Set(d16, 2)));
        return hn::DemoteTo(d8h, hn::BitCast(di16, hn::ShiftRight<2>(s)));
    };
    return hn::Combine(d8, sum([&](V8 v) { return hn::UpperHalf(d8h, v); }),
                       sum([&](V8 v) { return hn::LowerHalf(d8h, v); }));
}

// Samples [s, s + lanes) of a chroma row.
template <bool Pseudo>
HWY_INLINE void Fetch(InRow r, size_t s, V8& cb, V8& cr) {
    const D8 d8;
    if constexpr (Pseudo) {
        hn::LoadInterleaved2(d8, r.cb + 2 * s, cb, cr);
    } else {
        cb = hn::LoadU(d8, r.cb + s);
        cr = hn::LoadU(d8, r.cr + s);
    }
}

// Samples [2i, 2i + 2 lanes) of a chroma row, split into even and odd ones.
template <bool Pseudo>
HWY_INLINE void FetchPairs(InRow r, size_t i, V8& cbEven, V8& cbOdd, V8& crEven, V8& crOdd) {
    const D8 d8;
    if constexpr (Pseudo) {
        hn::LoadInterleaved4(d8, r.cb + 4 * i, cbEven, crEven, cbOdd, crOdd);
    } else {
        hn::LoadInterleaved2(d8, r.cb + 2 * i, cbEven, cbOdd);
        hn::LoadInterleaved2(d8, r.cr + 2 * i, crEven, crOdd);
    }
}

// Samples [i, i + lanes) of a destination row, or with Twice each written
// to two neighbouring samples from 2i on.
template <bool Pseudo, bool Twice>
HWY_INLINE void Put(OutRow r, size_t i, V8 cb, V8 cr) {
    const D8 d8;
    if constexpr (Pseudo && Twice) {
        hn::StoreInterleaved4(cb, cr, cb, cr, d8, r.cb + 4 * i);
    } else if constexpr (Pseudo) {
        hn::StoreInterleaved2(cb, cr, d8, r.cb + 2 * i);
    } else if constexpr (Twice) {
        hn::StoreInterleaved2(cb, cb, d8, r.cb + 2 * i);
        hn::StoreInterleaved2(cr, cr, d8, r.cr + 2 * i);
    } else {
        hn::StoreU(cb, d8, r.cb + i);
        hn::StoreU(cr, d8, r.cr + i);
    }
}

// One destination chroma row from source rows a and b (averaged when Blend).
template <Resample H, bool Blend, bool SrcPseudo, bool DstPseudo>
void LayoutRow(InRow a, InRow b, OutRow d, uint32_t srcCols, uint32_t dstCols) {
    const size_t n = hn::Lanes(D8());
    size_t i = 0;  // destination sample
    if constexpr (H == Resample::Up) {
        static_assert(!Blend, "no layout doubles one direction while halving the other");
        size_t s = 0;
        for (; s + n <= srcCols && 2 * (s + n) <= dstCols; s += n) {
            V8 cb, cr;
            Fetch<SrcPseudo>(a, s, cb, cr);
            Put<DstPseudo, true>(d, s, cb, cr);
        }
        i = 2 * s;
    } else if constexpr (H == Resample::Down) {
        for (; i + n <= dstCols && 2 * (i + n) <= srcCols; i += n) {
            V8 cbE, cbO, crE, crO;
            FetchPairs<SrcPseudo>(a, i, cbE, cbO, crE, crO);
            if constexpr (Blend) {
                V8 cbE2, cbO2, crE2, crO2;
                FetchPairs<SrcPseudo>(b, i, cbE2, cbO2, crE2, crO2);
                Put<DstPseudo, false>(d, i, Average4(cbE, cbO, cbE2, cbO2), Average4(crE, crO, crE2, crO2));
            } else {
                Put<DstPseudo, false>(d, i, hn::AverageRound(cbE, cbO), hn::AverageRound(crE, crO));
            }
        }
    } else {
        for (; i + n <= dstCols; i += n) {
            V8 cb, cr;
            Fetch<SrcPseudo>(a, i, cb, cr);
            if constexpr (Blend) {
                V8 cb2, cr2;
                Fetch<SrcPseudo>(b, i, cb2, cr2);
                cb = hn::AverageRound(cb, cb2);
                cr = hn::AverageRound(cr, cr2);
            }
            Put<DstPseudo, false>(d, i, cb, cr);
        }
    }
    ycbcr::layoutSpan<H, Blend>(a, b, d, srcCols, static_cast<uint32_t>(i), dstCols);
}

template <uint32_t Ssx, uint32_t Ssy, uint32_t Dsx, uint32_t Dsy, bool SrcPseudo, bool DstPseudo>
void LayoutImage(const ycbcr::LayoutJob& j) {
    constexpr Resample H = ycbcr::resample(Ssx, Dsx);
    constexpr bool Blend = ycbcr::resample(Ssy, Dsy) == Resample::Down;
    ycbcr::forEachLayoutRow<Ssx, Ssy, Dsx, Dsy>(j, [](InRow a, InRow b, OutRow d, uint32_t srcCols, uint32_t dstCols) {
        LayoutRow<H, Blend, SrcPseudo, DstPseudo>(a, b, d, srcCols, dstCols);
    });
}

#else  // One-lane vectors: the reference walks themselves.
template <uint32_t Ssx, uint32_t Ssy, uint32_t Dsx, uint32_t Dsy, bool SrcPseudo, bool DstPseudo>
void LayoutImage(const ycbcr::LayoutJob& j) {
    ycbcr::layoutImage<Ssx, Ssy, Dsx, Dsy>(j);
}
#endif  // HWY_TARGET != HWY_SCALAR

// One function per member, for export.
#define PXR_YCC_V_LAYOUT_ROWS(name, Src, ssx, ssy, Dst, dsx, dsy, ...)                                   \
    void name##Rows(const ycbcr::LayoutJob& j) {                                                       \
        LayoutImage<ssx, ssy, dsx, dsy, PXR_YCC_IS_PSEUDO_##Src, PXR_YCC_IS_PSEUDO_##Dst>(j);            \
    }
PXR_YCC_LAYOUTS(PXR_YCC_V_LAYOUT_ROWS)

// Pairs exchanged as 16-bit lanes rotated by a byte; loads precede stores,
// so the swap may run in place.
void SwapRows(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
              uint32_t dstStride) {
#if HWY_TARGET == HWY_SCALAR
    for (uint32_t y = 0; y < height; ++y)
        ycbcr::swapSpan(src + size_t{y} * srcStride, dst + size_t{y} * dstStride, 0, width);
#else
    const hn::ScalableTag<uint8_t> d8;
    const hn::Repartition<uint16_t, D8> d16;
    const size_t pairs = hn::Lanes(d16);
    for (uint32_t y = 0; y < height; ++y) {
        const uint8_t* s = src + size_t{y} * srcStride;
        uint8_t* o = dst + size_t{y} * dstStride;
        size_t i = 0;
        for (; i + pairs <= width; i += pairs) {
            const auto v = hn::BitCast(d16, hn::LoadU(d8, s + 2 * i));
            hn::StoreU(hn::BitCast(d8, hn::Or(hn::ShiftLeft<8>(v), hn::ShiftRight<8>(v))), d8, o + 2 * i);
        }
        ycbcr::swapSpan(s, o, static_cast<uint32_t>(i), width);
    }
#endif
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/color/to_rgb_v.h"

// The dispatch names each function unqualified, from the namespace of its
// export: with a single compiled target (32-bit ARM) it becomes a direct call.
namespace pxr {
#define PXR_YCC_EXPORT_LAYOUT(name, ...) \
    HWY_EXPORT(name##Rows);              \
    static void name##Dispatch(const ycbcr::LayoutJob& j) { HWY_DYNAMIC_DISPATCH(name##Rows)(j); }
PXR_YCC_LAYOUTS(PXR_YCC_EXPORT_LAYOUT)
HWY_EXPORT(SwapRows);
static void swapDispatch(PXR_YCC_SWAP_ARGS) {
    HWY_DYNAMIC_DISPATCH(SwapRows)(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}
}  // namespace pxr

#define PXR_YCC_V_LAYOUT(name, Src, ssx, ssy, Dst, dsx, dsy, ...)                     \
    void pxrColor##name##V(PXR_YCC_SRC_ARGS_##Src, PXR_YCC_DST_ARGS_##Dst) {             \
        pxr::name##Dispatch(PXR_YCC_LAYOUT_JOB(Src, Dst));                               \
    }
PXR_YCC_LAYOUTS(PXR_YCC_V_LAYOUT)

void pxrColorCbCrSwapu8V(PXR_YCC_SWAP_ARGS) {
    pxr::swapDispatch(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}
#endif
