// pixora-demo: the library's main job.
//   pixora-demo [options] [FIRST SECOND]
//       detects FAST-9 corners in FIRST and tracks them into SECOND with
//       pyramidal Lucas-Kanade on every kind, checks that all kinds agree
//       with kind 0, prints per kind the corners, tracked features and
//       times, and draws the tracks (default: a real 640x480 frame pair);
//   pixora-demo --operations [options] [IMAGE]
//       runs every filter, colour and scaling operation on every kind,
//       checks them against kind 0 and writes the results as PNG files.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "tools/demo/operations_check.h"
#include "tools/demo/track.h"

#ifndef PIXORA_PHOTO_DIR
#define PIXORA_PHOTO_DIR "/usr/share/doc/opencv-doc/examples/data"
#endif

namespace {

void usage(std::FILE* to) {
    std::fprintf(to,
                 "usage: pixora-demo [-o DIR] [-r N] [-t T] [-w W] [-l L] [FIRST SECOND]\n"
                 "       pixora-demo --operations [-o DIR] [-r N] [IMAGE]\n"
                 "  FIRST SECOND  two frames (PNG or JPEG) of one size; default the frame "
                 "pair\n"
                 "                " PIXORA_PHOTO_DIR
                 "/basketball{1,2}.png\n"
                 "  --operations  every filter, colour and scaling operation on every "
                 "kind;\n"
                 "                IMAGE is a PNG or JPEG file, else a built-in test "
                 "pattern\n"
                 "  -o DIR        where the result PNG files go (default "
                 "pixora-demo-out)\n"
                 "  -r N          timed runs per kind, the median is shown (default 5)\n"
                 "  -t T          FAST threshold (default 20)\n"
                 "  -w W          tracking window side, odd (default 15)\n"
                 "  -l L          pyramid levels, 1 to 8 (default 4)\n");
}

bool number(const char* text, long lo, long hi, long& out) {
    char* end = nullptr;
    out = std::strtol(text, &end, 10);
    return end != text && !*end && out >= lo && out <= hi;
}

}  // namespace

int main(int argc, char** argv) {
    bool operations = false;
    std::string outDir = "pixora-demo-out";
    long repeat = 5, barrier = 20, window = 15, levels = 4;
    std::vector<std::string> files;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a == "-h" || a == "--help") {
            usage(stdout);
            return 0;
        }
        if (a == "--operations") {
            operations = true;
            continue;
        }
        if (a.size() == 2 && a[0] == '-' && std::string("ortwl").find(a[1]) != std::string::npos) {
            if (i + 1 >= argc) {
                usage(stderr);
                return 2;
            }
            const char* value = argv[++i];
            bool ok = true;
            switch (a[1]) {
                case 'o':
                    outDir = value;
                    break;
                case 'r':
                    ok = number(value, 1, 10000, repeat);
                    break;
                case 't':
                    ok = number(value, 0, 255, barrier);
                    break;
                case 'w':
                    ok = number(value, 5, 99, window) && (window & 1);
                    break;
                default:
                    ok = number(value, 1, 8, levels);
                    break;
            }
            if (!ok) {
                std::fprintf(stderr, "pixora-demo: bad value for %s: %s\n", a.c_str(), value);
                return 2;
            }
            continue;
        }
        if (!a.empty() && a[0] == '-') {
            usage(stderr);
            return 2;
        }
        files.push_back(a);
    }

    if (operations) {
        if (files.size() > 1) {
            usage(stderr);
            return 2;
        }
        return pxr::demo::runOperationsCheck({files.empty() ? "" : files[0], outDir, static_cast<int>(repeat)});
    }
    if (files.size() == 1 || files.size() > 2) {
        usage(stderr);
        return 2;
    }
    pxr::demo::TrackOptions opt;
    opt.first = files.empty() ? PIXORA_PHOTO_DIR "/basketball1.png" : files[0];
    opt.second = files.empty() ? PIXORA_PHOTO_DIR "/basketball2.png" : files[1];
    opt.outDir = outDir;
    opt.repeat = static_cast<int>(repeat);
    opt.barrier = static_cast<uint32_t>(barrier);
    opt.window = static_cast<uint32_t>(window);
    opt.levels = static_cast<uint32_t>(levels);
    return pxr::demo::runTrack(opt);
}
