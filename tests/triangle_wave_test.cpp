// Triangle waves: samples by hand, the order of checks, thresholds, and long arrays.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>
#include <vector>

#include "generic/values.h"
#include "reference/triangle_waves.h"
#include "zivks.h"

namespace zivks_test {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = TriangleWave::kPi, kTwoPi = TriangleWave::kTwoPi;

TEST(TriangleWave, HasFourSamplesAPeriodAtAQuarter) {
  float samples[5], phase = 0;
  ASSERT_EQ(ZIVKS_Triangle_32f(samples, 5, 1, 0.25F, 0, &phase), ZIVK_STS_NO_ERR);
  double doubles[5], double_phase = 0;
  ASSERT_EQ(ZIVKS_Triangle_64f(doubles, 5, 1, 0.25, 0, &double_phase), ZIVK_STS_NO_ERR);
  for (int i = 0; i < 5; ++i) {
    constexpr double kExpected[] = {1, 0, -1, 0, 1};
    EXPECT_NEAR(samples[i], kExpected[i], 1e-6);
    EXPECT_NEAR(doubles[i], kExpected[i], 1e-14);
  }
  EXPECT_EQ(phase, 0);
  EXPECT_NEAR(double_phase, 1.5707963267948966, 1e-14);
}

TEST(TriangleWave, StandsStillAtFrequencyZero) {
  int16_t samples[5];
  const float phase = static_cast<float>(kPi / 4);
  ASSERT_EQ(ZIVKS_Triangle_16s(samples, 5, 11, 0, 0, &phase), ZIVK_STS_NO_ERR);
  for (int16_t sample : samples) EXPECT_EQ(sample, 5);  // 5.5, truncated
  const float opposite = static_cast<float>(3 * kPi / 4);
  ASSERT_EQ(ZIVKS_Triangle_16s(samples, 5, 11, 0, 0, &opposite), ZIVK_STS_NO_ERR);
  for (int16_t sample : samples) EXPECT_EQ(sample, -5);
  double doubles[5], double_phase = 1;
  ASSERT_EQ(ZIVKS_Triangle_64f(doubles, 5, 1, 0, 0, &double_phase), ZIVK_STS_NO_ERR);
  for (double sample : doubles) EXPECT_EQ(sample, 1 * (1 - 2 / kPi));
  EXPECT_EQ(double_phase, 1);
}

TEST(TriangleWave, ChecksPhaseAndAsymmetryAheadOfTheLength) {
  double sample = 7, bad_phase = -1, phase = 1;
  EXPECT_EQ(ZIVKS_Triangle_64f(&sample, 0, 1, 0, 0, &phase), ZIVK_STS_SIZE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_64f(&sample, 0, 1, 0, 0, &bad_phase), ZIVK_STS_TRIANGLE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_64f(&sample, 0, 1, 0, kPi, &phase), ZIVK_STS_TRIANGLE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_64f(&sample, 0, 0, 0, 0, &phase), ZIVK_STS_SIZE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_64f(&sample, 0, 1, 0.5, 0, &phase), ZIVK_STS_SIZE_ERR);
  EXPECT_EQ(sample, 7);
  EXPECT_EQ(phase, 1);
}

// The float32 next to 2 pi lies above it, that next to pi too; the one below 2 pi is a phase.
TEST(TriangleWave, ComparesWidenedPhasesWithTwoPi) {
  float sample;
  const auto above = static_cast<float>(kTwoPi), below = std::nextafter(above, 0.0F);
  EXPECT_EQ(ZIVKS_Triangle_32f(&sample, 1, 1, 0, 0, &above), ZIVK_STS_TRIANGLE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_32f(&sample, 1, 1, 0, 0, &below), ZIVK_STS_NO_ERR);
  EXPECT_EQ(ZIVKS_Triangle_32f(&sample, 1, 1, 0, static_cast<float>(kPi), &below), ZIVK_STS_TRIANGLE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_32f(&sample, 1, 1, 0, -std::nextafter(static_cast<float>(kPi), 0.0F), &below),
            ZIVK_STS_NO_ERR);
}

TEST(TriangleWave, TakesMinusPiInOneForm) {
  double real[1], phase = 1;
  ZIVK64fc sample;
  EXPECT_EQ(ZIVKS_Triangle_64fc(&sample, 1, 1, 0, -kPi, &phase), ZIVK_STS_TRIANGLE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_64f(real, 1, 1, 0, std::nextafter(-kPi, -4), &phase), ZIVK_STS_TRIANGLE_ERR);
  EXPECT_EQ(ZIVKS_Triangle_64f(real, 1, 1, 0, -kPi, &phase), ZIVK_STS_NO_ERR);
}

// A NaN passes the checks, makes every sample a NaN, and of integers a zero.
TEST(TriangleWave, PassesNanOn) {
  const auto nan = static_cast<float>(kNan);
  for (const auto& [frequency, asymmetry, phase] :
       {std::tuple(nan, 0.0F, 1.0F), {0.1F, nan, 1.0F}, {0.1F, 0.0F, nan}}) {
    ZIVK16sc integers[7];
    ZIVK32fc floats[7];
    ASSERT_EQ(ZIVKS_Triangle_16sc(integers, 7, 1000, frequency, asymmetry, &phase), ZIVK_STS_NO_ERR);
    ASSERT_EQ(ZIVKS_Triangle_32fc(floats, 7, 1000, frequency, asymmetry, &phase), ZIVK_STS_NO_ERR);
    for (int i = 0; i < 7; ++i) {
      EXPECT_TRUE(integers[i].re == 0 && integers[i].im == 0);
      EXPECT_TRUE(std::isnan(floats[i].re) && std::isnan(floats[i].im));
    }
    const bool keeps_phase = std::isnan(asymmetry);
    for (double rate : {0.1, 0.4}) {
      if (std::isnan(frequency)) rate = kNan;
      double samples[7], own_phase = phase, complex_phase = phase;
      ZIVK64fc numbers[7];
      ASSERT_EQ(ZIVKS_Triangle_64f(samples, 7, nan, rate, asymmetry, &own_phase), ZIVK_STS_NO_ERR);
      ASSERT_EQ(ZIVKS_Triangle_64fc(numbers, 7, 1, rate, asymmetry, &complex_phase), ZIVK_STS_NO_ERR);
      for (double sample : samples) EXPECT_TRUE(std::isnan(sample));
      for (int i = std::isnan(rate) ? 1 : 0; i < 7; ++i) {  // the first sample takes no step
        EXPECT_TRUE(std::isnan(numbers[i].re) && std::isnan(numbers[i].im));
      }
      EXPECT_EQ(std::isnan(own_phase), !keeps_phase);
      EXPECT_EQ(std::isnan(complex_phase), !keeps_phase);
    }
  }
}

TEST(TriangleWave, KeepsTheSignOfAZeroPhase) {
  const float phase = -0.0F;
  ZIVK32fc samples[5];
  for (float frequency : {-0.0F, 0.0F}) {
    ASSERT_EQ(ZIVKS_Triangle_32fc(samples, 5, 1, frequency, 0, &phase), ZIVK_STS_NO_ERR);
    for (const ZIVK32fc& sample : samples) {
      EXPECT_EQ(sample.im, 0);
      EXPECT_EQ(std::signbit(sample.im), std::signbit(frequency));
    }
  }
}

// Sample 1 is the peak itself. It is computed as on the falling side in a block, as on the rising side in the tail.
TEST(TriangleWave, TakesThePeakForDifferentSidesInBlockAndTail) {
  const float phase = 0x1.921fb6p-53F, asymmetry = -0x1p-50F;
  ZIVK16sc block[4], tail[2];
  ASSERT_EQ(ZIVKS_Triangle_16sc(block, 4, 32767, 0.25F, asymmetry, &phase), ZIVK_STS_NO_ERR);
  ASSERT_EQ(ZIVKS_Triangle_16sc(tail, 2, 32767, 0.25F, asymmetry, &phase), ZIVK_STS_NO_ERR);
  EXPECT_EQ(block[1].im, 32766);
  EXPECT_EQ(tail[1].im, 32767);
}

// Samples that are the peak or the trough, and asymmetries that leave one of the slopes next to no time.
TEST(TriangleWave, TurnsWhereItShould) {
  constexpr int32_t kLength = 67;
  const float almost_pi = std::nextafter(static_cast<float>(kPi), 0.0F);
  for (float asymmetry : {0.0F, 0x1p-50F, -0x1p-50F, 1.0F, almost_pi, -almost_pi}) {
    for (float frequency : {0.25F, 0.125F, 0.375F, std::nextafter(0.5F, 0.0F), 0.1F}) {
      const float phase = 0;
      const TriangleWave wave = {1000, frequency, asymmetry, phase};
      float real[kLength];
      ZIVK32fc floats[kLength];
      ZIVK16sc integers[kLength];
      ASSERT_EQ(ZIVKS_Triangle_32f(real, kLength, 1000, frequency, asymmetry, &phase), ZIVK_STS_NO_ERR);
      ASSERT_EQ(ZIVKS_Triangle_32fc(floats, kLength, 1000, frequency, asymmetry, &phase), ZIVK_STS_NO_ERR);
      ASSERT_EQ(ZIVKS_Triangle_16sc(integers, kLength, 1000, frequency, asymmetry, &phase), ZIVK_STS_NO_ERR);
      for (int32_t i = 0; i < kLength; ++i) {
        const auto at_block_of = [&](int32_t block) {
          return wave.at(i, i < kLength / block * block ? Place::kBlock : Place::kTail);
        };
        ASSERT_EQ(real[i], static_cast<float>(at_block_of(4).real())) << i;
        ASSERT_EQ(floats[i].re, static_cast<float>(at_block_of(2).real())) << i;
        ASSERT_EQ(floats[i].im, static_cast<float>(at_block_of(2).imag())) << i;
        ASSERT_EQ(integers[i].re, static_cast<int16_t>(at_block_of(4).real())) << i;
        ASSERT_EQ(integers[i].im, static_cast<int16_t>(at_block_of(4).imag())) << i;
      }
    }
  }
}

bool same(double a, double b) {
  return bit_cast<uint64_t>(a) == bit_cast<uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

void expect_agreement(const TriangleWave& wave, int32_t length) {
  const auto count = static_cast<size_t>(length);
  const std::vector<double> expected = wave.real_samples(count);
  const std::vector<std::complex<double>> expected_complex = wave.complex_samples(count);
  std::vector<double> samples(count);
  std::vector<ZIVK64fc> complex_samples(count);
  double phase = wave.phase;
  ASSERT_EQ(ZIVKS_Triangle_64f(samples.data(), length, wave.magn, wave.frequency, wave.asymmetry, &phase),
            ZIVK_STS_NO_ERR);
  ASSERT_TRUE(same(phase, wave.phase_behind(length)));
  for (size_t i = 0; i < count; ++i) ASSERT_TRUE(same(samples[i], expected[i])) << i << " of " << length;
  if (wave.asymmetry <= -kPi) return;
  phase = wave.phase;
  ASSERT_EQ(
      ZIVKS_Triangle_64fc(complex_samples.data(), length, wave.magn, wave.frequency, wave.asymmetry, &phase),
      ZIVK_STS_NO_ERR);
  for (size_t i = 0; i < count; ++i) {
    ASSERT_TRUE(same(complex_samples[i].re, expected_complex[i].real()) &&
                same(complex_samples[i].im, expected_complex[i].imag()))
        << i << " of " << length;
  }
}

// Both methods on both sides of their thresholds, and at frequencies and asymmetries of every order.
TEST(TriangleWave, GoesFromSampleToSampleInDoubleForms) {
  const double below = std::nextafter(0.14, 0), below_complex = std::nextafter(0.11, 0);
  Random random(1);
  const auto uniform = [&] { return static_cast<double>(random.below(1 << 30)) / (1 << 30); };
  for (int trial = 0; trial < 1000; ++trial) {
    const double edges[] = {0.14, below, 0.11, below_complex, 0.25, 0, std::nextafter(0.5, 0), 0.13};
    const double frequency = trial % 2 == 0 ? edges[trial / 2 % 8] : 0.5 * std::exp2(-12 * uniform());
    const double near_edge = kPi - std::exp2(-50 * uniform()), inside = kPi * (2 * uniform() - 1);
    const double asymmetries[] = {0, inside, near_edge, -near_edge, -kPi};
    const double magnitudes[] = {1, 1000.7, std::exp2(2000 * uniform() - 1000), 1 + uniform()};
    const TriangleWave wave = {magnitudes[trial / 5 % 4], frequency, asymmetries[trial % 5],
                               kTwoPi * uniform()};
    SCOPED_TRACE(testing::Message() << "magnitude " << wave.magn << ", frequency " << wave.frequency
                                    << ", asymmetry " << wave.asymmetry << ", phase " << wave.phase);
    ASSERT_NO_FATAL_FAILURE(
        expect_agreement(wave, static_cast<int32_t>(1 + random.below(trial % 9 == 0 ? 3000 : 40))));
  }
}

#ifdef __x86_64__  // so many samples take too long under emulation

// From 2^24 on blocks of the complex integer form have only the indices that are float32; the tail has its own.
TEST(TriangleWave, RoundsLargeIndicesInOneForm) {
  constexpr int32_t kLength = (1 << 25) + 64 + 3;
  const TriangleWave wave = {32767, 0.1234567F, 1, 2};
  std::vector<ZIVK16sc> samples(kLength);
  std::vector<int16_t> real(kLength);
  const auto frequency = static_cast<float>(wave.frequency);
  const float phase = 2;
  ASSERT_EQ(ZIVKS_Triangle_16sc(samples.data(), kLength, 32767, frequency, 1, &phase), ZIVK_STS_NO_ERR);
  ASSERT_EQ(ZIVKS_Triangle_16s(real.data(), kLength, 32767, frequency, 1, &phase), ZIVK_STS_NO_ERR);
  for (int32_t first : {0, 1 << 24, 1 << 25}) {
    for (int32_t i = first - (first > 0) * 64; i < std::min(first + 67, kLength); ++i) {
      const Place place = i < kLength / 4 * 4 ? Place::kBlock : Place::kTail;
      const int32_t block = i / 4 * 4, pair = i % 4 / 2 * 2;
      const float index = static_cast<float>(block + pair) + static_cast<float>(i % 2);
      const double own_index = i;
      const std::complex<double> expected =
          wave.at(place == Place::kBlock ? double{index} : own_index, place);
      const auto at = static_cast<size_t>(i);
      ASSERT_EQ(samples[at].re, static_cast<int16_t>(expected.real())) << i;
      ASSERT_EQ(samples[at].im, static_cast<int16_t>(expected.imag())) << i;
      ASSERT_EQ(real[at], static_cast<int16_t>(wave.at(own_index, place).real())) << i;
    }
  }
}

#endif

}  // namespace
}  // namespace zivks_test
