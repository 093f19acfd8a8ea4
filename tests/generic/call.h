// One call of a function of the table: its operands, the places of its arrays, and its results.
#ifndef ZIVKS_TESTS_GENERIC_CALL_H
#define ZIVKS_TESTS_GENERIC_CALL_H

#include <cstdint>
#include <string>
#include <vector>

#include "generic/function_table.h"
#include "generic/guarded_memory.h"

namespace zivks_test {

using Bytes = std::vector<unsigned char>;

// The operands of a call, by argument: the contents of arrays before the call, and the values.
struct Operands {
  int32_t length;
  std::vector<Bytes> arrays;
  std::vector<Slot> slots;
};

// Bytes that an array takes in a call with these operands.
size_t array_bytes(const Argument& argument, const Function& function, const Operands& operands);

// A number in the type of an argument.
Slot slot_of_type(const ElementType& element, double value);

// The value of the argument of that name.
int32_t value_of(const char* name, const Function& function, const Operands& operands);

// Where a function may scan the words next to an array: whether it gets there, and what it finds.
enum class Scan : int32_t { kNone, kStopsAtOnce, kGoesOn };

// Whether there is a null vector, and how many rows are null.
enum class Nulls : int32_t { kAbsent, kNone, kFew, kHalf, kAll };

// Whether there is a delay line.
enum class Line : int32_t { kAbsent, kPresent };

// The rows of a column of texts.
enum class Texts : int32_t { kOfOneLength, kShort, kLong, kMostlyEmpty };

// A function's parameters (scale, kind, a bound, the length of a table ...) take several values each. This is
// the number of their combinations, or of those that differ in more than the scale, which come first.
size_t count_variants(const Function& function, bool with_scale = true);

Operands random_operands(const Function& function, int32_t length, size_t variant, Flavour flavour);
Operands random_operands(const Function& function, int32_t length, size_t variant);  // flavours in turn

// What a call with these operands returns if nothing is wrong: success, or the warning of an even mask.
ZIVKStatus success_of(const Function& function, const Operands& operands);

// Lengths with every combination of blocks and tail, also if registers are wider than a block.
std::vector<int32_t> shape_lengths(const Function& function);

// The places of arrays: aligned and far from other pages, directly before or behind a page whose access ends
// the program, or as badly aligned as the function allows.
enum class Placement { kRoomy, kBeforeGuard, kBehindGuard, kMisaligned };

class Call {
 public:
  Call(const Function& function, const Operands& operands, Placement placement = Placement::kRoomy);

  std::vector<Slot> slots;  // may be altered before the call

  // Puts the array of one argument into the place of another's, which is as long.
  void share_place(size_t argument, size_t owner);

  // Says whether the call did its work.
  bool succeeds() { return invoke() == success(); }
  ZIVKStatus success() const { return success_of(function_, operands_); }
  ZIVKStatus invoke() { return function_.call(slots).as<ZIVKStatus>(); }
  Bytes array(size_t argument) const;
  std::vector<Bytes> results() const;  // by argument; empty for what is only read
  // Nothing was written but, if `allow_results`, the arrays that the function is there to write.
  std::string unexpected_writes(bool allow_results) const;

 private:
  const Function& function_;
  const Operands& operands_;
  std::vector<unsigned char*> pointers_;
  unsigned char garbage_;  // in handles before the call, another one in each
  std::vector<bool> is_shared_;
};

// The contents of a result with all that is not specified made alike.
Bytes what_is_specified(const ElementType& element, Results results, Bytes contents);

// Describes the first difference in what is specified; empty if there is none.
std::string difference(const ElementType& element, Results results, const Bytes& expected,
                       const Bytes& actual);

// Calls and describes the first fault: another status than success_of() says, a stray write, or a result that differs from `expected`.
std::string difference_of_call(const Function& function, Call& call, const std::vector<Bytes>& expected);

}  // namespace zivks_test

#endif
