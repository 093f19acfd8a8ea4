#include "order.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string_view>

#include "number.h"

namespace {

using Positions = std::vector<int32_t>;

template <class Key>
using IndexSort = ZIVKStatus (*)(const Key*, int32_t, int32_t*, int32_t, void*);

template <class Key>
Positions positions_by(IndexSort<Key> sort, const std::vector<Key>& keys) {
  static_assert(sizeof(Key) == 8);
  const RadixIndexPolicy policy(keys.size(), ZIVK_DT_64U);  // which serves all keys of this width
  Positions positions(keys.size());
  check(sort(keys.data(), sizeof(Key), positions.data(), static_cast<int32_t>(keys.size()), policy.get()));
  return positions;
}

Positions positions_by(const std::vector<int64_t>& keys, Direction direction) {
  return positions_by(
      direction == Direction::kAscending ? ZIVKS_SortRadixIndexAscend_64s : ZIVKS_SortRadixIndexDescend_64s,
      keys);
}
Positions positions_by(const std::vector<uint64_t>& keys, Direction direction) {
  return positions_by(
      direction == Direction::kAscending ? ZIVKS_SortRadixIndexAscend_64u : ZIVKS_SortRadixIndexDescend_64u,
      keys);
}

Positions sorted(const Integers& integers, Direction direction) { return positions_by(integers, direction); }

// By the lower words, and then, keeping that order, by the upper ones.
Positions sorted(const Decimals& decimals, Direction direction) {
  std::vector<uint64_t> lower;
  for (const ZIVKDecimal128& decimal : decimals) lower.push_back(static_cast<uint64_t>(to_signed(decimal)));
  const Positions by_lower = positions_by(lower, direction);
  std::vector<int64_t> upper;
  for (const int32_t position : by_lower) {
    upper.push_back(static_cast<int64_t>(to_signed(decimals.data()[position]) >> 64));
  }
  Positions positions = positions_by(upper, direction);
  for (int32_t& position : positions) position = by_lower.data()[position];
  return positions;
}

// The first bytes as a number, which is in the order of the texts. What is missing counts as 0, a byte that no text has.
template <class Key>
Key prefix(std::string_view text) {
  Key key = 0;
  for (std::size_t i = 0; i < sizeof(Key); ++i) {
    key = static_cast<Key>(key << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0));
  }
  return key;
}

// Brings positions of texts that have their first `skipped` bytes in common into order: many by the bytes that follow,
// and then those where these are equal likewise; few by comparison.
void sort_texts(const Texts& texts, Direction direction, int32_t* first, int32_t* last, std::size_t skipped) {
  constexpr std::ptrdiff_t kFew = 64;
  constexpr std::size_t kDeepest = 64;  // where the rest of long texts is left to comparison
  const auto rest_of = [&](int32_t position) {
    return texts[static_cast<std::size_t>(position)].substr(skipped);
  };
  if (last - first < kFew || skipped >= kDeepest) {
    std::stable_sort(first, last, [&](int32_t a, int32_t b) {
      return direction == Direction::kAscending ? rest_of(a) < rest_of(b) : rest_of(b) < rest_of(a);
    });
    return;
  }
  std::vector<uint64_t> keys;
  keys.reserve(static_cast<std::size_t>(last - first));
  for (const int32_t* position = first; position != last; ++position) {
    keys.push_back(prefix<uint64_t>(rest_of(*position)));
  }
  const Positions order = positions_by(keys, direction);
  const Positions before(first, last);
  for (std::size_t i = 0; i < order.size(); ++i) first[i] = before.data()[order[i]];
  for (std::size_t run = 0, end; run < order.size(); run = end) {
    const uint64_t key = keys.data()[order[run]];
    for (end = run + 1; end < order.size() && keys.data()[order[end]] == key; ++end) continue;
    // A key that ends in 0 has the end of its text in it.
    if (end - run > 1 && (key & 0xFF) != 0) {
      sort_texts(texts, direction, first + run, first + end, skipped + sizeof key);
    }
  }
}

Positions sorted(const Texts& texts, Direction direction) {
  Positions positions(texts.size());
  std::iota(positions.begin(), positions.end(), 0);
  sort_texts(texts, direction, positions.data(), positions.data() + positions.size(), 0);
  return positions;
}

// Keys for TopK. A larger one belongs to a larger value, but different values may share one.
struct TopKeys {
  std::vector<int32_t> keys;
  bool are_exact;  // share none
};

constexpr int32_t kKeyOfNull = std::numeric_limits<int32_t>::min();

// The distance from the smallest value, without so many of its lower bits that it fits.
template <class Distance, class Number>
TopKeys keys_of_distances(const std::vector<Number>& numbers, const Column& column, Number smallest,
                          Number largest) {
  const auto distance = [&](const Number& number) {
    return static_cast<Distance>(to_signed(number)) - static_cast<Distance>(to_signed(smallest));
  };
  int shift = 0;
  while (distance(largest) >> shift > std::numeric_limits<int32_t>::max()) ++shift;
  TopKeys result = {{}, shift == 0};
  for (std::size_t row = 0; row < numbers.size(); ++row) {
    const auto key = static_cast<int32_t>(distance(numbers[row]) >> shift);
    result.keys.push_back(column.nulls[row] != 0 ? kKeyOfNull : key);
  }
  return result;
}

TopKeys top_keys(const Integers& integers, const Column& column) {
  int64_t smallest, largest;
  check(ZIVKS_AggMin_64s(integers.data(), column.length(), column.null_flags(), &smallest));
  check(ZIVKS_AggMax_64s(integers.data(), column.length(), column.null_flags(), &largest));
  return keys_of_distances<uint64_t>(integers, column, smallest, largest);
}

TopKeys top_keys(const Decimals& decimals, const Column& column) {
  ZIVKDecimal128 smallest, largest;
  check(ZIVKS_AggMin_decimal128(decimals.data(), column.length(), column.null_flags(), &smallest));
  check(ZIVKS_AggMax_decimal128(decimals.data(), column.length(), column.null_flags(), &largest));
  return keys_of_distances<unsigned __int128>(decimals, column, smallest, largest);
}

TopKeys top_keys(const Texts& texts, const Column& column) {
  constexpr uint32_t kSign = uint32_t{1} << 31;
  TopKeys result = {{}, false};
  for (std::size_t row = 0; row < texts.size(); ++row) {
    const auto key = static_cast<int32_t>(prefix<uint32_t>(texts[row]) ^ kSign);
    result.keys.push_back(column.nulls[row] != 0 ? kKeyOfNull : key);
  }
  return result;
}

// Positions of the largest keys and, if it is not exact, of all that equal the last of them.
Positions candidates(const TopKeys& top, int32_t count) {
  // Of the two methods the one whose order of equal keys is defined.
  constexpr int32_t kRadixSelection = 2;
  const auto length = static_cast<int32_t>(top.keys.size());
  std::vector<int32_t> keys(static_cast<std::size_t>(count));
  Positions positions(static_cast<std::size_t>(count));
  void* policy;
  check(ZIVKS_TopKInit_32s(length, keys.data(), positions.data(), count, kRadixSelection, &policy));
  const ZIVKStatus status = ZIVKS_TopK_32s(top.keys.data(), 0, sizeof top.keys[0], length, keys.data(),
                                           positions.data(), count, kRadixSelection, policy);
  ZIVKS_TopKRelease(policy);
  check(status);
  if (top.are_exact) return positions;
  positions.clear();
  for (int32_t i = 0; i < length; ++i) {
    if (top.keys.data()[i] >= keys.back()) positions.push_back(i);
  }
  return positions;
}

}  // namespace

std::vector<int32_t> sorted_rows(const Column& column, Direction direction) {
  if (column.rows() == 0) return {};
  Positions positions =
      std::visit([&](const auto& values) { return sorted(values, direction); }, column.values);
  if (column.null_count > 0) {
    const bool nulls_first = direction == Direction::kAscending;
    std::stable_partition(positions.begin(), positions.end(), [&](int32_t position) {
      return (column.nulls.data()[position] != 0) == nulls_first;
    });
  }
  return positions;
}

std::vector<int32_t> top_rows(const Column& column, std::size_t count) {
  if (count >= column.rows()) return sorted_rows(column, Direction::kDescending);
  const TopKeys top = std::visit([&](const auto& values) { return top_keys(values, column); }, column.values);
  Positions positions = candidates(top, static_cast<int32_t>(count));
  if (top.are_exact) return positions;
  const Positions best = sorted_rows(gather(column, positions), Direction::kDescending);
  Positions result;
  for (std::size_t i = 0; i < count; ++i) result.push_back(positions.data()[best[i]]);
  return result;
}
