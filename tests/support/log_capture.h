// Captures the library's log lines for the lifetime of the object.
#pragma once

#include <mutex>
#include <string>
#include <vector>

namespace pxr::test {

struct LogLine {
    int priority;
    std::string tag;
    std::string text;
};

class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<LogLine> lines() const;
    // Texts only, in order.
    std::vector<std::string> texts() const;
    bool contains(const std::string& text) const;
    void clear();

private:
    static void hook(int priority, const char* tag, const char* text, void* user);
    mutable std::mutex mutex_;
    std::vector<LogLine> lines_;
};

}  // namespace pxr::test
