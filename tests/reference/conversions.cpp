#include "reference/reference.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

template <class T, class S>
T exact(S value) {
  return static_cast<T>(value);
}

// To the nearest float of type F, ties to even, in integers.
template <class F>
F nearest_float(int64_t value) {
  const bool negative = value < 0;
  uint64_t magnitude = negative ? ~static_cast<uint64_t>(value) + 1 : static_cast<uint64_t>(value);
  int excess = 0;  // bits more than F holds
  while ((magnitude >> excess) >> std::numeric_limits<F>::digits != 0) ++excess;
  if (excess > 0) {
    const uint64_t half = uint64_t{1} << (excess - 1), rest = magnitude & (2 * half - 1);
    magnitude >>= excess;
    if (rest > half || (rest == half && magnitude % 2 == 1)) ++magnitude;
  }
  const F result = std::ldexp(static_cast<F>(magnitude), excess);
  return negative ? -result : result;
}
template <class F, class S>
F rounded(S value) {
  return nearest_float<F>(int64_t{value});
}

// To the nearest float32, ties to even; every step but the choice between two neighbours is exact.
float narrowed(double value) {
  if (std::isnan(value)) return std::numeric_limits<float>::quiet_NaN();
  const double magnitude = std::fabs(value);
  float result = std::numeric_limits<float>::infinity();
  if (magnitude < 0x1.ffffffp+127) {  // halfway from the largest float32 to the next power of two
    int exponent;
    std::frexp(magnitude, &exponent);
    const double quantum = std::ldexp(1.0, exponent - 24 < -149 ? -149 : exponent - 24);
    double steps = std::floor(magnitude / quantum);
    const double rest = magnitude / quantum - steps;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(steps, 2) == 1)) ++steps;
    result = static_cast<float>(steps * quantum);
  }
  return std::signbit(value) ? -result : result;
}

template <class F, class S>
F scaled(S value, double scale) {
  const double multiplier = reference_scale_multiplier(scale);
  if constexpr (sizeof(F) == 4) return rounded<F>(value) * narrowed(multiplier);
  return rounded<F>(value) * static_cast<F>(multiplier);
}

}  // namespace

References conversion_references() {
  return {
      {"ZIVKS_Convert_8u32f", elementwise(exact<float, uint8_t>)},
      {"ZIVKS_Convert_8s16s", elementwise(exact<int16_t, int8_t>)},
      {"ZIVKS_Convert_8s32f", elementwise(exact<float, int8_t>)},
      {"ZIVKS_Convert_16u32f", elementwise(exact<float, uint16_t>)},
      {"ZIVKS_Convert_16s32s", elementwise(exact<int32_t, int16_t>)},
      {"ZIVKS_Convert_16s32f", elementwise(exact<float, int16_t>)},
      {"ZIVKS_Convert_32s32f", elementwise(rounded<float, int32_t>)},
      {"ZIVKS_Convert_32s64f", elementwise(exact<double, int32_t>)},
      {"ZIVKS_Convert_32f64f", elementwise(exact<double, float>)},
      {"ZIVKS_Convert_64s64f", elementwise(rounded<double, int64_t>)},
      {"ZIVKS_Convert_64f32f", elementwise(narrowed)},
      {"ZIVKS_Convert_16s32f_S", elementwise(scaled<float, int16_t>)},
      {"ZIVKS_Convert_16s64f_S", elementwise(scaled<double, int16_t>)},
      {"ZIVKS_Convert_32s32f_S", elementwise(scaled<float, int32_t>)},
      {"ZIVKS_Convert_32s64f_S", elementwise(scaled<double, int32_t>)},
  };
}

}  // namespace zivks_test
