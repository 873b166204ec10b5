// M x N median on s16, vector kind: a selection network applied to whole
// vectors of outputs. The network is Batcher's odd-even merge sort over the
// taps padded to a power of two (the padding split between the lowest and
// the highest value so that the median lands in the middle), with every
// compare-exchange that touches only padding resolved while it is built and
// every one that cannot reach the median dropped.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "simd/filters/nonlinear_median_mxn_v.cpp"
#include <hwy/foreach_target.h>  // IWYU pragma: keep
#include <hwy/highway.h>

#include "imgproc/filters/nonlinear_median_mxn_kernels.h"

#ifndef PIXORA_SIMD_NONLINEAR_MEDIAN_NETWORK_
#define PIXORA_SIMD_NONLINEAR_MEDIAN_NETWORK_
namespace pxr::medianmxn {

// Compare-exchange: register a takes the minimum, b the maximum.
struct Exchange {
    uint8_t a, b;
};

struct Network {
    uint32_t count = 0;
    uint8_t result = 0;                // the register that ends with the median
    Exchange ops[4096];                // Batcher's network on 256 inputs has 3839
};

}  // namespace pxr::medianmxn
#endif

HWY_BEFORE_NAMESPACE();
namespace pxr::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Rows [N/2, height - N/2): outputs [M/2, width - M/2) of each.
void MedianRows(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t m, uint32_t n,
                uint8_t* dst, uint32_t dstStride, const medianmxn::Network* net) {
    const hn::ScalableTag<int16_t> d;
    const size_t L = hn::Lanes(d);
    const uint32_t x0 = m / 2, x1 = width - m / 2, outputs = x1 - x0;
    HWY_ALIGN int16_t regs[medianmxn::kMaxTaps * (HWY_MAX_BYTES / sizeof(int16_t))];
    auto at = [&](size_t y, size_t x, uint8_t* out) {
        for (uint32_t i = 0; i < n; ++i) {
            const auto* r = reinterpret_cast<const int16_t*>(src + (y - n / 2 + i) * srcStride) + (x - x0);
            for (uint32_t j = 0; j < m; ++j) hn::Store(hn::LoadU(d, r + j), d, regs + (i * m + j) * L);
        }
        for (uint32_t k = 0; k < net->count; ++k) {
            int16_t* a = regs + net->ops[k].a * L;
            int16_t* b = regs + net->ops[k].b * L;
            const auto va = hn::Load(d, a), vb = hn::Load(d, b);
            hn::Store(hn::Min(va, vb), d, a);
            hn::Store(hn::Max(va, vb), d, b);
        }
        hn::StoreU(hn::Load(d, regs + net->result * L), d, reinterpret_cast<int16_t*>(out + x * 2));
    };
    for (size_t y = n / 2; y + n / 2 < height; ++y) {
        uint8_t* out = dst + y * dstStride;
        if (outputs < L) {
            medianmxn::span(src, srcStride, m, n, y, out, x0, x1);
            continue;
        }
        size_t x = x0;
        for (; x + L <= x1; x += L) at(y, x, out);
        if (x < x1) at(y, x1 - L, out);  // overlaps the previous vector with equal results
    }
}

}  // namespace pxr::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include <bitset>

#include "pixora/types.h"
#include "simd/filters/nonlinear_v.h"

namespace pxr {
namespace {

// The pruned network for the median of `taps` values (odd, 1 to 225).
void buildNetwork(uint32_t taps, medianmxn::Network& net) {
    enum : uint8_t { kVar, kLow, kHigh };
    uint32_t p = 2;
    while (p < taps) p *= 2;
    uint8_t kind[256], reg[256];
    const uint32_t low = (p - taps - 1) / 2;  // padding that sorts first
    for (uint32_t i = 0; i < p; ++i) {
        kind[i] = i < taps ? kVar : i < taps + low ? kLow : kHigh;
        reg[i] = static_cast<uint8_t>(i < taps ? i : 0);
    }
    // Batcher's odd-even merge sort; exchanges with padding only move labels.
    medianmxn::Network all;
    for (uint32_t q = 1; q < p; q *= 2)
        for (uint32_t k = q; k >= 1; k /= 2)
            for (uint32_t j = k % q; j + k < p; j += 2 * k)
                for (uint32_t i = 0; i < std::min(k, p - j - k); ++i) {
                    const uint32_t lo = i + j, hi = i + j + k;
                    if ((lo / (2 * q)) != (hi / (2 * q))) continue;
                    if (kind[lo] == kLow || kind[hi] == kHigh) continue;  // already in order
                    if (kind[lo] == kVar && kind[hi] == kVar) {
                        all.ops[all.count++] = {reg[lo], reg[hi]};
                        continue;
                    }
                    std::swap(kind[lo], kind[hi]);  // a padding value and one out of order
                    std::swap(reg[lo], reg[hi]);
                }
    // The median sits at position p/2 - 1; keep what leads to it.
    net.result = reg[p / 2 - 1];
    std::bitset<256> needed;
    needed.set(net.result);
    uint32_t kept = 0;
    medianmxn::Exchange reversed[4096];
    for (uint32_t k = all.count; k-- > 0;) {
        const auto e = all.ops[k];
        if (!needed[e.a] && !needed[e.b]) continue;
        needed.set(e.a);
        needed.set(e.b);
        reversed[kept++] = e;
    }
    net.count = kept;
    for (uint32_t k = 0; k < kept; ++k) net.ops[k] = reversed[kept - 1 - k];
}

}  // namespace

HWY_EXPORT(MedianRows);

static void medianRows(const uint8_t* src, uint32_t width, uint32_t height, uint32_t srcStride, uint32_t m,
                       uint32_t n, uint8_t* dst, uint32_t dstStride, const medianmxn::Network* net) {
    HWY_DYNAMIC_DISPATCH(MedianRows)(src, width, height, srcStride, m, n, dst, dstStride, net);
}
}  // namespace pxr

int pxrFilterMedianMxNs16V(const int16_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                           uint32_t M, uint32_t N, int16_t* dst, uint32_t dstStride) {
    if (srcWidth < M || srcHeight < N) return PIXORA_STATUS_OK;
    pxr::medianmxn::Network net;
    pxr::buildNetwork(M * N, net);
    pxr::medianRows(reinterpret_cast<const uint8_t*>(src), srcWidth, srcHeight, srcStride, M, N,
                    reinterpret_cast<uint8_t*>(dst), dstStride, &net);
    return PIXORA_STATUS_OK;
}
#endif
