// Must not compile: a vector implementation whose type differs from its
// row's signature (here the border flag is missing) is refused by the
// registry before it can reach the function table.
#include "imgproc/filters/filters.h"

void pxrFilterGaussian3x3u8Wrong(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                 uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

PXR_VECTOR(PXR_ROW_FilterGaussian3x3u8, pxrFilterGaussian3x3u8Wrong)
