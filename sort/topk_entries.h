// Entries of a selection: a key and its position in one word, so that every exchange moves both.
#ifndef ZIVKS_SORT_TOPK_ENTRIES_H
#define ZIVKS_SORT_TOPK_ENTRIES_H

#include <algorithm>

#include "core/vector/register.h"
#include "sort/radix_passes.h"

namespace zivks {

// The upper half holds 32 bits of the key, the lower half the position.
using Entry = uint64_t;

ZIVKS_INLINE Entry make_entry(uint32_t bits, size_t position) { return Entry{bits} << 32 | position; }
ZIVKS_INLINE uint32_t bits_of(Entry entry) { return static_cast<uint32_t>(entry >> 32); }
ZIVKS_INLINE uint32_t position_of(Entry entry) { return static_cast<uint32_t>(entry); }

inline constexpr uint32_t kSignBit = 0x80000000;

// How the bits of a key become its rank, an unsigned integer that orders keys. Ranks of floats put -0 below
// +0; those that are not finite stand at both ends.
template <class T>
struct Rank;

template <>
struct Rank<int32_t> {
  static constexpr bool kHasNonFinite = false;
  ZIVKS_INLINE static constexpr bool is_finite(uint32_t) { return true; }

  ZIVKS_INLINE static constexpr uint32_t of(uint32_t bits) { return bits ^ kSignBit; }
  ZIVKS_INLINE static constexpr uint32_t bits(uint32_t rank) { return rank ^ kSignBit; }
  // Ranks of a register of keys, less the sign bit: to be compared as signed integers.
  ZIVKS_INLINE static I32 signed_ranks(I32 bits) { return bits; }
};

template <>
struct Rank<float> {
  static constexpr bool kHasNonFinite = true;
  ZIVKS_INLINE static constexpr bool is_finite(uint32_t rank) {
    return of(0xFF7FFFFF) <= rank && rank <= of(0x7F7FFFFF);
  }

  // Of a negative number all bits are turned, of others the sign.
  ZIVKS_INLINE static constexpr uint32_t of(uint32_t bits) { return bits ^ ((0 - (bits >> 31)) | kSignBit); }
  ZIVKS_INLINE static constexpr uint32_t bits(uint32_t rank) {
    return rank ^ (((rank >> 31) - 1) | kSignBit);
  }
  ZIVKS_INLINE static I32 signed_ranks(I32 bits) { return bits ^ I32(U32(bits >> 31) >> 1); }
};

// The least and the greatest key of entries.
struct KeyRange {
  uint32_t least, greatest;

  // Every other lane of a register holds keys. There must be an entry.
  static KeyRange of(const Entry* entries, size_t count) {
    constexpr size_t N = kRegisterElements<Entry>;
    if (count < N) return of_few(entries, count);
    U32 least = U32(load(entries)), greatest = least;
    for (size_t i = N; i < count; i += N) {  // some at the end are met twice
      const U32 next = U32(load(entries + std::min(i, count - N)));
      least = minimum(least, next);
      greatest = maximum(greatest, next);
    }
    const U32 positions = U32(broadcast(uint64_t{0xFFFFFFFF}));
    return {reduce_minimum(least | positions), reduce_maximum(greatest & ~positions)};
  }

 private:
  static KeyRange of_few(const Entry* entries, size_t count) {
    const auto [least, greatest] = std::minmax_element(entries, entries + count);
    return {bits_of(*least), bits_of(*greatest)};
  }
};

// The bytes of an entry's key, of which the greatest comes first.
struct FallingKeyBytes {
  static constexpr size_t kMostValues = 256;

  ZIVKS_INLINE size_t values() const { return kMostValues; }
  ZIVKS_INLINE size_t operator()(Entry entry, size_t digit) const { return Bytes()(~bits_of(entry), digit); }
};

// The entries among which the greatest are to be found. All are in the order of their places, which is the
// order in which equal keys leave.
struct Candidates {
  Entry* entries;
  size_t count;

  // Drops entries that are not among the `wanted` greatest until at most `most` are left; `most` is not below
  // `wanted`. Returns a key such that an entry behind all of these has to be
  // greater to be among the greatest. `range` is that of the entries. Uses 4 KiB of stack.
  //
  // A turn counts the keys of the range in which the last of the greatest is known to lie in equal parts, drops
  // what lies below its part, and goes on with that part.
  uint32_t narrow(KeyRange range, size_t wanted, size_t most) {
    constexpr uint32_t kDigitBits = 10, kDigits = 1 << kDigitBits;
    uint32_t least = range.least, width = range.greatest - range.least;
    while (count > most) {
      const uint32_t width_bits = 32 - static_cast<uint32_t>(__builtin_clz(width | 1));
      const uint32_t shift = width_bits > kDigitBits ? width_bits - kDigitBits : 0;
      uint32_t counts[kDigits] = {};
      for (size_t i = 0; i < count; ++i) {
        const uint32_t distance = bits_of(entries[i]) - least;
        if (distance <= width) ++counts[distance >> shift];  // the others are greater
      }
      uint32_t part = width >> shift;
      for (; counts[part] < wanted; --part) wanted -= counts[part];
      least += part << shift;
      if (shift == 0) {
        keep_from(least, wanted);
        break;
      }
      keep_rest(0, 0, least);
      width = (1U << shift) - 1;
    }
    return least;
  }

  // Drops entries that are not among the `wanted` greatest, or most of them.
  void keep_greatest(size_t wanted) {
    const size_t most = wanted + wanted / 2;
    if (count > most) narrow(KeyRange::of(entries, count), wanted, most);
  }

  // Sorts by falling keys, of which equal ones stay in their order. `scratch` has room for all entries.
  // Uses 8 KiB of stack.
  void sort(Entry* scratch) {
    with_tables<PassTables<sizeof(uint32_t), FallingKeyBytes, uint32_t>>({}, [=](auto& tables) {
      Keys<Entry> from = {reinterpret_cast<std::byte*>(entries)},
                  to = {reinterpret_cast<std::byte*>(scratch)};
      tables.count(from, count, to);
      for (size_t pass = 0; pass < sizeof(uint32_t); ++pass) {
        tables.make_pass(pass, from, to, count);
        std::swap(from, to);
      }
    });
  }

 private:
  // Keeps entries whose key is greater than `key`, and the first `equal` of those with that key, of which there
  // are so many. No branch depends on a key, since it could not be foreseen.
  void keep_from(uint32_t key, size_t equal) {
    size_t kept = 0, i = 0;
    for (; equal > 0; ++i) {
      const Entry entry = entries[i];
      entries[kept] = entry;
      kept += bits_of(entry) >= key;
      equal -= bits_of(entry) == key;
    }
    keep_rest(i, kept, uint64_t{key} + 1);
  }
  // Keeps of the entries from number `i` on those with `key` or a greater one; `kept` stand before them.
  void keep_rest(size_t i, size_t kept, uint64_t key) {
    for (; i < count; ++i) {
      const Entry entry = entries[i];
      entries[kept] = entry;
      kept += bits_of(entry) >= key;
    }
    count = kept;
  }
};

}  // namespace zivks

#endif
