// Named function ids: the fixed rows of the function tables.
#pragma once

#include <cstdint>

enum pxrFunctionId : uint32_t {
#define PXR_ROW_ID(id, name) PXR_ROW_##name = id,
#include "frame/rows.def"
#undef PXR_ROW_ID
    PXR_ROW_COUNT = 506
};

enum pxrInternalFunctionId : uint32_t {
#define PXR_IROW_ID(id, name) PXR_IROW_##name = id,
#include "frame/internal_rows.def"
#undef PXR_IROW_ID
    PXR_IROW_COUNT = 16
};
