// Multiply-accumulate of complex numbers over a factor, signs of zero, and scaled sums around ties.
#include "reference/multiply_accumulate.h"

#include <limits>
#include <vector>

#include "reference/against_reference.h"

namespace zivks_test {
namespace {

template <class C>
std::vector<C> random_numbers(uint64_t seed, size_t len) {
  Random random(seed);
  std::vector<C> numbers(len);
  for (C& number : numbers) {
    for (PartOf<C>* part : {&number.re, &number.im}) {
      *part = static_cast<PartOf<C>>(std::ldexp(static_cast<double>(random.next() >> 11), -52) - 1);
    }
  }
  return numbers;
}

template <class C, class AddProduct>
void expect_block_and_tail_on_a_factor(AddProduct add_product) {
  for (size_t len = 1; len <= 40; ++len) {
    for (size_t shared = 0; shared <= 2; ++shared) {  // the first factor, the second, or both
      std::vector<C> sum = random_numbers<C>(len, len), expected = sum;
      const std::vector<C> factor = random_numbers<C>(len + 100, len);
      const auto either = [&](size_t index, std::vector<C>& array) {
        return index == shared || shared == 2 ? array.data() : factor.data();
      };
      ASSERT_EQ(add_product(either(0, sum), either(1, sum), sum.data(), static_cast<int32_t>(len)),
                ZIVK_STS_NO_ERR);
      reference_add_product(either(0, expected), either(1, expected), expected.data(), len);
      ASSERT_EQ(std::memcmp(sum.data(), expected.data(), len * sizeof(C)), 0) << len << ", " << shared;
    }
  }
}

// The header promises no overlap but states the result of this one.
TEST(AddProduct, OfComplexNumbersOnAFactorUsesTheNewRealPartInTheTail) {
  expect_block_and_tail_on_a_factor<ZIVK32fc>(ZIVKS_AddProduct_32fc);
  expect_block_and_tail_on_a_factor<ZIVK64fc>(ZIVKS_AddProduct_64fc);
}

// Sums of zeros of both signs depend on what is negated, and on what is added to what.
template <class C, class AddProduct>
void expect_signs_of_zero(AddProduct add_product) {
  constexpr size_t kLen = 4096;  // four values in six places
  const PartOf<C> values[] = {0, static_cast<PartOf<C>>(-0.0), 1, -1};
  std::vector<C> factor[2], sum;
  for (size_t i = 0; i < kLen; ++i) {
    const auto number = [&](size_t shift) { return C{values[i >> shift & 3], values[i >> (shift + 2) & 3]}; };
    factor[0].push_back(number(0)), factor[1].push_back(number(4)), sum.push_back(number(8));
  }
  for (size_t step : {kLen, size_t{1}}) {  // in blocks, and in tails only
    std::vector<C> result = sum, expected = sum;
    for (size_t i = 0; i < kLen; i += step) {
      add_product(&factor[0][i], &factor[1][i], &result[i], static_cast<int32_t>(step));
      reference_add_product(&factor[0][i], &factor[1][i], &expected[i], step);
    }
    EXPECT_EQ(std::memcmp(result.data(), expected.data(), kLen * sizeof(C)), 0) << step;
  }
}

TEST(AddProduct, OfComplexNumbersGivesZerosTheirSigns) {
  expect_signs_of_zero<ZIVK32fc>(ZIVKS_AddProduct_32fc);
  expect_signs_of_zero<ZIVK64fc>(ZIVKS_AddProduct_64fc);
}

// A sum of so many bits is left to choose among many factors of type S.
template <class S>
constexpr int kSumBits = 2 * (std::numeric_limits<S>::digits - 1);

template <class S, class T>
struct Terms {
  S a, b;
  T c;
};
// Of sum = a * b + c.
template <class S, class T>
Terms<S, T> random_terms(int64_t sum, Random& random) {
  const auto least = static_cast<uint64_t>(std::abs(sum) >> (kSumBits<S> / 2)) + 1;  // makes b fit S
  const auto a = static_cast<int64_t>(least + random.below(std::numeric_limits<S>::max() - least));
  return {static_cast<S>(a), static_cast<S>(sum / a), static_cast<T>(sum % a)};
}

// Sums of any size that end in one half of the power of two that they are divided by, or in one beside it.
template <class S, class T>
void expect_agreement_around_ties(const char* name) {
  constexpr size_t kLen = 517;
  const Function& function = *find_function(name);
  const Reference& reference = *find_reference(function);
  Random random(1);
  for (int shift = -8; shift <= kSumBits<S> + 5; ++shift) {
    Operands operands = random_operands(function, kLen, 0);
    operands.slots.back() = Slot::of(std::ldexp(1.0, shift));
    for (size_t i = 0; i < kLen; ++i) {
      auto sum = static_cast<int64_t>(random.next() >> (64 - kSumBits<S>) >> random.below(kSumBits<S>));
      if (shift > 0 && shift < kSumBits<S>) sum = (sum >> shift << shift) + (int64_t{1} << (shift - 1));
      if (random.below(2) == 0) sum = -sum;
      const auto terms = random_terms<S, T>(sum + static_cast<int64_t>(random.below(3)) - 1, random);
      std::memcpy(&operands.arrays[0][i * sizeof(S)], &terms.a, sizeof(S));
      std::memcpy(&operands.arrays[1][i * sizeof(S)], &terms.b, sizeof(S));
      std::memcpy(&operands.arrays[2][i * sizeof(T)], &terms.c, sizeof(T));
    }
    Call call(function, operands);
    ASSERT_EQ(difference_of_call(function, call, reference(function, operands)), "")
        << name << ", scale 2^" << shift;
  }
}

TEST(AddProduct, ScaledIsExactAroundTies) {
  expect_agreement_around_ties<int16_t, int16_t>("ZIVKS_AddProduct_16s_S");
  expect_agreement_around_ties<int32_t, int32_t>("ZIVKS_AddProduct_32s_S");
  expect_agreement_around_ties<int16_t, int32_t>("ZIVKS_AddProduct_16s32s_S");
}

}  // namespace
}  // namespace zivks_test
