// The scale rule: a `scale` argument selects a power of two.
#ifndef ZIVKS_CORE_SCALE_H
#define ZIVKS_CORE_SCALE_H

#include <cstdint>
#include <limits>

#include "core/vector/register.h"

namespace zivks {

inline constexpr int kMantissaBits = 52;
inline constexpr int kExponentBias = 1023;
inline constexpr uint64_t kMantissaMask = (uint64_t{1} << kMantissaBits) - 1;
inline constexpr uint64_t kInfinityBits = uint64_t{0x7FF} << kMantissaBits;

// Positive and finite: the bit patterns between those of zero and of infinity.
inline bool is_valid_scale(double scale) { return read<uint64_t>(&scale) - 1 < kInfinityBits - 1; }

// Exponent of the multiplier: log2(1 / scale) truncated toward zero, so that every scale moves to a power of
// two in the direction of 1 and none between 1/2 and 2, both excluded, has any effect. This is deliberate:
// the result is not the nearest power of two.
inline int scale_exponent(double scale) {
  uint64_t bits = read<uint64_t>(&scale);
  int subnormal_shift = 0;
  if (bits <= kMantissaMask) {  // subnormal: bring the leading bit to where the others have it
    subnormal_shift = __builtin_clzll(bits) - (63 - kMantissaBits);
    bits = (bits << subnormal_shift) - (uint64_t{1} << kMantissaBits);
    subnormal_shift -= 1;
  }
  const int floor_of_logarithm = static_cast<int>(bits >> kMantissaBits) - subnormal_shift - kExponentBias;
  // A scale below 1 is rounded up to a power of two, one above 1 down.
  const bool rounds_up = floor_of_logarithm < 0 && (bits & kMantissaMask) != 0;
  return -(floor_of_logarithm + rounds_up);
}

// log2 of the divisor: a positive shift divides, a negative one multiplies.
inline int scale_shift(double scale) { return -scale_exponent(scale); }

// Where a member shifts to the left, only the lowest eight bits of the count take effect, as a signed number,
// so that from 128 on it can mean a shift to the right.
inline constexpr int kLeastWrappingShift = 128;
inline int wrapped_shift(int count) { return static_cast<int8_t>(static_cast<uint8_t>(count)); }

// 2^exponent, correctly rounded: infinity above the range of float64, a subnormal or zero below it.
inline double power_of_two(int exponent) {
  uint64_t bits = 0;
  if (exponent > kExponentBias) {
    bits = kInfinityBits;
  } else if (exponent > -kExponentBias) {
    bits = static_cast<uint64_t>(exponent + kExponentBias) << kMantissaBits;
  } else if (exponent >= 1 - kExponentBias - kMantissaBits) {
    bits = uint64_t{1} << (exponent + kExponentBias - 1 + kMantissaBits);
  }
  return read<double>(&bits);
}

[[gnu::cold, gnu::noinline]] inline double extreme_scale_multiplier(double scale) {
  return is_valid_scale(scale) ? power_of_two(scale_exponent(scale))
                               : std::numeric_limits<double>::quiet_NaN();
}

// The multiplier that `scale` selects, or NaN if the scale is not valid.
//
// The multiplier of a normal scale 2^e is 2^-e: the two biased exponents add up to twice the bias. Scales between
// powers of two are rounded to one of them first, those below 1 up, the others down.
inline double scale_multiplier(double scale) {
  constexpr uint64_t kOne = uint64_t{kExponentBias} << kMantissaBits;
  uint64_t bits = read<uint64_t>(&scale);
  if ((bits >> kMantissaBits) - 1 >= 2 * kExponentBias - 1) return extreme_scale_multiplier(scale);
  if (bits < kOne) bits += kMantissaMask;
  const uint64_t multiplier = 2 * kOne - (bits & ~kMantissaMask);
  return read<double>(&multiplier);
}

// A multiplier in the precision of T: infinite or 0 beyond its range, in every rounding mode of the processor.
template <class T>
inline T multiplier_in(double multiplier) {
  if constexpr (sizeof(T) == sizeof(float)) {
    if (multiplier >= 0x1p128) return std::numeric_limits<T>::infinity();
    if (multiplier < 0x1p-149) return 0;
  }
  return static_cast<T>(multiplier);
}

}  // namespace zivks

#endif
