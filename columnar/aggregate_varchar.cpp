// The largest and the smallest text of a column.
//
// Most rows are told from the best one by their first eight bytes: read as a number, the first byte highest, these
// are ordered as the bytes are. A shorter text has zeros behind it, which are below every byte that a longer one has
// there. Only where the numbers are equal are the texts compared.
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

struct Largest {
  static bool beats(uint64_t prefix, uint64_t best) { return prefix > best; }
  static bool beats(Text row, Text best) {
    if (row.length <= 0) return false;
    return best.length <= 0 || compare(row, best) > 0;
  }
};
struct Smallest {
  static bool beats(uint64_t prefix, uint64_t best) { return prefix < best; }
  static bool beats(Text row, Text best) {
    if (row.length <= 0) return row.length < best.length;
    return best.length > 0 && compare(row, best) < 0;
  }
};

// The first eight bytes as a number. Where as many can be read, those behind the text are cut off.
ZIVKS_INLINE uint64_t prefix_of(Text text, bool has_room) {
  constexpr int32_t kBytes = sizeof(uint64_t);
  uint64_t prefix = 0;
  if (has_room) {
    prefix = __builtin_bswap64(read<uint64_t>(text.bytes));
    if (text.length < kBytes) prefix = text.length <= 0 ? 0 : prefix & (~uint64_t{0} << (8 * (kBytes - text.length)));
  } else {
    for (int32_t i = 0; i < kBytes; ++i) prefix = prefix << 8 | (i < text.length ? text.bytes[i] : 0);
  }
  return prefix;
}

template <class Order>
Text best_text(const uint8_t* src, const int32_t* offsets, size_t rows) {
  constexpr int32_t kBytes = sizeof(uint64_t);
  const auto row = [=](size_t i) ZIVKS_INLINE_LAMBDA {
    return Text{src + offsets[i], static_cast<int32_t>(static_cast<uint32_t>(offsets[i + 1]) - static_cast<uint32_t>(offsets[i]))};
  };
  const int64_t last = int64_t{offsets[rows]} - kBytes;
  const auto prefix_of_row = [=](size_t i) ZIVKS_INLINE_LAMBDA { return prefix_of(row(i), offsets[i] <= last); };
  Text best = row(0);
  uint64_t best_prefix = prefix_of_row(0);
  for (size_t i = 1; i < rows; ++i) {
    prefetch_ahead<16>(src + offsets[i]);
    const uint64_t prefix = prefix_of_row(i);
    if (prefix != best_prefix ? Order::beats(prefix, best_prefix) : Order::beats(row(i), best)) {
      best = row(i);
      best_prefix = prefix;
    }
  }
  return best;
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
