// Columns of a table, laid out as the library takes them.
#ifndef ZIVKS_EXAMPLES_QUERY_COLUMN_H
#define ZIVKS_EXAMPLES_QUERY_COLUMN_H

#include <zivks.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

enum class Type { kInteger, kDecimal, kText };  // in the order of the alternatives of Column::Values

const char* name_of(Type type);

using Integers = std::vector<int64_t>;
using Decimals = std::vector<ZIVKDecimal128>;  // see kDecimalScale

// Text i is bytes[offsets[i]] up to bytes[offsets[i + 1]].
class Texts {
 public:
  std::size_t size() const { return offsets_.size() - 1; }
  const uint8_t* bytes() const { return bytes_.data(); }
  const int32_t* offsets() const { return offsets_.data(); }
  std::size_t byte_count() const { return bytes_.size(); }
  std::string_view operator[](std::size_t row) const {
    const auto begin = static_cast<std::size_t>(offsets_[row]);
    return {reinterpret_cast<const char*>(bytes_.data()) + begin,
            static_cast<std::size_t>(offsets_[row + 1]) - begin};
  }
  void push_back(std::string_view text);
  void append(const Texts& others);
  void append(const Texts& others, const std::vector<int32_t>& positions);
  void clear();

 private:
  // Throws std::length_error if offsets of 32 bits do not suffice.
  void make_room(std::size_t bytes);

  std::vector<uint8_t> bytes_;
  std::vector<int32_t> offsets_ = {0};
};

struct Column {
  using Values = std::variant<Integers, Decimals, Texts>;

  explicit Column(Type type = Type::kInteger);
  Column(Values values_of_rows, std::vector<int8_t> nulls_of_rows, int digits = 0);

  Type type() const { return static_cast<Type>(values.index()); }
  std::size_t rows() const { return nulls.size(); }
  int32_t length() const { return static_cast<int32_t>(nulls.size()); }
  // For calls of the library, which are faster when they know that there are no nulls.
  const int8_t* null_flags() const { return null_count == 0 ? nullptr : nulls.data(); }

  void append(const Column& other, const std::vector<int32_t>& positions);
  void append(const Column& other);  // all rows

  Values values;              // of a null row 0, or an empty text
  std::vector<int8_t> nulls;  // 1 for a null row, otherwise 0
  std::size_t null_count = 0;
  int fraction_digits = 0;  // of decimals: as many as the longest had where they were read
};

// Whether two rows of columns of one type are equal. Nulls are.
inline bool equal(const Column& a, std::size_t row_of_a, const Column& b, std::size_t row_of_b) {
  if (a.nulls[row_of_a] != b.nulls[row_of_b]) return false;
  switch (a.type()) {
    case Type::kInteger:
      return std::get<Integers>(a.values)[row_of_a] == std::get<Integers>(b.values)[row_of_b];
    case Type::kDecimal: {
      const ZIVKDecimal128& x = std::get<Decimals>(a.values)[row_of_a];
      const ZIVKDecimal128& y = std::get<Decimals>(b.values)[row_of_b];
      return x.lo == y.lo && x.hi == y.hi;
    }
    case Type::kText: return std::get<Texts>(a.values)[row_of_a] == std::get<Texts>(b.values)[row_of_b];
  }
  return false;
}

// The rows at some positions, in that order.
Column gather(const Column& column, const std::vector<int32_t>& positions);

// Successive rows of some columns.
struct Batch {
  std::size_t rows = 0;
  std::vector<Column> columns;
};

struct Table {
  std::vector<std::string> names;
  std::vector<Column> columns;

  std::size_t rows() const { return columns.empty() ? 0 : columns.front().rows(); }
};

// What a question is answered with: rows of a table, in an order. They stay where they are in the table until they are
// printed.
struct Answer {
  Table table;
  std::vector<int32_t> positions;
};

#endif
