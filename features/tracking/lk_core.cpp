// The Lucas-Kanade core (lkOpticalFlow_v3) and the bodies of the row
// implementations around it.
#include "features/tracking/lk_core.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <new>

#include "features/tracking/lk_kernels.h"
#include "memory/scratch.h"

namespace pxr::lk {
namespace {

// Iteration limit and convergence threshold (on dx^2 + dy^2).
struct Termination {
    int32_t iterations;
    float threshold;
};

Termination termination(int32_t mode, int32_t maxIterations, float maxEpsilon) {
    const int32_t iterations = std::clamp(maxIterations, 1, 100);
    const float epsilon = maxEpsilon > 0.0f ? std::min(maxEpsilon, 10.0f) : 0.0f;  // NaN counts as 0
    if (mode == kTermIterations) return {iterations, 0.0009f};
    if (mode == kTermEpsilon) return {30, epsilon};
    return {iterations, epsilon};
}

// The kept part [first, end) of a window, in window coordinates.
struct Span {
    int64_t first, end;
    int32_t size() const { return static_cast<int32_t>(end - first); }
    bool operator==(const Span&) const = default;
};

// Clips a window of `size` samples whose sample 0 lies at `origin` to a
// level of `extent` samples, within the span `within`.
Span keep(int64_t origin, int64_t extent, Span within) {
    return {std::max(within.first, -origin), std::min(within.end, extent - origin)};
}

// Centre offset handed to the sampler for a kept span of a window of
// `size` samples: (first + end - size - 1) / 2.
float centreOffset(const Span& s, int32_t size) {
    return 0.5f * static_cast<float>(s.first + s.end - size - 1);
}

// One pyramid level as the core sees it.
struct Level {
    const uint8_t* first;
    const uint8_t* second;
    uint32_t width, height, stride;
};

// The working planes.
struct Planes {
    float* i;       // first patch, kept width + 2 by kept height + 2
    float* j;       // second patch, at most W x H
    float* ix;      // derivatives of the first patch, kept width by kept height
    float* iy;
};

constexpr int kTracked = 1, kSingular = -2, kOutside = -4;

// Tracks one feature on one level: p in the first image, g (in/out) the
// guess in the second. Returns the status.
int trackFeature(const Kernels& k, const Level& lv, const Planes& pl, int32_t hw, int32_t hh, const Termination& t,
                 float px, float py, float& gx, float& gy) {
    const int32_t W = 2 * hw + 1, H = 2 * hh + 1;
    if (!usablePosition(px) || !usablePosition(py)) return kOutside;
    const int64_t ix = static_cast<int64_t>(std::floor(px)), iy = static_cast<int64_t>(std::floor(py));
    const Span cols = keep(ix - hw, lv.width, {0, W}), rows = keep(iy - hh, lv.height, {0, H});
    if (cols.end - cols.first < 1 || rows.end - rows.first < 1) return kOutside;
    const int32_t kw = cols.size(), kh = rows.size();
    if (k.sample(lv.first, lv.width, lv.height, lv.stride, pl.i, kw + 2, kh + 2, px + centreOffset(cols, W),
                 py + centreOffset(rows, H)) < 0)
        return kOutside;
    k.derivatives(pl.i, kw + 2, kw, kh, pl.ix, pl.iy, kw);

    Span gCols{0, 0}, gRows{0, 0};  // window of the cached gradient matrix
    GradientSums g{0.0f, 0.0f, 0.0f};
    float det = 0.0f, prevDx = 0.0f, prevDy = 0.0f;
    for (int32_t it = 0; it < t.iterations; ++it) {
        if (!usablePosition(gx) || !usablePosition(gy)) return kOutside;
        const int64_t jx = static_cast<int64_t>(std::floor(gx)), jy = static_cast<int64_t>(std::floor(gy));
        const Span c = keep(jx - hw, lv.width, cols), r = keep(jy - hh, lv.height, rows);
        if (c.end - c.first < 1 || r.end - r.first < 1) return kOutside;
        const int32_t cw = c.size(), ch = r.size();
        if (k.sample(lv.second, lv.width, lv.height, lv.stride, pl.j, cw, ch, gx + centreOffset(c, W),
                     gy + centreOffset(r, H)) < 0)
            return kOutside;
        // The kept window inside the first patch's planes.
        const ptrdiff_t ox = static_cast<ptrdiff_t>(c.first - cols.first);
        const ptrdiff_t oy = static_cast<ptrdiff_t>(r.first - rows.first);
        const float* dx = pl.ix + oy * kw + ox;
        const float* dy = pl.iy + oy * kw + ox;
        if (!(c == gCols && r == gRows)) {
            g = k.gradientSums(dx, dy, kw, cw, ch);
            det = g.xx * g.yy - g.xy * g.xy;
            gCols = c;
            gRows = r;
        }
        if (det < 1e-7f) return kSingular;
        const Mismatch b = k.mismatch(pl.i + (oy + 1) * (kw + 2) + ox + 1, kw + 2, pl.j, dx, dy, kw, cw, ch);
        const float stepX = (g.yy * b.x - g.xy * b.y) / det;
        const float stepY = (g.xx * b.y - g.xy * b.x) / det;
        gx += stepX;
        gy += stepY;
        if (stepX * stepX + stepY * stepY < t.threshold) break;
        if (it > 0 && std::fabs(stepX + prevDx) < 0.01f && std::fabs(stepY + prevDy) < 0.01f) {
            gx -= stepX * 0.5f;
            gy -= stepY * 0.5f;
            break;
        }
        prevDx = stepX;
        prevDy = stepY;
    }
    return kTracked;
}

void copyPositions(const float* from, float* to, int32_t nFeatures) {
    if (nFeatures > 0 && from != to) std::memmove(to, from, static_cast<size_t>(nFeatures) * 2 * sizeof(float));
}

}  // namespace

size_t workingBufferBytes(int32_t hw, int32_t hh, int32_t levels) {
    const uint64_t w = 2 * uint64_t(std::max(hw, 0)) + 1, h = 2 * uint64_t(std::max(hh, 0)) + 1;
    const uint64_t floats = (w + 2) * (h + 2) + 3 * w * h;  // w, h < 2^32: no overflow
    const uint64_t bytes = floats * 4 + uint64_t(std::max(levels, 0)) * (2 * sizeof(void*) + sizeof(float));
    if (floats > (uint64_t{1} << 61) || bytes > kMaxWorkingBytes || bytes > SIZE_MAX) return SIZE_MAX;
    return static_cast<size_t>(bytes);
}

void lkOpticalFlow_v3(const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel_v2* src1Pyr,
                      const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, float* featureXY_out,
                      int32_t* featureStatus, int32_t nFeatures, int32_t hw, int32_t hh, int32_t maxIterations,
                      int32_t nPyramidLevels, void* buffer, size_t bufferSize, int32_t terminationMode,
                      float maxEpsilon, const Kernels& kernels) {
    if (!buffer || !src1Pyr || !src2Pyr || !featureXY || !featureXY_out || !featureStatus || !src1 || !src2) return;
    if (nFeatures < 1 || hh < 2 || hw < 2 || nPyramidLevels < 0) return;
    if (bufferSize < workingBufferBytes(hw, hh, nPyramidLevels)) return;

    // Layout: level pointers of both images, scale factors, then the planes.
    const size_t levels = static_cast<size_t>(nPyramidLevels);
    auto** first = static_cast<const uint8_t**>(buffer);
    const uint8_t** second = first + levels;
    float* scale = reinterpret_cast<float*>(second + levels);
    const size_t W = 2 * size_t(hw) + 1, H = 2 * size_t(hh) + 1;
    Planes planes;
    planes.i = scale + levels;
    planes.j = planes.i + (W + 2) * (H + 2);
    planes.ix = planes.j + W * H;
    planes.iy = planes.ix + W * H;
    for (size_t l = 0; l < levels; ++l) {
        first[l] = l ? static_cast<const uint8_t*>(src1Pyr[l].ptr) : src1;
        second[l] = l ? static_cast<const uint8_t*>(src2Pyr[l].ptr) : src2;
        scale[l] = l ? scale[l - 1] * 0.5f : 1.0f;
    }
    for (int32_t f = 0; f < nFeatures; ++f) featureStatus[f] = kTracked;

    const Termination t = termination(terminationMode, maxIterations, maxEpsilon);
    for (int32_t l = nPyramidLevels - 1; l >= 0; --l) {
        const Level lv{first[l], second[l], src1Pyr[l].width, src1Pyr[l].height, src1Pyr[l].stride};
        const bool coarsest = l == nPyramidLevels - 1;
        for (int32_t f = 0; f < nFeatures; ++f) {
            if (featureStatus[f] != kTracked) continue;
            float* out = featureXY_out + 2 * size_t(f);
            float gx = coarsest ? out[0] * scale[l] : out[0] * 2.0f;
            float gy = coarsest ? out[1] * scale[l] : out[1] * 2.0f;
            const float px = featureXY[2 * size_t(f)] * scale[l], py = featureXY[2 * size_t(f) + 1] * scale[l];
            featureStatus[f] = trackFeature(kernels, lv, planes, hw, hh, t, px, py, gx, gy);
            out[0] = gx;
            out[1] = gy;
        }
    }
}

void trackLevels(const Kernels& k, const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel* src1Pyr,
                 const pxrPyramidLevel* src2Pyr, const float* featureXY, float* featureXY_out,
                 int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth, int32_t windowHeight,
                 int32_t maxIterations, int32_t nPyramidLevels) {
    const int32_t hw = windowWidth >> 1, hh = windowHeight >> 1;
    const size_t bytes = workingBufferBytes(hw, hh, nPyramidLevels);
    ScratchBuffer buffer(bytes, 16);
    if (!buffer) return;
    // Four-word copies of the level records, stride = width: on the stack
    // for any real pyramid, on the heap beyond 32 levels.
    constexpr int32_t kLocalLevels = 32;
    pxrPyramidLevel_v2 local[2 * kLocalLevels];
    std::unique_ptr<pxrPyramidLevel_v2[]> heap;
    pxrPyramidLevel_v2* copies = local;
    const int32_t levels = src1Pyr && src2Pyr ? std::max(nPyramidLevels, 0) : 0;
    if (levels > kLocalLevels) {
        heap.reset(new (std::nothrow) pxrPyramidLevel_v2[2 * size_t(levels)]);
        if (!heap) return;
        copies = heap.get();
    }
    for (int32_t l = 0; l < levels; ++l) {
        copies[l] = {src1Pyr[l].ptr, src1Pyr[l].width, src1Pyr[l].height, src1Pyr[l].width};
        copies[levels + l] = {src2Pyr[l].ptr, src2Pyr[l].width, src2Pyr[l].height, src2Pyr[l].width};
    }
    copyPositions(featureXY, featureXY_out, featureXY && featureXY_out ? nFeatures : 0);
    lkOpticalFlow_v3(src1, src2, src1Pyr ? copies : nullptr, src2Pyr ? copies + levels : nullptr, featureXY,
                     featureXY_out, featureStatus, nFeatures, hw, hh, maxIterations, nPyramidLevels, buffer.get(),
                     bytes, kTermIterations, 0.0f, k);
}

void trackV2(const Kernels& k, const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel_v2* src1Pyr,
             const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, float* featureXY_out, int32_t* featureStatus,
             int32_t nFeatures, int32_t windowWidth, int32_t windowHeight, int32_t maxIterations,
             int32_t nPyramidLevels) {
    const int32_t hw = windowWidth >> 1, hh = windowHeight >> 1;
    const size_t bytes = workingBufferBytes(hw, hh, nPyramidLevels);
    ScratchBuffer buffer(bytes, 16);
    if (!buffer) return;
    copyPositions(featureXY, featureXY_out, featureXY && featureXY_out ? nFeatures : 0);
    lkOpticalFlow_v3(src1, src2, src1Pyr, src2Pyr, featureXY, featureXY_out, featureStatus, nFeatures, hw, hh,
                     maxIterations, nPyramidLevels, buffer.get(), bytes, kTermIterations, 0.0f, k);
}

int trackV3(const Kernels& k, const uint8_t* src1, const uint8_t* src2, const pxrPyramidLevel_v2* src1Pyr,
            const pxrPyramidLevel_v2* src2Pyr, const float* featureXY, const float* featureXY_estimate,
            float* featureXY_out, int32_t* featureStatus, int32_t nFeatures, int32_t windowWidth,
            int32_t windowHeight, int32_t nPyramidLevels, int32_t terminationMode, int32_t maxIterations,
            float maxEpsilon, int32_t useInitialEstimate) {
    const float* start = useInitialEstimate ? featureXY_estimate : featureXY;
    if (!start) return PIXORA_STATUS_BAD_PARAM;
    const int32_t hw = windowWidth >> 1, hh = windowHeight >> 1;
    const size_t bytes = workingBufferBytes(hw, hh, nPyramidLevels);
    ScratchBuffer buffer(bytes, 16);
    if (!buffer) return PIXORA_STATUS_NO_SCRATCH;
    copyPositions(start, featureXY_out, featureXY_out ? nFeatures : 0);
    lkOpticalFlow_v3(src1, src2, src1Pyr, src2Pyr, featureXY, featureXY_out, featureStatus, nFeatures, hw, hh,
                     maxIterations, nPyramidLevels, buffer.get(), bytes, terminationMode, maxEpsilon, k);
    return PIXORA_STATUS_OK;
}

}  // namespace pxr::lk
