// The largest and the smallest text of a column.
//
// Most rows are told from the best one by their first eight bytes: read as a number, the first byte highest, these
// are ordered as the bytes are. A shorter text has zeros behind it, which are not above any byte that a longer one has
// there. Only rows that win by this number, or that have the same, are compared.
#include <zivks/columnar.h>
#include <zivks/movement.h>

#include <algorithm>
#include <cstring>

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

// A text, and its first eight bytes as a number.
struct Row {
  Text text;
  uint64_t prefix;
};

// may_beat() lets through all rows that beat the best one, and of the others those that the prefix does not tell from
// it. It has no branches, since all that it asks but the last comparison depends on lengths.
struct Largest {
  ZIVKS_INLINE static bool may_beat(Row row, Row best) {
    return (row.text.length > 0) & (row.prefix >= best.prefix);
  }
  static bool beats(Text row, Text best) { return best.length <= 0 || compare(row, best) > 0; }
};
struct Smallest {
  ZIVKS_INLINE static bool may_beat(Row row, Row best) {
    const int32_t length = row.text.length, best_length = best.text.length;
    return ((length > 0) & (best_length > 0) & (row.prefix <= best.prefix)) |
           ((length <= 0) & (length < best_length));
  }
  static bool beats(Text row, Text best) { return row.length <= 0 || compare(row, best) < 0; }
};

// By the number of bytes, those at the top of a word.
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
  const auto row_at = [=](size_t i) ZIVKS_INLINE_LAMBDA {
    const Text text = {src + offsets[i], offsets[i + 1] - offsets[i]};
    return Row{text, prefix_of(text, offsets[i] <= last_word)};
  };
  Row best = row_at(0);
  for (size_t i = 1; i < rows; ++i) {
    prefetch_ahead<16>(src + offsets[i]);
    const Row row = row_at(i);
    if (Order::may_beat(row, best) && Order::beats(row.text, best.text)) best = row;
  }
  return best.text;
}

// A text without bytes is not copied: ZIVKS_Copy_8u() refuses it.
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
