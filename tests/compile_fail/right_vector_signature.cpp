// Must compile: the control for wrong_vector_signature.cpp.
#include "imgproc/filters/filters.h"

void pxrFilterGaussian3x3u8Right(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                 uint32_t srcStride, uint8_t* dst, uint32_t dstStride, int blurBorder);

PXR_VECTOR(PXR_ROW_FilterGaussian3x3u8, pxrFilterGaussian3x3u8Right)
