// What comparison sorts, sorts with positions and selections show beside their results, and long selections.
#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

#include "generic/services.h"
#include "reference/against_reference.h"

namespace zivks_test {
namespace {

// Whether the next draw is the one that follows `draws` of them after seeding.
bool draws_have_been(unsigned seed, int draws) {
  const int next = std::rand();
  std::srand(seed);
  while (draws-- > 0) static_cast<void>(std::rand());
  return std::rand() == next;
}

constexpr unsigned kSeed = 99;

TEST(SortIndex, SeedsInEveryAcceptedCallAndDrawsOncePerPivot) {
  int32_t keys[] = {7, 7, 7, 7}, positions[4];
  std::srand(kSeed);
  EXPECT_EQ(ZIVKS_SortIndexAscend_32s_I(keys, nullptr, 4), ZIVK_STS_NULL_PTR_ERR);
  EXPECT_EQ(ZIVKS_SortIndexAscend_32s_I(keys, positions, 0), ZIVK_STS_SIZE_ERR);
  EXPECT_TRUE(draws_have_been(kSeed, 0));
  ZIVKS_SortIndexAscend_32s_I(keys, positions, 1);
  EXPECT_TRUE(draws_have_been(kClock, 0));
  ZIVKS_SortIndexAscend_32s_I(keys, positions, 4);
  EXPECT_TRUE(draws_have_been(kClock, 1));
}

#ifndef __SANITIZE_ADDRESS__  // which needs memory of its own
// The C library's qsort has another algorithm where there is no memory for a copy of the array.
TEST(Sort, SortsWithoutMemory) {
  constexpr int32_t kLength = 4 << 20;
  std::vector<int32_t> rising(kLength);
  std::vector<float> falling(kLength);
  for (size_t i = 0; i < rising.size(); ++i) {
    rising[i] = static_cast<int32_t>(i * 2654435761U);
    falling[i] = static_cast<float>(rising[i]);
  }
  rlimit before, none;
  ASSERT_EQ(getrlimit(RLIMIT_AS, &before), 0);
  none = {1 << 20, before.rlim_max};
  setrlimit(RLIMIT_AS, &none);
  const ZIVKStatus statuses[] = {ZIVKS_SortAscend_32s_I(rising.data(), kLength),
                                 ZIVKS_SortDescend_32f_I(falling.data(), kLength)};
  setrlimit(RLIMIT_AS, &before);
  EXPECT_EQ(statuses[0], ZIVK_STS_NO_ERR);
  EXPECT_EQ(statuses[1], ZIVK_STS_NO_ERR);
  EXPECT_TRUE(std::is_sorted(rising.begin(), rising.end()));
  EXPECT_TRUE(std::is_sorted(falling.begin(), falling.end(), std::greater<>()));
}
#endif

class Sort16Bits : public testing::TestWithParam<std::pair<const char*, bool>> {};

TEST_P(Sort16Bits, CountsLongArraysInMemoryThatItGivesBack) {
  for (bool is_memory : {true, false}) {
    for (int32_t length : {4095, 4096, 65535, 65536, 200000}) {
      std::vector<uint16_t> keys(static_cast<size_t>(length)), expected;
      for (size_t i = 0; i < keys.size(); ++i) keys[i] = static_cast<uint16_t>(i * i * 2654435761U >> 9);
      std::fill_n(keys.begin(), length / 5, uint16_t{40000});
      expected = keys;
      const uint16_t turned = GetParam().second ? 0x8000 : 0;
      std::sort(expected.begin(), expected.end(),
                [&](uint16_t a, uint16_t b) { return (a ^ turned) < (b ^ turned); });
      const std::string direction = std::string(GetParam().first);
      if (direction == "Descend") std::reverse(expected.begin(), expected.end());

      services = {};
      if (!is_memory) services.memory = nullptr;
      const Function* const sort =
          find_function("ZIVKS_Sort" + direction + (GetParam().second ? "_16s_I" : "_16u_I"));
      ASSERT_NE(sort, nullptr);
      EXPECT_EQ(sort->call({Slot::of(keys.data()), Slot::of(length)}).as<ZIVKStatus>(), ZIVK_STS_NO_ERR);
      EXPECT_EQ(keys, expected) << length;
      const bool asks = length >= 4096;
      EXPECT_EQ(services.size, asks ? std::optional(262144) : std::nullopt) << length;
      EXPECT_EQ(services.freed, asks && is_memory ? std::optional(memory_of(262144)) : std::nullopt);
    }
  }
  services = {};
}

INSTANTIATE_TEST_SUITE_P(All, Sort16Bits,
                         testing::Values(std::pair("Ascend", false), std::pair("Ascend", true),
                                         std::pair("Descend", false), std::pair("Descend", true)));

TEST(TopK, SeedsWithMethod1AndOnlyThen) {
  const std::vector<int32_t> keys(3000, 7);
  std::vector<int32_t> values(3000), positions(3000), handle(4 * 3000 + 256);
  const auto top = [&](int32_t offset, int32_t len, int32_t k, int32_t method) {
    std::srand(kSeed);
    return ZIVKS_TopK_32s(keys.data(), offset, 4, len, values.data(), positions.data(), k, method,
                          handle.data());
  };
  const struct {
    int32_t len, k, method;
    bool by_radix;
  } choices[] = {{2049, 33, 0, true},    {2048, 33, 0, false}, {2049, 32, 0, false},
                 {2048, 2048, 0, false}, {2049, 33, 1, false}, {5, 2, 2, true}};
  for (const auto& choice : choices) {
    EXPECT_EQ(top(0, choice.len, choice.k, choice.method), ZIVK_STS_NO_ERR);
    EXPECT_TRUE(choice.by_radix ? draws_have_been(kSeed, 0) : draws_have_been(kClock, 1))
        << choice.len << " " << choice.k << " " << choice.method;
  }
  EXPECT_EQ(top(-1, 5, 2, 1), ZIVK_STS_SIZE_ERR);
  EXPECT_TRUE(draws_have_been(kSeed, 0));
}

TEST(TopK, RefusesHandlesThatAreTooLarge) {
  const struct {
    int32_t len, method;
    bool is_float;
    int32_t bytes;  // 0: refused
  } sizes[] = {
      {0x0FFFFFFD, 1, false, 0x7FFFFFF0}, {0x0FFFFFFE, 1, false, 0},          {INT32_MAX, 1, true, 0},
      {0x07FFFFBE, 2, false, 0x7FFFFFE0}, {0x07FFFFBF, 2, false, 0},          {INT32_MAX, 2, false, 0},
      {0x07FFFF7E, 2, true, 0x7FFFFFE0},  {0x07FFFF7F, 2, true, 0},           {0x07FFFF7F, 0, true, 0},
      {0x07FFFFFF, 0, false, 0},          {0x08000000, 0, false, 0x40000000}, {1, 1, true, 16},
  };
  int32_t positions[33];
  union {
    int32_t integers[33];
    float floats[33];
  } values;
  char memory;
  for (const auto& size : sizes) {
    services = {};
    services.memory = &memory;
    void* handle = nullptr;
    const ZIVKStatus status =
        size.is_float ? ZIVKS_TopKInit_32f(size.len, values.floats, positions, 33, size.method, &handle)
                      : ZIVKS_TopKInit_32s(size.len, values.integers, positions, 33, size.method, &handle);
    EXPECT_EQ(status, size.bytes == 0 ? ZIVK_STS_BUFFER_SIZE_ERR : ZIVK_STS_NO_ERR) << size.len;
    EXPECT_EQ(services.size.value_or(0), size.bytes) << size.len;
    EXPECT_EQ(handle, size.bytes == 0 ? nullptr : &memory);
  }
  services = {};
}

// Results that were worked out by hand.
TEST(TopK, WeavesZerosInAndLeavesInfinitiesOut) {
  for (int32_t method : {1, 2}) {
    std::vector<int32_t> handle(1000), positions(9, 77), values(9, 77);
    const int32_t keys[] = {5, 99, -1, 99, 7, 99, 0, 99};
    ZIVKS_TopK_32s(keys, 100, 8, 8, values.data(), positions.data(), 9, method, handle.data());
    EXPECT_EQ(values, (std::vector<int32_t>{7, 5, 0, 0, 0, 0, 0, -1, 77}));
    EXPECT_EQ(positions, (std::vector<int32_t>{102, 100, 103, 104, 105, 106, 107, 101, 77}));

    constexpr float kInfinity = INFINITY;
    std::vector<float> floats(6, 77);
    const float mixed[] = {1, kInfinity, NAN, kInfinity, -kInfinity, kInfinity};
    positions.assign(6, 77);
    ZIVKS_TopK_32f(mixed, 0, 4, 6, floats.data(), positions.data(), 6, method, handle.data());
    EXPECT_EQ(floats, (std::vector<float>{kInfinity, 1, -kInfinity, 77, 77, 77}));
    EXPECT_EQ(std::count(positions.begin(), positions.end(), 77), 3);
  }
}

// Keys as functions of their index, against the forms that a selection goes through in a long array.
template <class T>
T long_array_key(int pattern, uint32_t i) {
  const uint32_t mixed = i * 2654435761U, random = (mixed ^ mixed >> 15) * 2246822519U;
  constexpr T kGreatest = std::numeric_limits<T>::max();
  switch (pattern) {
    case 0: return static_cast<T>(static_cast<int32_t>(random));
    case 1: return static_cast<T>(i);                                       // every key is a candidate
    case 2: return static_cast<T>(-static_cast<int32_t>(i / 9));            // none is, and ties
    case 3: return i % 3 == 0 ? kGreatest : static_cast<T>(random % 1000);  // ties at the end of the range
    case 4: return i % 64 == 0 ? kGreatest - static_cast<T>(i) : static_cast<T>(i % 7);  // far outliers
    case 5: return std::numeric_limits<T>::lowest();
    case 6: return static_cast<T>(-0.0F) * static_cast<T>(random >> 31);
    default: return static_cast<T>(random >> 16) / 2;
  }
}

// Single keys that are not finite: none, one that is greater than all others or less than all others, or both.
enum class NonFinite { kNone, kGreater, kLess, kBoth };

template <class T>
void set_keys(Bytes& source, int pattern, NonFinite non_finite) {
  const size_t count = source.size() / sizeof(T);
  std::vector<T> keys(count);
  for (uint32_t i = 0; i < count; ++i) keys[i] = long_array_key<T>(pattern, i);
  if constexpr (std::is_floating_point_v<T>) {
    const auto has = [=](NonFinite one) { return non_finite == one || non_finite == NonFinite::kBoth; };
    if (has(NonFinite::kGreater)) keys[count - 3] = std::abs(static_cast<T>(NAN));
    if (has(NonFinite::kLess)) keys[pattern % 2 == 0 ? count / 2 : 5] = -std::abs(static_cast<T>(NAN));
  }
  std::memcpy(source.data(), keys.data(), count * sizeof(T));
}

class LongSelection : public AgainstReference {
 protected:
  // Operands for method 1 or 2, keys that are 4 or 8 bytes apart, and `k` results.
  Operands operands(int32_t method, int32_t stride, int32_t k) const {
    constexpr int32_t kLength = 30011;
    const size_t variant = (stride == 8 ? 3 : 0) + 6 * static_cast<size_t>(method);
    Operands operands = random_operands(function(), kLength, variant);
    EXPECT_EQ(value_of("method", function(), operands), method);
    EXPECT_EQ(value_of("srcStride", function(), operands), stride);
    for (size_t i = 0; i < operands.arrays.size(); ++i) {
      const Argument& argument = function().arguments[i];
      if (argument.role == Role::kCount) operands.slots[i] = Slot::of(k);
      if (argument.counted) operands.arrays[i].assign(static_cast<size_t>(k) * 4, 0x77);
    }
    return operands;
  }
};

TEST_P(LongSelection, AgreesForEveryKindOfKeys) {
  const bool is_float = *function().arguments[0].element->type == typeid(float);
  for (int32_t method : {1, 2}) {
    for (int32_t stride : {4, 8}) {
      for (int32_t k : {100, 3000, 30011}) {
        Operands call = operands(method, stride, k);
        for (int pattern = 0; pattern < 8; ++pattern) {
          for (NonFinite non_finite :
               {NonFinite::kNone, NonFinite::kGreater, NonFinite::kLess, NonFinite::kBoth}) {
            is_float ? set_keys<float>(call.arrays[0], pattern, non_finite)
                     : set_keys<int32_t>(call.arrays[0], pattern, non_finite);
            ASSERT_EQ(difference_from_reference(call), "")
                << "method " << method << ", stride " << stride << ", k " << k << ", pattern " << pattern
                << ", not finite " << static_cast<int>(non_finite);
            if (!is_float) break;
          }
        }
      }
    }
  }
}

std::vector<const Function*> selections() {
  return {find_function("ZIVKS_TopK_32s"), find_function("ZIVKS_TopK_32f")};
}

ZIVKS_FOR_FUNCTIONS(LongSelection, selections());

}  // namespace
}  // namespace zivks_test
