// The passes that radix sorts are made of.
//
// Keys are sorted as ranks: unsigned integers in the order in which the keys are wanted. A digit is a group of
// neighbouring bits of a rank. A pass counts how often each value of its digit occurs, sums that up to places, and
// moves all keys from one array to another, into the order of that digit; those that share its value keep their
// order. Each key goes through passes over all of its bits, whatever the data, in one of two ways:
//
// - Lowest digit first, all keys together. No pass changes how often a digit occurs, so that one walk counts the
//   digits of all passes. This is for keys that stay in the nearer caches on the way.
// - Long arrays are split by their leading digit, and the pieces are sorted by the bits that remain.
//
// What a pass costs is stores: one counter a digit when counting, then counter and key. Processors put about one
// a cycle into their first cache. So pieces that are long beside the tables take wide digits, for fewer passes,
// with counters of 16 bits, for smaller tables.
#ifndef ZIVKS_SORT_RADIX_PASSES_H
#define ZIVKS_SORT_RADIX_PASSES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "core/prefetch.h"
#include "core/vector/register.h"
#include "sort/direction.h"

namespace zivks {

// --- Ranks -----------------------------------------------------------------------------

// What the bits of keys stand for.
enum class Numbers { kUnsigned, kSigned, kFloat };

template <class Key>
inline constexpr Key kTopBit = static_cast<Key>(Key{1} << (8 * sizeof(Key) - 1));

// How bits become ranks, and back. The bits of negative floats are ordered opposite to their values: all but the
// sign are turned.
template <Numbers numbers, class Key>
struct Ranking {
  Key turned;  // in all keys

  explicit Ranking(Direction direction)
      : turned(static_cast<Key>((numbers == Numbers::kUnsigned ? 0 : kTopBit<Key>)^(
            direction == Direction::kAscend ? 0 : ~Key{0}))) {}

  ZIVKS_INLINE Key rank_of(Key bits) const { return turn_negative(bits) ^ turned; }
  ZIVKS_INLINE Key bits_of(Key rank) const { return turn_negative(rank ^ turned); }

 private:
  ZIVKS_INLINE static Key turn_negative(Key bits) {
    if constexpr (numbers != Numbers::kFloat) return bits;
    using Signed = std::make_signed_t<Key>;
    const Key sign_in_all_bits = static_cast<Key>(static_cast<Signed>(bits) >> (8 * sizeof(Key) - 1));
    return bits ^ (sign_in_all_bits & static_cast<Key>(~kTopBit<Key>));
  }
};

// --- Where keys stand ------------------------------------------------------------------

// The address of element `i`, which a hint may name though it lies outside of the array.
ZIVKS_INLINE const void* address_of(const void* memory, size_t i, size_t bytes_each) {
  return reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(memory) + i * bytes_each);
}

// Unsigned integers in memory of any alignment, which may have another type as well.
template <class Key>
struct Keys {
  using Element = Key;
  static constexpr size_t kPerLine = kCacheLineBytes / sizeof(Key);
  std::byte* memory;

  ZIVKS_INLINE Key load(size_t i) const { return read<Key>(memory + i * sizeof(Key)); }
  ZIVKS_INLINE void store(size_t i, Key key) const { write(memory + i * sizeof(Key), key); }
  ZIVKS_INLINE void hint_read(size_t i) const { __builtin_prefetch(address_of(memory, i, sizeof(Key))); }
  ZIVKS_INLINE void hint_write(size_t i) const { __builtin_prefetch(address_of(memory, i, sizeof(Key)), 1); }
  ZIVKS_INLINE Keys from(size_t i) const { return {memory + i * sizeof(Key)}; }
};

// Keys that are read as ranks, and into which ranks are written.
template <Numbers numbers, class Key>
struct RankedKeys {
  using Element = Key;
  static constexpr size_t kPerLine = Keys<Key>::kPerLine;
  Keys<Key> keys;
  Ranking<numbers, Key> ranking;

  ZIVKS_INLINE Key load(size_t i) const { return ranking.rank_of(keys.load(i)); }
  ZIVKS_INLINE void store(size_t i, Key rank) const { keys.store(i, ranking.bits_of(rank)); }
  ZIVKS_INLINE void hint_read(size_t i) const { keys.hint_read(i); }
  ZIVKS_INLINE void hint_write(size_t i) const { keys.hint_write(i); }
};

// What an element is sorted by.
template <class Key>
ZIVKS_INLINE Key rank_of(Key rank) {
  return rank;
}

// --- Digits ----------------------------------------------------------------------------

// The digits of passes that begin with the lowest one: bytes, ...
struct Bytes {
  static constexpr size_t kMostValues = 256, width = 8;

  ZIVKS_INLINE size_t values() const { return kMostValues; }
  template <class Key>
  ZIVKS_INLINE size_t operator()(Key rank, size_t digit) const {
    return static_cast<uint8_t>(rank >> (8 * digit));
  }
};

// ... or of a width that is known when the program runs.
template <size_t most_bits>
struct WideDigits {
  static constexpr size_t kMostValues = size_t{1} << most_bits;
  size_t width;

  ZIVKS_INLINE size_t values() const { return size_t{1} << width; }
  template <class Key>
  ZIVKS_INLINE size_t operator()(Key rank, size_t digit) const {
    return static_cast<size_t>(rank >> (width * digit)) & (values() - 1);
  }
};

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

// Turns counts into places where the first and the last key with each value go. Where `is_in_both`, the counts are
// those in both tables. Short arrays spend much of their time here: a register of values after the other, so that
// tables are padded with zeros.
template <bool is_in_both, class Counter>
ZIVKS_INLINE void sum_up(Counter* counts_to_first, Counter* last, size_t values) {
  constexpr size_t N = kRegisterElements<Counter>, kLastWord = kRegisterElements<uint32_t> - 1;
  Counter before = 0;
  for (size_t value = 0; value < values; value += N) {
    auto counts = load(counts_to_first + value);
    if constexpr (is_in_both) counts += load(last + value);
    Register<Counter> ends;
    Counter all;
    if constexpr (sizeof(Counter) == sizeof(uint32_t)) {
      ends = running_sum(counts);
      all = ends[kLastWord];
    } else {  // in words of two counters, then from word to word; no sum exceeds a counter
      const U32 in_word = U32(counts) + (U32(counts) << 16), of_word = in_word >> 16;
      const U32 up_to_word = running_sum(of_word), before_word = up_to_word - of_word;
      ends = Register<Counter>(in_word + (before_word | before_word << 16));
      all = static_cast<Counter>(up_to_word[kLastWord]);
    }
    const auto first = ends - counts + broadcast(before);
    store(counts_to_first + value, first);
    store(last + value, first + counts - broadcast(Counter{1}));
    before = static_cast<Counter>(before + all);
  }
}

// --- Passes lowest digit first ---------------------------------------------------------

// Moves elements to where their digits belong. They are taken from both ends of `from` in turn: where neighbours
// share a digit, each of them waits for the one before to move the next place on, and two such chains take half
// the time of one.
template <class Source, class Target, class Digit, class Counter>
ZIVKS_INLINE void scatter(Source from, Target to, size_t len, Digit digit, Counter* front, Counter* back) {
  const size_t half = len / 2;
  for (size_t i = 0; i < half; ++i) {
    const auto first = from.load(i), last = from.load(len - 1 - i);
    const size_t first_place = front[digit(rank_of(first))]++;
    to.store(first_place, first);
    const size_t last_place = back[digit(rank_of(last))]--;
    to.store(last_place, last);
  }
  if (len % 2 != 0) {
    const auto middle = from.load(half);
    to.store(front[digit(rank_of(middle))], middle);
  }
}

// Walks that do little at each key hint at what they are going to read this far ahead: where the array is not
// in the nearer caches, that halves their time.
inline constexpr size_t kReadAheadOfPass = 2048;

// The tables of a number of passes. Those in front tell where the next key with a value goes that is taken from the
// front of an array, those at the back the same of keys from its end, so that keys with one value keep their order.
template <size_t passes, class DigitsType, class CounterType>
struct PassTables {
  using Digits = DigitsType;
  using Counter = CounterType;
  static constexpr size_t kPasses = passes, kValues = Digits::kMostValues;
  // Neighbours that share a digit wait for each other's count, unless they are counted in two tables. More than four
  // digits are busy enough meanwhile, and twice as many tables of wide digits would not fit into the first cache.
  static constexpr bool kCountsInBoth = passes <= 4 && kValues <= 256;

  Digits digits;
  Counter front[passes][kValues], back[kCountsInBoth ? passes : 1][kValues];

  // Counts the digits of all keys. On the way it asks for the memory that the first pass is going to write.
  template <class Source, class Target>
  ZIVKS_INLINE void count(Source keys, size_t len, Target to) {
    constexpr size_t kKeysPerLine = kCacheLineBytes / sizeof(typename Source::Element);
    const size_t used = std::max(digits.values(), kRegisterElements<Counter>);
    for (auto& table : front) std::memset(table, 0, used * sizeof(Counter));
    if (kCountsInBoth) std::memset(back, 0, sizeof back);
    const auto count_one = [&](size_t i) {
      const auto rank = rank_of(keys.load(i));
#pragma GCC unroll 8
      for (size_t pass = 0; pass < passes; ++pass) {
        if (kCountsInBoth && i % 2 != 0) {
          ++back[pass][digits(rank, pass)];
        } else {
          ++front[pass][digits(rank, pass)];
        }
      }
    };
    size_t i = 0;
    for (; i + kKeysPerLine <= len; i += kKeysPerLine) {
      keys.hint_read(i + kReadAheadOfPass / sizeof(typename Source::Element));
      to.hint_write(i);
#pragma GCC unroll 32
      for (size_t k = 0; k < kKeysPerLine; ++k) count_one(i + k);
    }
    for (; i < len; ++i) count_one(i);
  }

  template <class Source, class Target, class Digit>
  ZIVKS_INLINE void make_pass(size_t pass, Source from, Target to, size_t len, Digit digit) {
    Counter* const back_of_pass = back[kCountsInBoth ? pass : 0];
    sum_up<kCountsInBoth>(front[pass], back_of_pass, digits.values());
    scatter(from, to, len, digit, front[pass], back_of_pass);
  }
  template <class Source, class Target>
  ZIVKS_INLINE void make_pass(size_t pass, Source from, Target to, size_t len) {
    make_pass(pass, from, to, len, [this, pass](auto rank) { return digits(rank, pass); });
  }
};

// Moves two counters on by `step`, and returns what they were. Where both are the same one, the second needn't wait for
// the first to be stored.
template <class Counter>
struct TwoCounts {
  Counter first, second;
};
template <int step, class Counter>
ZIVKS_INLINE TwoCounts<Counter> count_two(Counter* counters, size_t first, size_t second) {
  constexpr auto kStep = static_cast<Counter>(step);
  const Counter of_first = counters[first];
  const Counter of_second = counters[second] + (first == second ? kStep : Counter{0});
  counters[first] = of_first + kStep;
  counters[second] = of_second + kStep;
  return {of_first, of_second};
}

// --- Splitting long arrays -------------------------------------------------------------

// Arrays beyond this size are split. Two arrays of this size take half of a second-level cache of 2 MiB and all of
// one of 1 MiB.
inline constexpr size_t kSplitBeyondBytes = size_t{512} << 10;

inline constexpr size_t kMostLeadingBits = 10;

// The width of the digit to split by. About 4096 keys a piece are the best: fewer take too long over tables, and more
// exceed the first cache. A pass of more than a thousand values takes too many lines of the caches.
ZIVKS_INLINE size_t leading_bits(size_t len, size_t remaining) {
  const auto length_bits = static_cast<size_t>(63 - __builtin_clzll(len));
  // Of 64 bits 55 are left to pieces of a thousand keys: five wide digits.
  const size_t least = remaining == 64 && length_bits >= 19 ? 9 : 8;
  return std::min(std::clamp(length_bits - 12, least, kMostLeadingBits), remaining);
}

// Moves elements into the order of the highest of their remaining bits. At the place in `notes` where a piece of
// elements with the same digit begins, it leaves where that piece ends; `notes` may be where the elements came
// from, and no table outlives the pass. Takes 16 KiB of stack.
//
// Elements are taken from the front only: from both ends it would take twice as many lines of the caches.
template <class Source, class Target, class Notes>
[[gnu::noinline]] void split(Source from, Target to, size_t len, size_t remaining, size_t width,
                             Notes notes) {
  constexpr size_t kTables = 4;  // neighbours that share a digit do not wait for each other's count
  constexpr size_t kPerLine = Source::kPerLine;
  const size_t shift = remaining - width, values = size_t{1} << width;
  uint32_t counts[kTables][size_t{1} << kMostLeadingBits];
  const auto digit_of = [=](auto element) {
    return static_cast<size_t>(rank_of(element) >> shift) & (values - 1);
  };
  for (auto& table : counts) std::memset(table, 0, values * sizeof(uint32_t));
  size_t i = 0;
  for (; i + kTables <= len; i += kTables) {
    from.hint_read(i + kReadAheadOfPass / kCacheLineBytes * kPerLine);
#pragma GCC unroll 4
    for (size_t k = 0; k < kTables; ++k) ++counts[k][digit_of(from.load(i + k))];
  }
  for (; i < len; ++i) ++counts[0][digit_of(from.load(i))];

  uint32_t place = 0;
  for (size_t value = 0; value < values; ++value) {
    const uint32_t count = counts[0][value] + counts[1][value] + counts[2][value] + counts[3][value];
    counts[0][value] = place;
    place += count;
  }

  // A line is asked for when the one before it is half full: earlier it would push out others.
  const auto put = [&](size_t at, auto element) {
    to.store(at, element);
    to.hint_write(at + Target::kPerLine / 2);
  };
  i = 0;
  for (; i + kPerLine <= len; i += kPerLine) {
    from.hint_read(i + kReadAheadOfPass / kCacheLineBytes * kPerLine);
#pragma GCC unroll 4
    for (size_t k = i; k < i + kPerLine; k += 2) {
      const auto first = from.load(k), second = from.load(k + 1);
      const auto [first_place, second_place] = count_two<1>(counts[0], digit_of(first), digit_of(second));
      put(first_place, first);
      put(second_place, second);
    }
  }
  for (; i < len; ++i) {
    const auto element = from.load(i);
    put(counts[0][digit_of(element)]++, element);
  }

  uint32_t begin = 0;
  for (size_t value = 0; value < values; ++value) {
    const uint32_t end = counts[0][value];
    if (end != begin) notes.store(begin, end);
    begin = end;
  }
}

// Calls `sort` with tables, which take 24 KiB of stack at most.
template <class Tables, class Sort>
[[gnu::noinline]] void with_tables(typename Tables::Digits digits, const Sort& sort) {
  Tables tables;
  tables.digits = digits;
  sort(tables);
}

// The same with tables of wide digits, where that many passes over them cover the lowest `remaining` bits, and where
// the keys are neither few beside the tables nor too many for counters of 16 bits. Returns whether it was so.
template <size_t passes, size_t most_bits, class Sort>
ZIVKS_INLINE bool with_wide_tables(size_t len, size_t remaining, const Sort& sort) {
  const size_t width = (remaining + passes - 1) / passes;
  if (width > most_bits || size_t{1} << width > 2 * len || len > 65535) return false;
  with_tables<PassTables<passes, WideDigits<most_bits>, uint16_t>>({width}, sort);
  return true;
}

// The same with tables for what a split leaves.
template <class Key, class Sort>
ZIVKS_INLINE void with_tables_for_piece(size_t len, size_t remaining, const Sort& sort) {
  if constexpr (sizeof(Key) == sizeof(uint32_t)) {
    if (with_wide_tables<2, 12>(len, remaining, sort)) return;
  } else {
    if (with_wide_tables<4, 11>(len, remaining, sort)) return;
    if (with_wide_tables<5, 11>(len, remaining, sort)) return;
  }
  with_tables<PassTables<sizeof(Key) - 1, Bytes, uint32_t>>({}, sort);
}

}  // namespace zivks

#endif
