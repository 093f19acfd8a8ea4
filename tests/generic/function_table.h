// The rows of core/functions.def as data: every exported function with the roles of its arguments and a way to
// call it through untyped slots.
#ifndef ZIVKS_TESTS_GENERIC_FUNCTION_TABLE_H
#define ZIVKS_TESTS_GENERIC_FUNCTION_TABLE_H

#include <zivks.h>

#include <cstdint>
#include <cstring>
#include <ostream>
#include <string>
#include <typeinfo>
#include <vector>

#include "generic/values.h"

namespace zivks_test {

// The words of the table's columns.
enum class Alignment { BYTE, ELEMENT };
enum class Overlap { NONE, SAME_WIDTH, ANY };
enum class Results { BITS, ANY_NAN, SORTED };

struct ElementType {
  const std::type_info* type;
  size_t bytes, alignment;
  size_t parts;           // 2 for complex numbers and decimals
  ZIVKDataType selector;  // 0 if the type has none
  bool (*is_nan)(const void* part);
  bool (*is_zero)(const void* part);
  void (*fill_random)(void* destination, size_t parts, Random& random, Flavour flavour);
  // Walks through the decisive values again and again, `period` elements with each.
  void (*fill_decisive)(void* destination, size_t elements, size_t period, bool exhaustive);
  size_t (*count_decisive)(bool exhaustive);

  size_t part_bytes() const { return bytes / parts; }
};

enum class Role {
  kSource,
  kDestination,
  kSourceDestination,
  kResult,
  kConstant,
  kLength,
  kScale,
  kKind,
  kShift,
  kRoundMode,
  kBound,
  kTable,
  kTableLength,
  kHandle,
  kNewHandle,
  kDataType,
  kStride,
  kOffset,
  kCount,
  kMethod,
  kNulls,
  kOffsets,
  kMaskLength,
  kFactor,
  kPhase,
  kMagnitude,
  kFrequency,
  kAsymmetry,
  kOther
};

struct Argument {
  std::string name;
  Role role;
  const ElementType* element;       // what a pointer points to, or the type of a value
  size_t packed = 1;                // what is pointed to, this many times, makes up an element of an array
  int32_t least = 1;                // of a length
  bool points_to_constant = false;  // as declared
  bool nullable = false, is_unsigned = false, is_unchecked = false;
  bool counted = false;                 // of an array: it has `k` elements
  bool strided = false, spans = false;  // of a source: its elements stand `srcStride` bytes apart
  bool kept = false;                    // of a destination: elements of null rows stay as they were
  bool text = false;  // of an array: the bytes of a column of texts, or room for the longest of them
  bool line = false;  // of an array: a delay line
  bool up = false;    // of a destination: a source sampled up ...
  bool down = false;  // ... or down
  bool pairs_in_fours = false;  // of a destination: as the table says, and beyond its end
  bool samples = false;         // of a data type: only types of samples are accepted
  bool made = false;            // of a handle: its Init gives it the contents of a call
  int scan = 0;                 // of an array: words behind it (1) or ahead of it (-1) take part
  std::string init;             // of a handle: the function that makes it; a handle without has no bytes

  bool is_array() const {
    return role == Role::kSource || role == Role::kDestination || role == Role::kSourceDestination ||
           role == Role::kNulls || role == Role::kOffsets;
  }
  size_t array_element_bytes() const { return packed * element->bytes; }
  bool is_pointer() const {
    return is_array() || role == Role::kResult || role == Role::kTable || role == Role::kHandle ||
           role == Role::kNewHandle || role == Role::kPhase;
  }
  bool is_constant() const {  // what a pointer points to
    if (role == Role::kPhase || role == Role::kHandle) return points_to_constant;
    return role == Role::kSource || role == Role::kTable || role == Role::kNulls || role == Role::kOffsets;
  }
  bool is_read() const {
    return role == Role::kSource || role == Role::kSourceDestination || role == Role::kPhase || kept;
  }
  bool is_written() const {  // with results
    return is_pointer() && !is_constant() && role != Role::kHandle;
  }
  bool is_input_value() const {
    return role == Role::kConstant || role == Role::kScale || role == Role::kKind || role == Role::kShift ||
           role == Role::kRoundMode || role == Role::kBound || role == Role::kMaskLength ||
           role == Role::kFactor || role == Role::kMagnitude || role == Role::kFrequency ||
           role == Role::kAsymmetry;
  }
};

// Holds an argument or a result of any type that the interface uses.
struct Slot {
  alignas(16) unsigned char bytes[16] = {};

  template <class T>
  static Slot of(const T& value) {
    static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= sizeof bytes);
    Slot slot;
    std::memcpy(slot.bytes, &value, sizeof value);
    return slot;
  }
  template <class T>
  T as() const {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
  }
};

struct Function {
  std::string name, family;
  std::vector<Argument> arguments;
  size_t block;
  Alignment alignment;
  Overlap overlap;
  Results results;
  std::string fault;  // what is wrong with the row, if anything
  void (*address)();
  Slot (*invoke)(void (*address)(), const Slot* slots);
  mutable size_t calls = 0;

  bool returns_status() const { return family != "Memory"; }
  bool has(Role role) const;
  int32_t least_length() const;
  // The out-of-place form of an `_I` or `_IS` form, which gives the same result; null if there is none.
  const Function* out_of_place_twin() const;
  Slot call(const std::vector<Slot>& slots) const {
    ++calls;
    return invoke(address, slots.data());
  }
};

const std::vector<Function>& all_functions();
std::vector<const Function*> array_functions();  // those that return a status
const Function* find_function(const std::string& name);
std::ostream& operator<<(std::ostream& out, const Function* function);

}  // namespace zivks_test

#endif
