#include <algorithm>
#include <cstddef>

#include "bench/radix_keys.h"

namespace bench {
namespace {

using namespace radix;

// --- The textbook form -----------------------------------------------------------------

enum class Falling : bool { kNo, kYes };

template <class T>
constexpr T kTopBit = static_cast<T>(T{1} << (8 * sizeof(T) - 1));

template <class T>
using Unsigned = std::conditional_t<
    sizeof(T) == 1, uint8_t,
    std::conditional_t<sizeof(T) == 2, uint16_t, std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>>>;

// Counters become the places where the keys of a value end.
template <Falling falling>
void sum(int32_t* counters, int values) {
  if (falling == Falling::kNo) {
    for (int i = 1; i < values; ++i) counters[i] += counters[i - 1];
  } else {
    for (int i = values - 2; i >= 0; --i) counters[i] += counters[i + 1];
  }
}

// Passes over 8 bits each: count, sum, put out backward, copy back.
template <Falling falling, class Key>
void sort_by_passes(Key* keys, Key* scratch, int32_t len) {
  for (unsigned shift = 0; shift < 8 * sizeof(Key); shift += 8) {
    int32_t counters[256] = {};
    for (int32_t i = 0; i < len; ++i) ++counters[(keys[i] >> shift) & 255];
    sum<falling>(counters, 256);
    for (int32_t i = len - 1; i >= 0; --i) scratch[--counters[(keys[i] >> shift) & 255]] = keys[i];
    std::memcpy(keys, scratch, static_cast<std::size_t>(len) * sizeof(Key));
  }
}

template <Falling falling>
struct SortByPasses {
  template <class T>
  PLAIN_LOOP void operator()(T* srcDst, int32_t len, void* policy) const {
    using Key = Unsigned<T>;
    auto* const keys = reinterpret_cast<Key*>(srcDst);
    constexpr Key kBias = std::is_signed_v<T> ? kTopBit<Key> : 0;
    for (int32_t i = 0; i < len; ++i) keys[i] = static_cast<Key>(keys[i] + kBias);
    sort_by_passes<falling>(keys, static_cast<Key*>(policy), len);
    for (int32_t i = 0; i < len; ++i) keys[i] = static_cast<Key>(keys[i] + kBias);
    if constexpr (std::is_floating_point_v<T>) {
      int32_t negative = 0;
      if (falling == Falling::kNo) {
        while (negative < len && srcDst[negative] < 0) ++negative;
        std::reverse(srcDst, srcDst + negative);
      } else {
        while (negative < len && srcDst[len - 1 - negative] < 0) ++negative;
        std::reverse(srcDst + len - negative, srcDst + len);
      }
    }
  }
};

// A counter for every value.
template <Falling falling>
struct SortByCounting {
  template <class T>
  PLAIN_LOOP void operator()(T* srcDst, int32_t len, void* policy) const {
    using Key = Unsigned<T>;
    constexpr int kValues = 1 << (8 * sizeof(Key));
    constexpr Key kBias = std::is_signed_v<T> ? kTopBit<Key> : 0;
    auto* const counters = static_cast<int32_t*>(policy);
    std::memset(counters, 0, kValues * sizeof *counters);
    for (int32_t i = 0; i < len; ++i) ++counters[static_cast<Key>(srcDst[i] + kBias)];
    for (int place = 0; place < kValues; ++place) {
      const int value = falling == Falling::kNo ? place : kValues - 1 - place;
      if (counters[value] == 0) continue;
      std::fill(srcDst, srcDst + counters[value], static_cast<T>(value - kBias));
      srcDst += counters[value];
    }
  }
};

template <class T>
Unsigned<T> key_at(const T* src, int32_t stride, int32_t i) {
  Unsigned<T> key;
  std::memcpy(&key, reinterpret_cast<const char*>(src) + std::ptrdiff_t{i} * stride, sizeof key);
  return key;
}

template <Falling falling>
struct SortIndexByCounting {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t stride, int32_t* dst, int32_t len, void* policy) const {
    using Key = Unsigned<T>;
    constexpr int kValues = 1 << (8 * sizeof(Key));
    constexpr Key kBias = std::is_signed_v<T> ? kTopBit<Key> : 0;
    auto* const counters = static_cast<int32_t*>(policy);
    std::memset(counters, 0, kValues * sizeof *counters);
    for (int32_t i = 0; i < len; ++i) ++counters[static_cast<Key>(key_at(src, stride, i) + kBias)];
    sum<falling>(counters, kValues);
    for (int32_t i = len - 1; i >= 0; --i) {
      dst[--counters[static_cast<Key>(key_at(src, stride, i) + kBias)]] = i;
    }
  }
};

// The same passes with positions. The last one puts out positions only.
template <Falling falling, class Key>
void sort_index_by_passes(Key* keys, Key* scratch, int32_t* positions, int32_t* dst, int32_t len) {
  for (unsigned shift = 0; shift < 8 * sizeof(Key); shift += 8) {
    int32_t counters[256] = {};
    for (int32_t i = 0; i < len; ++i) ++counters[(keys[i] >> shift) & 255];
    sum<falling>(counters, 256);
    const bool is_last = shift + 8 == 8 * sizeof(Key);
    for (int32_t i = len - 1; i >= 0; --i) {
      const int32_t place = --counters[(keys[i] >> shift) & 255];
      if (!is_last) scratch[place] = keys[i];
      dst[place] = positions[i];
    }
    if (is_last) break;
    std::memcpy(keys, scratch, static_cast<std::size_t>(len) * sizeof(Key));
    std::memcpy(positions, dst, static_cast<std::size_t>(len) * sizeof(int32_t));
  }
}

template <Falling falling>
struct SortIndexByPasses {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t stride, int32_t* dst, int32_t len, void* policy) const {
    using Key = Unsigned<T>;
    auto* const scratch = static_cast<Key*>(policy);
    Key* const keys = scratch + len;
    auto* const positions = reinterpret_cast<int32_t*>(keys + len);
    if constexpr (std::is_floating_point_v<T>) {
      // Those whose bits fall where values rise go in front, from the front on; the others behind, from the
      // end.
      int32_t front = 0, back = len;
      for (int32_t i = 0; i < len; ++i) {
        const Key key = key_at(src, stride, i);
        const bool goes_front = ((key & kTopBit<Key>) != 0) == (falling == Falling::kNo);
        const int32_t place = goes_front ? front++ : --back;
        keys[place] = key;
        positions[place] = i;
      }
      std::reverse(keys + front, keys + len);
      std::reverse(positions + front, positions + len);
      sort_index_by_passes<Falling::kYes>(keys, scratch, positions, dst, front);
      sort_index_by_passes<Falling::kNo>(keys + front, scratch + front, positions + front, dst + front,
                                         len - front);
    } else {
      constexpr Key kBias = std::is_signed_v<T> ? kTopBit<Key> : 0;
      for (int32_t i = 0; i < len; ++i) {
        keys[i] = key_at(src, stride, i) + kBias;
        positions[i] = i;
      }
      sort_index_by_passes<falling>(keys, scratch, positions, dst, len);
    }
  }
};

// --- Rows ------------------------------------------------------------------------------

// The rows of one function: random keys in an array of medium length.
template <class T>
constexpr Row of_keys(Row row) {
  return row.filled_by(random_keys<T>).prepared_by(copy_source<T>).at(kMedium).with("64 Ki");
}
template <class T>
constexpr Row of_positions(Row row) {
  return row.filled_by(random_keys<T>).at(kMedium).with("64 Ki");
}

template <class T>
const Requirement* requirement_of_long(const Requirement* usual) {
  if (usual == &kRadixSort) return sizeof(T) == sizeof(uint32_t) ? &kLongRadix32 : &kLongRadix64;
  if (usual == &kRadixIndex) return sizeof(T) == sizeof(uint32_t) ? &kLongIndex32 : &kLongIndex64;
  return usual;
}

// And all other lengths and kinds of keys.
template <class T>
void add_others(std::vector<Row>& rows, Row row) {
  const auto at_large = [](Row usual) {
    return usual.at(kLarge).changed(&Row::requirement, requirement_of_long<T>(usual.requirement));
  };
  rows.push_back(row.at(kSmall).with("1 Ki"));
  rows.push_back(at_large(row).with("4 Mi"));
  row = row.filled_by(sorted_keys<T>);
  rows.push_back(row.at(kSmall).with("1 Ki, sorted"));
  rows.push_back(row.at(kMedium).with("64 Ki, sorted"));
  rows.push_back(at_large(row).with("4 Mi, sorted"));
  row = row.filled_by(few_distinct_keys<T>);
  rows.push_back(row.at(kSmall).with("1 Ki, few distinct"));
  rows.push_back(row.at(kMedium).with("64 Ki, few distinct"));
  rows.push_back(at_large(row).with("4 Mi, few distinct"));
}

}  // namespace

std::vector<Row> sort_radix_rows() {
  std::vector<Row> rows = {
      of_keys<uint8_t>(ROW(ZIVKS_SortRadixAscend_8u_I, kCountedSort, SortByCounting<Falling::kNo>, kSrcDst,
                           kLen, kPolicy)),
      of_keys<uint16_t>(ROW(ZIVKS_SortRadixAscend_16u_I, kCountedSort, SortByCounting<Falling::kNo>, kSrcDst,
                            kLen, kPolicy)),
      of_keys<int16_t>(ROW(ZIVKS_SortRadixAscend_16s_I, kCountedSort, SortByCounting<Falling::kNo>, kSrcDst,
                           kLen, kPolicy)),
      of_keys<uint32_t>(
          ROW(ZIVKS_SortRadixAscend_32u_I, kRadixSort, SortByPasses<Falling::kNo>, kSrcDst, kLen, kPolicy)),
      of_keys<int32_t>(
          ROW(ZIVKS_SortRadixAscend_32s_I, kRadixSort, SortByPasses<Falling::kNo>, kSrcDst, kLen, kPolicy)),
      of_keys<float>(
          ROW(ZIVKS_SortRadixAscend_32f_I, kRadixSort, SortByPasses<Falling::kNo>, kSrcDst, kLen, kPolicy)),
      of_keys<uint64_t>(
          ROW(ZIVKS_SortRadixAscend_64u_I, kRadixSort, SortByPasses<Falling::kNo>, kSrcDst, kLen, kPolicy)),
      of_keys<int64_t>(
          ROW(ZIVKS_SortRadixAscend_64s_I, kRadixSort, SortByPasses<Falling::kNo>, kSrcDst, kLen, kPolicy)),
      of_keys<double>(
          ROW(ZIVKS_SortRadixAscend_64f_I, kRadixSort, SortByPasses<Falling::kNo>, kSrcDst, kLen, kPolicy)),
      of_keys<uint8_t>(ROW(ZIVKS_SortRadixDescend_8u_I, kCountedSort, SortByCounting<Falling::kYes>, kSrcDst,
                           kLen, kPolicy)),
      of_keys<uint16_t>(ROW(ZIVKS_SortRadixDescend_16u_I, kCountedSort, SortByCounting<Falling::kYes>,
                            kSrcDst, kLen, kPolicy)),
      of_keys<int16_t>(ROW(ZIVKS_SortRadixDescend_16s_I, kCountedSort, SortByCounting<Falling::kYes>, kSrcDst,
                           kLen, kPolicy)),
      of_keys<uint32_t>(
          ROW(ZIVKS_SortRadixDescend_32u_I, kRadixSort, SortByPasses<Falling::kYes>, kSrcDst, kLen, kPolicy)),
      of_keys<int32_t>(
          ROW(ZIVKS_SortRadixDescend_32s_I, kRadixSort, SortByPasses<Falling::kYes>, kSrcDst, kLen, kPolicy)),
      of_keys<float>(
          ROW(ZIVKS_SortRadixDescend_32f_I, kRadixSort, SortByPasses<Falling::kYes>, kSrcDst, kLen, kPolicy)),
      of_keys<uint64_t>(
          ROW(ZIVKS_SortRadixDescend_64u_I, kRadixSort, SortByPasses<Falling::kYes>, kSrcDst, kLen, kPolicy)),
      of_keys<int64_t>(
          ROW(ZIVKS_SortRadixDescend_64s_I, kRadixSort, SortByPasses<Falling::kYes>, kSrcDst, kLen, kPolicy)),
      of_keys<double>(
          ROW(ZIVKS_SortRadixDescend_64f_I, kRadixSort, SortByPasses<Falling::kYes>, kSrcDst, kLen, kPolicy)),
      of_positions<uint8_t>(ROW(ZIVKS_SortRadixIndexAscend_8u, kCountedSort,
                                SortIndexByCounting<Falling::kNo>, kSrc, kNumber<sizeof(uint8_t)>, kDstIndx,
                                kLen, kPolicy)),
      of_positions<uint16_t>(ROW(ZIVKS_SortRadixIndexAscend_16u, kCountedSort,
                                 SortIndexByCounting<Falling::kNo>, kSrc, kNumber<sizeof(uint16_t)>, kDstIndx,
                                 kLen, kPolicy)),
      of_positions<int16_t>(ROW(ZIVKS_SortRadixIndexAscend_16s, kCountedSort,
                                SortIndexByCounting<Falling::kNo>, kSrc, kNumber<sizeof(int16_t)>, kDstIndx,
                                kLen, kPolicy)),
      of_positions<uint32_t>(ROW(ZIVKS_SortRadixIndexAscend_32u, kRadixIndex, SortIndexByPasses<Falling::kNo>,
                                 kSrc, kNumber<sizeof(uint32_t)>, kDstIndx, kLen, kPolicy)),
      of_positions<int32_t>(ROW(ZIVKS_SortRadixIndexAscend_32s, kRadixIndex, SortIndexByPasses<Falling::kNo>,
                                kSrc, kNumber<sizeof(int32_t)>, kDstIndx, kLen, kPolicy)),
      of_positions<float>(ROW(ZIVKS_SortRadixIndexAscend_32f, kRadixIndex, SortIndexByPasses<Falling::kNo>,
                              kSrc, kNumber<sizeof(float)>, kDstIndx, kLen, kPolicy)),
      of_positions<uint64_t>(ROW(ZIVKS_SortRadixIndexAscend_64u, kRadixIndex, SortIndexByPasses<Falling::kNo>,
                                 kSrc, kNumber<sizeof(uint64_t)>, kDstIndx, kLen, kPolicy)),
      of_positions<int64_t>(ROW(ZIVKS_SortRadixIndexAscend_64s, kRadixIndex, SortIndexByPasses<Falling::kNo>,
                                kSrc, kNumber<sizeof(int64_t)>, kDstIndx, kLen, kPolicy)),
      of_positions<double>(ROW(ZIVKS_SortRadixIndexAscend_64f, kRadixIndex, SortIndexByPasses<Falling::kNo>,
                               kSrc, kNumber<sizeof(double)>, kDstIndx, kLen, kPolicy)),
      of_positions<uint8_t>(ROW(ZIVKS_SortRadixIndexDescend_8u, kCountedSort,
                                SortIndexByCounting<Falling::kYes>, kSrc, kNumber<sizeof(uint8_t)>, kDstIndx,
                                kLen, kPolicy)),
      of_positions<uint16_t>(ROW(ZIVKS_SortRadixIndexDescend_16u, kCountedSort,
                                 SortIndexByCounting<Falling::kYes>, kSrc, kNumber<sizeof(uint16_t)>,
                                 kDstIndx, kLen, kPolicy)),
      of_positions<int16_t>(ROW(ZIVKS_SortRadixIndexDescend_16s, kCountedSort,
                                SortIndexByCounting<Falling::kYes>, kSrc, kNumber<sizeof(int16_t)>, kDstIndx,
                                kLen, kPolicy)),
      of_positions<uint32_t>(ROW(ZIVKS_SortRadixIndexDescend_32u, kRadixIndex,
                                 SortIndexByPasses<Falling::kYes>, kSrc, kNumber<sizeof(uint32_t)>, kDstIndx,
                                 kLen, kPolicy)),
      of_positions<int32_t>(ROW(ZIVKS_SortRadixIndexDescend_32s, kRadixIndex,
                                SortIndexByPasses<Falling::kYes>, kSrc, kNumber<sizeof(int32_t)>, kDstIndx,
                                kLen, kPolicy)),
      of_positions<float>(ROW(ZIVKS_SortRadixIndexDescend_32f, kRadixIndex, SortIndexByPasses<Falling::kYes>,
                              kSrc, kNumber<sizeof(float)>, kDstIndx, kLen, kPolicy)),
      of_positions<uint64_t>(ROW(ZIVKS_SortRadixIndexDescend_64u, kRadixIndex,
                                 SortIndexByPasses<Falling::kYes>, kSrc, kNumber<sizeof(uint64_t)>, kDstIndx,
                                 kLen, kPolicy)),
      of_positions<int64_t>(ROW(ZIVKS_SortRadixIndexDescend_64s, kRadixIndex,
                                SortIndexByPasses<Falling::kYes>, kSrc, kNumber<sizeof(int64_t)>, kDstIndx,
                                kLen, kPolicy)),
      of_positions<double>(ROW(ZIVKS_SortRadixIndexDescend_64f, kRadixIndex, SortIndexByPasses<Falling::kYes>,
                               kSrc, kNumber<sizeof(double)>, kDstIndx, kLen, kPolicy)),
  };
  for (const Row& row : std::vector<Row>(rows)) {
    const std::string name = row.function;
    const auto is = [&](const char* type) {
      return name == std::string("ZIVKS_SortRadixAscend_") + type + "_I" ||
             name == std::string("ZIVKS_SortRadixIndexAscend_") + type;
    };
    if (is("16u")) add_others<uint16_t>(rows, row);
    if (is("32u")) add_others<uint32_t>(rows, row);
    if (is("32f")) add_others<float>(rows, row);
    if (is("64u")) add_others<uint64_t>(rows, row);
    if (is("64f")) add_others<double>(rows, row);
  }
  return rows;
}

}  // namespace bench
