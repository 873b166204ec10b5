// The DSP channel as the mode setter sees it: one session per process, open
// on one domain (0 ADSP, 1 CDSP, 2 MDSP) in one power mode.
#pragma once

#include <cstdint>

namespace pxr::dsp {

// Opens the channel of `domain` in `powerMode` after the version handshake.
// Already open there in that power mode: true at once. Otherwise any open
// channel is closed first. False when the DSP libraries or domain are absent.
bool open(uint32_t domain, uint32_t powerMode, const char* version);

// Closes the channel, if open.
void close();

bool isOpen();
// Domain of the open channel (undefined while closed).
uint32_t domain();
// Power mode of the open channel; -1 while closed.
int32_t powerMode();

}  // namespace pxr::dsp
