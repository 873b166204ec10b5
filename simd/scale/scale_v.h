// Vector (kind 1) implementations: scaling and pyramids, and their rows.
#pragma once

#include "imgproc/scale/scale.h"
#include "imgproc/scale/scale_gauss_kernels.h"

// Block averages (scale_block_v.cpp).
void pxrScaleDownBy2u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
void pxrScaleDownBy4u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
void pxrScaleDown3To2u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                         uint8_t* dst, uint32_t dstStride);

// M-by-N block reduction (scale_mn_v.cpp).
int pxrScaleDownMNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                      uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
int pxrScaleDownMNInterleaveu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);

// Resampling to a given size (scale_resample_v.cpp).
void pxrScaleDownNNu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
void pxrScaleDownu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                     uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
void pxrScaleDownBLu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
int pxrScaleu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
int pxrScaleu8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                   uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride, uint32_t interpolation);

// Gaussian halving and doubling (scale_gauss_v.cpp).
void pxrScaleDownBy2Gaussian5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst);
void pxrScaleDownBy2Gaussian5x5u8_v2V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
int pxrScaleDownBy2Gaussian3x3u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride);
void pxrScaleDownBy2Gaussian5x5f32V(const float* src, uint32_t srcWidth, uint32_t srcHeight, float* dst);
void pxrScaleDownBy2Gaussian5x5f32_v2V(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, float* dst, uint32_t dstStride);
void pxrScaleUpBy2Gaussian5x5u8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride);

// Doubling: polyphase up-scaling and up-sampling (scale_up_v.cpp).
void pxrScaleUpPolyu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint8_t* dst, uint32_t dstStride);
void pxrScaleUpPolyInterleaveu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride);
void pxrUpsampleVerticalu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride);
void pxrUpsampleHorizontalu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
void pxrUpsample2Du8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                      uint8_t* dst, uint32_t dstStride);
void pxrUpsampleVerticalInterleavedu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
void pxrUpsampleHorizontalInterleavedu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
void pxrUpsample2DInterleavedu8V(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride);

// Pyramid creation (scale_pyramid_v.cpp).
int pxrPyramidCreateu8V(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                        pxrPyramidLevel* pyramid);
int pxrPyramidCreateu8_v2V(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid);
int pxrPyramidCreateu8_v3V(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid, uint32_t levelSize);
int pxrPyramidCreatef32V(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                         pxrPyramidLevel* pyramid);
int pxrPyramidCreatef32_v2V(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                            uint32_t numLevels, pxrPyramidLevel_v2* pyramid);

// Sobel gradient pyramids (scale_pyramid_gradient_v.cpp).
int pxrPyramidSobelGradientCreatei16V(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels);
int pxrPyramidSobelGradientCreatei8V(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                     pxrPyramidLevel* dyPyramid, uint32_t numLevels);
int pxrPyramidSobelGradientCreatef32V(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels);

// The vector Gaussian halving as kernel sets, for the pyramids.
namespace pxr::scale::gauss {
extern const DownKernels<uint8_t, uint16_t> kHalve5u8Vector;
extern const DownKernels<float, float> kHalve5f32Vector;
}  // namespace pxr::scale::gauss

PXR_VECTOR(PXR_ROW_ScaleDownBy2u8, pxrScaleDownBy2u8V)
PXR_VECTOR(PXR_ROW_ScaleDownBy4u8, pxrScaleDownBy4u8V)
PXR_VECTOR(PXR_ROW_ScaleDown3To2u8, pxrScaleDown3To2u8V)
PXR_VECTOR(PXR_ROW_ScaleDownMNu8, pxrScaleDownMNu8V)
PXR_VECTOR(PXR_ROW_ScaleDownMNInterleaveu8, pxrScaleDownMNInterleaveu8V)
PXR_VECTOR(PXR_ROW_ScaleDownNNu8, pxrScaleDownNNu8V)
PXR_VECTOR(PXR_ROW_ScaleDownu8, pxrScaleDownu8V)
PXR_VECTOR(PXR_ROW_ScaleDownBLu8, pxrScaleDownBLu8V)
PXR_VECTOR(PXR_ROW_Scaleu8, pxrScaleu8V)
PXR_VECTOR(PXR_ROW_Scaleu8_v2, pxrScaleu8_v2V)
PXR_VECTOR(PXR_ROW_ScaleDownBy2Gaussian5x5u8, pxrScaleDownBy2Gaussian5x5u8V)
PXR_VECTOR(PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2, pxrScaleDownBy2Gaussian5x5u8_v2V)
PXR_VECTOR(PXR_ROW_ScaleDownBy2Gaussian3x3u8, pxrScaleDownBy2Gaussian3x3u8V)
PXR_INTERNAL_VECTOR(PXR_IROW_ScaleDownBy2Gaussian5x5f32, pxrScaleDownBy2Gaussian5x5f32V)
PXR_INTERNAL_VECTOR(PXR_IROW_ScaleDownBy2Gaussian5x5f32_v2, pxrScaleDownBy2Gaussian5x5f32_v2V)
PXR_VECTOR(PXR_ROW_ScaleUpBy2Gaussian5x5u8, pxrScaleUpBy2Gaussian5x5u8V)
PXR_VECTOR(PXR_ROW_ScaleUpPolyu8, pxrScaleUpPolyu8V)
PXR_VECTOR(PXR_ROW_ScaleUpPolyInterleaveu8, pxrScaleUpPolyInterleaveu8V)
PXR_VECTOR(PXR_ROW_UpsampleVerticalu8, pxrUpsampleVerticalu8V)
PXR_VECTOR(PXR_ROW_UpsampleHorizontalu8, pxrUpsampleHorizontalu8V)
PXR_VECTOR(PXR_ROW_Upsample2Du8, pxrUpsample2Du8V)
PXR_VECTOR(PXR_ROW_UpsampleVerticalInterleavedu8, pxrUpsampleVerticalInterleavedu8V)
PXR_VECTOR(PXR_ROW_UpsampleHorizontalInterleavedu8, pxrUpsampleHorizontalInterleavedu8V)
PXR_VECTOR(PXR_ROW_Upsample2DInterleavedu8, pxrUpsample2DInterleavedu8V)
PXR_VECTOR(PXR_ROW_PyramidCreateu8, pxrPyramidCreateu8V)
PXR_VECTOR(PXR_ROW_PyramidCreateu8_v2, pxrPyramidCreateu8_v2V)
PXR_VECTOR(PXR_ROW_PyramidCreateu8_v3, pxrPyramidCreateu8_v3V)
PXR_VECTOR(PXR_ROW_PyramidCreatef32, pxrPyramidCreatef32V)
PXR_VECTOR(PXR_ROW_PyramidCreatef32_v2, pxrPyramidCreatef32_v2V)
PXR_VECTOR(PXR_ROW_PyramidSobelGradientCreatei16, pxrPyramidSobelGradientCreatei16V)
PXR_VECTOR(PXR_ROW_PyramidSobelGradientCreatei8, pxrPyramidSobelGradientCreatei8V)
PXR_VECTOR(PXR_ROW_PyramidSobelGradientCreatef32, pxrPyramidSobelGradientCreatef32V)
