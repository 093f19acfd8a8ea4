// Radix sorts of arrays that are long enough for each of the ways they are sorted in, and of keys that lead
// through these ways differently. What is special about short arrays is tested for all functions together.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <zivks.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

#include "generic/values.h"

namespace zivks_test {
namespace {

template <class T>
struct RadixSorts {
  ZIVKDataType type;
  ZIVKStatus (*ascend)(T*, int32_t, void*);
  ZIVKStatus (*descend)(T*, int32_t, void*);
  ZIVKStatus (*index_ascend)(const T*, int32_t, int32_t*, int32_t, void*);
  ZIVKStatus (*index_descend)(const T*, int32_t, int32_t*, int32_t, void*);
};

// An integer that is ordered as the sorts order keys.
template <class T>
BitsOf<T> rank_of(T key) {
  using Bits = BitsOf<T>;
  constexpr Bits kTop = static_cast<Bits>(Bits{1} << (8 * sizeof(T) - 1));
  const auto bits = bit_cast<Bits>(key);
  if (std::is_floating_point_v<T> && (bits & kTop) != 0) return static_cast<Bits>(~bits);
  return std::is_signed_v<T> ? bits ^ kTop : bits;
}

enum class Shape { kAnyBits, kTwoTopDigits, kNearby, kFewValues, kOneValue, kManyNegativeZeros };

template <class T>
std::vector<T> keys_of(Shape shape, size_t count) {
  using Bits = BitsOf<T>;
  constexpr Bits kTop = static_cast<Bits>(Bits{1} << (8 * sizeof(T) - 1));
  std::mt19937_64 random(count);
  std::vector<T> keys(count);
  for (T& key : keys) {
    auto bits = static_cast<Bits>(random());
    switch (shape) {
      case Shape::kAnyBits: break;
      case Shape::kTwoTopDigits: bits = static_cast<Bits>(bits & static_cast<Bits>(~Bits{0}) >> 7); break;
      case Shape::kNearby: bits = static_cast<Bits>(kTop | bits % 5000); break;  // the upper digits are equal
      case Shape::kFewValues: bits = static_cast<Bits>(bits % 3 * (Bits(~Bits{0}) / 5)); break;
      case Shape::kOneValue: bits = static_cast<Bits>(~Bits{0} / 3); break;
      case Shape::kManyNegativeZeros: bits = bits % 4 == 0 ? kTop : bits; break;
    }
    // -0 changes the order of floats: only where it is wanted.
    if (shape != Shape::kManyNegativeZeros && bits == kTop) bits = static_cast<Bits>(kTop + 1);
    key = bit_cast<T>(bits);
  }
  return keys;
}

// What a sort of floats makes of the order of their values if there is a -0: elements with the sign stand in
// the opposite order.
template <class T>
void turn_negative(std::vector<T>& sorted, bool ascends) {
  const auto is_negative = [](T key) { return std::signbit(key); };
  if (ascends) std::reverse(sorted.begin(), std::find_if_not(sorted.begin(), sorted.end(), is_negative));
  if (!ascends) std::reverse(std::find_if(sorted.begin(), sorted.end(), is_negative), sorted.end());
}

template <class T>
void expect_sorted(const RadixSorts<T>& sorts, Shape shape, size_t count, bool ascends) {
  const auto len = static_cast<int32_t>(count);
  const std::vector<T> keys = keys_of<T>(shape, count);
  std::vector<std::pair<BitsOf<T>, int32_t>> ranks(count);
  for (size_t i = 0; i < count; ++i) {
    const BitsOf<T> rank = rank_of(keys[i]);
    ranks[i] = {ascends ? rank : static_cast<BitsOf<T>>(~rank), static_cast<int32_t>(i)};
  }
  std::sort(ranks.begin(), ranks.end());
  std::vector<int32_t> order;
  for (const auto& [rank, position] : ranks) order.push_back(position);

  // With a word on each side, which a search for the end of negative elements reads.
  std::vector<T> sorted;
  for (int32_t position : order) sorted.push_back(keys[static_cast<size_t>(position)]);
  if constexpr (std::is_floating_point_v<T>) {
    if (shape == Shape::kManyNegativeZeros) turn_negative(sorted, ascends);
  }
  std::vector<T> array(count + 2, T{1});
  std::copy(keys.begin(), keys.end(), array.begin() + 1);
  void* policy = nullptr;
  ASSERT_EQ(ZIVKS_SortRadixInit(len, sorts.type, &policy), ZIVK_STS_NO_ERR);
  EXPECT_EQ((ascends ? sorts.ascend : sorts.descend)(&array[1], len, policy), ZIVK_STS_NO_ERR);
  EXPECT_EQ(std::memcmp(&array[1], sorted.data(), count * sizeof(T)), 0) << "keys";
  EXPECT_TRUE(array.front() == T{1} && array.back() == T{1});
  EXPECT_EQ(ZIVKS_SortRadixRelease(policy), ZIVK_STS_NO_ERR);

  ASSERT_EQ(ZIVKS_SortRadixIndexInit(len, sorts.type, &policy), ZIVK_STS_NO_ERR);
  for (size_t stride : {sizeof(T), sizeof(T) + 3}) {
    if (stride != sizeof(T) && shape != Shape::kAnyBits) continue;
    std::vector<unsigned char> strided(count * stride);
    for (size_t i = 0; i < count; ++i) std::memcpy(&strided[i * stride], &keys[i], sizeof(T));
    std::vector<int32_t> found(count);
    const auto* const first = reinterpret_cast<const T*>(strided.data());
    EXPECT_EQ((ascends ? sorts.index_ascend : sorts.index_descend)(first, static_cast<int32_t>(stride),
                                                                   found.data(), len, policy),
              ZIVK_STS_NO_ERR);
    EXPECT_EQ(found, order) << "positions, stride " << stride;
  }
  EXPECT_EQ(ZIVKS_SortRadixIndexRelease(policy), ZIVK_STS_NO_ERR);
}

// Lengths on each side of every limit at which the library goes another way: 12 Ki and 48 Ki for passes over
// positions and keys of 16 bits, 64 Ki for positions of 16 bits and for splitting keys of 64 bits, 128 Ki for
// splitting keys of 32 bits. Where most keys share their leading digits, the longest arrays are split several times.
// It takes 1 Mi keys to leave pieces of random ones that are long enough for wide digits.
template <class T>
void expect_sorted(const RadixSorts<T>& sorts) {
  for (Shape shape : {Shape::kAnyBits, Shape::kTwoTopDigits, Shape::kNearby, Shape::kFewValues,
                      Shape::kOneValue, Shape::kManyNegativeZeros}) {
    for (size_t count : {12288U, 12289U, 49151U, 49152U, 65536U, 65537U, 131073U, 300001U, 1U << 20}) {
      if (count == 300001 && shape != Shape::kTwoTopDigits && shape != Shape::kFewValues) continue;
      if (count > 300001 && (shape != Shape::kAnyBits || sizeof(T) < sizeof(uint32_t))) continue;
      for (bool ascends : {true, false}) {
        if (count > 300001 && !ascends) continue;
        SCOPED_TRACE(testing::Message() << "type " << sorts.type << ", shape " << static_cast<int>(shape)
                                        << ", " << count << (ascends ? " ascending" : " descending"));
        expect_sorted(sorts, shape, count, ascends);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(RadixSorts, LongArraysOfAllShapesAreSorted) {
  expect_sorted<uint8_t>({ZIVK_DT_8U, ZIVKS_SortRadixAscend_8u_I, ZIVKS_SortRadixDescend_8u_I,
                          ZIVKS_SortRadixIndexAscend_8u, ZIVKS_SortRadixIndexDescend_8u});
  expect_sorted<uint16_t>({ZIVK_DT_16U, ZIVKS_SortRadixAscend_16u_I, ZIVKS_SortRadixDescend_16u_I,
                           ZIVKS_SortRadixIndexAscend_16u, ZIVKS_SortRadixIndexDescend_16u});
  expect_sorted<int16_t>({ZIVK_DT_16S, ZIVKS_SortRadixAscend_16s_I, ZIVKS_SortRadixDescend_16s_I,
                          ZIVKS_SortRadixIndexAscend_16s, ZIVKS_SortRadixIndexDescend_16s});
  expect_sorted<uint32_t>({ZIVK_DT_32U, ZIVKS_SortRadixAscend_32u_I, ZIVKS_SortRadixDescend_32u_I,
                           ZIVKS_SortRadixIndexAscend_32u, ZIVKS_SortRadixIndexDescend_32u});
  expect_sorted<int32_t>({ZIVK_DT_32S, ZIVKS_SortRadixAscend_32s_I, ZIVKS_SortRadixDescend_32s_I,
                          ZIVKS_SortRadixIndexAscend_32s, ZIVKS_SortRadixIndexDescend_32s});
  expect_sorted<float>({ZIVK_DT_32F, ZIVKS_SortRadixAscend_32f_I, ZIVKS_SortRadixDescend_32f_I,
                        ZIVKS_SortRadixIndexAscend_32f, ZIVKS_SortRadixIndexDescend_32f});
  expect_sorted<uint64_t>({ZIVK_DT_64U, ZIVKS_SortRadixAscend_64u_I, ZIVKS_SortRadixDescend_64u_I,
                           ZIVKS_SortRadixIndexAscend_64u, ZIVKS_SortRadixIndexDescend_64u});
  expect_sorted<int64_t>({ZIVK_DT_64S, ZIVKS_SortRadixAscend_64s_I, ZIVKS_SortRadixDescend_64s_I,
                          ZIVKS_SortRadixIndexAscend_64s, ZIVKS_SortRadixIndexDescend_64s});
  expect_sorted<double>({ZIVK_DT_64F, ZIVKS_SortRadixAscend_64f_I, ZIVKS_SortRadixDescend_64f_I,
                         ZIVKS_SortRadixIndexAscend_64f, ZIVKS_SortRadixIndexDescend_64f});
}

// Memory of zeros, of which only what is touched takes space.
class Reserved {
 public:
  explicit Reserved(size_t bytes) : bytes_(bytes) {
    memory_ = static_cast<unsigned char*>(
        mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
  }
  Reserved(const Reserved&) = delete;
  Reserved& operator=(const Reserved&) = delete;
  ~Reserved() { munmap(memory_, bytes_); }
  unsigned char* at(size_t offset) const { return memory_ + offset; }

 private:
  size_t bytes_;
  unsigned char* memory_;
};

// Three keys that span 2^31 bytes are counted where they are, and put out from 2^31 bytes before the first
// one downwards.
TEST(RadixSorts, NarrowKeysAreReadBackFromAnOffsetOf32Bits) {
  constexpr size_t kGiB = size_t{1} << 30;
  const Reserved memory(7 * kGiB);
  const auto key = [&](int i) { return memory.at(static_cast<size_t>(4 + i) * kGiB); };
  const unsigned char counted[] = {3, 1, 2}, put_out[] = {1, 3, 2};
  for (int i = 0; i < 3; ++i) {
    *key(i) = counted[i];
    *key(i - 4) = put_out[i];
  }
  const std::vector<int32_t> rising = {0, 2, 1}, falling = {1, 2, 0};
  std::vector<int32_t> positions(3);
  std::vector<int32_t> policy(65536);
  const auto stride = static_cast<int32_t>(kGiB);
  ASSERT_EQ(ZIVKS_SortRadixIndexAscend_8u(key(0), stride, positions.data(), 3, policy.data()),
            ZIVK_STS_NO_ERR);
  EXPECT_EQ(positions, rising);
  ASSERT_EQ(ZIVKS_SortRadixIndexDescend_16s(reinterpret_cast<const int16_t*>(key(0)), stride,
                                            positions.data(), 3, policy.data()),
            ZIVK_STS_NO_ERR);
  EXPECT_EQ(positions, falling);
}

}  // namespace
}  // namespace zivks_test
