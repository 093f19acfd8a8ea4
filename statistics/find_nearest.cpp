// Nearest match in an ascending table.
//
// The table is searched by bisection, without a branch: a search that has met its value narrows to that entry
// and stays there, and one whose interval is down to two entries no longer moves, so that all searches of a
// table can take the same number of steps. Several go side by side, since each step waits for the table.
#include <zivks/statistics.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "core/checks.h"

using namespace zivks;

namespace {

// A condition that no branch predictor could foresee, so that the compiler chooses without a branch.
ZIVKS_INLINE bool unpredictable(bool condition) {
  return __builtin_expect_with_probability(condition, true, 0.5);
}

// The interval of the table that the value has been narrowed down to, both ends included.
struct Search {
  uint32_t value;
  size_t low, high;

  // An interval of two entries is compared at its lower end. An earlier comparison has found that below the
  // value, and nothing changes; only entry 0 has never been compared, and becomes the upper end as well where
  // it is the result: it is at or above the value.
  ZIVKS_INLINE void narrow(const uint16_t* table) {
    size_t middle = (low + high) / 2;
    asm("" : "+r"(middle));  // else there would be another instruction for the address
    // Two choices by one comparison would become a branch around both.
    const uint32_t entry = table[middle];
    uint32_t same_entry = entry;
    asm("" : "+r"(same_entry));
    low = unpredictable(entry <= value) ? middle : low;
    high = unpredictable(same_entry >= value) ? middle : high;
  }
};

// The bits that a number takes, which must not be 0.
ZIVKS_INLINE uint32_t bit_width(size_t number) { return static_cast<uint32_t>(64 - __builtin_clzll(number)); }

class Table {
 public:
  Table(const uint16_t* entries, int32_t len)
      : entries_(entries),
        last_(static_cast<size_t>(len) - 1),
        steps_(last_ > 1 ? bit_width(last_ - 1) : 0) {}

  // Finds `count` values with a search for each K; the last of them more than once if they are fewer. All are
  // read before the first result is written.
  template <size_t... K>
  ZIVKS_INLINE void find(const uint16_t* val, uint16_t* nearest, int32_t* index, size_t count,
                         std::index_sequence<K...>) const {
    const auto at = [=](size_t k) { return std::min(k, count - 1); };
    Search search[] = {{val[at(K)], 0, last_}...};
    for (uint32_t step = 0; step < steps_; ++step) (search[K].narrow(entries_), ...);
    ((index[at(K)] = nearer_end(search[K])), ...);
    ((nearest[at(K)] = entries_[index[at(K)]]), ...);
  }

 private:
  ZIVKS_INLINE int32_t nearer_end(Search search) const {
    const auto distance = [&](size_t end) {
      return std::abs(int32_t{entries_[end]} - static_cast<int32_t>(search.value));
    };
    return static_cast<int32_t>(distance(search.low) <= distance(search.high) ? search.low : search.high);
  }

  const uint16_t* entries_;
  size_t last_;
  uint32_t steps_;  // that bring every interval down to two entries
};

}  // namespace

ZIVKStatus ZIVKS_FindNearestOne_16u(uint16_t val, uint16_t* pNearest, int32_t* pIndx, const uint16_t* table,
                                    int32_t tableLen) {
  if (ZIVKStatus status = check_arrays(tableLen, pNearest, pIndx, table)) return status;
  Table(table, tableLen).find(&val, pNearest, pIndx, 1, std::make_index_sequence<1>());
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_FindNearest_16u(const uint16_t* src, uint16_t* dst, int32_t* dstIndx, int32_t len,
                                 const uint16_t* table, int32_t tableLen) {
  if (ZIVKStatus status = check_arrays(std::min(len, tableLen), src, dst, dstIndx, table)) return status;
  constexpr size_t kSearches = 4;
  constexpr auto searches = std::make_index_sequence<kSearches>();
  const Table entries(table, tableLen);
  const size_t count = static_cast<size_t>(len), whole = count & ~(kSearches - 1);
  for (size_t i = 0; i < whole; i += kSearches)
    entries.find(src + i, dst + i, dstIndx + i, kSearches, searches);
  if (whole < count) entries.find(src + whole, dst + whole, dstIndx + whole, count - whole, searches);
  return ZIVK_STS_NO_ERR;
}
