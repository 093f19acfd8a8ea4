// Uniform noise between two bounds.
//
// Nearly all of the time goes to the draws, which the C library makes one by one. Some are kept in a small array, which
// then goes through registers. A record holds no state of the generator: every call starts it anew.
#include <stdlib.h>
#include <zivk_core.h>
#include <zivks/core.h>
#include <zivks/generators.h>

#include <algorithm>
#include <cmath>

#include "core/checks.h"

using namespace zivks;

namespace {

template <class Record, class T>
ZIVKStatus make_record(Record** policy, T low, T high, uint32_t seed) {
  if (policy == nullptr) return ZIVK_STS_NULL_PTR_ERR;
  auto* const record = static_cast<Record*>(ZIVK_Malloc(int32_t{sizeof(Record)}));
  if (record == nullptr) return ZIVK_STS_MALLOC_ERR;
  *record = {low, high, seed};
  *policy = record;
  return ZIVK_STS_NO_ERR;
}

template <class Record>
ZIVKStatus release_record(Record* policy) {
  ZIVKS_Free(policy);
  return ZIVK_STS_NO_ERR;
}

// low + width * draw, rounded once.
template <class F, size_t N>
ZIVKS_INLINE Lanes<F, N> place_between(F low, F width, Lanes<F, N> draws) {
  return lift<F>([=](auto r) { return fused_multiply_add(r, broadcast(width), broadcast(low)); }, draws);
}

// dst[i] = kernel(draw) for the next `len` draws, rounded to F.
template <class F, class T, class Kernel>
void map_draws(T* dst, size_t len, const Kernel& kernel) {
  constexpr size_t kDraws = 64;
  F draws[kDraws];
  for (size_t i = 0; i < len; i += kDraws) {
    const size_t count = std::min(kDraws, len - i);
    std::generate_n(draws, count, [] { return static_cast<F>(drand48()); });
    map(dst + i, count, kernel, draws);
  }
}

// Whole blocks are computed in float32, where a draw next to 1 becomes 1, and the tail in float64.
template <class T, class Kernel, class Tail>
void fill_by_blocks(T* dst, int32_t len, uint32_t seed, const Kernel& kernel, const Tail& tail) {
  constexpr size_t kBlock = 8;
  const auto count = static_cast<size_t>(len);
  const size_t blocks = count & ~(kBlock - 1);
  srand48(static_cast<long>(seed));
  map_draws<float>(dst, blocks, kernel);
  for (size_t i = blocks; i < count; ++i) dst[i] = tail(drand48());
}

// No value lies beyond the bounds, since rounding keeps the order: nothing has to be clamped.
template <class T, class Record>
ZIVKStatus fill_integers(T* dst, int32_t len, const Record* policy) {
  if (ZIVKStatus status = check_arrays(len, dst, policy)) return status;
  const int32_t low = policy->low, width = policy->high - policy->low;
  fill_by_blocks(
      dst, len, policy->seed,
      [low = static_cast<float>(low), width = static_cast<float>(width)](auto draws) ZIVKS_INLINE_LAMBDA {
        return round_saturating<T, ZIVK_RND_ZERO>(place_between(low, width, draws));
      },
      [low, width](double draw) { return static_cast<T>(static_cast<int32_t>(std::fma(width, draw, low))); });
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_RandUniformInit_8u(ZIVKRandUniformState_8u** policy, uint8_t low, uint8_t high,
                                    uint32_t seed) {
  return make_record(policy, low, high, seed);
}
ZIVKStatus ZIVKS_RandUniformInit_16s(ZIVKRandUniformState_16s** policy, int16_t low, int16_t high,
                                     uint32_t seed) {
  return make_record(policy, low, high, seed);
}
ZIVKStatus ZIVKS_RandUniformInit_32f(ZIVKRandUniformState_32f** policy, float low, float high,
                                     uint32_t seed) {
  return make_record(policy, low, high, seed);
}
ZIVKStatus ZIVKS_RandUniformInit_64f(ZIVKRandUniformState_64f** policy, double low, double high,
                                     uint32_t seed) {
  return make_record(policy, low, high, seed);
}

ZIVKStatus ZIVKS_RandUniformRelease_8u(ZIVKRandUniformState_8u* policy) { return release_record(policy); }
ZIVKStatus ZIVKS_RandUniformRelease_16s(ZIVKRandUniformState_16s* policy) { return release_record(policy); }
ZIVKStatus ZIVKS_RandUniformRelease_32f(ZIVKRandUniformState_32f* policy) { return release_record(policy); }
ZIVKStatus ZIVKS_RandUniformRelease_64f(ZIVKRandUniformState_64f* policy) { return release_record(policy); }

ZIVKStatus ZIVKS_RandUniform_8u(uint8_t* dst, int32_t len, const ZIVKRandUniformState_8u* policy) {
  return fill_integers(dst, len, policy);
}
ZIVKStatus ZIVKS_RandUniform_16s(int16_t* dst, int32_t len, const ZIVKRandUniformState_16s* policy) {
  return fill_integers(dst, len, policy);
}
ZIVKStatus ZIVKS_RandUniform_32f(float* dst, int32_t len, const ZIVKRandUniformState_32f* policy) {
  if (ZIVKStatus status = check_arrays(len, dst, policy)) return status;
  const float low = policy->low, width = policy->high - policy->low;
  fill_by_blocks(
      dst, len, policy->seed,
      [low, width](auto draws) ZIVKS_INLINE_LAMBDA { return place_between(low, width, draws); },
      [low, width](double draw) { return static_cast<float>(std::fma(double{width}, draw, double{low})); });
  return ZIVK_STS_NO_ERR;
}
ZIVKStatus ZIVKS_RandUniform_64f(double* dst, int32_t len, const ZIVKRandUniformState_64f* policy) {
  if (ZIVKStatus status = check_arrays(len, dst, policy)) return status;
  const double low = policy->low, width = policy->high - policy->low;
  srand48(static_cast<long>(policy->seed));
  map_draws<double>(dst, static_cast<size_t>(len), [low, width](auto draws) ZIVKS_INLINE_LAMBDA {
    return place_between(low, width, draws);
  });
  return ZIVK_STS_NO_ERR;
}
