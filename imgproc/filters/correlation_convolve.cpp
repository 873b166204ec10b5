// Convolution of bytes with an s16 kernel over a padded copy of the source
// in scratch memory; every dst pixel is written. The kernel is read back to
// front (true convolution). The first path sums in 32 bits; kernels for
// which that could overflow take the BigKernel path, which sums in 64 bits.
#include "imgproc/filters/correlation.h"
#include "imgproc/filters/correlation_kernels.h"
#include "memory/scratch.h"
#include "pixora/types.h"

using namespace pxr::corr;

namespace {

template <class Out>
void convolveFirstPath(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* pad,
                       const PaddedShape& s, uint32_t w, uint32_t h, uint8_t* dst, uint32_t dstStride) {
    for (uint32_t y = 0; y < h; ++y)
        windowRow<Out, true>(pad + y * s.stride, s.stride, kernel, kw, kh, shift, dst + size_t{y} * dstStride, 0, w);
}

template <class Out>
void convolveBigKernel(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* pad,
                       const PaddedShape& s, uint32_t w, uint32_t h, uint8_t* dst, uint32_t dstStride) {
    for (uint32_t y = 0; y < h; ++y)
        windowRow<Out, true, true>(pad + y * s.stride, s.stride, kernel, kw, kh, shift, dst + size_t{y} * dstStride,
                                   0, w);
}

template <class Out>
int convolve(const int16_t* kernel, uint32_t kw, uint32_t kh, int32_t shift, const uint8_t* src, uint32_t w,
             uint32_t h, uint32_t srcStride, uint8_t* dst, uint32_t dstStride, uint32_t borderType,
             uint8_t borderValue) {
    PaddedShape shape;
    if (!paddedShape(w, h, kw, kh, shape)) return PIXORA_STATUS_NO_SCRATCH;
    pxr::ScratchArray<uint8_t> pad(shape.bytes(), 64);
    if (!pad) return PIXORA_STATUS_NO_SCRATCH;
    fillPadded(src, w, h, srcStride, borderType, borderValue, shape, pad.data());
    if (fitsFirstPath(kernel, kw, kh))
        convolveFirstPath<Out>(kernel, kw, kh, shift, pad.data(), shape, w, h, dst, dstStride);
    else
        convolveBigKernel<Out>(kernel, kw, kh, shift, pad.data(), shape, w, h, dst, dstStride);
    return PIXORA_STATUS_OK;
}

}  // namespace

int pxrFilterConvolveMxNu8C(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight, int32_t shift,
                            const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    return convolve<U8Out>(kernel, kernelWidth, kernelHeight, shift, src, srcWidth, srcHeight, srcStride, dst,
                           dstStride, borderType, borderValue);
}

int pxrFilterConvolveMxNu8s16C(const int16_t* kernel, uint32_t kernelWidth, uint32_t kernelHeight,
                               int32_t shift, const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, int16_t* dst, uint32_t dstStride, uint32_t borderType,
                               uint8_t borderValue) {
    return convolve<S16Out>(kernel, kernelWidth, kernelHeight, shift, src, srcWidth, srcHeight, srcStride,
                            reinterpret_cast<uint8_t*>(dst), dstStride, borderType, borderValue);
}
