// Scaled, saturating addition of 64-bit integers, with an array or with a constant.
//
// The exact sum has 65 bits. A scale is a power of two, 2^shift: the sum is shifted to the right and rounded or, with a
// negative shift, saturated first and then shifted to the left with saturation.
#include <zivks/arithmetic.h>
#include <zivks/movement.h>

#include <algorithm>
#include <limits>

#include "core/checks.h"
#include "core/scale.h"

using namespace zivks;

namespace {

__extension__ typedef __int128 Wide;

// The longest shift after which anything is left, of an unsigned sum.
inline constexpr int kLongestShift = 65;

template <class T>
T clamp(Wide value) {
  using Limits = std::numeric_limits<T>;
  return static_cast<T>(std::min<Wide>(std::max<Wide>(value, Limits::min()), Limits::max()));
}

// What a right shift leaves: the floor of the quotient and the remainder, and half the divisor.
struct Shifted {
  Wide quotient, remainder, half;

  Shifted(Wide value, int count)
      : quotient(value >> count), remainder(value - (quotient << count)), half(Wide{1} << (count - 1)) {}
};

struct TowardZero {
  static Wide round(Shifted x) { return x.quotient + (x.quotient < 0 && x.remainder != 0); }
};
struct TiesToEven {
  static Wide round(Shifted x) {
    return x.quotient + (x.remainder > x.half || (x.remainder == x.half && (x.quotient & 1) != 0));
  }
};
struct TiesUp {
  static Wide round(Shifted x) { return x.quotient + (x.remainder >= x.half); }
};
struct TiesDown {
  static Wide round(Shifted x) { return x.quotient + (x.remainder > x.half); }
};

// Element i of the second operand: of an array, or the constant.
template <class T>
struct Elements {
  const T* array;
  T operator[](size_t i) const { return array[i]; }
};
template <class T>
struct Constant {
  T value;
  T operator[](size_t) const { return value; }
};

template <class Rounding, class T, class Second>
void shift_right(const T* first, Second second, T* dst, size_t begin, size_t end, int count) {
  for (size_t i = begin; i < end; ++i) {
    dst[i] = static_cast<T>(Rounding::round(Shifted(Wide{first[i]} + second[i], count)));
  }
}

// The count goes by its low 8 bits, which are negative from 128 to 255 and shift to the right then, halfway cases up.
template <class T, class Second>
void shift_left(const T* first, Second second, T* dst, size_t len, int count) {
  const int wrapped = static_cast<int8_t>(static_cast<uint8_t>(count));
  for (size_t i = 0; i < len; ++i) {
    const Wide value = clamp<T>(Wide{first[i]} + second[i]);
    if (wrapped < -kLongestShift) {
      dst[i] = 0;
    } else if (wrapped < 0) {
      dst[i] = static_cast<T>(TiesUp::round(Shifted(value, -wrapped)));
    } else if (wrapped < 64) {
      dst[i] = clamp<T>(value * (Wide{1} << wrapped));
    } else {
      dst[i] = value == 0 ? 0 : value > 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
    }
  }
}

template <class T, class Second>
void add(const T* first, Second second, T* dst, size_t len) {
  for (size_t i = 0; i < len; ++i) dst[i] = clamp<T>(Wide{first[i]} + second[i]);
}

// The shift that `scale` selects, once it is known to be valid.
int shift_of(double scale) { return -scale_exponent(scale); }

template <class T>
ZIVKStatus add_constant(const T* src, T val, T* dst, int32_t len, int32_t rndMode, int shift) {
  const Constant<T> constant = {val};
  const auto count = static_cast<size_t>(len);
  if (shift < 0) {
    shift_left(src, constant, dst, count, -shift);
  } else if (shift == 0) {
    add(src, constant, dst, count);
  } else if (rndMode == ZIVK_RND_ZERO) {
    shift_right<TowardZero>(src, constant, dst, 0, count, shift);
  } else if (rndMode == ZIVK_RND_NEAR) {
    shift_right<TiesToEven>(src, constant, dst, 0, count, shift);
  } else if (std::is_signed_v<T> && val == std::numeric_limits<T>::min()) {
    // With this constant every sum is negative, and a tie goes down in a block of two, but up in the tail.
    const size_t blocks = count & ~size_t{1};
    shift_right<TiesDown>(src, constant, dst, 0, blocks, shift);
    shift_right<TiesUp>(src, constant, dst, blocks, count, shift);
  } else {
    shift_right<TiesUp>(src, constant, dst, 0, count, shift);
  }
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Add_64s_S(const int64_t* src1, const int64_t* src2, int64_t* dst, int32_t len,
                           double scale) {
  if (ZIVKStatus status = check_arrays(len, src1, src2, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  constexpr int kLongestSignedShift = 64;
  const int shift = shift_of(scale);
  const Elements<int64_t> second = {src2};
  const auto count = static_cast<size_t>(len);
  if (shift < 0) {
    shift_left(src1, second, dst, count, -shift);
  } else if (shift == 0) {
    add(src1, second, dst, count);
  } else if (shift <= kLongestSignedShift) {
    shift_right<TiesToEven>(src1, second, dst, 0, count, shift);
  } else {
    ZIVKS_Zero_64s(dst, len);
  }
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_AddC_64s_S(const int64_t* src, int64_t val, int64_t* dst, int32_t len, int32_t rndMode,
                            double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int longest_shift = val == 0 ? 63 : 64;
  const int shift = shift_of(scale);
  if (shift == 0 && val == 0) return ZIVKS_Copy_64s(src, dst, len);
  if (shift > longest_shift) {
    ZIVKS_Zero_64s(dst, len);
    return ZIVK_STS_NO_ERR;
  }
  return add_constant(src, val, dst, len, rndMode, shift);
}

ZIVKStatus ZIVKS_AddC_64u_S(const uint64_t* src, uint64_t val, uint64_t* dst, int32_t len, int32_t rndMode,
                            double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int shift = shift_of(scale);
  if (shift == 0 && val == 0) {
    return ZIVKS_Copy_64s(reinterpret_cast<const int64_t*>(src), reinterpret_cast<int64_t*>(dst), len);
  }
  if (shift > kLongestShift) {
    ZIVKS_Zero_64s(reinterpret_cast<int64_t*>(dst), len);
    return ZIVK_STS_NO_ERR;
  }
  return add_constant(src, val, dst, len, rndMode, shift);
}
