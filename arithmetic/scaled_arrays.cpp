// Scaled, saturating addition and subtraction of two arrays.
#include <zivks/arithmetic.h>

#include "arithmetic/scaled.h"

using namespace zivks;

ZIVKStatus ZIVKS_Add_8u_S(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len, double scale) {
  return combine_arrays<
      Sum, BlocksWrap<8, Wrapped::kExactHalfUp>,
      Hints<Unscaled<Reads<512>>, Divided<Reads<256>, Writes<256>>, Multiplied<Reads<256>>>>(src1, src2, dst,
                                                                                             len, scale);
}
ZIVKStatus ZIVKS_Add_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                           double scale) {
  if (is_valid_scale(scale) && scale_shift(scale) == 0) return ZIVKS_Add_16u(src1, src2, dst, len);
  return combine_arrays<Sum, BlocksWrap<4, Wrapped::kExactHalfUp>,
                        Hints<Divided<Reads<512>>, Multiplied<Reads<512>>>>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Sum, Saturates>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Sum, Saturates>(src1, src2, dst, len, scale);
}

ZIVKStatus ZIVKS_Add_8u_IS(const uint8_t* src, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_8u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_16u_IS(const uint16_t* src, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_16u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_16s_IS(const int16_t* src, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_16s_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_32s_IS(const int32_t* src, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_32s_S(src, srcDst, srcDst, len, scale);
}

ZIVKStatus ZIVKS_Sub_8u_S(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len, double scale) {
  return combine_arrays<Difference, BlocksNarrowInTwoSteps, Hints<Always<Reads<512>, Writes<512>>>>(
      src2, src1, dst, len, scale);
}
ZIVKStatus ZIVKS_Sub_16u_S(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, BlocksWrap<32, Wrapped::kClampedHalfUp>,
                        Hints<Always<Reads<1024>>, Divided<Writes<1024>>>>(src2, src1, dst, len, scale);
}
ZIVKStatus ZIVKS_Sub_16s_S(const int16_t* src1, const int16_t* src2, int16_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, Saturates>(src2, src1, dst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32s_S(const int32_t* src1, const int32_t* src2, int32_t* dst, int32_t len,
                           double scale) {
  return combine_arrays<Difference, Saturates>(src2, src1, dst, len, scale);
}

ZIVKStatus ZIVKS_Sub_8u_IS(const uint8_t* src, uint8_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_8u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_16u_IS(const uint16_t* src, uint16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_16u_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_16s_IS(const int16_t* src, int16_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_16s_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32s_IS(const int32_t* src, int32_t* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_32s_S(src, srcDst, srcDst, len, scale);
}
