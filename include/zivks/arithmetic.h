/**
 * @file
 * Addition, subtraction, absolute value and multiply-accumulate.
 */
#ifndef ZIVKS_ARITHMETIC_H
#define ZIVKS_ARITHMETIC_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup arithmetic Arithmetic
 *
 * Element-wise: `dst` may be any source whose elements have the same width, and sources may be the same
 * array.
 *
 * All Sub functions subtract their first array from their second: `src2[i] - src1[i]`, in place
 * `srcDst[i] - src[i]`. SubC is `src[i] - val`, SubCRev is `val - src[i]`.
 */

/**
 * @defgroup arithmetic_float Floating-point addition and subtraction
 * @ingroup arithmetic
 *
 * Each element is one IEEE 754 operation in its own precision and in the processor's current rounding mode;
 * complex elements are treated part by part. Infinities and signed zeros follow IEEE 754; a NaN result has an
 * unspecified sign and payload.
 *
 * @{
 */

/** @name Add
 *  @{ */

/**
 * Adds two arrays: `dst[i] = src1[i] + src2[i]`.
 *
 * @param src1  first summand
 * @param src2  second summand
 * @param dst   sum
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_32f(const float* src1, const float* src2, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Add_64f(const double* src1, const double* src2, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Add_32fc(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Add_64fc(const ZIVK64fc* src1, const ZIVK64fc* src2, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name Add, in place
 *  @{ */

/**
 * Adds an array to another: `srcDst[i] = src[i] + srcDst[i]`.
 *
 * @param src     summand
 * @param srcDst  summand and sum
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_32f_I(const float* src, float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Add_64f_I(const double* src, double* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Add_32fc_I(const ZIVK32fc* src, ZIVK32fc* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Add_64fc_I(const ZIVK64fc* src, ZIVK64fc* srcDst, int32_t len);

/** @} */

/** @name Sub
 *  @{ */

/**
 * Subtracts the first array from the second: `dst[i] = src2[i] - src1[i]`.
 *
 * @param src1  subtrahend: what is taken away
 * @param src2  minuend: what it is taken from
 * @param dst   difference
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_32f(const float* src1, const float* src2, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Sub_64f(const double* src1, const double* src2, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Sub_32fc(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Sub_64fc(const ZIVK64fc* src1, const ZIVK64fc* src2, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name Sub, in place
 *  @{ */

/**
 * Subtracts an array from another: `srcDst[i] = srcDst[i] - src[i]`.
 *
 * @param src     subtrahend
 * @param srcDst  minuend and difference
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_32f_I(const float* src, float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Sub_64f_I(const double* src, double* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Sub_32fc_I(const ZIVK32fc* src, ZIVK32fc* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Sub_64fc_I(const ZIVK64fc* src, ZIVK64fc* srcDst, int32_t len);

/** @} */

/** @name AddC
 *  @{ */

/**
 * Adds a constant: `dst[i] = src[i] + val`.
 *
 * @param src  source array
 * @param val  constant operand
 * @param dst  result
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_32f(const float* src, float val, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AddC_64f(const double* src, double val, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AddC_32fc(const ZIVK32fc* src, ZIVK32fc val, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AddC_64fc(const ZIVK64fc* src, ZIVK64fc val, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name AddC, in place
 *  @{ */

/**
 * Adds a constant in place: `srcDst[i] = srcDst[i] + val`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_32f_I(float val, float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AddC_64f_I(double val, double* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AddC_32fc_I(ZIVK32fc val, ZIVK32fc* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AddC_64fc_I(ZIVK64fc val, ZIVK64fc* srcDst, int32_t len);

/** @} */

/** @name SubC
 *  @{ */

/**
 * Subtracts a constant: `dst[i] = src[i] - val`.
 *
 * @param src  source array
 * @param val  constant operand
 * @param dst  result
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubC_32f(const float* src, float val, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubC_64f(const double* src, double val, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubC_32fc(const ZIVK32fc* src, ZIVK32fc val, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubC_64fc(const ZIVK64fc* src, ZIVK64fc val, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name SubC, in place
 *  @{ */

/**
 * Subtracts a constant in place: `srcDst[i] = srcDst[i] - val`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubC_32f_I(float val, float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubC_64f_I(double val, double* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubC_32fc_I(ZIVK32fc val, ZIVK32fc* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubC_64fc_I(ZIVK64fc val, ZIVK64fc* srcDst, int32_t len);

/** @} */

/** @name SubCRev
 *  @{ */

/**
 * Subtracts from a constant: `dst[i] = val - src[i]`.
 *
 * @param src  source array
 * @param val  constant operand
 * @param dst  result
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32f(const float* src, float val, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_64f(const double* src, double val, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32fc(const ZIVK32fc* src, ZIVK32fc val, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_64fc(const ZIVK64fc* src, ZIVK64fc val, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name SubCRev, in place
 *  @{ */

/**
 * Subtracts from a constant in place: `srcDst[i] = val - srcDst[i]`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32f_I(float val, float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_64f_I(double val, double* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32fc_I(ZIVK32fc val, ZIVK32fc* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_64fc_I(ZIVK64fc val, ZIVK64fc* srcDst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup arithmetic_integer Integer addition and subtraction
 * @ingroup arithmetic
 *
 * Results are computed exactly and then saturate at the bounds of the destination's type, or cannot exceed
 * them. The one exception is ZIVKS_Add_16s32s_I(), which wraps.
 *
 * @{
 */

/** @name Integer Add
 *  @{ */

/**
 * Adds with saturation at the bounds of the type: `dst[i] = src1[i] + src2[i]`.
 *
 * @param src1  first summand
 * @param src2  second summand
 * @param dst   sum
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_16s(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len);

/** @copydoc ZIVKS_Add_16s */
ZIVKS_API ZIVKStatus ZIVKS_Add_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len);

/** @copydoc ZIVKS_Add_16s */
ZIVKS_API ZIVKStatus ZIVKS_Add_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len);

/**
 * Adds into a wider type, exactly: `dst[i] = src1[i] + src2[i]`.
 *
 * @param src1  first summand
 * @param src2  second summand
 * @param dst   sum
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_8u16u(const uint8_t* src1, const uint8_t* src2, uint16_t* dst, int32_t len);

/** @copydoc ZIVKS_Add_8u16u */
ZIVKS_API ZIVKStatus ZIVKS_Add_16s32f(const int16_t* src1, const int16_t* src2, float* dst, int32_t len);

/** @} */

/** @name Integer Add, in place
 *  @{ */

/**
 * Adds an array to another with saturation at the bounds of the type: `srcDst[i] = src[i] + srcDst[i]`. There
 * is no `16u` form.
 *
 * @param src     summand
 * @param srcDst  summand and sum
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_16s_I(const int16_t* src, int16_t* srcDst, int32_t len);

/** @copydoc ZIVKS_Add_16s_I */
ZIVKS_API ZIVKStatus ZIVKS_Add_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len);

/**
 * Accumulates 16-bit elements in 32-bit ones: `srcDst[i] = srcDst[i] + src[i]`. Unlike its neighbours it does
 * not saturate: a sum out of range wraps modulo 2^32.
 *
 * @param src     summand, sign-extended
 * @param srcDst  summand and sum
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_16s32s_I(const int16_t* src, int32_t* srcDst, int32_t len);

/** @} */

/** @name Integer Sub
 *  @{ */

/**
 * Subtracts the first array from the second with saturation: `dst[i] = src2[i] - src1[i]`.
 *
 * @param src1  subtrahend: what is taken away
 * @param src2  minuend: what it is taken from
 * @param dst   difference
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_16s(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len);

/**
 * Subtracts the first array from the second, exactly: `dst[i] = src2[i] - src1[i]`.
 *
 * @param src1  subtrahend: what is taken away
 * @param src2  minuend: what it is taken from
 * @param dst   difference
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_16s32f(const int16_t* src1, const int16_t* src2, float* dst, int32_t len);

/**
 * Subtracts an array from another with saturation: `srcDst[i] = srcDst[i] - src[i]`.
 *
 * @param src     subtrahend
 * @param srcDst  minuend and difference
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_16s_I(const int16_t* src, int16_t* srcDst, int32_t len);

/** @} */

/** @name Integer AddC and SubC, in place
 *  Without a scale these exist in place only.
 *  @{ */

/**
 * Adds a constant with saturation: `srcDst[i] = srcDst[i] + val`.
 *
 * @param val     constant summand
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_16s_I(int16_t val, int16_t* srcDst, int32_t len);

/**
 * Subtracts a constant with saturation: `srcDst[i] = srcDst[i] - val`.
 *
 * @param val     constant subtrahend
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubC_16s_I(int16_t val, int16_t* srcDst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup arithmetic_scaled Scaled integer addition and subtraction
 * @ingroup arithmetic
 *
 * The sum or difference is computed exactly, multiplied by the power of two M that `scale` selects (see @ref
 * scale), rounded to nearest, ties to even, and saturated at the bounds of the type. Complex elements are
 * treated part by part. With an infinite M, what is positive becomes the highest value of the type, what is
 * negative the lowest, and 0 stays 0.
 *
 * Where M is above 1, some members shift to the left by k = log2(M) in place of the multiplication. The count
 * of these shifts is the low eight bits of k, taken as a signed number, and a negative count shifts to the
 * right. So from k = 128 on, that is for `scale` at or below 2^-128, whole blocks differ from the tail, which
 * is multiplied as above: for k from 128 to 255 they shift to the right by 256 - k, for k = 256 not at all,
 * and so on.
 *
 * | Members                                 | Elements in a block | Shifted to the right                |
 * |-----------------------------------------|---------------------|-------------------------------------|
 * | Add `8u`, `16u`, `16sc`, `32sc`         | 8, 4, 8, 2          | the exact sum, rounded half up      |
 * | Sub `16u`                               | 32                  | the clamped result, rounded half up |
 * | SubC and SubCRev `8u`, `16u`            | 16, 32              | the clamped result, rounded half up |
 * | SubC and SubCRev `32sc`                 | 1, so no tail       | the clamped result, rounded half up |
 * | AddC `8u`, `16u`, `32s`, `16sc`, `32sc` | 32, 32, 8, 16, 8    | the clamped result, rounded down    |
 * | Add and AddC `64s`, AddC `64u`          | 1, so no tail       | the clamped result, rounded half up |
 *
 * All other members multiply, whatever M is.
 *
 * @{
 */

/** @name Scaled Add
 *  @{ */

/**
 * Adds two arrays and scales: `dst[i] = (src1[i] + src2[i]) * M`.
 *
 * @param src1   first summand
 * @param src2   second summand
 * @param dst    scaled sum
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_8u_S(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len,
                                    double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                                     double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                                     double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                                     double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_16sc_S(const ZIVK16sc* src1, const ZIVK16sc* src2, ZIVK16sc* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_32sc_S(const ZIVK32sc* src1, const ZIVK32sc* src2, ZIVK32sc* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_64s_S(const int64_t* src1, const int64_t* src2, int64_t* dst, int32_t len,
                                     double scale);

/** @} */

/** @name Scaled Add, in place
 *  @{ */

/**
 * Adds an array to another and scales: `srcDst[i] = (src[i] + srcDst[i]) * M`. There is no 64-bit form.
 *
 * @param src     summand
 * @param srcDst  summand and scaled sum
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Add_8u_IS(const uint8_t* src, uint8_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_16u_IS(const uint16_t* src, uint16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_16s_IS(const int16_t* src, int16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_32s_IS(const int32_t* src, int32_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_16sc_IS(const ZIVK16sc* src, ZIVK16sc* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Add_32sc_IS(const ZIVK32sc* src, ZIVK32sc* srcDst, int32_t len, double scale);

/** @} */

/** @name Scaled Sub
 *  @{ */

/**
 * Subtracts the first array from the second and scales: `dst[i] = (src2[i] - src1[i]) * M`.
 *
 * @param src1   subtrahend: what is taken away
 * @param src2   minuend: what it is taken from
 * @param dst    scaled difference
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                                     double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                                     double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                                     double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_16sc_S(const ZIVK16sc* src1, const ZIVK16sc* src2, ZIVK16sc* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_32sc_S(const ZIVK32sc* src1, const ZIVK32sc* src2, ZIVK32sc* dst, int32_t len,
                                      double scale);

/**
 * Like ZIVKS_Sub_16u_S(), but multiplies whatever M is, and whole blocks of 64 elements narrow the product in
 * an uneven way: saturated to 32 bits first, the first four of every eight elements are saturated at 255,
 * while the last four lose all but their low 16 bits before that. It shows where a product reaches 65536, so
 * with M at 512 or more: at `scale` = 1/512 a difference of 128 gives 255, or 0 in the last four of eight.
 *
 * @param src1   subtrahend: what is taken away
 * @param src2   minuend: what it is taken from
 * @param dst    scaled difference
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_8u_S(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len,
                                    double scale);

/** @} */

/** @name Scaled Sub, in place
 *  @{ */

/**
 * Subtracts an array from another and scales: `srcDst[i] = (srcDst[i] - src[i]) * M`.
 *
 * @param src     subtrahend
 * @param srcDst  minuend and scaled difference
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_16u_IS(const uint16_t* src, uint16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_16s_IS(const int16_t* src, int16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_32s_IS(const int32_t* src, int32_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_16sc_IS(const ZIVK16sc* src, ZIVK16sc* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_Sub_32sc_IS(const ZIVK32sc* src, ZIVK32sc* srcDst, int32_t len, double scale);

/**
 * Like ZIVKS_Sub_16u_IS(), but with the uneven narrowing of ZIVKS_Sub_8u_S().
 *
 * @param src     subtrahend
 * @param srcDst  minuend and scaled difference
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Sub_8u_IS(const uint8_t* src, uint8_t* srcDst, int32_t len, double scale);

/** @} */

/** @name Scaled AddC
 *  @{ */

/**
 * Adds a constant and scales: `dst[i] = (src[i] + val) * M`.
 *
 * @param src    source array
 * @param val    constant operand
 * @param dst    result
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len,
                                       double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len,
                                       double scale);

/**
 * Like ZIVKS_AddC_16u_S(), but from `scale` = 512 on all results are 0, without a look at `src`. At scales
 * below 1024 a sum above 256 would give 1, as it does in ZIVKS_Add_8u_S().
 *
 * @param src    source array
 * @param val    constant operand
 * @param dst    result
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len,
                                     double scale);

/**
 * Adds a constant and scales: `dst[i] = (src[i] + val) * M`. Where M is below 1, `rndMode` selects the
 * rounding: #ZIVK_RND_ZERO toward zero, #ZIVK_RND_NEAR to nearest with ties to even, and any other value,
 * #ZIVK_RND_AWAY among them, to nearest with ties upward, toward positive infinity, also of negative sums. No
 * value is an error.
 *
 * One case differs: with `val` = INT64_MIN and ties upward, whole blocks of two elements round ties downward,
 * and only an odd last element rounds them upward. From `scale` = 2^65 on all results are 0.
 *
 * @param src      source array
 * @param val      constant summand
 * @param dst      scaled sum
 * @param len      number of elements
 * @param rndMode  #ZIVK_RND_ZERO, #ZIVK_RND_NEAR or any other value
 * @param scale    divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_64s_S(const int64_t* src, int64_t val, int64_t* dst, int32_t len,
                                      ZIVKRoundMode rndMode, double scale);

/**
 * Like ZIVKS_AddC_64s_S(), with two differences. Ties are treated alike for every `val`. From `scale` = 2^65 to
 * below 2^66 a sum above 2^64 gives 1 with #ZIVK_RND_NEAR; a sum of exactly 2^64, a tie, gives 0 with it. With
 * ties upward both give 1. From `scale` = 2^66 on all results are 0.
 *
 * @param src      source array
 * @param val      constant summand
 * @param dst      scaled sum
 * @param len      number of elements
 * @param rndMode  #ZIVK_RND_ZERO, #ZIVK_RND_NEAR or any other value
 * @param scale    divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_64u_S(const uint64_t* src, uint64_t val, uint64_t* dst, int32_t len,
                                      ZIVKRoundMode rndMode, double scale);

/** @} */

/** @name Scaled AddC, in place
 *  @{ */

/**
 * Adds a constant in place and scales: `srcDst[i] = (srcDst[i] + val) * M`. There is no 64-bit form.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_AddC_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale);

/**
 * Like ZIVKS_AddC_16u_IS(), but from `scale` = 512 on all results are 0, as in ZIVKS_AddC_8u_S().
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddC_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale);

/** @} */

/** @name Scaled SubC
 *  @{ */

/**
 * Subtracts a constant and scales: `dst[i] = (src[i] - val) * M`.
 *
 * @param src    source array
 * @param val    constant operand
 * @param dst    result
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubC_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len,
                                     double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len,
                                      double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len,
                                       double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len,
                                       double scale);

/** @} */

/** @name Scaled SubC, in place
 *  @{ */

/**
 * Subtracts a constant in place and scales: `srcDst[i] = (srcDst[i] - val) * M`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubC_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubC_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale);

/** @} */

/** @name Scaled SubCRev
 *  @{ */

/**
 * Subtracts from a constant and scales: `dst[i] = (val - src[i]) * M`.
 *
 * @param src    source array
 * @param val    constant operand
 * @param dst    result
 * @param len    number of elements
 * @param scale  divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len,
                                        double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len,
                                         double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len,
                                         double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len,
                                         double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len,
                                          double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len,
                                          double scale);

/** @} */

/** @name Scaled SubCRev, in place
 *  @{ */

/**
 * Subtracts from a constant in place and scales: `srcDst[i] = (val - srcDst[i]) * M`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale);
ZIVKS_API ZIVKStatus ZIVKS_SubCRev_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale);

/** @} */

/** @} */

/**
 * @defgroup arithmetic_abs Absolute value
 * @ingroup arithmetic
 *
 * `dst[i] = |src[i]|`; no result is negative.
 *
 * @{
 */

/** @name Abs
 *  @{ */

/**
 * Absolute value with saturation: the lowest value, which has no positive counterpart, becomes the highest.
 *
 * @param src  source array
 * @param dst  absolute values
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Abs_16s(const int16_t* src, int16_t* dst, int32_t len);

/** @copydoc ZIVKS_Abs_16s */
ZIVKS_API ZIVKStatus ZIVKS_Abs_32s(const int32_t* src, int32_t* dst, int32_t len);

/**
 * Clears the sign bit: -0 becomes +0, and a NaN keeps its payload.
 *
 * @param src  source array
 * @param dst  absolute values
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Abs_32f(const float* src, float* dst, int32_t len);

/** @copydoc ZIVKS_Abs_32f */
ZIVKS_API ZIVKStatus ZIVKS_Abs_64f(const double* src, double* dst, int32_t len);

/** @} */

/** @name Abs, in place
 *  @{ */

/**
 * Does in place what its twin without `_I` does from `src` to `dst`.
 *
 * @param srcDst  source and absolute values
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Abs_16s_I(int16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Abs_32s_I(int32_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Abs_32f_I(float* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Abs_64f_I(double* srcDst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup arithmetic_product Multiply-accumulate
 * @ingroup arithmetic
 *
 * Products are added to an array that is both read and written. With real elements it may be a factor as
 * well, if the elements are as wide. The real floating-point forms round in the processor's current rounding
 * mode, the complex ones are for rounding to nearest. A NaN result has an unspecified sign and payload.
 *
 * @{
 */

/** @name AddProduct
 *  @{ */

/**
 * Adds the product of two arrays: `srcDst[i] = src1[i] * src2[i] + srcDst[i]`, with one rounding.
 *
 * @param src1    first factor
 * @param src2    second factor
 * @param srcDst  summand and sum
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddProduct_32f(const float* src1, const float* src2, float* srcDst, int32_t len);

/** @copydoc ZIVKS_AddProduct_32f */
ZIVKS_API ZIVKStatus ZIVKS_AddProduct_64f(const double* src1, const double* src2, double* srcDst,
                                          int32_t len);

/**
 * Adds the product of two complex arrays. Three roundings make up each part of a result. With a = `src1[i]`,
 * b = `src2[i]` and c = `srcDst[i]`, one product is rounded, the other is added to it with one rounding, and
 * c is added last. Which product is rounded differs between the blocks of 4 elements and the tail, and can be
 * seen in the last place:
 *
 * |       | real part, rounded | real part, fused | imaginary part, rounded | imaginary part, fused |
 * |-------|--------------------|------------------|-------------------------|-----------------------|
 * | block | a.re b.re          | - a.im b.im      | a.re b.im               | + a.im b.re           |
 * | tail  | - a.im b.im        | + a.re b.re      | a.im b.re               | + a.re b.im           |
 *
 * No overlap of `srcDst` with a factor is supported: the tail would make an imaginary part with the new real
 * part.
 *
 * @param src1    first factor
 * @param src2    second factor
 * @param srcDst  summand and sum
 * @param len     number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddProduct_32fc(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* srcDst,
                                           int32_t len);

/**
 * Adds the product of two complex arrays as ZIVKS_AddProduct_32fc() does, but in another order of roundings
 * and with blocks of 2 elements:
 *
 * |       | real part, rounded | real part, fused | imaginary part, rounded | imaginary part, fused |
 * |-------|--------------------|------------------|-------------------------|-----------------------|
 * | block | - a.im b.im        | + a.re b.re      | a.re b.im               | + a.im b.re           |
 * | tail  | - a.im b.im        | + a.re b.re      | a.im b.re               | + a.re b.im           |
 *
 * No overlap of `srcDst` with a factor is supported: the tail would make an imaginary part with the new real
 * part.
 *
 * @param src1    first factor
 * @param src2    second factor
 * @param srcDst  summand and sum
 * @param len     number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddProduct_64fc(const ZIVK64fc* src1, const ZIVK64fc* src2, ZIVK64fc* srcDst,
                                           int32_t len);

/** @} */

/** @name AddProductC
 *  @{ */

/**
 * Adds the product of an array and a constant: `srcDst[i] = src[i] * val + srcDst[i]`, with one rounding.
 *
 * @param src     factor
 * @param val     constant factor
 * @param srcDst  summand and sum
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddProductC_32f(const float* src, float val, float* srcDst, int32_t len);

/** @copydoc ZIVKS_AddProductC_32f */
ZIVKS_API ZIVKStatus ZIVKS_AddProductC_64f(const double* src, double val, double* srcDst, int32_t len);

/** @} */

/** @name Scaled AddProduct
 *  @{ */

/**
 * Adds the product of two arrays, scales and saturates: `srcDst[i] = (src1[i] * src2[i] + srcDst[i]) * M`, to
 * the nearest integer, ties to even. The exact sum is converted to `float` before it is multiplied by the
 * power of two M that `scale` selects: of a sum of more than 24 significant bits the lower ones are rounded
 * away first, in the processor's current rounding mode. The product is rounded to nearest in every mode.
 *
 * @param src1    first factor
 * @param src2    second factor
 * @param srcDst  summand and result
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddProduct_16s_S(const int16_t* src1, const int16_t* src2, int16_t* srcDst,
                                            int32_t len, double scale);

/**
 * Like ZIVKS_AddProduct_16s_S(), except that the exact sum is converted to `double`, which rounds a sum of
 * more than 53 significant bits, in the processor's current rounding mode.
 *
 * @param src1    first factor
 * @param src2    second factor
 * @param srcDst  summand and result
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddProduct_32s_S(const int32_t* src1, const int32_t* src2, int32_t* srcDst,
                                            int32_t len, double scale);

/**
 * Like ZIVKS_AddProduct_16s_S(), except that the summand and the result are of 32 bits. The sum is exact
 * until it has been scaled.
 *
 * @param src1    first factor
 * @param src2    second factor
 * @param srcDst  summand and result
 * @param len     number of elements
 * @param scale   divisor, of which only a power of two takes effect: see @ref scale
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SCALE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AddProduct_16s32s_S(const int16_t* src1, const int16_t* src2, int32_t* srcDst,
                                               int32_t len, double scale);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
