/**
 * @file
 * Radix sorts, of keys and of their positions.
 */
#ifndef ZIVKS_SORT_RADIX_H
#define ZIVKS_SORT_RADIX_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup radix_sorts Radix sorts
 *
 * Sorts of an array in place, in time proportional to its length whatever the data. They take a handle, which
 * is made once for a length and a type:
 *
 *     void* policy;
 *     ZIVKS_SortRadixInit(len, ZIVK_DT_32F, &policy);
 *     ZIVKS_SortRadixAscend_32f_I(samples, len, policy);   // as often as wanted
 *     ZIVKS_SortRadixRelease(policy);
 *
 * A handle is working memory and holds nothing between calls, neither the length nor the type. It serves
 * every sort, rising or falling, of keys of the same width: handles of 8 and 16 bits for any length, others
 * for up to the length they were made for. A longer array overruns a handle, which nothing detects. At a time
 * one call may use it. A sort allocates nothing and takes at most 26 KiB of stack.
 *
 * | Keys    | Bytes of a handle |
 * |---------|-------------------|
 * | 8 bits  | 1024              |
 * | 16 bits | 262144            |
 * | 32 bits | 4 `len`           |
 * | 64 bits | 8 `len`           |
 *
 * @section radix_floats Order of floats
 *
 * Floats are ordered by their bits. Ascend gives
 *
 * 1. the NaNs with the sign set, by falling payload,
 * 2. negative infinity and the negative numbers, by rising value,
 * 3. +0 and the positive numbers by rising value, up to infinity,
 * 4. the NaNs without the sign, by rising payload,
 *
 * and Descend the exact reverse. There are two exceptions:
 *
 * - **An array that holds -0** has the elements with the sign in the opposite order. Ascend: -0, the negative
 *   numbers by falling value, negative infinity, the NaNs with the sign by rising payload; then the elements
 *   without the sign as above. Descend is the exact reverse. So {-0, -1, -2, 1} stays as it is under Ascend,
 *   but {-1, -2, 1} becomes {-2, -1, 1}.
 * - **An array whose elements all have the sign, none of them -0,** has its end sought in memory. Ascend
 *   reads the word behind the array, Descend the word before it, and goes on in that direction while sign and
 *   exponent of a word have all bits set (`0xFF800000` or `0xFFF0000000000000`: negative infinity and NaNs with
 *   the sign). **The caller keeps the word behind (Descend: before) such an array readable, and words that have
 *   these bits writable:** they change places with the array. After Ascend they stand in reverse order where
 *   the array began, and the sorted array follows them; after Descend the sorted array begins where they began,
 *   and they follow it in reverse order. A 0 on each side of such an array keeps it in place.
 *
 * To sort by value alone, make every -0 a +0 first: ZIVKS_AddC_32f_I() with 0 does so.
 *
 * During a sort the array holds intermediate states; no other thread may read it.
 *
 * @{
 */

/**
 * Makes a handle for radix sorts.
 *
 * @param len       length of the longest array to be sorted
 * @param dataType  type of its elements: any of #ZIVKDataType
 * @param policy    receives the handle, to be released by ZIVKS_SortRadixRelease()
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR, #ZIVK_STS_DATA_TYPE_ERR, or
 * #ZIVK_STS_MALLOC_ERR if there is no memory or the handle would exceed 2147483647 bytes
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixInit(int32_t len, ZIVKDataType dataType, void** policy);

/**
 * Releases a handle by ZIVKS_Free().
 *
 * @param policy  a handle of ZIVKS_SortRadixInit()
 * @return #ZIVK_STS_NO_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixRelease(void* policy);

/** @name SortRadixAscend
 *  @{ */

/**
 * Sorts an array, lowest element first. Floats: in the order above, with its exceptions.
 *
 * @param srcDst  array to sort
 * @param len     number of elements
 * @param policy  handle for elements of this width
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_8u_I(uint8_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_16u_I(uint16_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_16s_I(int16_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_32u_I(uint32_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_32s_I(int32_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_32f_I(float* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_64u_I(uint64_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_64s_I(int64_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixAscend_64f_I(double* srcDst, int32_t len, void* policy);

/** @} */

/** @name SortRadixDescend
 *  @{ */

/**
 * Sorts an array, highest element first. Floats: in the order above, with its exceptions.
 *
 * @param srcDst  array to sort
 * @param len     number of elements
 * @param policy  handle for elements of this width
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_8u_I(uint8_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_16u_I(uint16_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_16s_I(int16_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_32u_I(uint32_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_32s_I(int32_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_32f_I(float* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_64u_I(uint64_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_64s_I(int64_t* srcDst, int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixDescend_64f_I(double* srcDst, int32_t len, void* policy);

/** @} */

/** @} */

/**
 * @defgroup radix_index_sorts Radix sorts of positions
 *
 * They leave the keys alone and tell in which order they come: `dstIdx[p]` receives the position, counted
 * from 0, of the key that belongs at place p. Keys with the same bits keep their order in both directions,
 * the first one first, so that Descend is not Ascend read backwards.
 *
 * Keys stand `srcStride` bytes apart, at any address, so that a field of an array of records can be sorted
 * by. Keys of 8 and 16 bits have to lie within 2147483647 bytes of the first one: where (`len` - 1)
 * `srcStride` is more, they are counted where they are, but then read from (`len` - 1) `srcStride` modulo
 * 2^32, as a signed number, downwards. That memory may lie before `src`, and if it holds other keys than those
 * that were counted, the result is no permutation and may be written before `dstIdx`: for such spans use a type
 * of 32 bits.
 *
 * A handle is made, used and released like those of @ref radix_sorts. The keys must not change during a call, and
 * neither `dstIdx` nor the handle may overlap them. A sort allocates nothing and takes at most 26 KiB of stack.
 *
 * | Keys    | Bytes of a handle |
 * |---------|-------------------|
 * | 8 bits  | 1024              |
 * | 16 bits | 262144            |
 * | 32 bits | 12 `len`          |
 * | 64 bits | 24 `len`          |
 *
 * Floats are ordered by their bits, without exceptions. Ascend gives
 *
 * 1. the NaNs with the sign set, by falling payload,
 * 2. negative infinity and the negative numbers, by rising value,
 * 3. -0, then +0,
 * 4. the positive numbers by rising value, up to infinity,
 * 5. the NaNs without the sign, by rising payload,
 *
 * and Descend the reverse.
 *
 * @{
 */

/**
 * Makes a handle for radix sorts of positions.
 *
 * @param len       the largest number of keys to be sorted
 * @param dataType  type of the keys: any of #ZIVKDataType
 * @param policy    receives the handle, to be released by ZIVKS_SortRadixIndexRelease()
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR, #ZIVK_STS_DATA_TYPE_ERR, or
 * #ZIVK_STS_MALLOC_ERR if there is no memory or the handle would exceed 2147483647 bytes
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexInit(int32_t len, ZIVKDataType dataType, void** policy);

/**
 * Releases a handle by ZIVKS_Free().
 *
 * @param policy  a handle of ZIVKS_SortRadixIndexInit()
 * @return #ZIVK_STS_NO_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexRelease(void* policy);

/** @name SortRadixIndexAscend
 *  @{ */

/**
 * Positions of the keys in rising order: `dstIdx[p]` is the position of the key that belongs at place p.
 *
 * @param src        the first key
 * @param srcStride  bytes from one key to the next, at least the size of a key
 * @param dstIdx     receives `len` positions
 * @param len        number of keys
 * @param policy     handle for keys of this width
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_8u(const uint8_t* src, int32_t srcStride, int32_t* dstIdx,
                                                   int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_16u(const uint16_t* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_16s(const int16_t* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_32u(const uint32_t* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_32s(const int32_t* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_32f(const float* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_64u(const uint64_t* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_64s(const int64_t* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexAscend_64f(const double* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);

/** @} */

/** @name SortRadixIndexDescend
 *  @{ */

/**
 * Positions of the keys in falling order: `dstIdx[p]` is the position of the key that belongs at place p.
 *
 * @param src        the first key
 * @param srcStride  bytes from one key to the next, at least the size of a key
 * @param dstIdx     receives `len` positions
 * @param len        number of keys
 * @param policy     handle for keys of this width
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_8u(const uint8_t* src, int32_t srcStride, int32_t* dstIdx,
                                                    int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_16u(const uint16_t* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_16s(const int16_t* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_32u(const uint32_t* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_32s(const int32_t* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_32f(const float* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_64u(const uint64_t* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_64s(const int64_t* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);
ZIVKS_API ZIVKStatus ZIVKS_SortRadixIndexDescend_64f(const double* src, int32_t srcStride, int32_t* dstIdx,
                                                     int32_t len, void* policy);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
