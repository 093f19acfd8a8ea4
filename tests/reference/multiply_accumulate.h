// Multiply-accumulate of complex numbers. Each operation below rounds once, as the headers require.
#ifndef ZIVKS_TESTS_REFERENCE_MULTIPLY_ACCUMULATE_H
#define ZIVKS_TESTS_REFERENCE_MULTIPLY_ACCUMULATE_H

#include <zivks.h>

#include <cmath>
#include <cstddef>
#include <type_traits>

namespace zivks_test {

// c += a * b, element by element; c may be a or b. A block reads both parts of an element before it writes
// any; the tail writes the real part, and then reads what the imaginary part is made of.
template <class C>
void reference_add_product(const C* a, const C* b, C* c, size_t len) {
  constexpr bool kSingle = std::is_same_v<C, ZIVK32fc>;
  const size_t blocks = len / (kSingle ? 4 : 2) * (kSingle ? 4 : 2);
  for (size_t i = 0; i < len; ++i) {
    const C x = a[i], y = b[i], z = c[i];
    if (i >= blocks) {
      c[i].re = z.re + std::fma(x.re, y.re, -(x.im * y.im));
      c[i].im = z.im + std::fma(a[i].re, b[i].im, a[i].im * b[i].re);
    } else if (kSingle) {
      c[i].re = z.re + std::fma(-x.im, y.im, x.re * y.re);
      c[i].im = z.im + std::fma(x.im, y.re, x.re * y.im);
    } else {
      c[i].re = z.re + std::fma(x.re, y.re, -(x.im * y.im));
      c[i].im = z.im + std::fma(x.im, y.re, x.re * y.im);
    }
  }
}

}  // namespace zivks_test

#endif
