// Test images with stride slack, a chosen misalignment and guard bytes
// around them, to prove that an operation writes its region and nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pxr::test {

class GuardedImage {
public:
    static constexpr size_t kGuard = 64;

    // width and height in pixels; bytesPerPixel the element size times the
    // channels; slack extra bytes per row; misalign bytes added to a 64-byte
    // aligned start.
    GuardedImage(uint32_t width, uint32_t height, uint32_t bytesPerPixel = 1, uint32_t slack = 0,
                 uint32_t misalign = 0);

    uint8_t* data() { return base() + kGuard; }
    const uint8_t* data() const { return base() + kGuard; }
    template <class T> T* as() { return reinterpret_cast<T*>(data()); }
    uint8_t* row(uint32_t y) { return data() + size_t{y} * stride_; }
    uint8_t& at(uint32_t x, uint32_t y) { return row(y)[x * bpp_]; }

    uint32_t width() const { return width_; }
    uint32_t height() const { return height_; }
    uint32_t stride() const { return stride_; }
    uint32_t bytesPerPixel() const { return bpp_; }

    // Fills every byte (guards and slack too) from a seeded generator and
    // remembers the result.
    void fillRandom(uint32_t seed);
    // Fills the image region with one value (guards keep their pattern).
    void fill(uint8_t value);
    // True when no byte outside the image region differs from the last fill.
    bool outsideUntouched() const;
    // True when no byte at all differs from the last fill.
    bool untouched() const;
    // The image with its guards: equal for equal contents wherever the
    // buffer happens to sit in memory.
    std::vector<uint8_t> guarded() const;
    // The image region only, row after row without slack.
    std::vector<uint8_t> pixels() const;

private:
    uint8_t* base() { return storage_.data() + offset_; }
    const uint8_t* base() const { return storage_.data() + offset_; }
    bool inRegion(size_t i) const;

    uint32_t width_, height_, bpp_, stride_;
    size_t offset_ = 0, span_ = 0;
    std::vector<uint8_t> storage_;
    std::vector<uint8_t> pristine_;
};

// Deterministic random bytes.
std::vector<uint8_t> randomBytes(size_t n, uint32_t seed);

}  // namespace pxr::test
