// The vocabulary of kernels: N elements of one type in as many registers as they need.
//
// Inside one kernel N is the same for all types, so that widening and narrowing never change the number of
// elements, only the number of registers. Where N elements do not fill a register they stand at its bottom,
// and no result depends on the rest. Everything here is made of fold expressions over the registers, not of
// loops, so that it vanishes at compile time.
#ifndef ZIVKS_CORE_VECTOR_LANES_H
#define ZIVKS_CORE_VECTOR_LANES_H

#include "core/vector/register.h"

namespace zivks {

template <class T, size_t N>
struct Lanes {
  static constexpr size_t kParts = N * sizeof(T) <= kRegisterBytes ? 1 : N * sizeof(T) / kRegisterBytes;
  Register<T> part[kParts];
};

// N complex numbers, real and imaginary parts in registers of their own.
template <class T, size_t N>
struct ComplexLanes {
  Lanes<T, N> re, im;
};

// Applies `operation` to the corresponding registers of its operands; the results make up Lanes<To, N>.
template <class To, size_t N, class Operation, size_t... I, class... From>
ZIVKS_INLINE Lanes<To, N> lift_over(std::index_sequence<I...>, Operation operation,
                                    const Lanes<From, N>&... from) {
  const auto at = [&](auto i) ZIVKS_INLINE_LAMBDA { return operation(from.part[i]...); };
  return {{at(std::integral_constant<size_t, I>())...}};
}
template <class To, size_t N, class Operation, class... From>
ZIVKS_INLINE Lanes<To, N> lift(Operation operation, const Lanes<From, N>&... from) {
  return lift_over<To>(std::make_index_sequence<Lanes<To, N>::kParts>(), operation, from...);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator+(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return x + y; }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator-(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return x - y; }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator-(Lanes<T, N> a) {
  return lift<T>([](auto x) { return -x; }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator*(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return x * y; }, a, b);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator&(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return x & y; }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator|(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return x | y; }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator^(Lanes<T, N> a, Lanes<T, N> b) {
  using Bits = Register<UnsignedOf<sizeof(T)>>;
  return lift<T>([](auto x, auto y) { return Register<T>(Bits(x) ^ Bits(y)); }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator~(Lanes<T, N> a) {
  return lift<T>([](auto x) { return ~x; }, a);
}

// A constant operand is one register, which every register of the other operand meets: one value in all its
// elements, or a pattern such as the two parts of a complex number in turn.
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator+(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return x + b; }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator-(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return x - b; }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator-(Register<T> a, Lanes<T, N> b) {
  return lift<T>([a](auto x) { return a - x; }, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator*(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return x * b; }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator&(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return x & b; }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator|(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return x | b; }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> operator^(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return x ^ b; }, a);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> add_saturating(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return add_saturating(x, y); }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> subtract_saturating(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return subtract_saturating(x, y); }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> add_saturating(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return add_saturating(x, b); }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> subtract_saturating(Lanes<T, N> a, Register<T> b) {
  return lift<T>([b](auto x) { return subtract_saturating(x, b); }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> absolute_saturating(Lanes<T, N> a) {
  return lift<T>([](auto x) { return absolute_saturating(x); }, a);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> minimum(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return minimum(x, y); }, a, b);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> maximum(Lanes<T, N> a, Lanes<T, N> b) {
  return lift<T>([](auto x, auto y) { return maximum(x, y); }, a, b);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> absolute(Lanes<T, N> a) {
  return lift<T>([](auto x) { return absolute(x); }, a);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> fused_multiply_add(Lanes<T, N> a, Lanes<T, N> b, Lanes<T, N> c) {
  return lift<T>([](auto x, auto y, auto z) { return fused_multiply_add(x, y, z); }, a, b, c);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> fused_multiply_add(Lanes<T, N> a, Register<T> b, Lanes<T, N> c) {
  return lift<T>([b](auto x, auto z) { return fused_multiply_add(x, b, z); }, a, c);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> shift_left(Lanes<T, N> a, int count) {
  return lift<T>([count](auto x) { return shift_left(x, count); }, a);
}
template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> shift_right(Lanes<T, N> a, int count) {
  return lift<T>([count](auto x) { return shift_right(x, count); }, a);
}

template <class T, size_t N>
ZIVKS_INLINE Lanes<T, N> swap_bytes(Lanes<T, N> a) {
  return lift<T>([](auto x) { return swap_bytes(x); }, a);
}

template <class T, size_t N>
ZIVKS_INLINE ComplexLanes<T, N> make_complex(Lanes<T, N> re, Lanes<T, N> im) {
  return {re, im};
}

// The parts of a wider result: `operation` gets a register and the number of the part that it is to make of
// it.
template <class To, class T, size_t N, class Operation, size_t... I>
ZIVKS_INLINE Lanes<To, N> spread_over(std::index_sequence<I...>, Lanes<T, N> a, Operation operation) {
  constexpr size_t factor = sizeof(To) / sizeof(T);
  return {{operation(a.part[I / factor], std::integral_constant<size_t, I % factor>())...}};
}

// The same values in a wider integer type. Unsigned values keep their sense in a signed type.
template <class To, class T, size_t N>
ZIVKS_INLINE Lanes<To, N> widen(Lanes<T, N> a) {
  static_assert(sizeof(To) > sizeof(T));
  return spread_over<To>(std::make_index_sequence<Lanes<To, N>::kParts>(), a,
                         [](auto x, auto k) { return widen_part<To, k>(x); });
}

// Products of 16-bit integers.
template <size_t N, size_t... I>
ZIVKS_INLINE Lanes<int32_t, N> multiply_widening_over(std::index_sequence<I...>, Lanes<int16_t, N> a,
                                                      Lanes<int16_t, N> b) {
  return {{multiply_part<I % 2>(a.part[I / 2], b.part[I / 2])...}};
}
template <size_t N>
ZIVKS_INLINE Lanes<int32_t, N> multiply_widening(Lanes<int16_t, N> a, Lanes<int16_t, N> b) {
  return multiply_widening_over(std::make_index_sequence<Lanes<int32_t, N>::kParts>(), a, b);
}

// To a floating-point type, rounded in the current mode where it is not exact.
template <class To, class T, size_t N, size_t... I>
ZIVKS_INLINE Lanes<To, N> convert_narrowing_over(std::index_sequence<I...>, Lanes<T, N> a) {
  return {{narrow(a.part[2 * I], a.part[2 * I + 1])...}};
}
template <class To, class T, size_t N>
ZIVKS_INLINE Lanes<To, N> convert(Lanes<T, N> a) {
  constexpr auto parts = std::make_index_sequence<Lanes<To, N>::kParts>();
  if constexpr (sizeof(To) < sizeof(T)) {
    return convert_narrowing_over<To>(parts, a);
  } else {
    return spread_over<To>(parts, a, [](auto x, auto k) { return convert_part<To, k>(x); });
  }
}

template <class To, class T, size_t N, size_t... I>
ZIVKS_INLINE Lanes<To, N> narrow_saturating_over(std::index_sequence<I...>, Lanes<T, N> a) {
  if constexpr (2 * sizeof(To) == sizeof(T)) {
    return {{narrow_saturating<To>(a.part[2 * I], a.part[2 * I + 1])...}};
  } else {
    return {
        {narrow_saturating<To>(a.part[4 * I], a.part[4 * I + 1], a.part[4 * I + 2], a.part[4 * I + 3])...}};
  }
}
// To an integer type of half the width, or from int32 of a quarter, clamped at its bounds.
template <class To, class T, size_t N>
ZIVKS_INLINE Lanes<To, N> narrow_saturating(Lanes<T, N> a) {
  return narrow_saturating_over<To>(std::make_index_sequence<Lanes<To, N>::kParts>(), a);
}

template <class To, ZIVKRoundMode mode, size_t N, size_t... I>
ZIVKS_INLINE Lanes<int32_t, N> round_pairs_over(std::index_sequence<I...>, Lanes<double, N> a) {
  return {{round_clamped_for<To, mode>(a.part[2 * I], a.part[2 * I + 1])...}};
}
template <class To, ZIVKRoundMode mode, size_t N>
ZIVKS_INLINE Lanes<int32_t, N> round_to_int32(Lanes<float, N> a) {
  return lift<int32_t>([](auto x) { return round_clamped_for<To, mode>(x); }, a);
}
template <class To, ZIVKRoundMode mode, size_t N>
ZIVKS_INLINE Lanes<int32_t, N> round_to_int32(Lanes<double, N> a) {
  return round_pairs_over<To, mode>(std::make_index_sequence<Lanes<int32_t, N>::kParts>(), a);
}
template <ZIVKRoundMode mode, size_t N, size_t... I>
ZIVKS_INLINE Lanes<int32_t, N> round_pairs_unclamped_over(std::index_sequence<I...>, Lanes<double, N> a) {
  return {{round_unclamped<mode>(a.part[2 * I], a.part[2 * I + 1])...}};
}
// To int32 what is within its range.
template <ZIVKRoundMode mode, size_t N>
ZIVKS_INLINE Lanes<int32_t, N> round_unclamped(Lanes<float, N> a) {
  return lift<int32_t>([](auto x) { return round_unclamped<mode>(x); }, a);
}
template <ZIVKRoundMode mode, size_t N>
ZIVKS_INLINE Lanes<int32_t, N> round_unclamped(Lanes<double, N> a) {
  return round_pairs_unclamped_over<mode>(std::make_index_sequence<Lanes<int32_t, N>::kParts>(), a);
}

// To an integer type no wider than the floats, rounded in `mode` and clamped at its bounds; NaN gives 0.
template <class To, ZIVKRoundMode mode, class F, size_t N>
ZIVKS_INLINE Lanes<To, N> round_saturating(Lanes<F, N> a) {
  if constexpr (sizeof(To) == 8) {
    return lift<To>([](auto x) { return round_clamped_for<To, mode>(x); }, a);
  } else if constexpr (sizeof(To) == 4) {
    return lift<To>([](auto x) { return Register<To>(x); }, round_to_int32<To, mode>(a));
  } else {
    return narrow_saturating<To>(round_to_int32<To, mode>(a));
  }
}

}  // namespace zivks

#endif
