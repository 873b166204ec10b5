// Conversions from packed RGB: values worked out by hand from the definitions.
#include <gtest/gtest.h>

#include <vector>

#include "color_from_rgb_members.h"
#include "pixora.h"
#include "support/guarded_image.h"

using pxr::test::from_rgb::Member;
using pxr::test::from_rgb::member;
using pxr::test::from_rgb::members;
using pxr::test::from_rgb::Planes;
using pxr::test::from_rgb::Shape;
using Bytes = std::vector<uint8_t>;

namespace {

std::vector<Bytes> run(const Member& m, const Bytes& src, uint32_t w, uint32_t h) {
    return pxr::test::from_rgb::runPacked(m, src, w, h);
}

// One pixel repeated, as the source bytes of a member (565 sources take the
// narrowed word of the three components).
Bytes solid(const Member& m, uint8_t b0, uint8_t b1, uint8_t b2, uint32_t count) {
    Bytes px;
    if (m.srcBpp == 2) {
        const uint16_t w = pxr::color::pack565(b0, b1, b2);
        px = {static_cast<uint8_t>(w), static_cast<uint8_t>(w >> 8)};
    } else {
        px = {b0, b1, b2};
        if (m.srcBpp == 4) px.push_back(0x5A);
    }
    Bytes out;
    for (uint32_t i = 0; i < count; ++i) out.insert(out.end(), px.begin(), px.end());
    return out;
}

bool allEqual(const Bytes& v, uint8_t value) {
    for (uint8_t b : v)
        if (b != value) return false;
    return true;
}

// Y, Cb, Cr planes of a YCbCr member (pseudo-planar chroma split).
struct Ycc {
    Bytes y, cb, cr;
};
Ycc ycc(const Member& m, const Bytes& src, uint32_t w, uint32_t h) {
    auto p = run(m, src, w, h);
    if (m.shape == Shape::Planar) return {p[0], p[1], p[2]};
    Ycc r{p[0], {}, {}};
    for (size_t i = 0; i < p[1].size(); i += 2) r.cb.push_back(p[1][i]), r.cr.push_back(p[1][i + 1]);
    return r;
}

bool isYcbcr(const Member& m) { return m.shape != Shape::Packed; }

}  // namespace

// ---- RGB to YCbCr -------------------------------------------------------------

TEST(ColorFromRgbToYCbCr, WhiteAndGreysHaveNeutralChroma) {
    for (const auto& m : members()) {
        if (!isYcbcr(m)) continue;
        for (uint8_t v : {uint8_t{255}, uint8_t{0}, uint8_t{8}, uint8_t{132}}) {
            if (m.srcBpp == 2 && (v & 7)) continue;  // 565 keeps multiples of 8 that widen to themselves
            const uint8_t g = m.srcBpp == 2 ? pxr::color::widen5(v >> 3) : v;
            auto r = ycc(m, solid(m, v, v, v, 15), 5, 3);
            EXPECT_TRUE(allEqual(r.y, g)) << m.name << " " << int(v);
            EXPECT_TRUE(allEqual(r.cb, 128) && allEqual(r.cr, 128)) << m.name << " " << int(v);
        }
    }
}

TEST(ColorFromRgbToYCbCr, PrimariesReadTheFirstByteAsBlue) {
    // (b0, b1, b2) -> Y, Cb, Cr, worked out from the 8-bit weights.
    struct Case {
        uint8_t b0, b1, b2, y, cb, cr;
    };
    const Case cases[] = {
        {255, 0, 0, 29, 255, 107},   // Cb 128 + 128 clamps to 255, never wraps to 0
        {0, 255, 0, 149, 43, 21},
        {0, 0, 255, 77, 85, 255},    // Cr clamps
        {128, 0, 0, 15, 192, 118},
        {10, 200, 30, 127, 62, 59},
    };
    for (const char* name : {"pxrColorRGB888ToYCbCr444Planaru8", "pxrColorRGBA8888ToYCbCr422PseudoPlanaru8",
                             "pxrColorRGB888ToYCbCr420Planaru8"}) {
        const Member& m = member(name);
        for (const auto& c : cases) {
            auto r = ycc(m, solid(m, c.b0, c.b1, c.b2, 12), 4, 3);
            EXPECT_TRUE(allEqual(r.y, c.y)) << name << " " << int(c.b0) << "," << int(c.b1) << "," << int(c.b2);
            EXPECT_TRUE(allEqual(r.cb, c.cb) && allEqual(r.cr, c.cr)) << name;
        }
    }
}

TEST(ColorFromRgbToYCbCr, SubsampledChromaIsTheRoundedMeanOfItsPixels) {
    // 4:2:2: (255, 0, 0) beside black: mean (128, 0, 0) (rounded up from 127.5).
    const Bytes pair = {255, 0, 0, 0, 0, 0};
    auto r = ycc(member("pxrColorRGB888ToYCbCr422Planaru8"), pair, 2, 1);
    EXPECT_EQ(r.y, (Bytes{29, 0}));
    EXPECT_EQ(r.cb, Bytes{192});
    EXPECT_EQ(r.cr, Bytes{118});
    // 4:2:0: b0 of 2, 0, 0, 0 averages to (2 + 2) >> 2 = 1 and 1, 0, 0, 0 to 0;
    // 132 in one pixel averages to 33: Cb 128 + ((128 x 33 + 128) >> 8) = 145.
    const Member& m420 = member("pxrColorRGB888ToYCbCr420Planaru8");
    auto block = [&](uint8_t b0) {
        Bytes s(12, 0);
        s[0] = b0;
        return ycc(m420, s, 2, 2);
    };
    EXPECT_EQ(block(132).cb, Bytes{145});
    EXPECT_EQ(block(2).cb, Bytes{129});  // mean 1: 128 + ((128 + 128) >> 8)
    EXPECT_EQ(block(1).cb, Bytes{128});  // mean 0
}

TEST(ColorFromRgbToYCbCr, OddEdgesTakeTheMeanOfThePixelsLeft) {
    // 3 x 3 image: the last chroma column covers column 2 alone, the last row
    // row 2 alone; the corner sample is pixel (2, 2) by itself.
    Bytes src(27, 0);
    auto px = [&](uint32_t x, uint32_t y) { return &src[3 * (y * 3 + x)]; };
    px(2, 0)[0] = 100, px(2, 1)[0] = 50;  // right column, two rows: mean 75
    px(0, 2)[0] = 40, px(1, 2)[0] = 21;   // bottom row, two columns: mean (61 + 1) >> 1 = 31
    px(2, 2)[0] = 255;
    const Member& m = member("pxrColorRGB888ToYCbCr420PseudoPlanaru8");
    auto r = ycc(m, src, 3, 3);
    ASSERT_EQ(r.cb.size(), 4u);
    auto cbOf = [](int b0) { return static_cast<uint8_t>(128 + ((128 * b0 + 128) >> 8)); };
    EXPECT_EQ(r.cb[0], 128);
    EXPECT_EQ(r.cb[1], cbOf(75));
    EXPECT_EQ(r.cb[2], cbOf(31));
    EXPECT_EQ(r.cb[3], 255);  // 255 alone: the clamp
    // 4:2:2 on width 3: the last sample is column 2 alone.
    auto r422 = ycc(member("pxrColorRGB888ToYCbCr422Planaru8"), Bytes{0, 0, 0, 0, 0, 0, 100, 0, 0}, 3, 1);
    EXPECT_EQ(r422.cb, (Bytes{128, cbOf(100)}));
}

// ---- JPEG-style YCrCb -----------------------------------------------------------

TEST(ColorFromRgbJpegYCrCb, PrimariesAndNeutrals) {
    const Member& m = member("pxrColorRGB888toYCrCbu8");
    const Bytes src = {255, 255, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 77, 77, 77};
    // Y Cr Cb; red's Cr is 256 before the clamp, blue's Cb likewise.
    const Bytes want = {255, 128, 128, 0, 128, 128, 76, 255, 85, 150, 21, 44, 29, 107, 255, 77, 128, 128};
    EXPECT_EQ(run(m, src, 6, 1)[0], want);
}

// ---- Between packed formats ------------------------------------------------------

TEST(ColorFromRgbPacked, Rgb565BitPositions) {
    auto words = [](std::initializer_list<uint16_t> ws) {
        Bytes b;
        for (uint16_t w : ws) b.push_back(static_cast<uint8_t>(w)), b.push_back(static_cast<uint8_t>(w >> 8));
        return b;
    };
    // Red in bits 11..15, green 5..10, blue 0..4; widening replicates the top bits.
    EXPECT_EQ(run(member("pxrColorRGB565ToRGB888u8"), words({0xF800, 0x07E0, 0x001F, 0x8410}), 4, 1)[0],
              (Bytes{255, 0, 0, 0, 255, 0, 0, 0, 255, 132, 130, 132}));
    EXPECT_EQ(run(member("pxrColorRGB565ToBGRA8888u8"), words({0xF800}), 1, 1)[0], (Bytes{0, 0, 255, 255}));
    EXPECT_EQ(run(member("pxrColorRGB565ToBGR565u8"), words({0xF800, 0x07E0, 0x8001}), 3, 1)[0],
              words({0x001F, 0x07E0, 0x0810}));
    // Narrowing drops the low bits.
    const Bytes rgb = {255, 0, 0, 0, 255, 0, 0, 0, 255, 7, 3, 7, 8, 4, 8};
    EXPECT_EQ(run(member("pxrColorRGB888ToRGB565u8"), rgb, 5, 1)[0], words({0xF800, 0x07E0, 0x001F, 0, 0x0821}));
    EXPECT_EQ(run(member("pxrColorRGB888ToBGR565u8"), rgb, 5, 1)[0], words({0x001F, 0x07E0, 0xF800, 0, 0x0821}));
    EXPECT_EQ(run(member("pxrColorRGBA8888ToRGB565u8"), Bytes{255, 0, 0, 9}, 1, 1)[0], words({0xF800}));
}

TEST(ColorFromRgbPacked, ByteOrderAndAlpha) {
    const Bytes rgb = {1, 2, 3, 4, 5, 6}, rgba = {1, 2, 3, 40, 4, 5, 6, 60};
    EXPECT_EQ(run(member("pxrColorRGB888ToBGR888u8"), rgb, 2, 1)[0], (Bytes{3, 2, 1, 6, 5, 4}));
    EXPECT_EQ(run(member("pxrColorRGB888ToRGBA8888u8"), rgb, 2, 1)[0], (Bytes{1, 2, 3, 255, 4, 5, 6, 255}));
    EXPECT_EQ(run(member("pxrColorRGB888ToBGRA8888u8"), rgb, 2, 1)[0], (Bytes{3, 2, 1, 255, 6, 5, 4, 255}));
    EXPECT_EQ(run(member("pxrColorRGBA8888ToBGRA8888u8"), rgba, 2, 1)[0], (Bytes{3, 2, 1, 40, 6, 5, 4, 60}));
    EXPECT_EQ(run(member("pxrColorRGBA8888ToRGB888u8"), rgba, 2, 1)[0], (Bytes{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(run(member("pxrColorRGBA8888ToBGR888u8"), rgba, 2, 1)[0], (Bytes{3, 2, 1, 6, 5, 4}));
}

TEST(ColorFromRgbPacked, Rotate180TurnsTheImage) {
    // 3 x 2 image; dst (x, y) = src (2 - x, 1 - y), narrowed to 565.
    Bytes src(18, 0);
    for (uint32_t i = 0; i < 6; ++i) src[3 * i] = static_cast<uint8_t>(8 * i), src[3 * i + 2] = static_cast<uint8_t>(8 * (5 - i));
    std::vector<uint16_t> dst(6, 0xEEEE);
    pxrColorRGB888ToRGB565Rotate180u8(src.data(), 3, 2, 0, dst.data(), 0);
    for (uint32_t i = 0; i < 6; ++i) EXPECT_EQ(dst[i], pxr::color::pack565(8 * (5 - i), 0, 8 * i)) << i;
}

// ---- Grey, HSV, LAB ------------------------------------------------------------------

TEST(ColorFromRgbOther, GreyWeightsReadTheFirstByteAsRed) {
    const Bytes src = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255, 0, 0, 0, 100, 100, 100};
    EXPECT_EQ(run(member("pxrColorRGB888ToGrayu8"), src, 6, 1)[0], (Bytes{76, 150, 29, 255, 0, 100}));
}

TEST(ColorFromRgbOther, HsvSextantsAndFolding) {
    const Bytes src = {255, 0, 0,   0, 255, 0,   0, 0, 255,     255, 255, 0,   255, 0, 255,
                       128, 128, 128, 0, 0, 0,   255, 128, 128, 255, 0, 1};
    // H in degrees / 2; (255, 0, 1) is just short of a full turn: 180 folds to 0.
    const Bytes want = {0, 255, 255,  60, 255, 255, 120, 255, 255, 30, 255, 255, 150, 255, 255,
                        0, 0, 128,    0, 0, 0,      0, 127, 255,   0, 255, 255};
    EXPECT_EQ(run(member("pxrColorRGB888ToHSV888u8"), src, 9, 1)[0], want);
}

TEST(ColorFromRgbOther, LabNeutralsAreExact) {
    const Member& m = member("pxrColorRGBA8888ToLABu8");
    // White, black and greys: L scaled to 0..255, a = b = 128 exactly.
    const Bytes neutral = run(m, Bytes{255, 255, 255, 0, 0, 0, 0, 9, 119, 119, 119, 1}, 3, 1)[0];
    EXPECT_EQ(Bytes(neutral.begin(), neutral.begin() + 6), (Bytes{255, 128, 128, 0, 128, 128}));
    EXPECT_EQ(neutral[7], 128);
    EXPECT_EQ(neutral[8], 128);
}

// ---- Every member ---------------------------------------------------------------------

TEST(ColorFromRgbContract, StrideZeroEverywhereMeansPacked) {
    const uint32_t w = 13, h = 5;
    for (const auto& m : members()) {
        const Bytes src = pxr::test::randomBytes(size_t{w} * h * m.srcBpp, 21);
        const auto packed = run(m, src, w, h);
        std::vector<Bytes> explicitStrides(m.planes());
        Planes p{};
        for (uint32_t i = 0; i < m.planes(); ++i) {
            explicitStrides[i].assign(packed[i].size(), 0xEE);
            p.data[i] = explicitStrides[i].data();
            p.stride[i] = m.planeWidth(i, w) * m.planeBpp(i);
        }
        m.call(src.data(), w, h, w * m.srcBpp, p);
        EXPECT_EQ(packed, explicitStrides) << m.name;
        for (const auto& plane : packed) EXPECT_FALSE(allEqual(plane, 0xEE)) << m.name;
    }
}
