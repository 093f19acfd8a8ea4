#include "generic/function_table.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <utility>

namespace zivks_test {
namespace {

template <class T>
bool is_nan(const void* part) {
  if constexpr (std::is_floating_point_v<T>) {
    T value;
    std::memcpy(&value, part, sizeof value);
    return std::isnan(value);
  }
  return false;
}

template <class T>
bool is_zero(const void* part) {
  T value;
  std::memcpy(&value, part, sizeof value);
  return value == 0;
}

template <class T>
void fill_random(void* destination, size_t parts, Random& random, Flavour flavour) {
  for (size_t i = 0; i < parts; ++i) {
    const auto value = random_part<PartOf<T>>(random, flavour);
    std::memcpy(static_cast<unsigned char*>(destination) + i * sizeof value, &value, sizeof value);
  }
}

// Imaginary parts run the other way, so that a complex element does not hold the same value twice.
template <class T>
void fill_decisive(void* destination, size_t elements, size_t period, bool exhaustive) {
  const std::vector<PartOf<T>> values = decisive_values<PartOf<T>>(exhaustive);
  for (size_t i = 0; i < elements; ++i) {
    const size_t index = i / period % values.size();
    const PartOf<T> parts[2] = {values[index], values[values.size() - 1 - index]};
    std::memcpy(static_cast<unsigned char*>(destination) + i * sizeof(T), parts, sizeof(T));
  }
}

template <class T>
size_t count_decisive(bool exhaustive) {
  return decisive_values<PartOf<T>>(exhaustive).size();
}

template <class T>
constexpr ZIVKDataType selector_of() {
  if constexpr (std::is_same_v<T, uint8_t>) return ZIVK_DT_8U;
  if constexpr (std::is_same_v<T, uint16_t>) return ZIVK_DT_16U;
  if constexpr (std::is_same_v<T, int16_t>) return ZIVK_DT_16S;
  if constexpr (std::is_same_v<T, uint32_t>) return ZIVK_DT_32U;
  if constexpr (std::is_same_v<T, int32_t>) return ZIVK_DT_32S;
  if constexpr (std::is_same_v<T, float>) return ZIVK_DT_32F;
  if constexpr (std::is_same_v<T, uint64_t>) return ZIVK_DT_64U;
  if constexpr (std::is_same_v<T, int64_t>) return ZIVK_DT_64S;
  if constexpr (std::is_same_v<T, double>) return ZIVK_DT_64F;
  return 0;
}

template <class T>
constexpr bool kIsElement = std::is_arithmetic_v<PartOf<T>> && !std::is_same_v<T, char>;

template <class T>
constexpr ElementType kElementType = {
    &typeid(T),        sizeof(T),          alignof(T),     ElementParts<T>::kCount, selector_of<T>(),
    is_nan<PartOf<T>>, is_zero<PartOf<T>>, fill_random<T>, fill_decisive<T>,        count_decisive<T>};

const struct {
  Role role;
  std::set<std::string> names;
} kNames[] = {{Role::kSource, {"src", "src1", "src2", "srcRe", "srcIm", "dlySrc"}},
              {Role::kDestination, {"dst", "dstRe", "dstIm", "dstIndx", "dstIdx", "dstVal", "dlyDst"}},
              {Role::kSourceDestination, {"srcDst"}},
              {Role::kConstant, {"val", "low", "high", "seed", "slope"}},
              {Role::kLength, {"len", "srcLen"}},
              {Role::kScale, {"scale"}},
              {Role::kKind, {"kind"}},
              {Role::kShift, {"shift"}},
              {Role::kRoundMode, {"rndMode"}},
              {Role::kBound, {"lowerBound", "upperBound"}},
              {Role::kTable, {"table"}},
              {Role::kTableLength, {"tableLen"}},
              {Role::kHandle, {"policy"}},
              {Role::kDataType, {"dataType"}},
              {Role::kStride, {"srcStride"}},
              {Role::kOffset, {"offset"}},
              {Role::kCount, {"k"}},
              {Role::kMethod, {"method"}},
              {Role::kNulls, {"nulls"}},
              {Role::kOffsets, {"offsets"}},
              {Role::kMaskLength, {"maskLen"}},
              {Role::kFactor, {"factor"}},
              {Role::kPhase, {"phase"}},
              {Role::kMagnitude, {"magn"}},
              {Role::kFrequency, {"rFreq"}},
              {Role::kAsymmetry, {"asym"}},
              {Role::kResult, {"dstLen"}}};

Role role_of(const std::string& name) {
  for (const auto& [role, names] : kNames) {
    if (names.count(name) != 0) return role;
  }
  const bool is_result = name.size() > 1 && name[0] == 'p' && name[1] >= 'A' && name[1] <= 'Z';
  return is_result ? Role::kResult : Role::kOther;
}

// What the compiler knows of a parameter.
struct Parameter {
  bool is_pointer, is_pointer_to_constant, is_int32, is_double;
  const ElementType* element;
};

template <class T>
constexpr Parameter describe_parameter() {
  using Pointed = std::remove_cv_t<std::remove_pointer_t<T>>;
  Parameter parameter = {std::is_pointer_v<T>,
                         std::is_pointer_v<T> && std::is_const_v<std::remove_pointer_t<T>>,
                         std::is_same_v<T, int32_t>, std::is_same_v<T, double>, nullptr};
  if constexpr (kIsElement<Pointed>) parameter.element = &kElementType<Pointed>;
  // A handle is memory for elements of any type. Its address is as wide as the widest.
  constexpr bool kIsHandle = std::is_void_v<Pointed> || std::is_class_v<Pointed>;
  if constexpr (std::is_pointer_v<T> && !kIsElement<Pointed> && (kIsHandle || std::is_pointer_v<Pointed>)) {
    parameter.element = &kElementType<uint64_t>;
  }
  return parameter;
}

// Whether the type in the declaration fits the role that the name gives.
bool matches(const Argument& argument, const Parameter& parameter) {
  if (argument.is_pointer()) {
    return parameter.is_pointer && argument.element != nullptr &&
           parameter.is_pointer_to_constant == argument.is_constant();
  }
  for (Role integer : {Role::kLength, Role::kKind, Role::kShift, Role::kRoundMode, Role::kBound,
                       Role::kTableLength, Role::kDataType, Role::kStride, Role::kOffset, Role::kCount,
                       Role::kMethod, Role::kMaskLength, Role::kFactor}) {
    if (argument.role == integer) return parameter.is_int32;
  }
  if (argument.role == Role::kScale) return parameter.is_double;
  for (Role number : {Role::kConstant, Role::kMagnitude, Role::kFrequency, Role::kAsymmetry}) {
    if (argument.role == number) return !parameter.is_pointer && argument.element != nullptr;
  }
  return true;
}

// `text` is a name and the words behind it.
Argument describe_argument(std::string text, const Parameter& parameter, std::string& fault) {
  std::replace(text.begin(), text.end(), ':', ' ');
  std::istringstream stream(text);
  Argument argument{};
  stream >> argument.name;
  argument.role = role_of(argument.name);
  argument.element = parameter.element;
  argument.points_to_constant = parameter.is_pointer_to_constant;
  if (argument.role == Role::kOffset && !parameter.is_int32) argument.role = Role::kConstant;
  for (std::string word; stream >> word;) {
    if (word == "packed3" && argument.is_array()) {
      argument.packed = 3;
    } else if (word == "nullable" && argument.is_array()) {
      argument.nullable = true;
    } else if (word == "kept" && argument.role == Role::kDestination) {
      argument.kept = true;
    } else if (word == "result" && argument.role == Role::kDestination) {
      argument.role = Role::kResult;
    } else if (word == "text" && argument.is_array()) {
      argument.text = true;
    } else if (word == "atLeast3" && argument.role == Role::kLength) {
      argument.least = 3;
    } else if (word == "unsigned" && argument.role == Role::kLength) {
      argument.is_unsigned = true;
    } else if (word == "unchecked" && (argument.role == Role::kRoundMode || argument.role == Role::kHandle)) {
      argument.is_unchecked = true;
    } else if (word == "k" && argument.role == Role::kDestination) {
      argument.counted = true;
    } else if ((word == "strided" || word == "spans") && argument.role == Role::kSource) {
      argument.strided = true;
      argument.spans = word == "spans";
    } else if ((word == "scansBehind" || word == "scansAhead") && argument.is_array()) {
      argument.scan = word == "scansBehind" ? 1 : -1;
    } else if (word == "line" && argument.is_array()) {
      argument.line = true;
    } else if ((word == "up" || word == "down") && argument.role == Role::kDestination) {
      argument.up = word == "up";
      argument.down = word == "down";
    } else if (word == "pairsInFours" && argument.role == Role::kDestination) {
      argument.pairs_in_fours = true;
    } else if (word == "samples" && argument.role == Role::kDataType) {
      argument.samples = true;
    } else if (word == "made" && argument.role == Role::kHandle) {
      argument.made = true;
    } else if (word == "new" && argument.role == Role::kHandle) {
      argument.role = Role::kNewHandle;
    } else if (word.rfind("ZIVKS_", 0) == 0 && argument.role == Role::kHandle) {
      argument.init = word;
    } else {
      fault = "the word " + word + " does not fit " + argument.name;
    }
  }
  if (!matches(argument, parameter)) fault = "the name " + argument.name + " does not fit its type";
  return argument;
}

struct Signature {
  bool returns_status;
  const Parameter* parameters;
  size_t count;
  Slot (*invoke)(void (*address)(), const Slot* slots);
};

template <class Function>
struct SignatureOf;
template <class Result, class... Parameters>
struct SignatureOf<Result(Parameters...)> {
  template <size_t... I>
  static Slot call(void (*address)(), [[maybe_unused]] const Slot* slots, std::index_sequence<I...>) {
    const auto function = reinterpret_cast<Result (*)(Parameters...)>(address);
    if constexpr (std::is_void_v<Result>) {
      function(slots[I].template as<Parameters>()...);
      return {};
    } else {
      return Slot::of(function(slots[I].template as<Parameters>()...));
    }
  }
  static Slot invoke(void (*address)(), const Slot* slots) {
    return call(address, slots, std::index_sequence_for<Parameters...>());
  }

  static constexpr Parameter kParameters[] = {describe_parameter<Parameters>()..., {}};
  static constexpr Signature kSignature = {std::is_same_v<Result, ZIVKStatus>, kParameters,
                                           sizeof...(Parameters), invoke};
};

struct Row {
  const char *name, *family, *arguments;
  size_t block;
  Alignment alignment;
  Overlap overlap;
  Results results;
  void (*address)();
  const Signature* signature;
};

Function describe(const Row& row) {
  const Signature& signature = *row.signature;
  Function function{row.name,    row.family,  {}, row.block,   row.alignment,
                    row.overlap, row.results, {}, row.address, signature.invoke};
  std::istringstream stream(row.arguments);
  const std::vector<std::string> texts(std::istream_iterator<std::string>(stream), {});
  if (texts.size() != signature.count) {
    function.fault = "the declaration has another number of arguments";
    return function;
  }
  for (size_t i = 0; i < texts.size(); ++i) {
    function.arguments.push_back(describe_argument(texts[i], signature.parameters[i], function.fault));
    if (function.returns_status() && function.arguments.back().role == Role::kOther) {
      function.fault = "unknown argument name " + texts[i];
    }
  }
  if (function.returns_status() != signature.returns_status) function.fault = "the result is of another type";
  return function;
}

}  // namespace

const Function* Function::out_of_place_twin() const {
  // These two do not reverse arrays of every length.
  if (name == "ZIVKS_Flip_8u_I" || name == "ZIVKS_Flip_16u_I") return nullptr;
  const size_t mode = name.rfind('_') + 1;
  if (name.compare(mode, std::string::npos, "I") == 0) return find_function(name.substr(0, mode - 1));
  if (name.compare(mode, std::string::npos, "IS") == 0) return find_function(name.substr(0, mode) + "S");
  return nullptr;
}

bool Function::has(Role role) const {
  return std::any_of(arguments.begin(), arguments.end(),
                     [role](const Argument& argument) { return argument.role == role; });
}

int32_t Function::least_length() const {
  int32_t least = 1;
  for (const Argument& argument : arguments) least = std::max(least, argument.least);
  return least;
}

const std::vector<Function>& all_functions() {
  static const std::vector<Function> functions = [] {
    static const Row rows[] = {
#define ZIVKS_FUNCTION(name, family, arguments, block, alignment, overlap, results) \
  {#name,                                                                           \
   #family,                                                                         \
   arguments,                                                                       \
   block,                                                                           \
   Alignment::alignment,                                                            \
   Overlap::overlap,                                                                \
   Results::results,                                                                \
   reinterpret_cast<void (*)()>(name),                                              \
   &SignatureOf<decltype(name)>::kSignature},
#include "core/functions.def"
#undef ZIVKS_FUNCTION
    };
    std::vector<Function> list;
    for (const Row& row : rows) list.push_back(describe(row));
    return list;
  }();
  return functions;
}

std::vector<const Function*> array_functions() {
  std::vector<const Function*> list;
  for (const Function& function : all_functions()) {
    if (function.returns_status()) list.push_back(&function);
  }
  return list;
}

const Function* find_function(const std::string& name) {
  static const std::map<std::string, const Function*> functions = [] {
    std::map<std::string, const Function*> by_name;
    for (const Function& function : all_functions()) by_name[function.name] = &function;
    return by_name;
  }();
  const auto found = functions.find(name);
  return found == functions.end() ? nullptr : found->second;
}

std::ostream& operator<<(std::ostream& out, const Function* function) { return out << function->name; }

}  // namespace zivks_test
