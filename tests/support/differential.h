// The differential harness: every available kind of an operation against
// kind 0, byte for byte, over odd, tiny, slack-strided and misaligned images,
// with guard bytes around every output. Kind 1 is checked on every vector
// target this machine can run, not just the best one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/guarded_image.h"

namespace pxr::test {

// One test geometry. Operations derive their planes' sizes from it.
struct Shape {
    uint32_t width, height, slack, misalign;
};
std::string describe(const Shape& s);

// Odd and tiny sizes, stride slack, misaligned starts, and a few wide rows
// (past any strip or block size). PIXORA_TEST_SMALL=1 keeps the big ones small.
const std::vector<Shape>& standardShapes();

// Geometry of one plane of an operation, from the shape.
struct PlaneSpec {
    uint32_t width, height, bytesPerPixel;
};

// An operation under test. `call` gets its inputs and outputs and runs the
// public entry point (the harness has already forced the kind).
struct DiffOp {
    std::string name;
    uint32_t row;
    std::function<std::vector<PlaneSpec>(const Shape&)> inputs;
    std::function<std::vector<PlaneSpec>(const Shape&)> outputs;
    std::function<void(std::vector<GuardedImage>& in, std::vector<GuardedImage>& out)> call;
    bool packedOnly = false;  // generations without stride arguments
    uint32_t elementAlign = 1;  // planes start on multiples of this (bytes)
};

// An operation with one input and one output plane of the shape's size.
DiffOp unaryOp(std::string name, uint32_t row, uint32_t srcBpp, uint32_t dstBpp,
               std::function<void(GuardedImage& src, GuardedImage& dst)> call, bool packedOnly = false);

// Chooses a kind for one row of the implementation table while in scope.
class ForceKind {
public:
    ForceKind(uint32_t row, uint32_t kind);
    ~ForceKind();
    ForceKind(const ForceKind&) = delete;
    ForceKind& operator=(const ForceKind&) = delete;

private:
    uint32_t row_, saved_;
};

// Kinds other than 0 whose entry for the row is filled with code other than
// kind 0's: those are worth comparing.
std::vector<uint32_t> kindsToCompare(uint32_t row);

// Runs fn once per vector target that is compiled in and supported here,
// with kind 1 forced onto that target; restores the normal choice after.
// PIXORA_TEST_BEST_TARGET_ONLY=1 keeps only the best one.
void forEachVectorTarget(const std::function<void(const char* target)>& fn);

// The whole check; reports failures through GoogleTest.
void expectAllKindsMatch(const DiffOp& op, const std::vector<Shape>& shapes = standardShapes());

}  // namespace pxr::test
