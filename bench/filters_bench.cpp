// Benchmarks of the filter family.
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

#include "bench/bench_util.h"
#include "frame/row_ids.h"

namespace {

using pxr::bench::Image;

#ifdef PIXORA_HAVE_OPENCV
cv::Mat wrap(const Image& img) {
    return cv::Mat(static_cast<int>(img.height()), static_cast<int>(img.width()), CV_8UC1,
                   const_cast<uint8_t*>(img.data()), img.stride());
}
#endif

}  // namespace

PXR_BENCH_OPERATIONS(filters) {
    using pxr::bench::Operation;
    // blurBorder 1: every pixel is written, as by the peer.
    Operation gaussian{"pxrFilterGaussian3x3u8_v2", PXR_ROW_FilterGaussian3x3u8,
                       [](const Image& src, Image& dst) {
                           pxrFilterGaussian3x3u8_v2(src.data(), src.width(), src.height(), src.stride(),
                                                     dst.data(), dst.stride(), 1);
                       },
                       {}, {}};
#ifdef PIXORA_HAVE_OPENCV
    // The peer rounds and replicates the edge; the reference truncates and
    // renormalises it. Same work per pixel, which is what is compared.
    gaussian.peerName = "opencv";
    gaussian.peer = [](const Image& src, Image& dst) {
        cv::Mat out = wrap(dst);
        cv::GaussianBlur(wrap(src), out, cv::Size(3, 3), 0, 0, cv::BORDER_REPLICATE);
    };
#endif
    pxr::bench::registerOperation(gaussian);
}
