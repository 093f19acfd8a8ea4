// The k largest of an array of keys.
//
// Quick selection goes by the steps that its result shows. Radix selection is a matter of its result alone:
// keys in falling order, equal ones in the order in which they were gathered. So nothing is sorted that a
// count can drop, and where the keys lie side by side they are not even gathered.
#include <zivks/core.h>
#include <zivks/sort.h>

#include <limits>

#include "core/checks.h"
#include "sort/three_way_partition.h"
#include "sort/topk_entries.h"
#include "sort/topk_scan.h"

using namespace zivks;

namespace {

enum Method : int32_t { kAutomatic, kQuickSelection, kRadixSelection };

ZIVKS_INLINE bool is_method(int32_t method) { return kAutomatic <= method && method <= kRadixSelection; }

ZIVKS_INLINE int32_t settle_method(int32_t method, int32_t len, int32_t k) {
  if (method != kAutomatic) return method;
  return std::min(len, k) > 32 && 2049 <= len && len <= 0x7FFFFFF ? kRadixSelection : kQuickSelection;
}

// --- Handle ----------------------------------------------------------------------------

// What a handle for `len` keys of T takes: entries, and for radix selection as many once more and counters.
// Sizes that come too close to the largest int32_t are refused, before they are rounded up.
template <class T>
ZIVKStatus handle_bytes(int32_t len, int32_t method, int32_t* bytes) {
  constexpr int64_t kEnd = 0x7FFFFFF0, kCounters = std::is_same_v<T, float> ? 512 : 256;
  const int64_t size =
      method == kQuickSelection ? int64_t{len} * 8 : int64_t{len} * 16 + kCounters * int64_t{sizeof(int32_t)};
  if (size >= kEnd) return ZIVK_STS_BUFFER_SIZE_ERR;
  *bytes = static_cast<int32_t>((size + 15) & ~int64_t{15});
  return ZIVK_STS_NO_ERR;
}

template <class T>
ZIVKStatus init(int32_t len, T* dstVal, int32_t* dstIdx, int32_t k, int32_t method, void** policy, T preset) {
  if (is_null(dstVal) || is_null(dstIdx) || policy == nullptr) return ZIVK_STS_NULL_PTR_ERR;
  if (k < 1 || len < 1) return ZIVK_STS_SIZE_ERR;
  if (!is_method(method)) return ZIVK_STS_TOPK_METHOD_ERR;
  int32_t bytes;
  if (ZIVKStatus status = handle_bytes<T>(len, settle_method(method, len, k), &bytes)) return status;
  void* const handle = ZIVKS_Malloc_8u(bytes);
  if (handle == nullptr) return ZIVK_STS_MALLOC_ERR;
  *policy = handle;
  std::fill_n(dstIdx, k, -1);
  std::fill_n(dstVal, k, preset);
  return ZIVK_STS_NO_ERR;
}

// --- Gathering -------------------------------------------------------------------------

// The number of keys at a distance of `stride` bytes within the span of `len` keys side by side.
ZIVKS_INLINE size_t count_keys(int32_t len, int32_t stride) {
  return static_cast<size_t>(std::min<int64_t>(len, (int64_t{len} * 4 + stride - 1) / stride));
}

constexpr uint32_t kInfinity = 0x7F800000;

struct UnchangedBits {
  static constexpr uint32_t of(uint32_t bits) { return bits; }
};

// Entries of the keys, whose bits go through Map, with their positions. Returns how many of them take part:
// of floats the finite ones and one infinity of each sign. The exchanges that set the others apart are those
// that decide in which order equal keys are reported.
template <class T, class Map>
size_t gather(const T* src, int32_t stride, size_t count, Entry* entries) {
  const auto* const first_key = reinterpret_cast<const unsigned char*>(src);
  size_t apart = 0;
  for (size_t i = 0; i < count; ++i) {
    const auto bits = read<uint32_t>(first_key + i * static_cast<size_t>(stride));
    entries[i] = make_entry(Map::of(bits), i);
    if constexpr (std::is_floating_point_v<T>) {
      if ((bits & kInfinity) == kInfinity) std::swap(entries[i], entries[apart++]);
    }
  }
  if (apart == 0) return count;

  const size_t first = count - apart;
  for (size_t i = apart; i-- > 0;) std::swap(entries[i], entries[first + i]);
  size_t taken = first;
  bool found_positive = false, found_negative = false;
  for (size_t i = first; i < count && !(found_positive && found_negative); ++i) {
    const uint32_t bits = bits_of(entries[i]);
    bool& found = bits == Map::of(kInfinity) ? found_positive : found_negative;
    if ((bits == Map::of(kInfinity) || bits == Map::of(kInfinity | kSignBit)) && !found) {
      found = true;
      std::swap(entries[i], entries[taken++]);
    }
  }
  return taken;
}

// --- Quick selection -------------------------------------------------------------------

template <class T>
ZIVKS_INLINE T value_of(uint32_t bits) {
  return read<T>(&bits);
}

template <class T>
struct GatheredEntries {
  Entry* entries;

  ZIVKS_INLINE T key(ptrdiff_t i) const { return value_of<T>(bits_of(entries[i])); }
  ZIVKS_INLINE void exchange(ptrdiff_t i, ptrdiff_t j) const { std::swap(entries[i], entries[j]); }
};

// Brings the greatest entries of a range to its front, up to place `target`. Where that place falls into a run
// of equal keys, what stands before the run is left as the partition had it.
template <class T>
void select_greatest(GatheredEntries<T> entries, ptrdiff_t low, ptrdiff_t high, ptrdiff_t target) {
  while (high - low >= 1) {
    const auto [equal, behind] = partition_at_random_pivot(
        entries, low, high, [](T a, T b) { return a > b; }, [](T a, T b) { return a < b; });
    if (equal >= target) {
      high = equal;
    } else if (target < behind) {
      return;
    } else {
      select_greatest(entries, low, equal, target);
      low = behind;
    }
  }
}

// --- Radix selection -------------------------------------------------------------------

// The `wanted` greatest keys in falling order, or all if they are fewer; `memory` takes twice as many entries
// as there are keys. Returns how many take part.
template <class T>
size_t select_by_digits(const T* src, int32_t stride, size_t count, size_t wanted, Entry* memory) {
  Entry* const scratch = memory + count;
  if (stride == sizeof(T) && count > 2 * scan_entries(wanted)) {
    ThresholdScan<T> scan(src, count, wanted, memory);
    if (scan.run()) {
      Candidates found = scan.found();
      found.keep_greatest(wanted);
      found.sort(scratch);
      if (Rank<T>::is_finite(bits_of(memory[0]))) return count;
    }
  }
  Candidates all = {memory, gather<T, Rank<T>>(src, stride, count, memory)};
  const size_t taking_part = all.count;
  all.keep_greatest(wanted);
  all.sort(scratch);
  return taking_part;
}

// --- Results ---------------------------------------------------------------------------

template <class T>
struct Results {
  T* values;
  int32_t* positions;
  int32_t offset;
  size_t count;  // written so far

  ZIVKS_INLINE void write(T value, size_t position) {
    values[count] = value;
    positions[count++] = static_cast<int32_t>(position) + offset;
  }
};

// Writes the first `wanted` of the ordered entries. The places of the column behind the `gathered` keys hold
// zeros, which go out where the first negative key stands.
template <class T, class ValueOf, class IsNegative>
void write_results(Results<T> results, const Entry* entries, size_t taking_part, size_t gathered, size_t len,
                   size_t wanted, ValueOf value, IsNegative is_negative) {
  const auto write_entry = [&](size_t i) {
    results.write(value(bits_of(entries[i])), position_of(entries[i]));
  };
  size_t i = 0;
  if (gathered < len) {
    while (results.count < wanted && i < taking_part && !is_negative(bits_of(entries[i]))) write_entry(i++);
    for (size_t zero = gathered; results.count < wanted && zero < len; ++zero) results.write(T{}, zero);
  }
  while (results.count < wanted) write_entry(i++);
}

template <class T>
ZIVKStatus top_k(const T* src, int32_t offset, int32_t srcStride, int32_t len, T* dstVal, int32_t* dstIdx,
                 int32_t k, int32_t method, void* policy) {
  if (policy == nullptr || is_null(dstIdx) || is_null(src) || is_null(dstVal)) return ZIVK_STS_NULL_PTR_ERR;
  if (offset < 0 || INT32_MAX - offset < len) return ZIVK_STS_SIZE_ERR;
  if (srcStride < 1) return ZIVK_STS_TOPK_STRIDE_ERR;
  if (len < 1 || k < 1) return ZIVK_STS_SIZE_ERR;
  if (!is_method(method)) return ZIVK_STS_TOPK_METHOD_ERR;

  auto* const entries = static_cast<Entry*>(policy);
  const size_t count = count_keys(len, srcStride), places = static_cast<size_t>(len);
  const size_t wanted = std::min(static_cast<size_t>(k), count);
  const Results<T> results = {dstVal, dstIdx, offset, 0};
  const auto number_of_results = [&](size_t taking_part) {
    return std::min(static_cast<size_t>(k), places - (count - taking_part));
  };
  if (settle_method(method, len, k) == kQuickSelection) {
    reseed_by_clock();
    const size_t taking_part = gather<T, UnchangedBits>(src, srcStride, count, entries);
    select_greatest(GatheredEntries<T>{entries}, 0, static_cast<ptrdiff_t>(taking_part) - 1,
                    static_cast<ptrdiff_t>(wanted) - 1);
    write_results(results, entries, taking_part, count, places, number_of_results(taking_part), value_of<T>,
                  [](uint32_t bits) { return value_of<T>(bits) < 0; });
  } else {
    const size_t taking_part = select_by_digits(src, srcStride, count, wanted, entries);
    write_results(
        results, entries, taking_part, count, places, number_of_results(taking_part),
        [](uint32_t rank) { return value_of<T>(Rank<T>::bits(rank)); },
        [](uint32_t rank) { return rank < kSignBit; });
  }
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_TopKInit_32s(int32_t len, int32_t* dstVal, int32_t* dstIdx, int32_t k, int32_t method,
                              void** policy) {
  return init(len, dstVal, dstIdx, k, method, policy, std::numeric_limits<int32_t>::min());
}

ZIVKStatus ZIVKS_TopKInit_32f(int32_t len, float* dstVal, int32_t* dstIdx, int32_t k, int32_t method,
                              void** policy) {
  return init(len, dstVal, dstIdx, k, method, policy, std::numeric_limits<float>::lowest());
}

ZIVKStatus ZIVKS_TopK_32s(const int32_t* src, int32_t offset, int32_t srcStride, int32_t len, int32_t* dstVal,
                          int32_t* dstIdx, int32_t k, int32_t method, void* policy) {
  return top_k(src, offset, srcStride, len, dstVal, dstIdx, k, method, policy);
}

ZIVKStatus ZIVKS_TopK_32f(const float* src, int32_t offset, int32_t srcStride, int32_t len, float* dstVal,
                          int32_t* dstIdx, int32_t k, int32_t method, void* policy) {
  return top_k(src, offset, srcStride, len, dstVal, dstIdx, k, method, policy);
}

ZIVKStatus ZIVKS_TopKRelease(void* policy) {
  ZIVKS_Free(policy);
  return ZIVK_STS_NO_ERR;
}
