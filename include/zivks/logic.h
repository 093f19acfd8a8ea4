/**
 * @file
 * Bitwise operations and shifts.
 */
#ifndef ZIVKS_LOGIC_H
#define ZIVKS_LOGIC_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup logic_bitwise And, Or, Xor and Not
 *
 * On every bit of unsigned elements. Element-wise: `dst` may be any source, and sources may be the same
 * array.
 *
 * @{
 */

/** @name And
 *  @{ */

/**
 * Combines two arrays: `dst[i] = src1[i] & src2[i]`.
 *
 * @param src1  first operand
 * @param src2  second operand
 * @param dst   result
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_And_8u(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_And_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_And_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len);

/** @} */

/** @name And, in place
 *  @{ */

/**
 * Combines an array with another in place: `srcDst[i] = src[i] & srcDst[i]`.
 *
 * @param src     operand
 * @param srcDst  operand and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_And_8u_I(const uint8_t* src, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_And_16u_I(const uint16_t* src, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_And_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len);

/** @} */

/** @name AndC
 *  @{ */

/**
 * Combines an array with a constant: `dst[i] = src[i] & val`.
 *
 * @param src  source array
 * @param val  constant operand
 * @param dst  result
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AndC_8u(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AndC_16u(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AndC_32u(const uint32_t* src, uint32_t val, uint32_t* dst, int32_t len);

/** @} */

/** @name AndC, in place
 *  @{ */

/**
 * Combines an array with a constant in place: `srcDst[i] = srcDst[i] & val`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AndC_8u_I(uint8_t val, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AndC_16u_I(uint16_t val, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_AndC_32u_I(uint32_t val, uint32_t* srcDst, int32_t len);

/** @} */

/** @name Or
 *  @{ */

/**
 * Combines two arrays: `dst[i] = src1[i] | src2[i]`.
 *
 * @param src1  first operand
 * @param src2  second operand
 * @param dst   result
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Or_8u(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Or_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Or_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len);

/** @} */

/** @name Or, in place
 *  @{ */

/**
 * Combines an array with another in place: `srcDst[i] = src[i] | srcDst[i]`.
 *
 * @param src     operand
 * @param srcDst  operand and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Or_8u_I(const uint8_t* src, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Or_16u_I(const uint16_t* src, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Or_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len);

/** @} */

/** @name OrC
 *  @{ */

/**
 * Combines an array with a constant: `dst[i] = src[i] | val`.
 *
 * @param src  source array
 * @param val  constant operand
 * @param dst  result
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_OrC_8u(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_OrC_16u(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_OrC_32u(const uint32_t* src, uint32_t val, uint32_t* dst, int32_t len);

/** @} */

/** @name OrC, in place
 *  @{ */

/**
 * Combines an array with a constant in place: `srcDst[i] = srcDst[i] | val`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_OrC_8u_I(uint8_t val, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_OrC_16u_I(uint16_t val, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_OrC_32u_I(uint32_t val, uint32_t* srcDst, int32_t len);

/** @} */

/** @name Xor
 *  @{ */

/**
 * Combines two arrays: `dst[i] = src1[i] ^ src2[i]`.
 *
 * @param src1  first operand
 * @param src2  second operand
 * @param dst   result
 * @param len   number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Xor_8u(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Xor_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Xor_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len);

/** @} */

/** @name Xor, in place
 *  @{ */

/**
 * Combines an array with another in place: `srcDst[i] = src[i] ^ srcDst[i]`.
 *
 * @param src     operand
 * @param srcDst  operand and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Xor_8u_I(const uint8_t* src, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Xor_16u_I(const uint16_t* src, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Xor_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len);

/** @} */

/** @name XorC
 *  @{ */

/**
 * Combines an array with a constant: `dst[i] = src[i] ^ val`.
 *
 * @param src  source array
 * @param val  constant operand
 * @param dst  result
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_XorC_8u(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_XorC_16u(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_XorC_32u(const uint32_t* src, uint32_t val, uint32_t* dst, int32_t len);

/** @} */

/** @name XorC, in place
 *  @{ */

/**
 * Combines an array with a constant in place: `srcDst[i] = srcDst[i] ^ val`.
 *
 * @param val     constant operand
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_XorC_8u_I(uint8_t val, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_XorC_16u_I(uint16_t val, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_XorC_32u_I(uint32_t val, uint32_t* srcDst, int32_t len);

/** @} */

/** @name Not
 *  @{ */

/**
 * Complements all bits: `dst[i] = ~src[i]`.
 *
 * @param src  source array
 * @param dst  result
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Not_8u(const uint8_t* src, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Not_16u(const uint16_t* src, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Not_32u(const uint32_t* src, uint32_t* dst, int32_t len);

/** @} */

/** @name Not, in place
 *  @{ */

/**
 * Complements all bits in place. There is no such form for wider elements, for which ZIVKS_Not_16u() and
 * ZIVKS_Not_32u() take the same array twice.
 *
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Not_8u_I(uint8_t* srcDst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup logic_shift Shifts by a constant
 *
 * All elements are shifted by the same number of bits. A count of 0 copies, and a count at or above the width
 * of the element is no error. Element-wise: `dst` may be `src`. A negative `shift` gives #ZIVK_STS_SHIFT_ERR,
 * after the checks of pointers and length.
 *
 * @{
 */

/** @name LShiftC
 *  @{ */

/**
 * Shifts to the left: `dst[i] = src[i] << shift`. Bits that leave the element are lost, also from signed
 * elements, whose sign may change. With a count at or above the width all of `dst` becomes 0 and `src` is not
 * read.
 *
 * @param src    source array
 * @param shift  number of bits, not negative
 * @param dst    result
 * @param len    number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SHIFT_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_8u(const uint8_t* src, int32_t shift, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_16u(const uint16_t* src, int32_t shift, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_16s(const int16_t* src, int32_t shift, int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_32s(const int32_t* src, int32_t shift, int32_t* dst, int32_t len);

/** @} */

/** @name LShiftC, in place
 *  @{ */

/**
 * Shifts to the left in place. A count of 0 returns without touching the array.
 *
 * @param shift   number of bits, not negative
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SHIFT_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_8u_I(int32_t shift, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_16u_I(int32_t shift, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_16s_I(int32_t shift, int16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_LShiftC_32s_I(int32_t shift, int32_t* srcDst, int32_t len);

/** @} */

/** @name RShiftC
 *  @{ */

/**
 * Shifts unsigned elements to the right, bringing in zeros: `dst[i] = src[i] >> shift`. With a count at or
 * above the width all of `dst` becomes 0 and `src` is not read.
 *
 * @param src    source array
 * @param shift  number of bits, not negative
 * @param dst    result
 * @param len    number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SHIFT_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_8u(const uint8_t* src, int32_t shift, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_16u(const uint16_t* src, int32_t shift, uint16_t* dst, int32_t len);

/**
 * Shifts signed elements to the right, bringing in copies of the sign: `dst[i] = src[i] >> shift`, which
 * rounds toward minus infinity. A count at or above the width leaves 0 or -1, by the sign.
 *
 * @param src    source array
 * @param shift  number of bits, not negative
 * @param dst    result
 * @param len    number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SHIFT_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_16s(const int16_t* src, int32_t shift, int16_t* dst, int32_t len);

/** @copydoc ZIVKS_RShiftC_16s */
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_32s(const int32_t* src, int32_t shift, int32_t* dst, int32_t len);

/** @} */

/** @name RShiftC, in place
 *  @{ */

/**
 * Shifts to the right in place what its twin without `_I` shifts from `src` to `dst`. A count of 0 returns
 * without touching the array.
 *
 * @param shift   number of bits, not negative
 * @param srcDst  source and result
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_SIZE_ERR or #ZIVK_STS_SHIFT_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_8u_I(int32_t shift, uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_16u_I(int32_t shift, uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_16s_I(int32_t shift, int16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_RShiftC_32s_I(int32_t shift, int32_t* srcDst, int32_t len);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
