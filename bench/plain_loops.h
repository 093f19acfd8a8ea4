// The loops that the library is measured against: what a good programmer writes for the task in a minute,
// left to the compiler at -O3. They need not keep the library's rules for NaN, seeds and the like.
#ifndef BENCH_PLAIN_LOOPS_H
#define BENCH_PLAIN_LOOPS_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>

#include "zivks/types.h"

// A plain loop is compiled by itself, as if it stood in another file: without that the compiler would make
// use of the arguments that the rows happen to pass.
#if defined(__clang__)
#define PLAIN_LOOP [[gnu::noinline]]
#else
#define PLAIN_LOOP [[gnu::noipa]]
#endif

namespace bench {

// The type of the parts of a complex number or of a decimal, or the type itself.
template <class T, class = void>
struct Part {
  using Type = T;
};
template <class T>
struct Part<T, std::void_t<decltype(T::re)>> {
  using Type = decltype(T::re);
};
template <>
struct Part<ZIVKDecimal128> {
  using Type = uint64_t;
};
template <class T>
using PartOf = typename Part<T>::Type;

template <class T>
inline constexpr bool kIsComplex = !std::is_same_v<PartOf<T>, T>;

// Operations on elements.

struct Add {
  template <class A, class B>
  auto operator()(A a, B b) const {
    if constexpr (kIsComplex<A>) {
      return A{a.re + b.re, a.im + b.im};
    } else {
      return a + b;
    }
  }
};

struct Subtract {
  template <class A, class B>
  auto operator()(A a, B b) const {
    if constexpr (kIsComplex<A>) {
      return A{a.re - b.re, a.im - b.im};
    } else {
      return a - b;
    }
  }
};

struct SubtractReversed {
  template <class A, class B>
  auto operator()(A a, B b) const {
    return Subtract{}(b, a);
  }
};

struct AddWrapping {
  uint32_t operator()(int16_t a, int32_t b) const {
    return static_cast<uint32_t>(a) + static_cast<uint32_t>(b);
  }
};

template <class T, class Wide>
T clamp_to(Wide value) {
  if constexpr (std::is_same_v<T, Wide>) {
    return value;
  } else {
    return static_cast<T>(
        std::clamp(value, Wide{std::numeric_limits<T>::min()}, Wide{std::numeric_limits<T>::max()}));
  }
}

struct AddSaturating {
  int16_t operator()(int16_t a, int16_t b) const { return clamp_to<int16_t>(a + b); }
  uint16_t operator()(uint16_t a, uint16_t b) const { return clamp_to<uint16_t>(a + b); }
  uint32_t operator()(uint32_t a, uint32_t b) const {
    const uint32_t sum = a + b;
    return sum < a ? std::numeric_limits<uint32_t>::max() : sum;
  }
};

struct SubtractSaturating {
  int16_t operator()(int16_t a, int16_t b) const { return clamp_to<int16_t>(a - b); }
};

struct SubtractReversedSaturating {
  int16_t operator()(int16_t a, int16_t b) const { return clamp_to<int16_t>(b - a); }
};

struct Absolute {
  float operator()(float a) const { return std::fabs(a); }
  double operator()(double a) const { return std::fabs(a); }
  int16_t operator()(int16_t a) const { return clamp_to<int16_t>(std::abs(a)); }
  int32_t operator()(int32_t a) const {
    return a == std::numeric_limits<int32_t>::min() ? std::numeric_limits<int32_t>::max() : std::abs(a);
  }
};

struct LargerOf {
  template <class T>
  T operator()(T a, T b) const {
    return a > b ? a : b;
  }
};

struct SmallerOf {
  template <class T>
  T operator()(T a, T b) const {
    return a < b ? a : b;
  }
};

struct NumberOr {
  template <class T>
  T operator()(T a, T val) const {
    return a == a ? a : val;
  }
};

struct BitwiseAnd {
  template <class A>
  auto operator()(A a, A b) const {
    return a & b;
  }
};

struct BitwiseOr {
  template <class A>
  auto operator()(A a, A b) const {
    return a | b;
  }
};

struct BitwiseXor {
  template <class A>
  auto operator()(A a, A b) const {
    return a ^ b;
  }
};

struct BitwiseNot {
  template <class A>
  A operator()(A a) const {
    return static_cast<A>(~a);
  }
};

struct ShiftLeft {
  template <class A>
  auto operator()(A a, int32_t shift) const {
    return static_cast<uint32_t>(a) << shift;
  }
};

struct ShiftRight {
  template <class A>
  auto operator()(A a, int32_t shift) const {
    return a >> shift;
  }
};

struct Real {
  template <class A>
  auto operator()(A a) const {
    return a.re;
  }
};

struct Imaginary {
  template <class A>
  auto operator()(A a) const {
    return a.im;
  }
};

struct Conjugate {
  template <class A>
  A operator()(A a) const {
    if constexpr (std::is_integral_v<PartOf<A>>) {
      return {a.re, clamp_to<PartOf<A>>(-a.im)};
    } else {
      return {a.re, -a.im};
    }
  }
};

struct Convert {
  template <class A>
  A operator()(A a) const {
    return a;
  }
};

// Element-wise loops.

template <class Operation>
struct ElementWise {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* src, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) dst[i] = static_cast<T>(Operation{}(src[i]));
  }
  template <class A, class B, class T>
  PLAIN_LOOP void operator()(const A* src1, const B* src2, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) dst[i] = static_cast<T>(Operation{}(src1[i], src2[i]));
  }
  template <class A, class Value, class T>
  PLAIN_LOOP void operator()(const A* src, Value val, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) dst[i] = static_cast<T>(Operation{}(src[i], val));
  }
};

template <class Operation>
struct InPlace {
  template <class T>
  PLAIN_LOOP void operator()(T* srcDst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) srcDst[i] = Operation{}(srcDst[i]);
  }
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* src, T* srcDst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) srcDst[i] = static_cast<T>(Operation{}(src[i], srcDst[i]));
  }
  template <class Value, class T>
  PLAIN_LOOP void operator()(Value val, T* srcDst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) srcDst[i] = static_cast<T>(Operation{}(srcDst[i], val));
  }
};

struct ConvertScaled {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* src, T* dst, int32_t len, double scale) const {
    const T factor = static_cast<T>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) dst[i] = static_cast<T>(src[i]) * factor;
  }
};

struct TowardZero {
  template <class F>
  F operator()(F a) const {
    return std::trunc(a);
  }
};
struct ToNearest {
  template <class F>
  F operator()(F a) const {
    return std::nearbyint(a);
  }
};
struct AwayFromZero {
  template <class F>
  F operator()(F a) const {
    return std::round(a);
  }
};

// Of a whole number.
template <class T, class F>
T clamp_whole(F value) {
  using Limits = std::numeric_limits<T>;
  if constexpr (Limits::digits <= std::numeric_limits<F>::digits) {
    return static_cast<T>(std::clamp(value, F{Limits::min()}, F{Limits::max()}));
  } else {
    if (value >= -static_cast<F>(Limits::min())) return Limits::max();
    if (value <= static_cast<F>(Limits::min())) return Limits::min();
    return static_cast<T>(value);
  }
}

struct Clamp {
  uint8_t operator()(int8_t a) const { return static_cast<uint8_t>(std::max(a, int8_t{0})); }
  int16_t operator()(int32_t a) const { return clamp_to<int16_t>(a); }
};

// In the precision that holds the elements.
template <class Rounding>
struct RoundScaledInteger {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* src, T* dst, int32_t len, ZIVKRoundMode, double scale) const {
    RoundScaledInteger{}(src, dst, len, scale);
  }
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* src, T* dst, int32_t len, double scale) const {
    using F = std::conditional_t<sizeof(A) <= 2, float, double>;
    const F factor = static_cast<F>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) {
      dst[i] = clamp_whole<T>(Rounding{}(static_cast<F>(src[i]) * factor));
    }
  }
};

template <class Rounding>
struct RoundScaled {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* src, T* dst, int32_t len, ZIVKRoundMode, double scale) const {
    const A factor = static_cast<A>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) dst[i] = clamp_whole<T>(Rounding{}(src[i] * factor));
  }
};

// Samples of three bytes.
struct Unsigned {
  static constexpr int32_t kLeast = 0, kMost = 0xFFFFFF;
};
struct Signed {
  static constexpr int32_t kLeast = -0x800000, kMost = 0x7FFFFF;
};

template <class Range>
struct Unpack {
  template <class T>
  PLAIN_LOOP void operator()(const uint8_t* src, T* dst, int32_t len) const {
    for (std::size_t i = 0; i < static_cast<std::size_t>(len); ++i) {
      const int32_t bits = src[3 * i] | src[3 * i + 1] << 8 | src[3 * i + 2] << 16;
      dst[i] = static_cast<T>(bits > Range::kMost ? bits - 0x1000000 : bits);
    }
  }
};

template <class Range>
struct Pack {
  template <class A>
  PLAIN_LOOP void operator()(const A* src, uint8_t* dst, int32_t len, double scale) const {
    using F = std::conditional_t<std::is_integral_v<A>, double, A>;
    const F factor = static_cast<F>(1.0 / scale);
    for (std::size_t i = 0; i < static_cast<std::size_t>(len); ++i) {
      const F rounded = std::nearbyint(static_cast<F>(src[i]) * factor);
      const auto sample = static_cast<int32_t>(std::clamp(rounded, F{Range::kLeast}, F{Range::kMost}));
      dst[3 * i] = static_cast<uint8_t>(sample);
      dst[3 * i + 1] = static_cast<uint8_t>(sample >> 8);
      dst[3 * i + 2] = static_cast<uint8_t>(sample >> 16);
    }
  }
};

// Scaled integers. Sums and differences are exact in the float that is multiplied.

template <class T, class Float>
T rounded_and_clamped(Float value) {
  constexpr auto kLow = static_cast<Float>(std::numeric_limits<T>::min());
  constexpr auto kHigh = static_cast<Float>(std::numeric_limits<T>::max());
  return static_cast<T>(std::nearbyint(std::min(std::max(value, kLow), kHigh)));
}

template <class Operation, class T, class Float>
T scaled(T a, T b, Float factor) {
  if constexpr (kIsComplex<T>) {
    return {scaled<Operation>(a.re, b.re, factor), scaled<Operation>(a.im, b.im, factor)};
  } else {
    return rounded_and_clamped<T>(Operation{}(static_cast<Float>(a), static_cast<Float>(b)) * factor);
  }
}

template <class T>
using FactorOf = std::conditional_t<(sizeof(PartOf<T>) < 4), float, double>;

template <class Operation>
struct Scaled {
  template <class T>
  PLAIN_LOOP void operator()(const T* src1, const T* src2, T* dst, int32_t len, double scale) const {
    const auto factor = static_cast<FactorOf<T>>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) dst[i] = scaled<Operation>(src1[i], src2[i], factor);
  }
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T val, T* dst, int32_t len, double scale) const {
    const auto factor = static_cast<FactorOf<T>>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) dst[i] = scaled<Operation>(src[i], val, factor);
  }
};

template <class Operation>
struct ScaledInPlace {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T* srcDst, int32_t len, double scale) const {
    const auto factor = static_cast<FactorOf<T>>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) srcDst[i] = scaled<Operation>(src[i], srcDst[i], factor);
  }
  template <class T>
  PLAIN_LOOP void operator()(T val, T* srcDst, int32_t len, double scale) const {
    const auto factor = static_cast<FactorOf<T>>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) srcDst[i] = scaled<Operation>(srcDst[i], val, factor);
  }
};

// No float holds sums of 64 bits.
__extension__ typedef __int128 Int128;

struct AddScaled64 {
  template <class T>
  PLAIN_LOOP void operator()(const T* src1, const T* src2, T* dst, int32_t len, double scale) const {
    add(dst, len, ZIVK_RND_NEAR, scale, [=](int32_t i) { return Int128{src1[i]} + src2[i]; });
  }
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T val, T* dst, int32_t len, int32_t rndMode, double scale) const {
    add(dst, len, rndMode, scale, [=](int32_t i) { return Int128{src[i]} + val; });
  }

 private:
  template <class T, class Sum>
  [[gnu::always_inline]] static void add(T* dst, int32_t len, int32_t rndMode, double scale, Sum sum) {
    const int shift = std::ilogb(scale);
    if (shift <= 0) {
      for (int32_t i = 0; i < len; ++i) dst[i] = clamp_to<T>(sum(i) * (Int128{1} << -shift));
      return;
    }
    const Int128 half = Int128{1} << (shift - 1);
    if (rndMode == ZIVK_RND_ZERO) {
      for (int32_t i = 0; i < len; ++i) dst[i] = static_cast<T>(sum(i) / (half * 2));
    } else if (rndMode == ZIVK_RND_NEAR) {
      for (int32_t i = 0; i < len; ++i) {
        dst[i] = static_cast<T>((sum(i) + half - 1 + ((sum(i) >> shift) & 1)) >> shift);
      }
    } else {
      for (int32_t i = 0; i < len; ++i) dst[i] = static_cast<T>((sum(i) + half) >> shift);
    }
  }
};

// Multiply-accumulate.

struct AddProduct {
  template <class T>
  PLAIN_LOOP void operator()(const T* src1, const T* src2, T* srcDst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) srcDst[i] = std::fma(src1[i], src2[i], srcDst[i]);
  }
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T val, T* srcDst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) srcDst[i] = std::fma(src[i], val, srcDst[i]);
  }
};

// The last elements are rounded in another order.
struct AddComplexProduct {
  PLAIN_LOOP void operator()(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* srcDst,
                             int32_t len) const {
    const int32_t blocks = len / 4 * 4;
    for (int32_t i = 0; i < blocks; ++i) {
      const ZIVK32fc a = src1[i], b = src2[i];
      srcDst[i].re += std::fma(-a.im, b.im, a.re * b.re);
      srcDst[i].im += std::fma(a.im, b.re, a.re * b.im);
    }
    add_tail(src1, src2, srcDst, blocks, len);
  }
  PLAIN_LOOP void operator()(const ZIVK64fc* src1, const ZIVK64fc* src2, ZIVK64fc* srcDst,
                             int32_t len) const {
    const int32_t blocks = len / 2 * 2;
    for (int32_t i = 0; i < blocks; ++i) {
      const ZIVK64fc a = src1[i], b = src2[i];
      srcDst[i].re += std::fma(a.re, b.re, -(a.im * b.im));
      srcDst[i].im += std::fma(a.im, b.re, a.re * b.im);
    }
    add_tail(src1, src2, srcDst, blocks, len);
  }
  template <class T>
  static void add_tail(const T* src1, const T* src2, T* srcDst, int32_t begin, int32_t end) {
    for (int32_t i = begin; i < end; ++i) {
      const T a = src1[i], b = src2[i];
      srcDst[i].re += std::fma(a.re, b.re, -(a.im * b.im));
      srcDst[i].im += std::fma(a.re, b.im, a.im * b.re);
    }
  }
};

// Sum and Float are the types of the exact sum and of what is multiplied.
template <class Sum, class Float>
struct AddProductScaled {
  template <class S, class T>
  PLAIN_LOOP void operator()(const S* src1, const S* src2, T* srcDst, int32_t len, double scale) const {
    const auto factor = static_cast<Float>(1.0 / scale);
    for (int32_t i = 0; i < len; ++i) {
      srcDst[i] = rounded_and_clamped<T>(static_cast<Float>(Sum{src1[i]} * src2[i] + srcDst[i]) * factor);
    }
  }
};
using AddProductScaled16s = AddProductScaled<int32_t, float>;
using AddProductScaled32s = AddProductScaled<int64_t, double>;

// Copies and fills.

struct CopyForward {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) dst[i] = src[i];
  }
};

struct CopyEitherWay {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T* dst, int32_t len) const {
    if (src > dst) {
      for (int32_t i = 0; i < len; ++i) dst[i] = src[i];
    } else {
      for (int32_t i = len - 1; i >= 0; --i) dst[i] = src[i];
    }
  }
};

struct Fill {
  template <class T>
  PLAIN_LOOP void operator()(T val, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) dst[i] = val;
  }
  template <class T>
  PLAIN_LOOP void operator()(T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) dst[i] = T{};
  }
};

// Order of elements and of bytes.

struct Reverse {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) dst[len - 1 - i] = src[i];
  }
  template <class T>
  PLAIN_LOOP void operator()(T* srcDst, int32_t len) const {
    for (int32_t i = 0; i < len / 2; ++i) std::swap(srcDst[i], srcDst[len - 1 - i]);
  }
};

struct SwapBytes {
  uint16_t operator()(uint16_t a) const { return __builtin_bswap16(a); }
  uint32_t operator()(uint32_t a) const { return __builtin_bswap32(a); }
  uint64_t operator()(uint64_t a) const { return __builtin_bswap64(a); }
};

struct SwapOuterBytes {
  PLAIN_LOOP void operator()(const uint8_t* src, uint8_t* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) {
      const uint8_t first = src[3 * i];
      dst[3 * i] = src[3 * i + 2];
      dst[3 * i + 1] = src[3 * i + 1];
      dst[3 * i + 2] = first;
    }
  }
  PLAIN_LOOP void operator()(uint8_t* srcDst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) std::swap(srcDst[3 * i], srcDst[3 * i + 2]);
  }
};

// Complex layout.

struct Split {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* src, T* dstRe, T* dstIm, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) {
      dstRe[i] = src[i].re;
      dstIm[i] = src[i].im;
    }
  }
};

struct Merge {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* srcRe, const A* srcIm, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) {
      dst[i].re = srcRe[i];
      dst[i].im = srcIm[i];
    }
  }
};

struct MergeReal {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A* srcRe, const A*, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) {
      dst[i].re = srcRe[i];
      dst[i].im = 0;
    }
  }
};

struct MergeImaginary {
  template <class A, class T>
  PLAIN_LOOP void operator()(const A*, const A* srcIm, T* dst, int32_t len) const {
    for (int32_t i = 0; i < len; ++i) {
      dst[i].re = 0;
      dst[i].im = srcIm[i];
    }
  }
};

// Extremes and counts.

struct Identity {
  template <class T>
  T operator()(T a) const {
    return a;
  }
};

// In a type that holds the magnitude of every value.
struct Magnitude {
  int32_t operator()(int16_t a) const { return std::abs(int32_t{a}); }
  int64_t operator()(int32_t a) const { return std::abs(int64_t{a}); }
  float operator()(float a) const { return std::fabs(a); }
  double operator()(double a) const { return std::fabs(a); }
};

template <class Transform = Identity>
struct Maximum {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* maximum) const {
    auto running = Transform{}(src[0]);
    for (int32_t i = 1; i < len; ++i) {
      const auto value = Transform{}(src[i]);
      if (value > running) running = value;
    }
    *maximum = clamp_to<T>(running);
  }
};

template <class Transform = Identity>
struct Minimum {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* minimum) const {
    auto running = Transform{}(src[0]);
    for (int32_t i = 1; i < len; ++i) {
      const auto value = Transform{}(src[i]);
      if (value < running) running = value;
    }
    *minimum = clamp_to<T>(running);
  }
};

struct MinimumAndMaximum {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* minimum, T* maximum) const {
    T low = src[0];
    T high = src[0];
    for (int32_t i = 1; i < len; ++i) {
      if (src[i] < low) low = src[i];
      if (src[i] > high) high = src[i];
    }
    *minimum = low;
    *maximum = high;
  }
};

template <class Transform = Identity>
struct MaximumAndIndex {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* maximum, int32_t* index) const {
    auto running = Transform{}(src[0]);
    int32_t position = 0;
    for (int32_t i = 1; i < len; ++i) {
      const auto value = Transform{}(src[i]);
      if (value > running) running = value, position = i;
    }
    *maximum = clamp_to<T>(running);
    *index = position;
  }
};

template <class Transform = Identity>
struct MinimumAndIndex {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* minimum, int32_t* index) const {
    auto running = Transform{}(src[0]);
    int32_t position = 0;
    for (int32_t i = 1; i < len; ++i) {
      const auto value = Transform{}(src[i]);
      if (value < running) running = value, position = i;
    }
    *minimum = clamp_to<T>(running);
    *index = position;
  }
};

struct MinimumAndMaximumAndIndices {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* minimum, int32_t* minimum_index, T* maximum,
                             int32_t* maximum_index) const {
    T low = src[0], high = src[0];
    int32_t low_index = 0, high_index = 0;
    for (int32_t i = 1; i < len; ++i) {
      if (src[i] < low) low = src[i], low_index = i;
      if (src[i] > high) high = src[i], high_index = i;
    }
    *minimum = low;
    *minimum_index = low_index;
    *maximum = high;
    *maximum_index = high_index;
  }
};

struct CountBetween {
  PLAIN_LOOP void operator()(const int32_t* src, int32_t len, int32_t* count, int32_t lower,
                             int32_t upper) const {
    int32_t found = 0;
    for (int32_t i = 0; i < len; ++i) found += lower < src[i] && src[i] < upper;
    *count = found;
  }
};

// The nearer of the entry that is not below the value and the one before it.
inline int32_t nearer_neighbour(const uint16_t* table, int32_t table_len, int32_t above, uint16_t val) {
  if (above == 0) return 0;
  if (above == table_len) return above - 1;
  return val - table[above - 1] <= table[above] - val ? above - 1 : above;
}

struct BisectEach {
  PLAIN_LOOP void operator()(const uint16_t* src, uint16_t* dst, int32_t* indices, int32_t len,
                             const uint16_t* table, int32_t table_len) const {
    for (int32_t i = 0; i < len; ++i) {
      int32_t low = 0, high = table_len;
      while (low < high) {
        const int32_t middle = low + (high - low) / 2;
        if (table[middle] < src[i]) {
          low = middle + 1;
        } else {
          high = middle;
        }
      }
      indices[i] = nearer_neighbour(table, table_len, low, src[i]);
      dst[i] = table[indices[i]];
    }
  }
};

struct ProductIsNegative {
  int operator()(int16_t a, int16_t b) const { return a * b < 0; }
  int operator()(float a, float b) const { return a * b < 0; }
};

struct SignBitsDiffer {
  int operator()(int16_t a, int16_t b) const { return (a < 0) != (b < 0); }
  int operator()(float a, float b) const { return std::signbit(a) != std::signbit(b); }
};

struct SignDistance {
  template <class T>
  int operator()(T a, T b) const {
    return std::abs(sign(a) - sign(b));
  }
  template <class T>
  static int sign(T a) {
    return (a > 0) - (a < 0);
  }
};

template <class Change>
struct CountChanges {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, float* value, int32_t kind) const {
    int32_t count = 0;
    for (int32_t i = 1; i < len; ++i) count += Change{}(src[i - 1], src[i]);
    *value = kind == 2 ? static_cast<float>(count) * 0.5f : static_cast<float>(count);
  }
};

}  // namespace bench

#endif
