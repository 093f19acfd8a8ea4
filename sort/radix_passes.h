// The passes that radix sorts are made of.
//
// A digit is a byte of a key. A pass moves all keys from one array to another, into the order of one digit, and
// keeps the order of those that share it. So keys that go through all digits, lowest first, are sorted.
//
// The digits of all passes are counted in one walk, since no pass changes how often a digit occurs. The arrays
// take turns: a key has an even number of digits, so that the last pass ends where the first one began.
#ifndef ZIVKS_SORT_RADIX_PASSES_H
#define ZIVKS_SORT_RADIX_PASSES_H

#include <cstddef>
#include <cstdint>

#include "core/prefetch.h"
#include "core/vector/register.h"

namespace zivks {

inline constexpr size_t kDigitBits = 8;
inline constexpr size_t kDigitValues = 256;

using Counts = uint32_t[kDigitValues];

// How the values of a digit follow one another. The value at place p is p with some bits turned: `low` of them
// in the first half of places, `high` in the second.
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
  ZIVKS_INLINE Keys from(size_t i) const { return {memory + i * sizeof(Key)}; }
};
template <class Key>
ZIVKS_INLINE Key key_of(Key key) {
  return key;
}

// Where the next key with each value of a digit goes: `front` for keys that are taken from the front of the array,
// `back` for those from its end, so that keys with one value keep their order. Those with the upper half of values
// are put in the opposite order where `upper_half_falls`.
template <bool upper_half_falls = false>
struct Places {
  Counts front, back;

  ZIVKS_INLINE Places(const Counts& counts, DigitOrder order) {
    uint32_t begin = 0;
    for (size_t place = 0; place < kDigitValues; ++place) {
      const size_t value = order.value_at(place);
      const uint32_t last = begin + counts[value] - 1;
      front[value] = falls(value) ? last : begin;
      back[value] = falls(value) ? begin : last;
      begin = last + 1;
    }
  }
  ZIVKS_INLINE static bool falls(size_t value) { return upper_half_falls && value >= kDigitValues / 2; }

  ZIVKS_INLINE uint32_t take_front(size_t value) { return falls(value) ? front[value]-- : front[value]++; }
  ZIVKS_INLINE uint32_t take_back(size_t value) { return falls(value) ? back[value]++ : back[value]--; }
};

// One pass. Keys are taken from both ends of `from` in turn: where neighbours share a digit, each of them waits for
// the one before to move the next place on, and two such chains take half the time of one.
template <class Source, class Target, class Places>
ZIVKS_INLINE void scatter(Source from, Target to, size_t len, size_t digit, Places& places) {
  const size_t half = len / 2;
  for (size_t i = 0; i < half; ++i) {
    const auto first = from.load(i), last = from.load(len - 1 - i);
    to.store(places.take_front(digit_of(key_of(first), digit)), first);
    to.store(places.take_back(digit_of(key_of(last), digit)), last);
  }
  if (len % 2 != 0) {
    const auto middle = from.load(half);
    to.store(places.take_front(digit_of(key_of(middle), digit)), middle);
  }
}

// Counts the lowest `digits` digits of all keys. On the way it asks for the memory that the first pass is going
// to write, where `to` is given.
template <size_t digits, class Source>
ZIVKS_INLINE void count_digits(Source keys, size_t len, Counts* counts, const std::byte* to = nullptr) {
  using Key = typename Source::Key;
  // Neighbours that share a digit wait for each other's count. More than four digits are busy enough meanwhile.
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
    if (to != nullptr) __builtin_prefetch(to + i * sizeof(Key), 1);
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

}  // namespace zivks

#endif
