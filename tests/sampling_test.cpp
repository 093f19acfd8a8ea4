// Sampling: examples by hand, streams in blocks, the longest outputs, and arrays beyond the caches.
#include <gtest/gtest.h>
#include <zivks.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

TEST(Sampling, Examples) {
  const float two[] = {1, 2};
  int32_t len = -1, phase = 1;
  std::vector<float> dst(6, 9.0F);
  EXPECT_EQ(ZIVKS_SampleUp_32f(two, 2, dst.data(), &len, 3, &phase), ZIVK_STS_NO_ERR);
  EXPECT_EQ(dst, (std::vector<float>{0, 1, 0, 0, 2, 0}));
  EXPECT_EQ(len, 6);

  const float seven[] = {0, 1, 2, 3, 4, 5, 6};
  dst.assign(6, 9.0F);
  EXPECT_EQ(ZIVKS_SampleDown_32f(seven, 7, dst.data(), &len, 3, &phase), ZIVK_STS_NO_ERR);
  EXPECT_EQ(dst, (std::vector<float>{1, 4, 9, 9, 9, 9}));
  EXPECT_EQ(len, 2);
  EXPECT_EQ(phase, 0);

  phase = 3;
  EXPECT_EQ(ZIVKS_SampleDown_32f(seven, 1, dst.data(), &len, 5, &phase), ZIVK_STS_NO_ERR);
  EXPECT_EQ(len, 0);
  EXPECT_EQ(phase, 2);
}

// The factor whose product just fits is refused, before anything is written. The largest factor that is not would make
// outputs of some GiB.
TEST(Sampling, UpRefusesTheFactorThatJustFits) {
  const int16_t src[1] = {1};
  int16_t dst[1];
  int32_t len = -1;
  const int32_t phase = 0;
  for (const auto& [src_len, factor] :
       {std::pair(1, INT32_MAX), {2, 1073741823}, {46340, 46341}, {1073741824, 1}}) {
    EXPECT_EQ(ZIVKS_SampleUp_16s(src, src_len, dst, &len, factor, &phase), ZIVK_STS_SAMPLE_FACTOR_ERR);
  }
  EXPECT_EQ(len, -1);
}

// The sums that make up length and phase are beyond 32 bits.
TEST(Sampling, DownByTheLargestFactor) {
  const double src[] = {1, 2, 3};
  double dst[1] = {};
  int32_t len = -1, phase = INT32_MAX - 1;
  EXPECT_EQ(ZIVKS_SampleDown_64f(src, 3, dst, &len, INT32_MAX, &phase), ZIVK_STS_NO_ERR);
  EXPECT_EQ(len, 0);
  EXPECT_EQ(phase, INT32_MAX - 4);
  phase = 2;
  EXPECT_EQ(ZIVKS_SampleDown_64f(src, 3, dst, &len, INT32_MAX, &phase), ZIVK_STS_NO_ERR);
  EXPECT_EQ(len, 1);
  EXPECT_EQ(dst[0], 3);
  EXPECT_EQ(phase, INT32_MAX - 1);
}

TEST(Sampling, DownInBlocksIsDownInOnePiece) {
  std::vector<int16_t> src(1000);
  for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<int16_t>(i);
  for (int32_t factor : {2, 3, 4, 7, 150}) {
    std::vector<int16_t> dst(src.size());
    int32_t total = 0, phase = factor - 1;
    for (size_t begin = 0, block = 1; begin < src.size(); begin += block, block = block * 7 % 101) {
      block = std::min(block, src.size() - begin);
      int32_t count;
      ASSERT_EQ(ZIVKS_SampleDown_16s(&src[begin], static_cast<int32_t>(block),
                                     &dst[static_cast<size_t>(total)], &count, factor, &phase),
                ZIVK_STS_NO_ERR);
      total += count;
    }
    ASSERT_EQ(total, 1000 / factor);
    for (int32_t k = 0; k < total; ++k) ASSERT_EQ(dst[static_cast<size_t>(k)], factor - 1 + k * factor);
  }
}

// Long outputs may be stored past the caches.
TEST(Sampling, UpBeyondTheCaches) {
  constexpr int32_t kLen = 4000003, kFactor = 4;
  std::vector<float> src(kLen, 7.0F), dst(size_t{kLen} * kFactor + 1, 9.0F);
  for (size_t misaligned : {0U, 1U}) {
    int32_t len, phase = 3;
    ASSERT_EQ(ZIVKS_SampleUp_32f(src.data(), kLen, &dst[misaligned], &len, kFactor, &phase), ZIVK_STS_NO_ERR);
    for (int32_t i = 0; i < len; ++i) {
      ASSERT_EQ(dst[misaligned + static_cast<size_t>(i)], i % kFactor == phase ? 7.0F : 0.0F) << i;
    }
  }
}

}  // namespace
