// The passes that radix sorts are made of.
//
// A digit is a byte of a key. A pass moves all keys from one array to another, into the order of one digit,
// and keeps the order of those that share it. So keys that go through all digits, lowest first, are sorted.
//
// The digits of all passes are counted in one walk, since no pass changes how often a digit occurs. The
// arrays take turns: a key has an even number of digits, so that the last pass ends where the first one
// began.
#ifndef ZIVKS_SORT_RADIX_PASSES_H
#define ZIVKS_SORT_RADIX_PASSES_H

#include <cstddef>
#include <cstdint>

#include "core/prefetch.h"
#include "core/vector/register.h"

namespace zivks {

// What the bits of keys stand for.
enum class Numbers { kUnsigned, kSigned, kFloat };

inline constexpr size_t kDigitBits = 8;
inline constexpr size_t kDigitValues = 256;

using Counts = uint32_t[kDigitValues];

// How the values of a digit follow one another. The value at place p is p with some bits turned: `low` of
// them in the first half of places, `high` in the second.
struct DigitOrder {
  uint8_t low, high;

  ZIVKS_INLINE constexpr size_t value_at(size_t place) const {
    return place ^ (place < kDigitValues / 2 ? low : high);
  }
};

inline constexpr DigitOrder kRising = {0, 0}, kFalling = {255, 255};

// Digits are counted from the lowest one, 0.
template <class Key>
ZIVKS_INLINE size_t digit_of(Key key, size_t digit) {
  return static_cast<uint8_t>(key >> (digit * kDigitBits));
}

// Keys in memory of any alignment, which may have another type as well.
template <class UnsignedKey>
struct Keys {
  using Key = UnsignedKey;
  using Element = Key;
  std::byte* memory;

  ZIVKS_INLINE Element load(size_t i) const { return read<Key>(memory + i * sizeof(Key)); }
  ZIVKS_INLINE void store(size_t i, Element key) const { write(memory + i * sizeof(Key), key); }
  // Hints at a key that is going to be read, or written. It may lie outside of the array.
  ZIVKS_INLINE void hint_read(size_t i) const { __builtin_prefetch(address(i)); }
  ZIVKS_INLINE void hint_write(size_t i) const { __builtin_prefetch(address(i), 1); }
  static constexpr size_t kPerLine = kCacheLineBytes / sizeof(Key);

  ZIVKS_INLINE const void* address(size_t i) const {
    return reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(memory) + i * sizeof(Key));
  }
  ZIVKS_INLINE Keys from(size_t i) const { return {memory + i * sizeof(Key)}; }
};
template <class Key>
ZIVKS_INLINE Key key_of(Key key) {
  return key;
}

// The lanes of a register, each `distance` lanes further up, behind zeros.
template <size_t distance, size_t... I>
ZIVKS_INLINE U32 move_up(U32 a, std::index_sequence<I...>) {
  return __builtin_shufflevector(U32{}, a, (I < distance ? I : I - distance + sizeof...(I))...);
}

// Each lane plus all lanes below it.
template <size_t distance = 1>
ZIVKS_INLINE U32 running_sum(U32 a) {
  constexpr size_t N = kRegisterElements<uint32_t>;
  if constexpr (distance == N) return a;
  if constexpr (distance < N)
    return running_sum<2 * distance>(a + move_up<distance>(a, std::make_index_sequence<N>()));
}

// Where the next key with each value of a digit goes: `front` for keys that are taken from the front of the
// array, `back` for those from its end, so that keys with one value keep their order. Those with the upper
// half of values are put in the opposite order where `upper_half_falls`.
template <bool upper_half_falls = false>
struct Places {
  Counts front, back;

  // A register of values after the other: short arrays spend most of their time here.
  ZIVKS_INLINE Places(const Counts& counts, DigitOrder order) {
    constexpr size_t N = kRegisterElements<uint32_t>;
    U32 before = {};
    for (size_t place = 0; place < kDigitValues; place += N) {
      const size_t value = order.value_at(place), lowest = value & ~(N - 1);
      const bool turned = value != lowest;
      const U32 loaded = load(counts + lowest), count = turned ? reverse(loaded) : loaded;
      const U32 end = before + running_sum(count), first = end - count, last = end - 1;
      store((falls(lowest) ? back : front) + lowest, turned ? reverse(first) : first);
      store((falls(lowest) ? front : back) + lowest, turned ? reverse(last) : last);
      before = broadcast<uint32_t>(end[N - 1]);
    }
  }
  ZIVKS_INLINE static bool falls(size_t value) { return upper_half_falls && value >= kDigitValues / 2; }

  ZIVKS_INLINE uint32_t take_front(size_t value) { return falls(value) ? front[value]-- : front[value]++; }
  ZIVKS_INLINE uint32_t take_back(size_t value) { return falls(value) ? back[value]++ : back[value]--; }
};

// One pass. Keys are taken from both ends of `from` in turn: where neighbours share a digit, each of them
// waits for the one before to move the next place on, and two such chains take half the time of one.
//
// In arrays beyond the caches it asks ahead for the lines that it is about to write.
template <bool beyond_caches = false, class Source, class Target, class Places>
ZIVKS_INLINE void scatter(Source from, Target to, size_t len, size_t digit, Places& places) {
  const size_t half = len / 2;
  for (size_t i = 0; i < half; ++i) {
    const auto first = from.load(i), last = from.load(len - 1 - i);
    const size_t first_place = places.take_front(digit_of(key_of(first), digit));
    to.store(first_place, first);
    const size_t last_place = places.take_back(digit_of(key_of(last), digit));
    to.store(last_place, last);
    if constexpr (beyond_caches) {
      to.hint_write(first_place + to.kPerLine);
      to.hint_write(last_place - to.kPerLine);
    }
  }
  if (len % 2 != 0) {
    const auto middle = from.load(half);
    to.store(places.take_front(digit_of(key_of(middle), digit)), middle);
  }
}

// Walks that do little at each key hint at what they are going to read this far ahead: where the array is not
// in the nearer caches, that halves their time.
inline constexpr size_t kReadAheadOfPass = 2048;

// Counts the lowest `digits` digits of all keys. On the way it asks for the memory that the first pass is
// going to write.
template <size_t digits, class Source, class Target>
ZIVKS_INLINE void count_digits(Source keys, size_t len, Counts* counts, Target to) {
  using Key = typename Source::Key;
  // Neighbours that share a digit wait for each other's count. More than four digits are busy enough
  // meanwhile.
  constexpr size_t kTables = digits > 4 ? 1 : 2;
  constexpr size_t kKeysPerLine = kCacheLineBytes / sizeof(Key);
  Counts more[kTables == 1 ? 1 : digits];
  std::memset(counts, 0, digits * sizeof(Counts));
  if (kTables > 1) std::memset(more, 0, sizeof more);
  const auto count = [&](size_t i) {
    const Key key = key_of(keys.load(i));
#pragma GCC unroll 8
    for (size_t digit = 0; digit < digits; ++digit) {
      Counts& table = (kTables > 1 && i % 2 != 0 ? more : counts)[digit];
      ++table[digit_of(key, digit)];
    }
  };
  size_t i = 0;
  for (; i + kKeysPerLine <= len; i += kKeysPerLine) {
    keys.hint_read(i + kReadAheadOfPass / sizeof(Key));
    to.hint_write(i);
#pragma GCC unroll 32
    for (size_t k = 0; k < kKeysPerLine; ++k) count(i + k);
  }
  for (; i < len; ++i) count(i);
  if constexpr (kTables > 1) {
    for (size_t digit = 0; digit < digits; ++digit) {
      for (size_t value = 0; value < kDigitValues; ++value) counts[digit][value] += more[digit][value];
    }
  }
}

// Counts one digit of all keys, and returns the bits that are not the same in all of them.
template <class Source, class Key = typename Source::Key>
ZIVKS_INLINE Key count_digit(Source keys, size_t len, size_t digit, Counts& counts) {
  constexpr size_t kTables = 4;  // neighbours that share a digit do not wait for each other's count
  Counts table[kTables];
  std::memset(table, 0, sizeof table);
  const Key first = key_of(keys.load(0));
  Key differences = 0;
  const auto count = [&](size_t i, Counts& counted) {
    const Key key = key_of(keys.load(i));
    differences |= static_cast<Key>(key ^ first);
    ++counted[digit_of(key, digit)];
  };
  size_t i = 0;
  for (; i + kTables <= len; i += kTables) {
    keys.hint_read(i + kReadAheadOfPass / sizeof(Key));
#pragma GCC unroll 4
    for (size_t k = 0; k < kTables; ++k) count(i + k, table[k]);
  }
  for (; i < len; ++i) count(i, table[0]);
  for (size_t value = 0; value < kDigitValues; ++value) {
    counts[value] = table[0][value] + table[1][value] + table[2][value] + table[3][value];
  }
  return differences;
}

// --- The choice of passes --------------------------------------------------------------

// A set of digits, one bit each.
using Digits = uint32_t;

template <class Key>
inline constexpr Digits kAllDigits = (Digits{1} << sizeof(Key)) - 1;

ZIVKS_INLINE constexpr bool holds(Digits digits, size_t digit) { return (digits >> digit & 1) != 0; }

ZIVKS_INLINE size_t highest_bit(uint64_t bits) { return 63 - static_cast<size_t>(__builtin_clzll(bits)); }

// Counts the highest digit that tells keys apart, and returns it; sizeof(typename Source::Key) if they are
// all equal.
template <class Source>
[[gnu::noinline]] size_t count_leading_digit(Source keys, size_t len, Digits remaining, Counts& counts) {
  const size_t highest = highest_bit(remaining);
  const auto differences = count_digit(keys, len, highest, counts);
  if (differences == 0) return sizeof(typename Source::Key);
  const size_t leading = highest_bit(differences) / kDigitBits;
  if (leading != highest) count_digit(keys, len, leading, counts);
  return leading;
}

// Arrays beyond this size are split by a pass for their leading digit; the pieces go through the other digits
// one after the other, in the nearer caches. Two arrays of this size take half of a second-level cache of 2
// MiB and all of one of 1 MiB.
inline constexpr size_t kSplitBeyondBytes = size_t{512} << 10;

}  // namespace zivks

#endif
