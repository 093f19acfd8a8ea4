// Products of two arrays, or of an array and a constant, added to a third.
#include <zivks/arithmetic.h>

#include <algorithm>
#include <cmath>

#include "core/checks.h"
#include "core/complex.h"
#include "core/scale.h"

using namespace zivks;

namespace {

constexpr auto add_product = [](auto a, auto b, auto c) { return fused_multiply_add(a, b, c); };

// --- Complex numbers -------------------------------------------------------------------

// The order of rounding shows in the last place. Each is stated twice: for real and imaginary parts in
// registers of their own, and for parts in turn as they are in memory.

struct AddProduct32fc {
  template <size_t N>
  ZIVKS_INLINE ComplexLanes<float, N> operator()(ComplexLanes<float, N> a, ComplexLanes<float, N> b,
                                                 ComplexLanes<float, N> c) const {
    return {c.re + fused_multiply_add(-a.im, b.im, a.re * b.re),
            c.im + fused_multiply_add(a.im, b.re, a.re * b.im)};
  }
  ZIVKS_INLINE F32 operator()(F32 a, F32 b, F32 c) const {
    a = kept_in_register(a), b = kept_in_register(b);  // the compiler would rather load them twice
    return c + fused_multiply_add(duplicate_odd(a), negate_even(swap_pairs(b)), duplicate_even(a) * b);
  }
};

struct AddProduct64fc {
  template <size_t N>
  ZIVKS_INLINE ComplexLanes<double, N> operator()(ComplexLanes<double, N> a, ComplexLanes<double, N> b,
                                                  ComplexLanes<double, N> c) const {
    return {c.re + fused_multiply_add(a.re, b.re, -(a.im * b.im)),
            c.im + fused_multiply_add(a.im, b.re, a.re * b.im)};
  }
  ZIVKS_INLINE F64 operator()(F64 a, F64 b, F64 c) const {
    a = kept_in_register(a), b = kept_in_register(b);
    return c + fused_multiply_alternate(a, duplicate_even(b), swap_pairs(a) * duplicate_odd(b));
  }
};

template <class T>
ZIVKS_INLINE ComplexLanes<T, kRegisterElements<T>> load_next_numbers(const T*& from) {
  const auto parts = load_next_deinterleaved(from);
  return {{{parts.first}}, {{parts.second}}};
}
template <class T, class Kernel>
ZIVKS_INLINE void add_next_products(const T*& src1, const T*& src2, const T*& summands, T*& sums,
                                    Kernel kernel) {
  const auto a = load_next_numbers(src1), b = load_next_numbers(src2), c = load_next_numbers(summands);
  const auto sum = kernel(a, b, c);
  store_next_interleaved(sums, sum.re.part[0], sum.im.part[0]);
}

// Whole registers of parts. Every operand has a pointer that moves on by itself, `srcDst` one to read and one to
// write.
template <class T, class Kernel>
[[gnu::flatten]] void add_separated_products(const T* src1, const T* src2, T* srcDst, size_t len,
                                             Kernel kernel) {
  constexpr size_t kTurn = 4 * kRegisterElements<T>;
  const T* summands = srcDst;
  const T* const end = src1 + 2 * len;
  const T* const end_of_turns = src1 + 2 * (len & ~(kTurn - 1));
  while (src1 != end_of_turns) {
    add_next_products(src1, src2, summands, srcDst, kernel);
    add_next_products(src1, src2, summands, srcDst, kernel);
    add_next_products(src1, src2, summands, srcDst, kernel);
    add_next_products(src1, src2, summands, srcDst, kernel);
  }
  while (src1 != end) add_next_products(src1, src2, summands, srcDst, kernel);
}

template <size_t B, size_t distance1, size_t distance2, size_t distance_of_sum, class Kernel, class T>
void add_blocks_of_products(const T* src1, const T* src2, T* srcDst, size_t len, Kernel kernel) {
  if constexpr (kSeparatesParts<T>) {
    static_assert(B % kRegisterElements<T> == 0 && distance1 == 0 && distance2 == 0 && distance_of_sum == 0);
    add_separated_products(src1, src2, srcDst, len, kernel);
  } else {
    map_registers<T>(ArrayOfPairs<T, distance_of_sum, Prefetch::kWrite>{{srcDst}}, 2 * len, kernel,
                     prefetched<distance1>(src1), prefetched<distance2>(src2), srcDst);
  }
}

// The tail writes a real part before it reads what the imaginary part is made of.
template <class T>
void add_products_one_by_one(const T* src1, const T* src2, T* srcDst, size_t begin, size_t end) {
  for (size_t i = begin; i < end; ++i) {
    srcDst[i].re += std::fma(src1[i].re, src2[i].re, -(src1[i].im * src2[i].im));
    srcDst[i].im += std::fma(src1[i].re, src2[i].im, src1[i].im * src2[i].re);
  }
}

// Whole blocks of B elements go through the kernel.
template <size_t B, size_t distance1 = 0, size_t distance2 = 0, size_t distance_of_sum = 0, class T,
          class Kernel>
ZIVKStatus add_complex_products(const T* src1, const T* src2, T* srcDst, int32_t len, Kernel kernel) {
  if (ZIVKStatus status = check_arrays(len, src1, src2, srcDst)) return status;
  const auto count = static_cast<size_t>(len), blocks = count & ~(B - 1);
  if (blocks > 0) {
    add_blocks_of_products<B, distance1, distance2, distance_of_sum>(parts_of(src1), parts_of(src2),
                                                                     parts_of(srcDst), blocks, kernel);
  }
  add_products_one_by_one(src1, src2, srcDst, blocks, count);
  return ZIVK_STS_NO_ERR;
}

// --- Scaled integers -------------------------------------------------------------------

// The exact sum is converted to floating point, which may round it, then multiplied and rounded to an integer.
// Each type has a kernel of registers for multipliers of 1 and more, which are 2^count, and one for smaller
// ones.

// From 31 on everything but 0 is out of range.
constexpr int kLargestCount = 31;

// Multiplied by 1 or more, a sum that is out of range stays so, and one that is inexact in float32 is out of
// range. Divided, a sum stays within int32.
struct AddProduct16s {
  static auto shifted_left(int count) {
    return [count](I16 a, I16 b, I16 c) {
      return shift_left_saturating(join_saturating(multiply_add_apart(a, b, c)), count);
    };
  }
  static auto multiplied(double multiplier) {
    return [m = broadcast(multiplier_in<float>(multiplier))](I16 a, I16 b, I16 c) {
      const auto [first, second] = multiply_add_apart(a, b, c);
      return join_saturating({round_unclamped<ZIVK_RND_NEAR>(convert_part<float, 0>(first) * m),
                              round_unclamped<ZIVK_RND_NEAR>(convert_part<float, 0>(second) * m)});
    };
  }
};

struct AddProduct32s {
  static auto multiplied(double multiplier) {
    return [m = broadcast(multiplier)](I32 a, I32 b, I32 c) {
      return round_clamped_for<int32_t, ZIVK_RND_NEAR>(sum_of_product_part<0>(a, b, c) * m,
                                                       sum_of_product_part<1>(a, b, c) * m);
    };
  }
  static auto shifted_left(int count) { return multiplied(power_of_two(count)); }
};

// The product has been made already: it takes more registers than its factors.
struct AddProduct16s32s {
  static auto shifted_left(int count) {
    return [count](I32 product, I32 c) { return shift_left_saturating(add_saturating(product, c), count); };
  }
  static auto multiplied(double multiplier) {
    return [m = broadcast(multiplier)](I32 product, I32 c) {
      return round_unclamped<ZIVK_RND_NEAR>(sum_part<0>(product, c) * m, sum_part<1>(product, c) * m);
    };
  }
};

template <class T, class Kernel>
ZIVKStatus map_products(const T* src1, const T* src2, T* srcDst, size_t len, Kernel kernel) {
  return map_registers<T>(srcDst, len, kernel, src1, src2, srcDst);
}
template <class Kernel>
ZIVKStatus map_products(const int16_t* src1, const int16_t* src2, int32_t* srcDst, size_t len,
                        Kernel kernel) {
  const auto kernel_of_lanes = [kernel](auto a, auto b, auto c) {
    return lift<int32_t>(kernel, multiply_widening(a, b), c);
  };
  return map(srcDst, len, kernel_of_lanes, src1, src2, srcDst);
}

template <class Kernels, class S, class T>
ZIVKStatus add_scaled_products(const S* src1, const S* src2, T* srcDst, int32_t len, double scale) {
  if (ZIVKStatus status = check_arrays(len, src1, src2, srcDst)) return status;
  const double multiplier = scale_multiplier(scale);
  if (multiplier != multiplier) return ZIVK_STS_SCALE_ERR;
  const auto count = static_cast<size_t>(len);
  if (multiplier < 1) return map_products(src1, src2, srcDst, count, Kernels::multiplied(multiplier));
  const int shift = std::min(scale_exponent(scale), kLargestCount);
  return map_products(src1, src2, srcDst, count, Kernels::shifted_left(shift));
}

}  // namespace

ZIVKStatus ZIVKS_AddProduct_32f(const float* src1, const float* src2, float* srcDst, int32_t len) {
  return map_arrays(srcDst, len, add_product, src1, src2, srcDst);
}
ZIVKStatus ZIVKS_AddProduct_64f(const double* src1, const double* src2, double* srcDst, int32_t len) {
  return map_arrays(srcDst, len, add_product, src1, src2, srcDst);
}

ZIVKStatus ZIVKS_AddProduct_32fc(const ZIVK32fc* src1, const ZIVK32fc* src2, ZIVK32fc* srcDst, int32_t len) {
  return add_complex_products<4>(src1, src2, srcDst, len, AddProduct32fc{});
}
ZIVKStatus ZIVKS_AddProduct_64fc(const ZIVK64fc* src1, const ZIVK64fc* src2, ZIVK64fc* srcDst, int32_t len) {
  return add_complex_products<2, 2048, 4096, 4096>(src1, src2, srcDst, len, AddProduct64fc{});
}

ZIVKStatus ZIVKS_AddProductC_32f(const float* src, float val, float* srcDst, int32_t len) {
  const F32 constant = broadcast(val);
  return map_arrays(
      srcDst, len, [=](auto a, auto c) { return fused_multiply_add(a, constant, c); }, src, srcDst);
}
ZIVKStatus ZIVKS_AddProductC_64f(const double* src, double val, double* srcDst, int32_t len) {
  const F64 constant = broadcast(val);
  return map_arrays(
      srcDst, len, [=](auto a, auto c) { return fused_multiply_add(a, constant, c); }, prefetched<3072>(src),
      prefetched<3072>(srcDst));
}

ZIVKStatus ZIVKS_AddProduct_16s_S(const int16_t* src1, const int16_t* src2, int16_t* srcDst, int32_t len,
                                  double scale) {
  return add_scaled_products<AddProduct16s>(src1, src2, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddProduct_32s_S(const int32_t* src1, const int32_t* src2, int32_t* srcDst, int32_t len,
                                  double scale) {
  return add_scaled_products<AddProduct32s>(src1, src2, srcDst, len, scale);
}
ZIVKStatus ZIVKS_AddProduct_16s32s_S(const int16_t* src1, const int16_t* src2, int32_t* srcDst, int32_t len,
                                     double scale) {
  return add_scaled_products<AddProduct16s32s>(src1, src2, srcDst, len, scale);
}
