// Triangle waves.
//
// The forms for int16 and float32 compute each sample from its index. Those for float64 compute each from the one
// before, which takes no fractional part but lets errors grow: at low frequencies by following the slopes, at others
// by stepping the phase. There every rounding shows in all samples that follow.
#include <zivks/generators.h>

#include <cmath>
#include <cstring>

#include "core/checks.h"
#include "core/complex.h"

using namespace zivks;

namespace {

constexpr double kPi = 3.141592653589793, kTwoPi = 6.283185307179586;

// Whether the asymmetry may be -pi, so that a period only rises.
enum class Lowest { kRefused, kAllowed };

// Below these frequencies the float64 forms follow the slopes of the wave. They differ in where they change the method.
constexpr double kLowFrequency = 0.14, kLowFrequencyOfComplex = 0.11;

// Comparisons let a NaN pass.
template <Lowest lowest = Lowest::kRefused, class T, class F>
ZIVKStatus check_wave(const void* dst, int32_t len, T magn, F rFreq, F asym, const F* phase) {
  if (dst == nullptr || phase == nullptr) return ZIVK_STS_NULL_PTR_ERR;
  if (*phase < 0 || *phase >= kTwoPi) return ZIVK_STS_TRIANGLE_ERR;
  if (asym < -kPi || (lowest == Lowest::kRefused && asym <= -kPi) || asym >= kPi)
    return ZIVK_STS_TRIANGLE_ERR;
  if (len < 1) return ZIVK_STS_SIZE_ERR;
  if (magn <= 0 || rFreq < 0 || rFreq >= F{0.5}) return ZIVK_STS_TRIANGLE_ERR;
  return ZIVK_STS_NO_ERR;
}

// A period falls from phase 0 and rises again from phase `fall`; their sum is two pi.
struct Slopes {
  double fall, rise;

  explicit Slopes(double asym) : fall(asym + kPi), rise(kPi - asym) {}
  // Where the imaginary part has its trough, and how far it is ahead of the real part.
  double imaginary_trough() const { return (fall + kTwoPi) / 2; }
};

// --- Samples from their indices --------------------------------------------------------

// The same formulas serve a sample and a register of them.
template <class V>
ZIVKS_INLINE V each(double value) {
  if constexpr (std::is_same_v<V, double>) return value;
  if constexpr (!std::is_same_v<V, double>) return broadcast(value);
}
using zivks::fused_multiply_add, zivks::whole_part;  // beside those of single samples, which would hide them
ZIVKS_INLINE double fused_multiply_add(double a, double b, double c) { return std::fma(a, b, c); }
ZIVKS_INLINE double whole_part(double a) { return std::trunc(a); }

enum class Place { kBlock, kTail };

template <class V>
struct Sample {
  V re, im;
};

class Wave {
 public:
  Wave(double magn, double rFreq, double asym, double phase)
      : Wave(magn, rFreq, Slopes(asym), phase / kTwoPi) {}

  // In radians, of the sample at `index`.
  template <class V>
  ZIVKS_INLINE V phase_at(V index) const {
    const V periods = fused_multiply_add(index, each<V>(rFreq_), each<V>(start_));
    return (periods - whole_part(periods)) * each<V>(period_);
  }

  template <class V>
  ZIVKS_INLINE V real_part(V phase) const {
    return (phase >= each<V>(fall_) ? rise_to_peak(phase) : fall_from_peak(phase)) * each<V>(magn_);
  }
  // The peak itself counts as behind it in blocks, and as ahead of it in the tail.
  template <Place place, class V>
  ZIVKS_INLINE V imaginary_part(V phase) const {
    const auto is_behind_peak = [&] {
      if constexpr (place == Place::kBlock) return phase >= each<V>(peak_);
      if constexpr (place == Place::kTail) return phase > each<V>(peak_);
    }();
    return (phase >= each<V>(trough_) ? rise_to_zero(phase)
            : is_behind_peak          ? fall_through_zero(phase)
                                      : rise_from_zero(phase)) *
           each<V>(magn_);
  }
  template <Place place, class V>
  ZIVKS_INLINE Sample<V> parts_at(V phase) const {
    return {real_part(phase), imaginary_part<place>(phase)};
  }

  // The same once they are rounded to float32, for arguments of float32. The line that counts is the upper one next to
  // the trough, and the lower one next to the peak. Roundings may have the lines meet a little beside the trough or the
  // peak. But there both are within 2^-26 of -1 or 1, to which float32 rounds them.
  ZIVKS_INLINE F64 real_part_for_float32(F64 phase) const {
    return greater(rise_to_peak(phase), fall_from_peak(phase)) * broadcast(magn_);
  }
  ZIVKS_INLINE F64 imaginary_part_for_float32(F64 phase) const {
    return greater(lesser(rise_from_zero(phase), fall_through_zero(phase)), rise_to_zero(phase)) *
           broadcast(magn_);
  }
  ZIVKS_INLINE Sample<F64> parts_for_float32(F64 phase) const {
    return {real_part_for_float32(phase), imaginary_part_for_float32(phase)};
  }

 private:
  // Of two negative zeros all phases are negative zeros, which the difference to the whole part would lose.
  Wave(double magn, double rFreq, Slopes slopes, double start)
      : magn_(magn),
        rFreq_(rFreq),
        start_(start),
        period_(std::copysign(kTwoPi, std::fma(rFreq, 0.0, start))),
        fall_(slopes.fall),
        falling_(2 / slopes.fall),
        rising_(2 / slopes.rise),
        peak_(slopes.rise / 2),
        trough_(slopes.imaginary_trough()) {}

  // The lines that make up the two parts, for a magnitude of 1.
  template <class V>
  ZIVKS_INLINE V fall_from_peak(V phase) const {
    return fused_multiply_add(phase, each<V>(-falling_), each<V>(1));
  }
  template <class V>
  ZIVKS_INLINE V rise_to_peak(V phase) const {
    return each<V>(1) + rise_to_zero(phase);
  }
  template <class V>
  ZIVKS_INLINE V rise_from_zero(V phase) const {
    return phase * each<V>(rising_);
  }
  template <class V>
  ZIVKS_INLINE V fall_through_zero(V phase) const {
    return (each<V>(kPi) - phase) * each<V>(falling_);
  }
  template <class V>
  ZIVKS_INLINE V rise_to_zero(V phase) const {
    return (phase - each<V>(kTwoPi)) * each<V>(rising_);
  }

  double magn_, rFreq_, start_, period_, fall_, falling_, rising_, peak_, trough_;
};

// For integers a NaN is 0, and one among the arguments makes every sample a NaN.
Wave wave_of_integers(int16_t magn, float rFreq, float asym, float phase) {
  const float sum = rFreq + asym + phase;
  return sum == sum ? Wave(magn, rFreq, asym, phase) : Wave(0, 0, 0, 0);
}

// The operand of a loop that gives each element its index. It reads no memory.
template <class T>
struct Indices {
  using Element = T;
  static constexpr size_t kStepRegisters = 1, kElementBytes = 0, kGroup = 1;

  size_t first = 0;

  template <size_t N>
  ZIVKS_INLINE Lanes<T, N> load(size_t i) const {
    return count_from<N, N>(first + i, 0, std::make_index_sequence<Lanes<T, N>::kParts>());
  }
  template <size_t N, size_t end>
  ZIVKS_INLINE Lanes<T, N> load_ends(size_t len) const {
    return count_from<N, end>(first, len - 2 * end, std::make_index_sequence<Lanes<T, N>::kParts>());
  }
  template <size_t>
  ZIVKS_INLINE void prefetch(size_t) const {}
  template <size_t>
  ZIVKS_INLINE void read_ahead(size_t) const {}

  const void* memory() const { return nullptr; }
  ZIVKS_INLINE Indices from(size_t i) const { return {first + i}; }

 private:
  // Ascending numbers, which go on by `gap` more from lane `end` on.
  template <size_t N, size_t end, size_t... K>
  ZIVKS_INLINE static Lanes<T, N> count_from(size_t start, size_t gap, std::index_sequence<K...>) {
    constexpr auto kLanes = std::make_index_sequence<kRegisterElements<T>>();
    const Register<T> base = broadcast(static_cast<T>(static_cast<int32_t>(start)));
    if constexpr (N == end) {
      return {{base + ascending<K * kRegisterElements<T>>(kLanes)...}};
    } else {
      const Register<T> behind = base + broadcast(static_cast<T>(static_cast<int32_t>(gap)));
      return {{ascending<K * kRegisterElements<T>>(kLanes) +
               side<K * kRegisterElements<T>, end>(base, behind, kLanes)...}};
    }
  }
  template <size_t first, size_t... I>
  ZIVKS_INLINE static Register<T> ascending(std::index_sequence<I...>) {
    return Register<T>{static_cast<T>(first + I)...};
  }
  template <size_t first, size_t end, size_t... I>
  ZIVKS_INLINE static Register<T> side(Register<T> before, Register<T> behind, std::index_sequence<I...>) {
    using Mask = Register<SignedOf<T>>;
    return select(Mask{(first + I < end ? SignedOf<T>{-1} : SignedOf<T>{0})...}, before, behind);
  }
};

// dst[i] = kernel(index) in whole blocks of B, and tail(index) behind them.
template <int32_t B, class Index, class Destination, class Kernel, class Tail>
ZIVKStatus map_indices(Destination dst, int32_t len, const Kernel& kernel, const Tail& tail) {
  const int32_t blocks = len & ~(B - 1);
  if (blocks > 0) map(dst, static_cast<size_t>(blocks), kernel, Indices<Index>());
  for (int32_t i = blocks; i < len; ++i) tail(i);
  return ZIVK_STS_NO_ERR;
}

// Indices as float32 has them: exact below 2^24, and beyond formed from the even index at or below.
template <size_t N>
ZIVKS_INLINE Lanes<double, N> round_indices(Lanes<int32_t, N> indices) {
  const I32 one = broadcast(int32_t{1});
  return convert<double>(convert<float>(indices & ~one) + convert<float>(indices & one));
}

// Truncated toward zero. No sample lies beyond the magnitude by as much as 1.
template <size_t N, size_t... I>
ZIVKS_INLINE Lanes<int16_t, N> truncate_pairs(Lanes<double, N> samples, std::index_sequence<I...>) {
  return narrow_saturating<int16_t>(
      Lanes<int32_t, N>{{round_unclamped<ZIVK_RND_ZERO>(samples.part[2 * I], samples.part[2 * I + 1])...}});
}
template <size_t N>
ZIVKS_INLINE Lanes<int16_t, N> truncate(Lanes<double, N> samples) {
  return truncate_pairs(samples, std::make_index_sequence<Lanes<int32_t, N>::kParts>());
}

// Both parts of a register's samples, one register after the other.
template <size_t N, class Samples, size_t... K>
ZIVKS_INLINE ComplexLanes<double, N> lift_complex(Samples samples_at, Lanes<double, N> indices,
                                                  std::index_sequence<K...>) {
  const Sample<F64> samples[] = {samples_at(indices.part[K])...};
  return {{{samples[K].re...}}, {{samples[K].im...}}};
}
template <size_t N, class Samples>
ZIVKS_INLINE ComplexLanes<double, N> lift_complex(Samples samples_at, Lanes<double, N> indices) {
  return lift_complex(samples_at, indices, std::make_index_sequence<Lanes<double, N>::kParts>());
}

// --- Samples from the ones before ------------------------------------------------------

// Returns the phase of the first sample, and puts that of the one behind the last in its place.
double advance_phase(double* phase, int32_t len, double rFreq) {
  constexpr double kPeriodsPerRadian = 0.15915494309189535;
  const double start = *phase, end = std::fma(len * kTwoPi, rFreq, start);
  const double within = std::fma(-std::floor(end * kPeriodsPerRadian), kTwoPi, end);
  *phase = within < 0 || within >= kTwoPi ? 0 : within;
  return start;
}

double less_a_period(double phase) { return phase > kTwoPi ? phase - kTwoPi : phase; }

// What a sample below the trough leads to while the wave rises: nothing, or a turn as while it falls.
enum class BelowTrough { kTurnsIfFalling, kTurnsAlways };

// A wave that follows its slopes: from sample to sample by adding, and at a turn by mirroring what went beyond the
// peak or the trough. What would be beyond the opposite one then has gone on for a period more.
class SlopeWave {
 public:
  SlopeWave(double magn, double rFreq, Slopes slopes, double phase) : magn_(magn) {
    const double fall = slopes.fall, rise = slopes.rise, k = magn * 12.566370614359172;
    step_up_ = rFreq * k / rise;
    step_down_ = -(rFreq * k) / fall;
    period_up_ = k / rise;
    period_down_ = k / fall;
    mirror_down_ = -rise / fall;
    mirror_up_ = -fall / rise;
    offset_down_ = std::fma(-mirror_down_, magn, magn);
    offset_up_ = std::fma(mirror_up_, magn, -magn);
    const bool is_behind_trough = phase >= fall;
    step_ = is_behind_trough ? step_up_ : step_down_;
    sample_ = is_behind_trough ? magn * (2 * (phase - fall) / rise - 1) : magn * (1 - 2 * phase / fall);
    rises_ = step_ > 0;
  }

  double sample() const { return sample_; }

  template <BelowTrough below>
  ZIVKS_INLINE void step() {
    sample_ += step_;
    if (std::fabs(sample_) > magn_) turn<below>();
  }

 private:
  template <BelowTrough below>
  void turn() {
    if (sample_ > magn_) {
      if (rises_) turn_down();
    } else if (!rises_ || below == BelowTrough::kTurnsAlways) {
      turn_up();
    }
  }
  void turn_down() {
    const double mirrored = std::fma(mirror_down_, sample_, offset_down_);
    if (mirrored >= -magn_) {
      sample_ = mirrored;
      step_ = step_down_;
      rises_ = false;
    } else {
      sample_ -= period_up_;
    }
  }
  void turn_up() {
    const double mirrored = std::fma(mirror_up_, sample_, offset_up_);
    if (mirrored <= magn_) {
      sample_ = mirrored;
      step_ = step_up_;
      rises_ = true;
    } else {
      sample_ += period_down_;
    }
  }

  double magn_, sample_, step_, step_up_, step_down_, period_up_, period_down_, mirror_up_, mirror_down_,
      offset_up_, offset_down_;
  bool rises_;
};

// The branch is taken in a pattern that repeats with the wave, so that processors foresee it, and the next sample waits
// for the additions alone. A selection, which is what the compiler would make of it, took twice the time.
ZIVKS_INLINE double step_phase(double phase, double step) {
  phase += step;
  if (phase > kTwoPi) phase = kept_in_register(phase) - kTwoPi;
  return phase;
}

template <size_t... K>
ZIVKS_INLINE F64 register_of(const double* elements, std::index_sequence<K...>) {
  return F64{elements[K]...};
}

// Samples in turn of two waves whose phases step alike.
void step_phases(double* dst, size_t count, double magn, Slopes slopes, double even, double odd,
                 double step) {
  constexpr size_t N = kRegisterElements<double>;
  const F64 fall = broadcast(slopes.fall);
  const F64 rising = broadcast(2 * magn / slopes.rise), falling = broadcast(-(2 * magn) / slopes.fall);
  const F64 rising_offset = broadcast((slopes.fall + kTwoPi) * -magn / slopes.rise), peak = broadcast(magn);
  const auto next_samples = [&] {
    double phase[N];
    for (size_t k = 0; k < N; k += 2) {
      phase[k] = even;
      phase[k + 1] = odd;
      even = step_phase(even, step);
      odd = step_phase(odd, step);
    }
    const F64 phases = register_of(phase, std::make_index_sequence<N>());
    return phases > fall ? fused_multiply_add(phases, rising, rising_offset)
                         : fused_multiply_add(phases, falling, peak);
  };
  size_t i = 0;
  for (; i + N <= count; i += N) store(dst + i, next_samples());
  const F64 last = next_samples();
  std::memcpy(dst + i, &last, (count - i) * sizeof(double));
}

}  // namespace

ZIVKStatus ZIVKS_Triangle_16s(int16_t* dst, int32_t len, int16_t magn, float rFreq, float asym,
                              const float* phase) {
  if (ZIVKStatus status = check_wave(dst, len, magn, rFreq, asym, phase)) return status;
  const Wave wave = wave_of_integers(magn, rFreq, asym, *phase);
  const auto sample_at = [wave](auto index)
                             ZIVKS_INLINE_LAMBDA { return wave.real_part(wave.phase_at(index)); };
  return map_indices<4, double>(
      dst, len,
      [sample_at](auto indices) ZIVKS_INLINE_LAMBDA { return truncate(lift<double>(sample_at, indices)); },
      [sample_at, dst](int32_t i) { dst[i] = static_cast<int16_t>(sample_at(static_cast<double>(i))); });
}
ZIVKStatus ZIVKS_Triangle_32f(float* dst, int32_t len, float magn, float rFreq, float asym,
                              const float* phase) {
  if (ZIVKStatus status = check_wave(dst, len, magn, rFreq, asym, phase)) return status;
  const Wave wave(magn, rFreq, asym, *phase);
  return map_indices<4, double>(
      NarrowedArray{{dst}}, len,
      [wave](auto indices) ZIVKS_INLINE_LAMBDA {
        return lift<double>(
            [&wave](F64 index)
                ZIVKS_INLINE_LAMBDA { return wave.real_part_for_float32(wave.phase_at(index)); },
            indices);
      },
      [&wave, dst](int32_t i) {
        dst[i] = static_cast<float>(wave.real_part(wave.phase_at(static_cast<double>(i))));
      });
}
ZIVKStatus ZIVKS_Triangle_16sc(ZIVK16sc* dst, int32_t len, int16_t magn, float rFreq, float asym,
                               const float* phase) {
  if (ZIVKStatus status = check_wave(dst, len, magn, rFreq, asym, phase)) return status;
  const Wave wave = wave_of_integers(magn, rFreq, asym, *phase);
  return map_indices<4, int32_t>(
      ComplexArray<int16_t>{parts_of(dst)}, len,
      [wave](auto indices) ZIVKS_INLINE_LAMBDA {
        const auto samples = lift_complex(
            [&wave](F64 index)
                ZIVKS_INLINE_LAMBDA { return wave.parts_at<Place::kBlock>(wave.phase_at(index)); },
            round_indices(indices));
        return make_complex(truncate(samples.re), truncate(samples.im));
      },
      [&wave, dst](int32_t i) {
        const auto [re, im] = wave.parts_at<Place::kTail>(wave.phase_at(static_cast<double>(i)));
        dst[i] = {static_cast<int16_t>(re), static_cast<int16_t>(im)};
      });
}
ZIVKStatus ZIVKS_Triangle_32fc(ZIVK32fc* dst, int32_t len, float magn, float rFreq, float asym,
                               const float* phase) {
  if (ZIVKStatus status = check_wave(dst, len, magn, rFreq, asym, phase)) return status;
  const Wave wave(magn, rFreq, asym, *phase);
  return map_indices<2, double>(
      ComplexArray<float>{parts_of(dst)}, len,
      [wave](auto indices) ZIVKS_INLINE_LAMBDA {
        const auto samples = lift_complex(
            [&wave](F64 index) ZIVKS_INLINE_LAMBDA { return wave.parts_for_float32(wave.phase_at(index)); },
            indices);
        return make_complex(convert<float>(samples.re), convert<float>(samples.im));
      },
      [&wave, dst](int32_t i) {
        const auto [re, im] = wave.parts_at<Place::kTail>(wave.phase_at(static_cast<double>(i)));
        dst[i] = {static_cast<float>(re), static_cast<float>(im)};
      });
}

ZIVKStatus ZIVKS_Triangle_64f(double* dst, int32_t len, double magn, double rFreq, double asym,
                              double* phase) {
  if (ZIVKStatus status = check_wave<Lowest::kAllowed>(dst, len, magn, rFreq, asym, phase)) return status;
  const Slopes slopes(asym);
  const double start = advance_phase(phase, len, rFreq);
  if (rFreq < kLowFrequency) {
    SlopeWave wave(magn, rFreq, slopes, start);
    for (int32_t i = 0; i < len; ++i) {
      dst[i] = wave.sample();
      wave.step<BelowTrough::kTurnsIfFalling>();
    }
  } else {
    const double second = less_a_period(std::fma(kTwoPi, rFreq, start));
    step_phases(dst, static_cast<size_t>(len), magn, slopes, start, second, 2 * (rFreq * kTwoPi));
  }
  return ZIVK_STS_NO_ERR;
}
ZIVKStatus ZIVKS_Triangle_64fc(ZIVK64fc* dst, int32_t len, double magn, double rFreq, double asym,
                               double* phase) {
  if (ZIVKStatus status = check_wave(dst, len, magn, rFreq, asym, phase)) return status;
  const Slopes slopes(asym);
  const double start = advance_phase(phase, len, rFreq);
  if (rFreq < kLowFrequencyOfComplex) {
    SlopeWave re(magn, rFreq, slopes, start),
        im(magn, rFreq, slopes, less_a_period(start + slopes.imaginary_trough()));
    for (int32_t i = 0; i < len; ++i) {
      dst[i] = {re.sample(), im.sample()};
      re.step<BelowTrough::kTurnsAlways>();
      im.step<BelowTrough::kTurnsAlways>();
    }
  } else {
    const double imaginary = less_a_period(std::fma(slopes.fall + kTwoPi, 0.5, start));
    step_phases(parts_of(dst), count_parts<ZIVK64fc>(len), magn, slopes, start, imaginary, rFreq * kTwoPi);
  }
  return ZIVK_STS_NO_ERR;
}
