// A row of the benchmark tables: a call of a library function, the plain loop that does the same work, the
// standard routine where there is one, and what is required of the library's call. Rows stand in rows/, one
// file a subsystem; the timing program and the instruction counter both walk them.
//
// A row names its arguments by their roles, in the order of the library's interface:
//
//   ROW(ZIVKS_AddC_32f, kPlain, ElementWise<Add>, NoRoutine, src, val, dst, len)
//
// The types come from the function itself, so that the plain loop runs on the same types.
#ifndef BENCH_ROW_H
#define BENCH_ROW_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <random>
#include <regex>
#include <string>
#include <type_traits>
#include <vector>

#include "bench/plain_loops.h"
#include "zivks.h"

namespace bench {

// What is required of a row, against the plain loop.
struct Requirement {
  double speedup_x86_64;           // how many times as fast on cache-resident arrays
  double instruction_share_arm64;  // instructions an element, as a share of the plain loop's
};
inline constexpr Requirement kPlain = {1.0, 1.0};
inline constexpr Requirement kWidening = {1.5, 1.0};  // also rounding
inline constexpr Requirement kRounding = {2.0, 0.5};  // to saturated integers
inline constexpr Requirement kPacked = {4.0, 0.5};    // samples of three bytes
inline constexpr Requirement kSaturating = {1.5, 0.5};
inline constexpr Requirement kScaled = {2.0, 1.0 / 3};  // rounding and saturating integers
inline constexpr Requirement kExtreme = {1.0, 0.5};
inline constexpr Requirement kNanWatching = {1.5, 0.5};  // extremes of floats
inline constexpr Requirement kPosition = {3.0, 0.5};
inline constexpr Requirement kBisection = {2.0, 1.0};

// The memory that rows work on, all of it touched beforehand. The arrays follow one another in memory, so
// that a move from a source to a destination always goes the same way, and start at different offsets within
// a page, since on some processors a load waits for an earlier store at the same offset.
class Arrays {
 public:
  static constexpr int kCount = 4;

  explicit Arrays(std::size_t bytes_each) : bytes_each_(bytes_each) {
    const std::size_t distance = (bytes_each + 4095) / 4096 * 4096 + 1088;
    storage_.reset(static_cast<std::byte*>(::operator new(kCount* distance, kPage)));
    for (std::size_t i = 0; i < kCount; ++i) arrays_[i] = storage_.get() + i * distance;
    clear();
  }

  void clear() const {
    for (void* array : arrays_) std::memset(array, 1, bytes_each_);
    std::memset(results_, 1, sizeof results_);
  }

  void* array(int index) const { return arrays_[index]; }
  void* result(int index) const { return &results_[index]; }

  // What stands in all arrays and results.
  std::vector<std::byte> contents() const {
    std::vector<std::byte> bytes(kCount * bytes_each_ + sizeof results_);
    for (std::size_t i = 0; i < kCount; ++i) std::memcpy(&bytes[i * bytes_each_], arrays_[i], bytes_each_);
    std::memcpy(&bytes[kCount * bytes_each_], results_, sizeof results_);
    return bytes;
  }

 private:
  static constexpr std::align_val_t kPage{4096};
  struct Release {
    void operator()(std::byte* memory) const { ::operator delete(memory, kPage); }
  };
  std::unique_ptr<std::byte, Release> storage_;
  std::size_t bytes_each_;
  void* arrays_[kCount];
  mutable std::max_align_t results_[4];
};

// Random values of the whole range for integers, between -1024 and 1024 for floats. They repeat after 4096
// elements, which no loop can tell.
template <class T>
void fill_at_random(void* memory, int32_t len, int seed) {
  constexpr std::size_t kPeriod = 4096;
  std::mt19937_64 generator(static_cast<uint64_t>(seed));
  T* array = static_cast<T*>(memory);
  const auto count = static_cast<std::size_t>(len);
  for (std::size_t i = 0; i < std::min(count, kPeriod); ++i) {
    if constexpr (std::is_floating_point_v<T>) {
      array[i] = static_cast<T>(static_cast<int32_t>(generator() >> 32)) / T{1 << 21};
    } else {
      array[i] = static_cast<T>(generator());
    }
  }
  for (std::size_t done = kPeriod; done < count; done += kPeriod) {
    std::memcpy(array + done, array, std::min(kPeriod, count - done) * sizeof(T));
  }
}

// The roles of arguments. `Parameter` is the argument's type in the library's interface.
namespace role {

template <class Parameter>
using Element = std::remove_cv_t<std::remove_pointer_t<Parameter>>;

struct NoArray {
  template <class Parameter>
  static constexpr int kBytesMoved = 0;
  template <class Parameter>
  static void fill(const Arrays&, int32_t) {}
};

// Of what the pointer points to, `packed` make up an element.
template <int index, int moves, int packed = 1>
struct Array {
  template <class Parameter>
  static constexpr int kBytesMoved = (moves * packed * int{sizeof(Element<Parameter>)});
  template <class Parameter>
  static Parameter get(const Arrays& arrays, int32_t) {
    return static_cast<Parameter>(arrays.array(index));
  }
  template <class Parameter>
  static void fill(const Arrays& arrays, int32_t len) {
    using Part = PartOf<Element<Parameter>>;
    constexpr int32_t kParts = int32_t{sizeof(Element<Parameter>) / sizeof(Part)};
    fill_at_random<Part>(arrays.array(index), packed * kParts * len, index);
  }
};

// As many different values in ascending order.
template <int index, int entries>
struct AscendingTable : NoArray {
  template <class Parameter>
  static Parameter get(const Arrays& arrays, int32_t) {
    return static_cast<Parameter>(arrays.array(index));
  }
  template <class Parameter>
  static void fill(const Arrays& arrays, int32_t) {
    constexpr unsigned kSpacing = 65536 / entries;
    std::mt19937 generator;
    auto* const table = static_cast<Element<Parameter>*>(arrays.array(index));
    for (unsigned i = 0; i < entries; ++i) {
      table[i] = static_cast<Element<Parameter>>(i * kSpacing + generator() % kSpacing);
    }
  }
};

template <int index>
struct Result : NoArray {
  template <class Parameter>
  static Parameter get(const Arrays& arrays, int32_t) {
    return static_cast<Parameter>(arrays.result(index));
  }
};

struct NullArray : NoArray {
  template <class Parameter>
  static Parameter get(const Arrays&, int32_t) {
    return nullptr;
  }
};

struct Length : NoArray {
  template <class Parameter>
  static Parameter get(const Arrays&, int32_t len) {
    return len;
  }
};

template <int value, int divisor = 1>
struct Number : NoArray {
  template <class Parameter>
  static Parameter get(const Arrays&, int32_t) {
    if constexpr (std::is_arithmetic_v<Parameter>) {
      return static_cast<Parameter>(value) / divisor;
    } else {
      return Parameter{value, value - 1};
    }
  }
};

inline constexpr Array<0, 1> src, src1, srcRe;
inline constexpr Array<1, 1> src2, srcIm;
inline constexpr Array<2, 1> dst, dstRe;
inline constexpr Array<3, 1> dstIm, dstIndx;
template <int entries>
inline constexpr AscendingTable<1, entries> table;
inline constexpr Array<2, 2> srcDst;
template <int index, int moves>
constexpr Array<index, moves, 3> triples(Array<index, moves>) {
  return {};
}
inline constexpr NullArray null;
inline constexpr Result<0> result, pMin;
inline constexpr Result<1> pIndx, pMinIndx;
inline constexpr Result<2> pMax;
inline constexpr Result<3> pMaxIndx;
inline constexpr Length len;
inline constexpr Number<3> val;
template <int value, int divisor = 1>
inline constexpr Number<value, divisor> number;

}  // namespace role

using Call = void (*)(const Arrays&, int32_t len);

struct Row {
  const char* function;
  Requirement requirement;
  int bytes_per_element = 0;  // read and written
  Call fill = nullptr;        // gives the arrays their values
  Call zivks = nullptr;
  Call plain = nullptr;
  Call standard = nullptr;  // null where there is none
  const char* standard_name = "";
  const char* variant = "";  // tells the rows of one function apart

  std::string name() const { return *variant == '\0' ? function : std::string(function) + " " + variant; }

  constexpr Row with(const char* variant_name) const {
    Row row = *this;
    row.variant = variant_name;
    return row;
  }
};

template <auto function, class Signature = decltype(function)>
struct LibraryFunction;

template <auto function, class Status, class... Parameter>
struct LibraryFunction<function, Status (*)(Parameter...)> {
  template <class Loop, class... Role>
  static void call(const Arrays& arrays, int32_t len) {
    Loop{}(Role::template get<Parameter>(arrays, len)...);
  }

  template <class Loop, class Routine, class... Role>
  static constexpr Row row(const char* name, Requirement requirement, Role...) {
    Row row = {name, requirement};
    row.bytes_per_element = (Role::template kBytesMoved<Parameter> + ...);
    row.fill = [](const Arrays& arrays, int32_t len) { (Role::template fill<Parameter>(arrays, len), ...); };
    row.zivks = [](const Arrays& arrays, int32_t len) {
      function(Role::template get<Parameter>(arrays, len)...);
    };
    row.plain = call<Loop, Role...>;
    if constexpr (!std::is_same_v<Routine, NoRoutine>) {
      row.standard = call<Routine, Role...>;
      row.standard_name = Routine::kName;
    }
    return row;
  }
};

#define ROW(function, requirement, plain_loop, standard_routine, ...) \
  LibraryFunction<&function>::row<plain_loop, standard_routine>(#function, requirement, __VA_ARGS__)

struct Section {
  const char* title;
  std::vector<Row> rows;
};

std::vector<Row> movement_rows();
std::vector<Row> logic_rows();
std::vector<Row> arithmetic_rows();
std::vector<Row> conversion_rows();
std::vector<Row> statistics_rows();

// All rows, or those that the selection is found in.
inline std::vector<Section> sections(const std::regex& selection = std::regex("")) {
  std::vector<Section> result = {{"Copies, fills, order of elements and complex layout", movement_rows()},
                                 {"Bit logic and shifts", logic_rows()},
                                 {"Arithmetic", arithmetic_rows()},
                                 {"Conversions", conversion_rows()},
                                 {"Statistics", statistics_rows()}};
  for (Section& section : result) {
    auto& rows = section.rows;
    const auto is_other = [&](const Row& row) { return !std::regex_search(row.name(), selection); };
    rows.erase(std::remove_if(rows.begin(), rows.end(), is_other), rows.end());
  }
  const auto is_empty = [](const Section& section) { return section.rows.empty(); };
  result.erase(std::remove_if(result.begin(), result.end(), is_empty), result.end());
  return result;
}

}  // namespace bench

#endif
