#include "grouping.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "examples/array.h"

namespace {

constexpr int kFirstSlotBits = 10;
constexpr std::size_t kLookAhead = 16;  // rows whose slots are fetched before they are needed

// What null hashes to. It is the hash of 0 as well, so that both share a place in the table, as any two keys may.
constexpr int64_t kHashOfNull = 0;

void hash_rows(const Integers& values, int32_t length, const int8_t* nulls, uint64_t* hashes) {
  check(ZIVKS_Hash_64s(values.data(), length, nulls, hashes));
}
void hash_rows(const Decimals& values, int32_t length, const int8_t* nulls, uint64_t* hashes) {
  check(ZIVKS_Hash_decimal128(values.data(), length, nulls, hashes));
}
void hash_rows(const Texts& texts, int32_t length, const int8_t* nulls, uint64_t* hashes) {
  check(ZIVKS_Hash_varchar(texts.bytes(), texts.offsets(), length, nulls, hashes));
}

void hash_column(const Column& column, std::vector<uint64_t>& hashes) {
  const int32_t length = column.length();
  hashes.resize(column.rows());
  // Entries of null rows are left as they are.
  if (column.null_count > 0) {
    check(ZIVKS_Set_64s(kHashOfNull, reinterpret_cast<int64_t*>(hashes.data()), length));
  }
  std::visit([&](const auto& values) { hash_rows(values, length, column.null_flags(), hashes.data()); },
             column.values);
}

}  // namespace

Grouping::Grouping(const std::vector<Type>& key_types)
    : slots_(std::size_t{1} << kFirstSlotBits), slot_bits_(kFirstSlotBits) {
  for (const Type type : key_types) keys_.emplace_back(type);
}

const std::vector<int32_t>& Grouping::find_groups(const std::vector<const Column*>& keys) {
  hash(keys);
  const std::size_t rows = row_hashes_.size();
  groups_.resize(rows);
  new_rows_.clear();
  for (std::size_t row = 0; row < rows; ++row) {
    if (row + kLookAhead < rows) __builtin_prefetch(&slots_[slot_of(tag_of(row_hashes_[row + kLookAhead]))]);
    const uint32_t tag = tag_of(row_hashes_[row]);
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = slot_of(tag);
    for (;; place = (place + 1) & mask) {
      const Slot slot = slots_[place];
      if (slot.group == kFree) {
        groups_[row] = add_group(row);
        slots_[place] = {groups_[row], tag};
        if (2 * static_cast<std::size_t>(count_) > slots_.size()) grow();
        break;
      }
      if (slot.tag == tag && is_group_of(slot.group, keys, row)) {
        groups_[row] = slot.group;
        break;
      }
    }
  }
  for (std::size_t i = 0; i < keys.size(); ++i) keys_[i].append(*keys[i], new_rows_);
  return groups_;
}

void Grouping::hash(const std::vector<const Column*>& keys) {
  hash_column(*keys.front(), row_hashes_);
  for (std::size_t i = 1; i < keys.size(); ++i) {
    hash_column(*keys[i], column_hashes_);
    check(
        ZIVKS_CombineHash(row_hashes_.data(), column_hashes_.data(), keys[i]->length(), row_hashes_.data()));
  }
}

// Hashes of small numbers differ in few bits; the upper bits of a product depend on all of them.
uint32_t Grouping::tag_of(uint64_t hash) {
  constexpr uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
  return static_cast<uint32_t>(hash * kGoldenRatio >> 32);
}

bool Grouping::is_group_of(int32_t group, const std::vector<const Column*>& keys, std::size_t row) const {
  auto row_of_group = static_cast<std::size_t>(group);
  const std::size_t groups_before = keys_.front().rows();
  const bool is_new = row_of_group >= groups_before;
  if (is_new) row_of_group = static_cast<std::size_t>(new_rows_[row_of_group - groups_before]);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (!equal(is_new ? *keys[i] : keys_[i], row_of_group, *keys[i], row)) return false;
  }
  return true;
}

int32_t Grouping::add_group(std::size_t row) {
  if (count_ == std::numeric_limits<int32_t>::max()) throw std::length_error("more groups than 2^31 - 1");
  new_rows_.push_back(static_cast<int32_t>(row));
  return count_++;
}

// Both tables are in the order of tags, so that memory is walked through and not jumped about in.
void Grouping::grow() {
  const std::vector<Slot> before = std::exchange(slots_, std::vector<Slot>(2 * slots_.size()));
  ++slot_bits_;
  for (const Slot& slot : before) {
    if (slot.group == kFree) continue;
    std::size_t place = slot_of(slot.tag);
    while (slots_[place].group != kFree) place = (place + 1) & (slots_.size() - 1);
    slots_[place] = slot;
  }
}
