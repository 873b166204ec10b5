#include "support/color_to_rgb_cases.h"

#include <stdexcept>

#include "frame/row_ids.h"
#include "imgproc/color/color_common.h"
#include "imgproc/color/to_rgb_members.h"
#include "pixora.h"

namespace pxr::test::ycbcr {
namespace {

using color::chromaCount;

PlaneSpec luma(uint32_t w, uint32_t h) { return {w, h, 1}; }
PlaneSpec chroma(uint32_t w, uint32_t h, uint32_t sx, uint32_t sy, bool pseudo) {
    return {chromaCount(w, sx), chromaCount(h, sy), pseudo ? 2u : 1u};
}
std::vector<PlaneSpec> planar(uint32_t w, uint32_t h, uint32_t sx, uint32_t sy) {
    return {luma(w, h), chroma(w, h, sx, sy, false), chroma(w, h, sx, sy, false)};
}
std::vector<PlaneSpec> pseudo(uint32_t w, uint32_t h, uint32_t sx, uint32_t sy) {
    return {luma(w, h), chroma(w, h, sx, sy, true)};
}

constexpr uint32_t bytesOf(const char* writer) {
    return writer[3] == '5' ? 2 : (writer[3] == 'a' ? 4 : 3);  // Rgb565, Rgba8888, Rgb888
}

std::vector<Member> build() {
    std::vector<Member> v;
// The planes and the entry point's arguments of each side.
#define PXR_T_PLANES_PLANAR planar
#define PXR_T_PLANES_PSEUDO pseudo
#define PXR_T_SRC_PLANAR \
    p.in[0], p.in[1], p.in[2], p.width, p.height, p.inStride[0], p.inStride[1], p.inStride[2]
#define PXR_T_SRC_PSEUDO p.in[0], p.in[1], p.width, p.height, p.inStride[0], p.inStride[1]
#define PXR_T_DST_PLANAR p.out[0], p.out[1], p.out[2], p.outStride[0], p.outStride[1], p.outStride[2]
#define PXR_T_DST_PSEUDO p.out[0], p.out[1], p.outStride[0], p.outStride[1]
#define PXR_T_TO_RGB(name, Src, sx, sy, Order, Math, Writer, ...)                                             \
    v.push_back({"pxrColor" #name, PXR_ROW_Color##name, false, false,                                        \
                 [](uint32_t w, uint32_t h) { return PXR_T_PLANES_##Src(w, h, sx, sy); },                    \
                 [](uint32_t w, uint32_t h) { return std::vector<PlaneSpec>{{w, h, bytesOf(#Writer)}}; },   \
                 [](const Planes& p) {                                                                       \
                     pxrColor##name(PXR_T_SRC_##Src, reinterpret_cast<PXR_YCC_RGB_PIXEL_##Writer*>(p.out[0]), \
                                    p.outStride[0]);                                                         \
                 }});
#define PXR_T_LAYOUT(name, Src, ssx, ssy, Dst, dsx, dsy, ...)                                                \
    v.push_back({"pxrColor" #name, PXR_ROW_Color##name, false, false,                                        \
                 [](uint32_t w, uint32_t h) { return PXR_T_PLANES_##Src(w, h, ssx, ssy); },                  \
                 [](uint32_t w, uint32_t h) { return PXR_T_PLANES_##Dst(w, h, dsx, dsy); },                  \
                 [](const Planes& p) { pxrColor##name(PXR_T_SRC_##Src, PXR_T_DST_##Dst); }});
    PXR_YCC_TO_RGB(PXR_T_TO_RGB)
    PXR_YCC_LAYOUTS(PXR_T_LAYOUT)

    // The chroma byte swap: an image of 2-byte pixels (pairs).
    v.push_back({"pxrColorCbCrSwapu8", PXR_ROW_ColorCbCrSwapu8, false, false,
                 [](uint32_t w, uint32_t h) { return std::vector<PlaneSpec>{{w, h, 2}}; },
                 [](uint32_t w, uint32_t h) { return std::vector<PlaneSpec>{{w, h, 2}}; },
                 [](const Planes& p) {
                     pxrColorCbCrSwapu8(p.in[0], p.width, p.height, p.inStride[0], p.out[0], p.outStride[0]);
                 }});

    // Video range: one source buffer, Y then the chroma pairs.
    auto videoIn = [](uint32_t w, uint32_t h) {
        const uint32_t bytes = w * h + color::chromaRowBytes(w, 2, true) * chromaCount(h, 2);
        return std::vector<PlaneSpec>{{bytes, 1, 1}};
    };
    auto videoOut = [](uint32_t w, uint32_t h) { return std::vector<PlaneSpec>{{w, h, 2}}; };
    v.push_back({"pxrColorYUV420toRGB565u8", PXR_ROW_ColorYUV420toRGB565u8, false, true, videoIn, videoOut,
                 [](const Planes& p) {
                     pxrColorYUV420toRGB565u8(p.in[0], p.width, p.height, reinterpret_cast<uint16_t*>(p.out[0]));
                 }});
    v.push_back({"pxrColorYUV420toRGB565u8Rotate180", PXR_IROW_ColorYUV420toRGB565u8Rotate180, true, true, videoIn,
                 videoOut, [](const Planes& p) {
                     pxrColorYUV420toRGB565u8Rotate180(p.in[0], p.width, p.height,
                                                       reinterpret_cast<uint16_t*>(p.out[0]));
                 }});
    return v;
}

}  // namespace

const std::vector<Member>& members() {
    static const std::vector<Member> all = build();
    return all;
}

const Member& member(const std::string& name) {
    for (const Member& m : members())
        if (m.name == name) return m;
    throw std::invalid_argument("no member " + name);
}

DiffOp diffOp(const Member& m) {
    DiffOp op;
    op.name = m.name;
    op.row = m.row;
    op.inputs = [m](const Shape& s) { return m.inputs(s.width, s.height); };
    op.outputs = [m](const Shape& s) { return m.outputs(s.width, s.height); };
    op.call = [m](std::vector<GuardedImage>& in, std::vector<GuardedImage>& out) {
        Planes p;
        p.width = out[0].width();
        p.height = out[0].height();
        for (auto& i : in) {
            p.in.push_back(i.data());
            p.inStride.push_back(i.stride());
        }
        for (auto& o : out) {
            p.out.push_back(o.data());
            p.outStride.push_back(o.stride());
        }
        m.call(p);
    };
    op.packedOnly = m.packed;
    return op;
}

}  // namespace pxr::test::ycbcr
