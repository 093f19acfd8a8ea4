// Radix sorts of positions, of keys of 32 and 64 bits.
//
// Keys become ranks and go through the passes along with their positions. A position is a word of its own only where
// a long array is split. In arrays and pieces of up to 65536 keys it has 16 bits, and takes the place of bits that are
// done with.
#ifndef ZIVKS_SORT_RADIX_INDEX_WIDE_H
#define ZIVKS_SORT_RADIX_INDEX_WIDE_H

#include "sort/radix_index_records.h"

namespace zivks {

inline constexpr size_t kShortPositionBits = 16, kMostShortPositions = size_t{1} << kShortPositionBits;

// --- Short arrays ----------------------------------------------------------------------
//
// The first pass puts out positions alone, and the second fetches the keys anew; at this length they are still in the
// caches. From then on the position takes the place of the two digits that are done, so that a record is not longer
// than a key.

// Records in words: a rank that has its position in the lowest 16 bits.
template <class Key>
struct RecordsInWords {
  Keys<Key> words;

  ZIVKS_INLINE Record<Key> load(size_t i) const {
    const Key word = words.load(i);
    return {word, static_cast<uint16_t>(word)};
  }
  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    constexpr Key kMask = (Key{1} << kShortPositionBits) - 1;
    words.store(i, (record.rank & ~kMask) | static_cast<Key>(record.position));
  }
};

// `first` and `second` have room for all keys. Those of `initial` may stand in `second`.
template <Numbers numbers, class Key>
void sort_short(InitialRecords<numbers, Key> initial, int32_t* dstIdx, size_t len, Keys<Key> first,
                Keys<Key> second) {
  using Tables = PassTables<sizeof(Key), Bytes, uint32_t>;
  constexpr size_t kTop = sizeof(Key) - 1;
  with_tables<Tables>({}, [=](Tables& tables) {
    const Positions positions = {dstIdx};
    tables.count(initial, len, positions);
    tables.make_pass(0, initial, positions, len);
    RecordsInWords<Key> from = {first}, to = {second};
    tables.make_pass(1, FetchedRecords<numbers, Key>{initial, dstIdx}, from, len);
    for (size_t pass = 2; pass < kTop; ++pass) {
      tables.make_pass(pass, from, to, len);
      std::swap(from, to);
    }
    tables.make_pass(kTop, from, positions, len);
  });
}

// --- Records of long arrays ------------------------------------------------------------

// A rank of 32 bits in the upper half of a word, and a position in the lower.
struct RecordsOf32 {
  static constexpr size_t kPerLine = Keys<uint64_t>::kPerLine;
  Keys<uint64_t> words;

  ZIVKS_INLINE Record<uint32_t> load(size_t i) const {
    return {static_cast<uint32_t>(words.load(i) >> 32), position(i)};
  }
  ZIVKS_INLINE void store(size_t i, Record<uint32_t> record) const {
    words.store(i, uint64_t{record.rank} << 32 | static_cast<uint32_t>(record.position));
  }
  ZIVKS_INLINE int32_t position(size_t i) const { return static_cast<int32_t>(words.load(i)); }
  ZIVKS_INLINE void hint_read(size_t i) const { words.hint_read(i); }
  ZIVKS_INLINE void hint_write(size_t i) const { words.hint_write(i); }
  ZIVKS_INLINE RecordsOf32 from(size_t i) const { return {words.from(i)}; }
  // Of records that are done with: a word for each.
  Keys<uint64_t> notes() const { return words; }
};

// Ranks and positions in arrays of their own.
template <class Key>
struct RecordsInTwoArrays {
  static constexpr size_t kPerLine = Keys<Key>::kPerLine;
  Keys<Key> ranks;
  Keys<int32_t> positions;

  ZIVKS_INLINE Record<Key> load(size_t i) const { return {ranks.load(i), position(i)}; }
  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    ranks.store(i, record.rank);
    positions.store(i, record.position);
  }
  ZIVKS_INLINE int32_t position(size_t i) const { return positions.load(i); }
  ZIVKS_INLINE void hint_read(size_t i) const { ranks.hint_read(i); }
  ZIVKS_INLINE void hint_write(size_t i) const { ranks.hint_write(i); }
  ZIVKS_INLINE RecordsInTwoArrays from(size_t i) const { return {ranks.from(i), positions.from(i)}; }
  Keys<Key> notes() const { return ranks; }
};

// --- Pieces ----------------------------------------------------------------------------
//
// The first pass of a piece makes words of what remains of a rank above the first digit, and of a position within
// the piece. The last one looks up the positions within the array.

template <class Key, class Records>
struct RecordsOfPiece {
  using Element = Key;
  Records records;

  ZIVKS_INLINE Record<Key> load(size_t i) const { return {records.load(i).rank, static_cast<int32_t>(i)}; }
  ZIVKS_INLINE void hint_read(size_t i) const { records.hint_read(i); }
};

template <class Key>
struct WordsOfPiece {
  Keys<Key> words;
  size_t first_width;

  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    words.store(i, (record.rank >> first_width) << kShortPositionBits | static_cast<Key>(record.position));
  }
  ZIVKS_INLINE void hint_write(size_t i) const { words.hint_write(i); }
};

template <class Positions>
struct PositionsOfPiece {
  Positions positions;
  int32_t* dstIdx;

  template <class Key>
  ZIVKS_INLINE void store(size_t i, Key word) const {
    dstIdx[i] = positions.position(static_cast<uint16_t>(word));
  }
};

// The passes of `tables` over a piece. They take turns between `words` and `more_words`, the latter of which may be
// where the ranks come from. `positions` must not be the result.
template <class Tables, class Records, class Positions, class Key>
ZIVKS_INLINE void sort_piece_by_passes(Tables& tables, Records records, Positions positions, size_t len,
                                       Keys<Key> words, Keys<Key> more_words, int32_t* dstIdx) {
  constexpr size_t kLast = Tables::kPasses - 1;
  const RecordsOfPiece<Key, Records> source = {records};
  const WordsOfPiece<Key> target = {words, tables.digits.width};
  tables.count(source, len, target);
  tables.make_pass(0, source, target, len);
  const auto digit_of_pass = [&tables](size_t pass) {
    return [&tables, pass](Key word) { return tables.digits(word >> kShortPositionBits, pass - 1); };
  };
  for (size_t pass = 1; pass < kLast; ++pass) {
    tables.make_pass(pass, words, more_words, len, digit_of_pass(pass));
    std::swap(words, more_words);
  }
  tables.make_pass(kLast, words, PositionsOfPiece<Positions>{positions, dstIdx}, len, digit_of_pass(kLast));
}

// Records of 64 bits: both places are in the handle.
template <class Tables>
void sort_piece(Tables& tables, RecordsInTwoArrays<uint64_t> records, RecordsInTwoArrays<uint64_t> other,
                size_t len, int32_t* dstIdx) {
  sort_piece_by_passes(tables, records, records, len, other.ranks, records.ranks, dstIdx);
}
// Records of 32 bits: one of the places has its positions in the result. An odd number of passes begins there, so that
// the last one doesn't read what it writes.
template <class Tables>
void sort_piece(Tables& tables, RecordsOf32 records, RecordsInTwoArrays<uint32_t> other, size_t len,
                int32_t* dstIdx) {
  Keys<uint32_t> words = other.ranks, more_words = {other.positions.memory};
  if (Tables::kPasses % 2 != 0) std::swap(words, more_words);
  sort_piece_by_passes(tables, records, records, len, words, more_words, dstIdx);
}
// From that place the positions go out of the way first. The other one has room for them beside a rank each.
template <class Tables>
void sort_piece(Tables& tables, RecordsInTwoArrays<uint32_t> records, RecordsOf32 other, size_t len,
                int32_t* dstIdx) {
  const Keys<uint32_t> words = {other.words.memory};
  const RecordsInTwoArrays<uint32_t> saved = {words, {words.from(len).memory}};
  std::memcpy(saved.positions.memory, records.positions.memory, len * sizeof(int32_t));
  sort_piece_by_passes(tables, records, saved, len, words, records.ranks, dstIdx);
}

// Splits elements, which come from `from`, into `records`, and sorts the pieces; `other` is the other place, where they
// may have come from. They are equal in all but the lowest `remaining` bits.
template <class Key, class Source, class Records, class Other>
void split_and_sort(Source from, Records records, Other other, size_t len, size_t remaining,
                    int32_t* dstIdx) {
  const size_t width = leading_bits(len, remaining), left = remaining - width;
  const auto ends = other.notes();
  split(from, records, len, remaining, width, ends);
  for (size_t begin = 0; begin < len;) {
    const auto end = static_cast<size_t>(ends.load(begin));
    const size_t piece_len = end - begin;
    const Records piece = records.from(begin);
    const Other other_place = other.from(begin);
    int32_t* const dst = dstIdx + begin;
    if (piece_len <= kMostShortPositions) {
      with_tables_for_piece<Key>(
          piece_len, left, [&](auto& tables) { sort_piece(tables, piece, other_place, piece_len, dst); });
    } else if (left > 0) {
      split_and_sort<Key>(piece, other_place, piece, piece_len, left, dst);
    } else {
      for (size_t i = 0; i < piece_len; ++i) dst[i] = piece.position(i);
    }
    begin = end;
  }
}

// --- The choice ------------------------------------------------------------------------

// Keys that are not neighbours are gathered first, so that they are read once.
template <class Key>
StridedKeys<Key> gather(StridedKeys<Key> keys, size_t len, Keys<Key> gathered) {
  if (keys.stride == sizeof(Key)) return keys;
  for (size_t i = 0; i < len; ++i) gathered.store(i, keys.bits_at(static_cast<std::ptrdiff_t>(i)));
  return {gathered.memory, sizeof(Key)};
}

// The two places of long arrays' records. There isn't room in a handle for two of them with 32 bits each.
inline auto places_of_records(Keys<uint32_t> handle, size_t len, int32_t* dstIdx) {
  return std::make_pair(
      RecordsOf32{{handle.memory}},
      RecordsInTwoArrays<uint32_t>{handle.from(2 * len), {reinterpret_cast<std::byte*>(dstIdx)}});
}
inline auto places_of_records(Keys<uint64_t> handle, size_t len, int32_t*) {
  using Records = RecordsInTwoArrays<uint64_t>;
  const Keys<int32_t> positions = {handle.from(2 * len).memory};
  return std::make_pair(Records{handle, positions}, Records{handle.from(len), positions.from(len)});
}

template <Numbers numbers, class Key>
void sort_wide_keys(StridedKeys<Key> keys, Direction direction, int32_t* dstIdx, size_t len,
                    Keys<Key> handle) {
  const Ranking<numbers, Key> ranking(direction);
  if (len <= kMostShortPositions) {
    const Keys<Key> second = handle.from(len);
    sort_short<numbers, Key>({gather(keys, len, second), ranking}, dstIdx, len, handle, second);
  } else {
    const auto [records, other] = places_of_records(handle, len, dstIdx);
    const InitialRecords<numbers, Key> initial = {gather(keys, len, other.ranks), ranking};
    split_and_sort<Key>(initial, records, other, len, 8 * sizeof(Key), dstIdx);
  }
}

}  // namespace zivks

#endif
