#include "frame/entry.h"

#include <cstdlib>

namespace pxr {

void errorAt(const char* name) { platform::log(platform::kError, platform::kLibTag, "Error at %s\n", name); }

void assertionFailed(const char* name, const char* condition) {
    platform::log(platform::kError, platform::kLibTag, "Assertion failed @%s: %s\n", name, condition);
}

void fatal(const char* source, int line, const char* condition) {
    platform::log(platform::kError, platform::kLibTag, "%s@%d: %s Assertion failed\n", source, line,
                  condition);
    std::exit(1);
}

}  // namespace pxr
