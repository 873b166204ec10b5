#include "tools/demo/image_io.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>

#include <jpeglib.h>
#include <png.h>

namespace pxr::demo {
namespace {

// Larger images are refused rather than allocated (256 Mpixel).
constexpr uint64_t kMaxPixels = uint64_t{1} << 28;

bool tooLarge(uint64_t width, uint64_t height, std::string& error) {
    if (width * height <= kMaxPixels) return false;
    error = "image of " + std::to_string(width) + "x" + std::to_string(height) + " pixels is too large";
    return true;
}

bool readPng(const std::string& path, Image& out, std::string& error) {
    png_image img;
    std::memset(&img, 0, sizeof img);
    img.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&img, path.c_str())) {
        error = img.message;
        return false;
    }
    if (tooLarge(img.width, img.height, error)) {
        png_image_free(&img);
        return false;
    }
    const bool colour = (img.format & PNG_FORMAT_FLAG_COLOR) != 0;
    img.format = colour ? PNG_FORMAT_RGB : PNG_FORMAT_GRAY;
    out.width = img.width;
    out.height = img.height;
    out.channels = colour ? 3 : 1;
    out.pixels.assign(PNG_IMAGE_SIZE(img), 0);
    if (!png_image_finish_read(&img, nullptr, out.pixels.data(), 0, nullptr)) {
        error = img.message;
        png_image_free(&img);
        return false;
    }
    return true;
}

// libjpeg reports fatal errors through error_exit, which must not return:
// it jumps back to readJpeg with the message.
struct JpegError {
    jpeg_error_mgr mgr;
    std::jmp_buf jump;
    char message[JMSG_LENGTH_MAX];
};

void jpegErrorExit(j_common_ptr cinfo) {
    auto* err = reinterpret_cast<JpegError*>(cinfo->err);
    (*cinfo->err->format_message)(cinfo, err->message);
    std::longjmp(err->jump, 1);
}

// Decodes into `pixels` (sized here); nothing with a destructor lives in
// this frame, so the jump back is safe.
bool decodeJpeg(std::FILE* file, Image& out, std::vector<uint8_t>& pixels, JpegError& err) {
    jpeg_decompress_struct cinfo;
    cinfo.err = jpeg_std_error(&err.mgr);
    err.mgr.error_exit = jpegErrorExit;
    if (setjmp(err.jump)) {
        jpeg_destroy_decompress(&cinfo);
        return false;
    }
    jpeg_create_decompress(&cinfo);
    jpeg_stdio_src(&cinfo, file);
    jpeg_read_header(&cinfo, TRUE);
    if (cinfo.jpeg_color_space == JCS_CMYK || cinfo.jpeg_color_space == JCS_YCCK) {
        std::snprintf(err.message, sizeof err.message, "CMYK JPEG files are not supported");
        jpeg_destroy_decompress(&cinfo);
        return false;
    }
    cinfo.out_color_space = cinfo.jpeg_color_space == JCS_GRAYSCALE ? JCS_GRAYSCALE : JCS_RGB;
    if (uint64_t{cinfo.image_width} * cinfo.image_height > kMaxPixels) {
        std::snprintf(err.message, sizeof err.message, "image of %ux%u pixels is too large",
                      cinfo.image_width, cinfo.image_height);
        jpeg_destroy_decompress(&cinfo);
        return false;
    }
    jpeg_start_decompress(&cinfo);
    out.width = cinfo.output_width;
    out.height = cinfo.output_height;
    out.channels = static_cast<uint32_t>(cinfo.output_components);
    pixels.resize(size_t{out.width} * out.height * out.channels);
    while (cinfo.output_scanline < cinfo.output_height) {
        JSAMPROW row = pixels.data() + size_t{cinfo.output_scanline} * out.width * out.channels;
        jpeg_read_scanlines(&cinfo, &row, 1);
    }
    jpeg_finish_decompress(&cinfo);
    jpeg_destroy_decompress(&cinfo);
    return true;
}

bool readJpeg(const std::string& path, Image& out, std::string& error) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        error = "cannot open " + path;
        return false;
    }
    JpegError err{};
    const bool ok = decodeJpeg(file, out, out.pixels, err);
    std::fclose(file);
    if (!ok) error = err.message;
    return ok;
}

}  // namespace

bool readImage(const std::string& path, Image& out, std::string& error) {
    unsigned char magic[8] = {};
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        error = "cannot open " + path;
        return false;
    }
    const size_t n = std::fread(magic, 1, sizeof magic, file);
    std::fclose(file);
    if (n == sizeof magic && png_sig_cmp(magic, 0, sizeof magic) == 0) return readPng(path, out, error);
    if (n >= 3 && magic[0] == 0xFF && magic[1] == 0xD8 && magic[2] == 0xFF) return readJpeg(path, out, error);
    error = path + " is neither a PNG nor a JPEG file";
    return false;
}

bool writePng(const std::string& path, const uint8_t* pixels, uint32_t width, uint32_t height,
              uint32_t stride, uint32_t channels, std::string& error) {
    png_image img;
    std::memset(&img, 0, sizeof img);
    img.version = PNG_IMAGE_VERSION;
    img.width = width;
    img.height = height;
    img.format = channels == 3 ? PNG_FORMAT_RGB : PNG_FORMAT_GRAY;
    if (!png_image_write_to_file(&img, path.c_str(), 0, pixels, static_cast<png_int_32>(stride), nullptr)) {
        error = img.message;
        return false;
    }
    return true;
}

Image toGrey(const Image& img) {
    if (img.channels == 1) return img;
    Image grey;
    grey.width = img.width;
    grey.height = img.height;
    grey.channels = 1;
    grey.pixels.resize(size_t{img.width} * img.height);
    const uint8_t* p = img.pixels.data();
    for (uint8_t& g : grey.pixels) {
        g = static_cast<uint8_t>((77 * p[0] + 150 * p[1] + 29 * p[2] + 128) >> 8);
        p += img.channels;
    }
    return grey;
}

}  // namespace pxr::demo
