// Pyramids: level sizes, contents by repeated halving, the fatal
// preconditions, allocation with and without the base, failures that free
// what was made, deletion, and the _v3 options.
#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "imgproc/scale/scale_pyramid.h"
#include "pixora.h"
#include "support/guarded_image.h"
#include "support/log_capture.h"

namespace {

std::vector<uint8_t> halve(const uint8_t* src, uint32_t w, uint32_t h, uint32_t stride) {
    std::vector<uint8_t> out((w / 2) * (h / 2));
    pxrScaleDownBy2Gaussian5x5u8_v2(src, w, h, stride, out.data(), 0);
    return out;
}

std::vector<uint8_t> levelPixels(const pxrPyramidLevel_v2& l) {
    std::vector<uint8_t> v;
    for (uint32_t y = 0; y < l.height; ++y) {
        const auto* row = static_cast<const uint8_t*>(l.ptr) + size_t{y} * l.stride;
        v.insert(v.end(), row, row + l.width);
    }
    return v;
}

// Level buffers through a counting allocator that fails from call `failAt` on.
class FailingAllocator {
public:
    explicit FailingAllocator(int failAt) : saved_(pxr::scale::pyramid::levelMemory()) {
        failAt_ = failAt;
        calls_ = 0;
        live().clear();
        pxr::scale::pyramid::levelMemory() = {alloc, release};
    }
    ~FailingAllocator() { pxr::scale::pyramid::levelMemory() = saved_; }
    static std::set<void*>& live() {
        static std::set<void*> s;
        return s;
    }

private:
    static void* alloc(size_t size, uint32_t alignment) {
        if (++calls_ >= failAt_) return nullptr;
        void* p = pxrMemAlloc(size, alignment);
        live().insert(p);
        return p;
    }
    static void release(void* p) {
        live().erase(p);
        pxrMemFree(p);
    }
    static inline int failAt_ = 0, calls_ = 0;
    pxr::scale::pyramid::LevelMemory saved_;
};

}  // namespace

TEST(ScalePyramid, FourLevelsOf640x480) {
    const auto base = pxr::test::randomBytes(640 * 480, 7);
    pxrPyramidLevel_v2 pyr[4] = {};
    ASSERT_EQ(pxrPyramidAllocate_v2(pyr, 640, 480, 0, 1, 4, 0), 0);
    EXPECT_EQ(pyr[0].ptr, nullptr);
    ASSERT_EQ(pxrPyramidCreateu8_v2(base.data(), 640, 480, 0, 4, pyr), 0);
    const uint32_t sizes[4][2] = {{640, 480}, {320, 240}, {160, 120}, {80, 60}};
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(pyr[k].width, sizes[k][0]) << k;
        EXPECT_EQ(pyr[k].height, sizes[k][1]) << k;
        EXPECT_EQ(pyr[k].stride, sizes[k][0]) << k;
    }
    EXPECT_EQ(pyr[0].ptr, base.data());
    // Each level is the Gaussian halving of the one above.
    for (int k = 1; k < 4; ++k)
        EXPECT_EQ(levelPixels(pyr[k]), halve(static_cast<const uint8_t*>(pyr[k - 1].ptr), pyr[k - 1].width,
                                             pyr[k - 1].height, pyr[k - 1].stride))
            << k;
    // The first generation gives the same levels.
    pxrPyramidLevel plain[4] = {};
    ASSERT_EQ(pxrPyramidAllocate(plain, 640, 480, 1, 4, 0), 0);
    ASSERT_EQ(pxrPyramidCreateu8(base.data(), 640, 480, 4, plain), 0);
    for (int k = 1; k < 4; ++k) {
        const auto* p = static_cast<const uint8_t*>(plain[k].ptr);
        EXPECT_EQ(std::vector<uint8_t>(p, p + plain[k].width * plain[k].height), levelPixels(pyr[k])) << k;
    }
    pxrPyramidDelete(plain, 4, 1);
    pxrPyramidDelete_v2(pyr, 4, 1);
}

TEST(ScalePyramidDeathTest, SidesNotDivisibleEndTheProcess) {
    // Seven levels need 480 divisible by 2^6, which it is not.
    EXPECT_EXIT(
        {
            std::vector<uint8_t> base(640 * 480);
            pxrPyramidLevel pyr[7] = {};
            pxrPyramidAllocate(pyr, 640, 480, 1, 7, 0);
            pxrPyramidCreateu8(base.data(), 640, 480, 7, pyr);
        },
        ::testing::ExitedWithCode(1),
        "pixoraPyramidC@[0-9]+: \\( \\(baseWidth & \\(\\(1 << \\(numLevels - 1\\)\\) - 1\\)\\) == 0 \\) & "
        "\\( \\(baseHeight & \\(\\(1 << \\(numLevels - 1\\)\\) - 1\\)\\) == 0 \\) Assertion failed");
    EXPECT_EXIT(
        {
            pxrPyramidLevel_v2 pyr[2] = {};
            pxrPyramidCreateu8_v2(nullptr, 64, 64, 0, 2, pyr);
        },
        ::testing::ExitedWithCode(1),
        "pixoraPyramidC@[0-9]+: base && numLevels && baseHeight && baseWidth && pyramid Assertion failed");
}

TEST(ScalePyramid, CreateWithoutALevelBufferReturnsMinusOne) {
    const auto base = pxr::test::randomBytes(32 * 32, 2);
    pxrPyramidLevel pyr[3] = {};
    ASSERT_EQ(pxrPyramidAllocate(pyr, 32, 32, 1, 2, 0), 0);  // levels 0 and 1 only
    EXPECT_EQ(pxrPyramidCreateu8(base.data(), 32, 32, 3, pyr), -1);
    EXPECT_EQ(pyr[2].width, 8u);  // sizes are set before the buffer is checked
    pxrPyramidDelete(pyr, 3, 1);
}

TEST(ScalePyramid, AllocateOneLevel) {
    pxrPyramidLevel pyr[1] = {{reinterpret_cast<void*>(0x1234), 5, 6}};
    ASSERT_EQ(pxrPyramidAllocate(pyr, 64, 48, 2, 1, 0), 0);
    // Nothing to allocate: level 0 belongs to the caller and is left alone.
    EXPECT_EQ(pyr[0].ptr, reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(pyr[0].width, 5u);
    pxrPyramidLevel_v2 v2[1] = {{reinterpret_cast<void*>(0x1234), 5, 6, 7}};
    ASSERT_EQ(pxrPyramidAllocate_v2(v2, 64, 48, 0, 2, 1, 0), 0);
    EXPECT_EQ(v2[0].ptr, nullptr);
    EXPECT_EQ(v2[0].stride, 128u);
    ASSERT_EQ(pxrPyramidAllocate(pyr, 64, 48, 2, 1, 1), 0);
    ASSERT_NE(pyr[0].ptr, nullptr);
    EXPECT_EQ(pyr[0].width, 64u);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(pyr[0].ptr) % 16, 0u);
    static_cast<uint8_t*>(pyr[0].ptr)[64 * 48 * 2 - 1] = 1;  // the whole buffer is there
    pxrPyramidDelete(pyr, 1, 0);
    EXPECT_EQ(pyr[0].ptr, nullptr);
}

TEST(ScalePyramid, DeleteTwiceIsHarmless) {
    pxrPyramidLevel_v2 pyr[3] = {};
    ASSERT_EQ(pxrPyramidAllocate_v2(pyr, 40, 20, 0, 1, 3, 1), 0);
    pxrPyramidDelete_v2(pyr, 3, 0);
    for (const auto& l : pyr) EXPECT_EQ(l.ptr, nullptr);
    pxrPyramidDelete_v2(pyr, 3, 0);
    pxrPyramidDelete_v2(pyr, 1, 3);  // startLevel not below numLevels: nothing
}

TEST(ScalePyramid, FailedAllocationFreesWhatItMade) {
    {
        FailingAllocator fail(3);  // base and level 1 succeed, level 2 fails
        pxrPyramidLevel_v2 pyr[4] = {};
        EXPECT_EQ(pxrPyramidAllocate_v2(pyr, 64, 64, 0, 1, 4, 1), -1);
        for (const auto& l : pyr) EXPECT_EQ(l.ptr, nullptr);
        EXPECT_TRUE(FailingAllocator::live().empty());
    }
    {
        // The caller's base is never freed.
        FailingAllocator fail(2);
        pxrPyramidLevel_v2 pyr[4] = {};
        EXPECT_EQ(pxrPyramidAllocate_v3(pyr, 64, 64, 0, 1, 4, 0, 32, PIXORA_PYRAMID_LEVEL_FLOOR), -1);
        EXPECT_TRUE(FailingAllocator::live().empty());
    }
    {
        // The first generation keeps what it made; the caller deletes it.
        FailingAllocator fail(3);
        pxrPyramidLevel pyr[4] = {};
        EXPECT_EQ(pxrPyramidAllocate(pyr, 64, 64, 1, 4, 1), -1);
        EXPECT_EQ(FailingAllocator::live().size(), 2u);
        pxrPyramidDelete(pyr, 4, 0);
        EXPECT_TRUE(FailingAllocator::live().empty());
    }
}

TEST(ScalePyramid, ThirdGenerationAlignsRowsAndRoundsUp) {
    pxrPyramidLevel_v2 pyr[4] = {};
    ASSERT_EQ(pxrPyramidAllocate_v3(pyr, 101, 37, 0, 1, 4, 1, 64, PIXORA_PYRAMID_LEVEL_CEIL), 0);
    const uint32_t sizes[4][3] = {{101, 37, 128}, {51, 19, 64}, {26, 10, 64}, {13, 5, 64}};
    for (int k = 0; k < 4; ++k) {
        EXPECT_EQ(pyr[k].width, sizes[k][0]) << k;
        EXPECT_EQ(pyr[k].height, sizes[k][1]) << k;
        EXPECT_EQ(pyr[k].stride, sizes[k][2]) << k;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(pyr[k].ptr) % 64, 0u) << k;
    }
    pxrPyramidDelete_v2(pyr, 1, 0);  // the base will be the caller's image
    // Any size is taken when levels round up; the last column of an odd
    // level is centred on the last source column.
    const auto base = pxr::test::randomBytes(101 * 37, 9);
    ASSERT_EQ(pxrPyramidCreateu8_v3(base.data(), 101, 37, 0, 4, pyr, PIXORA_PYRAMID_LEVEL_CEIL), 0);
    EXPECT_EQ(pyr[1].width, 51u);
    const auto floor = halve(base.data(), 101, 37, 101);
    const auto l1 = levelPixels(pyr[1]);
    for (uint32_t y = 0; y < 18; ++y)
        EXPECT_EQ(std::vector<uint8_t>(l1.begin() + y * 51, l1.begin() + y * 51 + 50),
                  std::vector<uint8_t>(floor.begin() + y * 50, floor.begin() + y * 50 + 50))
            << y;
    pxrPyramidDelete_v2(pyr, 4, 1);
    // Rounding down is the second generation.
    pxrPyramidLevel_v2 a[3] = {}, b[3] = {};
    const auto even = pxr::test::randomBytes(64 * 40, 10);
    ASSERT_EQ(pxrPyramidAllocate_v3(a, 64, 40, 0, 1, 3, 0, 0, PIXORA_PYRAMID_LEVEL_FLOOR), 0);
    ASSERT_EQ(pxrPyramidAllocate_v2(b, 64, 40, 0, 1, 3, 0), 0);
    ASSERT_EQ(pxrPyramidCreateu8_v3(even.data(), 64, 40, 0, 3, a, PIXORA_PYRAMID_LEVEL_FLOOR), 0);
    ASSERT_EQ(pxrPyramidCreateu8_v2(even.data(), 64, 40, 0, 3, b), 0);
    EXPECT_EQ(levelPixels(a[2]), levelPixels(b[2]));
    pxrPyramidDelete_v2(a, 3, 1);
    pxrPyramidDelete_v2(b, 3, 1);
}

TEST(ScalePyramid, SobelGradientLevelsStopAtAMissingBuffer) {
    const auto base = pxr::test::randomBytes(64 * 48, 14);
    pxrPyramidLevel image[3] = {}, dx[3] = {}, dy[3] = {};
    ASSERT_EQ(pxrPyramidAllocate(image, 64, 48, 1, 3, 0), 0);
    ASSERT_EQ(pxrPyramidCreateu8(base.data(), 64, 48, 3, image), 0);
    ASSERT_EQ(pxrPyramidAllocate(dx, 64, 48, 2, 3, 1), 0);
    ASSERT_EQ(pxrPyramidAllocate(dy, 64, 48, 2, 3, 1), 0);
    ASSERT_EQ(pxrPyramidSobelGradientCreatei16(image, dx, dy, 3), 0);
    EXPECT_EQ(dx[2].width, 16u);
    EXPECT_EQ(dy[2].height, 12u);
    // A level without a dy buffer stops the walk there.
    pxrMemFree(dy[2].ptr);
    dy[2].ptr = nullptr;
    dx[2].width = 0;
    EXPECT_EQ(pxrPyramidSobelGradientCreatei8(image, dx, dy, 3), -1);
    EXPECT_EQ(dx[2].width, 16u);
    pxr::test::LogCapture log;
    EXPECT_EQ(pxrPyramidSobelGradientCreatef32(image, nullptr, dy, 3), -1);
    EXPECT_TRUE(log.contains("Assertion failed @pxrPyramidSobelGradientCreatef32: imagePyramid && dxPyramid && "
                             "dyPyramid && numLevels\n"));
    pxrPyramidDelete(image, 3, 1);
    pxrPyramidDelete(dx, 3, 0);
    pxrPyramidDelete(dy, 3, 0);
}

TEST(ScalePyramidContract, BadArgumentsAreRefused) {
    pxr::test::LogCapture log;
    pxrPyramidLevel pyr[2] = {};
    pxrPyramidLevel_v2 pyr2[2] = {};
    EXPECT_EQ(pxrPyramidAllocate(pyr, 64, 64, 1, 0, 1), -1);
    EXPECT_EQ(pxrPyramidAllocate(nullptr, 64, 64, 1, 2, 1), -1);
    EXPECT_EQ(pxrPyramidAllocate_v2(pyr2, 64, 64, 63, 1, 2, 1), -1);
    EXPECT_EQ(pxrPyramidAllocate_v3(pyr2, 64, 64, 0, 1, 2, 1, 24, PIXORA_PYRAMID_LEVEL_FLOOR), -1);
    EXPECT_EQ(pxrPyramidAllocate_v3(pyr2, 64, 64, 0, 1, 2, 1, 16, static_cast<pxrPyramidLevelSize>(2)), -1);
    EXPECT_EQ(pxrPyramidCreateu8_v3(nullptr, 64, 64, 0, 2, pyr2, static_cast<pxrPyramidLevelSize>(2)), -1);
    pxrPyramidDelete(nullptr, 2, 0);
    EXPECT_EQ(log.lines().size(), 7u);
    EXPECT_TRUE(log.contains("Assertion failed @pxrPyramidAllocate: pyramid && baseWidth && baseHeight && "
                             "bytesPerPixel && numLevels\n"));
    for (const auto& l : pyr) EXPECT_EQ(l.ptr, nullptr);
    for (const auto& l : pyr2) EXPECT_EQ(l.ptr, nullptr);
}
