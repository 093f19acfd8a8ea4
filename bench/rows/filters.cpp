#include <stdlib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

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

// --- Sampling --------------------------------------------------------------------------

struct SpreadOverZeros {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* dst, int32_t* dstLen, int32_t factor,
                             const int32_t* phase) const {
    *dstLen = len * factor;
    std::memset(static_cast<void*>(dst), 0, static_cast<std::size_t>(*dstLen) * sizeof(T));
    for (int32_t i = 0; i < len; ++i) dst[*phase + i * factor] = src[i];
  }
};

struct KeepOneOfEach {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, int32_t len, T* dst, int32_t* dstLen, int32_t factor,
                             int32_t* phase) const {
    int32_t count = 0, i = *phase;
    for (; i < len; i += factor) dst[count++] = src[i];
    *dstLen = count;
    *phase = i - len;
  }
};

// Each call begins at the first position.
struct FirstPosition : NoOperand {
  template <class Parameter>
  static Parameter get(const Arrays& arrays, int32_t) {
    auto* const phase = static_cast<int32_t*>(arrays.result(1));
    *phase = 0;
    return phase;
  }
};

template <int factor>
struct OneOfEach : Operand<2, 1> {
  template <class Parameter>
  static constexpr int kBytesMoved = sizeof(Element<Parameter>) / factor;
};

#define SAMPLE_UP_BY(requirement, function, factor)                                                       \
  ROW(function, requirement, SpreadOverZeros, kSrc, kLen, Operand<2, factor>(), kResult, kNumber<factor>, \
      FirstPosition())                                                                                    \
      .with("by " #factor)
#define SAMPLE_UP(function, factor) SAMPLE_UP_BY(kSampleUp, function, factor)
#define SAMPLE_DOWN(function, requirement, factor)                                                     \
  ROW(function, requirement, KeepOneOfEach, kSrc, kLen, OneOfEach<factor>(), kResult, kNumber<factor>, \
      FirstPosition())                                                                                 \
      .with("by " #factor)

std::vector<Row> sampling_rows() {
  return {
      SAMPLE_UP(ZIVKS_SampleUp_16s, 1),
      SAMPLE_UP(ZIVKS_SampleUp_16s, 2),
      SAMPLE_UP(ZIVKS_SampleUp_16s, 3),
      SAMPLE_UP(ZIVKS_SampleUp_16s, 4),
      SAMPLE_UP(ZIVKS_SampleUp_16s, 8),
      SAMPLE_UP(ZIVKS_SampleUp_32f, 2),
      SAMPLE_UP(ZIVKS_SampleUp_32f, 3),
      SAMPLE_UP(ZIVKS_SampleUp_32f, 4),
      SAMPLE_UP_BY(kScattered, ZIVKS_SampleUp_32f, 5),
      SAMPLE_UP(ZIVKS_SampleUp_32f, 8),
      SAMPLE_UP(ZIVKS_SampleUp_64f, 2),
      SAMPLE_UP(ZIVKS_SampleUp_64f, 3),
      SAMPLE_UP(ZIVKS_SampleUp_64f, 4),
      SAMPLE_UP(ZIVKS_SampleUp_16sc, 2),
      SAMPLE_UP(ZIVKS_SampleUp_32fc, 2),
      SAMPLE_UP(ZIVKS_SampleUp_64fc, 2),
      SAMPLE_DOWN(ZIVKS_SampleDown_16s, kSampleDown, 1),
      SAMPLE_DOWN(ZIVKS_SampleDown_16s, kSampleDown, 2),
      SAMPLE_DOWN(ZIVKS_SampleDown_16s, kSampleDown, 3),
      SAMPLE_DOWN(ZIVKS_SampleDown_16s, kSampleDown, 4),
      SAMPLE_DOWN(ZIVKS_SampleDown_16s, kStrided, 8),
      SAMPLE_DOWN(ZIVKS_SampleDown_32f, kSampleDown, 2),
      SAMPLE_DOWN(ZIVKS_SampleDown_32f, kSampleDown, 3),
      SAMPLE_DOWN(ZIVKS_SampleDown_32f, kSampleDown, 4),
      SAMPLE_DOWN(ZIVKS_SampleDown_32f, kStrided, 8),
      SAMPLE_DOWN(ZIVKS_SampleDown_64f, kSampleDown, 2),
      SAMPLE_DOWN(ZIVKS_SampleDown_64f, kSampleDown, 4),
      SAMPLE_DOWN(ZIVKS_SampleDown_16sc, kSampleDown, 2),
      SAMPLE_DOWN(ZIVKS_SampleDown_32fc, kSampleDown, 2),
      SAMPLE_DOWN(ZIVKS_SampleDown_64fc, kStrided, 2),
      SAMPLE_DOWN(ZIVKS_SampleDown_64fc, kStrided, 4),
  };
}

// --- Linear ramps ----------------------------------------------------------------------

struct RampOfIndex {
  template <class T, class F>
  PLAIN_LOOP void operator()(T* dst, int32_t len, F offset, F slope) const {
    for (int32_t i = 0; i < len; ++i) {
      const F value = offset + slope * static_cast<F>(i);
      if constexpr (std::is_floating_point_v<T>) dst[i] = value;
      if constexpr (!std::is_floating_point_v<T>) dst[i] = rounded_and_clamped<T>(value);
    }
  }
};

// Sums are exact with few bits. They are rounded with many, and on the way through zero exponents change often.
#define RAMP(function, requirement, variant, ...)                  \
  ROW(function, requirement, RampOfIndex, kDst, kLen, __VA_ARGS__) \
      .with(variant)                                               \
      .but("computes each element from its index")
#define RAMPS(function)                                                             \
  RAMP(function, kRamp, "few bits", kNumber<10>, kNumber<1, 32>),                   \
      RAMP(function, kRoundedRamp, "many bits", kNumber<137, 100>, kNumber<1, 73>), \
      RAMP(function, kRoundedRamp, "many bits, through zero", kNumber<-237, 10>, kNumber<1, 73>)

std::vector<Row> linear_ramp_rows() {
  return {
      RAMPS(ZIVKS_VectorSlope_8u),  RAMPS(ZIVKS_VectorSlope_16u), RAMPS(ZIVKS_VectorSlope_16s),
      RAMPS(ZIVKS_VectorSlope_32u), RAMPS(ZIVKS_VectorSlope_32s), RAMPS(ZIVKS_VectorSlope_32f),
      RAMPS(ZIVKS_VectorSlope_64f),
  };
}

// --- Median filters --------------------------------------------------------------------

// The insertion network, in which each sample bubbles up from the lower end.
struct ByNetwork {
  template <class T, std::size_t mask>
  [[gnu::always_inline]] static T median_of(std::array<T, mask>& window) {
#pragma GCC unroll 16
    for (std::size_t end = 1; end < mask; ++end) {
#pragma GCC unroll 16
      for (std::size_t k = end; k > 0; --k) {
        const T a = window[k - 1], b = window[k];
        window[k - 1] = b < a ? b : a;
        window[k] = b < a ? a : b;
      }
    }
    return window[mask / 2];
  }
};

struct ByQsort {
  template <class T, std::size_t mask>
  static T median_of(std::array<T, mask>& window) {
    std::qsort(window.data(), mask, sizeof(T), [](const void* first, const void* second) {
      const T a = *static_cast<const T*>(first), b = *static_cast<const T*>(second);
      return (a > b) - (a < b);
    });
    return window[mask / 2];
  }
};

// A window that begins ahead of the array repeats the first sample.
template <class Method, std::size_t mask>
struct EachMedian {
  template <class T>
  PLAIN_LOOP void operator()(const T* src, T* dst, int32_t len, int32_t, const T*, T*, void*) const {
    const auto all = static_cast<std::size_t>(len), head = std::min(all, mask - 1);
    std::array<T, mask> window;
    for (std::size_t i = 0; i < head; ++i) {
      for (std::size_t k = 0; k < mask; ++k) window[k] = src[std::max(i + k + 1, mask) - mask];
      dst[i] = Method::median_of(window);
    }
    for (std::size_t i = head; i < all; ++i) {
      for (std::size_t k = 0; k < mask; ++k) window[k] = src[i + k + 1 - mask];
      dst[i] = Method::median_of(window);
    }
  }
  template <class T>
  void operator()(T* srcDst, int32_t len, int32_t, const T*, T*, void*) const {
    const std::vector<T> src(srcDst, srcDst + len);
    (*this)(src.data(), srcDst, len, 0, static_cast<const T*>(nullptr), static_cast<T*>(nullptr), nullptr);
  }
};

template <std::size_t mask>
using NetworkMedian = EachMedian<ByNetwork, mask>;
template <std::size_t mask>
using SortedMedian = EachMedian<ByQsort, mask>;

#define MEDIAN(function, requirement, plain, mask)                                              \
  ROW(function, requirement, plain<mask>, kSrc, kDst, kLen, kNumber<mask>, kNull, kNull, kWork) \
      .with("mask " #mask)
#define MEDIANS(function, of_3, of_more, of_21)                                                 \
  MEDIAN(function, of_3, NetworkMedian, 3), MEDIAN(function, of_more, NetworkMedian, 5),        \
      MEDIAN(function, of_more, NetworkMedian, 7), MEDIAN(function, of_more, NetworkMedian, 9), \
      MEDIAN(function, of_21, SortedMedian, 21).at(kCacheResident)
#define MEDIAN_IN_PLACE(function, mask)                                                             \
  ROW(function, kOwnMedian, NetworkMedian<mask>, kSrcDst, kLen, kNumber<mask>, kNull, kNull, kWork) \
      .with("mask " #mask)                                                                          \
      .allocating()

std::vector<Row> median_rows() {
  return {
      MEDIANS(ZIVKS_FilterMedian_8u, kMedianOf3, kMedian, kLongMedian),
      MEDIANS(ZIVKS_FilterMedian_16s, kMedianOf3, kMedian, kLongMedian),
      MEDIANS(ZIVKS_FilterMedian_32s, kMedianOf3, kMedian, kLongMedian),
      MEDIANS(ZIVKS_FilterMedian_32f, kFloatMedianOf3, kFloatMedian, kLongMedian),
      MEDIANS(ZIVKS_FilterMedian_64f, kFloatMedianOf3, kFloatMedian, kLongMedian64),
      MEDIAN_IN_PLACE(ZIVKS_FilterMedian_8u_I, 5),
      MEDIAN_IN_PLACE(ZIVKS_FilterMedian_16s_I, 5),
      MEDIAN_IN_PLACE(ZIVKS_FilterMedian_32s_I, 5),
      MEDIAN_IN_PLACE(ZIVKS_FilterMedian_32f_I, 5),
      MEDIAN_IN_PLACE(ZIVKS_FilterMedian_64f_I, 5),
  };
}

}  // namespace

std::vector<Row> filter_rows() {
  std::vector<Row> rows;
  for (auto* of_family : {median_rows, noise_rows, triangle_wave_rows, sampling_rows, linear_ramp_rows}) {
    for (const Row& row : of_family()) rows.push_back(row);
  }
  return rows;
}

}  // namespace bench
