// Median filters: long masks, streams in blocks, where a NaN spreads and where it does not, and allocations that fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <tuple>

#include "generic/every_function.h"
#include "generic/services.h"
#include "reference/median.h"

namespace zivks_test {
namespace {

template <class T>
using Filter = ZIVKStatus (*)(const T*, T*, int32_t, int32_t, const T*, T*, ZIVKFilterMedianPolicy*);

constexpr auto kFilters =
    std::make_tuple(ZIVKS_FilterMedian_8u, ZIVKS_FilterMedian_16s, ZIVKS_FilterMedian_32s,
                    ZIVKS_FilterMedian_32f, ZIVKS_FilterMedian_64f);
template <class T>
constexpr auto kFilter = std::get<Filter<T>>(kFilters);

// Filters `samples`, of which the first mask - 1 are the delay line. Without that they have to be copies of the sample
// that follows them, which stand for an absent line.
template <class T>
std::vector<T> medians_of(const std::vector<T>& samples, size_t mask, bool with_line = true) {
  std::vector<T> medians(samples.size() - (mask - 1)), window((mask + 15) / 16 * 16);
  EXPECT_EQ(kFilter<T>(samples.data() + mask - 1, medians.data(), static_cast<int32_t>(medians.size()),
                       static_cast<int32_t>(mask), with_line ? samples.data() : nullptr, nullptr,
                       reinterpret_cast<ZIVKFilterMedianPolicy*>(window.data())),
            ZIVK_STS_NO_ERR);
  return medians;
}

template <class T>
class MedianFilter : public testing::Test {
 protected:
  // Samples with many ties; among floats one in `spacing` is a NaN, and as many are zeros of either sign.
  std::vector<T> samples(size_t count, unsigned spacing) {
    std::vector<T> all(count);
    for (T& sample : all) {
      sample = static_cast<T>(generator_() % 199);
      if constexpr (std::is_floating_point_v<T>) {
        const T special[] = {std::numeric_limits<T>::quiet_NaN(), T{0.0}, T{-0.0}};
        sample -= 99;
        const auto draw = generator_() % spacing;
        if (draw < 3) sample = special[draw];
      }
    }
    return all;
  }

 private:
  std::mt19937 generator_;
};

using Samples = testing::Types<uint8_t, int16_t, int32_t, float, double>;
TYPED_TEST_SUITE(MedianFilter, Samples);

// Masks of all the ways in which windows are halved, and too long for that.
TYPED_TEST(MedianFilter, FindsMediansOfLongMasks) {
  std::vector<size_t> masks = {101, 119, 129, 131, 201};
  for (size_t mask = 11; mask <= 73; mask += 2) masks.push_back(mask);
  for (size_t mask : masks) {
    for (size_t count : {size_t{3}, 2 * mask, size_t{601}}) {
      for (unsigned spacing : {400U, 1U << 30}) {
        const std::vector<TypeParam> samples = this->samples(mask - 1 + mask + count, spacing);
        const std::vector<TypeParam> expected = reference_medians(samples, mask),
                                     medians = medians_of(samples, mask);
        ASSERT_EQ(std::memcmp(medians.data(), expected.data(), medians.size() * sizeof(TypeParam)), 0)
            << "mask " << mask << ", length " << medians.size() << ", spacing " << spacing;
      }
    }
  }
}

template <class T>
T median_at(const std::vector<T>& samples, size_t i, size_t mask) {
  const auto first = samples.begin() + static_cast<std::ptrdiff_t>(i);
  std::vector<T> window(first, first + static_cast<std::ptrdiff_t>(mask));
  std::sort(window.begin(), window.end());
  return window[mask / 2];
}

// Masks up to the longest ones whose samples are ranked, over several stretches of ranks, and the next longer ones. The
// samples climb, so that one median is not like another.
TYPED_TEST(MedianFilter, FindsMediansInSeveralStretchesOfRanks) {
  constexpr size_t kCount = 2500;
  for (size_t mask : std::initializer_list<size_t>{343, 453, 455, 457, 601, 681, 683, 909, 911, 1091, 1093}) {
    std::vector<TypeParam> samples = this->samples(mask - 1 + kCount, 1U << 30);
    for (size_t i = 0; i < samples.size(); ++i) {
      const auto noise = static_cast<size_t>(std::fabs(static_cast<double>(samples[i])));
      samples[i] = static_cast<TypeParam>(sizeof(TypeParam) == 1 ? i / 20 + noise / 4 : i + noise);
    }
    const std::vector<TypeParam> medians = medians_of(samples, mask);
    for (size_t i = 0; i < kCount; i += 13) {
      ASSERT_EQ(medians[i], median_at(samples, i, mask)) << "mask " << mask << ", median " << i;
    }
  }
}

// Masks too long for any table, in all three parts of an array.
TYPED_TEST(MedianFilter, FindsMediansOfMasksLongerThanAnyTable) {
  // From 4096 samples on those of 16 bits are counted.
  constexpr size_t kMask = std::is_same_v<TypeParam, int16_t> ? 4097 : 2501;
  const std::vector<TypeParam> samples = this->samples(2 * kMask, 1U << 30);
  const std::vector<TypeParam> medians = medians_of(samples, kMask);
  for (size_t i : {size_t{0}, size_t{1}, kMask / 2, kMask - 2, kMask - 1, kMask}) {
    EXPECT_EQ(medians[i], median_at(samples, i, kMask)) << i;
  }
}

TYPED_TEST(MedianFilter, JoinsBlocksOfAStreamByOneDelayLine) {
  for (size_t mask : {size_t{3}, size_t{9}, size_t{21}}) {
    std::vector<TypeParam> samples = this->samples(mask - 1 + 200, 1U << 30), window((mask + 15) / 16 * 16),
                           line(mask - 1);
    std::fill_n(samples.begin(), mask - 1, samples[mask - 1]);
    std::vector<TypeParam> medians(200);
    const TypeParam* incoming = nullptr;
    for (size_t start = 0; start < medians.size(); start += 25) {
      EXPECT_EQ(
          kFilter<TypeParam>(&samples[mask - 1 + start], &medians[start], 25, static_cast<int32_t>(mask),
                             incoming, line.data(), reinterpret_cast<ZIVKFilterMedianPolicy*>(window.data())),
          ZIVK_STS_NO_ERR);
      incoming = line.data();
    }
    EXPECT_EQ(medians, medians_of(samples, mask, false)) << mask;
  }
}

template <class T>
void expect_nan_at(const std::vector<T>& medians, const std::vector<size_t>& places) {
  for (size_t i = 0; i < medians.size(); ++i) {
    EXPECT_EQ(std::isnan(medians[i]), std::find(places.begin(), places.end(), i) != places.end()) << i;
  }
}

TEST(MedianOfFloats, SpreadsNanInNetworksOnly) {
  std::vector<float> samples(102, 1.0F);
  samples[2 + 50] = NAN;
  expect_nan_at(medians_of(samples, 3), {50, 51, 52});
  // Three windows within the array are no block, so that all five are sorted. No sample is greater than another, so the
  // NaN keeps its place, and is in the middle of one window.
  samples.resize(7);
  samples[2 + 3] = NAN;
  expect_nan_at(medians_of(samples, 3), {4});
}

TEST(MedianOfFloats, PutsNegativeZeroBelowPositiveZeroInNetworks) {
  std::vector<double> samples(2 + 64);
  for (size_t i = 0; i < samples.size(); i += 2) samples[i] = -0.0;
  const std::vector<double> medians = medians_of(samples, 3);
  for (size_t i = 2; i < 62; ++i) EXPECT_EQ(std::signbit(medians[i]), i % 2 == 0) << i;
}

TEST(MedianFilterHandle, TakesTheSamplesOfAMaskInWholeSixteens) {
  struct Limit {
    int32_t mask;
    ZIVKDataType type;
    ZIVKStatus status;
    int32_t bytes;  // 0: nothing is asked for
  };
  services.memory = nullptr;
  for (const Limit& limit :
       {Limit{2147483631, ZIVK_DT_8U, ZIVK_STS_MALLOC_ERR, 0x7FFFFFF0},
        Limit{0x3FFFFFF7, ZIVK_DT_16S, ZIVK_STS_MALLOC_ERR, 0x7FFFFFF0},
        Limit{0x1FFFFFFB, ZIVK_DT_32F, ZIVK_STS_MALLOC_ERR, 0x7FFFFFF0},
        Limit{0xFFFFFFD, ZIVK_DT_64F, ZIVK_STS_MALLOC_ERR, 0x7FFFFFF0},
        Limit{0x3FFFFFF8, ZIVK_DT_16S, ZIVK_STS_MASK_SIZE_ERR, 0},
        Limit{0x1FFFFFFC, ZIVK_DT_32S, ZIVK_STS_MASK_SIZE_ERR, 0},
        Limit{0xFFFFFFE, ZIVK_DT_64F, ZIVK_STS_MASK_SIZE_ERR, 0},
        Limit{0x7FFFFFFF, ZIVK_DT_16U, ZIVK_STS_DATA_TYPE_ERR, 0},
        Limit{0, ZIVK_DT_16U, ZIVK_STS_MASK_SIZE_ERR, 0}, Limit{4, ZIVK_DT_64F, ZIVK_STS_MALLOC_ERR, 32},
        Limit{17, ZIVK_DT_8U, ZIVK_STS_MALLOC_ERR, 32}}) {
    ZIVKFilterMedianPolicy* policy = nullptr;
    services.size = 0;
    EXPECT_EQ(ZIVKS_FilterMedianInit(limit.mask, limit.type, &policy), limit.status) << limit.mask;
    EXPECT_EQ(services.size, limit.bytes) << limit.mask;
    EXPECT_EQ(policy, nullptr);
  }
  services.memory.reset();
}

// The copy that a filter in place works from.
TEST(MedianFilterInPlace, LeavesSamplesWithoutMemoryForACopy) {
  services.memory = nullptr;
  double samples[] = {3, 1, 2}, line[] = {7, 7}, window[4];
  auto* const policy = reinterpret_cast<ZIVKFilterMedianPolicy*>(window);
  for (const auto& [len, asked] : {std::pair(3, 24), std::pair(1 << 28, 0)}) {
    services.size = 0;
    services.freed.reset();
    EXPECT_EQ(ZIVKS_FilterMedian_64f_I(samples, len, 3, nullptr, line, policy), ZIVK_STS_NULL_PTR_ERR);
    EXPECT_EQ(services.size, asked);
    EXPECT_EQ(services.freed, nullptr);
  }
  EXPECT_EQ(samples[0], 3);
  EXPECT_EQ(line[0], 7);
  services.memory.reset();
}

}  // namespace
}  // namespace zivks_test
