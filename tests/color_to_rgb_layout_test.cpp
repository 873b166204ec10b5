// Layout changes between YCbCr layouts: the rounded means of halving and
// the replication of doubling at odd edges, Y copied unchanged, round trips
// that must be exact, and the chroma byte swap.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pixora.h"
#include "support/color_to_rgb_cases.h"

using namespace pxr::test;
using pxr::test::ycbcr::Member;
using pxr::test::ycbcr::Planes;

namespace {

using Plane = std::vector<uint8_t>;

// Runs a member on packed planes (stride 0 everywhere); returns the outputs.
std::vector<Plane> run(const Member& m, uint32_t w, uint32_t h, const std::vector<Plane>& in) {
    std::vector<Plane> out;
    for (const auto& s : m.outputs(w, h)) out.emplace_back(size_t{s.width} * s.height * s.bytesPerPixel, 0xEE);
    Planes p{w, h, {}, {}, {}, {}};
    for (const auto& i : in) {
        p.in.push_back(i.data());
        p.inStride.push_back(0);
    }
    for (auto& o : out) {
        p.out.push_back(o.data());
        p.outStride.push_back(0);
    }
    m.call(p);
    return out;
}

std::vector<Plane> run(const std::string& name, uint32_t w, uint32_t h, const std::vector<Plane>& in) {
    return run(ycbcr::member(name), w, h, in);
}

std::vector<Plane> randomPlanes(const Member& m, uint32_t w, uint32_t h, uint32_t seed) {
    std::vector<Plane> in;
    for (const auto& s : m.inputs(w, h)) in.push_back(randomBytes(size_t{s.width} * s.height * s.bytesPerPixel, seed++));
    return in;
}

const Plane kY(15, 9);  // a 5 x 3 Y plane

}  // namespace

TEST(ColorToRgbLayout, HalvingBothWaysTakesTheRoundedMeanOfTheBlock) {
    // 5 x 3 pixels: 3 x 2 samples; the last column and row stand alone.
    const Plane cb = {1, 2, 3, 4, 9,  //
                      3, 4, 1, 1, 10,  //
                      7, 8, 0, 1, 250};
    const Plane cr(15, 200);
    auto out = run("pxrColorYCbCr444PlanarToYCbCr420Planaru8", 5, 3, {kY, cb, cr});
    EXPECT_EQ(out[0], kY);
    // (1+2+3+4+2)>>2 = 3, (3+4+1+1+2)>>2 = 2, (9+10+1)>>1 = 10;
    // (7+8+1)>>1 = 8, (0+1+1)>>1 = 1, 250.
    EXPECT_EQ(out[1], (Plane{3, 2, 10, 8, 1, 250}));
    EXPECT_EQ(out[2], Plane(6, 200));
    // The same through the interleaved forms.
    auto pseudo = run("pxrColorYCbCr444PlanarToYCbCr420PseudoPlanaru8", 5, 3, {kY, cb, cr});
    EXPECT_EQ(pseudo[1], (Plane{3, 200, 2, 200, 10, 200, 8, 200, 1, 200, 250, 200}));
}

TEST(ColorToRgbLayout, HalvingOneWayTakesTheRoundedMeanOfThePair) {
    const Plane cb = {1, 2, 3, 4, 9,  //
                      3, 5, 1, 1, 10,  //
                      7, 8, 0, 1, 250};
    const Plane cr(15, 7);
    // 444 -> 422: pairs along each row, the fifth column alone.
    auto h422 = run("pxrColorYCbCr444PlanarToYCbCr422Planaru8", 5, 3, {kY, cb, cr});
    EXPECT_EQ(h422[1], (Plane{2, 4, 9, 4, 1, 10, 8, 1, 250}));
    // 422 -> 420: pairs of rows, the third row alone (422 planes are 3 wide).
    const Plane c422 = {1, 2, 9, 4, 3, 10, 200, 201, 202};
    auto v420 = run("pxrColorYCbCr422PlanarToYCbCr420Planaru8", 5, 3, {kY, c422, c422});
    EXPECT_EQ(v420[1], (Plane{3, 3, 10, 200, 201, 202}));
    EXPECT_EQ(v420[2], v420[1]);
}

TEST(ColorToRgbLayout, DoublingReplicatesEachSampleOverWhatItCovers) {
    const Plane c420 = {10, 20, 30, 40, 50, 60};  // 3 x 2 samples of a 5 x 3 image
    auto full = run("pxrColorYCbCr420PlanarToYCbCr444Planaru8", 5, 3, {kY, c420, c420});
    EXPECT_EQ(full[1], (Plane{10, 10, 20, 20, 30,  //
                              10, 10, 20, 20, 30,  //
                              40, 40, 50, 50, 60}));
    auto rows = run("pxrColorYCbCr420PlanarToYCbCr422Planaru8", 5, 3, {kY, c420, c420});
    EXPECT_EQ(rows[1], (Plane{10, 20, 30, 10, 20, 30, 40, 50, 60}));
    auto pairs = run("pxrColorYCbCr422PseudoPlanarToYCbCr444PseudoPlanaru8", 3, 1, {Plane(3, 1), {1, 2, 3, 4}});
    EXPECT_EQ(pairs[1], (Plane{1, 2, 1, 2, 3, 4}));
}

// Doubling then halving gives back the original chroma exactly, and so does
// splitting then interleaving, for every pair of members that allows it.
TEST(ColorToRgbLayout, RoundTripsThatMustBeExact) {
    const char* subs[] = {"444", "422", "420"};
    const char* forms[] = {"Planar", "PseudoPlanar"};
    auto name = [](const char* s, const char* f, const char* t, const char* g) {
        return std::string("pxrColorYCbCr") + s + f + "ToYCbCr" + t + g + "u8";
    };
    int trips = 0;
    for (int coarse = 0; coarse < 3; ++coarse)
        for (int fine = 0; fine <= coarse; ++fine)
            for (const char* f : forms)
                for (const char* g : forms) {
                    if (fine == coarse && std::string(f) == g) continue;
                    const std::string there = name(subs[coarse], f, subs[fine], g),
                                      back = name(subs[fine], g, subs[coarse], f);
                    for (auto [w, h] : {std::pair{7u, 5u}, std::pair{1u, 1u}}) {
                        const auto original = randomPlanes(ycbcr::member(there), w, h, w + h);
                        const auto mid = run(there, w, h, original);
                        EXPECT_EQ(mid[0], original[0]) << there;  // Y is copied
                        EXPECT_EQ(run(back, w, h, mid), original) << there << " and back, " << w << "x" << h;
                    }
                    ++trips;
                }
    EXPECT_EQ(trips, 4 * 3 + 2 * 3);  // 3 doublings x 4 form pairs, 3 same-resolution form changes x 2
}

TEST(ColorToRgbLayout, SwapExchangesEveryPairAndRunsInPlace) {
    // Two rows of 2 pairs with a stride of 5 bytes: the slack byte stays.
    Plane c = {1, 2, 3, 4, 0xAA, 5, 6, 7, 8, 0xBB};
    Plane out(10, 0xEE);
    pxrColorCbCrSwapu8(c.data(), 2, 2, 5, out.data(), 5);
    EXPECT_EQ(out, (Plane{2, 1, 4, 3, 0xEE, 6, 5, 8, 7, 0xEE}));
    pxrColorCbCrSwapu8(c.data(), 2, 2, 5, c.data(), 5);
    EXPECT_EQ(c, (Plane{2, 1, 4, 3, 0xAA, 6, 5, 8, 7, 0xBB}));
}
