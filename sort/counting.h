// Sorting keys of 8 and 16 bits by counting.
//
// A key's rank is its place in the order of all keys that its type can have, so that both directions and
// signed keys differ in nothing but an exclusive or: the rank of an ascending uint16_t is the key itself,
// that of a descending one its complement, and signed keys have their sign bit turned in addition.
#ifndef ZIVKS_SORT_COUNTING_H
#define ZIVKS_SORT_COUNTING_H

#include <zivks/types.h>

#include <limits>

#include "core/vector/register.h"
#include "sort/radix_passes.h"

namespace zivks {

// What turns a key into its rank, and back.
template <class T, Direction direction>
inline constexpr auto kRankMask =
    static_cast<UnsignedOf<sizeof(T)>>((direction == Direction::kDescend ? ~UnsignedOf<sizeof(T)>{0} : 0) ^
                                       static_cast<UnsignedOf<sizeof(T)>>(std::numeric_limits<T>::min()));

template <class T, Direction direction>
ZIVKS_INLINE uint32_t rank_of(T key) {
  return static_cast<UnsignedOf<sizeof(T)>>(static_cast<UnsignedOf<sizeof(T)>>(key) ^
                                            kRankMask<T, direction>);
}
template <class T, Direction direction>
ZIVKS_INLINE T key_of_rank(uint32_t rank) {
  return static_cast<T>(rank ^ kRankMask<T, direction>);
}

// Fills an array with runs of equal elements, one behind the other. A run is written in whole registers: what
// the last of them writes beyond the run belongs to runs that are still to come.
template <class T>
class RunWriter {
 public:
  RunWriter(T* array, size_t len) : to_(array), end_(array + len) {}

  ZIVKS_INLINE void write(T value, size_t count) {
    constexpr size_t N = kRegisterElements<T>;
    T* const run_end = to_ + count;
    const Register<T> values = broadcast(value);
    T* to = to_;
    if (static_cast<size_t>(end_ - run_end) >= N) {
      store(to, values);  // also for an empty run: a branch less
      for (to += N; to < run_end; to += N) store(to, values);
    } else {
      for (; static_cast<size_t>(run_end - to) >= N; to += N) store(to, values);
      for (; to < run_end; ++to) *to = value;
    }
    to_ = run_end;
  }

 private:
  T *to_, *end_;
};

// Keys of 8 bits. Neighbours are counted in tables of their own: a counter that is raised twice in a row
// would have to wait for the first store each time, and equal neighbours are common. Uses 4 KiB of stack.
template <Direction direction>
void sort_bytes_by_counting(uint8_t* keys, size_t len) {
  constexpr size_t kTables = 4, kValues = 256;
  uint32_t counts[kTables][kValues] = {};
  size_t i = 0;
  for (; i + 8 <= len; i += 8) {
    const auto eight = read<uint64_t>(keys + i);
#pragma GCC unroll 8
    for (size_t k = 0; k < 8; ++k) ++counts[k % kTables][eight >> (8 * k) & 0xFF];
  }
  for (; i < len; ++i) ++counts[0][keys[i]];

  RunWriter<uint8_t> runs(keys, len);
  for (uint32_t rank = 0; rank < kValues; ++rank) {
    const auto value = key_of_rank<uint8_t, direction>(rank);
    runs.write(value, counts[0][value] + counts[1][value] + counts[2][value] + counts[3][value]);
  }
}

// A counter for each key of 16 bits.
inline constexpr int32_t kCountersOf16Bits = 65536;

// One counter for each rank. The table stays in the second level of the caches, and clearing and walking it
// takes as long as some ten thousand keys do: for long arrays.
template <class T, Direction direction>
void sort_by_counters(T* keys, size_t len, int32_t* counters) {
  std::memset(counters, 0, kCountersOf16Bits * sizeof *counters);
  constexpr size_t kTurn = sizeof(uint64_t) / sizeof(T);
  size_t i = 0;
  for (; i + kTurn <= len; i += kTurn) {
    const auto four = read<uint64_t>(keys + i);
    if (four == (four << 16 | four >> 48)) {  // all the same: one store for what would wait for three
      counters[rank_of<T, direction>(keys[i])] += static_cast<int32_t>(kTurn);
    } else {
      for (size_t k = 0; k < kTurn; ++k) ++counters[rank_of<T, direction>(keys[i + k])];
    }
  }
  for (; i < len; ++i) ++counters[rank_of<T, direction>(keys[i])];

  constexpr uint32_t N = kRegisterElements<int32_t>;
  RunWriter<T> runs(keys, len);
  for (uint32_t first = 0; first < kCountersOf16Bits; first += N) {
    if (!any_true(load(counters + first) != 0)) continue;
    for (uint32_t rank = first; rank < first + N; ++rank) {
      runs.write(key_of_rank<T, direction>(rank), static_cast<size_t>(counters[rank]));
    }
  }
}

// By the lower and then by the upper byte, through a copy of the keys: for arrays that are short beside the
// table of counters. Uses 4 KiB of stack.
template <class T, Direction direction>
void sort_by_digits(T* keys, size_t len, void* scratch) {
  using Key = UnsignedOf<sizeof(T)>;
  constexpr Numbers kNumbers = std::is_signed_v<T> ? Numbers::kSigned : Numbers::kUnsigned;
  const RankedKeys<kNumbers, Key> array = {{reinterpret_cast<std::byte*>(keys)},
                                           Ranking<kNumbers, Key>(direction)};
  const Keys<Key> ranks = {static_cast<std::byte*>(scratch)};
  with_tables<PassTables<sizeof(T), Bytes, uint32_t>>({}, [=](auto& tables) {
    tables.count(array, len, ranks);
    tables.make_pass(0, array, ranks, len);
    tables.make_pass(1, ranks, array, len);
  });
}

// Keys of 16 bits. `memory` holds kCountersOf16Bits integers.
template <class T, Direction direction>
void sort_by_counting(T* keys, size_t len, int32_t* memory) {
  static_assert(sizeof(T) == sizeof(uint16_t));
  constexpr size_t kCountedFrom = size_t{48} << 10;
  if (len < kCountedFrom) {
    sort_by_digits<T, direction>(keys, len, memory);
  } else {
    sort_by_counters<T, direction>(keys, len, memory);
  }
}

}  // namespace zivks

#endif
