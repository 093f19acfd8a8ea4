// Counting the changes of sign between neighbouring samples.
//
// The count is made in integers, lane by lane. What is delivered is a float32 that grew from lane sums and,
// behind the whole blocks, one pair at a time; that shows only where the sums go beyond the 24 bits of a
// float32, so short of that all lanes and the tail are added up at once.
#include <zivks/statistics.h>

#include <cmath>
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

// Minus the contributions of many pairs, lane by lane, and whether a NaN is among the samples.
template <class T>
struct Tally {
  Lanes<int32_t, kRegisterElements<T>> counts = {};
  bool has_nan = false;
};

template <class T, size_t... I>
Counter<T> lane_numbers(std::index_sequence<I...>) {
  return Counter<T>{static_cast<SignedOf<T>>(I)...};
}

Lanes<int32_t, kRegisterElements<float>> widened(I32 counter) { return {{counter}}; }
Lanes<int32_t, kRegisterElements<int16_t>> widened(I16 counter) {
  return widen<int32_t>(Lanes<int16_t, kRegisterElements<int16_t>>{{counter}});
}

// Whole blocks of pairs: (src[0], src[1]) and so on. Lane k of the result counts pairs whose index is k
// modulo the block.
template <class Kind, class T>
[[gnu::flatten]] Tally<T> count_blocks(const T* src, size_t pairs) {
  constexpr size_t N = kRegisterElements<T>;
  constexpr size_t B = Kind::template kBlock<T>;
  // A counter grows by up to 2 a step; of four counters that take turns one takes the last three steps as
  // well.
  constexpr size_t kSteps = 4 * ((size_t{1} << (8 * sizeof(T) - 2)) - 4);
  constexpr bool kWatchesNan = Kind::kSumsInFloat && std::is_floating_point_v<T>;

  Tally<T> tally;
  Counter<T> nan = {};
  const auto count_pair = [&](auto a, auto b) {
    if constexpr (kWatchesNan) nan |= Counter<T>(b != b);
    return Kind::count(a, b);
  };
  const auto count_at = [&](size_t i) { return count_pair(load(src + i), load(src + i + 1)); };

  size_t i = 0;
  while (pairs - i >= N) {
    const size_t end = i + std::min((pairs - i) / N, kSteps) * N;
    Counter<T> first = {};
    if (end - i >= 4 * N) {
      Counter<T> second = {}, third = {}, fourth = {};
      for (; i + 4 * N <= end; i += 4 * N) {
        first += count_at(i);
        second += count_at(i + N);
        third += count_at(i + 2 * N);
        fourth += count_at(i + 3 * N);
      }
      tally.counts = tally.counts + widened(second) + widened(third) + widened(fourth);
    }
    for (; i < end; i += N) first += count_at(i);
    tally.counts = tally.counts + widened(first);
  }
  if constexpr (B < N) {
    Counter<T> rest = {};
    for (; i < pairs; i += B) {
      rest += count_pair(Register<T>(load_bottom<B * sizeof(T)>(src + i)),
                         Register<T>(load_bottom<B * sizeof(T)>(src + i + 1)));
    }
    tally.counts = tally.counts + widened(rest);
  }
  if constexpr (kWatchesNan) {
    tally.has_nan = pairs > 0 && (src[0] != src[0] || reduce_minimum(nan) != 0);
  }
  return tally;
}

// Less pairs than a block, by way of the first C and the last C of them, where C <= pairs <= 2 * C; those
// that are in both count once.
template <class Kind, size_t C, class T>
[[gnu::flatten]] int32_t count_few(const T* src, size_t pairs) {
  if (C == 1 || pairs >= C) {
    constexpr size_t N = kRegisterElements<T>;
    const auto load_ends = [=](const T* from) {
      return Register<T>(load_two<C * sizeof(T)>(from, from + pairs - C));
    };
    const Counter<T> lane = lane_numbers<T>(std::make_index_sequence<N>());
    const auto first_new = broadcast(static_cast<SignedOf<T>>(3 * C - pairs));
    const auto counted = (lane < broadcast(static_cast<SignedOf<T>>(C))) | (lane >= first_new);
    return -reduce_add(Kind::count(load_ends(src), load_ends(src + 1)) & counted);
  } else if constexpr (C > 1) {
    return count_few<Kind, C / 2>(src, pairs);
  }
}

template <class T, size_t... K>
int32_t sum_of(Lanes<int32_t, kRegisterElements<T>> counts, std::index_sequence<K...>) {
  return -reduce_add((counts.part[K] + ...));
}

// The sums that float32 lanes come to, one addition a block, each of the tally's lanes going to lane k modulo
// B.
template <size_t B, class T>
void add_lanes(float (&sum)[B], const Tally<T>& tally) {
  int32_t lanes[kRegisterElements<T>];
  std::memcpy(lanes, &tally.counts, sizeof lanes);
  uint32_t counts[B] = {};
  for (size_t k = 0; k < kRegisterElements<T>; ++k) counts[k % B] -= static_cast<uint32_t>(lanes[k]);
  for (size_t k = 0; k < B; ++k) sum[k] += static_cast<float>(counts[k]);
}

// Arrays with so many pairs that a lane's float32 sum may cease to be exact.
template <class Kind, class T>
[[gnu::cold, gnu::noinline]] float count_many(const T* src, size_t pairs) {
  constexpr size_t B = Kind::template kBlock<T>;
  constexpr float kExact = 0x1p24F;
  const size_t blocks = pairs & ~(B - 1);
  float sum[B] = {};
  // Lanes that count in integers go to float32 at the end; those that add in float32 do so block by block,
  // which is the same as adding a whole stretch at once as long as the sums stay exact.
  const size_t stretch = Kind::kSumsInFloat ? B << 20 : blocks;
  for (size_t i = 0; i < blocks; i += stretch) {
    const size_t count = std::min(stretch, blocks - i);
    const bool exact =
        !Kind::kSumsInFloat || *std::max_element(sum, sum + B) + 2 * static_cast<float>(count / B) <= kExact;
    const size_t step = exact ? count : B;
    for (size_t k = i; k < i + count; k += step) {
      const Tally<T> tally = count_blocks<Kind>(src + k, step);
      if (tally.has_nan) return std::numeric_limits<float>::quiet_NaN();
      add_lanes(sum, tally);
    }
  }
  for (size_t width = 1; width < B; width *= 2) {
    for (size_t k = 0; k < B; k += 2 * width) sum[k] += sum[k + width];
  }
  float value = sum[0] + 0.0F;
  for (size_t i = blocks; i < pairs; ++i) value += static_cast<float>(count_few<Kind, 1>(src + i, 1));
  return value * Kind::kWeight;
}

template <class Kind, class T>
float count_crossings(const T* src, size_t pairs) {
  constexpr size_t N = kRegisterElements<T>;
  constexpr size_t B = Kind::template kBlock<T>;
  constexpr size_t kExactPairs = size_t{1} << 23;
  if (pairs > kExactPairs) return count_many<Kind>(src, pairs);
  const size_t blocks = pairs & ~(B - 1);
  int32_t total = 0;
  if (blocks > 0) {
    const Tally<T> tally = count_blocks<Kind>(src, blocks);
    if (tally.has_nan) return std::numeric_limits<float>::quiet_NaN();
    total = sum_of<T>(tally.counts, std::make_index_sequence<N * sizeof(int32_t) / kRegisterBytes>());
  }
  if (blocks < pairs) total += count_few<Kind, B / 2>(src + blocks, pairs - blocks);
  return static_cast<float>(total) * Kind::kWeight;
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
