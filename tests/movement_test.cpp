// Moves between overlapping arrays, and merges without one of the parts.
#include "generic/every_function.h"

namespace zivks_test {
namespace {

std::vector<const Function*> functions_for_any_overlap() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->overlap == Overlap::ANY) list.push_back(function);
  }
  return list;
}

using AnyOverlap = FunctionTest;

// Every distance in bytes up to some blocks, both ways, at lengths around the blocks.
TEST_P(AnyOverlap, CopiesAsIfTheSourceHadBeenSetAside) {
  constexpr ptrdiff_t kReach = 160;
  const auto element = static_cast<int>(function().arguments[0].element->bytes);
  const GuardedMemory memory;
  for (int bytes : {1, 15, 16, 17, 31, 32, 33, 47, 64, 65, 96, 127, 128, 129, 160, 255, 300, 513, 1040}) {
    const int32_t length = (bytes + element - 1) / element;
    const size_t moved = static_cast<size_t>(length * element), total = moved + 2 * kReach;
    Bytes initial(total);
    Random random(moved);
    for (unsigned char& byte : initial) byte = static_cast<unsigned char>(random.next());
    unsigned char* const base = memory.end() - total;
    for (ptrdiff_t distance = -kReach; distance <= kReach; ++distance) {
      Bytes expected = initial;
      std::memmove(expected.data() + kReach + distance, initial.data() + kReach, moved);
      std::memcpy(base, initial.data(), total);
      const std::vector<Slot> slots = {Slot::of(base + kReach), Slot::of(base + kReach + distance),
                                       Slot::of(length)};
      ASSERT_EQ(function().call(slots).as<ZIVKStatus>(), ZIVK_STS_NO_ERR);
      ASSERT_EQ(std::memcmp(base, expected.data(), total), 0)
          << "length " << length << ", distance " << distance;
    }
  }
}

ZIVKS_FOR_FUNCTIONS(AnyOverlap, functions_for_any_overlap());

// A part left out is positive zero, whatever stood in the destination.
template <class C, class Merge>
void expect_zeros_for_missing_parts(Merge merge) {
  using Part = PartOf<C>;
  for (int32_t length = 1; length < 100; ++length) {
    const auto count = static_cast<size_t>(length);
    Random random(count);
    std::vector<Part> part(count);
    for (Part& value : part) value = random_part<Part>(random, Flavour::kManySpecial);
    for (bool real_is_missing : {true, false}) {
      std::vector<C> result(count, C{-1, -1}), expected(count);
      for (size_t i = 0; i < count; ++i) (real_is_missing ? expected[i].im : expected[i].re) = part[i];
      ASSERT_EQ(merge(real_is_missing ? nullptr : part.data(), real_is_missing ? part.data() : nullptr,
                      result.data(), length),
                ZIVK_STS_NO_ERR);
      ASSERT_EQ(std::memcmp(result.data(), expected.data(), count * sizeof(C)), 0)
          << "length " << length << (real_is_missing ? ", no real part" : ", no imaginary part");
    }
  }
}

TEST(RealToCplx, MissingPartsAreZero) {
  expect_zeros_for_missing_parts<ZIVK16sc>(ZIVKS_RealToCplx_16s);
  expect_zeros_for_missing_parts<ZIVK32fc>(ZIVKS_RealToCplx_32f);
  expect_zeros_for_missing_parts<ZIVK64fc>(ZIVKS_RealToCplx_64f);
}

}  // namespace
}  // namespace zivks_test
