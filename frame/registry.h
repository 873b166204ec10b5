// The row registry: ties each function id to its implementations.
//
// A family declares its reference implementations and registers them with
// PXR_REFERENCE(id, fn); the reference's type becomes the row's signature.
// Vector, GPU and DSP implementations are registered with PXR_VECTOR,
// PXR_GPU and PXR_DSP, which refuse at compile time any function whose type
// differs from the row's signature. Entry points call through RowFn<id>, so
// a wrong signature can reach the table from neither side.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/row_ids.h"

namespace pxr {

template <uint32_t Id> struct RowRef { static constexpr std::nullptr_t impl = nullptr; };
template <uint32_t Id> struct RowVec { static constexpr std::nullptr_t impl = nullptr; };
template <uint32_t Id> struct RowGpu { static constexpr std::nullptr_t impl = nullptr; };
template <uint32_t Id> struct RowDsp {
    static constexpr std::nullptr_t k = nullptr, ka = nullptr, kc = nullptr, km = nullptr;
};
template <uint32_t Id> struct IRowRef { static constexpr std::nullptr_t impl = nullptr; };
template <uint32_t Id> struct IRowVec { static constexpr std::nullptr_t impl = nullptr; };
template <uint32_t Id> struct IRowDsp {
    static constexpr std::nullptr_t k = nullptr, ka = nullptr, kc = nullptr, km = nullptr;
};

// The signature of a row: the type of its reference implementation.
template <uint32_t Id> using RowFn = std::remove_pointer_t<decltype(RowRef<Id>::impl)>;
template <uint32_t Id> using IRowFn = std::remove_pointer_t<decltype(IRowRef<Id>::impl)>;

template <class Fn, class F> constexpr bool matches(F*) { return std::is_same_v<Fn, F>; }
template <class Fn> constexpr bool matches(std::nullptr_t) { return true; }

template <class P> constexpr bool present(P p) { return p != nullptr; }

}  // namespace pxr

#define PXR_REFERENCE(id, fn) \
    template <> struct pxr::RowRef<id> { static constexpr auto impl = &(fn); };

#define PXR_VECTOR(id, fn)                                                              \
    static_assert(pxr::matches<pxr::RowFn<id>>(&(fn)), #fn " differs from its row's signature"); \
    template <> struct pxr::RowVec<id> { static constexpr auto impl = &(fn); };

#define PXR_GPU(id, fn)                                                                 \
    static_assert(pxr::matches<pxr::RowFn<id>>(&(fn)), #fn " differs from its row's signature"); \
    template <> struct pxr::RowGpu<id> { static constexpr auto impl = &(fn); };

#define PXR_DSP(id, k_, ka_, kc_, km_)                                                  \
    static_assert(pxr::matches<pxr::RowFn<id>>(&(k_)) && pxr::matches<pxr::RowFn<id>>(&(ka_)) && \
                      pxr::matches<pxr::RowFn<id>>(&(kc_)) && pxr::matches<pxr::RowFn<id>>(&(km_)), \
                  "DSP proxies of row " #id " differ from its signature");              \
    template <> struct pxr::RowDsp<id> {                                                \
        static constexpr auto k = &(k_), ka = &(ka_), kc = &(kc_), km = &(km_);         \
    };

#define PXR_INTERNAL_REFERENCE(id, fn) \
    template <> struct pxr::IRowRef<id> { static constexpr auto impl = &(fn); };

#define PXR_INTERNAL_VECTOR(id, fn)                                                      \
    static_assert(pxr::matches<pxr::IRowFn<id>>(&(fn)), #fn " differs from its row's signature"); \
    template <> struct pxr::IRowVec<id> { static constexpr auto impl = &(fn); };
