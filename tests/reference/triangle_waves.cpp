#include "reference/triangle_waves.h"

namespace zivks_test {
namespace {

std::vector<double> follow_slopes(const TriangleWave& wave, double start, size_t length, bool is_complex) {
  const double magn = wave.magn, fall = wave.fall(), rise = wave.rise();
  const double k = magn * 12.566370614359172;
  const double step_up = wave.frequency * k / rise, step_down = -(wave.frequency * k) / fall;
  const double wrap_up = k / rise, wrap_down = k / fall, mirror_down = -rise / fall, mirror_up = -fall / rise;
  const double offset_down = std::fma(-mirror_down, magn, magn), offset_up = std::fma(mirror_up, magn, -magn);
  double slope = step_down, current = magn * (1 - 2 * start / fall);
  if (start >= fall) slope = step_up, current = magn * (2 * (start - fall) / rise - 1);
  bool rising = slope > 0;

  std::vector<double> samples;
  while (samples.size() < length) {
    samples.push_back(current);
    current += slope;
    const bool is_above = is_complex ? magn < current : !(magn >= current);
    if (rising && is_above) {
      const double mirrored = std::fma(mirror_down, current, offset_down);
      if (mirrored >= -magn) {
        current = mirrored, slope = step_down, rising = false;
      } else {
        current -= wrap_up;
      }
    } else if ((is_complex || !rising) && current < -magn) {
      const double mirrored = std::fma(mirror_up, current, offset_up);
      if (mirrored <= magn) {
        current = mirrored, slope = step_up, rising = true;
      } else {
        current += wrap_down;
      }
    }
  }
  return samples;
}

// One stream of the phase accumulator.
std::vector<double> step_phase(const TriangleWave& wave, double phase, double step, size_t length) {
  const double magn = wave.magn, fall = wave.fall(), rise = wave.rise();
  const double high_offset = (fall + wave.kTwoPi) * -magn / rise;
  std::vector<double> samples;
  while (samples.size() < length) {
    if (phase > wave.kTwoPi) phase -= wave.kTwoPi;
    samples.push_back(phase > fall ? std::fma(phase, 2 * magn / rise, high_offset)
                                   : std::fma(phase, -(2 * magn) / fall, magn));
    phase += step;
  }
  return samples;
}

// By their order in the declaration.
template <class M, class F>
TriangleWave wave_of(const Function& function, const Operands& operands) {
  return {static_cast<double>(input_element<M>(function, operands, 2, 0)),
          input_element<F>(function, operands, 3, 0), input_element<F>(function, operands, 4, 0),
          input_element<F>(function, operands, 5, 0)};
}

template <class T>
T converted(double sample, Place place) {
  if constexpr (std::is_floating_point_v<T>) return static_cast<T>(sample);
  if (sample != sample) return 0;
  const double low = place == Place::kBlock ? INT16_MIN : INT32_MIN,
               high = place == Place::kBlock ? INT16_MAX : INT32_MAX;
  return static_cast<T>(static_cast<int32_t>(std::min(std::max(sample, low), high)));
}

template <class T, size_t block>
std::vector<Bytes> direct(const Function& function, const Operands& operands) {
  const TriangleWave wave = wave_of<T, float>(function, operands);
  Outputs outputs(function, operands);
  const auto length = static_cast<size_t>(operands.length);
  for (size_t i = 0; i < length; ++i) {
    const Place place = i < length / block * block ? Place::kBlock : Place::kTail;
    outputs.set(0, i, converted<T>(wave.at(static_cast<double>(i), place).real(), place));
  }
  return outputs.take();
}

template <class Complex, class T, size_t block>
std::vector<Bytes> direct_complex(const Function& function, const Operands& operands) {
  const TriangleWave wave = wave_of<T, float>(function, operands);
  Outputs outputs(function, operands);
  const auto length = static_cast<size_t>(operands.length);
  for (size_t i = 0; i < length; ++i) {
    const Place place = i < length / block * block ? Place::kBlock : Place::kTail;
    const std::complex<double> sample = wave.at(static_cast<double>(i), place);
    outputs.set(0, i, Complex{converted<T>(sample.real(), place), converted<T>(sample.imag(), place)});
  }
  return outputs.take();
}

std::vector<Bytes> real(const Function& function, const Operands& operands) {
  const TriangleWave wave = wave_of<double, double>(function, operands);
  const std::vector<double> samples = wave.real_samples(static_cast<size_t>(operands.length));
  Outputs outputs(function, operands);
  for (size_t i = 0; i < samples.size(); ++i) outputs.set(0, i, samples[i]);
  outputs.set(1, 0, wave.phase_behind(operands.length));
  return outputs.take();
}

std::vector<Bytes> complex(const Function& function, const Operands& operands) {
  const TriangleWave wave = wave_of<double, double>(function, operands);
  const std::vector<std::complex<double>> samples =
      wave.complex_samples(static_cast<size_t>(operands.length));
  Outputs outputs(function, operands);
  for (size_t i = 0; i < samples.size(); ++i)
    outputs.set(0, i, ZIVK64fc{samples[i].real(), samples[i].imag()});
  outputs.set(1, 0, wave.phase_behind(operands.length));
  return outputs.take();
}

}  // namespace

double TriangleWave::phase_behind(int32_t length) const {
  const double behind = std::fma(length * kTwoPi, frequency, phase);
  const double within = std::fma(-std::floor(behind * 0.15915494309189535), kTwoPi, behind);
  if (within < 0 || within >= kTwoPi) return 0;
  return within;
}

std::vector<double> TriangleWave::real_samples(size_t length) const {
  if (frequency < 0.14) return follow_slopes(*this, phase, length, false);
  double second = std::fma(kTwoPi, frequency, phase);
  if (second > kTwoPi) second -= kTwoPi;
  const double step = 2 * (frequency * kTwoPi);
  const std::vector<double> even = step_phase(*this, phase, step, length),
                            odd = step_phase(*this, second, step, length);
  std::vector<double> samples;
  for (size_t i = 0; i < length; ++i) samples.push_back(i % 2 == 0 ? even[i / 2] : odd[i / 2]);
  return samples;
}

std::vector<std::complex<double>> TriangleWave::complex_samples(size_t length) const {
  const bool follows_slopes = frequency < 0.11;
  double shifted = follows_slopes ? phase + (fall() + kTwoPi) / 2 : std::fma(fall() + kTwoPi, 0.5, phase);
  if (shifted > kTwoPi) shifted -= kTwoPi;
  const auto samples_from = [&](double start) {
    return follows_slopes ? follow_slopes(*this, start, length, true)
                          : step_phase(*this, start, frequency * kTwoPi, length);
  };
  const std::vector<double> re = samples_from(phase), im = samples_from(shifted);
  std::vector<std::complex<double>> samples;
  for (size_t i = 0; i < length; ++i) samples.emplace_back(re[i], im[i]);
  return samples;
}

References triangle_wave_references() {
  return {{"ZIVKS_Triangle_16s", direct<int16_t, 4>},
          {"ZIVKS_Triangle_32f", direct<float, 4>},
          {"ZIVKS_Triangle_16sc", direct_complex<ZIVK16sc, int16_t, 4>},
          {"ZIVKS_Triangle_32fc", direct_complex<ZIVK32fc, float, 2>},
          {"ZIVKS_Triangle_64f", real},
          {"ZIVKS_Triangle_64fc", complex}};
}

}  // namespace zivks_test
