// Parameterised tests that compare functions of the table with their references.
#ifndef ZIVKS_TESTS_REFERENCE_AGAINST_REFERENCE_H
#define ZIVKS_TESTS_REFERENCE_AGAINST_REFERENCE_H

#include <algorithm>

#include "generic/every_function.h"
#include "reference/reference.h"

namespace zivks_test {

// The reference of the function or of its out-of-place twin; null if there is none.
inline const Reference* find_reference(const Function& function) {
  static const References references = [] {
    References all;
    for (const auto& family :
         {columnar_references, copy_references, element_order_references, complex_layout_references,
          logic_references, arithmetic_references, scaled_arithmetic_references,
          multiply_accumulate_references, conversion_references, extremes_references, comparison_references,
          zero_crossing_references, comparison_sort_references, radix_sort_references, median_references,
          triangle_wave_references, uniform_noise_references, sampling_references, linear_ramp_references}) {
      all.merge(family());
    }
    return all;
  }();
  const Function* const twin = function.out_of_place_twin();
  for (const Function* candidate : {&function, twin}) {
    if (candidate == nullptr) continue;
    if (const auto found = references.find(candidate->name); found != references.end()) return &found->second;
  }
  return nullptr;
}

// For tests of many operands, which need not show again for an in-place form what its twin has shown.
inline std::vector<const Function*> without_twins(std::vector<const Function*> functions) {
  const auto has_twin = [](const Function* function) { return function->out_of_place_twin() != nullptr; };
  functions.erase(std::remove_if(functions.begin(), functions.end(), has_twin), functions.end());
  return functions;
}

class AgainstReference : public FunctionTest {
 protected:
  void SetUp() override {
    FunctionTest::SetUp();
    reference_ = find_reference(function());
    ASSERT_NE(reference_, nullptr) << "has no reference";
  }
  std::string difference_from_reference(const Operands& operands) const {
    Call call(function(), operands);
    return difference_of_call(function(), call, (*reference_)(function(), operands));
  }

 private:
  const Reference* reference_ = nullptr;
};

}  // namespace zivks_test

#endif
