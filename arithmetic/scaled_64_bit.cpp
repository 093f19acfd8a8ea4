// Scaled, saturating addition of 64-bit integers, with an array or with a constant.
//
// A scale selects a power of two, 2^shift. The exact sum has 65 bits; it is shifted to the right and rounded
// or, with a negative shift, saturated first and then shifted to the left with saturation.
#include <zivks/arithmetic.h>
#include <zivks/movement.h>

#include <limits>

#include "core/checks.h"
#include "core/scale.h"

using namespace zivks;

namespace {

// --- Right shifts --------------------------------------------------------------------------

// A 65-bit sum, halved and then divided by a power of two.
struct Quotient {
  U64 value;      // floor of the quotient, modulo 2^64
  U64 remainder;  // of the half
  U64 low;        // whose lowest bit is the sum's
  U64 negative;   // all ones where the sum is negative

  U64 sum_is_odd() const { return low & broadcast(uint64_t{1}); }
};

// How a quotient is rounded. It grows by one where the remainder exceeds threshold() - threshold_bit(), if
// keep_growth() agrees; the bit that halving the sum took off shows in ties only. A sum that is not divided
// further grows by growth_of_half().
struct TowardZero {
  static uint64_t threshold(uint64_t) { return 0; }
  static U64 threshold_bit(Quotient q) { return q.sum_is_odd(); }
  static U64 keep_growth(Quotient q, U64 grows) { return grows & q.negative; }
  static U64 growth_of_half(Quotient q) { return q.sum_is_odd() & q.negative; }
};
struct TiesToEven {
  static uint64_t threshold(uint64_t divisor) { return divisor / 2; }
  static U64 threshold_bit(Quotient q) { return (q.value | q.low) & broadcast(uint64_t{1}); }
  static U64 keep_growth(Quotient, U64 grows) { return grows; }
  static U64 growth_of_half(Quotient q) { return q.sum_is_odd() & q.value; }
};
struct TiesUp {
  static uint64_t threshold(uint64_t divisor) { return divisor / 2 - 1; }
  static U64 threshold_bit(Quotient) { return U64{}; }
  static U64 keep_growth(Quotient, U64 grows) { return grows; }
  static U64 growth_of_half(Quotient q) { return q.sum_is_odd(); }
};
struct TiesDown {
  static uint64_t threshold(uint64_t divisor) { return divisor / 2; }
  static U64 threshold_bit(Quotient q) { return q.sum_is_odd(); }
  static U64 keep_growth(Quotient, U64 grows) { return grows; }
  static U64 growth_of_half(Quotient) { return U64{}; }
};

// For shifts by 1 to 64. Signed values are offset by 2^63, which makes them unsigned, and the quotient's
// share of the offset is taken off it.
template <class Rounding, class T>
ZIVKS_INLINE Register<T> round_sum(Register<T> a, Register<T> b, int shift) {
  constexpr uint64_t kOffset = std::is_signed_v<T> ? uint64_t{1} << 63 : 0;
  const U64 offset = broadcast(kOffset);
  const U64 x = U64(a) ^ offset, y = U64(b) ^ offset;
  const U64 half = (x & y) + ((x ^ y) >> 1);
  const int count = shift - 1;
  const uint64_t divisor = uint64_t{1} << count;
  Quotient quotient;
  quotient.value = shift_right(half, count) - broadcast(kOffset >> count);
  quotient.remainder = half & broadcast(divisor - 1);
  quotient.low = x ^ y;
  quotient.negative = std::is_signed_v<T> ? U64(I64(half ^ offset) < I64{}) : U64{};
  if (count == 0) return Register<T>(quotient.value + Rounding::growth_of_half(quotient));
  // Both sides are below 2^63.
  const U64 threshold = broadcast(Rounding::threshold(divisor)) - Rounding::threshold_bit(quotient);
  const U64 grows = U64(I64(quotient.remainder) > I64(threshold));
  return Register<T>(quotient.value - Rounding::keep_growth(quotient, grows));
}

template <class Rounding, class T, class Second>
void shift_right_rounded(const T* src, Second second, T* dst, size_t len, int shift) {
  if (shift == 1) {
    map(
        dst, len,
        [](auto a, auto b) {
          return lift<T>([](auto x, auto y) { return round_sum<Rounding, T>(x, y, 1); }, a, b);
        },
        src, second);
  } else {
    map(
        dst, len,
        [=](auto a, auto b) {
          return lift<T>([=](auto x, auto y) { return round_sum<Rounding, T>(x, y, shift); }, a, b);
        },
        src, second);
  }
}

// --- Other shifts --------------------------------------------------------------------------

template <class T, class Second>
void add_clamped(const T* src, Second second, T* dst, size_t len) {
  map(
      dst, len,
      [](auto a, auto b) { return lift<T>([](auto x, auto y) { return add_saturating(x, y); }, a, b); }, src,
      second);
}

// Halfway cases go up. Of 64-bit values nothing is left by a shift by more than 64.
template <class T>
T shift_wrapped(T value, int count) {
  const int wrapped = wrapped_shift(count);
  if (wrapped >= 0) return shift_left_saturating(broadcast(value), wrapped)[0];
  if (wrapped < -64) return 0;
  const U64 zero = {};
  return round_sum<TiesUp, T>(broadcast(value), Register<T>(zero), -wrapped)[0];
}

template <class T, class Second>
void shift_left_clamped(const T* src, Second second, T* dst, size_t len, int count) {
  if (count >= kLeastWrappingShift) {
    add_clamped(src, second, dst, len);
    for (size_t i = 0; i < len; ++i) dst[i] = shift_wrapped(dst[i], count);
    return;
  }
  map(
      dst, len,
      [=](auto a, auto b) {
        return lift<T>([=](auto x, auto y) { return shift_left_saturating(add_saturating(x, y), count); }, a,
                       b);
      },
      src, second);
}

// --- Shapes of the exported functions --------------------------------------------------------

// Shifts by up to 64.
template <class T>
ZIVKStatus add_constant(const T* src, T val, T* dst, int32_t len, ZIVKRoundMode rndMode, int shift) {
  const Repeated<T> constant = {broadcast(val)};
  const auto count = static_cast<size_t>(len);
  if (shift < 0) {
    shift_left_clamped(src, constant, dst, count, -shift);
  } else if (shift == 0) {
    add_clamped(src, constant, dst, count);
  } else if (rndMode == ZIVK_RND_ZERO) {
    shift_right_rounded<TowardZero>(src, constant, dst, count, shift);
  } else if (rndMode == ZIVK_RND_NEAR) {
    shift_right_rounded<TiesToEven>(src, constant, dst, count, shift);
  } else if (std::is_signed_v<T> && val == std::numeric_limits<T>::min()) {
    // With this constant a tie goes down in blocks of two, but up in the tail.
    const size_t blocks = count & ~size_t{1};
    if (blocks > 0) shift_right_rounded<TiesDown>(src, constant, dst, blocks, shift);
    if (blocks < count) shift_right_rounded<TiesUp>(src + blocks, constant, dst + blocks, 1, shift);
  } else {
    shift_right_rounded<TiesUp>(src, constant, dst, count, shift);
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
    shift_left_clamped(src1, src2, dst, count, -shift);
  } else if (shift == 0) {
    add_clamped(src1, src2, dst, count);
  } else if (shift <= 64) {
    shift_right_rounded<TiesToEven>(src1, src2, dst, count, shift);
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
