// What is computed of a column for each group of rows.
#ifndef ZIVKS_EXAMPLES_QUERY_AGGREGATE_H
#define ZIVKS_EXAMPLES_QUERY_AGGREGATE_H

#include <cstdint>
#include <memory>
#include <vector>

#include "column.h"

// The rows of a batch by their groups.
class GroupedRows {
 public:
  // Successive rows, or successive entries of order(), that belong to one group.
  struct Run {
    int32_t group, first, length;
  };

  // All rows are in group 0.
  explicit GroupedRows(std::size_t rows);
  // `groups` tells the group of each row, and stays where it is as long as this object is used.
  GroupedRows(const std::vector<int32_t>& groups, int32_t group_count);

  std::size_t rows() const { return rows_; }
  std::size_t group_count() const { return group_count_; }
  std::size_t group_of(std::size_t row) const {
    return groups_ == nullptr ? 0 : static_cast<std::size_t>(groups_[row]);
  }

  // Rows that belong together, if there are so few groups that it pays to bring them together; or none.
  const std::vector<Run>& runs() const { return runs_; }
  // The rows in the order of the runs; empty if they are in that order.
  const std::vector<int32_t>& order() const { return order_; }

 private:
  void find_runs();

  std::size_t rows_;
  const int32_t* groups_ = nullptr;
  std::size_t group_count_;
  std::vector<Run> runs_;
  std::vector<int32_t> order_;
};

class Aggregate {
 public:
  virtual ~Aggregate() = default;
  // Takes the rows of a batch into account.
  virtual void add(const Batch& batch, const GroupedRows& rows) = 0;
  // One row for each of the groups so far, null for a group without a value. Groups that no batch had count as well.
  virtual Column finish(std::size_t group_count) = 0;
};

// Extremes of the column at a place in the batches.
std::unique_ptr<Aggregate> make_max(std::size_t place, Type type);
std::unique_ptr<Aggregate> make_min(std::size_t place, Type type);
std::unique_ptr<Aggregate> make_row_count();

#endif
