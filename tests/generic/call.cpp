#include "generic/call.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace zivks_test {
namespace {

constexpr unsigned char kMargin = 0xA5;  // around arrays
constexpr unsigned char kOutput = 0xCD;  // in outputs before a call
constexpr ptrdiff_t kMarginBytes = 128;

template <class T>
std::vector<Slot> slots_of(std::initializer_list<T> values) {
  std::vector<Slot> slots;
  for (T value : values) slots.push_back(Slot::of(value));
  return slots;
}

// The values that a parameter takes; none if the argument is no parameter.
const std::vector<Slot>& parameter_values(const Argument& argument) {
  static const std::vector<Slot> none,
      scales = slots_of({1.0, 8.0, 0.3, 0x1p-130, 0x1p+140}), kinds = slots_of<int32_t>({0, 1, 2}),
      shifts = slots_of<int32_t>({0, 1, 3, 7, 8, 9, 15, 16, 17, 31, 32, 33, 255, 256, INT32_MAX}),
      rounding_modes = slots_of<int32_t>({ZIVK_RND_ZERO, ZIVK_RND_NEAR, ZIVK_RND_AWAY}),
      all_modes = slots_of<int32_t>({ZIVK_RND_ZERO, ZIVK_RND_NEAR, ZIVK_RND_AWAY, 7, INT32_MIN}),
      bounds = slots_of<int32_t>({INT32_MIN, -2, 0, 2, INT32_MAX}),
      table_lengths = slots_of<int32_t>({1, 2, 3, 17, 1000});
  switch (argument.role) {
    case Role::kScale: return scales;
    case Role::kKind: return kinds;
    case Role::kShift: return shifts;
    case Role::kRoundMode: return argument.is_unchecked ? all_modes : rounding_modes;
    case Role::kBound: return bounds;
    case Role::kTableLength: return table_lengths;
    default: return none;
  }
}

// In ascending order, and every other one with many equal entries.
Bytes random_table(int32_t length, Random& random) {
  std::vector<uint16_t> entries(static_cast<size_t>(length));
  const uint64_t bound = random.below(2) == 0 ? entries.size() : 65536;
  for (uint16_t& entry : entries) entry = static_cast<uint16_t>(random.below(bound));
  std::sort(entries.begin(), entries.end());
  Bytes bytes(entries.size() * sizeof entries[0]);
  std::memcpy(bytes.data(), entries.data(), bytes.size());
  return bytes;
}

GuardedMemory& memory_of_argument(size_t argument) {
  static std::vector<std::unique_ptr<GuardedMemory>> memory;
  while (memory.size() <= argument) memory.push_back(std::make_unique<GuardedMemory>());
  return *memory[argument];
}

unsigned char* place(const GuardedMemory& memory, size_t bytes, Placement placement, size_t alignment,
                     size_t argument) {
  switch (placement) {
    case Placement::kBeforeGuard: return memory.end() - bytes;
    case Placement::kBehindGuard: return memory.begin();
    case Placement::kMisaligned:  // no two arrays alike
      return memory.begin() + 4096 + alignment * (2 * argument + 1);
    case Placement::kRoomy: break;
  }
  return memory.begin() + 4096;
}

}  // namespace

GuardedMemory::GuardedMemory() {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  void* mapping =
      mmap(nullptr, kCapacity + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (mapping == MAP_FAILED) std::abort();
  begin_ = static_cast<unsigned char*>(mapping) + page;
  if (mprotect(begin_, kCapacity, PROT_READ | PROT_WRITE) != 0) std::abort();
}

GuardedMemory::~GuardedMemory() {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  munmap(begin_ - page, kCapacity + 2 * page);
}

size_t array_bytes(const Argument& argument, int32_t length) {
  return argument.is_array() ? argument.array_element_bytes() * static_cast<size_t>(length)
                             : argument.element->bytes;
}

size_t count_variants(const Function& function, bool with_scale) {
  size_t count = 1;
  for (const Argument& argument : function.arguments) {
    if (argument.role == Role::kScale && !with_scale) continue;
    count *= std::max<size_t>(1, parameter_values(argument).size());
  }
  return count;
}

Operands random_operands(const Function& function, int32_t length, size_t variant, Flavour flavour) {
  Random random(static_cast<uint64_t>(length) * 8191 + variant);
  const size_t variant_of_table = variant;  // a search has no parameter but the length of its table
  Operands operands{length, {}, {}};
  for (const Argument& argument : function.arguments) {
    Bytes contents;
    Slot slot;
    if (argument.role == Role::kTable) {
      const std::vector<Slot>& lengths = parameter_values((&argument)[1]);
      contents = random_table(lengths[variant_of_table % lengths.size()].as<int32_t>(), random);
    } else if (argument.is_pointer()) {
      contents.assign(array_bytes(argument, length), kOutput);
      if (argument.is_read()) {
        argument.element->fill_random(contents.data(), contents.size() / argument.element->part_bytes(),
                                      random, flavour);
      }
    } else if (argument.role == Role::kLength) {
      slot = Slot::of(length);
    } else if (const std::vector<Slot>& values = parameter_values(argument); !values.empty()) {
      slot = values[variant % values.size()];
      variant /= values.size();
    } else {
      argument.element->fill_random(slot.bytes, argument.element->parts, random, flavour);
    }
    operands.arrays.push_back(std::move(contents));
    operands.slots.push_back(slot);
  }
  return operands;
}

Operands random_operands(const Function& function, int32_t length, size_t variant) {
  return random_operands(function, length, variant, static_cast<Flavour>(length % 3));
}

std::vector<int32_t> shape_lengths(const Function& function) {
  // Unrolled by four, a step covers four registers of up to 32 bytes of the narrowest element.
  size_t narrowest = 16;
  for (const Argument& argument : function.arguments) {
    if (argument.is_array()) narrowest = std::min(narrowest, argument.element->bytes);
  }
  const size_t last = std::max<size_t>(70, 3 * function.block + 5 + 2 * (4 * 32 / narrowest));
  std::vector<int32_t> lengths;
  for (auto length = static_cast<size_t>(function.least_length()); length <= last; ++length)
    lengths.push_back(static_cast<int32_t>(length));
  lengths.insert(lengths.end(), {511, 1000, 1025, 4099});
  return lengths;
}

Call::Call(const Function& function, const Operands& operands, Placement placement)
    : slots(operands.slots),
      function_(function),
      operands_(operands),
      pointers_(function.arguments.size()),
      is_shared_(function.arguments.size()) {
  for (size_t i = 0; i < pointers_.size(); ++i) {
    const Argument& argument = function.arguments[i];
    if (!argument.is_pointer()) continue;
    const Bytes& contents = operands.arrays[i];
    const GuardedMemory& memory = memory_of_argument(i);
    const size_t alignment = function.alignment == Alignment::BYTE ? 1 : argument.element->alignment;
    unsigned char* const array = pointers_[i] = place(memory, contents.size(), placement, alignment, i);
    std::fill(std::max(memory.begin(), array - kMarginBytes), array, kMargin);
    std::copy(contents.begin(), contents.end(), array);
    unsigned char* const end = array + contents.size();
    std::fill(end, std::min(memory.end(), end + kMarginBytes), kMargin);
    slots[i] = Slot::of(array);
  }
}

void Call::share_place(size_t argument, size_t owner) {
  const Bytes& contents = operands_.arrays[argument];
  std::copy(contents.begin(), contents.end(), pointers_[owner]);
  slots[argument] = slots[owner];
  is_shared_[argument] = true;
}

Bytes Call::array(size_t argument) const {
  return Bytes(pointers_[argument], pointers_[argument] + operands_.arrays[argument].size());
}

std::vector<Bytes> Call::results() const {
  std::vector<Bytes> results(pointers_.size());
  for (size_t i = 0; i < results.size(); ++i) {
    if (function_.arguments[i].is_written()) results[i] = array(i);
  }
  return results;
}

std::string Call::unexpected_writes(bool allow_results) const {
  for (size_t i = 0; i < pointers_.size(); ++i) {
    const Argument& argument = function_.arguments[i];
    if (!argument.is_pointer() || is_shared_[i]) continue;
    const GuardedMemory& memory = memory_of_argument(i);
    unsigned char* const array = pointers_[i];
    unsigned char* const end = array + operands_.arrays[i].size();
    const auto is_margin = [](unsigned char byte) { return byte == kMargin; };
    if (!std::all_of(std::max(memory.begin(), array - kMarginBytes), array, is_margin)) {
      return "wrote ahead of " + argument.name;
    }
    if (!std::all_of(end, std::min(memory.end(), end + kMarginBytes), is_margin))
      return "wrote behind " + argument.name;
    if (!(allow_results && argument.is_written()) && !std::equal(array, end, operands_.arrays[i].begin()))
      return "changed " + argument.name;
  }
  return {};
}

std::string difference(const ElementType& element, Results results, const Bytes& expected,
                       const Bytes& actual) {
  if (expected == actual) return {};
  if (expected.size() != actual.size()) return "sizes differ";
  const size_t part_bytes = element.part_bytes();
  for (size_t offset = 0; offset < expected.size(); offset += part_bytes) {
    if (std::memcmp(&expected[offset], &actual[offset], part_bytes) == 0) continue;
    if (results == Results::ANY_NAN && element.is_nan(&expected[offset]) && element.is_nan(&actual[offset]))
      continue;
    std::ostringstream text;
    text << "element " << offset / element.bytes
         << (element.parts == 2 && offset % element.bytes != 0 ? ".im" : "");
    for (const Bytes* side : {&expected, &actual}) {
      text << (side == &expected ? ": expected 0x" : ", got 0x");
      for (size_t i = part_bytes; i-- > 0;) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", (*side)[offset + i]);
        text << digits;
      }
    }
    return text.str();
  }
  return {};
}

std::string difference_of_call(const Function& function, Call& call, const std::vector<Bytes>& expected) {
  const ZIVKStatus status = call.invoke();
  if (status != ZIVK_STS_NO_ERR) return "status " + std::to_string(status);
  std::string text = call.unexpected_writes(true);
  for (size_t i = 0; text.empty() && i < expected.size(); ++i) {
    const Argument& argument = function.arguments[i];
    if (!argument.is_written()) continue;
    text = difference(*argument.element, function.results, expected[i], call.array(i));
    if (!text.empty()) text = argument.name + " " + text;
  }
  return text;
}

}  // namespace zivks_test
