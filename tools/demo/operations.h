// The operations the demo runs: one line per public entry point.
#pragma once

#include <cstdint>
#include <span>

namespace pxr::demo {

// A grey image the operations read.
struct SrcView {
    const uint8_t* data;
    uint32_t width, height, stride;
};
// A grey image of the same size the operations write.
struct DstView {
    uint8_t* data;
    uint32_t width, height, stride;
};

struct Operation {
    const char* name;     // the public entry point, also the output file's stem
    uint32_t row;         // its row in the function table
    const char* settings; // the arguments the demo passes, in words
    // Calls the entry point; returns its status (0 for entry points without one).
    int (*run)(const SrcView& src, const DstView& dst);
};

// Every operation, in the order they are run and reported.
std::span<const Operation> operations();

}  // namespace pxr::demo
