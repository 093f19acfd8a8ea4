// Parameterised tests that walk the table: one case a function, which must really be called in it.
#ifndef ZIVKS_TESTS_GENERIC_EVERY_FUNCTION_H
#define ZIVKS_TESTS_GENERIC_EVERY_FUNCTION_H

#include <gtest/gtest.h>

#include <string>

#include "generic/call.h"
#include "generic/function_table.h"

namespace zivks_test {

class FunctionTest : public testing::TestWithParam<const Function*> {
 protected:
  const Function& function() const { return *GetParam(); }
  void SetUp() override { calls_before_ = function().calls; }
  void TearDown() override { EXPECT_GT(function().calls, calls_before_) << "was never called"; }

 private:
  size_t calls_before_ = 0;
};

inline std::string function_name(const testing::TestParamInfo<const Function*>& info) {
  return info.param->name;
}

#define ZIVKS_FOR_FUNCTIONS(suite, functions) \
  INSTANTIATE_TEST_SUITE_P(Every, suite, testing::ValuesIn(functions), function_name)

}  // namespace zivks_test

#endif
