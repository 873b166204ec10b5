// Pieces of random-argument tests: planes sized exactly to what the
// arguments claim (so the address sanitizer sees their true end) and
// random strides. fuzzEntry uses them; tests of multi-plane entry points
// build their own loops from them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace pxr::test {

// Null now and then (1 in 16), else a heap buffer of exactly
// max(stride, rowBytes) x (rows - 1) + rowBytes bytes of random content.
class FuzzPlane {
public:
    FuzzPlane(std::mt19937& gen, uint32_t rowBytes, uint32_t rows, uint32_t stride) {
        if (gen() % 16 == 0) return;
        const size_t r = rows ? rows : 1;
        bytes_.resize(size_t{std::max(stride, rowBytes)} * (r - 1) + std::max<size_t>(rowBytes, 1));
        for (auto& b : bytes_) b = static_cast<uint8_t>(gen());
    }
    uint8_t* data() { return bytes_.empty() ? nullptr : bytes_.data(); }

private:
    std::vector<uint8_t> bytes_;
};

// A stride argument: 0 (packed), one byte short of the row, or with up to 8
// bytes of slack.
inline uint32_t randomStride(std::mt19937& gen, uint32_t rowBytes) {
    switch (gen() % 4) {
        case 0: return 0;
        case 1: return rowBytes > 0 ? rowBytes - 1 : 0;
        default: return rowBytes + static_cast<uint32_t>(gen() % 9);
    }
}

}  // namespace pxr::test
