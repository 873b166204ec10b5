#include "tools/demo/test_pattern.h"

#include <cmath>

namespace pxr::demo {

Image testPattern(uint32_t width, uint32_t height) {
    Image img;
    img.width = width;
    img.height = height;
    img.channels = 1;
    img.pixels.resize(size_t{width} * height);
    const double w = width, h = height;
    uint32_t noise = 12345;  // a small linear congruential generator
    for (uint32_t y = 0; y < height; ++y) {
        for (uint32_t x = 0; x < width; ++x) {
            const double u = x / w, v = y / h;
            double value = 40 + 120 * u + 60 * v;  // background gradient
            // Zone plate in the right half: rings that get finer outwards.
            const double zx = (u - 0.75) * w, zy = (v - 0.5) * h;
            const double r2 = zx * zx + zy * zy;
            if (r2 < (0.22 * h) * (0.22 * h)) value = 128 + 110 * std::cos(r2 * 0.0025);
            // A bright disc and a dark bar on the left.
            const double dx = (u - 0.22) * w, dy = (v - 0.3) * h;
            if (dx * dx + dy * dy < (0.15 * h) * (0.15 * h)) value = 230;
            if (u > 0.08 && u < 0.42 && v > 0.62 && v < 0.72) value = 20;
            // A checkerboard square.
            if (u > 0.08 && u < 0.36 && v > 0.78 && v < 0.95) value = ((x / 16 + y / 16) % 2) ? 200 : 60;
            noise = noise * 1103515245u + 12345u;
            const uint32_t n = (noise >> 16) % 100;
            if (n == 0) value = 0;
            if (n == 1) value = 255;
            img.pixels[size_t{y} * width + x] = static_cast<uint8_t>(std::lround(std::fmin(255, std::fmax(0, value))));
        }
    }
    return img;
}

}  // namespace pxr::demo
