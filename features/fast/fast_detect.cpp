// FAST-9 and FAST-10 detection, reference kind: the segment test at every
// pixel inside the border, in raster order, until the list is full.
#include "features/fast/fast.h"
#include "features/fast/fast_kernels.h"

namespace {

using namespace pxr::fast;

template <int Arc, class Excluded>
void detect(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, uint32_t barrier, uint32_t border,
            uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners, const Excluded& excluded) {
    const ScanFrame f = scanFrame(width, height, stride, barrier, border);
    CornerSink sink{xy, nCornersMax};
    if (!f.empty())
        for (uint32_t y = f.y0; y < f.y1; ++y)
            if (scanSpan<Arc>(src + y * f.stride, f.off, f.t, f.x0, f.x1, y, excluded, sink)) break;
    *nCorners = sink.count;
}

template <int Arc>
void detectInMask(const uint8_t* src, uint32_t width, uint32_t height, uint32_t stride, uint32_t barrier,
                  uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners, const uint8_t* bits,
                  uint32_t maskWidth, uint32_t maskHeight) {
    const auto mask = bitMaskFor(bits, width, height, maskWidth, maskHeight);
    if (!mask) {
        *nCorners = 0;
        return;
    }
    detect<Arc>(src, width, height, stride, barrier, border, xy, nCornersMax, nCorners, *mask);
}

}  // namespace

void pxrCornerFast9u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners) {
    detect<9>(src, srcWidth, srcHeight, srcStride, barrier, border, xy, nCornersMax, nCorners, NoMask{});
}

void pxrCornerFast9InMasku8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                             uint32_t* nCorners, const uint8_t* bitMask, uint32_t maskWidth, uint32_t maskHeight) {
    detectInMask<9>(src, srcWidth, srcHeight, srcStride, barrier, border, xy, nCornersMax, nCorners, bitMask,
                    maskWidth, maskHeight);
}

void pxrCornerFast10u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax, uint32_t* nCorners) {
    detect<10>(src, srcWidth, srcHeight, srcStride, barrier, border, xy, nCornersMax, nCorners, NoMask{});
}

void pxrCornerFast10InMasku8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint32_t barrier, uint32_t border, uint32_t* xy, uint32_t nCornersMax,
                              uint32_t* nCorners, const uint8_t* mask, uint32_t maskWidth, uint32_t maskHeight) {
    detectInMask<10>(src, srcWidth, srcHeight, srcStride, barrier, border, xy, nCornersMax, nCorners, mask,
                     maskWidth, maskHeight);
}
