// Packed RGB pixel formats as readers and writers of one pixel, so that every
// conversion from packed RGB is one row kernel instantiated per format pair.
#pragma once

#include <cstdint>

#include "imgproc/color/color_common.h"

namespace pxr::color {

// One pixel: the components in the source's memory (or field) order, and
// alpha (255 for formats without one).
struct Pixel {
    uint8_t c0, c1, c2, a;
};

// Sources and destinations. `kBytes` is the pixel size; `read` and `write`
// take the row start and the pixel index. The BGR forms exchange the first
// and third components on the way out.
struct Rgb565 {
    static constexpr uint32_t kBytes = 2;
    static Pixel read(const uint8_t* row, uint32_t x) {
        const Rgb c = unpack565(load565(row + 2 * x));
        return {c.c0, c.c1, c.c2, 255};
    }
    static void write(uint8_t* row, uint32_t x, Pixel p) { store565(row + 2 * x, pack565(p.c0, p.c1, p.c2)); }
};
struct Bgr565 {
    static constexpr uint32_t kBytes = 2;
    static void write(uint8_t* row, uint32_t x, Pixel p) { store565(row + 2 * x, pack565(p.c2, p.c1, p.c0)); }
};
struct Rgb888 {
    static constexpr uint32_t kBytes = 3;
    static Pixel read(const uint8_t* row, uint32_t x) {
        const uint8_t* p = row + 3 * x;
        return {p[0], p[1], p[2], 255};
    }
    static void write(uint8_t* row, uint32_t x, Pixel p) {
        uint8_t* q = row + 3 * x;
        q[0] = p.c0, q[1] = p.c1, q[2] = p.c2;
    }
};
struct Bgr888 {
    static constexpr uint32_t kBytes = 3;
    static void write(uint8_t* row, uint32_t x, Pixel p) { Rgb888::write(row, x, {p.c2, p.c1, p.c0, p.a}); }
};
struct Rgba8888 {
    static constexpr uint32_t kBytes = 4;
    static Pixel read(const uint8_t* row, uint32_t x) {
        const uint8_t* p = row + 4 * x;
        return {p[0], p[1], p[2], p[3]};
    }
    static void write(uint8_t* row, uint32_t x, Pixel p) {
        uint8_t* q = row + 4 * x;
        q[0] = p.c0, q[1] = p.c1, q[2] = p.c2, q[3] = p.a;
    }
};
struct Bgra8888 {
    static constexpr uint32_t kBytes = 4;
    static void write(uint8_t* row, uint32_t x, Pixel p) { Rgba8888::write(row, x, {p.c2, p.c1, p.c0, p.a}); }
};

}  // namespace pxr::color
