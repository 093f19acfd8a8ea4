// Multiplication by large powers of two, in which the scaled families differ.
//
// Most functions saturate: every value but 0 goes to a bound. Others do something else in whole blocks of
// elements, and saturate in the tail behind them. Scales of that kind are rare, so that such functions compute
// their results one by one.
#ifndef ZIVKS_ARITHMETIC_LONG_LEFT_SHIFTS_H
#define ZIVKS_ARITHMETIC_LONG_LEFT_SHIFTS_H

#include "arithmetic/scaled_operations.h"

namespace zivks {

// A function states its blocks in elements. Loops walk over parts, of which a complex element has two: InParts is
// the same behaviour with blocks of parts.

// Blocks and tail saturate.
struct Saturates {
  template <size_t parts_per_element>
  using InParts = Saturates;
};

// What a count that has wrapped into a shift to the right shifts, the exact value or the one clamped at the
// bounds of the type, and how it rounds.
enum class Wrapped { kExactHalfUp, kClampedHalfUp, kClampedDown };

// Blocks shift by wrapped_shift(). A block of one element stands for a function whose tail does so as well.
template <size_t block, Wrapped wrapped>
struct BlocksWrap {
  template <size_t parts_per_element>
  using InParts = BlocksWrap<block * parts_per_element, wrapped>;

  static constexpr int kLeastCount = kLeastWrappingShift;

  // `first` and `second` give operands by index.
  template <class Operation, class T, class First, class Second>
  [[gnu::noinline]] static void shift_left(T* dst, size_t len, First first, Second second, int count) {
    const size_t blocks = len & ~(block - 1);
    for (size_t i = 0; i < len; ++i) {
      const int64_t exact = Operation::exact(first(i), second(i));
      const int64_t value = wrapped == Wrapped::kExactHalfUp ? exact : clamp<T>(exact);
      if (i >= blocks) {
        dst[i] = shift_left_clamped<T>(exact, count);
      } else if (wrapped == Wrapped::kClampedDown && wrapped_shift(count) < 0) {
        dst[i] = clamp<T>(value >> std::min(-wrapped_shift(count), 63));
      } else {
        dst[i] = clamp<T>(shift_left_wrapping(value, count));
      }
    }
  }
};

// Blocks of 64 elements narrow unsigned products from 32 to 8 bits in two steps. The first step takes the
// elements 4 to 7 of each eight to 16 bits without saturation, which shows from a count of 9 on:
// 128 * 2^9 = 65536 becomes 0 in them.
struct BlocksNarrowInTwoSteps {
  template <size_t parts_per_element>
  using InParts = BlocksNarrowInTwoSteps;

  static constexpr int kLeastCount = 9;

  template <class Operation, class T, class First, class Second>
  [[gnu::noinline]] static void shift_left(T* dst, size_t len, First first, Second second, int count) {
    const size_t blocks = len & ~size_t{63};
    const int64_t multiplier = int64_t{1} << std::min(count, 32);
    for (size_t i = 0; i < len; ++i) {
      const int64_t value = std::max<int64_t>(Operation::exact(first(i), second(i)), 0);
      const auto product = clamp<uint32_t>(value * multiplier);
      const bool keeps_16_bits = i < blocks && i % 8 >= 4;
      dst[i] = clamp<T>(keeps_16_bits ? product & 0xFFFF : product);
    }
  }
};

}  // namespace zivks

#endif
