/**
 * @file
 * The public interface of libzivks_base.so: one header a subsystem, and this one for all of them.
 */
#ifndef ZIVKS_H
#define ZIVKS_H

/**
 * @mainpage Vector primitives for signal and columnar data processing
 *
 * Each function works on arrays that the caller owns and returns a status. What all functions have in common
 * stands here; a group tells what its family adds, and a function only what is its own.
 *
 * @section names Names and arguments
 *
 * `ZIVKS_<Operation>_<types>[_<modes>]`: two types mean source, then destination. A `C` behind the operation
 * says that one operand is the constant `val`, `CRev` that the constant comes first. Mode `I` works in place,
 * `S` scales the result, `IS` does both.
 *
 * | Type                           | Element                                                  |
 * |--------------------------------|----------------------------------------------------------|
 * | `8u`, `16u`, `32u`, `64u`      | `uint8_t`, `uint16_t`, `uint32_t`, `uint64_t`            |
 * | `8s`, `16s`, `32s`, `64s`      | `int8_t`, `int16_t`, `int32_t`, `int64_t`                |
 * | `24u`, `24s`                   | three bytes, lowest byte first, in an array of `uint8_t` |
 * | `32f`, `64f`                   | `float`, `double`                                        |
 * | `8sc`, `16sc`, `32sc`, `64sc`  | #ZIVK8sc, #ZIVK16sc, #ZIVK32sc, #ZIVK64sc                |
 * | `32fc`, `64fc`                 | #ZIVK32fc, #ZIVK64fc                                     |
 * | `bool`, `decimal64` ...        | rows of a column; see @ref columns                       |
 *
 * Arguments come in this order: source arrays, `val`, destination, `len`, results that are single values,
 * then the parameters of the family, `scale` last. Only `ZIVKS_FindNearest_*` has its table, a source, behind
 * the results, and functions on columns have null vector and destination behind `len`. An array that is both
 * read and written is `srcDst`. `len` counts elements; a complex number is one element.
 *
 * @section checks Checks and statuses
 *
 * Arguments are checked before anything is read or written, in this order: a null pointer gives
 * #ZIVK_STS_NULL_PTR_ERR, `len` below 1 gives #ZIVK_STS_SIZE_ERR, then the parameters of the family follow.
 * So an error means that nothing has been written. There is no upper bound for `len`.
 *
 * @section arrays Alignment and overlap
 *
 * No array needs more than the natural alignment of its elements; Copy, Move, Set and Zero take any address.
 * Nothing outside the arrays is read or written.
 *
 * In element-wise functions a destination may be exactly a source whose elements have the same width. Any
 * other overlap is not detected and its result is not defined, except in `ZIVKS_Move_*`, which is made for
 * it.
 *
 * @section blocks Blocks and tails
 *
 * Functions work in whole blocks of a fixed number of elements and treat the remaining ones, the tail, one by
 * one. Where that can be seen in results the description says so; everywhere else blocks and tail agree.
 *
 * @section scale Scale
 *
 * `scale` is a divisor, of which only a power of two takes effect: results are multiplied by M = 2^e, where e
 * is the base-2 logarithm of 1 / `scale`, truncated toward zero. So M is 1 / `scale` where that is a power of
 * two, and elsewhere the next power of two in the direction of 1.
 *
 * | `scale` | 8   | 7, 5, 4 | 3, 2 | between 0.5 and 2 | 0.5, 0.3 | 0.25, 0.2 | 0.125 |
 * |---------|-----|---------|------|-------------------|----------|-----------|-------|
 * | M       | 1/8 | 1/4     | 1/2  | 1                 | 2        | 4         | 8     |
 *
 * A `scale` that is zero, negative, infinite or NaN gives #ZIVK_STS_SCALE_ERR. Any other is accepted, also if
 * M becomes infinite or 0 in the type in which the function works.
 *
 * @section numbers Floating point
 *
 * A NaN that arithmetic produces is a NaN of unspecified sign and payload. Functions that only move elements
 * keep all bits. The library keeps the control modes of the floating-point environment, such as the rounding
 * direction; exception flags may be raised.
 *
 * @section threads Threads and memory
 *
 * The library has no state of its own. Calls on disjoint arrays are independent of each other, on whatever
 * threads. Two things are shared by the whole process:
 *
 * - The functions whose description says that pivots are drawn from the C library's `rand` seed it, so that other
 *   users of `rand` see another sequence afterwards.
 * - The `ZIVKS_RandUniform_*` seed the C library's `drand48` and draw from it. Of these functions one may run at
 *   a time.
 *
 * Memory, version and status texts come from the four services of zivk_core.h, which libzivk_core.so or the
 * application supplies. A function allocates only where its description says so.
 */

#include <zivks/arithmetic.h>
#include <zivks/columnar.h>
#include <zivks/convert.h>
#include <zivks/core.h>
#include <zivks/filters.h>
#include <zivks/generators.h>
#include <zivks/logic.h>
#include <zivks/movement.h>
#include <zivks/sort.h>
#include <zivks/sort_radix.h>
#include <zivks/statistics.h>
#include <zivks/types.h>
#include <zivks/version.h>

#endif
