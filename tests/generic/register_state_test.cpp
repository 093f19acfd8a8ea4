// On x86-64 a function leaves the upper halves of vector registers clear: with any of them in use, programs made
// for plain x86-64 wait a hundred cycles and more after the call. (Of no use with sanitizers, whose builds are slow
// anyway and call what is inlined elsewhere.)
#if defined(__x86_64__) && !defined(__SANITIZE_ADDRESS__)
#include <cpuid.h>
#include <immintrin.h>

#include "generic/every_function.h"

namespace zivks_test {
namespace {

// Whether the processor tells which parts of its state are in use.
bool tells_state_in_use() {
  constexpr unsigned kStateLeaf = 0xD, kTellsInUse = 1U << 2;
  unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
  return __get_cpuid_count(kStateLeaf, 1, &eax, &ebx, &ecx, &edx) != 0 && (eax & kTellsInUse) != 0;
}

bool upper_halves_are_in_use() {
  constexpr unsigned kStateInUse = 1, kUpperHalves = 1U << 2;
  unsigned low, high;
  asm volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(kStateInUse));
  return (low & kUpperHalves) != 0;
}

class RegisterState : public FunctionTest {};

TEST_P(RegisterState, UpperHalvesAreClear) {
  for (int32_t length : shape_lengths(function())) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      const Operands operands = random_operands(function(), length, variant);
      Call call(function(), operands);
      _mm256_zeroupper();
      call.invoke();
      const bool in_use = upper_halves_are_in_use();
      if (!tells_state_in_use()) GTEST_SKIP() << "the processor does not tell";
      ASSERT_FALSE(in_use) << "length " << length << ", variant " << variant;
    }
  }
}

ZIVKS_FOR_FUNCTIONS(RegisterState, array_functions());

}  // namespace
}  // namespace zivks_test
#endif
