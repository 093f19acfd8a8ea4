#include <stdlib.h>

#include <cmath>

#include "bench/row.h"

namespace bench {
namespace {

// --- Noise and triangle waves ----------------------------------------------------------

constexpr uint32_t kSeed = 2026;

template <class Record>
void make_record(const Arrays& arrays, int32_t) {
  const Record record = {1, 100, kSeed};
  std::memcpy(arrays.array(Arrays::kWork), &record, sizeof record);
}

// F is the type that blocks are computed in.
template <class F>
struct DrawEach {
  template <class T, class Record>
  PLAIN_LOOP void operator()(T* dst, int32_t len, const Record* record) const {
    srand48(record->seed);
    const auto low = static_cast<F>(record->low), width = static_cast<F>(record->high - record->low);
    const int32_t blocks = len / 8 * 8;
    for (int32_t i = 0; i < blocks; ++i)
      dst[i] = static_cast<T>(std::fma(width, static_cast<F>(drand48()), low));
    for (int32_t i = blocks; i < len; ++i)
      dst[i] = static_cast<T>(std::fma(double{width}, drand48(), double{low}));
  }
};

struct TriangleOfIndex {
  template <class T, class M, class F>
  PLAIN_LOOP void operator()(T* dst, int32_t len, M magn, F rFreq, F asym, const F* phase) const {
    constexpr double kPi = 3.141592653589793, kTwoPi = 2 * kPi;
    const double fall = asym + kPi, rise = kPi - asym, start = *phase / kTwoPi;
    const double falling = 2 / fall, rising = 2 / rise, peak = rise / 2, trough = (fall + kTwoPi) / 2;
    const auto real_part = [=](double at) {
      return magn * (at >= fall ? 1 + (at - kTwoPi) * rising : std::fma(-at, falling, 1.0));
    };
    const auto imaginary_part = [=](double at) {
      return magn * (at <= peak ? rising * at : at < trough ? (kPi - at) * falling : (at - kTwoPi) * rising);
    };
    for (int32_t i = 0; i < len; ++i) {
      double whole;
      const double at = std::modf(std::fma(rFreq, i, start), &whole) * kTwoPi;
      if constexpr (std::is_arithmetic_v<T>) {
        dst[i] = static_cast<T>(real_part(at));
      } else {
        using Part = decltype(dst->re);
        dst[i] = {static_cast<Part>(real_part(at)), static_cast<Part>(imaginary_part(at))};
      }
    }
  }
};

std::vector<Row> noise_rows() {
  return {
      ROW(ZIVKS_RandUniform_8u, kNoise, DrawEach<float>, kDst, kLen, kWork)
          .filled_by(make_record<ZIVKRandUniformState_8u>),
      ROW(ZIVKS_RandUniform_16s, kNoise, DrawEach<float>, kDst, kLen, kWork)
          .filled_by(make_record<ZIVKRandUniformState_16s>),
      ROW(ZIVKS_RandUniform_32f, kNoise, DrawEach<float>, kDst, kLen, kWork)
          .filled_by(make_record<ZIVKRandUniformState_32f>),
      ROW(ZIVKS_RandUniform_64f, kNoise, DrawEach<double>, kDst, kLen, kWork)
          .filled_by(make_record<ZIVKRandUniformState_64f>),
  };
}

std::vector<Row> triangle_wave_rows() {
  constexpr auto kMagnitude = kNumber<1000>;
  constexpr auto kAsymmetry = kNumber<1, 2>;
  constexpr auto kLowFrequency = kNumber<1, 100>;
  constexpr auto kHighFrequency = kNumber<31, 100>;
  constexpr auto kPhase = kResult;
  constexpr const char* kRemark = "computes each sample from its index";
  return {
      ROW(ZIVKS_Triangle_16s, kWave, TriangleOfIndex, kDst, kLen, kMagnitude, kLowFrequency, kAsymmetry,
          kPhase),
      ROW(ZIVKS_Triangle_32f, kWave, TriangleOfIndex, kDst, kLen, kMagnitude, kLowFrequency, kAsymmetry,
          kPhase),
      ROW(ZIVKS_Triangle_16sc, kWave, TriangleOfIndex, kDst, kLen, kMagnitude, kLowFrequency, kAsymmetry,
          kPhase),
      ROW(ZIVKS_Triangle_32fc, kWave, TriangleOfIndex, kDst, kLen, kMagnitude, kLowFrequency, kAsymmetry,
          kPhase),
      ROW(ZIVKS_Triangle_64f, kSerialWave, TriangleOfIndex, kDst, kLen, kMagnitude, kLowFrequency, kAsymmetry,
          kPhase)
          .with("frequency .01")
          .but(kRemark),
      ROW(ZIVKS_Triangle_64f, kSerialWave, TriangleOfIndex, kDst, kLen, kMagnitude, kHighFrequency,
          kAsymmetry, kPhase)
          .with("frequency .31")
          .but(kRemark),
      ROW(ZIVKS_Triangle_64fc, kSerialWave, TriangleOfIndex, kDst, kLen, kMagnitude, kLowFrequency,
          kAsymmetry, kPhase)
          .with("frequency .01")
          .but(kRemark),
      ROW(ZIVKS_Triangle_64fc, kSerialWave, TriangleOfIndex, kDst, kLen, kMagnitude, kHighFrequency,
          kAsymmetry, kPhase)
          .with("frequency .31")
          .but(kRemark),
  };
}

}  // namespace

std::vector<Row> filter_rows() {
  std::vector<Row> rows;
  for (auto* of_family : {noise_rows, triangle_wave_rows}) {
    for (const Row& row : of_family()) rows.push_back(row);
  }
  return rows;
}

}  // namespace bench
