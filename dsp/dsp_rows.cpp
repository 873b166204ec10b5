#include "dsp/dsp_rows.h"

uint64_t probeK6TimeC(uint32_t, uint32_t) { return 0; }

int pxrRegisterBufC(const void*, uint32_t, int) { return 0; }
