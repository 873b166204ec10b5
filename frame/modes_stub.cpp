// Temporary: replaced by the operation-mode setter.
#include "frame/tables.h"
extern "C" PXR_API uint32_t pxrSetOperationMode(uint32_t mode) {
    pxr::buildTables(true, false, false);
    pxr::resetChoices();
    if (mode == 3) uVIndex();
    return 0;
}
