#include "reference/multiply_accumulate.h"

#include <algorithm>

#include "reference/reference.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

template <class T>
T fused(T a, T b, T c) {
  return std::fma(a, b, c);
}

template <class T>
T fused_constant(T a, T c, T val) {
  return std::fma(a, val, c);
}

template <class C>
std::vector<Bytes> complex_products(const Function& function, const Operands& operands) {
  const auto len = static_cast<size_t>(operands.length);
  std::vector<C> array[3];
  for (size_t i = 0; i < 3; ++i) {
    for (size_t k = 0; k < len; ++k) array[i].push_back(input_element<C>(function, operands, i, k));
  }
  reference_add_product(array[0].data(), array[1].data(), array[2].data(), len);
  Outputs outputs(function, operands);
  for (size_t k = 0; k < len; ++k) outputs.set(0, k, array[2][k]);
  return outputs.take();
}

__extension__ using Wide = __int128;

// value / 2^shift, to the nearest integer, ties to even.
Wide divide_to_nearest(Wide value, int shift) {
  const Wide power = Wide{1} << shift, floor = (value - (value % power + power) % power) / power;
  const Wide twice_rest = 2 * (value - floor * power);
  return floor + (twice_rest > power || (twice_rest == power && floor % 2 != 0) ? 1 : 0);
}

// To so many significant bits, as a conversion to floating point rounds.
Wide round_to_digits(Wide value, int digits) {
  const Wide magnitude = value < 0 ? -value : value;
  int excess = 0;
  while (magnitude >> excess >> digits != 0) ++excess;
  return divide_to_nearest(value, excess) * (Wide{1} << excess);
}

// The sum goes to a floating-point type of so many digits, is scaled by a power of two, rounded and
// saturated.
template <class T, int digits>
T scaled(Wide sum, double scale) {
  constexpr Wide kLow = std::numeric_limits<T>::min(), kHigh = std::numeric_limits<T>::max();
  const int exponent =
      std::clamp(reference_scale_exponent(scale), -100, 60);  // saturates, or is 0, beyond these
  const Wide value = round_to_digits(sum, digits);
  const Wide result = exponent < 0 ? divide_to_nearest(value, -exponent)
                                   : std::clamp(value, 2 * kLow, 2 * kHigh) * (Wide{1} << exponent);
  return static_cast<T>(std::clamp(result, kLow, kHigh));
}

template <class S, class T, int digits>
T scaled_product(S a, S b, T c, double scale) {
  return scaled<T, digits>(Wide{a} * b + c, scale);
}

}  // namespace

References multiply_accumulate_references() {
  return {{"ZIVKS_AddProduct_32f", elementwise(fused<float>)},
          {"ZIVKS_AddProduct_64f", elementwise(fused<double>)},
          {"ZIVKS_AddProduct_32fc", complex_products<ZIVK32fc>},
          {"ZIVKS_AddProduct_64fc", complex_products<ZIVK64fc>},
          {"ZIVKS_AddProductC_32f", elementwise(fused_constant<float>)},
          {"ZIVKS_AddProductC_64f", elementwise(fused_constant<double>)},
          {"ZIVKS_AddProduct_16s_S", elementwise(scaled_product<int16_t, int16_t, 24>)},
          {"ZIVKS_AddProduct_32s_S", elementwise(scaled_product<int32_t, int32_t, 53>)},
          {"ZIVKS_AddProduct_16s32s_S", elementwise(scaled_product<int16_t, int32_t, 53>)}};
}

}  // namespace zivks_test
