// The M-by-N block reduction, shared by the reference and vector kinds:
// the count tables, the scratch layout and the scalar row kernels.
#pragma once

#include <cstddef>
#include <cstdint>

namespace pxr::scale::mn {

// Counts of source columns (or rows) per destination column (or row), in
// table[0 .. dstSize): for each source index the destination size is added
// to an accumulator; when it reaches the source size, the number of source
// indices since the last entry is written and the source size subtracted.
// Needs 1 <= dstSize <= srcSize; the counts then sum to srcSize and are
// floor or ceil of srcSize / dstSize.
inline void buildCountTable(uint32_t srcSize, uint32_t dstSize, uint32_t* table) {
    uint64_t acc = 0;
    uint32_t last = 0, n = 0;
    for (uint32_t i = 0; i < srcSize; ++i) {
        acc += dstSize;
        if (acc >= srcSize) {
            table[n++] = i + 1 - last;
            last = i + 1;
            acc -= srcSize;
        }
    }
}

// One scratch buffer (aligned to 32 bytes) holds the column table, the row
// table and one row of column sums (srcBytes 32-bit sums; the vector kind
// may use the space as 16-bit sums).
struct Layout {
    size_t columnTable, rowTable, sums, bytes;
};
inline Layout layout(uint32_t srcBytes, uint32_t dstWidth, uint32_t dstHeight) {
    auto up32 = [](size_t n) { return (n + 31) & ~size_t{31}; };
    Layout l{};
    l.columnTable = 0;
    l.rowTable = up32(size_t{dstWidth} * 4);
    l.sums = l.rowTable + up32(size_t{dstHeight} * 4);
    l.bytes = l.sums + up32(size_t{srcBytes} * 4);
    return l;
}

// Column sums over `rows` rows, for bytes [0, n) of a row.
inline void columnSums(const uint8_t* src, uint32_t stride, uint32_t rows, uint32_t n, uint32_t* sums) {
    for (uint32_t c = 0; c < n; ++c) sums[c] = src[c];
    for (uint32_t r = 1; r < rows; ++r) {
        const uint8_t* row = src + size_t{r} * stride;
        for (uint32_t c = 0; c < n; ++c) sums[c] += row[c];
    }
}

// The rounded mean (sum + n/2) / n of every block of one output row, for
// destination columns [x0, x1), the first of which starts at source column
// `first`. channels: 1, or 2 for interleaved planes. Sum: the column-sum
// type (32-bit here, 16-bit in the vector kind where the rows allow).
template <class Sum>
inline void averageBlocks(const Sum* sums, const uint32_t* table, uint32_t rows, uint32_t channels,
                          uint8_t* out, uint32_t x0, uint32_t x1, uint32_t first) {
    for (uint32_t x = x0; x < x1; ++x) {
        const uint32_t count = table[x];
        const uint64_t n = uint64_t{count} * rows;  // a 64-bit sum: blocks may be huge
        for (uint32_t ch = 0; ch < channels; ++ch) {
            uint64_t sum = 0;
            const Sum* s = sums + size_t{first} * channels + ch;
            for (uint32_t i = 0; i < count; ++i) sum += s[size_t{i} * channels];
            out[size_t{x} * channels + ch] = static_cast<uint8_t>((sum + n / 2) / n);
        }
        first += count;
    }
}

// (sum + n/2) / n as ((sum + n/2) x mul) >> 16, for n >= 2, when exact for
// every sum up to 255 n: with mul = ceil(2^16 / n) and e = mul n - 2^16,
// floor(a mul / 2^16) = floor(a / n) while a e < 2^16.
struct Reciprocal {
    uint16_t add, mul;
    bool exact;
};
inline Reciprocal reciprocal(uint32_t n) {
    if (n < 2) return {0, 0, false};
    const uint32_t mul = (65536 + n - 1) / n, e = mul * n - 65536, amax = 255 * n + n / 2;
    const bool exact = amax <= 65535 && uint64_t{amax} * e < 65536;
    return {static_cast<uint16_t>(n / 2), static_cast<uint16_t>(mul), exact};
}

}  // namespace pxr::scale::mn
