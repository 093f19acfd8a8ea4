// Radix sorts of keys.
//
// Keys are sorted by their bits. The sign stands in the top digit, whose values come in an order of their own
// for signed integers. Among negative floats the order of bits is opposite to that of values: the pass for
// the top digit turns it round by filling their places from the end. It may, since keys with equal bits
// cannot be told apart.
#include <zivks/movement.h>
#include <zivks/sort_radix.h>

#include <algorithm>

#include "core/checks.h"
#include "sort/radix_handle.h"
#include "sort/radix_passes.h"

using namespace zivks;

namespace {

// The order of the top digit where the other digits are in `order`.
template <Numbers numbers>
ZIVKS_INLINE DigitOrder order_of_top_digit(DigitOrder order) {
  if constexpr (numbers == Numbers::kUnsigned) return order;
  const bool falls = order.low == kFalling.low;
  if constexpr (numbers == Numbers::kSigned) {
    return falls ? DigitOrder{0x7F, 0x7F} : DigitOrder{0x80, 0x80};
  } else {
    return falls ? DigitOrder{0x7F, 0} : DigitOrder{0xFF, 0x80};
  }
}

ZIVKS_INLINE DigitOrder opposite(DigitOrder order) {
  return {static_cast<uint8_t>(~order.low), static_cast<uint8_t>(~order.high)};
}

template <class Key>
inline constexpr size_t kTopDigit = sizeof(Key) - 1;

// Passes for all digits that remain, lowest first.
template <Numbers numbers, class Key>
[[gnu::noinline]] void sort_lowest_digit_first(Keys<Key> from, Keys<Key> to, size_t len, Digits remaining,
                                               DigitOrder order) {
  constexpr size_t kTop = kTopDigit<Key>;
  Counts counts[kTop + 1];
  if (holds(remaining, kTop)) {
    count_digits<kTop + 1>(from, len, counts, to);
  } else {
    count_digits<kTop>(from, len, counts, to);
  }
  for (size_t digit = 0; digit < kTop; ++digit) {
    if (!holds(remaining, digit)) continue;
    Places places(counts[digit], order);
    scatter(from, to, len, digit, places);
    std::swap(from, to);
  }
  if (holds(remaining, kTop)) {
    Places<numbers == Numbers::kFloat> places(counts[kTop], order_of_top_digit<numbers>(order));
    scatter(from, to, len, kTop, places);
  }
}

template <class Key>
ZIVKS_INLINE bool is_negative(Key key) {
  return key >> (8 * sizeof(Key) - 1) != 0;
}

template <class Key>
[[gnu::noinline]] void pass(Keys<Key> from, Keys<Key> to, size_t len, size_t digit, const Counts& counts,
                            DigitOrder order) {
  Places places(counts, order);
  scatter<true>(from, to, len, digit, places);
}

// Sorts by the digits that remain. In all others the keys are equal.
template <Numbers numbers, class Key>
[[gnu::noinline]] void sort_digits(Keys<Key> from, Keys<Key> to, size_t len, Digits remaining,
                                   DigitOrder order) {
  constexpr size_t kMost = kSplitBeyondBytes / sizeof(Key);
  if (len <= kMost) return sort_lowest_digit_first<numbers>(from, to, len, remaining, order);
  Counts counts;
  const size_t leading = count_leading_digit(from, len, remaining, counts);
  if (leading == sizeof(Key)) {  // any pieces will do
    for (size_t i = 0; i < len; i += kMost) {
      sort_lowest_digit_first<numbers>(from.from(i), to.from(i), std::min(kMost, len - i), remaining, order);
    }
    return;
  }
  const bool by_sign = leading == kTopDigit<Key>;
  // Floats of one sign are sorted like unsigned integers, negative ones in the opposite order.
  if (numbers == Numbers::kFloat && !by_sign && is_negative(from.load(0))) order = opposite(order);
  const DigitOrder order_of_leading = by_sign ? order_of_top_digit<numbers>(order) : order;
  pass(from, to, len, leading, counts, order_of_leading);
  remaining &= ~(Digits{1} << leading);
  if (remaining == 0) return;
  size_t begin = 0;
  for (size_t place = 0; place < kDigitValues; ++place) {
    const size_t value = order_of_leading.value_at(place), count = counts[value];
    if (count == 0) continue;
    const bool turns = numbers == Numbers::kFloat && by_sign && value >= kDigitValues / 2;
    sort_digits<Numbers::kUnsigned>(to.from(begin), from.from(begin), count, remaining,
                                    turns ? opposite(order) : order);
    begin += count;
  }
}

template <Numbers numbers, class T>
void sort_array(T* srcDst, size_t len, void* scratch, DigitOrder order) {
  using Key = UnsignedOf<sizeof(T)>;
  const Keys<Key> array = {reinterpret_cast<std::byte*>(srcDst)};
  sort_digits<numbers>(array, Keys<Key>{static_cast<std::byte*>(scratch)}, len, kAllDigits<Key>, order);
}

template <Numbers numbers, class T>
ZIVKStatus sort(T* srcDst, int32_t len, void* policy, DigitOrder order) {
  if (ZIVKStatus status = check_arrays(len, srcDst, policy)) return status;
  sort_array<numbers>(srcDst, static_cast<size_t>(len), policy, order);
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
ZIVKStatus sort_floats(T* srcDst, int32_t len, void* policy, DigitOrder order) {
  if (ZIVKStatus status = sort<Numbers::kFloat>(srcDst, len, policy, order)) return status;
  const bool rises = order.low == kRising.low;
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

// Writes runs of each value, as long as its count, one behind the other.
template <class T>
struct Runs {
  T* next;
  T* end;

  // A run is written a register at a time. What is written too much is overwritten by the runs to come, as
  // long as there is room in the array.
  ZIVKS_INLINE void write(T value, size_t count) {
    constexpr size_t N = kRegisterElements<T>;
    T* const run_end = next + count;
    if (static_cast<size_t>(end - next) >= count + N) {
      const Register<T> values = broadcast(value);
      do {
        store(next, values);
        next += N;
      } while (next < run_end);
    } else {
      std::fill(next, run_end, value);
    }
    next = run_end;
  }
};

ZIVKStatus sort_bytes(uint8_t* srcDst, int32_t len, void* policy, DigitOrder order) {
  if (ZIVKStatus status = check_arrays(len, srcDst, policy)) return status;
  Counts counts;
  count_digit(Keys<uint8_t>{reinterpret_cast<std::byte*>(srcDst)}, static_cast<size_t>(len), 0, counts);
  for (size_t place = 0; place < kDigitValues; ++place) {
    const size_t value = order.value_at(place);
    if (counts[value] == 0) continue;
    std::memset(srcDst, static_cast<int>(value), counts[value]);
    srcDst += counts[value];
  }
  return ZIVK_STS_NO_ERR;
}

// Up to this length keys of 16 bits make two passes, with the handle for scratch; longer arrays count in it
// how often each of the 65536 values occurs.
inline constexpr size_t kMostForPasses = size_t{48} << 10;
static_assert(kMostForPasses * sizeof(uint16_t) <= kHandleBytes16);

template <Numbers numbers, class T>
ZIVKStatus sort_narrow(T* srcDst, int32_t len, void* policy, DigitOrder order) {
  if (ZIVKStatus status = check_arrays(len, srcDst, policy)) return status;
  const auto count = static_cast<size_t>(len);
  if (count <= kMostForPasses) {
    sort_array<numbers>(srcDst, count, policy, order);
    return ZIVK_STS_NO_ERR;
  }
  constexpr size_t kValues = 65536;
  auto* const counters = static_cast<uint32_t*>(policy);
  std::memset(counters, 0, kValues * sizeof *counters);
  for (size_t i = 0; i < count; ++i) ++counters[static_cast<uint16_t>(srcDst[i])];
  Runs<T> runs = {srcDst, srcDst + count};
  const bool falls = order.low == kFalling.low;
  const size_t turned = (falls ? kValues - 1 : 0) ^ (numbers == Numbers::kSigned ? kValues / 2 : 0);
  constexpr size_t kGroup = kRegisterElements<uint32_t>;
  for (size_t place = 0; place < kValues; place += kGroup) {
    const size_t group = (place ^ turned) & ~(kGroup - 1);
    if (!any_true(load(counters + group) != U32{})) continue;
    for (size_t i = place; i < place + kGroup; ++i) {
      const size_t value = i ^ turned;
      runs.write(static_cast<T>(value), counters[value]);
    }
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
  return sort_bytes(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_16u_I(uint16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Numbers::kUnsigned>(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_16s_I(int16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Numbers::kSigned>(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_32u_I(uint32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_32s_I(int32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_32f_I(float* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_64u_I(uint64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_64s_I(int64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixAscend_64f_I(double* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, kRising);
}

ZIVKStatus ZIVKS_SortRadixDescend_8u_I(uint8_t* srcDst, int32_t len, void* policy) {
  return sort_bytes(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_16u_I(uint16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Numbers::kUnsigned>(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_16s_I(int16_t* srcDst, int32_t len, void* policy) {
  return sort_narrow<Numbers::kSigned>(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_32u_I(uint32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_32s_I(int32_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_32f_I(float* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_64u_I(uint64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kUnsigned>(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_64s_I(int64_t* srcDst, int32_t len, void* policy) {
  return sort<Numbers::kSigned>(srcDst, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixDescend_64f_I(double* srcDst, int32_t len, void* policy) {
  return sort_floats(srcDst, len, policy, kFalling);
}
