#include "support/guarded_image.h"

#include <algorithm>
#include <cstring>
#include <random>

namespace pxr::test {

GuardedImage::GuardedImage(uint32_t width, uint32_t height, uint32_t bytesPerPixel, uint32_t slack,
                           uint32_t misalign)
    : width_(width), height_(height), bpp_(bytesPerPixel), stride_(width * bytesPerPixel + slack) {
    span_ = size_t{stride_} * height_;
    storage_.resize(span_ + 2 * kGuard + 128);
    const auto addr = reinterpret_cast<uintptr_t>(storage_.data());
    offset_ = ((64 - (addr + kGuard) % 64) % 64) + misalign % 64;
    fillRandom(width * 131u + height * 7u + slack + misalign);
}

void GuardedImage::fillRandom(uint32_t seed) {
    const auto bytes = randomBytes(span_ + 2 * kGuard, seed);
    std::fill(storage_.begin(), storage_.end(), uint8_t{0});
    std::copy(bytes.begin(), bytes.end(), base());
    pristine_ = storage_;
}

void GuardedImage::fill(uint8_t value) {
    for (uint32_t y = 0; y < height_; ++y) std::memset(row(y), value, size_t{width_} * bpp_);
    pristine_ = storage_;
}

bool GuardedImage::inRegion(size_t i) const {
    if (i < offset_ + kGuard) return false;
    const size_t rel = i - offset_ - kGuard;
    if (rel >= span_) return false;
    return rel % stride_ < size_t{width_} * bpp_ && rel / stride_ < height_;
}

bool GuardedImage::outsideUntouched() const {
    for (size_t i = 0; i < storage_.size(); ++i)
        if (storage_[i] != pristine_[i] && !inRegion(i)) return false;
    return true;
}

bool GuardedImage::untouched() const { return storage_ == pristine_; }

std::vector<uint8_t> GuardedImage::guarded() const {
    return std::vector<uint8_t>(base(), base() + span_ + 2 * kGuard);
}

std::vector<uint8_t> GuardedImage::pixels() const {
    std::vector<uint8_t> out;
    out.reserve(size_t{width_} * bpp_ * height_);
    for (uint32_t y = 0; y < height_; ++y) {
        const uint8_t* r = data() + size_t{y} * stride_;
        out.insert(out.end(), r, r + size_t{width_} * bpp_);
    }
    return out;
}

std::vector<uint8_t> randomBytes(size_t n, uint32_t seed) {
    std::mt19937 gen(seed);
    std::vector<uint8_t> out(n);
    for (auto& b : out) b = static_cast<uint8_t>(gen() >> 24);
    return out;
}

}  // namespace pxr::test
