// The order of rows by the values of a column.
#ifndef ZIVKS_EXAMPLES_QUERY_ORDER_H
#define ZIVKS_EXAMPLES_QUERY_ORDER_H

#include <zivks.h>

#include <cstdint>
#include <vector>

#include "column.h"
#include "examples/array.h"

enum class Direction { kAscending, kDescending };

// The positions of all rows in the order of their values. Null is below every value, texts are compared by their bytes,
// and equal rows keep their order, in both directions.
std::vector<int32_t> sorted_rows(const Column& column, Direction direction);

// The positions of the `count` rows with the largest values, as sorted_rows() has them at its beginning if it is
// descending; of all rows, if there are not as many.
std::vector<int32_t> top_rows(const Column& column, std::size_t count);

// A handle of radix sorts of positions.
class RadixIndexPolicy {
 public:
  RadixIndexPolicy(std::size_t length, ZIVKDataType type) {
    check(ZIVKS_SortRadixIndexInit(static_cast<int32_t>(length), type, &policy_));
  }
  ~RadixIndexPolicy() { ZIVKS_SortRadixIndexRelease(policy_); }
  RadixIndexPolicy(const RadixIndexPolicy&) = delete;
  RadixIndexPolicy& operator=(const RadixIndexPolicy&) = delete;
  void* get() const { return policy_; }

 private:
  void* policy_ = nullptr;
};

#endif
