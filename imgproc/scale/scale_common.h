// Helpers shared by every scaling member and both kinds: edge rules, row
// addressing and the exact division by 9 of the 3:2 reduction.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace pxr::scale {

// Mirror about the edge sample (... 2 1 | 0 1 2 ... n-1 | n-2 n-3 ...),
// folded again as often as needed, so any index lands in [0, n).
inline uint32_t reflect101(int64_t i, uint32_t n) {
    if (n <= 1) return 0;
    const int64_t period = 2 * (int64_t{n} - 1);
    i %= period;
    if (i < 0) i += period;
    return static_cast<uint32_t>(i < n ? i : period - i);
}

// The nearest index in [0, n) (edge replicated).
inline uint32_t clampIndex(int64_t i, uint32_t n) {
    return static_cast<uint32_t>(i < 0 ? 0 : (i >= n ? n - 1 : i));
}

// Row y of an image whose stride is in bytes, for any element type.
template <class T>
inline T* rowAt(T* base, size_t y, uint32_t stride) {
    using Byte = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;
    return reinterpret_cast<T*>(reinterpret_cast<Byte*>(base) + y * stride);
}

inline uint8_t clampByte(int32_t v) { return static_cast<uint8_t>(v < 0 ? 0 : (v > 255 ? 255 : v)); }

// (sum + 4) / 9 by a 16-bit reciprocal: exact for sum <= 2295 (9 x 255),
// since 7282 x 9 exceeds 2^16 by 2 and (2295 + 4) x 2 < 2^16.
inline uint8_t roundDiv9(uint32_t sum) { return static_cast<uint8_t>(((sum + 4) * 7282u) >> 16); }

}  // namespace pxr::scale
