// Random arguments against every entry point, on buffers sized exactly to
// what the arguments claim, with every kind forced in turn. Under the
// address and undefined-behaviour sanitizers (the asan preset) this proves
// that bad input is refused without a crash and good input is never read or
// written past its bounds.
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/log_capture.h"

namespace {

// One plane: null now and then, else a heap buffer of exactly
// stride x (height - 1) + width bytes, so the sanitizer sees its true end.
class FuzzPlane {
public:
    FuzzPlane(std::mt19937& gen, uint32_t width, uint32_t height, uint32_t stride) {
        if (gen() % 16 == 0) return;
        const size_t rows = height ? height : 1;
        bytes_.resize(size_t{stride} * (rows - 1) + std::max<size_t>(width, 1));
        for (auto& b : bytes_) b = static_cast<uint8_t>(gen());
    }
    uint8_t* data() { return bytes_.empty() ? nullptr : bytes_.data(); }

private:
    std::vector<uint8_t> bytes_;
};

struct Args {
    uint32_t width, height, srcStride, dstStride, border;
    uint8_t value;
};

Args randomArgs(std::mt19937& gen) {
    auto pick = [&](uint32_t n) { return static_cast<uint32_t>(gen() % n); };
    Args a{};
    a.width = pick(4) == 0 ? pick(3) : pick(40);
    a.height = pick(4) == 0 ? pick(3) : pick(24);
    auto stride = [&] {
        switch (pick(4)) {
            case 0: return 0u;
            case 1: return a.width > 0 ? a.width - 1 : 0u;
            default: return a.width + pick(9);
        }
    };
    a.srcStride = stride();
    a.dstStride = stride();
    a.border = pick(5);
    a.value = static_cast<uint8_t>(gen());
    return a;
}

uint32_t effective(uint32_t stride, uint32_t width) { return stride ? stride : width; }

struct EntryUnderTest {
    const char* name;
    uint32_t row;
    std::function<void(const Args&, uint8_t* src, uint8_t* dst)> call;
};

const std::vector<EntryUnderTest>& entries() {
    static const std::vector<EntryUnderTest> list = {
        {"pxrFilterGaussian3x3u8", PXR_ROW_FilterGaussian3x3u8,
         [](const Args& a, uint8_t* s, uint8_t* d) { pxrFilterGaussian3x3u8(s, a.width, a.height, d, int(a.border) - 1); }},
        {"pxrFilterGaussian3x3u8_v2", PXR_ROW_FilterGaussian3x3u8,
         [](const Args& a, uint8_t* s, uint8_t* d) {
             pxrFilterGaussian3x3u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride, int(a.border) - 1);
         }},
        {"pxrFilterGaussian3x3u8_v3", PXR_ROW_FilterGaussian3x3u8_v3,
         [](const Args& a, uint8_t* s, uint8_t* d) {
             pxrFilterGaussian3x3u8_v3(s, a.width, a.height, a.srcStride, d, a.dstStride,
                                       static_cast<pxrBorderType>(a.border), a.value);
         }},
        {"pxrFilterMedian3x3u8", PXR_ROW_FilterMedian3x3u8,
         [](const Args& a, uint8_t* s, uint8_t* d) { pxrFilterMedian3x3u8(s, a.width, a.height, d); }},
        {"pxrFilterMedian3x3u8_v2", PXR_ROW_FilterMedian3x3u8,
         [](const Args& a, uint8_t* s, uint8_t* d) {
             pxrFilterMedian3x3u8_v2(s, a.width, a.height, a.srcStride, d, a.dstStride);
         }},
        {"pxrFilterMedian3x3u8_v3", PXR_ROW_FilterMedian3x3u8_v3,
         [](const Args& a, uint8_t* s, uint8_t* d) {
             pxrFilterMedian3x3u8_v3(s, a.width, a.height, a.srcStride, d, a.dstStride,
                                     static_cast<pxrBorderType>(a.border), a.value);
         }},
    };
    return list;
}

}  // namespace

TEST(EntryFuzz, RandomArgumentsNeverCrashOrOverrun) {
    pxr::test::LogCapture quiet;
    std::mt19937 gen(20261122);
    const uint32_t saved = HW_constraint_checks_enable;
    for (const auto& e : entries()) {
        for (int round = 0; round < 1500; ++round) {
            Args a = randomArgs(gen);
            const bool plain = std::string(e.name).find("_v") == std::string::npos;
            const uint32_t ss = plain ? a.width : effective(a.srcStride, a.width);
            const uint32_t ds = plain ? a.width : effective(a.dstStride, a.width);
            // Buffers as large as the arguments claim, no larger; a stride
            // below the width is an argument the entry point must refuse.
            FuzzPlane src(gen, a.width, a.height, std::max(ss, a.width));
            FuzzPlane dst(gen, a.width, a.height, std::max(ds, a.width));
            HW_constraint_checks_enable = gen() % 2;
            pxr::test::ForceKind force(e.row, gen() % PIXORA_NUM_KINDS);
            e.call(a, src.data(), dst.data());
        }
    }
    HW_constraint_checks_enable = saved;
}
