#include "query.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <utility>

#include "aggregate.h"
#include "grouping.h"

namespace {

std::size_t find_column(const std::vector<std::string>& names, const std::string& name) {
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) {
    std::string all;
    for (const std::string& other : names) all += (all.empty() ? "" : ", ") + other;
    throw std::runtime_error("there is no column '" + name + "'; the columns are: " + all);
  }
  if (std::find(found + 1, names.end(), name) != names.end()) {
    throw std::runtime_error("several columns are named '" + name + "'");
  }
  return static_cast<std::size_t>(found - names.begin());
}

// A column of the answer: by its name there, or by the column that it was computed of. Of several the first one.
std::optional<std::size_t> find_computed(const Question& question, const std::string& name) {
  std::size_t place = 0;
  for (const std::string& column : question.group_by) {
    if (column == name) return place;
    ++place;
  }
  for (const bool by_full_name : {true, false}) {
    place = question.group_by.size();
    for (const auto& computed : question.computed) {
      if ((by_full_name ? computed.name() : computed.column) == name) return place;
      ++place;
    }
  }
  return std::nullopt;
}

std::size_t find_in_answer(const Question& question, const std::string& name) {
  if (const auto place = find_computed(question, name)) return *place;
  throw std::runtime_error("the answer has no column '" + name + "' to be ordered by");
}

std::vector<int32_t> all_positions(std::size_t rows) {
  std::vector<int32_t> positions(rows);
  std::iota(positions.begin(), positions.end(), 0);
  return positions;
}

// The top groups are those with the largest values of a column of the answer, which is added if need be.
Question with_column_of_top(Question question) {
  if (question.top && !find_computed(question, question.top->column)) {
    question.computed.push_back({Question::Function::kMax, question.top->column});
  }
  return question;
}

class GroupQuery : public Query {
 public:
  GroupQuery(const Question& question, const std::vector<std::string>& names, const std::vector<Type>& types)
      : Query(question), grouping_(types_of_keys(question, names, types)) {
    for (const std::string& column : question.group_by) key_places_.push_back(find_column(names, column));
    for (const auto& computed : question.computed) {
      if (computed.function == Question::Function::kCount) {
        aggregates_.push_back(make_row_count());
        continue;
      }
      const std::size_t place = find_column(names, computed.column);
      const auto make = computed.function == Question::Function::kMax ? make_max : make_min;
      aggregates_.push_back(make(place, types[place]));
    }
  }

  void add(const Batch& batch) override {
    if (key_places_.empty()) {
      add(batch, GroupedRows(batch.rows));
      return;
    }
    std::vector<const Column*> keys;
    for (const std::size_t place : key_places_) keys.push_back(&batch.columns[place]);
    const std::vector<int32_t>& groups = grouping_.find_groups(keys);
    add(batch, GroupedRows(groups, grouping_.count()));
  }

 protected:
  Table collect() override {
    Table answer = {question_.group_by, grouping_.take_keys()};
    const std::size_t groups = key_places_.empty() ? 1 : answer.rows();
    for (const auto& computed : question_.computed) answer.names.push_back(computed.name());
    for (const auto& aggregate : aggregates_) answer.columns.push_back(aggregate->finish(groups));
    return answer;
  }

 private:
  static std::vector<Type> types_of_keys(const Question& question, const std::vector<std::string>& names,
                                         const std::vector<Type>& types) {
    std::vector<Type> result;
    for (const std::string& column : question.group_by) result.push_back(types[find_column(names, column)]);
    return result;
  }

  void add(const Batch& batch, const GroupedRows& rows) {
    for (const auto& aggregate : aggregates_) aggregate->add(batch, rows);
  }

  Grouping grouping_;
  std::vector<std::size_t> key_places_;
  std::vector<std::unique_ptr<Aggregate>> aggregates_;
};

class RowQuery : public Query {
 public:
  RowQuery(const Question& question, const std::vector<std::string>& names, const std::vector<Type>& types)
      : Query(question), rows_{names, {}} {
    for (const Type type : types) rows_.columns.emplace_back(type);
  }

  void add(const Batch& batch) override {
    if (!question_.top) {
      for (std::size_t i = 0; i < batch.columns.size(); ++i) rows_.columns[i].append(batch.columns[i]);
      return;
    }
    const std::size_t place = find_column(rows_.names, question_.top->column);
    const auto best_of_batch = top_rows(batch.columns[place], question_.top->count);
    for (std::size_t i = 0; i < batch.columns.size(); ++i) {
      rows_.columns[i].append(batch.columns[i], best_of_batch);
    }
    // Of equal rows the ones of earlier batches come first, and so they stay.
    const auto best = top_rows(rows_.columns[place], question_.top->count);
    for (Column& column : rows_.columns) column = gather(column, best);
  }

 protected:
  Table collect() override { return std::move(rows_); }

 private:
  Table rows_;
};

}  // namespace

std::string Question::Computed::name() const {
  switch (function) {
    case Function::kMax: return "max(" + column + ")";
    case Function::kMin: return "min(" + column + ")";
    case Function::kCount: break;
  }
  return "count";
}

Answer Query::finish() {
  Table answer = collect();
  const auto place_of = [&](const std::string& name) {
    return question_.asks_for_rows() ? find_column(answer.names, name) : find_in_answer(question_, name);
  };
  std::vector<int32_t> positions =
      question_.top ? top_rows(answer.columns[place_of(question_.top->column)], question_.top->count)
                    : all_positions(answer.rows());
  for (auto order = question_.order_by.rbegin(); order != question_.order_by.rend(); ++order) {
    const Column column = gather(answer.columns[place_of(order->column)], positions);
    std::vector<int32_t> reordered = sorted_rows(column, order->direction);
    for (int32_t& position : reordered) position = positions[static_cast<std::size_t>(position)];
    positions = std::move(reordered);
  }
  return {std::move(answer), std::move(positions)};
}

std::vector<std::size_t> columns_of_interest(const Question& question,
                                             const std::vector<std::string>& names) {
  std::vector<std::size_t> places;
  for (const auto& [name, type] : question.types) find_column(names, name);
  if (question.asks_for_rows()) {
    if (question.top) find_column(names, question.top->column);
    for (const auto& order : question.order_by) find_column(names, order.column);
    for (std::size_t place = 0; place < names.size(); ++place) places.push_back(place);
    return places;
  }
  const Question complete = with_column_of_top(question);
  for (const std::string& column : complete.group_by) places.push_back(find_column(names, column));
  for (const auto& computed : complete.computed) {
    if (computed.function != Question::Function::kCount)
      places.push_back(find_column(names, computed.column));
  }
  for (const auto& order : complete.order_by) find_in_answer(complete, order.column);
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

std::unique_ptr<Query> make_query(const Question& question, const std::vector<std::string>& names,
                                  const std::vector<Type>& types) {
  if (question.asks_for_rows()) return std::make_unique<RowQuery>(question, names, types);
  return std::make_unique<GroupQuery>(with_column_of_top(question), names, types);
}
