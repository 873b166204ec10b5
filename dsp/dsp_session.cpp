// DSP channel seam. For now it only looks for the platform's libraries and
// reports the DSP as absent; the session itself is opened by the DSP layer.
#include "dsp/dsp_session.h"

#include "platform/platform.h"

namespace pxr::dsp {
namespace {

struct Channel {
    bool open = false;
    uint32_t domain = 0;
    int32_t powerMode = -1;
};
Channel gChannel;

// Whether both the remote-call library and the stubs can be loaded.
bool librariesPresent() {
    void* rpc = platform::openLibrary("libkolrpc.so");
    void* stubs = platform::openLibrary("libpixoradsp_stub.so");
    const bool present = rpc && stubs;
    platform::closeLibrary(stubs);
    platform::closeLibrary(rpc);
    return present;
}

}  // namespace

bool open(uint32_t domain, uint32_t powerMode, const char* version) {
    if (gChannel.open && gChannel.domain == domain && gChannel.powerMode == static_cast<int32_t>(powerMode))
        return true;
    close();
    if (!version || domain > 2) return false;
    librariesPresent();
    return false;  // No session layer yet: the DSP is reported absent.
}

void close() { gChannel = Channel{}; }

bool isOpen() { return gChannel.open; }
uint32_t domain() { return gChannel.domain; }
int32_t powerMode() { return gChannel.powerMode; }

}  // namespace pxr::dsp
