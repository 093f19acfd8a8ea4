// Rounding to integers: of single elements, and in a mode that is known at run time.
#ifndef ZIVKS_CORE_ROUNDING_H
#define ZIVKS_CORE_ROUNDING_H

#include <zivks/types.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "core/vector/register.h"

namespace zivks {

// To T, clamped at its bounds; NaN gives 0. The bounds are met before the rounding, which gives the same as after it,
// since they are whole numbers.
//
// Ties go to the even neighbour. Everything else becomes what adding one half in float64 and truncating makes of it. That
// is the nearest integer with two exceptions, by which tails differ from blocks: 0.49999999999999994 becomes 1, and an
// odd number of 53 bits becomes its even neighbour away from zero. All operations here are exact, so that the
// result is the same in every rounding mode of the processor.
template <class T>
ZIVKS_INLINE T round_nearest_in_tail(double value) {
  using Limits = std::numeric_limits<T>;
  if (value != value) return 0;
  if constexpr (sizeof(T) == sizeof(double)) {
    if (value >= -static_cast<double>(Limits::min())) return Limits::max();
    if (value <= static_cast<double>(Limits::min())) return Limits::min();
  } else {
    // In registers: from constants the compiler makes branches.
    const double low = kept_in_register(double{Limits::min()}),
                 high = kept_in_register(double{Limits::max()});
    value = value > low ? value : low;
    value = value < high ? value : high;
  }
  constexpr double kRoundsUpFrom = 0.49999999999999994;
  const double magnitude = std::fabs(value);
  const int64_t whole = static_cast<int64_t>(magnitude);
  const double rest = magnitude - static_cast<double>(whole);
  int64_t rounded = whole + (rest >= kRoundsUpFrom);
  if constexpr (sizeof(T) == sizeof(double)) rounded += (whole >> 52 == 1) & whole;  // of 53 bits and odd
  const int64_t nearest = rounded - (static_cast<int64_t>(rest == 0.5) & rounded);
  return static_cast<T>(value < 0 ? -nearest : nearest);
}

// Calls `body` with the rounding mode as a compile-time constant.
template <class Body>
void with_rounding_mode(ZIVKRoundMode mode, Body body) {
  if (mode == ZIVK_RND_ZERO) return body(std::integral_constant<ZIVKRoundMode, ZIVK_RND_ZERO>());
  if (mode == ZIVK_RND_NEAR) return body(std::integral_constant<ZIVKRoundMode, ZIVK_RND_NEAR>());
  return body(std::integral_constant<ZIVKRoundMode, ZIVK_RND_AWAY>());
}

// The same for a `body` that rounds floats. To nearest, its mode is the processor's own where that is to nearest
// too and faster.
template <class Body>
void with_rounding_mode_of_floats(ZIVKRoundMode mode, Body body) {
  if constexpr (kRoundsFasterInCurrentMode) {
    if (mode == ZIVK_RND_NEAR && rounds_to_nearest())
      return body(std::integral_constant<ZIVKRoundMode, kCurrentMode>());
  }
  with_rounding_mode(mode, body);
}

}  // namespace zivks

#endif
