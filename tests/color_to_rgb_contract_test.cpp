// The entry-point contract of every member of the YCbCr group: stride 0
// means packed, bad arguments log their condition and write nothing, and
// random arguments on exact-size buffers never read or write out of bounds.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "frame/state.h"
#include "pixora.h"
#include "support/color_to_rgb_cases.h"
#include "support/log_capture.h"

using namespace pxr::test;
using pxr::test::ycbcr::Member;
using pxr::test::ycbcr::members;
using pxr::test::ycbcr::Planes;

namespace {

// Guarded planes of one member for a width x height image, with `slack`
// bytes after every row.
struct Images {
    std::vector<GuardedImage> in, out;
    Images(const Member& m, uint32_t w, uint32_t h, uint32_t slack = 0, uint32_t seed = 1) {
        for (const auto& p : m.inputs(w, h)) in.emplace_back(p.width, p.height, p.bytesPerPixel, slack, 0);
        for (const auto& p : m.outputs(w, h)) out.emplace_back(p.width, p.height, p.bytesPerPixel, slack, 1);
        uint32_t s = seed;
        for (auto& i : in) i.fillRandom(s++);
        for (auto& o : out) o.fillRandom(s++);
    }
    Planes planes(uint32_t w, uint32_t h, bool zeroStrides = false) {
        Planes p{w, h, {}, {}, {}, {}};
        for (auto& i : in) {
            p.in.push_back(i.data());
            p.inStride.push_back(zeroStrides ? 0 : i.stride());
        }
        for (auto& o : out) {
            p.out.push_back(o.data());
            p.outStride.push_back(zeroStrides ? 0 : o.stride());
        }
        return p;
    }
    bool outputsUntouched() const {
        for (const auto& o : out)
            if (!o.untouched()) return false;
        return true;
    }
};

}  // namespace

TEST(ColorToRgbContract, StrideZeroMeansPackedForEveryPlane) {
    for (const Member& m : members()) {
        if (m.packed) continue;
        Images zero(m, 17, 5), explicitPacked(m, 17, 5);
        m.call(zero.planes(17, 5, true));
        m.call(explicitPacked.planes(17, 5));
        for (size_t i = 0; i < zero.out.size(); ++i)
            EXPECT_EQ(zero.out[i].guarded(), explicitPacked.out[i].guarded()) << m.name;
        EXPECT_FALSE(zero.outputsUntouched()) << m.name;
    }
}

TEST(ColorToRgbBadInput, EveryArgumentIsCheckedAndNothingIsWritten) {
    const uint32_t w = 8, h = 6;
    for (const Member& m : members()) {
        SCOPED_TRACE(m.name);
        Images img(m, w, h);
        const Planes good = img.planes(w, h);
        std::vector<Planes> bad;
        for (size_t i = 0; i < good.in.size(); ++i) {
            bad.push_back(good);
            bad.back().in[i] = nullptr;
        }
        for (size_t i = 0; i < good.out.size(); ++i) {
            bad.push_back(good);
            bad.back().out[i] = nullptr;
        }
        bad.push_back(good);
        bad.back().width = 0;
        bad.push_back(good);
        bad.back().height = 0;
        if (!m.packed) {
            const auto inSpecs = m.inputs(w, h), outSpecs = m.outputs(w, h);
            for (size_t i = 0; i < good.in.size(); ++i) {
                bad.push_back(good);
                bad.back().inStride[i] = ycbcr::packedStride(inSpecs[i]) - 1;
            }
            for (size_t i = 0; i < good.out.size(); ++i) {
                bad.push_back(good);
                bad.back().outStride[i] = ycbcr::packedStride(outSpecs[i]) - 1;
            }
        }
        LogCapture log;
        for (const Planes& p : bad) m.call(p);
        EXPECT_TRUE(img.outputsUntouched());
        const auto lines = log.lines();
        ASSERT_EQ(lines.size(), bad.size());
        const std::string prefix = "Assertion failed @" + m.name + ": ";
        for (const auto& l : lines) {
            EXPECT_EQ(l.text, lines[0].text);  // one condition per entry point
            EXPECT_EQ(l.text.rfind(prefix, 0), 0u) << l.text;
            EXPECT_EQ(l.tag, "pixora_lib_log");
            EXPECT_EQ(l.priority, 6);
        }
        log.clear();
        m.call(good);  // and the good call is silent
        EXPECT_TRUE(log.lines().empty());
    }
}

// The condition texts as the log shows them, one per shape of arguments.
TEST(ColorToRgbBadInput, ConditionTextsNameEveryPlane) {
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"pxrColorYCbCr420PlanarToRGB888u8",
         "srcY && srcCb && srcCr && srcWidth && srcHeight && (srcYStride >= srcWidth) && (srcCbStride >= "
         "srcChromaWidth) && (srcCrStride >= srcChromaWidth) && dst && (dstStride >= dstRowBytes)"},
        {"pxrColorYCrCbH2V2toRGB888u8",
         "srcY && srcC && srcWidth && srcHeight && (srcYStride >= srcWidth) && (srcCStride >= srcChromaBytes) && "
         "dst && (dstStride >= dstRowBytes)"},
        {"pxrColorYCbCr444PlanarToYCbCr420Planaru8",
         "srcY && srcCb && srcCr && srcWidth && srcHeight && (srcYStride >= srcWidth) && (srcCbStride >= "
         "srcChromaWidth) && (srcCrStride >= srcChromaWidth) && dstY && dstCb && dstCr && (dstYStride >= srcWidth) "
         "&& (dstCbStride >= dstChromaWidth) && (dstCrStride >= dstChromaWidth)"},
        {"pxrColorYCbCr420PseudoPlanarToYCbCr422PseudoPlanaru8",
         "srcY && srcC && srcWidth && srcHeight && (srcYStride >= srcWidth) && (srcCStride >= srcChromaBytes) && "
         "dstY && dstC && (dstYStride >= srcWidth) && (dstCStride >= dstChromaBytes)"},
        {"pxrColorCbCrSwapu8",
         "src && dst && srcWidth && srcHeight && (srcStride >= rowBytes) && (dstStride >= rowBytes)"},
        {"pxrColorYUV420toRGB565u8", "src && dst && srcWidth && srcHeight"},
        {"pxrColorYUV420toRGB565u8Rotate180", "src && dst && srcWidth && srcHeight"},
    };
    for (const auto& [name, condition] : expected) {
        const Member& m = ycbcr::member(name);
        Images img(m, 4, 4);
        Planes p = img.planes(4, 4);
        p.out[0] = nullptr;
        LogCapture log;
        m.call(p);
        EXPECT_EQ(log.texts(), std::vector<std::string>{"Assertion failed @" + name + ": " + condition + "\n"});
    }
}

// Random sizes, strides (0, one byte short, or with slack), null planes,
// kinds and constraint flags, on buffers exactly as large as the arguments
// claim: under the address sanitizer any read or write past them fails.
TEST(ColorToRgbFuzz, RandomArgumentsOnExactBuffers) {
    LogCapture quiet;
    const uint32_t savedChecks = HW_constraint_checks_enable;
    for (const Member& m : members()) {
        std::mt19937 gen(20261122u ^ m.row ^ (m.internal ? 0x8000u : 0u));
        uint32_t* chosen = m.internal ? &pxrInternalImplTable[m.row] : &pxrImplTable[m.row];
        const uint32_t savedKind = *chosen;
        auto pick = [&](uint32_t n) { return static_cast<uint32_t>(gen() % n); };
        for (int round = 0; round < 400; ++round) {
            const uint32_t w = pick(4) == 0 ? pick(3) : pick(70), h = pick(4) == 0 ? pick(3) : pick(12);
            std::vector<std::vector<uint8_t>> buffers;
            Planes p{w, h, {}, {}, {}, {}};
            auto plane = [&](const PlaneSpec& s, std::vector<uint32_t>& strides) -> uint8_t* {
                const uint32_t row = s.width * s.bytesPerPixel;
                uint32_t stride = 0;
                if (!m.packed) {
                    switch (pick(4)) {
                        case 0: stride = 0; break;
                        case 1: stride = row > 0 ? row - 1 : 0; break;
                        default: stride = row + pick(9);
                    }
                }
                strides.push_back(stride);
                if (pick(20) == 0) return nullptr;
                const uint32_t step = std::max(stride ? stride : row, row);
                buffers.emplace_back(size_t{step} * (s.height ? s.height - 1 : 0) + std::max(row, 1u));
                for (auto& b : buffers.back()) b = static_cast<uint8_t>(gen());
                return buffers.back().data();
            };
            buffers.reserve(8);
            for (const auto& s : m.inputs(w, h)) p.in.push_back(plane(s, p.inStride));
            for (const auto& s : m.outputs(w, h)) p.out.push_back(plane(s, p.outStride));
            HW_constraint_checks_enable = gen() % 2;
            *chosen = pick(PIXORA_NUM_KINDS);
            m.call(p);
        }
        *chosen = savedKind;
    }
    HW_constraint_checks_enable = savedChecks;
}
