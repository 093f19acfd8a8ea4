// Floating point to integers: scaled, rounded in the mode that the caller selects, and clamped at the
// bounds of the destination's type.
#include <zivks/convert.h>

#include "convert/rounding.h"
#include "core/checks.h"
#include "core/scale.h"

using namespace zivks;

namespace {

// Whether a multiplier of 1 has loops of its own, without the multiplication.
enum class AtOne { kMultiplies, kOnlyRounds };

template <size_t B, AtOne at_one, class F, class T>
ZIVKStatus convert_rounded(const F* src, T* dst, int32_t len, ZIVKRoundMode rndMode, double scale) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (static_cast<uint32_t>(rndMode) > ZIVK_RND_AWAY) {
    return std::is_signed_v<T> ? ZIVK_STS_ROUND_MODE_ERR : ZIVK_STS_ROUND_RANGE_ERR;
  }
  const double multiplier = scale_multiplier(scale);
  if (multiplier != multiplier) return ZIVK_STS_SCALE_ERR;

  const auto count = static_cast<size_t>(len);
  with_rounding_mode_of_floats(rndMode, [&](auto mode) {
    if constexpr (at_one == AtOne::kOnlyRounds) {
      if (multiplier == 1) return map_rounded<mode, B>(dst, count, unchanged, src);
    }
    const auto multiply = [m = multiplier_in<F>(multiplier)](auto a) { return times(a, m); };
    map_rounded<mode, B>(dst, count, multiply, src);
  });
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Convert_32f8u_S(const float* src, uint8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                 double scale) {
  return convert_rounded<8, AtOne::kOnlyRounds>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_32f16u_S(const float* src, uint16_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  return convert_rounded<8, AtOne::kOnlyRounds>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_64f8u_S(const double* src, uint8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                 double scale) {
  return convert_rounded<8, AtOne::kOnlyRounds>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_64f16u_S(const double* src, uint16_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  return convert_rounded<4, AtOne::kOnlyRounds>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_32f8s_S(const float* src, int8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                 double scale) {
  return convert_rounded<8, AtOne::kOnlyRounds>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_32f16s_S(const float* src, int16_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  return convert_rounded<4, AtOne::kMultiplies>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_32f32s_S(const float* src, int32_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  return convert_rounded<4, AtOne::kMultiplies>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_64f8s_S(const double* src, int8_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                 double scale) {
  return convert_rounded<8, AtOne::kMultiplies>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_64f16s_S(const double* src, int16_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  return convert_rounded<4, AtOne::kMultiplies>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_64f32s_S(const double* src, int32_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  return convert_rounded<4, AtOne::kMultiplies>(src, dst, len, rndMode, scale);
}
ZIVKStatus ZIVKS_Convert_64f64s_S(const double* src, int64_t* dst, int32_t len, ZIVKRoundMode rndMode,
                                  double scale) {
  return convert_rounded<4, AtOne::kMultiplies>(src, dst, len, rndMode, scale);
}
