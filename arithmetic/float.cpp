// Addition and subtraction of real and complex floating-point arrays, with an array or with a constant.
//
// A complex array is an array of twice as many parts, and a complex constant a pattern of its two parts, so
// that the complex types share the loops of the real ones.
#include <zivks/arithmetic.h>

#include "core/checks.h"
#include "core/complex.h"

using namespace zivks;

namespace {

constexpr auto add = [](auto a, auto b) { return a + b; };
constexpr auto subtract_second = [](auto a, auto b) { return a - b; };
constexpr auto subtract_from_second = [](auto a, auto b) { return b - a; };

template <size_t prefetch_distance = 0, class T, class Kernel>
ZIVKStatus combine_arrays(const T* src1, const T* src2, T* dst, int32_t len, Kernel kernel) {
  if (ZIVKStatus status = check_arrays(len, src1, src2, dst)) return status;
  return map(parts_of(dst), count_parts<T>(len), kernel, prefetched<prefetch_distance>(parts_of(src1)),
             prefetched<prefetch_distance>(parts_of(src2)));
}

template <size_t prefetch_distance = 0, class T, class Kernel>
ZIVKStatus combine_constant(const T* src, T val, T* dst, int32_t len, Kernel kernel) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return map(parts_of(dst), count_parts<T>(len), kernel, prefetched<prefetch_distance>(parts_of(src)),
             repeated(val));
}

}  // namespace

ZIVKStatus ZIVKS_Add_32f(const float* src1, const float* src2, float* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, add);
}
ZIVKStatus ZIVKS_Add_64f(const double* src1, const double* src2, double* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, add);
}
ZIVKStatus ZIVKS_Add_32fc(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, add);
}
ZIVKStatus ZIVKS_Add_64fc(const ZIVK64fc* src1, const ZIVK64fc* src2, ZIVK64fc* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, add);
}

ZIVKStatus ZIVKS_Add_32f_I(const float* src, float* srcDst, int32_t len) {
  return ZIVKS_Add_32f(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Add_64f_I(const double* src, double* srcDst, int32_t len) {
  return ZIVKS_Add_64f(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Add_32fc_I(const ZIVK32fc* src, ZIVK32fc* srcDst, int32_t len) {
  return ZIVKS_Add_32fc(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Add_64fc_I(const ZIVK64fc* src, ZIVK64fc* srcDst, int32_t len) {
  return ZIVKS_Add_64fc(src, srcDst, srcDst, len);
}

ZIVKStatus ZIVKS_Sub_32f(const float* src1, const float* src2, float* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, subtract_from_second);
}
ZIVKStatus ZIVKS_Sub_64f(const double* src1, const double* src2, double* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, subtract_from_second);
}
ZIVKStatus ZIVKS_Sub_32fc(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, subtract_from_second);
}
ZIVKStatus ZIVKS_Sub_64fc(const ZIVK64fc* src1, const ZIVK64fc* src2, ZIVK64fc* dst, int32_t len) {
  return combine_arrays<2048>(src1, src2, dst, len, subtract_from_second);
}

ZIVKStatus ZIVKS_Sub_32f_I(const float* src, float* srcDst, int32_t len) {
  return ZIVKS_Sub_32f(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Sub_64f_I(const double* src, double* srcDst, int32_t len) {
  return ZIVKS_Sub_64f(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Sub_32fc_I(const ZIVK32fc* src, ZIVK32fc* srcDst, int32_t len) {
  return ZIVKS_Sub_32fc(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Sub_64fc_I(const ZIVK64fc* src, ZIVK64fc* srcDst, int32_t len) {
  return ZIVKS_Sub_64fc(src, srcDst, srcDst, len);
}

ZIVKStatus ZIVKS_AddC_32f(const float* src, float val, float* dst, int32_t len) {
  return combine_constant(src, val, dst, len, add);
}
ZIVKStatus ZIVKS_AddC_64f(const double* src, double val, double* dst, int32_t len) {
  return combine_constant(src, val, dst, len, add);
}
ZIVKStatus ZIVKS_AddC_32fc(const ZIVK32fc* src, ZIVK32fc val, ZIVK32fc* dst, int32_t len) {
  return combine_constant(src, val, dst, len, add);
}
ZIVKStatus ZIVKS_AddC_64fc(const ZIVK64fc* src, ZIVK64fc val, ZIVK64fc* dst, int32_t len) {
  return combine_constant(src, val, dst, len, add);
}

ZIVKStatus ZIVKS_AddC_32f_I(float val, float* srcDst, int32_t len) {
  return ZIVKS_AddC_32f(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_AddC_64f_I(double val, double* srcDst, int32_t len) {
  return ZIVKS_AddC_64f(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_AddC_32fc_I(ZIVK32fc val, ZIVK32fc* srcDst, int32_t len) {
  return ZIVKS_AddC_32fc(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_AddC_64fc_I(ZIVK64fc val, ZIVK64fc* srcDst, int32_t len) {
  return ZIVKS_AddC_64fc(srcDst, val, srcDst, len);
}

ZIVKStatus ZIVKS_SubC_32f(const float* src, float val, float* dst, int32_t len) {
  return combine_constant(src, val, dst, len, subtract_second);
}
ZIVKStatus ZIVKS_SubC_64f(const double* src, double val, double* dst, int32_t len) {
  return combine_constant(src, val, dst, len, subtract_second);
}
ZIVKStatus ZIVKS_SubC_32fc(const ZIVK32fc* src, ZIVK32fc val, ZIVK32fc* dst, int32_t len) {
  return combine_constant(src, val, dst, len, subtract_second);
}
ZIVKStatus ZIVKS_SubC_64fc(const ZIVK64fc* src, ZIVK64fc val, ZIVK64fc* dst, int32_t len) {
  return combine_constant<4096>(src, val, dst, len, subtract_second);
}

ZIVKStatus ZIVKS_SubC_32f_I(float val, float* srcDst, int32_t len) {
  return ZIVKS_SubC_32f(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_SubC_64f_I(double val, double* srcDst, int32_t len) {
  return ZIVKS_SubC_64f(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_SubC_32fc_I(ZIVK32fc val, ZIVK32fc* srcDst, int32_t len) {
  return ZIVKS_SubC_32fc(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_SubC_64fc_I(ZIVK64fc val, ZIVK64fc* srcDst, int32_t len) {
  return ZIVKS_SubC_64fc(srcDst, val, srcDst, len);
}

ZIVKStatus ZIVKS_SubCRev_32f(const float* src, float val, float* dst, int32_t len) {
  return combine_constant(src, val, dst, len, subtract_from_second);
}
ZIVKStatus ZIVKS_SubCRev_64f(const double* src, double val, double* dst, int32_t len) {
  return combine_constant(src, val, dst, len, subtract_from_second);
}
ZIVKStatus ZIVKS_SubCRev_32fc(const ZIVK32fc* src, ZIVK32fc val, ZIVK32fc* dst, int32_t len) {
  return combine_constant(src, val, dst, len, subtract_from_second);
}
ZIVKStatus ZIVKS_SubCRev_64fc(const ZIVK64fc* src, ZIVK64fc val, ZIVK64fc* dst, int32_t len) {
  return combine_constant<4096>(src, val, dst, len, subtract_from_second);
}

ZIVKStatus ZIVKS_SubCRev_32f_I(float val, float* srcDst, int32_t len) {
  return ZIVKS_SubCRev_32f(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_SubCRev_64f_I(double val, double* srcDst, int32_t len) {
  return ZIVKS_SubCRev_64f(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_SubCRev_32fc_I(ZIVK32fc val, ZIVK32fc* srcDst, int32_t len) {
  return ZIVKS_SubCRev_32fc(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_SubCRev_64fc_I(ZIVK64fc val, ZIVK64fc* srcDst, int32_t len) {
  return ZIVKS_SubCRev_64fc(srcDst, val, srcDst, len);
}
