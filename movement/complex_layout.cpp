// Splitting complex arrays into parts, merging parts into complex arrays, and the conjugate.
#include <zivks/movement.h>

#include "core/checks.h"
#include "core/complex.h"

using namespace zivks;

namespace {

constexpr auto real_part = [](auto z) { return z.re; };
constexpr auto imaginary_part = [](auto z) { return z.im; };

template <size_t prefetch_distance = 0, class T>
ComplexArray<const Part<T>, prefetch_distance> complex_source(const T* elements) {
  return {parts_of(elements)};
}

template <class T>
SplitArrays<T> split_into(T* re, T* im) {
  return {{re}, {im}};
}

// A part alone, widened to the bits of a whole number, in which it begins at bit `shift`.
template <int shift, class T, class Complex>
ZIVKStatus merge_by_widening(const T* part, Complex* dst, size_t len) {
  using Whole = UnsignedOf<sizeof(Complex)>;
  const auto widened = [](auto a) { return lift<Whole>([](auto x) { return x << shift; }, widen<Whole>(a)); };
  return map(reinterpret_cast<Whole*>(dst), len, widened,
             reinterpret_cast<const UnsignedOf<sizeof(T)>*>(part));
}

// One of the parts may be missing and counts as zeros then.
template <size_t prefetch_distance, class T, class Complex>
ZIVKStatus merge(const T* re, const T* im, Complex* dst, int32_t len) {
  if (re == nullptr && im == nullptr) return ZIVK_STS_NULL_PTR_ERR;
  if (ZIVKStatus status = check_arrays(len, dst)) return status;
  const ComplexArray<T> complex = {parts_of(dst)};
  // A zero that the compiler knows would be inserted part by part.
  const Repeated<T> zeros = {kept_in_register(Register<T>{})};
  const auto merge_parts = [](auto a, auto b) { return make_complex(a, b); };
  const auto count = static_cast<size_t>(len);
  if constexpr (kWidensFromMemory && sizeof(T) < sizeof(uint64_t)) {
    if (re == nullptr) return merge_by_widening<8 * sizeof(T)>(im, dst, count);
    if (im == nullptr) return merge_by_widening<0>(re, dst, count);
  }
  if (re == nullptr) return map(complex, count, merge_parts, zeros, prefetched<prefetch_distance>(im));
  if (im == nullptr) return map(complex, count, merge_parts, prefetched<prefetch_distance>(re), zeros);
  return map(complex, count, merge_parts, prefetched<prefetch_distance>(re),
             prefetched<prefetch_distance>(im));
}

// Runs `kernel` over the parts of the elements and a pattern that is zero in the real parts.
template <size_t prefetch_distance, class T, class Kernel>
ZIVKStatus map_parts(const T* src, T* dst, int32_t len, Kernel kernel, Part<T> in_imaginary) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  const Repeated<Part<T>, 2> pattern = {interleave(Register<Part<T>>{}, broadcast(in_imaginary)).first};
  return map(parts_of(dst), count_parts<T>(len), kernel, prefetched<prefetch_distance>(parts_of(src)),
             pattern);
}

// -x is ~x + 1, that is (x ^ -1) - (-1), and x is (x ^ 0) - 0; the subtraction saturates.
template <size_t prefetch_distance>
ZIVKStatus conjugate_clamped(const ZIVK16sc* src, ZIVK16sc* dst, int32_t len) {
  const auto negate = [](auto x, auto negated) { return subtract_saturating(x ^ negated, negated); };
  return map_parts<prefetch_distance>(src, dst, len, negate, -1);
}

// Turns the sign bits of the imaginary parts, whatever these are.
template <size_t prefetch_distance, class T>
ZIVKStatus conjugate_float(const T* src, T* dst, int32_t len) {
  const auto turn_sign = [](auto x, auto sign) { return x ^ sign; };
  return map_parts<prefetch_distance>(src, dst, len, turn_sign, static_cast<Part<T>>(-0.0));
}

}  // namespace

// --- Split -----------------------------------------------------------------------------

ZIVKStatus ZIVKS_Real_16sc(const ZIVK16sc* src, int16_t* dst, int32_t len) {
  return map_arrays(dst, len, real_part, complex_source(src));
}
ZIVKStatus ZIVKS_Real_32fc(const ZIVK32fc* src, float* dst, int32_t len) {
  return map_arrays(dst, len, real_part, complex_source(src));
}
ZIVKStatus ZIVKS_Real_64fc(const ZIVK64fc* src, double* dst, int32_t len) {
  return map_arrays(dst, len, real_part, complex_source<8192>(src));
}

ZIVKStatus ZIVKS_Imag_16sc(const ZIVK16sc* src, int16_t* dst, int32_t len) {
  return map_arrays(dst, len, imaginary_part, complex_source(src));
}
ZIVKStatus ZIVKS_Imag_32fc(const ZIVK32fc* src, float* dst, int32_t len) {
  return map_arrays(dst, len, imaginary_part, complex_source(src));
}
ZIVKStatus ZIVKS_Imag_64fc(const ZIVK64fc* src, double* dst, int32_t len) {
  return map_arrays(dst, len, imaginary_part, complex_source<8192>(src));
}

ZIVKStatus ZIVKS_CplxToReal_16sc(const ZIVK16sc* src, int16_t* dstRe, int16_t* dstIm, int32_t len) {
  return map_arrays(split_into(dstRe, dstIm), len, unchanged, complex_source(src));
}
ZIVKStatus ZIVKS_CplxToReal_32fc(const ZIVK32fc* src, float* dstRe, float* dstIm, int32_t len) {
  return map_arrays(split_into(dstRe, dstIm), len, unchanged, complex_source(src));
}
ZIVKStatus ZIVKS_CplxToReal_64fc(const ZIVK64fc* src, double* dstRe, double* dstIm, int32_t len) {
  return map_arrays(split_into(dstRe, dstIm), len, unchanged, complex_source<8192>(src));
}

// --- Merge -----------------------------------------------------------------------------

ZIVKStatus ZIVKS_RealToCplx_16s(const int16_t* srcRe, const int16_t* srcIm, ZIVK16sc* dst, int32_t len) {
  return merge<1024>(srcRe, srcIm, dst, len);
}
ZIVKStatus ZIVKS_RealToCplx_32f(const float* srcRe, const float* srcIm, ZIVK32fc* dst, int32_t len) {
  return merge<2048>(srcRe, srcIm, dst, len);
}
ZIVKStatus ZIVKS_RealToCplx_64f(const double* srcRe, const double* srcIm, ZIVK64fc* dst, int32_t len) {
  return merge<4096>(srcRe, srcIm, dst, len);
}

// --- Conjugate -------------------------------------------------------------------------

ZIVKStatus ZIVKS_Conj_16sc(const ZIVK16sc* src, ZIVK16sc* dst, int32_t len) {
  return conjugate_clamped<0>(src, dst, len);
}
ZIVKStatus ZIVKS_Conj_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len) {
  return conjugate_float<4096>(src, dst, len);
}
ZIVKStatus ZIVKS_Conj_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len) {
  return conjugate_float<8192>(src, dst, len);
}

// Not its twin: this one comes with prefetch hints.
ZIVKStatus ZIVKS_Conj_16sc_I(ZIVK16sc* srcDst, int32_t len) {
  return conjugate_clamped<2048>(srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Conj_32fc_I(ZIVK32fc* srcDst, int32_t len) { return ZIVKS_Conj_32fc(srcDst, srcDst, len); }
ZIVKStatus ZIVKS_Conj_64fc_I(ZIVK64fc* srcDst, int32_t len) { return ZIVKS_Conj_64fc(srcDst, srcDst, len); }
