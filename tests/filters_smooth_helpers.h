// Helpers of the smoothing-filter tests: typed images, shapes whose rows are
// aligned to wider elements, finite float test data, the binomial weights.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "support/differential.h"
#include "support/guarded_image.h"

namespace pxr::test::smooth {

// A packed w x h image of T.
template <class T>
struct Img {
    uint32_t w, h;
    std::vector<T> px;
    Img(uint32_t width, uint32_t height, T fill = T{}) : w(width), h(height), px(size_t{width} * height, fill) {}
    T& at(uint32_t x, uint32_t y) { return px[size_t{y} * w + x]; }
    T at(uint32_t x, uint32_t y) const { return px[size_t{y} * w + x]; }
    uint32_t stride() const { return w * sizeof(T); }
    T* data() { return px.data(); }
    const T* data() const { return px.data(); }
};

template <class T>
Img<T> randomImg(uint32_t w, uint32_t h, uint32_t seed) {
    Img<T> img(w, h);
    const auto bytes = randomBytes(img.px.size() * sizeof(T), seed);
    std::memcpy(img.px.data(), bytes.data(), bytes.size());
    return img;
}

// Finite floats in [-512, 512) with fractions, from random bytes.
inline float finiteFrom(const uint8_t* p) {
    int16_t bits;
    std::memcpy(&bits, p, 2);
    return static_cast<float>(bits) / 64.0f;
}

inline Img<float> randomFloatImg(uint32_t w, uint32_t h, uint32_t seed) {
    Img<float> img(w, h);
    const auto bytes = randomBytes(img.px.size() * 2, seed);
    for (size_t i = 0; i < img.px.size(); ++i) img.px[i] = finiteFrom(&bytes[2 * i]);
    return img;
}

// The standard shapes with strides and starts aligned to `elem` bytes.
inline std::vector<Shape> alignedShapes(uint32_t elem) {
    std::vector<Shape> out;
    for (Shape s : standardShapes()) {
        s.slack = (s.slack + elem - 1) / elem * elem;
        s.misalign = (s.misalign * elem) % 64;
        out.push_back(s);
    }
    return out;
}

// A copy of a float plane's geometry (stride, start alignment) holding
// finite values derived from its bytes; the original stays untouched.
inline GuardedImage finiteCopy(GuardedImage& in) {
    const uint32_t misalign = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(in.data()) % 64);
    GuardedImage out(in.width(), in.height(), 4, in.stride() - in.width() * 4, misalign);
    for (uint32_t y = 0; y < in.height(); ++y)
        for (uint32_t x = 0; x < in.width(); ++x) {
            const float v = finiteFrom(in.row(y) + size_t{x} * 4);
            std::memcpy(out.row(y) + size_t{x} * 4, &v, 4);
        }
    return out;
}

// Fills a float plane with finite values derived from its current bytes.
inline void makeFinite(GuardedImage& img) {
    for (uint32_t y = 0; y < img.height(); ++y)
        for (uint32_t x = 0; x < img.width(); ++x) {
            const float v = finiteFrom(img.row(y) + size_t{x} * 4);
            std::memcpy(img.row(y) + size_t{x} * 4, &v, 4);
        }
}

// Row n of Pascal's triangle.
inline std::vector<int64_t> pascal(int n) {
    std::vector<int64_t> r(n + 1, 0);
    r[0] = 1;
    for (int i = 1; i <= n; ++i)
        for (int k = i; k > 0; --k) r[k] += r[k - 1];
    return r;
}

inline uint8_t boxRoundModel(uint32_t sum, uint32_t multiplier) {
    return static_cast<uint8_t>((sum * multiplier + 32768u) >> 16);
}

}  // namespace pxr::test::smooth
