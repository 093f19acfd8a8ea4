// Scaled, saturating addition and subtraction of integers of 8 to 32 bits, real and complex, with an array
// or with a constant.
//
// A scale selects a power of two, 2^shift, so that no floating-point number is needed. With a positive shift
// the exact sum or difference is shifted to the right and rounded to nearest, ties to even. With a shift of 0
// the operation saturates. With a negative shift it saturates and is then shifted to the left with
// saturation, which is the same as shifting the exact value, since a value at a bound stays there.
//
// Where the members are not alike is in long shifts to the left, which some of them do in another way in
// their blocks than in their tails: LongShift, a parameter of each function in the table at the end.
#include <zivks/arithmetic.h>
#include <zivks/movement.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "core/checks.h"
#include "core/complex.h"
#include "core/scale.h"
#include "core/scaled_integer.h"

using namespace zivks;

namespace {

// --- Operations ------------------------------------------------------------------------

// The floor of half an exact result, and a register whose lowest bits are those of the result itself:
// together all of its bits, though a lane has one less.
template <class R>
struct Halved {
  R floor;
  R low;
};

struct Sum {
  template <class R>
  static R clamped(R a, R b) {
    return add_saturating(a, b);
  }
  template <class R>
  static Halved<R> halved(R a, R b) {
    return {(a & b) + ((a ^ b) >> 1), a ^ b};
  }
  template <class L>
  static auto widened(L a, L b) {
    return widen<uint16_t>(a) + widen<uint16_t>(b);
  }
  static int64_t exact(int64_t a, int64_t b) { return a + b; }
};

struct Difference {
  template <class R>
  static R clamped(R a, R b) {
    return subtract_saturating(a, b);
  }
  // a - b is a + ~b + 1, whose half is rounded down where that of a + ~b is rounded up. Unsigned values
  // below zero are clamped, to which any rounding leads.
  template <class R>
  static Halved<R> halved(R a, R b) {
    if constexpr (std::is_signed_v<ElementOf<R>>) {
      return {(a | ~b) - ((a ^ ~b) >> 1), a ^ b};
    } else {
      const R difference = subtract_saturating(a, b);
      return {difference >> 1, difference};
    }
  }
  template <class L>
  static auto widened(L a, L b) {
    return widen<uint16_t>(subtract_saturating(a, b));
  }
  static int64_t exact(int64_t a, int64_t b) { return a - b; }
};

// --- Exact arithmetic on single values ---------------------------------------------------

template <class T>
T clamp(int64_t value) {
  using Limits = std::numeric_limits<T>;
  return static_cast<T>(std::min<int64_t>(std::max<int64_t>(value, Limits::min()), Limits::max()));
}

// Sums and differences are from -2^32 to 2^32 - 1, so that a shift by 31 overflows for none. By then all but
// 0 have reached a bound.
template <class T>
T shift_left_clamped(int64_t value, int count) {
  return clamp<T>(value * (int64_t{1} << std::min(count, 31)));
}

// --- Long shifts to the left ---------------------------------------------------------------

// They take all values but 0 to a bound, in blocks and tail.
struct Saturates {};

// What a count that has wrapped into a shift to the right shifts, and how it rounds.
enum class Wrapped { kExactHalfUp, kClampedHalfUp, kClampedDown };

// Blocks of so many elements shift by wrapped_shift(). Results come one by one, since such scales are rare;
// `first` and `second` give elements by index.
template <size_t block, Wrapped wrapped>
struct Wraps {
  static constexpr int kLeastCount = kLeastWrappingShift;

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
template <size_t block>
using WrapsExact = Wraps<block, Wrapped::kExactHalfUp>;
template <size_t block>
using WrapsClamped = Wraps<block, Wrapped::kClampedHalfUp>;
template <size_t block>
using WrapsDown = Wraps<block, Wrapped::kClampedDown>;

// Blocks of 64 elements narrow from 32 to 8 bits in two steps, the first of which takes the elements 4 to 7
// of each eight to 16 bits without saturation. It shows from a count of 9 on.
struct NarrowsInTwoSteps {
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

// --- Kernels -------------------------------------------------------------------------------

// Half of `halved`, ties to even.
template <class R>
R round_halved(Halved<R> halved) {
  return add_saturating(halved.floor, halved.low & halved.floor & broadcast(ElementOf<R>{1}));
}

// `halved` shifted to the right by one to width - 1, ties to even: as usual the quotient grows by what the
// remainder, half the divisor less one, and the quotient's last bit carry over. The bit that `halved` has
// lost only matters in a tie, which it breaks upward.
template <class R>
R round_halved(Halved<R> halved, int count) {
  using T = ElementOf<R>;
  using Bits = Register<std::make_unsigned_t<T>>;
  const Bits one = broadcast(std::make_unsigned_t<T>{1});
  const Bits half_less_one = shift_left(one, count - 1) - one;
  const Bits remainder = shift_left(one, count) - one;
  const Bits quotient = Bits(shift_right(halved.floor, count));
  const Bits tie = (quotient | Bits(halved.low)) & one;
  return R(quotient + shift_right((Bits(halved.floor) & remainder) + half_less_one + tie, count));
}

// Unsigned 16-bit values of at most 510, ties to even.
template <size_t N>
ZIVKS_INLINE Lanes<uint16_t, N> divide_small_rounded(Lanes<uint16_t, N> value, int count) {
  const U16 one = broadcast(uint16_t{1});
  const U16 half_less_one = shift_left(one, count - 1) - one;
  return lift<uint16_t>(
      [=](U16 x) { return shift_right(x + half_less_one + (shift_right(x, count) & one), count); }, value);
}

// The average of unsigned bytes, ties to even. The processor's own goes up.
ZIVKS_INLINE U8 average_to_even(U8 a, U8 b) {
  const U8 up = average(a, b);
  return up - ((a ^ b) & up & broadcast(uint8_t{1}));
}

// The sum of unsigned values of `width` bits, halved, shifted to the right by `width`: one where it exceeds
// the half, zero elsewhere.
template <class R>
ZIVKS_INLINE R exceeds_half(Halved<R> halved) {
  using T = ElementOf<R>;
  const R one = broadcast(T{1}), half_less_one = broadcast(static_cast<T>(std::numeric_limits<T>::max() / 2));
  const R above = subtract_saturating(halved.floor, half_less_one);  // 1 at the half
  const R with_low = add_saturating(above, halved.low & minimum(above, one));
  return minimum(subtract_saturating(with_low, one), one);
}

// Drives a kernel of registers of T over two operands.
template <class T, class Destination, class Kernel, class First, class Second>
ZIVKS_INLINE ZIVKStatus map_registers(Destination dst, size_t len, Kernel kernel, First first,
                                      Second second) {
  return map(
      dst, len, [=](auto a, auto b) { return lift<T>(kernel, a, b); }, first, second);
}

// Divides by 2^count, count > 0.
template <class Operation, class T, size_t distance, Prefetch hint, class First, class Second>
ZIVKStatus divide_rounded(Array<T, distance, hint> dst, size_t len, int count, First first, Second second) {
  constexpr int kWidth = 8 * sizeof(T);
  constexpr bool kSumOfUnsigned = std::is_same_v<Operation, Sum> && std::is_unsigned_v<T>;
  if constexpr (sizeof(T) == 1) {
    if constexpr (kSumOfUnsigned) {
      if (count == 1) return map_registers<T>(dst, len, average_to_even, first, second);
    }
    const int bounded = std::min(count, 10);  // by then the largest sum, 510, rounds to 0
    return map(
        dst, len,
        [=](auto a, auto b) {
          return narrow_saturating<T>(divide_small_rounded(Operation::widened(a, b), bounded));
        },
        first, second);
  } else {
    if (count == 1) {
      const auto kernel = [](auto x, auto y) { return round_halved(Operation::halved(x, y)); };
      return map_registers<T>(dst, len, kernel, first, second);
    }
    if (count <= kWidth) {
      const auto kernel = [=](auto x, auto y) { return round_halved(Operation::halved(x, y), count - 1); };
      return map_registers<T>(dst, len, kernel, first, second);
    }
    if constexpr (kSumOfUnsigned) {
      if (count == kWidth + 1) {
        const auto kernel = [](auto x, auto y) { return exceeds_half(Operation::halved(x, y)); };
        return map_registers<T>(dst, len, kernel, first, second);
      }
    }
    std::memset(dst.data, 0, len * sizeof(T));
    return ZIVK_STS_NO_ERR;
  }
}

// --- Shapes of the exported functions ------------------------------------------------------

// Elements of an array, or of a constant that repeats, by index.
template <class T>
auto elements_of(Array<const T> array) {
  return [=](size_t i) -> int64_t { return array.data[i]; };
}
template <class T>
auto elements_of(Repeated<T> constant) {
  return [=](size_t i) -> int64_t { return constant.pattern[i % 2]; };
}

// Distances of the prefetch hints without a shift, with one to the right and with one to the left; 0 is none.
template <size_t unshifted, size_t right, size_t left>
struct Distances {
  static constexpr size_t kUnshifted = unshifted, kRight = right, kLeft = left;
};
using None = Distances<0, 0, 0>;
template <size_t distance>
using Always = Distances<distance, distance, distance>;
// Ahead of what is read, and ahead of what is written.
template <class ReadDistances = None, class WriteDistances = None>
struct Ahead {
  using Reads = ReadDistances;
  using Writes = WriteDistances;
};

template <size_t distance, class T>
Array<const T, kHintDistance<distance>> hinted(Array<const T> array) {
  return {array.data};
}
template <size_t distance, class T>
Array<T, kHintDistance<distance>, Prefetch::kWrite> hinted(Array<T> array) {
  return {array.data};
}
template <size_t, class T>
Repeated<T> hinted(Repeated<T> constant) {
  return constant;
}

// Checks the scale, which decides on the loop, and runs it. Complex elements have become their parts here.
template <class Operation, class LongShift, class Hints, class T, class First, class Second>
[[gnu::noinline]] ZIVKStatus scale_operands(Array<T> dst, size_t len, double scale, First first,
                                            Second second) {
  using Reads = typename Hints::Reads;
  using Writes = typename Hints::Writes;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int shift = scale_shift(scale);
  if (shift > 0) {
    return divide_rounded<Operation>(hinted<Writes::kRight>(dst), len, shift, hinted<Reads::kRight>(first),
                                     hinted<Reads::kRight>(second));
  }
  if (shift == 0) {
    const auto kernel = [](auto x, auto y) { return Operation::clamped(x, y); };
    return map_registers<T>(hinted<Writes::kUnshifted>(dst), len, kernel, hinted<Reads::kUnshifted>(first),
                            hinted<Reads::kUnshifted>(second));
  }
  if constexpr (!std::is_same_v<LongShift, Saturates>) {
    if (-shift >= LongShift::kLeastCount) {
      LongShift::template shift_left<Operation>(dst.data, len, elements_of(first), elements_of(second),
                                                -shift);
      return ZIVK_STS_NO_ERR;
    }
  }
  constexpr int kEnough = 127;  // for all values but 0 to saturate, and no more than lanes can be shifted by
  const int count = std::min(-shift, kEnough);
  const auto kernel = [=](auto x, auto y) { return shift_left_saturating(Operation::clamped(x, y), count); };
  return map_registers<T>(hinted<Writes::kLeft>(dst), len, kernel, hinted<Reads::kLeft>(first),
                          hinted<Reads::kLeft>(second));
}

// Arrays of real or complex elements.
template <class Operation, class LongShift, class Hints = Ahead<>, class T>
ZIVKStatus combine_arrays(const T* first, const T* second, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, first, second, dst)) return status;
  return scale_operands<Operation, LongShift, Hints>(as_operand(parts_of(dst)), count_parts<T>(len), scale,
                                                     as_operand(parts_of(first)),
                                                     as_operand(parts_of(second)));
}

template <class Operation, class LongShift, class Hints = Ahead<>, class T>
ZIVKStatus combine_constant(const T* src, T val, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return scale_operands<Operation, LongShift, Hints>(as_operand(parts_of(dst)), count_parts<T>(len), scale,
                                                     as_operand(parts_of(src)),
                                                     Repeated<Part<T>>{repeat_parts(val)});
}

template <class LongShift, class Hints = Ahead<>, class T>
ZIVKStatus subtract_from_constant(const T* src, T val, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return scale_operands<Difference, LongShift, Hints>(as_operand(parts_of(dst)), count_parts<T>(len), scale,
                                                      Repeated<Part<T>>{repeat_parts(val)},
                                                      as_operand(parts_of(src)));
}

}  // namespace

// --- Arrays ------------------------------------------------------------------------------

ZIVKStatus ZIVKS_Add_8u_S(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len, double scale) {
  return combine_arrays<Sum, WrapsExact<8>, Ahead<Distances<512, 256, 256>, Distances<0, 256, 0>>>(
      src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                           double scale) {
  if (is_valid_scale(scale) && scale_shift(scale) == 0) return ZIVKS_Add_16u(src1, src2, dst, len);
  return combine_arrays<Sum, WrapsExact<4>, Ahead<Distances<0, 512, 512>>>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Sum, Saturates>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Sum, Saturates>(src1, src2, dst, len, scale);
}

ZIVKStatus ZIVKS_Add_8u_IS(const uint8_t* src, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_8u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_16u_IS(const uint16_t* src, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_16u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_16s_IS(const int16_t* src, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_16s_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_32s_IS(const int32_t* src, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_32s_S(src, srcDst, srcDst, len, scale);
}

ZIVKStatus ZIVKS_Sub_8u_S(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len, double scale) {
  return combine_arrays<Difference, NarrowsInTwoSteps, Ahead<Always<512>, Always<512>>>(src2, src1, dst, len,
                                                                                        scale);
}
ZIVKStatus ZIVKS_Sub_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, WrapsClamped<32>, Ahead<Always<1024>, Distances<0, 1024, 0>>>(
      src2, src1, dst, len, scale);
}
ZIVKStatus ZIVKS_Sub_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, Saturates>(src2, src1, dst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, Saturates>(src2, src1, dst, len, scale);
}

ZIVKStatus ZIVKS_Sub_8u_IS(const uint8_t* src, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_8u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_16u_IS(const uint16_t* src, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_16u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_16s_IS(const int16_t* src, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_16s_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32s_IS(const int32_t* src, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_32s_S(src, srcDst, srcDst, len, scale);
}

// --- Constants ---------------------------------------------------------------------------

// From a scale of 512 on the sum counts for nothing, though up to 510 / 512 would round to 1.
ZIVKStatus ZIVKS_AddC_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len, double scale) {
  constexpr int kLargestShift = 8;
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (is_valid_scale(scale) && scale_shift(scale) > kLargestShift) return ZIVKS_Zero_8u(dst, len);
  return combine_constant<Sum, WrapsDown<32>, Ahead<Distances<0, 128, 0>, Distances<0, 256, 0>>>(
      src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsDown<32>, Ahead<Distances<0, 768, 0>, Distances<0, 1280, 0>>>(
      src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsDown<8>, Ahead<Distances<0, 512, 1024>>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_AddC_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_8u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_16u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_16s_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_32s_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubC_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, WrapsClamped<16>, Ahead<Always<512>, Distances<0, 512, 0>>>(
      src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, WrapsClamped<32>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, Saturates>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubC_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_8u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_16u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_16s_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_32s_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len, double scale) {
  return subtract_from_constant<WrapsClamped<16>, Ahead<Always<512>, Distances<0, 512, 0>>>(src, val, dst,
                                                                                            len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return subtract_from_constant<WrapsClamped<32>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return subtract_from_constant<Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return subtract_from_constant<Saturates>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_8u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_16u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_16s_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_32s_S(srcDst, val, srcDst, len, scale);
}

// --- Complex elements, part by part ------------------------------------------------------

ZIVKStatus ZIVKS_Add_16sc_S(const ZIVK16sc* src1, const ZIVK16sc* src2, ZIVK16sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Sum, WrapsExact<16>>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_32sc_S(const ZIVK32sc* src1, const ZIVK32sc* src2, ZIVK32sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Sum, WrapsExact<4>>(src1, src2, dst, len, scale);
}

ZIVKStatus ZIVKS_Add_16sc_IS(const ZIVK16sc* src, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_16sc_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_32sc_IS(const ZIVK32sc* src, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_32sc_S(src, srcDst, srcDst, len, scale);
}

ZIVKStatus ZIVKS_Sub_16sc_S(const ZIVK16sc* src1, const ZIVK16sc* src2, ZIVK16sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Difference, Saturates, Ahead<Always<1024>, Always<1024>>>(src2, src1, dst, len,
                                                                                  scale);
}
ZIVKStatus ZIVKS_Sub_32sc_S(const ZIVK32sc* src1, const ZIVK32sc* src2, ZIVK32sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Difference, Saturates, Ahead<Always<2048>, Always<2048>>>(src2, src1, dst, len,
                                                                                  scale);
}

ZIVKStatus ZIVKS_Sub_16sc_IS(const ZIVK16sc* src, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_16sc_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32sc_IS(const ZIVK32sc* src, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_32sc_S(src, srcDst, srcDst, len, scale);
}

ZIVKStatus ZIVKS_AddC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsDown<32>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsDown<16>, Ahead<Distances<0, 2048, 0>, Distances<0, 1024, 0>>>(
      src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_AddC_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_16sc_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_32sc_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return combine_constant<Difference, Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len, double scale) {
  return combine_constant<Difference, WrapsClamped<1>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubC_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_16sc_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_32sc_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return subtract_from_constant<Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len, double scale) {
  return subtract_from_constant<WrapsClamped<1>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_16sc_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_32sc_S(srcDst, val, srcDst, len, scale);
}
