#include "support/log_capture.h"

#include "platform/platform.h"

namespace pxr::test {

LogCapture::LogCapture() { platform::setLogHook(&LogCapture::hook, this); }
LogCapture::~LogCapture() { platform::setLogHook(nullptr, nullptr); }

void LogCapture::hook(int priority, const char* tag, const char* text, void* user) {
    auto* self = static_cast<LogCapture*>(user);
    std::lock_guard<std::mutex> lock(self->mutex_);
    self->lines_.push_back({priority, tag, text});
}

std::vector<LogLine> LogCapture::lines() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return lines_;
}

std::vector<std::string> LogCapture::texts() const {
    std::vector<std::string> out;
    for (const auto& l : lines()) out.push_back(l.text);
    return out;
}

bool LogCapture::contains(const std::string& text) const {
    for (const auto& l : lines())
        if (l.text.find(text) != std::string::npos) return true;
    return false;
}

void LogCapture::clear() {
    std::lock_guard<std::mutex> lock(mutex_);
    lines_.clear();
}

}  // namespace pxr::test
