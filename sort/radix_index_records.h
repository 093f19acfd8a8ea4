// What radix sorts of positions read and write.
#ifndef ZIVKS_SORT_RADIX_INDEX_RECORDS_H
#define ZIVKS_SORT_RADIX_INDEX_RECORDS_H

#include "sort/radix_passes.h"

namespace zivks {

// The caller's keys, `stride` bytes from one to the next.
template <class Key>
struct StridedKeys {
  const std::byte* first;
  std::ptrdiff_t stride;

  ZIVKS_INLINE Key bits_at(std::ptrdiff_t i) const { return read<Key>(first + i * stride); }
};

// A rank, and where its key came from.
template <class Key>
struct Record {
  Key rank;
  int32_t position;
};
template <class Key>
ZIVKS_INLINE Key rank_of(Record<Key> record) {
  return record.rank;
}

// The records that the caller's keys make in their own order.
template <Numbers numbers, class Key>
struct InitialRecords {
  using Element = Key;
  static constexpr size_t kPerLine = Keys<Key>::kPerLine;
  StridedKeys<Key> keys;
  Ranking<numbers, Key> ranking;

  ZIVKS_INLINE Record<Key> load(size_t i) const {
    return {ranking.rank_of(keys.bits_at(static_cast<std::ptrdiff_t>(i))), static_cast<int32_t>(i)};
  }
  ZIVKS_INLINE void hint_read(size_t i) const {
    __builtin_prefetch(address_of(keys.first, i, static_cast<size_t>(keys.stride)));
  }
};

// Records in the order of positions.
template <Numbers numbers, class Key>
struct FetchedRecords {
  InitialRecords<numbers, Key> initial;
  const int32_t* positions;

  ZIVKS_INLINE Record<Key> load(size_t i) const { return initial.load(static_cast<size_t>(positions[i])); }
};

// Of records only the positions, as the result.
struct Positions {
  int32_t* positions;

  template <class Key>
  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    positions[i] = record.position;
  }
  ZIVKS_INLINE void hint_write(size_t i) const {
    __builtin_prefetch(address_of(positions, i, sizeof(int32_t)), 1);
  }
};

}  // namespace zivks

#endif
