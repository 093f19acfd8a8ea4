// Rows put into groups by their keys.
#ifndef ZIVKS_EXAMPLES_QUERY_GROUPING_H
#define ZIVKS_EXAMPLES_QUERY_GROUPING_H

#include <cstdint>
#include <utility>
#include <vector>

#include "column.h"

// Groups are numbered in the order in which they appear. Two rows are in one group if their keys are equal in every
// column, where null equals null. Keys are found by their hashes, and compared.
class Grouping {
 public:
  explicit Grouping(const std::vector<Type>& key_types);

  // Finds the group of each row; `keys` are columns of the types that were announced.
  const std::vector<int32_t>& find_groups(const std::vector<const Column*>& keys);

  int32_t count() const { return count_; }
  std::vector<Column> take_keys() { return std::move(keys_); }  // one row a group

 private:
  struct Slot {
    int32_t group = kFree;
    uint32_t tag = 0;
  };
  static constexpr int32_t kFree = -1;

  void hash(const std::vector<const Column*>& keys);
  static uint32_t tag_of(uint64_t hash);
  std::size_t slot_of(uint32_t tag) const { return tag >> (32 - slot_bits_); }
  bool is_group_of(int32_t group, const std::vector<const Column*>& keys, std::size_t row) const;
  int32_t add_group(std::size_t row);
  void grow();

  std::vector<Column> keys_;
  int32_t count_ = 0;
  // A power of two of them, at most half of which are taken. The upper bits of a tag tell where its group belongs, or
  // else in the next free slot; the others tell most groups apart without a look at their keys.
  std::vector<Slot> slots_;
  int slot_bits_;

  // Of the rows of the batch.
  std::vector<uint64_t> row_hashes_, column_hashes_;
  std::vector<int32_t> groups_;
  std::vector<int32_t> new_rows_;  // the first ones of new groups, whose keys are in the batch until its end
};

#endif
