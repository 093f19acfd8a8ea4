// Answers a question batch by batch.
#ifndef ZIVKS_EXAMPLES_QUERY_QUERY_H
#define ZIVKS_EXAMPLES_QUERY_QUERY_H

#include <memory>
#include <string>
#include <vector>

#include "column.h"
#include "question.h"

// Holds what the answer needs, and no row of the table longer than its batch: for groups a row for each of them, for
// the top rows these, and only for all rows in an order the table itself.
class Query {
 public:
  virtual ~Query() = default;
  virtual void add(const Batch& batch) = 0;
  Answer finish();

 protected:
  Query(const Question& question) : question_(question) {}
  // The answer, but for its order.
  virtual Table collect() = 0;

  const Question question_;
};

// The places of those columns of a table that a question is about. Throws std::runtime_error if there is no such column
// or more than one.
std::vector<std::size_t> columns_of_interest(const Question& question, const std::vector<std::string>& names);

// For batches that have these columns: all that columns_of_interest() tells, in any order. Throws std::runtime_error if
// the answer has no column that it is to be ordered by.
std::unique_ptr<Query> make_query(const Question& question, const std::vector<std::string>& names,
                                  const std::vector<Type>& types);

#endif
