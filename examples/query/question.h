// What is asked of a table.
#ifndef ZIVKS_EXAMPLES_QUERY_QUESTION_H
#define ZIVKS_EXAMPLES_QUERY_QUESTION_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "column.h"
#include "order.h"

// With groups or computed columns the answer has a row for each group, otherwise rows of the table. Columns are told by
// their names.
struct Question {
  enum class Function { kMax, kMin, kCount };
  struct Computed {
    Function function;
    std::string column;  // empty for kCount

    std::string name() const;  // in the answer, such as max(size)
  };
  struct Top {
    std::size_t count;
    std::string column;
  };
  struct Order {
    std::string column;
    Direction direction;
  };

  std::vector<std::string> group_by;
  std::vector<Computed> computed;
  std::optional<Top> top;
  std::vector<Order> order_by;  // the first one decides, the next one where that leaves rows equal, and so on
  std::map<std::string, Type> types;

  bool is_empty() const { return group_by.empty() && computed.empty() && !top && order_by.empty(); }
  bool asks_for_rows() const { return group_by.empty() && computed.empty(); }
};

#endif
