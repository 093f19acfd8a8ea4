// Keys for radix sorts, filled into kSrc, and the handle of these sorts.
#ifndef BENCH_RADIX_KEYS_H
#define BENCH_RADIX_KEYS_H

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "bench/row.h"

namespace bench::radix {

// Of the largest size that a sort of any type wants.
struct Handle : NoOperand {
  static std::vector<uint64_t>& memory() {
    static std::vector<uint64_t> words;
    return words;
  }
  template <class Parameter>
  static Parameter get(const Arrays&, int32_t) {
    return memory().data();
  }
};
inline constexpr Handle kPolicy;

// Bits are random, but floats are from -1024 to 1024.
template <class T>
void random_keys(const Arrays& arrays, int32_t len) {
  Handle::memory().resize(
      std::max<std::size_t>(65536 * sizeof(int32_t) / 8, static_cast<std::size_t>(len) * 3));
  std::mt19937_64 generator(1);
  auto* const keys = static_cast<T*>(arrays.array(0));
  for (int32_t i = 0; i < len; ++i) {
    if constexpr (std::is_floating_point_v<T>) {
      keys[i] = static_cast<T>(static_cast<int32_t>(generator() >> 32) | 1) / T{1 << 21};
    } else {
      keys[i] = static_cast<T>(generator());
    }
  }
}

template <class T>
void sorted_keys(const Arrays& arrays, int32_t len) {
  radix::random_keys<T>(arrays, len);
  auto* const keys = static_cast<T*>(arrays.array(0));
  std::sort(keys, keys + len);
}

// 16 values.
template <class T>
void few_distinct_keys(const Arrays& arrays, int32_t len) {
  radix::random_keys<T>(arrays, len);
  std::mt19937_64 generator(2);
  auto* const keys = static_cast<T*>(arrays.array(0));
  for (int32_t i = 16; i < len; ++i) keys[i] = keys[generator() % 16];
}

inline constexpr int32_t kSmall = 1 << 10, kMedium = 1 << 16, kLarge = 1 << 22;

}  // namespace bench::radix

// Rows of a peer that sorts keys of type T: random ones of all lengths, and those of other kinds.
#define RANDOM_KEYS_ROWS(T, row, routine)                                                           \
  row.filled_by(bench::radix::random_keys<T>).at(bench::radix::kSmall).with(routine " 1 Ki"),       \
      row.filled_by(bench::radix::random_keys<T>).at(bench::radix::kMedium).with(routine " 64 Ki"), \
      row.filled_by(bench::radix::random_keys<T>).at(bench::radix::kLarge).with(routine " 4 Mi")
#define OTHER_KEYS_ROWS(T, row, routine)                                                                  \
  row.filled_by(bench::radix::sorted_keys<T>).at(bench::radix::kMedium).with(routine " 64 Ki, sorted"),   \
      row.filled_by(bench::radix::sorted_keys<T>).at(bench::radix::kLarge).with(routine " 4 Mi, sorted"), \
      row.filled_by(bench::radix::few_distinct_keys<T>)                                                   \
          .at(bench::radix::kMedium)                                                                      \
          .with(routine " 64 Ki, few distinct"),                                                          \
      row.filled_by(bench::radix::few_distinct_keys<T>)                                                   \
          .at(bench::radix::kLarge)                                                                       \
          .with(routine " 4 Mi, few distinct")

// What a routine that sorts keys in place is set against, in all widths that comparison sorts are common for.
#define RADIX_SORT_ROWS(form, routine)                                                              \
  RANDOM_KEYS_ROWS(uint32_t, RADIX_SORT(uint32_t, ZIVKS_SortRadixAscend_32u_I, form), routine),     \
      OTHER_KEYS_ROWS(uint32_t, RADIX_SORT(uint32_t, ZIVKS_SortRadixAscend_32u_I, form), routine),  \
      RANDOM_KEYS_ROWS(float, RADIX_SORT(float, ZIVKS_SortRadixAscend_32f_I, form), routine),       \
      RANDOM_KEYS_ROWS(uint64_t, RADIX_SORT(uint64_t, ZIVKS_SortRadixAscend_64u_I, form), routine), \
      OTHER_KEYS_ROWS(uint64_t, RADIX_SORT(uint64_t, ZIVKS_SortRadixAscend_64u_I, form), routine),  \
      RANDOM_KEYS_ROWS(double, RADIX_SORT(double, ZIVKS_SortRadixAscend_64f_I, form), routine)
#define RADIX_SORT(T, function, form) \
  ROW(function, kPeer, form, kSrcDst, kLen, bench::radix::kPolicy).prepared_by(copy_source<T>)

#endif
