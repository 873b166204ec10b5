// The built-in grey picture used when no image file is given.
#pragma once

#include <cstdint>

#include "tools/demo/image_io.h"

namespace pxr::demo {

// Gradients, hard-edged shapes, a zone plate (fine detail that blurs show)
// and 2% salt-and-pepper noise (which the median removes). The same pixels
// on every run.
Image testPattern(uint32_t width = 1024, uint32_t height = 768);

}  // namespace pxr::demo
