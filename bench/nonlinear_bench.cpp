// Benchmarks of the non-linear filters beside OpenCV and memcpy.
#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif

#include "bench/bench_util.h"
#include "frame/row_ids.h"

namespace {

using pxr::bench::Image;
using pxr::bench::Operation;

#ifdef PIXORA_HAVE_OPENCV
cv::Mat wrap(const Image& img) {
    return cv::Mat(static_cast<int>(img.height()), static_cast<int>(img.width()), CV_8UC1,
                   const_cast<uint8_t*>(img.data()), img.stride());
}

void erodeCv(const Image& src, Image& dst, int n) {
    static const cv::Mat k3 = cv::getStructuringElement(cv::MORPH_RECT, cv::Size(3, 3));
    static const cv::Mat k7 = cv::getStructuringElement(cv::MORPH_RECT, cv::Size(7, 7));
    cv::Mat out = wrap(dst);
    cv::erode(wrap(src), out, n == 3 ? k3 : k7, cv::Point(-1, -1), 1, cv::BORDER_REPLICATE);
}
#endif

void peer(Operation& op, pxr::bench::Call call) {
#ifdef PIXORA_HAVE_OPENCV
    op.peerName = "opencv";
    op.peer = std::move(call);
#else
    (void)op, (void)call;
#endif
}

}  // namespace

PXR_BENCH_OPERATIONS(nonlinear) {
    Operation median{"pxrFilterMedian3x3u8_v2", PXR_ROW_FilterMedian3x3u8,
                     [](const Image& s, Image& d) {
                         pxrFilterMedian3x3u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
                     },
                     {}, {}};
    Operation bilateral{"pxrBilateralFilter5x5u8", PXR_ROW_BilateralFilter5x5u8,
                        [](const Image& s, Image& d) {
                            pxrBilateralFilter5x5u8(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
                        },
                        {}, {}};
    Operation erode3{"pxrFilterErode3x3u8_v2", PXR_ROW_FilterErode3x3u8,
                     [](const Image& s, Image& d) {
                         pxrFilterErode3x3u8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
                     },
                     {}, {}};
    Operation erode7{"pxrFilterErodeNxNu8-7x7", PXR_ROW_FilterErodeNxNu8,
                     [](const Image& s, Image& d) {
                         pxrFilterErodeNxNu8(s.data(), s.width(), s.height(), s.stride(), 7, d.data(), d.stride());
                     },
                     {}, {}};
    Operation threshold{"pxrFilterThresholdu8_v2", PXR_ROW_FilterThresholdu8,
                        [](const Image& s, Image& d) {
                            pxrFilterThresholdu8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride(),
                                                    100);
                        },
                        {}, {}};
    Operation adaptive{"pxrAdaptiveThresholdMean5x5u8", PXR_ROW_AdaptiveThresholdMean5x5u8,
                       [](const Image& s, Image& d) {
                           pxrAdaptiveThresholdMean5x5u8(s.data(), s.width(), s.height(), s.stride(), 255, 0, 5,
                                                         d.data(), d.stride());
                       },
                       {}, {}};
#ifdef PIXORA_HAVE_OPENCV
    // The peer's median replicates the edge; the reference leaves it
    // unwritten. Same interior work.
    peer(median, [](const Image& s, Image& d) {
        cv::Mat out = wrap(d);
        cv::medianBlur(wrap(s), out, 3);
    });
    // d = 5 takes the same 13-tap disc; the peer's exact exponential and
    // replicated edge differ from the fast exponential and zero band.
    peer(bilateral, [](const Image& s, Image& d) {
        cv::Mat out = wrap(d);
        cv::bilateralFilter(wrap(s), out, 5, 50.0, 1.0, cv::BORDER_REPLICATE);
    });
    peer(erode3, [](const Image& s, Image& d) { erodeCv(s, d, 3); });
    peer(erode7, [](const Image& s, Image& d) { erodeCv(s, d, 7); });
    // src > 99 is src >= 100.
    peer(threshold, [](const Image& s, Image& d) {
        cv::Mat out = wrap(d);
        cv::threshold(wrap(s), out, 99, 255, cv::THRESH_BINARY);
    });
    // Box mean of 5x5 and src > mean - 5 in both; the peer replicates the
    // edge where the mean variants pad with 0.
    peer(adaptive, [](const Image& s, Image& d) {
        cv::Mat out = wrap(d);
        cv::adaptiveThreshold(wrap(s), out, 255, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY, 5, 5);
    });
#endif
    for (const Operation* op : {&median, &bilateral, &erode3, &erode7, &threshold, &adaptive})
        pxr::bench::registerOperation(*op);
}
