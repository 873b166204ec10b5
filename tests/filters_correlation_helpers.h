// Small helpers shared by the correlation and convolution tests.
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace pxr::test::corr {

// Deterministic kernel values in [lo, hi].
template <class T>
std::vector<T> randomKernel(size_t count, int lo, int hi, uint32_t seed) {
    std::mt19937 gen(seed);
    std::uniform_int_distribution<int> dist(lo, hi);
    std::vector<T> k(count);
    for (auto& v : k) v = static_cast<T>(dist(gen));
    return k;
}

inline std::vector<float> randomFloatKernel(size_t count, uint32_t seed) {
    std::mt19937 gen(seed);
    std::uniform_real_distribution<float> dist(-1.5f, 1.5f);
    std::vector<float> k(count);
    for (auto& v : k) v = dist(gen);
    return k;
}

// A w x h image of 16-bit values in rows of `stride` bytes.
class Image16 {
public:
    Image16(uint32_t w, uint32_t h, int16_t fill = 0, uint32_t stride = 0)
        : w_(w), h_(h), stride_(stride ? stride : w * 2), bytes_(size_t{stride_} * h, 0) {
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x) set(x, y, fill);
    }
    int16_t at(uint32_t x, uint32_t y) const {
        int16_t v;
        std::memcpy(&v, bytes_.data() + size_t{y} * stride_ + x * 2, 2);
        return v;
    }
    void set(uint32_t x, uint32_t y, int16_t v) { std::memcpy(bytes_.data() + size_t{y} * stride_ + x * 2, &v, 2); }
    int16_t* data() { return reinterpret_cast<int16_t*>(bytes_.data()); }
    const int16_t* data() const { return reinterpret_cast<const int16_t*>(bytes_.data()); }
    uint32_t stride() const { return stride_; }
    const std::vector<uint8_t>& bytes() const { return bytes_; }

private:
    uint32_t w_, h_, stride_;
    std::vector<uint8_t> bytes_;
};

}  // namespace pxr::test::corr
