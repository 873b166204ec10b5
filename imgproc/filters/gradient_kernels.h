// Row kernels of the 3x3 gradient filters, shared by the reference and
// vector kinds: the per-pixel derivatives (the readable definitions), the
// output conventions and the row walk. The vector kind uses them for rows
// too narrow for a vector and keeps to their order of operations.
#pragma once

#include <cstddef>
#include <cstdint>

namespace pxr::grad {

template <class T> inline const T* rowAt(const T* base, uint32_t y, uint32_t stride) {
    return reinterpret_cast<const T*>(reinterpret_cast<const uint8_t*>(base) + size_t{y} * stride);
}
template <class T> inline T* rowAt(T* base, uint32_t y, uint32_t stride) {
    return reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(base) + size_t{y} * stride);
}

// Derivatives of one pixel; t, m, b are the rows above, at and below it.
template <class T> struct Pair {
    T dx, dy;
};

// Central differences: dx = right - left, dy = below - above.
inline constexpr auto central = [](const uint8_t* t, const uint8_t* m, const uint8_t* b, uint32_t x) {
    return Pair<int32_t>{m[x + 1] - m[x - 1], b[x] - t[x]};
};

// 3x3 Sobel, unnormalised: dx = right column - left column, each weighted
// 1 2 1 down the rows; dy = bottom row - top row, weighted 1 2 1 across.
inline constexpr auto sobel = [](const uint8_t* t, const uint8_t* m, const uint8_t* b, uint32_t x) {
    const int32_t left = t[x - 1] + 2 * m[x - 1] + b[x - 1];
    const int32_t right = t[x + 1] + 2 * m[x + 1] + b[x + 1];
    const int32_t top = t[x - 1] + 2 * t[x] + t[x + 1];
    const int32_t bottom = b[x - 1] + 2 * b[x] + b[x + 1];
    return Pair<int32_t>{right - left, bottom - top};
};

// Scharr, unshifted: 3 x (the two diagonal differences) + 10 x the axial one.
inline constexpr auto scharr = [](const uint8_t* t, const uint8_t* m, const uint8_t* b, uint32_t x) {
    const int32_t dx = 3 * ((t[x + 1] - t[x - 1]) + (b[x + 1] - b[x - 1])) + 10 * (m[x + 1] - m[x - 1]);
    const int32_t dy = 3 * ((b[x - 1] - t[x - 1]) + (b[x + 1] - t[x + 1])) + 10 * (b[x] - t[x]);
    return Pair<int32_t>{dx, dy};
};

// 3x3 Sobel on floats, normalised by 8, in this order of operations:
// side = (a + 2 b) + c; dx = (right - left) x 0.125;
// dy = ((d(x-1) + 2 d(x)) + d(x+1)) x 0.125 with d = bottom - top.
inline constexpr auto sobelF32 = [](const float* t, const float* m, const float* b, uint32_t x) {
    const float left = (t[x - 1] + 2.0f * m[x - 1]) + b[x - 1];
    const float right = (t[x + 1] + 2.0f * m[x + 1]) + b[x + 1];
    const float dl = b[x - 1] - t[x - 1], dc = b[x] - t[x], dr = b[x + 1] - t[x + 1];
    return Pair<float>{(right - left) * 0.125f, ((dl + 2.0f * dc) + dr) * 0.125f};
};

// Conversions of an integer sum to the stored element.
template <class Out> struct Raw {
    static Out apply(int32_t v) { return static_cast<Out>(v); }
};
template <class Out> struct Shift3 {  // arithmetic: -1 >> 3 is -1
    static Out apply(int32_t v) { return static_cast<Out>(v >> 3); }
};
struct Eighth {
    static float apply(int32_t v) { return static_cast<float>(v) * 0.125f; }
};
template <class Out> struct Same {  // float sums are already final
    static Out apply(Out v) { return v; }
};

// Output of one row: element i belongs to source column i + 1.
template <class Out, class Conv> struct Interleaved {
    Out* out;
    template <class P> void operator()(uint32_t i, P p) const {
        out[2 * size_t{i}] = Conv::apply(p.dx);
        out[2 * size_t{i} + 1] = Conv::apply(p.dy);
    }
};
template <class Out, class Conv> struct Planar {
    Out* dx;
    Out* dy;
    template <class P> void operator()(uint32_t i, P p) const {
        dx[i] = Conv::apply(p.dx);
        dy[i] = Conv::apply(p.dy);
    }
};

// Source columns [x0, x1) of one interior row, 1 <= x0, x1 <= width - 1.
template <class Src, class Op, class Store>
inline void span(const Src* t, const Src* m, const Src* b, uint32_t x0, uint32_t x1, Op op, Store store) {
    for (uint32_t x = x0; x < x1; ++x) store(x - 1, op(t, m, b, x));
}

// Calls row(outRow, above, at, below) for every interior source row; images
// without an interior (width or height below 3) call nothing.
template <class Src, class Row>
inline void interiorRows(const Src* src, uint32_t width, uint32_t height, uint32_t stride, Row row) {
    if (width < 3 || height < 3) return;
    for (uint32_t y = 1; y + 1 < height; ++y)
        row(y - 1, rowAt(src, y - 1, stride), rowAt(src, y, stride), rowAt(src, y + 1, stride));
}

// A whole gradient image by the scalar path: interleaved output.
template <class Src, class Out, class Conv, class Op>
inline void interleavedImage(const Src* src, uint32_t width, uint32_t height, uint32_t stride, Out* out,
                             uint32_t outStride, Op op) {
    interiorRows(src, width, height, stride, [&](uint32_t oy, const Src* t, const Src* m, const Src* b) {
        span(t, m, b, 1, width - 1, op, Interleaved<Out, Conv>{rowAt(out, oy, outStride)});
    });
}

// A whole gradient image by the scalar path: planar output.
template <class Src, class Out, class Conv, class Op>
inline void planarImage(const Src* src, uint32_t width, uint32_t height, uint32_t stride, Out* dx, Out* dy,
                        uint32_t outStride, Op op) {
    interiorRows(src, width, height, stride, [&](uint32_t oy, const Src* t, const Src* m, const Src* b) {
        span(t, m, b, 1, width - 1, op, Planar<Out, Conv>{rowAt(dx, oy, outStride), rowAt(dy, oy, outStride)});
    });
}

// Sobel magnitude of one pixel: min(|Gx| + |Gy|, 255).
inline uint8_t magnitude(const uint8_t* t, const uint8_t* m, const uint8_t* b, uint32_t x) {
    const Pair<int32_t> g = sobel(t, m, b, x);
    const int32_t s = (g.dx < 0 ? -g.dx : g.dx) + (g.dy < 0 ? -g.dy : g.dy);
    return static_cast<uint8_t>(s < 255 ? s : 255);
}

}  // namespace pxr::grad
