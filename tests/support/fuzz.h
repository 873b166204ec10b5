// Random arguments against an image entry point, on buffers sized exactly
// to what the arguments claim, with every kind forced in turn. Under the
// address and undefined-behaviour sanitizers (the asan preset) this proves
// that bad input is refused without a crash and good input is never read
// or written past its bounds.
#pragma once

#include <cstdint>
#include <functional>

namespace pxr::test {

// One random call: sizes (sometimes 0, 1 or 2), strides (0, below the
// width, or with slack), a border type 0..4 and a border value.
struct FuzzArgs {
    uint32_t width, height, srcStride, dstStride, border;
    uint8_t value;
};

struct FuzzEntry {
    const char* name;
    uint32_t row;
    // Bytes per pixel of the source and destination planes.
    uint32_t srcBpp = 1, dstBpp = 1;
    // Generations without strides read and write packed rows.
    bool packed = false;
    std::function<void(const FuzzArgs&, uint8_t* src, uint8_t* dst)> call;
};

// Runs `rounds` random calls (null planes now and then, random kinds,
// random constraint-check flag) and restores the state it changed.
void fuzzEntry(const FuzzEntry& entry, int rounds = 1500);

}  // namespace pxr::test
