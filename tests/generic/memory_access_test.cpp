// Nothing outside the arrays is read or written, and results do not depend on where the arrays lie.
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "generic/every_function.h"

namespace zivks_test {
namespace {

// Reported when a stray access ends the program.
struct {
  const char* function;
  int length, placement;
} current_call;

void report_stray_access(int) {
  char text[256];
  const int size =
      std::snprintf(text, sizeof text, "%s touched memory outside its arrays: length %d, placement %d\n",
                    current_call.function, current_call.length, current_call.placement);
  if (write(STDERR_FILENO, text, static_cast<size_t>(size)) < size) _exit(2);
  _exit(1);
}

class MemoryAccess : public FunctionTest {
 protected:
  static void SetUpTestSuite() { std::signal(SIGSEGV, report_stray_access); }
  static void TearDownTestSuite() { std::signal(SIGSEGV, SIG_DFL); }
};

TEST_P(MemoryAccess, StaysInsideTheArraysAtEveryLengthAndAddress) {
  for (int32_t length : shape_lengths(function())) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      const Operands operands = random_operands(function(), length, variant);
      Call roomy(function(), operands);
      ASSERT_EQ(difference_of_call(function(), roomy, {}), "")
          << "length " << length << ", variant " << variant;
      const std::vector<Bytes> expected = roomy.results();
      for (Placement placement : {Placement::kBeforeGuard, Placement::kBehindGuard, Placement::kMisaligned}) {
        current_call = {function().name.c_str(), length, static_cast<int>(placement)};
        Call call(function(), operands, placement);
        ASSERT_EQ(difference_of_call(function(), call, expected), "")
            << "length " << length << ", variant " << variant << ", placement "
            << static_cast<int>(placement);
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(MemoryAccess, array_functions());

}  // namespace
}  // namespace zivks_test
