// Radix sorts of positions, of keys of 8 and 16 bits.
#ifndef ZIVKS_SORT_RADIX_INDEX_NARROW_H
#define ZIVKS_SORT_RADIX_INDEX_NARROW_H

#include <cstring>
#include <limits>

#include "sort/radix_index_records.h"

namespace zivks {

// Up to this many keys of 16 bits make two passes. In longer arrays a counter for every value is better: their
// number matters less, and passes over keys that are sorted already write to 256 places at distances that share
// few lines of a cache.
inline constexpr size_t kMostForPasses = size_t{12} << 10;

// Two passes by way of `memory`, which takes kMostForPasses positions.
template <Numbers numbers>
void sort_narrow_by_passes(InitialRecords<numbers, uint16_t> initial, int32_t* dstIdx, size_t len,
                           int32_t* memory) {
  using Tables = PassTables<sizeof(uint16_t), Bytes, uint32_t>;
  with_tables<Tables>({}, [=](Tables& tables) {
    tables.count(initial, len, Positions{memory});
    tables.make_pass(0, initial, Positions{memory}, len);
    tables.make_pass(1, FetchedRecords<numbers, uint16_t>{initial, memory}, Positions{dstIdx}, len);
  });
}

// Neighbours that are equal must not wait for each other's count: of bytes there are tables enough.
inline void count_keys(StridedKeys<uint8_t> keys, int32_t len, uint32_t* counters) {
  constexpr int32_t kTables = 4;
  uint32_t counts[kTables][256] = {};
  int32_t i = 0;
  for (; i + kTables <= len; i += kTables) {
#pragma GCC unroll 4
    for (int32_t k = 0; k < kTables; ++k) ++counts[k][keys.bits_at(i + k)];
  }
  for (; i < len; ++i) ++counts[0][keys.bits_at(i)];
  for (size_t key = 0; key < 256; ++key) {
    counters[key] = counts[0][key] + counts[1][key] + counts[2][key] + counts[3][key];
  }
}
inline void count_keys(StridedKeys<uint16_t> keys, int32_t len, uint32_t* counters) {
  std::memset(counters, 0, 65536 * sizeof *counters);
  int32_t i = 0;
  for (; i + 2 <= len; i += 2) count_two<1>(counters, keys.bits_at(i), keys.bits_at(i + 1));
  if (i < len) ++counters[keys.bits_at(i)];
}

// Counts how often each key occurs, makes of that the place behind the last of them, then puts out the positions from
// the last key to the first. The way back begins at an offset that is computed in 32 bits, so that over a span of
// 2^31 bytes and more it meets other keys than those that were counted.
template <Numbers numbers, class Key>
[[gnu::noinline]] void sort_narrow_by_counting(StridedKeys<Key> keys, Ranking<numbers, Key> ranking,
                                               int32_t* dstIdx, int32_t len, uint32_t* counters) {
  count_keys(keys, len, counters);
  uint32_t sum = 0;
  for (size_t rank = 0; rank < size_t{1} << (8 * sizeof(Key)); ++rank) {
    uint32_t& counter = counters[ranking.bits_of(static_cast<Key>(rank))];
    counter = sum += counter;
  }
  const auto last = static_cast<int32_t>(static_cast<uint32_t>(len - 1) * static_cast<uint32_t>(keys.stride));
  const StridedKeys<Key> back = {keys.first + last, -keys.stride};
  int32_t i = len - 1;
  if constexpr (sizeof(Key) > sizeof(uint8_t)) {
    for (; i >= 1; i -= 2) {
      const auto [end_of_last, end] =
          count_two<-1>(counters, back.bits_at(len - 1 - i), back.bits_at(len - i));
      dstIdx[static_cast<int32_t>(end_of_last - 1)] = i;
      dstIdx[static_cast<int32_t>(end - 1)] = i - 1;
    }
  }
  for (; i >= 0; --i) dstIdx[static_cast<int32_t>(--counters[back.bits_at(len - 1 - i)])] = i;
}

template <Numbers numbers, class Key>
void sort_narrow_keys(StridedKeys<Key> keys, Direction direction, int32_t* dstIdx, int32_t len,
                      void* handle) {
  const Ranking<numbers, Key> ranking(direction);
  if constexpr (sizeof(Key) == sizeof(uint8_t)) {
    uint32_t counters[256];
    sort_narrow_by_counting(keys, ranking, dstIdx, len, counters);
  } else {
    const auto count = static_cast<size_t>(len);
    const bool spans_32_bits = int64_t{len - 1} * keys.stride > std::numeric_limits<int32_t>::max();
    if (count <= kMostForPasses && !spans_32_bits) {
      sort_narrow_by_passes<numbers>({keys, ranking}, dstIdx, count, static_cast<int32_t*>(handle));
    } else {
      sort_narrow_by_counting(keys, ranking, dstIdx, len, static_cast<uint32_t*>(handle));
    }
  }
}

}  // namespace zivks

#endif
