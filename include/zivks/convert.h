/**
 * @file
 * Conversions between element types.
 */
#ifndef ZIVKS_CONVERT_H
#define ZIVKS_CONVERT_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup convert_widening Exact and widening conversions
 *
 * Nothing here saturates or takes a rounding mode: where a value has no exact counterpart it becomes the
 * nearest one, ties to even (in a program that changes the processor's rounding mode, the one of that mode).
 * Source and destination may be the same array only if their elements have the same width.
 *
 * The scaled forms always multiply. Where M is too large for the type of `dst` it is infinite, so that a
 * non-zero element gives an infinity of its sign and a zero element NaN; where it is too small it is 0.
 *
 * @{
 */

/** @name Exact conversions
 *  @{ */

/**
 * Converts each element; every value of the source type is represented exactly. Integers are not normalised:
 * 255 of `8u` becomes 255.0. A NaN stays a NaN.
 *
 * @param src  source array
 * @param dst  converted array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_8u32f(const uint8_t* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Convert_8s16s(const int8_t* src, int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Convert_8s32f(const int8_t* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Convert_16u32f(const uint16_t* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Convert_16s32s(const int16_t* src, int32_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Convert_16s32f(const int16_t* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Convert_32s64f(const int32_t* src, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f64f(const float* src, double* dst, int32_t len);

/** @} */

/** @name Rounding conversions
 *  To the nearest representable value, ties to even.
 *  @{ */

/**
 * Converts each element; values of more than 24 significant bits are rounded.
 *
 * @param src  source array
 * @param dst  converted array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32s32f(const int32_t* src, float* dst, int32_t len);

/**
 * Converts each element; values of more than 53 significant bits are rounded.
 *
 * @param src  source array
 * @param dst  converted array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64s64f(const int64_t* src, double* dst, int32_t len);

/**
 * Converts each element with rounding; a value beyond the range of `float` becomes an infinity of its sign,
 * and a NaN stays a NaN.
 *
 * @param src  source array
 * @param dst  converted array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64f32f(const double* src, float* dst, int32_t len);

/** @} */

/** @name Scaled conversions
 *  @{ */

/**
 * Converts each element to the type of `dst` and multiplies it there by the power of two M that `scale`
 * selects: `dst[i] = src[i] * M`. M is a number of the type of `dst`.
 *
 * @param src    source array
 * @param dst    converted and scaled array
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_16s32f_S(const int16_t* src, float* dst, int32_t len, double scale);

/** @copydoc ZIVKS_Convert_16s32f_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_16s64f_S(const int16_t* src, double* dst, int32_t len, double scale);

/** @copydoc ZIVKS_Convert_16s32f_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32s64f_S(const int32_t* src, double* dst, int32_t len, double scale);

/**
 * Like ZIVKS_Convert_16s32f_S(), except that an element of more than 24 significant bits is first rounded to
 * `float`.
 *
 * @param src    source array
 * @param dst    converted and scaled array
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32s32f_S(const int32_t* src, float* dst, int32_t len, double scale);

/** @} */

/** @} */

/**
 * @defgroup convert_rounded Floating point to integers
 *
 * `dst[i]` is `src[i] * M`, rounded as `rndMode` tells and then clamped at the bounds of its type. M is
 * the power of two that `scale` selects, a number of the type of `src`, and the product is rounded to that
 * type. NaN gives 0, and so does zero times an infinite M. No element value is an error.
 *
 * `rndMode` is compared as an unsigned number. One above #ZIVK_RND_AWAY gives #ZIVK_STS_ROUND_MODE_ERR if the
 * destination's type is signed and #ZIVK_STS_ROUND_RANGE_ERR if it is unsigned, before `scale` is looked at.
 *
 * Blocks and tails agree but for `double` and #ZIVK_RND_NEAR. There the tail, up to 7 elements for 8-bit
 * destinations and up to 3 for others, rounds a product that is no tie by adding 0.5 to its magnitude and
 * truncating the sum. So 0.49999999999999994, the number just below one half, becomes 1, and in
 * ZIVKS_Convert_64f64s_S() an odd product between 2^52 and 2^53 becomes its even neighbour away from zero.
 *
 * `dst` may be `src` where their elements have the same width.
 *
 * @{
 */

/** @name To unsigned integers
 *  @{ */

/**
 * Converts each element to an unsigned integer; negative values give 0.
 *
 * @param src      source array
 * @param dst      converted array
 * @param len      number of elements
 * @param rndMode  one of the `ZIVK_RND_` values
 * @param scale    divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR, #ZIVK_STS_ROUND_RANGE_ERR or
 *         #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f8u_S(const float* src, uint8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                           double scale);

/** @copydoc ZIVKS_Convert_32f8u_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f16u_S(const float* src, uint16_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/** @copydoc ZIVKS_Convert_32f8u_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64f8u_S(const double* src, uint8_t* dst, int32_t len,
                                           ZIVKRoundMode rndMode, double scale);

/** @copydoc ZIVKS_Convert_32f8u_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64f16u_S(const double* src, uint16_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/** @} */

/** @name To signed integers
 *  @{ */

/**
 * Converts each element to a signed integer.
 *
 * @param src      source array
 * @param dst      converted array
 * @param len      number of elements
 * @param rndMode  one of the `ZIVK_RND_` values
 * @param scale    divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR, #ZIVK_STS_ROUND_MODE_ERR or
 *         #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f8s_S(const float* src, int8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                           double scale);

/** @copydoc ZIVKS_Convert_32f8s_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f16s_S(const float* src, int16_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/** @copydoc ZIVKS_Convert_32f8s_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f32s_S(const float* src, int32_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/** @copydoc ZIVKS_Convert_32f8s_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64f8s_S(const double* src, int8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                           double scale);

/** @copydoc ZIVKS_Convert_32f8s_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64f16s_S(const double* src, int16_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/** @copydoc ZIVKS_Convert_32f8s_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64f32s_S(const double* src, int32_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/** @copydoc ZIVKS_Convert_32f8s_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64f64s_S(const double* src, int64_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/** @} */

/** @} */

/**
 * @defgroup convert_narrowing Narrowing integer conversions
 *
 * Results are clamped at the bounds of the destination's type. The scaled forms first multiply by the
 * power of two M that `scale` selects, and round; what takes a rounding mode and what is checked differs
 * from one to the other. `dst` may be `src` where their elements have the same width.
 *
 * @{
 */

/** @name Without a scale
 *  @{ */

/**
 * Clamps each element at the bounds of the destination's type.
 *
 * @param src  source array
 * @param dst  converted array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_8s8u(const int8_t* src, uint8_t* dst, int32_t len);

/** @copydoc ZIVKS_Convert_8s8u */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32s16s(const int32_t* src, int16_t* dst, int32_t len);

/** @} */

/** @name With a scale
 *  @{ */

/**
 * Scales, rounds and clamps each element. `rndMode` takes effect only where M is below 1; there every
 * value but #ZIVK_RND_ZERO and #ZIVK_RND_NEAR counts as #ZIVK_RND_AWAY, and none is refused.
 *
 * If `scale` is 2^-128 or less, whole blocks of 16 elements are shifted not by k, the logarithm of M, but
 * by its lowest byte taken as a signed number: to the right, half rounded up, if that is negative.
 * Elements of the tail still saturate unless they are zero.
 *
 * @param src      source array
 * @param dst      converted array
 * @param len      number of elements
 * @param rndMode  one of the `ZIVK_RND_` values
 * @param scale    divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_8u8s_S(const uint8_t* src, int8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                          double scale);

/**
 * Scales, rounds and clamps each element. `rndMode` is compared as an unsigned number and checked before
 * `scale`.
 *
 * @param src      source array
 * @param dst      converted array
 * @param len      number of elements
 * @param rndMode  one of the `ZIVK_RND_` values
 * @param scale    divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR, #ZIVK_STS_ROUND_MODE_ERR or
 *         #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_16s8s_S(const int16_t* src, int8_t* dst, int32_t len,
                                           ZIVKRoundMode rndMode, double scale);

/**
 * Like ZIVKS_Convert_16s8s_S(), except that each element is first converted to `double`, which rounds one
 * of more than 53 significant bits, and that with #ZIVK_RND_NEAR the last of an odd number of elements is
 * rounded as in the tails of @ref convert_rounded.
 *
 * @param src      source array
 * @param dst      converted array
 * @param len      number of elements
 * @param rndMode  one of the `ZIVK_RND_` values
 * @param scale    divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR, #ZIVK_STS_ROUND_MODE_ERR or
 *         #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_64s32s_S(const int64_t* src, int32_t* dst, int32_t len,
                                            ZIVKRoundMode rndMode, double scale);

/**
 * Scales each element, rounds it to nearest, ties to even, and clamps it. There is no rounding mode to
 * select.
 *
 * @param src    source array
 * @param dst    converted array
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32s16s_S(const int32_t* src, int16_t* dst, int32_t len, double scale);

/** @} */

/** @} */

/**
 * @defgroup convert_packed 24-bit samples
 *
 * A packed sample is three bytes, lowest byte first, and an array of `len` of them is `3 * len` bytes with no
 * alignment; nothing outside of these is read or written. Nothing is normalised: a sample stands for the
 * integer that it is, from 0 to 16777215 or, in two's complement, from -8388608 to 8388607. Source and
 * destination must not overlap.
 *
 * @{
 */

/** @name From packed samples
 *  @{ */

/**
 * Converts each unsigned sample, exactly.
 *
 * @param src  packed samples
 * @param dst  converted array
 * @param len  number of samples
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_24u32u(const uint8_t* src, uint32_t* dst, int32_t len);

/** @copydoc ZIVKS_Convert_24u32u */
ZIVKS_API ZIVKStatus ZIVKS_Convert_24u32f(const uint8_t* src, float* dst, int32_t len);

/**
 * Converts each signed sample, exactly. Unlike with unsigned samples, lengths of 1 and 2 are refused with
 * #ZIVK_STS_SIZE_ERR.
 *
 * @param src  packed samples
 * @param dst  converted array
 * @param len  number of samples, at least 3
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_24s32s(const uint8_t* src, int32_t* dst, int32_t len);

/** @copydoc ZIVKS_Convert_24s32s */
ZIVKS_API ZIVKStatus ZIVKS_Convert_24s32f(const uint8_t* src, float* dst, int32_t len);

/** @} */

/** @name To packed samples
 *  @{ */

/**
 * Multiplies each element by the power of two that `scale` selects, rounds the product to nearest, ties to
 * even, and clamps it at the bounds of a sample.
 *
 * If `scale` is 2^-128 or less, whole blocks of 8 elements are shifted not by k, the logarithm of the
 * multiplier, but by its lowest byte taken as a signed number: to the right, half rounded up, if that is
 * negative. Elements of the tail still saturate unless they are zero.
 *
 * @param src    source array
 * @param dst    packed samples
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32u24u_S(const uint32_t* src, uint8_t* dst, int32_t len, double scale);

/** @copydoc ZIVKS_Convert_32u24u_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32s24s_S(const int32_t* src, uint8_t* dst, int32_t len, double scale);

/**
 * Multiplies each element by the power of two that `scale` selects, a `float` like the product, rounds the
 * product to nearest, ties to even, and clamps it at the bounds of a sample. NaN gives 0, and so does zero
 * times a multiplier too large for `float`.
 *
 * @param src    source array
 * @param dst    packed samples
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f24u_S(const float* src, uint8_t* dst, int32_t len, double scale);

/** @copydoc ZIVKS_Convert_32f24u_S */
ZIVKS_API ZIVKStatus ZIVKS_Convert_32f24s_S(const float* src, uint8_t* dst, int32_t len, double scale);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
