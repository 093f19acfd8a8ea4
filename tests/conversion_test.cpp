// Conversions that round: values around every bound and tie, in blocks and in tails, at scales that bring
// them there.
#include <algorithm>

#include "reference/against_reference.h"

namespace zivks_test {
namespace {

template <class T>
std::vector<T> values_that_decide_rounding() {
  using Limits = std::numeric_limits<T>;
  std::vector<T> values;
  if constexpr (std::is_floating_point_v<T>) {
    for (int digits : {0, 1, 2, 7, 8, 15, 16, 23, 24, 31, 32, 52, 53, 62, 63, 64}) {
      for (double offset : {-1.5, -1.0, -0.75, -0.5, -0.25, 0.0, 0.25, 0.5, 0.75, 1.0, 1.5}) {
        const T value = static_cast<T>(std::ldexp(1.0, digits) + offset);
        for (T near : {value, std::nextafter(value, T{0}), std::nextafter(value, 2 * value)}) {
          values.insert(values.end(), {near, -near});
        }
      }
    }
    for (T value : {std::nextafter(T{0.5}, T{0}), Limits::max(), Limits::denorm_min(), Limits::infinity()}) {
      values.insert(values.end(), {value, -value, T{0} * value});
    }
    for (bool quiet : {true, false}) values.push_back(nan_with_payload<T>(quiet, quiet));
  } else {
    // Halves and their neighbours at every bit.
    for (int bit = 0; bit < 64; ++bit) {
      for (unsigned high : {0b01U, 0b10U, 0b11U, 0b101U, 0b111U}) {
        for (int offset : {-2, -1, 0, 1, 2}) {
          const uint64_t value = (uint64_t{high} << bit) + static_cast<uint64_t>(offset);
          values.insert(values.end(), {static_cast<T>(value), static_cast<T>(~value + 1)});
        }
      }
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
  }
  return values;
}

struct Samples {
  Bytes bytes;
  size_t count;
};

template <class T>
Samples samples_times(double factor) {
  std::vector<T> values = values_that_decide_rounding<T>();
  if constexpr (std::is_floating_point_v<T>) {
    for (T& value : values) value *= static_cast<T>(factor);
  }
  Samples samples = {Bytes(values.size() * sizeof(T)), values.size()};
  std::memcpy(samples.bytes.data(), values.data(), samples.bytes.size());
  return samples;
}

// What the function reads; floats are multiplied by the scale, so that the scaled values are those listed
// above.
Samples samples_for(const Function& function, double scale) {
  const std::type_info& type = *function.arguments[0].element->type;
  if (type == typeid(float)) return samples_times<float>(scale);
  if (type == typeid(double)) return samples_times<double>(scale);
  if (type == typeid(uint8_t)) return samples_times<uint8_t>(scale);
  if (type == typeid(int16_t)) return samples_times<int16_t>(scale);
  if (type == typeid(int32_t)) return samples_times<int32_t>(scale);
  if (type == typeid(uint32_t)) return samples_times<uint32_t>(scale);
  return samples_times<int64_t>(scale);
}

std::vector<const Function*> rounding_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    const std::string& family = function->family;
    const bool rounds =
        family == "FloatToInteger" || family == "NarrowingConversion" || family == "PackedSamples";
    if (rounds && function->arguments.back().role == Role::kScale) list.push_back(function);
  }
  return list;
}

class RoundedConversion : public AgainstReference {
 protected:
  // All samples in arrays of `length`, so that each stands in a block in one call and in a tail in another.
  void expect_agreement(const Samples& samples, size_t length, size_t mode, double scale) {
    Operands operands = random_operands(function(), static_cast<int32_t>(length), mode, Flavour::kFinite);
    const size_t bytes = operands.arrays[0].size();
    operands.slots.back() = Slot::of(scale);
    for (size_t start = 0;; start += bytes) {
      start = std::min(start, samples.bytes.size() - bytes);
      std::memcpy(operands.arrays[0].data(), &samples.bytes[start], bytes);
      ASSERT_EQ(difference_from_reference(operands), "")
          << "length " << length << ", mode " << mode << ", scale " << scale << ", first byte " << start;
      if (start + bytes == samples.bytes.size()) return;
    }
  }
};

TEST_P(RoundedConversion, IsExactAroundBoundsAndTies) {
  const bool has_mode = function().arguments[3].role == Role::kRoundMode;
  for (int exponent = -70; exponent <= 70; ++exponent) {
    const double scale = std::ldexp(1.0, exponent);
    const Samples samples = samples_for(function(), scale);
    for (size_t mode = 0; mode < (has_mode ? 3 : 1); ++mode) {
      expect_agreement(samples, samples.count, mode, scale);
      if (exponent < -3 || exponent > 3) continue;
      for (size_t length :
           {size_t{1}, function().block - 1, function().block + 1, 2 * function().block + 3}) {
        expect_agreement(samples, length, mode, scale);
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(RoundedConversion, rounding_functions());

// One element alone, which makes a tail, and in the first place of a block.
template <class T>
struct Outcome {
  T in_tail, in_block;
};
template <class F, class T>
Outcome<T> convert(ZIVKStatus (*function)(const F*, T*, int32_t, ZIVKRoundMode, double), F value,
                   ZIVKRoundMode mode, double scale = 1) {
  const std::vector<F> samples(16, value);
  T alone = 77, block[16] = {77};
  EXPECT_EQ(function(&value, &alone, 1, mode, scale), ZIVK_STS_NO_ERR);
  EXPECT_EQ(function(samples.data(), block, 16, mode, scale), ZIVK_STS_NO_ERR);
  return {alone, block[0]};
}
#define EXPECT_CONVERSION(tail, block, ...)             \
  {                                                     \
    const auto outcome = convert(__VA_ARGS__);          \
    EXPECT_EQ(outcome.in_tail, tail) << #__VA_ARGS__;   \
    EXPECT_EQ(outcome.in_block, block) << #__VA_ARGS__; \
  }

TEST(FloatToInteger, RoundsTiesAsTheModeTells) {
  struct {
    float value;
    int16_t zero, near, away;
  } const rows[] = {{2.5F, 2, 2, 3}, {3.5F, 3, 4, 4}, {-2.5F, -2, -2, -3}, {-0.5F, 0, 0, -1}};
  for (const auto& row : rows) {
    EXPECT_CONVERSION(row.zero, row.zero, ZIVKS_Convert_32f16s_S, row.value, ZIVK_RND_ZERO);
    EXPECT_CONVERSION(row.near, row.near, ZIVKS_Convert_32f16s_S, row.value, ZIVK_RND_NEAR);
    EXPECT_CONVERSION(row.away, row.away, ZIVKS_Convert_32f16s_S, row.value, ZIVK_RND_AWAY);
  }
  EXPECT_CONVERSION(254, 254, ZIVKS_Convert_32f8u_S, 254.5F, ZIVK_RND_NEAR);
  EXPECT_CONVERSION(255, 255, ZIVKS_Convert_32f8u_S, 254.5F, ZIVK_RND_AWAY);
  EXPECT_CONVERSION(-128, -128, ZIVKS_Convert_64f8s_S, -128.4, ZIVK_RND_AWAY);
  EXPECT_CONVERSION(2147483647, 2147483647, ZIVKS_Convert_64f32s_S, 2147483646.6, ZIVK_RND_NEAR);
}

TEST(FloatToInteger, TailsOfFloat64AddOneHalf) {
  const double below_half = 0.49999999999999994, odd = 0x1p52 + 1;
  EXPECT_CONVERSION(1, 0, ZIVKS_Convert_64f8u_S, below_half, ZIVK_RND_NEAR);
  EXPECT_CONVERSION(-1, 0, ZIVKS_Convert_64f32s_S, -below_half, ZIVK_RND_NEAR);
  EXPECT_CONVERSION(0, 0, ZIVKS_Convert_64f32s_S, below_half, ZIVK_RND_AWAY);
  EXPECT_CONVERSION((int64_t{1} << 52) + 2, (int64_t{1} << 52) + 1, ZIVKS_Convert_64f64s_S, odd,
                    ZIVK_RND_NEAR);
  EXPECT_CONVERSION(-(int64_t{1} << 52) - 2, -(int64_t{1} << 52) - 1, ZIVKS_Convert_64f64s_S, -odd,
                    ZIVK_RND_NEAR);
  EXPECT_CONVERSION((int64_t{1} << 52) + 1, (int64_t{1} << 52) + 1, ZIVKS_Convert_64f64s_S, odd,
                    ZIVK_RND_AWAY);
}

TEST(NarrowingConversion, TakesEveryRoundingModeFrom8uTo8s) {
  for (ZIVKRoundMode mode :
       {ZIVKRoundMode{ZIVK_RND_AWAY}, 3, 7, -1, std::numeric_limits<ZIVKRoundMode>::min()}) {
    EXPECT_CONVERSION(3, 3, ZIVKS_Convert_8u8s_S, uint8_t{5}, mode, 2);
    EXPECT_CONVERSION(127, 127, ZIVKS_Convert_8u8s_S, uint8_t{255}, mode, 2);
    EXPECT_CONVERSION(5, 5, ZIVKS_Convert_8u8s_S, uint8_t{5}, mode, 1);
    EXPECT_CONVERSION(124, 124, ZIVKS_Convert_8u8s_S, uint8_t{31}, mode, 0.25);
    EXPECT_CONVERSION(127, 127, ZIVKS_Convert_8u8s_S, uint8_t{32}, mode, 0.25);
  }
  EXPECT_CONVERSION(2, 2, ZIVKS_Convert_8u8s_S, uint8_t{5}, ZIVK_RND_NEAR, 2);
}

TEST(NarrowingConversion, BlocksThatGrowBeyondMeasureShiftByTheLowestByte) {
  EXPECT_CONVERSION(127, 1, ZIVKS_Convert_8u8s_S, uint8_t{128}, ZIVK_RND_ZERO, std::ldexp(1, -(256 - 8)));
  EXPECT_CONVERSION(127, 0, ZIVKS_Convert_8u8s_S, uint8_t{127}, ZIVK_RND_ZERO, std::ldexp(1, -(256 - 8)));
  EXPECT_CONVERSION(127, 5, ZIVKS_Convert_8u8s_S, uint8_t{5}, ZIVK_RND_ZERO, std::ldexp(1, -256));
  EXPECT_CONVERSION(0, 0, ZIVKS_Convert_8u8s_S, uint8_t{0}, ZIVK_RND_ZERO, std::ldexp(1, -128));
}

TEST(NarrowingConversion, TailFrom64sTo32sAddsOneHalf) {
  EXPECT_CONVERSION(1, 0, ZIVKS_Convert_64s32s_S, (int64_t{1} << 53) - 1, ZIVK_RND_NEAR, 0x1p54);
}

// Three bytes hold few enough values to try them all.
TEST(PackedSamples, ComeBackAsTheyWere) {
  constexpr int32_t kCount = 1 << 24;
  Bytes samples(3 * size_t{kCount}), back(samples.size());
  for (size_t i = 0; i < kCount; ++i) {
    for (size_t byte = 0; byte < 3; ++byte)
      samples[3 * i + byte] = static_cast<unsigned char>(i >> (8 * byte));
  }
  const auto expect_all = [&](auto unpack, auto pack, auto zero, int32_t highest) {
    using T = decltype(zero);
    std::vector<T> values(kCount);
    ASSERT_EQ(unpack(samples.data(), values.data(), kCount), ZIVK_STS_NO_ERR);
    for (int32_t i = 0; i < kCount; ++i) {
      ASSERT_EQ(values[static_cast<size_t>(i)], static_cast<T>(i > highest ? i - kCount : i));
    }
    ASSERT_EQ(pack(values.data(), back.data(), kCount, 1), ZIVK_STS_NO_ERR);
    ASSERT_TRUE(samples == back);
  };
  expect_all(ZIVKS_Convert_24u32u, ZIVKS_Convert_32u24u_S, uint32_t{}, 0xFFFFFF);
  expect_all(ZIVKS_Convert_24s32s, ZIVKS_Convert_32s24s_S, int32_t{}, 0x7FFFFF);
  expect_all(ZIVKS_Convert_24u32f, ZIVKS_Convert_32f24u_S, float{}, 0xFFFFFF);
  expect_all(ZIVKS_Convert_24s32f, ZIVKS_Convert_32f24s_S, float{}, 0x7FFFFF);
}

// The first element of eight, which are a block, and the only one of an array, which is a tail.
template <class T>
void expect_sample(ZIVKStatus (*pack)(const T*, uint8_t*, int32_t, double), T value, double scale,
                   uint32_t in_block, uint32_t in_tail) {
  const std::vector<T> values(8, value);
  for (int32_t length : {8, 1}) {
    uint8_t samples[24];
    ASSERT_EQ(pack(values.data(), samples, length, scale), ZIVK_STS_NO_ERR);
    EXPECT_EQ(samples[0] + 256U * samples[1] + 65536U * samples[2], length == 8 ? in_block : in_tail)
        << value << " / " << scale;
  }
}

TEST(PackedSamples, RoundToNearestAndSaturate) {
  struct {
    float value;
    uint32_t signed_sample, unsigned_sample;
  } const rows[] = {{8388607, 0x7FFFFF, 0x7FFFFF},
                    {8388607.5F, 0x7FFFFF, 0x800000},
                    {1e30F, 0x7FFFFF, 0xFFFFFF},
                    {-8388608, 0x800000, 0},
                    {-1e30F, 0x800000, 0},
                    {0.5F, 0, 0},
                    {1.5F, 2, 2},
                    {-1.5F, 0xFFFFFE, 0},
                    {std::nanf(""), 0, 0}};
  for (const auto& row : rows) {
    expect_sample(ZIVKS_Convert_32f24s_S, row.value, 1, row.signed_sample, row.signed_sample);
    expect_sample(ZIVKS_Convert_32f24u_S, row.value, 1, row.unsigned_sample, row.unsigned_sample);
  }
  expect_sample<int32_t>(ZIVKS_Convert_32s24s_S, INT32_MAX, 1, 0x7FFFFF, 0x7FFFFF);
  expect_sample<int32_t>(ZIVKS_Convert_32s24s_S, 3, 2, 2, 2);
  expect_sample<int32_t>(ZIVKS_Convert_32s24s_S, 5, 2, 2, 2);
  expect_sample<uint32_t>(ZIVKS_Convert_32u24u_S, 8388608, 0.5, 0xFFFFFF, 0xFFFFFF);
  expect_sample<uint32_t>(ZIVKS_Convert_32u24u_S, 8388607, 0.5, 0xFFFFFE, 0xFFFFFE);
}

TEST(PackedSamples, BlocksThatGrowBeyondMeasureShiftByTheLowestByte) {
  expect_sample<uint32_t>(ZIVKS_Convert_32u24u_S, 128, std::ldexp(1, -(256 - 8)), 1, 0xFFFFFF);
  expect_sample<uint32_t>(ZIVKS_Convert_32u24u_S, 127, std::ldexp(1, -(256 - 8)), 0, 0xFFFFFF);
  expect_sample<int32_t>(ZIVKS_Convert_32s24s_S, -129, std::ldexp(1, -(256 - 8)), 0xFFFFFF, 0x800000);
  expect_sample<int32_t>(ZIVKS_Convert_32s24s_S, 5, std::ldexp(1, -256), 5, 0x7FFFFF);
  expect_sample<int32_t>(ZIVKS_Convert_32s24s_S, 0, std::ldexp(1, -128), 0, 0);
}

}  // namespace
}  // namespace zivks_test
