/**
 * @file
 * Kernels of query engines: hashes of rows, and extremes of columns with nulls.
 */
#ifndef ZIVKS_COLUMNAR_H
#define ZIVKS_COLUMNAR_H

#include <zivks/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup columns Columns
 *
 * A column is an array of `len` rows. Beside the types of numbers there are these:
 *
 * | Column       | Row                                                                                        |
 * |--------------|--------------------------------------------------------------------------------------------|
 * | `bool`       | a byte; any value but 0 is true                                                            |
 * | `decimal64`  | an `int64_t`: the digits as an integer                                                     |
 * | `decimal128` | a #ZIVKDecimal128: sign and magnitude                                                      |
 * | `varchar`    | bytes `src[offsets[i]]` up to `src[offsets[i + 1]]`, the latter not included: a text      |
 *
 * `offsets` has `len + 1` entries, which count bytes from `src`. The first may be any; none may be less than the
 * one before. So the rows "ab", "" and "c" are `src` = "abc" and `offsets` = {0, 2, 2, 3}.
 *
 * `nulls` has one byte for each row, 0 for a row that has a value and anything else for a null. A null pointer
 * means that no row is null.
 */

/**
 * @defgroup hashes Hashes
 * @ingroup columns
 *
 * One 64-bit hash for each row. **The entry of a null row stays as it was**, so the caller presets it with what
 * null shall hash to. Hashes of several columns are folded into one by ZIVKS_CombineHash().
 *
 * Only the hashes of `varchar` and `decimal128` are spread over all bits of the result:
 *
 * | Type                               | Hash                                                            |
 * |------------------------------------|-----------------------------------------------------------------|
 * | `bool`                             | 1231 for true, 1237 for false                                   |
 * | `decimal64`                        | the value itself                                                |
 * | `16s` `32s` `64s` `64f`            | one round of XXH64, see ZIVKS_Hash_16s(); 0 for +0              |
 * | `varchar`                          | XXH64 of the bytes, seed 0                                      |
 * | `decimal128`                       | XXH64 of each of the words, seed 0, joined by exclusive or      |
 *
 * No array that a call reads may overlap `dst`, except that `dst` may be a source of 64-bit elements itself. The bytes of
 * null texts have to be readable, as those of all others.
 *
 * @{
 */

/** @name Hash of numbers
 *  @{ */

/**
 * Hash of each row: one round of XXH64, which is the row's value in 64 bits times 0xC2B2AE3D27D4EB4F, rotated to
 * the left by 31 bits, times 0x9E3779B185EBCA87. Narrower integers are extended by their sign, so that a number
 * has the same hash in columns of any of these widths.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives `len` hashes; entries of null rows stay as they were
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Hash_16s(const int16_t* src, int32_t len, const int8_t* nulls, uint64_t* dst);
/** @copydoc ZIVKS_Hash_16s */
ZIVKS_API ZIVKStatus ZIVKS_Hash_32s(const int32_t* src, int32_t len, const int8_t* nulls, uint64_t* dst);
/** @copydoc ZIVKS_Hash_16s */
ZIVKS_API ZIVKStatus ZIVKS_Hash_64s(const int64_t* src, int32_t len, const int8_t* nulls, uint64_t* dst);

/**
 * Hash of each row: the round of ZIVKS_Hash_16s() on the bits of the number, for every NaN on 0x7FF8000000000000.
 * So all NaNs have one hash, 0xA7551CC48D5C0000, but the two zeros have different ones: +0 has 0, and -0 has
 * 0x617AF2A1C0000000. To hash them alike, make every -0 a +0 first: ZIVKS_AddC_64f() with 0 does so.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives `len` hashes; entries of null rows stay as they were
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Hash_64f(const double* src, int32_t len, const int8_t* nulls, uint64_t* dst);

/**
 * Hash of each row: 1237 for a byte of 0, 1231 for any other.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives `len` hashes; entries of null rows stay as they were
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Hash_bool(const uint8_t* src, int32_t len, const int8_t* nulls, uint64_t* dst);

/** @} */

/** @name Hash of decimals
 *  @{ */

/**
 * Hash of each row: its 64 bits as they are.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives `len` hashes; entries of null rows stay as they were
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Hash_decimal64(const int64_t* src, int32_t len, const int8_t* nulls,
                                          uint64_t* dst);

/**
 * Hash of each row: XXH64 with seed 0 of the low word's eight bytes, exclusive-or that of the high word's with the
 * sign cleared. So numbers that differ in their sign alone have the same hash, and a number whose words are equal,
 * such as 0, has the hash 0.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives `len` hashes; entries of null rows stay as they were
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Hash_decimal128(const ZIVKDecimal128* src, int32_t len, const int8_t* nulls,
                                           uint64_t* dst);

/** @} */

/** @name Hash of texts
 *  @{ */

/**
 * Hash of each row: XXH64 of its bytes with seed 0. An empty row has 0xEF46DB3751D8E999.
 *
 * @param src      bytes of all rows
 * @param offsets  where rows begin in `src`, `len + 1` entries
 * @param len      number of rows
 * @param nulls    flags of null rows, or null
 * @param dst      receives `len` hashes; entries of null rows stay as they were
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_Hash_varchar(const uint8_t* src, const int32_t* offsets, int32_t len,
                                        const int8_t* nulls, uint64_t* dst);

/** @} */

/** @name CombineHash
 *  @{ */

/**
 * Folds two columns of hashes into one: `dst[i] = 31 * src1[i] + src2[i]`, modulo 2^64. The order matters. `dst` may
 * be `src1` or `src2`.
 *
 * @param src1  hashes of the first column
 * @param src2  hashes of the second column
 * @param len   number of rows
 * @param dst   receives `len` hashes
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_CombineHash(const uint64_t* src1, const uint64_t* src2, int32_t len,
                                       uint64_t* dst);

/** @} */
/** @} */

/**
 * @defgroup aggregates Aggregates
 * @ingroup columns
 *
 * Largest and smallest value of a column, null rows left out. Nothing is read from the result: a caller that has
 * several batches folds their results.
 *
 * With `nulls`, even if no row is null, the search begins with the value below, which is the result where all rows
 * are null. It is finite, so that AggMax does not find what is below it, an infinity or a decimal, nor AggMin what is
 * above it.
 *
 * | Type         | AggMax begins with        | AggMin begins with       |
 * |--------------|---------------------------|--------------------------|
 * | `16s`        | -32768                    | 32767                    |
 * | `32s`        | -2147483648               | 2147483647               |
 * | `64s`        | -9223372036854775808      | 9223372036854775807      |
 * | `64f`        | -1.7976931348623157e308   | 1.7976931348623157e308   |
 * | `decimal128` | -(10^38 - 1)              | 10^38 - 1                |
 * | `bool`       | 0                         | 1                        |
 *
 * @{
 */

/** @name AggMax
 *  @{ */

/**
 * Largest value of the rows that are not null.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMax_16s(const int16_t* src, int32_t len, const int8_t* nulls, int16_t* dst);
/** @copydoc ZIVKS_AggMax_16s */
ZIVKS_API ZIVKStatus ZIVKS_AggMax_32s(const int32_t* src, int32_t len, const int8_t* nulls, int32_t* dst);
/** @copydoc ZIVKS_AggMax_16s */
ZIVKS_API ZIVKStatus ZIVKS_AggMax_64s(const int64_t* src, int32_t len, const int8_t* nulls, int64_t* dst);

/**
 * Largest value of the rows that are not null. NaN and zeros are treated in a way of their own.
 *
 * Without `nulls` it is ZIVKS_Max_64f(). With `nulls` the rows are folded in turn: a unit of eight rows at multiples
 * of eight without a null gives its largest value, NaN if there is one among them, +0 above -0; all other rows are
 * units by themselves. A unit takes the place of the value that has been found so far unless it is less. This has
 * two consequences:
 *
 * - A comparison with NaN is false. So a NaN takes the place of what has been found, and the unit behind it that of
 *   the NaN: NaN is the result if it is the last unit, and otherwise the rows ahead of the NaN are lost.
 * - Of two zeros in different units the later one stays.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMax_64f(const double* src, int32_t len, const int8_t* nulls, double* dst);

/**
 * Largest value of the rows that are not null, never a negative zero. Without `nulls` it may lie below -(10^38 - 1).
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMax_decimal128(const ZIVKDecimal128* src, int32_t len, const int8_t* nulls,
                                             ZIVKDecimal128* dst);

/**
 * Whether one of the rows is true: 1 or 0 if there are no `nulls`.
 *
 * With `nulls` it is not quite that. Eight rows at multiples of eight without a null make a block, which gives 1 or
 * 0, **and that replaces what was found before**: after a block without a true row an earlier true is forgotten.
 * Any other row gives its byte, of which the largest counts, so that a byte above 1 can be the result.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMax_bool(const uint8_t* src, int32_t len, const int8_t* nulls, uint8_t* dst);

/**
 * Largest text: bytes are compared as unsigned numbers, and a text is larger than its own beginning. Of equal rows
 * the first is taken. An empty text is the result only where all rows are empty, and leaves `dst` as it was.
 *
 * @param src      bytes of all rows
 * @param offsets  where rows begin in `src`, `len + 1` entries
 * @param len      number of rows
 * @param dst      receives the text; it has room for the longest row and does not overlap `src`
 * @param dstLen   receives the number of its bytes
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMax_varchar(const uint8_t* src, const int32_t* offsets, int32_t len,
                                          uint8_t* dst, int32_t* dstLen);

/** @} */

/** @name AggMin
 *  @{ */

/**
 * Smallest value of the rows that are not null.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMin_16s(const int16_t* src, int32_t len, const int8_t* nulls, int16_t* dst);
/** @copydoc ZIVKS_AggMin_16s */
ZIVKS_API ZIVKStatus ZIVKS_AggMin_32s(const int32_t* src, int32_t len, const int8_t* nulls, int32_t* dst);
/** @copydoc ZIVKS_AggMin_16s */
ZIVKS_API ZIVKStatus ZIVKS_AggMin_64s(const int64_t* src, int32_t len, const int8_t* nulls, int64_t* dst);

/**
 * Smallest value of the rows that are not null. Without `nulls` it is ZIVKS_Min_64f(). With `nulls` NaN and zeros
 * are treated as in ZIVKS_AggMax_64f(), the other way round: a unit takes the place of the value that has been found
 * so far unless it is greater, and within eight rows -0 is below +0.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMin_64f(const double* src, int32_t len, const int8_t* nulls, double* dst);

/**
 * Smallest value of the rows that are not null, never a negative zero. Without `nulls` it may lie above 10^38 - 1.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMin_decimal128(const ZIVKDecimal128* src, int32_t len, const int8_t* nulls,
                                             ZIVKDecimal128* dst);

/**
 * Whether all rows are true: 1 or 0 if there are no `nulls`. **Of the first `len & ~15` rows only the lowest bit is
 * looked at then**, so that a byte of 2 counts as false there, and as true behind them.
 *
 * With `nulls` the smallest byte is the result, where eight rows at multiples of eight without a null count as one
 * byte: 1 if all of them are true, 0 if not. The result is at most 1. Unlike ZIVKS_AggMax_bool() it forgets nothing.
 *
 * @param src    column
 * @param len    number of rows
 * @param nulls  flags of null rows, or null
 * @param dst    receives the value
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMin_bool(const uint8_t* src, int32_t len, const int8_t* nulls, uint8_t* dst);

/**
 * Smallest text, in the order of ZIVKS_AggMax_varchar(). Of equal rows the first is taken. An empty row is the
 * smallest, gives a length of 0 and leaves `dst` as it was.
 *
 * @param src      bytes of all rows
 * @param offsets  where rows begin in `src`, `len + 1` entries
 * @param len      number of rows
 * @param dst      receives the text; it has room for the longest row and does not overlap `src`
 * @param dstLen   receives the number of its bytes
 * @return #ZIVK_STS_NO_ERR, #ZIVK_STS_NULL_PTR_ERR or #ZIVK_STS_SIZE_ERR
 */
ZIVKS_API ZIVKStatus ZIVKS_AggMin_varchar(const uint8_t* src, const int32_t* offsets, int32_t len,
                                          uint8_t* dst, int32_t* dstLen);

/** @} */
/** @} */

#ifdef __cplusplus
}
#endif

#endif
