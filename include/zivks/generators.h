/**
 * @file
 * Uniform noise, triangle waves and linear ramps.
 */
#ifndef ZIVKS_GENERATORS_H
#define ZIVKS_GENERATORS_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup uniform_noise Uniform noise
 *
 * Fills arrays with values that are uniformly distributed between two bounds. A record holds the bounds and a seed:
 *
 *     ZIVKRandUniformState_32f* policy;
 *     ZIVKS_RandUniformInit_32f(&policy, -1.0F, 1.0F, 2026);
 *     ZIVKS_RandUniform_32f(noise, len, policy);
 *     ZIVKS_RandUniformRelease_32f(policy);
 *
 * **Every call starts anew from the seed.** Two calls with one record give the same values, and a call for fewer
 * elements draws the first of those that a call for more elements draws. Whoever wants other values makes
 * another record with another seed.
 *
 * The draws come from the C library's `srand48` and `drand48`, whose state belongs to the whole process: other users of
 * `drand48` see it reseeded, and **two of these functions, or one and any other user of `drand48`, may not run at the
 * same time,** whatever their records are.
 *
 * A draw r, from 0 up to but not including 1, becomes `low` + (`high` - `low`) * r. Whole blocks of 8 elements are
 * computed in `float`, in which a draw next to 1 becomes 1. The elements behind them, the tail, are computed in
 * `double`. So the first seven of eight elements may differ from those of a call for seven: in their last bits,
 * near 0 in most of their bits, and integers by 1. ZIVKS_RandUniform_64f() computes everything in `double`.
 *
 * Integers are truncated toward zero, not rounded down:
 *
 * - 0 comes up about twice as often as its neighbours where one bound is below it and the other above it.
 * - A bound comes up as often as its neighbours if it lies between 0 and the other bound. Otherwise it hardly ever
 *   does: `low` for a draw of 0 alone, `high` in blocks alone.
 *
 * Bounds may be equal, and `low` may be above `high`.
 *
 * @{
 */

/** @name RandUniformInit
 *  @{ */

/**
 * Makes a record.
 *
 * @param policy  receives the record, to be released by the RandUniformRelease function of its type
 * @param low     one bound
 * @param high    the other bound
 * @param seed    where every call with this record starts its draws
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_MALLOC_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_RandUniformInit_8u(ZIVKRandUniformState_8u** policy, uint8_t low, uint8_t high,
                                              uint32_t seed);
ZIVKS_API ZIVKStatus ZIVKS_RandUniformInit_16s(ZIVKRandUniformState_16s** policy, int16_t low, int16_t high,
                                               uint32_t seed);
ZIVKS_API ZIVKStatus ZIVKS_RandUniformInit_32f(ZIVKRandUniformState_32f** policy, float low, float high,
                                               uint32_t seed);
ZIVKS_API ZIVKStatus ZIVKS_RandUniformInit_64f(ZIVKRandUniformState_64f** policy, double low, double high,
                                               uint32_t seed);

/** @} */

/** @name RandUniformRelease
 *  @{ */

/**
 * Releases a record by ZIVKS_Free().
 *
 * @param policy  a record of the RandUniformInit function of its type
 * @return #ZIVK_STS_NO_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_RandUniformRelease_8u(ZIVKRandUniformState_8u* policy);
ZIVKS_API ZIVKStatus ZIVKS_RandUniformRelease_16s(ZIVKRandUniformState_16s* policy);
ZIVKS_API ZIVKStatus ZIVKS_RandUniformRelease_32f(ZIVKRandUniformState_32f* policy);
ZIVKS_API ZIVKStatus ZIVKS_RandUniformRelease_64f(ZIVKRandUniformState_64f* policy);

/** @} */

/** @name RandUniform
 *  @{ */

/**
 * Fills an array with noise.
 *
 * @param dst     destination array
 * @param len     number of elements
 * @param policy  bounds and seed
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_RandUniform_8u(uint8_t* dst, int32_t len, const ZIVKRandUniformState_8u* policy);
ZIVKS_API ZIVKStatus ZIVKS_RandUniform_16s(int16_t* dst, int32_t len, const ZIVKRandUniformState_16s* policy);
ZIVKS_API ZIVKStatus ZIVKS_RandUniform_32f(float* dst, int32_t len, const ZIVKRandUniformState_32f* policy);
ZIVKS_API ZIVKStatus ZIVKS_RandUniform_64f(double* dst, int32_t len, const ZIVKRandUniformState_64f* policy);

/** @} */

/** @} */

/**
 * @defgroup triangle_waves Triangle waves
 *
 * Fills arrays with samples of a triangle wave. At phase 0 the wave has its peak, `magn`; it falls to -`magn`, which it
 * reaches at phase pi + `asym`, and rises to its peak at 2 pi:
 *
 *     magn * (1 - 2 * ph / (pi + asym))                 for a phase ph up to pi + asym
 *     magn * (1 + 2 * (ph - 2 * pi) / (pi - asym))      beyond
 *
 * Real parts of complex forms are this wave. Imaginary parts are the wave at phase ph + (3 pi + `asym`) / 2: they are 0
 * at phase 0 and rise, as a sine does where the real part is a cosine.
 *
 * Arguments are checked in an order of their own: pointers; `*phase` and `asym`; `len`; `magn` and `rFreq`. A NaN
 * passes all checks.
 *
 * | Form          | Samples                                                               | `*phase`            |
 * |---------------|-----------------------------------------------------------------------|---------------------|
 * | `16s`, `16sc` | computed from their indices in `double`, truncated toward zero        | stays what it is    |
 * | `32f`, `32fc` | computed from their indices in `double`, rounded                      | stays what it is    |
 * | `64f`, `64fc` | each from the one before, so that errors grow along the array         | that behind the end |
 *
 * A wave can thus be continued in the `double` forms by a further call with the same variable; in the others
 * the caller advances the phase, by 2 pi times the fractional part of `rFreq` * `len`.
 *
 * The `double` forms follow the slopes of the wave at low frequencies and step its phase at others. The method changes
 * where `rFreq` is 0.14 in ZIVKS_Triangle_64f() and 0.11 in ZIVKS_Triangle_64fc(), and with it the last bits.
 *
 * Forms that compute samples from their indices work in blocks: 4 elements (`32fc`: 2). Blocks and the elements behind
 * them may differ in the last bit. ZIVKS_Triangle_16sc() rounds indices to `float`, which shows from index 16777216 on.
 *
 * @{
 */

/** @name Triangle
 *  @{ */

/**
 * Fills an array with a triangle wave.
 *
 * @param dst    destination array
 * @param len    number of elements
 * @param magn   the peak, above 0
 * @param rFreq  frequency in cycles a sample, from 0 up to but not including 0.5
 * @param asym   how far the trough lies behind the middle of a period, in radians: above -pi, in
 *               ZIVKS_Triangle_64f() also -pi itself, and below pi
 * @param phase  phase of the first sample in radians, from 0 up to but not including 2 pi; the `double` forms store
 *               that of the sample behind the last one
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR, #ZIVK_STS_TRIANGLE_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Triangle_16s(int16_t* dst, int32_t len, int16_t magn, float rFreq, float asym,
                                        const float* phase);
ZIVKS_API ZIVKStatus ZIVKS_Triangle_32f(float* dst, int32_t len, float magn, float rFreq, float asym,
                                        const float* phase);
ZIVKS_API ZIVKStatus ZIVKS_Triangle_64f(double* dst, int32_t len, double magn, double rFreq, double asym,
                                        double* phase);
ZIVKS_API ZIVKStatus ZIVKS_Triangle_16sc(ZIVK16sc* dst, int32_t len, int16_t magn, float rFreq, float asym,
                                         const float* phase);
ZIVKS_API ZIVKStatus ZIVKS_Triangle_32fc(ZIVK32fc* dst, int32_t len, float magn, float rFreq, float asym,
                                         const float* phase);
ZIVKS_API ZIVKStatus ZIVKS_Triangle_64fc(ZIVK64fc* dst, int32_t len, double magn, double rFreq, double asym,
                                         double* phase);

/** @} */

/** @} */

/**
 * @defgroup linear_ramps Linear ramps
 *
 * Fills arrays with `offset` + `slope` * i, clamped at the bounds of the type. Integers are rounded to nearest, ties to
 * even, but for 0.49999999999999994 in tails that work in `double`, which becomes 1. A NaN gives 0.
 *
 * The values are not computed from their indices: whole blocks are each made from the one before by adding
 * `slope` times the length of a block, and the elements behind the blocks, the tail, each from the one before by adding
 * `slope`. Errors grow along the blocks. The tail starts anew from its index.
 *
 * | Form          | Block | Blocks work in | Tail works in |
 * |---------------|-------|----------------|---------------|
 * | `8u`          | 16    | half precision | `float`       |
 * | `16u`, `16s`  | 8     | `float`        | `float`       |
 * | `32f`         | 8     | `float`        | `float`       |
 * | `32u`, `32s`  | 4     | `double`       | `double`      |
 * | `64f`         | 4     | `double`       | `double`      |
 *
 * In ZIVKS_VectorSlope_64f() the tail begins at the last even index, so that it has one element or none; see there.
 *
 * Half precision has 11 significant bits. Where the values of ZIVKS_VectorSlope_8u() lie between 128 and 256, a block
 * must rise or fall by more than 1/16 to go on: a slower ramp stalls there, and continues in the tail where it should
 * be. Numbers from 65520 on are infinite in half precision. Such an `offset` keeps all blocks at 0 or 255, and a
 * `slope` from 4095 on makes steps of infinite length.
 *
 * @{
 */

/** @name VectorSlope
 *  @{ */

/**
 * Fills an array with a linear ramp.
 *
 * @param dst     destination array
 * @param len     number of elements
 * @param offset  first value
 * @param slope   difference of neighbouring values
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_VectorSlope_8u(uint8_t* dst, int32_t len, float offset, float slope);
ZIVKS_API ZIVKStatus ZIVKS_VectorSlope_16u(uint16_t* dst, int32_t len, float offset, float slope);
ZIVKS_API ZIVKStatus ZIVKS_VectorSlope_16s(int16_t* dst, int32_t len, float offset, float slope);
ZIVKS_API ZIVKStatus ZIVKS_VectorSlope_32u(uint32_t* dst, int32_t len, double offset, double slope);
ZIVKS_API ZIVKStatus ZIVKS_VectorSlope_32s(int32_t* dst, int32_t len, double offset, double slope);
ZIVKS_API ZIVKStatus ZIVKS_VectorSlope_32f(float* dst, int32_t len, float offset, float slope);

/**
 * Fills an array with a linear ramp, **and writes up to two elements beyond its end**: the array has room for
 * `len` rounded up to a multiple of four elements.
 *
 * @param dst     destination array with that room
 * @param len     number of elements
 * @param offset  first value
 * @param slope   difference of neighbouring values
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_VectorSlope_64f(double* dst, int32_t len, double offset, double slope);

/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
