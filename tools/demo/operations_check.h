// pixora-demo --operations: every operation on every kind, checked against
// kind 0 and timed.
#pragma once

#include <string>

namespace pxr::demo {

struct CheckOptions {
    std::string input;  // empty: the built-in test pattern
    std::string outDir;
    int repeat = 5;
};

// Returns the process exit status: 0 when every kind gave kind 0's bytes.
int runOperationsCheck(const CheckOptions& opt);

}  // namespace pxr::demo
