// Zero crossings of samples that come from a function of the index, so that long arrays need no memory.
#ifndef ZIVKS_TESTS_REFERENCE_ZERO_CROSSING_H
#define ZIVKS_TESTS_REFERENCE_ZERO_CROSSING_H

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace zivks_test {

// The contribution of a pair of neighbours. Kind 2 takes the sign of a NaN as NaN in a block and as -1 in the
// tail.
template <class T>
float crossing(T a, T b, int32_t kind, bool in_block) {
  if (kind == 0) {
    if constexpr (std::is_integral_v<T>) return int32_t{a} * int32_t{b} < 0 ? 1.0F : 0.0F;
    const float product = static_cast<float>(a) * static_cast<float>(b);
    return product < 0 ? 1.0F : 0.0F;
  }
  if (kind == 1) {
    if constexpr (std::is_integral_v<T>) return (a < 0) != (b < 0) ? 1.0F : 0.0F;
    return std::signbit(a) != std::signbit(b) ? 1.0F : 0.0F;
  }
  const auto sign = [in_block](T value) -> float {
    if (value != value) return in_block ? std::numeric_limits<float>::quiet_NaN() : -1;
    return value > 0 ? 1.0F : value < 0 ? -1.0F : 0.0F;
  };
  return std::fabs(sign(b) - sign(a));
}

// Each lane of a block has a count of its own, of kind 2 in float32. The counts are converted to float32 and
// added pairwise; the tail is added to that sum.
template <class Sample>
float reference_crossings(size_t length, int32_t kind, Sample sample) {
  using T = decltype(sample(size_t{0}));
  const size_t block = std::is_integral_v<T> && kind == 2 ? 8 : 4, pairs = length - 1,
               blocks = pairs / block * block;
  std::array<int64_t, 8> counts = {};
  std::array<float, 8> sums = {};
  for (size_t i = 0; i < blocks; ++i) {
    const float contribution = crossing<T>(sample(i), sample(i + 1), kind, true);
    if (kind == 2) {
      sums[i % block] += contribution;
    } else {
      counts[i % block] += static_cast<int64_t>(contribution);
    }
  }
  for (size_t i = 0; kind != 2 && i < block; ++i) sums[i] = static_cast<float>(counts[i]);
  float count = (sums[0] + sums[1]) + (sums[2] + sums[3]);
  if (block == 8) count += (sums[4] + sums[5]) + (sums[6] + sums[7]);
  for (size_t i = blocks; i < pairs; ++i) count += crossing<T>(sample(i), sample(i + 1), kind, false);
  if (kind != 2) return count;
  return std::is_integral_v<T> ? std::trunc(count * 0.5F) : count * 0.5F;
}

}  // namespace zivks_test

#endif
