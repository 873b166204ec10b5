// Reference implementations: scaling and pyramids, and their rows.
#pragma once

#include <cstdint>

#include "frame/registry.h"
#include "pixora/types.h"

// Block averages (scale_block.cpp).
void pxrScaleDownBy2u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
void pxrScaleDownBy4u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                        uint8_t* dst, uint32_t dstStride);
void pxrScaleDown3To2u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                         uint8_t* dst, uint32_t dstStride);

// M-by-N block reduction (scale_mn.cpp).
int pxrScaleDownMNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                      uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
int pxrScaleDownMNInterleaveu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);

// Resampling to a given size (scale_resample.cpp).
void pxrScaleDownNNu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
void pxrScaleDownu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                     uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
void pxrScaleDownBLu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                       uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
int pxrScaleu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
int pxrScaleu8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride, uint8_t* dst,
                   uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride, uint32_t interpolation);

// Gaussian halving and doubling (scale_gauss.cpp).
void pxrScaleDownBy2Gaussian5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst);
void pxrScaleDownBy2Gaussian5x5u8_v2C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                      uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
int pxrScaleDownBy2Gaussian3x3u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                  uint8_t* dst, uint32_t dstStride);
void pxrScaleDownBy2Gaussian5x5f32C(const float* src, uint32_t srcWidth, uint32_t srcHeight, float* dst);
void pxrScaleDownBy2Gaussian5x5f32_v2C(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, float* dst, uint32_t dstStride);
void pxrScaleUpBy2Gaussian5x5u8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride);

// Doubling: polyphase up-scaling and up-sampling (scale_up.cpp).
void pxrScaleUpPolyu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint8_t* dst, uint32_t dstStride);
void pxrScaleUpPolyInterleaveu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride);
void pxrUpsampleVerticalu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                            uint8_t* dst, uint32_t dstStride);
void pxrUpsampleHorizontalu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
void pxrUpsample2Du8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                      uint8_t* dst, uint32_t dstStride);
void pxrUpsampleVerticalInterleavedu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
void pxrUpsampleHorizontalInterleavedu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
void pxrUpsample2DInterleavedu8C(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                                 uint8_t* dst, uint32_t dstStride);

// Pyramids (scale_pyramid.cpp).
int pxrPyramidAllocateC(pxrPyramidLevel* pyramid, uint32_t baseWidth, uint32_t baseHeight, uint32_t bytesPerPixel,
                        uint32_t numLevels, uint32_t allocateBase);
int pxrPyramidAllocate_v2C(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                           uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels, uint32_t allocateBase);
int pxrPyramidAllocate_v3C(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                           uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels, uint32_t allocateBase,
                           uint32_t rowAlignment, uint32_t levelSize);
void pxrPyramidDeleteC(pxrPyramidLevel* pyramid, uint32_t numLevels, uint32_t startLevel);
void pxrPyramidDelete_v2C(pxrPyramidLevel_v2* pyramid, uint32_t numLevels, uint32_t startLevel);
int pxrPyramidCreateu8C(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                        pxrPyramidLevel* pyramid);
int pxrPyramidCreateu8_v2C(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid);
int pxrPyramidCreateu8_v3C(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                           uint32_t numLevels, pxrPyramidLevel_v2* pyramid, uint32_t levelSize);
int pxrPyramidCreatef32C(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t numLevels,
                         pxrPyramidLevel* pyramid);
int pxrPyramidCreatef32_v2C(const float* base, uint32_t baseWidth, uint32_t baseHeight, uint32_t baseStride,
                            uint32_t numLevels, pxrPyramidLevel_v2* pyramid);

// Sobel gradient pyramids (scale_pyramid_gradient.cpp).
int pxrPyramidSobelGradientCreatei16C(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels);
int pxrPyramidSobelGradientCreatei8C(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                     pxrPyramidLevel* dyPyramid, uint32_t numLevels);
int pxrPyramidSobelGradientCreatef32C(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                      pxrPyramidLevel* dyPyramid, uint32_t numLevels);

PXR_REFERENCE(PXR_ROW_ScaleDownBy2u8, pxrScaleDownBy2u8C)
PXR_REFERENCE(PXR_ROW_ScaleDownBy4u8, pxrScaleDownBy4u8C)
PXR_REFERENCE(PXR_ROW_ScaleDown3To2u8, pxrScaleDown3To2u8C)
PXR_REFERENCE(PXR_ROW_ScaleDownMNu8, pxrScaleDownMNu8C)
PXR_REFERENCE(PXR_ROW_ScaleDownMNInterleaveu8, pxrScaleDownMNInterleaveu8C)
PXR_REFERENCE(PXR_ROW_ScaleDownNNu8, pxrScaleDownNNu8C)
PXR_REFERENCE(PXR_ROW_ScaleDownu8, pxrScaleDownu8C)
PXR_REFERENCE(PXR_ROW_ScaleDownBLu8, pxrScaleDownBLu8C)
PXR_REFERENCE(PXR_ROW_Scaleu8, pxrScaleu8C)
PXR_REFERENCE(PXR_ROW_Scaleu8_v2, pxrScaleu8_v2C)
PXR_REFERENCE(PXR_ROW_ScaleDownBy2Gaussian5x5u8, pxrScaleDownBy2Gaussian5x5u8C)
PXR_REFERENCE(PXR_ROW_ScaleDownBy2Gaussian5x5u8_v2, pxrScaleDownBy2Gaussian5x5u8_v2C)
PXR_REFERENCE(PXR_ROW_ScaleDownBy2Gaussian3x3u8, pxrScaleDownBy2Gaussian3x3u8C)
PXR_INTERNAL_REFERENCE(PXR_IROW_ScaleDownBy2Gaussian5x5f32, pxrScaleDownBy2Gaussian5x5f32C)
PXR_INTERNAL_REFERENCE(PXR_IROW_ScaleDownBy2Gaussian5x5f32_v2, pxrScaleDownBy2Gaussian5x5f32_v2C)
PXR_REFERENCE(PXR_ROW_ScaleUpBy2Gaussian5x5u8, pxrScaleUpBy2Gaussian5x5u8C)
PXR_REFERENCE(PXR_ROW_ScaleUpPolyu8, pxrScaleUpPolyu8C)
PXR_REFERENCE(PXR_ROW_ScaleUpPolyInterleaveu8, pxrScaleUpPolyInterleaveu8C)
PXR_REFERENCE(PXR_ROW_UpsampleVerticalu8, pxrUpsampleVerticalu8C)
PXR_REFERENCE(PXR_ROW_UpsampleHorizontalu8, pxrUpsampleHorizontalu8C)
PXR_REFERENCE(PXR_ROW_Upsample2Du8, pxrUpsample2Du8C)
PXR_REFERENCE(PXR_ROW_UpsampleVerticalInterleavedu8, pxrUpsampleVerticalInterleavedu8C)
PXR_REFERENCE(PXR_ROW_UpsampleHorizontalInterleavedu8, pxrUpsampleHorizontalInterleavedu8C)
PXR_REFERENCE(PXR_ROW_Upsample2DInterleavedu8, pxrUpsample2DInterleavedu8C)
PXR_REFERENCE(PXR_ROW_PyramidAllocate, pxrPyramidAllocateC)
PXR_REFERENCE(PXR_ROW_PyramidAllocate_v2, pxrPyramidAllocate_v2C)
PXR_REFERENCE(PXR_ROW_PyramidAllocate_v3, pxrPyramidAllocate_v3C)
PXR_REFERENCE(PXR_ROW_PyramidDelete, pxrPyramidDeleteC)
PXR_REFERENCE(PXR_ROW_PyramidDelete_v2, pxrPyramidDelete_v2C)
PXR_REFERENCE(PXR_ROW_PyramidCreateu8, pxrPyramidCreateu8C)
PXR_REFERENCE(PXR_ROW_PyramidCreateu8_v2, pxrPyramidCreateu8_v2C)
PXR_REFERENCE(PXR_ROW_PyramidCreateu8_v3, pxrPyramidCreateu8_v3C)
PXR_REFERENCE(PXR_ROW_PyramidCreatef32, pxrPyramidCreatef32C)
PXR_REFERENCE(PXR_ROW_PyramidCreatef32_v2, pxrPyramidCreatef32_v2C)
PXR_REFERENCE(PXR_ROW_PyramidSobelGradientCreatei16, pxrPyramidSobelGradientCreatei16C)
PXR_REFERENCE(PXR_ROW_PyramidSobelGradientCreatei8, pxrPyramidSobelGradientCreatei8C)
PXR_REFERENCE(PXR_ROW_PyramidSobelGradientCreatef32, pxrPyramidSobelGradientCreatef32C)
