// Every operation of the vector layer, for every type that has it, against a scalar model.
//
// The models are lambdas over single elements. Operands are special values and noise; each pair of them meets
// in every lane.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <limits>
#include <set>
#include <vector>

#include "core/loops.h"
#include "generic/values.h"
#include "reference/exact.h"

namespace zivks {
namespace {

using zivks_test::Exact, zivks_test::saturated;

template <class T>
std::vector<T> telling_values() {
  std::vector<T> values = zivks_test::special_values<T>();
  zivks_test::Random random(7);
  for (int i = 0; i < 40; ++i)
    values.push_back(zivks_test::random_part<T>(random, zivks_test::Flavour::kManySpecial));
  return values;
}

template <class T>
Register<T> register_of(const std::vector<T>& values, size_t first) {
  T elements[kRegisterElements<T>];
  for (size_t i = 0; i < kRegisterElements<T>; ++i) elements[i] = values[(first + i) % values.size()];
  return load(elements);
}

// NaNs that arithmetic makes are equal to one another; everything else has to agree bit for bit.
template <class T>
bool same(T a, T b) {
  return (a != a && b != b) || std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <class T>
void report(const char* what, size_t lane, T actual, T expected) {
  char text[2][64];
  for (const auto& [value, out] : {std::pair(actual, text[0]), std::pair(expected, text[1])}) {
    if constexpr (std::is_floating_point_v<T>) {
      snprintf(out, sizeof text[0], "%a", double(value));
    } else {
      snprintf(out, sizeof text[0], "%s", std::to_string(value).c_str());
    }
  }
  ADD_FAILURE() << what << " in lane " << lane << ": " << text[0] << ", expected " << text[1];
}

template <class T, class Operation, class Model>
void expect_unary(const char* what, Operation operation, Model model,
                  const std::vector<T>& values = telling_values<T>()) {
  for (size_t i = 0; i < values.size(); ++i) {
    const Register<T> a = register_of(values, i);
    const auto result = operation(a);
    for (size_t k = 0; k < kRegisterElements<T>; ++k) {
      const auto expected = model(T(a[k]));
      const decltype(expected) actual = result[k];
      if (!same<decltype(model(T()))>(actual, expected)) return report(what, k, actual, expected);
    }
  }
}

template <class T, class Operation, class Model>
void expect_binary(const char* what, Operation operation, Model model) {
  const std::vector<T> values = telling_values<T>();
  for (size_t i = 0; i < values.size(); ++i) {
    for (size_t j = 0; j < values.size(); ++j) {
      const Register<T> a = register_of(values, i), b = register_of(values, j);
      const auto result = operation(a, b);
      for (size_t k = 0; k < kRegisterElements<T>; ++k) {
        const T expected = T(model(T(a[k]), T(b[k]))), actual = T(result[k]);
        if (!same(actual, expected)) return report(what, k, actual, expected);
      }
    }
  }
}

template <class T>
T lesser(T a, T b) {
  if (a != a || b != b) return std::numeric_limits<T>::quiet_NaN();
  if constexpr (std::is_floating_point_v<T>) {
    if (a == b) return std::signbit(a) ? a : b;
  }
  return a < b ? a : b;
}
template <class T>
T greater(T a, T b) {
  if (a != a || b != b) return std::numeric_limits<T>::quiet_NaN();
  if constexpr (std::is_floating_point_v<T>) {
    if (a == b) return std::signbit(a) ? b : a;
  }
  return a > b ? a : b;
}

// Runs `body` with a value of each type.
template <class... Types, class Body>
void for_types(Body body) {
  (body(Types()), ...);
}

TEST(VectorLayer, SaturatingArithmetic) {
  for_types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t>([](auto type) {
    using T = decltype(type);
    expect_binary<T>(
        "sum", [](auto a, auto b) { return add_saturating(a, b); },
        [](T a, T b) { return saturated<T>(Exact{a} + b); });
  });
  for_types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t>([](auto type) {
    using T = decltype(type);
    expect_binary<T>(
        "difference", [](auto a, auto b) { return subtract_saturating(a, b); },
        [](T a, T b) { return saturated<T>(Exact{a} - b); });
  });
  for_types<int16_t, int32_t>([](auto type) {
    using T = decltype(type);
    expect_unary<T>(
        "absolute value", [](auto a) { return absolute_saturating(a); },
        [](T a) { return saturated<T>(a < 0 ? -Exact{a} : a); });
  });
  expect_binary<int16_t>(
      "sign of product", [](auto a, auto b) { return negative_product(a, b); },
      [](int16_t a, int16_t b) { return int(a) * int(b) < 0 ? -1 : 0; });
}

// By every count: beyond the width nothing is left but zeros, or copies of the sign.
TEST(VectorLayer, Shifts) {
  for (int count : {0, 1, 2, 7, 8, 9, 15, 16, 17, 31, 32, 33, 62, 63, 64, 65, 100, 127}) {
    for_types<uint8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t>([=](auto type) {
      using T = decltype(type);
      expect_unary<T>(
          "left shift", [=](auto a) { return shift_left(a, count); },
          [=](T a) { return T(static_cast<unsigned __int128>(a) << count); });
      expect_unary<T>(
          "right shift", [=](auto a) { return shift_right(a, count); },
          [=](T a) { return T(Exact{a} >> count); });
    });
    for_types<uint8_t, uint16_t, int16_t, int32_t, uint64_t, int64_t>([=](auto type) {
      using T = decltype(type);
      expect_unary<T>(
          "saturating left shift", [=](auto a) { return shift_left_saturating(a, count); },
          [=](T a) { return saturated<T>(zivks_test::times_power_of_two(a, count)); });
    });
  }
}

// The floor of x / 2^count.
__extension__ typedef __int128 Wide;
Wide floor_divided(Wide x, int count) { return x >> count; }

TEST(VectorLayer, ShiftsThatRoundHalvesUp) {
  for_types<uint8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t>([](auto type) {
    using T = decltype(type);
    for (int count = 1; count < int(8 * sizeof(T)); ++count) {
      expect_unary<T>(
          "rounding shift", [=](auto a) { return shift_right_half_up(a, count); },
          [=](T a) { return T(floor_divided(a + (Wide{1} << (count - 1)), count)); });
      expect_unary<T>(
          "lowest bits", [=](auto a) { return lowest_bits(a, count); },
          [=](T a) { return T(a - floor_divided(a, count) * (Wide{1} << count)); });
    }
  });
}

TEST(VectorLayer, HalvedSumsAndDifferences) {
  for_types<uint8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t>([](auto type) {
    using T = decltype(type);
    expect_binary<T>(
        "average", [](auto a, auto b) { return average_up(a, b); },
        [](T a, T b) { return floor_divided(Wide{a} + b + 1, 1); });
    expect_binary<T>(
        "average", [](auto a, auto b) { return average_down(a, b); },
        [](T a, T b) { return floor_divided(Wide{a} + b, 1); });
  });
  for_types<int16_t, int32_t>([](auto type) {
    using T = decltype(type);
    expect_binary<T>(
        "half of difference", [](auto a, auto b) { return half_difference_down(a, b); },
        [](T a, T b) { return floor_divided(Wide{a} - b, 1); });
  });
}

TEST(VectorLayer, MinimumAndMaximum) {
  for_types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, int64_t, float, double>([](auto type) {
    using T = decltype(type);
    expect_binary<T>(
        "minimum", [](auto a, auto b) { return minimum(a, b); }, lesser<T>);
    expect_binary<T>(
        "maximum", [](auto a, auto b) { return maximum(a, b); }, greater<T>);
    const std::vector<T> values = telling_values<T>();
    for (size_t i = 0; i < values.size(); ++i) {
      const Register<T> a = register_of(values, i);
      T least = a[0], most = a[0];
      for (size_t k = 1; k < kRegisterElements<T>; ++k)
        least = lesser<T>(least, a[k]), most = greater<T>(most, a[k]);
      ASSERT_TRUE(same<T>(reduce_minimum(a), least)) << i;
      ASSERT_TRUE(same<T>(reduce_maximum(a), most)) << i;
    }
  });
}

TEST(VectorLayer, ProductsOf64Bits) {
  expect_binary<uint64_t>(
      "product", [](auto a, auto b) { return multiply(a, b); }, [](uint64_t a, uint64_t b) { return a * b; });
  expect_binary<uint64_t>(
      "product of half a word", [](auto a, auto b) { return multiply_half(a >> 32, b); },
      [](uint64_t a, uint64_t b) { return (a >> 32) * b; });
}

TEST(VectorLayer, SumOfLanes) {
  for_types<int16_t, int32_t, int64_t>([](auto type) {
    using T = decltype(type);
    const std::vector<T> values = telling_values<T>();
    for (size_t i = 0; i < values.size(); ++i) {
      const Register<T> a = register_of(values, i);
      uint64_t sum = 0;
      for (size_t k = 0; k < kRegisterElements<T>; ++k) sum += uint64_t(int64_t(a[k]));
      ASSERT_EQ(reduce_add(a), T(sum));
    }
  });
}

TEST(VectorLayer, WatchForNan) {
  for_types<float, double>([](auto type) {
    using T = decltype(type);
    const std::vector<T> values = telling_values<T>();
    for (size_t i = 0; i < values.size(); ++i) {
      const Register<T> a = register_of(values, i), b = register_of(values, 3 * i),
                        watch = register_of(values, 7 * i);
      const Register<T> result = watch_nan(watch, a, b);
      bool any = false;
      for (size_t k = 0; k < kRegisterElements<T>; ++k) any |= result[k] != result[k];
      for (size_t k = 0; k < kRegisterElements<T>; ++k) {
        const bool expected = a[k] != a[k] || b[k] != b[k] || watch[k] != watch[k];
        if (watch[k] != 0 && watch[k] == watch[k]) continue;  // a watch begins at zero
        ASSERT_EQ(result[k] != result[k], expected);
      }
      ASSERT_EQ(has_nan(result), any);
    }
  });
}

TEST(VectorLayer, LanesOfComparisons) {
  for_types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, float, double>([](auto type) {
    using T = decltype(type);
    constexpr size_t N = kRegisterElements<T>;
    EXPECT_FALSE(any_true(Register<T>{} != Register<T>{}));
    for (size_t first = 0; first < N; ++first) {
      for (size_t last = first; last < N; ++last) {
        T elements[N] = {};
        elements[first] = elements[last] = T(1);
        const auto comparison = load(elements) != Register<T>{};
        ASSERT_TRUE(any_true(comparison));
        ASSERT_EQ(first_true(comparison), first);
      }
      const auto lanes = lanes_from<T>(first);
      for (size_t k = 0; k < N; ++k) ASSERT_EQ(lanes[k], k >= first ? -1 : 0);
      EXPECT_FALSE(any_true(~lanes_from<T>(0 - first)));
    }
    EXPECT_FALSE(any_true(lanes_from<T>(N)));
  });
}

TEST(VectorLayer, OfFloat64) {
  expect_unary<double>(
      "whole part", [](auto a) { return whole_part(a); }, [](double a) { return std::trunc(a); });
}

// Where one of the operands is below the other.
TEST(VectorLayer, LesserAndGreater) {
  for_types<float, double>([](auto type) {
    using T = decltype(type);
    expect_binary<T>(
        "lesser",
        [](auto a, auto b) { return select((a < b) | (a > b), zivks::lesser(a, b), Register<T>{}); },
        [](T a, T b) { return a < b   ? a
                              : a > b ? b
                                      : T{0}; });
    expect_binary<T>(
        "greater",
        [](auto a, auto b) { return select((a < b) | (a > b), zivks::greater(a, b), Register<T>{}); },
        [](T a, T b) { return a < b   ? b
                              : a > b ? a
                                      : T{0}; });
  });
}

TEST(VectorLayer, BitsOfFloats) {
  for_types<float, double>([](auto type) {
    using T = decltype(type);
    using Bits = UnsignedOf<sizeof(T)>;
    const std::vector<T> values = telling_values<T>();
    for (size_t i = 0; i < values.size(); ++i) {
      const auto before = Register<Bits>(register_of(values, i)), all = Register<Bits>(broadcast(values[i])),
                 after = Register<Bits>(absolute(register_of(values, i)));
      for (size_t k = 0; k < kRegisterElements<T>; ++k) {
        ASSERT_EQ(Bits(all[k]), Bits(before[0]));
        ASSERT_EQ(Bits(after[k]), Bits(before[k] << 1) >> 1);
      }
    }
    expect_binary<T>(
        "selection", [](auto a, auto b) { return select(a > b, a, b); },
        [](T a, T b) { return a > b ? a : b; });
  });
}

// Whole steps of a kernel, as the drivers make them.
template <class From, class To, class Operation, class Model>
void expect_lanes(const char* what, Operation operation, Model model, const std::vector<From>& values) {
  constexpr size_t N = kRegisterBytes / std::min(sizeof(From), sizeof(To));
  for (size_t i = 0; i < values.size(); ++i) {
    From source[N];
    To result[N];
    for (size_t k = 0; k < N; ++k) source[k] = values[(i + k) % values.size()];
    Array<To>{result}.template store<N>(0, operation(Array<const From>{source}.template load<N>(0)));
    for (size_t k = 0; k < N; ++k) {
      const To expected = To(model(source[k]));
      if (!same(result[k], expected)) return report(what, k, result[k], expected);
    }
  }
}

template <class From, class... To>
void expect_widening() {
  (expect_lanes<From, To>(
       "widened", [](auto a) { return widen<To>(a); }, [](From a) { return To(a); }, telling_values<From>()),
   ...);
}
template <class From, class... To>
void expect_narrowing() {
  (expect_lanes<From, To>(
       "narrowed", [](auto a) { return narrow_saturating<To>(a); }, [](From a) { return saturated<To>(a); },
       telling_values<From>()),
   ...);
}
template <class From, class To>
void expect_conversion() {
  for (int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    std::fesetround(mode);
    expect_lanes<From, To>(
        "converted", [](auto a) { return convert<To>(a); },
        [](From a) {
          volatile From value = a;  // converted here and now, in this mode
          return static_cast<To>(value);
        },
        telling_values<From>());
  }
  std::fesetround(FE_TONEAREST);
}

TEST(VectorLayer, Widths) {
  expect_widening<uint8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t>();
  expect_widening<int8_t, int16_t, int32_t, int64_t>();
  expect_widening<uint16_t, uint32_t, int32_t, uint64_t>();
  expect_widening<int16_t, int32_t, int64_t>();
  expect_widening<uint32_t, uint64_t, int64_t>();
  expect_widening<int32_t, int64_t>();
  expect_narrowing<int16_t, int8_t, uint8_t>();
  expect_narrowing<uint16_t, int8_t, uint8_t>();
  expect_narrowing<int32_t, int16_t, uint16_t, int8_t, uint8_t>();
  expect_narrowing<uint32_t, int16_t, uint16_t>();
}

TEST(VectorLayer, ConversionsToFloatingPoint) {
  expect_conversion<int32_t, float>();
  expect_conversion<int32_t, double>();
  expect_conversion<int64_t, double>();
  expect_conversion<float, double>();
  expect_conversion<double, float>();
}

// Rounded exactly and clamped to the bounds of To, or to narrower ones; NaN gives 0.
template <class To, ZIVKRoundMode mode, class From>
To rounded(From value, Exact low = std::numeric_limits<To>::min(),
           Exact high = std::numeric_limits<To>::max()) {
  using zivks_test::Rounding;
  constexpr Rounding kRounding = mode == ZIVK_RND_ZERO   ? Rounding::kToZero
                                 : mode == ZIVK_RND_NEAR ? Rounding::kTiesToEven
                                                         : Rounding::kTiesAway;
  if (value != value) return 0;
  return static_cast<To>(std::clamp(zivks_test::rounded_to_integer(double{value}, kRounding), low, high));
}

template <class From, ZIVKRoundMode mode, class... To>
void expect_rounding() {
  (expect_lanes<From, To>(
       "rounded", [](auto a) { return round_saturating<To, mode>(a); },
       [](From a) { return rounded<To, mode>(a); }, zivks_test::values_around_ties<From>()),
   ...);
}
template <class To, ZIVKRoundMode mode>
void expect_rounding_below_limit() {
  expect_unary<float>(
      "rounded below a limit", [](auto a) { return round_clamped_above<To, mode>(a, 200); },
      [](float a) { return rounded<To, mode>(a, std::numeric_limits<To>::min(), 200); },
      zivks_test::values_around_ties<float>());
}
template <class To>
void expect_rounding_to_triples() {
  constexpr To kBytes = 0xFFFFFF;
  expect_unary<float>(
      "rounded to three bytes",
      [](auto a) { return round_to_triples<To, ZIVK_RND_NEAR>(a) & broadcast(kBytes); },
      [](float a) {
        const auto low = static_cast<Exact>(kLeastTriple<To>), high = static_cast<Exact>(kMostTriple<To>);
        return To(rounded<To, ZIVK_RND_NEAR>(a, low, high) & kBytes);
      },
      zivks_test::values_around_ties<float>());
}
// Values within the range of int32 only.
template <ZIVKRoundMode mode>
void expect_rounding_of_small() {
  constexpr size_t N = kRegisterElements<double>;
  std::vector<double> values = {2147483647, -2147483648.0};
  for (float value : zivks_test::values_around_ties<float>()) {
    if (std::fabs(value) < 0x1p31F) values.push_back(double(value));
  }
  for (size_t i = 0; i < values.size(); ++i) {
    const F64 low = register_of(values, i), high = register_of(values, 3 * i + N);
    const F32 both = narrow(low, high);
    const I32 of_doubles = round_unclamped<mode>(low, high), of_floats = round_unclamped<mode>(both);
    for (size_t k = 0; k < 2 * N; ++k) {
      const double value = k < N ? low[k] : high[k - N];
      ASSERT_EQ(of_doubles[k], (rounded<int32_t, mode>(value))) << value;
      if (std::fabs(both[k]) < 0x1p31F) {
        ASSERT_EQ(of_floats[k], (rounded<int32_t, mode>(float(both[k])))) << value;
      }
    }
  }
}
template <ZIVKRoundMode mode>
void expect_rounding_to_all_types() {
  expect_rounding<float, mode, uint8_t, int8_t, uint16_t, int16_t, int32_t>();
  expect_rounding<double, mode, uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, int64_t>();
  expect_rounding_below_limit<int32_t, mode>();
  expect_rounding_below_limit<uint32_t, mode>();
  expect_rounding_of_small<mode>();
}

TEST(VectorLayer, RoundingToIntegersIgnoresTheCurrentMode) {
  for (int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    std::fesetround(mode);
    expect_rounding_to_all_types<ZIVK_RND_ZERO>();
    expect_rounding_to_all_types<ZIVK_RND_NEAR>();
    expect_rounding_to_all_types<ZIVK_RND_AWAY>();
    expect_rounding_to_triples<uint32_t>();
    expect_rounding_to_triples<int32_t>();
  }
  std::fesetround(FE_TONEAREST);
}

TEST(VectorLayer, RoundingToHalfPrecision) {
  std::vector<float> values = zivks_test::values_around_ties<float>();
  for (int exponent = -27; exponent <= 16; ++exponent) {
    for (int steps : {1024, 1025, 1026, 1027, 2046, 2047}) {  // to a tie, and around it
      const float tie = std::ldexp(static_cast<float>(2 * steps + 1), exponent - 11);
      for (float value : {tie, std::nextafter(tie, 0.0F), std::nextafter(tie, 1e9F)})
        values.insert(values.end(), {value, -value});
    }
  }
  expect_unary<float>(
      "half", [](auto a) { return round_to_half(a); },
      [](float a) { return static_cast<float>(zivks_test::rounded_to_format(double{a}, 11, -24, 65520)); },
      values);
}

TEST(VectorLayer, FusedMultiplyAdd) {
  for_types<float, double>([](auto type) {
    using T = decltype(type);
    const T third = T(1) / 3;
    expect_binary<T>(
        "fused", [=](auto a, auto b) { return fused_multiply_add(a, b, broadcast(third)); },
        [=](T a, T b) { return std::fma(a, b, third); });
  });
}

TEST(VectorLayer, PairsOfElements) {
  for_types<float, double>([](auto type) {
    using T = decltype(type);
    const std::vector<T> values = telling_values<T>();
    const T third = T(1) / 3;
    for (size_t i = 0; i < values.size(); ++i) {
      const Register<T> a = register_of(values, i), even = duplicate_even(a), odd = duplicate_odd(a),
                        swapped = swap_pairs(a), negated = negate_even(a),
                        fused = fused_multiply_alternate(a, swapped, broadcast(third));
      for (size_t k = 0; k < kRegisterElements<T>; ++k) {
        ASSERT_TRUE(same(T(even[k]), T(a[k & ~size_t{1}])));
        ASSERT_TRUE(same(T(odd[k]), T(a[k | 1])));
        ASSERT_TRUE(same(T(swapped[k]), T(a[k ^ 1])));
        ASSERT_TRUE(same(T(negated[k]), k % 2 == 0 ? -T(a[k]) : T(a[k])));
        ASSERT_TRUE(same(T(fused[k]), std::fma(T(a[k]), T(a[k ^ 1]), k % 2 == 0 ? -third : third)));
      }
    }
  });
}

TEST(VectorLayer, SumsInFloat64) {
  const std::vector<int32_t> values = telling_values<int32_t>();
  constexpr size_t N = kRegisterElements<double>;
  for (size_t i = 0; i < values.size(); ++i) {
    for (size_t j = 0; j < values.size(); ++j) {
      const I32 a = register_of(values, i), b = register_of(values, j), c = register_of(values, i + 5 * j);
      const F64 sums[] = {sum_part<0>(a, b), sum_part<1>(a, b)},
                with_product[] = {sum_of_product_part<0>(a, b, c), sum_of_product_part<1>(a, b, c)};
      for (size_t k = 0; k < 2 * N; ++k) {
        const int64_t x = a[k], y = b[k], z = c[k];
        ASSERT_EQ(sums[k / N][k % N], double(x + y));
        ASSERT_EQ(with_product[k / N][k % N], double(x * y + z));
      }
    }
  }
}

TEST(VectorLayer, WideningProducts) {
  const std::vector<int16_t> values = telling_values<int16_t>();
  constexpr size_t N = kRegisterElements<int32_t>;
  for (size_t i = 0; i < values.size(); ++i) {
    const I16 a = register_of(values, i), b = register_of(values, 5 * i + 1);
    const I32 low = multiply_part<0>(a, b), high = multiply_part<1>(a, b);
    for (size_t k = 0; k < N; ++k) {
      ASSERT_EQ(low[k], a[k] * b[k]);
      ASSERT_EQ(high[k], a[N + k] * b[N + k]);
    }
    const I16 c = register_of(values, 7 * i + 2);
    const RegisterPair<I32> sums = multiply_add_apart(a, b, c);
    std::multiset<int> found, expected;
    for (size_t k = 0; k < N; ++k) found.insert({sums.first[k], sums.second[k]});
    const I16 joined = join_saturating(sums);
    for (size_t k = 0; k < 2 * N; ++k) {
      expected.insert(a[k] * b[k] + c[k]);
      ASSERT_EQ(joined[k], saturated<int16_t>(a[k] * b[k] + c[k]));
    }
    ASSERT_EQ(found, expected);
  }
}

TEST(VectorLayer, OrderOfElements) {
  for_types<uint8_t, int8_t, uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t, float, double>(
      [](auto type) {
        using T = decltype(type);
        constexpr size_t N = kRegisterElements<T>;
        T both[2 * N];
        for (size_t i = 0; i < 2 * N; ++i) both[i] = T(i + 1);
        const auto [even, odd] = deinterleave(load(both), load(both + N));
        const auto loaded = load_deinterleaved(both);
        const auto [low, high] = interleave(even, odd);
        T stored[2 * N];
        store_interleaved(stored, even, odd);
        const auto backward = reverse(load(both));
        for (size_t i = 0; i < N; ++i) {
          ASSERT_EQ(even[i], both[2 * i]);
          ASSERT_EQ(odd[i], both[2 * i + 1]);
          ASSERT_EQ(loaded.first[i], both[2 * i]);
          ASSERT_EQ(loaded.second[i], both[2 * i + 1]);
          ASSERT_EQ(stored[i], both[i]);
          ASSERT_EQ(stored[N + i], both[N + i]);
          ASSERT_EQ(low[i], both[i]);
          ASSERT_EQ(high[i], both[N + i]);
          ASSERT_EQ(backward[i], both[N - 1 - i]);
        }
      });
}

template <class T, size_t n>
void expect_every_nth() {
  T elements[n * kRegisterElements<T>];
  for (size_t i = 0; i < n * kRegisterElements<T>; ++i) elements[i] = T(i + 1);
  const auto picked = load_every<n>(elements);
  for (size_t i = 0; i < kRegisterElements<T>; ++i) ASSERT_EQ(picked[i], elements[i * n]) << n;
}

TEST(VectorLayer, EveryNthElement) {
  for_types<uint16_t, int16_t, uint32_t, int32_t, uint64_t, int64_t, float, double>([](auto type) {
    using T = decltype(type);
    expect_every_nth<T, 2>();
    expect_every_nth<T, 3>();
    expect_every_nth<T, 4>();
  });
}

template <size_t element, size_t bytes>
void expect_reversal() {
  const U8 before = register_of(telling_values<uint8_t>(), 0), after = reverse_bottom<element, bytes>(before);
  for (size_t i = 0; i < bytes; ++i) {
    ASSERT_EQ(after[i], before[bytes - element - i / element * element + i % element]) << element << bytes;
  }
}
template <size_t element>
void expect_reversals() {
  expect_reversal<element, element>();
  if constexpr (2 * element <= kRegisterBytes) expect_reversal<element, 2 * element>();
  if constexpr (4 * element <= kRegisterBytes / 2) expect_reversal<element, 4 * element>();
  expect_reversal<element, kRegisterBytes>();
}

TEST(VectorLayer, ReversalOfElementsAtTheBottom) {
  expect_reversals<1>();
  expect_reversals<2>();
  expect_reversals<4>();
  expect_reversals<8>();
  expect_reversals<16>();
}

TEST(VectorLayer, OrderOfBytes) {
  for_types<uint16_t, uint32_t, uint64_t>([](auto type) {
    using T = decltype(type);
    expect_unary<T>(
        "swapped", [](auto a) { return swap_bytes(a); },
        [](T a) {
          T swapped = 0;
          for (size_t i = 0; i < sizeof(T); ++i) swapped = T(swapped << 8 | (a >> 8 * i & 0xFF));
          return swapped;
        });
  });
  uint8_t triples[3 * kRegisterBytes], swapped[3 * kRegisterBytes];
  for (size_t i = 0; i < sizeof triples; ++i) triples[i] = uint8_t(i);
  store_triples(swapped, load_triples_reversed(triples));
  for (size_t i = 0; i < sizeof triples; ++i) ASSERT_EQ(swapped[i], i / 3 * 3 + 2 - i % 3);
}

// Elements of both signs.
template <class T>
void expect_widened_triples() {
  constexpr size_t N = 2 * kTriples;
  uint8_t triples[3 * N], back[3 * N];
  for (size_t i = 0; i < sizeof triples; ++i) triples[i] = uint8_t(250 + 8 * i + i / 32);
  const Lanes<T, N> widened = packed<T>(static_cast<const uint8_t*>(triples)).template load<N>(0);
  for (size_t i = 0; i < N; ++i) {
    const auto bits = uint32_t(triples[3 * i] | triples[3 * i + 1] << 8 | triples[3 * i + 2] << 16);
    const T expected = std::is_signed_v<T> && bits > 0x7FFFFF ? T(bits - 0x1000000) : T(bits);
    ASSERT_EQ(widened.part[i / kRegisterElements<T>][i % kRegisterElements<T>], expected) << i;
  }
  packed<T>(back).template store<N>(0, widened);
  ASSERT_EQ(std::memcmp(triples, back, sizeof back), 0);
}

TEST(VectorLayer, WideningAndNarrowingOfTriples) {
  expect_widened_triples<uint32_t>();
  expect_widened_triples<int32_t>();
}

TEST(VectorLayer, ShuffleOfBytes) {
  const std::vector<uint8_t> values = telling_values<uint8_t>();
  for (size_t i = 0; i < values.size(); ++i) {
    const U8 bytes = register_of(values, i);
    U8 index = register_of(values, 2 * i);
    index = select(index >= broadcast(uint8_t{128}), index, U8(index & broadcast(uint8_t{15})));
    const U8 result = shuffle_bytes(bytes, index);
    for (size_t k = 0; k < kRegisterBytes; ++k) {
      ASSERT_EQ(result[k], index[k] >= 128 ? 0 : bytes[k / 16 * 16 + index[k]]);
    }
  }
}

template <size_t bytes>
void expect_pieces() {
  uint8_t memory[2 * bytes], back[2 * bytes];
  for (size_t i = 0; i < 2 * bytes; ++i) memory[i] = uint8_t(i + 1);
  const auto two = U8(load_two<bytes>(memory + bytes, memory));
  const auto bottom = U8(load_bottom<bytes>(memory));
  const auto repeated = U8(repeat_bottom<bytes>(U64(two)));
  for (size_t i = 0; i < 2 * bytes; ++i) ASSERT_EQ(two[i], memory[(i + bytes) % (2 * bytes)]) << bytes;
  for (size_t i = 0; i < bytes; ++i) ASSERT_EQ(bottom[i], memory[i]) << bytes;
  for (size_t i = 0; i < kRegisterBytes; ++i) ASSERT_EQ(repeated[i], two[i % bytes]) << bytes;
  store_two<bytes>(back + bytes, back, U64(two));
  ASSERT_EQ(std::memcmp(memory, back, sizeof back), 0) << bytes;
}

TEST(VectorLayer, PiecesOfRegisters) {
  uint8_t memory[kRegisterBytes + 1], half[kRegisterBytes / 2 + 1] = {};
  for (size_t i = 0; i < sizeof memory; ++i) memory[i] = uint8_t(i + 1);
  const U8 repeated = load_repeated(memory + 1);
  for (size_t i = 0; i < kRegisterBytes; ++i) ASSERT_EQ(repeated[i], memory[1 + i % 16]);
  store_bottom_half(half, U64(load(memory + 1)));
  for (size_t i = 0; i < sizeof half; ++i) ASSERT_EQ(half[i], i + 1 < sizeof half ? memory[i + 1] : 0);
  expect_pieces<1>();
  expect_pieces<2>();
  expect_pieces<4>();
  expect_pieces<8>();
  expect_pieces<kRegisterBytes / 2>();
}

}  // namespace
}  // namespace zivks
