// Integers times a power of two, rounded and made ready to be clamped. The results are those of
// floating-point arithmetic and cost less.
#ifndef ZIVKS_CORE_SCALED_INTEGER_H
#define ZIVKS_CORE_SCALED_INTEGER_H

#include <zivks/types.h>

#include <algorithm>
#include <limits>

#include "core/scale.h"
#include "core/vector/lanes.h"

namespace zivks {

template <class R>
inline constexpr int kElementBits = 8 * sizeof(ElementOf<R>);

// x * 2^-shift, rounded in `mode`, for 0 < shift < kElementBits.
//
// The quotient is rounded down, and goes up by one if what is left of x is beyond a threshold of about one
// half. It is less than 2^shift, so that signed comparisons will do. They give -1 where they are true.
template <ZIVKRoundMode mode, class R>
ZIVKS_INLINE R shift_right_rounded(R x, int shift) {
  using T = ElementOf<R>;
  using Signed = Register<SignedOf<T>>;
  const T half = static_cast<T>(UnsignedOf<sizeof(T)>{1} << (shift - 1));
  const T rest_mask = static_cast<T>(half + (half - 1));
  const R quotient = shift_right(x, shift), rest = x & broadcast(rest_mask);
  if constexpr (mode == ZIVK_RND_NEAR) {  // up at a tie if the quotient is odd
    return quotient - R(Signed(rest) > Signed(broadcast(half) - (quotient & broadcast(T{1}))));
  } else if constexpr (mode == ZIVK_RND_AWAY && std::is_signed_v<T>) {  // up at a tie unless x is negative
    return quotient - R(rest > (broadcast(static_cast<T>(half - 1)) - (x >> (kElementBits<R> - 1))));
  } else if constexpr (mode == ZIVK_RND_AWAY) {
    return quotient - R(Signed(rest) > Signed(broadcast(static_cast<T>(half - 1))));
  } else if constexpr (std::is_signed_v<T>) {
    return shift_right(x + ((x >> (kElementBits<R> - 1)) & broadcast(rest_mask)), shift);
  } else {
    return quotient;
  }
}

// The same for shift >= kElementBits: what rounds to one, or of signed numbers to minus one, if anything
// does.
template <ZIVKRoundMode mode, class R>
ZIVKS_INLINE R shift_out_rounded(R x, int shift) {
  using T = ElementOf<R>;
  using Limits = std::numeric_limits<T>;
  if constexpr (std::is_signed_v<T>) {  // minus one half at most
    const bool rounds_lowest = mode == ZIVK_RND_AWAY && shift == kElementBits<R>;
    return R(x < broadcast(static_cast<T>(Limits::min() + rounds_lowest)));
  } else {
    constexpr T kHalf = Limits::max() / 2 + (mode == ZIVK_RND_NEAR);
    const bool reaches_half = mode != ZIVK_RND_ZERO && shift == kElementBits<R>;
    return R{} - R(x > broadcast(reaches_half ? kHalf : Limits::max()));
  }
}

// x * 2^shift for shift >= 0 where its magnitude is below 2^bits; beyond that, 2^bits with its sign.
template <int bits, class R>
ZIVKS_INLINE R shift_left_bounded(R x, int shift) {
  using T = ElementOf<R>;
  // Results fit the element, so that two of one byte can be shifted together.
  using Word = Register<UnsignedOf<std::max(sizeof(T), sizeof(uint16_t))>>;
  const int count = std::min(shift, bits);
  const T limit = static_cast<T>(T{1} << (bits - count));
  R bounded = minimum(x, broadcast(limit));
  if constexpr (std::is_signed_v<T>) bounded = maximum(bounded, broadcast(static_cast<T>(-limit)));
  return R(shift_left(Word(bounded), count));
}

// Calls `body` with a function that multiplies a register of T by 2^exponent and rounds in `mode`. A result
// beyond 2^bits may be just that.
template <class T, ZIVKRoundMode mode, int bits, class Body>
void with_scaling(int exponent, Body body) {
  if (exponent == 0) return body([](auto x) { return x; });
  if (exponent > 0) return body([=](auto x) { return shift_left_bounded<bits>(x, exponent); });
  if (-exponent < kElementBits<Register<T>>) {
    return body([=](auto x) { return shift_right_rounded<mode>(x, -exponent); });
  }
  return body([=](auto x) { return shift_out_rounded<mode>(x, -exponent); });
}

// x, of at most 33 bits, shifted to the left by wrapped_shift(count) or, if that is negative, to the right with
// halves up. Counts above 31 act like 31: what is not 0 is then at or beyond every bound that callers clamp at.
// From 34 on a shift to the right gives 0.
inline int64_t shift_left_wrapping(int64_t x, int count) {
  const int wrapped = wrapped_shift(count);
  if (wrapped >= 0) return x * (int64_t{1} << std::min(wrapped, 31));
  const int right = std::min(-wrapped, 34);
  return (x + (int64_t{1} << (right - 1))) >> right;
}

}  // namespace zivks

#endif
