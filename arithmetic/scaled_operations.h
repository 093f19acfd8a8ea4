// The two operations of the scaled families, addition and subtraction, on registers and on single values.
//
// A scale selects a power of two, 2^count, by which the exact sum or difference is divided, rounded to nearest
// with ties to even, or multiplied. Sums and differences have one bit more than their operands: a register of
// operands cannot hold them, but it can hold their halves.
#ifndef ZIVKS_ARITHMETIC_SCALED_OPERATIONS_H
#define ZIVKS_ARITHMETIC_SCALED_OPERATIONS_H

#include <algorithm>
#include <limits>

#include "core/scaled_integer.h"

namespace zivks {

// Of each operation:
//
//   kBits<T>              bits of its exact result; that of unsigned subtraction is 0 where it would be
//                         negative, since every negative result becomes 0
//   exact(a, b)           of single values
//   clamped(a, b)         clamped at the bounds of the type
//   halved(a, b)          divided by 2
//   divided(a, b, count)  divided by 2^count, 2 <= count < kBits
//   exceeds_half(a, b)    divided by 2^kBits, of unsigned values: 1 where the result exceeds 2^kBits / 2, else 0
struct Sum {
  template <class T>
  static constexpr int kBits = 8 * sizeof(T) + 1;

  static int64_t exact(int64_t a, int64_t b) { return a + b; }

  template <class R>
  ZIVKS_INLINE static R clamped(R a, R b) {
    return add_saturating(a, b);
  }

  // An odd sum lies between two integers. With its lowest bit cleared the upper one is the even one.
  template <class R>
  ZIVKS_INLINE static R halved(R a, R b) {
    const R odd = (a ^ b) & broadcast(ElementOf<R>{1});
    return average_up(a, b) & ~odd;
  }

  template <class R>
  ZIVKS_INLINE static R divided(R a, R b, int count) {
    return shift_right_to_even(average_down(a, b), a ^ b, count - 1);
  }

  // The highest bit is a carry: the sum modulo 2^(kBits - 1) is less than either operand.
  template <class R>
  ZIVKS_INLINE static R exceeds_half(R a, R b) {
    const R wrapped = a + b;
    return R(wrapped < a) & R(wrapped != R{}) & broadcast(ElementOf<R>{1});
  }
};

struct Difference {
  template <class T>
  static constexpr int kBits = 8 * sizeof(T) + std::is_signed_v<T>;

  static int64_t exact(int64_t a, int64_t b) { return a - b; }

  template <class R>
  ZIVKS_INLINE static R clamped(R a, R b) {
    return subtract_saturating(a, b);
  }

  template <class R>
  ZIVKS_INLINE static R halved(R a, R b) {
    using T = ElementOf<R>;
    const R one = broadcast(T{1});
    if constexpr (std::is_unsigned_v<T>) {
      return Sum::halved(subtract_saturating(a, b), R{});
    } else {
      // Half of an odd difference goes up from an odd integer, but not beyond the bound, an odd integer itself.
      const R half = half_difference_down(a, b), odd = (a ^ b) & one;
      if constexpr (kRoundsInShifts<T>) return add_saturating(half, half & odd);
      const R below_bound = broadcast(static_cast<T>(std::numeric_limits<T>::max() - 1));
      return half + (minimum(half, below_bound) & odd);
    }
  }

  template <class R>
  ZIVKS_INLINE static R divided(R a, R b, int count) {
    if constexpr (std::is_unsigned_v<ElementOf<R>>) {
      return shift_right_to_even(subtract_saturating(a, b), R{}, count);
    } else {
      return shift_right_to_even(half_difference_down(a, b), a ^ b, count - 1);
    }
  }

  template <class R>
  ZIVKS_INLINE static R exceeds_half(R a, R b) {
    using T = ElementOf<R>;
    constexpr T kHalf = std::numeric_limits<T>::max() / 2 + 1;
    return R(subtract_saturating(a, b) > broadcast(kHalf)) & broadcast(T{1});
  }
};

// --- Single values ---------------------------------------------------------------------------

template <class T>
T clamp(int64_t value) {
  using Limits = std::numeric_limits<T>;
  return static_cast<T>(std::min<int64_t>(std::max<int64_t>(value, Limits::min()), Limits::max()));
}

// Sums and differences are from -2^32 to 2^32 - 1. A shift by 31 does not overflow an int64, and has taken
// all but 0 to a bound.
template <class T>
T shift_left_clamped(int64_t value, int count) {
  return clamp<T>(value * (int64_t{1} << std::min(count, 31)));
}

}  // namespace zivks

#endif
