// Drawing into 8-bit RGB images (rows packed): tracks and markers.
#pragma once

#include <cstdint>

#include "tools/demo/image_io.h"

namespace pxr::demo {

struct Rgb {
    uint8_t r, g, b;
};

// An RGB copy of a grey image, dimmed so that drawn colours stand out.
Image dimmedRgb(const Image& grey);

// A line from (x0, y0) to (x1, y1), clipped to the image.
void drawLine(Image& img, float x0, float y0, float x1, float y1, Rgb colour);

// A filled square of side 2 * radius + 1 centred on (x, y), clipped.
void drawDot(Image& img, float x, float y, int radius, Rgb colour);

}  // namespace pxr::demo
