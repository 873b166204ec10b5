// Which implementation kinds a row of the function table offers.
#pragma once

#include <cstdint>

#include "pixora.h"

namespace pxr::demo {

// Entry of kind k for a row (0 when the column holds nothing).
inline uintptr_t kindEntry(uint32_t row, uint32_t kind) {
    return pxrFuncTable[row * PIXORA_NUM_KINDS + kind];
}

// A kind is present when its entry is non-zero.
inline bool kindPresent(uint32_t row, uint32_t kind) { return kindEntry(row, kind) != 0; }

// The lower kind whose code a present kind's column repeats (the table keeps
// copies of the CPU or SIMDX code in unused columns), or -1 when the kind has
// code of its own. Kind 0 always has code of its own.
inline int aliasOf(uint32_t row, uint32_t kind) {
    const uintptr_t e = kindEntry(row, kind);
    for (uint32_t lower = 0; lower < kind; ++lower)
        if (e && kindEntry(row, lower) == e) return static_cast<int>(lower);
    return -1;
}

// Present kinds with code of their own: the ones worth running and timing.
inline bool kindHasOwnCode(uint32_t row, uint32_t kind) {
    return kindPresent(row, kind) && aliasOf(row, kind) < 0;
}

// Runs the calls of its lifetime on one kind: the mode setter's choice for
// the row is replaced and put back afterwards.
class ForcedKind {
public:
    ForcedKind(uint32_t row, uint32_t kind) : row_(row), saved_(pxrImplTable[row]) {
        pxrImplTable[row] = kind;
    }
    ~ForcedKind() { pxrImplTable[row_] = saved_; }
    ForcedKind(const ForcedKind&) = delete;
    ForcedKind& operator=(const ForcedKind&) = delete;

private:
    uint32_t row_;
    uint32_t saved_;
};

}  // namespace pxr::demo
