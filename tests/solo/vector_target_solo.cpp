// The vector target kind 1 runs on: printed for the CI log, and checked to be
// a real vector unit rather than the portable fall-back.
#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdio>
#include <set>
#include <string>

#if defined(__arm__)
#include <sys/auxv.h>
#endif

#include "simd/target_info.h"

namespace {

TEST(VectorTarget, ChosenTargetIsTheMachinesVectorUnit) {
    const std::string name = pxr::simd::chosenTargetName();
    std::printf("pixora vector target: %s\n", name.c_str());
    RecordProperty("vector_target", name);

    EXPECT_NE(name, "EMU128");
    EXPECT_NE(name, "SCALAR");
#if defined(__arm__)
    EXPECT_EQ(name, "NEON");
    // The library is compiled for NEON without a run-time choice, so the
    // processor must have it; the kernel's capability bits say so even where
    // /proc/cpuinfo does not (emulators).
    constexpr unsigned long kHwcapNeon = 1ul << 12;  // HWCAP_NEON of the 32-bit ARM kernel
    EXPECT_NE(getauxval(AT_HWCAP) & kHwcapNeon, 0u);
#elif defined(__aarch64__)
    EXPECT_EQ(name, "NEON");
#elif defined(__x86_64__)
    const std::set<std::string> x86{"SSE4", "AVX2", "AVX3", "AVX3_DL", "AVX3_ZEN4", "AVX3_SPR"};
    EXPECT_TRUE(x86.count(name)) << name << " is not an SSE4-or-later x86-64 target";
    // The baseline the library was compiled for must run on this processor.
    EXPECT_NE(hwy::SupportedTargets() & HWY_STATIC_TARGET, 0);
#endif
}

}  // namespace
