#include "reference/reference.h"
#include "reference/scale.h"

namespace zivks_test {
namespace {

template <class T, class S>
T exact(S value) {
  return static_cast<T>(value);
}

// To the nearest float of type F, ties to even, in integers.
template <class F>
F nearest_float(int64_t value) {
  const bool negative = value < 0;
  uint64_t magnitude = negative ? ~static_cast<uint64_t>(value) + 1 : static_cast<uint64_t>(value);
  int excess = 0;  // bits more than F holds
  while ((magnitude >> excess) >> std::numeric_limits<F>::digits != 0) ++excess;
  if (excess > 0) {
    const uint64_t half = uint64_t{1} << (excess - 1), rest = magnitude & (2 * half - 1);
    magnitude >>= excess;
    if (rest > half || (rest == half && magnitude % 2 == 1)) ++magnitude;
  }
  const F result = std::ldexp(static_cast<F>(magnitude), excess);
  return negative ? -result : result;
}
template <class F, class S>
F rounded(S value) {
  return nearest_float<F>(int64_t{value});
}

// To the nearest float32, ties to even; every step but the choice between two neighbours is exact.
float narrowed(double value) {
  if (std::isnan(value)) return std::numeric_limits<float>::quiet_NaN();
  const double magnitude = std::fabs(value);
  float result = std::numeric_limits<float>::infinity();
  if (magnitude < 0x1.ffffffp+127) {  // halfway from the largest float32 to the next power of two
    int exponent;
    std::frexp(magnitude, &exponent);
    const double quantum = std::ldexp(1.0, exponent - 24 < -149 ? -149 : exponent - 24);
    double steps = std::floor(magnitude / quantum);
    const double rest = magnitude / quantum - steps;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(steps, 2) == 1)) ++steps;
    result = static_cast<float>(steps * quantum);
  }
  return std::signbit(value) ? -result : result;
}

template <class F, class S>
F scaled(S value, double scale) {
  const double multiplier = reference_scale_multiplier(scale);
  if constexpr (sizeof(F) == 4) return rounded<F>(value) * narrowed(multiplier);
  return rounded<F>(value) * static_cast<F>(multiplier);
}

// --- To integers -----------------------------------------------------------------------

using WideUnsigned = unsigned __int128;
using Wide = __int128;

// A number as (-1)^negative * mantissa * 2^exponent.
struct Number {
  bool negative;
  uint64_t mantissa;
  int exponent;
};

Number number_of(double value) {
  if (std::isnan(value)) return {false, 0, 0};  // NaN counts as nothing
  if (std::isinf(value)) return {value < 0, 1, 1000};
  int exponent;
  const double fraction = std::frexp(std::fabs(value), &exponent);
  return {value < 0, static_cast<uint64_t>(std::ldexp(fraction, 53)), exponent - 53};
}
Number product_of(int64_t value, int exponent) {
  const auto bits = static_cast<uint64_t>(value);
  return {value < 0, value < 0 ? ~bits + 1 : bits, exponent};
}

// Rounded in the mode, then clamped; exact throughout.
int64_t rounded_and_clamped(Number number, int32_t mode, int64_t low, int64_t high) {
  WideUnsigned whole = number.mantissa;
  if (number.exponent >= 0) {
    if (whole != 0) whole <<= number.exponent < 63 ? number.exponent : 63;
  } else {
    const int shift = number.exponent > -100 ? -number.exponent : 100;
    const WideUnsigned half = WideUnsigned{1} << (shift - 1), rest = whole & (2 * half - 1);
    whole >>= shift;
    const bool up_at_tie = mode == ZIVK_RND_AWAY || whole % 2 == 1;
    if (mode != ZIVK_RND_ZERO && (rest > half || (rest == half && up_at_tie))) ++whole;
  }
  const WideUnsigned limit =
      number.negative ? static_cast<WideUnsigned>(-Wide{low}) : static_cast<WideUnsigned>(high);
  if (whole >= limit) return number.negative ? low : high;
  return number.negative ? -static_cast<int64_t>(whole) : static_cast<int64_t>(whole);
}
template <class T>
T rounded_and_clamped(Number number, int32_t mode) {
  return static_cast<T>(rounded_and_clamped(number, mode, int64_t{std::numeric_limits<T>::min()},
                                            int64_t{std::numeric_limits<T>::max()}));
}

template <class F>
F product(F value, double scale) {
  const double multiplier = reference_scale_multiplier(scale);
  if constexpr (sizeof(F) == sizeof(float)) return value * narrowed(multiplier);
  return value * static_cast<F>(multiplier);
}

template <class T>
T float_to_integer(float value, int32_t mode, double scale) {
  return rounded_and_clamped<T>(number_of(double{product(value, scale)}), mode);
}
// The tail takes the number just below one half for one half and more, and odd numbers of 53 bits for
// their even neighbours.
template <class T>
T rounded_at(Place place, double value, int32_t mode) {
  const double magnitude = std::fabs(value);
  if (place == Place::kTail && mode == ZIVK_RND_NEAR) {
    if (magnitude == std::nextafter(0.5, 0.0))
      return rounded_and_clamped<T>(product_of(value < 0 ? -1 : 1, 0), mode);
    if (magnitude >= 0x1p52 && magnitude < 0x1p53 && std::fmod(magnitude, 2) == 1) {
      return rounded_and_clamped<T>(number_of(value < 0 ? value - 1 : value + 1), mode);
    }
  }
  return rounded_and_clamped<T>(number_of(value), mode);
}
template <class T>
T double_to_integer(Place place, double value, int32_t mode, double scale) {
  return rounded_at<T>(place, product(value, scale), mode);
}

template <class T, class S>
T clamped(S value) {
  return rounded_and_clamped<T>(product_of(value, 0), ZIVK_RND_ZERO);
}
template <class T, class S>
T scaled_and_clamped(S value, int32_t mode, double scale) {
  return rounded_and_clamped<T>(product_of(value, reference_scale_exponent(scale)), mode);
}
template <class T, class S>
T scaled_to_nearest(S value, double scale) {
  return scaled_and_clamped<T>(value, ZIVK_RND_NEAR, scale);
}
int32_t by_way_of_double(Place place, int64_t value, int32_t mode, double scale) {
  return double_to_integer<int32_t>(place, nearest_float<double>(value), mode, scale);
}

// Blocks that grow by 2^128 or more read the lowest byte of the shift, in two's complement.
Number grown_in_block(int64_t value, int shift) {
  const int byte = shift % 256;
  if (byte < 128) return product_of(value, byte);
  const int right = 256 - byte;
  if (right > 40) return product_of(0, 0);
  return product_of((value + (int64_t{1} << (right - 1))) >> right, 0);
}
Number grown(Place place, int64_t value, int shift) {
  return place == Place::kBlock ? grown_in_block(value, shift) : product_of(value, shift);
}
int8_t unsigned_to_signed(Place place, uint8_t value, int32_t mode, double scale) {
  const int exponent = reference_scale_exponent(scale);
  if (exponent > 0) return rounded_and_clamped<int8_t>(grown(place, value, exponent), ZIVK_RND_ZERO);
  const bool known = mode == ZIVK_RND_ZERO || mode == ZIVK_RND_NEAR;
  return scaled_and_clamped<int8_t>(value, known ? mode : ZIVK_RND_AWAY, scale);
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

PackedSample sample_of(Number number, bool is_signed) {
  const int64_t value =
      rounded_and_clamped(number, ZIVK_RND_NEAR, is_signed ? -0x800000 : 0, is_signed ? 0x7FFFFF : 0xFFFFFF);
  const int64_t bits = value < 0 ? value + 0x1000000 : value;
  return {{static_cast<uint8_t>(bits % 256), static_cast<uint8_t>(bits / 256 % 256),
           static_cast<uint8_t>(bits / 65536)}};
}
template <class S>
PackedSample integer_to_sample(Place place, S value, double scale) {
  const int exponent = reference_scale_exponent(scale);
  return sample_of(exponent > 0 ? grown(place, value, exponent) : product_of(value, exponent),
                   std::is_signed_v<S>);
}
template <bool is_signed>
PackedSample float_to_sample(float value, double scale) {
  return sample_of(number_of(double{product(value, scale)}), is_signed);
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
