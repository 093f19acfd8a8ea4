// Integers that hold every sum and product, and their exact scaling by powers of two.
#ifndef ZIVKS_TESTS_REFERENCE_EXACT_H
#define ZIVKS_TESTS_REFERENCE_EXACT_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace zivks_test {

__extension__ typedef __int128 Exact;

template <class T>
T saturated(Exact value) {
  using Limits = std::numeric_limits<T>;
  return static_cast<T>(std::clamp(value, Exact{Limits::min()}, Exact{Limits::max()}));
}

enum class Rounding { kToZero, kDown, kTiesToEven, kTiesAway, kTiesUp, kTiesDown };

inline Exact divided_by_power_of_two(Exact value, int exponent, Rounding rounding) {
  // Operands have at most 65 bits, so that all exponents from 67 on give the same.
  exponent = std::min(exponent, 67);
  const Exact divisor = Exact{1} << exponent;
  const Exact quotient = value >> exponent, rest = value - quotient * divisor;
  switch (rounding) {
    case Rounding::kToZero: return quotient + (quotient < 0 && rest != 0);
    case Rounding::kDown: return quotient;
    case Rounding::kTiesToEven:
      return quotient + (2 * rest > divisor || (2 * rest == divisor && quotient % 2 != 0));
    case Rounding::kTiesAway: return quotient + (2 * rest > divisor || (2 * rest == divisor && value > 0));
    case Rounding::kTiesUp: return quotient + (2 * rest >= divisor);
    case Rounding::kTiesDown: return quotient + (2 * rest > divisor);
  }
  throw std::logic_error("no such rounding");
}

// Saturates to 65 bits, which is beyond the bounds of every type.
inline Exact times_power_of_two(Exact value, int exponent) {
  exponent = std::min(exponent, 64);
  const Exact bound = Exact{1} << (64 - exponent);
  return std::clamp(value, -bound, bound) * (Exact{1} << exponent);
}

inline Exact scaled_by_power_of_two(Exact value, int exponent, Rounding rounding) {
  return exponent < 0 ? divided_by_power_of_two(value, -exponent, rounding)
                      : times_power_of_two(value, exponent);
}

// Rounded to `digits` significant bits, ties to even, as by a conversion to floating point.
inline Exact rounded_to_digits(Exact value, int digits) {
  const Exact magnitude = value < 0 ? -value : value;
  int excess = 0;
  while (magnitude >> excess >> digits != 0) ++excess;
  return times_power_of_two(divided_by_power_of_two(value, excess, Rounding::kTiesToEven), excess);
}

// value * 2^n where n is the lowest byte of the count, as a signed number.
inline Exact shifted_by_low_byte(Exact value, int count, Rounding rounding) {
  const int byte = count % 256;
  return scaled_by_power_of_two(value, byte < 128 ? byte : byte - 256, rounding);
}

// NaN counts as 0; beyond 64 bits the value is clamped.
inline Exact rounded_to_integer(double value, Rounding rounding) {
  if (std::isnan(value)) return 0;
  int exponent;
  const double fraction = std::frexp(std::clamp(value, -0x1p64, 0x1p64), &exponent);
  return scaled_by_power_of_two(static_cast<int64_t>(std::ldexp(fraction, 53)), exponent - 53, rounding);
}

// The nearest number of a format of so many digits, ties to even. The smallest one is 2^least_exponent, and from
// `infinite_from` on it has infinities. Every step is exact but the choice between two neighbours.
inline double rounded_to_format(double value, int digits, int least_exponent, double infinite_from) {
  if (std::isnan(value)) return std::numeric_limits<double>::quiet_NaN();
  const double magnitude = std::fabs(value);
  double result = std::numeric_limits<double>::infinity();
  if (magnitude < infinite_from) {
    int exponent;
    std::frexp(magnitude, &exponent);
    const double quantum = std::ldexp(1.0, std::max(exponent - digits, least_exponent));
    double steps = std::floor(magnitude / quantum);
    const double rest = magnitude / quantum - steps;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(steps, 2) == 1)) ++steps;
    result = steps * quantum;
  }
  return std::signbit(value) ? -result : result;
}

}  // namespace zivks_test

#endif
