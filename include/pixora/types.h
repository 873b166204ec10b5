/* Pixora shared types: enumerations and records used across families. */
#ifndef PIXORA_TYPES_H
#define PIXORA_TYPES_H

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#define PXR_API __declspec(dllexport)
#else
#define PXR_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
#define PXR_EXTERN_C_BEGIN extern "C" {
#define PXR_EXTERN_C_END }
#else
#define PXR_EXTERN_C_BEGIN
#define PXR_EXTERN_C_END
#endif

PXR_EXTERN_C_BEGIN

/* Operation modes. Extended requests have bit 31 set. */
typedef enum {
    PIXORA_OP_LOW_POWER = 0,
    PIXORA_OP_PERFORMANCE = 1,
    PIXORA_OP_CPU_OFFLOAD = 2,
    PIXORA_OP_CPU_PERFORMANCE = 3
} pxrOperationMode;

/* Options of pxrSetOperationModeExt. Only KDSP and GPU are accepted here. */
typedef enum {
    PIXORA_OP_EXT_KDSP = 0,
    PIXORA_OP_EXT_GPU = 1,
    PIXORA_OP_EXT_ADSP = 2,
    PIXORA_OP_EXT_CDSP = 3,
    PIXORA_OP_EXT_MDSP = 4
} pxrOperationModeExt;

/* Border handling; always passed with a one-byte border value. */
typedef enum {
    PIXORA_BORDER_DEFAULT = 0,
    PIXORA_BORDER_CONSTANT = 1,
    PIXORA_BORDER_REPLICATE = 2
} pxrBorderType;

/* Overflow policy of the arithmetic family. */
typedef enum {
    PIXORA_POLICY_WRAP = 0,
    PIXORA_POLICY_SATURATE = 1
} pxrOverflowPolicy;

/* Status values shared by every status-returning operation. */
typedef enum {
    PIXORA_STATUS_OK = 0,
    PIXORA_STATUS_BAD_PARAM = 3,
    PIXORA_STATUS_NO_SCRATCH = 5,
    PIXORA_STATUS_DSP_RESTARTED = 104,
    PIXORA_STATUS_UNSUPPORTED = 32768
} pxrStatus;

/* Implementation kinds, the columns of the function table. */
typedef enum {
    PIXORA_KIND_CPU = 0,
    PIXORA_KIND_SIMDX = 1,
    PIXORA_KIND_KDSP = 2,
    PIXORA_KIND_GPU = 3,
    PIXORA_KIND_ADSP = 4,
    PIXORA_KIND_CDSP = 5,
    PIXORA_KIND_MDSP = 6
} pxrImplKind;

/* One level of an image pyramid. */
typedef struct {
    void* ptr;
    uint32_t width;
    uint32_t height;
} pxrPyramidLevel;

/* One level of an image pyramid with an explicit stride in bytes. */
typedef struct {
    void* ptr;
    uint32_t width;
    uint32_t height;
    uint32_t stride;
} pxrPyramidLevel_v2;

PXR_EXTERN_C_END

#endif
