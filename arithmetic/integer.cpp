// Integer addition and subtraction without a scale, and absolute values.
#include <zivks/arithmetic.h>

#include "core/checks.h"

using namespace zivks;

namespace {

constexpr auto add_clamped = [](auto a, auto b) { return add_saturating(a, b); };
constexpr auto absolute_clamped = [](auto a) { return absolute_saturating(a); };
constexpr auto clear_sign = [](auto a) { return absolute(a); };

}  // namespace

// --- Absolute value --------------------------------------------------------------------

ZIVKStatus ZIVKS_Abs_16s(const int16_t* src, int16_t* dst, int32_t len) {
  return map_arrays(dst, len, absolute_clamped, src);
}
ZIVKStatus ZIVKS_Abs_32s(const int32_t* src, int32_t* dst, int32_t len) {
  return map_arrays(dst, len, absolute_clamped, src);
}
ZIVKStatus ZIVKS_Abs_32f(const float* src, float* dst, int32_t len) {
  return map_arrays(dst, len, clear_sign, src);
}
ZIVKStatus ZIVKS_Abs_64f(const double* src, double* dst, int32_t len) {
  return map_arrays(dst, len, clear_sign, src);
}

ZIVKStatus ZIVKS_Abs_16s_I(int16_t* srcDst, int32_t len) { return ZIVKS_Abs_16s(srcDst, srcDst, len); }
ZIVKStatus ZIVKS_Abs_32s_I(int32_t* srcDst, int32_t len) { return ZIVKS_Abs_32s(srcDst, srcDst, len); }
ZIVKStatus ZIVKS_Abs_32f_I(float* srcDst, int32_t len) { return ZIVKS_Abs_32f(srcDst, srcDst, len); }
ZIVKStatus ZIVKS_Abs_64f_I(double* srcDst, int32_t len) { return ZIVKS_Abs_64f(srcDst, srcDst, len); }

// --- Saturating addition and subtraction -----------------------------------------------

ZIVKStatus ZIVKS_Add_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len) {
  return map_arrays(dst, len, add_clamped, prefetched<1024>(src1), prefetched<1024>(src2));
}
ZIVKStatus ZIVKS_Add_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len) {
  return map_arrays(dst, len, add_clamped, prefetched<1024>(src1), prefetched<1024>(src2));
}
ZIVKStatus ZIVKS_Add_16s(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len) {
  return map_arrays(dst, len, add_clamped, src1, src2);
}
ZIVKStatus ZIVKS_Sub_16s(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a, auto b) { return subtract_saturating(b, a); }, src1, src2);
}

ZIVKStatus ZIVKS_Add_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len) {
  return ZIVKS_Add_32u(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Add_16s_I(const int16_t* src, int16_t* srcDst, int32_t len) {
  return ZIVKS_Add_16s(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Sub_16s_I(const int16_t* src, int16_t* srcDst, int32_t len) {
  return ZIVKS_Sub_16s(src, srcDst, srcDst, len);
}

ZIVKStatus ZIVKS_AddC_16s_I(int16_t val, int16_t* srcDst, int32_t len) {
  const I16 constant = broadcast(val);
  return map_arrays(
      srcDst, len, [=](auto a) { return add_saturating(a, constant); }, srcDst);
}
ZIVKStatus ZIVKS_SubC_16s_I(int16_t val, int16_t* srcDst, int32_t len) {
  const I16 constant = broadcast(val);
  return map_arrays(
      srcDst, len, [=](auto a) { return subtract_saturating(a, constant); }, srcDst);
}

// --- Sums in a wider type --------------------------------------------------------------

ZIVKStatus ZIVKS_Add_8u16u(const uint8_t* src1, const uint8_t* src2, uint16_t* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a, auto b) { return widen<uint16_t>(a) + widen<uint16_t>(b); }, prefetched<512>(src1),
      prefetched<512>(src2));
}
ZIVKStatus ZIVKS_Add_16s32f(const int16_t* src1, const int16_t* src2, float* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a, auto b) { return convert<float>(widen<int32_t>(a) + widen<int32_t>(b)); }, src1,
      src2);
}
ZIVKStatus ZIVKS_Sub_16s32f(const int16_t* src1, const int16_t* src2, float* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a, auto b) { return convert<float>(widen<int32_t>(b) - widen<int32_t>(a)); }, src1,
      src2);
}

// Unlike its 16-bit neighbours this one wraps: the sum is taken unsigned.
ZIVKStatus ZIVKS_Add_16s32s_I(const int16_t* src, int32_t* srcDst, int32_t len) {
  uint32_t* sums = reinterpret_cast<uint32_t*>(srcDst);
  return map_arrays(
      sums, len, [](auto a, auto b) { return widen<uint32_t>(a) + b; }, src, sums);
}
