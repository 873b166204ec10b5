// The conversions from packed RGB as data for the tests: every member of
// imgproc/color/from_rgb_members.def with its plane geometry and a uniform
// way to call its public entry point.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "frame/row_ids.h"
#include "imgproc/color/color_common.h"
#include "pixora.h"

namespace pxr::test::from_rgb {

enum class Shape { Planar, PseudoPlanar, Packed };

// Destination planes: pointers and strides (1 plane packed, 2 pseudo-planar, 3 planar).
struct Planes {
    uint8_t* data[3];
    uint32_t stride[3];
};

using Call = void (*)(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, const Planes& dst);

struct Member {
    std::string name;
    uint32_t row;
    Shape shape;
    uint32_t srcBpp, dstBpp;  // dstBpp: packed destinations only
    uint32_t sx, sy;          // chroma subsampling (1 for packed)
    Call call;

    uint32_t planes() const { return shape == Shape::Planar ? 3 : (shape == Shape::PseudoPlanar ? 2 : 1); }
    // Width, height and bytes per pixel of destination plane i.
    uint32_t planeWidth(uint32_t i, uint32_t width) const { return i ? color::chromaCount(width, sx) : width; }
    uint32_t planeHeight(uint32_t i, uint32_t height) const { return i ? color::chromaCount(height, sy) : height; }
    uint32_t planeBpp(uint32_t i) const {
        if (shape == Shape::Packed) return dstBpp;
        return i && shape == Shape::PseudoPlanar ? 2 : 1;
    }
};

namespace detail {
template <class S>
void planar(void (*f)(const S*, uint32_t, uint32_t, uint32_t, uint8_t*, uint8_t*, uint8_t*, uint32_t, uint32_t,
                      uint32_t),
            const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, const Planes& d) {
    f(reinterpret_cast<const S*>(src), w, h, ss, d.data[0], d.data[1], d.data[2], d.stride[0], d.stride[1],
      d.stride[2]);
}
template <class S>
void pseudoPlanar(void (*f)(const S*, uint32_t, uint32_t, uint32_t, uint8_t*, uint8_t*, uint32_t, uint32_t),
                  const uint8_t* src, uint32_t w, uint32_t h, uint32_t ss, const Planes& d) {
    f(reinterpret_cast<const S*>(src), w, h, ss, d.data[0], d.data[1], d.stride[0], d.stride[1]);
}
template <class S, class D>
void packed(void (*f)(const S*, uint32_t, uint32_t, uint32_t, D*, uint32_t), const uint8_t* src, uint32_t w,
            uint32_t h, uint32_t ss, const Planes& d) {
    f(reinterpret_cast<const S*>(src), w, h, ss, reinterpret_cast<D*>(d.data[0]), d.stride[0]);
}
}  // namespace detail

inline const std::vector<Member>& members() {
    static const std::vector<Member> list = {
#define PXR_FROM_RGB_YCBCR(Name, SrcType, Src, srcBpp, SX, SY, Layout)                                        \
    {"pxr" #Name, PXR_ROW_##Name, Shape::Layout, srcBpp, 0, SX, SY,                                            \
     [](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, const Planes& d) {                            \
         PXR_TEST_CALL_##Layout(pxr##Name, s, w, h, ss, d);                                                   \
     }},
#define PXR_TEST_CALL_Planar(fn, s, w, h, ss, d) detail::planar(fn, s, w, h, ss, d)
#define PXR_TEST_CALL_PseudoPlanar(fn, s, w, h, ss, d) detail::pseudoPlanar(fn, s, w, h, ss, d)
#define PXR_FROM_RGB_PACKED(Name, SrcType, Src, srcBpp, DstType, Dst, dstBpp)                                 \
    {"pxr" #Name, PXR_ROW_##Name, Shape::Packed, srcBpp, dstBpp, 1, 1,                                         \
     [](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, const Planes& d) {                            \
         detail::packed(pxr##Name, s, w, h, ss, d);                                                           \
     }},
#define PXR_FROM_RGB_OTHER(Name, srcBpp, dstBpp, kernel) PXR_FROM_RGB_PACKED(Name, , , srcBpp, , , dstBpp)
#include "imgproc/color/from_rgb_members.def"
#undef PXR_TEST_CALL_Planar
#undef PXR_TEST_CALL_PseudoPlanar
    };
    return list;
}

inline const Member& member(const std::string& name) {
    for (const auto& m : members())
        if (m.name == name) return m;
    throw std::invalid_argument("no member " + name);
}

// Runs a member on a packed source with every stride 0 (packed), into
// destination planes prefilled with `fill`; returns the planes.
inline std::vector<std::vector<uint8_t>> runPacked(const Member& m, const std::vector<uint8_t>& src, uint32_t w,
                                                   uint32_t h, uint8_t fill = 0xEE) {
    std::vector<std::vector<uint8_t>> out(m.planes());
    Planes p{};
    for (uint32_t i = 0; i < m.planes(); ++i) {
        out[i].assign(size_t{m.planeWidth(i, w)} * m.planeBpp(i) * m.planeHeight(i, h), fill);
        p.data[i] = out[i].data();
    }
    m.call(src.data(), w, h, 0, p);
    return out;
}

}  // namespace pxr::test::from_rgb
