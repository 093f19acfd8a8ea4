#include "column.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <type_traits>
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

void Texts::make_room(std::size_t bytes) {
  if (bytes > std::numeric_limits<int32_t>::max() - bytes_.size()) {
    throw std::length_error("the texts of one column that the answer needs exceed 2 GiB");
  }
}

void Texts::push_back(std::string_view text) {
  make_room(text.size());
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  offsets_.push_back(static_cast<int32_t>(bytes_.size()));
}

void Texts::append(const Texts& others) {
  make_room(others.bytes_.size());
  const auto distance = static_cast<int32_t>(bytes_.size());
  bytes_.insert(bytes_.end(), others.bytes_.begin(), others.bytes_.end());
  for (std::size_t i = 1; i < others.offsets_.size(); ++i) offsets_.push_back(others.offsets_[i] + distance);
}

void Texts::append(const Texts& others, const std::vector<int32_t>& positions) {
  const auto text = [&](int32_t position) { return others[static_cast<std::size_t>(position)]; };
  std::size_t length = 0;
  for (const int32_t position : positions) length += text(position).size();
  make_room(length);
  std::size_t end = bytes_.size();
  bytes_.resize(end + length);
  for (const int32_t position : positions) {
    if (!text(position).empty())
      std::memcpy(bytes_.data() + end, text(position).data(), text(position).size());
    end += text(position).size();
    offsets_.push_back(static_cast<int32_t>(end));
  }
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

void Column::append(const Column& other, const std::vector<int32_t>& positions) {
  std::visit(
      [&](auto& own) {
        const auto& others = std::get<std::decay_t<decltype(own)>>(other.values);
        if constexpr (std::is_same_v<decltype(own), Texts&>) {
          own.append(others, positions);
        } else {
          for (const int32_t position : positions) own.push_back(others.data()[position]);
        }
      },
      values);
  for (const int32_t position : positions) {
    nulls.push_back(other.nulls.data()[position]);
    null_count += static_cast<std::size_t>(nulls.back());
  }
  fraction_digits = std::max(fraction_digits, other.fraction_digits);
}

void Column::append(const Column& other) {
  std::visit(
      [&](auto& own) {
        const auto& others = std::get<std::decay_t<decltype(own)>>(other.values);
        if constexpr (std::is_same_v<decltype(own), Texts&>) {
          own.append(others);
        } else {
          own.insert(own.end(), others.begin(), others.end());
        }
      },
      values);
  nulls.insert(nulls.end(), other.nulls.begin(), other.nulls.end());
  null_count += other.null_count;
  fraction_digits = std::max(fraction_digits, other.fraction_digits);
}

Column gather(const Column& column, const std::vector<int32_t>& positions) {
  Column result(column.type());
  result.append(column, positions);
  return result;
}
