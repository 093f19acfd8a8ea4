// The larger or the smaller of each two elements.
//
// Whole blocks of floats go through operations that pass a NaN on and put -0 below +0. The elements behind
// them, the tail, are compared, and the second is taken where the comparison fails: it stays if it is a NaN,
// and a NaN in the first disappears.
#include <zivks/statistics.h>

#include "core/checks.h"

using namespace zivks;

namespace {

struct Larger {
  template <class L>
  static L in_block(L a, L b) {
    return maximum(a, b);
  }
  template <class T>
  static T in_tail(T a, T b) {
    return a >= b ? a : b;
  }
};

struct Smaller {
  template <class L>
  static L in_block(L a, L b) {
    return minimum(a, b);
  }
  template <class T>
  static T in_tail(T a, T b) {
    return a <= b ? a : b;
  }
};

template <class Choice, class T>
ZIVKStatus choose_floats(const T* src1, const T* src2, T* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, src1, src2, dst)) return status;
  map_blocks<16 / sizeof(T)>(
      dst, static_cast<size_t>(len), [](auto a, auto b) { return Choice::in_block(a, b); },
      [](T a, T b) { return Choice::in_tail(a, b); }, src1, src2);
  return ZIVK_STS_NO_ERR;
}

template <class Choice, class T>
ZIVKStatus choose_integers(const T* src, T* srcDst, int32_t len) {
  return map_arrays(
      srcDst, len, [](auto a, auto b) { return Choice::in_block(a, b); }, src, srcDst);
}

}  // namespace

ZIVKStatus ZIVKS_MaxEvery_32f(const float* src1, const float* src2, float* dst, int32_t len) {
  return choose_floats<Larger>(src1, src2, dst, len);
}
ZIVKStatus ZIVKS_MaxEvery_64f(const double* src1, const double* src2, double* dst, int32_t len) {
  return choose_floats<Larger>(src1, src2, dst, len);
}
ZIVKStatus ZIVKS_MinEvery_32f(const float* src1, const float* src2, float* dst, int32_t len) {
  return choose_floats<Smaller>(src1, src2, dst, len);
}
ZIVKStatus ZIVKS_MinEvery_64f(const double* src1, const double* src2, double* dst, int32_t len) {
  return choose_floats<Smaller>(src1, src2, dst, len);
}

ZIVKStatus ZIVKS_MaxEvery_16s_I(const int16_t* src, int16_t* srcDst, int32_t len) {
  return choose_integers<Larger>(src, srcDst, len);
}
ZIVKStatus ZIVKS_MaxEvery_32s_I(const int32_t* src, int32_t* srcDst, int32_t len) {
  return choose_integers<Larger>(src, srcDst, len);
}
ZIVKStatus ZIVKS_MaxEvery_32f_I(const float* src, float* srcDst, int32_t len) {
  return ZIVKS_MaxEvery_32f(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_MaxEvery_64f_I(const double* src, double* srcDst, int32_t len) {
  return ZIVKS_MaxEvery_64f(src, srcDst, srcDst, len);
}

ZIVKStatus ZIVKS_MinEvery_16s_I(const int16_t* src, int16_t* srcDst, int32_t len) {
  return choose_integers<Smaller>(src, srcDst, len);
}
ZIVKStatus ZIVKS_MinEvery_32s_I(const int32_t* src, int32_t* srcDst, int32_t len) {
  return choose_integers<Smaller>(src, srcDst, len);
}
ZIVKStatus ZIVKS_MinEvery_32f_I(const float* src, float* srcDst, int32_t len) {
  return ZIVKS_MinEvery_32f(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_MinEvery_64f_I(const double* src, double* srcDst, int32_t len) {
  return ZIVKS_MinEvery_64f(src, srcDst, srcDst, len);
}
