// FAST-9 and FAST-10 detection (with scores, for the score functions),
// vector kind: one byte lane per candidate pixel, N candidates of a row at
// a time.
//
// Brighter and darker are kept as byte values that are non-zero exactly
// when the ring pixel is brighter than c + t (p -sat (c +sat t)) or darker
// than c - t ((c -sat t) -sat p); saturation keeps this exact for every
// barrier. "All of an arc non-zero" is then the minimum over the arc, and
// "some arc" the maximum over the 16 starts. The four cardinal pixels (ring
// 0, 4, 8, 12) reject a whole vector at once when no two neighbouring ones
// agree, which is most of an image; only the rest reads the whole ring.
// Corners leave the vector as lane bits, in lane (raster) order, through
// the same list and capacity rule as the reference. Rows narrower than a
// vector use the reference's span scan; the last vector of a row is moved
// back to end at the row's end, its lanes already decided are skipped.
//
// Scores come with the decision: for a corner lane the maximum over arcs of
// the minimum brighter (or darker) value is M - t, M being the strength of
// fast_strength-inl.h (hi and lo are exact for a corner, which has a pixel
// above c + t or below c - t), so the score M - 1 is that maximum + t - 1.
// A pixel has a brighter or a darker arc, never both (9 + 9 > 16).
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/features/fast/fast_detect_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "features/fast/fast_kernels.h"
#include "simd/features/fast/fast_strength-inl.h"

#ifndef PXR_FAST_DETECT_JOB
#define PXR_FAST_DETECT_JOB
namespace pxr::fast {
// One detection call, with its mask (null: none) and scores (null: none).
struct DetectJob {
    const uint8_t* src;
    uint32_t width, height, stride, barrier, border;
    uint32_t* xy;
    uint32_t* scores;
    uint32_t max;
    const BitMask* mask;
};
}  // namespace pxr::fast
#endif

HWY_BEFORE_NAMESPACE();
namespace pxr::fast::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The scan of columns x0 .. x1 - 1 of a row pixel by pixel, with scores;
// true when the list is full.
template <int Arc, class Excluded>
HWY_INLINE bool ScanSpanScored(const DetectJob& j, const ScanFrame& f, const uint8_t* row, uint32_t x0, uint32_t x1,
                               uint32_t y, const Excluded& excluded, CornerSink& sink) {
    if (!j.scores) return scanSpan<Arc>(row, f.off, f.t, x0, x1, y, excluded, sink);
    for (uint32_t x = x0; x < x1; ++x) {
        if (excluded(x, y) || !isCorner<Arc>(row + x, f.off, f.t)) continue;
        j.scores[sink.count] = ScoreOne<Arc>(row + x, f.off, j.barrier);
        if (sink.add(x, y)) return true;
    }
    return false;
}

#if HWY_TARGET == HWY_SCALAR
template <int Arc, class Excluded>
uint32_t DetectWith(const DetectJob& j, const Excluded& excluded) {
    const ScanFrame f = scanFrame(j.width, j.height, j.stride, j.barrier, j.border);
    CornerSink sink{j.xy, j.max};
    if (!f.empty())
        for (uint32_t y = f.y0; y < f.y1; ++y)
            if (ScanSpanScored<Arc>(j, f, j.src + y * f.stride, f.x0, f.x1, y, excluded, sink)) break;
    return sink.count;
}
#else
// Lanes of the N pixels at p that pass the segment test; *strength gets,
// for those lanes, the largest over arcs of the smallest brighter or darker
// value.
template <int Arc, class D>
HWY_INLINE hn::Mask<D> CornerLanes(D d, const uint8_t* HWY_RESTRICT p, const ptrdiff_t* off, hn::Vec<D> tv,
                                   hn::Vec<D>* strength) {
    using V = hn::Vec<D>;
    const V zero = hn::Zero(d);
    const V c = hn::LoadU(d, p);
    const V hi = hn::SaturatedAdd(c, tv), lo = hn::SaturatedSub(c, tv);
    auto ring = [&](int k) { return hn::LoadU(d, p + off[k]); };
    auto pairs = [&](V a, V b, V e, V g) {  // neighbouring cardinals agreeing
        return hn::Max(hn::Max(hn::Min(a, b), hn::Min(b, e)), hn::Max(hn::Min(e, g), hn::Min(g, a)));
    };
    const V p0 = ring(0), p4 = ring(4), p8 = ring(8), p12 = ring(12);
    const V maybeBright = pairs(hn::SaturatedSub(p0, hi), hn::SaturatedSub(p4, hi), hn::SaturatedSub(p8, hi),
                                hn::SaturatedSub(p12, hi));
    const V maybeDark = pairs(hn::SaturatedSub(lo, p0), hn::SaturatedSub(lo, p4), hn::SaturatedSub(lo, p8),
                              hn::SaturatedSub(lo, p12));
    if (hn::AllTrue(d, hn::Eq(hn::Or(maybeBright, maybeDark), zero))) return hn::FirstN(d, 0);

    // Some start of Arc contiguous non-zero values, from runs of 2, 4, 8.
    auto anyArc = [&](auto&& value) {
        V v[16], r2[16], r4[16];
        for (int k = 0; k < 16; ++k) v[k] = value(ring(k));
        for (int k = 0; k < 16; ++k) r2[k] = hn::Min(v[k], v[(k + 1) & 15]);
        for (int k = 0; k < 16; ++k) r4[k] = hn::Min(r2[k], r2[(k + 2) & 15]);
        V any = zero;
        for (int k = 0; k < 16; ++k) {
            const V r8 = hn::Min(r4[k], r4[(k + 4) & 15]);
            any = hn::Max(any, hn::Min(r8, Arc == 9 ? v[(k + 8) & 15] : r2[(k + 8) & 15]));
        }
        return any;
    };
    V arcs = zero;
    if (!hn::AllTrue(d, hn::Eq(maybeBright, zero)))
        arcs = anyArc([&](V ringPixel) { return hn::SaturatedSub(ringPixel, hi); });
    if (!hn::AllTrue(d, hn::Eq(maybeDark, zero)))
        arcs = hn::Max(arcs, anyArc([&](V ringPixel) { return hn::SaturatedSub(lo, ringPixel); }));
    *strength = arcs;
    return hn::Ne(arcs, zero);
}

template <int Arc, class Excluded>
uint32_t DetectWith(const DetectJob& j, const Excluded& excluded) {
    const ScanFrame f = scanFrame(j.width, j.height, j.stride, j.barrier, j.border);
    CornerSink sink{j.xy, j.max};
    if (f.empty()) return 0;
    const hn::ScalableTag<uint8_t> d;
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d));
    const auto tv = hn::Set(d, static_cast<uint8_t>(f.t));
    // Score = strength + t - 1, which wraps only on lanes that are no corner.
    const auto toScore = hn::Set(d, static_cast<uint8_t>(f.t - 1));
    uint8_t bits[HWY_MAX_BYTES / 8 + 8] = {};
    HWY_ALIGN uint8_t scores[HWY_MAX_BYTES];
    for (uint32_t y = f.y0; y < f.y1; ++y) {
        const uint8_t* row = j.src + y * f.stride;
        if (f.x1 - f.x0 < N) {
            if (ScanSpanScored<Arc>(j, f, row, f.x0, f.x1, y, excluded, sink)) break;
            continue;
        }
        // Columns below `done` are decided; the last vector ends at x1.
        for (uint32_t done = f.x0; done < f.x1;) {
            const uint32_t x = done < f.x1 - N ? done : f.x1 - N;
            auto strength = hn::Zero(d);
            const auto corners = CornerLanes<Arc>(d, row + x, f.off, tv, &strength);
            if (!hn::AllFalse(d, corners)) {
                if (j.scores) hn::Store(hn::Add(strength, toScore), d, scores);
                const size_t bytes = hn::StoreMaskBits(d, corners, bits);
                for (size_t b = 0; b < bytes; ++b) {
                    for (uint32_t v = bits[b]; v; v &= v - 1) {
                        const size_t lane = 8 * b + hwy::Num0BitsBelowLS1Bit_Nonzero32(v);
                        const uint32_t cx = x + static_cast<uint32_t>(lane);
                        if (cx < done || excluded(cx, y)) continue;
                        if (j.scores) j.scores[sink.count] = scores[lane];
                        if (sink.add(cx, y)) return sink.count;
                    }
                }
            }
            done = x + N;
        }
    }
    return sink.count;
}
#endif  // HWY_TARGET == HWY_SCALAR

uint32_t Detect9(const DetectJob& j) {
    return j.mask ? DetectWith<9>(j, *j.mask) : DetectWith<9>(j, NoMask{});
}
uint32_t Detect10(const DetectJob& j) {
    return j.mask ? DetectWith<10>(j, *j.mask) : DetectWith<10>(j, NoMask{});
}

}  // namespace pxr::fast::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/features/fast/fast_v.h"

namespace pxr::fast {
HWY_EXPORT(Detect9);
HWY_EXPORT(Detect10);

namespace {

void detect(int arc, const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, uint32_t barrier,
            uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t max, uint32_t* nCorners, const BitMask* mask) {
    const DetectJob job{src, width, height, stride, barrier, border, xy, scores, max, mask};
    *nCorners = arc == 9 ? HWY_DYNAMIC_DISPATCH(Detect9)(job) : HWY_DYNAMIC_DISPATCH(Detect10)(job);
}

}  // namespace

void detectScoredV(int arc, const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, uint32_t barrier,
                   uint32_t border, uint32_t* xy, uint32_t* scores, uint32_t max, uint32_t* nCorners,
                   const uint8_t* maskBits, uint32_t maskWidth, uint32_t maskHeight) {
    if (!maskBits) return detect(arc, src, width, height, stride, barrier, border, xy, scores, max, nCorners, nullptr);
    const auto mask = bitMaskFor(maskBits, width, height, maskWidth, maskHeight);
    if (!mask) {
        *nCorners = 0;
        return;
    }
    detect(arc, src, width, height, stride, barrier, border, xy, scores, max, nCorners, &*mask);
}

}  // namespace pxr::fast

void pxrCornerFast9u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners) {
    pxr::fast::detectScoredV(9, src, srcWidth, srcHeight, srcStride, barrier, border, xy, nullptr, nCornersMax,
                             nCorners, nullptr, 0, 0);
}

void pxrCornerFast9InMasku8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                             uint32_t* nCorners, const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight) {
    pxr::fast::detectScoredV(9, src, srcWidth, srcHeight, srcStride, barrier, border, xy, nullptr, nCornersMax,
                             nCorners, bitMask, maskWidth, maskHeight);
}

void pxrCornerFast10u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners) {
    pxr::fast::detectScoredV(10, src, srcWidth, srcHeight, srcStride, barrier, border, xy, nullptr, nCornersMax,
                             nCorners, nullptr, 0, 0);
}

void pxrCornerFast10InMasku8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                              uint32_t* nCorners, const uint8_t* mask, uint32_t maskWidth, uint32_t maskHeight) {
    pxr::fast::detectScoredV(10, src, srcWidth, srcHeight, srcStride, barrier, border, xy, nullptr, nCornersMax,
                             nCorners, mask, maskWidth, maskHeight);
}
#endif
