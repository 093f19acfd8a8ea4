// Every function against its reference: at every length, on all pairs of decisive values, over all scales.
#include <algorithm>
#include <cfenv>
#include <cmath>

#include "reference/against_reference.h"

namespace zivks_test {
namespace {

TEST_P(AgainstReference, AgreesAtEveryLength) {
  for (int32_t length : shape_lengths(function())) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      for (Flavour flavour : {Flavour::kFinite, Flavour::kFewSpecial, Flavour::kManySpecial}) {
        ASSERT_EQ(difference_from_reference(random_operands(function(), length, variant, flavour)), "")
            << "length " << length << ", variant " << variant << ", flavour " << static_cast<int>(flavour);
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(AgainstReference, array_functions());

// The decisive values of every input with those of every other, cut into arrays of `length`.
void expect_agreement_on_combinations(const Function& function, size_t variant, size_t length,
                                      const std::function<std::string(const Operands&)>& difference) {
  std::vector<size_t> arrays;
  size_t values = 1, constant = 0;
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    const Argument& argument = function.arguments[i];
    if (argument.is_read()) arrays.push_back(i);
    if (argument.role == Role::kConstant) {
      constant = i;
      values = argument.element->count_decisive(false);
    }
  }
  const bool exhaustive = arrays.size() == 1 && values == 1;
  size_t total = 1;
  for (size_t array : arrays) total *= function.arguments[array].element->count_decisive(exhaustive);
  const size_t step = length == 0 ? total : length;
  Operands all = random_operands(function, static_cast<int32_t>(total), variant, Flavour::kFinite);
  size_t period = 1;
  for (size_t array : arrays) {
    const ElementType& element = *function.arguments[array].element;
    element.fill_decisive(all.arrays[array].data(), total, period, exhaustive);
    period *= element.count_decisive(exhaustive);
  }
  for (size_t value = 0; value < values; ++value) {
    if (constant != 0 || function.arguments[0].role == Role::kConstant) {
      const ElementType& element = *function.arguments[constant].element;
      Bytes list(values * element.bytes);
      element.fill_decisive(list.data(), values, 1, false);
      std::memcpy(all.slots[constant].bytes, &list[value * element.bytes], element.bytes);
    }
    for (size_t start = 0; start < total; start += step) {
      Operands part{static_cast<int32_t>(std::min(step, total - start)), {}, all.slots};
      if (part.length < function.least_length()) continue;
      for (size_t i = 0; i < all.arrays.size(); ++i) {
        const Argument& argument = function.arguments[i];
        if (argument.role == Role::kLength) part.slots[i] = Slot::of(part.length);
        const size_t bytes = argument.is_array() ? array_bytes(argument, part.length) : all.arrays[i].size();
        const size_t offset = argument.is_array() ? start * argument.array_element_bytes() : 0;
        const auto first = all.arrays[i].begin() + static_cast<ptrdiff_t>(offset);
        part.arrays.emplace_back(first, first + static_cast<ptrdiff_t>(bytes));
      }
      ASSERT_EQ(difference(part), "")
          << "value " << value << ", combination " << start << ", length " << part.length;
    }
  }
}

using AllCombinations = AgainstReference;

TEST_P(AllCombinations, OfDecisiveValuesAgree) {
  for (size_t variant = 0; variant < count_variants(function()); ++variant) {
    // In one piece, in arrays too short for a block, and in arrays of some blocks and a tail.
    for (size_t length : {size_t{0}, std::max<size_t>(1, function().block - 1), size_t{37}}) {
      expect_agreement_on_combinations(function(), variant, length, [this](const Operands& operands) {
        return difference_from_reference(operands);
      });
    }
  }
}

ZIVKS_FOR_FUNCTIONS(AllCombinations, without_twins(array_functions()));

std::vector<const Function*> scaled_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->arguments.back().role == Role::kScale) list.push_back(function);
  }
  return list;
}

using AllScales = AgainstReference;

TEST_P(AllScales, AgreeWithTheReference) {
  const auto length = static_cast<int32_t>(std::max<size_t>(37, function().block + 5));
  for (int exponent = -1074; exponent <= 1023; ++exponent) {
    for (double mantissa : {1.0, 1.5, std::nextafter(2.0, 0.0)}) {
      // The scale is the last parameter, so the first variants differ in what stands before it.
      const auto variant = static_cast<size_t>(exponent & 0xFF) % count_variants(function());
      Operands operands = random_operands(function(), length, variant, Flavour::kManySpecial);
      operands.slots.back() = Slot::of(std::ldexp(mantissa, exponent));
      ASSERT_EQ(difference_from_reference(operands), "") << "scale " << mantissa << " * 2^" << exponent;
    }
  }
}

ZIVKS_FOR_FUNCTIONS(AllScales, scaled_functions());

// Those that leave the rounding to the processor. Compilers assume that a negated product rounds like the
// product itself, so that products of complex numbers are for rounding to nearest only.
std::vector<const Function*> float_arithmetic_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    const bool is_real_product = function->family == "MultiplyAccumulate" &&
                                 function->arguments.back().role != Role::kScale &&
                                 function->arguments[0].element->parts == 1;
    if (function->family == "FloatArithmetic" || is_real_product) {
      list.push_back(function);
    }
  }
  return list;
}

using RoundingMode = AgainstReference;

TEST_P(RoundingMode, IsTheProcessorsCurrentOneAndIsKept) {
  for (int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    const Operands operands = random_operands(function(), 37, 0, Flavour::kFinite);
    std::fesetround(mode);
    const std::string difference = difference_from_reference(operands);
    const int mode_after = std::fegetround();
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(difference, "") << "mode " << mode;
    EXPECT_EQ(mode_after, mode);
  }
}

ZIVKS_FOR_FUNCTIONS(RoundingMode, float_arithmetic_functions());

}  // namespace
}  // namespace zivks_test
