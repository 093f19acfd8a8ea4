#include "generic/function_table.h"

#include <algorithm>
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
constexpr bool kIsElement = std::is_arithmetic_v<PartOf<T>> && !std::is_same_v<T, char>;

template <class T>
const ElementType* element_type() {  // null for what is no element
  if constexpr (kIsElement<T>) {
    static const ElementType type = {
        &typeid(T),        sizeof(T),      alignof(T),       ElementParts<T>::kCount,
        is_nan<PartOf<T>>, fill_random<T>, fill_decisive<T>, count_decisive<T>};
    return &type;
  }
  return nullptr;
}

Role role_of(const std::string& word) {
  if (word == "len") return Role::kLength;
  if (word == "val") return Role::kConstant;
  if (word == "scale") return Role::kScale;
  if (word == "kind") return Role::kKind;
  if (word == "shift") return Role::kShift;
  if (word == "rndMode") return Role::kRoundMode;
  if (word == "lowerBound" || word == "upperBound") return Role::kBound;
  if (word == "table") return Role::kTable;
  if (word == "tableLen") return Role::kTableLength;
  if (word == "srcDst") return Role::kSourceDestination;
  if (word == "src" || word == "src1" || word == "src2" || word == "srcRe" || word == "srcIm")
    return Role::kSource;
  if (word == "dst" || word == "dstRe" || word == "dstIm" || word == "dstIndx") return Role::kDestination;
  if (word.size() > 1 && word[0] == 'p' && std::isupper(static_cast<unsigned char>(word[1])))
    return Role::kResult;
  return Role::kOther;
}

template <class T>
Argument describe_argument(std::string word) {
  using Pointed = std::remove_pointer_t<T>;
  const char mark = word.empty() ? '\0' : word.back();
  if (mark == '?' || mark == '-') word.pop_back();
  size_t packed = 1;
  if (const size_t above = word.find('>'); above != std::string::npos) word.resize(above);
  if (const size_t star = word.find('*'); star != std::string::npos) {
    packed = std::stoul(word.substr(star + 1));
    word.resize(star);
  }
  return {word, role_of(word), mark == '?', element_type<std::remove_cv_t<Pointed>>(), packed};
}

// What the declaration says of an argument and what its name says must be one.
template <class T>
bool matches(const Argument& argument) {
  if (argument.is_pointer()) {
    return std::is_pointer_v<T> && argument.element != nullptr &&
           std::is_const_v<std::remove_pointer_t<T>> != argument.is_written();
  }
  for (Role integer :
       {Role::kLength, Role::kKind, Role::kShift, Role::kRoundMode, Role::kBound, Role::kTableLength}) {
    if (argument.role == integer) return std::is_same_v<T, int32_t>;
  }
  if (argument.role == Role::kScale) return std::is_same_v<T, double>;
  return argument.role != Role::kConstant || kIsElement<T>;
}

template <class Result, class... Parameters, size_t... I>
Slot invoke(void (*address)(), const Slot* slots, std::index_sequence<I...>) {
  const auto function = reinterpret_cast<Result (*)(Parameters...)>(address);
  if constexpr (std::is_void_v<Result>) {
    function(slots[I].template as<Parameters>()...);
    return {};
  } else {
    return Slot::of(function(slots[I].template as<Parameters>()...));
  }
}

template <class Result, class... Parameters>
Function describe(const char* name, const char* family, const char* arguments, size_t block,
                  Alignment alignment, Overlap overlap, Outside outside, Results results,
                  Result (*address)(Parameters...)) {
  std::istringstream stream(arguments);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  Function row{};
  row.name = name;
  row.family = family;
  row.block = block;
  row.alignment = alignment;
  row.overlap = overlap;
  row.outside = outside;
  row.results = results;
  const auto has_word = [&](const char* word) {
    return std::find(words.begin(), words.end(), word) != words.end();
  };
  row.accepts_negative_length = has_word("len-");
  row.accepts_every_mode = has_word("rndMode-");
  row.least_length = has_word("len>2") ? 3 : 1;
  row.address = reinterpret_cast<void (*)()>(address);
  row.invoke = [](void (*untyped)(), [[maybe_unused]] const Slot* slots) {
    return invoke<Result, Parameters...>(untyped, slots, std::index_sequence_for<Parameters...>());
  };
  if (words.size() != sizeof...(Parameters)) {
    row.fault = "the declaration has another number of arguments";
    return row;
  }
  [[maybe_unused]] size_t next = 0;
  (row.arguments.push_back(describe_argument<Parameters>(words[next++])), ...);
  next = 0;
  if (!(matches<Parameters>(row.arguments[next++]) && ...))
    row.fault = "an argument's name does not fit its type";
  if (row.returns_status()) {
    if (!std::is_same_v<Result, ZIVKStatus>) row.fault = "returns no status";
    for (const Argument& argument : row.arguments) {
      if (argument.role == Role::kOther) row.fault = "unknown argument name " + argument.name;
    }
  }
  return row;
}

}  // namespace

const Function* Function::out_of_place_twin() const {
  // At some lengths these two do not reverse the array.
  if (name == "ZIVKS_Flip_8u_I" || name == "ZIVKS_Flip_16u_I") return nullptr;
  const size_t mode = name.rfind('_') + 1;
  if (name.compare(mode, std::string::npos, "I") == 0) return find_function(name.substr(0, mode - 1));
  if (name.compare(mode, std::string::npos, "IS") == 0) return find_function(name.substr(0, mode) + "S");
  return nullptr;
}

const std::vector<Function>& all_functions() {
  static const std::vector<Function> functions = {
#define ZIVKS_FUNCTION(name, family, arguments, block, alignment, overlap, outside, results)           \
  describe(#name, #family, arguments, block, Alignment::alignment, Overlap::overlap, Outside::outside, \
           Results::results, name),
#include "core/functions.def"
#undef ZIVKS_FUNCTION
  };
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
  for (const Function& function : all_functions()) {
    if (function.name == name) return &function;
  }
  return nullptr;
}

std::ostream& operator<<(std::ostream& out, const Function* function) { return out << function->name; }

}  // namespace zivks_test
