// Block-average reductions, vector kind: 2x2 and 4x4 means and 3:2 by area
// in 16-bit lanes; row remainders by the reference's own span kernels.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/scale/scale_block_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/scale/scale_block_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::scale::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR
// One lane: the reference's spans.
void By2Image(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    for (uint32_t y = 0; y < h / 2; ++y)
        block::by2Span(src + 2 * size_t{y} * srcStride, src + (2 * size_t{y} + 1) * srcStride,
                       dst + size_t{y} * dstStride, 0, w / 2);
}
void By4Image(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    for (uint32_t y = 0; y < h / 4; ++y) {
        const uint8_t* r[4];
        for (uint32_t k = 0; k < 4; ++k) r[k] = src + (4 * size_t{y} + k) * srcStride;
        block::by4Span(r, dst + size_t{y} * dstStride, 0, w / 4);
    }
}
void ThreeToTwoImage(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst,
                     uint32_t dstStride) {
    const uint32_t dw = static_cast<uint32_t>(2 * uint64_t{w} / 3);
    for (uint32_t j = 0; j < static_cast<uint32_t>(2 * uint64_t{h} / 3); ++j) {
        const uint8_t *heavy, *light;
        block::rows3To2(src, srcStride, j, &heavy, &light);
        block::threeToTwoSpan(heavy, light, dst + size_t{j} * dstStride, 0, dw);
    }
}
#else
// Sums of adjacent byte pairs of 2N bytes, as N 16-bit lanes.
template <class D16, class V8>
HWY_INLINE hn::Vec<D16> PairSums(D16 d16, V8 bytes) {
    const auto w = hn::BitCast(d16, bytes);
    return hn::Add(hn::And(w, hn::Set(d16, 0xFF)), hn::ShiftRight<8>(w));
}

void By2Image(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    const hn::ScalableTag<uint8_t> d8;
    const hn::Repartition<uint16_t, decltype(d8)> d16;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d8));
    const uint32_t dw = w / 2, dh = h / 2;
    for (uint32_t y = 0; y < dh; ++y) {
        const uint8_t* r0 = src + 2 * size_t{y} * srcStride;
        const uint8_t* r1 = r0 + srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        uint32_t x = 0;
        for (; x + N <= dw; x += N) {
            const auto lo = hn::Add(PairSums(d16, hn::LoadU(d8, r0 + 2 * x)), PairSums(d16, hn::LoadU(d8, r1 + 2 * x)));
            const auto hi = hn::Add(PairSums(d16, hn::LoadU(d8, r0 + 2 * x + N)),
                                    PairSums(d16, hn::LoadU(d8, r1 + 2 * x + N)));
            // Each mean fits a byte: keep the low (even) byte of every lane.
            const auto q = hn::ConcatEven(d8, hn::BitCast(d8, hn::ShiftRight<2>(hi)),
                                          hn::BitCast(d8, hn::ShiftRight<2>(lo)));
            hn::StoreU(q, d8, out + x);
        }
        block::by2Span(r0, r1, out, x, dw);
    }
}

void By4Image(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    const hn::ScalableTag<uint8_t> d8;
    const hn::Repartition<uint16_t, decltype(d8)> d16;
    const hn::Repartition<uint32_t, decltype(d8)> d32;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d8));
    const uint32_t dw = w / 4, dh = h / 4;
    for (uint32_t y = 0; y < dh; ++y) {
        const uint8_t* r[4];
        for (uint32_t k = 0; k < 4; ++k) r[k] = src + (4 * size_t{y} + k) * srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        uint32_t x = 0;
        for (; x + N <= dw; x += N) {
            // Four groups of N/4 outputs, each from N source bytes per row.
            hn::Vec<decltype(d16)> q16[2];
            for (uint32_t half = 0; half < 2; ++half) {
                hn::Vec<decltype(d32)> q32[2];
                for (uint32_t g = 0; g < 2; ++g) {
                    const size_t at = 4 * size_t{x} + (2 * half + g) * N;
                    auto pairs = PairSums(d16, hn::LoadU(d8, r[0] + at));
                    for (uint32_t k = 1; k < 4; ++k) pairs = hn::Add(pairs, PairSums(d16, hn::LoadU(d8, r[k] + at)));
                    const auto w32 = hn::BitCast(d32, pairs);
                    const auto quads = hn::Add(hn::And(w32, hn::Set(d32, 0xFFFF)), hn::ShiftRight<16>(w32));
                    q32[g] = hn::ShiftRight<4>(quads);
                }
                q16[half] = hn::ConcatEven(d16, hn::BitCast(d16, q32[1]), hn::BitCast(d16, q32[0]));
            }
            hn::StoreU(hn::ConcatEven(d8, hn::BitCast(d8, q16[1]), hn::BitCast(d8, q16[0])), d8, out + x);
        }
        block::by4Span(r, out, x, dw);
    }
}

void ThreeToTwoImage(const uint8_t* src, uint32_t w, uint32_t h, uint32_t srcStride, uint8_t* dst,
                     uint32_t dstStride) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    const uint32_t dw = static_cast<uint32_t>(2 * uint64_t{w} / 3);
    const uint32_t dh = static_cast<uint32_t>(2 * uint64_t{h} / 3);
    const auto four = hn::Set(d16, 4), recip = hn::Set(d16, 7282);
    for (uint32_t j = 0; j < dh; ++j) {
        const uint8_t *heavy, *light;
        block::rows3To2(src, srcStride, j, &heavy, &light);
        uint8_t* out = dst + size_t{j} * dstStride;
        // N source triplets give 2N outputs; whole triplets only.
        uint32_t x = 0;
        for (; x + 2 * N <= dw && 3 * (x / 2 + N) <= w; x += 2 * N) {
            hn::Vec<decltype(d8)> ha, hb, hc, la, lb, lc;
            hn::LoadInterleaved3(d8, heavy + 3 * size_t{x / 2}, ha, hb, hc);
            hn::LoadInterleaved3(d8, light + 3 * size_t{x / 2}, la, lb, lc);
            auto col = [&](hn::Vec<decltype(d8)> hv, hn::Vec<decltype(d8)> lv) {
                const auto hw = hn::PromoteTo(d16, hv);
                return hn::Add(hn::Add(hw, hw), hn::PromoteTo(d16, lv));
            };
            const auto a = col(ha, la), b = col(hb, lb), c = col(hc, lc);
            // (sum + 4) / 9 by the same 16-bit reciprocal as the reference.
            const auto even = hn::MulHigh(hn::Add(hn::Add(hn::Add(a, a), b), four), recip);
            const auto odd = hn::MulHigh(hn::Add(hn::Add(hn::Add(c, c), b), four), recip);
            hn::StoreInterleaved2(hn::DemoteTo(d8, hn::BitCast(hn::RebindToSigned<decltype(d16)>(), even)),
                                  hn::DemoteTo(d8, hn::BitCast(hn::RebindToSigned<decltype(d16)>(), odd)), d8,
                                  out + x);
        }
        block::threeToTwoSpan(heavy, light, out, x, dw);
    }
}

#endif  // HWY_TARGET == HWY_SCALAR

}  // namespace pxr::scale::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/scale/scale_v.h"

namespace pxr::scale {
HWY_EXPORT(By2Image);
HWY_EXPORT(By4Image);
HWY_EXPORT(ThreeToTwoImage);

// Dispatch names the function unqualified, from the namespace of its export.
static void by2Image(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(By2Image)(src, w, h, ss, dst, ds);
}
static void by4Image(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(By4Image)(src, w, h, ss, dst, ds);
}
static void threeToTwoImage(const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, uint8_t* dst, uint32_t ds) {
    HWY_DYNAMIC_DISPATCH(ThreeToTwoImage)(src, w, h, ss, dst, ds);
}
}  // namespace pxr::scale

void pxrScaleDownBy2u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    pxr::scale::by2Image(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

void pxrScaleDownBy4u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    pxr::scale::by4Image(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}

void pxrScaleDown3To2u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                         uint8_t* dst, uint32_t dstStride) {
    pxr::scale::threeToTwoImage(src, srcWidth, srcHeight, srcStride, dst, dstStride);
}
#endif
