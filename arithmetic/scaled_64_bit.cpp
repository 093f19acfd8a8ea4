// Scaled, saturating addition of 64-bit integers, with an array or with a constant.
//
// A scale selects a power of two, 2^shift. The exact sum, of 65 bits, is divided by 2^shift and rounded if the
// shift is positive. Otherwise it is clamped at the bounds of the type and multiplied by 2^-shift with saturation.
#include <zivks/arithmetic.h>
#include <zivks/movement.h>

#include <cstring>
#include <limits>

#include "arithmetic/scaled_operations.h"
#include "core/checks.h"
#include "core/scale.h"

using namespace zivks;

namespace {

// --- Division --------------------------------------------------------------------------------

template <class R>
ZIVKS_INLINE R lowest_bit(R a) {
  return a & broadcast(ElementOf<R>{1});
}
ZIVKS_INLINE I64 is_negative(I64 a) { return a < I64{}; }
ZIVKS_INLINE U64 is_negative(U64) { return U64{}; }

// How the exact sum of a and b is divided by a power of two: halved() by 2, divided() by 2^count, from 2 to 64.
// The sum is twice average_down(a, b), plus the lowest bit of a ^ b.
using TiesToEven = Sum;
struct TowardZero {
  template <class R>
  ZIVKS_INLINE static R halved(R a, R b) {
    const R half = average_down(a, b);
    return half + (lowest_bit(a ^ b) & is_negative(half));
  }
  // Division rounds down. Of a negative sum it has to round up, which adding the divisor less one makes it do.
  template <class R>
  ZIVKS_INLINE static R divided(R a, R b, int count) {
    const R half = average_down(a, b);
    const U64 divisor_less_one = broadcast((uint64_t{1} << (count - 1)) - 1);
    const U64 addend = (divisor_less_one + lowest_bit(U64(a ^ b))) & U64(is_negative(half));
    return shift_right(R(U64(half) + addend), count - 1);
  }
};
struct TiesUp {
  template <class R>
  ZIVKS_INLINE static R halved(R a, R b) {
    return average_up(a, b);
  }
  template <class R>
  ZIVKS_INLINE static R divided(R a, R b, int count) {
    return shift_right_half_up(average_down(a, b), count - 1);
  }
};
struct TiesDown {
  template <class R>
  ZIVKS_INLINE static R halved(R a, R b) {
    return average_down(a, b);
  }
  template <class R>
  ZIVKS_INLINE static R divided(R a, R b, int count) {
    const auto half_divisor = static_cast<ElementOf<R>>(uint64_t{1} << (count - 2));
    return shift_right_growing(average_down(a, b), count - 1, broadcast(half_divisor) - lowest_bit(a ^ b));
  }
};

template <class Rounding, class T, class Second>
void divide_sums(const T* src, Second second, T* dst, size_t len, int shift) {
  if (shift == 1) {
    const auto kernel = [](auto a, auto b) { return Rounding::halved(a, b); };
    map_registers<T>(dst, len, kernel, src, second);
  } else {
    const auto kernel = [shift](auto a, auto b) { return Rounding::divided(a, b, shift); };
    map_registers<T>(dst, len, kernel, src, second);
  }
}

// --- Clamped sums ----------------------------------------------------------------------------

template <class T, class Second>
void add_clamped(const T* src, Second second, T* dst, size_t len) {
  const auto kernel = [](auto a, auto b) { return add_saturating(a, b); };
  map_registers<T>(dst, len, kernel, src, second);
}

// Multiplies by 2^count, count > 0. Blocks and tail shift by wrapped_shift(): to the right, with halves rounded up,
// where it is negative.
template <class T, class Second>
void multiply_clamped(const T* src, Second second, T* dst, size_t len, int count) {
  const int shift = wrapped_shift(count);
  if (shift >= 0) {
    const auto kernel = [shift](auto a, auto b) {
      return shift_left_saturating(add_saturating(a, b), shift);
    };
    map_registers<T>(dst, len, kernel, src, second);
  } else if (shift >= -64) {
    add_clamped(src, second, dst, len);
    const Repeated<T> zero = {Register<T>{}};
    divide_sums<TiesUp>(dst, zero, dst, len, -shift);
  } else {
    std::memset(dst, 0, len * sizeof(T));
  }
}

// --- Shapes of the exported functions --------------------------------------------------------

// Shifts by up to 64.
template <class T>
ZIVKStatus add_constant(const T* src, T val, T* dst, int32_t len, ZIVKRoundMode rndMode, int shift) {
  const Repeated<T> constant = {broadcast(val)};
  const auto count = static_cast<size_t>(len);
  if (shift < 0) {
    multiply_clamped(src, constant, dst, count, -shift);
  } else if (shift == 0) {
    add_clamped(src, constant, dst, count);
  } else if (rndMode == ZIVK_RND_ZERO) {
    divide_sums<TowardZero>(src, constant, dst, count, shift);
  } else if (rndMode == ZIVK_RND_NEAR) {
    divide_sums<TiesToEven>(src, constant, dst, count, shift);
  } else if (std::is_signed_v<T> && val == std::numeric_limits<T>::min()) {
    // With this constant a tie goes down in blocks of two, but up in the tail.
    const size_t blocks = count & ~size_t{1};
    if (blocks > 0) divide_sums<TiesDown>(src, constant, dst, blocks, shift);
    if (blocks < count) divide_sums<TiesUp>(src + blocks, constant, dst + blocks, 1, shift);
  } else {
    divide_sums<TiesUp>(src, constant, dst, count, shift);
  }
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Add_64s_S(const int64_t* src1, const int64_t* src2, int64_t* dst, int32_t len,
                           double scale) {
  if (ZIVKStatus status = check_arrays(len, src1, src2, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int shift = scale_shift(scale);
  const auto count = static_cast<size_t>(len);
  if (shift < 0) {
    multiply_clamped(src1, src2, dst, count, -shift);
  } else if (shift == 0) {
    add_clamped(src1, src2, dst, count);
  } else if (shift <= 64) {
    divide_sums<TiesToEven>(src1, src2, dst, count, shift);
  } else {
    ZIVKS_Zero_64s(dst, len);
  }
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_AddC_64s_S(const int64_t* src, int64_t val, int64_t* dst, int32_t len, ZIVKRoundMode rndMode,
                            double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int shift = scale_shift(scale);
  if (shift == 0 && val == 0) return ZIVKS_Copy_64s(src, dst, len);
  if (shift > (val == 0 ? 63 : 64)) {
    ZIVKS_Zero_64s(dst, len);
    return ZIVK_STS_NO_ERR;
  }
  return add_constant(src, val, dst, len, rndMode, shift);
}

ZIVKStatus ZIVKS_AddC_64u_S(const uint64_t* src, uint64_t val, uint64_t* dst, int32_t len,
                            ZIVKRoundMode rndMode, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int shift = scale_shift(scale);
  if (shift == 0 && val == 0) {
    return ZIVKS_Copy_64s(reinterpret_cast<const int64_t*>(src), reinterpret_cast<int64_t*>(dst), len);
  }
  if (shift <= 64) return add_constant(src, val, dst, len, rndMode, shift);
  if (shift > 65 || val == 0 || rndMode == ZIVK_RND_ZERO) {
    ZIVKS_Zero_64s(reinterpret_cast<int64_t*>(dst), len);
    return ZIVK_STS_NO_ERR;
  }
  // Of the sum's 65 bits only the carry counts and, in a tie, whether there is anything else.
  for (int32_t i = 0; i < len; ++i) {
    const uint64_t sum = src[i] + val;
    dst[i] = sum < val && (sum != 0 || rndMode != ZIVK_RND_NEAR);
  }
  return ZIVK_STS_NO_ERR;
}
