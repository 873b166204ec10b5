/* Compiles the public header as strict C99; linking proves nothing more. */
#include "pixora.h"

int pixora_header_compiles_as_c99(void) {
    pxrPyramidLevel_v2 level = {0, 1, 1, 1};
    pxrBorderType border = PIXORA_BORDER_REPLICATE;
    return (int)level.width + (int)border + (int)PIXORA_OP_CPU_PERFORMANCE;
}
