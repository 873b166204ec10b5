// The words written just before every scratch buffer the library hands out,
// and the arithmetic that places an aligned buffer inside a heap block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pxr::memory {

inline constexpr uint32_t kPoolTag = 0xCDCDCDCDu;  // back pointer = the slot
inline constexpr uint32_t kHeapTag = 0xABABABABu;  // back pointer = the raw heap block

// A 32-bit tag, then a pointer-sized back pointer that ends at the user pointer.
inline constexpr size_t kHeaderBytes = sizeof(uint32_t) + sizeof(void*);

// Bytes reserved in front of the user pointer: the header rounded up to the
// heap's own alignment, so that an unaligned buffer keeps malloc's alignment
// (8 bytes on 32-bit ARM, where this is exactly the two words; 16 on 64-bit).
inline constexpr size_t kHeaderSpace =
    (kHeaderBytes + alignof(std::max_align_t) - 1) & ~(alignof(std::max_align_t) - 1);

// A power of two is kept; zero and any other value mean "no alignment".
inline constexpr uint32_t effectiveAlignment(uint32_t alignment) {
    return (alignment != 0 && (alignment & (alignment - 1)) == 0) ? alignment : 1u;
}

// Size of a block that holds `size` bytes at `alignment` behind the header,
// or 0 when that does not fit in size_t.
inline constexpr size_t blockBytes(size_t size, uint32_t alignment) {
    const size_t extra = size_t{alignment} - 1 + kHeaderSpace;
    return size > SIZE_MAX - extra ? 0 : size + extra;
}

// (block + alignment - 1 + header space) rounded down to a multiple of alignment.
inline std::byte* placeUser(void* block, uint32_t alignment) {
    const uintptr_t start = reinterpret_cast<uintptr_t>(block);
    const uintptr_t user = (start + alignment - 1 + kHeaderSpace) & ~(uintptr_t{alignment} - 1);
    return static_cast<std::byte*>(block) + (user - start);
}

inline bool isAligned(const void* p, uint32_t alignment) {
    return (reinterpret_cast<uintptr_t>(p) & (uintptr_t{alignment} - 1)) == 0;
}

// The header is not naturally aligned for alignment-1 buffers, hence memcpy.
inline void writeHeader(void* user, uint32_t tag, const void* back) {
    auto* u = static_cast<std::byte*>(user);
    std::memcpy(u - kHeaderBytes, &tag, sizeof tag);
    std::memcpy(u - sizeof(void*), &back, sizeof back);
}

inline uint32_t readTag(const void* user) {
    uint32_t tag;
    std::memcpy(&tag, static_cast<const std::byte*>(user) - kHeaderBytes, sizeof tag);
    return tag;
}

inline void* readBackPointer(const void* user) {
    void* back;
    std::memcpy(&back, static_cast<const std::byte*>(user) - sizeof(void*), sizeof back);
    return back;
}

}  // namespace pxr::memory
