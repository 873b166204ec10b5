// Random arguments against every scaling entry point, every kind. Output
// planes are allocated here, exactly as large as the arguments claim (the
// output sizes differ from the source), so the sanitizers see their ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "frame/row_ids.h"
#include "pixora.h"
#include "support/fuzz.h"

using pxr::test::FuzzArgs;
using pxr::test::fuzzEntry;

namespace {

// An output plane of `rows` rows of `rowBytes` bytes at `stride` (0: packed),
// or null when the fuzzer chose a null destination.
class Out {
public:
    Out(const uint8_t* given, uint64_t rowBytes, uint64_t rows, uint64_t stride) {
        if (!given) return;
        const uint64_t s = std::max(stride ? stride : rowBytes, rowBytes);
        bytes_.resize(std::max<uint64_t>(1, rows ? (rows - 1) * s + rowBytes : 0));
    }
    uint8_t* data() { return bytes_.empty() ? nullptr : bytes_.data(); }
    template <class T> T* as() { return reinterpret_cast<T*>(data()); }

private:
    std::vector<uint8_t> bytes_;
};

// Output sizes of the resampling members: sometimes larger than the source.
uint32_t outWidth(const FuzzArgs& a) { return a.width * 2 / 3 + (a.value & 3); }
uint32_t outHeight(const FuzzArgs& a) { return a.height / 2 + (a.value >> 6); }

using Halve = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t);
using Resize = void (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t, uint32_t, uint32_t);
using ResizeStatus = int (*)(const uint8_t*, uint32_t, uint32_t, uint32_t, uint8_t*, uint32_t, uint32_t, uint32_t);

}  // namespace

TEST(EntryFuzz, ScaleReductions) {
    struct Fixed {
        const char* name;
        uint32_t row, num, den;
        Halve strided;
        void (*packed)(const uint8_t*, uint32_t, uint32_t, uint8_t*);
    };
    const Fixed members[] = {
        {"pxrScaleDownBy2u8_v2", PXR_ROW_ScaleDownBy2u8, 1, 2, pxrScaleDownBy2u8_v2, nullptr},
        {"pxrScaleDownBy4u8_v2", PXR_ROW_ScaleDownBy4u8, 1, 4, pxrScaleDownBy4u8_v2, nullptr},
        {"pxrScaleDownBy2Gaussian5x5u8_v2", PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2, 1, 2,
         pxrScaleDownBy2Gaussian5x5u8_v2, nullptr},
        {"pxrScaleDown3To2u8", PXR_ROW_ScaleDown3To2u8, 2, 3, pxrScaleDown3To2u8, nullptr},
        {"pxrScaleDownBy2Gaussian3x3u8", PXR_ROW_ScaleDownBy2Gaussian3x3u8, 1, 2,
         [](const uint8_t* s, uint32_t w, uint32_t h, uint32_t ss, uint8_t* d, uint32_t ds) {
             pxrScaleDownBy2Gaussian3x3u8(s, w, h, ss, d, ds);
         },
         nullptr},
        {"pxrScaleDownBy2u8", PXR_ROW_ScaleDownBy2u8, 1, 2, nullptr, pxrScaleDownBy2u8},
        {"pxrScaleDownBy4u8", PXR_ROW_ScaleDownBy4u8, 1, 4, nullptr, pxrScaleDownBy4u8},
        {"pxrScaleDownBy2Gaussian5x5u8", PXR_ROW_ScaleDownBy2Gaussian5x5u8, 1, 2, nullptr,
         pxrScaleDownBy2Gaussian5x5u8},
    };
    for (const Fixed& f : members) {
        fuzzEntry({f.name, f.row, 1, 1, f.packed != nullptr, [f](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       const uint32_t stride = f.packed ? 0 : a.dstStride;
                       Out o(d, a.width * f.num / f.den, a.height * f.num / f.den, stride);
                       if (f.packed)
                           f.packed(s, a.width, a.height, o.data());
                       else
                           f.strided(s, a.width, a.height, a.srcStride, o.data(), stride);
                   }});
    }
    // The float halving has internal rows, which the fuzzer does not force;
    // it still meets every argument pattern.
    fuzzEntry({"pxrScaleDownBy2Gaussian5x5f32_v2", PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2, 4, 4, false,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   Out o(d, a.width / 2 * 4, a.height / 2, a.dstStride & ~3u);
                   pxrScaleDownBy2Gaussian5x5f32_v2(reinterpret_cast<const float*>(s), a.width, a.height,
                                                    a.srcStride & ~3u, o.as<float>(), a.dstStride & ~3u);
               }});
}

TEST(EntryFuzz, ScaleToSize) {
    struct Member {
        const char* name;
        uint32_t row, channels;
        ResizeStatus status;  // null: a logging member
        Resize fn;
    };
    for (const Member& m : {Member{"pxrScaleDownNNu8", PXR_ROW_ScaleDownNNu8, 1, nullptr, pxrScaleDownNNu8},
                            Member{"pxrScaleDownBLu8", PXR_ROW_ScaleDownBLu8, 1, nullptr, pxrScaleDownBLu8},
                            Member{"pxrScaleDownu8_v2", PXR_ROW_ScaleDownu8, 1, nullptr, pxrScaleDownu8_v2},
                            Member{"pxrScaleDownMNu8", PXR_ROW_ScaleDownMNu8, 1, pxrScaleDownMNu8, nullptr},
                            Member{"pxrScaleDownMNInterleaveu8", PXR_ROW_ScaleDownMNInterleaveu8, 2,
                                   pxrScaleDownMNInterleaveu8, nullptr},
                            Member{"pxrScaleu8", PXR_ROW_Scaleu8, 1, pxrScaleu8, nullptr}}) {
        fuzzEntry({m.name, m.row, m.channels, m.channels, false, [m](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       Out o(d, outWidth(a) * m.channels, outHeight(a), a.dstStride);
                       if (!m.status) {
                           m.fn(s, a.width, a.height, a.srcStride, o.data(), outWidth(a), outHeight(a), a.dstStride);
                           return;
                       }
                       const int rc = m.status(s, a.width, a.height, a.srcStride, o.data(), outWidth(a), outHeight(a),
                                               a.dstStride);
                       EXPECT_TRUE(rc == 0 || rc == PIXORA_STATUS_BAD_PARAM) << rc;
                   }});
    }
    fuzzEntry({"pxrScaleu8_v2", PXR_ROW_Scaleu8_v2, 1, 1, false, [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   // Enlarging too: up to twice the source and a little more.
                   const uint32_t dw = a.width * (1 + (a.value & 1)) + (a.border & 1), dh = a.height + (a.value >> 7);
                   Out o(d, dw, dh, a.dstStride);
                   pxrScaleu8_v2(s, a.width, a.height, a.srcStride, o.data(), dw, dh, a.dstStride,
                                 static_cast<pxrInterpolationType>(a.border));
               }});
    fuzzEntry({"pxrScaleDownu8", PXR_ROW_ScaleDownu8, 1, 1, true, [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   Out o(d, outWidth(a), outHeight(a), 0);
                   pxrScaleDownu8(s, a.width, a.height, o.data(), outWidth(a), outHeight(a));
               }});
}

TEST(EntryFuzz, ScaleDoubling) {
    struct Member {
        const char* name;
        uint32_t row, channels, wf, hf;
        Halve fn;
    };
    const Member members[] = {
        {"pxrScaleUpBy2Gaussian5x5u8_v2", PXR_ROW_ScaleUpBy2Gaussian5x5u8, 1, 2, 2, pxrScaleUpBy2Gaussian5x5u8_v2},
        {"pxrScaleUpPolyu8", PXR_ROW_ScaleUpPolyu8, 1, 2, 2, pxrScaleUpPolyu8},
        {"pxrScaleUpPolyInterleaveu8", PXR_ROW_ScaleUpPolyInterleaveu8, 2, 2, 2, pxrScaleUpPolyInterleaveu8},
        {"pxrUpsampleVerticalu8", PXR_ROW_UpsampleVerticalu8, 1, 1, 2, pxrUpsampleVerticalu8},
        {"pxrUpsampleHorizontalu8", PXR_ROW_UpsampleHorizontalu8, 1, 2, 1, pxrUpsampleHorizontalu8},
        {"pxrUpsample2Du8", PXR_ROW_Upsample2Du8, 1, 2, 2, pxrUpsample2Du8},
        {"pxrUpsampleVerticalInterleavedu8", PXR_ROW_UpsampleVerticalInterleavedu8, 2, 1, 2,
         pxrUpsampleVerticalInterleavedu8},
        {"pxrUpsampleHorizontalInterleavedu8", PXR_ROW_UpsampleHorizontalInterleavedu8, 2, 2, 1,
         pxrUpsampleHorizontalInterleavedu8},
        {"pxrUpsample2DInterleavedu8", PXR_ROW_Upsample2DInterleavedu8, 2, 2, 2, pxrUpsample2DInterleavedu8},
    };
    for (const Member& m : members) {
        fuzzEntry({m.name, m.row, m.channels, m.channels * m.wf, false, [m](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                       Out o(d, uint64_t{a.width} * m.channels * m.wf, uint64_t{a.height} * m.hf, a.dstStride);
                       m.fn(s, a.width, a.height, a.srcStride, o.data(), a.dstStride);
                   }});
    }
    fuzzEntry({"pxrScaleUpBy2Gaussian5x5u8", PXR_ROW_ScaleUpBy2Gaussian5x5u8, 1, 2, true,
               [](const FuzzArgs& a, uint8_t* s, uint8_t* d) {
                   Out o(d, 2 * a.width, 2 * a.height, 0);
                   pxrScaleUpBy2Gaussian5x5u8(s, a.width, a.height, o.data());
               }});
}
