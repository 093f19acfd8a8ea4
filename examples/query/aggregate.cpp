#include "aggregate.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <string>
#include <utility>

#include "examples/array.h"
#include "number.h"
#include "order.h"

namespace {

// The group's number fits a byte then, so that rows are brought into order by counting bytes.
constexpr std::size_t kGroupsOfRuns = 256;

template <bool largest>
ZIVKStatus reduce(const int64_t* src, int32_t length, const int8_t* nulls, int64_t* dst) {
  return (largest ? ZIVKS_AggMax_64s : ZIVKS_AggMin_64s)(src, length, nulls, dst);
}
template <bool largest>
ZIVKStatus reduce(const ZIVKDecimal128* src, int32_t length, const int8_t* nulls, ZIVKDecimal128* dst) {
  return (largest ? ZIVKS_AggMax_decimal128 : ZIVKS_AggMin_decimal128)(src, length, nulls, dst);
}

template <bool largest, class Value>
bool beats(const Value& challenger, const Value& best) {
  return largest ? best < challenger : challenger < best;
}

template <class Number, bool largest>
class NumberExtreme : public Aggregate {
 public:
  explicit NumberExtreme(std::size_t place) : place_(place) {}

  void add(const Batch& batch, const GroupedRows& rows) override {
    const Column& column = batch.columns[place_];
    grow(rows.group_count());
    fraction_digits_ = std::max(fraction_digits_, column.fraction_digits);
    if (rows.runs().empty()) {
      add_rows(column, rows);
    } else if (rows.order().empty()) {
      add_runs(std::get<Numbers>(column.values).data(), column.null_flags(), rows);
    } else {
      add_runs_in_order(column, rows);
    }
  }

  Column finish(std::size_t group_count) override {
    grow(group_count);
    return Column(std::move(best_), std::move(nulls_), fraction_digits_);
  }

 private:
  using Numbers = std::vector<Number>;

  void grow(std::size_t group_count) {
    best_.resize(group_count);
    nulls_.resize(group_count, 1);
  }

  void challenge(std::size_t group, const Number& value) {
    if (nulls_[group] != 0 || beats<largest>(to_signed(value), to_signed(best_[group]))) {
      best_[group] = value;
      nulls_[group] = 0;
    }
  }

  void add_rows(const Column& column, const GroupedRows& rows) {
    const Numbers& values = std::get<Numbers>(column.values);
    for (std::size_t row = 0; row < rows.rows(); ++row) {
      if (column.nulls[row] == 0) challenge(rows.group_of(row), values[row]);
    }
  }

  void add_runs(const Number* values, const int8_t* nulls, const GroupedRows& rows) {
    for (const auto& [group, first, length] : rows.runs()) {
      const int8_t* const run_nulls = nulls == nullptr ? nullptr : nulls + first;
      // What the library reports of nulls alone cannot be told from a value.
      if (run_nulls != nullptr && std::memchr(run_nulls, 0, static_cast<std::size_t>(length)) == nullptr)
        continue;
      Number value;
      check(reduce<largest>(values + first, length, run_nulls, &value));
      challenge(static_cast<std::size_t>(group), value);
    }
  }

  void add_runs_in_order(const Column& column, const GroupedRows& rows) {
    const Number* const values = std::get<Numbers>(column.values).data();
    ordered_values_.clear();
    for (const int32_t row : rows.order()) ordered_values_.push_back(values[row]);
    if (column.null_count == 0) {
      add_runs(ordered_values_.data(), nullptr, rows);
      return;
    }
    ordered_nulls_.clear();
    for (const int32_t row : rows.order()) ordered_nulls_.push_back(column.nulls.data()[row]);
    add_runs(ordered_values_.data(), ordered_nulls_.data(), rows);
  }

  std::size_t place_;
  Numbers best_;
  std::vector<int8_t> nulls_;
  int fraction_digits_ = 0;
  Numbers ordered_values_;
  std::vector<int8_t> ordered_nulls_;
};

template <bool largest>
class TextExtreme : public Aggregate {
 public:
  explicit TextExtreme(std::size_t place) : place_(place) {}

  void add(const Batch& batch, const GroupedRows& rows) override {
    const Column& column = batch.columns[place_];
    best_.resize(rows.group_count());
    const Texts& texts = std::get<Texts>(column.values);
    if (rows.group_count() == 1) {
      add_column(texts, column);
      return;
    }
    for (std::size_t row = 0; row < rows.rows(); ++row) {
      if (column.nulls[row] == 0) challenge(rows.group_of(row), texts[row]);
    }
  }

  Column finish(std::size_t group_count) override {
    best_.resize(group_count);
    Texts texts;
    std::vector<int8_t> nulls;
    for (const std::string& text : best_) {
      texts.push_back(text);
      nulls.push_back(text.empty());
    }
    return Column(std::move(texts), std::move(nulls));
  }

 private:
  void challenge(std::size_t group, std::string_view text) {
    std::string& best = best_[group];
    if (best.empty() || beats<largest>(text, std::string_view(best))) best = text;
  }

  // The library knows no nulls of texts. They have no bytes here, so it takes but leaving out their offsets.
  void add_column(const Texts& texts, const Column& column) {
    if (column.null_count == column.rows()) return;
    offsets_.clear();
    std::size_t longest = 0;
    for (std::size_t row = 0; row < column.rows(); ++row) {
      if (column.nulls[row] != 0) continue;
      offsets_.push_back(texts.offsets()[row]);
      longest = std::max(longest, texts[row].size());
    }
    offsets_.push_back(texts.offsets()[column.rows()]);
    result_.resize(longest);
    int32_t length;
    check((largest ? ZIVKS_AggMax_varchar : ZIVKS_AggMin_varchar)(
        texts.bytes(), offsets_.data(), static_cast<int32_t>(offsets_.size() - 1), result_.data(), &length));
    challenge(0, {reinterpret_cast<const char*>(result_.data()), static_cast<std::size_t>(length)});
  }

  std::size_t place_;
  std::vector<std::string> best_;  // empty: null, since no text is
  std::vector<int32_t> offsets_;
  std::vector<uint8_t> result_;
};

class RowCount : public Aggregate {
 public:
  void add(const Batch&, const GroupedRows& rows) override {
    counts_.resize(rows.group_count());
    if (!rows.runs().empty()) {
      for (const auto& run : rows.runs()) counts_[static_cast<std::size_t>(run.group)] += run.length;
    } else {
      for (std::size_t row = 0; row < rows.rows(); ++row) ++counts_[rows.group_of(row)];
    }
  }

  Column finish(std::size_t group_count) override {
    counts_.resize(group_count);
    return Column(std::move(counts_), std::vector<int8_t>(group_count));
  }

 private:
  Integers counts_;
};

template <bool largest>
std::unique_ptr<Aggregate> make_extreme(std::size_t place, Type type) {
  switch (type) {
    case Type::kInteger: return std::make_unique<NumberExtreme<int64_t, largest>>(place);
    case Type::kDecimal: return std::make_unique<NumberExtreme<ZIVKDecimal128, largest>>(place);
    case Type::kText: break;
  }
  return std::make_unique<TextExtreme<largest>>(place);
}

}  // namespace

GroupedRows::GroupedRows(std::size_t rows)
    : rows_(rows), group_count_(1), runs_({{0, 0, static_cast<int32_t>(rows)}}) {}

GroupedRows::GroupedRows(const std::vector<int32_t>& groups, int32_t group_count)
    : rows_(groups.size()), groups_(groups.data()), group_count_(static_cast<std::size_t>(group_count)) {
  if (group_count_ <= kGroupsOfRuns) find_runs();
}

void GroupedRows::find_runs() {
  std::vector<int32_t> lengths(group_count_);
  std::vector<uint8_t> keys(rows_);
  for (std::size_t row = 0; row < rows_; ++row) {
    keys[row] = static_cast<uint8_t>(groups_[row]);
    ++lengths[keys[row]];
  }
  int32_t first = 0;
  for (std::size_t group = 0; group < group_count_; ++group) {
    if (lengths[group] > 0) runs_.push_back({static_cast<int32_t>(group), first, lengths[group]});
    first += lengths[group];
  }
  order_.resize(rows_);
  const RadixIndexPolicy policy(rows_, ZIVK_DT_8U);
  check(ZIVKS_SortRadixIndexAscend_8u(keys.data(), sizeof keys[0], order_.data(), static_cast<int32_t>(rows_),
                                      policy.get()));
}

std::unique_ptr<Aggregate> make_max(std::size_t place, Type type) { return make_extreme<true>(place, type); }
std::unique_ptr<Aggregate> make_min(std::size_t place, Type type) { return make_extreme<false>(place, type); }
std::unique_ptr<Aggregate> make_row_count() { return std::make_unique<RowCount>(); }
