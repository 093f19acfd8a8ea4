// Scaled addition and subtraction: every member over every scale that means something to one of them, and
// what single members do at single places.
#include <algorithm>
#include <cmath>

#include "reference/against_reference.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

std::vector<const Function*> scaled_arithmetic_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->family == "ScaledArithmetic") list.push_back(function);
  }
  return list;
}

// Where a member changes its path, a multiplier leaves the range of its type, or a shift count reaches a
// width or wraps: beyond 127 it is the low eight bits, as a signed number.
const std::vector<double>& threshold_scales() {
  static const std::vector<double> list = [] {
    std::vector<double> scales = {1.5, 1.9999, 0.75, 3, 0.3, 511.99, 513, 1.5 * 0x1p-128, 1.5 * 0x1p-129};
    for (int exponent :
         {0,    1,    2,    3,    4,    7,    8,    9,    10,   11,    15,    16,   17,   18,   24,
          25,   30,   31,   32,   33,   34,   53,   62,   63,   64,    65,    66,   67,   127,  128,
          149,  150,  256,  1022, 1023, -1,   -2,   -3,   -6,   -7,    -8,    -9,   -10,  -15,  -16,
          -17,  -23,  -24,  -25,  -31,  -32,  -33,  -62,  -63,  -64,   -65,   -126, -127, -128, -129,
          -191, -192, -193, -200, -223, -224, -225, -239, -240, -247,  -248,  -249, -254, -255, -256,
          -257, -264, -300, -383, -384, -385, -511, -512, -513, -1023, -1024, -1074}) {
      scales.push_back(std::ldexp(1.0, exponent));
    }
    scales.push_back(std::numeric_limits<double>::max());
    return scales;
  }();
  return list;
}

class ThresholdScales : public AgainstReference {
 protected:
  void SetUp() override {
    AgainstReference::SetUp();
    for (size_t i = 0; i < function().arguments.size(); ++i) {
      if (function().arguments[i].role == Role::kRoundMode) round_mode_ = i;
    }
    inputs_ = inputs_of(function());
  }
  size_t first() const { return inputs_[0]; }
  size_t second() const { return inputs_[1]; }
  bool has_constant() const { return !function().arguments[second()].is_array(); }
  const ElementType& element() const { return *function().arguments[first()].element; }

  void expect_agreement(Operands operands, double scale) const {
    static const std::vector<int32_t> no_mode = {0}, modes = {0, 1, 2, 7, -1, INT32_MIN};
    operands.slots.back() = Slot::of(scale);
    for (int32_t mode : round_mode_ == 0 ? no_mode : modes) {
      if (round_mode_ != 0) operands.slots[round_mode_] = Slot::of(mode);
      ASSERT_EQ(difference_from_reference(operands), "")
          << "scale " << std::hexfloat << scale << std::dec << ", length " << operands.length << ", mode "
          << mode;
    }
  }

 private:
  size_t round_mode_ = 0;
  std::vector<size_t> inputs_;
};

using AllPairs = ThresholdScales;

// Each decisive value with each: of 8-bit types all pairs that there are.
TEST_P(AllPairs, AreExactAtThresholdScales) {
  const size_t count = element().count_decisive(false), pairs = count * count;
  Bytes firsts(pairs * element().bytes), seconds(pairs * element().bytes);
  element().fill_decisive(firsts.data(), pairs, 1, false);
  element().fill_decisive(seconds.data(), pairs, count, false);
  // A constant serves one row of the pairs. Long arrays consist of blocks, short ones have none.
  const size_t row = has_constant() ? count : pairs;
  for (size_t step : {row, std::max<size_t>(3, function().block - 1)}) {
    for (size_t start = 0; start < pairs;) {
      const size_t length = std::min(step, row - start % row);
      Operands operands = random_operands(function(), static_cast<int32_t>(length), 0);
      std::memcpy(operands.arrays[first()].data(), &firsts[start * element().bytes],
                  length * element().bytes);
      std::memcpy(has_constant() ? operands.slots[second()].bytes : operands.arrays[second()].data(),
                  &seconds[start * element().bytes], (has_constant() ? 1 : length) * element().bytes);
      for (double scale : threshold_scales()) {
        ASSERT_NO_FATAL_FAILURE(expect_agreement(operands, scale)) << "pair " << start;
      }
      start += length;
    }
  }
}

ZIVKS_FOR_FUNCTIONS(AllPairs, without_twins(scaled_arithmetic_functions()));

uint64_t part_at(const unsigned char* bytes, size_t size) {
  uint64_t value = 0;
  std::memcpy(&value, bytes, size);  // both processors store the lowest byte first
  return value;
}

// Makes the result before scaling end in one half of the power of two, or one beside it, whatever the
// operation: one of three elements for each.
void aim_at_ties(unsigned char* first, const unsigned char* second, bool second_is_constant, size_t bytes,
                 const ElementType& element, int shift, Random& random) {
  const size_t size = element.part_bytes();
  for (size_t offset = 0; offset < bytes; offset += size) {
    const uint64_t b = part_at(second + (second_is_constant ? offset % element.bytes : offset), size);
    const uint64_t whole = shift >= 0 && shift < 64 ? (random.next() >> random.below(64)) << shift : 0;
    const uint64_t half = shift >= 1 && shift <= 64 ? uint64_t{1} << (shift - 1) : 0;
    const uint64_t target = whole + half + random.below(3) - 1;
    const uint64_t choices[] = {target - b, target + b, b - target};
    std::memcpy(first + offset, &choices[random.below(3)], size);
  }
}

TEST_P(ThresholdScales, IsExactAroundTiesAtLengthsAroundABlock) {
  const auto block = static_cast<int32_t>(function().block);
  Random random(1);
  for (double scale : threshold_scales()) {
    for (int32_t length : {1, block - 1, block, block + 1, 2 * block + 3, 5 * block + 7, 511}) {
      for (bool at_ties : {false, true}) {
        Operands operands = random_operands(function(), length, random.below(1000), Flavour::kManySpecial);
        Bytes& array = operands.arrays[first()];
        if (at_ties) {
          aim_at_ties(array.data(),
                      has_constant() ? operands.slots[second()].bytes : operands.arrays[second()].data(),
                      has_constant(), array.size(), element(), -reference_scale_exponent(scale), random);
        }
        ASSERT_NO_FATAL_FAILURE(expect_agreement(operands, scale));
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(ThresholdScales, scaled_arithmetic_functions());

// What becomes of one pair, which has to be the same in blocks and in a tail.
template <class Run>
auto result_everywhere(Run run) {
  const auto alone = run(1).front();
  for (const auto& value : run(257)) {
    EXPECT_EQ(std::memcmp(&value, &alone, sizeof value), 0) << "differs from the result in a short array";
  }
  return alone;
}

template <class T>
using Given = std::common_type_t<T>;  // not deduced

template <class T>
T result_of(ZIVKStatus (*function)(const T*, const T*, T*, int32_t, double), Given<T> a, Given<T> b,
            double scale) {
  return result_everywhere([&](size_t length) {
    const std::vector<T> first(length, a), second(length, b);
    std::vector<T> result(length);
    EXPECT_EQ(function(first.data(), second.data(), result.data(), static_cast<int32_t>(length), scale), 0);
    return result;
  });
}
template <class T>
T result_of(ZIVKStatus (*function)(const T*, T, T*, int32_t, double), Given<T> a, Given<T> constant,
            double scale) {
  return result_everywhere([&](size_t length) {
    const std::vector<T> source(length, a);
    std::vector<T> result(length);
    EXPECT_EQ(function(source.data(), constant, result.data(), static_cast<int32_t>(length), scale), 0);
    return result;
  });
}
template <class T>
T result_of(ZIVKStatus (*function)(const T*, T, T*, int32_t, int32_t, double), Given<T> a, Given<T> constant,
            int32_t mode, double scale) {
  return result_everywhere([&](size_t length) {
    const std::vector<T> source(length, a);
    std::vector<T> result(length);
    EXPECT_EQ(function(source.data(), constant, result.data(), static_cast<int32_t>(length), mode, scale), 0);
    return result;
  });
}

constexpr int64_t kLow = std::numeric_limits<int64_t>::min(), kHigh = std::numeric_limits<int64_t>::max();

TEST(ScaledArithmetic, RoundsToEvenAndSaturates) {
  EXPECT_EQ(result_of(ZIVKS_Add_8u_S, 200, 100, 1), 255);
  EXPECT_EQ(result_of(ZIVKS_Add_8u_S, 200, 100, 2), 150);
  EXPECT_EQ(result_of(ZIVKS_Add_8u_S, 1, 1, 4), 0);
  EXPECT_EQ(result_of(ZIVKS_Add_8u_S, 3, 3, 4), 2);
  EXPECT_EQ(result_of(ZIVKS_Add_8u_S, 100, 100, 0.5), 255);
  EXPECT_EQ(result_of(ZIVKS_Add_8u_S, 20, 30, 0.5), 100);
  EXPECT_EQ(result_of(ZIVKS_Add_16s_S, 1, 2, 2), 2);
  EXPECT_EQ(result_of(ZIVKS_Add_16s_S, 2, 3, 3), 2);
  EXPECT_EQ(result_of(ZIVKS_Add_16s_S, -2, -3, 2), -2);
  EXPECT_EQ(result_of(ZIVKS_Add_16s_S, 20000, 20000, 0.5), 32767);
  EXPECT_EQ(result_of(ZIVKS_Add_32s_S, 2147483647, 2147483647, 2), 2147483647);
  EXPECT_EQ(result_of(ZIVKS_Add_32s_S, 2147483647, 2147483646, 2), 2147483646);
  EXPECT_EQ(result_of(ZIVKS_Add_64s_S, kHigh, kHigh, 2), kHigh);
  EXPECT_EQ(result_of(ZIVKS_Add_64s_S, kLow, kLow, 2), kLow);
  EXPECT_EQ(result_of(ZIVKS_Add_64s_S, 2, 3, 2), 2);
  EXPECT_EQ(result_of(ZIVKS_AddC_32s_S, 2147483647, 2147483647, 1), 2147483647);
  const ZIVK16sc limits = result_of(ZIVKS_Add_16sc_S, {32767, -32768}, {1, -1}, 1);
  EXPECT_EQ(limits.re, 32767);
  EXPECT_EQ(limits.im, -32768);
  const ZIVK32sc halves = result_of(ZIVKS_AddC_32sc_S, {1, 3}, {0, 0}, 2);
  EXPECT_EQ(halves.re, 0);
  EXPECT_EQ(halves.im, 2);
}

TEST(ScaledArithmetic, SubtractsInTheDirectionOfItsName) {
  EXPECT_EQ(result_of(ZIVKS_Sub_8u_S, 1, 5, 1), 4);
  EXPECT_EQ(result_of(ZIVKS_Sub_8u_S, 5, 1, 1), 0);
  EXPECT_EQ(result_of(ZIVKS_Sub_16s_S, -32768, 32767, 2), 32767);
  const ZIVK32sc difference = result_of(ZIVKS_Sub_32sc_S, {1, 1}, {4, 5}, 2);
  EXPECT_EQ(difference.re, 2);
  EXPECT_EQ(difference.im, 2);
  EXPECT_EQ(result_of(ZIVKS_SubC_16s_S, 32767, -32768, 1), 32767);
  EXPECT_EQ(result_of(ZIVKS_SubCRev_16s_S, 32767, -32768, 1), -32768);
  EXPECT_EQ(result_of(ZIVKS_SubCRev_8u_S, 3, 10, 1), 7);
  EXPECT_EQ(result_of(ZIVKS_SubCRev_8u_S, 200, 10, 1), 0);
  const uint8_t subtrahend = 1;
  uint8_t minuend = 5;
  ASSERT_EQ(ZIVKS_Sub_8u_IS(&subtrahend, &minuend, 1, 1), ZIVK_STS_NO_ERR);
  EXPECT_EQ(minuend, 4);
}

TEST(Sub8u, NarrowsTheSecondHalfOfEveryEightInABlockByTruncation) {
  const std::vector<uint8_t> zeros(70), minuends(70, 128);
  std::vector<uint8_t> result(70), in_place = minuends, expected(70, 255);
  for (size_t i = 0; i < 64; ++i) expected[i] = i % 8 < 4 ? 255 : 0;
  ASSERT_EQ(ZIVKS_Sub_8u_S(zeros.data(), minuends.data(), result.data(), 70, 0x1p-9), ZIVK_STS_NO_ERR);
  EXPECT_EQ(result, expected);
  ASSERT_EQ(ZIVKS_Sub_8u_IS(zeros.data(), in_place.data(), 70, 0x1p-9), ZIVK_STS_NO_ERR);
  EXPECT_EQ(in_place, expected);
}

TEST(AddC8u, ClearsFromScale512OnWithoutALookAtTheSource) {
  EXPECT_EQ(result_of(ZIVKS_AddC_8u_S, 255, 255, 256), 2);
  EXPECT_EQ(result_of(ZIVKS_AddC_8u_S, 255, 255, 511), 2);
  EXPECT_EQ(result_of(ZIVKS_Add_8u_S, 255, 255, 512), 1);
  const GuardedMemory memory;
  const uint8_t* const unreadable = memory.end();
  for (int32_t length : {1, 15, 16, 100}) {
    std::vector<uint8_t> result(static_cast<size_t>(length), 9), zeros(result.size());
    ASSERT_EQ(ZIVKS_AddC_8u_S(unreadable, 255, result.data(), length, 512), ZIVK_STS_NO_ERR);
    EXPECT_EQ(result, zeros);
    EXPECT_EQ(ZIVKS_AddC_8u_S(nullptr, 255, result.data(), length, 512), ZIVK_STS_NULL_PTR_ERR);
  }
}

// At 2^-254 whole blocks shift to the right by two, and only the 32-bit complex SubC does in its tail.
TEST(ScaledArithmetic, ShiftsBlocksToTheRightWhereTheCountWraps) {
  const std::vector<int32_t> source(9, -6), none(9);
  std::vector<int32_t> result(9);
  ASSERT_EQ(ZIVKS_AddC_32s_S(source.data(), 0, result.data(), 9, 0x1p-254), ZIVK_STS_NO_ERR);
  EXPECT_EQ(result[7], -2);
  EXPECT_EQ(result[8], std::numeric_limits<int32_t>::min());
  ASSERT_EQ(ZIVKS_Add_32s_S(source.data(), none.data(), result.data(), 9, 0x1p-254), ZIVK_STS_NO_ERR);
  EXPECT_EQ(result[0], std::numeric_limits<int32_t>::min());
  EXPECT_EQ(result_of(ZIVKS_SubC_32sc_S, {-6, 6}, {0, 0}, 0x1p-254).re, -1);
  const std::vector<uint16_t> sixes(5, 6), zeros(5);
  std::vector<uint16_t> sums(5);
  ASSERT_EQ(ZIVKS_Add_16u_S(sixes.data(), zeros.data(), sums.data(), 5, 0x1p-254), ZIVK_STS_NO_ERR);
  EXPECT_EQ(sums, (std::vector<uint16_t>{2, 2, 2, 2, 65535}));
  EXPECT_EQ(result_of(ZIVKS_Add_64s_S, -6, 0, 0x1p-254), -1);
  EXPECT_EQ(result_of(ZIVKS_AddC_64u_S, 6, 0, 0, 0x1p-254), 2U);
}

TEST(AddC64, RoundsByItsModeWhichIsNotChecked) {
  EXPECT_EQ(result_of(ZIVKS_AddC_64s_S, 2, 3, 0, 2), 2);
  EXPECT_EQ(result_of(ZIVKS_AddC_64s_S, 2, 3, 1, 2), 2);
  for (int32_t other : {2, 7, -1}) {
    EXPECT_EQ(result_of(ZIVKS_AddC_64s_S, 2, 3, other, 2), 3);
    EXPECT_EQ(result_of(ZIVKS_AddC_64s_S, -2, -3, other, 2), -2);
    EXPECT_EQ(result_of(ZIVKS_AddC_64u_S, ~uint64_t{0}, 1, other, 0x1p65), 1U);
  }
  EXPECT_EQ(result_of(ZIVKS_AddC_64u_S, ~uint64_t{0}, 1, 1, 0x1p65), 0U);
  EXPECT_EQ(result_of(ZIVKS_AddC_64u_S, ~uint64_t{0}, 2, 1, 0x1p65), 1U);
  EXPECT_EQ(result_of(ZIVKS_AddC_64u_S, ~uint64_t{0}, ~uint64_t{0}, 1, 2), ~uint64_t{0});
  EXPECT_EQ(result_of(ZIVKS_AddC_64s_S, kLow, kLow, 2, 0x1p65), 0);
}

TEST(AddC64s, LowestConstantTakesTiesDownInBlocksAndUpInTheTail) {
  const auto sums = [](int64_t element, double scale) {
    const std::vector<int64_t> source(3, element);
    std::vector<int64_t> result(3);
    EXPECT_EQ(ZIVKS_AddC_64s_S(source.data(), kLow, result.data(), 3, 2, scale), ZIVK_STS_NO_ERR);
    return result;
  };
  EXPECT_EQ(sums(1, 2), (std::vector<int64_t>{kLow / 2, kLow / 2, kLow / 2 + 1}));
  EXPECT_EQ(sums(0, 0x1p64), (std::vector<int64_t>{-1, -1, 0}));
}

}  // namespace
}  // namespace zivks_test
