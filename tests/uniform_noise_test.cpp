// Uniform noise: where blocks and tails differ, and what a call leaves of the C library's generator.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "generic/values.h"
#include "zivks.h"

namespace zivks_test {
namespace {

TEST(UniformNoise, StartsAnewAndLeavesTheGeneratorBehindItsDraws) {
  const ZIVKRandUniformState_32f record = {-1, 1, 2026};
  for (int32_t length : {1, 7, 8, 64, 65, 1000}) {
    std::vector<float> first(static_cast<size_t>(length)), second(first);
    ASSERT_EQ(ZIVKS_RandUniform_32f(first.data(), length, &record), ZIVK_STS_NO_ERR);
    const double next = drand48();
    ASSERT_EQ(ZIVKS_RandUniform_32f(second.data(), length, &record), ZIVK_STS_NO_ERR);
    EXPECT_EQ(first, second);
    srand48(2026);
    for (int32_t i = 0; i < length; ++i) drand48();
    EXPECT_EQ(next, drand48()) << length;
  }
}

// The first draw of this seed is 1 - 2^-25.2, which float32 rounds to 1.
constexpr uint32_t kSeedOfOne = 34469077;

TEST(UniformNoise, ReachesTheHighBoundInBlocksOnly) {
  srand48(kSeedOfOne);
  ASSERT_EQ(static_cast<float>(drand48()), 1.0F);
  const ZIVKRandUniformState_16s record = {-10, 10, kSeedOfOne};
  int16_t block[8], tail[7];
  ASSERT_EQ(ZIVKS_RandUniform_16s(block, 8, &record), ZIVK_STS_NO_ERR);
  ASSERT_EQ(ZIVKS_RandUniform_16s(tail, 7, &record), ZIVK_STS_NO_ERR);
  EXPECT_EQ(block[0], 10);
  EXPECT_EQ(tail[0], 9);
}

TEST(UniformNoise, TruncatesTowardZero) {
  const ZIVKRandUniformState_16s record = {-10, 10, 1};
  std::vector<int16_t> noise(20000);
  ASSERT_EQ(ZIVKS_RandUniform_16s(noise.data(), 20000, &record), ZIVK_STS_NO_ERR);
  EXPECT_GE(*std::min_element(noise.begin(), noise.end()), -10);
  EXPECT_LE(*std::max_element(noise.begin(), noise.end()), 10);
  EXPECT_NEAR(static_cast<double>(std::count(noise.begin(), noise.end(), 0)), 2000, 150);
  EXPECT_NEAR(static_cast<double>(std::count(noise.begin(), noise.end(), -1)), 1000, 150);
}

TEST(UniformNoise, TakesBoundsInAnyOrder) {
  const ZIVKRandUniformState_8u equal = {77, 77, 5}, falling = {200, 100, 5};
  uint8_t noise[100];
  ASSERT_EQ(ZIVKS_RandUniform_8u(noise, 100, &equal), ZIVK_STS_NO_ERR);
  EXPECT_EQ(std::count(noise, noise + 100, 77), 100);
  ASSERT_EQ(ZIVKS_RandUniform_8u(noise, 100, &falling), ZIVK_STS_NO_ERR);
  EXPECT_GE(*std::min_element(noise, noise + 100), 100);
  EXPECT_LE(*std::max_element(noise, noise + 100), 200);
}

}  // namespace
}  // namespace zivks_test
