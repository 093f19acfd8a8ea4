// Rounding of a scaled value in the scalar tails.
#ifndef ZIVKS_CORE_ROUNDING_H
#define ZIVKS_CORE_ROUNDING_H

#include <cmath>
#include <cstdint>
#include <limits>

namespace zivks {

// To the nearest T, ties to even, clamped at T's bounds; NaN gives 0. The bounds are met before the rounding,
// which gives the same as after it, since they are whole numbers.
//
// A value that is no tie is rounded by adding one half and truncating, in float64. For every product of an
// integer and a power of two that is exact; of the other values it takes 0.49999999999999994 up to 1, and the
// conversions of float64 samples rely on just that.
template <class T, class F>
T round_nearest_saturate(F product) {
  using Limits = std::numeric_limits<T>;
  if (product >= static_cast<F>(Limits::max())) return Limits::max();
  if (product <= static_cast<F>(Limits::min())) return Limits::min();
  if (product != product) return 0;
  double whole;
  const double fraction = std::modf(static_cast<double>(product), &whole);
  if (std::fabs(fraction) == 0.5 && static_cast<int64_t>(whole) % 2 == 0) return static_cast<T>(whole);
  return static_cast<T>(static_cast<double>(product) + (product >= 0 ? 0.5 : -0.5));
}

}  // namespace zivks

#endif
