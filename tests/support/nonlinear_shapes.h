// The standard differential shapes without the largest images, for
// operations whose reference costs hundreds of operations per pixel.
#pragma once

#include <cstdint>
#include <vector>

#include "support/differential.h"

namespace pxr::test {

inline std::vector<Shape> shapesUpTo(uint64_t pixels) {
    std::vector<Shape> v;
    for (const Shape& s : standardShapes())
        if (uint64_t{s.width} * s.height <= pixels) v.push_back(s);
    return v;
}

}  // namespace pxr::test
