/**
 * @file
 * Extreme values and their positions, element-wise extremes, counts, nearest matches, zero crossings.
 */
#ifndef ZIVKS_STATISTICS_H
#define ZIVKS_STATISTICS_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup extremes Extreme values
 *
 * Smallest and largest element of an array, or of its absolute values. Integer absolute values saturate:
 * -32768 counts as 32767, -2147483648 as 2147483647.
 *
 * The whole blocks of an array are examined first and the remaining elements, its tail, after them; an array
 * shorter than a block is all tail. In integer forms that makes no difference but for ZIVKS_MaxAbs_32s(); in
 * float forms it decides about NaN and zeros:
 *
 * - A block is 8 elements of `float` and 4 of `double`.
 * - Blocks propagate NaN, as the canonical quiet NaN, and order -0 below +0. In an array shorter than a
 *   block a NaN that is passed on keeps its bits, but for its sign in MaxAbs.
 * - The tail compares: a NaN never replaces the running value, nothing replaces a running NaN, and the two
 *   zeros are equal, so that the earlier one stays.
 *
 * @{
 */

/** @name Max
 *  @{ */

/**
 * Largest element. Float forms: NaN if one of the blocks' elements or `src[0]` is NaN; a NaN in the tail is
 * ignored.
 *
 * @param src   source array
 * @param len   number of elements
 * @param pMax  receives the largest element
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Max_16s(const int16_t* src, int32_t len, int16_t* pMax);
ZIVKS_API ZIVKStatus ZIVKS_Max_32s(const int32_t* src, int32_t len, int32_t* pMax);
ZIVKS_API ZIVKStatus ZIVKS_Max_32f(const float* src, int32_t len, float* pMax);
ZIVKS_API ZIVKStatus ZIVKS_Max_64f(const double* src, int32_t len, double* pMax);

/** @} */

/** @name Min
 *  @{ */

/**
 * Smallest element. Float forms: NaN if one of the blocks' elements or `src[0]` is NaN; a NaN in the tail is
 * ignored.
 *
 * @param src   source array
 * @param len   number of elements
 * @param pMin  receives the smallest element
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Min_16s(const int16_t* src, int32_t len, int16_t* pMin);
ZIVKS_API ZIVKStatus ZIVKS_Min_32s(const int32_t* src, int32_t len, int32_t* pMin);
ZIVKS_API ZIVKStatus ZIVKS_Min_32f(const float* src, int32_t len, float* pMin);
ZIVKS_API ZIVKStatus ZIVKS_Min_64f(const double* src, int32_t len, double* pMin);

/** @} */

/** @name MinMax
 *  @{ */

/**
 * Smallest and largest element. Float forms: both NaN if one of the blocks' elements or `src[0]` is NaN; a
 * NaN in the tail is ignored.
 *
 * @param src   source array
 * @param len   number of elements
 * @param pMin  receives the smallest element
 * @param pMax  receives the largest element
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinMax_8u(const uint8_t* src, int32_t len, uint8_t* pMin, uint8_t* pMax);
ZIVKS_API ZIVKStatus ZIVKS_MinMax_16u(const uint16_t* src, int32_t len, uint16_t* pMin, uint16_t* pMax);
ZIVKS_API ZIVKStatus ZIVKS_MinMax_16s(const int16_t* src, int32_t len, int16_t* pMin, int16_t* pMax);
ZIVKS_API ZIVKStatus ZIVKS_MinMax_32u(const uint32_t* src, int32_t len, uint32_t* pMin, uint32_t* pMax);
ZIVKS_API ZIVKStatus ZIVKS_MinMax_32s(const int32_t* src, int32_t len, int32_t* pMin, int32_t* pMax);
ZIVKS_API ZIVKStatus ZIVKS_MinMax_32f(const float* src, int32_t len, float* pMin, float* pMax);
ZIVKS_API ZIVKStatus ZIVKS_MinMax_64f(const double* src, int32_t len, double* pMin, double* pMax);

/** @} */

/** @name MaxAbs
 *  @{ */

/**
 * Largest absolute value.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMaxAbs  receives the result
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxAbs_16s(const int16_t* src, int32_t len, int16_t* pMaxAbs);

/**
 * Largest absolute value for `len` up to 7. From 8 elements on, it is the maximum of `src[0]`, with its sign,
 * and the absolute values of the elements from `src[8]` on: the elements 1 to 7 are never examined, and for
 * `len` 8 the result is `src[0]` itself, which may be negative.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMaxAbs  receives the result
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxAbs_32s(const int32_t* src, int32_t len, int32_t* pMaxAbs);

/**
 * Largest absolute value, from 8 elements on never below the smallest normal number, 1.17549435e-38: 8 zeros
 * give that number, 7 zeros give 0. NaN if one of the blocks' elements or `src[0]` is NaN; a NaN in the tail
 * is ignored.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMaxAbs  receives the result
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxAbs_32f(const float* src, int32_t len, float* pMaxAbs);

/**
 * Largest absolute value, from 4 elements on never below the smallest normal number, 2.2250738585072014e-308:
 * 4 zeros give that number, 3 zeros give 0. NaN if one of the blocks' elements or `src[0]` is NaN; a NaN in
 * the tail is ignored.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMaxAbs  receives the result
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxAbs_64f(const double* src, int32_t len, double* pMaxAbs);

/** @} */

/** @name MinAbs
 *  @{ */

/**
 * Smallest absolute value.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMinAbs  receives the result
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinAbs_16s(const int16_t* src, int32_t len, int16_t* pMinAbs);

/** @copydoc ZIVKS_MinAbs_16s */
ZIVKS_API ZIVKStatus ZIVKS_MinAbs_32s(const int32_t* src, int32_t len, int32_t* pMinAbs);

/**
 * Smallest absolute value, never above the largest finite number: infinities alone give that number. NaN if
 * one of the blocks' elements is NaN. A NaN in the tail is ignored, also as `src[0]` of an array shorter than
 * a block, where it differs from MaxAbs: an array of nothing but such NaNs gives the largest finite number.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMinAbs  receives the result
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinAbs_32f(const float* src, int32_t len, float* pMinAbs);

/** @copydoc ZIVKS_MinAbs_32f */
ZIVKS_API ZIVKStatus ZIVKS_MinAbs_64f(const double* src, int32_t len, double* pMinAbs);

/** @} */

/** @} */

/**
 * @defgroup extreme_positions Extreme values with position
 *
 * Smallest and largest element of an array, or of its absolute values, and the index where it stands. Among
 * equal elements the one with the lowest index wins. Integer absolute values saturate: -32768 counts as
 * 32767, -2147483648 as 2147483647.
 *
 * Float forms treat NaN and zeros in ways of their own. The whole blocks of an array, 8 elements of `float`
 * or 4 of `double`, are examined first and the remaining elements, its tail, after them; an array shorter
 * than a block is all tail.
 *
 * - A NaN in a block hides the whole block: its other elements take no part in the result.
 * - A NaN in the tail is passed over; the other elements of the tail count.
 * - Nothing beats a NaN in `src[0]`: the value is that NaN. The index is that of the first block's last
 *   element, 7 for `float` and 3 for `double`, and 0 in an array shorter than a block.
 * - -0 and +0 are equal, so that the first of them wins. But the value of a block that wins is its extreme in
 *   an order that puts -0 below +0, so that it can be the other zero than the one at the index.
 *
 * @{
 */

/** @name MaxIndx
 *  @{ */

/**
 * Largest element and its index.
 *
 * @param src    source array
 * @param len    number of elements
 * @param pMax   receives the largest element
 * @param pIndx  receives its index
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxIndx_16s(const int16_t* src, int32_t len, int16_t* pMax, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MaxIndx_32s(const int32_t* src, int32_t len, int32_t* pMax, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MaxIndx_32f(const float* src, int32_t len, float* pMax, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MaxIndx_64f(const double* src, int32_t len, double* pMax, int32_t* pIndx);

/** @} */

/** @name MinIndx
 *  @{ */

/**
 * Smallest element and its index.
 *
 * @param src    source array
 * @param len    number of elements
 * @param pMin   receives the smallest element
 * @param pIndx  receives its index
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinIndx_16s(const int16_t* src, int32_t len, int16_t* pMin, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinIndx_32s(const int32_t* src, int32_t len, int32_t* pMin, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinIndx_32f(const float* src, int32_t len, float* pMin, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinIndx_64f(const double* src, int32_t len, double* pMin, int32_t* pIndx);

/** @} */

/** @name MinMaxIndx
 *  @{ */

/**
 * Smallest and largest element and their indices, each found as ZIVKS_MinIndx and ZIVKS_MaxIndx would.
 *
 * @param src       source array
 * @param len       number of elements
 * @param pMin      receives the smallest element
 * @param pMinIndx  receives its index
 * @param pMax      receives the largest element
 * @param pMaxIndx  receives its index
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinMaxIndx_8u(const uint8_t* src, int32_t len, uint8_t* pMin, int32_t* pMinIndx,
                                         uint8_t* pMax, int32_t* pMaxIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinMaxIndx_16u(const uint16_t* src, int32_t len, uint16_t* pMin, int32_t* pMinIndx,
                                          uint16_t* pMax, int32_t* pMaxIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinMaxIndx_32u(const uint32_t* src, int32_t len, uint32_t* pMin, int32_t* pMinIndx,
                                          uint32_t* pMax, int32_t* pMaxIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinMaxIndx_16s(const int16_t* src, int32_t len, int16_t* pMin, int32_t* pMinIndx,
                                          int16_t* pMax, int32_t* pMaxIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinMaxIndx_32s(const int32_t* src, int32_t len, int32_t* pMin, int32_t* pMinIndx,
                                          int32_t* pMax, int32_t* pMaxIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinMaxIndx_32f(const float* src, int32_t len, float* pMin, int32_t* pMinIndx,
                                          float* pMax, int32_t* pMaxIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinMaxIndx_64f(const double* src, int32_t len, double* pMin, int32_t* pMinIndx,
                                          double* pMax, int32_t* pMaxIndx);

/** @} */

/** @name MaxAbsIndx
 *  @{ */

/**
 * Largest absolute value and the index of its element.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMaxAbs  receives the largest absolute value
 * @param pIndx    receives the index of its element
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxAbsIndx_16s(const int16_t* src, int32_t len, int16_t* pMaxAbs, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MaxAbsIndx_32s(const int32_t* src, int32_t len, int32_t* pMaxAbs, int32_t* pIndx);

/** @} */

/** @name MinAbsIndx
 *  @{ */

/**
 * Smallest absolute value and the index of its element.
 *
 * @param src      source array
 * @param len      number of elements
 * @param pMinAbs  receives the smallest absolute value
 * @param pIndx    receives the index of its element
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinAbsIndx_16s(const int16_t* src, int32_t len, int16_t* pMinAbs, int32_t* pIndx);
ZIVKS_API ZIVKStatus ZIVKS_MinAbsIndx_32s(const int32_t* src, int32_t len, int32_t* pMinAbs, int32_t* pIndx);

/** @} */

/** @} */

/**
 * @defgroup every_extreme Element-wise extremes
 *
 * The larger or the smaller of each two elements. `dst` may be either of the sources.
 *
 * Float forms: the whole blocks of the arrays, 4 elements of `float` or 2 of `double`, and the elements
 * behind them, the tail, treat NaN and zeros in different ways.
 *
 * - Blocks propagate NaN: a NaN in either source gives a NaN, the bits of which are not specified. -0 is
 *   below +0.
 * - The tail gives `src1[i]` where it is at or above `src2[i]` (MinEvery: at or below), and else `src2[i]`.
 *   So a NaN in `src1` is dropped, a NaN in `src2` is kept, and of two zeros `src1[i]` is taken.
 *
 * @{
 */

/** @name MaxEvery
 *  @{ */

/**
 * The larger of each two elements.
 *
 * @param src1  first source array
 * @param src2  second source array
 * @param dst   receives the larger elements
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxEvery_32f(const float* src1, const float* src2, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MaxEvery_64f(const double* src1, const double* src2, double* dst, int32_t len);

/** @} */

/** @name MaxEvery, in place
 *  @{ */

/**
 * The larger of each two elements, in place. `srcDst` is the second source: in the tail of float arrays a NaN
 * in `srcDst` stays and a NaN in `src` disappears.
 *
 * @param src     first source array
 * @param srcDst  second source array, receives the larger elements
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MaxEvery_16s_I(const int16_t* src, int16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MaxEvery_32s_I(const int32_t* src, int32_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MaxEvery_32f_I(const float* src, float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MaxEvery_64f_I(const double* src, double* srcDst, int32_t len);

/** @} */

/** @name MinEvery
 *  @{ */

/**
 * The smaller of each two elements.
 *
 * @param src1  first source array
 * @param src2  second source array
 * @param dst   receives the smaller elements
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinEvery_32f(const float* src1, const float* src2, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MinEvery_64f(const double* src1, const double* src2, double* dst, int32_t len);

/** @} */

/** @name MinEvery, in place
 *  @{ */

/**
 * The smaller of each two elements, in place. `srcDst` is the second source: in the tail of float arrays a
 * NaN in `srcDst` stays and a NaN in `src` disappears.
 *
 * @param src     first source array
 * @param srcDst  second source array, receives the smaller elements
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_MinEvery_16s_I(const int16_t* src, int16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MinEvery_32s_I(const int32_t* src, int32_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MinEvery_32f_I(const float* src, float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_MinEvery_64f_I(const double* src, double* srcDst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup count_in_range Counting
 * @{
 */

/**
 * Counts the elements between two bounds, both excluded.
 *
 * @param src         source array
 * @param len         number of elements
 * @param pCount      receives the number of elements above `lowerBound` and below `upperBound`; 0, without a
 *                    look at the elements, if no integer lies between the two
 * @param lowerBound  what elements have to be above
 * @param upperBound  what elements have to be below
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_CountInRange_32s(const int32_t* src, int32_t len, int32_t* pCount,
                                            int32_t lowerBound, int32_t upperBound);

/** @} */

/**
 * @defgroup find_nearest Nearest match
 *
 * The entry of a table that is nearest to a value, and its index. The table has to be in ascending order,
 * which is not checked. The search is a bisection that ends where it meets the value: of two values equally
 * near the smaller one is taken, and among equal entries the one that the bisection meets.
 *
 * @{
 */

/**
 * Finds the entry nearest to one value.
 *
 * @param val       value to look for
 * @param pNearest  receives the nearest entry
 * @param pIndx     receives its index
 * @param table     entries in ascending order
 * @param tableLen  number of entries
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_FindNearestOne_16u(uint16_t val, uint16_t* pNearest, int32_t* pIndx,
                                              const uint16_t* table, int32_t tableLen);

/**
 * Finds the entries nearest to each of many values. `dst` may be `src`; neither `dst` nor `dstIndx` may
 * overlap `table`.
 *
 * @param src       values to look for
 * @param dst       receives the nearest entries
 * @param dstIndx   receives their indices
 * @param len       number of values
 * @param table     entries in ascending order
 * @param tableLen  number of entries
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_FindNearest_16u(const uint16_t* src, uint16_t* dst, int32_t* dstIndx, int32_t len,
                                           const uint16_t* table, int32_t tableLen);

/** @} */

/**
 * @defgroup replace_nan Replacing NaN
 * @{
 */

/**
 * Replaces every NaN by a constant; all other elements keep their bits.
 *
 * @param val     constant
 * @param srcDst  array
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_ReplaceNAN_32f_I(float val, float* srcDst, int32_t len);

/** @copydoc ZIVKS_ReplaceNAN_32f_I */
ZIVKS_API ZIVKStatus ZIVKS_ReplaceNAN_64f_I(double val, double* srcDst, int32_t len);

/** @} */

/**
 * @defgroup zero_crossing Zero crossings
 *
 * How often a signal changes its sign from one sample to the next. `kind` tells what a pair of neighbours
 * contributes:
 *
 * - 0: 1 if their product is negative. A pair with a zero sample never counts.
 * - 1: 1 if their sign bits differ.
 * - 2: half the difference of their signs, taken as -1, 0 and 1: a jump across zero counts 1, a step onto
 *   zero or off it one half.
 *
 * The checks are, in this order: null pointers, `len`, `kind`.
 *
 * The count is made in `float` and may be inexact above 16777216, in kind 2 above 8388608: it is the sum of
 * four lanes (eight in kind 2 of the 16-bit form), pair i going to lane i modulo their number, to which the
 * last pairs, which fill no whole block of lanes, are added one by one. In kind 2 the lanes themselves are
 * `float` sums of doubled contributions.
 *
 * @{
 */

/**
 * Counts zero crossings of float samples.
 *
 * For kind 0 the product is rounded to `float`: one that underflows to zero does not count, nor does a NaN.
 * For kind 1 the sign bit counts as it stands: -0 and +0 differ, a NaN goes by its sign bit. For kind 2, -0
 * counts as 0; a NaN makes the result NaN if its pair lies in a block of 4 pairs, and counts as negative in
 * the pairs behind the last whole block.
 *
 * @param src     samples
 * @param len     number of samples; 0 gives #ZIVK_STS_SIZE_ERR. A negative value is not refused
 *             but taken as the unsigned 32-bit number of the same bits
 * @param pValue  receives the count; it is not divided by `len`, and it is 0 for a single sample
 * @param kind    0, 1 or 2
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_ZC_TYPE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_ZeroCrossing_32f(const float* src, int32_t len, float* pValue, int32_t kind);

/**
 * Counts zero crossings of 16-bit samples.
 *
 * Exact for each pair; 0 has the sign of the positive numbers in kind 1. For kind 2 the result is truncated
 * to a whole number: the half that a single contact with zero leaves is dropped, which
 * ZIVKS_ZeroCrossing_32f() keeps.
 *
 * @param src     samples
 * @param len     number of samples; 0 gives #ZIVK_STS_SIZE_ERR. A negative value is not refused
 *             but taken as the unsigned 32-bit number of the same bits
 * @param pValue  receives the count; it is not divided by `len`, and it is 0 for a single sample
 * @param kind    0, 1 or 2
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_ZC_TYPE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_ZeroCrossing_16s32f(const int16_t* src, int32_t len, float* pValue, int32_t kind);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
