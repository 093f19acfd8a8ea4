#include "table.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "number.h"

namespace {

constexpr char kGap[] = "  ";

std::string printable(std::string_view text) {
  std::string result;
  for (const char c : text) {
    constexpr std::string_view kControls = "\t\n\v\f\r", kNames = "tnvfr";
    const std::size_t control = kControls.find(c);
    if (control == std::string_view::npos) {
      result += c;
    } else {
      result += '\\';
      result += kNames[control];
    }
  }
  return result;
}

std::string cell(const Column& column, std::size_t row) {
  if (column.nulls[row] != 0) return "";
  switch (column.type()) {
    case Type::kInteger: return std::to_string(std::get<Integers>(column.values)[row]);
    case Type::kDecimal: return to_text(std::get<Decimals>(column.values)[row], column.fraction_digits);
    case Type::kText: break;
  }
  return printable(std::get<Texts>(column.values)[row]);
}

// Of a text in UTF-8, as if all characters had one width: bytes that continue a character are not counted.
std::size_t width(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

// The last column is not padded on its right.
void append_cell(std::string& line, const std::string& text, std::size_t column_width, bool is_number,
                 bool is_last) {
  const std::string padding(column_width - width(text), ' ');
  if (is_number) line += padding;
  line += text;
  if (!is_number && !is_last) line += padding;
}

}  // namespace

void print_table(const Answer& answer) {
  const Table& table = answer.table;
  std::vector<std::string> names;
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    names.push_back(printable(table.names[i]));
    widths.push_back(width(names[i]));
    for (const int32_t row : answer.positions) {
      widths[i] = std::max(widths[i], width(cell(table.columns[i], static_cast<std::size_t>(row))));
    }
  }
  const auto print_line = [&](const auto& text_of_column) {
    std::string line;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      if (i > 0) line += kGap;
      append_cell(line, text_of_column(i), widths[i], table.columns[i].type() != Type::kText,
                  i + 1 == table.columns.size());
    }
    line.erase(line.find_last_not_of(' ') + 1);
    std::printf("%s\n", line.c_str());
  };
  print_line([&](std::size_t i) { return names[i]; });
  print_line([&](std::size_t i) { return std::string(widths[i], '-'); });
  for (const int32_t row : answer.positions) {
    print_line([&](std::size_t i) { return cell(table.columns[i], static_cast<std::size_t>(row)); });
  }
}
