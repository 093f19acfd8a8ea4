#include "column.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace {

Column::Values no_values(Type type) {
  switch (type) {
    case Type::kInteger: return Integers();
    case Type::kDecimal: return Decimals();
    case Type::kText: break;
  }
  return Texts();
}

}  // namespace

const char* name_of(Type type) {
  constexpr const char* kNames[] = {"integer", "decimal", "text"};
  return kNames[static_cast<std::size_t>(type)];
}

void Texts::push_back(std::string_view text) {
  if (text.size() > std::numeric_limits<int32_t>::max() - bytes_.size()) {
    throw std::length_error("the texts of one column that the answer needs exceed 2 GiB");
  }
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  offsets_.push_back(static_cast<int32_t>(bytes_.size()));
}

void Texts::clear() {
  bytes_.clear();
  offsets_.resize(1);
}

Column::Column(Type type) : values(no_values(type)) {}

Column::Column(Values values_of_rows, std::vector<int8_t> nulls_of_rows, int digits)
    : values(std::move(values_of_rows)),
      nulls(std::move(nulls_of_rows)),
      null_count(static_cast<std::size_t>(std::count(nulls.begin(), nulls.end(), 1))),
      fraction_digits(digits) {}

void Column::append(const Column& other, std::size_t row) {
  std::visit([&](auto& own) { own.push_back(std::get<std::decay_t<decltype(own)>>(other.values)[row]); },
             values);
  nulls.push_back(other.nulls[row]);
  null_count += static_cast<std::size_t>(other.nulls[row]);
  fraction_digits = std::max(fraction_digits, other.fraction_digits);
}

void Column::append(const Column& other, const std::vector<int32_t>& positions) {
  std::visit(
      [&](auto& own) {
        const auto& others = std::get<std::decay_t<decltype(own)>>(other.values);
        own.reserve(own.size() + positions.size());
        for (const int32_t position : positions) own.push_back(others[static_cast<std::size_t>(position)]);
      },
      values);
  nulls.reserve(nulls.size() + positions.size());
  for (const int32_t position : positions) {
    const int8_t is_null = other.nulls[static_cast<std::size_t>(position)];
    nulls.push_back(is_null);
    null_count += static_cast<std::size_t>(is_null);
  }
  fraction_digits = std::max(fraction_digits, other.fraction_digits);
}

Column gather(const Column& column, const std::vector<int32_t>& positions) {
  Column result(column.type());
  result.append(column, positions);
  return result;
}

Table gather(const Table& table, const std::vector<int32_t>& positions) {
  Table result = {table.names, {}};
  for (const Column& column : table.columns) result.columns.push_back(gather(column, positions));
  return result;
}
