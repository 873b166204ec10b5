// Random arguments against the correlation and convolution entry points, on
// buffers (kernels included) sized exactly to what the arguments claim.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/fuzz.h"

using pxr::test::FuzzArgs;
using pxr::test::fuzzEntry;

namespace {

// Kernel sizes 1..6 (0 now and then), shifts -16..31, from the random value.
uint32_t kernelSize(const FuzzArgs& a) { return a.value % 13 == 0 ? 0 : a.value % 6 + 1; }
int32_t shiftOf(const FuzzArgs& a) { return static_cast<int32_t>(a.value % 48) - 16; }

template <class T>
std::vector<T> kernelOf(size_t count) {
    std::vector<T> k(std::max<size_t>(count, 1));
    for (size_t i = 0; i < k.size(); ++i) k[i] = static_cast<T>((i * 37) % 23) - static_cast<T>(11);
    return k;
}

// The caller's tmp image: w x h values, or null now and then.
std::vector<int16_t> tmpFor(const FuzzArgs& a) {
    return a.value % 11 == 0 ? std::vector<int16_t>() : std::vector<int16_t>(std::max<size_t>(size_t{a.width} * a.height, 1));
}
int16_t* ptr(std::vector<int16_t>& v) { return v.empty() ? nullptr : v.data(); }

}  // namespace

TEST(CorrelationFuzz, ThreeByThreeAndNxN) {
    fuzzEntry({"pxrFilterCorr3x3s8", PXR_ROW_FilterCorr3x3s8_v2, 1, 1, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const auto k = kernelOf<int8_t>(9);
                   pxrFilterCorr3x3s8(a.value % 7 ? k.data() : nullptr, shiftOf(a), s, a.width, a.height, d);
               }});
    fuzzEntry({"pxrFilterCorr3x3s8_v2", PXR_ROW_FilterCorr3x3s8_v2, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const auto k = kernelOf<int8_t>(9);
                   pxrFilterCorr3x3s8_v2(k.data(), shiftOf(a), s, a.width, a.height, a.srcStride, d, a.dstStride);
               }});
    fuzzEntry({"pxrFilterCorrNxNu8", PXR_ROW_FilterCorrNxNu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t n = kernelSize(a);
                   const auto k = kernelOf<int8_t>(n * n);
                   pxrFilterCorrNxNu8(k.data(), n, shiftOf(a), s, a.width, a.height, a.srcStride, d, a.dstStride);
               }});
    fuzzEntry({"pxrFilterCorrNxNu8s16", PXR_ROW_FilterCorrNxNu8s16, 1, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t n = kernelSize(a);
                   const auto k = kernelOf<int8_t>(n * n);
                   pxrFilterCorrNxNu8s16(k.data(), n, shiftOf(a), s, a.width, a.height, a.srcStride,
                                         reinterpret_cast<int16_t*>(d), a.dstStride);
               }});
    fuzzEntry({"pxrFilterCorrNxNu8f32", PXR_ROW_FilterCorrNxNu8f32, 1, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t n = kernelSize(a);
                   const auto k = kernelOf<float>(n * n);
                   pxrFilterCorrNxNu8f32(k.data(), n, s, a.width, a.height, a.srcStride, reinterpret_cast<float*>(d),
                                         a.dstStride);
               }});
    fuzzEntry({"pxrFilterCorrSepMxNu8", PXR_ROW_FilterCorrSepMxNu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t m = kernelSize(a), n = a.value % 4 + 1;
                   const auto kx = kernelOf<int8_t>(m), ky = kernelOf<int8_t>(n);
                   pxrFilterCorrSepMxNu8(kx.data(), m, ky.data(), n, shiftOf(a), s, a.width, a.height, a.srcStride, d,
                                         a.dstStride);
               }});
}

TEST(CorrelationFuzz, SeparableQ15) {
    using Plain = void (*)(const int16_t*, const int16_t*, uint32_t, uint32_t, int16_t*, int16_t*);
    using V2 = void (*)(const int16_t*, const int16_t*, uint32_t, uint32_t, uint32_t, int16_t*, int16_t*, uint32_t);
    struct Fixed {
        const char* name;
        uint32_t n, row;
        Plain plain;
        V2 v2;
    };
    for (const Fixed f : {Fixed{"9x9", 9, PXR_ROW_FilterCorrSep9x9s16, pxrFilterCorrSep9x9s16, pxrFilterCorrSep9x9s16_v2},
                          Fixed{"11x11", 11, PXR_ROW_FilterCorrSep11x11s16, pxrFilterCorrSep11x11s16,
                                pxrFilterCorrSep11x11s16_v2},
                          Fixed{"13x13", 13, PXR_ROW_FilterCorrSep13x13s16, pxrFilterCorrSep13x13s16,
                                pxrFilterCorrSep13x13s16_v2},
                          Fixed{"15x15", 15, PXR_ROW_FilterCorrSep15x15s16, pxrFilterCorrSep15x15s16,
                                pxrFilterCorrSep15x15s16_v2},
                          Fixed{"17x17", 17, PXR_ROW_FilterCorrSep17x17s16, pxrFilterCorrSep17x17s16,
                                pxrFilterCorrSep17x17s16_v2}}) {
        SCOPED_TRACE(f.name);
        fuzzEntry({"pxrFilterCorrSepKxKs16", f.row, 2, 2, true, [f](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       const auto k = kernelOf<int16_t>(f.n);
                       auto tmp = tmpFor(a);
                       f.plain(k.data(), reinterpret_cast<const int16_t*>(s), a.width, a.height, ptr(tmp),
                               reinterpret_cast<int16_t*>(d));
                   }}, 300);
        fuzzEntry({"pxrFilterCorrSepKxKs16_v2", f.row, 2, 2, false, [f](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       const auto k = kernelOf<int16_t>(f.n);
                       auto tmp = tmpFor(a);
                       f.v2(k.data(), reinterpret_cast<const int16_t*>(s), a.width, a.height, a.srcStride, ptr(tmp),
                            reinterpret_cast<int16_t*>(d), a.dstStride);
                   }}, 300);
    }
    fuzzEntry({"pxrFilterCorrSepNxNs16", PXR_ROW_FilterCorrSepNxNs16, 2, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t n = kernelSize(a) * 3;
                   const auto k = kernelOf<int16_t>(n);
                   auto tmp = tmpFor(a);
                   pxrFilterCorrSepNxNs16(k.data(), n, reinterpret_cast<const int16_t*>(s), a.width, a.height,
                                          a.srcStride, ptr(tmp), reinterpret_cast<int16_t*>(d), a.dstStride);
               }});
}

TEST(CorrelationFuzz, Convolution) {
    fuzzEntry({"pxrFilterConvolveMxNu8", PXR_ROW_FilterConvolveMxNu8, 1, 1, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t kw = kernelSize(a), kh = a.value / 13 % 7;
                   const auto k = kernelOf<int16_t>(size_t{kw} * kh);
                   pxrFilterConvolveMxNu8(k.data(), kw, kh, shiftOf(a), s, a.width, a.height, a.srcStride, d,
                                          a.dstStride, static_cast<pxrBorderType>(a.border), a.value);
               }});
    fuzzEntry({"pxrFilterConvolveMxNu8s16", PXR_ROW_FilterConvolveMxNu8s16, 1, 2, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   const uint32_t kw = kernelSize(a), kh = a.value / 13 % 7;
                   const auto k = kernelOf<int16_t>(size_t{kw} * kh);
                   pxrFilterConvolveMxNu8s16(k.data(), kw, kh, shiftOf(a), s, a.width, a.height, a.srcStride,
                                             reinterpret_cast<int16_t*>(d), a.dstStride,
                                             static_cast<pxrBorderType>(a.border), a.value);
               }});
}
