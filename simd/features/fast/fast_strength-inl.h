// FAST score of one pixel, vector kind, for every target (included by the
// vector files after foreach_target).
//
// The reference's binary search finds the highest t in barrier .. 254 at
// which the pixel still passes (barrier itself when none above does). The
// test is monotone in t, and it passes at t exactly when some arc has all
// its differences above t, the differences being p - c (brighter) or c - p
// (darker). So the highest passing t is M - 1, M being the largest over the
// 32 arcs (16 starts, two kinds) of the smallest difference on the arc, and
// the score is max(barrier, M - 1). M is found with 16-bit lanes, one lane
// per start: a running minimum over the arc's length along the ring written
// twice, then a maximum over the lanes. Barriers of 255 or more come back
// unchanged, as from the reference.
#if defined(PXR_FAST_STRENGTH_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef PXR_FAST_STRENGTH_INL_H_
#undef PXR_FAST_STRENGTH_INL_H_
#else
#define PXR_FAST_STRENGTH_INL_H_
#endif

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace pxr::fast::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <int Arc>
HWY_INLINE uint32_t ScoreOne(const uint8_t* p, const ptrdiff_t* off, uint32_t barrier) {
    if (barrier >= 255) return barrier;
    const int c = p[0];
    // Ring differences written twice, so every arc is a contiguous run.
    HWY_ALIGN int16_t bright[32], dark[32];
    for (int k = 0; k < 16; ++k) {
        const int v = p[off[k]];
        bright[k] = bright[k + 16] = static_cast<int16_t>(v - c);
        dark[k] = dark[k + 16] = static_cast<int16_t>(c - v);
    }
    int best;
#if HWY_TARGET == HWY_SCALAR
    best = -256;
    for (int s = 0; s < 16; ++s) {
        int mb = bright[s], md = dark[s];
        for (int k = 1; k < Arc; ++k) {
            mb = mb < bright[s + k] ? mb : bright[s + k];
            md = md < dark[s + k] ? md : dark[s + k];
        }
        best = best > mb ? best : mb;
        best = best > md ? best : md;
    }
#else
    const hn::CappedTag<int16_t, 16> d;
    const size_t N = hn::Lanes(d);
    auto top = hn::Set(d, int16_t{-256});
    for (size_t s = 0; s < 16; s += N) {
        auto mb = hn::LoadU(d, bright + s), md = hn::LoadU(d, dark + s);
        for (int k = 1; k < Arc; ++k) {
            mb = hn::Min(mb, hn::LoadU(d, bright + s + k));
            md = hn::Min(md, hn::LoadU(d, dark + s + k));
        }
        top = hn::Max(top, hn::Max(mb, md));
    }
    best = hn::GetLane(hn::MaxOfLanes(d, top));
#endif
    const int highest = best - 1;
    return highest > static_cast<int>(barrier) ? static_cast<uint32_t>(highest) : barrier;
}

}  // namespace pxr::fast::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // PXR_FAST_STRENGTH_INL_H_
