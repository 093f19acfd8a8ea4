#include <xxhash.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "bench/row.h"

namespace bench {
namespace {

// --- Plain loops -----------------------------------------------------------------------

constexpr uint64_t one_round(uint64_t key) {
  const uint64_t product = key * 0xC2B2AE3D27D4EB4F;
  return (product << 31 | product >> 33) * 0x9E3779B185EBCA87;
}

struct HashOfRow {
  template <class T>
  uint64_t operator()(T row) const {
    return one_round(static_cast<uint64_t>(int64_t{row}));
  }
  uint64_t operator()(double row) const {
    uint64_t bits;
    std::memcpy(&bits, &row, sizeof bits);
    return row != row ? 0xA7551CC48D5C0000 : one_round(bits);
  }
  uint64_t operator()(ZIVKDecimal128 row) const {
    const uint64_t magnitude = row.hi & ~(uint64_t{1} << 63);
    return XXH64(&row.lo, sizeof row.lo, 0) ^ XXH64(&magnitude, sizeof magnitude, 0);
  }
};
struct HashOfBool {
  uint64_t operator()(uint8_t row) const { return row != 0 ? 1231 : 1237; }
};
struct Bits {
  uint64_t operator()(int64_t row) const { return static_cast<uint64_t>(row); }
};

template <class Hash>
struct HashRows {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, const int8_t* nulls, uint64_t* dst) const {
    for (int32_t i = 0; i < len; ++i) {
      if (nulls == nullptr || nulls[i] == 0) dst[i] = Hash{}(src[i]);
    }
  }
};

struct HashTexts {
  PLAIN_LOOP void operator()(const uint8_t* src, const int32_t* offsets, int32_t len, const int8_t* nulls,
                             uint64_t* dst) const {
    for (int32_t i = 0; i < len; ++i) {
      if (nulls != nullptr && nulls[i] != 0) continue;
      dst[i] = XXH64(src + offsets[i], static_cast<std::size_t>(offsets[i + 1] - offsets[i]), 0);
    }
  }
};

struct CombineHashes {
  PLAIN_LOOP void operator()(const uint64_t* src1, const uint64_t* src2, int32_t len, uint64_t* dst) const {
    for (int32_t i = 0; i < len; ++i) dst[i] = 31 * src1[i] + src2[i];
  }
};

__extension__ typedef __int128 Int128;

Int128 integer_of(ZIVKDecimal128 row) {
  const auto magnitude = static_cast<Int128>(row.hi & ~(uint64_t{1} << 63)) << 64 | row.lo;
  return row.hi >> 63 != 0 ? -magnitude : magnitude;
}
template <class T>
T integer_of(T row) {
  return row;
}

// The first row is not null.
template <bool largest>
struct Extreme {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, const int8_t* nulls, T* dst) const {
    T best = src[0];
    for (int32_t i = 1; i < len; ++i) {
      if (nulls != nullptr && nulls[i] != 0) continue;
      const auto row = integer_of(src[i]);
      if (largest ? row > integer_of(best) : row < integer_of(best)) best = src[i];
    }
    *dst = best;
  }
};

template <bool largest>
struct ExtremeText {
  PLAIN_LOOP void operator()(const uint8_t* src, const int32_t* offsets, int32_t len, uint8_t* dst,
                             int32_t* dstLen) const {
    const uint8_t* best = src + offsets[0];
    int32_t best_length = offsets[1] - offsets[0];
    for (int32_t i = 1; i < len; ++i) {
      const uint8_t* const row = src + offsets[i];
      const int32_t length = offsets[i + 1] - offsets[i];
      const int bytes = std::memcmp(row, best, static_cast<std::size_t>(std::min(length, best_length)));
      const int order = bytes != 0 ? bytes : length - best_length;
      if (largest ? order > 0 : order < 0) {
        best = row;
        best_length = length;
      }
    }
    std::memcpy(dst, best, static_cast<std::size_t>(best_length));
    *dstLen = best_length;
  }
};

// --- Columns ---------------------------------------------------------------------------

// Flags of which one in so many is set, but not the first.
template <int one_in>
struct Flags : NoOperand {
  template <class Parameter>
  static constexpr int kBytesMoved = 1;
  template <class Parameter>
  static Parameter get(const Arrays& arrays, int32_t) {
    return static_cast<Parameter>(arrays.array(1));
  }
  template <class Parameter>
  static void fill(const Arrays& arrays, int32_t len) {
    std::mt19937 generator;
    auto* const flags = static_cast<int8_t*>(arrays.array(1));
    for (int32_t i = 0; i < len; ++i) flags[i] = i > 0 && generator() % one_in == 0;
  }
};

// Texts of letters, from `least` to `most` bytes long.
template <int least, int most>
void fill_texts(const Arrays& arrays, int32_t len) {
  std::mt19937 generator;
  auto* const offsets = static_cast<int32_t*>(arrays.array(Arrays::kWork));
  auto* const bytes = static_cast<uint8_t*>(arrays.array(0));
  offsets[0] = 0;
  for (int32_t i = 0; i < len; ++i) {
    offsets[i + 1] = offsets[i] + least + static_cast<int32_t>(generator() % (most - least + 1));
    for (int32_t k = offsets[i]; k < offsets[i + 1]; ++k)
      bytes[k] = static_cast<uint8_t>('a' + generator() % 26);
  }
}
template <int least, int most, int one_in>
void fill_texts_with_nulls(const Arrays& arrays, int32_t len) {
  fill_texts<least, most>(arrays, len);
  Flags<one_in>::template fill<const int8_t*>(arrays, len);
}

// Bytes that are all true.
void fill_true(const Arrays& arrays, int32_t len) {
  std::memset(arrays.array(0), 1, static_cast<std::size_t>(len));
}
template <int one_in>
void fill_true_with_nulls(const Arrays& arrays, int32_t len) {
  fill_true(arrays, len);
  Flags<one_in>::template fill<const int8_t*>(arrays, len);
}

template <int one_in>
inline constexpr Flags<one_in> kOneNullIn;

}  // namespace

// Without nulls, with few of them, and with many.
#define NULLABLE(function, requirement, half_null, plain, result)                                   \
  ROW(function, requirement, plain, kSrc, kLen, kNull, result),                                     \
      ROW(function, requirement, plain, kSrc, kLen, kOneNullIn<100>, result).with("1 in 100 null"), \
      ROW(function, half_null, plain, kSrc, kLen, kOneNullIn<2>, result).with("half null")
#define HASH(function, hash) NULLABLE(function, kHash, kHalfNull, HashRows<hash>, kDst)
#define HASH_TEXTS(least, most, flags, length)                                  \
  ROW(ZIVKS_Hash_varchar, kTextHash, HashTexts, kSrc, kWork, kLen, flags, kDst) \
      .filled_by(fill_texts<least, most>)                                       \
      .at(length)
#define AGGREGATE(function, largest) NULLABLE(function, kColumn, kHalfNull, Extreme<largest>, kResult)
#define AGGREGATE_BOOLS(function, largest)                                                   \
  ROW(function, kColumn, Extreme<largest>, kSrc, kLen, kNull, kResult).filled_by(fill_true), \
      ROW(function, kColumn, Extreme<largest>, kSrc, kLen, kOneNullIn<100>, kResult)         \
          .with("1 in 100 null")                                                             \
          .filled_by(fill_true_with_nulls<100>)                                              \
          .at(4000),                                                                         \
      ROW(function, kHalfNull, Extreme<largest>, kSrc, kLen, kOneNullIn<2>, kResult)         \
          .with("half null")                                                                 \
          .filled_by(fill_true_with_nulls<2>)                                                \
          .at(4000)
#define AGGREGATE_TEXTS(function, largest)                                              \
  ROW(function, kTextAggregate, ExtremeText<largest>, kSrc, kWork, kLen, kDst, kResult) \
      .with("1 to 20 bytes")                                                            \
      .filled_by(fill_texts<1, 20>)                                                     \
      .at(kCacheResident)

std::vector<Row> columnar_rows() {
  return {
      HASH(ZIVKS_Hash_16s, HashOfRow),
      HASH(ZIVKS_Hash_32s, HashOfRow),
      HASH(ZIVKS_Hash_64s, HashOfRow),
      HASH(ZIVKS_Hash_64f, HashOfRow),
      NULLABLE(ZIVKS_Hash_bool, kColumn, kHalfNull, HashRows<HashOfBool>, kDst),
      NULLABLE(ZIVKS_Hash_decimal64, kColumn, kHalfNull, HashRows<Bits>, kDst),
      NULLABLE(ZIVKS_Hash_decimal128, kDecimals, kNullDecimals, HashRows<HashOfRow>, kDst),
      ROW(ZIVKS_CombineHash, kColumn, CombineHashes, kSrc1, kSrc2, kLen, kDst),

      HASH_TEXTS(8, 8, kNull, kCacheResident).with("8 bytes"),
      HASH_TEXTS(24, 24, kNull, kCacheResident).with("24 bytes"),
      HASH_TEXTS(100, 100, kNull, kCacheResident).with("100 bytes"),
      HASH_TEXTS(0, 30, kNull, 32 << 10).with("up to 30 bytes"),
      HASH_TEXTS(0, 30, kOneNullIn<100>, 32 << 10)
          .with("up to 30 bytes, 1 in 100 null")
          .filled_by(fill_texts_with_nulls<0, 30, 100>),
      HASH_TEXTS(0, 30, kOneNullIn<2>, 32 << 10)
          .with("up to 30 bytes, half null")
          .filled_by(fill_texts_with_nulls<0, 30, 2>),

      AGGREGATE(ZIVKS_AggMax_16s, true),
      AGGREGATE(ZIVKS_AggMin_16s, false),
      AGGREGATE(ZIVKS_AggMax_32s, true),
      AGGREGATE(ZIVKS_AggMin_32s, false),
      AGGREGATE(ZIVKS_AggMax_64s, true),
      AGGREGATE(ZIVKS_AggMin_64s, false),
      AGGREGATE(ZIVKS_AggMax_64f, true),
      AGGREGATE(ZIVKS_AggMin_64f, false),
      NULLABLE(ZIVKS_AggMax_decimal128, kDecimals, kNullDecimals, Extreme<true>, kResult),
      NULLABLE(ZIVKS_AggMin_decimal128, kDecimals, kNullDecimals, Extreme<false>, kResult),
      AGGREGATE_BOOLS(ZIVKS_AggMax_bool, true),
      AGGREGATE_BOOLS(ZIVKS_AggMin_bool, false),
      AGGREGATE_TEXTS(ZIVKS_AggMax_varchar, true),
      AGGREGATE_TEXTS(ZIVKS_AggMin_varchar, false),
  };
}

}  // namespace bench
