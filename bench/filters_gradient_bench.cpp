// Benchmarks of the gradient filters.
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

#include <vector>

#include "bench/bench_util.h"
#include "frame/row_ids.h"

namespace {

using pxr::bench::Image;
using pxr::bench::Operation;

// 16-bit outputs for the largest size: two full planes (or one interleaved
// image), allocated once so that no call pays for them.
struct Outputs {
    static constexpr size_t kPixels = 1920 * 1080;
    std::vector<int16_t> dx = std::vector<int16_t>(kPixels), dy = std::vector<int16_t>(kPixels),
                         both = std::vector<int16_t>(2 * kPixels);
};
Outputs& outputs() {
    static Outputs o;
    return o;
}

#ifdef PIXORA_HAVE_OPENCV
cv::Mat wrap(const Image& img) {
    return cv::Mat(static_cast<int>(img.height()), static_cast<int>(img.width()), CV_8UC1,
                   const_cast<uint8_t*>(img.data()), img.stride());
}
cv::Mat plane(const Image& like, std::vector<int16_t>& storage) {
    return cv::Mat(static_cast<int>(like.height()), static_cast<int>(like.width()), CV_16SC1, storage.data());
}

// dx and dy of cv::Sobel to 16 bits, replicated border, into preallocated planes.
pxr::bench::Call cvSobel(int ksize) {
    return [ksize](const Image& src, Image&) {
        cv::Mat dx = plane(src, outputs().dx), dy = plane(src, outputs().dy);
        cv::Sobel(wrap(src), dx, CV_16S, 1, 0, ksize, 1, 0, cv::BORDER_REPLICATE);
        cv::Sobel(wrap(src), dy, CV_16S, 0, 1, ksize, 1, 0, cv::BORDER_REPLICATE);
    };
}
#endif

Operation sobelDerivatives(const char* name, uint32_t row,
                           int (*fn)(const uint8_t*, uint32_t, uint32_t, uint32_t, int16_t*, int16_t*, uint32_t,
                                     pxrBorderType, uint8_t),
                           int ksize) {
    Operation op{name, row,
                 [fn](const Image& src, Image&) {
                     fn(src.data(), src.width(), src.height(), src.stride(), outputs().dx.data(), outputs().dy.data(),
                        0, PIXORA_BORDER_REPLICATE, 0);
                 },
                 {}, {}};
#ifdef PIXORA_HAVE_OPENCV
    op.peerName = "opencv";
    op.peer = cvSobel(ksize);
#else
    (void)ksize;
#endif
    return op;
}

}  // namespace

PXR_BENCH_OPERATIONS(filters_gradient) {
    using pxr::bench::registerOperation;
    outputs();
    registerOperation(
        sobelDerivatives("pxrFilterSobel3x3u8s16", PXR_ROW_FilterSobel3x3u8s16, pxrFilterSobel3x3u8s16, 3));
    registerOperation(
        sobelDerivatives("pxrFilterSobel5x5u8s16", PXR_ROW_FilterSobel5x5u8s16, pxrFilterSobel5x5u8s16, 5));

    // The peer has no interleaved packed gradient: its nearest is cv::Sobel
    // with ksize 1 (the [-1 0 1] difference, no smoothing), once for dx and
    // once for dy, into two full-size planes.
    Operation central{"pxrImageGradientInterleaveds16_v2", PXR_ROW_ImageGradientInterleaveds16,
                      [](const Image& src, Image&) {
                          pxrImageGradientInterleaveds16_v2(src.data(), src.width(), src.height(), src.stride(),
                                                            outputs().both.data(), 0);
                      },
                      {}, {}};
#ifdef PIXORA_HAVE_OPENCV
    central.peerName = "opencv";
    central.peer = cvSobel(1);
#endif
    registerOperation(central);

    registerOperation({"pxrImageGradientSobelInterleaveds16_v2", PXR_ROW_ImageGradientSobelInterleaveds16,
                       [](const Image& src, Image&) {
                           pxrImageGradientSobelInterleaveds16_v2(src.data(), src.width(), src.height(), src.stride(),
                                                                  outputs().both.data(), 0);
                       },
                       {}, {}});
    registerOperation({"pxrFilterSobel3x3u8_v2", PXR_ROW_FilterSobel3x3u8,
                       [](const Image& src, Image& dst) {
                           pxrFilterSobel3x3u8_v2(src.data(), src.width(), src.height(), src.stride(), dst.data(),
                                                  dst.stride());
                       },
                       {}, {}});
}
