// Hashes of rows of fixed width.
#include <zivks/columnar.h>
#include <zivks/movement.h>

#include "columnar/column.h"
#include "columnar/xxh64.h"
#include "core/checks.h"

using namespace zivks;

namespace {

// --- Hashes that multiply --------------------------------------------------------------

// Such a hash is a class with a pointer to its column. at<uint64_t>(i) is the hash of row i; at<U64>(i) are the hashes
// of rows i, i + 1 and so on, one in each lane.
//
// Two multiplications of 64 bits take two cycles a row. Where the vector unit multiplies beside the integer unit, it
// takes half of the rows. x86-64 has no such vector instruction before AVX-512, and still vectors take .8 of the time
// of integers, and both together .6. On Arm integers alone are fastest.
inline constexpr size_t kVectorRows = kMultipliesBesideIntegers ? kRegisterElements<uint64_t> : 0;

// The hashes of a block of rows. A block is loaded before any of its hashes is stored.
template <class Hash>
struct HashedBlock {
  U64 first;  // of kVectorRows rows
  uint64_t rest[kBlockRows - kVectorRows];

  ZIVKS_INLINE static HashedBlock of(const Hash& hash, size_t i) { return of(hash, i, kRest); }
  // Stores the hashes of rows that are not null; a null pointer: of all.
  ZIVKS_INLINE void store(const int8_t* nulls, uint64_t* dst) const {
    if constexpr (kVectorRows > 0) store_values(first, nulls, dst);
    store_rest(nulls, dst, kRest);
  }

 private:
  static constexpr auto kRest = std::make_index_sequence<kBlockRows - kVectorRows>();

  template <size_t... K>
  ZIVKS_INLINE void store_rest(const int8_t* nulls, uint64_t* dst, std::index_sequence<K...>) const {
    (store_value(rest[K], flags_from(nulls, kVectorRows + K), dst + kVectorRows + K), ...);
  }
  template <size_t... K>
  ZIVKS_INLINE static HashedBlock of(const Hash& hash, size_t i, std::index_sequence<K...>) {
    U64 first = {};
    if constexpr (kVectorRows > 0) first = hash.template at<U64>(i);
    return {first, {hash.template at<uint64_t>(i + kVectorRows + K)...}};
  }
};

template <size_t distance, class Hash>
ZIVKS_INLINE ZIVKStatus hash_rows(Hash hash, size_t len, const int8_t* nulls, uint64_t* dst) {
  const size_t blocks = len & ~(kBlockRows - 1);
  if (nulls == nullptr) {
    for (size_t i = 0; i < blocks; i += kBlockRows) HashedBlock<Hash>::of(hash, i).store(nullptr, dst + i);
    for (size_t i = blocks; i < len; ++i) dst[i] = hash.template at<uint64_t>(i);
  } else {
    const bool is_long = reads_ahead(len * sizeof *dst);  // what null rows keep is read
    for (size_t i = 0; i < blocks; i += kBlockRows) {
      prefetch_ahead<distance>(hash.src + i);
      if (is_long) read_ahead<kBlockRows * sizeof *dst>(dst + i);
      const auto block = HashedBlock<Hash>::of(hash, i);
      if (const int8_t* const flags = flags_unless_clean(nulls + i)) {
        block.store(flags, dst + i);
      } else {
        block.store(nullptr, dst + i);  // of which the compiler knows that no row needs a test
      }
    }
    for (size_t i = blocks; i < len; ++i) {
      store_value(hash.template at<uint64_t>(i), nulls + i, dst + i);
    }
  }
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

// One round of XXH64 on the number, extended to 64 bits.
template <class T>
struct RoundOfNumber {
  const T* src;

  template <class Value>
  ZIVKS_INLINE Value at(size_t i) const {
    return xxh64::one_round(key<Value>(i));
  }

 private:
  template <class Value>
  ZIVKS_INLINE Value key(size_t i) const {
    if constexpr (std::is_same_v<Value, uint64_t>) {
      return kept_in_integer_unit(static_cast<uint64_t>(int64_t{src[i]}));
    } else if constexpr (sizeof(T) == sizeof(uint64_t)) {
      return U64(load(src + i));
    } else {
      return U64(widen<int64_t>(Array<const T>{src}.template load<kRegisterElements<uint64_t>>(i)).part[0]);
    }
  }
};

// One round of XXH64 on the bits of the number. All NaNs count as 0x7FF8000000000000.
struct RoundOfBits {
  const double* src;

  template <class Value>
  ZIVKS_INLINE Value at(size_t i) const {
    constexpr uint64_t kNan = 0x7FF8000000000000,
                       kTwiceInfinity = 0xFFE0000000000000;  // doubled, bits have lost their sign
    if constexpr (std::is_same_v<Value, uint64_t>) {
      const auto bits = kept_in_integer_unit(read<uint64_t>(src + i));
      return xxh64::one_round(2 * bits > kTwiceInfinity ? kNan : bits);
    } else {
      const F64 x = load(src + i);
      return xxh64::one_round(select(I64(x == x), U64(x), broadcast(kNan)));
    }
  }
};

// XXH64 of the words of a decimal, without its sign.
struct HashOfDecimal {
  const ZIVKDecimal128* src;

  template <class Value>
  ZIVKS_INLINE Value at(size_t i) const {
    constexpr uint64_t kMagnitude = INT64_MAX;
    if constexpr (std::is_same_v<Value, uint64_t>) {
      return xxh64::hash_word(kept_in_integer_unit(src[i].lo)) ^
             xxh64::hash_word(kept_in_integer_unit(src[i].hi & kMagnitude));
    } else {
      const auto [lo, hi] = load_deinterleaved(&src[i].lo);
      return xxh64::hash_word(lo) ^ xxh64::hash_word(hi & kMagnitude);
    }
  }
};

template <size_t distance, class Hash, class T>
ZIVKS_INLINE ZIVKStatus hash_column(const T* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return hash_rows<distance>(Hash{src}, static_cast<size_t>(len), nulls, dst);
}

// --- Hashes without multiplication ----------------------------------------------------------------

// What `kernel` makes of the rows that are not null.
template <class Source, class Kernel>
ZIVKS_INLINE ZIVKStatus map_values(Source src, size_t len, const int8_t* nulls, uint64_t* dst,
                                   const Kernel& kernel) {
  return map(
      dst, len,
      [kernel](auto row, auto flags, auto old)
          ZIVKS_INLINE_LAMBDA { return value_or(flags, kernel(row), old); },
      src, nulls, const_cast<const uint64_t*>(dst));
}

// 1237 for false, 1231 for true, which differ in their lower bytes.
inline constexpr auto hash_bool = [](auto rows) ZIVKS_INLINE_LAMBDA {
  constexpr int kTrue = 1231, kUpper = kTrue & ~0xFF, kLower = kTrue & 0xFF;
  const auto lower = lift<uint8_t>([](U8 row) { return (U8(row == 0) & 6) + uint8_t{kLower}; }, rows);
  return lift<uint64_t>([](U64 row) { return row + uint64_t{kUpper}; }, widen<uint64_t>(lower));
};

}  // namespace

ZIVKStatus ZIVKS_Hash_16s(const int16_t* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  return hash_column<0, RoundOfNumber<int16_t>>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_Hash_32s(const int32_t* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  return hash_column<0, RoundOfNumber<int32_t>>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_Hash_64s(const int64_t* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  return hash_column<0, RoundOfNumber<int64_t>>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_Hash_64f(const double* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  return hash_column<0, RoundOfBits>(src, len, nulls, dst);
}
ZIVKStatus ZIVKS_Hash_decimal128(const ZIVKDecimal128* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  return hash_column<4096, HashOfDecimal>(src, len, nulls, dst);
}

ZIVKStatus ZIVKS_Hash_decimal64(const int64_t* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  if (nulls == nullptr) return ZIVKS_Copy_64s(src, reinterpret_cast<int64_t*>(dst), len);
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return map_values(prefetched<2048>(reinterpret_cast<const uint64_t*>(src)), static_cast<size_t>(len), nulls,
                    dst, unchanged);
}

ZIVKStatus ZIVKS_Hash_bool(const uint8_t* src, int32_t len, const int8_t* nulls, uint64_t* dst) {
  if (nulls == nullptr) return map_arrays(dst, len, hash_bool, src);
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return map_values(prefetched<256>(src), static_cast<size_t>(len), nulls, dst, hash_bool);
}

ZIVKStatus ZIVKS_CombineHash(const uint64_t* src1, const uint64_t* src2, int32_t len, uint64_t* dst) {
  if (ZIVKStatus status = check_arrays(len, src1, src2, dst)) return status;
  return map_registers<uint64_t>(
      dst, static_cast<size_t>(len), [](U64 a, U64 b) { return (a << 5) - a + b; }, prefetched<2048>(src1),
      prefetched<2048>(src2));
}
