// Scaled, saturating addition of 64-bit integers, with an array or with a constant.
//
// A scale selects a power of two, 2^shift. The exact sum, of 65 bits, is divided by 2^shift and rounded if the
// shift is positive. Otherwise it is clamped at the bounds of the type and multiplied by 2^-shift with saturation.
#include <zivks/arithmetic.h>
#include <zivks/movement.h>

#include <cstring>
#include <limits>

#include "core/checks.h"
#include "core/scale.h"
#include "core/scaled_integer.h"

using namespace zivks;

namespace {

// --- Division --------------------------------------------------------------------------------

template <class R>
ZIVKS_INLINE R lowest_bit(R a) {
  return a & broadcast(ElementOf<R>{1});
}
ZIVKS_INLINE I64 is_negative(I64 half) { return half < I64{}; }
ZIVKS_INLINE U64 is_negative(U64) { return U64{}; }

// How a sum is divided by a power of two. The sum is 2 * half, plus 1 where the lowest bit of `odd` is set; its
// other bits have no effect. halved() divides the sum by 2, and divided() by 2^(count + 1), 0 < count < 64.
struct TowardZero {
  template <class R>
  ZIVKS_INLINE static R halved(R half, R odd) {
    return half + (lowest_bit(odd) & is_negative(half));
  }
  // Division rounds down. Of a negative sum it has to round up, which adding the divisor less one makes it do.
  template <class R>
  ZIVKS_INLINE static R divided(R half, R odd, int count) {
    const U64 divisor_less_one = broadcast((uint64_t{1} << count) - 1);
    const U64 addend = (divisor_less_one + lowest_bit(U64(odd))) & U64(is_negative(half));
    return shift_right(R(U64(half) + addend), count);
  }
};
struct TiesToEven {
  template <class R>
  ZIVKS_INLINE static R halved(R half, R odd) {
    return half + lowest_bit(odd & half);
  }
  template <class R>
  ZIVKS_INLINE static R divided(R half, R odd, int count) {
    return shift_right_to_even(half, odd, count);
  }
};
struct TiesUp {
  template <class R>
  ZIVKS_INLINE static R halved(R half, R odd) {
    return half + lowest_bit(odd);
  }
  template <class R>
  ZIVKS_INLINE static R divided(R half, R, int count) {
    return shift_right_half_up(half, count);
  }
};
struct TiesDown {
  template <class R>
  ZIVKS_INLINE static R halved(R half, R) {
    return half;
  }
  template <class R>
  ZIVKS_INLINE static R divided(R half, R odd, int count) {
    const auto half_divisor = static_cast<ElementOf<R>>(uint64_t{1} << (count - 1));
    return shift_right_growing(half, count, broadcast(half_divisor) - lowest_bit(odd));
  }
};

// (a + b) / 2^shift, 1 <= shift <= 64.
template <class Rounding, class R>
ZIVKS_INLINE R divide_sum(R a, R b, int shift) {
  const R half = average_down(a, b), odd = a ^ b;
  return shift == 1 ? Rounding::halved(half, odd) : Rounding::divided(half, odd, shift - 1);
}

template <class Rounding, class T, class Second>
void divide_sums(const T* src, Second second, T* dst, size_t len, int shift) {
  if (shift == 1) {
    const auto kernel = [](auto a, auto b) { return divide_sum<Rounding>(a, b, 1); };
    map_registers<T>(dst, len, kernel, src, second);
  } else {
    const auto kernel = [shift](auto a, auto b) { return divide_sum<Rounding>(a, b, shift); };
    map_registers<T>(dst, len, kernel, src, second);
  }
}

// --- Clamped sums ----------------------------------------------------------------------------

template <class T, class Second>
void add_clamped(const T* src, Second second, T* dst, size_t len) {
  const auto kernel = [](auto a, auto b) { return add_saturating(a, b); };
  map_registers<T>(dst, len, kernel, src, second);
}

// Multiplies by 2^count, count > 0. Blocks and tail shift by wrapped_shift(): to the right, with halves rounded up, where it is negative.
template <class T, class Second>
void multiply_clamped(const T* src, Second second, T* dst, size_t len, int count) {
  const int shift = wrapped_shift(count);
  if (shift >= 0) {
    const auto kernel = [shift](auto a, auto b) {
      return shift_left_saturating(add_saturating(a, b), shift);
    };
    map_registers<T>(dst, len, kernel, src, second);
  } else if (shift >= -64) {
    const auto kernel = [shift](auto a, auto b) {
      return divide_sum<TiesUp>(add_saturating(a, b), decltype(a){}, -shift);
    };
    map_registers<T>(dst, len, kernel, src, second);
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
