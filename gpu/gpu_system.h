// The GPU system as the mode setter sees it: started once, stopped at clean-up.
#pragma once

namespace pxr::gpu {

// Starts the GPU system; true while it is up (a second start is a no-op).
// False when no usable GPU or OpenCL library exists.
bool start();

// Tears the GPU system down, if up.
void stop();

bool isStarted();

// Prepares the GPU implementations of the operations before the mode
// setter chooses kind 3 for them.
void startFunctionLayer();

}  // namespace pxr::gpu
