// Shared pieces of the gradient filter tests: differential operations whose
// outputs are the packed (width-2) x (height-2) gradient images, or the
// full-size derivative planes, and shapes whose strides and starts keep
// 16-bit and float elements aligned.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/differential.h"

namespace pxr::test::gradient {

// Output size of an image of side n (at least one element, so that planes
// of images without an interior still exist; nothing is written there).
inline uint32_t inner(uint32_t n) { return n >= 3 ? n - 2 : 1; }

// The standard shapes with slack and misalignment rounded up to whole
// elements of `bytes` bytes (a 16-bit or float row must start aligned).
inline std::vector<Shape> alignedShapes(uint32_t bytes) {
    std::vector<Shape> v;
    for (Shape s : standardShapes()) {
        s.slack = (s.slack + bytes - 1) / bytes * bytes;
        s.misalign = (s.misalign + bytes - 1) / bytes * bytes % 64;
        v.push_back(s);
    }
    return v;
}

// Planar outputs are one guarded image: dx in its first rows, dy in the
// rows below, with the same stride (the harness would misalign a second
// plane by one byte).
// A gradient operation on a byte source. `elementBytes` is the size of one
// stored element; interleaved outputs hold two per pixel. The call gets the
// source, the output plane and, for planar outputs, the dy plane.
using GradientCall = std::function<void(GuardedImage& src, GuardedImage& out, uint8_t* dy)>;
inline DiffOp gradientOp(const std::string& name, uint32_t row, uint32_t elementBytes, bool planar,
                         GradientCall call, bool packedOnly = false, uint32_t srcBytes = 1) {
    DiffOp op;
    op.name = name;
    op.row = row;
    op.inputs = [srcBytes](const Shape& s) { return std::vector<PlaneSpec>{{s.width, s.height, srcBytes}}; };
    op.outputs = [elementBytes, planar](const Shape& s) {
        const uint32_t h = inner(s.height);
        return std::vector<PlaneSpec>{{inner(s.width), planar ? 2 * h : h, planar ? elementBytes : 2 * elementBytes}};
    };
    op.call = [call, planar](std::vector<GuardedImage>& in, std::vector<GuardedImage>& out) {
        const uint32_t h = inner(in[0].height());
        call(in[0], out[0], planar ? out[0].row(h) : nullptr);
    };
    op.packedOnly = packedOnly;
    return op;
}

}  // namespace pxr::test::gradient
