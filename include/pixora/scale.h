/* Pixora scaling and pyramids. */
#ifndef PIXORA_SCALE_H
#define PIXORA_SCALE_H

#include "pixora/types.h"

PXR_EXTERN_C_BEGIN

/* Strides are in bytes; a stride of 0 means packed rows. Functions without
   stride arguments read and write packed rows. "Interleave(d)" forms work on
   two-channel interleaved planes (CbCr): their widths count pixel pairs.
   Edge rules, weights and rounding of every member: docs/scale.md. */

/* Interpolation of pxrScaleu8_v2. */
typedef enum {
    PIXORA_INTERPOLATION_NEAREST = 0,
    PIXORA_INTERPOLATION_BILINEAR = 1,
    PIXORA_INTERPOLATION_AREA = 2
} pxrInterpolationType;

/* Size of each pyramid level from the one above (the _v3 pyramid functions):
   half rounded down (as the older generations) or half rounded up. */
typedef enum {
    PIXORA_PYRAMID_LEVEL_FLOOR = 0,
    PIXORA_PYRAMID_LEVEL_CEIL = 1
} pxrPyramidLevelSize;

/* Halving by averaging: each output pixel is the truncated mean of a 2x2
   block, (a + b + c + d) >> 2. Output (width / 2) x (height / 2); an odd last
   column or row is not read. */
PXR_API void pxrScaleDownBy2u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst);
PXR_API void pxrScaleDownBy2u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                  uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Quartering by averaging: the truncated mean of each 4x4 block, sum >> 4.
   Output (width / 4) x (height / 4). */
PXR_API void pxrScaleDownBy4u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst);
PXR_API void pxrScaleDownBy4u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                  uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Reduction 3:2 by area: every 3x3 block gives 2x2 pixels weighted by the
   area each source pixel covers, rounded. Output (2 width / 3) x (2 height / 3),
   rounded down. */
PXR_API void pxrScaleDown3To2u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Nearest-neighbour reduction to dstWidth x dstHeight (no larger than the
   source): the source pixel under each output pixel's centre. */
PXR_API void pxrScaleDownNNu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                              uint32_t srcStride, uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight,
                              uint32_t dstStride);

/* Reduction to any smaller size by exact area averaging, rounded. */
PXR_API void pxrScaleDownu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint8_t* dst,
                            uint32_t dstWidth, uint32_t dstHeight);
PXR_API void pxrScaleDownu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                               uint32_t srcStride, uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight,
                               uint32_t dstStride);

/* Bilinear reduction to any smaller size (centre-aligned, 7-bit weights). */
PXR_API void pxrScaleDownBLu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                              uint32_t srcStride, uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight,
                              uint32_t dstStride);

/* M-by-N block reduction: a count table assigns whole source columns (and
   rows) to each destination column (and row); each output pixel is the
   rounded mean of its block. The interleaved form averages each channel of
   a two-channel plane. Returns 0; 3 for bad arguments; 5 without scratch
   memory (nothing is written on 3 and 5). */
PXR_API int pxrScaleDownMNu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
PXR_API int pxrScaleDownMNInterleaveu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                       uint32_t srcStride, uint8_t* dst, uint32_t dstWidth,
                                       uint32_t dstHeight, uint32_t dstStride);

/* Scaling to any size: pxrScaleu8 is bilinear; pxrScaleu8_v2 takes the
   interpolation (area falls back to bilinear where the output is larger
   in either direction). Return 0; 3 for bad arguments; 5 without scratch
   memory (nothing is written on 3 and 5). */
PXR_API int pxrScaleu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                       uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride);
PXR_API int pxrScaleu8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                          uint8_t* dst, uint32_t dstWidth, uint32_t dstHeight, uint32_t dstStride,
                          pxrInterpolationType interpolation);

/* Doubling in both directions with a 4-tap cubic (Catmull-Rom) polyphase
   filter, edges replicated, clamped to 0..255. Output (2 width) x (2 height). */
PXR_API void pxrScaleUpPolyu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                              uint8_t* dst, uint32_t dstStride);
PXR_API void pxrScaleUpPolyInterleaveu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Gaussian doubling: 5-tap binomial interpolation, (sum + 32) >> 6, edges
   mirrored about the edge sample. Output (2 width) x (2 height). */
PXR_API void pxrScaleUpBy2Gaussian5x5u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint8_t* dst);
PXR_API void pxrScaleUpBy2Gaussian5x5u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                           uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Gaussian halving: the 5x5 binomial kernel (sum 256) at every second row
   and column, (sum + 128) >> 8, edges mirrored about the edge sample.
   Output (width / 2) x (height / 2). */
PXR_API void pxrScaleDownBy2Gaussian5x5u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                          uint8_t* dst);
PXR_API void pxrScaleDownBy2Gaussian5x5u8_v2(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                             uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
/* The same with the 3x3 kernel [1 2 1] x [1 2 1], (sum + 8) >> 4. Returns 0
   or 3 for bad arguments. */
PXR_API int pxrScaleDownBy2Gaussian3x3u8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                         uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
/* The 5x5 halving on floats: the weighted sum times 1/256. */
PXR_API void pxrScaleDownBy2Gaussian5x5f32(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                           float* dst);
PXR_API void pxrScaleDownBy2Gaussian5x5f32_v2(const float* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, float* dst, uint32_t dstStride);

/* Up-sampling by 2 with the centre-aligned [1 3] / [3 1] filter (chroma
   up-sampling), edges replicated: vertical doubles the height, horizontal
   the width, 2D both ((9 p + 3 q + 3 r + s + 8) >> 4). */
PXR_API void pxrUpsampleVerticalu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                   uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrUpsampleHorizontalu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                     uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrUpsample2Du8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight, uint32_t srcStride,
                             uint8_t* dst, uint32_t dstStride);
PXR_API void pxrUpsampleVerticalInterleavedu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                              uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrUpsampleHorizontalInterleavedu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                                uint32_t srcStride, uint8_t* dst, uint32_t dstStride);
PXR_API void pxrUpsample2DInterleavedu8(const uint8_t* src, uint32_t srcWidth, uint32_t srcHeight,
                                        uint32_t srcStride, uint8_t* dst, uint32_t dstStride);

/* Pyramids. Level buffers come from pxrMemAlloc (alignment 16) and go back
   through pxrMemFree. Level k is level k-1 halved (shift right by 1).
   Allocation: 0, or -1 when a buffer cannot be had or an argument is bad. */
PXR_API int pxrPyramidAllocate(pxrPyramidLevel* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                               uint32_t bytesPerPixel, uint32_t numLevels, uint32_t allocateBase);
PXR_API int pxrPyramidAllocate_v2(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels,
                                  uint32_t allocateBase);
/* As _v2, with every allocated level's stride rounded up to rowAlignment (0
   or a power of two up to 128) and the level size rule. */
PXR_API int pxrPyramidAllocate_v3(pxrPyramidLevel_v2* pyramid, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t bytesPerPixel, uint32_t numLevels,
                                  uint32_t allocateBase, uint32_t rowAlignment, pxrPyramidLevelSize levelSize);
/* Frees levels startLevel .. numLevels-1 and sets their pointers to null. */
PXR_API void pxrPyramidDelete(pxrPyramidLevel* pyramid, uint32_t numLevels, uint32_t startLevel);
PXR_API void pxrPyramidDelete_v2(pxrPyramidLevel_v2* pyramid, uint32_t numLevels, uint32_t startLevel);

/* Fills an allocated pyramid by repeated Gaussian halving (5x5). Level 0
   points at the base image. Returns 0, or -1 when a level has no buffer. A
   zero argument or sides not divisible by 2^(numLevels-1) end the process. */
PXR_API int pxrPyramidCreateu8(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight,
                               uint32_t numLevels, pxrPyramidLevel* pyramid);
PXR_API int pxrPyramidCreateu8_v2(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t numLevels, pxrPyramidLevel_v2* pyramid);
/* With PIXORA_PYRAMID_LEVEL_CEIL, levels round up and any size is taken. */
PXR_API int pxrPyramidCreateu8_v3(const uint8_t* base, uint32_t baseWidth, uint32_t baseHeight,
                                  uint32_t baseStride, uint32_t numLevels, pxrPyramidLevel_v2* pyramid,
                                  pxrPyramidLevelSize levelSize);
PXR_API int pxrPyramidCreatef32(const float* base, uint32_t baseWidth, uint32_t baseHeight,
                                uint32_t numLevels, pxrPyramidLevel* pyramid);
PXR_API int pxrPyramidCreatef32_v2(const float* base, uint32_t baseWidth, uint32_t baseHeight,
                                   uint32_t baseStride, uint32_t numLevels, pxrPyramidLevel_v2* pyramid);

/* Sobel gradient pyramids: each dx/dy level gets the size of its image
   level and holds that level's Sobel gradients normalised by 8, as
   pxrImageGradientSobelPlanars16 (s8, f32) writes them: (width-2) x
   (height-2), packed from the start of the buffer. Returns 0, or -1 at the
   first level whose dx, dy (or image) buffer is null. */
PXR_API int pxrPyramidSobelGradientCreatei16(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                             pxrPyramidLevel* dyPyramid, uint32_t numLevels);
PXR_API int pxrPyramidSobelGradientCreatei8(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                            pxrPyramidLevel* dyPyramid, uint32_t numLevels);
PXR_API int pxrPyramidSobelGradientCreatef32(const pxrPyramidLevel* imagePyramid, pxrPyramidLevel* dxPyramid,
                                             pxrPyramidLevel* dyPyramid, uint32_t numLevels);

PXR_EXTERN_C_END

#endif
