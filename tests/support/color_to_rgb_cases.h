// Every member of the YCbCr colour group as data: its planes (derived from
// width and height) and a call of its public entry point. The differential,
// fuzz, stride and bad-input tests all run over this one table.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/differential.h"

namespace pxr::test::ycbcr {

// Plane pointers and strides (in bytes) for one call.
struct Planes {
    uint32_t width = 0, height = 0;
    std::vector<const uint8_t*> in;
    std::vector<uint32_t> inStride;
    std::vector<uint8_t*> out;
    std::vector<uint32_t> outStride;
};

struct Member {
    std::string name;
    uint32_t row;
    bool internal = false;  // internal row (its public entry point reads pxrInternalImplTable)
    bool packed = false;    // no stride arguments
    // Plane sizes of an image of width x height.
    std::function<std::vector<PlaneSpec>(uint32_t w, uint32_t h)> inputs, outputs;
    std::function<void(const Planes&)> call;
};

const std::vector<Member>& members();
const Member& member(const std::string& name);

// Packed stride of a plane.
inline uint32_t packedStride(const PlaneSpec& p) { return p.width * p.bytesPerPixel; }

// The member as an operation of the differential harness (public rows).
DiffOp diffOp(const Member& m);

}  // namespace pxr::test::ycbcr
