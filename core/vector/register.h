// One register of the processor's vector unit.
//
// Register<T> is the compiler's own vector type, as wide as the widest register that the target has at its
// baseline: 16 bytes on 64-bit Arm, 32 bytes on x86-64-v3. The compiler's operators work on it (+ - * & | ^
// ~ << >> and the comparisons, which give lanes of all ones or all zeros) and nothing wraps them. What C++
// has no operator for stands in neon.h and x86.h: the same overloads with the same meaning, bit for bit, on
// both. A NaN that arithmetic makes or passes on is a NaN; which one is the processor's choice.
//
//   add_saturating, subtract_saturating   clamp at the bounds of the type
//   shift_left, shift_right               all lanes by one count from 0 to 127, known at run time; beyond the
//                                         width zeros come in, from the left copies of the sign
//   lowest_bits(a, n)                     of integers, a modulo 2^n, for n less than the width
//   shift_left_saturating                 clamps at the bounds of the type
//   shift_right_half_up                   by 1 to the width less 1, rounded to nearest, halfway cases up
//   average_up, average_down              half of the exact sum of integers, rounded up, or down
//   half_difference_down(a, b)            half of the exact a - b, rounded down, of int16 and int32
//   absolute_saturating                   the most negative integer gives the largest one
//   absolute                              floats: the sign bit cleared, whatever the value is
//   whole_part                            float64 rounded toward zero, which keeps its sign
//   minimum, maximum                      floats: a NaN in either operand gives a NaN; -0 is below +0
//   reduce_minimum, reduce_maximum        the same over all lanes, combined in no stated order
//   lesser, greater                       floats: of two zeros, or if one is NaN, either operand
//   reduce_add                            sum of all lanes, modulo 2^n
//   watch_nan(watch, a, b)                a watch, zero at first, becomes NaN in lanes where any is
//   has_nan                               whether any lane is NaN
//   any_true, first_true                  of a comparison's result: whether a lane is true; the first that is
//   negative_product                      all ones in lanes where the exact product is negative
//   widen_part<To, K>                     K-th part of a register's integers, in a wider type
//   convert_part<To, K>                   the same, to a floating-point type; rounds in the current mode
//   sum_part<K>(a, b)                     K-th part of a + b, of int32, in float64
//   sum_of_product_part<K>(a, b, c)       K-th part of a * b + c, of int32, in float64: the exact sum rounded
//   narrow                                two registers of float64 to one of float32
//   store_narrowed                        the same, to memory
//   narrow_saturating<To>                 two registers to one of integers half as wide, clamped; four of
//                                         int32 to one of integers a quarter as wide
//   round_clamped_for<int64_t, mode>      float64 to int64, rounded in `mode` and clamped; NaN gives 0
//   round_clamped_for<To, mode>           float32, or two registers of float64, to int32, of which
//                                         narrow_saturating makes what is clamped at the bounds of To; NaN gives 0
//   round_clamped_above<To, mode>(a, most)
//                                         float32 to int32 or uint32, the same but at most `most`
//   round_unclamped<mode>                 float32, or two registers of float64, within the range of int32
//   round_to_triples<To, mode>            float32 to integers of three bytes, clamped at their bounds; NaN
//                                         gives 0. The fourth byte of each may be anything
//                                         All of these round in `mode` whatever the processor's own mode is,
//                                         but for kCurrentMode, which is the processor's
//   round_to_half                         float32 to the nearest float16, ties to even, as float32
//   rounds_to_nearest()                   whether the processor's own mode is to nearest, ties to even
//   fused_multiply_add(a, b, c)           a * b + c with one rounding
//   fused_multiply_alternate(a, b, c)     a * b - c in even lanes, a * b + c in odd ones, with one rounding
//   negate_even                           floats: the sign bit of even lanes turned
//   multiply_part<K>                      K-th part of the products of 16-bit integers, in 32 bits
//   multiply_add_apart(a, b, c)           16-bit integers, a * b + c in two registers of 32 bits; which lanes
//                                         stand in which is the processor's choice
//   join_saturating                       those registers to one of 16 bits, clamped, in the order that was
//   multiply                              products of 64-bit integers, modulo 2^64
//   multiply_half(a, b)                   the same for a less than 2^32
//   deinterleave, interleave              even and odd elements of two registers, and back
//   load_deinterleaved, store_interleaved
//                                         even and odd elements of two registers' length of memory
//   load_every<n>                         every second, third or fourth element of so many registers' length of
//                                         memory, from the first on; it reads nothing else
//   load_next_deinterleaved, store_next_interleaved
//                                         the same, and the pointer moves on behind them
//   duplicate_even, duplicate_odd         floats: of each pair of lanes the even one, or the odd one, twice
//   swap_pairs                            floats: of each pair of lanes the odd one first
//   reverse                               last element first
//   reverse_pairs                         64-bit integers: last pair first, each pair in its order
//   reverse_bottom<element, bytes>        elements of so many bytes in the lowest `bytes`: last one first
//   swap_bytes                            last byte of each element first
//   load_triples_reversed, store_triples  as many elements of three bytes as a register has bytes, the bytes
//                                         of each in reverse order; how they stand in registers is the
//                                         processor's
//   load_widened_triples<To, K>           elements of three bytes, lowest byte first: K-th register of them
//                                         as 32-bit integers; it needs the kTriples elements that it is one of
//   store_narrowed_triples                the lower three bytes of kTriples 32-bit integers
//   widen_triple_words<To>(words)         elements of three bytes that fill a register of 32-bit integers, or
//                                         fewer, from words of which they are the bytes
//   narrow_triples_to_words               and back
//   shuffle_bytes(bytes, index)           in each 16 bytes: byte index[i] of the same 16, 0 from index 128 up
//   store_bottom_half                     half a register to memory
//   load_repeated                         16 bytes of memory, in each 16 bytes of the register
//   load_bottom_half, load_halves, store_halves, repeat_bottom_half
//                                         half a register, from, to and between memory
//   kept_in_register                      the value, of which the compiler no longer knows where it came from
//   kept_in_integer_unit                  an integer that the compiler keeps out of the vector unit, and of which it no
//                                         longer knows where it came from
//   leave_registers()                     makes the vector unit ready for code of narrower registers
//   stream                                a store past the caches, to memory aligned to registers; other
//                                         stores may overtake it until order_streams()
//   streams(bytes)                        whether results of so many bytes are better streamed than stored
//   fill_past_caches                      fills memory larger than the caches, where plain stores are slow
//
// and what the drivers have to know of the processor:
//
//   kTriples                              elements of three bytes that are read or written together
//   kTurnRegisters                        registers that a turn of a loop takes of one operand
//   kAccessesPair                         loads, and stores, of neighbouring registers become one instruction
//   kWidensFromMemory                     loads widen: taking a register apart costs more than loading less
//   kExactFloatExtremesAreCostly          minimum and maximum of floats take several instructions
//   kSeparatesParts<T>                    complex numbers of T are best taken apart before they are multiplied
//   kPrefetches                           hints are worth while in loops that write
//   kAligns                               a loop is worth starting where its stores, or the loads of one that
//                                         does not store, are aligned to registers
//   kRoundsFasterInCurrentMode            asking for the processor's rounding mode once a call pays
//   kHasStreams                           streams() can be true
//   kMultipliesBesideIntegers             products of 64-bit integers in registers are worth while as long as the
//                                         integer unit makes others at the same time
//   kRoundsInShifts<T>                    shift_right_half_up and subtract_saturating of T are there and cheap
#ifndef ZIVKS_CORE_VECTOR_REGISTER_H
#define ZIVKS_CORE_VECTOR_REGISTER_H

#include <zivks/types.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

// The vector layer has to vanish in the loops that use it, whatever the compiler makes of their size.
#define ZIVKS_INLINE [[gnu::always_inline]] inline
#define ZIVKS_INLINE_LAMBDA __attribute__((always_inline))  // behind the parameters

namespace zivks {

#if defined(__aarch64__)
inline constexpr size_t kRegisterBytes = 16;
#elif defined(__AVX2__) && defined(__FMA__) && defined(__F16C__)
inline constexpr size_t kRegisterBytes = 32;
#else
#error "zivks is built for 64-bit Arm or for x86-64-v3 (-march=x86-64-v3)"
#endif

template <class T>
struct RegisterOf {
  typedef T Type __attribute__((vector_size(kRegisterBytes)));
  typedef T Unaligned __attribute__((vector_size(kRegisterBytes), aligned(1), may_alias));
};

template <class T>
using Register = typename RegisterOf<T>::Type;

template <class T>
inline constexpr size_t kRegisterElements = kRegisterBytes / sizeof(T);

using U8 = Register<uint8_t>;
using I8 = Register<int8_t>;
using U16 = Register<uint16_t>;
using I16 = Register<int16_t>;
using U32 = Register<uint32_t>;
using I32 = Register<int32_t>;
using U64 = Register<uint64_t>;
using I64 = Register<int64_t>;
using F32 = Register<float>;
using F64 = Register<double>;

template <class R>
using ElementOf = std::decay_t<decltype(std::declval<R>()[0])>;

template <class R>
struct RegisterPair {
  R first, second;
};

template <class R>
struct RegisterTriple {
  R first, second, third;
};

template <class T>
ZIVKS_INLINE Register<T> load(const T* from) {
  return *reinterpret_cast<const typename RegisterOf<T>::Unaligned*>(from);
}

template <class T>
ZIVKS_INLINE void store(T* to, Register<T> value) {
  *reinterpret_cast<typename RegisterOf<T>::Unaligned*>(to) = value;
}

template <class T, size_t... I>
ZIVKS_INLINE Register<T> broadcast_over(T value, std::index_sequence<I...>) {
  return Register<T>{(static_cast<void>(I), value)...};
}

// Keeps the value's bits, those of -0 and of a NaN too.
template <class T>
ZIVKS_INLINE Register<T> broadcast(T value) {
  return broadcast_over(value, std::make_index_sequence<kRegisterElements<T>>());
}

// `a` in lanes where `condition`, the result of a comparison, is true, else `b`.
template <class Condition, class R>
ZIVKS_INLINE R select(Condition condition, R a, R b) {
  return R((condition & Condition(a)) | (~condition & Condition(b)));
}

// Beside the modes that callers select: the one that the processor is in.
inline constexpr auto kCurrentMode = static_cast<ZIVKRoundMode>(ZIVK_RND_AWAY + 1);

// Bytes before the next address that is aligned to a register, 0 if this one is.
ZIVKS_INLINE size_t bytes_unaligned(const void* address) {
  return (0 - reinterpret_cast<uintptr_t>(address)) % kRegisterBytes;
}

// An unsigned integer as wide as `bytes`.
template <size_t bytes>
using UnsignedOf = std::conditional_t<
    bytes == 1, uint8_t,
    std::conditional_t<bytes == 2, uint16_t, std::conditional_t<bytes == 4, uint32_t, uint64_t>>>;

template <class T>
using SignedOf = std::make_signed_t<UnsignedOf<sizeof(T)>>;

// All ones in the lanes from number `first` on: in all of them if it is a negative number, modulo 2^64.
template <class T, size_t... I>
ZIVKS_INLINE Register<SignedOf<T>> lanes_from_over(SignedOf<T> first, std::index_sequence<I...>) {
  return Register<SignedOf<T>>{static_cast<SignedOf<T>>(I)...} >= broadcast(first);
}
template <class T>
ZIVKS_INLINE Register<SignedOf<T>> lanes_from(size_t first) {
  return lanes_from_over<T>(static_cast<SignedOf<T>>(first),
                            std::make_index_sequence<kRegisterElements<T>>());
}

// Where the bytes of a 32-bit integer are found that takes the three from `first` on. A signed one takes them
// at its top, to be shifted down with its sign.
template <class To>
constexpr uint8_t byte_of_triple(size_t byte, size_t first) {
  constexpr uint8_t kZero = 255;  // beyond every table
  constexpr size_t kLowest = std::is_signed_v<To>;
  return byte < kLowest || byte - kLowest >= 3 ? kZero : static_cast<uint8_t>(first + byte - kLowest);
}

// The bounds of an integer of three bytes.
template <class To>
inline constexpr To kMostTriple = std::is_signed_v<To> ? 0x7FFFFF : 0xFFFFFF;
template <class To>
inline constexpr To kLeastTriple = static_cast<To>(std::is_signed_v<To> ? -0x800000 : 0);

// Up to eight elements of three bytes, one behind the other.
struct TripleWords {
  uint64_t first, second, third;
};

template <class To>
ZIVKS_INLINE Register<To> extend_triples(U8 widened) {
  if constexpr (std::is_signed_v<To>) return Register<To>(widened) >> 8;
  if constexpr (!std::is_signed_v<To>) return Register<To>(widened);
}

template <class Value>
ZIVKS_INLINE Value read(const void* from) {
  Value value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

template <class Value>
ZIVKS_INLINE void write(void* to, Value value) {
  std::memcpy(to, &value, sizeof value);
}

}  // namespace zivks

#if defined(__aarch64__)
#include "core/vector/neon.h"
#else
#include "core/vector/x86.h"
#endif

namespace zivks {

template <class R>
ZIVKS_INLINE R lowest_bits(R a, int n) {
  using T = ElementOf<R>;
  return a & broadcast(static_cast<T>((UnsignedOf<sizeof(T)>{1} << n) - 1));
}

// `bytes` of memory, up to a register, at its bottom.
template <size_t bytes>
ZIVKS_INLINE U64 load_bottom(const void* from) {
  if constexpr (bytes == kRegisterBytes) {
    return load(static_cast<const uint64_t*>(from));
  } else if constexpr (bytes == kRegisterBytes / 2) {
    return load_bottom_half(from);
  } else {
    return U64(Register<UnsignedOf<bytes>>{read<UnsignedOf<bytes>>(from)});
  }
}

// Two pieces of memory, of `bytes` each and at most half a register, one behind the other at its bottom.
template <size_t bytes>
ZIVKS_INLINE U64 load_two(const void* first, const void* second) {
  if constexpr (bytes == kRegisterBytes / 2) {
    return load_halves(first, second);
  } else {
    return U64(Register<UnsignedOf<bytes>>{read<UnsignedOf<bytes>>(first), read<UnsignedOf<bytes>>(second)});
  }
}
// The `bytes` at the bottom of a register, repeated all over it.
template <size_t bytes>
ZIVKS_INLINE U64 repeat_bottom(U64 a) {
  if constexpr (bytes == kRegisterBytes) {
    return a;
  } else if constexpr (bytes == kRegisterBytes / 2) {
    return repeat_bottom_half(a);
  } else {
    using Piece = UnsignedOf<bytes>;
    return U64(broadcast<Piece>(Register<Piece>(a)[0]));
  }
}

// One, two or four elements of three bytes.
template <size_t count>
ZIVKS_INLINE TripleWords load_few_triples(const uint8_t* from) {
  if constexpr (count == 1) return {uint64_t{read<uint16_t>(from)} | uint64_t{from[2]} << 16, 0, 0};
  if constexpr (count == 2) return {read<uint32_t>(from) | uint64_t{read<uint16_t>(from + 4)} << 32, 0, 0};
  if constexpr (count == 4) return {read<uint64_t>(from), read<uint32_t>(from + 8), 0};
}
template <size_t count>
ZIVKS_INLINE void store_few_triples(uint8_t* to, TripleWords words) {
  if constexpr (count == 4) {
    write(to, words.first);
    write(to + 8, static_cast<uint32_t>(words.second));
  } else if constexpr (count == 2) {
    write(to, static_cast<uint32_t>(words.first));
    write(to + 4, static_cast<uint16_t>(words.first >> 32));
  } else {
    write(to, static_cast<uint16_t>(words.first));
    to[2] = static_cast<uint8_t>(words.first >> 16);
  }
}

// `low` followed by `high`, `count` elements each, and apart again.
template <size_t count>
ZIVKS_INLINE TripleWords join_triples(TripleWords low, TripleWords high) {
  constexpr int kBits = 24 * count % 64;
  if constexpr (count == 4) {
    return {low.first, low.second | high.first << kBits, high.first >> kBits | high.second << kBits};
  } else {
    return {low.first | high.first << kBits, high.first >> (64 - kBits), 0};
  }
}
template <size_t count>
ZIVKS_INLINE TripleWords upper_triples(TripleWords words) {
  constexpr int kBits = 24 * count % 64;
  if constexpr (count == 4) {
    return {words.second >> kBits | words.third << kBits, words.third >> kBits, 0};
  } else {
    return {words.first >> kBits | words.second << (64 - kBits), 0, 0};
  }
}

template <size_t element, size_t... I>
ZIVKS_INLINE U8 reversed_order(std::index_sequence<I...>) {
  return U8{static_cast<uint8_t>(sizeof...(I) - element - I + 2 * (I % element))...};
}
template <size_t element, size_t bytes, class R>
ZIVKS_INLINE R reverse_bottom(R a) {
  if constexpr (element == bytes) {
    return a;
  } else if constexpr (bytes < kRegisterBytes) {
    return R(shuffle_bytes(U8(a), reversed_order<element>(std::make_index_sequence<bytes>())));
  } else if constexpr (element == sizeof(RegisterPair<uint64_t>)) {
    return R(reverse_pairs(U64(a)));
  } else {
    return R(reverse(Register<UnsignedOf<element>>(a)));
  }
}

template <size_t bytes>
ZIVKS_INLINE void store_two(void* first, void* second, U64 value) {
  if constexpr (bytes == kRegisterBytes / 2) {
    store_halves(first, second, value);
  } else {
    const auto pieces = Register<UnsignedOf<bytes>>(value);
    write<UnsignedOf<bytes>>(first, pieces[0]);
    write<UnsignedOf<bytes>>(second, pieces[1]);
  }
}

}  // namespace zivks

#endif
