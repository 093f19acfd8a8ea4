// The scale rule: log2(1 / scale) truncated toward zero, in exact steps.
#ifndef ZIVKS_TESTS_REFERENCE_SCALE_H
#define ZIVKS_TESTS_REFERENCE_SCALE_H

#include <cmath>

namespace zivks_test {

inline int reference_scale_exponent(double scale) {
  int exponent = -std::ilogb(scale);  // 2^-exponent is the last power of two not above scale
  if (scale < 1 && std::ldexp(1.0, -exponent) != scale) --exponent;
  return exponent;
}

inline double reference_scale_multiplier(double scale) {
  return std::ldexp(1.0, reference_scale_exponent(scale));
}

}  // namespace zivks_test

#endif
