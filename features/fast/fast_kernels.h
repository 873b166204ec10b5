// FAST segment test and detection scan, shared by the reference and the
// vector kind: the ring, the early-exit test, the mask geometry, the scan
// bounds and the corner list with its capacity rule. The vector kind uses
// the same row-span scan for rows narrower than a vector, so both kinds
// decide every pixel by the same rule.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace pxr::fast {

// The radius-3 ring, in ring order: index 15 is adjacent to index 0.
inline constexpr int kRingDx[16] = {0, 1, 2, 3, 3, 3, 2, 1, 0, -1, -2, -3, -3, -3, -2, -1};
inline constexpr int kRingDy[16] = {3, 3, 2, 1, 0, -1, -2, -3, -3, -3, -2, -1, 0, 1, 2, 3};

// Every barrier of 255 or more rejects every pixel (no ring value can be
// above c + 255 or below c - 255), so the barrier is saturated there and
// c +/- t stays exact in int.
constexpr int saturatedBarrier(uint32_t barrier) { return barrier > 255 ? 255 : static_cast<int>(barrier); }

// Whether a circular 16-bit ring mask holds Arc (9 or 10) contiguous set
// bits. The ring is written twice into 32 bits; a run starting at bit i
// lies in bits i .. i + Arc - 1, all inside the doubled ring for i < 16,
// and a run found past bit 15 is a circular run too (zeros are shifted in).
template <int Arc>
constexpr bool hasArc(uint32_t ring) {
    static_assert(Arc == 9 || Arc == 10, "arcs of 9 or 10");
    const uint32_t m = ring | (ring << 16);
    const uint32_t r2 = m & (m >> 1), r4 = r2 & (r2 >> 2), r8 = r4 & (r4 >> 4);
    return (r8 & ((Arc == 9 ? m : r2) >> 8)) != 0;
}

// The segment test at p with saturated barrier t.
//
// Decision order: an arc of 9 or more always covers ring index 0 or 8 (an
// arc that misses both lies inside the 7 pixels strictly between them), so
// two reads reject most pixels. It also covers two neighbouring cardinal
// pixels (0-4, 4-8, 8-12 or 12-0), all of one kind, so the next two reads
// reject most of the rest. Only the survivors read the whole ring.
template <int Arc>
inline bool isCorner(const uint8_t* p, const ptrdiff_t* off, int t) {
    const int c = p[0], hi = c + t, lo = c - t;
    const int a0 = p[off[0]], a8 = p[off[8]];
    if (!((a0 > hi) | (a0 < lo) | (a8 > hi) | (a8 < lo))) return false;
    const int a4 = p[off[4]], a12 = p[off[12]];
    const bool b0 = a0 > hi, b4 = a4 > hi, b8 = a8 > hi, b12 = a12 > hi;
    const bool d0 = a0 < lo, d4 = a4 < lo, d8 = a8 < lo, d12 = a12 < lo;
    const bool maybeBright = (b0 & b4) | (b4 & b8) | (b8 & b12) | (b12 & b0);
    const bool maybeDark = (d0 & d4) | (d4 & d8) | (d8 & d12) | (d12 & d0);
    if (!(maybeBright | maybeDark)) return false;
    uint32_t bright = 0, dark = 0;
    for (int k = 0; k < 16; ++k) {
        const int v = p[off[k]];
        bright |= static_cast<uint32_t>(v > hi) << k;
        dark |= static_cast<uint32_t>(v < lo) << k;
    }
    return (maybeBright && hasArc<Arc>(bright)) || (maybeDark && hasArc<Arc>(dark));
}

// Ring byte offsets for a row pitch (make_offsets in ptrdiff_t form).
inline void ringOffsets(ptrdiff_t* table, uint32_t stride) {
    for (int k = 0; k < 16; ++k) table[k] = kRingDy[k] * static_cast<ptrdiff_t>(stride) + kRingDx[k];
}

// Mask geometry: the shift k between image and mask coordinates, tried in
// the order 0, -1, 1, -2, 2, -3, 3 (negative: the mask is larger); none when
// the mask is no such scaling of the image.
inline std::optional<int> maskShift(uint32_t width, uint32_t height, uint32_t maskWidth, uint32_t maskHeight) {
    const uint64_t w = width, h = height, mw = maskWidth, mh = maskHeight;
    if (mw == w && mh == h) return 0;
    for (int k = 1; k <= 3; ++k) {
        if (mw == (w << k) && mh == (h << k)) return -k;
        if (w == (mw << k) && h == (mh << k)) return k;
    }
    return std::nullopt;
}

// A set bit excludes its pixel. Rows of ceil(maskWidth / 8) bytes, the most
// significant bit leftmost.
struct BitMask {
    const uint8_t* bits;
    size_t rowBytes;
    int shift;
    bool operator()(uint32_t x, uint32_t y) const {
        const uint32_t mx = shift >= 0 ? x >> shift : x << -shift;
        const uint32_t my = shift >= 0 ? y >> shift : y << -shift;
        return (bits[size_t{my} * rowBytes + mx / 8] & (0x80u >> (mx & 7))) != 0;
    }
};

// The mask of a masked call, or none when its size is no allowed scaling
// (the call then finds nothing).
inline std::optional<BitMask> bitMaskFor(const uint8_t* bits, uint32_t width, uint32_t height, uint32_t maskWidth,
                                         uint32_t maskHeight) {
    const auto k = maskShift(width, height, maskWidth, maskHeight);
    if (!k) return std::nullopt;
    return BitMask{bits, (size_t{maskWidth} + 7) / 8, *k};
}

struct NoMask {
    bool operator()(uint32_t, uint32_t) const { return false; }
};

// The corner list. The count is tested after each write, so a capacity of
// 0 still takes the first corner.
struct CornerSink {
    uint32_t* xy;
    uint32_t max;
    uint32_t count = 0;
    // Appends a corner; true when the scan must stop.
    bool add(uint32_t x, uint32_t y) {
        xy[2 * size_t{count}] = x;
        xy[2 * size_t{count} + 1] = y;
        return ++count >= max;
    }
};

// The scan region and the ring of one call: rows y0 .. y1 - 1 and columns
// x0 .. x1 - 1 (empty when the border leaves nothing).
struct ScanFrame {
    uint32_t x0 = 0, x1 = 0, y0 = 0, y1 = 0;
    size_t stride = 0;
    int t = 0;
    ptrdiff_t off[16] = {};
    bool empty() const { return x0 >= x1 || y0 >= y1; }
};

// A border below 4 is 3 (the ring's radius); a stride of 0 is the width.
constexpr uint32_t effectiveBorder(uint32_t border) { return border < 4 ? 3 : border; }

inline ScanFrame scanFrame(uint32_t width, uint32_t height, uint32_t stride, uint32_t barrier, uint32_t border) {
    ScanFrame f;
    const uint64_t b = effectiveBorder(border);
    if (2 * b >= height || 2 * b >= width || barrier >= 255) return f;  // nothing to find
    f.x0 = f.y0 = static_cast<uint32_t>(b);
    f.x1 = width - f.x0;
    f.y1 = height - f.y0;
    f.stride = stride ? stride : width;
    f.t = saturatedBarrier(barrier);
    ringOffsets(f.off, static_cast<uint32_t>(f.stride));
    return f;
}

// The scan of columns x0 .. x1 - 1 of row y; true when the list is full.
template <int Arc, class Excluded>
inline bool scanSpan(const uint8_t* row, const ptrdiff_t* off, int t, uint32_t x0, uint32_t x1, uint32_t y,
                     const Excluded& excluded, CornerSink& sink) {
    for (uint32_t x = x0; x < x1; ++x) {
        if (excluded(x, y)) continue;
        if (isCorner<Arc>(row + x, off, t) && sink.add(x, y)) return true;
    }
    return false;
}

}  // namespace pxr::fast
