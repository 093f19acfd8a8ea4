#include "generic/call.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <list>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "generic/services.h"

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

std::vector<Slot> slots_of_type(const ElementType& element, std::initializer_list<double> values) {
  std::vector<Slot> slots;
  for (double value : values) slots.push_back(slot_of_type(element, value));
  return slots;
}

// The values that a parameter takes; none if the argument is no parameter.
std::vector<Slot> parameter_values(const Function& function, const Argument& argument, int32_t length) {
  const auto turn = static_cast<size_t>(length);
  switch (argument.role) {
    case Role::kScale: return slots_of({1.0, 8.0, 0.3, 0x1p-130, 0x1p+140});
    case Role::kKind: return slots_of<int32_t>({0, 1, 2});
    case Role::kShift:
      return slots_of<int32_t>({0, 1, 3, 7, 8, 9, 15, 16, 17, 31, 32, 33, 255, 256, INT32_MAX});
    case Role::kRoundMode:
      return argument.is_unchecked
                 ? slots_of<int32_t>({ZIVK_RND_ZERO, ZIVK_RND_NEAR, ZIVK_RND_AWAY, 7, INT32_MIN})
                 : slots_of<int32_t>({ZIVK_RND_ZERO, ZIVK_RND_NEAR, ZIVK_RND_AWAY});
    case Role::kBound: return slots_of<int32_t>({INT32_MIN, -2, 0, 2, INT32_MAX});
    case Role::kTableLength: return slots_of<int32_t>({1, 2, 3, 17, 1000});
    case Role::kDataType:
      if (argument.samples) {
        return slots_of<int32_t>({ZIVK_DT_8U, ZIVK_DT_16S, ZIVK_DT_32S, ZIVK_DT_32F, ZIVK_DT_64F});
      }
      return slots_of<int32_t>({ZIVK_DT_8U, ZIVK_DT_16U, ZIVK_DT_16S, ZIVK_DT_32U, ZIVK_DT_32S, ZIVK_DT_32F,
                                ZIVK_DT_64U, ZIVK_DT_64S, ZIVK_DT_64F});
    case Role::kMethod: return slots_of<int32_t>({0, 1, 2});
    case Role::kStride: {
      const auto key = static_cast<int32_t>(function.arguments[0].element->bytes);
      return function.arguments[0].spans ? slots_of<int32_t>({key, 1, 3, 8, 37, INT32_MAX})
                                         : slots_of<int32_t>({key, key + 1, 2 * key, 2 * key + 3});
    }
    case Role::kNulls:
      return slots_of({Nulls::kAbsent, Nulls::kNone, Nulls::kFew, Nulls::kHalf, Nulls::kAll});
    case Role::kOffsets:
      return slots_of({Texts::kOfOneLength, Texts::kShort, Texts::kLong, Texts::kMostlyEmpty});
    case Role::kMaskLength: {
      std::vector<Slot> masks;
      for (int32_t mask : {1, 2, 3, 5, 7, 9, 10, 11, 21}) masks.push_back(Slot::of(std::min(mask, length)));
      return masks;
    }
    case Role::kFactor: return slots_of<int32_t>({1, 2, 3, 4, 5, 8, length < 1000 ? 37 : 6});
    case Role::kFrequency:
      return slots_of_type(*argument.element, {0, 0.0131, 0.109, 0.11, 0.1399, 0.14, 0.31, 0.4999});
    // These take turns with the length instead.
    case Role::kMagnitude: return {slots_of_type(*argument.element, {1, 1000.7, 32767})[turn % 3]};
    case Role::kAsymmetry: return {slots_of_type(*argument.element, {0, -2.9, 1.3, 3.1})[turn % 4]};
    case Role::kCount: return {slots_of<int32_t>({1, 3, 40, length, length + 3})[turn % 5]};
    case Role::kOffset: return {slots_of<int32_t>({0, 1000, INT32_MAX - length})[turn / 5 % 3]};
    default: break;
  }
  if (argument.line)
    return {Slot::of(turn % (argument.is_constant() ? 3 : 5) == 0 ? Line::kAbsent : Line::kPresent)};
  if (argument.scan != 0) return slots_of({Scan::kNone, Scan::kStopsAtOnce, Scan::kGoesOn});
  return {};
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

void fill_nulls(Bytes& flags, Nulls nulls, Random& random) {
  constexpr uint64_t kOneIn[] = {0, 0, 20, 2, 1};  // by Nulls
  const uint64_t one_in = kOneIn[static_cast<size_t>(nulls)];
  for (unsigned char& flag : flags) {
    const bool is_null = one_in != 0 && random.below(one_in) == 0;
    flag = is_null ? static_cast<unsigned char>(1 + random.below(255)) : 0;
  }
}

Bytes random_offsets(int32_t rows, Texts texts, Random& random) {
  const uint64_t size = random.below(100);
  std::vector<int32_t> offsets = {static_cast<int32_t>(random.below(3))};
  for (int32_t row = 0; row < rows; ++row) {
    uint64_t length = size;
    if (texts == Texts::kShort) length = random.below(20);
    if (texts == Texts::kLong) length = random.below(120);
    if (texts == Texts::kMostlyEmpty) length = random.below(8) == 0 ? random.below(4) : 0;
    offsets.push_back(offsets.back() + static_cast<int32_t>(length));
  }
  Bytes bytes(offsets.size() * sizeof offsets[0]);
  std::memcpy(bytes.data(), offsets.data(), bytes.size());
  return bytes;
}

// Texts that often begin alike: of few different bytes, or of any.
void fill_texts(Bytes& contents, Random& random, Flavour flavour) {
  const uint64_t different = flavour == Flavour::kFinite ? 2 : flavour == Flavour::kFewSpecial ? 256 : 1;
  for (unsigned char& byte : contents) byte = static_cast<unsigned char>(random.below(different) * 0x90);
}

// Where rows begin, and where the last one ends.
std::vector<int32_t> offsets_of(const Function& function, const Operands& operands) {
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    if (function.arguments[i].role != Role::kOffsets) continue;
    std::vector<int32_t> offsets(operands.arrays[i].size() / sizeof(int32_t));
    std::memcpy(offsets.data(), operands.arrays[i].data(), operands.arrays[i].size());
    return offsets;
  }
  throw std::logic_error(function.name + " has no offsets");
}

int32_t phase_of(const Function& function, const Operands& operands) {
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    if (function.arguments[i].role != Role::kPhase) continue;
    int32_t phase;
    std::memcpy(&phase, operands.arrays[i].data(), sizeof phase);
    return phase;
  }
  throw std::logic_error(function.name + " has no phase");
}

// Elements that stand further apart have garbage in between; those that stand closer overlap.
void fill_strided(Bytes& contents, const ElementType& element, int32_t stride, Random& random,
                  Flavour flavour) {
  for (size_t offset = 0; offset + element.bytes <= contents.size(); offset += static_cast<size_t>(stride)) {
    element.fill_random(&contents[offset], element.parts, random, flavour);
  }
}

// Unless there is to be no scan, which an element without a sign prevents, all elements are made negative. The
// word that stops the scan then stands next to the array, or next to one that does not stop it, of all bits set.
void add_scanned_words(Bytes& contents, const Argument& argument, Scan scan) {
  const size_t bytes = argument.element->bytes;
  if (scan == Scan::kNone) {
    contents[bytes - 1] &= 0x7F;
    return;
  }
  for (size_t i = bytes - 1; i < contents.size(); i += bytes) contents[i] |= 0x80;
  const auto add = [&](unsigned char value) {
    contents.insert(argument.scan < 0 ? contents.begin() : contents.end(), bytes, value);
  };
  if (scan == Scan::kGoesOn) add(0xFF);
  add(0);
}

// From 0 to `factor` - 1, or to 2 pi.
Slot random_phase(const Argument& phase, const Function& function, const Operands& operands, Random& random) {
  if (function.has(Role::kFactor)) {
    const auto factor = static_cast<uint64_t>(value_of("factor", function, operands));
    return Slot::of(static_cast<int32_t>(random.below(factor)));
  }
  constexpr uint64_t kSteps = 1000;
  return slot_of_type(*phase.element, 6.283185 * static_cast<double>(random.below(kSteps + 1)) / kSteps);
}

// What the handle's Init asks for if it is called with arguments of this call. The data type is that of the keys;
// arrays are there, but are not those of the call.
size_t handle_bytes(const Argument& handle, const Function& function, const Operands& operands) {
  if (handle.init.empty()) return 0;
  const Function* const init = find_function(handle.init);
  if (init == nullptr) throw std::logic_error("there is no " + handle.init);
  std::vector<Slot> slots;
  std::list<Bytes> arrays;
  for (const Argument& argument : init->arguments) {
    if (argument.role == Role::kDataType) {
      slots.push_back(Slot::of(function.arguments[0].element->selector));
    } else if (argument.is_pointer()) {
      const size_t bytes = argument.is_array() ? array_bytes(argument, function, operands) : sizeof(void*);
      slots.push_back(Slot::of(arrays.emplace_back(bytes).data()));
    } else {
      slots.push_back(Slot::of(value_of(argument.name.c_str(), function, operands)));
    }
  }
  const auto status = init->call(slots).as<ZIVKStatus>();
  if (status != ZIVK_STS_NO_ERR && status != ZIVK_STS_EVEN_MASK_WARN)
    throw std::logic_error(handle.init + " fails");
  return static_cast<size_t>(services.size.value());
}

// What the handle's Init makes of random values.
Bytes made_handle(const Argument& handle, size_t variant, Flavour flavour) {
  const Function* const init = find_function(handle.init);
  if (init == nullptr) throw std::logic_error("there is no " + handle.init);
  std::vector<Slot> slots = random_operands(*init, static_cast<int32_t>(variant), 0, flavour).slots;
  const unsigned char* made = nullptr;
  slots[0] = Slot::of(&made);
  if (init->call(slots).as<ZIVKStatus>() != ZIVK_STS_NO_ERR) throw std::logic_error(handle.init + " fails");
  return Bytes(made, made + services.size.value());
}

GuardedMemory& memory_of_argument(size_t argument) {
  static std::vector<std::unique_ptr<GuardedMemory>> memory;
  while (memory.size() <= argument) memory.push_back(std::make_unique<GuardedMemory>());
  return *memory[argument];
}

unsigned char next_garbage() {
  static unsigned char garbage = 0;
  return garbage += 0x35;
}

unsigned char* place(const GuardedMemory& memory, size_t bytes, Placement placement, size_t alignment,
                     size_t argument) {
  switch (placement) {
    case Placement::kBeforeGuard: return memory.end() - (bytes + alignment - 1) / alignment * alignment;
    case Placement::kBehindGuard: return memory.begin();
    case Placement::kMisaligned:  // no two arrays alike
      return memory.begin() + 4096 + alignment * (2 * argument + 1);
    case Placement::kRoomy: break;
  }
  return memory.begin() + 4096;
}

}  // namespace

Slot slot_of_type(const ElementType& element, double value) {
  if (*element.type == typeid(double)) return Slot::of(value);
  if (*element.type == typeid(float)) return Slot::of(static_cast<float>(value));
  if (*element.type == typeid(int16_t)) return Slot::of(static_cast<int16_t>(value));
  return Slot::of(static_cast<int32_t>(value));
}

int32_t value_of(const char* name, const Function& function, const Operands& operands) {
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    if (function.arguments[i].name == name) return operands.slots[i].as<int32_t>();
  }
  throw std::logic_error(function.name + " has no argument " + name);
}

size_t array_bytes(const Argument& argument, const Function& function, const Operands& operands) {
  const size_t bytes = argument.array_element_bytes();
  auto length = static_cast<size_t>(operands.length);
  if (!argument.is_array()) return bytes;
  if (argument.line) {
    return bytes * static_cast<size_t>((value_of("maskLen", function, operands) - 1) / 2 * 2);
  }
  if (argument.up) return bytes * length * static_cast<size_t>(value_of("factor", function, operands));
  if (argument.down) {
    const auto factor = static_cast<size_t>(value_of("factor", function, operands));
    const auto phase = static_cast<size_t>(phase_of(function, operands));
    return bytes * (phase < length ? (length - phase + factor - 1) / factor : 0);
  }
  if (argument.pairs_in_fours) return bytes * std::max(length, (length / 2 * 2 + 3) / 4 * 4);
  if (argument.text) {
    const std::vector<int32_t> offsets = offsets_of(function, operands);
    int32_t longest = 0;
    for (size_t i = 1; i < offsets.size(); ++i) longest = std::max(longest, offsets[i] - offsets[i - 1]);
    return static_cast<size_t>(argument.role == Role::kSource ? offsets.back() : longest);
  }
  if (argument.role == Role::kOffsets) ++length;
  if (argument.counted) return bytes * static_cast<size_t>(value_of("k", function, operands));
  if (!argument.strided) return bytes * length;
  const auto stride = static_cast<size_t>(value_of("srcStride", function, operands));
  if (argument.spans) length = std::min(length, (length * bytes + stride - 1) / stride);
  return (length - 1) * stride + bytes;
}

ZIVKStatus success_of(const Function& function, const Operands& operands) {
  const bool is_even = function.has(Role::kMaskLength) && value_of("maskLen", function, operands) % 2 == 0;
  return is_even ? ZIVK_STS_EVEN_MASK_WARN : ZIVK_STS_NO_ERR;
}

size_t count_variants(const Function& function, bool with_scale) {
  size_t count = 1;
  for (const Argument& argument : function.arguments) {
    if (argument.role == Role::kScale && !with_scale) continue;
    count *= std::max<size_t>(1, parameter_values(function, argument, 1).size());
  }
  return count;
}

Operands random_operands(const Function& function, int32_t length, size_t variant, Flavour flavour) {
  Random random(static_cast<uint64_t>(length) * 8191 + variant);
  Operands operands{length, std::vector<Bytes>(function.arguments.size()),
                    std::vector<Slot>(function.arguments.size())};
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    const std::vector<Slot> values = parameter_values(function, function.arguments[i], length);
    if (function.arguments[i].role == Role::kLength) operands.slots[i] = Slot::of(length);
    if (values.empty()) continue;
    operands.slots[i] = values[variant % values.size()];
    variant /= values.size();
  }
  // Ahead of the arrays whose lengths depend on them.
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    const Argument& argument = function.arguments[i];
    if (argument.role == Role::kOffsets) {
      operands.arrays[i] = random_offsets(length, operands.slots[i].as<Texts>(), random);
    } else if (argument.role == Role::kPhase) {
      const Slot phase = random_phase(argument, function, operands, random);
      operands.arrays[i].assign(phase.bytes, phase.bytes + argument.element->bytes);
    }
  }
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    const Argument& argument = function.arguments[i];
    Bytes& contents = operands.arrays[i];
    if (argument.role == Role::kOffsets || argument.role == Role::kPhase) continue;
    if (argument.role == Role::kTable) {
      contents = random_table(operands.slots[i + 1].as<int32_t>(), random);
    } else if (argument.role == Role::kHandle && argument.made) {
      contents = made_handle(argument, random.below(1000), flavour);
    } else if (argument.role == Role::kHandle) {
      contents.resize(handle_bytes(argument, function, operands));
    } else if (argument.is_pointer()) {
      contents.assign(array_bytes(argument, function, operands), kOutput);
      if (argument.role == Role::kNulls) {
        fill_nulls(contents, operands.slots[i].as<Nulls>(), random);
      } else if (argument.text && argument.is_read()) {
        fill_texts(contents, random, flavour);
      } else if (argument.strided) {
        fill_strided(contents, *argument.element, value_of("srcStride", function, operands), random, flavour);
      } else if (argument.is_read()) {
        argument.element->fill_random(contents.data(), contents.size() / argument.element->part_bytes(),
                                      random, flavour);
      }
      if (argument.scan != 0) add_scanned_words(contents, argument, operands.slots[i].as<Scan>());
    } else if (argument.role == Role::kConstant) {
      argument.element->fill_random(operands.slots[i].bytes, argument.element->parts, random, flavour);
    }
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
      garbage_(next_garbage()),
      is_shared_(function.arguments.size()) {
  for (size_t i = 0; i < pointers_.size(); ++i) {
    const Argument& argument = function.arguments[i];
    if (!argument.is_pointer()) continue;
    const Bytes& contents = operands.arrays[i];
    const GuardedMemory& memory = memory_of_argument(i);
    const bool is_anywhere = function.alignment == Alignment::BYTE || argument.strided;
    const size_t alignment = is_anywhere ? 1 : argument.element->alignment;
    unsigned char* const array = pointers_[i] = place(memory, contents.size(), placement, alignment, i);
    std::fill(std::max(memory.begin(), array - kMarginBytes), array, kMargin);
    std::copy(contents.begin(), contents.end(), array);
    unsigned char* const end = array + contents.size();
    std::fill(end, std::min(memory.end(), end + kMarginBytes), kMargin);
    if (argument.role == Role::kHandle && !argument.made) std::fill(array, end, garbage_);
    if ((argument.role == Role::kNulls && operands.slots[i].as<Nulls>() == Nulls::kAbsent) ||
        (argument.line && operands.slots[i].as<Line>() == Line::kAbsent)) {
      slots[i] = Slot();
      continue;
    }
    // Words ahead of the array take part.
    const size_t ahead = argument.scan < 0 ? contents.size() - array_bytes(argument, function, operands) : 0;
    slots[i] = Slot::of(array + ahead);
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
    if (argument.role == Role::kHandle && !argument.made) {
      const auto is_garbage = [this](unsigned char byte) { return byte == garbage_; };
      if (!allow_results && !std::all_of(array, end, is_garbage)) return "changed " + argument.name;
    } else if (!(allow_results && argument.is_written()) &&
               !std::equal(array, end, operands_.arrays[i].begin())) {
      return "changed " + argument.name;
    }
  }
  return {};
}

namespace {

std::vector<uint64_t> sorted_bits(const ElementType& element, const Bytes& contents) {
  std::vector<uint64_t> bits(contents.size() / element.bytes);
  for (size_t i = 0; i < bits.size(); ++i) std::memcpy(&bits[i], &contents[i * element.bytes], element.bytes);
  std::sort(bits.begin(), bits.end());
  return bits;
}

bool has_nan(const ElementType& element, const Bytes& contents) {
  for (size_t offset = 0; offset < contents.size(); offset += element.part_bytes()) {
    if (element.is_nan(&contents[offset])) return true;
  }
  return false;
}

}  // namespace

Bytes what_is_specified(const ElementType& element, Results results, Bytes contents) {
  if (results == Results::SORTED && has_nan(element, contents)) return {};
  for (size_t offset = 0; offset < contents.size(); offset += element.part_bytes()) {
    if (results == Results::ANY_NAN && element.is_nan(&contents[offset])) {
      std::memset(&contents[offset], 0xFF, element.part_bytes());
    } else if (results == Results::SORTED && element.is_zero(&contents[offset])) {
      std::memset(&contents[offset], 0, element.part_bytes());
    }
  }
  return contents;
}

std::string difference(const ElementType& element, Results results, const Bytes& all_expected,
                       const Bytes& all_actual) {
  if (all_expected == all_actual) return {};
  if (all_expected.size() != all_actual.size()) return "sizes differ";
  if (results == Results::SORTED && sorted_bits(element, all_expected) != sorted_bits(element, all_actual)) {
    return "not a permutation";
  }
  const Bytes expected = what_is_specified(element, results, all_expected),
              actual = what_is_specified(element, results, all_actual);
  const size_t part_bytes = element.part_bytes();
  for (size_t offset = 0; offset < expected.size(); offset += part_bytes) {
    if (std::memcmp(&expected[offset], &actual[offset], part_bytes) == 0) continue;
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
  if (status != call.success()) return "status " + std::to_string(status);
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
