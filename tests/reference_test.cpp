// Every function against its reference: at every length, on all pairs of decisive values, over all scales.
#include <algorithm>
#include <cfenv>
#include <cmath>
#include <optional>

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

class AllCombinations : public AgainstReference {
 protected:
  void expect_agreement(size_t variant, std::optional<double> scale, size_t length) const;
};

// The decisive values of every input with those of every other, in one piece or cut into arrays of `length`.
void AllCombinations::expect_agreement(size_t variant, std::optional<double> scale, size_t length) const {
  std::vector<size_t> arrays;
  const Argument* constant = nullptr;
  for (const Argument& argument : function().arguments) {
    if (argument.is_read()) arrays.push_back(static_cast<size_t>(&argument - function().arguments.data()));
    if (argument.role == Role::kConstant) constant = &argument;
  }
  const size_t values = constant == nullptr ? 1 : constant->element->count_decisive(false);
  const bool exhaustive = arrays.size() == 1 && constant == nullptr;
  size_t total = 1;
  for (size_t array : arrays) total *= function().arguments[array].element->count_decisive(exhaustive);
  const size_t step = length == 0 ? total : length;
  Operands all = random_operands(function(), static_cast<int32_t>(total), variant, Flavour::kFinite);
  if (scale) all.slots.back() = Slot::of(*scale);
  size_t period = 1;
  for (size_t array : arrays) {
    const ElementType& element = *function().arguments[array].element;
    element.fill_decisive(all.arrays[array].data(), total, period, exhaustive);
    period *= element.count_decisive(exhaustive);
  }
  for (size_t value = 0; value < values; ++value) {
    if (constant != nullptr) {
      Bytes list((value + 1) * constant->element->bytes);
      constant->element->fill_decisive(list.data(), value + 1, 1, false);
      Slot& slot = all.slots[static_cast<size_t>(constant - function().arguments.data())];
      std::memcpy(slot.bytes, &list[value * constant->element->bytes], constant->element->bytes);
    }
    for (size_t start = 0; start < total; start += step) {
      Operands part{static_cast<int32_t>(std::min(step, total - start)), {}, all.slots};
      if (part.length < function().least_length()) continue;
      for (size_t i = 0; i < all.arrays.size(); ++i) {
        const Argument& argument = function().arguments[i];
        if (argument.role == Role::kLength) part.slots[i] = Slot::of(part.length);
        const size_t bytes =
            argument.is_array() ? array_bytes(argument, function(), part) : all.arrays[i].size();
        const size_t offset = argument.is_array() ? start * argument.array_element_bytes() : 0;
        const auto first = all.arrays[i].begin() + static_cast<ptrdiff_t>(offset);
        part.arrays.emplace_back(first, first + static_cast<ptrdiff_t>(bytes));
      }
      ASSERT_EQ(difference_from_reference(part), "")
          << "variant " << variant << ", scale " << scale.value_or(0) << ", value " << value
          << ", combination " << start << ", length " << part.length;
    }
  }
}

// At these scales a scaled sum takes another path, a shift count reaches the width of a type, or only the
// count's low eight bits take effect.
std::vector<std::optional<double>> threshold_scales() {
  std::vector<std::optional<double>> scales = {0.75, 1.5};
  for (int exponent :
       {0,  1,  2,  3,  4,  7,  8,  9,  10, 11, 15,  16,  17,  18,  30,   31,   32,   33,   34,
        62, 63, 64, 65, 66, -1, -2, -7, -8, -9, -31, -32, -63, -64, -127, -128, -193, -249, -254}) {
    scales.push_back(std::ldexp(1.0, exponent));
  }
  return scales;
}

TEST_P(AllCombinations, OfDecisiveValuesAgree) {
  const bool is_scaled_sum = function().family == "ScaledArithmetic";
  for (size_t variant = 0; variant < count_variants(function(), !is_scaled_sum); ++variant) {
    for (const auto& scale : is_scaled_sum ? threshold_scales() : std::vector{std::optional<double>()}) {
      // In one piece, in arrays just too short for a block, of a block, and of some blocks and a tail.
      const size_t block = function().block;
      for (size_t length : {size_t{0}, std::max<size_t>(1, block - 1), block, size_t{37}}) {
        ASSERT_NO_FATAL_FAILURE(expect_agreement(variant, scale, length));
      }
    }
  }
}

// An element of a sort, of a selection or of a signal that is sampled meets no other input, and texts have no
// decisive values.
std::vector<const Function*> functions_that_combine() {
  std::vector<const Function*> list = without_twins(array_functions());
  list.erase(std::remove_if(list.begin(), list.end(),
                            [](const Function* function) {
                              return function->has(Role::kHandle) || function->has(Role::kNewHandle) ||
                                     function->has(Role::kOffsets) || function->has(Role::kPhase);
                            }),
             list.end());
  return list;
}

ZIVKS_FOR_FUNCTIONS(AllCombinations, functions_that_combine());

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
  size_t variant = 0;
  for (int exponent = -1074; exponent <= 1023; ++exponent) {
    for (double mantissa : {1.0, std::nextafter(1.0, 2.0), 1.5, std::nextafter(2.0, 0.0)}) {
      Operands operands = random_operands(function(), length, variant++, Flavour::kManySpecial);
      operands.slots.back() = Slot::of(std::ldexp(mantissa, exponent));
      ASSERT_EQ(difference_from_reference(operands), "") << "scale " << mantissa << " * 2^" << exponent;
    }
  }
}

ZIVKS_FOR_FUNCTIONS(AllScales, scaled_functions());

// Functions that round as the processor is told to, and conversions to integers, which round as the caller says
// whatever the processor is told. Compilers assume that a negated product rounds like the product itself, so that
// products of complex numbers are for rounding to nearest only.
std::vector<const Function*> rounding_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    const bool is_real_product = function->family == "MultiplyAccumulate" &&
                                 function->arguments.back().role != Role::kScale &&
                                 function->arguments[0].element->parts == 1;
    if (function->family == "FloatArithmetic" || function->family == "FloatToInteger" || is_real_product) {
      list.push_back(function);
    }
  }
  return list;
}

using RoundingMode = AgainstReference;

TEST_P(RoundingMode, OfTheProcessorIsRespectedAndKept) {
  for (int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      for (int32_t length : {1, 2, 3, 37, 1001}) {
        const Operands operands = random_operands(function(), length, variant, Flavour::kFinite);
        std::fesetround(mode);
        const std::string difference = difference_from_reference(operands);
        const int mode_after = std::fegetround();
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(difference, "") << "mode " << mode << ", variant " << variant << ", length " << length;
        EXPECT_EQ(mode_after, mode);
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(RoundingMode, rounding_functions());

}  // namespace
}  // namespace zivks_test
