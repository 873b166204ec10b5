#include "frame/state.h"

extern "C" {
uint32_t HW_constraint_checks_enable = 1;
uint32_t K6_constraint_checks_enable = 1;
uint8_t libLogPrint = 0;
uint32_t mode_globalVar = PIXORA_OP_CPU_PERFORMANCE;
uint32_t defaultDSP = 1;
uint8_t KDSP_initflag = 0;
uint8_t GPU_initflag = 0;
uint32_t nPxrAvailableProc = 1;
const char* const pxrImplChar[PIXORA_NUM_KINDS] = {"CPU", "SIMDX", "KDSP", "GPU",
                                                          "ADSP", "CDSP", "MDSP"};
}
