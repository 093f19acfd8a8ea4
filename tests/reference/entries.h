// Keys with their positions, and the partition at random pivots that two families share.
#ifndef ZIVKS_TESTS_REFERENCE_ENTRIES_H
#define ZIVKS_TESTS_REFERENCE_ENTRIES_H

#include <cstdlib>
#include <utility>
#include <vector>

#include "reference/reference.h"

namespace zivks_test {

template <class T>
struct Entry {
  T key;
  int32_t position;
};
template <class T>
using Entries = std::vector<Entry<T>>;

// Orders floats by sign and magnitude, NaNs included; any type else by its value.
template <class T>
auto rank_of(T key) {
  if constexpr (std::is_floating_point_v<T>) {
    using Integer = std::make_signed_t<BitsOf<T>>;
    const auto bits = bit_cast<Integer>(key);
    return bits < 0 ? static_cast<Integer>(~bits ^ std::numeric_limits<Integer>::min()) : bits;
  } else {
    return key;
  }
}

// Keys that belong in front, equal ones, those that belong behind. Returns where equal ones begin and end.
template <class T, class IsInFront>
std::pair<size_t, size_t> partition_at_random(Entries<T>& entries, size_t low, size_t high,
                                              IsInFront is_in_front) {
  std::swap(entries[low], entries[low + static_cast<size_t>(std::rand()) % (high - low)]);
  const T pivot = entries[low].key;
  size_t greater = low, scan = low + 1, end = high + 1;
  while (scan < end) {
    if (is_in_front(entries[scan].key, pivot)) {
      std::swap(entries[++greater], entries[scan++]);
    } else if (is_in_front(pivot, entries[scan].key)) {
      std::swap(entries[--end], entries[scan]);
    } else {
      ++scan;
    }
  }
  std::swap(entries[low], entries[greater]);
  return {greater, end};
}

}  // namespace zivks_test

#endif
