// Type conversions, which round and saturate in exact arithmetic.
#include "reference/exact.h"
#include "reference/reference.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

template <class T, class S>
T exact(S value) {
  return static_cast<T>(value);
}

template <class F>
F nearest_float(int64_t value) {
  return static_cast<F>(rounded_to_digits(value, std::numeric_limits<F>::digits));
}
template <class F, class S>
F rounded(S value) {
  return nearest_float<F>(int64_t{value});
}

float narrowed(double value) {
  // Halfway from the largest float32 to the next power of two.
  return static_cast<float>(rounded_to_format(value, 24, -149, 0x1.ffffffp+127));
}

template <class F>
F product(F value, double scale) {
  const double multiplier = reference_scale_multiplier(scale);
  if constexpr (std::is_same_v<F, float>) return value * narrowed(multiplier);
  return value * static_cast<F>(multiplier);
}
template <class F, class S>
F scaled(S value, double scale) {
  return product(rounded<F>(value), scale);
}

// --- To integers -----------------------------------------------------------------------

Rounding rounding_of(int32_t mode) {
  if (mode == ZIVK_RND_ZERO) return Rounding::kToZero;
  return mode == ZIVK_RND_NEAR ? Rounding::kTiesToEven : Rounding::kTiesAway;
}

template <class T>
T float_to_integer(float value, int32_t mode, double scale) {
  return saturated<T>(rounded_to_integer(double{product(value, scale)}, rounding_of(mode)));
}
// The tail adds 1/2 in float64 and truncates. That addition rounds the number just below 1/2 up to 1, and odd
// numbers of 53 bits to an even neighbour away from zero.
template <class T>
T rounded_at(Place place, double value, int32_t mode) {
  const double magnitude = std::fabs(value);
  if (place == Place::kTail && mode == ZIVK_RND_NEAR) {
    if (magnitude == std::nextafter(0.5, 0.0)) return saturated<T>(value < 0 ? -1 : 1);
    if (magnitude >= 0x1p52 && magnitude < 0x1p53 && std::fmod(magnitude, 2) == 1) {
      value += value < 0 ? -1 : 1;
    }
  }
  return saturated<T>(rounded_to_integer(value, rounding_of(mode)));
}
template <class T>
T double_to_integer(Place place, double value, int32_t mode, double scale) {
  return rounded_at<T>(place, product(value, scale), mode);
}

template <class T, class S>
T clamped(S value) {
  return saturated<T>(value);
}
template <class T, class S>
T scaled_and_clamped(S value, int32_t mode, double scale) {
  return saturated<T>(scaled_by_power_of_two(value, reference_scale_exponent(scale), rounding_of(mode)));
}
template <class T, class S>
T scaled_to_nearest(S value, double scale) {
  return scaled_and_clamped<T>(value, ZIVK_RND_NEAR, scale);
}
int32_t by_way_of_double(Place place, int64_t value, int32_t mode, double scale) {
  return double_to_integer<int32_t>(place, nearest_float<double>(value), mode, scale);
}

// From a factor of 2^128 on, blocks shift by the lowest byte of the count only.
Exact grown(Place place, Exact value, int shift) {
  return place == Place::kBlock ? shifted_by_low_byte(value, shift, Rounding::kTiesUp)
                                : times_power_of_two(value, shift);
}
int8_t unsigned_to_signed(Place place, uint8_t value, int32_t mode, double scale) {
  const int exponent = reference_scale_exponent(scale);
  return exponent > 0 ? saturated<int8_t>(grown(place, value, exponent))
                      : scaled_and_clamped<int8_t>(value, mode, scale);
}

// --- Packed samples --------------------------------------------------------------------

template <class T>
T from_sample(PackedSample sample) {
  const int64_t value = sample.bytes[0] + 256 * sample.bytes[1] + 65536 * sample.bytes[2];
  return static_cast<T>(value);
}
template <class T>
T from_signed_sample(PackedSample sample) {
  const int64_t value = from_sample<int64_t>(sample);
  return static_cast<T>(value < 0x800000 ? value : value - 0x1000000);
}

template <bool is_signed>
PackedSample sample_of(Exact value) {
  constexpr Exact kLow = is_signed ? -0x800000 : 0, kHigh = is_signed ? 0x7FFFFF : 0xFFFFFF;
  const auto bits = static_cast<uint32_t>(std::clamp(value, kLow, kHigh));
  return {{static_cast<uint8_t>(bits % 256), static_cast<uint8_t>(bits / 256 % 256),
           static_cast<uint8_t>(bits / 65536 % 256)}};
}
template <class S>
PackedSample integer_to_sample(Place place, S value, double scale) {
  const int exponent = reference_scale_exponent(scale);
  const Exact whole = exponent > 0 ? grown(place, value, exponent)
                                   : scaled_by_power_of_two(value, exponent, Rounding::kTiesToEven);
  return sample_of<std::is_signed_v<S>>(whole);
}
template <bool is_signed>
PackedSample float_to_sample(float value, double scale) {
  return sample_of<is_signed>(rounded_to_integer(double{product(value, scale)}, Rounding::kTiesToEven));
}

}  // namespace

References conversion_references() {
  return {
      {"ZIVKS_Convert_8u32f", elementwise(exact<float, uint8_t>)},
      {"ZIVKS_Convert_8s16s", elementwise(exact<int16_t, int8_t>)},
      {"ZIVKS_Convert_8s32f", elementwise(exact<float, int8_t>)},
      {"ZIVKS_Convert_16u32f", elementwise(exact<float, uint16_t>)},
      {"ZIVKS_Convert_16s32s", elementwise(exact<int32_t, int16_t>)},
      {"ZIVKS_Convert_16s32f", elementwise(exact<float, int16_t>)},
      {"ZIVKS_Convert_32s32f", elementwise(rounded<float, int32_t>)},
      {"ZIVKS_Convert_32s64f", elementwise(exact<double, int32_t>)},
      {"ZIVKS_Convert_32f64f", elementwise(exact<double, float>)},
      {"ZIVKS_Convert_64s64f", elementwise(rounded<double, int64_t>)},
      {"ZIVKS_Convert_64f32f", elementwise(narrowed)},
      {"ZIVKS_Convert_16s32f_S", elementwise(scaled<float, int16_t>)},
      {"ZIVKS_Convert_16s64f_S", elementwise(scaled<double, int16_t>)},
      {"ZIVKS_Convert_32s32f_S", elementwise(scaled<float, int32_t>)},
      {"ZIVKS_Convert_32s64f_S", elementwise(scaled<double, int32_t>)},
      {"ZIVKS_Convert_8s8u", elementwise(clamped<uint8_t, int8_t>)},
      {"ZIVKS_Convert_32s16s", elementwise(clamped<int16_t, int32_t>)},
      {"ZIVKS_Convert_8u8s_S", elementwise(unsigned_to_signed)},
      {"ZIVKS_Convert_16s8s_S", elementwise(scaled_and_clamped<int8_t, int16_t>)},
      {"ZIVKS_Convert_32s16s_S", elementwise(scaled_to_nearest<int16_t, int32_t>)},
      {"ZIVKS_Convert_64s32s_S", elementwise(by_way_of_double)},
      {"ZIVKS_Convert_24u32u", elementwise(from_sample<uint32_t>)},
      {"ZIVKS_Convert_24u32f", elementwise(from_sample<float>)},
      {"ZIVKS_Convert_24s32s", elementwise(from_signed_sample<int32_t>)},
      {"ZIVKS_Convert_24s32f", elementwise(from_signed_sample<float>)},
      {"ZIVKS_Convert_32u24u_S", elementwise(integer_to_sample<uint32_t>)},
      {"ZIVKS_Convert_32s24s_S", elementwise(integer_to_sample<int32_t>)},
      {"ZIVKS_Convert_32f24u_S", elementwise(float_to_sample<false>)},
      {"ZIVKS_Convert_32f24s_S", elementwise(float_to_sample<true>)},
      {"ZIVKS_Convert_32f8u_S", elementwise(float_to_integer<uint8_t>)},
      {"ZIVKS_Convert_32f16u_S", elementwise(float_to_integer<uint16_t>)},
      {"ZIVKS_Convert_64f8u_S", elementwise(double_to_integer<uint8_t>)},
      {"ZIVKS_Convert_64f16u_S", elementwise(double_to_integer<uint16_t>)},
      {"ZIVKS_Convert_32f8s_S", elementwise(float_to_integer<int8_t>)},
      {"ZIVKS_Convert_32f16s_S", elementwise(float_to_integer<int16_t>)},
      {"ZIVKS_Convert_32f32s_S", elementwise(float_to_integer<int32_t>)},
      {"ZIVKS_Convert_64f8s_S", elementwise(double_to_integer<int8_t>)},
      {"ZIVKS_Convert_64f16s_S", elementwise(double_to_integer<int16_t>)},
      {"ZIVKS_Convert_64f32s_S", elementwise(double_to_integer<int32_t>)},
      {"ZIVKS_Convert_64f64s_S", elementwise(double_to_integer<int64_t>)},
  };
}

}  // namespace zivks_test
