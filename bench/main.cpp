// pixora-bench: Google Benchmark runner over every registered operation.
#include <benchmark/benchmark.h>

#ifdef PIXORA_HAVE_OPENCV
#include <opencv2/core.hpp>
#endif

#include "bench/bench_util.h"
#include "simd/target_info.h"

int main(int argc, char** argv) {
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
#ifdef PIXORA_HAVE_OPENCV
    cv::setNumThreads(1);  // the peer runs on one thread, like every kind
#endif
    for (auto registrar : pxr::bench::registrars()) registrar();

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::AddCustomContext("pixora_vector_target", pxr::simd::chosenTargetName());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
