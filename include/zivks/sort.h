/**
 * @file
 * Sorts without work memory, sorts that tell where elements came from, and selection of the largest elements.
 */
#ifndef ZIVKS_SORT_H
#define ZIVKS_SORT_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup sort Sort
 *
 * Sorts an array in place.
 *
 * - `8u` counts values.
 * - `16u` and `16s` count values from 4096 elements on, in 256 KiB of memory from ZIVKS_Malloc_32s() that are
 *   given back before the call returns. Shorter arrays, and any array where that memory is not to be had, go to
 *   the C library's `qsort`; the result is the same.
 * - `32s`, `32f` and `64f` go to `qsort`, which may allocate memory of its own. Its comparison tells whether
 *   the first element has to come after the second, and never that it has to come before it.
 *
 * In float forms -0 and +0 are equal, and a NaN is equal to everything: without a NaN the array ends up
 * sorted, with zeros of both signs in no stated order; where NaNs end up, and how far the array is sorted
 * then, is up to the C library.
 *
 * The counting forms take some 4 KiB of stack.
 *
 * @{
 */

/** @name SortAscend
 *  @{ */

/**
 * Sorts by rising values.
 *
 * @param srcDst  array to be sorted
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR; lack of memory is not an error
 */
ZIVKS_API ZIVKStatus ZIVKS_SortAscend_8u_I(uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortAscend_16u_I(uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortAscend_16s_I(int16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortAscend_32s_I(int32_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortAscend_32f_I(float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortAscend_64f_I(double* srcDst, int32_t len);

/** @} */

/** @name SortDescend
 *  @{ */

/**
 * Sorts by falling values.
 *
 * @param srcDst  array to be sorted
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR; lack of memory is not an error
 */
ZIVKS_API ZIVKStatus ZIVKS_SortDescend_8u_I(uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortDescend_16u_I(uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortDescend_16s_I(int16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortDescend_32s_I(int32_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortDescend_32f_I(float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortDescend_64f_I(double* srcDst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup sort_index SortIndex
 *
 * Sorts an array in place and tells where its elements came from: after the call `srcDst[i]` is what was
 * `srcDst[dstIdx[i]]` before it.
 *
 * A quicksort without work memory does it. The order of equal elements is not defined and may differ from call
 * to call: pivots are drawn from the C library's `rand`, which each call seeds by `srand(time(NULL))`, for the
 * whole process. Calls on several threads at once disturb each other's draws, not the order of the values. The
 * depth of recursion depends on the draws and is at worst `len`.
 *
 * In float forms -0 and +0 are equal, and a NaN is equal to everything, so that an array with a NaN may come
 * out sorted in part only. It is still a permutation of the input, and `dstIdx` tells which.
 *
 * @{
 */

/** @name SortIndexAscend
 *  @{ */

/**
 * Sorts by rising values.
 *
 * @param srcDst  array to be sorted
 * @param dstIdx  receives the former index of each element, `len` integers
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortIndexAscend_8u_I(uint8_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexAscend_16u_I(uint16_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexAscend_16s_I(int16_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexAscend_32s_I(int32_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexAscend_32f_I(float* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexAscend_64f_I(double* srcDst, int32_t* dstIdx, int32_t len);

/** @} */

/** @name SortIndexDescend
 *  @{ */

/**
 * Sorts by falling values.
 *
 * @param srcDst  array to be sorted
 * @param dstIdx  receives the former index of each element, `len` integers
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SortIndexDescend_8u_I(uint8_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexDescend_16u_I(uint16_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexDescend_16s_I(int16_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexDescend_32s_I(int32_t* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexDescend_32f_I(float* srcDst, int32_t* dstIdx, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SortIndexDescend_64f_I(double* srcDst, int32_t* dstIdx, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup top_k TopK
 *
 * The k largest of an array of keys, the largest first, with their positions. Init makes a handle, any number
 * of TopK calls use it one after another, Release frees it.
 *
 * `method` tells how:
 *
 * | `method` | How                                                                          | Equal keys           |
 * |----------|------------------------------------------------------------------------------|----------------------|
 * | 1        | quick selection at random pivots                                             | in no defined order  |
 * | 2        | radix selection                                                              | lowest position first|
 * | 0        | method 2 if `k` is above 32 and `len` is from 2049 to 134217727, else method 1 | as there           |
 *
 * Method 1 draws its pivots from the C library's `rand`, which each call seeds by `srand(time(NULL))`, for the
 * whole process. Calls on several threads at once disturb each other's draws. Where several keys equal the k-th
 * largest, the keys that are larger come before them, but not necessarily in order. The depth of recursion
 * depends on the draws and is at worst `len`. Method 2 and calls that are refused draw and seed nothing; method
 * 2 takes at most 9 KiB of stack.
 *
 * A handle holds entries and nothing about how it was made. It suits any call that takes the method and the
 * `len` of its Init, or fewer; note that method 0 chooses anew in each call. Its size in bytes is rounded up to
 * a multiple of 16:
 *
 * | `method` | `32s`             | `32f`             |
 * |----------|-------------------|-------------------|
 * | 1        | 8 `len`           | 8 `len`           |
 * | 2        | 16 `len` + 1024   | 16 `len` + 2048   |
 *
 * Keys are read at a distance of `srcStride` bytes. `len` is the number of keys and, at four bytes each, the
 * span that they are taken from: with `srcStride` above 4, only n = `len` * 4 / `srcStride` keys, rounded up,
 * begin within it. The last of them is read whole, also where it reaches beyond the span. The other `len` - n
 * keys count as zeros with the positions from n on; they come behind the keys that are not negative.
 *
 * `float` keys: NaNs are left out, and of each sign all infinities but one, that at the lowest position. If there
 * is any such key, equal keys may come in another order than that of their positions. Method 1 takes -0 and +0
 * for equal, method 2 puts +0 first; zeros of a stride above 4 come behind -0 in method 1, before it in method
 * 2.
 *
 * @{
 */

/** @name TopKInit
 *  @{ */

/**
 * Makes a handle and presets the results: all positions are -1 and all values the least of their type, for
 * `float` the least finite one.
 *
 * @param len     number of keys
 * @param dstVal  receives `k` preset values
 * @param dstIdx  receives `k` preset positions
 * @param k       number of results
 * @param method  0, 1 or 2
 * @param policy  receives the handle, to be released by ZIVKS_TopKRelease()
 * @return #ZIVK_STS_NO_ERR; #ZIVK_STS_NULL_PTR_ERR; #ZIVK_STS_SIZE_ERR if `len` or `k` is below 1;
 *         #ZIVK_STS_TOPK_METHOD_ERR; #ZIVK_STS_BUFFER_SIZE_ERR if the size of the handle, before it is rounded
 *         up, is 0x7FFFFFF0 bytes or more; #ZIVK_STS_MALLOC_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_TopKInit_32s(int32_t len, int32_t* dstVal, int32_t* dstIdx, int32_t k,
                                        int32_t method, void** policy);
ZIVKS_API ZIVKStatus ZIVKS_TopKInit_32f(int32_t len, float* dstVal, int32_t* dstIdx, int32_t k,
                                        int32_t method, void** policy);

/** @} */

/** @name TopK
 *  @{ */

/**
 * The `k` largest keys. If fewer take part, fewer results are written and the others stay as they are.
 *
 * @param src        first key
 * @param offset     added to every position
 * @param srcStride  distance of the keys in bytes; any, also one at which keys overlap
 * @param len        number of keys; with a `srcStride` above 4, fewer are read
 * @param dstVal     receives the largest keys, up to `k`
 * @param dstIdx     receives their positions plus `offset`
 * @param k          number of results
 * @param method     0, 1 or 2
 * @param policy     handle
 * @return #ZIVK_STS_NO_ERR; #ZIVK_STS_NULL_PTR_ERR; #ZIVK_STS_SIZE_ERR if `offset` is negative or `offset` +
 *         `len` exceeds 2147483647; #ZIVK_STS_TOPK_STRIDE_ERR if `srcStride` is below 1; #ZIVK_STS_SIZE_ERR
 *         if `len` or `k` is; #ZIVK_STS_TOPK_METHOD_ERR; checked in this order
 */
ZIVKS_API ZIVKStatus ZIVKS_TopK_32s(const int32_t* src, int32_t offset, int32_t srcStride, int32_t len,
                                    int32_t* dstVal, int32_t* dstIdx, int32_t k, int32_t method,
                                    void* policy);
ZIVKS_API ZIVKStatus ZIVKS_TopK_32f(const float* src, int32_t offset, int32_t srcStride, int32_t len,
                                    float* dstVal, int32_t* dstIdx, int32_t k, int32_t method, void* policy);

/** @} */

/**
 * Frees a handle of ZIVKS_TopKInit_32s() or ZIVKS_TopKInit_32f(), by ZIVKS_Free() and without a test.
 *
 * @param policy  handle
 * @return #ZIVK_STS_NO_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_TopKRelease(void* policy);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
