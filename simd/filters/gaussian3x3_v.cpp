// 3x3 Gaussian, vector kind: the interior in vectors of 16-bit column sums,
// the border by the reference's own rules.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/gaussian3x3_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/gaussian3x3_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Columns handled per strip: the column sums of one strip stay in L1.
constexpr uint32_t kStrip = 2048;

// Interior rows [1, height-1). For each row, the vertical sums
// col = top + 2 mid + bottom go to a strip buffer, then
// out = (col[x-1] + 2 col[x] + col[x+1]) >> 4 is formed from it.
void GaussianInterior(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride,
                      uint8_t* dst, uint32_t dstStride) {
    const hn::ScalableTag<uint16_t> d16;
    const hn::Rebind<uint8_t, decltype(d16)> d8;
    const hn::RebindToSigned<decltype(d16)> di16;  // sums fit: demote as signed
    const uint32_t N = static_cast<uint32_t>(hn::Lanes(d16));
    HWY_ALIGN uint16_t col[kStrip + 2 + 64];

    for (uint32_t y = 1; y + 1 < height; ++y) {
        const uint8_t* m = src + size_t{y} * srcStride;
        const uint8_t* t = m - srcStride;
        const uint8_t* b = m + srcStride;
        uint8_t* out = dst + size_t{y} * dstStride;
        // Output columns [x0, x1) of this strip need column sums [x0-1, x1+1).
        for (uint32_t x0 = 1; x0 + 1 < width; x0 += kStrip) {
            const uint32_t x1 = std::min(x0 + kStrip, width - 1);
            const uint32_t n = x1 - x0;
            if (n < N + 2) {
                gauss3::interiorSpan(t, m, b, out, x0, x1);
                continue;
            }
            const uint32_t c0 = x0 - 1, cols = n + 2;
            auto sumAt = [&](uint32_t i) {
                const auto vt = hn::PromoteTo(d16, hn::LoadU(d8, t + c0 + i));
                const auto vm = hn::PromoteTo(d16, hn::LoadU(d8, m + c0 + i));
                const auto vb = hn::PromoteTo(d16, hn::LoadU(d8, b + c0 + i));
                hn::Store(hn::Add(hn::Add(vt, vb), hn::Add(vm, vm)), d16, col + i);
            };
            uint32_t i = 0;
            for (; i + N <= cols; i += N) sumAt(i);
            if (i < cols) {
                // The last vector overlaps the previous one; it recomputes
                // identical sums, so nothing is read past the image.
                const uint32_t last = cols - N;
                const auto vt = hn::PromoteTo(d16, hn::LoadU(d8, t + c0 + last));
                const auto vm = hn::PromoteTo(d16, hn::LoadU(d8, m + c0 + last));
                const auto vb = hn::PromoteTo(d16, hn::LoadU(d8, b + c0 + last));
                hn::StoreU(hn::Add(hn::Add(vt, vb), hn::Add(vm, vm)), d16, col + last);
            }
            auto outAt = [&](uint32_t j) {  // j: index into the strip's outputs
                const auto l = hn::LoadU(d16, col + j);
                const auto c = hn::LoadU(d16, col + j + 1);
                const auto r = hn::LoadU(d16, col + j + 2);
                const auto s = hn::ShiftRight<4>(hn::Add(hn::Add(l, r), hn::Add(c, c)));
                hn::StoreU(hn::DemoteTo(d8, hn::BitCast(di16, s)), d8, out + x0 + j);
            };
            uint32_t j = 0;
            for (; j + N <= n; j += N) outAt(j);
            if (j < n) outAt(n - N);
        }
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "simd/filters/filters_v.h"

namespace pxr {
HWY_EXPORT(GaussianInterior);

// The dispatch names the function unqualified, from the namespace of its
// export: with a single compiled target (32-bit ARM) it becomes a direct call.
static void gaussianInterior(const uint8_t* src, uint32_t width, uint32_t height,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride) {
    HWY_DYNAMIC_DISPATCH(GaussianInterior)(src, width, height, srcStride, dst, dstStride);
}
}  // namespace pxr

void pxrFilterGaussian3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder) {
    if (srcWidth < 2 || srcHeight < 2) return;
    pxr::gaussianInterior(src, srcWidth, srcHeight, srcStride, dst, dstStride);
    if (blurBorder == 1)
        pxr::gauss3::border(src, srcWidth, srcHeight, srcStride, dst, dstStride,
                            pxr::gauss3::Border::Renormalise, 0);
}

int pxrFilterGaussian3x3u8_v3V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, uint8_t* dst, uint32_t dstStride,
                               uint32_t borderType, uint8_t borderValue) {
    if (srcWidth >= 2 && srcHeight >= 2)
        pxr::gaussianInterior(src, srcWidth, srcHeight, srcStride, dst, dstStride);
    pxr::gauss3::border(src, srcWidth, srcHeight, srcStride, dst, dstStride,
                        pxr::gauss3::fromType(borderType), borderValue);
    return 0;
}
#endif
