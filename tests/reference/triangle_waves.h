// Triangle waves, sample by sample.
#ifndef ZIVKS_TESTS_REFERENCE_TRIANGLE_WAVES_H
#define ZIVKS_TESTS_REFERENCE_TRIANGLE_WAVES_H

#include <cmath>
#include <complex>
#include <vector>

#include "reference/reference.h"

namespace zivks_test {

struct TriangleWave {
  double magn, frequency, asymmetry, phase;

  static constexpr double kPi = 3.141592653589793, kTwoPi = 6.283185307179586;
  double fall() const { return asymmetry + kPi; }
  double rise() const { return kPi - asymmetry; }

  double phase_at(double index) const {
    const double periods = std::fma(frequency, index, phase / kTwoPi);
    double whole;
    return std::modf(periods, &whole) * kTwoPi;
  }
  double real_part(double at, Place place) const {
    if (place == Place::kBlock) {
      return at >= fall() ? magn * (1 + 2 * (at - kTwoPi) * (1 / rise()))
                          : magn * std::fma(-2 * at, 1 / fall(), 1.0);
    }
    return at >= fall() ? magn * (1 + (at - kTwoPi) * (2 / rise())) : magn * std::fma(-at, 2 / fall(), 1.0);
  }
  double imaginary_part(double at, Place place) const {
    const double peak = rise() / 2, trough = (fall() + kTwoPi) / 2;
    const bool rises = place == Place::kBlock ? !(at >= peak) : at <= peak;
    if (rises) return 2 / rise() * at * magn;
    if (at < trough) return (kPi - at) * (2 / fall()) * magn;
    return (at - kTwoPi) * (2 / rise()) * magn;
  }
  // The sample at an index, computed from it.
  std::complex<double> at(double index, Place place) const {
    const double phase_of_sample = phase_at(index);
    return {real_part(phase_of_sample, place), imaginary_part(phase_of_sample, place)};
  }

  double phase_behind(int32_t length) const;
  // Samples each from the one before.
  std::vector<double> real_samples(size_t length) const;
  std::vector<std::complex<double>> complex_samples(size_t length) const;
};

}  // namespace zivks_test

#endif
