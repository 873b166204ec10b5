// Internal rows whose real work happens on the DSP: the timing probe and
// buffer registration. Their CPU forms have nothing to do and return 0.
#pragma once

#include <cstdint>

#include "frame/registry.h"

uint64_t probeK6TimeC(uint32_t a, uint32_t b);
int pxrRegisterBufC(const void* buffer, uint32_t length, int fd);

PXR_INTERNAL_REFERENCE(PXR_IROW_ProbeK6Time, probeK6TimeC)
PXR_INTERNAL_REFERENCE(PXR_IROW_RegisterBuf, pxrRegisterBufC)
