// Scaled, saturating addition and subtraction of integers of 8 to 32 bits, real and complex, with an array
// or with a constant.
//
// A scale is a power of two, 2^shift, so that no floating-point number is needed. With a positive shift the
// exact sum or difference is shifted to the right and rounded to nearest, ties to even. With a shift of 0
// the operation saturates. With a negative shift it saturates and is then shifted to the left with
// saturation, which is the same as shifting the exact value, since a value at a bound stays there.
//
// Where the families are not alike is in shifts to the left by 128 and more. Some members multiply, and a
// non-zero value ends at a bound whatever the count. Others shift in their blocks by the low 8 bits of the
// count, taken as signed: what that means is a property of the member, stated in the table of functions at
// the end.
#include <zivks/arithmetic.h>
#include <zivks/movement.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "core/checks.h"
#include "core/complex.h"
#include "core/scale.h"

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

// Values here have up to 33 bits.
template <class T>
T shift_left_clamped(int64_t value, int count) {
  if (count <= 30) return clamp<T>(value * (int64_t{1} << count));
  return value == 0 ? T{0} : value > 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
}

int64_t shift_right_truncating(int64_t value, int count) { return value >> std::min(count, 63); }
int64_t shift_right_half_up(int64_t value, int count) {
  return count > 40 ? 0 : (value + (int64_t{1} << (count - 1))) >> count;
}

// --- Left shifts -------------------------------------------------------------------------

// What a member's blocks do with long left shifts, and how long the blocks are.
//
// Multiplies: nothing else than with short ones.
struct Multiplies {};
// Narrows to 8 bits in two steps, of which the first keeps only 16 bits of the elements 4 to 7 of each
// eight. It shows from a count of 9 on.
template <size_t elements>
struct NarrowsInTwoSteps {
  static constexpr size_t kBlock = elements;
};
// Shifts by the low 8 bits of the count, which are negative from 128 to 255: to the right then.
template <size_t elements, bool shifts_exact_value, bool rounds_half_up>
struct Wraps {
  static constexpr size_t kBlock = elements;
  static constexpr bool kExact = shifts_exact_value, kRounds = rounds_half_up;
};
// The exact value, rounded half up; the clamped value, rounded half up; the clamped value, truncated.
template <size_t elements>
using WrapsExact = Wraps<elements, true, true>;
template <size_t elements>
using WrapsClamped = Wraps<elements, false, true>;
template <size_t elements>
using WrapsTruncating = Wraps<elements, false, false>;

inline constexpr int kWrappingCount = 128;

// The rare case, element by element. `First` and `Second` give elements by index.
template <class Operation, class Path, class T, class First, class Second>
[[gnu::noinline]] void shift_left_wrapping(T* dst, size_t len, First first, Second second, int count) {
  const int wrapped = static_cast<int8_t>(static_cast<uint8_t>(count));
  const size_t blocks = len & ~(Path::kBlock - 1);
  for (size_t i = 0; i < len; ++i) {
    const int64_t exact = Operation::exact(first(i), second(i));
    const int64_t value = Path::kExact ? exact : clamp<T>(exact);
    if (i >= blocks) {
      dst[i] = shift_left_clamped<T>(exact, count);
    } else if (wrapped >= 0) {
      dst[i] = shift_left_clamped<T>(value, wrapped);
    } else {
      dst[i] = clamp<T>(Path::kRounds ? shift_right_half_up(value, -wrapped)
                                      : shift_right_truncating(value, -wrapped));
    }
  }
}

inline constexpr int kNarrowingCount = 9;

template <class Path, class T, class First, class Second>
[[gnu::noinline]] void subtract_narrowing_in_two_steps(T* dst, size_t len, First first, Second second,
                                                       int count) {
  const size_t blocks = len & ~(Path::kBlock - 1);
  constexpr int64_t kLargest = std::numeric_limits<uint32_t>::max();
  for (size_t i = 0; i < len; ++i) {
    const int64_t difference = std::max<int64_t>(Difference::exact(first(i), second(i)), 0);
    const int64_t product = std::min(difference * (int64_t{1} << std::min(count, 40)), kLargest);
    const bool keeps_16_bits = i < blocks && i % 8 >= 4;
    dst[i] = clamp<T>(keeps_16_bits ? product & 0xFFFF : product);
  }
}

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
ZIVKS_INLINE Lanes<uint16_t, N> round_small(Lanes<uint16_t, N> value, int count) {
  const U16 one = broadcast(uint16_t{1});
  const U16 half_less_one = shift_left(one, count - 1) - one;
  return lift<uint16_t>(
      [=](U16 x) { return shift_right(x + half_less_one + (shift_right(x, count) & one), count); }, value);
}

template <class Operation, class T, size_t distance, Prefetch hint, class First, class Second>
ZIVKStatus shift_right(Array<T, distance, hint> dst, size_t len, int count, First first, Second second) {
  if constexpr (sizeof(T) == 1) {
    // 510 / 2^10 is no half.
    const int bounded = std::min(count, 10);
    if (count == 1 && std::is_same_v<Operation, Sum>) {
      return map(
          dst, len,
          [](auto a, auto b) {
            return lift<T>(
                [](U8 x, U8 y) {
                  const U8 up = average(x, y);
                  return up - ((x ^ y) & up & broadcast(uint8_t{1}));
                },
                a, b);
          },
          first, second);
    }
    return map(
        dst, len,
        [=](auto a, auto b) { return narrow_saturating<T>(round_small(Operation::widened(a, b), bounded)); },
        first, second);
  } else {
    constexpr int kWidth = 8 * sizeof(T);
    if (count == 1) {
      return map(
          dst, len,
          [](auto a, auto b) {
            return lift<T>([](auto x, auto y) { return round_halved(Operation::halved(x, y)); }, a, b);
          },
          first, second);
    }
    if (count <= kWidth) {
      return map(
          dst, len,
          [=](auto a, auto b) {
            return lift<T>([=](auto x, auto y) { return round_halved(Operation::halved(x, y), count - 1); },
                           a, b);
          },
          first, second);
    }
    // What is left of a sum of unsigned values is whether it exceeds the half.
    if (std::is_same_v<Operation, Sum> && !std::is_signed_v<T> && count == kWidth + 1) {
      const Register<T> half_less_one = broadcast(static_cast<T>(std::numeric_limits<T>::max() / 2));
      return map(
          dst, len,
          [=](auto a, auto b) {
            return lift<T>(
                [=](auto x, auto y) {
                  const auto halved = Operation::halved(x, y);
                  const auto one = broadcast(T{1});
                  const auto above = subtract_saturating(halved.floor, half_less_one);
                  const auto with_low = add_saturating(above, halved.low & minimum(above, one));
                  return minimum(subtract_saturating(with_low, one), one);
                },
                a, b);
          },
          first, second);
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

// Distances of the prefetch hints: ahead of the sources without a shift, with one to the right and with one
// to the left, and ahead of the destination with one to the right and else.
template <size_t unshifted, size_t right, size_t left, size_t right_destination = 0, size_t destination = 0>
struct Hints {
  static constexpr size_t kUnshifted = unshifted, kRight = right, kLeft = left;
  static constexpr size_t kRightDestination = right_destination, kDestination = destination;
};
using NoHints = Hints<0, 0, 0>;

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

// Real and complex members share it.
template <class Operation, class Path, class Hints, class T, class First, class Second>
[[gnu::noinline]] ZIVKStatus scale_operands(Array<T> dst, size_t len, double scale, First first,
                                            Second second) {
  const double multiplier = scale_multiplier(scale);
  if (multiplier != multiplier) return ZIVK_STS_SCALE_ERR;
  const int shift = -scale_exponent(scale);
  if (shift > 0) {
    return shift_right<Operation>(hinted<Hints::kRightDestination>(dst), len, shift,
                                  hinted<Hints::kRight>(first), hinted<Hints::kRight>(second));
  }
  const auto destination = hinted<Hints::kDestination>(dst);
  if (shift == 0) {
    return map(
        destination, len,
        [](auto a, auto b) { return lift<T>([](auto x, auto y) { return Operation::clamped(x, y); }, a, b); },
        hinted<Hints::kUnshifted>(first), hinted<Hints::kUnshifted>(second));
  }
  if constexpr (std::is_same_v<Path, NarrowsInTwoSteps<64>>) {
    if (-shift >= kNarrowingCount) {
      subtract_narrowing_in_two_steps<Path>(dst.data, len, elements_of(first), elements_of(second), -shift);
      return ZIVK_STS_NO_ERR;
    }
  } else if constexpr (!std::is_same_v<Path, Multiplies>) {
    if (-shift >= kWrappingCount) {
      shift_left_wrapping<Operation, Path>(dst.data, len, elements_of(first), elements_of(second), -shift);
      return ZIVK_STS_NO_ERR;
    }
  }
  const int count = std::min(-shift, kWrappingCount - 1);
  return map(
      destination, len,
      [=](auto a, auto b) {
        return lift<T>([=](auto x, auto y) { return shift_left_saturating(Operation::clamped(x, y), count); },
                       a, b);
      },
      hinted<Hints::kLeft>(first), hinted<Hints::kLeft>(second));
}

// Arrays of real or complex elements.
template <class Operation, class Path, class Hints = NoHints, class T>
ZIVKStatus combine_arrays(const T* first, const T* second, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, first, second, dst)) return status;
  return scale_operands<Operation, Path, Hints>(as_operand(parts_of(dst)), count_parts<T>(len), scale,
                                                as_operand(parts_of(first)), as_operand(parts_of(second)));
}

template <class Operation, class Path, class Hints = NoHints, class T>
ZIVKStatus combine_constant(const T* src, T val, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return scale_operands<Operation, Path, Hints>(as_operand(parts_of(dst)), count_parts<T>(len), scale,
                                                as_operand(parts_of(src)),
                                                Repeated<Part<T>>{repeat_parts(val)});
}

template <class Path, class Hints = NoHints, class T>
ZIVKStatus subtract_from_constant(const T* src, T val, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return scale_operands<Difference, Path, Hints>(as_operand(parts_of(dst)), count_parts<T>(len), scale,
                                                 Repeated<Part<T>>{repeat_parts(val)},
                                                 as_operand(parts_of(src)));
}

}  // namespace

// --- Arrays ------------------------------------------------------------------------------

ZIVKStatus ZIVKS_Add_8u_S(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len, double scale) {
  return combine_arrays<Sum, WrapsExact<8>, Hints<512, 256, 256, 256>>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                           double scale) {
  if (is_valid_scale(scale) && scale_exponent(scale) == 0) return ZIVKS_Add_16u(src1, src2, dst, len);
  return combine_arrays<Sum, WrapsExact<4>, Hints<0, 512, 512>>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Sum, Multiplies>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Sum, Multiplies>(src1, src2, dst, len, scale);
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
  return combine_arrays<Difference, NarrowsInTwoSteps<64>, Hints<512, 512, 512, 512, 512>>(src2, src1, dst,
                                                                                           len, scale);
}
ZIVKStatus ZIVKS_Sub_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, WrapsClamped<32>, Hints<1024, 1024, 1024, 1024>>(src2, src1, dst, len,
                                                                                     scale);
}
ZIVKStatus ZIVKS_Sub_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, Multiplies>(src2, src1, dst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, Multiplies>(src2, src1, dst, len, scale);
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
  if (is_valid_scale(scale) && -scale_exponent(scale) > kLargestShift) return ZIVKS_Zero_8u(dst, len);
  return combine_constant<Sum, WrapsTruncating<32>, Hints<0, 128, 0, 256>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsTruncating<32>, Hints<0, 768, 0, 1280>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, Multiplies>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsTruncating<8>, Hints<0, 512, 1024>>(src, val, dst, len, scale);
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
  return combine_constant<Difference, WrapsClamped<16>, Hints<512, 512, 512, 512>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, WrapsClamped<32>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, Multiplies>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, Multiplies>(src, val, dst, len, scale);
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
  return subtract_from_constant<WrapsClamped<16>, Hints<512, 512, 512, 512>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return subtract_from_constant<WrapsClamped<32>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return subtract_from_constant<Multiplies>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return subtract_from_constant<Multiplies>(src, val, dst, len, scale);
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
  return combine_arrays<Difference, Multiplies, Hints<1024, 1024, 1024, 1024, 1024>>(src2, src1, dst, len,
                                                                                     scale);
}
ZIVKStatus ZIVKS_Sub_32sc_S(const ZIVK32sc* src1, const ZIVK32sc* src2, ZIVK32sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Difference, Multiplies, Hints<2048, 2048, 2048, 2048, 2048>>(src2, src1, dst, len,
                                                                                     scale);
}

ZIVKStatus ZIVKS_Sub_16sc_IS(const ZIVK16sc* src, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_16sc_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32sc_IS(const ZIVK32sc* src, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_32sc_S(src, srcDst, srcDst, len, scale);
}

ZIVKStatus ZIVKS_AddC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsTruncating<32>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len, double scale) {
  return combine_constant<Sum, WrapsTruncating<16>, Hints<0, 2048, 0, 1024>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_AddC_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_16sc_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_32sc_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return combine_constant<Difference, Multiplies>(src, val, dst, len, scale);
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
  return subtract_from_constant<Multiplies>(src, val, dst, len, scale);
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
