// The platform seam: everything that differs between Android and other
// systems (logging, system properties, processor information, loading of
// optional libraries) goes through these few functions.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string>

namespace pxr::platform {

// Android log priorities.
enum LogPriority : int { kDebug = 3, kInfo = 4, kWarn = 5, kError = 6 };

inline constexpr const char* kLibTag = "pixora_lib_log";
inline constexpr const char* kRuntimeTag = "pixora_runtime_log";

// Writes one log line. On Android this is liblog; elsewhere stderr as
// "<P>/<tag>: <text>" (P one of V D I W E F), or the capture hook when set.
void log(int priority, const char* tag, const char* fmt, ...) __attribute__((format(printf, 3, 4)));
void vlog(int priority, const char* tag, const char* fmt, va_list args);

// Test hook: receives every formatted line instead of stderr. Null restores stderr.
using LogHook = void (*)(int priority, const char* tag, const char* text, void* user);
void setLogHook(LogHook hook, void* user);

// Reads a system property. Android: the property service. Elsewhere: the
// environment variable named after it, upper case, dots as underscores
// ("vendor.runtime.pixora.log" -> VENDOR_RUNTIME_PIXORA_LOG). Empty if unset.
std::string property(const char* name);
std::string propertyEnvName(const char* name);

// Reads up to maxBytes of the processor information file (retrying on EINTR).
// The path can be overridden for tests; an empty path restores /proc/cpuinfo.
std::string readCpuInfo(size_t maxBytes);
void setCpuInfoPath(const char* path);

// Number of online processors, or 0 when the system cannot tell.
long onlineProcessors();

// Loads an optional shared library; null when absent. Never fails loudly.
void* openLibrary(const char* name);
void* librarySymbol(void* lib, const char* name);
void closeLibrary(void* lib);

}  // namespace pxr::platform
