// GPU system seam. For now it only looks for the OpenCL library and reports
// the GPU as absent; the GPU layer fills in the system itself.
#include "gpu/gpu_system.h"

#include "platform/platform.h"

namespace pxr::gpu {
namespace {

bool gStarted = false;

bool openClPresent() {
    void* lib = platform::openLibrary("libOpenCL.so");
    platform::closeLibrary(lib);
    return lib != nullptr;
}

}  // namespace

bool start() {
    if (gStarted) return true;
    openClPresent();
    return false;  // No GPU system yet: the GPU is reported absent.
}

void stop() { gStarted = false; }

bool isStarted() { return gStarted; }

void startFunctionLayer() {}

}  // namespace pxr::gpu
