// Arrays beyond the caches, and beyond what 32 bits can count in bytes.
#include <gtest/gtest.h>
#include <zivks.h>

#include <cstring>
#include <vector>

#include "repeated_samples.h"

namespace zivks_test {
namespace {

// Fills of this size may go past the caches, by a loop that treats misaligned ends separately.
template <class T>
void expect_fill(ZIVKStatus (*set)(T, T*, int32_t), T value) {
  constexpr size_t kBytes = size_t{50} << 20, kMargin = 64;
  std::vector<unsigned char> memory(kBytes + 2 * kMargin);
  for (size_t misalignment : {0U, 1U, 8U, 16U, 17U}) {
    for (size_t length : {kBytes / sizeof(T), kBytes / sizeof(T) - 3}) {
      std::memset(memory.data(), 0xA5, memory.size());
      unsigned char* const first = memory.data() + misalignment;
      ASSERT_EQ(set(value, reinterpret_cast<T*>(first), static_cast<int32_t>(length)), ZIVK_STS_NO_ERR);
      // All elements equal the first one if the array equals itself moved by an element.
      ASSERT_EQ(std::memcmp(first, &value, sizeof(T)), 0);
      ASSERT_EQ(std::memcmp(first, first + sizeof(T), (length - 1) * sizeof(T)), 0)
          << "misalignment " << misalignment << ", length " << length;
      for (size_t i = 0; i < misalignment; ++i) ASSERT_EQ(memory[i], 0xA5);
      for (size_t i = misalignment + length * sizeof(T); i < memory.size(); ++i) ASSERT_EQ(memory[i], 0xA5);
    }
  }
}

TEST(LargeArrays, Fill) {
  expect_fill<int16_t>(ZIVKS_Set_16s, 12345);
  expect_fill<float>(ZIVKS_Set_32f, 1.1F);
  expect_fill<ZIVK32fc>(ZIVKS_Set_32fc, {1.1F, -2.2F});
  expect_fill<ZIVK64sc>(ZIVKS_Set_64sc, {123456789, -987654321});
}

#ifdef __x86_64__  // too many bytes for an emulator

TEST(LargeArrays, BytesAreCountedInMoreThan32Bits) {
  // 4 GiB and three elements: as a number of 32 bits that would be three elements.
  constexpr size_t kElements = (size_t{1} << 28) + 3;
  using Complex = RepeatedSamples<ZIVK64fc>;
  const Complex source(kElements), destination(kElements);
  for (size_t i = 0; i < Complex::kChunk; ++i) {
    const auto part = static_cast<double>(i);
    source.data()[i] = {part, part + 0.5};
    destination.data()[i] = {0, 0};
  }
  const auto expect_all = [&](const char* what, double im_sign, double offset) {
    for (size_t i = 0; i < Complex::kChunk; ++i) {
      const auto part = static_cast<double>(i);
      ASSERT_EQ(destination.data()[i].re, part + offset) << what << ", " << i;
      ASSERT_EQ(destination.data()[i].im, im_sign * (part + 0.5) + offset) << what << ", " << i;
    }
  };
  const auto length = static_cast<int32_t>(kElements);
  ASSERT_EQ(ZIVKS_Copy_64fc(source.data(), destination.data(), length), ZIVK_STS_NO_ERR);
  expect_all("copy", 1, 0);
  ASSERT_EQ(ZIVKS_Conj_64fc(source.data(), destination.data(), length), ZIVK_STS_NO_ERR);
  expect_all("conjugate", -1, 0);
  ASSERT_EQ(ZIVKS_AddC_64fc(source.data(), {2, 2}, destination.data(), length), ZIVK_STS_NO_ERR);
  expect_all("sum", 1, 2);
  ASSERT_EQ(ZIVKS_Set_64fc({3, 4}, destination.data(), length), ZIVK_STS_NO_ERR);
  for (size_t i = 0; i < Complex::kChunk; ++i) {
    ASSERT_EQ(destination.data()[i].re, 3);
    ASSERT_EQ(destination.data()[i].im, 4);
  }
  double largest = 0;
  const auto* const parts = reinterpret_cast<const double*>(source.data());
  ASSERT_EQ(ZIVKS_Max_64f(parts, 2 * length, &largest), ZIVK_STS_NO_ERR);
  EXPECT_EQ(largest, static_cast<double>(Complex::kChunk) - 0.5);
}

TEST(LargeArrays, BytesOfPackedSamplesAreCountedInMoreThan32Bits) {
  struct Sample {
    uint8_t bytes[3];
  };
  // 4 GiB and some samples. 2^32 is no multiple of three: a count of bytes that wraps shows in the values.
  constexpr size_t kSamples = (size_t{1} << 32) / sizeof(Sample) + 1000;
  using Samples = RepeatedSamples<Sample>;
  const Samples samples(kSamples);
  const RepeatedSamples<uint32_t> values(kSamples);
  const auto sample_at = [](size_t i) { return static_cast<uint32_t>(i * 15); };  // up to 24 bits
  for (size_t i = 0; i < Samples::kChunk; ++i) {
    const uint32_t sample = sample_at(i);
    for (size_t byte = 0; byte < sizeof(Sample); ++byte)
      samples.data()[i].bytes[byte] = static_cast<uint8_t>(sample >> (8 * byte));
    values.data()[i] = 0;
  }
  ASSERT_EQ(ZIVKS_Convert_24u32u(samples.data()->bytes, values.data(), static_cast<int32_t>(kSamples)),
            ZIVK_STS_NO_ERR);
  for (size_t i = 0; i < Samples::kChunk; ++i) ASSERT_EQ(values.data()[i], sample_at(i)) << i;
}

#endif

}  // namespace
}  // namespace zivks_test
