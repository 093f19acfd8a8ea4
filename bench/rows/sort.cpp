#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <numeric>
#include <utility>

#include "bench/keys.h"
#include "bench/row.h"

namespace bench {
namespace {

// --- Plain loops -----------------------------------------------------------------------

template <class T, bool ascending>
int compare(const void* first, const void* second) {
  const T a = *static_cast<const T*>(first), b = *static_cast<const T*>(second);
  return ascending ? (a > b) - (a < b) : (a < b) - (a > b);
}

template <bool ascending>
struct Qsort {
  template <class T>
  PLAIN_LOOP void operator()(T* srcDst, int32_t len) const {
    std::qsort(srcDst, static_cast<std::size_t>(len), sizeof(T), compare<T, ascending>);
  }
};

template <bool ascending>
struct CountingSort {
  template <class T>
  PLAIN_LOOP void operator()(T* srcDst, int32_t len) const {
    constexpr int kLeast = std::numeric_limits<T>::min(), kValues = 1 << (8 * sizeof(T));
    std::vector<int32_t> counts(kValues);
    for (int32_t i = 0; i < len; ++i) ++counts[static_cast<std::size_t>(srcDst[i] - kLeast)];
    T* to = srcDst;
    for (int i = 0; i < kValues; ++i) {
      const int value = ascending ? i : kValues - 1 - i;
      to = std::fill_n(to, counts[static_cast<std::size_t>(value)], static_cast<T>(value + kLeast));
    }
  }
};

// Brings keys, with their positions, into the order of a random one of them: first those before it, then those that
// equal it, which stand from `equal` up to `behind`, then the others.
struct Partition {
  int32_t equal, behind;
};
template <bool ascending, class T>
Partition partition_at_random_key(T* keys, int32_t* positions, int32_t low, int32_t high) {
  const auto exchange = [&](int32_t i, int32_t j) {
    std::swap(keys[i], keys[j]);
    std::swap(positions[i], positions[j]);
  };
  exchange(low, low + std::rand() % (high - low));
  const T pivot = keys[low];
  int32_t equal = low, next = low + 1, behind = high + 1;
  while (next < behind) {
    if (ascending ? keys[next] < pivot : keys[next] > pivot) {
      exchange(++equal, next++);
    } else if (ascending ? keys[next] > pivot : keys[next] < pivot) {
      exchange(next, --behind);
    } else {
      ++next;
    }
  }
  exchange(low, equal);
  return {equal, behind};
}

template <bool ascending>
struct QuicksortWithPositions {
  template <class T>
  PLAIN_LOOP void operator()(T* keys, int32_t* positions, int32_t len) const {
    std::iota(positions, positions + len, 0);
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    sort(keys, positions, 0, len - 1);
  }
  template <class T>
  static void sort(T* keys, int32_t* positions, int32_t low, int32_t high) {
    while (low < high) {
      const Partition parts = partition_at_random_key<ascending>(keys, positions, low, high);
      sort(keys, positions, low, parts.equal);
      low = parts.behind;
    }
  }
};

// How many keys stand within the span of `len` keys side by side.
std::size_t count_keys(int32_t len, int32_t stride) {
  return static_cast<std::size_t>(std::min<int64_t>(len, (int64_t{len} * 4 + stride - 1) / stride));
}
template <class T>
T key_at(const T* src, int32_t stride, std::size_t i) {
  T key;
  std::memcpy(&key, reinterpret_cast<const char*>(src) + i * static_cast<std::size_t>(stride), sizeof key);
  return key;
}

// The largest keys by partitions at random pivots. Keys are finite, and enough of them positive.
struct QuickSelection {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t offset, int32_t stride, int32_t len, T* dstVal,
                             int32_t* dstIdx, int32_t k, int32_t, void* policy) const {
    const std::size_t count = count_keys(len, stride), wanted = std::min(count, static_cast<std::size_t>(k));
    T* const keys = static_cast<T*>(policy);
    auto* const positions = reinterpret_cast<int32_t*>(keys + count);
    for (std::size_t i = 0; i < count; ++i) {
      keys[i] = key_at(src, stride, i);
      positions[i] = static_cast<int32_t>(i);
    }
    std::srand(static_cast<unsigned>(std::time(nullptr)));
    select(keys, positions, 0, static_cast<int32_t>(count) - 1, static_cast<int32_t>(wanted) - 1);
    for (std::size_t i = 0; i < wanted; ++i) {
      dstVal[i] = keys[i];
      dstIdx[i] = positions[i] + offset;
    }
  }
  template <class T>
  static void select(T* keys, int32_t* positions, int32_t low, int32_t high, int32_t target) {
    while (low < high) {
      const Partition parts = partition_at_random_key<false>(keys, positions, low, high);
      if (parts.equal >= target) {
        high = parts.equal;
      } else if (target < parts.behind) {
        return;
      } else {
        select(keys, positions, low, parts.equal, target);
        low = parts.behind;
      }
    }
  }
};

// The largest keys by their digits: all are gathered, counted by their upper bits and moved, and those that may be
// among the largest are sorted in four passes. Keys are finite, and enough of them positive.
struct RadixSelection {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t offset, int32_t stride, int32_t len, T* dstVal,
                             int32_t* dstIdx, int32_t k, int32_t, void* policy) const {
    const std::size_t count = count_keys(len, stride), wanted = std::min(count, static_cast<std::size_t>(k));
    Column from = {static_cast<uint32_t*>(policy), static_cast<uint32_t*>(policy) + count};
    Column to = {from.positions + count, from.positions + 2 * count};
    for (std::size_t i = 0; i < count; ++i) {
      const T key = key_at(src, stride, i);
      uint32_t bits;
      std::memcpy(&bits, &key, sizeof bits);
      from.ranks[i] = std::is_floating_point_v<T> && bits >> 31 != 0 ? ~bits : bits ^ kSign;
      from.positions[i] = static_cast<uint32_t>(i);
    }
    constexpr uint32_t kUpperBits = std::is_floating_point_v<T> ? 9 : 8;
    const std::size_t kept = move_by_digit(from, to, count, 32 - kUpperBits, kUpperBits, wanted);
    copy(to, from, kept);
    for (uint32_t shift = 0; shift < 32; shift += 8) {
      move_by_digit(from, to, kept, shift, 8, wanted);
      copy(to, from, kept);
    }
    for (std::size_t i = 0; i < wanted; ++i) {
      const uint32_t rank = from.ranks[i];
      const uint32_t bits = std::is_floating_point_v<T> && rank >> 31 == 0 ? ~rank : rank ^ kSign;
      std::memcpy(dstVal + i, &bits, sizeof bits);
      dstIdx[i] = static_cast<int32_t>(from.positions[i]) + offset;
    }
  }

 private:
  static constexpr uint32_t kSign = 0x80000000;
  struct Column {
    uint32_t *ranks, *positions;
  };

  // Returns how many of the largest digits it takes to have the wanted number.
  static std::size_t move_by_digit(Column from, Column to, std::size_t count, uint32_t shift, uint32_t bits,
                                   std::size_t wanted) {
    uint32_t ends[512] = {};
    const auto digit = [=](std::size_t i) { return from.ranks[i] >> shift & ((1U << bits) - 1); };
    for (std::size_t i = 0; i < count; ++i) ++ends[digit(i)];
    std::size_t kept = 0;
    uint32_t sum = 0;
    for (uint32_t value = 1U << bits; value-- > 0;) {
      ends[value] = sum += ends[value];
      if (kept == 0 && sum >= wanted) kept = sum;
    }
    for (std::size_t i = count; i-- > 0;) {
      const uint32_t place = --ends[digit(i)];
      to.ranks[place] = from.ranks[i];
      to.positions[place] = from.positions[i];
    }
    return kept;
  }
  static void copy(Column from, Column to, std::size_t count) {
    std::memcpy(to.ranks, from.ranks, count * sizeof *to.ranks);
    std::memcpy(to.positions, from.positions, count * sizeof *to.positions);
  }
};

}  // namespace

#define KEYS(T, keys, length) .filled_by(keys##_keys<T>).prepared_by(copy_source<T>).at(length)
#define SORT(function, requirement, plain, T) \
  ROW(function, requirement, plain, kSrcDst, kLen) KEYS(T, random, 64 << 10)
#define SORT_INDEX(function, plain, T) \
  ROW(function, kLibrarySort, plain, kSrcDst, kDstIndx, kLen) KEYS(T, random, 64 << 10)
#define TOP_K(function, k) TOP_K_BY(function, kSelection, RadixSelection, 4, k, 2)
#define TOP_K_BY(function, requirement, plain, stride, k, method)                                        \
  ROW(function, requirement, plain, kSrc, kNumber<0>, kNumber<stride>, kLen, kDst, kDstIndx, kNumber<k>, \
      kNumber<method>, kWork)
#define TOP_K_OF(T, function)                                                                    \
  TOP_K(function, 100).with("k 100, random").filled_by(random_keys<T>).at(1 << 20),              \
      TOP_K(function, 1000).with("k 1000, random").filled_by(random_keys<T>).at(1 << 20),        \
      TOP_K(function, 1000).with("k 1000, rising").filled_by(rising_keys<T>).at(1 << 20),        \
      TOP_K(function, 1000).with("k 1000, few").filled_by(few_distinct_keys<T>).at(1 << 20),     \
      TOP_K(function, 1000).with("k 1000 of 4 Ki").filled_by(random_keys<T>).at(kCacheResident), \
      TOP_K_BY(function, kSelection, RadixSelection, 8, 100, 2)                                  \
          .with("k 100, stride 8")                                                               \
          .filled_by(random_keys<T>)                                                             \
          .at(1 << 20),                                                                          \
      TOP_K_BY(function, kLibrarySort, QuickSelection, 4, 100, 1)                                \
          .with("k 100, method 1")                                                               \
          .filled_by(random_keys<T>)                                                             \
          .at(1 << 20),                                                                          \
      TOP_K_BY(function, kLibrarySort, QuickSelection, 8, 100, 1)                                \
          .with("k 100, method 1, stride 8")                                                     \
          .filled_by(random_keys<T>)                                                             \
          .at(1 << 20)

std::vector<Row> sort_rows() {
  return {
      SORT(ZIVKS_SortAscend_8u_I, kSort, CountingSort<true>, uint8_t),
      SORT(ZIVKS_SortAscend_16u_I, kSort, CountingSort<true>, uint16_t),
      ROW(ZIVKS_SortAscend_16u_I, kSort, CountingSort<true>, kSrcDst, kLen)
          KEYS(uint16_t, few_distinct, 64 << 10)
              .with("few distinct"),
      ROW(ZIVKS_SortAscend_16u_I, kSort, CountingSort<true>, kSrcDst, kLen) KEYS(uint16_t, random, 8 << 10)
          .with("8 Ki"),
      ROW(ZIVKS_SortAscend_16u_I, kSort, CountingSort<true>, kSrcDst, kLen) KEYS(uint16_t, random, 4 << 20)
          .with("4 Mi"),
      SORT(ZIVKS_SortAscend_16s_I, kSort, CountingSort<true>, int16_t),
      SORT(ZIVKS_SortAscend_32s_I, kLibrarySort, Qsort<true>, int32_t),
      SORT(ZIVKS_SortAscend_32f_I, kLibrarySort, Qsort<true>, float),
      SORT(ZIVKS_SortAscend_64f_I, kLibrarySort, Qsort<true>, double),
      SORT(ZIVKS_SortDescend_8u_I, kSort, CountingSort<false>, uint8_t),
      SORT(ZIVKS_SortDescend_16u_I, kSort, CountingSort<false>, uint16_t),
      SORT(ZIVKS_SortDescend_16s_I, kSort, CountingSort<false>, int16_t),
      SORT(ZIVKS_SortDescend_32s_I, kLibrarySort, Qsort<false>, int32_t),
      SORT(ZIVKS_SortDescend_32f_I, kLibrarySort, Qsort<false>, float),
      SORT(ZIVKS_SortDescend_64f_I, kLibrarySort, Qsort<false>, double),

      SORT_INDEX(ZIVKS_SortIndexAscend_8u_I, QuicksortWithPositions<true>, uint8_t),
      SORT_INDEX(ZIVKS_SortIndexAscend_16u_I, QuicksortWithPositions<true>, uint16_t),
      SORT_INDEX(ZIVKS_SortIndexAscend_16s_I, QuicksortWithPositions<true>, int16_t),
      SORT_INDEX(ZIVKS_SortIndexAscend_32s_I, QuicksortWithPositions<true>, int32_t),
      SORT_INDEX(ZIVKS_SortIndexAscend_32f_I, QuicksortWithPositions<true>, float),
      SORT_INDEX(ZIVKS_SortIndexAscend_64f_I, QuicksortWithPositions<true>, double),
      SORT_INDEX(ZIVKS_SortIndexDescend_8u_I, QuicksortWithPositions<false>, uint8_t),
      SORT_INDEX(ZIVKS_SortIndexDescend_16u_I, QuicksortWithPositions<false>, uint16_t),
      SORT_INDEX(ZIVKS_SortIndexDescend_16s_I, QuicksortWithPositions<false>, int16_t),
      SORT_INDEX(ZIVKS_SortIndexDescend_32s_I, QuicksortWithPositions<false>, int32_t),
      SORT_INDEX(ZIVKS_SortIndexDescend_32f_I, QuicksortWithPositions<false>, float),
      SORT_INDEX(ZIVKS_SortIndexDescend_64f_I, QuicksortWithPositions<false>, double),

      TOP_K_OF(int32_t, ZIVKS_TopK_32s),
      TOP_K_OF(float, ZIVKS_TopK_32f),
  };
}

}  // namespace bench
