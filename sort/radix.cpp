// Radix sorts of keys.
//
// Array and scratch memory take turns. The first pass makes ranks of the keys, and the last one keys of the ranks.
// Keys with equal bits cannot be told apart, so that a falling order is a rising one of other ranks.
#include <zivks/movement.h>
#include <zivks/sort_radix.h>

#include "core/checks.h"
#include "sort/counting.h"
#include "sort/radix_handle.h"
#include "sort/radix_passes.h"

using namespace zivks;

namespace {

template <Numbers numbers, class Key>
class KeySort {
 public:
  KeySort(Keys<Key> array, Keys<Key> scratch, Direction direction)
      : array_(array), scratch_(scratch), ranking_(direction) {}

  void sort(size_t len) const {
    constexpr size_t kBits = 8 * sizeof(Key);
    if (len > kMost) return split_and_sort(keys(0), 0, len, kBits, true);
    with_tables<PassTables<sizeof(Key), Bytes, uint32_t>>(
        {}, [&](auto& tables) { make_passes(tables, keys(0), 0, len, true); });
  }

 private:
  static constexpr size_t kMost = kSplitBeyondBytes / sizeof(Key);

  RankedKeys<numbers, Key> keys(size_t begin) const { return {array_.from(begin), ranking_}; }
  Keys<Key> ranks(size_t begin, bool in_array) const { return (in_array ? array_ : scratch_).from(begin); }

  // Splits elements, and sorts the pieces. They begin at number `begin`, and stand in the array or in the scratch
  // memory; in all but the lowest `remaining` bits they are equal.
  template <class Source>
  void split_and_sort(Source from, size_t begin, size_t len, size_t remaining, bool in_array) const {
    const Keys<Key> ends = ranks(begin, in_array);
    const size_t width = leading_bits(len, remaining);
    split(from, ranks(begin, !in_array), len, remaining, width, ends);
    for (size_t first = 0; first < len;) {
      const size_t end = ends.load(first);
      sort_piece(begin + first, end - first, remaining - width, !in_array);
      first = end;
    }
  }

  void sort_piece(size_t begin, size_t len, size_t remaining, bool in_array) const {
    const Keys<Key> from = ranks(begin, in_array);
    if (len <= kMost) {
      with_tables_for_piece<Key>(len, remaining,
                                 [&](auto& tables) { make_passes(tables, from, begin, len, in_array); });
    } else if (remaining > 0) {
      split_and_sort(from, begin, len, remaining, in_array);
    } else {
      make_keys(from, begin, len);
    }
  }

  // The passes of `tables`, the first of them from `source`.
  template <class Tables, class Source>
  void make_passes(Tables& tables, Source source, size_t begin, size_t len, bool in_array) const {
    constexpr size_t kLast = Tables::kPasses - 1;
    Keys<Key> from = ranks(begin, in_array), to = ranks(begin, !in_array);
    tables.count(source, len, to);
    tables.make_pass(0, source, to, len);
    for (size_t pass = 1; pass < kLast; ++pass) {
      std::swap(from, to);
      tables.make_pass(pass, from, to, len);
    }
    if (in_array == (Tables::kPasses % 2 == 0)) {
      tables.make_pass(kLast, to, keys(begin), len);
    } else {
      tables.make_pass(kLast, to, from, len);
      make_keys(from, begin, len);
    }
  }

  void make_keys(Keys<Key> from, size_t begin, size_t len) const {
    const RankedKeys<numbers, Key> to = keys(begin);
    for (size_t i = 0; i < len; ++i) to.store(i, from.load(i));
  }

  Keys<Key> array_, scratch_;
  Ranking<numbers, Key> ranking_;
};

template <Numbers numbers, class T>
ZIVKStatus sort(T* srcDst, int32_t len, void* policy, Direction direction) {
  if (ZIVKStatus status = check_arrays(len, srcDst, policy)) return status;
  using Key = UnsignedOf<sizeof(T)>;
  const Keys<Key> array = {reinterpret_cast<std::byte*>(srcDst)}, scratch = {static_cast<std::byte*>(policy)};
  KeySort<numbers, Key>(array, scratch, direction).sort(static_cast<size_t>(len));
  return ZIVK_STS_NO_ERR;
}

// --- Floating point --------------------------------------------------------------------

void reverse_elements(float* array, int32_t len) { ZIVKS_Flip_32f_I(array, len); }
void reverse_elements(double* array, int32_t len) { ZIVKS_Flip_64f_I(array, len); }

template <class T>
using BitsOf = UnsignedOf<sizeof(T)>;

// The bits of -0.
template <class T>
inline constexpr BitsOf<T> kSign = BitsOf<T>{1} << (8 * sizeof(T) - 1);

template <class T>
ZIVKS_INLINE BitsOf<T> bits_at(const T* element) {
  return read<BitsOf<T>>(element);
}

// Whether sign and exponent have all bits set: negative infinity, or a NaN with the sign.
template <class T>
ZIVKS_INLINE bool is_below_numbers(const T* element) {
  constexpr BitsOf<T> kSignAndExponent =
      sizeof(T) == 4 ? 0xFF800000 : static_cast<BitsOf<T>>(0xFFF0000000000000);
  return (bits_at(element) & kSignAndExponent) == kSignAndExponent;
}

// The number of elements with the sign, which all stand on one side of the array.
template <class T>
size_t count_negative(const T* array, size_t len, bool negative_first) {
  size_t begin = 0, end = len;
  while (begin < end) {
    const size_t middle = begin + (end - begin) / 2;
    if (((bits_at(array + middle) & kSign<T>) != 0) == negative_first) {
      begin = middle + 1;
    } else {
      end = middle;
    }
  }
  return negative_first ? begin : len - begin;
}

// Sorts by value, then does what the rules say about negative elements.
//
// The rules are those of another way to sort floats: sort their bits as signed integers, which puts the
// elements with the sign on one side in the order of their magnitude, -0 outermost; search from there for the
// first element that is neither below 0 nor, behind those, a NaN with the sign; and reverse all elements
// before it. Two results differ from the order of values. A -0 ends the search at once, and nothing is
// reversed. And where all elements have the sign and none is -0, the search goes on beyond the array, over
// words whose sign and exponent have all bits set.
template <class T>
ZIVKStatus sort_floats(T* srcDst, int32_t len, void* policy, Direction direction) {
  if (ZIVKStatus status = sort<Numbers::kFloat>(srcDst, len, policy, direction)) return status;
  const bool rises = direction == Direction::kAscend;
  const auto count = static_cast<size_t>(len);
  const size_t negative = count_negative(srcDst, count, rises);
  if (negative == 0) return ZIVK_STS_NO_ERR;
  T* const first_negative = rises ? srcDst : srcDst + (count - negative);
  const T* const highest_negative = rises ? srcDst + (negative - 1) : first_negative;
  if (bits_at(highest_negative) == kSign<T>) {
    reverse_elements(first_negative, static_cast<int32_t>(negative));
  } else if (negative == count) {
    const std::ptrdiff_t step = rises ? 1 : -1;
    const T* beyond = rises ? srcDst + count : srcDst - 1;
    int32_t more = 0;
    for (; is_below_numbers(beyond); beyond += step) ++more;
    if (more > 0) {
      reverse_elements(srcDst, len);
      reverse_elements(rises ? srcDst : srcDst - more, len + more);
    }
  }
  return ZIVK_STS_NO_ERR;
}

// --- Counting --------------------------------------------------------------------------

template <Direction direction, class T>
ZIVKStatus sort_narrow(T* srcDst, int32_t len, void* policy) {
  if (ZIVKStatus status = check_arrays(len, srcDst, policy)) return status;
  const auto count = static_cast<size_t>(len);
  if constexpr (sizeof(T) == sizeof(uint8_t)) {
    sort_bytes_by_counting<direction>(srcDst, count);
  } else {
    sort_by_counting<T, direction>(srcDst, count, static_cast<int32_t*>(policy));
  }
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_SortRadixInit(int32_t len, ZIVKDataType dataType, void** policy) {
  return make_radix_handle(len, dataType, sizeof(uint32_t), sizeof(uint64_t), policy);
}
ZIVKStatus ZIVKS_SortRadixRelease(void* policy) {
  ZIVKS_Free(policy);
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_SortRadixAscend_8u_I(uint8_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Direction::kAscend>(srcDst, len, policy);
}
ZIVKStatus ZIVKS_SortRadixAscend_16u_I(uint16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Direction::kAscend>(srcDst, len, policy);
}
ZIVKStatus ZIVKS_SortRadixAscend_16s_I(int16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Direction::kAscend>(srcDst, len, policy);
}
ZIVKStatus ZIVKS_SortRadixAscend_32u_I(uint32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixAscend_32s_I(int32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixAscend_32f_I(float* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixAscend_64u_I(uint64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixAscend_64s_I(int64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixAscend_64f_I(double* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, Direction::kAscend);
}

ZIVKStatus ZIVKS_SortRadixDescend_8u_I(uint8_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Direction::kDescend>(srcDst, len, policy);
}
ZIVKStatus ZIVKS_SortRadixDescend_16u_I(uint16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Direction::kDescend>(srcDst, len, policy);
}
ZIVKStatus ZIVKS_SortRadixDescend_16s_I(int16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Direction::kDescend>(srcDst, len, policy);
}
ZIVKStatus ZIVKS_SortRadixDescend_32u_I(uint32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixDescend_32s_I(int32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixDescend_32f_I(float* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixDescend_64u_I(uint64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixDescend_64s_I(int64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixDescend_64f_I(double* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, Direction::kDescend);
}
