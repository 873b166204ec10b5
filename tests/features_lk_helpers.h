// Helpers of the Lucas-Kanade tracker tests: textured frames, pyramids in
// both record layouts, and arrays with guard words.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "pixora.h"

namespace pxr::test::lk {

// An 8-bit frame with `slack` bytes after each row, starting `misalign`
// bytes into its storage.
struct Frame {
    uint32_t width = 0, height = 0, stride = 0, offset = 0;
    std::vector<uint8_t> px;
    Frame() = default;
    Frame(uint32_t w, uint32_t h, uint32_t slack = 0, uint32_t misalign = 0)
        : width(w), height(h), stride(w + slack), offset(misalign), px(size_t{w + slack} * h + 1 + misalign, 0x5a) {}
    uint8_t* data() { return px.data() + offset; }
    const uint8_t* data() const { return px.data() + offset; }
    uint8_t& at(uint32_t x, uint32_t y) { return data()[size_t{y} * stride + x]; }
    uint8_t at(uint32_t x, uint32_t y) const { return data()[size_t{y} * stride + x]; }
};

// A smooth texture (sum of plane waves, periods 11 to 31 pixels, times
// `scale`), value at the continuous position (x - dx, y - dy): the second
// frame of a pure translation by (dx, dy) is texture(w, h, dx, dy).
inline float waves(float x, float y) {
    return 128.0f + 38.0f * std::sin(0.29f * x + 0.13f * y) + 30.0f * std::sin(-0.11f * x + 0.23f * y + 1.0f) +
           24.0f * std::cos(0.41f * x + 0.37f * y + 2.0f) + 14.0f * std::sin(0.53f * x - 0.47f * y);
}

inline Frame texture(uint32_t w, uint32_t h, float dx = 0.0f, float dy = 0.0f, uint32_t slack = 0,
                     float scale = 1.0f) {
    Frame f(w, h, slack);
    for (uint32_t y = 0; y < h; ++y)
        for (uint32_t x = 0; x < w; ++x) {
            const float v = waves((static_cast<float>(x) - dx) / scale, (static_cast<float>(y) - dy) / scale);
            f.at(x, y) = static_cast<uint8_t>(std::clamp(std::lround(v), 0l, 255l));
        }
    return f;
}

// A Gaussian pyramid of a frame, level sizes rounded up (any base size).
// Level 0 is the frame itself (with its stride); the other levels are
// packed when rowAlignment is 0. v1() gives three-word copies, valid as
// such when every stride equals its width.
class Pyramid {
public:
    Pyramid(const Frame& base, int32_t levels, uint32_t rowAlignment = 0)
        : n_(static_cast<uint32_t>(std::max(levels, 1))), v2_(n_), v1_(n_) {
        pxrPyramidAllocate_v3(v2_.data(), base.width, base.height, base.stride, 1, n_, 0, rowAlignment,
                              PIXORA_PYRAMID_LEVEL_CEIL);
        pxrPyramidCreateu8_v3(base.data(), base.width, base.height, base.stride, n_, v2_.data(),
                              PIXORA_PYRAMID_LEVEL_CEIL);
        for (uint32_t l = 0; l < n_; ++l) v1_[l] = {v2_[l].ptr, v2_[l].width, v2_[l].height};
    }
    ~Pyramid() { pxrPyramidDelete_v2(v2_.data(), n_, 1); }
    Pyramid(const Pyramid&) = delete;
    Pyramid& operator=(const Pyramid&) = delete;

    const pxrPyramidLevel_v2* v2() const { return v2_.data(); }
    const pxrPyramidLevel* v1() const { return v1_.data(); }
    pxrPyramidLevel_v2* v2() { return v2_.data(); }
    pxrPyramidLevel* v1() { return v1_.data(); }

private:
    uint32_t n_;
    std::vector<pxrPyramidLevel_v2> v2_;
    std::vector<pxrPyramidLevel> v1_;
};

// n elements between guard words; a fixed pattern fills everything.
template <class T>
class Guarded {
public:
    static constexpr size_t kGuard = 8;
    explicit Guarded(size_t n, uint8_t pattern = 0xa5) : n_(n), bytes_((n + 2 * kGuard) * sizeof(T), pattern) {
        pristine_ = bytes_;
    }
    T* data() { return reinterpret_cast<T*>(bytes_.data()) + kGuard; }
    std::vector<T> values() const {
        std::vector<T> v(n_);
        std::memcpy(v.data(), bytes_.data() + kGuard * sizeof(T), n_ * sizeof(T));
        return v;
    }
    bool guardsIntact() const {
        const size_t g = kGuard * sizeof(T);
        return std::equal(bytes_.begin(), bytes_.begin() + g, pristine_.begin()) &&
               std::equal(bytes_.end() - g, bytes_.end(), pristine_.end() - g);
    }
    bool untouched() const { return bytes_ == pristine_; }
    // Every byte, guards included.
    const std::vector<uint8_t>& bytes() const { return bytes_; }

private:
    size_t n_;
    std::vector<uint8_t> bytes_, pristine_;
};

// The bits of a float array, so that NaN compares equal to itself.
inline std::vector<uint32_t> bitsOf(const std::vector<float>& v) {
    std::vector<uint32_t> b(v.size());
    std::memcpy(b.data(), v.data(), v.size() * sizeof(float));
    return b;
}

}  // namespace pxr::test::lk
