#include "support/differential.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cstdlib>
#include <sstream>

#include "pixora/frame.h"
#include "simd/target_info.h"
#include "support/log_capture.h"

namespace pxr::test {

std::string describe(const Shape& s) {
    std::ostringstream o;
    o << s.width << "x" << s.height << " slack " << s.slack << " misalign " << s.misalign;
    return o.str();
}

const std::vector<Shape>& standardShapes() {
    static const std::vector<Shape> shapes = [] {
        std::vector<Shape> v;
        for (uint32_t w : {1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u})
            for (uint32_t h : {1u, 2u, 3u, 4u, 7u}) v.push_back({w, h, 0, 0});
        for (uint32_t w : {15u, 16u, 17u, 31u, 33u, 63u, 64u, 65u, 127u, 129u, 255u, 257u})
            v.push_back({w, 5 + w % 7, 0, 0});
        v.push_back({37, 11, 3, 1});
        v.push_back({64, 9, 64, 3});
        v.push_back({101, 13, 27, 7});
        v.push_back({176, 144, 0, 0});
        v.push_back({176, 145, 16, 5});
        const bool small = std::getenv("PIXORA_TEST_SMALL") != nullptr;
        v.push_back({small ? 613u : 2101u, 5, 1, 2});
        v.push_back({small ? 1031u : 4203u, 3, 0, 1});
        v.push_back({small ? 96u : 640u, small ? 40u : 480u, 32, 0});
        return v;
    }();
    return shapes;
}

DiffOp unaryOp(std::string name, uint32_t row, uint32_t srcBpp, uint32_t dstBpp,
               std::function<void(GuardedImage&, GuardedImage&)> call, bool packedOnly) {
    DiffOp op;
    op.name = std::move(name);
    op.row = row;
    op.inputs = [srcBpp](const Shape& s) { return std::vector<PlaneSpec>{{s.width, s.height, srcBpp}}; };
    op.outputs = [dstBpp](const Shape& s) { return std::vector<PlaneSpec>{{s.width, s.height, dstBpp}}; };
    op.call = [call](std::vector<GuardedImage>& in, std::vector<GuardedImage>& out) { call(in[0], out[0]); };
    op.packedOnly = packedOnly;
    return op;
}

ForceKind::ForceKind(uint32_t row, uint32_t kind) : row_(row), saved_(pxrImplTable[row]) {
    pxrImplTable[row] = kind;
}
ForceKind::~ForceKind() { pxrImplTable[row_] = saved_; }

std::vector<uint32_t> kindsToCompare(uint32_t row) {
    std::vector<uint32_t> kinds;
    const uintptr_t reference = pxrFuncTable[row * PIXORA_NUM_KINDS];
    for (uint32_t k = 1; k < PIXORA_NUM_KINDS; ++k) {
        const uintptr_t e = pxrFuncTable[row * PIXORA_NUM_KINDS + k];
        if (e && e != reference) kinds.push_back(k);
    }
    return kinds;
}

void forEachVectorTarget(const std::function<void(const char*)>& fn) {
    auto targets = hwy::SupportedAndGeneratedTargets();
    // Sanitizer and emulator runs look for memory faults, not for target
    // differences, which the release run covers: the best target suffices.
    if (std::getenv("PIXORA_TEST_BEST_TARGET_ONLY") && !targets.empty()) targets.erase(targets.begin() + 1, targets.end());
    if (targets.empty()) {
        // A build with one compiled target (32-bit ARM: NEON only) against a
        // runtime that reports none of it: that target is what kind 1 runs.
        fn(pxr::simd::chosenTargetName());
        return;
    }
    for (int64_t target : targets) {
        hwy::SetSupportedTargetsForTest(target);
        fn(hwy::TargetName(target));
    }
    hwy::SetSupportedTargetsForTest(0);
}

namespace {

// Plane i starts i elements past the shape's misalignment, rounded up to
// whole elements of `align` bytes (16-bit and float planes start aligned).
std::vector<GuardedImage> makePlanes(const std::vector<PlaneSpec>& specs, const Shape& s, uint32_t seed,
                                     const DiffOp& op) {
    std::vector<GuardedImage> planes;
    uint32_t i = 0;
    const uint32_t a = op.elementAlign;
    for (const auto& p : specs) {
        const uint32_t misalign = (s.misalign + i * a + a - 1) / a * a % 64;
        planes.emplace_back(p.width, p.height, p.bytesPerPixel, op.packedOnly ? 0 : s.slack, misalign);
        planes.back().fillRandom(seed + 977 * i++);
    }
    return planes;
}

void compareKind(const DiffOp& op, const Shape& s, uint32_t kind, const char* target) {
    const uint32_t seed = s.width * 7919u + s.height * 104729u + s.slack * 13u + s.misalign;
    LogCapture log;  // the kinds must log alike, too
    auto in0 = makePlanes(op.inputs(s), s, seed, op);
    auto out0 = makePlanes(op.outputs(s), s, seed ^ 0x5a5a5a5au, op);
    {
        ForceKind force(op.row, 0);
        op.call(in0, out0);
    }
    const auto lines0 = log.texts();
    log.clear();
    auto in = makePlanes(op.inputs(s), s, seed, op);
    auto out = makePlanes(op.outputs(s), s, seed ^ 0x5a5a5a5au, op);
    {
        ForceKind force(op.row, kind);
        op.call(in, out);
    }
    for (size_t i = 0; i < out.size(); ++i) {
        SCOPED_TRACE(op.name + " kind " + std::to_string(kind) + " target " + target + " output " +
                     std::to_string(i) + " " + describe(s));
        EXPECT_TRUE(out0[i].outsideUntouched()) << "kind 0 wrote outside its output";
        EXPECT_TRUE(out[i].outsideUntouched()) << "wrote outside its output";
        ASSERT_EQ(out0[i].guarded(), out[i].guarded()) << "differs from kind 0";
    }
    EXPECT_EQ(log.texts(), lines0) << op.name << " kind " << kind << " " << describe(s);
    for (size_t i = 0; i < in.size(); ++i) EXPECT_TRUE(in[i].untouched()) << op.name << " wrote to input " << i;
}

}  // namespace

void expectAllKindsMatch(const DiffOp& op, const std::vector<Shape>& shapes) {
    const auto kinds = kindsToCompare(op.row);
    ASSERT_FALSE(kinds.empty()) << op.name << ": no kind besides 0 to compare";
    for (uint32_t kind : kinds) {
        auto runShapes = [&](const char* target) {
            for (const auto& s : shapes) {
                compareKind(op, s, kind, target);
                if (::testing::Test::HasFatalFailure()) return;
            }
        };
        if (kind == PIXORA_KIND_SIMDX)
            forEachVectorTarget(runShapes);
        else
            runShapes("-");
    }
}

}  // namespace pxr::test
