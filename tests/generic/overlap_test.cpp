// Exact overlap and in-place forms give what separate arrays give.
#include <algorithm>
#include <optional>

#include "generic/every_function.h"

namespace zivks_test {
namespace {

struct Alias {
  size_t destination, source;
};

// Pairs of a written array and a source whose elements are as wide.
std::vector<Alias> aliases_of(const Function& function) {
  std::vector<Alias> aliases;
  for (size_t destination = 0; destination < function.arguments.size(); ++destination) {
    const Argument& written = function.arguments[destination];
    if (!written.is_array() || !written.is_written()) continue;
    for (size_t source = 0; source < function.arguments.size(); ++source) {
      const Argument& read = function.arguments[source];
      if (read.role == Role::kSource && read.array_element_bytes() == written.array_element_bytes()) {
        aliases.push_back({destination, source});
      }
    }
  }
  return aliases;
}

std::vector<const Function*> overlapping_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->overlap != Overlap::NONE) list.push_back(function);
  }
  return list;
}

std::vector<const Function*> in_place_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->out_of_place_twin() != nullptr) list.push_back(function);
  }
  return list;
}

class ExactOverlap : public FunctionTest {
 protected:
  // With one source in the place of the destination, and another one as well if `also` names it.
  void expect_result_of_separate_arrays(int32_t length, size_t variant, Alias alias,
                                        std::optional<Alias> also) const {
    Operands operands = random_operands(function(), length, variant);
    const Bytes shared = operands.arrays[alias.source];
    if (also) operands.arrays[also->source] = shared;
    // An array both read and written keeps its part as a source.
    if (function().arguments[alias.destination].is_read()) operands.arrays[alias.destination] = shared;
    Call separate(function(), operands);
    ASSERT_EQ(difference_of_call(function(), separate, {}), "") << "length " << length;
    std::vector<Bytes> expected(operands.arrays.size());
    for (size_t i = 0; i < expected.size(); ++i) {
      if (function().arguments[i].is_written()) expected[i] = separate.array(i);
    }
    Call overlapping(function(), operands, Placement::kRoomy, alias.destination, alias.source);
    if (also) overlapping.slots[also->source] = overlapping.slots[alias.destination];
    ASSERT_EQ(difference_of_call(function(), overlapping, expected), "")
        << function().arguments[alias.destination].name << " = " << function().arguments[alias.source].name
        << (also ? " = " + function().arguments[also->source].name : "") << ", length " << length
        << ", variant " << variant;
  }
};

TEST_P(ExactOverlap, GivesTheResultOfSeparateArrays) {
  const std::vector<Alias> aliases = aliases_of(function());
  ASSERT_FALSE(aliases.empty()) << "the table grants an overlap that cannot be";
  for (int32_t length : shape_lengths(function())) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      for (const Alias& alias : aliases) {
        ASSERT_NO_FATAL_FAILURE(expect_result_of_separate_arrays(length, variant, alias, {}));
      }
      if (aliases.size() > 1 && aliases.front().destination == aliases.back().destination) {
        ASSERT_NO_FATAL_FAILURE(
            expect_result_of_separate_arrays(length, variant, aliases.front(), aliases.back()));
      }
    }
  }
}

using InPlace = FunctionTest;

TEST_P(InPlace, GivesTheResultOfTheOutOfPlaceForm) {
  const Function& twin = *function().out_of_place_twin();
  for (int32_t length : shape_lengths(function())) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      const Operands operands = random_operands(function(), length, variant);
      // The twin's sources are the arrays read here, in the same order; values go by their names.
      Operands twin_operands = random_operands(twin, length, variant);
      size_t next_array = 0, destination = 0, twin_destination = 0;
      for (size_t i = 0; i < twin.arguments.size(); ++i) {
        const Argument& wanted = twin.arguments[i];
        if (wanted.is_written()) twin_destination = i;
        if (wanted.role == Role::kSource) {
          while (!function().arguments[next_array].is_read()) ++next_array;
          twin_operands.arrays[i] = operands.arrays[next_array++];
        } else if (!wanted.is_pointer()) {
          const auto same =
              std::find_if(function().arguments.begin(), function().arguments.end(),
                           [&](const Argument& argument) { return argument.name == wanted.name; });
          ASSERT_NE(same, function().arguments.end());
          twin_operands.slots[i] = operands.slots[static_cast<size_t>(same - function().arguments.begin())];
        }
      }
      while (!function().arguments[destination].is_written()) ++destination;
      Call out_of_place(twin, twin_operands);
      ASSERT_EQ(difference_of_call(twin, out_of_place, {}), "") << "length " << length;
      std::vector<Bytes> expected(operands.arrays.size());
      expected[destination] = out_of_place.array(twin_destination);
      Call in_place(function(), operands);
      ASSERT_EQ(difference_of_call(function(), in_place, expected), "")
          << "length " << length << ", variant " << variant;
    }
  }
}

ZIVKS_FOR_FUNCTIONS(ExactOverlap, overlapping_functions());
ZIVKS_FOR_FUNCTIONS(InPlace, in_place_functions());

}  // namespace
}  // namespace zivks_test
