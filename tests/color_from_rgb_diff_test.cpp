// Every conversion from packed RGB on every kind against kind 0, byte for
// byte, over odd, tiny, slack-strided and misaligned images (odd widths and
// heights exercise the last chroma column and row of 4:2:2 and 4:2:0).
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "color_from_rgb_members.h"
#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"

using pxr::test::GuardedImage;
using pxr::test::from_rgb::Member;
using pxr::test::from_rgb::Planes;

namespace {

pxr::test::DiffOp diffOp(const Member& m) {
    pxr::test::DiffOp op;
    op.name = m.name;
    op.row = m.row;
    op.inputs = [&m](const pxr::test::Shape& s) {
        return std::vector<pxr::test::PlaneSpec>{{s.width, s.height, m.srcBpp}};
    };
    op.outputs = [&m](const pxr::test::Shape& s) {
        std::vector<pxr::test::PlaneSpec> planes;
        for (uint32_t i = 0; i < m.planes(); ++i)
            planes.push_back({m.planeWidth(i, s.width), m.planeHeight(i, s.height), m.planeBpp(i)});
        return planes;
    };
    op.call = [&m](std::vector<GuardedImage>& in, std::vector<GuardedImage>& out) {
        Planes p{};
        for (size_t i = 0; i < out.size(); ++i) p.data[i] = out[i].data(), p.stride[i] = out[i].stride();
        m.call(in[0].data(), in[0].width(), in[0].height(), in[0].stride(), p);
    };
    return op;
}

// The standard shapes but the full-frame one: these row kernels keep nothing
// from row to row, so a tall image adds time and no case; the long rows stay.
const std::vector<pxr::test::Shape>& shapes() {
    static const std::vector<pxr::test::Shape> list = [] {
        std::vector<pxr::test::Shape> v;
        for (const auto& s : pxr::test::standardShapes())
            if (uint64_t{s.width} * s.height <= 100000) v.push_back(s);
        return v;
    }();
    return list;
}

// Every vector target this machine runs; where the harness lists none (a
// single statically chosen target, as on 32-bit ARM), that one.
void eachTarget(const std::function<void(const char*)>& fn) {
    bool ran = false;
    pxr::test::forEachVectorTarget([&](const char* target) {
        ran = true;
        fn(target);
    });
    if (!ran) fn("static");
}

}  // namespace

TEST(ColorFromRgbDifferential, EveryMember) {
    for (const auto& m : pxr::test::from_rgb::members()) {
        pxr::test::expectAllKindsMatch(diffOp(m), shapes());
        if (::testing::Test::HasFatalFailure()) return;
    }
}

// The internal row has no public row to force: its chosen kind lives in the
// internal implementation table.
TEST(ColorFromRgbDifferential, Rotate180InternalRow) {
    ASSERT_NE(pxrInternalFuncTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8 * PIXORA_NUM_KINDS + 1],
              pxrInternalFuncTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8 * PIXORA_NUM_KINDS]);
    const uint32_t saved = pxrInternalImplTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8];
    auto run = [](uint32_t kind, const pxr::test::Shape& s) {
        pxrInternalImplTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8] = kind;
        GuardedImage src(s.width, s.height, 3, s.slack, s.misalign), dst(s.width, s.height, 2, s.slack, s.misalign);
        src.fillRandom(s.width * 31 + s.height);
        dst.fillRandom(7);
        pxrColorRGB888ToRGB565Rotate180u8(src.data(), s.width, s.height, src.stride(),
                                          reinterpret_cast<uint16_t*>(dst.data()), dst.stride());
        EXPECT_TRUE(dst.outsideUntouched());
        EXPECT_TRUE(src.untouched());
        return dst.guarded();
    };
    eachTarget([&](const char* target) {
        for (const auto& s : pxr::test::standardShapes())
            ASSERT_EQ(run(0, s), run(1, s)) << target << " " << pxr::test::describe(s);
    });
    pxrInternalImplTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8] = saved;
}

