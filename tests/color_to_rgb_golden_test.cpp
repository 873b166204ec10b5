// YCbCr to packed RGB: hand-computed goldens (white, grey, primaries,
// clamped chroma, 565 fields, alpha), chroma spreading at odd sizes, the
// JPEG-style and video-range decoders.
#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "pixora.h"
#include "support/guarded_image.h"

namespace {

using Px = std::array<uint8_t, 3>;

// One pixel through a 444 planar member.
Px planar444(uint8_t y, uint8_t cb, uint8_t cr) {
    uint8_t out[3] = {1, 2, 3};
    pxrColorYCbCr444PlanarToRGB888u8(&y, &cb, &cr, 1, 1, 0, 0, 0, out, 0);
    return {out[0], out[1], out[2]};
}

// Runs a 444 planar member of the 8-bit weights over one pixel per
// destination format and checks all agree with the RGB888 result.
void expectAllFormats(uint8_t y, uint8_t cb, uint8_t cr, Px rgb) {
    EXPECT_EQ(planar444(y, cb, cr), rgb) << int(y) << "," << int(cb) << "," << int(cr);
    uint8_t rgba[4] = {};
    pxrColorYCbCr444PlanarToRGBA8888u8(&y, &cb, &cr, 1, 1, 0, 0, 0, rgba, 0);
    EXPECT_EQ((std::array<uint8_t, 4>{rgba[0], rgba[1], rgba[2], rgba[3]}),
              (std::array<uint8_t, 4>{rgb[0], rgb[1], rgb[2], 255}));
    const uint8_t pair[2] = {cb, cr};
    uint8_t viaPseudo[3] = {};
    pxrColorYCbCr444PseudoPlanarToRGB888u8(&y, pair, 1, 1, 0, 0, viaPseudo, 0);
    EXPECT_EQ((Px{viaPseudo[0], viaPseudo[1], viaPseudo[2]}), rgb);
}

uint16_t planar444To565(uint8_t y, uint8_t cb, uint8_t cr) {
    uint16_t out = 0x1234;
    pxrColorYCbCr444PlanarToRGB565u8(&y, &cb, &cr, 1, 1, 0, 0, 0, &out, 0);
    return out;
}

}  // namespace

// ---- YCbCr to RGB, 8-bit weights ---------------------------------------------

TEST(ColorToRgbGolden, GreysPrimariesAndClampedChroma) {
    struct Case {
        uint8_t y, cb, cr;
        Px rgb;
    };
    const Case cases[] = {
        {255, 128, 128, {255, 255, 255}}, {0, 128, 128, {0, 0, 0}}, {1, 128, 128, {1, 1, 1}},
        {128, 128, 128, {128, 128, 128}}, {254, 128, 128, {254, 254, 254}},
        {76, 85, 255, {254, 0, 0}},   // red (19584 + 359 x 127) >> 8 = 254, base = 256 Y + 128
        {150, 43, 21, {0, 255, 0}},   // green (38528 + 88 x 85 + 183 x 107) >> 8 = 256, clamped
        {29, 255, 107, {0, 0, 254}},  // blue (7552 + 454 x 127) >> 8 = 254
        {255, 255, 255, {255, 121, 255}},  // red 433 and blue 480 clamp (177 and 224 if they wrapped)
        {0, 0, 0, {0, 136, 0}},            // red and blue negative (-179, -227): 0, not 77 or 29
        {0, 255, 0, {0, 48, 225}},         {255, 0, 255, {255, 208, 28}},
    };
    for (const Case& c : cases) expectAllFormats(c.y, c.cb, c.cr, c.rgb);
}

TEST(ColorToRgbGolden, Rgb565KeepsTheTopBitsInTheirFields) {
    EXPECT_EQ(planar444To565(255, 128, 128), 0xFFFF);
    EXPECT_EQ(planar444To565(0, 128, 128), 0x0000);
    EXPECT_EQ(planar444To565(76, 85, 255), 0xF800);   // 254, 0, 0
    EXPECT_EQ(planar444To565(150, 43, 21), 0x07E0);   // 0, 255, 0
    EXPECT_EQ(planar444To565(29, 255, 107), 0x001F);  // 0, 0, 254
    // Grey 0x84 = 1000 0100: red 10000, green 100001, blue 10000.
    EXPECT_EQ(planar444To565(0x84, 128, 128), (0x10 << 11) | (0x21 << 5) | 0x10);
    // Grey 7: the low bits are dropped, not rounded.
    EXPECT_EQ(planar444To565(7, 128, 128), (0 << 11) | (1 << 5) | 0);
}

// Each chroma sample of a 420 image covers a 2 x 2 block; with an odd size
// the last column and row of samples cover one pixel. Every pixel must equal
// the 444 conversion of its Y with the chroma of the sample covering it.
TEST(ColorToRgbGolden, SubsampledChromaCoversItsBlockAndOddEdges) {
    const uint32_t w = 5, h = 3, cw = 3, ch = 2;
    auto y = pxr::test::randomBytes(w * h, 11), cb = pxr::test::randomBytes(cw * ch, 12),
         cr = pxr::test::randomBytes(cw * ch, 13);
    std::vector<uint8_t> c(2 * cw * ch);
    for (uint32_t i = 0; i < cw * ch; ++i) {
        c[2 * i] = cb[i];
        c[2 * i + 1] = cr[i];
    }
    for (uint32_t sy : {1u, 2u}) {
        std::vector<uint8_t> planar(w * h * 3), pseudo(w * h * 3);
        if (sy == 2) {
            pxrColorYCbCr420PlanarToRGB888u8(y.data(), cb.data(), cr.data(), w, h, 0, 0, 0, planar.data(), 0);
            pxrColorYCbCr420PseudoPlanarToRGB888u8(y.data(), c.data(), w, h, 0, 0, pseudo.data(), 0);
        } else {  // 422: one chroma row per image row
            std::vector<uint8_t> cb3(cw * h), cr3(cw * h), c3(2 * cw * h);
            for (uint32_t r = 0; r < h; ++r)
                for (uint32_t i = 0; i < cw; ++i) {
                    cb3[r * cw + i] = c3[2 * (r * cw + i)] = cb[(r % ch) * cw + i];
                    cr3[r * cw + i] = c3[2 * (r * cw + i) + 1] = cr[(r % ch) * cw + i];
                }
            pxrColorYCbCr422PlanarToRGB888u8(y.data(), cb3.data(), cr3.data(), w, h, 0, 0, 0, planar.data(), 0);
            pxrColorYCbCr422PseudoPlanarToRGB888u8(y.data(), c3.data(), w, h, 0, 0, pseudo.data(), 0);
        }
        for (uint32_t py = 0; py < h; ++py)
            for (uint32_t px = 0; px < w; ++px) {
                const uint32_t s = (sy == 2 ? py / 2 : py % ch) * cw + px / 2;
                const Px want = planar444(y[py * w + px], cb[s], cr[s]);
                const size_t o = 3 * (py * w + px);
                EXPECT_EQ((Px{planar[o], planar[o + 1], planar[o + 2]}), want) << px << "," << py << " sy " << sy;
                EXPECT_EQ((Px{pseudo[o], pseudo[o + 1], pseudo[o + 2]}), want) << px << "," << py << " sy " << sy;
            }
    }
}

// ---- JPEG-style decoders ------------------------------------------------------------

TEST(ColorToRgbJpeg, RoundsEachComponentOnce) {
    // Y 100, Cb' -28, Cr' 22: R = 100 + round(30.84), G = 100 + round(-6.08),
    // B = 100 + round(-49.6).
    const uint8_t y = 100, c[2] = {150, 100};  // Cr first
    uint8_t out[3] = {};
    pxrColorYCrCbH1V1toRGB888u8(&y, c, 1, 1, 0, 0, out, 0);
    EXPECT_EQ((Px{out[0], out[1], out[2]}), (Px{131, 94, 50}));
    // White, grey and clamped extremes.
    const uint8_t white = 255, grey = 77, mid[2] = {128, 128}, hi[2] = {255, 255}, lo[2] = {0, 0};
    pxrColorYCrCbH1V1toRGB888u8(&white, mid, 1, 1, 0, 0, out, 0);
    EXPECT_EQ((Px{out[0], out[1], out[2]}), (Px{255, 255, 255}));
    pxrColorYCrCbH1V1toRGB888u8(&grey, mid, 1, 1, 0, 0, out, 0);
    EXPECT_EQ((Px{out[0], out[1], out[2]}), (Px{77, 77, 77}));
    pxrColorYCrCbH1V1toRGB888u8(&white, hi, 1, 1, 0, 0, out, 0);  // G = 255 + floor(-133.9)
    EXPECT_EQ((Px{out[0], out[1], out[2]}), (Px{255, 121, 255}));
    pxrColorYCrCbH1V1toRGB888u8(&grey, lo, 1, 1, 0, 0, out, 0);  // G = 77 + 135
    EXPECT_EQ((Px{out[0], out[1], out[2]}), (Px{0, 212, 0}));
}

// H2V2, H2V1 and H1V2 equal H1V1 on the chroma spread to every pixel.
TEST(ColorToRgbJpeg, SubsampledDecodersEqualH1V1OnSpreadChroma) {
    const uint32_t w = 11, h = 7;
    auto y = pxr::test::randomBytes(w * h, 31);
    for (auto [hx, vy] : {std::pair{2u, 2u}, std::pair{2u, 1u}, std::pair{1u, 2u}}) {
        const uint32_t cw = (w + hx - 1) / hx, ch = (h + vy - 1) / vy;
        auto c = pxr::test::randomBytes(2 * cw * ch, 32 + hx + vy);
        std::vector<uint8_t> full(2 * w * h), want(3 * w * h), got(3 * w * h);
        for (uint32_t py = 0; py < h; ++py)
            for (uint32_t px = 0; px < w; ++px)
                for (int k = 0; k < 2; ++k) full[2 * (py * w + px) + k] = c[2 * ((py / vy) * cw + px / hx) + k];
        pxrColorYCrCbH1V1toRGB888u8(y.data(), full.data(), w, h, 0, 0, want.data(), 0);
        if (hx == 2 && vy == 2) pxrColorYCrCbH2V2toRGB888u8(y.data(), c.data(), w, h, 0, 0, got.data(), 0);
        if (hx == 2 && vy == 1) pxrColorYCrCbH2V1toRGB888u8(y.data(), c.data(), w, h, 0, 0, got.data(), 0);
        if (hx == 1 && vy == 2) pxrColorYCrCbH1V2toRGB888u8(y.data(), c.data(), w, h, 0, 0, got.data(), 0);
        EXPECT_EQ(got, want) << "H" << hx << "V" << vy;
    }
}

// ---- Video range -------------------------------------------------------------------------

namespace {

// One 2 x 2 block (Y all equal) through the video-range decoder.
uint16_t video(uint8_t y, uint8_t u, uint8_t v) {
    const uint8_t src[6] = {y, y, y, y, u, v};
    uint16_t out[4] = {};
    pxrColorYUV420toRGB565u8(src, 2, 2, out);
    for (uint16_t o : out) EXPECT_EQ(o, out[0]);
    return out[0];
}

}  // namespace

TEST(ColorToRgbVideo, RangeAndFieldsOfTheWord) {
    EXPECT_EQ(video(16, 128, 128), 0x0000);  // black at Y 16
    EXPECT_EQ(video(0, 128, 128), 0x0000);   // below black clamps
    EXPECT_EQ(video(235, 128, 128), 0xFFFF);  // 298 x 219 >> 8 = 254
    // U' 127 at Y 16: (517 x 127) >> 8 = 256 -> 255 into bits 11..15; green
    // (-100 x 127) >> 8 < 0 -> 0.
    EXPECT_EQ(video(16, 255, 128), 0xF800);
    // V' 127: (409 x 127) >> 8 = 202 -> 11001 into bits 0..4.
    EXPECT_EQ(video(16, 128, 255), 0x0019);
    // U' = V' = -128: green (100 + 208) x 128 >> 8 = 154 -> 100110 in bits 5..10.
    EXPECT_EQ(video(16, 0, 0), 38 << 5);
    // Y 24: C = 2384, >> 8 = 9 in every component -> fields 1, 2, 1.
    EXPECT_EQ(video(24, 128, 128), (1 << 11) | (2 << 5) | 1);
}

TEST(ColorToRgbVideo, ChromaRowServesTwoLumaRowsAndOddSizes) {
    for (auto [w, h] : {std::pair{5u, 3u}, std::pair{1u, 1u}}) {
        const uint32_t cw = (w + 1) / 2, ch = (h + 1) / 2;
        auto src = pxr::test::randomBytes(w * h + 2 * cw * ch, w * 17 + h);
        std::vector<uint16_t> out(w * h);
        pxrColorYUV420toRGB565u8(src.data(), w, h, out.data());
        for (uint32_t y = 0; y < h; ++y)
            for (uint32_t x = 0; x < w; ++x) {
                const uint8_t* uv = src.data() + w * h + 2 * ((y / 2) * cw + x / 2);
                const uint8_t block[3] = {src[y * w + x], uv[0], uv[1]};  // a 1 x 1 image
                uint16_t one = 0;
                pxrColorYUV420toRGB565u8(block, 1, 1, &one);
                ASSERT_EQ(out[y * w + x], one) << w << "x" << h << " at " << x << "," << y;
            }
    }
}

TEST(ColorToRgbVideo, Rotate180TurnsTheImage) {
    for (auto [w, h] : {std::pair{37u, 5u}, std::pair{1u, 3u}}) {
        const uint32_t cw = (w + 1) / 2, ch = (h + 1) / 2;
        auto src = pxr::test::randomBytes(w * h + 2 * cw * ch, w + h);
        std::vector<uint16_t> upright(w * h), turned(w * h);
        pxrColorYUV420toRGB565u8(src.data(), w, h, upright.data());
        pxrColorYUV420toRGB565u8Rotate180(src.data(), w, h, turned.data());
        for (uint32_t i = 0; i < w * h; ++i) ASSERT_EQ(turned[w * h - 1 - i], upright[i]) << w << "x" << h << " " << i;
    }
}
