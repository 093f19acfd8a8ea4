// Single values at every place of reductions and of element-wise extremes, nearest matches, and counts beyond
// what float32 counts.
#include <algorithm>

#include "core/prefetch.h"
#include "reference/against_reference.h"
#include "reference/zero_crossing.h"
#include "repeated_samples.h"

namespace zivks_test {
namespace {

std::vector<const Function*> reductions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->arguments[0].role != Role::kSource || function->arguments[0].text) continue;
    if (function->has(Role::kFactor)) continue;  // its single result is a length
    for (const Argument& argument : function->arguments) {
      if (argument.role != Role::kResult) continue;
      list.push_back(function);
      break;
    }
  }
  return list;
}

using PlantedValue = AgainstReference;

// Each special value at each position, among equal values (seeds and ties) and among random ones.
TEST_P(PlantedValue, HasTheEffectOfItsPlace) {
  const ElementType& element = *function().arguments[0].element;
  const size_t block = function().block, count = element.count_decisive(false);
  Bytes values(count * element.bytes);
  element.fill_decisive(values.data(), count, 1, false);
  std::vector<size_t> lengths = {2 * block - 1, 2 * block, 2 * block + 1, 4 * block + 3};
  for (size_t length = 1; length <= block + 1; ++length) lengths.push_back(length);
  for (size_t length : lengths) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      Operands operands =
          random_operands(function(), static_cast<int32_t>(length), variant, Flavour::kFinite);
      const Bytes random = operands.arrays[0];
      for (int background = 0; background < 4; ++background) {
        Bytes& samples = operands.arrays[0];
        samples = random;
        for (size_t i = 0; background > 0 && i < length; ++i) {
          // Of floats the two zeros and 1, of integers values at or near the limits.
          const size_t value = static_cast<size_t>(background == 3 ? 4 : background - 1) * element.bytes;
          std::memcpy(&samples[i * element.bytes], &values[value], element.bytes);
        }
        for (size_t value = 0; value < count; value += count / 64 + 1) {
          for (size_t position = 0; position < length; ++position) {
            Bytes place(samples.begin() + static_cast<ptrdiff_t>(position * element.bytes),
                        samples.begin() + static_cast<ptrdiff_t>((position + 1) * element.bytes));
            std::memcpy(&samples[position * element.bytes], &values[value * element.bytes], element.bytes);
            ASSERT_EQ(difference_from_reference(operands), "")
                << "length " << length << ", variant " << variant << ", background " << background
                << ", value " << value << " at " << position;
            std::memcpy(&samples[position * element.bytes], place.data(), element.bytes);
          }
        }
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(PlantedValue, reductions());

using ShortEnd = AgainstReference;

// All words of up to four letters over zeros, limits and NaN, alone and behind a block of each: every order
// of ties.
TEST_P(ShortEnd, IsRightForEveryOrderOfTies) {
  const ElementType& element = *function().arguments[0].element;
  const size_t block = function().block, count = element.count_decisive(false);
  const size_t letters[] = {0, 1, 2, 3, count - 3, count - 2};
  Bytes values(count * element.bytes);
  element.fill_decisive(values.data(), count, 1, false);
  for (size_t blocks : {size_t{0}, block}) {
    for (size_t tail = blocks == 0 ? 1 : 0; tail <= std::min<size_t>(4, block - 1); ++tail) {
      size_t words = std::size(letters);  // the first letter is the block's
      for (size_t i = 0; i < tail; ++i) words *= std::size(letters);
      for (size_t variant = 0; variant < count_variants(function()); ++variant) {
        Operands operands = random_operands(function(), static_cast<int32_t>(blocks + tail), variant);
        for (size_t word = 0; word < words; ++word) {
          size_t rest = word / std::size(letters);
          for (size_t i = 0; i < blocks + tail; ++i) {
            const size_t letter = letters[i < blocks ? word % std::size(letters) : rest % std::size(letters)];
            if (i >= blocks) rest /= std::size(letters);
            std::memcpy(&operands.arrays[0][i * element.bytes], &values[letter * element.bytes],
                        element.bytes);
          }
          ASSERT_EQ(difference_from_reference(operands), "")
              << "block " << blocks << ", tail " << tail << ", variant " << variant << ", word " << word;
        }
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(ShortEnd, reductions());

#ifdef __x86_64__  // the one with hints far ahead of the loads

using LongArray = AgainstReference;

// Random numbers; random numbers behind a long run of one number, where the extremes are; and a NaN in the
// last sample, which is in the last block of pairs but in the tail of the samples.
TEST_P(LongArray, IsReadToItsEnd) {
  const ElementType& element = *function().arguments[0].element;
  const size_t length = zivks::kReadAheadFrom / element.bytes + 37, count = element.count_decisive(false);
  Bytes values(count * element.bytes);
  element.fill_decisive(values.data(), count, 1, false);
  const auto place = [&](Operands& operands, size_t index, size_t value) {
    std::memcpy(&operands.arrays[0][index * element.bytes], &values[value * element.bytes], element.bytes);
  };
  for (size_t variant = 0; variant < count_variants(function()); ++variant) {
    Operands operands = random_operands(function(), static_cast<int32_t>(length), variant, Flavour::kFinite);
    ASSERT_EQ(difference_from_reference(operands), "") << "variant " << variant;
    for (size_t i = 0; i < length - 1000; ++i) place(operands, i, 4);
    ASSERT_EQ(difference_from_reference(operands), "") << "variant " << variant << ", behind a run";
    if (!element.is_nan(&values[(count - 1) * element.bytes])) continue;
    place(operands, length - 1, count - 1);
    ASSERT_EQ(difference_from_reference(operands), "") << "variant " << variant << ", NaN at the end";
  }
}

ZIVKS_FOR_FUNCTIONS(LongArray, reductions());

#endif

std::vector<const Function*> extreme_positions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->family == "ExtremePositions") list.push_back(function);
  }
  return list;
}

using LongSearch = AgainstReference;

// Arrays of one value with a few others among them, also NaN: ties and hidden blocks, near and far.
TEST_P(LongSearch, FindsTheFirstOfTheExtremesThatAreNotHidden) {
  const ElementType& element = *function().arguments[0].element;
  const size_t count = element.count_decisive(false);
  Bytes values(count * element.bytes);
  element.fill_decisive(values.data(), count, 1, false);
  Random random(1);
  for (int trial = 0; trial < 300; ++trial) {
    const size_t length = 1 + random.below(5000), period = 2 + random.below(1000), common = random.below(6);
    Operands operands = random_operands(function(), static_cast<int32_t>(length), 0, Flavour::kFinite);
    for (size_t i = 0; i < length; ++i) {
      const size_t value = i == 0 || random.below(period) != 0 ? common : random.below(count);
      std::memcpy(&operands.arrays[0][i * element.bytes], &values[value * element.bytes], element.bytes);
    }
    ASSERT_EQ(difference_from_reference(operands), "") << "trial " << trial << ", length " << length;
  }
}

ZIVKS_FOR_FUNCTIONS(LongSearch, extreme_positions());

// In a tail the chosen element keeps its bits, those of a NaN too; the tables' rows allow any NaN.
template <class T>
void expect_tail_keeps_bits(ZIVKStatus (*choose)(const T*, const T*, T*, int32_t)) {
  const T nan = nan_with_payload<T>(false, true, 0x77), other = nan_with_payload<T>(true, false, 0x55);
  for (const auto& [a, b, expected] :
       {std::tuple(nan, T{1}, T{1}), std::tuple(T{1}, nan, nan), std::tuple(nan, other, other),
        std::tuple(T{0}, -T{0}, T{0}), std::tuple(-T{0}, T{0}, -T{0})}) {
    T result;
    ASSERT_EQ(choose(&a, &b, &result, 1), ZIVK_STS_NO_ERR);
    EXPECT_EQ(bit_cast<BitsOf<T>>(result), bit_cast<BitsOf<T>>(expected));
  }
}

TEST(Every, TailKeepsTheBitsOfTheChosenElement) {
  for (auto choose : {ZIVKS_MaxEvery_32f, ZIVKS_MinEvery_32f}) expect_tail_keeps_bits<float>(choose);
  for (auto choose : {ZIVKS_MaxEvery_64f, ZIVKS_MinEvery_64f}) expect_tail_keeps_bits<double>(choose);
}

TEST(CountInRange, ReadsNothingBetweenEmptyBounds) {
  const GuardedMemory memory;
  const auto* const unreadable = reinterpret_cast<const int32_t*>(memory.end());
  for (const auto& [lower, upper] : {std::pair(5, 6), std::pair(7, 5), std::pair(INT32_MAX, INT32_MIN)}) {
    int32_t result = -1;
    EXPECT_EQ(ZIVKS_CountInRange_32s(unreadable, 100, &result, lower, upper), ZIVK_STS_NO_ERR);
    EXPECT_EQ(result, 0);
  }
}

// Every value in tables of every shape, with runs of equal entries: the probe that meets the value decides.
class NearestInTables : public AgainstReference {};

TEST_P(NearestInTables, FollowsTheProbesOfTheBisection) {
  Random random(1);
  const size_t table = function().arguments.size() - 2;
  for (size_t entries = 1; entries <= 70; ++entries) {
    const size_t range = 1 + random.below(3 * entries);
    std::vector<uint16_t> values(entries);
    for (uint16_t& value : values) value = static_cast<uint16_t>(1 + random.below(range));
    std::sort(values.begin(), values.end());
    Operands operands = random_operands(function(), static_cast<int32_t>(range + 2), 0);
    operands.slots[table + 1] = Slot::of(static_cast<int32_t>(entries));
    operands.arrays[table].resize(entries * sizeof(uint16_t));
    std::memcpy(operands.arrays[table].data(), values.data(), entries * sizeof(uint16_t));
    for (size_t i = 0; i < range + 2; ++i) {
      const auto value = static_cast<uint16_t>(i);
      if (function().arguments[0].is_array()) {
        std::memcpy(&operands.arrays[0][i * sizeof value], &value, sizeof value);
      } else {
        operands.slots[0] = Slot::of(value);
        ASSERT_EQ(difference_from_reference(operands), "") << "value " << i << ", entries " << entries;
      }
    }
    ASSERT_EQ(difference_from_reference(operands), "") << "entries " << entries;
  }
}

ZIVKS_FOR_FUNCTIONS(NearestInTables, (std::vector{find_function("ZIVKS_FindNearestOne_16u"),
                                                  find_function("ZIVKS_FindNearest_16u")}));

// Lanes count one crossing or a distance of 2 for each pair, so that the sums pass 2^24, above which float32
// cannot count by ones.
template <class T>
void expect_many_crossings(ZIVKStatus (*count)(const T*, int32_t, float*, int32_t)) {
  std::vector<T> samples((4 << 22) + 4 + 3 + 1);
  for (size_t i = 0; i < samples.size(); ++i) samples[i] = i % 2 == 0 ? 1 : -1;
  for (int32_t kind : {0, 1, 2}) {
    float crossings = -1;
    EXPECT_EQ(count(samples.data(), static_cast<int32_t>(samples.size()), &crossings, kind), ZIVK_STS_NO_ERR);
    EXPECT_EQ(crossings, reference_crossings(samples.size(), kind, [&](size_t i) { return samples[i]; }));
  }
}

TEST(ZeroCrossing, TailStopsCountingAboveTwoToThe24) {
  expect_many_crossings<float>(ZIVKS_ZeroCrossing_32f);
  expect_many_crossings<int16_t>(ZIVKS_ZeroCrossing_16s32f);
}

// A negative length is no fault, so other faults are found.
TEST(ZeroCrossing, NegativeLengthIsNoFault) {
  const float samples[] = {1, -1};
  float crossings = 5;
  EXPECT_EQ(ZIVKS_ZeroCrossing_32f(samples, -1, &crossings, 3), ZIVK_STS_ZC_TYPE_ERR);
  EXPECT_EQ(ZIVKS_ZeroCrossing_32f(nullptr, -1, &crossings, 0), ZIVK_STS_NULL_PTR_ERR);
  EXPECT_EQ(crossings, 5);
}

#ifdef __x86_64__  // so many samples take too long under emulation

// So many samples that `len` is negative. Each lane counts more than 2^24 crossings, which float32 rounds.
template <class T>
void expect_unsigned_length(ZIVKStatus (*count)(const T*, int32_t, float*, int32_t), int32_t kind) {
  constexpr size_t kSamples = (size_t{1} << 31) + (size_t{1} << 26) + 6, kChunk = RepeatedSamples<T>::kChunk;
  const RepeatedSamples<T> repeated(kSamples);
  T* const samples = repeated.data();
  Random random(1);
  for (size_t i = 0; i < kChunk; ++i) samples[i] = random_part<T>(random, Flavour::kManySpecial);

  std::array<int64_t, 4> lanes = {};
  const auto crosses = [&](size_t i) {
    return static_cast<int64_t>(crossing(samples[i], samples[i + 1], kind, true));
  };
  for (size_t i = 0; i < kChunk; ++i) lanes[i % 4] += crosses(i) * static_cast<int64_t>(kSamples / kChunk);
  std::array<float, 4> sums;
  for (size_t i = 0; i < 4; ++i) {
    ASSERT_GT(lanes[i], 1 << 24);
    sums[i] = static_cast<float>(lanes[i] + crosses(i));
  }
  const float expected = ((sums[0] + sums[1]) + (sums[2] + sums[3])) + static_cast<float>(crosses(4));

  float crossings = -1;
  const auto length = static_cast<int32_t>(static_cast<uint32_t>(kSamples));
  ASSERT_LT(length, 0);
  EXPECT_EQ(count(samples, length, &crossings, kind), ZIVK_STS_NO_ERR);
  EXPECT_EQ(crossings, expected);
}

TEST(ZeroCrossing, NegativeLengthCountsAsUnsigned) {
  expect_unsigned_length(ZIVKS_ZeroCrossing_16s32f, 0);
  expect_unsigned_length(ZIVKS_ZeroCrossing_32f, 1);
}

// Lanes of kind 2 add in float32, and large sums are rounded.
template <class T>
void expect_lanes_in_float32(ZIVKStatus (*count)(const T*, int32_t, float*, int32_t), size_t length) {
  const RepeatedSamples<T> repeated(length);
  T* const samples = repeated.data();
  for (size_t i = 0; i < repeated.kChunk; ++i) samples[i] = i % 11 == 0 ? T{0} : i % 2 == 0 ? T{1} : T{-1};
  float crossings = -1;
  EXPECT_EQ(count(samples, static_cast<int32_t>(length), &crossings, 2), ZIVK_STS_NO_ERR);
  EXPECT_EQ(crossings, reference_crossings(length, 2, [=](size_t i) { return samples[i]; }));
}

TEST(ZeroCrossing, LanesOfDistancesAddInFloat32) {
  expect_lanes_in_float32(ZIVKS_ZeroCrossing_32f, 100000007);
  expect_lanes_in_float32(ZIVKS_ZeroCrossing_16s32f, 200000007);
}

#endif

}  // namespace
}  // namespace zivks_test
