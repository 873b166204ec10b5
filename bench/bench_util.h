// Shared pieces of pixora-bench: test images, forcing a kind for a row, and
// the registration of one operation against its peer and memcpy.
//
// Benchmark names are "<operation>/<variant>/<width>x<height>", where the
// variant is a kind name (CPU, SIMDX, ...), the peer's name or "memcpy";
// tools/bench_table.py reads them back in that form.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "pixora.h"
#include "tools/demo/kinds.h"

namespace pxr::bench {

struct Size {
    uint32_t width, height;
};
inline constexpr Size kSizes[] = {{640, 480}, {1920, 1080}};

// An 8-bit single-channel image whose first pixel is 64-byte aligned.
class Image {
public:
    Image(uint32_t width, uint32_t height, uint32_t stride = 0)
        : width_(width), height_(height), stride_(stride ? stride : width),
          storage_(size_t{stride_} * height + 63) {}
    uint8_t* data() { return aligned(); }
    const uint8_t* data() const { return const_cast<Image*>(this)->aligned(); }
    uint32_t width() const { return width_; }
    uint32_t height() const { return height_; }
    uint32_t stride() const { return stride_; }
    size_t bytes() const { return size_t{stride_} * height_; }

private:
    uint8_t* aligned() {
        const auto p = reinterpret_cast<uintptr_t>(storage_.data());
        return storage_.data() + ((64 - (p & 63)) & 63);
    }
    uint32_t width_, height_, stride_;
    std::vector<uint8_t> storage_;
};

// The same pixels on every run and every platform for a given seed
// (mt19937's output sequence is fixed by the standard).
inline Image randomImage(uint32_t width, uint32_t height, uint32_t seed = 1, uint32_t stride = 0) {
    Image img(width, height, stride);
    std::mt19937 rng(seed);
    for (size_t i = 0; i < img.bytes(); ++i) img.data()[i] = static_cast<uint8_t>(rng() >> 24);
    return img;
}

// Selects the CPU performance mode, then runs `row` on `kind`.
inline void forceKind(uint32_t row, uint32_t kind) {
    pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    pxrImplTable[row] = kind;
}

using Call = std::function<void(const Image& src, Image& dst)>;

// One operation to measure: its public entry point (`run`, called once per
// iteration on the forced kind) and, optionally, a peer library's closest
// equivalent.
struct Operation {
    std::string name;
    uint32_t row;
    Call run;
    std::string peerName;  // empty: no peer
    Call peer;
};

namespace detail {

inline std::string benchName(const std::string& op, const std::string& variant, Size s) {
    return op + "/" + variant + "/" + std::to_string(s.width) + "x" + std::to_string(s.height);
}

inline void loop(benchmark::State& state, Size s, const Call& call) {
    const Image src = randomImage(s.width, s.height);
    Image dst(s.width, s.height);
    for (auto _ : state) {
        call(src, dst);
        benchmark::DoNotOptimize(dst.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * s.width * s.height);
}

}  // namespace detail

// Registers, at every size: each kind that has code of its own for the row,
// the peer (if any), and memcpy of the same number of bytes.
// Call after the mode setter has filled the tables (see registrars()).
inline void registerOperation(const Operation& op) {
    for (Size s : kSizes) {
        for (uint32_t kind = 0; kind < PIXORA_NUM_KINDS; ++kind) {
            if (!pxr::demo::kindHasOwnCode(op.row, kind)) continue;
            benchmark::RegisterBenchmark(
                detail::benchName(op.name, pxrImplChar[kind], s).c_str(),
                [op, s, kind](benchmark::State& state) {
                    forceKind(op.row, kind);
                    detail::loop(state, s, op.run);
                });
        }
        if (op.peer)
            benchmark::RegisterBenchmark(detail::benchName(op.name, op.peerName, s).c_str(),
                                         [op, s](benchmark::State& state) { detail::loop(state, s, op.peer); });
        benchmark::RegisterBenchmark(
            detail::benchName(op.name, "memcpy", s).c_str(), [s](benchmark::State& state) {
                detail::loop(state, s, [](const Image& src, Image& dst) {
                    std::memcpy(dst.data(), src.data(), src.bytes());
                });
            });
    }
}

// Functions that register a family's operations. They run from main() once
// the mode is set, because which kinds exist is known only then.
using Registrar = void (*)();
inline std::vector<Registrar>& registrars() {
    static std::vector<Registrar> list;
    return list;
}
struct AddRegistrar {
    explicit AddRegistrar(Registrar r) { registrars().push_back(r); }
};

}  // namespace pxr::bench

// Defines a registrar function body: PXR_BENCH_OPERATIONS(filters) { registerOperation(...); }
#define PXR_BENCH_OPERATIONS(family)                                              \
    static void pxrBenchRegister_##family();                                      \
    static const pxr::bench::AddRegistrar pxrBenchAdd_##family(pxrBenchRegister_##family); \
    static void pxrBenchRegister_##family()
