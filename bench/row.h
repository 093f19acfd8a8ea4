// A row of the benchmark sets a call of a library function against another call that does the same work: the
// plain loop, in rows/, one file a subsystem; or a routine of another library, in peers/. The timing program
// and the instruction counter walk the rows.
//
// A row names its arguments by their roles, in the order of the library's interface:
//
//   ROW(ZIVKS_AddC_32f, kPlain, ElementWise<Add>, kSrc, kVal, kDst, kLen)
//
// The types come from the function itself, so that the plain loop runs on the same types. Rows of one function
// are told apart by a variant, and a row that differs from the usual says so by what is appended to it:
//
//   ROW(ZIVKS_SortAscend_32s_I, kSort, StdSort, kSrcDst, kLen)   // an example
//       .with("few distinct, 64 Ki")                             // the variant
//       .filled_by(few_distinct_keys<int32_t>)                   // values other than random ones: in kSrc ...
//       .prepared_by(copy_source<int32_t>)                       // ... and from there to kSrcDst before each call
//       .at(64 << 10)                                            // timed at this length only
//
// What a handle or an index array needs goes into the array of kWork, set up by the function that fills.
#ifndef BENCH_ROW_H
#define BENCH_ROW_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <regex>
#include <string>
#include <type_traits>
#include <vector>

#include "bench/arrays.h"
#include "bench/plain_loops.h"
#include "bench/requirements.h"
#include "zivks.h"

namespace bench {

using Call = void (*)(const Arrays&, int32_t len);

inline constexpr int32_t kCacheResident = 4 << 10;
inline constexpr int32_t kMemoryBound = 8 << 20;
inline constexpr int32_t kShort = 16;

struct Row {
  const char* function;
  const Requirement* requirement;
  const char* variant = "";   // tells the rows of one function apart; of a peer, its routine
  int bytes_per_element = 0;  // read and written
  Call fill = nullptr;        // gives the arrays their values, once for each length
  Call prepare = nullptr;     // brings the arrays back to these before each call, which is not timed; or null
  Call zivks = nullptr;       // the call of the library
  Call other = nullptr;       // what it is measured against
  bool allocates = false;     // so that its instructions depend on what memory was taken and freed before
  const char* remark = "";    // of a peer: which of the library's rules it does not keep
  int32_t len = kCacheResident;
  int32_t memory_len = kMemoryBound;  // 0: not timed on memory-bound arrays
  int32_t short_len = kShort;         // timed at all lengths from 1 to this one; 0: at none

  std::string name() const { return *variant == '\0' ? function : std::string(function) + " " + variant; }

  // Whether the name is selected, with or without the variant.
  bool fits(const std::regex& selection) const {
    return std::regex_search(function, selection) || std::regex_search(name(), selection);
  }

  constexpr Row with(const char* value) const { return changed(&Row::variant, value); }
  constexpr Row filled_by(Call value) const { return changed(&Row::fill, value); }
  constexpr Row allocating() const { return changed(&Row::allocates, true); }
  constexpr Row but(const char* value) const { return changed(&Row::remark, value); }
  // A prepared call is timed by itself: it should take some microseconds.
  constexpr Row prepared_by(Call value) const { return changed(&Row::prepare, value); }
  constexpr Row at(int32_t value) const {
    return changed(&Row::len, value).changed(&Row::memory_len, 0).changed(&Row::short_len, 0);
  }

  template <class T>
  constexpr Row changed(T Row::*member, T value) const {
    Row row = *this;
    row.*member = value;
    return row;
  }
};

// The roles of arguments. `Parameter` is the argument's type in the library's interface.
template <class Parameter>
using Element = std::remove_cv_t<std::remove_pointer_t<Parameter>>;

struct NoOperand {
  template <class Parameter>
  static constexpr int kBytesMoved = 0;
  template <class Parameter>
  static void fill(const Arrays&, int32_t) {}
};

// An array that is read and written `moves` times in all. Of what the pointer points to, `packed` make up an
// element.
template <int index, int moves, int packed = 1>
struct Operand {
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
struct AscendingTable : NoOperand {
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

struct WorkMemory : NoOperand {
  template <class Parameter>
  static Parameter get(const Arrays& arrays, int32_t) {
    return static_cast<Parameter>(arrays.array(Arrays::kWork));
  }
};

template <int index>
struct Result : NoOperand {
  template <class Parameter>
  static Parameter get(const Arrays& arrays, int32_t) {
    return static_cast<Parameter>(arrays.result(index));
  }
};

struct NullArray : NoOperand {
  template <class Parameter>
  static Parameter get(const Arrays&, int32_t) {
    return nullptr;
  }
};

struct Length : NoOperand {
  template <class Parameter>
  static Parameter get(const Arrays&, int32_t len) {
    return len;
  }
};

template <int value, int divisor = 1>
struct Number : NoOperand {
  template <class Parameter>
  static Parameter get(const Arrays&, int32_t) {
    if constexpr (std::is_arithmetic_v<Parameter>) {
      return static_cast<Parameter>(value) / divisor;
    } else {
      return Parameter{value, value - 1};
    }
  }
};

inline constexpr Operand<0, 1> kSrc, kSrc1, kSrcRe;
inline constexpr Operand<1, 1> kSrc2, kSrcIm;
inline constexpr Operand<2, 1> kDst, kDstRe;
inline constexpr Operand<3, 1> kDstIm, kDstIndx;
inline constexpr Operand<2, 2> kSrcDst;
inline constexpr Operand<0, 1, 3> kPackedSrc;
inline constexpr Operand<2, 1, 3> kPackedDst;
inline constexpr Operand<2, 2, 3> kPackedSrcDst;
template <int entries>
inline constexpr AscendingTable<1, entries> kTable;
inline constexpr WorkMemory kWork;
inline constexpr NullArray kNull;
inline constexpr Result<0> kResult, kMin;
inline constexpr Result<1> kIndx, kMinIndx;
inline constexpr Result<2> kMax;
inline constexpr Result<3> kMaxIndx;
inline constexpr Length kLen;
inline constexpr Number<3> kVal;
template <int value, int divisor = 1>
inline constexpr Number<value, divisor> kNumber;

// For prepared_by(): what was filled into kSrc, to kSrcDst.
template <class T>
void copy_source(const Arrays& arrays, int32_t len) {
  std::memcpy(arrays.array(2), arrays.array(0), static_cast<std::size_t>(len) * sizeof(T));
}

template <auto function, class Signature = decltype(function)>
struct LibraryFunction;

template <auto function, class Status, class... Parameter>
struct LibraryFunction<function, Status (*)(Parameter...)> {
  template <class Loop, class... Role>
  static constexpr Row row(const char* name, const Requirement& requirement, Role...) {
    Row row = {name, &requirement};
    row.bytes_per_element = (Role::template kBytesMoved<Parameter> + ...);
    row.fill = [](const Arrays& arrays, int32_t len) { (Role::template fill<Parameter>(arrays, len), ...); };
    row.zivks = [](const Arrays& arrays, int32_t len) {
      function(Role::template get<Parameter>(arrays, len)...);
    };
    row.other = [](const Arrays& arrays, int32_t len) {
      Loop{}(Role::template get<Parameter>(arrays, len)...);
    };
    return row;
  }
};

#define ROW(function, requirement, plain_loop, ...) \
  LibraryFunction<&function>::row<plain_loop>(#function, requirement, __VA_ARGS__)

std::vector<Row> movement_rows();
std::vector<Row> logic_rows();
std::vector<Row> arithmetic_rows();
std::vector<Row> conversion_rows();
std::vector<Row> statistics_rows();
std::vector<Row> columnar_rows();
std::vector<Row> sort_rows();
std::vector<Row> sort_radix_rows();
std::vector<Row> filter_rows();

// The rows that set the library against plain loops: all, or those that the selection is found in.
inline std::vector<Row> rows(const std::regex& selection = std::regex("")) {
  std::vector<Row> selected;
  for (auto* of_subsystem : {movement_rows, logic_rows, arithmetic_rows, conversion_rows, statistics_rows,
                             sort_rows, sort_radix_rows, columnar_rows, filter_rows}) {
    for (const Row& row : of_subsystem()) {
      if (row.fits(selection)) selected.push_back(row);
    }
  }
  return selected;
}

}  // namespace bench

#endif
