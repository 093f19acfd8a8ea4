// Exact overlap gives what separate arrays give.
#include <algorithm>

#include "generic/every_function.h"

namespace zivks_test {
namespace {

std::vector<const Function*> overlapping_functions() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->overlap != Overlap::NONE) list.push_back(function);
  }
  return list;
}

// A written array and sources whose elements are as wide.
struct Overlapping {
  size_t destination;
  std::vector<size_t> sources;
};

// Every destination with every choice of such sources.
std::vector<Overlapping> choices_of(const Function& function) {
  std::vector<Overlapping> choices;
  for (size_t destination = 0; destination < function.arguments.size(); ++destination) {
    const Argument& written = function.arguments[destination];
    if (!written.is_array() || !written.is_written()) continue;
    const size_t first = choices.size();
    for (size_t source = 0; source < function.arguments.size(); ++source) {
      const Argument& read = function.arguments[source];
      if (read.role != Role::kSource || read.array_element_bytes() != written.array_element_bytes()) continue;
      for (size_t i = first, end = choices.size(); i < end; ++i) {
        choices.push_back(choices[i]);
        choices.back().sources.push_back(source);
      }
      choices.push_back({destination, {source}});
    }
  }
  return choices;
}

class ExactOverlap : public FunctionTest {
 protected:
  std::string difference_from_separate_arrays(Operands operands, const Overlapping& choice) const {
    const Bytes& shared = operands.arrays[choice.sources[0]];
    for (size_t source : choice.sources) operands.arrays[source] = shared;
    if (function().arguments[choice.destination].is_read()) operands.arrays[choice.destination] = shared;
    Call separate(function(), operands);
    if (!separate.succeeds()) return "fails";
    const std::vector<Bytes> expected = separate.results();  // before the next call takes the same memory
    Call overlapping(function(), operands);
    for (size_t source : choice.sources) overlapping.share_place(source, choice.destination);
    return difference_of_call(function(), overlapping, expected);
  }
};

TEST_P(ExactOverlap, GivesTheResultOfSeparateArrays) {
  const std::vector<Overlapping> choices = choices_of(function());
  ASSERT_FALSE(choices.empty()) << "the table grants an overlap that cannot be";
  for (int32_t length : shape_lengths(function())) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      for (const Overlapping& choice : choices) {
        ASSERT_EQ(difference_from_separate_arrays(random_operands(function(), length, variant), choice), "")
            << function().arguments[choice.destination].name << " over " << choice.sources.size()
            << " from argument " << choice.sources[0] << " on, length " << length << ", variant " << variant;
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(ExactOverlap, overlapping_functions());

}  // namespace
}  // namespace zivks_test
