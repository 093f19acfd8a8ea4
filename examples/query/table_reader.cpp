#include "table_reader.h"

#include <utility>

namespace {

// Reads all texts that are not null as numbers. Of those that cannot be read, the first that is no number at all is
// reported, or else the first that is out of range.
template <class Number, class Read>
std::optional<Misfit> read_numbers(const Texts& texts, std::vector<Number>& numbers, Read read) {
  std::optional<Misfit> misfit;
  numbers.resize(texts.size());
  for (std::size_t row = 0; row < texts.size(); ++row) {
    if (texts[row].empty()) continue;
    const Reading reading = read(texts[row], numbers[row]);
    if (reading == Reading::kNoNumber) return Misfit{row, reading};
    if (reading == Reading::kOutOfRange && !misfit) misfit = {row, reading};
  }
  return misfit;
}

std::vector<int8_t> find_nulls(const Texts& texts) {
  std::vector<int8_t> nulls(texts.size());
  for (std::size_t row = 0; row < nulls.size(); ++row) nulls[row] = texts[row].empty();
  return nulls;
}

// A value for a message.
std::string quoted(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  const bool is_long = text.size() > kLongest;
  return "'" + std::string(text.substr(0, kLongest)) + (is_long ? "...'" : "'");
}

}  // namespace

TableReader::TableReader(CsvFile& file, std::vector<SelectedColumn> selection)
    : file_(file), selection_(std::move(selection)) {
  std::vector<std::size_t> places;
  for (const SelectedColumn& column : selection_) {
    places.push_back(column.place);
    types_.push_back(column.type.value_or(Type::kInteger));
  }
  file_.select(places);
}

TableReader::Next TableReader::read(Batch& batch) {
  file_.read(records_);
  batch.rows = records_.lines.size();
  batch.columns.clear();
  if (batch.rows == 0) return Next::kEnd;
  const std::vector<Type> types_so_far = types_;
  for (std::size_t i = 0; i < selection_.size(); ++i) batch.columns.push_back(typed(i));
  if (types_ != types_so_far && !is_first_) {
    file_.rewind();
    return Next::kBeginning;
  }
  is_first_ = false;
  return Next::kBatch;
}

// Widens the type of the column, unless it is forced, until its values fit.
Column TableReader::typed(std::size_t column) {
  Texts& texts = records_.columns[column];
  std::vector<int8_t> nulls = find_nulls(texts);
  if (types_[column] == Type::kInteger) {
    Integers integers;
    const auto misfit = read_numbers(texts, integers, read_integer);
    if (!misfit) return Column(std::move(integers), std::move(nulls));
    widen(column, Type::kDecimal, *misfit);
  }
  if (types_[column] == Type::kDecimal) {
    Decimals decimals;
    int fraction_digits = 0;
    const auto misfit = read_numbers(texts, decimals, [&](std::string_view text, ZIVKDecimal128& value) {
      return read_decimal(text, value, fraction_digits);
    });
    if (!misfit) return Column(std::move(decimals), std::move(nulls), fraction_digits);
    widen(column, Type::kText, *misfit);
  }
  return Column(std::move(texts), std::move(nulls));
}

void TableReader::widen(std::size_t column, Type wider, const Misfit& misfit) {
  const std::string& name = file_.column_names()[selection_[column].place];
  const auto fail = [&](const std::string& what) {
    throw file_.failure(
        records_.lines[misfit.row],
        "column '" + name + "': " + quoted(records_.columns[column][misfit.row]) + " is " + what);
  };
  const std::string type = name_of(types_[column]);
  const std::string as_text = "; --type " + name + "=text takes the column as text";
  const bool is_out_of_range = misfit.reading == Reading::kOutOfRange;
  if (selection_[column].type.has_value()) fail(is_out_of_range ? "out of range of " + type : "no " + type);
  if (is_out_of_range && wider == Type::kText) fail("a number out of range" + as_text);
  if (!is_first_ && !file_.can_rewind()) {
    fail("no " + type +
         ", but all values of the first rows are, and this input cannot be read twice; --type " + name + "=" +
         name_of(wider) + " tells the type ahead");
  }
  types_[column] = wider;
}
