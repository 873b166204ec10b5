// Kernels of grey-level erosion and dilation shared by the reference and
// vector kinds. Op is Min (erosion) or Max (dilation); its neutral value
// (255 or 0) pads the NxN copy so that outside taps never win.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pxr::morph {

struct Min {
    static constexpr uint8_t kNeutral = 255;
    static uint8_t apply(uint8_t a, uint8_t b) { return std::min(a, b); }
};
struct Max {
    static constexpr uint8_t kNeutral = 0;
    static uint8_t apply(uint8_t a, uint8_t b) { return std::max(a, b); }
};

// ---- 3x3 -------------------------------------------------------------------

// Columns [x0, x1) (1 <= x0, x1 <= width-1) of one output row from three
// source rows; the column extremes are reused along the row. The edge rows
// pass a row twice.
template <class Op>
inline void span3(const uint8_t* t, const uint8_t* m, const uint8_t* b, uint8_t* out, uint32_t x0, uint32_t x1) {
    if (x0 >= x1) return;
    uint8_t c0 = Op::apply(Op::apply(t[x0 - 1], m[x0 - 1]), b[x0 - 1]);
    uint8_t c1 = Op::apply(Op::apply(t[x0], m[x0]), b[x0]);
    for (uint32_t x = x0; x < x1; ++x) {
        const uint8_t c2 = Op::apply(Op::apply(t[x + 1], m[x + 1]), b[x + 1]);
        out[x] = Op::apply(Op::apply(c0, c1), c2);
        c0 = c1;
        c1 = c2;
    }
}

// Column x (0 or width-1) of one output row: the in-image columns only.
template <class Op>
inline uint8_t edgeColumn3(const uint8_t* t, const uint8_t* m, const uint8_t* b, uint32_t width, uint32_t x) {
    const uint32_t lo = x > 0 ? x - 1 : 0, hi = std::min(x + 1, width - 1);
    uint8_t r = m[x];
    for (uint32_t i = lo; i <= hi; ++i) r = Op::apply(r, Op::apply(Op::apply(t[i], m[i]), b[i]));
    return r;
}

// The three source rows of output row y, the edge row repeated outside.
struct Rows3 {
    const uint8_t *t, *m, *b;
};
inline Rows3 rows3(const uint8_t* src, uint32_t height, uint32_t stride, uint32_t y) {
    const uint8_t* m = src + size_t{y} * stride;
    return {y > 0 ? m - stride : m, m, y + 1 < height ? m + stride : m};
}

// The edge columns of row y, and the constant border where it applies: the
// border value joins every pixel that has a tap outside the image.
template <class Op>
inline void edges3(const Rows3& r, uint32_t width, uint32_t height, uint32_t y, uint8_t* out, bool constant,
                   uint8_t value) {
    out[0] = edgeColumn3<Op>(r.t, r.m, r.b, width, 0);
    if (width > 1) out[width - 1] = edgeColumn3<Op>(r.t, r.m, r.b, width, width - 1);
    if (!constant) return;
    if (y == 0 || y + 1 == height) {
        for (uint32_t x = 0; x < width; ++x) out[x] = Op::apply(out[x], value);
    } else {
        out[0] = Op::apply(out[0], value);
        out[width - 1] = Op::apply(out[width - 1], value);
    }
}

// ---- NxN -------------------------------------------------------------------

// The padded copy: (width + 2 half) x (height + 2 half) bytes and one line
// buffer of the padded width, in one scratch block. False when it cannot be
// addressed.
struct Padded {
    uint32_t half = 0;
    size_t width = 0, height = 0;
    size_t bytes() const { return width * height + width; }
};
inline bool paddedShape(uint32_t width, uint32_t height, uint32_t n, Padded& p) {
    p.half = n / 2;
    const uint64_t pw = uint64_t{width} + 2 * uint64_t{p.half}, ph = uint64_t{height} + 2 * uint64_t{p.half};
    if (pw > SIZE_MAX / (ph + 1)) return false;
    p.width = static_cast<size_t>(pw);
    p.height = static_cast<size_t>(ph);
    return true;
}

template <class Op>
inline void fillPadded(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, const Padded& p,
                       uint8_t* pad) {
    std::memset(pad, Op::kNeutral, p.width * p.half);
    for (uint32_t y = 0; y < height; ++y) {
        uint8_t* row = pad + (y + size_t{p.half}) * p.width;
        std::memset(row, Op::kNeutral, p.half);
        std::memcpy(row + p.half, src + size_t{y} * stride, width);
        std::memset(row + p.half + width, Op::kNeutral, p.half);
    }
    std::memset(pad + (height + size_t{p.half}) * p.width, Op::kNeutral, p.width * p.half);
}

// Vertical extreme of n padded rows starting at `top`, columns [x0, x1).
template <class Op>
inline void columnExtreme(const uint8_t* top, size_t pitch, uint32_t n, uint8_t* line, size_t x0, size_t x1) {
    for (size_t x = x0; x < x1; ++x) line[x] = top[x];
    for (uint32_t i = 1; i < n; ++i) {
        const uint8_t* row = top + i * pitch;
        for (size_t x = x0; x < x1; ++x) line[x] = Op::apply(line[x], row[x]);
    }
}

// Horizontal extreme of n line entries for outputs [x0, x1).
template <class Op>
inline void rowExtreme(const uint8_t* line, uint32_t n, uint8_t* out, uint32_t x0, uint32_t x1) {
    for (uint32_t x = x0; x < x1; ++x) {
        uint8_t r = line[x];
        for (uint32_t i = 1; i < n; ++i) r = Op::apply(r, line[x + i]);
        out[x] = r;
    }
}

}  // namespace pxr::morph
