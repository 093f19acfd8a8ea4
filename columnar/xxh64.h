// The steps of XXH64 with seed 0. A value is a 64-bit integer, or a register of them with a row in each lane.
#ifndef ZIVKS_COLUMNAR_XXH64_H
#define ZIVKS_COLUMNAR_XXH64_H

#include <algorithm>

#include "core/vector/register.h"

namespace zivks::xxh64 {

inline constexpr uint64_t kPrime1 = 0x9E3779B185EBCA87, kPrime2 = 0xC2B2AE3D27D4EB4F,
                          kPrime3 = 0x165667B19E3779F9, kPrime4 = 0x85EBCA77C2B2AE63,
                          kPrime5 = 0x27D4EB2F165667C5;

// Texts of this length and more go through four accumulators, so many bytes at a time.
inline constexpr size_t kStripe = 32;
inline constexpr uint64_t kFirstAccumulators[] = {kPrime1 + kPrime2, kPrime2, 0, 0 - kPrime1};

ZIVKS_INLINE uint64_t times(uint64_t a, uint64_t prime) { return a * prime; }
ZIVKS_INLINE uint64_t half_times(uint64_t a, uint64_t prime) { return a * prime; }  // for a less than 2^32
template <class Register>
ZIVKS_INLINE Register times(Register a, uint64_t prime) {
  return multiply(a, broadcast(prime));
}
template <class Register>
ZIVKS_INLINE Register half_times(Register a, uint64_t prime) {
  return multiply_half(a, broadcast(prime));
}

template <class Value>
ZIVKS_INLINE Value rotate_left(Value a, int bits) {
  return (a << bits) | (a >> (64 - bits));
}

// An accumulator with one more word.
template <class Value>
ZIVKS_INLINE Value accumulate(Value accumulator, Value word) {
  return times(rotate_left(accumulator + times(word, kPrime2), 31), kPrime1);
}
// The same with an accumulator of 0.
template <class Value>
ZIVKS_INLINE Value one_round(Value word) {
  return times(rotate_left(times(word, kPrime2), 31), kPrime1);
}
template <class Value>
ZIVKS_INLINE Value merge(Value hash, Value accumulator) {
  return times(hash ^ one_round(accumulator), kPrime1) + kPrime4;
}
template <class Value>
ZIVKS_INLINE Value merge_accumulators(Value a, Value b, Value c, Value d) {
  const Value sum = rotate_left(a, 1) + rotate_left(b, 7) + rotate_left(c, 12) + rotate_left(d, 18);
  return merge(merge(merge(merge(sum, a), b), c), d);
}

// What is left of a text behind its stripes: words of eight bytes, one of four bytes, bytes.
template <class Value>
ZIVKS_INLINE Value with_word(Value hash, Value word) {
  return times(rotate_left(hash ^ one_round(word), 27), kPrime1) + kPrime4;
}
template <class Value>
ZIVKS_INLINE Value with_half_word(Value hash, Value half_word) {
  return times(rotate_left(hash ^ half_times(half_word, kPrime1), 23), kPrime2) + kPrime3;
}
template <class Value>
ZIVKS_INLINE Value with_byte(Value hash, Value byte) {
  return times(rotate_left(hash ^ half_times(byte, kPrime5), 11), kPrime1);
}

template <class Value>
ZIVKS_INLINE Value avalanche(Value hash) {
  hash = times(hash ^ (hash >> 33), kPrime2);
  hash = times(hash ^ (hash >> 29), kPrime3);
  return hash ^ (hash >> 32);
}

// The hash of a text of eight bytes.
template <class Value>
ZIVKS_INLINE Value hash_word(Value word) {
  return avalanche(with_word(Value{} + (kPrime5 + sizeof(uint64_t)), word));
}

// --- One text, in integers -------------------------------------------------------------

struct StripedText {
  uint64_t a = kFirstAccumulators[0], b = kFirstAccumulators[1], c = kFirstAccumulators[2],
           d = kFirstAccumulators[3];

  ZIVKS_INLINE void add(const uint8_t* stripe) {
    a = accumulate(a, read<uint64_t>(stripe));
    b = accumulate(b, read<uint64_t>(stripe + 8));
    c = accumulate(c, read<uint64_t>(stripe + 16));
    d = accumulate(d, read<uint64_t>(stripe + 24));
  }
  ZIVKS_INLINE uint64_t merged() const { return merge_accumulators(a, b, c, d); }
};

// The hash of a text's stripes; its length is added to it. Without stripes it is a constant.
ZIVKS_INLINE uint64_t hash_stripes(const uint8_t* text, size_t stripes) {
  if (stripes == 0) return kPrime5;
  StripedText striped;
  for (size_t i = 0; i < stripes; ++i) striped.add(text + i * kStripe);
  return striped.merged();
}

// The hash of a text from that of its stripes and its length, and from what is left behind the stripes.
ZIVKS_INLINE uint64_t finish(uint64_t hash, const uint8_t* text, size_t bytes) {
  for (; bytes >= 8; bytes -= 8, text += 8) hash = with_word(hash, read<uint64_t>(text));
  if (bytes >= 4) {
    hash = with_half_word(hash, uint64_t{read<uint32_t>(text)});
    bytes -= 4;
    text += 4;
  }
  for (; bytes > 0; --bytes, ++text) hash = with_byte(hash, uint64_t{*text});
  return avalanche(hash);
}

// A text of less than no bytes, where offsets fall, is not read.
ZIVKS_INLINE uint64_t hash_text(const uint8_t* text, int32_t length) {
  uint64_t hash = kPrime5;
  auto bytes = static_cast<size_t>(std::max(length, 0));
  if (bytes >= kStripe) {
    hash = hash_stripes(text, bytes / kStripe);
    text += bytes / kStripe * kStripe;
    bytes %= kStripe;
  }
  return finish(hash + static_cast<uint64_t>(int64_t{length}), text, bytes);
}

}  // namespace zivks::xxh64

#endif
