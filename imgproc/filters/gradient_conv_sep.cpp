// The separable M x N convolution to int16 and the Sobel derivatives built on it.
#include "imgproc/filters/gradient.h"
#include "imgproc/filters/gradient_conv_kernels.h"
#include "imgproc/filters/gradient_kernels.h"
#include "memory/scratch.h"

using pxr::convsep::Job;

int pxrFilterConvSepMxNs16C(const int16_t* kernelX, uint32_t M, const int16_t* kernelY, uint32_t N,
                            const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dst, uint32_t dstStride, uint32_t borderType, uint8_t borderValue) {
    if (!pxr::convsep::validTaps(M) || !pxr::convsep::validTaps(N)) return PIXORA_STATUS_BAD_PARAM;
    const Job job{kernelX, M, kernelY, N, src, srcWidth, srcHeight, srcStride, dst, dstStride, borderType,
                  borderValue};
    pxr::ScratchBuffer scratch(pxr::convsep::scratchBytes(job), 64);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    pxr::convsep::rowsScalar(job, 0, srcHeight, scratch.as<uint8_t>());
    return PIXORA_STATUS_OK;
}

namespace {

// Both derivatives by the separable convolution's passes, sharing one
// scratch buffer, so that a missing buffer leaves both outputs untouched.
// The 3x3 member then recomputes the interior by its dedicated pass.
int sobelDerivatives(const pxr::convsep::SobelKernels& k, const uint8_t* src, uint32_t w, uint32_t h,
                     uint32_t ss, int16_t* dx, int16_t* dy, uint32_t ds, uint32_t border, uint8_t value) {
    const Job jx = pxr::convsep::sobelJob(k, true, src, w, h, ss, dx, ds, border, value);
    const Job jy = pxr::convsep::sobelJob(k, false, src, w, h, ss, dy, ds, border, value);
    pxr::ScratchBuffer scratch(pxr::convsep::scratchBytes(jx), 64);
    if (!scratch) return PIXORA_STATUS_NO_SCRATCH;
    if (dx) pxr::convsep::rowsScalar(jx, 0, h, scratch.as<uint8_t>());
    if (dy) pxr::convsep::rowsScalar(jy, 0, h, scratch.as<uint8_t>());
    return PIXORA_STATUS_OK;
}

}  // namespace

int pxrFilterSobel3x3u8s16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue) {
    const int rc = sobelDerivatives(pxr::convsep::kSobel3, src, srcWidth, srcHeight, srcStride, dx, dy,
                                    dstStride, borderType, borderValue);
    if (rc != PIXORA_STATUS_OK) return rc;
    using namespace pxr::grad;
    // The dedicated 3x3 pass: the interior again, unnormalised.
    interiorRows(src, srcWidth, srcHeight, srcStride, [&](uint32_t y, const uint8_t* t, const uint8_t* m,
                                                          const uint8_t* b) {
        int16_t* rx = dx ? rowAt(dx, y + 1, dstStride) : nullptr;
        int16_t* ry = dy ? rowAt(dy, y + 1, dstStride) : nullptr;
        for (uint32_t x = 1; x + 1 < srcWidth; ++x) {
            const Pair<int32_t> g = sobel(t, m, b, x);
            if (rx) rx[x] = static_cast<int16_t>(g.dx);
            if (ry) ry[x] = static_cast<int16_t>(g.dy);
        }
    });
    return PIXORA_STATUS_OK;
}

int pxrFilterSobel5x5u8s16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue) {
    return sobelDerivatives(pxr::convsep::kSobel5, src, srcWidth, srcHeight, srcStride, dx, dy, dstStride,
                            borderType, borderValue);
}

int pxrFilterSobel7x7u8s16C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            int16_t* dx, int16_t* dy, uint32_t dstStride, uint32_t borderType,
                            uint8_t borderValue) {
    return sobelDerivatives(pxr::convsep::kSobel7, src, srcWidth, srcHeight, srcStride, dx, dy, dstStride,
                            borderType, borderValue);
}
