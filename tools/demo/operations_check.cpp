// The every-operation check: each public operation the demo knows runs on
// every kind that has code of its own; all must give kind 0's bytes.
#include "tools/demo/operations_check.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "pixora.h"
#include "simd/target_info.h"
#include "tools/demo/image_io.h"
#include "tools/demo/kinds.h"
#include "tools/demo/operations.h"
#include "tools/demo/test_pattern.h"

namespace pxr::demo {
namespace {

// One operation on one kind.
struct Run {
    uint32_t kind;
    int status;
    double ms;                 // median of the timed runs
    std::vector<uint8_t> out;  // the first run's output
    size_t differing = 0;      // pixels that differ from kind 0's output
};

Run runOnKind(const Operation& op, uint32_t kind, const Image& src, int repeat) {
    Run r{kind, 0, 0.0, std::vector<uint8_t>(src.pixels.size(), 0), 0};
    const SrcView in{src.pixels.data(), src.width, src.height, src.width};
    const DstView out{r.out.data(), src.width, src.height, src.width};
    const ForcedKind forced(op.row, kind);
    r.status = op.run(in, out);

    // Timed runs write into a scratch buffer so the checked output stays that of
    // one call.
    std::vector<uint8_t> scratch(src.pixels.size(), 0);
    const DstView timed{scratch.data(), src.width, src.height, src.width};
    std::vector<double> times;
    for (int i = 0; i < repeat; ++i) {
        const auto t0 = std::chrono::steady_clock::now();
        op.run(in, timed);
        const auto t1 = std::chrono::steady_clock::now();
        times.push_back(std::chrono::duration<double, std::milli>(t1 - t0).count());
    }
    std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
    r.ms = times[times.size() / 2];
    return r;
}

std::string kindName(uint32_t kind) { return pxrImplChar[kind]; }

// The kinds of each row the demo uses: own code, a copy of a lower kind's, or
// nothing.
void printKinds() {
    std::printf(
        "Kinds per row (x: own code; =K: the column repeats kind K's "
        "code; .: empty)\n");
    std::printf("  %-4s", "row");
    for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k)
        std::printf(" %-6s", pxrImplChar[k]);
    std::printf(" operations\n");
    std::vector<uint32_t> seen;
    for (const Operation& op : operations()) {
        if (std::find(seen.begin(), seen.end(), op.row) != seen.end())
            continue;
        seen.push_back(op.row);
        std::string names;
        for (const Operation& other : operations())
            if (other.row == op.row) {
                if (!names.empty())
                    names += ',';
                names += other.name + 3;  // without the "pxr" prefix
            }
        std::printf("  %-4u", op.row);
        for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k) {
            if (kindHasOwnCode(op.row, k))
                std::printf(" %-6s", "x");
            else if (kindPresent(op.row, k))
                std::printf(" =%-5s", pxrImplChar[aliasOf(op.row, k)]);
            else
                std::printf(" %-6s", ".");
        }
        std::printf(" %s\n", names.c_str());
    }
    std::printf("\n");
}

size_t countDifferences(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b) {
    size_t n = 0;
    for (size_t i = 0; i < a.size(); ++i)
        n += a[i] != b[i];
    return n;
}

}  // namespace

int runOperationsCheck(const CheckOptions& opt) {
    Image image;
    if (opt.input.empty()) {
        image = testPattern();
    } else {
        std::string error;
        if (!readImage(opt.input, image, error)) {
            std::fprintf(stderr, "pixora-demo: %s\n", error.c_str());
            return 1;
        }
    }
    const bool wasColour = image.channels != 1;
    image = toGrey(image);
    if (image.width < 8 || image.height < 8) {
        std::fprintf(stderr, "pixora-demo: the image must be at least 8x8 pixels\n");
        return 1;
    }

    const uint32_t modeStatus = pxrSetOperationMode(PIXORA_OP_CPU_PERFORMANCE);
    char version[16] = {};
    pxrGetVersion(version, sizeof version);
    std::printf("Pixora %s; pixora-demo: %s, %ux%u%s\n", version,
                opt.input.empty() ? "built-in test pattern" : opt.input.c_str(), image.width, image.height,
                wasColour ? " (converted to grey)" : "");
    std::printf("mode CPU_PERFORMANCE (status %u); vector target %s\n\n", modeStatus, pxr::simd::chosenTargetName());
    printKinds();

    std::error_code ec;
    std::filesystem::create_directories(opt.outDir, ec);
    std::string error;
    if (ec || !writePng(opt.outDir + "/input.png", image, error)) {
        std::fprintf(stderr, "pixora-demo: cannot write to %s: %s\n", opt.outDir.c_str(),
                     ec ? ec.message().c_str() : error.c_str());
        return 1;
    }

    const double megapixels = double(image.width) * image.height / 1e6;
    std::printf("%-26s %-18s %-6s %10s %9s %10s  %s\n", "operation", "settings", "kind", "ms", "x CPU", "Mpixel/s",
                "result");
    int failures = 0;
    for (const Operation& op : operations()) {
        std::vector<Run> runs;
        for (uint32_t k = 0; k < PIXORA_NUM_KINDS; ++k)
            if (kindHasOwnCode(op.row, k))
                runs.push_back(runOnKind(op, k, image, opt.repeat));
        const Run& ref = runs.front();  // kind 0 always has code of its own
        for (Run& r : runs) {
            r.differing = countDifferences(r.out, ref.out);
            std::string result = r.kind == 0 ? "reference" : "same as CPU";
            if (r.status != ref.status)
                result = "status " + std::to_string(r.status) + ", CPU gave " + std::to_string(ref.status);
            else if (r.differing)
                result = "DIFFERS in " + std::to_string(r.differing) + " pixels";
            if (r.status != ref.status || r.differing) {
                ++failures;
                const std::string path = opt.outDir + "/" + op.name + "_" + kindName(r.kind) + ".png";
                writePng(path, r.out.data(), image.width, image.height, image.width, 1, error);
            }
            std::printf("%-26s %-18s %-6s %10.3f %9.2f %10.1f  %s\n", op.name, op.settings, pxrImplChar[r.kind], r.ms,
                        ref.ms / r.ms, megapixels / (r.ms / 1e3), result.c_str());
        }
        if (!writePng(opt.outDir + "/" + op.name + ".png", ref.out.data(), image.width, image.height, image.width, 1,
                      error)) {
            std::fprintf(stderr, "pixora-demo: %s\n", error.c_str());
            return 1;
        }
    }
    std::printf("\nResults in %s/ (input.png and one PNG per operation).\n", opt.outDir.c_str());
    if (failures) {
        std::printf(
            "FAILED: %d kind(s) differ from the CPU reference (their "
            "outputs are saved beside it)\n",
            failures);
        return 1;
    }
    std::printf("Every kind gave the CPU reference's bytes.\n");
    return 0;
}

}  // namespace pxr::demo
