// Counting the changes of sign between neighbouring samples.
//
// The count is made in integers, lane by lane. What is delivered is a float32 that grew from lane sums and,
// behind the whole blocks, one pair at a time; that shows only where the sums go beyond the 24 bits of a
// float32, so short of that all lanes and the tail are added up at once.
#include <zivks/statistics.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "core/checks.h"

using namespace zivks;

namespace {

// A kind of crossing. count() gives, lane by lane, minus the contribution of the pair (a, b). kBlock is the
// number of lanes that sums are kept for.
struct NegativeProduct {
  template <class T>
  static constexpr size_t kBlock = 4;
  static constexpr bool kSumsInFloat = false;
  static constexpr float kWeight = 1;

  static I32 count(F32 a, F32 b) { return I32(a * b < F32{}); }
  static I16 count(I16 a, I16 b) { return negative_product(a, b); }
};

struct DifferentSignBits {
  template <class T>
  static constexpr size_t kBlock = 4;
  static constexpr bool kSumsInFloat = false;
  static constexpr float kWeight = 1;

  static I32 count(F32 a, F32 b) { return (I32(a) ^ I32(b)) >> 31; }
  static I16 count(I16 a, I16 b) { return (a ^ b) >> 15; }
};

// The distance of the signs -1, 0 and 1: one for each of the bounds, from zero up and to zero down, that is
// crossed. A NaN is on the negative side.
struct DistanceOfSigns {
  template <class T>
  static constexpr size_t kBlock = 16 / sizeof(T);
  static constexpr bool kSumsInFloat = true;
  static constexpr float kWeight = 0.5F;

  template <class R>
  static auto count(R a, R b) {
    return ((a > R{}) ^ (b > R{})) + ((a >= R{}) ^ (b >= R{}));
  }
};

template <class T>
using Counter = Register<SignedOf<T>>;

// Minus the contributions of many pairs, lane by lane.
template <class T>
using Counts = Lanes<int32_t, kRegisterElements<T>>;

template <class Kind, class T>
constexpr bool kWatchesNan = (Kind::kSumsInFloat && std::is_floating_point_v<T>);

Counts<float> widened(I32 counter) { return {{counter}}; }
Counts<int16_t> widened(I16 counter) {
  return widen<int32_t>(Lanes<int16_t, kRegisterElements<int16_t>>{{counter}});
}

template <class T, size_t... K>
int32_t sum_of(Counts<T> counts, std::index_sequence<K...>) {
  return -reduce_add((counts.part[K] + ...));
}

// Whole blocks of pairs: (src[0], src[1]) and so on. Lane k of the result counts pairs whose index is k
// modulo the block. `nan`, where it is watched, becomes NaN if one of the second samples is.
template <class Kind, bool reads_ahead, class T>
ZIVKS_INLINE Counts<T> count_blocks(const T* src, size_t pairs, Register<T>& nan) {
  constexpr size_t N = kRegisterElements<T>;
  constexpr size_t B = Kind::template kBlock<T>;
  // A counter grows by up to 2 a step. Four of them take turns, and one takes up to three steps more.
  // Counters of 32 bits have room for the longest array.
  constexpr size_t kStretch = sizeof(T) < 4 ? 4 * N * ((size_t{1} << (8 * sizeof(T) - 2)) - 4) : SIZE_MAX / 2;

  const auto watch = [&](size_t i, size_t k) {
    if constexpr (kWatchesNan<Kind, T>) nan = watch_nan(nan, load(src + i + 1), load(src + k + 1));
  };
  const auto count_at = [&](size_t i) { return Kind::count(load(src + i), load(src + i + 1)); };

  Counts<T> counts = {};
  Counter<T> few = {};
  const auto count_block = [&](size_t i) {
    const auto a = Register<T>(load_bottom<B * sizeof(T)>(src + i));
    const auto b = Register<T>(load_bottom<B * sizeof(T)>(src + i + 1));
    few += Kind::count(a, b);
    if constexpr (kWatchesNan<Kind, T>) nan = watch_nan(nan, b, b);
  };
  size_t i = 0;
  if constexpr (kAligns && B < N) {  // up to where the first samples of pairs are aligned to registers
    const size_t unaligned = bytes_unaligned(src) / sizeof(T);
    if (pairs >= 8 * N && unaligned % B == 0) {
      for (; i < unaligned; i += B) count_block(i);
    }
  }
  const size_t whole = i + ((pairs - i) & ~(N - 1));
  while (i < whole) {
    const size_t end = std::min(i + kStretch, whole);
    Counter<T> first = {};
    if (end - i >= 4 * N) {
      Counter<T> second = {}, third = {}, fourth = {};
      for (; i + 4 * N <= end; i += 4 * N) {
        if constexpr (reads_ahead) read_ahead<4 * kRegisterBytes>(src + i);
        first += count_at(i);
        second += count_at(i + N);
        watch(i, i + N);
        third += count_at(i + 2 * N);
        fourth += count_at(i + 3 * N);
        watch(i + 2 * N, i + 3 * N);
      }
      counts = counts + widened(second) + widened(third) + widened(fourth);
    }
    for (; i < end; i += N) {
      first += count_at(i);
      watch(i, i);
    }
    counts = counts + widened(first);
  }
  if constexpr (B < N) {
    for (; i < pairs; i += B) count_block(i);
    counts = counts + widened(few);
  }
  return counts;
}

// The last `pairs` pairs of a block that begins at `src`.
template <class Kind, class T>
ZIVKS_INLINE Counter<T> count_tail(const T* src, size_t pairs) {
  constexpr size_t B = Kind::template kBlock<T>;
  const auto a = Register<T>(load_bottom<B * sizeof(T)>(src));
  const auto b = Register<T>(load_bottom<B * sizeof(T)>(src + 1));
  return Kind::count(a, b) & lanes_from<T>(B - pairs);
}

// Fewer pairs than a block, by way of the first `end` and the last `end` of them, where end < pairs <= 2 * end, or both
// are 1; those that are in both count once.
template <class Kind, size_t end, class T>
ZIVKS_INLINE Counter<T> count_few(const T* src, size_t pairs) {
  if (end == 1 || pairs > end) {
    const auto load_ends = [=](const T* from) {
      return Register<T>(load_two<end * sizeof(T)>(from, from + pairs - end));
    };
    const auto counted = ~lanes_from<T>(end) | lanes_from<T>(3 * end - pairs);
    return Kind::count(load_ends(src), load_ends(src + 1)) & counted;
  } else if constexpr (end > 1) {
    return count_few<Kind, end / 2>(src, pairs);
  }
}

// So few pairs that all sums are exact and can be formed in any order.
template <class Kind, class T>
[[gnu::flatten]] float count_exactly(const T* src, size_t pairs) {
  constexpr size_t B = Kind::template kBlock<T>;
  const size_t blocks = pairs & ~(B - 1);
  Register<T> nan = {};
  Counts<T> counts = {};
  if (blocks > 0) {
    counts = count_blocks<Kind, false>(src, blocks, nan);
    if constexpr (kWatchesNan<Kind, T>) {
      if (src[0] != src[0] || has_nan(nan)) return std::numeric_limits<float>::quiet_NaN();
    }
    if (blocks < pairs) counts = counts + widened(count_tail<Kind>(src + pairs - B, pairs - blocks));
  } else if (pairs > 0) {
    counts = widened(count_few<Kind, B / 2>(src, pairs));
  }
  return static_cast<float>(sum_of<T>(counts, std::make_index_sequence<Counts<T>::kParts>()));
}

// The sums of B float32 lanes after further blocks of pairs; lane k of the counts belongs to sum k modulo B.
template <size_t B, class T>
void add_lanes(float (&sum)[B], Counts<T> counts) {
  int32_t lanes[kRegisterElements<T>];
  std::memcpy(lanes, &counts, sizeof lanes);
  uint32_t total[B] = {};
  for (size_t k = 0; k < kRegisterElements<T>; ++k) total[k % B] -= static_cast<uint32_t>(lanes[k]);
  for (size_t k = 0; k < B; ++k) sum[k] += static_cast<float>(total[k]);
}

// The sums of float32 lanes that add block by block, where they may not be exact.
template <class Kind, size_t B, class T>
[[gnu::flatten]] void add_blocks(float (&sum)[B], const T* src, size_t pairs, Register<T>& nan) {
  float lanes[kRegisterElements<T>] = {};
  std::memcpy(lanes, sum, sizeof sum);
  const Array<float> stored = {lanes};
  auto sums = stored.load<kRegisterElements<T>>(0);
  for (size_t i = 0; i < pairs; i += B) {
    sums = sums - convert<float>(count_blocks<Kind, false>(src + i, B, nan));
  }
  stored.store(0, sums);
  std::memcpy(sum, lanes, sizeof sum);
}

// Long arrays. With so many pairs a float32 sum may cease to be exact.
//
// Lanes that count in integers go to float32 at the end. Lanes that add in float32 do so block by block,
// which comes to the same as adding a whole stretch at once as long as the sums stay exact.
template <class Kind, class T>
[[gnu::flatten]] float count_many(const T* src, size_t pairs) {
  constexpr size_t B = Kind::template kBlock<T>;
  constexpr float kLargestExact = 0x1p24F;
  const size_t blocks = pairs & ~(B - 1);
  const size_t stretch = Kind::kSumsInFloat ? B << 20 : blocks;
  Register<T> nan = {};
  float sum[B] = {};
  for (size_t i = 0; i < blocks; i += stretch) {
    const size_t count = std::min(stretch, blocks - i);
    const float growth = 2 * static_cast<float>(count / B);
    if (Kind::kSumsInFloat && *std::max_element(sum, sum + B) + growth > kLargestExact) {
      add_blocks<Kind>(sum, src + i, count, nan);
    } else {
      add_lanes<B, T>(sum, count_blocks<Kind, true>(src + i, count, nan));
    }
  }
  if constexpr (kWatchesNan<Kind, T>) {
    if (src[0] != src[0] || has_nan(nan)) return std::numeric_limits<float>::quiet_NaN();
  }
  for (size_t width = 1; width < B; width *= 2) {
    for (size_t k = 0; k < B; k += 2 * width) sum[k] += sum[k + width];
  }
  float value = sum[0] + 0.0F;
  for (size_t i = blocks; i < pairs; ++i) {
    const Counts<T> one = widened(count_few<Kind, 1>(src + i, 1));
    value += static_cast<float>(sum_of<T>(one, std::make_index_sequence<Counts<T>::kParts>()));
  }
  return value;
}

template <class Kind, class T>
float count_crossings(const T* src, size_t pairs) {
  // On every processor, for the sake of exactness: of so few pairs every sum is exact in float32.
  static_assert(kReadAheadFrom <= size_t{1} << 23);
  const bool few = pairs * sizeof(T) < kReadAheadFrom;
  const float count = few ? count_exactly<Kind>(src, pairs) : count_many<Kind>(src, pairs);
  return count * Kind::kWeight;
}

template <class T>
ZIVKStatus count_kind(const T* src, int32_t len, float* pValue, int32_t kind) {
  if (is_null(src) || is_null(pValue)) return ZIVK_STS_NULL_PTR_ERR;
  // The one length in the library that is taken as unsigned: only zero is refused.
  if (len == 0) return ZIVK_STS_SIZE_ERR;
  const size_t pairs = static_cast<uint32_t>(len) - 1;
  switch (kind) {
    case 0: *pValue = count_crossings<NegativeProduct>(src, pairs); return ZIVK_STS_NO_ERR;
    case 1: *pValue = count_crossings<DifferentSignBits>(src, pairs); return ZIVK_STS_NO_ERR;
    case 2: *pValue = count_crossings<DistanceOfSigns>(src, pairs); return ZIVK_STS_NO_ERR;
    default: return ZIVK_STS_ZC_TYPE_ERR;
  }
}

}  // namespace

ZIVKStatus ZIVKS_ZeroCrossing_32f(const float* src, int32_t len, float* pValue, int32_t kind) {
  return count_kind(src, len, pValue, kind);
}

// A half that the distances of signs leave over is thrown away here; the float32 form keeps it.
ZIVKStatus ZIVKS_ZeroCrossing_16s32f(const int16_t* src, int32_t len, float* pValue, int32_t kind) {
  const ZIVKStatus status = count_kind(src, len, pValue, kind);
  if (status == ZIVK_STS_NO_ERR) *pValue = std::trunc(*pValue);
  return status;
}
