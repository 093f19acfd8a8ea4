/**
 * @file
 * Addition, subtraction and absolute value.
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

/** @name Add
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

/** @name Add, in place
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

/** @name Sub
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

/** @name AddC and SubC, in place
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

#ifdef __cplusplus
}
#endif

#endif
