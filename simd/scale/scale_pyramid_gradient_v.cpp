// Sobel gradient pyramids, vector kind: the reference's level loop with the
// gradient filters' vector implementations.
#include "imgproc/scale/scale_pyramid.h"
#include "simd/filters/gradient_v.h"
#include "simd/scale/scale_v.h"

using pxr::scale::pyramid::gradientLevels;

int pxrPyramidSobelGradientCreatei16V(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientLevels<int16_t>(imagePyramid, dxPyramid, dyPyramid, numLevels, pxrImageGradientSobelPlanars16V);
}

int pxrPyramidSobelGradientCreatei8V(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                     pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientLevels<int8_t>(imagePyramid, dxPyramid, dyPyramid, numLevels, pxrImageGradientSobelPlanars8V);
}

int pxrPyramidSobelGradientCreatef32V(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientLevels<float>(imagePyramid, dxPyramid, dyPyramid, numLevels, pxrImageGradientSobelPlanarf32V);
}
