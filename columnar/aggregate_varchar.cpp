// The largest and the smallest text of a column.
//
// Most rows are told from the best one by their first eight bytes: read as a number, the first byte highest, these
// are ordered as the bytes are. A shorter text has zeros behind it, which are not above any byte that a longer one has
// there. Only rows that win by this number, or that have the same, are compared.
#include <zivks/columnar.h>
#include <zivks/movement.h>

#include <algorithm>
#include <cstring>

#include "columnar/column.h"
#include "core/checks.h"

using namespace zivks;

namespace {

struct Text {
  const uint8_t* bytes;
  int32_t length;  // may be negative, where offsets fall
};

// The order of texts that have bytes: negative if `a` is the smaller one, 0 if they are equal.
int compare(Text a, Text b) {
  const int order = std::memcmp(a.bytes, b.bytes, static_cast<size_t>(std::min(a.length, b.length)));
  return order != 0 ? order : (a.length > b.length) - (a.length < b.length);
}

// A row beats the best one only if its prefix may_beat() the other.
struct Largest {
  static bool may_beat(uint64_t prefix, uint64_t best) { return prefix >= best; }
  static bool beats(Text row, Text best) {
    return row.length > 0 && (best.length <= 0 || compare(row, best) > 0);
  }
  static bool only_falling_offsets_beat(Text) { return false; }
};
struct Smallest {
  static bool may_beat(uint64_t prefix, uint64_t best) { return prefix <= best; }
  static bool beats(Text row, Text best) {  // `best` has bytes
    return row.length <= 0 || compare(row, best) < 0;
  }
  // Whether no text with bytes beats this one.
  static bool only_falling_offsets_beat(Text best) { return best.length <= 0; }
};

// kTopBytes[n] keeps the upper n bytes of a word.
constexpr uint64_t kTopBytes[] = {0,
                                  0xFF00000000000000,
                                  0xFFFF000000000000,
                                  0xFFFFFF0000000000,
                                  0xFFFFFFFF00000000,
                                  0xFFFFFFFFFF000000,
                                  0xFFFFFFFFFFFF0000,
                                  0xFFFFFFFFFFFFFF00,
                                  0xFFFFFFFFFFFFFFFF};

// The first eight bytes as a number. Where as many can be read, those behind the text are cut off, without a branch on
// its length.
ZIVKS_INLINE uint64_t prefix_of(Text text, bool has_room) {
  constexpr int32_t kBytes = sizeof(uint64_t);
  const int32_t length = std::min(std::max(text.length, 0), kBytes);
  if (has_room) return __builtin_bswap64(read<uint64_t>(text.bytes)) & kTopBytes[length];
  uint64_t prefix = 0;
  for (int32_t i = 0; i < kBytes; ++i) prefix = prefix << 8 | (i < length ? text.bytes[i] : 0);
  return prefix;
}

template <class Order>
Text best_text(const uint8_t* src, const int32_t* offsets, size_t rows) {
  const int64_t last_word = int64_t{offsets[rows]} - int64_t{sizeof(uint64_t)};
  const auto text_at = [=](size_t i) ZIVKS_INLINE_LAMBDA {
    return Text{src + offsets[i], text_length(offsets + i)};
  };
  const auto prefix_at = [=](size_t i)
                             ZIVKS_INLINE_LAMBDA { return prefix_of(text_at(i), offsets[i] <= last_word); };
  Text best = text_at(0);
  uint64_t best_prefix = prefix_at(0);
  size_t i = 1;
  for (; i < rows && !Order::only_falling_offsets_beat(best); ++i) {
    prefetch_ahead<16>(src + offsets[i]);
    const uint64_t prefix = prefix_at(i);
    if (Order::may_beat(prefix, best_prefix) && Order::beats(text_at(i), best)) {
      best = text_at(i);
      best_prefix = prefix;
    }
  }
  // Behind an empty text only those count whose offsets fall.
  for (; i < rows; ++i) {
    if (text_at(i).length < best.length) best = text_at(i);
  }
  return best;
}

// ZIVKS_Copy_8u() refuses a text without bytes; its status is not passed on.
template <class Order>
ZIVKStatus find_text(const uint8_t* src, const int32_t* offsets, int32_t len, uint8_t* dst, int32_t* dstLen) {
  if (ZIVKStatus status = check_arrays(len, src, offsets, dst, dstLen)) return status;
  const Text best = best_text<Order>(src, offsets, static_cast<size_t>(len));
  *dstLen = best.length;
  ZIVKS_Copy_8u(best.bytes, dst, best.length);
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_AggMax_varchar(const uint8_t* src, const int32_t* offsets, int32_t len, uint8_t* dst,
                                int32_t* dstLen) {
  return find_text<Largest>(src, offsets, len, dst, dstLen);
}
ZIVKStatus ZIVKS_AggMin_varchar(const uint8_t* src, const int32_t* offsets, int32_t len, uint8_t* dst,
                                int32_t* dstLen) {
  return find_text<Smallest>(src, offsets, len, dst, dstLen);
}
