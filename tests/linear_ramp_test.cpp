// Linear ramps: examples by hand, and long arrays, where steps are taken in groups.
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "reference/against_reference.h"
#include "zivks.h"

namespace zivks_test {
namespace {

template <class T, class F>
std::vector<T> ramp(ZIVKStatus (*fill)(T*, int32_t, F, F), int32_t len, F offset, F slope) {
  std::vector<T> values(static_cast<size_t>(len) + 3, T{77});
  EXPECT_EQ(fill(values.data(), len, offset, slope), ZIVK_STS_NO_ERR);
  values.resize(static_cast<size_t>(len));
  return values;
}

TEST(LinearRamp, Examples) {
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_32f, 3, 10.0F, 0.5F), (std::vector<float>{10, 10.5, 11}));
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_8u, 20, 250.0F, 1.0F),
            (std::vector<uint8_t>{250, 251, 252, 253, 254, 255, 255, 255, 255, 255,
                                  255, 255, 255, 255, 255, 255, 255, 255, 255, 255}));
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_16s, 19, -32768.0F, -1.0F), std::vector<int16_t>(19, -32768));
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_16u, 11, 0.5F, 1.0F),
            (std::vector<uint16_t>{0, 2, 2, 4, 4, 6, 6, 8, 8, 10, 10}));
}

// Where the step of a block is below half of the distance of float16 numbers, which is 1/8 above 128.
TEST(LinearRamp, OfBytesStallsAndJumpsBackInTheTail) {
  const std::vector<uint8_t> values = ramp(ZIVKS_VectorSlope_8u, 16 * 1000 + 1, 128.0F, 0.003F);
  EXPECT_EQ(values[16 * 1000 - 1], 128);
  EXPECT_EQ(values[16 * 1000], 176);
}

// The largest number below 1/2 is 0 in a block and 1 in the tail, which adds 1/2.
TEST(LinearRamp, TailRoundsInItsOwnWay) {
  const double below_half = std::nextafter(0.5, 0.0);
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_32s, 7, below_half, 0.0), (std::vector<int32_t>{0, 0, 0, 0, 1, 1, 1}));
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_32s, 7, -below_half, 0.0), (std::vector<int32_t>{0, 0, 0, 0, -1, -1, -1}));
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_32u, 5, below_half, 0.0), (std::vector<uint32_t>{0, 0, 0, 0, 1}));
}

// In lane 1 the seed is 2^-14 - 15 * 137, which the nearest float16 makes -2054. Rounded to float32 first, it would be a
// tie, and become -2056. The step is 2192.
TEST(LinearRamp, SeedOfBytesIsRoundedOnce) {
  EXPECT_EQ(ramp(ZIVKS_VectorSlope_8u, 16, 0x1p-14F, 137.0F)[1], 138);
}

TEST(LinearRamp, OfDoublesGoesBeyondOddPairs) {
  for (const auto& [len, written] :
       {std::pair(1, 1), {2, 4}, {3, 4}, {4, 4}, {5, 5}, {6, 8}, {7, 8}, {8, 8}}) {
    std::vector<double> values(12, -1);
    ASSERT_EQ(ZIVKS_VectorSlope_64f(values.data(), len, 5, 2), ZIVK_STS_NO_ERR);
    for (int i = 0; i < 12; ++i) {
      EXPECT_EQ(values[static_cast<size_t>(i)], i < written ? 5 + 2 * i : -1) << len << ", " << i;
    }
  }
}

class LongRamp : public AgainstReference {
 protected:
  Operands operands_of(int32_t len, double offset, double slope) {
    Operands operands = random_operands(function(), len, 0, Flavour::kFinite);
    for (size_t i : {size_t{2}, size_t{3}}) {
      operands.slots[i] = slot_of_type(*function().arguments[i].element, i == 2 ? offset : slope);
    }
    return operands;
  }
  void expect_agreement(int32_t len, double offset, double slope) {
    ASSERT_EQ(difference_from_reference(operands_of(len, offset, slope)), "")
        << len << ", " << offset << ", " << slope;
  }
};

TEST_P(LongRamp, AgreesWithTheReference) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::pair<double, double> telling[] = {
      // exact, for long or at first
      {0, 1},
      {10, 0.5},
      {-7.25, 0.125},
      {0, 0},
      {-0.0, 0},
      {3, -0x1p-7},
      {0, 0x1p20},
      // many exponents, towards zero and away from it
      {0.1, 0.7},
      {1e3, -0.3},
      {-300, 0.1},
      {1e-3, 1e-6},
      {-5000, 1.1},
      // bounds of integers
      {250, 0.01},
      {65530, 0.01},
      {-32768, 0.7},
      {2147483000, 0.3},
      {-2147483640, -0.7},
      {4294967000, 0.3},
      // small distances, and steps halfway between two of them: of float16, float32 and float64
      {128, 0.003},
      {16777216, 0.3},
      {0x1p52, 0.2},
      {1, 1.5 * 0x1p-14},
      {1, 1.5 * 0x1p-26},
      {1, 1.5 * 0x1p-54},
      {1 + 0x1p-10, 2.5 * 0x1p-14},
      {1 + 0x1p-23, 2.5 * 0x1p-26},
      {1 + 0x1p-52, -2.5 * 0x1p-54},
      // numbers without a leading one, of the same formats
      {1e-7, 1e-7},
      {1e-40, 1e-43},
      {-1e-38, 1e-41},
      {1e-310, 1e-313},
      // infinities, at once and later, and NaN
      {6e4, 3},
      {-6e4, -40},
      {3.3e38, 1e35},
      {-1.7e308, -1e304},
      {kInfinity, 1},
      {0, -kInfinity},
      {kInfinity, -kInfinity},
      {std::nan(""), 1}};
  for (const auto& [offset, slope] : telling) {
    for (int32_t len : {129, 4003}) ASSERT_NO_FATAL_FAILURE(expect_agreement(len, offset, slope));
  }
  Random random(3);
  const auto any = [&random] {
    const double mantissa = static_cast<double>(random.next()) * 0x1p-63 - 1;
    return std::ldexp(mantissa, static_cast<int>(random.below(30)) - 12);
  };
  for (int i = 0; i < 60; ++i) {
    const double offset = any(), slope = any();
    ASSERT_NO_FATAL_FAILURE(expect_agreement(static_cast<int32_t>(100 + random.below(2000)), offset, slope));
  }
}

// A step halfway between two neighbours, which leads across a power of two after some steps: just then the first sum
// may be the odd one of the two.
TEST_P(LongRamp, CrossesAPowerOfTwoByStepsThatTie) {
  Random random(4);
  for (const auto& [digits, block] : {std::pair(11, 16), {24, 8}, {53, 4}}) {
    const double distance = std::ldexp(128.0, 1 - digits);
    for (int i = 0; i < 200; ++i) {
      const double step = (static_cast<double>(random.below(100)) + 0.5) * distance;
      const double offset = 128 - static_cast<double>(1 + random.below(10)) * step;
      ASSERT_NO_FATAL_FAILURE(expect_agreement(500, offset - offset / 128 * distance, step / block));
    }
  }
}

#ifdef __x86_64__  // too many elements for an emulator

// Past the caches, and where the number before the tail is no float32.
TEST_P(LongRamp, BeyondTheCachesAgreesWithTheReference) {
  const size_t element = function().arguments[0].array_element_bytes();
  const auto len = static_cast<int32_t>(std::max((size_t{52} << 20) / element, size_t{1} << 24) + 11);
  Operands operands = operands_of(len, -1000, 0.1);
  const Bytes expected = (*find_reference(function()))(function(), operands).at(0);
  Bytes array(expected.size() + element);
  for (size_t misaligned : {size_t{0}, element}) {
    operands.slots[0] = Slot::of(&array[misaligned]);
    ASSERT_EQ(function().call(operands.slots).as<ZIVKStatus>(), ZIVK_STS_NO_ERR);
    ASSERT_EQ(std::memcmp(&array[misaligned], expected.data(), static_cast<size_t>(len) * element), 0);
  }
}

#endif

std::vector<const Function*> ramps() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->family == "LinearRamp") list.push_back(function);
  }
  return list;
}

ZIVKS_FOR_FUNCTIONS(LongRamp, ramps());

}  // namespace
}  // namespace zivks_test
