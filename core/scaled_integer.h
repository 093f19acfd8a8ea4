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

// x * 2^-shift, rounded down, plus 1 where the remainder exceeds `threshold`, for 0 < shift < kElementBits.
// Remainder and threshold are below the sign bit, so that a signed comparison serves all types. It gives -1
// where it is true.
template <class R>
ZIVKS_INLINE R shift_right_growing(R x, int shift, R threshold) {
  using Signed = Register<SignedOf<ElementOf<R>>>;
  return shift_right(x, shift) - R(Signed(lowest_bits(x, shift)) > Signed(threshold));
}

// (x + f) * 2^-shift, rounded to nearest, ties to even, for 0 < shift < kElementBits. The fraction f is one half
// in lanes where the lowest bit of `half` is set, else 0; the other bits of `half` have no effect.
//
// With h = 2^shift / 2 the result is floor((x + h - 1 + up) / 2^shift), where `up` is 1 if the quotient is odd or
// there is a fraction, else 0. A shift that rounds halves up adds h itself. Elsewhere the quotient grows by 1
// where the remainder exceeds h - up.
template <class R>
ZIVKS_INLINE R shift_right_to_even(R x, R half, int shift) {
  using T = ElementOf<R>;
  const R one = broadcast(T{1});
  // Of the quotient only the lowest bit is wanted, so that two of one byte can be shifted together.
  using Word = Register<UnsignedOf<std::max(sizeof(T), sizeof(uint16_t))>>;
  if constexpr (kRoundsInShifts<T>) {
    const R up = R(shift_right(Word(x), shift)) | half;
    return shift_right_half_up(subtract_saturating(x, one & ~up), shift);
  } else {
    const R up = shift_right(x, shift) | half;
    const R half_divisor = broadcast(static_cast<T>(UnsignedOf<sizeof(T)>{1} << (shift - 1)));
    return shift_right_growing(x, shift, half_divisor - (up & one));
  }
}

// x * 2^-shift, rounded in `mode`, for 0 < shift < kElementBits.
template <ZIVKRoundMode mode, class R>
ZIVKS_INLINE R shift_right_rounded(R x, int shift) {
  using T = ElementOf<R>;
  if constexpr (mode == ZIVK_RND_NEAR) {
    return shift_right_to_even(x, R{}, shift);
  } else if constexpr (std::is_unsigned_v<T>) {
    return mode == ZIVK_RND_AWAY ? shift_right_half_up(x, shift) : shift_right(x, shift);
  } else {
    const R minus_one_if_negative = x >> (kElementBits<R> - 1);
    const T half_less_one = static_cast<T>((UnsignedOf<sizeof(T)>{1} << (shift - 1)) - 1);
    if constexpr (mode == ZIVK_RND_ZERO) {
      return shift_right(x + (minus_one_if_negative & broadcast(static_cast<T>(2 * half_less_one + 1))),
                         shift);
    } else if constexpr (kRoundsInShifts<T>) {
      return shift_right_half_up(add_saturating(x, minus_one_if_negative), shift);
    } else {
      return shift_right_growing(x, shift, broadcast(half_less_one) - minus_one_if_negative);
    }
  }
}

// The same for shift >= kElementBits. The magnitude of the quotient is at most one half, or less than 1 if x is
// unsigned, so that the result is -1, 0 or 1.
template <ZIVKRoundMode mode, class R>
ZIVKS_INLINE R shift_out_rounded(R x, int shift) {
  using T = ElementOf<R>;
  using Limits = std::numeric_limits<T>;
  if constexpr (std::is_signed_v<T>) {  // only the lowest x can reach one half
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

// Calls `body` with a function that multiplies a register of T by 2^exponent and rounds in `mode`. Results whose
// magnitude exceeds 2^bits may come out as 2^bits with their sign: callers clamp at less.
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
// halves rounded up. A shift to the left by 31 takes every x but 0 to the bounds that callers clamp at, or beyond,
// so that larger counts do the same. A shift to the right by 34 gives 0 for every x, and so do larger counts.
inline int64_t shift_left_wrapping(int64_t x, int count) {
  const int wrapped = wrapped_shift(count);
  if (wrapped >= 0) return x * (int64_t{1} << std::min(wrapped, 31));
  const int right = std::min(-wrapped, 34);
  return (x + (int64_t{1} << (right - 1))) >> right;
}

}  // namespace zivks

#endif
