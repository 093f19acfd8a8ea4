// The scale rule: a `scale` argument selects a power of two.
#ifndef ZIVKS_CORE_SCALE_H
#define ZIVKS_CORE_SCALE_H

#include <cstdint>
#include <limits>

#include "core/vector/register.h"

namespace zivks {

// Positive and finite. A NaN fails both comparisons.
inline bool is_valid_scale(double scale) { return scale > 0 && scale <= std::numeric_limits<double>::max(); }

// Exponent of the multiplier: log2(1 / scale) truncated toward zero, so that every scale moves to a power of
// two in the direction of 1 and none between 1/2 and 2, both excluded, has any effect. This is deliberate:
// the result is not the nearest power of two.
inline int scale_exponent(double scale) {
  constexpr int kMantissaBits = 52, kExponentBias = 1023;
  const uint64_t bits = read<uint64_t>(&scale);
  int exponent = static_cast<int>(bits >> kMantissaBits);
  uint64_t mantissa = bits & ((uint64_t{1} << kMantissaBits) - 1);
  if (exponent == 0) {  // subnormal: bring the leading bit to where the others have it
    const int shift = __builtin_clzll(mantissa) - (63 - kMantissaBits);
    mantissa = (mantissa << shift) & ((uint64_t{1} << kMantissaBits) - 1);
    exponent = 1 - shift;
  }
  const int floor_of_logarithm = exponent - kExponentBias;
  // A scale below 1 is rounded up to a power of two, one above 1 down.
  return -(floor_of_logarithm < 0 && mantissa != 0 ? floor_of_logarithm + 1 : floor_of_logarithm);
}

// 2^exponent, correctly rounded: infinity above the range of float64, a subnormal or zero below it.
inline double power_of_two(int exponent) {
  uint64_t bits;
  if (exponent > 1023) {
    bits = uint64_t{0x7FF} << 52;
  } else if (exponent >= -1022) {
    bits = static_cast<uint64_t>(exponent + 1023) << 52;
  } else if (exponent >= -1074) {
    bits = uint64_t{1} << (exponent + 1074);
  } else {
    bits = 0;
  }
  return read<double>(&bits);
}

inline double scale_multiplier(double scale) { return power_of_two(scale_exponent(scale)); }

}  // namespace zivks

#endif
