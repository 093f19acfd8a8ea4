// The table itself: rows are unique and agree with the declarations.
#include <gtest/gtest.h>

#include <set>

#include "generic/function_table.h"

namespace zivks_test {
namespace {

TEST(FunctionTable, RowsAreUniqueAndMatchTheDeclarations) {
  std::set<std::string> names;
  for (const Function& function : all_functions()) {
    EXPECT_TRUE(names.insert(function.name).second) << function.name << " has two rows";
    EXPECT_EQ(function.fault, "") << function.name;
    EXPECT_EQ(function.block & (function.block - 1), 0U) << function.name;
    EXPECT_EQ(function.block == 0, !function.returns_status()) << function.name;
  }
}

TEST(FunctionTable, ModesOfNamesAgreeWithArguments) {
  for (const Function* function : array_functions()) {
    bool in_place = false, scaled = false;
    for (const Argument& argument : function->arguments) {
      in_place |= argument.role == Role::kSourceDestination;
      scaled |= argument.role == Role::kScale;
    }
    const std::string mode = function->name.substr(function->name.rfind('_'));
    // Products are always added to what is there.
    const bool accumulates = function->family == "MultiplyAccumulate";
    EXPECT_EQ(in_place, accumulates || mode == "_I" || mode == "_IS") << function->name;
    EXPECT_EQ(scaled, mode == "_S" || mode == "_IS") << function->name;
  }
}

}  // namespace
}  // namespace zivks_test
