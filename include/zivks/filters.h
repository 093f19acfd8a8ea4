/**
 * @file
 * Median filters, and sampling up and down.
 */
#ifndef ZIVKS_FILTERS_H
#define ZIVKS_FILTERS_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup median_filters Median filters
 *
 * Each sample becomes the median of the `maskLen` samples that end at that sample. Single clicks disappear,
 * while edges stay sharp.
 *
 * An even `maskLen` is reduced by one: `m`, the length that takes effect, is `maskLen` or `maskLen` - 1. The work is
 * then done, and #ZIVK_STS_EVEN_MASK_WARN says so. A caller who asks whether the work was done tests for this
 * status, too.
 *
 *     dst[i] = the middle one of x[i - m + 1] ... x[i] in ascending order
 *
 * where `x` is `src`, preceded by `m` - 1 samples of a delay line. The filter never looks ahead: its output lags
 * behind the median of a centred window by (`m` - 1) / 2 samples.
 *
 * @section median_handle Handle
 *
 * A filter works in a handle, which is made once for the longest mask and a type:
 *
 *     ZIVKFilterMedianPolicy* policy;
 *     ZIVKS_FilterMedianInit(5, ZIVK_DT_16S, &policy);
 *     ZIVKS_FilterMedian_16s(src, dst, len, 5, NULL, NULL, policy);   // as often as wanted
 *     ZIVKS_FilterMedianRelease(policy);
 *
 * A handle takes the bytes of `m` elements, rounded up to a multiple of 16, and holds nothing between calls,
 * neither the length nor the type. A call with a longer mask or a wider type overruns it, which nothing detects.
 * At a time one call may use it. A filter takes at most 32 KiB of stack.
 *
 * Masks of 3, 5, 7 and 9 are fastest. The time of longer ones grows with the mask, up to 455 elements of `double`, 682 of
 * `float` or `int32_t`, 910 of `int16_t` and 1092 of `uint8_t`. Beyond, each output takes a sort of `m` elements,
 * which takes dozens of times as long. Those sorts allocate if they are of 4096 elements of 16 bits or more; see
 * ZIVKS_SortAscend_16s_I().
 *
 * @section median_delay_lines Streams and delay lines
 *
 * A delay line holds the `m` - 1 samples that precede a block, oldest first. A stream in blocks is filtered as if
 * it were one array if each call gets the line that the call before it wrote. One array can serve as both:
 *
 *     ZIVKS_FilterMedian_32f(block0, dst0, len, 5, NULL, line, policy);   // the stream begins
 *     ZIVKS_FilterMedian_32f(block1, dst1, len, 5, line, line, policy);   // and goes on
 *
 * Without an incoming line the stream is thought to be preceded by copies of `src[0]`. Each block holds at least
 * `maskLen` samples.
 *
 * @section median_floats NaN and zeros
 *
 * Medians of floats are found in two ways, which differ if there is a NaN, or zeros of both signs, in the window.
 * A block is 4 elements of `float` or 2 of `double`; `count` is `len` - (`m` - 1) rounded down to whole blocks.
 *
 * | `m`        | Outputs                            | If the window holds a NaN | Zeros          |
 * |------------|------------------------------------|---------------------------|----------------|
 * | 3, 5, 7, 9 | from `m` - 1 to `count` - 1        | NaN                       | -0 is below +0 |
 * | 3, 5, 7, 9 | all others                         | the middle of the sort    | equal          |
 * | any other  | all                                | the middle of the sort    | equal          |
 *
 * "The middle of the sort" is that of ZIVKS_SortAscend_32f_I() or ZIVKS_SortAscend_64f_I(): with a NaN any of
 * the window's values, with zeros any of the zeros. So a NaN can disappear or spread to up to `m` outputs, and the
 * results of a stream with NaNs depend on how it is cut into blocks. Samples without NaNs, infinities included, give
 * equal numbers however they are cut.
 *
 * @{
 */

/**
 * Makes a handle for median filters.
 *
 * | dataType                     | Longest mask |
 * |------------------------------|--------------|
 * | #ZIVK_DT_8U                  | 2147483631   |
 * | #ZIVK_DT_16S                 | 1073741815   |
 * | #ZIVK_DT_32S, #ZIVK_DT_32F   | 536870907    |
 * | #ZIVK_DT_64F                 | 268435453    |
 *
 * @param maskLen   length of the longest mask, at least 1
 * @param dataType  type of the samples: one of the table
 * @param policy    receives the handle, to be released by ZIVKS_FilterMedianRelease()
 * @return #ZIVK_STS_NO_ERR; #ZIVK_STS_EVEN_MASK_WARN for an even `maskLen`, with which the handle is as valid;
 * #ZIVK_STS_NULL_PTR_ERR; #ZIVK_STS_MASK_SIZE_ERR; #ZIVK_STS_DATA_TYPE_ERR; or #ZIVK_STS_MALLOC_ERR if there is no
 * memory
 */
ZIVKS_API ZIVKStatus ZIVKS_FilterMedianInit(int32_t maskLen, ZIVKDataType dataType,
                                            ZIVKFilterMedianPolicy** policy);

/**
 * Releases a handle by ZIVKS_Free().
 *
 * @param policy  a handle of ZIVKS_FilterMedianInit()
 * @return #ZIVK_STS_NO_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_FilterMedianRelease(ZIVKFilterMedianPolicy* policy);

/** @name FilterMedian
 *  @{ */

/**
 * Filters an array. Source and destination may not overlap.
 *
 * @param src      samples
 * @param dst      receives as many medians
 * @param len      number of samples, at least `maskLen`
 * @param maskLen  length of the mask, at least 1
 * @param dlySrc   the `m` - 1 samples that precede `src`, oldest first; null for copies of `src[0]`
 * @param dlyDst   receives the last `m` - 1 samples of `src`; may be null, and may be `dlySrc`
 * @param policy   handle
 * @return #ZIVK_STS_NO_ERR; #ZIVK_STS_EVEN_MASK_WARN if the work was done with `maskLen` - 1;
 * #ZIVK_STS_NULL_PTR_ERR; #ZIVK_STS_SIZE_ERR; or #ZIVK_STS_MASK_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_8u(const uint8_t* src, uint8_t* dst, int32_t len, int32_t maskLen,
                                           const uint8_t* dlySrc, uint8_t* dlyDst,
                                           ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_16s(const int16_t* src, int16_t* dst, int32_t len, int32_t maskLen,
                                            const int16_t* dlySrc, int16_t* dlyDst,
                                            ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_32s(const int32_t* src, int32_t* dst, int32_t len, int32_t maskLen,
                                            const int32_t* dlySrc, int32_t* dlyDst,
                                            ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_32f(const float* src, float* dst, int32_t len, int32_t maskLen,
                                            const float* dlySrc, float* dlyDst,
                                            ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_64f(const double* src, double* dst, int32_t len, int32_t maskLen,
                                            const double* dlySrc, double* dlyDst,
                                            ZIVKFilterMedianPolicy* policy);

/** @} */

/** @name FilterMedian in place
 *  @{ */

/**
 * Filters an array in place, with a copy of the array that is allocated for the time of the call. The outgoing delay
 * line holds samples from before the filter.
 *
 * @param srcDst   samples, which become medians
 * @param len      number of samples, at least `maskLen`
 * @param maskLen  length of the mask, at least 1
 * @param dlySrc   the `m` - 1 samples that precede `srcDst`, oldest first; null for copies of `srcDst[0]`
 * @param dlyDst   receives the last `m` - 1 samples of `srcDst`; may be null, and may be `dlySrc`
 * @param policy   handle
 * @return #ZIVK_STS_NO_ERR; #ZIVK_STS_EVEN_MASK_WARN if the work was done with `maskLen` - 1;
 * #ZIVK_STS_NULL_PTR_ERR, also if the copy could not be allocated; #ZIVK_STS_SIZE_ERR; or #ZIVK_STS_MASK_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_8u_I(uint8_t* srcDst, int32_t len, int32_t maskLen,
                                             const uint8_t* dlySrc, uint8_t* dlyDst,
                                             ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_16s_I(int16_t* srcDst, int32_t len, int32_t maskLen,
                                              const int16_t* dlySrc, int16_t* dlyDst,
                                              ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_32s_I(int32_t* srcDst, int32_t len, int32_t maskLen,
                                              const int32_t* dlySrc, int32_t* dlyDst,
                                              ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_32f_I(float* srcDst, int32_t len, int32_t maskLen,
                                              const float* dlySrc, float* dlyDst,
                                              ZIVKFilterMedianPolicy* policy);
ZIVKS_API ZIVKStatus ZIVKS_FilterMedian_64f_I(double* srcDst, int32_t len, int32_t maskLen,
                                              const double* dlySrc, double* dlyDst,
                                              ZIVKFilterMedianPolicy* policy);

/** @} */

/** @} */

/**
 * @defgroup sampling Sampling up and down
 *
 * Changes the rate of a signal by an integer factor. There is no filtering of any kind: whoever wants no
 * aliases, or no gaps, filters before sampling down or after sampling up.
 *
 * A signal is thought of as groups of `factor` samples, of which sampling up fills one and sampling down keeps one:
 * the one at the position `phase` in its group. A signal can be processed in blocks of any length with one variable
 * for the phase.
 *
 * @{
 */

/** @name SampleUp
 *  @{ */

/**
 * Puts each sample into a group of its own, at the position `phase`, among zeros:
 * `dst[*phase + i * factor] = src[i]`. With `factor` 3 and `phase` 1, {1, 2} becomes {0, 1, 0, 0, 2, 0}.
 *
 * @param src     samples
 * @param srcLen  number of samples
 * @param dst     receives `srcLen` * `factor` samples; may not overlap `src`
 * @param dstLen  receives their number
 * @param factor  length of a group, at least 1; srcLen * (factor + 1) may be at most 2147483647
 * @param phase   position in a group, from 0 to `factor` - 1. It stays what it is, since the output ends with a
 *                group
 * @return #ZIVK_STS_NO_ERR; #ZIVK_STS_NULL_PTR_ERR; #ZIVK_STS_SIZE_ERR; #ZIVK_STS_SAMPLE_FACTOR_ERR, also if the
 * output would be too long; or #ZIVK_STS_SAMPLE_PHASE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SampleUp_16s(const int16_t* src, int32_t srcLen, int16_t* dst, int32_t* dstLen,
                                        int32_t factor, const int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleUp_32f(const float* src, int32_t srcLen, float* dst, int32_t* dstLen,
                                        int32_t factor, const int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleUp_64f(const double* src, int32_t srcLen, double* dst, int32_t* dstLen,
                                        int32_t factor, const int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleUp_16sc(const ZIVK16sc* src, int32_t srcLen, ZIVK16sc* dst, int32_t* dstLen,
                                         int32_t factor, const int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleUp_32fc(const ZIVK32fc* src, int32_t srcLen, ZIVK32fc* dst, int32_t* dstLen,
                                         int32_t factor, const int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleUp_64fc(const ZIVK64fc* src, int32_t srcLen, ZIVK64fc* dst, int32_t* dstLen,
                                         int32_t factor, const int32_t* phase);

/** @} */

/** @name SampleDown
 *  @{ */

/**
 * Keeps of each group the sample at the position `phase`: `dst[k] = src[*phase + k * factor]`. With `factor` 3
 * and `phase` 1, {0, 1, 2, 3, 4, 5, 6} becomes {1, 4}, and `phase` becomes 0: the next sample that is kept is the
 * first one of the next block.
 *
 * @param src     samples
 * @param srcLen  number of samples
 * @param dst     receives the samples that are kept: (`srcLen` - `*phase`) / `factor`, rounded up, or none; may not
 *                overlap `src`
 * @param dstLen  receives their number, which may be 0
 * @param factor  length of a group, at least 1
 * @param phase   position in a group, from 0 to `factor` - 1; receives that for the next block
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR, #ZIVK_STS_SAMPLE_FACTOR_ERR or
 * #ZIVK_STS_SAMPLE_PHASE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SampleDown_16s(const int16_t* src, int32_t srcLen, int16_t* dst, int32_t* dstLen,
                                          int32_t factor, int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleDown_32f(const float* src, int32_t srcLen, float* dst, int32_t* dstLen,
                                          int32_t factor, int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleDown_64f(const double* src, int32_t srcLen, double* dst, int32_t* dstLen,
                                          int32_t factor, int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleDown_16sc(const ZIVK16sc* src, int32_t srcLen, ZIVK16sc* dst,
                                           int32_t* dstLen, int32_t factor, int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleDown_32fc(const ZIVK32fc* src, int32_t srcLen, ZIVK32fc* dst,
                                           int32_t* dstLen, int32_t factor, int32_t* phase);
ZIVKS_API ZIVKStatus ZIVKS_SampleDown_64fc(const ZIVK64fc* src, int32_t srcLen, ZIVK64fc* dst,
                                           int32_t* dstLen, int32_t factor, int32_t* phase);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
