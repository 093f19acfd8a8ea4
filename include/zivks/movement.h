/**
 * @file
 * Copies and fills of arrays; reversing the order of elements or of their bytes; splitting, merging and
 * conjugating complex arrays.
 */
#ifndef ZIVKS_MOVEMENT_H
#define ZIVKS_MOVEMENT_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup movement_copy Copy, Move, Set and Zero
 *
 * Elements are moved as raw bits: NaN payloads, signs of zero and subnormal numbers arrive unchanged. Unlike
 * elsewhere, arrays may start at any byte address.
 *
 * @{
 */

/** @name Copy
 *  @{ */

/**
 * Copies an array: `dst[i] = src[i]`.
 *
 * `dst` may be `src` itself. For any other overlap no result is promised; use Move there.
 *
 * @param src  source array
 * @param dst  destination array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Copy_8u(const uint8_t* src, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_16s(const int16_t* src, int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_32s(const int32_t* src, int32_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_32f(const float* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_64s(const int64_t* src, int64_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_64f(const double* src, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_16sc(const ZIVK16sc* src, ZIVK16sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_32sc(const ZIVK32sc* src, ZIVK32sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_64sc(const ZIVK64sc* src, ZIVK64sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Copy_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name Move
 *  @{ */

/**
 * Copies an array that may overlap its destination in any way: `dst` receives what `src` held before the
 * call.
 *
 * @param src  source array
 * @param dst  destination array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Move_8u(const uint8_t* src, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_16s(const int16_t* src, int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_32s(const int32_t* src, int32_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_32f(const float* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_64s(const int64_t* src, int64_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_64f(const double* src, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_16sc(const ZIVK16sc* src, ZIVK16sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_32sc(const ZIVK32sc* src, ZIVK32sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_64sc(const ZIVK64sc* src, ZIVK64sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Move_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name Set
 *  @{ */

/**
 * Fills an array with one value: `dst[i] = val`.
 *
 * @param val  the value; its bits are stored as they are
 * @param dst  destination array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Set_8u(uint8_t val, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_16s(int16_t val, int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_32s(int32_t val, int32_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_32f(float val, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_64s(int64_t val, int64_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_64f(double val, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_16sc(ZIVK16sc val, ZIVK16sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_32sc(ZIVK32sc val, ZIVK32sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_32fc(ZIVK32fc val, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_64sc(ZIVK64sc val, ZIVK64sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Set_64fc(ZIVK64fc val, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name Zero
 *  @{ */

/**
 * Clears an array: all bits of `dst[i]` become 0, so float elements become +0.
 *
 * @param dst  destination array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Zero_8u(uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_16s(int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_32s(int32_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_32f(float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_64s(int64_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_64f(double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_16sc(ZIVK16sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_32sc(ZIVK32sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_32fc(ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_64sc(ZIVK64sc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Zero_64fc(ZIVK64fc* dst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup movement_order Flip and byte swapping
 *
 * Elements are moved as raw bits.
 *
 * @{
 */

/** @name Flip
 *  @{ */

/**
 * Reverses the order of the elements: `dst[len - 1 - i] = src[i]`. The parts of a complex element keep their
 * order.
 *
 * `dst` must not overlap `src`.
 *
 * @param src  source array
 * @param dst  destination array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Flip_8u(const uint8_t* src, uint8_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Flip_16u(const uint16_t* src, uint16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Flip_32f(const float* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Flip_64f(const double* src, double* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Flip_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Flip_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name Flip, in place
 *  @{ */

/**
 * Reverses the order of the elements in place, except around the middle of some lengths.
 *
 * Blocks of 8 elements are exchanged from the two ends. Where `len` modulo 16 is 8 + r with r from 1 to 6,
 * the result is not the reversed array: r elements on either side of the 8 - r in the middle keep their
 * places. No status tells this. ZIVKS_Flip_8u() reverses at every length.
 *
 * @param srcDst  array, read and written
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Flip_8u_I(uint8_t* srcDst, int32_t len);

/**
 * Reverses the order of the elements in place, except around the middle of some lengths.
 *
 * Blocks of 4 elements are exchanged from the two ends. Where `len` modulo 8 is 4 + r with r equal to 1 or 2,
 * the result is not the reversed array: r elements on either side of the 4 - r in the middle keep their
 * places. No status tells this. ZIVKS_Flip_16u() reverses at every length.
 *
 * @param srcDst  array, read and written
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Flip_16u_I(uint16_t* srcDst, int32_t len);

/**
 * Reverses the order of the elements in place. The parts of a complex element keep their order.
 *
 * @param srcDst  array, read and written
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Flip_32f_I(float* srcDst, int32_t len);

/** @copydoc ZIVKS_Flip_32f_I */
ZIVKS_API ZIVKStatus ZIVKS_Flip_64f_I(double* srcDst, int32_t len);

/** @copydoc ZIVKS_Flip_32f_I */
ZIVKS_API ZIVKStatus ZIVKS_Flip_32fc_I(ZIVK32fc* srcDst, int32_t len);

/** @copydoc ZIVKS_Flip_32f_I */
ZIVKS_API ZIVKStatus ZIVKS_Flip_64fc_I(ZIVK64fc* srcDst, int32_t len);

/** @} */

/** @name SwapBytes
 *  @{ */

/**
 * Reverses the bytes of each element, from one byte order to the other. `dst` may be `src`.
 *
 * @param src  source array
 * @param dst  destination array
 * @param len  number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_16u(const uint16_t* src, uint16_t* dst, int32_t len);

/** @copydoc ZIVKS_SwapBytes_16u */
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_32u(const uint32_t* src, uint32_t* dst, int32_t len);

/** @copydoc ZIVKS_SwapBytes_16u */
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_64u(const uint64_t* src, uint64_t* dst, int32_t len);

/**
 * Reverses the bytes of packed samples of 24 bits: the first and the third byte of every three change places.
 * `dst` may be `src`.
 *
 * @param src  source samples, three bytes each
 * @param dst  destination samples, three bytes each
 * @param len  number of samples
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_24u(const uint8_t* src, uint8_t* dst, int32_t len);

/** @} */

/** @name SwapBytes, in place
 *  @{ */

/**
 * Reverses in place the bytes of each element.
 *
 * @param srcDst  array, read and written; three bytes a sample in the form for 24 bits
 * @param len     number of elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_16u_I(uint16_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_24u_I(uint8_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_32u_I(uint32_t* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_SwapBytes_64u_I(uint64_t* srcDst, int32_t len);

/** @} */

/** @} */

/**
 * @defgroup movement_complex Complex split, merge and conjugate
 *
 * Between arrays of complex records and separate arrays of real and imaginary parts. `len` counts complex
 * elements. Float parts are moved as raw bits. But for Conj, no destination may overlap another array.
 *
 * @{
 */

/** @name Real
 *  @{ */

/**
 * Extracts the real parts: `dst[i] = src[i].re`.
 *
 * @param src  complex array
 * @param dst  array for the real parts
 * @param len  number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Real_16sc(const ZIVK16sc* src, int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Real_32fc(const ZIVK32fc* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Real_64fc(const ZIVK64fc* src, double* dst, int32_t len);

/** @} */

/** @name Imag
 *  @{ */

/**
 * Extracts the imaginary parts: `dst[i] = src[i].im`.
 *
 * @param src  complex array
 * @param dst  array for the imaginary parts
 * @param len  number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Imag_16sc(const ZIVK16sc* src, int16_t* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Imag_32fc(const ZIVK32fc* src, float* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Imag_64fc(const ZIVK64fc* src, double* dst, int32_t len);

/** @} */

/** @name CplxToReal
 *  @{ */

/**
 * Splits a complex array: `dstRe[i] = src[i].re`, `dstIm[i] = src[i].im`.
 *
 * It takes the two channels of interleaved stereo samples apart as well. Neither destination may be null; for
 * one part alone there are Real and Imag.
 *
 * @param src    complex array
 * @param dstRe  array for the real parts
 * @param dstIm  array for the imaginary parts
 * @param len    number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_CplxToReal_16sc(const ZIVK16sc* src, int16_t* dstRe, int16_t* dstIm, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_CplxToReal_32fc(const ZIVK32fc* src, float* dstRe, float* dstIm, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_CplxToReal_64fc(const ZIVK64fc* src, double* dstRe, double* dstIm, int32_t len);

/** @} */

/** @name RealToCplx
 *  @{ */

/**
 * Merges two arrays into a complex one: `dst[i] = { srcRe[i], srcIm[i] }`.
 *
 * One of the sources may be null and stands for zeros then (+0 in the float forms), which are written to
 * `dst`.
 *
 * @param srcRe  real parts, or null
 * @param srcIm  imaginary parts, or null; both null give #ZIVK_STS_NULL_PTR_ERR
 * @param dst    complex array
 * @param len    number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_RealToCplx_16s(const int16_t* srcRe, const int16_t* srcIm, ZIVK16sc* dst,
                                          int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_RealToCplx_32f(const float* srcRe, const float* srcIm, ZIVK32fc* dst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_RealToCplx_64f(const double* srcRe, const double* srcIm, ZIVK64fc* dst,
                                          int32_t len);

/** @} */

/** @name Conj
 *  @{ */

/**
 * Conjugates with saturation: `dst[i] = { src[i].re, -src[i].im }`, where an imaginary part of -32768 becomes
 * 32767.
 *
 * `dst` may be `src`.
 *
 * @param src  complex array
 * @param dst  complex array
 * @param len  number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Conj_16sc(const ZIVK16sc* src, ZIVK16sc* dst, int32_t len);

/**
 * Conjugates by flipping the sign bit of the imaginary part: zeros and infinities change sign, a NaN keeps
 * its payload.
 *
 * `dst` may be `src`.
 *
 * @param src  complex array
 * @param dst  complex array
 * @param len  number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Conj_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len);

/** @copydoc ZIVKS_Conj_32fc */
ZIVKS_API ZIVKStatus ZIVKS_Conj_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len);

/** @} */

/** @name Conj, in place
 *  @{ */

/**
 * Conjugates in place what its twin without `_I` conjugates from `src` to `dst`.
 *
 * @param srcDst  complex array, read and written
 * @param len     number of complex elements
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Conj_16sc_I(ZIVK16sc* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Conj_32fc_I(ZIVK32fc* srcDst, int32_t len);
ZIVKS_API ZIVKStatus ZIVKS_Conj_64fc_I(ZIVK64fc* srcDst, int32_t len);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
