// Entry points of the conversions from packed RGB: the assertion text of
// each shape of member, nothing written on bad input, the constraint rule
// over every plane, the internal row's kind, and random arguments against
// every member on buffers sized exactly to what the arguments claim.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "color_from_rgb_members.h"
#include "pixora.h"
#include "support/differential.h"
#include "support/fuzz_planes.h"
#include "support/log_capture.h"

using pxr::test::ForceKind;
using pxr::test::FuzzPlane;
using pxr::test::randomStride;
using pxr::test::GuardedImage;
using pxr::test::LogCapture;
using pxr::test::from_rgb::Member;
using pxr::test::from_rgb::members;
using pxr::test::from_rgb::Planes;
using pxr::test::from_rgb::Shape;

namespace {

std::string conditionOf(const Member& m) {
    const std::string src = "(srcStride >= srcWidth * " + std::to_string(m.srcBpp) + ")";
    switch (m.shape) {
        case Shape::Planar:
            return "src && dstY && dstCb && dstCr && srcWidth && srcHeight && " + src +
                   " && (dstYStride >= srcWidth) && (dstCbStride >= chromaWidth) && (dstCrStride >= chromaWidth)";
        case Shape::PseudoPlanar:
            return "src && dstY && dstC && srcWidth && srcHeight && " + src +
                   " && (dstYStride >= srcWidth) && (dstCStride >= chromaWidth * 2)";
        case Shape::Packed:
            break;
    }
    return "src && dst && srcWidth && srcHeight && " + src + " && (dstStride >= srcWidth * " +
           std::to_string(m.dstBpp) + ")";
}

// A member's destination planes for a width x height image.
struct Destination {
    std::vector<GuardedImage> images;
    Planes planes{};
    Destination(const Member& m, uint32_t w, uint32_t h) {
        for (uint32_t i = 0; i < m.planes(); ++i) images.emplace_back(m.planeWidth(i, w), m.planeHeight(i, h), m.planeBpp(i));
        for (uint32_t i = 0; i < m.planes(); ++i) planes.data[i] = images[i].data(), planes.stride[i] = images[i].stride();
    }
    bool untouched() const {
        for (const auto& img : images)
            if (!img.untouched()) return false;
        return true;
    }
};

// Turns the trace on and sets the check flag while in scope.
class Trace {
public:
    explicit Trace(uint32_t checks) : log_(libLogPrint), checks_(HW_constraint_checks_enable) {
        libLogPrint = 1;
        HW_constraint_checks_enable = checks;
    }
    ~Trace() {
        libLogPrint = log_;
        HW_constraint_checks_enable = checks_;
    }

private:
    uint8_t log_;
    uint32_t checks_;
};

}  // namespace

TEST(ColorFromRgbBadInput, EveryMemberLogsItsConditionAndWritesNothing) {
    const uint32_t w = 9, h = 5;
    for (const auto& m : members()) {
        GuardedImage src(w, h, m.srcBpp);
        Destination dst(m, w, h);
        LogCapture log;
        auto call = [&](const uint8_t* s, uint32_t cw, uint32_t ch, uint32_t ss, Planes p) { m.call(s, cw, ch, ss, p); };
        call(nullptr, w, h, src.stride(), dst.planes);
        call(src.data(), 0, h, src.stride(), dst.planes);
        call(src.data(), w, 0, src.stride(), dst.planes);
        call(src.data(), w, h, w * m.srcBpp - 1, dst.planes);
        uint32_t expected = 4;
        for (uint32_t i = 0; i < m.planes(); ++i) {
            Planes nullPlane = dst.planes, narrow = dst.planes;
            nullPlane.data[i] = nullptr;
            narrow.stride[i] = m.planeWidth(i, w) * m.planeBpp(i) - 1;
            call(src.data(), w, h, src.stride(), nullPlane);
            call(src.data(), w, h, src.stride(), narrow);
            expected += 2;
        }
        EXPECT_TRUE(dst.untouched()) << m.name;
        const std::string text = "Assertion failed @" + m.name + ": " + conditionOf(m) + "\n";
        ASSERT_EQ(log.lines().size(), expected) << m.name;
        for (const auto& l : log.lines()) {
            EXPECT_EQ(l.text, text);
            EXPECT_EQ(l.tag, "pixora_lib_log");
            EXPECT_EQ(l.priority, 6);
        }
    }
}

TEST(ColorFromRgbBadInput, Rotate180LogsItsConditionAndWritesNothing) {
    GuardedImage src(7, 3, 3), dst(7, 3, 2);
    LogCapture log;
    auto* out = reinterpret_cast<uint16_t*>(dst.data());
    pxrColorRGB888ToRGB565Rotate180u8(nullptr, 7, 3, 0, out, 0);
    pxrColorRGB888ToRGB565Rotate180u8(src.data(), 7, 3, 0, nullptr, 0);
    pxrColorRGB888ToRGB565Rotate180u8(src.data(), 7, 3, 20, out, 0);
    pxrColorRGB888ToRGB565Rotate180u8(src.data(), 7, 3, 0, out, 13);
    pxrColorRGB888ToRGB565Rotate180u8(src.data(), 0, 3, 0, out, 0);
    EXPECT_TRUE(dst.untouched());
    EXPECT_EQ(log.texts(), std::vector<std::string>(5, "Assertion failed @pxrColorRGB888ToRGB565Rotate180u8: src && dst && "
                                                       "srcWidth && srcHeight && (srcStride >= srcWidth * 3) && "
                                                       "(dstStride >= srcWidth * 2)\n"));
}

TEST(ColorFromRgbRules, DspKindNeedsAlignedChromaPlanesAndMoreThanQcif) {
    const Member& m = pxr::test::from_rgb::member("pxrColorRGB888ToYCbCr420Planaru8");
    // 176 columns: every row size and chroma row size is a multiple of 4.
    auto traceOf = [&](uint32_t h, uint32_t chromaMisalign) {
        Trace trace(1);
        ForceKind force(m.row, PIXORA_KIND_CDSP);
        LogCapture log;
        const uint32_t ch = (h + 1) / 2;
        GuardedImage src(176, h, 3), y(176, h), cb(88, ch, 1, 0, chromaMisalign), cr(88, ch);
        const Planes p{{y.data(), cb.data(), cr.data()}, {y.stride(), cb.stride(), cr.stride()}};
        m.call(src.data(), 176, h, src.stride(), p);
        return log.lines().empty() ? std::string() : log.lines()[0].text;
    };
    EXPECT_EQ(traceOf(144, 0), m.name + "_SIMDX");  // 25344 pixels stay on the CPU
    EXPECT_EQ(traceOf(146, 0), m.name + "_CDSP");
    EXPECT_EQ(traceOf(146, 1), m.name + "_SIMDX");  // a chroma plane off its 4-byte alignment
}

TEST(ColorFromRgbRules, Rotate180ReadsTheInternalKind) {
    Trace trace(1);
    const uint32_t saved = pxrInternalImplTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8];
    std::vector<uint8_t> src(8 * 4 * 3, 1);
    std::vector<uint16_t> dst(8 * 4);
    LogCapture log;
    for (uint32_t kind : {0u, 1u, 3u}) {
        pxrInternalImplTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8] = kind;
        pxrColorRGB888ToRGB565Rotate180u8(src.data(), 8, 4, 0, dst.data(), 0);
    }
    pxrInternalImplTable[PXR_IROW_ColorRGB888ToRGB565Rotate180u8] = saved;
    // The GPU kind keeps an even image.
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"pxrColorRGB888ToRGB565Rotate180u8_CPU",
                                                     "pxrColorRGB888ToRGB565Rotate180u8_SIMDX",
                                                     "pxrColorRGB888ToRGB565Rotate180u8_GPU"}));
}

// ---- Random arguments ----------------------------------------------------------------

namespace {

uint32_t pick(std::mt19937& gen, uint32_t n) { return static_cast<uint32_t>(gen() % n); }

}  // namespace

TEST(ColorFromRgbFuzz, EveryMemberOnExactBuffers) {
    LogCapture quiet;
    const uint32_t savedChecks = HW_constraint_checks_enable;
    for (const auto& m : members()) {
        std::mt19937 gen(20261122u ^ m.row);
        for (int round = 0; round < 400; ++round) {
            const uint32_t w = pick(gen, 4) == 0 ? pick(gen, 3) : pick(gen, 40);
            const uint32_t h = pick(gen, 4) == 0 ? pick(gen, 3) : pick(gen, 24);
            const uint32_t ss = randomStride(gen, w * m.srcBpp);
            FuzzPlane src(gen, w * m.srcBpp, h, ss ? ss : w * m.srcBpp);
            std::vector<FuzzPlane> dst;
            Planes p{};
            for (uint32_t i = 0; i < m.planes(); ++i) {
                const uint32_t rowBytes = m.planeWidth(i, w) * m.planeBpp(i);
                p.stride[i] = randomStride(gen, rowBytes);
                dst.emplace_back(gen, rowBytes, m.planeHeight(i, h), p.stride[i] ? p.stride[i] : rowBytes);
            }
            for (uint32_t i = 0; i < m.planes(); ++i) p.data[i] = dst[i].data();
            HW_constraint_checks_enable = gen() % 2;
            ForceKind force(m.row, pick(gen, PIXORA_NUM_KINDS));
            m.call(src.data(), w, h, ss, p);
        }
    }
    HW_constraint_checks_enable = savedChecks;
}

