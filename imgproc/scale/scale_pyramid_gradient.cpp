// Sobel gradient pyramids: every level's planar Sobel gradients, by the
// gradient filters' reference implementations.
#include "imgproc/filters/gradient.h"
#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_pyramid.h"

using pxr::scale::pyramid::gradientLevels;

int pxrPyramidSobelGradientCreatei16C(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientLevels<int16_t>(imagePyramid, dxPyramid, dyPyramid, numLevels, pxrImageGradientSobelPlanars16C);
}

int pxrPyramidSobelGradientCreatei8C(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                     pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientLevels<int8_t>(imagePyramid, dxPyramid, dyPyramid, numLevels, pxrImageGradientSobelPlanars8C);
}

int pxrPyramidSobelGradientCreatef32C(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels) {
    return gradientLevels<float>(imagePyramid, dxPyramid, dyPyramid, numLevels, pxrImageGradientSobelPlanarf32C);
}
