/**
 * @file
 * Allocation, version and status texts.
 */
#ifndef ZIVKS_CORE_H
#define ZIVKS_CORE_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup memory Allocation, version and status texts
 *
 * Thin wrappers over the four services of zivk_core.h. They add the element type and the check of the length,
 * and hand results on as they are. Calls from several threads at once are as safe as the services are.
 *
 * @{
 */

/** @name Malloc: memory for an array
 *  @{ */

/**
 * Allocates memory for `len` elements of the type that the name tells.
 *
 * The byte size handed to ZIVK_Malloc() is `len` times the element size, neither rounded up nor aligned, and
 * its result is returned unchanged.
 *
 * @param len  number of elements, at least 1; the size in bytes must not exceed 2147483647
 * @return uninitialised memory, to be released by ZIVKS_Free(), or null. Null stands for every failure: `len`
 * out of range, in which case ZIVK_Malloc() is not called, as much as lack of memory.
 */
ZIVKS_API uint8_t* ZIVKS_Malloc_8u(int32_t len);
ZIVKS_API int8_t* ZIVKS_Malloc_8s(int32_t len);
ZIVKS_API ZIVK8sc* ZIVKS_Malloc_8sc(int32_t len);
ZIVKS_API uint16_t* ZIVKS_Malloc_16u(int32_t len);
ZIVKS_API int16_t* ZIVKS_Malloc_16s(int32_t len);
ZIVKS_API ZIVK16sc* ZIVKS_Malloc_16sc(int32_t len);
ZIVKS_API uint32_t* ZIVKS_Malloc_32u(int32_t len);
ZIVKS_API int32_t* ZIVKS_Malloc_32s(int32_t len);
ZIVKS_API ZIVK32sc* ZIVKS_Malloc_32sc(int32_t len);
ZIVKS_API float* ZIVKS_Malloc_32f(int32_t len);
ZIVKS_API ZIVK32fc* ZIVKS_Malloc_32fc(int32_t len);
ZIVKS_API uint64_t* ZIVKS_Malloc_64u(int32_t len);
ZIVKS_API int64_t* ZIVKS_Malloc_64s(int32_t len);
ZIVKS_API ZIVK64sc* ZIVKS_Malloc_64sc(int32_t len);
ZIVKS_API double* ZIVKS_Malloc_64f(int32_t len);
ZIVKS_API ZIVK64fc* ZIVKS_Malloc_64fc(int32_t len);

/** @} */

/**
 * Releases memory by ZIVK_Free(), which gets `ptr` untested: whether null is allowed is the service's matter,
 * and libzivk_core.so allows it.
 *
 * @param ptr  what a `ZIVKS_Malloc_*` function returned
 */
ZIVKS_API void ZIVKS_Free(void* ptr);

/**
 * @return the version record that ZIVK_GetLibVersion() supplies; not to be released.
 */
ZIVKS_API const ZIVKLibVersion* ZIVKS_GetLibVersion(void);

/**
 * @param status  a status, or any other value
 * @return the constant text that ZIVK_GetStatusString() has for it; not to be released.
 */
ZIVKS_API const char* ZIVKS_GetStatusString(ZIVKStatus status);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
