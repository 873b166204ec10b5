// The processor is detected once per process, on first use, even when that
// first use comes from several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "pixora/frame.h"
#include "platform/platform.h"

namespace {

std::string fixture(const char* name) { return std::string(PIXORA_TEST_DATA) + "/cpuinfo/" + name; }

TEST(DetectionConcurrency, FirstUseFromManyThreadsReadsTheFileOnce) {
    pxr::platform::setCpuInfoPath(fixture("cpu_only.txt").c_str());
    std::atomic<int> onlyCpu{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) threads.emplace_back([&] { onlyCpu += pxr_check_only_cpu(); });
    for (auto& t : threads) t.join();
    EXPECT_EQ(onlyCpu.load(), 8);
    // Another file changes nothing for the rest of the process.
    pxr::platform::setCpuInfoPath(fixture("armv7_neon.txt").c_str());
    EXPECT_EQ(pxr_check_only_cpu(), 1);
    EXPECT_EQ(pxrSetOperationMode(PIXORA_OP_PERFORMANCE), 0u);
    EXPECT_EQ(mode_globalVar, static_cast<uint32_t>(PIXORA_OP_CPU_PERFORMANCE));
    pxr::platform::setCpuInfoPath(nullptr);
}

}  // namespace
