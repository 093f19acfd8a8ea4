// Radix sorts of positions.
//
// Keys become unsigned integers in the order of their values and go through the passes along with their
// positions. These records take turns between two places: one holds key and position side by side, in the
// other the positions stand in the caller's array, which the last pass fills with the result.
#include <zivks/sort_radix.h>

#include <algorithm>

#include "core/checks.h"
#include "sort/radix_handle.h"
#include "sort/radix_passes.h"

using namespace zivks;

namespace {

template <class Key>
inline constexpr Key kTopBit = static_cast<Key>(Key{1} << (8 * sizeof(Key) - 1));

// A key's bits as an unsigned integer that is ordered like the values.
template <Numbers numbers, class Key>
ZIVKS_INLINE Key ordered(Key bits) {
  if constexpr (numbers == Numbers::kUnsigned) return bits;
  if constexpr (numbers == Numbers::kSigned) return bits ^ kTopBit<Key>;
  const Key sign_in_all_bits = static_cast<Key>(0 - (bits >> (8 * sizeof(Key) - 1)));
  return bits ^ (sign_in_all_bits | kTopBit<Key>);
}

// The caller's keys, `stride` bytes from one to the next.
template <class Key>
struct StridedKeys {
  const std::byte* first;
  std::ptrdiff_t stride;

  ZIVKS_INLINE Key bits_at(std::ptrdiff_t i) const { return read<Key>(first + i * stride); }
};

// A key, ordered by its value, and where it came from.
template <class Key>
struct Record {
  Key key;
  int32_t position;
};
template <class Key>
ZIVKS_INLINE Key key_of(Record<Key> record) {
  return record.key;
}

// The records that the caller's keys make in their own order.
template <Numbers numbers, class UnsignedKey>
struct InitialRecords {
  using Key = UnsignedKey;
  StridedKeys<Key> keys;

  ZIVKS_INLINE Record<Key> load(size_t i) const {
    return {ordered<numbers>(keys.bits_at(static_cast<std::ptrdiff_t>(i))), static_cast<int32_t>(i)};
  }
  ZIVKS_INLINE void hint_read(size_t i) const {
    const auto distance = static_cast<uintptr_t>(keys.stride) * i;
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(keys.first) + distance));
  }
};

// Of records only the positions, as the result.
struct Positions {
  int32_t* positions;

  template <class Key>
  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    positions[i] = record.position;
  }
  ZIVKS_INLINE void hint_write(size_t i) const {
    __builtin_prefetch(
        reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(positions) + i * sizeof(int32_t)), 1);
  }
};

// --- Up to 65536 keys ------------------------------------------------------------------
//
// Positions have 16 bits, as many as two digits. The first pass puts out positions alone, and the second
// fetches the keys anew; at this length they are still in the caches. From then on the position takes the
// place of the two digits that are done, so that a record is not longer than a key.

inline constexpr int32_t kMostShortPositions = int32_t{64} << 10;
inline constexpr size_t kShortPositionMask = 0xFFFF;

// Records in the order of positions.
template <Numbers numbers, class UnsignedKey>
struct FetchedRecords {
  InitialRecords<numbers, UnsignedKey> initial;
  const int32_t* positions;

  ZIVKS_INLINE Record<UnsignedKey> load(size_t i) const {
    return initial.load(static_cast<size_t>(positions[i]));
  }
};

// Records whose key has its position in the lowest 16 bits.
template <class UnsignedKey>
struct ShortRecords {
  using Key = UnsignedKey;
  Keys<Key> keys;

  ZIVKS_INLINE Record<Key> load(size_t i) const {
    const Key key = keys.load(i);
    return {key, static_cast<int32_t>(key & kShortPositionMask)};
  }
  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    constexpr Key kMask = static_cast<Key>(kShortPositionMask);
    keys.store(i, static_cast<Key>((record.key & ~kMask) | static_cast<Key>(record.position)));
  }
};

// `first` and `second` have room for all keys. Those of `initial` may stand in `second`.
template <Numbers numbers, class Key>
[[gnu::noinline]] void sort_short(InitialRecords<numbers, Key> initial, int32_t* dstIdx, size_t len,
                                  std::byte* first, std::byte* second, DigitOrder order) {
  constexpr size_t kTop = sizeof(Key) - 1;
  Counts counts[sizeof(Key)];
  count_digits<sizeof(Key)>(initial, len, counts, Positions{dstIdx});
  const auto pass = [&](auto from, auto to, size_t digit) {
    Places places(counts[digit], order);
    scatter(from, to, len, digit, places);
  };
  const FetchedRecords<numbers, Key> fetched = {initial, dstIdx};
  pass(initial, Positions{dstIdx}, 0);
  ShortRecords<Key> from = {{first}}, to = {{second}};
  pass(fetched, from, 1);
  for (size_t digit = 2; digit < kTop; ++digit) {
    pass(from, to, digit);
    std::swap(from, to);
  }
  pass(from, Positions{dstIdx}, kTop);
}

// --- More keys of 32 and 64 bits -------------------------------------------------------

// Records of a key and a position without a gap, at any address.
template <class UnsignedKey>
struct PackedRecords {
  using Key = UnsignedKey;
  static constexpr size_t kBytes = sizeof(Key) + sizeof(int32_t);
  static constexpr size_t kPerLine = kCacheLineBytes / kBytes;
  std::byte* memory;

  ZIVKS_INLINE Record<Key> load(size_t i) const {
    const std::byte* const record = memory + i * kBytes;
    return {read<Key>(record), read<int32_t>(record + sizeof(Key))};
  }
  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    write(memory + i * kBytes, record.key);
    write(memory + i * kBytes + sizeof(Key), record.position);
  }
  ZIVKS_INLINE void hint_read(size_t i) const { __builtin_prefetch(address(i)); }
  ZIVKS_INLINE void hint_write(size_t i) const { __builtin_prefetch(address(i), 1); }
  ZIVKS_INLINE const void* address(size_t i) const {
    return reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(memory) + i * kBytes);
  }
  ZIVKS_INLINE PackedRecords from(size_t i) const { return {memory + i * kBytes}; }
};

// Records whose keys and positions stand in arrays of their own.
template <class UnsignedKey>
struct SplitRecords {
  using Key = UnsignedKey;
  static constexpr size_t kPerLine = Keys<Key>::kPerLine;
  Keys<Key> keys;
  int32_t* positions;

  ZIVKS_INLINE Record<Key> load(size_t i) const { return {keys.load(i), positions[i]}; }
  ZIVKS_INLINE void store(size_t i, Record<Key> record) const {
    keys.store(i, record.key);
    positions[i] = record.position;
  }
  ZIVKS_INLINE void hint_read(size_t i) const { keys.hint_read(i); }
  ZIVKS_INLINE void hint_write(size_t i) const { keys.hint_write(i); }
  ZIVKS_INLINE SplitRecords from(size_t i) const { return {keys.from(i), positions + i}; }
};

// The two places of records, which hold them in turn.
template <class Key>
struct Records {
  PackedRecords<Key> packed;
  SplitRecords<Key> split;
  bool are_packed;

  ZIVKS_INLINE Records from(size_t i) const { return {packed.from(i), split.from(i), are_packed}; }
};

// One pass, from where the records are to the other place. The last one puts out positions alone; the number
// of passes is even, so that it finds the records packed.
template <bool beyond_caches, class Key>
[[gnu::noinline]] void pass(Records<Key> records, size_t len, size_t digit, bool is_last,
                            const Counts& counts, DigitOrder order) {
  Places places(counts, order);
  if (is_last) {
    scatter(records.packed, Positions{records.split.positions}, len, digit, places);
  } else if (records.are_packed) {
    scatter<beyond_caches>(records.packed, records.split, len, digit, places);
  } else {
    scatter<beyond_caches>(records.split, records.packed, len, digit, places);
  }
}

// Passes for all digits that remain, lowest first.
template <class Key>
[[gnu::noinline]] void sort_lowest_digit_first(Records<Key> records, size_t len, Digits remaining,
                                               DigitOrder order) {
  Counts counts[sizeof(Key)];
  if (records.are_packed) {
    count_digits<sizeof(Key)>(records.packed, len, counts, records.split);
  } else {
    count_digits<sizeof(Key)>(records.split, len, counts, records.packed);
  }
  for (size_t digit = 0; digit < sizeof(Key); ++digit) {
    if (!holds(remaining, digit)) continue;
    pass<false>(records, len, digit, remaining >> digit == 1, counts[digit], order);
    records.are_packed = !records.are_packed;
  }
}

template <class Key>
void sort_pieces(Records<Key> records, const Counts& counts, Digits remaining, DigitOrder order);

// Sorts by the digits that remain. In all others the keys are equal.
template <class Key>
[[gnu::noinline]] void sort_digits(Records<Key> records, size_t len, Digits remaining, DigitOrder order) {
  constexpr size_t kMost = kSplitBeyondBytes / PackedRecords<Key>::kBytes;
  const bool is_last = (remaining & (remaining - 1)) == 0;
  if (len <= kMost || is_last) return sort_lowest_digit_first(records, len, remaining, order);
  Counts counts;
  const size_t leading = records.are_packed ? count_leading_digit(records.packed, len, remaining, counts)
                                            : count_leading_digit(records.split, len, remaining, counts);
  if (leading == sizeof(Key)) {  // any pieces will do
    for (size_t i = 0; i < len; i += kMost) {
      sort_lowest_digit_first(records.from(i), std::min(kMost, len - i), remaining, order);
    }
    return;
  }
  pass<true>(records, len, leading, false, counts, order);
  records.are_packed = !records.are_packed;
  remaining &= ~(Digits{1} << leading);
  sort_pieces(records, counts, remaining, order);
}

// Sorts by the digits that remain what a pass has taken apart.
template <class Key>
void sort_pieces(Records<Key> records, const Counts& counts, Digits remaining, DigitOrder order) {
  size_t begin = 0;
  for (size_t place = 0; place < kDigitValues; ++place) {
    const size_t count = counts[order.value_at(place)];
    if (count == 0) continue;
    sort_digits(records.from(begin), count, remaining, order);
    begin += count;
  }
}

template <Numbers numbers, class Key>
[[gnu::noinline]] void first_pass(InitialRecords<numbers, Key> from, PackedRecords<Key> to, size_t len,
                                  size_t digit, const Counts& counts, DigitOrder order) {
  Places places(counts, order);
  scatter<true>(from, to, len, digit, places);
}

template <class T>
ZIVKS_INLINE ZIVKStatus check(const T* src, int32_t srcStride, int32_t* dstIdx, int32_t len, void* policy) {
  if (ZIVKStatus status = check_arrays(len, src, dstIdx, policy)) return status;
  return srcStride < int32_t{sizeof(T)} ? ZIVK_STS_SIZE_ERR : ZIVK_STS_NO_ERR;
}

// Keys that are not neighbours are gathered first, so that they are read once.
template <Numbers numbers, class Key>
InitialRecords<numbers, Key> gather(StridedKeys<Key> keys, size_t len, Keys<Key> gathered) {
  if (keys.stride == sizeof(Key)) return {keys};
  for (size_t i = 0; i < len; ++i) gathered.store(i, keys.bits_at(static_cast<std::ptrdiff_t>(i)));
  return {{gathered.memory, sizeof(Key)}};
}

template <Numbers numbers, class T>
ZIVKStatus sort_index(const T* src, int32_t srcStride, int32_t* dstIdx, int32_t len, void* policy,
                      DigitOrder order) {
  if (ZIVKStatus status = check(src, srcStride, dstIdx, len, policy)) return status;
  using Key = UnsignedOf<sizeof(T)>;
  constexpr size_t kTop = sizeof(Key) - 1;
  const auto count = static_cast<size_t>(len);
  const StridedKeys<Key> keys = {reinterpret_cast<const std::byte*>(src), srcStride};
  auto* const handle = static_cast<std::byte*>(policy);
  if (len <= kMostShortPositions) {
    const Keys<Key> second = {handle + count * sizeof(Key)};
    sort_short(gather<numbers>(keys, count, second), dstIdx, count, handle, second.memory, order);
    return ZIVK_STS_NO_ERR;
  }
  const Records<Key> records = {{handle}, {{handle + count * PackedRecords<Key>::kBytes}, dstIdx}, true};
  const auto initial = gather<numbers>(keys, count, records.split.keys);
  Counts counts;
  const size_t found = count_leading_digit(initial, count, kAllDigits<Key>, counts);
  const size_t leading = std::min(found, kTop);
  first_pass(initial, records.packed, count, leading, counts, order);
  sort_pieces(records, counts, kAllDigits<Key> & ~(Digits{1} << leading), order);
  return ZIVK_STS_NO_ERR;
}

// --- Keys of 8 and 16 bits -------------------------------------------------------------

// Makes of the number of keys with each value the place behind the last of them, then puts out the positions from
// the last key to the first. The way back begins at an offset that is computed in 32 bits, so that over a span of
// 2^31 bytes and more it meets other keys than those that were counted.
template <Numbers numbers, class Key>
[[gnu::noinline]] void put_out_backward(StridedKeys<Key> keys, int32_t* dstIdx, int32_t len,
                                        uint32_t* counters, DigitOrder order) {
  constexpr size_t kValues = size_t{1} << (8 * sizeof(Key)), N = kRegisterElements<uint32_t>;
  const bool falls = order.low == kFalling.low;
  U32 before = {};
  for (size_t place = 0; place < kValues; place += N) {
    uint32_t* const group = counters + (falls ? kValues - N - place : place);
    const U32 loaded = load(group);
    const U32 end = before + running_sum(falls ? reverse(loaded) : loaded);
    store(group, falls ? reverse(end) : end);
    before = broadcast<uint32_t>(end[N - 1]);
  }
  const auto start =
      static_cast<int32_t>(static_cast<uint32_t>(len - 1) * static_cast<uint32_t>(keys.stride));
  const StridedKeys<Key> back = {keys.first + start, -keys.stride};
  for (int32_t i = len - 1; i >= 0; --i) {
    const Key key = ordered<numbers>(back.bits_at(len - 1 - i));
    dstIdx[static_cast<int32_t>(--counters[key])] = i;
  }
}

bool spans_32_bits(int32_t len, int32_t stride) {
  return int64_t{len - 1} * stride > std::numeric_limits<int32_t>::max();
}

ZIVKStatus sort_index_8u(const uint8_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len, void* policy,
                         DigitOrder order) {
  if (ZIVKStatus status = check(src, srcStride, dstIdx, len, policy)) return status;
  const StridedKeys<uint8_t> keys = {reinterpret_cast<const std::byte*>(src), srcStride};
  Counts counts;
  count_digit(InitialRecords<Numbers::kUnsigned, uint8_t>{keys}, static_cast<size_t>(len), 0, counts);
  put_out_backward<Numbers::kUnsigned>(keys, dstIdx, len, counts, order);
  return ZIVK_STS_NO_ERR;
}

// Up to this many keys of 16 bits make two passes. In longer arrays a counter for every value is better: their
// number matters less, and passes over keys that are sorted already write to 256 places at distances that share
// few lines of a cache.
constexpr int32_t kMostForPasses = int32_t{12} << 10;

template <Numbers numbers, class T>
ZIVKStatus sort_index_16(const T* src, int32_t srcStride, int32_t* dstIdx, int32_t len, void* policy,
                         DigitOrder order) {
  if (ZIVKStatus status = check(src, srcStride, dstIdx, len, policy)) return status;
  const StridedKeys<uint16_t> keys = {reinterpret_cast<const std::byte*>(src), srcStride};
  const auto count = static_cast<size_t>(len);
  const InitialRecords<numbers, uint16_t> initial = {keys};
  if (len > kMostForPasses || spans_32_bits(len, srcStride)) {
    auto* const counters = static_cast<uint32_t*>(policy);
    std::memset(counters, 0, kHandleBytes16);
    for (size_t i = 0; i < count; ++i) ++counters[initial.load(i).key];
    put_out_backward<numbers>(keys, dstIdx, len, counters, order);
    return ZIVK_STS_NO_ERR;
  }
  auto* const positions = static_cast<int32_t*>(policy);
  Counts counts[2];
  count_digits<2>(initial, count, counts, Positions{positions});
  Places low_places(counts[0], order);
  scatter(initial, Positions{positions}, count, 0, low_places);
  Places high_places(counts[1], order);
  scatter(FetchedRecords<numbers, uint16_t>{initial, positions}, Positions{dstIdx}, count, 1, high_places);
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_SortRadixIndexInit(int32_t len, ZIVKDataType dataType, void** policy) {
  return make_radix_handle(len, dataType, 3 * sizeof(uint32_t), 3 * sizeof(uint64_t), policy);
}
ZIVKStatus ZIVKS_SortRadixIndexRelease(void* policy) {
  ZIVKS_Free(policy);
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_SortRadixIndexAscend_8u(const uint8_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                         void* policy) {
  return sort_index_8u(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_16u(const uint16_t* src, int32_t srcStride, int32_t* dstIdx,
                                          int32_t len, void* policy) {
  return sort_index_16<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_16s(const int16_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index_16<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_32u(const uint32_t* src, int32_t srcStride, int32_t* dstIdx,
                                          int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_32s(const int32_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_32f(const float* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_64u(const uint64_t* src, int32_t srcStride, int32_t* dstIdx,
                                          int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_64s(const int64_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, kRising);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_64f(const double* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, kRising);
}

ZIVKStatus ZIVKS_SortRadixIndexDescend_8u(const uint8_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index_8u(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_16u(const uint16_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index_16<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_16s(const int16_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index_16<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_32u(const uint32_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_32s(const int32_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_32f(const float* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                           void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_64u(const uint64_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_64s(const int64_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, kFalling);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_64f(const double* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                           void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, kFalling);
}
