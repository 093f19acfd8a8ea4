/**
 * @file
 * The four services that libzivks_base.so imports by name. libzivk_core.so is a ready implementation; an
 * application may bring its own instead, which has to keep to what stands here. No service throws an exception:
 * the library has no code that would release what it holds.
 */
#ifndef ZIVK_CORE_H
#define ZIVK_CORE_H

#include <stdint.h>
#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/** @defgroup services Core services
 *  Imported by the library, supplied by libzivk_core.so or by the application.
 *  @{ */

/**
 * Allocates memory.
 *
 * @param size  bytes, at least 1
 * @return memory that suits any element type, uninitialised, or null. The implementation in libzivk_core.so
 *         aligns it to 64 bytes and gives null for a size below 1; the library relies on neither.
 */
ZIVKS_API void* ZIVK_Malloc(int32_t size);

/**
 * Releases memory.
 *
 * @param ptr  what ZIVK_Malloc() returned, or null, for which nothing is done: the library passes null where an
 * in-place filter got no working memory.
 */
ZIVKS_API void ZIVK_Free(void* ptr);

/** @return the version of the library that supplies the services; the record stays valid. */
ZIVKS_API const ZIVKLibVersion* ZIVK_GetLibVersion(void);

/**
 * @param status  any value
 * @return a constant text that tells what the status means; unknown values have a text of their own.
 */
ZIVKS_API const char* ZIVK_GetStatusString(ZIVKStatus status);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
