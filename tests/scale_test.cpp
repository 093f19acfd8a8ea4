// The scale rule and the rounding of scaled values.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "core/rounding.h"
#include "core/scale.h"
#include "generic/values.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

TEST(Scale, IsValidIfPositiveAndFinite) {
  using Limits = std::numeric_limits<double>;
  for (double scale : {Limits::denorm_min(), Limits::min(), 0.5, 1.0, 3.0, Limits::max()}) {
    EXPECT_TRUE(zivks::is_valid_scale(scale)) << scale;
  }
  for (double scale : {0.0, -0.0, -Limits::denorm_min(), -1.0, Limits::infinity(), -Limits::infinity(),
                       Limits::quiet_NaN(), -Limits::quiet_NaN()}) {
    EXPECT_FALSE(zivks::is_valid_scale(scale)) << scale;
  }
}

TEST(Scale, SelectsAPowerOfTwoInTheDirectionOfOne) {
  struct {
    double scale;
    int exponent;
  } const rows[] = {{8, -3},
                    {7, -2},
                    {5, -2},
                    {4, -2},
                    {3, -1},
                    {2, -1},
                    {1.999, 0},
                    {1.5, 0},
                    {1, 0},
                    {0.75, 0},
                    {0.6, 0},
                    {0.5, 1},
                    {0.3, 1},
                    {0.25, 2},
                    {0.2, 2},
                    {0.125, 3},
                    {std::numeric_limits<double>::max(), -1023},
                    {std::numeric_limits<double>::denorm_min(), 1074}};
  for (const auto& row : rows) {
    EXPECT_EQ(zivks::scale_exponent(row.scale), row.exponent) << row.scale;
    EXPECT_EQ(zivks::scale_multiplier(row.scale), std::ldexp(1.0, row.exponent)) << row.scale;
  }
}

TEST(Scale, AgreesWithTheReferenceOverAllExponents) {
  for (int exponent = -1074; exponent <= 1023; ++exponent) {
    const double power = std::ldexp(1.0, exponent);
    std::vector<double> scales = {power, std::nextafter(power, 0), std::nextafter(power, 2 * power)};
    for (double mantissa : {1.25, 1.5, 1.75}) scales.push_back(std::ldexp(mantissa, exponent));
    for (double scale : scales) {
      if (scale == 0 || std::isinf(scale)) continue;
      ASSERT_EQ(zivks::scale_exponent(scale), reference_scale_exponent(scale)) << std::hexfloat << scale;
      ASSERT_EQ(zivks::scale_multiplier(scale), reference_scale_multiplier(scale)) << std::hexfloat << scale;
    }
  }
}

// Integers times a power of two, rounded in integer arithmetic.
template <class T>
void expect_integers_are_rounded() {
  Random random(sizeof(T));
  for (int shift = 0; shift <= 20; ++shift) {
    for (int i = 0; i < 20000; ++i) {
      // Small ones one by one, then random ones.
      const int64_t value = i < 6000 ? i - 3000 : static_cast<int64_t>(random.next()) >> (63 - i % 40);
      const int64_t half = shift == 0 ? 0 : int64_t{1} << (shift - 1);
      int64_t expected = value >> shift;
      const int64_t rest = value - expected * (int64_t{1} << shift);
      if (rest > half || (half > 0 && rest == half && expected % 2 != 0)) ++expected;
      expected = std::max(expected, int64_t{std::numeric_limits<T>::min()});
      expected = std::min(expected, int64_t{std::numeric_limits<T>::max()});
      const double product = std::ldexp(static_cast<double>(value), -shift);
      ASSERT_EQ(int64_t{zivks::round_nearest_in_tail<T>(product)}, expected) << value << " / 2^" << shift;
    }
  }
  using Limits = std::numeric_limits<double>;
  EXPECT_EQ(zivks::round_nearest_in_tail<T>(Limits::infinity()), std::numeric_limits<T>::max());
  EXPECT_EQ(zivks::round_nearest_in_tail<T>(-Limits::infinity()), std::numeric_limits<T>::min());
  EXPECT_EQ(zivks::round_nearest_in_tail<T>(Limits::max()), std::numeric_limits<T>::max());
  for (bool negative : {true, false})
    EXPECT_EQ(zivks::round_nearest_in_tail<T>(nan_with_payload<double>(true, negative)), 0);
}

TEST(Rounding, IsToNearestEvenThenSaturated) {
  expect_integers_are_rounded<uint8_t>();
  expect_integers_are_rounded<int8_t>();
  expect_integers_are_rounded<uint16_t>();
  expect_integers_are_rounded<int16_t>();
  expect_integers_are_rounded<int32_t>();
}

// Half is added and the sum truncated: where that addition rounds, it is seen.
TEST(Rounding, AddsHalfInFloat64) {
  const double below_half = std::nextafter(0.5, 0.0);
  EXPECT_EQ(zivks::round_nearest_in_tail<int32_t>(below_half), 1);
  EXPECT_EQ(zivks::round_nearest_in_tail<int32_t>(-below_half), -1);
  EXPECT_EQ(zivks::round_nearest_in_tail<uint8_t>(std::nextafter(2.5, 3.0)), 3);
  EXPECT_EQ(zivks::round_nearest_in_tail<int16_t>(std::nextafter(-2.5, 0.0)), -2);
}

}  // namespace
}  // namespace zivks_test
