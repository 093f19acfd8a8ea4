// Scaled, saturating addition and subtraction of complex numbers, part by part.
#include <zivks/arithmetic.h>

#include "arithmetic/scaled.h"

using namespace zivks;

ZIVKStatus ZIVKS_Add_16sc_S(const ZIVK16sc* src1, const ZIVK16sc* src2, ZIVK16sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Sum, BlocksWrap<8, Wrapped::kExactHalfUp>>(src1, src2, dst, len, scale);
}
ZIVKStatus ZIVKS_Add_32sc_S(const ZIVK32sc* src1, const ZIVK32sc* src2, ZIVK32sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Sum, BlocksWrap<2, Wrapped::kExactHalfUp>>(src1, src2, dst, len, scale);
}

ZIVKStatus ZIVKS_Add_16sc_IS(const ZIVK16sc* src, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_16sc_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Add_32sc_IS(const ZIVK32sc* src, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Add_32sc_S(src, srcDst, srcDst, len, scale);
}

ZIVKStatus ZIVKS_Sub_16sc_S(const ZIVK16sc* src1, const ZIVK16sc* src2, ZIVK16sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Difference, Saturates, Hints<Always<Reads<1024>, Writes<1024>>>>(src2, src1, dst, len,
                                                                                         scale);
}
ZIVKStatus ZIVKS_Sub_32sc_S(const ZIVK32sc* src1, const ZIVK32sc* src2, ZIVK32sc* dst, int32_t len,
                            double scale) {
  return combine_arrays<Difference, Saturates, Hints<Always<Reads<2048>, Writes<2048>>>>(src2, src1, dst, len,
                                                                                         scale);
}

ZIVKStatus ZIVKS_Sub_16sc_IS(const ZIVK16sc* src, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_16sc_S(src, srcDst, srcDst, len, scale);
}
ZIVKStatus ZIVKS_Sub_32sc_IS(const ZIVK32sc* src, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_Sub_32sc_S(src, srcDst, srcDst, len, scale);
}

ZIVKStatus ZIVKS_AddC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return combine_constant<Sum, BlocksWrap<16, Wrapped::kClampedDown>>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len, double scale) {
  return combine_constant<Sum, BlocksWrap<8, Wrapped::kClampedDown>,
                          Hints<Divided<Reads<2048>, Writes<1024>>>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_AddC_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_16sc_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddC_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_AddC_32sc_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubC_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return combine_constant<Difference, Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len, double scale) {
  return combine_constant<Difference, BlocksWrap<1, Wrapped::kClampedHalfUp>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubC_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_16sc_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubC_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubC_32sc_S(srcDst, val, srcDst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_16sc_S(const ZIVK16sc* src, ZIVK16sc val, ZIVK16sc* dst, int32_t len, double scale) {
  return subtract_from_constant<Saturates>(src, val, dst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32sc_S(const ZIVK32sc* src, ZIVK32sc val, ZIVK32sc* dst, int32_t len, double scale) {
  return subtract_from_constant<BlocksWrap<1, Wrapped::kClampedHalfUp>>(src, val, dst, len, scale);
}

ZIVKStatus ZIVKS_SubCRev_16sc_IS(ZIVK16sc val, ZIVK16sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_16sc_S(srcDst, val, srcDst, len, scale);
}
ZIVKStatus ZIVKS_SubCRev_32sc_IS(ZIVK32sc val, ZIVK32sc* srcDst, int32_t len, double scale) {
  return ZIVKS_SubCRev_32sc_S(srcDst, val, srcDst, len, scale);
}
