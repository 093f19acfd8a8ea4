// Shifts that have no need to read an array.
#include "generic/every_function.h"

namespace zivks_test {
namespace {

// By nothing in place, or by all bits where no sign is left.
std::vector<const Function*> shifts_that_read_nothing() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    const bool keeps_sign = function->name == "ZIVKS_RShiftC_16s" || function->name == "ZIVKS_RShiftC_32s";
    if (function->family == "Shift" && !keeps_sign) list.push_back(function);
  }
  return list;
}

using Shift = FunctionTest;

TEST_P(Shift, ReadsNothingWhereNothingIsNeeded) {
  static const GuardedMemory memory;
  const Slot untouchable = Slot::of(memory.end()), length = Slot::of(37);
  if (function().out_of_place_twin() != nullptr) {
    EXPECT_EQ(function().call({Slot::of(0), untouchable, length}).as<ZIVKStatus>(), ZIVK_STS_NO_ERR);
    return;
  }
  const size_t element_bytes = function().arguments[0].element->bytes;
  for (size_t shift : {8 * element_bytes, 8 * element_bytes + 1}) {
    Bytes result(element_bytes * 37, 0xCD);
    const std::vector<Slot> slots = {untouchable, Slot::of(static_cast<int32_t>(shift)),
                                     Slot::of(result.data()), length};
    EXPECT_EQ(function().call(slots).as<ZIVKStatus>(), ZIVK_STS_NO_ERR);
    EXPECT_EQ(result, Bytes(result.size(), 0));
  }
}

ZIVKS_FOR_FUNCTIONS(Shift, shifts_that_read_nothing());

}  // namespace
}  // namespace zivks_test
