// Saves the process-wide dispatch state (tables, choices, switches, remote
// pointers, processor detection) and restores it when the scope ends, so a
// test that changes modes or detection leaves no trace for the next one.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "frame/cpu_detect.h"
#include "frame/state.h"
#include "frame/tables.h"
#include "pixora/frame.h"
#include "platform/platform.h"

#define PXR_REMOTE(name, row) extern "C" uintptr_t name;
#include "frame/remote_pointers.def"
#undef PXR_REMOTE

namespace pxr::test {

class FrameSnapshot {
public:
    FrameSnapshot() {
        std::memcpy(func_, pxrFuncTable, sizeof func_);
        std::memcpy(impl_, pxrImplTable, sizeof impl_);
        std::memcpy(ifunc_, pxrInternalFuncTable, sizeof ifunc_);
        std::memcpy(iimpl_, pxrInternalImplTable, sizeof iimpl_);
#define PXR_REMOTE(name, row) remote_[n_++] = name;
#include "frame/remote_pointers.def"
#undef PXR_REMOTE
        master_ = masterManager();
        hw_ = HW_constraint_checks_enable;
        k6_ = K6_constraint_checks_enable;
        log_ = libLogPrint;
        mode_ = mode_globalVar;
        dsp_ = defaultDSP;
        kdsp_ = KDSP_initflag;
        gpu_ = GPU_initflag;
        procs_ = nPxrAvailableProc;
    }
    ~FrameSnapshot() {
        std::memcpy(pxrFuncTable, func_, sizeof func_);
        std::memcpy(pxrImplTable, impl_, sizeof impl_);
        std::memcpy(pxrInternalFuncTable, ifunc_, sizeof ifunc_);
        std::memcpy(pxrInternalImplTable, iimpl_, sizeof iimpl_);
        n_ = 0;
#define PXR_REMOTE(name, row) name = remote_[n_++];
#include "frame/remote_pointers.def"
#undef PXR_REMOTE
        if (master_) pxrInitializeMasterFuncManager(master_);
        HW_constraint_checks_enable = hw_;
        K6_constraint_checks_enable = k6_;
        libLogPrint = log_;
        mode_globalVar = mode_;
        defaultDSP = dsp_;
        KDSP_initflag = kdsp_;
        GPU_initflag = gpu_;
        nPxrAvailableProc = procs_;
        platform::setCpuInfoPath(nullptr);
        detect::resetForTest();
    }
    FrameSnapshot(const FrameSnapshot&) = delete;
    FrameSnapshot& operator=(const FrameSnapshot&) = delete;

private:
    uintptr_t func_[PIXORA_NUM_FUNCTIONS * PIXORA_NUM_KINDS];
    uint32_t impl_[PIXORA_NUM_FUNCTIONS];
    uintptr_t ifunc_[PIXORA_NUM_INTERNAL_FUNCTIONS * PIXORA_NUM_KINDS];
    uint32_t iimpl_[PIXORA_NUM_INTERNAL_FUNCTIONS];
    uintptr_t remote_[64] = {};
    size_t n_ = 0;
    PXR_FUNC_MANAGER* master_;
    uint32_t hw_, k6_, mode_, dsp_, procs_;
    uint8_t log_, kdsp_, gpu_;
};

// Sets (or, with null, unsets) an environment variable while in scope; the
// system properties fall back to the environment off Android.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        set(value);
    }
    ~ScopedEnv() { set(old_ ? old_->c_str() : nullptr); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    void set(const char* value) {
        if (value)
            setenv(name_.c_str(), value, 1);
        else
            unsetenv(name_.c_str());
    }
    std::string name_;
    std::optional<std::string> old_;
};

// Points the processor information at a file and forgets the detection, so
// the next mode change detects from that file.
inline void useCpuInfo(const std::string& path) {
    platform::setCpuInfoPath(path.c_str());
    detect::resetForTest();
}

}  // namespace pxr::test
