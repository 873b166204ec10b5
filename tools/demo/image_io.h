// Reading and writing 8-bit images: PNG and JPEG through libpng and libjpeg.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pxr::demo {

// An 8-bit image with 1 (grey) or 3 (RGB) interleaved channels, rows packed.
struct Image {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t channels = 1;
    std::vector<uint8_t> pixels;

    uint32_t stride() const { return width * channels; }
};

// Reads a PNG or a JPEG file, told apart by their first bytes. Grey files
// give 1 channel, colour files 3 (alpha is composited onto black; 16-bit
// PNG samples are reduced to 8 bits). On failure returns false and says why.
bool readImage(const std::string& path, Image& out, std::string& error);

// Writes 1- or 3-channel 8-bit pixels, rows `stride` bytes apart, as PNG.
bool writePng(const std::string& path, const uint8_t* pixels, uint32_t width, uint32_t height,
              uint32_t stride, uint32_t channels, std::string& error);
inline bool writePng(const std::string& path, const Image& img, std::string& error) {
    return writePng(path, img.pixels.data(), img.width, img.height, img.stride(), img.channels, error);
}

// Grey version of an image: BT.601 luma in 8-bit fixed point,
// (77 R + 150 G + 29 B + 128) >> 8. A grey image is returned as it is.
Image toGrey(const Image& img);

}  // namespace pxr::demo
