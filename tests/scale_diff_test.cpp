// Every kind of every scaling member against kind 0, byte for byte, over
// the standard odd, tiny, slack-strided and misaligned shapes, with output
// sizes that differ from the input.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/differential.h"

using pxr::test::DiffOp;
using pxr::test::GuardedImage;
using pxr::test::PlaneSpec;
using pxr::test::Shape;

namespace {

using SizeFn = std::function<PlaneSpec(const Shape&)>;

// One input plane of the shape's size and one output plane of size `out`.
DiffOp op(std::string name, uint32_t row, uint32_t bpp, SizeFn out,
          std::function<void(GuardedImage& src, GuardedImage& dst)> call, bool packedOnly = false) {
    DiffOp d;
    d.name = std::move(name);
    d.row = row;
    d.inputs = [bpp](const Shape& s) { return std::vector<PlaneSpec>{{s.width, s.height, bpp}}; };
    d.outputs = [out](const Shape& s) { return std::vector<PlaneSpec>{out(s)}; };
    d.call = [call](std::vector<GuardedImage>& in, std::vector<GuardedImage>& o) { call(in[0], o[0]); };
    d.packedOnly = packedOnly;
    return d;
}

SizeFn divided(uint32_t n, uint32_t bpp = 1) {
    return [n, bpp](const Shape& s) { return PlaneSpec{s.width / n, s.height / n, bpp}; };
}
SizeFn doubled(uint32_t wf, uint32_t hf, uint32_t bpp = 1) {
    return [wf, hf, bpp](const Shape& s) { return PlaneSpec{s.width * wf, s.height * hf, bpp}; };
}
// Awkward reductions: to about 2/3 and 1/3 (at least one pixel).
SizeFn reduced(uint32_t num, uint32_t den, uint32_t bpp = 1) {
    return [num, den, bpp](const Shape& s) {
        return PlaneSpec{std::max(1u, s.width * num / den), std::max(1u, s.height * num / (den + 1)), bpp};
    };
}

// Shapes whose planes start and end on 4-byte boundaries (float images).
std::vector<Shape> floatShapes() {
    std::vector<Shape> v;
    for (const auto& s : pxr::test::standardShapes())
        if (s.misalign % 4 == 0 && s.slack % 4 == 0) v.push_back(s);
    return v;
}

// Finite floats from the random bytes of a test plane, in an aligned image
// with the same slack (in floats): random bit patterns would bring NaNs,
// whose payloads no kind is asked to keep.
GuardedImage floatsFrom(GuardedImage& bytes) {
    GuardedImage f(bytes.width(), bytes.height(), 4, (bytes.stride() - bytes.width()) * 4, 0);
    for (uint32_t y = 0; y < bytes.height(); ++y)
        for (uint32_t x = 0; x < bytes.width(); ++x) {
            const uint8_t b = bytes.row(y)[x];
            reinterpret_cast<float*>(f.row(y))[x] = b + static_cast<float>(b ^ 0x5a) / 256.0f - 37.5f;
        }
    return f;
}

template <class F>
void resampleOps(std::vector<DiffOp>& ops, const char* name, uint32_t row, F fn) {
    for (auto [num, den] : {std::pair{2u, 3u}, std::pair{1u, 3u}, std::pair{5u, 7u}})
        ops.push_back(op(std::string(name) + " " + std::to_string(num) + "/" + std::to_string(den), row, 1,
                         reduced(num, den), [fn](GuardedImage& s, GuardedImage& d) {
                             fn(s.data(), s.width(), s.height(), s.stride(), d.data(), d.width(), d.height(),
                                d.stride());
                         }));
}

}  // namespace

TEST(ScaleDifferential, FixedRatios) {
    using Strided = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);
    using Packed = void (*)(const uint8_t*, uint32_t, uint32_t, uint8_t*);
    struct Member {
        const char* name;
        uint32_t row;
        SizeFn out;
        Strided strided;
        Packed packed;
    };
    const SizeFn twoThirds = [](const Shape& s) { return PlaneSpec{2 * s.width / 3, 2 * s.height / 3, 1}; };
    const Member members[] = {
        {"pxrScaleDownBy2u8_v2", PXR_ROW_ScaleDownBy2u8, divided(2), pxrScaleDownBy2u8_v2, nullptr},
        {"pxrScaleDownBy2u8", PXR_ROW_ScaleDownBy2u8, divided(2), nullptr, pxrScaleDownBy2u8},
        {"pxrScaleDownBy4u8_v2", PXR_ROW_ScaleDownBy4u8, divided(4), pxrScaleDownBy4u8_v2, nullptr},
        {"pxrScaleDown3To2u8", PXR_ROW_ScaleDown3To2u8, twoThirds, pxrScaleDown3To2u8, nullptr},
        {"pxrScaleDownBy2Gaussian5x5u8_v2", PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2, divided(2),
         pxrScaleDownBy2Gaussian5x5u8_v2, nullptr},
        {"pxrScaleDownBy2Gaussian5x5u8", PXR_ROW_ScaleDownBy2Gaussian5x5u8, divided(2), nullptr,
         pxrScaleDownBy2Gaussian5x5u8},
        {"pxrScaleDownBy2Gaussian3x3u8", PXR_ROW_ScaleDownBy2Gaussian3x3u8, divided(2),
         [](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
             pxrScaleDownBy2Gaussian3x3u8(s, w, h, ss, d, ds);
         },
         nullptr},
        {"pxrScaleUpBy2Gaussian5x5u8_v2", PXR_ROW_ScaleUpBy2Gaussian5x5u8, doubled(2, 2),
         pxrScaleUpBy2Gaussian5x5u8_v2, nullptr},
    };
    for (const Member& m : members) {
        pxr::test::expectAllKindsMatch(op(
            m.name, m.row, 1, m.out,
            [m](GuardedImage& s, GuardedImage& d) {
                if (m.strided)
                    m.strided(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
                else
                    m.packed(s.data(), s.width(), s.height(), d.data());
            },
            m.packed != nullptr));
        if (HasFatalFailure()) return;
    }
}

TEST(ScaleDifferential, ResampleToSize) {
    std::vector<DiffOp> ops;
    resampleOps(ops, "pxrScaleDownNNu8", PXR_ROW_ScaleDownNNu8, pxrScaleDownNNu8);
    resampleOps(ops, "pxrScaleDownBLu8", PXR_ROW_ScaleDownBLu8, pxrScaleDownBLu8);
    resampleOps(ops, "pxrScaleDownu8_v2", PXR_ROW_ScaleDownu8, pxrScaleDownu8_v2);
    resampleOps(ops, "pxrScaleDownMNu8", PXR_ROW_ScaleDownMNu8, pxrScaleDownMNu8);
    resampleOps(ops, "pxrScaleu8", PXR_ROW_Scaleu8, pxrScaleu8);
    for (auto [name, interpolation] : {std::pair{"nearest", PIXORA_INTERPOLATION_NEAREST},
                                       std::pair{"bilinear", PIXORA_INTERPOLATION_BILINEAR},
                                       std::pair{"area", PIXORA_INTERPOLATION_AREA}}) {
        // Down, then up and mixed (area falls back to bilinear there).
        for (const SizeFn& size : {reduced(2, 3), doubled(3, 1), SizeFn([](const Shape& s) {
                                       return PlaneSpec{s.width * 2 + 1, std::max(1u, s.height / 3), 1};
                                   })})
            ops.push_back(op(std::string("pxrScaleu8_v2 ") + name, PXR_ROW_Scaleu8_v2, 1, size,
                             [i = interpolation](GuardedImage& s, GuardedImage& d) {
                                 pxrScaleu8_v2(s.data(), s.width(), s.height(), s.stride(), d.data(), d.width(),
                                               d.height(), d.stride(), i);
                             }));
    }
    ops.push_back(op("pxrScaleDownMNInterleaveu8", PXR_ROW_ScaleDownMNInterleaveu8, 2, reduced(2, 5, 2),
                     [](GuardedImage& s, GuardedImage& d) {
                         pxrScaleDownMNInterleaveu8(s.data(), s.width(), s.height(), s.stride(), d.data(), d.width(),
                                                    d.height(), d.stride());
                     }));
    // Whole-number ratios take the vector kind's uniform path.
    for (uint32_t n : {2u, 3u, 4u, 7u}) {
        ops.push_back(op("pxrScaleDownMNu8 by " + std::to_string(n), PXR_ROW_ScaleDownMNu8, 1, divided(n),
                         [](GuardedImage& s, GuardedImage& d) {
                             pxrScaleDownMNu8(s.data(), s.width(), s.height(), s.stride(), d.data(), d.width(),
                                              d.height(), d.stride());
                         }));
        ops.push_back(op("pxrScaleDownMNInterleaveu8 by " + std::to_string(n), PXR_ROW_ScaleDownMNInterleaveu8, 2,
                         divided(n, 2), [](GuardedImage& s, GuardedImage& d) {
                             pxrScaleDownMNInterleaveu8(s.data(), s.width(), s.height(), s.stride(), d.data(),
                                                        d.width(), d.height(), d.stride());
                         }));
    }
    for (const auto& o : ops) {
        pxr::test::expectAllKindsMatch(o);
        if (HasFatalFailure()) return;
    }
}

TEST(ScaleDifferential, GaussianHalvingOfFloats) {
    // The f32 halving lives in internal rows, which the harness does not
    // force: the kinds are chosen here, on every vector target.
    for (bool strided : {true, false}) {
        const uint32_t row = strided ? PXR_IROW_ScaleDownBy2Gaussian5x5f32_v2 : PXR_IROW_ScaleDownBy2Gaussian5x5f32;
        for (const Shape& s : floatShapes()) {
            if (s.width < 2 || s.height < 2 || (!strided && s.slack)) continue;
            SCOPED_TRACE(pxr::test::describe(s) + (strided ? " _v2" : " plain"));
            GuardedImage bytes(s.width, s.height, 1, s.slack / 4, 0);
            GuardedImage src = floatsFrom(bytes);
            std::vector<std::vector<uint8_t>> results;
            for (uint32_t kind : {0u, 1u}) {
                pxr::test::forEachVectorTarget([&](const char* target) {
                    const uint32_t saved = pxrInternalImplTable[row];
                    pxrInternalImplTable[row] = kind;
                    GuardedImage dst(s.width / 2, s.height / 2, 4, s.slack, s.misalign);
                    if (strided)
                        pxrScaleDownBy2Gaussian5x5f32_v2(src.as<float>(), s.width, s.height, src.stride(),
                                                         dst.as<float>(), dst.stride());
                    else
                        pxrScaleDownBy2Gaussian5x5f32(src.as<float>(), s.width, s.height, dst.as<float>());
                    pxrInternalImplTable[row] = saved;
                    EXPECT_TRUE(dst.outsideUntouched()) << target;
                    results.push_back(dst.guarded());
                });
            }
            for (const auto& r : results) ASSERT_EQ(r, results.front());
        }
    }
}

TEST(ScaleDifferential, Doubling) {
    struct Member {
        const char* name;
        uint32_t row, bpp, wf, hf;
        void (*fn)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);
    };
    const Member members[] = {
        {"pxrScaleUpPolyu8", PXR_ROW_ScaleUpPolyu8, 1, 2, 2, pxrScaleUpPolyu8},
        {"pxrScaleUpPolyInterleaveu8", PXR_ROW_ScaleUpPolyInterleaveu8, 2, 2, 2, pxrScaleUpPolyInterleaveu8},
        {"pxrUpsampleVerticalu8", PXR_ROW_UpsampleVerticalu8, 1, 1, 2, pxrUpsampleVerticalu8},
        {"pxrUpsampleHorizontalu8", PXR_ROW_UpsampleHorizontalu8, 1, 2, 1, pxrUpsampleHorizontalu8},
        {"pxrUpsample2Du8", PXR_ROW_Upsample2Du8, 1, 2, 2, pxrUpsample2Du8},
        {"pxrUpsampleVerticalInterleavedu8", PXR_ROW_UpsampleVerticalInterleavedu8, 2, 1, 2,
         pxrUpsampleVerticalInterleavedu8},
        {"pxrUpsampleHorizontalInterleavedu8", PXR_ROW_UpsampleHorizontalInterleavedu8, 2, 2, 1,
         pxrUpsampleHorizontalInterleavedu8},
        {"pxrUpsample2DInterleavedu8", PXR_ROW_Upsample2DInterleavedu8, 2, 2, 2, pxrUpsample2DInterleavedu8},
    };
    for (const Member& m : members) {
        pxr::test::expectAllKindsMatch(op(m.name, m.row, m.bpp, doubled(m.wf, m.hf, m.bpp),
                                          [fn = m.fn](GuardedImage& s, GuardedImage& d) {
                                              fn(s.data(), s.width(), s.height(), s.stride(), d.data(), d.stride());
                                          }));
        if (HasFatalFailure()) return;
    }
}

TEST(ScaleDifferential, SobelGradientPyramids) {
    struct Member {
        const char* name;
        uint32_t row, bpp;
        int (*fn)(const pxrPyramidLevel*, pxrPyramidLevel*, pxrPyramidLevel*, uint32_t);
    };
    const Member members[] = {
        {"pxrPyramidSobelGradientCreatei16", PXR_ROW_PyramidSobelGradientCreatei16, 2,
         pxrPyramidSobelGradientCreatei16},
        {"pxrPyramidSobelGradientCreatei8", PXR_ROW_PyramidSobelGradientCreatei8, 1, pxrPyramidSobelGradientCreatei8},
        {"pxrPyramidSobelGradientCreatef32", PXR_ROW_PyramidSobelGradientCreatef32, 4,
         pxrPyramidSobelGradientCreatef32},
    };
    // Three image levels as input planes; dx and dy of each level as outputs.
    auto levels = [](const Shape& s, uint32_t bpp, bool twice) {
        std::vector<PlaneSpec> v;
        for (uint32_t k = 0; k < 3; ++k)
            for (int i = 0; i < (twice ? 2 : 1); ++i) v.push_back({s.width >> k, s.height >> k, bpp});
        return v;
    };
    for (const Member& m : members) {
        DiffOp d;
        d.name = m.name;
        d.row = m.row;
        d.packedOnly = true;  // the records carry no stride
        d.elementAlign = m.bpp;  // 16-bit and float levels start aligned
        d.inputs = [levels](const Shape& s) { return levels(s, 1, false); };
        d.outputs = [levels, bpp = m.bpp](const Shape& s) { return levels(s, bpp, true); };
        d.call = [fn = m.fn](std::vector<GuardedImage>& in, std::vector<GuardedImage>& out) {
            pxrPyramidLevel image[3], dx[3], dy[3];
            for (uint32_t k = 0; k < 3; ++k) {
                image[k] = {in[k].data(), in[k].width(), in[k].height()};
                dx[k] = {out[2 * k].data(), 0, 0};
                dy[k] = {out[2 * k + 1].data(), 0, 0};
            }
            EXPECT_EQ(fn(image, dx, dy, 3), 0);
        };
        // Float outputs need 4-byte aligned planes.
        pxr::test::expectAllKindsMatch(d, m.bpp == 4 ? floatShapes() : pxr::test::standardShapes());
        if (HasFatalFailure()) return;
    }
}
