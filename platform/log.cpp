#include <atomic>
#include <cstdio>

#include "platform/platform.h"

#if defined(__ANDROID__)
#include <android/log.h>
#endif

namespace pxr::platform {
namespace {

struct Hook {
    LogHook fn;
    void* user;
};
std::atomic<const Hook*> gHook{nullptr};
Hook gHookSlots[2];
std::atomic<int> gHookSlot{0};

char priorityLetter(int priority) {
    static const char kLetters[] = "??VDIWEF";
    return (priority >= 2 && priority <= 7) ? kLetters[priority] : '?';
}

}  // namespace

void setLogHook(LogHook hook, void* user) {
    if (!hook) {
        gHook.store(nullptr);
        return;
    }
    int slot = gHookSlot.fetch_xor(1) ^ 1;
    gHookSlots[slot] = Hook{hook, user};
    gHook.store(&gHookSlots[slot]);
}

void vlog(int priority, const char* tag, const char* fmt, va_list args) {
    if (const Hook* hook = gHook.load()) {
        char text[1024];
        vsnprintf(text, sizeof text, fmt, args);
        hook->fn(priority, tag, text, hook->user);
        return;
    }
#if defined(__ANDROID__)
    __android_log_vprint(priority, tag, fmt, args);
#else
    char text[1024];
    vsnprintf(text, sizeof text, fmt, args);
    fprintf(stderr, "%c/%s: %s", priorityLetter(priority), tag, text);
    size_t n = 0;
    while (text[n]) ++n;
    if (n == 0 || text[n - 1] != '\n') fputc('\n', stderr);
#endif
}

void log(int priority, const char* tag, const char* fmt, ...) {
    va_list args;
    va_start(args, fmt);
    vlog(priority, tag, fmt, args);
    va_end(args);
}

}  // namespace pxr::platform
