// Pixel and row kernels of the correlation filters, shared by the reference
// and vector kinds: the scaling rule, window sums, the Q15 passes and the
// padded copy of the convolution. The vector kind runs these for borders,
// remainders and narrow images, so rounding and edges cannot drift.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pxr::corr {

// 16-bit and float images may start, or have rows, at odd addresses:
// elements are read and written through memcpy.
template <class T>
inline T loadAt(const uint8_t* p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
}
template <class T>
inline void storeAt(uint8_t* p, T v) {
    std::memcpy(p, &v, sizeof v);
}

// Output element types and the range their values are clamped to.
struct U8Out {
    using T = uint8_t;
    static constexpr int32_t lo = 0, hi = 255;
};
struct S16Out {
    using T = int16_t;
    static constexpr int32_t lo = -32768, hi = 32767;
};

// A shift of this many bits or more, either way, leaves nothing of the sum.
inline constexpr int32_t kShiftLimit = 32;

// The scaling of every integer correlation and convolution, clamped to
// [lo, hi] (lo <= 0 <= hi):
//   shift in 1..31:  (sum + 2^(shift-1)) >> shift, arithmetic (half rounds up),
//                    formed as (sum >> shift) + bit (shift-1) so the addition
//                    cannot overflow;
//   shift in -31..0: sum x 2^-shift, exactly (clamping first changes nothing);
//   otherwise 0.
template <class Sum>
inline int32_t scaled(Sum sum, int32_t shift, int32_t lo, int32_t hi) {
    if (shift >= kShiftLimit || shift <= -kShiftLimit) return 0;
    if (shift > 0) {
        const Sum r = (sum >> shift) + ((sum >> (shift - 1)) & 1);
        return static_cast<int32_t>(std::clamp<Sum>(r, lo, hi));
    }
    const int64_t v = static_cast<int64_t>(std::clamp<Sum>(sum, lo, hi)) * (int64_t{1} << -shift);
    return static_cast<int32_t>(std::clamp<int64_t>(v, lo, hi));
}

// Tap idx (raster order) of a kw x kh kernel of `count` elements; the
// convolution reads the kernel back to front (its last element meets the
// window's first pixel).
template <bool Reversed, class K>
inline int32_t tap(const K* k, size_t count, size_t idx) {
    return Reversed ? k[count - 1 - idx] : k[idx];
}

// Sum over a kw x kh window whose top-left pixel is p, in 32-bit two's
// complement arithmetic (exact while it does not overflow).
template <bool Reversed, class K>
inline int32_t windowSum32(const uint8_t* p, size_t stride, const K* k, uint32_t kw, uint32_t kh) {
    const size_t count = size_t{kw} * kh;
    uint32_t sum = 0;
    size_t idx = 0;
    for (uint32_t i = 0; i < kh; ++i, p += stride)
        for (uint32_t j = 0; j < kw; ++j, ++idx) sum += static_cast<uint32_t>(tap<Reversed>(k, count, idx) * p[j]);
    return static_cast<int32_t>(sum);
}

// The same in 64 bits, for kernels whose sums may leave the 32-bit range.
template <bool Reversed, class K>
inline int64_t windowSum64(const uint8_t* p, size_t stride, const K* k, uint32_t kw, uint32_t kh) {
    const size_t count = size_t{kw} * kh;
    int64_t sum = 0;
    size_t idx = 0;
    for (uint32_t i = 0; i < kh; ++i, p += stride)
        for (uint32_t j = 0; j < kw; ++j, ++idx) sum += int64_t{tap<Reversed>(k, count, idx)} * p[j];
    return sum;
}

// Pixels written along a side of `size` by an n-tap correlation that keeps
// to full neighbourhoods: positions n/2 .. size - n/2 - 1.
inline uint32_t fullWindows(uint32_t size, uint32_t n) {
    const uint64_t border = 2ull * (n / 2);
    return size > border ? static_cast<uint32_t>(size - border) : 0;
}

// Outputs [x0, x1) of one row: output x is the window whose top-left pixel
// is top + x, scaled and stored as Out::T at out + x * sizeof(Out::T).
template <class Out, bool Reversed, bool Wide = false, class K>
inline void windowRow(const uint8_t* top, size_t stride, const K* k, uint32_t kw, uint32_t kh, int32_t shift,
                      uint8_t* out, uint32_t x0, uint32_t x1) {
    using T = typename Out::T;
    for (uint32_t x = x0; x < x1; ++x) {
        int32_t v;
        if constexpr (Wide)
            v = scaled(windowSum64<Reversed>(top + x, stride, k, kw, kh), shift, Out::lo, Out::hi);
        else
            v = scaled(windowSum32<Reversed>(top + x, stride, k, kw, kh), shift, Out::lo, Out::hi);
        storeAt<T>(out + size_t{x} * sizeof(T), static_cast<T>(v));
    }
}

// Float window: the taps are added in raster order, one product at a time,
// starting from 0 (the vector kind keeps this order lane by lane).
inline float windowSumF32(const uint8_t* p, size_t stride, const float* k, uint32_t n) {
    float sum = 0.0f;
    for (uint32_t i = 0; i < n; ++i, p += stride)
        for (uint32_t j = 0; j < n; ++j) sum += k[size_t{i} * n + j] * static_cast<float>(p[j]);
    return sum;
}

inline void windowRowF32(const uint8_t* top, size_t stride, const float* k, uint32_t n, uint8_t* out,
                         uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) storeAt<float>(out + size_t{x} * 4, windowSumF32(top + x, stride, k, n));
}

// ---- Separable correlation on bytes ---------------------------------------

// Column sums sum_i ky[i] x top(x, i) for columns [x0, x1), 32-bit wrapping.
inline void sepColumns(const uint8_t* top, size_t ss, const int8_t* ky, uint32_t n, int32_t* cols, uint32_t x0,
                       uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        uint32_t sum = 0;
        const uint8_t* p = top + x;
        for (uint32_t i = 0; i < n; ++i, p += ss) sum += static_cast<uint32_t>(ky[i] * *p);
        cols[x] = static_cast<int32_t>(sum);
    }
}

// Outputs [x0, x1) of a row: output x is sum_j kx[j] x cols[x + j], scaled.
inline void sepRow(const int32_t* cols, const int8_t* kx, uint32_t m, int32_t shift, uint8_t* out, uint32_t x0,
                   uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        uint32_t sum = 0;
        for (uint32_t j = 0; j < m; ++j)
            sum += static_cast<uint32_t>(static_cast<int32_t>(kx[j])) * static_cast<uint32_t>(cols[x + j]);
        out[x] = static_cast<uint8_t>(scaled(static_cast<int32_t>(sum), shift, U8Out::lo, U8Out::hi));
    }
}

// ---- Separable Q15 correlation ------------------------------------------

// Q15 rounding of a tap sum, ((sum >> 14) + 1) >> 1 (half rounds up), then
// saturation to 16 bits.
inline int16_t q15(int32_t sum) {
    return static_cast<int16_t>(std::clamp(((sum >> 14) + 1) >> 1, -32768, 32767));
}

// The taps [first, last) of an n-tap kernel centred on position pos (tap t
// reads pos - n/2 + t) that fall inside [0, size).
struct TapRange {
    uint32_t first, last;
};
inline TapRange tapsInside(uint32_t pos, uint32_t n, uint32_t size) {
    const int64_t start = int64_t{pos} - n / 2;
    const int64_t first = std::max<int64_t>(0, -start);
    const int64_t last = std::min<int64_t>(n, int64_t{size} - start);
    return {static_cast<uint32_t>(first), static_cast<uint32_t>(std::max(first, last))};
}

// Vertical pass, row y, columns [x0, x1): src rows are `ss` bytes apart,
// tmpRow is the packed row y of tmp.
inline void q15VerticalSpan(const uint8_t* src, size_t ss, uint32_t h, const int16_t* k, uint32_t n, uint32_t y,
                            uint8_t* tmpRow, uint32_t x0, uint32_t x1) {
    const TapRange r = tapsInside(y, n, h);
    const uint8_t* top = src + (int64_t{y} - n / 2 + r.first) * static_cast<int64_t>(ss);
    for (uint32_t x = x0; x < x1; ++x) {
        uint32_t sum = 0;
        const uint8_t* p = top + size_t{x} * 2;
        for (uint32_t t = r.first; t < r.last; ++t, p += ss)
            sum += static_cast<uint32_t>(int32_t{k[t]} * loadAt<int16_t>(p));
        storeAt<int16_t>(tmpRow + size_t{x} * 2, q15(static_cast<int32_t>(sum)));
    }
}

// Horizontal pass of one row, columns [x0, x1), the kernel cropped to the
// row's w values.
inline void q15HorizontalSpan(const uint8_t* tmpRow, uint32_t w, const int16_t* k, uint32_t n, uint8_t* dstRow,
                              uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        const TapRange r = tapsInside(x, n, w);
        const uint8_t* p = tmpRow + (int64_t{x} - n / 2 + r.first) * 2;
        uint32_t sum = 0;
        for (uint32_t t = r.first; t < r.last; ++t, p += 2)
            sum += static_cast<uint32_t>(int32_t{k[t]} * loadAt<int16_t>(p));
        storeAt<int16_t>(dstRow + size_t{x} * 2, q15(static_cast<int32_t>(sum)));
    }
}

// ---- Padded copy of the convolution ---------------------------------------

// Geometry of the padded source: kw & ~1 columns and kh & ~1 rows of
// border, half on each side.
struct PaddedShape {
    uint32_t padX, padY;
    size_t stride, rows;
    size_t bytes() const { return stride * rows; }
};
// False when the copy would not fit in memory's address range.
inline bool paddedShape(uint32_t w, uint32_t h, uint32_t kw, uint32_t kh, PaddedShape& s) {
    s.padX = kw / 2;
    s.padY = kh / 2;
    const uint64_t stride = uint64_t{w} + 2ull * s.padX, rows = uint64_t{h} + 2ull * s.padY;
    if (stride > SIZE_MAX / rows) return false;
    s.stride = static_cast<size_t>(stride);
    s.rows = static_cast<size_t>(rows);
    return true;
}

// Fills the padded copy: PIXORA_BORDER_REPLICATE (2) repeats the nearest
// edge pixel, PIXORA_BORDER_CONSTANT (1) uses `value`, anything else 0.
inline void fillPadded(const uint8_t* src, uint32_t w, uint32_t h, size_t ss, uint32_t borderType, uint8_t value,
                       const PaddedShape& s, uint8_t* pad) {
    const bool replicate = borderType == 2;
    const uint8_t fill = borderType == 1 ? value : 0;
    for (uint32_t y = 0; y < h; ++y) {
        uint8_t* row = pad + (size_t{y} + s.padY) * s.stride;
        const uint8_t* in = src + size_t{y} * ss;
        std::memset(row, replicate ? in[0] : fill, s.padX);
        std::memcpy(row + s.padX, in, w);
        std::memset(row + s.padX + w, replicate ? in[w - 1] : fill, s.padX);
    }
    for (uint32_t y = 0; y < s.padY; ++y) {
        uint8_t* above = pad + size_t{y} * s.stride;
        uint8_t* below = pad + (size_t{h} + s.padY + y) * s.stride;
        if (replicate) {
            std::memcpy(above, pad + size_t{s.padY} * s.stride, s.stride);
            std::memcpy(below, pad + (size_t{h} + s.padY - 1) * s.stride, s.stride);
        } else {
            std::memset(above, fill, s.stride);
            std::memset(below, fill, s.stride);
        }
    }
}

// The first path accumulates in 32 bits. It is exact when 255 x sum|k|
// fits: no partial sum can then leave the int32 range. Larger kernels take
// the 64-bit BigKernel path, with the same results.
inline constexpr uint64_t kFirstPathLimit = INT32_MAX / 255;  // 8421504: any 257 taps fit
inline bool fitsFirstPath(const int16_t* k, uint32_t kw, uint32_t kh) {
    uint64_t total = 0;
    const size_t count = size_t{kw} * kh;
    for (size_t i = 0; i < count; ++i) {
        total += static_cast<uint64_t>(k[i] < 0 ? -int32_t{k[i]} : int32_t{k[i]});
        if (total > kFirstPathLimit) return false;
    }
    return true;
}

}  // namespace pxr::corr
