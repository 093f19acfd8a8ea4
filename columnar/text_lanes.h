// XXH64 of several texts at a time, in the lanes of registers: for registers of four 64-bit integers, where the
// vector unit multiplies these.
#ifndef ZIVKS_COLUMNAR_TEXT_LANES_H
#define ZIVKS_COLUMNAR_TEXT_LANES_H

#include "columnar/nulls.h"
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

// The end of texts that all have `rest` bytes left: `words` whole words of eight bytes, and more if they are `ragged`.
// A stripe of each is read.
template <size_t words, bool ragged>
ZIVKS_INLINE U64 add_end(U64 hash, FourTexts texts, size_t at, size_t rest) {
  U64 last = {};
  if constexpr (words < 2) {
    const auto [first, second] = texts.two_words(at);
    if constexpr (words == 1) hash = with_word(hash, first);
    last = words == 0 ? first : second;
  } else {
    const auto [first, second] = texts.two_words(at);
    const auto [third, fourth] = texts.two_words(at + 16);
    hash = with_word(with_word(hash, first), second);
    if constexpr (words == 3) hash = with_word(hash, third);
    last = words == 2 ? third : fourth;
  }
  if (ragged && (rest & 4) != 0) {
    hash = with_half_word(hash, last & UINT32_MAX);
    last = last >> 32;
  }
  if constexpr (ragged) {
    for (size_t bytes = rest & 3; bytes > 0; --bytes, last = last >> 8)
      hash = with_byte(hash, last & UINT8_MAX);
  }
  return avalanche(hash);
}
template <size_t words, bool ragged>
ZIVKS_INLINE uint64_t add_end(uint64_t hash, const uint8_t* text, size_t rest) {
  if constexpr (words > 0) {
    return add_end<words - 1, ragged>(with_word(hash, read<uint64_t>(text)), text + 8, rest);
  } else {
    return ragged ? add_end(hash, text, rest % 8) : avalanche(hash);
  }
}

// The hashes of two texts after their stripes, which go through the integer unit side by side.
ZIVKS_INLINE std::pair<uint64_t, uint64_t> add_stripes(const uint8_t* first, const uint8_t* second,
                                                       size_t stripes) {
  StripedText a, b;
  for (size_t i = 0; i < stripes; ++i) {
    a.add(first + i * kStripe);
    b.add(second + i * kStripe);
  }
  return {a.merged(), b.merged()};
}

// Hashes rows of `size` bytes each, block by block as long as there are such, and as long as a stripe may be read
// behind their stripes, which is up to byte `end`. Half of a block goes in lanes, the others through the integer unit
// beside them. Returns the number of rows that have been hashed.
template <size_t words, bool ragged, bool striped>
[[gnu::noinline]] size_t hash_rows_of_size(size_t size, const uint8_t* src, const int32_t* offsets,
                                           int32_t end, size_t rows, const int8_t* nulls, uint64_t* dst) {
  const size_t stripes = striped ? size / kStripe : 0, at = stripes * kStripe, rest = size % kStripe;
  const auto last_begin = static_cast<int64_t>(end) - static_cast<int64_t>(at + kStripe);
  const I32 same = broadcast(static_cast<int32_t>(size));
  size_t i = 0;
  for (; i + kBlockRows <= rows; i += kBlockRows) {
    const int32_t* const begins = offsets + i;
    if (any_true(load(begins + 1) - load(begins) != same) || begins[kBlockRows - 1] > last_begin) break;
    prefetch_ahead<256>(src + begins[0]);
    const FourTexts texts = {src, begins}, others = {src, begins + kLanes};
    const int8_t* const flags = nulls == nullptr || is_clean(nulls + i) ? nullptr : nulls + i;
    U64 hash = broadcast(kPrime5 + size);
    uint64_t e = kPrime5 + size, f = e, g = e, h = e;
    if constexpr (striped) {
      FourStripedTexts lanes;
      StripedText first, second;
      for (size_t stripe = 0; stripe < at; stripe += kStripe) {
        lanes.add(texts, stripe);
        first.add(others[0] + stripe);
        second.add(others[1] + stripe);
      }
      e = first.merged() + size;
      f = second.merged() + size;
      std::tie(g, h) = add_stripes(others[2], others[3], stripes);
      g += size;
      h += size;
      hash = lanes.merged() + uint64_t{size};
    }
    hash = add_end<words, ragged>(hash, texts, at, rest);
    e = add_end<words, ragged>(e, others[0] + at, rest);
    f = add_end<words, ragged>(f, others[1] + at, rest);
    g = add_end<words, ragged>(g, others[2] + at, rest);
    h = add_end<words, ragged>(h, others[3] + at, rest);
    store_values(hash, flags, dst + i);
    if (flags == nullptr) {
      dst[i + 4] = e, dst[i + 5] = f, dst[i + 6] = g, dst[i + 7] = h;
    } else {
      store_value(e, flags + 4, dst + i + 4);
      store_value(f, flags + 5, dst + i + 5);
      store_value(g, flags + 6, dst + i + 6);
      store_value(h, flags + 7, dst + i + 7);
    }
  }
  leave_registers();
  return i;
}

// --- Texts of several lengths --------------------------------------------------------------

// The end of texts of which `rest` bytes are left, `most` at most. Each keeps its hash in the steps that it does not
// take. A stripe of each is read.
ZIVKS_INLINE U64 add_ends(U64 hash, FourTexts texts, I64 rest, int32_t most) {
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

// Consecutive rows of a column that ends at byte `end`.
struct BlockOfTexts {
  const uint8_t* bytes;
  const int32_t* offsets;
  int32_t end;

  ZIVKS_INLINE I32 lengths() const { return load(offsets + 1) - load(offsets); }
  ZIVKS_INLINE int32_t length(size_t k) const { return offsets[k + 1] - offsets[k]; }
  // Whether a stripe may be read behind the stripes of each text.
  ZIVKS_INLINE bool has_room() const {
    constexpr size_t kLast = kBlockRows - 1;
    constexpr auto kBytes = static_cast<int32_t>(kStripe);
    return int64_t{offsets[kLast]} + (length(kLast) & -kBytes) + kBytes <= end && !any_true(lengths() < 0);
  }
  ZIVKS_INLINE bool is_uniform() const { return !any_true(lengths() != length(0)); }

  // The hashes of the first half and of the second.
  ZIVKS_INLINE RegisterPair<U64> hash() const {
    constexpr auto kInStripe = static_cast<int32_t>(kStripe - 1);
    const I32 length = lengths(), rest = length & kInStripe;
    RegisterPair<U64> hash = {broadcast(kPrime5), broadcast(kPrime5)};
    if (any_true(length > kInStripe)) hash = {hash_stripes<0>(), hash_stripes<kLanes>()};
    int32_t begins[kBlockRows];
    store(begins, load(offsets) + (length - rest));
    const int32_t most = reduce_maximum(rest);
    const auto add_ends_of = [&](U64 hashes, auto half) ZIVKS_INLINE_LAMBDA {
      return add_ends(hashes + U64(widen_part<int64_t, half>(length)), {bytes, begins + half * kLanes},
                      widen_part<int64_t, half>(rest), most);
    };
    return {add_ends_of(hash.first, std::integral_constant<size_t, 0>()),
            add_ends_of(hash.second, std::integral_constant<size_t, 1>())};
  }

 private:
  template <size_t from>
  ZIVKS_INLINE U64 hash_stripes() const {
    uint64_t hash[kLanes];
    for (size_t k = from; k < from + kLanes; ++k) {
      hash[k - from] = add_stripes(bytes + offsets[k], static_cast<size_t>(length(k)) / kStripe);
    }
    return load(hash);
  }
};

}  // namespace zivks::xxh64

#endif
