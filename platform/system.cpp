#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <mutex>

#include "platform/platform.h"

#if defined(__ANDROID__)
#include <sys/system_properties.h>
#endif

namespace pxr::platform {
namespace {

std::mutex gPathMutex;
std::string gCpuInfoPath = "/proc/cpuinfo";

}  // namespace

std::string propertyEnvName(const char* name) {
    std::string env;
    for (const char* p = name; *p; ++p)
        env += (*p == '.') ? '_' : static_cast<char>(std::toupper(static_cast<unsigned char>(*p)));
    return env;
}

std::string property(const char* name) {
#if defined(__ANDROID__)
    char value[PROP_VALUE_MAX] = {0};
    __system_property_get(name, value);
    return value;
#else
    const char* value = std::getenv(propertyEnvName(name).c_str());
    return value ? value : "";
#endif
}

void setCpuInfoPath(const char* path) {
    std::lock_guard<std::mutex> lock(gPathMutex);
    gCpuInfoPath = (path && *path) ? path : "/proc/cpuinfo";
}

std::string readCpuInfo(size_t maxBytes) {
    std::string path;
    {
        std::lock_guard<std::mutex> lock(gPathMutex);
        path = gCpuInfoPath;
    }
    int fd;
    do {
        fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) return {};
    std::string text(maxBytes, '\0');
    size_t got = 0;
    while (got < maxBytes) {
        ssize_t n = read(fd, &text[got], maxBytes - got);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        got += static_cast<size_t>(n);
    }
    close(fd);
    text.resize(got);
    return text;
}

long onlineProcessors() {
    long n = sysconf(_SC_NPROCESSORS_ONLN);
    return n > 0 ? n : 0;
}

void* openLibrary(const char* name) { return dlopen(name, RTLD_NOW | RTLD_LOCAL); }

void* librarySymbol(void* lib, const char* name) { return lib ? dlsym(lib, name) : nullptr; }

void closeLibrary(void* lib) {
    if (lib) dlclose(lib);
}

}  // namespace pxr::platform
