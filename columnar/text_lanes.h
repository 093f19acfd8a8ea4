// XXH64 of several texts at a time, in the lanes of registers: for registers of four 64-bit integers, where the vector
// unit multiplies these. For others nothing here is called.
#ifndef ZIVKS_COLUMNAR_TEXT_LANES_H
#define ZIVKS_COLUMNAR_TEXT_LANES_H

#include "columnar/column.h"
#include "columnar/xxh64.h"

namespace zivks::xxh64 {

inline constexpr size_t kLanes = 4;
inline constexpr bool kHashesTextsInLanes =
    kMultipliesBesideIntegers && kRegisterElements<uint64_t> == kLanes;

// Four texts, which begin at so many bytes from `bytes`.
struct FourTexts {
  const uint8_t* bytes;
  const int32_t* begins;

  ZIVKS_INLINE const uint8_t* operator[](size_t k) const { return bytes + begins[k]; }
  // The words at byte `at` of each text, and the words behind these.
  ZIVKS_INLINE RegisterPair<U64> two_words(size_t at) const {
    return deinterleave(load_halves((*this)[0] + at, (*this)[1] + at),
                        load_halves((*this)[2] + at, (*this)[3] + at));
  }
};

// The accumulators of a text are the lanes of a register, until those of all four texts are merged side by side.
struct FourStripedTexts {
  U64 a = load(kFirstAccumulators), b = a, c = a, d = a;

  ZIVKS_INLINE void add(FourTexts texts, size_t at) {
    a = accumulate(a, U64(load(texts[0] + at)));
    b = accumulate(b, U64(load(texts[1] + at)));
    c = accumulate(c, U64(load(texts[2] + at)));
    d = accumulate(d, U64(load(texts[3] + at)));
  }
  ZIVKS_INLINE U64 merged() const {
    const auto [even_ab, odd_ab] = deinterleave(a, b);
    const auto [even_cd, odd_cd] = deinterleave(c, d);
    const auto [first, third] = deinterleave(even_ab, even_cd);
    const auto [second, fourth] = deinterleave(odd_ab, odd_cd);
    return merge_accumulators(first, second, third, fourth);
  }
};

// --- Texts of one length -------------------------------------------------------------------

// A value of each of eight texts: of the first four in a register, of the others in integers.
struct EightValues {
  U64 lanes;
  uint64_t e, f, g, h;
};
// `step` of each of the values, so that eight chains of multiplications overlap.
template <class Step, class... Eight>
ZIVKS_INLINE EightValues each(Step step, Eight... eight) {
  return {step(eight.lanes...), step(eight.e...), step(eight.f...), step(eight.g...), step(eight.h...)};
}

// The hashes of texts that have `rest` bytes left at byte `at`: `words` whole words of eight bytes and, if they have
// odd bytes, up to seven more. A stripe of each is read.
template <size_t words, bool has_odd_bytes>
ZIVKS_INLINE EightValues finish(EightValues hash, FourTexts abcd, FourTexts efgh, size_t at, size_t rest) {
  const uint8_t *const e = efgh[0] + at, *const f = efgh[1] + at, *const g = efgh[2] + at,
                       *const h = efgh[3] + at;
  const auto words_at = [=](U64 lanes, size_t k) ZIVKS_INLINE_LAMBDA {
    return EightValues{lanes, read<uint64_t>(e + k), read<uint64_t>(f + k), read<uint64_t>(g + k),
                       read<uint64_t>(h + k)};
  };
  const auto add_word = [](auto a, auto word) ZIVKS_INLINE_LAMBDA { return with_word(a, word); };
  const auto low = abcd.two_words(at);
  const auto high = words < 2 ? low : abcd.two_words(at + 16);
  if constexpr (words > 0) hash = each(add_word, hash, words_at(low.first, 0));
  if constexpr (words > 1) hash = each(add_word, hash, words_at(low.second, 8));
  if constexpr (words > 2) hash = each(add_word, hash, words_at(high.first, 16));
  if constexpr (has_odd_bytes) {
    const U64 last_word = words == 0   ? low.first
                          : words == 1 ? low.second
                          : words == 2 ? high.first
                                       : high.second;
    EightValues last = words_at(last_word, 8 * words);
    if (rest & 4) {
      hash = each([](auto a, auto word) ZIVKS_INLINE_LAMBDA { return with_half_word(a, word & UINT32_MAX); },
                  hash, last);
      last = each([](auto word) ZIVKS_INLINE_LAMBDA { return word >> 32; }, last);
    }
    for (size_t bytes = rest & 3; bytes > 0; --bytes) {
      hash = each([](auto a, auto word) ZIVKS_INLINE_LAMBDA { return with_byte(a, word & UINT8_MAX); }, hash,
                  last);
      last = each([](auto word) ZIVKS_INLINE_LAMBDA { return word >> 8; }, last);
    }
  }
  return each([](auto a) ZIVKS_INLINE_LAMBDA { return avalanche(a); }, hash);
}

// The hashes of the stripes of texts, of which each has at least one.
ZIVKS_INLINE EightValues hash_stripes(FourTexts abcd, FourTexts efgh, size_t stripes) {
  FourStripedTexts lanes;
  StripedText e, f, g, h;  // in pairs, for which there are registers
  for (size_t at = 0; at < stripes * kStripe; at += kStripe) {
    lanes.add(abcd, at);
    e.add(efgh[0] + at);
    f.add(efgh[1] + at);
  }
  const uint8_t *const text_g = efgh[2], *const text_h = efgh[3];
  for (size_t at = 0; at < stripes * kStripe; at += kStripe) {
    g.add(text_g + at);
    h.add(text_h + at);
  }
  return {lanes.merged(), e.merged(), f.merged(), g.merged(), h.merged()};
}

// Hashes blocks of rows of `size` bytes, until a block has a row of another size, or until fewer than 32 bytes lie
// between the stripes of a text and byte `end`. Half of a block goes in lanes, the other half through the integer unit
// beside them. Returns the number of rows that have been hashed.
template <size_t words, bool has_odd_bytes, bool has_stripes>
[[gnu::noinline]] size_t hash_rows_of_size(size_t size, const uint8_t* src, const int32_t* offsets,
                                           int32_t end, size_t rows, const int8_t* nulls, uint64_t* dst) {
  const size_t stripes = has_stripes ? size / kStripe : 0;
  const size_t at = stripes * kStripe, rest = size % kStripe;
  const auto last_begin = static_cast<int64_t>(end) - static_cast<int64_t>(at + kStripe);
  const I32 size_of_all = broadcast(static_cast<int32_t>(size));
  size_t i = 0;
  for (; i + kBlockRows <= rows; i += kBlockRows) {
    const int32_t* const begins = offsets + i;
    if (any_true(text_lengths(begins) != size_of_all) || begins[kBlockRows - 1] > last_begin) break;
    const FourTexts abcd = {src, begins}, efgh = {src, begins + kLanes};
    EightValues hash = {broadcast(kPrime5), kPrime5, kPrime5, kPrime5, kPrime5};
    if constexpr (has_stripes) hash = hash_stripes(abcd, efgh, stripes);
    hash = each([size](auto a) ZIVKS_INLINE_LAMBDA { return a + uint64_t{size}; }, hash);
    hash = finish<words, has_odd_bytes>(hash, abcd, efgh, at, rest);
    const int8_t* const flags = flags_unless_clean(flags_from(nulls, i));
    store_values(hash.lanes, flags, dst + i);
    if (flags == nullptr) {  // one branch for all four
      dst[i + 4] = hash.e, dst[i + 5] = hash.f, dst[i + 6] = hash.g, dst[i + 7] = hash.h;
    } else {
      store_value(hash.e, flags + 4, dst + i + 4);
      store_value(hash.f, flags + 5, dst + i + 5);
      store_value(hash.g, flags + 6, dst + i + 6);
      store_value(hash.h, flags + 7, dst + i + 7);
    }
  }
  leave_registers();
  return i;
}

// The same for rows as long as the first one, of which there is at least a block.
inline size_t hash_rows_of_one_size(const uint8_t* src, const int32_t* offsets, int32_t end, size_t rows,
                                    const int8_t* nulls, uint64_t* dst) {
  const auto size = static_cast<size_t>(text_length(offsets));
  const auto hash_rows = [=](auto words) ZIVKS_INLINE_LAMBDA {
    const auto of_kind = [=](auto has_odd_bytes, auto has_stripes) ZIVKS_INLINE_LAMBDA {
      return hash_rows_of_size<words, has_odd_bytes, has_stripes>(size, src, offsets, end, rows, nulls, dst);
    };
    constexpr std::true_type kYes;
    constexpr std::false_type kNo;
    if (size >= kStripe) return size % 8 != 0 ? of_kind(kYes, kYes) : of_kind(kNo, kYes);
    return size % 8 != 0 ? of_kind(kYes, kNo) : of_kind(kNo, kNo);
  };
  switch (size % kStripe / 8) {
    case 0: return hash_rows(std::integral_constant<size_t, 0>());
    case 1: return hash_rows(std::integral_constant<size_t, 1>());
    case 2: return hash_rows(std::integral_constant<size_t, 2>());
    default: return hash_rows(std::integral_constant<size_t, 3>());
  }
}

// --- Texts of several lengths --------------------------------------------------------------

// The hashes of texts that have `rest` bytes left, `most` at most. Each keeps its hash in the steps that it does not
// take. A stripe of each is read.
ZIVKS_INLINE U64 finish(U64 hash, FourTexts texts, I64 rest, int32_t most) {
  RegisterPair<U64> words = texts.two_words(0);
  U64 last = words.first;  // the word that a text ends in
  const auto add_word = [&](int64_t bytes, U64 word, U64 next) ZIVKS_INLINE_LAMBDA {
    const I64 has_word = rest >= bytes;
    hash = select(has_word, with_word(hash, word), hash);
    last = select(has_word, next, last);
  };
  if (most >= 8) add_word(8, words.first, words.second);
  if (most >= 16) {
    const U64 second = words.second;
    words = texts.two_words(16);
    add_word(16, second, words.first);
    if (most >= 24) add_word(24, words.first, words.second);
  }
  const I64 has_half_word = I64((rest & 4) != 0), bytes = rest & 3;
  hash = select(has_half_word, with_half_word(hash, last & UINT32_MAX), hash);
  last = select(has_half_word, last >> 32, last);
  const auto add_byte = [&](int64_t k) ZIVKS_INLINE_LAMBDA {
    hash = select(I64(bytes > k), with_byte(hash, (last >> (8 * k)) & UINT8_MAX), hash);
  };
  add_byte(0);
  add_byte(1);
  add_byte(2);
  return avalanche(hash);
}

// A block of rows of a column whose bytes end at byte `end`.
struct BlockOfTexts {
  const uint8_t* bytes;
  const int32_t* offsets;
  int32_t end;

  // Whether a stripe may be read behind the stripes of each text.
  ZIVKS_INLINE bool has_room() const {
    constexpr size_t kLast = kBlockRows - 1;
    constexpr auto kBytes = static_cast<int32_t>(kStripe);
    const int32_t in_stripes = text_length(offsets + kLast) & -kBytes;
    return int64_t{offsets[kLast]} + in_stripes + kBytes <= end && !any_true(text_lengths(offsets) < 0);
  }
  ZIVKS_INLINE bool has_one_length() const {
    return !any_true(text_lengths(offsets) != text_length(offsets));
  }

  // The hashes of the first half and of the second.
  ZIVKS_INLINE RegisterPair<U64> hash() const {
    constexpr auto kInStripe = static_cast<int32_t>(kStripe - 1);
    const I32 length = text_lengths(offsets), rest = length & kInStripe;
    RegisterPair<U64> hash = {broadcast(kPrime5), broadcast(kPrime5)};
    if (any_true(length > kInStripe)) hash = {hash_stripes_of<0>(), hash_stripes_of<kLanes>()};
    int32_t begins[kBlockRows];
    store(begins, load(offsets) + (length - rest));
    const int32_t most = reduce_maximum(rest);
    const auto finish_half = [&](U64 hashes, auto half) ZIVKS_INLINE_LAMBDA {
      return finish(hashes + U64(widen_part<int64_t, half>(length)), {bytes, begins + half * kLanes},
                    widen_part<int64_t, half>(rest), most);
    };
    return {finish_half(hash.first, std::integral_constant<size_t, 0>()),
            finish_half(hash.second, std::integral_constant<size_t, 1>())};
  }

 private:
  // Of the rows from number `first` on.
  template <size_t first>
  ZIVKS_INLINE U64 hash_stripes_of() const {
    uint64_t hash[kLanes];
    for (size_t k = 0; k < kLanes; ++k) {
      const int32_t* const begin = offsets + first + k;
      hash[k] = hash_stripes(bytes + *begin, static_cast<size_t>(text_length(begin)) / kStripe);
    }
    return load(hash);
  }
};

[[gnu::noinline]] inline void hash_block(BlockOfTexts texts, const int8_t* nulls, uint64_t* dst) {
  const auto [first, second] = texts.hash();
  const int8_t* const flags = flags_unless_clean(nulls);
  store_values(first, flags, dst);
  store_values(second, flags_from(flags, kLanes), dst + kLanes);
  leave_registers();
}

}  // namespace zivks::xxh64

#endif
