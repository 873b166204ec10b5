// The entry-point contract shared by every public operation:
//   stride defaulting -> size pattern -> chosen kind -> constraint rules ->
//   trace -> argument assertion -> dispatch (-> retry on kind 1).
// A wrapper lists the facts of its operation and hands them to these helpers.
#pragma once

#include <cstdint>
#include <type_traits>

#include "frame/registry.h"
#include "frame/state.h"
#include "pixora/frame.h"
#include "platform/platform.h"

namespace pxr {

inline constexpr uint32_t kCpu = PIXORA_KIND_CPU, kSimd = PIXORA_KIND_SIMDX, kGpu = PIXORA_KIND_GPU;

// A stride of 0 means packed rows of width x bytesPerPixel.
constexpr uint32_t packedStride(uint32_t stride, uint32_t width, uint32_t bytesPerPixel = 1) {
    return stride ? stride : width * bytesPerPixel;
}

inline bool aligned(const void* p, uintptr_t n) { return (reinterpret_cast<uintptr_t>(p) & (n - 1)) == 0; }
constexpr bool aligned(uint32_t v, uint32_t n) { return (v & (n - 1)) == 0; }
constexpr bool isDspKind(uint32_t k) { return k == PIXORA_KIND_KDSP || (k >= PIXORA_KIND_ADSP && k < PIXORA_NUM_KINDS); }

// Images of fewer pixels than this stay on the CPU (176 x 144 + 1).
inline constexpr uint32_t kAcceleratorMinPixels = 25345;

// A constraint rule: whether the GPU and the DSP kinds may keep the call.
// dspChecked: the DSP part applies only while HW_constraint_checks_enable is on.
struct Rule {
    bool gpuOk = true;
    bool dspOk = true;
    bool dspChecked = true;
};

// Applies a rule to the chosen kind: a failed rule moves the call to kind 1.
inline uint32_t constrain(uint32_t k, const Rule& r) {
    if (k == kGpu) return r.gpuOk ? k : kSimd;
    if (isDspKind(k)) {
        if (r.dspChecked && !HW_constraint_checks_enable) return k;
        return r.dspOk ? k : kSimd;
    }
    return k;
}

// The common image rule (that of the 3x3 Gaussian _v2), used wherever an
// operation states no rule of its own: the GPU needs even sizes; the DSP
// needs at least kAcceleratorMinPixels pixels, pointers and strides that are
// multiples of `align`, and at least 3 rows and 4 columns.
inline Rule imageRule(uint32_t width, uint32_t height, const void* src, uint32_t srcStride,
                      const void* dst, uint32_t dstStride, uint32_t align = 4) {
    Rule r;
    r.gpuOk = !(width & 1) && !(height & 1);
    r.dspOk = uint64_t{width} * height >= kAcceleratorMinPixels && aligned(src, align) &&
              aligned(srcStride, align) && aligned(dst, align) && aligned(dstStride, align) &&
              height >= 3 && width >= 4;
    return r;
}

// Applies the rule to a chosen kind and writes the trace line.
inline uint32_t applyRule(const char* name, uint32_t chosen, const Rule& rule) {
    uint32_t k = constrain(chosen, rule);
    if (k >= PIXORA_NUM_KINDS) k = kCpu;
    if (libLogPrint)
        platform::log(platform::kError, platform::kRuntimeTag, "%s_%s", name, pxrImplChar[k]);
    return k;
}

// Reads the chosen kind of a row, applies the rule and writes the trace line.
inline uint32_t selectKind(const char* name, uint32_t id, const Rule& rule) {
    return applyRule(name, pxrImplTable[id], rule);
}

// The same for an internal row that has a public entry point of its own.
inline uint32_t selectInternalKind(const char* name, uint32_t id, const Rule& rule) {
    return applyRule(name, pxrInternalImplTable[id], rule);
}

void errorAt(const char* name);
void assertionFailed(const char* name, const char* condition);
[[noreturn]] void fatal(const char* source, int line, const char* condition);

namespace detail {

// Calls `id` of a function table on kind k through signature Fn.
template <class Fn, class... Args>
auto callRow(const uintptr_t* table, uint32_t id, Fn* reference, uint32_t k, Args... args) {
    using R = std::invoke_result_t<Fn*, Args...>;
    auto entry = [&](uint32_t kind) {
        uintptr_t e = table[id * PIXORA_NUM_KINDS + kind];
        if (!e) e = table[id * PIXORA_NUM_KINDS + kSimd];
        if (!e) e = reinterpret_cast<uintptr_t>(reference);
        return reinterpret_cast<Fn*>(e);
    };
    if constexpr (std::is_void_v<R>) {
        entry(k)(args...);
    } else {
        R r = entry(k)(args...);
        if constexpr (std::is_integral_v<R>)
            if (r == static_cast<R>(PIXORA_STATUS_UNSUPPORTED) && k != kSimd)
                r = entry(kSimd)(args...);
        return r;
    }
}

}  // namespace detail

// Calls row Id on kind k. An entry that is 0 (a column never filled) runs
// kind 1 instead; a status of 32768 from an accelerator retries on kind 1.
template <uint32_t Id, class... Args>
auto dispatch(uint32_t k, Args... args) {
    return detail::callRow<RowFn<Id>>(pxrFuncTable, Id, RowRef<Id>::impl, k, args...);
}

// The same for internal row Id.
template <uint32_t Id, class... Args>
auto dispatchInternal(uint32_t k, Args... args) {
    return detail::callRow<IRowFn<Id>>(pxrInternalFuncTable, Id, IRowRef<Id>::impl, k, args...);
}

}  // namespace pxr

// Argument assertion of the logging generations: logs the condition's own
// source text and returns (with `...` as the result, if any).
#define PXR_ASSERT(cond, ...)                          \
    do {                                               \
        if (!(cond)) {                                 \
            pxr::assertionFailed(__func__, #cond);     \
            return __VA_ARGS__;                        \
        }                                              \
    } while (0)

// Argument check of the status generations: no log, returns the status.
#define PXR_REQUIRE(cond, status) \
    do {                          \
        if (!(cond)) return (status); \
    } while (0)

// Internal precondition of a reference implementation: fatal.
#define PXR_INVARIANT(source, cond) \
    do {                            \
        if (!(cond)) pxr::fatal(source, __LINE__, #cond); \
    } while (0)
