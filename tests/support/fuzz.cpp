#include "support/fuzz.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "pixora/frame.h"
#include "support/differential.h"
#include "support/fuzz_planes.h"
#include "support/log_capture.h"

namespace pxr::test {
namespace {

FuzzArgs randomArgs(std::mt19937& gen, uint32_t srcBpp, uint32_t dstBpp) {
    auto pick = [&](uint32_t n) { return static_cast<uint32_t>(gen() % n); };
    FuzzArgs a{};
    a.width = pick(4) == 0 ? pick(3) : pick(40);
    a.height = pick(4) == 0 ? pick(3) : pick(24);
    a.srcStride = randomStride(gen, a.width * srcBpp);
    a.dstStride = randomStride(gen, a.width * dstBpp);
    a.border = pick(5);
    a.value = static_cast<uint8_t>(gen());
    return a;
}

}  // namespace

void fuzzEntry(const FuzzEntry& e, int rounds) {
    LogCapture quiet;
    std::mt19937 gen(20261122u ^ e.row);
    const uint32_t savedChecks = HW_constraint_checks_enable;
    for (int round = 0; round < rounds; ++round) {
        FuzzArgs a = randomArgs(gen, e.srcBpp, e.dstBpp);
        const uint32_t srcRow = a.width * e.srcBpp, dstRow = a.width * e.dstBpp;
        const uint32_t ss = e.packed || !a.srcStride ? srcRow : a.srcStride;
        const uint32_t ds = e.packed || !a.dstStride ? dstRow : a.dstStride;
        // Buffers as large as the arguments claim, no larger; a stride
        // below the row size is an argument the entry point must refuse.
        FuzzPlane src(gen, srcRow, a.height, ss);
        FuzzPlane dst(gen, dstRow, a.height, ds);
        HW_constraint_checks_enable = gen() % 2;
        ForceKind force(e.row, gen() % PIXORA_NUM_KINDS);
        e.call(a, src.data(), dst.data());
    }
    HW_constraint_checks_enable = savedChecks;
}

}  // namespace pxr::test
