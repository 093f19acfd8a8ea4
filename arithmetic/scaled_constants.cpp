// Scaled, saturating addition and subtraction of an array and a constant.
#include <zivks/arithmetic.h>
#include <zivks/movement.h>

#include "arithmetic/scaled.h"

using namespace zivks;

// From a scale of 512 on results are 0, although a sum above 256 would round to 1 at 512.
ZIVKStatus ZIVKS_AddC_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len, double scale) {
  constexpr int kLargestShift = 8;
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  if (is_valid_scale(scale) && scale_shift(scale) > kLargestShift) return ZIVKS_Zero_8u(dst, len);
  return combine_constant<Sum, BlocksWrap<32, Wrapped::kClampedDown>,
                          Hints<Divided<Reads<128>, Writes<256>>>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, BlocksWrap<32, Wrapped::kClampedDown>,
                          Hints<Divided<Reads<768>, Writes<1280>>>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return combine_constant<Sum, BlocksWrap<8, Wrapped::kClampedDown>,
                          Hints<Divided<Reads<512>>, Multiplied<Reads<1024>>>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_AddC_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_8u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_16u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_16s_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_32s_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubC_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, BlocksWrap<16, Wrapped::kClampedHalfUp>,
                          Hints<Always<Reads<512>>, Divided<Writes<512>>>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, BlocksWrap<32, Wrapped::kClampedHalfUp>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return combine_constant<Difference, Saturates>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubC_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_8u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_16u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_16s_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_32s_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_8u_S(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len, double scale) {
  return subtract_from_constant<BlocksWrap<16, Wrapped::kClampedHalfUp>,
                                Hints<Always<Reads<512>>, Divided<Writes<512>>>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16u_S(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len, double scale) {
  return subtract_from_constant<BlocksWrap<32, Wrapped::kClampedHalfUp>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16s_S(const int16_t* src, int16_t val, int16_t* dst, int32_t len, double scale) {
  return subtract_from_constant<Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32s_S(const int32_t* src, int32_t val, int32_t* dst, int32_t len, double scale) {
  return subtract_from_constant<Saturates>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_8u_IS(uint8_t val, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_8u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16u_IS(uint16_t val, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_16u_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_16s_IS(int16_t val, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_16s_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32s_IS(int32_t val, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_32s_S(srcDst, val, srcDst, len, scale);
}
