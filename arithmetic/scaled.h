// Scaled, saturating addition and subtraction of integers of 8 to 32 bits, real and complex, with an array or
// with a constant.
//
// A scale selects a power of two, 2^shift, so that no floating-point number is needed. The exact sum or
// difference is divided by 2^shift if the shift is positive. Otherwise it is clamped at the bounds of the type
// and multiplied by 2^-shift with saturation, which is the same as multiplying the exact value: a value at a
// bound stays there.
//
// The functions differ in two things, which each of them states: what becomes of multiplications by large
// powers of two (arithmetic/long_left_shifts.h), and how far ahead of the loop prefetch hints run.
#ifndef ZIVKS_ARITHMETIC_SCALED_H
#define ZIVKS_ARITHMETIC_SCALED_H

#include <cstring>

#include "arithmetic/long_left_shifts.h"
#include "arithmetic/scaled_operations.h"
#include "core/checks.h"
#include "core/complex.h"
#include "core/scale.h"

namespace zivks {

// --- Prefetch hints --------------------------------------------------------------------------

// What a function does at the scale that it is given.
enum class Path { kUnscaled, kDivided, kMultiplied };

// Distances in bytes: ahead of the sources, and ahead of the destination.
template <size_t distance>
struct Reads {
  static constexpr size_t kRead = distance, kWrite = 0;
};
template <size_t distance>
struct Writes {
  static constexpr size_t kRead = 0, kWrite = distance;
};

template <Path path, class... Ahead>
struct On {
  template <Path taken>
  static constexpr size_t kRead = taken == path ? (0 + ... + Ahead::kRead) : 0;
  template <Path taken>
  static constexpr size_t kWrite = taken == path ? (0 + ... + Ahead::kWrite) : 0;
};
template <class... Ahead>
using Unscaled = On<Path::kUnscaled, Ahead...>;
template <class... Ahead>
using Divided = On<Path::kDivided, Ahead...>;
template <class... Ahead>
using Multiplied = On<Path::kMultiplied, Ahead...>;
template <class... Ahead>
struct Always {
  template <Path>
  static constexpr size_t kRead = (0 + ... + Ahead::kRead);
  template <Path>
  static constexpr size_t kWrite = (0 + ... + Ahead::kWrite);
};

// The hints of a function, by path: Hints<Always<Reads<512>>, Divided<Writes<256>>> reads 512 bytes ahead
// whatever the scale, and prepares for writing 256 bytes ahead where it divides. Hints<> gives none.
template <class... Paths>
struct Hints {
  template <Path path>
  static constexpr size_t kRead = (0 + ... + Paths::template kRead<path>);
  template <Path path>
  static constexpr size_t kWrite = (0 + ... + Paths::template kWrite<path>);
};

template <size_t distance, class T>
Array<const T, kHintDistance<distance>> hinted(Array<const T> array) {
  return {array.data};
}
template <size_t distance, class T>
Array<T, kHintDistance<distance>, Prefetch::kWrite> hinted(Array<T> array) {
  return {array.data};
}
template <size_t, class T, size_t group>
Repeated<T, group> hinted(Repeated<T, group> constant) {
  return constant;
}

// --- Paths -----------------------------------------------------------------------------------

template <class Operation, class T, size_t distance, Prefetch hint, class First, class Second>
ZIVKStatus clamp_results(Array<T, distance, hint> dst, size_t len, First first, Second second) {
  const auto kernel = [](auto a, auto b) { return Operation::clamped(a, b); };
  return map_registers<T>(dst, len, kernel, first, second);
}

// Divides by 2^count, count > 0.
template <class Operation, class T, size_t distance, Prefetch hint, class First, class Second>
ZIVKStatus divide_results(Array<T, distance, hint> dst, size_t len, int count, First first, Second second) {
  constexpr int kBits = Operation::template kBits<T>;
  if (count == 1) {
    const auto kernel = [](auto a, auto b) { return Operation::halved(a, b); };
    return map_registers<T>(dst, len, kernel, first, second);
  }
  if (count < kBits) {
    const auto kernel = [count](auto a, auto b) { return Operation::divided(a, b, count); };
    return map_registers<T>(dst, len, kernel, first, second);
  }
  if constexpr (std::is_unsigned_v<T>) {
    if (count == kBits) {
      const auto kernel = [](auto a, auto b) { return Operation::exceeds_half(a, b); };
      return map_registers<T>(dst, len, kernel, first, second);
    }
  }
  std::memset(dst.data, 0, len * sizeof(T));
  return ZIVK_STS_NO_ERR;
}

// Multiplies by 2^count, count > 0.
template <class Operation, class T, size_t distance, Prefetch hint, class First, class Second>
ZIVKStatus multiply_results(Array<T, distance, hint> dst, size_t len, int count, First first, Second second) {
  constexpr int kEnough = 127;  // for all values but 0 to saturate, and no more than lanes can be shifted by
  const int bounded = std::min(count, kEnough);
  const auto kernel = [bounded](auto a, auto b) {
    return shift_left_saturating(Operation::clamped(a, b), bounded);
  };
  return map_registers<T>(dst, len, kernel, first, second);
}

// Elements of an array, or of a constant that repeats, by index.
template <class T>
auto elements_of(Array<const T> array) {
  return [=](size_t i) -> int64_t { return array.data[i]; };
}
template <class T, size_t group>
auto elements_of(Repeated<T, group> constant) {
  return [=](size_t i) -> int64_t { return constant.pattern[i % group]; };
}

// Checks the scale, which decides on the path, and takes it. Complex elements have become their parts here.
template <class Operation, class LongShift, class Hints, class T, class First, class Second>
[[gnu::noinline]] ZIVKStatus scale_operands(Array<T> dst, size_t len, double scale, First first,
                                            Second second) {
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int shift = scale_shift(scale);
  if (shift > 0) {
    constexpr size_t kRead = Hints::template kRead<Path::kDivided>,
                     kWrite = Hints::template kWrite<Path::kDivided>;
    return divide_results<Operation>(hinted<kWrite>(dst), len, shift, hinted<kRead>(first),
                                     hinted<kRead>(second));
  }
  if (shift == 0) {
    constexpr size_t kRead = Hints::template kRead<Path::kUnscaled>,
                     kWrite = Hints::template kWrite<Path::kUnscaled>;
    return clamp_results<Operation>(hinted<kWrite>(dst), len, hinted<kRead>(first), hinted<kRead>(second));
  }
  if constexpr (!std::is_same_v<LongShift, Saturates>) {
    if (-shift >= LongShift::kLeastCount) {
      LongShift::template shift_left<Operation>(dst.data, len, elements_of(first), elements_of(second),
                                                -shift);
      leave_registers();
      return ZIVK_STS_NO_ERR;
    }
  }
  constexpr size_t kRead = Hints::template kRead<Path::kMultiplied>,
                   kWrite = Hints::template kWrite<Path::kMultiplied>;
  return multiply_results<Operation>(hinted<kWrite>(dst), len, -shift, hinted<kRead>(first),
                                     hinted<kRead>(second));
}

// --- Shapes of the exported functions --------------------------------------------------------

// T is a real or a complex element.
template <class LongShift, class T>
using LongShiftOfParts = typename LongShift::template InParts<PartsOf<T>::kCount>;

template <class Operation, class LongShift, class Hints = Hints<>, class T>
ZIVKStatus combine_arrays(const T* first, const T* second, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, first, second, dst)) return status;
  return scale_operands<Operation, LongShiftOfParts<LongShift, T>, Hints>(
      as_operand(parts_of(dst)), count_parts<T>(len), scale, as_operand(parts_of(first)),
      as_operand(parts_of(second)));
}

template <class Operation, class LongShift, class Hints = Hints<>, class T>
ZIVKStatus combine_constant(const T* src, T val, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return scale_operands<Operation, LongShiftOfParts<LongShift, T>, Hints>(
      as_operand(parts_of(dst)), count_parts<T>(len), scale, as_operand(parts_of(src)), repeated(val));
}

template <class LongShift, class Hints = Hints<>, class T>
ZIVKStatus subtract_from_constant(const T* src, T val, T* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return scale_operands<Difference, LongShiftOfParts<LongShift, T>, Hints>(
      as_operand(parts_of(dst)), count_parts<T>(len), scale, repeated(val), as_operand(parts_of(src)));
}

}  // namespace zivks

#endif
