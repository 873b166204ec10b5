#include "tools/demo/draw.h"

#include <algorithm>
#include <cmath>

namespace pxr::demo {
namespace {

void put(Image& img, int x, int y, Rgb c) {
    if (x < 0 || y < 0 || x >= static_cast<int>(img.width) || y >= static_cast<int>(img.height))
        return;
    uint8_t* p = &img.pixels[(static_cast<size_t>(y) * img.width + static_cast<size_t>(x)) * 3];
    p[0] = c.r;
    p[1] = c.g;
    p[2] = c.b;
}

}  // namespace

Image dimmedRgb(const Image& grey) {
    Image out;
    out.width = grey.width;
    out.height = grey.height;
    out.channels = 3;
    out.pixels.resize(size_t{grey.width} * grey.height * 3);
    for (size_t i = 0; i < size_t{grey.width} * grey.height; ++i) {
        const auto v = static_cast<uint8_t>(grey.pixels[i] * 3 / 4);
        std::fill_n(&out.pixels[i * 3], 3, v);
    }
    return out;
}

void drawLine(Image& img, float x0, float y0, float x1, float y1, Rgb colour) {
    if (!std::isfinite(x0) || !std::isfinite(y0) || !std::isfinite(x1) || !std::isfinite(y1))
        return;
    const float len = std::max(std::fabs(x1 - x0), std::fabs(y1 - y0));
    const int steps = static_cast<int>(std::min(len, 4096.0f)) + 1;
    for (int i = 0; i <= steps; ++i) {
        const float t = static_cast<float>(i) / static_cast<float>(steps);
        put(img, static_cast<int>(std::lround(x0 + (x1 - x0) * t)), static_cast<int>(std::lround(y0 + (y1 - y0) * t)),
            colour);
    }
}

void drawDot(Image& img, float x, float y, int radius, Rgb colour) {
    if (!std::isfinite(x) || !std::isfinite(y) || std::fabs(x) > 1e6f || std::fabs(y) > 1e6f)
        return;
    const int cx = static_cast<int>(std::lround(x)), cy = static_cast<int>(std::lround(y));
    for (int dy = -radius; dy <= radius; ++dy)
        for (int dx = -radius; dx <= radius; ++dx)
            put(img, cx + dx, cy + dy, colour);
}

}  // namespace pxr::demo
