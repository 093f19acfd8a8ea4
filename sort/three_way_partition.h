// Partition at a random pivot into keys before, beside and behind it: the step that quicksort and quick
// selection repeat.
//
// Which of equal keys comes first depends on every single exchange, so that the exchanges, and the draws of
// the C library's generator, are part of what callers see: a change here changes results.
#ifndef ZIVKS_SORT_THREE_WAY_PARTITION_H
#define ZIVKS_SORT_THREE_WAY_PARTITION_H

#include <cstdlib>
#include <ctime>

#include "core/vector/register.h"

namespace zivks {

// Starts the generator of the whole process anew, from the time in seconds.
ZIVKS_INLINE void reseed_by_clock() { std::srand(static_cast<unsigned>(std::time(nullptr))); }

// Places of a range that has been partitioned: keys before the pivot stand from `low` to `equal` - 1, those
// beside it from `equal` to `behind` - 1, the others behind that.
struct Partition {
  ptrdiff_t equal, behind;
};

// Partitions the entries from `low` to `high`, both included, of which there are two or more. The last one is
// never the pivot. `is_before` and `is_behind` compare a key with the pivot; where neither is true, as between
// a NaN and anything, the key stands beside it.
template <class Entries, class IsBefore, class IsBehind>
ZIVKS_INLINE Partition partition_at_random_pivot(Entries entries, ptrdiff_t low, ptrdiff_t high,
                                                 IsBefore is_before, IsBehind is_behind) {
  entries.exchange(low, low + std::rand() % static_cast<int32_t>(high - low));
  const auto pivot = entries.key(low);
  Partition partition = {low, high + 1};
  for (ptrdiff_t next = low + 1; next < partition.behind;) {
    const auto key = entries.key(next);
    if (is_before(key, pivot)) {
      entries.exchange(++partition.equal, next++);
    } else if (is_behind(key, pivot)) {
      entries.exchange(next, --partition.behind);
    } else {
      ++next;
    }
  }
  entries.exchange(low, partition.equal);
  return partition;
}

}  // namespace zivks

#endif
