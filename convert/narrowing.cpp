// Integers into a type that does not hold all of their values, with a scale or without.
#include <zivks/convert.h>

#include <algorithm>
#include <limits>

#include "convert/rounding.h"
#include "core/checks.h"
#include "core/scale.h"
#include "core/scaled_integer.h"

using namespace zivks;

namespace {

constexpr uint8_t kLargest = INT8_MAX;

// Applies `kernel` to each register and clamps the results to int8.
template <class Kernel>
void map_8u(const uint8_t* src, int8_t* dst, size_t len, Kernel kernel) {
  map_registers<int8_t>(
      dst, len, [kernel](U8 x) { return I8(minimum(kernel(x), broadcast(kLargest))); }, src);
}

// Multiplies by 2^exponent, rounds and clamps.
template <ZIVKRoundMode mode, class S, class T>
void narrow_scaled(const S* src, T* dst, size_t len, int exponent) {
  with_scaling<S, mode, std::numeric_limits<T>::digits>(exponent, [=](auto scale) {
    map(
        dst, len, [scale](auto a) { return narrow_saturating<T>(lift<S>(scale, a)); }, src);
  });
}

template <ZIVKRoundMode mode>
void shrink_8u(const uint8_t* src, int8_t* dst, size_t len, int shift) {
  if (shift < kElementBits<U8>) {
    map_8u(src, dst, len, [=](U8 x) { return shift_right_rounded<mode>(x, shift); });
  } else {
    map_8u(src, dst, len, [=](U8 x) { return shift_out_rounded<mode>(x, shift); });
  }
}

// Blocks shift by the lowest byte of the count; in the tail everything but 0 saturates.
[[gnu::cold, gnu::noinline]] void grow_8u_wrapping(const uint8_t* src, int8_t* dst, size_t len, int shift) {
  constexpr size_t kBlock = 16;
  const size_t blocks = len & ~(kBlock - 1);
  for (size_t i = 0; i < blocks; ++i) {
    dst[i] = static_cast<int8_t>(std::min(shift_left_wrapping(src[i], shift), int64_t{kLargest}));
  }
  for (size_t i = blocks; i < len; ++i) dst[i] = src[i] == 0 ? 0 : kLargest;
}

ZIVKStatus check_scale_and_mode(ZIVKRoundMode rndMode, double scale) {
  if (static_cast<uint32_t>(rndMode) > ZIVK_RND_AWAY) return ZIVK_STS_ROUND_MODE_ERR;
  return is_valid_scale(scale) ? ZIVK_STS_NO_ERR : ZIVK_STS_SCALE_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Convert_8s8u(const int8_t* src, uint8_t* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return map_registers<uint8_t>(
      dst, static_cast<size_t>(len), [](I8 x) { return U8(maximum(x, I8{})); }, src);
}
ZIVKStatus ZIVKS_Convert_32s16s(const int32_t* src, int16_t* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a) { return narrow_saturating<int16_t>(a); }, src);
}

// The only one that takes every rounding mode: each but the first two is the third. It matters only where
// values shrink.
ZIVKStatus ZIVKS_Convert_8u8s_S(const uint8_t* src, int8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const size_t count = static_cast<size_t>(len);
  const int exponent = scale_exponent(scale);
  if (exponent == 0) {
    map_8u(src, dst, count, unchanged);
  } else if (exponent < 0) {
    with_rounding_mode(rndMode, [=](auto mode) { shrink_8u<mode>(src, dst, count, -exponent); });
  } else if (exponent < kLeastWrappingShift) {
    map_8u(src, dst, count, [=](U8 x) { return shift_left_bounded<7>(x, exponent); });
  } else {
    grow_8u_wrapping(src, dst, count, exponent);
  }
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_Convert_16s8s_S(const int16_t* src, int8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                 double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (ZIVKStatus status = check_scale_and_mode(rndMode, scale)) return status;
  with_rounding_mode(rndMode, [=](auto mode) {
    narrow_scaled<mode>(src, dst, static_cast<size_t>(len), scale_exponent(scale));
  });
  return ZIVK_STS_NO_ERR;
}

// No rounding mode: always to nearest.
ZIVKStatus ZIVKS_Convert_32s16s_S(const int32_t* src, int16_t* dst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (!is_valid_scale(scale)) return ZIVK_STS_SCALE_ERR;
  const int exponent = scale_exponent(scale);
  narrow_scaled<ZIVK_RND_NEAR>(src, dst, static_cast<size_t>(len), exponent);
  return ZIVK_STS_NO_ERR;
}

// By way of float64: elements of more than 53 significant bits are rounded before they are scaled.
ZIVKStatus ZIVKS_Convert_64s32s_S(const int64_t* src, int32_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (ZIVKStatus status = check_scale_and_mode(rndMode, scale)) return status;
  with_rounding_mode_of_floats(rndMode, [=, multiplier = scale_multiplier(scale)](auto mode) {
    const auto multiply = [=](auto a) {
      if constexpr (std::is_same_v<decltype(a), int64_t>) {
        return times(static_cast<double>(a), multiplier);
      } else {
        return times(convert<double>(a), multiplier);
      }
    };
    map_rounded<mode, 2>(dst, static_cast<size_t>(len), multiply, src);
  });
  return ZIVK_STS_NO_ERR;
}
