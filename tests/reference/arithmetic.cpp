#include "reference/reference.h"

namespace zivks_test {
namespace {

// An exact value as T: integers saturate; a float type holds the value unchanged.
template <class T>
T from_exact(int64_t value) {
  if constexpr (std::is_integral_v<T>) {
    if (value > int64_t{std::numeric_limits<T>::max()}) return std::numeric_limits<T>::max();
    if (value < int64_t{std::numeric_limits<T>::min()}) return std::numeric_limits<T>::min();
  }
  return static_cast<T>(value);
}

// The result type R may be wider than the operands'.
template <class T, class R = T>
R sum(T a, T b) {
  if constexpr (ElementParts<T>::kCount == 2) {
    return {sum(a.re, b.re), sum(a.im, b.im)};
  } else if constexpr (std::is_floating_point_v<T>) {
    return a + b;
  } else {
    return from_exact<R>(int64_t{a} + int64_t{b});
  }
}
template <class T, class R = T>
R first_minus_second(T a, T b) {
  if constexpr (ElementParts<T>::kCount == 2) {
    return {first_minus_second(a.re, b.re), first_minus_second(a.im, b.im)};
  } else if constexpr (std::is_floating_point_v<T>) {
    return a - b;
  } else {
    return from_exact<R>(int64_t{a} - int64_t{b});
  }
}
template <class T, class R = T>
R second_minus_first(T a, T b) {
  return first_minus_second<T, R>(b, a);
}

int32_t wrapping_sum(int16_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(b) + static_cast<uint32_t>(int32_t{a}));
}

template <class T>
T magnitude(T value) {
  if constexpr (std::is_floating_point_v<T>) {  // without the sign bit, of a NaN too
    return bit_cast<T>(bit_cast<BitsOf<T>>(value) & ~(BitsOf<T>{1} << (8 * sizeof(T) - 1)));
  } else {
    return from_exact<T>(value < 0 ? -int64_t{value} : int64_t{value});
  }
}

template <class T>
void add_float_type(References& references, const std::string& type) {
  references["ZIVKS_Add_" + type] = elementwise(sum<T>);
  references["ZIVKS_Sub_" + type] = elementwise(second_minus_first<T>);
  references["ZIVKS_AddC_" + type] = elementwise(sum<T>);
  references["ZIVKS_SubC_" + type] = elementwise(first_minus_second<T>);
  references["ZIVKS_SubCRev_" + type] = elementwise(second_minus_first<T>);
}

}  // namespace

References arithmetic_references() {
  References references = {
      {"ZIVKS_Abs_16s", elementwise(magnitude<int16_t>)},
      {"ZIVKS_Abs_32s", elementwise(magnitude<int32_t>)},
      {"ZIVKS_Abs_32f", elementwise(magnitude<float>)},
      {"ZIVKS_Abs_64f", elementwise(magnitude<double>)},
      {"ZIVKS_Add_8u16u", elementwise(sum<uint8_t, uint16_t>)},
      {"ZIVKS_Add_16u", elementwise(sum<uint16_t>)},
      {"ZIVKS_Add_32u", elementwise(sum<uint32_t>)},
      {"ZIVKS_Add_16s", elementwise(sum<int16_t>)},
      {"ZIVKS_Sub_16s", elementwise(second_minus_first<int16_t>)},
      {"ZIVKS_Add_16s32f", elementwise(sum<int16_t, float>)},
      {"ZIVKS_Sub_16s32f", elementwise(second_minus_first<int16_t, float>)},
      {"ZIVKS_Add_16s32s_I", elementwise(wrapping_sum)},
      {"ZIVKS_AddC_16s_I", elementwise(sum<int16_t>)},
      {"ZIVKS_SubC_16s_I", elementwise(first_minus_second<int16_t>)},
  };
  add_float_type<float>(references, "32f");
  add_float_type<double>(references, "64f");
  add_float_type<ZIVK32fc>(references, "32fc");
  add_float_type<ZIVK64fc>(references, "64fc");
  return references;
}

}  // namespace zivks_test
