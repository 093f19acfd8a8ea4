#include "reference/multiply_accumulate.h"

#include "reference/exact.h"
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

// The sum is rounded to a floating-point type of `digits` bits, then scaled by a power of two, rounded to an
// integer and saturated.
template <class S, class T, int digits>
T scaled_product(S a, S b, T c, double scale) {
  const Exact sum = rounded_to_digits(Exact{a} * b + c, digits);
  return saturated<T>(scaled_by_power_of_two(sum, reference_scale_exponent(scale), Rounding::kTiesToEven));
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
