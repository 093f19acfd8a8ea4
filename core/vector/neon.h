// The operations of register.h for 64-bit Arm at the Armv8.0 baseline: 128-bit registers.
#ifndef ZIVKS_CORE_VECTOR_NEON_H
#define ZIVKS_CORE_VECTOR_NEON_H

#include <arm_neon.h>

#include "core/vector/register.h"

namespace zivks {

// There are thirty-two registers.
inline constexpr size_t kTurnRegisters = 8;

inline constexpr bool kAccessesPair = true;
inline constexpr bool kWidensFromMemory = false;
inline constexpr bool kExactFloatExtremesAreCostly = false;
template <class T>
inline constexpr bool kSeparatesParts = sizeof(T) == sizeof(float);
inline constexpr bool kPrefetches = true;
inline constexpr bool kAligns = false;
inline constexpr bool kHasStreams = false;
inline constexpr bool kRoundsFasterInCurrentMode = false;
template <class>
inline constexpr bool kRoundsInShifts = true;
inline constexpr bool kMultipliesBesideIntegers = false;

template <class R>
ZIVKS_INLINE R kept_in_register(R value) {
  asm("" : "+w"(value));
  return value;
}

ZIVKS_INLINE uint64_t kept_in_integer_unit(uint64_t value) {
  asm("" : "+r"(value));
  return value;
}

ZIVKS_INLINE void leave_registers() {}

// --- Saturating arithmetic -------------------------------------------------------------

ZIVKS_INLINE U8 add_saturating(U8 a, U8 b) { return U8(vqaddq_u8(a, b)); }
ZIVKS_INLINE I8 add_saturating(I8 a, I8 b) { return I8(vqaddq_s8(a, b)); }
ZIVKS_INLINE U16 add_saturating(U16 a, U16 b) { return U16(vqaddq_u16(a, b)); }
ZIVKS_INLINE I16 add_saturating(I16 a, I16 b) { return I16(vqaddq_s16(a, b)); }
ZIVKS_INLINE U32 add_saturating(U32 a, U32 b) { return U32(vqaddq_u32(a, b)); }
ZIVKS_INLINE I32 add_saturating(I32 a, I32 b) { return I32(vqaddq_s32(a, b)); }
ZIVKS_INLINE U8 subtract_saturating(U8 a, U8 b) { return U8(vqsubq_u8(a, b)); }
ZIVKS_INLINE I8 subtract_saturating(I8 a, I8 b) { return I8(vqsubq_s8(a, b)); }
ZIVKS_INLINE U16 subtract_saturating(U16 a, U16 b) { return U16(vqsubq_u16(a, b)); }
ZIVKS_INLINE I16 subtract_saturating(I16 a, I16 b) { return I16(vqsubq_s16(a, b)); }
ZIVKS_INLINE U32 subtract_saturating(U32 a, U32 b) { return U32(vqsubq_u32(a, b)); }
ZIVKS_INLINE I32 subtract_saturating(I32 a, I32 b) { return I32(vqsubq_s32(a, b)); }

ZIVKS_INLINE I16 absolute_saturating(I16 a) { return I16(vqabsq_s16(a)); }
ZIVKS_INLINE I32 absolute_saturating(I32 a) { return I32(vqabsq_s32(a)); }

// --- Shifts by one count ---------------------------------------------------------------

ZIVKS_INLINE U8 shift_left(U8 a, int n) { return U8(vshlq_u8(a, vdupq_n_s8(static_cast<int8_t>(n)))); }
ZIVKS_INLINE U16 shift_left(U16 a, int n) { return U16(vshlq_u16(a, vdupq_n_s16(static_cast<int16_t>(n)))); }
ZIVKS_INLINE I16 shift_left(I16 a, int n) { return I16(vshlq_s16(a, vdupq_n_s16(static_cast<int16_t>(n)))); }
ZIVKS_INLINE U32 shift_left(U32 a, int n) { return U32(vshlq_u32(a, vdupq_n_s32(n))); }
ZIVKS_INLINE I32 shift_left(I32 a, int n) { return I32(vshlq_s32(a, vdupq_n_s32(n))); }
ZIVKS_INLINE U8 shift_right(U8 a, int n) { return shift_left(a, -n); }
ZIVKS_INLINE U16 shift_right(U16 a, int n) { return shift_left(a, -n); }
ZIVKS_INLINE I16 shift_right(I16 a, int n) { return shift_left(a, -n); }
ZIVKS_INLINE U32 shift_right(U32 a, int n) { return shift_left(a, -n); }
ZIVKS_INLINE I32 shift_right(I32 a, int n) { return shift_left(a, -n); }
ZIVKS_INLINE U8 shift_left_saturating(U8 a, int n) {
  return U8(vqshlq_u8(a, vdupq_n_s8(static_cast<int8_t>(n))));
}
ZIVKS_INLINE U16 shift_left_saturating(U16 a, int n) {
  return U16(vqshlq_u16(a, vdupq_n_s16(static_cast<int16_t>(n))));
}
ZIVKS_INLINE I16 shift_left_saturating(I16 a, int n) {
  return I16(vqshlq_s16(a, vdupq_n_s16(static_cast<int16_t>(n))));
}
ZIVKS_INLINE I32 shift_left_saturating(I32 a, int n) { return I32(vqshlq_s32(a, vdupq_n_s32(n))); }

ZIVKS_INLINE U8 shift_right_half_up(U8 a, int n) {
  return U8(vrshlq_u8(a, vdupq_n_s8(static_cast<int8_t>(-n))));
}
ZIVKS_INLINE U16 shift_right_half_up(U16 a, int n) {
  return U16(vrshlq_u16(a, vdupq_n_s16(static_cast<int16_t>(-n))));
}
ZIVKS_INLINE I16 shift_right_half_up(I16 a, int n) {
  return I16(vrshlq_s16(a, vdupq_n_s16(static_cast<int16_t>(-n))));
}
ZIVKS_INLINE U32 shift_right_half_up(U32 a, int n) { return U32(vrshlq_u32(a, vdupq_n_s32(-n))); }
ZIVKS_INLINE I32 shift_right_half_up(I32 a, int n) { return I32(vrshlq_s32(a, vdupq_n_s32(-n))); }

// --- Halved sums and differences -----------------------------------------------------------

ZIVKS_INLINE U8 average_up(U8 a, U8 b) { return U8(vrhaddq_u8(a, b)); }
ZIVKS_INLINE U16 average_up(U16 a, U16 b) { return U16(vrhaddq_u16(a, b)); }
ZIVKS_INLINE I16 average_up(I16 a, I16 b) { return I16(vrhaddq_s16(a, b)); }
ZIVKS_INLINE U32 average_up(U32 a, U32 b) { return U32(vrhaddq_u32(a, b)); }
ZIVKS_INLINE I32 average_up(I32 a, I32 b) { return I32(vrhaddq_s32(a, b)); }
ZIVKS_INLINE U8 average_down(U8 a, U8 b) { return U8(vhaddq_u8(a, b)); }
ZIVKS_INLINE U16 average_down(U16 a, U16 b) { return U16(vhaddq_u16(a, b)); }
ZIVKS_INLINE I16 average_down(I16 a, I16 b) { return I16(vhaddq_s16(a, b)); }
ZIVKS_INLINE U32 average_down(U32 a, U32 b) { return U32(vhaddq_u32(a, b)); }
ZIVKS_INLINE I32 average_down(I32 a, I32 b) { return I32(vhaddq_s32(a, b)); }
ZIVKS_INLINE I16 half_difference_down(I16 a, I16 b) { return I16(vhsubq_s16(a, b)); }
ZIVKS_INLINE I32 half_difference_down(I32 a, I32 b) { return I32(vhsubq_s32(a, b)); }

ZIVKS_INLINE F32 absolute(F32 a) { return F32(vabsq_f32(a)); }
ZIVKS_INLINE F64 absolute(F64 a) { return F64(vabsq_f64(a)); }
ZIVKS_INLINE F64 whole_part(F64 a) { return F64(vrndq_f64(a)); }

// --- 64-bit integers -----------------------------------------------------------------------

ZIVKS_INLINE U64 shift_left(U64 a, int n) { return U64(vshlq_u64(a, vdupq_n_s64(n))); }
ZIVKS_INLINE I64 shift_left(I64 a, int n) { return I64(vshlq_s64(a, vdupq_n_s64(n))); }
ZIVKS_INLINE U64 shift_right(U64 a, int n) { return shift_left(a, -n); }
ZIVKS_INLINE I64 shift_right(I64 a, int n) { return shift_left(a, -n); }
ZIVKS_INLINE I64 add_saturating(I64 a, I64 b) { return I64(vqaddq_s64(a, b)); }
ZIVKS_INLINE U64 add_saturating(U64 a, U64 b) { return U64(vqaddq_u64(a, b)); }
ZIVKS_INLINE I64 subtract_saturating(I64 a, I64 b) { return I64(vqsubq_s64(a, b)); }
ZIVKS_INLINE U64 subtract_saturating(U64 a, U64 b) { return U64(vqsubq_u64(a, b)); }
ZIVKS_INLINE I64 shift_left_saturating(I64 a, int n) { return I64(vqshlq_s64(a, vdupq_n_s64(n))); }
ZIVKS_INLINE U64 shift_left_saturating(U64 a, int n) { return U64(vqshlq_u64(a, vdupq_n_s64(n))); }
ZIVKS_INLINE I64 shift_right_half_up(I64 a, int n) { return I64(vrshlq_s64(a, vdupq_n_s64(-n))); }
ZIVKS_INLINE U64 shift_right_half_up(U64 a, int n) { return U64(vrshlq_u64(a, vdupq_n_s64(-n))); }
// There is no halving addition of 64 bits: a + b = 2 * (a & b) + (a ^ b).
ZIVKS_INLINE I64 average_up(I64 a, I64 b) { return I64(vrsraq_n_s64(a & b, a ^ b, 1)); }
ZIVKS_INLINE U64 average_up(U64 a, U64 b) { return U64(vrsraq_n_u64(a & b, a ^ b, 1)); }
ZIVKS_INLINE I64 average_down(I64 a, I64 b) { return I64(vsraq_n_s64(a & b, a ^ b, 1)); }
ZIVKS_INLINE U64 average_down(U64 a, U64 b) { return U64(vsraq_n_u64(a & b, a ^ b, 1)); }

// --- Products of 64-bit integers -----------------------------------------------------------

ZIVKS_INLINE U64 multiply(U64 a, U64 b) {
  const uint32x4_t crosswise = vmulq_u32(vrev64q_u32(uint32x4_t(a)), uint32x4_t(b));
  return U64(vmlal_u32(vshlq_n_u64(vpaddlq_u32(crosswise), 32), vmovn_u64(a), vmovn_u64(b)));
}
ZIVKS_INLINE U64 multiply_half(U64 a, U64 b) { return multiply(a, b); }

// --- Minimum and maximum ---------------------------------------------------------------

ZIVKS_INLINE U8 minimum(U8 a, U8 b) { return U8(vminq_u8(a, b)); }
ZIVKS_INLINE I8 minimum(I8 a, I8 b) { return I8(vminq_s8(a, b)); }
ZIVKS_INLINE U16 minimum(U16 a, U16 b) { return U16(vminq_u16(a, b)); }
ZIVKS_INLINE I16 minimum(I16 a, I16 b) { return I16(vminq_s16(a, b)); }
ZIVKS_INLINE U32 minimum(U32 a, U32 b) { return U32(vminq_u32(a, b)); }
ZIVKS_INLINE I32 minimum(I32 a, I32 b) { return I32(vminq_s32(a, b)); }
ZIVKS_INLINE F32 minimum(F32 a, F32 b) { return F32(vminq_f32(a, b)); }
ZIVKS_INLINE F64 minimum(F64 a, F64 b) { return F64(vminq_f64(a, b)); }
ZIVKS_INLINE U8 maximum(U8 a, U8 b) { return U8(vmaxq_u8(a, b)); }
ZIVKS_INLINE I8 maximum(I8 a, I8 b) { return I8(vmaxq_s8(a, b)); }
ZIVKS_INLINE U16 maximum(U16 a, U16 b) { return U16(vmaxq_u16(a, b)); }
ZIVKS_INLINE I16 maximum(I16 a, I16 b) { return I16(vmaxq_s16(a, b)); }
ZIVKS_INLINE U32 maximum(U32 a, U32 b) { return U32(vmaxq_u32(a, b)); }
ZIVKS_INLINE I32 maximum(I32 a, I32 b) { return I32(vmaxq_s32(a, b)); }
ZIVKS_INLINE F32 maximum(F32 a, F32 b) { return F32(vmaxq_f32(a, b)); }
ZIVKS_INLINE F64 maximum(F64 a, F64 b) { return F64(vmaxq_f64(a, b)); }
ZIVKS_INLINE F32 lesser(F32 a, F32 b) { return minimum(a, b); }
ZIVKS_INLINE F64 lesser(F64 a, F64 b) { return minimum(a, b); }
ZIVKS_INLINE F32 greater(F32 a, F32 b) { return maximum(a, b); }
ZIVKS_INLINE F64 greater(F64 a, F64 b) { return maximum(a, b); }

ZIVKS_INLINE I64 minimum(I64 a, I64 b) { return vbslq_s64(vcgtq_s64(a, b), b, a); }
ZIVKS_INLINE I64 maximum(I64 a, I64 b) { return vbslq_s64(vcgtq_s64(a, b), a, b); }

ZIVKS_INLINE uint8_t reduce_minimum(U8 a) { return vminvq_u8(a); }
ZIVKS_INLINE int8_t reduce_minimum(I8 a) { return vminvq_s8(a); }
ZIVKS_INLINE uint16_t reduce_minimum(U16 a) { return vminvq_u16(a); }
ZIVKS_INLINE int16_t reduce_minimum(I16 a) { return vminvq_s16(a); }
ZIVKS_INLINE uint32_t reduce_minimum(U32 a) { return vminvq_u32(a); }
ZIVKS_INLINE int32_t reduce_minimum(I32 a) { return vminvq_s32(a); }
ZIVKS_INLINE int64_t reduce_minimum(I64 a) { return a[0] < a[1] ? a[0] : a[1]; }
ZIVKS_INLINE float reduce_minimum(F32 a) { return vminvq_f32(a); }
ZIVKS_INLINE double reduce_minimum(F64 a) { return vminvq_f64(a); }
ZIVKS_INLINE uint8_t reduce_maximum(U8 a) { return vmaxvq_u8(a); }
ZIVKS_INLINE int8_t reduce_maximum(I8 a) { return vmaxvq_s8(a); }
ZIVKS_INLINE uint16_t reduce_maximum(U16 a) { return vmaxvq_u16(a); }
ZIVKS_INLINE int16_t reduce_maximum(I16 a) { return vmaxvq_s16(a); }
ZIVKS_INLINE uint32_t reduce_maximum(U32 a) { return vmaxvq_u32(a); }
ZIVKS_INLINE int32_t reduce_maximum(I32 a) { return vmaxvq_s32(a); }
ZIVKS_INLINE int64_t reduce_maximum(I64 a) { return a[0] > a[1] ? a[0] : a[1]; }
ZIVKS_INLINE float reduce_maximum(F32 a) { return vmaxvq_f32(a); }
ZIVKS_INLINE double reduce_maximum(F64 a) { return vmaxvq_f64(a); }

ZIVKS_INLINE int16_t reduce_add(I16 a) { return vaddvq_s16(a); }
ZIVKS_INLINE int32_t reduce_add(I32 a) { return vaddvq_s32(a); }
ZIVKS_INLINE int64_t reduce_add(I64 a) { return vaddvq_s64(a); }

template <class R>
ZIVKS_INLINE R watch_nan(R watch, R a, R b) {
  return maximum(watch, maximum(a, b));
}
template <class R>
ZIVKS_INLINE bool has_nan(R a) {
  const auto most = reduce_maximum(a);
  return most != most;
}

// Four bits of each byte of a comparison's result.
template <class R>
ZIVKS_INLINE uint64_t bits_of_comparison(R comparison) {
  return vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(uint16x8_t(comparison), 4)), 0);
}
template <class R>
ZIVKS_INLINE bool any_true(R comparison) {
  return bits_of_comparison(comparison) != 0;
}
template <class R>
ZIVKS_INLINE size_t first_true(R comparison) {
  return static_cast<size_t>(__builtin_ctzll(bits_of_comparison(comparison))) / 4 / sizeof(ElementOf<R>);
}

// The upper half of the doubled product, which saturates upward only, has its sign.
ZIVKS_INLINE I16 negative_product(I16 a, I16 b) { return I16(vqdmulhq_s16(a, b)) >> 15; }

// --- Widening, narrowing, converting ---------------------------------------------------

template <size_t K>
ZIVKS_INLINE U16 widen_half(U8 a) {
  if constexpr (K == 0) return U16(vmovl_u8(vget_low_u8(a)));
  if constexpr (K == 1) return U16(vmovl_high_u8(a));
}
template <size_t K>
ZIVKS_INLINE I16 widen_half(I8 a) {
  if constexpr (K == 0) return I16(vmovl_s8(vget_low_s8(a)));
  if constexpr (K == 1) return I16(vmovl_high_s8(a));
}
template <size_t K>
ZIVKS_INLINE U32 widen_half(U16 a) {
  if constexpr (K == 0) return U32(vmovl_u16(vget_low_u16(a)));
  if constexpr (K == 1) return U32(vmovl_high_u16(a));
}
template <size_t K>
ZIVKS_INLINE I32 widen_half(I16 a) {
  if constexpr (K == 0) return I32(vmovl_s16(vget_low_s16(a)));
  if constexpr (K == 1) return I32(vmovl_high_s16(a));
}
template <size_t K>
ZIVKS_INLINE U64 widen_half(U32 a) {
  if constexpr (K == 0) return U64(vmovl_u32(vget_low_u32(a)));
  if constexpr (K == 1) return U64(vmovl_high_u32(a));
}
template <size_t K>
ZIVKS_INLINE I64 widen_half(I32 a) {
  if constexpr (K == 0) return I64(vmovl_s32(vget_low_s32(a)));
  if constexpr (K == 1) return I64(vmovl_high_s32(a));
}

template <class To, size_t K, class R>
ZIVKS_INLINE Register<To> widen_part(R a) {
  constexpr size_t parts = sizeof(To) / sizeof(ElementOf<R>);
  if constexpr (parts == 2) {
    return Register<To>(widen_half<K>(a));
  } else {
    return widen_part<To, K % (parts / 2)>(widen_half<K / (parts / 2)>(a));
  }
}

// One table lookup sets each byte where it belongs; an index beyond the table gives the zeros above it.
template <class To, size_t K>
ZIVKS_INLINE Register<To> widen_part(U8 a) {
  if constexpr (sizeof(To) == 2) return Register<To>(widen_half<K>(a));
  if constexpr (sizeof(To) == 4) {
    constexpr uint8_t b = 4 * K, z = 255;
    constexpr uint8x16_t index = {b, z, z, z, b + 1, z, z, z, b + 2, z, z, z, b + 3, z, z, z};
    return Register<To>(vqtbl1q_u8(a, index));
  }
  if constexpr (sizeof(To) == 8) {
    constexpr uint8_t b = 2 * K, z = 255;
    constexpr uint8x16_t index = {b, z, z, z, z, z, z, z, b + 1, z, z, z, z, z, z, z};
    return Register<To>(vqtbl1q_u8(a, index));
  }
}

template <class To, size_t K>
ZIVKS_INLINE Register<To> convert_part(I64 a) {
  return F64(vcvtq_f64_s64(a));
}
template <class To, size_t K>
ZIVKS_INLINE Register<To> convert_part(I32 a) {
  if constexpr (sizeof(To) == 4) return F32(vcvtq_f32_s32(a));
  if constexpr (sizeof(To) == 8) return F64(vcvtq_f64_s64(widen_half<K>(a)));
}
template <class To, size_t K>
ZIVKS_INLINE Register<To> convert_part(F32 a) {
  if constexpr (K == 0) return F64(vcvt_f64_f32(vget_low_f32(a)));
  if constexpr (K == 1) return F64(vcvt_high_f64_f32(a));
}

ZIVKS_INLINE F32 narrow(F64 a, F64 b) { return F32(vcvt_high_f32_f64(vcvt_f32_f64(a), b)); }
ZIVKS_INLINE void store_narrowed(float* to, F64 a, F64 b) { store(to, narrow(a, b)); }

template <class To>
ZIVKS_INLINE Register<To> narrow_saturating(I16 a, I16 b) {
  if constexpr (std::is_signed_v<To>) return I8(vqmovn_high_s16(vqmovn_s16(a), b));
  if constexpr (!std::is_signed_v<To>) return U8(vqmovun_high_s16(vqmovun_s16(a), b));
}
template <class To>
ZIVKS_INLINE Register<To> narrow_saturating(I32 a, I32 b) {
  if constexpr (std::is_signed_v<To>) return I16(vqmovn_high_s32(vqmovn_s32(a), b));
  if constexpr (!std::is_signed_v<To>) return U16(vqmovun_high_s32(vqmovun_s32(a), b));
}
template <class To>
ZIVKS_INLINE Register<To> narrow_saturating(U16 a, U16 b) {
  if constexpr (!std::is_signed_v<To>) return U8(vqmovn_high_u16(vqmovn_u16(a), b));
  if constexpr (std::is_signed_v<To>) {
    const U16 limit = broadcast(uint16_t{INT8_MAX});
    return I8(vmovn_high_u16(vmovn_u16(vminq_u16(a, limit)), vminq_u16(b, limit)));
  }
}
template <class To>
ZIVKS_INLINE Register<To> narrow_saturating(U32 a, U32 b) {
  if constexpr (!std::is_signed_v<To>) return U16(vqmovn_high_u32(vqmovn_u32(a), b));
  if constexpr (std::is_signed_v<To>) {
    const U32 limit = broadcast(uint32_t{INT16_MAX});
    return I16(vmovn_high_u32(vmovn_u32(vminq_u32(a, limit)), vminq_u32(b, limit)));
  }
}

template <class To>
ZIVKS_INLINE Register<To> narrow_saturating(I32 a, I32 b, I32 c, I32 d) {
  return narrow_saturating<To>(narrow_saturating<int16_t>(a, b), narrow_saturating<int16_t>(c, d));
}

ZIVKS_INLINE F32 fused_multiply_add(F32 a, F32 b, F32 c) { return F32(vfmaq_f32(c, a, b)); }
ZIVKS_INLINE F64 fused_multiply_add(F64 a, F64 b, F64 c) { return F64(vfmaq_f64(c, a, b)); }

template <size_t K>
ZIVKS_INLINE F64 sum_part(I32 a, I32 b) {
  if constexpr (K == 0) return F64(vcvtq_f64_s64(vaddl_s32(vget_low_s32(a), vget_low_s32(b))));
  if constexpr (K == 1) return F64(vcvtq_f64_s64(vaddl_high_s32(a, b)));
}
template <size_t K>
ZIVKS_INLINE F64 sum_of_product_part(I32 a, I32 b, I32 c) {
  if constexpr (K == 0) {
    return F64(vcvtq_f64_s64(vaddw_s32(vmull_s32(vget_low_s32(a), vget_low_s32(b)), vget_low_s32(c))));
  } else {
    return F64(vcvtq_f64_s64(vaddw_high_s32(vmull_high_s32(a, b), c)));
  }
}

ZIVKS_INLINE F32 negate_even(F32 a) { return F32(U64(a) ^ broadcast(uint64_t{1} << 31)); }
ZIVKS_INLINE F64 negate_even(F64 a) { return F64(U64(a) ^ U64{uint64_t{1} << 63, 0}); }
template <class R>
ZIVKS_INLINE R fused_multiply_alternate(R a, R b, R c) {
  return fused_multiply_add(a, b, negate_even(c));
}

template <size_t K>
ZIVKS_INLINE I32 multiply_part(I16 a, I16 b) {
  if constexpr (K == 0) return I32(vmull_s16(vget_low_s16(a), vget_low_s16(b)));
  if constexpr (K == 1) return I32(vmull_high_s16(a, b));
}
ZIVKS_INLINE RegisterPair<I32> multiply_add_apart(I16 a, I16 b, I16 c) {
  return {I32(vaddw_s16(vmull_s16(vget_low_s16(a), vget_low_s16(b)), vget_low_s16(c))),
          I32(vaddw_high_s16(vmull_high_s16(a, b), c))};
}
ZIVKS_INLINE I16 join_saturating(RegisterPair<I32> a) {
  return I16(vqmovn_high_s32(vqmovn_s32(a.first), a.second));
}

// --- Rounding to integers --------------------------------------------------------------

ZIVKS_INLINE F32 round_to_half(F32 a) { return F32(vcvt_f32_f16(vcvt_f16_f32(a))); }

// Every mode has a conversion of its own, so that nothing is gained by asking.
ZIVKS_INLINE bool rounds_to_nearest() { return false; }

template <ZIVKRoundMode mode>
ZIVKS_INLINE I32 round_signed(F32 a) {
  if constexpr (mode == ZIVK_RND_ZERO) return I32(vcvtq_s32_f32(a));
  if constexpr (mode == ZIVK_RND_NEAR) return I32(vcvtnq_s32_f32(a));
  if constexpr (mode == ZIVK_RND_AWAY) return I32(vcvtaq_s32_f32(a));
}
template <ZIVKRoundMode mode>
ZIVKS_INLINE I64 round_signed(F64 a) {
  if constexpr (mode == ZIVK_RND_ZERO) return I64(vcvtq_s64_f64(a));
  if constexpr (mode == ZIVK_RND_NEAR) return I64(vcvtnq_s64_f64(a));
  if constexpr (mode == ZIVK_RND_AWAY) return I64(vcvtaq_s64_f64(a));
}
template <ZIVKRoundMode mode>
ZIVKS_INLINE U32 round_unsigned(F32 a) {
  if constexpr (mode == ZIVK_RND_ZERO) return U32(vcvtq_u32_f32(a));
  if constexpr (mode == ZIVK_RND_NEAR) return U32(vcvtnq_u32_f32(a));
  if constexpr (mode == ZIVK_RND_AWAY) return U32(vcvtaq_u32_f32(a));
}

template <class To, ZIVKRoundMode mode>
ZIVKS_INLINE Register<To> round_clamped_above(F32 a, float limit) {
  const auto most = broadcast(static_cast<To>(limit));
  if constexpr (std::is_signed_v<To>) return minimum(round_signed<mode>(a), most);
  if constexpr (!std::is_signed_v<To>) return minimum(round_unsigned<mode>(a), most);
}

template <class To, ZIVKRoundMode mode>
ZIVKS_INLINE Register<To> round_to_triples(F32 a) {
  const auto rounded = round_clamped_above<To, mode>(a, kMostTriple<To>);
  if constexpr (std::is_signed_v<To>) return maximum(rounded, broadcast(kLeastTriple<To>));
  if constexpr (!std::is_signed_v<To>) return rounded;
}

template <ZIVKRoundMode mode>
ZIVKS_INLINE I32 round_unclamped(F32 a) {
  return round_signed<mode>(a);
}
template <ZIVKRoundMode mode>
ZIVKS_INLINE I32 round_unclamped(F64 a, F64 b) {
  return I32(vuzp1q_s32(I32(round_signed<mode>(a)), I32(round_signed<mode>(b))));
}
template <class To, ZIVKRoundMode mode>
ZIVKS_INLINE I32 round_clamped_for(F32 a) {
  return round_signed<mode>(a);
}
template <class To, ZIVKRoundMode mode>
ZIVKS_INLINE I32 round_clamped_for(F64 a, F64 b) {
  if constexpr (std::is_same_v<To, uint32_t>)
    return I32(vqmovun_high_s64(vqmovun_s64(round_signed<mode>(a)), round_signed<mode>(b)));
  return I32(vqmovn_high_s64(vqmovn_s64(round_signed<mode>(a)), round_signed<mode>(b)));
}
template <class To, ZIVKRoundMode mode>
ZIVKS_INLINE I64 round_clamped_for(F64 a) {
  return round_signed<mode>(a);
}

// --- Order of elements -----------------------------------------------------------------

// These work on bits, so one set of unsigned operations serves all types of a width.
ZIVKS_INLINE RegisterPair<U8> interleave(U8 even, U8 odd) {
  return {U8(vzip1q_u8(even, odd)), U8(vzip2q_u8(even, odd))};
}
ZIVKS_INLINE RegisterPair<U16> interleave(U16 even, U16 odd) {
  return {U16(vzip1q_u16(even, odd)), U16(vzip2q_u16(even, odd))};
}
ZIVKS_INLINE RegisterPair<U32> interleave(U32 even, U32 odd) {
  return {U32(vzip1q_u32(even, odd)), U32(vzip2q_u32(even, odd))};
}
ZIVKS_INLINE RegisterPair<U64> interleave(U64 even, U64 odd) {
  return {U64(vzip1q_u64(even, odd)), U64(vzip2q_u64(even, odd))};
}
ZIVKS_INLINE RegisterPair<U8> deinterleave(U8 low, U8 high) {
  return {U8(vuzp1q_u8(low, high)), U8(vuzp2q_u8(low, high))};
}
ZIVKS_INLINE RegisterPair<U16> deinterleave(U16 low, U16 high) {
  return {U16(vuzp1q_u16(low, high)), U16(vuzp2q_u16(low, high))};
}
ZIVKS_INLINE RegisterPair<U32> deinterleave(U32 low, U32 high) {
  return {U32(vuzp1q_u32(low, high)), U32(vuzp2q_u32(low, high))};
}
ZIVKS_INLINE RegisterPair<U64> deinterleave(U64 low, U64 high) {
  return {U64(vuzp1q_u64(low, high)), U64(vuzp2q_u64(low, high))};
}

template <class R>
ZIVKS_INLINE RegisterPair<R> interleave(R even, R odd) {
  using Bits = Register<UnsignedOf<sizeof(ElementOf<R>)>>;
  const auto [low, high] = interleave(Bits(even), Bits(odd));
  return {R(low), R(high)};
}
template <class R>
ZIVKS_INLINE RegisterPair<R> deinterleave(R low, R high) {
  using Bits = Register<UnsignedOf<sizeof(ElementOf<R>)>>;
  const auto [even, odd] = deinterleave(Bits(low), Bits(high));
  return {R(even), R(odd)};
}

ZIVKS_INLINE F32 duplicate_even(F32 a) { return F32(vtrn1q_f32(a, a)); }
// As operands of a multiplication these two cost nothing.
ZIVKS_INLINE F64 duplicate_even(F64 a) { return F64(vdupq_laneq_f64(a, 0)); }
ZIVKS_INLINE F32 duplicate_odd(F32 a) { return F32(vtrn2q_f32(a, a)); }
ZIVKS_INLINE F64 duplicate_odd(F64 a) { return F64(vdupq_laneq_f64(a, 1)); }
ZIVKS_INLINE F32 swap_pairs(F32 a) { return F32(vrev64q_f32(a)); }
ZIVKS_INLINE F64 swap_pairs(F64 a) { return F64(vextq_f64(a, a, 1)); }

template <class T>
ZIVKS_INLINE RegisterPair<Register<T>> load_deinterleaved(const T* from) {
  using R = Register<T>;
  const void* bytes = from;
  if constexpr (sizeof(T) == 1) {
    const uint8x16x2_t both = vld2q_u8(static_cast<const uint8_t*>(bytes));
    return {R(both.val[0]), R(both.val[1])};
  } else if constexpr (sizeof(T) == 2) {
    const uint16x8x2_t both = vld2q_u16(static_cast<const uint16_t*>(bytes));
    return {R(both.val[0]), R(both.val[1])};
  } else if constexpr (sizeof(T) == 4) {
    const uint32x4x2_t both = vld2q_u32(static_cast<const uint32_t*>(bytes));
    return {R(both.val[0]), R(both.val[1])};
  } else {
    // A pair of loads and two permutations are no more work than the structured load.
    return deinterleave(load(from), load(from + kRegisterElements<T>));
  }
}
template <class T>
ZIVKS_INLINE void store_interleaved(T* to, Register<T> even, Register<T> odd) {
  void* const bytes = to;
  if constexpr (sizeof(T) == 1) {
    const uint8x16x2_t both = {{U8(even), U8(odd)}};
    vst2q_u8(static_cast<uint8_t*>(bytes), both);
  } else if constexpr (sizeof(T) == 2) {
    const uint16x8x2_t both = {{U16(even), U16(odd)}};
    vst2q_u16(static_cast<uint16_t*>(bytes), both);
  } else if constexpr (sizeof(T) == 4) {
    const uint32x4x2_t both = {{U32(even), U32(odd)}};
    vst2q_u32(static_cast<uint32_t*>(bytes), both);
  } else {
    const auto [low, high] = interleave(even, odd);
    store(to, low);
    store(to + kRegisterElements<T>, high);
  }
}

// These accesses take no offset, but advance their address at no cost. The compiler would compute the
// addresses of an unrolled loop one by one.
template <class Pointer>
ZIVKS_INLINE void advance(Pointer& pointer, size_t elements) {
  pointer += elements;
  asm("" : "+r"(pointer));
}
template <class T>
ZIVKS_INLINE RegisterPair<Register<T>> load_next_deinterleaved(const T*& from) {
  const auto loaded = load_deinterleaved(from);
  advance(from, 2 * kRegisterElements<T>);
  return loaded;
}
template <class T>
ZIVKS_INLINE void store_next_interleaved(T*& to, Register<T> even, Register<T> odd) {
  store_interleaved(to, even, odd);
  advance(to, 2 * kRegisterElements<T>);
}

// Two loads and a permutation are less work than the structured load of twos, and three permutations less
// than that of fours.
template <size_t n, class T>
ZIVKS_INLINE Register<T> load_every(const T* from) {
  static_assert(n >= 2 && n <= 4 && sizeof(T) >= 2);
  constexpr size_t kElements = kRegisterElements<T>;
  const void* const memory = from;
  if constexpr (sizeof(T) == 8) {
    return interleave(load(from), load(from + n)).first;
  } else if constexpr (n == 2) {
    return deinterleave(load(from), load(from + kElements)).first;
  } else if constexpr (n == 4) {
    return deinterleave(load_every<2>(from), load_every<2>(from + 2 * kElements)).first;
  } else if constexpr (sizeof(T) == 4) {
    return Register<T>(vld3q_u32(static_cast<const uint32_t*>(memory)).val[0]);
  } else {
    return Register<T>(vld3q_u16(static_cast<const uint16_t*>(memory)).val[0]);
  }
}

ZIVKS_INLINE U8 shuffle_bytes(U8 bytes, U8 index) { return U8(vqtbl1q_u8(bytes, index)); }

template <class R>
ZIVKS_INLINE R reverse(R a) {
  constexpr size_t bytes = sizeof(ElementOf<R>);
  // Within each half, then the halves.
  U64 halves = U64(a);
  if constexpr (bytes == 4) halves = U64(vrev64q_u32(U32(a)));
  if constexpr (bytes == 2) halves = U64(vrev64q_u16(U16(a)));
  if constexpr (bytes == 1) halves = U64(vrev64q_u8(U8(a)));
  return R(vextq_u64(halves, halves, 1));
}
ZIVKS_INLINE U64 reverse_pairs(U64 a) { return a; }

ZIVKS_INLINE U16 swap_bytes(U16 a) { return U16(vrev16q_u8(U8(a))); }
ZIVKS_INLINE U32 swap_bytes(U32 a) { return U32(vrev32q_u8(U8(a))); }
ZIVKS_INLINE U64 swap_bytes(U64 a) { return U64(vrev64q_u8(U8(a))); }

// First, second and third bytes stand in registers of their own.
ZIVKS_INLINE RegisterTriple<U8> load_triples_reversed(const uint8_t* from) {
  const uint8x16x3_t bytes = vld3q_u8(from);
  return {U8(bytes.val[2]), U8(bytes.val[1]), U8(bytes.val[0])};
}
ZIVKS_INLINE void store_triples(uint8_t* to, RegisterTriple<U8> triples) {
  // A name of its own: where the intrinsic is a macro, the commas of an initialiser would part its arguments.
  const uint8x16x3_t bytes = {{triples.first, triples.second, triples.third}};
  vst3q_u8(to, bytes);
}

// Sixteen of them are three registers. Four elements, twelve bytes, come from one register or from two
// neighbours.
inline constexpr size_t kTriples = 16;

template <class To, size_t K, size_t... B>
ZIVKS_INLINE Register<To> load_widened_triples(const uint8_t* from, std::index_sequence<B...>) {
  constexpr size_t kFirst = 3 * 4 * K / 16, kOffset = 3 * 4 * K % 16;
  constexpr bool kFromOne = kOffset + 3 * 4 <= 16;
  U8 bytes = load(from + 16 * kFirst);
  // The compiler copies the operands of a lookup in two registers.
  if constexpr (!kFromOne) bytes = U8(vextq_u8(bytes, load(from + 16 * (kFirst + 1)), kOffset));
  return extend_triples<To>(
      shuffle_bytes(bytes, U8{byte_of_triple<To>(B % 4, (kFromOne ? kOffset : 0) + 3 * (B / 4))...}));
}
template <class To, size_t K>
ZIVKS_INLINE Register<To> load_widened_triples(const uint8_t* from) {
  return load_widened_triples<To, K>(from, std::make_index_sequence<kRegisterBytes>());
}

template <class To, size_t... B>
ZIVKS_INLINE Register<To> widen_triple_words(U64 words, std::index_sequence<B...>) {
  return extend_triples<To>(shuffle_bytes(U8(words), U8{byte_of_triple<To>(B % 4, 3 * (B / 4))...}));
}
template <class To>
ZIVKS_INLINE Register<To> widen_triple_words(TripleWords words) {
  return widen_triple_words<To>(U64{words.first, words.second}, std::make_index_sequence<kRegisterBytes>());
}
ZIVKS_INLINE TripleWords narrow_triples_to_words(U32 elements) {
  constexpr uint8_t z = 255;
  const U64 words = U64(shuffle_bytes(U8(elements), U8{0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, z, z, z, z}));
  return {words[0], words[1], 0};
}

template <size_t K, size_t... B>
ZIVKS_INLINE U8 narrow_triples(const U32* elements, std::index_sequence<B...>) {
  const auto source = [](size_t byte) { return static_cast<uint8_t>(byte / 3 * 4 + byte % 3 - 16 * K); };
  return U8(vqtbl2q_u8({{U8(elements[K]), U8(elements[K + 1])}}, U8{source(16 * K + B)...}));
}
ZIVKS_INLINE void store_narrowed_triples(uint8_t* to, const U32* elements) {
  constexpr auto kBytes = std::make_index_sequence<kRegisterBytes>();
  const U8 first = narrow_triples<0>(elements, kBytes), second = narrow_triples<1>(elements, kBytes),
           third = narrow_triples<2>(elements, kBytes);
  store(to, first);
  store(to + 16, second);
  store(to + 32, third);
}

// --- Half a register in memory ---------------------------------------------------------

ZIVKS_INLINE U8 load_repeated(const void* from) { return load(static_cast<const uint8_t*>(from)); }

ZIVKS_INLINE U64 load_bottom_half(const void* from) { return U64{read<uint64_t>(from)}; }
ZIVKS_INLINE U64 load_halves(const void* low, const void* high) {
  return U64{read<uint64_t>(low), read<uint64_t>(high)};
}
ZIVKS_INLINE U64 repeat_bottom_half(U64 a) { return broadcast(uint64_t{a[0]}); }
ZIVKS_INLINE void store_bottom_half(void* to, U64 value) { write(to, value[0]); }
ZIVKS_INLINE void store_halves(void* low, void* high, U64 value) {
  write(low, value[0]);
  write(high, value[1]);
}

// --- Memory larger than the caches ---------------------------------------------------------

// Not measured here: plain stores.
template <class T>
ZIVKS_INLINE void stream(T* to, Register<T> value) {
  store(to, value);
}
ZIVKS_INLINE void order_streams() {}
inline bool streams(size_t) { return false; }
inline bool fill_past_caches(void*, size_t, U64, size_t) { return false; }

}  // namespace zivks

#endif
