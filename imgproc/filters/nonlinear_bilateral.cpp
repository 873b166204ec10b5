// Bilateral filters on bytes: fixed-parameter 5x5, 7x7 and 9x9 forms and
// the _v2 forms with caller sigmas, which hand over to the fixed form at its
// exact sigma pair.
#include "imgproc/filters/nonlinear.h"
#include "imgproc/filters/nonlinear_bilateral_kernels.h"

namespace {

using pxr::bilateral::Weights;

void filter(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint8_t* dst,
            uint32_t dstStride, const Weights& w) {
    ptrdiff_t offsets[pxr::bilateral::kMaxTaps];
    pxr::bilateral::tapOffsets(w, srcStride, offsets);
    const uint32_t r = static_cast<uint32_t>(w.radius);
    if (width > 2 * r)
        for (uint32_t y = r; y + r < height; ++y)
            pxr::bilateral::interiorSpan(src, srcStride, y, dst + size_t{y} * dstStride, r, width - r, offsets, w);
    pxr::bilateral::band(src, width, height, srcStride, dst, dstStride, w);
}

// The tables of a fixed form, built once per process.
template <int Radius>
const Weights& fixedWeights() {
    static const Weights w = pxr::bilateral::makeWeights(Radius, pxr::bilateral::kFixedSigmaColor,
                                                          pxr::bilateral::fixedSigmaSpace(Radius));
    return w;
}

}  // namespace

void pxrBilateralFilter5x5u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    filter(src, width, height, srcStride, dst, dstStride, fixedWeights<2>());
}

void pxrBilateralFilter7x7u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    filter(src, width, height, srcStride, dst, dstStride, fixedWeights<3>());
}

void pxrBilateralFilter9x9u8C(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride) {
    filter(src, width, height, srcStride, dst, dstStride, fixedWeights<4>());
}

int pxrBilateralFilter5x5u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    if (sigmaColor == 50.0f && sigmaSpace == 1.0f) {
        pxrBilateralFilter5x5u8C(src, srcWidth, srcHeight, srcStride, dst, dstStride);
        return 0;
    }
    filter(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::bilateral::makeWeights(2, sigmaColor, sigmaSpace));
    return 0;
}

int pxrBilateralFilter7x7u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    if (sigmaColor == 50.0f && sigmaSpace == 1.5f) {
        pxrBilateralFilter7x7u8C(src, srcWidth, srcHeight, srcStride, dst, dstStride);
        return 0;
    }
    filter(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::bilateral::makeWeights(3, sigmaColor, sigmaSpace));
    return 0;
}

int pxrBilateralFilter9x9u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstStride, float sigmaColor, float sigmaSpace) {
    if (sigmaColor == 50.0f && sigmaSpace == 2.0f) {
        pxrBilateralFilter9x9u8C(src, srcWidth, srcHeight, srcStride, dst, dstStride);
        return 0;
    }
    filter(src, srcWidth, srcHeight, srcStride, dst, dstStride, pxr::bilateral::makeWeights(4, sigmaColor, sigmaSpace));
    return 0;
}
