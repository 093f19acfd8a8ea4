// Conversions without saturation: to a wider integer, to floating point, and between the floating-point
// widths.
#include <zivks/convert.h>

#include "core/checks.h"
#include "core/scale.h"

using namespace zivks;

namespace {

constexpr auto to_float = [](auto a) { return convert<float>(a); };
constexpr auto to_double = [](auto a) { return convert<double>(a); };

// Integers of 8 and 16 bits reach a float by way of 32 bits.
constexpr auto narrow_to_float = [](auto a) { return convert<float>(widen<int32_t>(a)); };

// `kernel` followed by the multiplication that `scale` selects, in the precision of the destination. It is
// made for a multiplier of 1 as well.
template <class S, class T, class Kernel>
ZIVKStatus map_scaled(const S* src, T* dst, int32_t len, double scale, Kernel kernel) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  const double factor = scale_multiplier(scale);
  if (factor != factor) return ZIVK_STS_SCALE_ERR;
  const auto multiplier = broadcast(multiplier_in<T>(factor));
  return map(
      dst, static_cast<size_t>(len), [=](auto a) { return kernel(a) * multiplier; }, src);
}

}  // namespace

ZIVKStatus ZIVKS_Convert_8s16s(const int8_t* src, int16_t* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a) { return widen<int16_t>(a); }, src);
}
ZIVKStatus ZIVKS_Convert_16s32s(const int16_t* src, int32_t* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a) { return widen<int32_t>(a); }, src);
}

ZIVKStatus ZIVKS_Convert_8u32f(const uint8_t* src, float* dst, int32_t len) {
  return map_arrays(dst, len, narrow_to_float, src);
}
ZIVKStatus ZIVKS_Convert_8s32f(const int8_t* src, float* dst, int32_t len) {
  return map_arrays(dst, len, narrow_to_float, src);
}
ZIVKStatus ZIVKS_Convert_16u32f(const uint16_t* src, float* dst, int32_t len) {
  return map_arrays(dst, len, narrow_to_float, src);
}
ZIVKStatus ZIVKS_Convert_16s32f(const int16_t* src, float* dst, int32_t len) {
  return map_arrays(dst, len, narrow_to_float, src);
}
ZIVKStatus ZIVKS_Convert_32s32f(const int32_t* src, float* dst, int32_t len) {
  return map_arrays(dst, len, to_float, src);
}

ZIVKStatus ZIVKS_Convert_32s64f(const int32_t* src, double* dst, int32_t len) {
  return map_arrays(dst, len, to_double, src);
}
ZIVKStatus ZIVKS_Convert_64s64f(const int64_t* src, double* dst, int32_t len) {
  return map_arrays(dst, len, to_double, src);
}
ZIVKStatus ZIVKS_Convert_32f64f(const float* src, double* dst, int32_t len) {
  return map_arrays(dst, len, to_double, src);
}
ZIVKStatus ZIVKS_Convert_64f32f(const double* src, float* dst, int32_t len) {
  return map_arrays(NarrowedArray{{dst}}, len, unchanged, src);
}

ZIVKStatus ZIVKS_Convert_16s32f_S(const int16_t* src, float* dst, int32_t len, double scale) {
  return map_scaled(src, dst, len, scale, narrow_to_float);
}
ZIVKStatus ZIVKS_Convert_32s32f_S(const int32_t* src, float* dst, int32_t len, double scale) {
  return map_scaled(src, dst, len, scale, to_float);
}
ZIVKStatus ZIVKS_Convert_16s64f_S(const int16_t* src, double* dst, int32_t len, double scale) {
  return map_scaled(src, dst, len, scale, [](auto a) { return convert<double>(widen<int32_t>(a)); });
}
ZIVKStatus ZIVKS_Convert_32s64f_S(const int32_t* src, double* dst, int32_t len, double scale) {
  return map_scaled(src, dst, len, scale, to_double);
}
