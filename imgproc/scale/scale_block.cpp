// Block-average reductions: 2x2 and 4x4 means (truncating) and 3:2 by area.
#include <cstring>

#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_block_kernels.h"

using namespace pxr::scale;

void pxrScaleDownBy2u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    const uint32_t dw = srcWidth / 2, dh = srcHeight / 2;
    for (uint32_t y = 0; y < dh; ++y) {
        const uint8_t* r0 = src + 2 * size_t{y} * srcStride;
        const uint8_t* r1 = r0 + srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        // Four output pixels per step, written with one 32-bit store.
        uint32_t x = 0;
        for (; x + 4 <= dw; x += 4) {
            uint8_t quad[4];
            block::by2Span(r0 + 2 * x, r1 + 2 * x, quad, 0, 4);
            std::memcpy(out + x, quad, 4);
        }
        block::by2Span(r0, r1, out, x, dw);
    }
}

void pxrScaleDownBy4u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride) {
    const uint32_t dw = srcWidth / 4, dh = srcHeight / 4;
    for (uint32_t y = 0; y < dh; ++y) {
        const uint8_t* r[4];
        for (uint32_t k = 0; k < 4; ++k) r[k] = src + (4 * size_t{y} + k) * srcStride;
        block::by4Span(r, dst + size_t{y} * dstStride, 0, dw);
    }
}

void pxrScaleDown3To2u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                         uint8_t* dst, uint32_t dstStride) {
    const uint32_t dw = static_cast<uint32_t>(2 * uint64_t{srcWidth} / 3);
    const uint32_t dh = static_cast<uint32_t>(2 * uint64_t{srcHeight} / 3);
    for (uint32_t j = 0; j < dh; ++j) {
        const uint8_t *heavy, *light;
        block::rows3To2(src, srcStride, j, &heavy, &light);
        block::threeToTwoSpan(heavy, light, dst + size_t{j} * dstStride, 0, dw);
    }
}
