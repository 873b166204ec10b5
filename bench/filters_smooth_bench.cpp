// Benchmarks of the smoothing filters: the 5x5 Gaussian and the 3x3 box.
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/core.hpp>
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

PXR_BENCH_OPERATIONS(filters_smooth) {
    using pxr::bench::Operation;
    // blurBorder 1: every pixel is written, as by the peer.
    Operation gauss5{"pxrFilterGaussian5x5u8_v2", PXR_ROW_FilterGaussian5x5u8,
                     [](const Image& src, Image& dst) {
                         pxrFilterGaussian5x5u8_v2(src.data(), src.width(), src.height(), src.stride(), dst.data(),
                                                   dst.stride(), 1);
                     },
                     {}, {}};
    Operation box3{"pxrBoxFilter3x3u8_v2", PXR_ROW_BoxFilter3x3u8_v2,
                   [](const Image& src, Image& dst) {
                       pxrBoxFilter3x3u8_v2(src.data(), src.width(), src.height(), src.stride(), dst.data(),
                                            dst.stride(), PIXORA_BORDER_REPLICATE, 0);
                   },
                   {}, {}};
#ifdef PIXORA_HAVE_OPENCV
    // The peer rounds the Gaussian and replicates the edge; ours truncates
    // and renormalises it. Same work per pixel, which is what is compared.
    gauss5.peerName = "opencv";
    gauss5.peer = [](const Image& src, Image& dst) {
        cv::Mat out = wrap(dst);
        cv::GaussianBlur(wrap(src), out, cv::Size(5, 5), 0, 0, cv::BORDER_REPLICATE);
    };
    box3.peerName = "opencv";
    box3.peer = [](const Image& src, Image& dst) {
        cv::Mat out = wrap(dst);
        cv::blur(wrap(src), out, cv::Size(3, 3), cv::Point(-1, -1), cv::BORDER_REPLICATE);
    };
#endif
    pxr::bench::registerOperation(gauss5);
    pxr::bench::registerOperation(box3);
}
