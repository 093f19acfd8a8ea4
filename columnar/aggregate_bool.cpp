// Whether one row of a column is true, or all of them are. The two functions differ in which bytes count as true and in
// whether the order of rows matters.
#include <zivks/columnar.h>

#include <algorithm>

#include "columnar/column.h"
#include "core/checks.h"
#include "core/reduce.h"

using namespace zivks;

namespace {

inline constexpr size_t kBytes = kRegisterElements<uint8_t>;

// The bytes of a column of at least one row: spread over a register, or combined by `operation` into a register.
template <class Operation>
ZIVKS_INLINE U8 combine_rows(const uint8_t* src, size_t rows, Operation operation) {
  if (rows < kBytes) return load_repeatedly<kBytes / 2>(src, rows);
  return reduce_array(src, rows, load(src), operation, operation);
}

ZIVKS_INLINE bool is_any_true(const uint8_t* src, size_t rows) {
  return any_true(combine_rows(src, rows, [](U8 a, U8 b) ZIVKS_INLINE_LAMBDA { return a | b; }) != 0);
}
ZIVKS_INLINE bool is_each_odd(const uint8_t* src, size_t rows) {
  const U8 all = combine_rows(src, rows, [](U8 a, U8 b) ZIVKS_INLINE_LAMBDA { return a & b; });
  return !any_true(U8((all & 1) == 0));
}

// --- With nulls ------------------------------------------------------------------------

// The rows from `src` on, as many as a register has, and `other` for null ones.
ZIVKS_INLINE U8 load_values(const uint8_t* src, const int8_t* nulls, uint8_t other) {
  return select(I8(load(nulls) == 0), load(src), broadcast(other));
}

ZIVKS_INLINE uint8_t min_of_values(const uint8_t* src, size_t rows, const int8_t* nulls) {
  constexpr uint8_t kStart = 1;
  const auto one_by_one = [&] {
    uint8_t found = kStart;
    for (size_t i = 0; i < rows; ++i) {
      if (nulls[i] == 0) found = std::min(found, src[i]);
    }
    return found;
  };
  if (rows < kBytes) return one_by_one();
  U8 found = broadcast(kStart);
  for (size_t i = 0; i + kBytes <= rows; i += kBytes) {
    prefetch_ahead<256>(src + i);
    found = minimum(found, load_values(src + i, nulls + i, kStart));
  }
  found = minimum(found, load_values(src + rows - kBytes, nulls + rows - kBytes, kStart));
  return reduce_minimum(found);
}

// A block without nulls replaces what was found before, so that the last such block and the rows behind it decide.
// They are looked for from the end, mostly not far, so that there are no hints at what comes.
ZIVKS_INLINE uint8_t max_of_values(const uint8_t* src, size_t rows, const int8_t* nulls) {
  uint8_t found = 0;
  const auto add_rows = [&](size_t first, size_t last) ZIVKS_INLINE_LAMBDA {
    for (size_t i = first; i < last; ++i) {
      if (nulls[i] == 0) found = std::max(found, src[i]);
    }
  };
  size_t end = rows & ~(kBlockRows - 1);
  add_rows(end, rows);
  // Registers in which every block has a null.
  U8 values = {};
  for (; end >= kBytes; end -= kBytes) {
    const int8_t* const flags = nulls + end - kBytes;
    if (any_true(I64(U64(load(flags)) == 0))) break;
    values = maximum(values, load_values(src + end - kBytes, flags, 0));
  }
  found = std::max(found, reduce_maximum(values));
  for (; end > 0; end -= kBlockRows) {
    const size_t first = end - kBlockRows;
    if (is_clean(nulls + first)) return std::max<uint8_t>(found, read<uint64_t>(src + first) != 0);
    add_rows(first, end);
  }
  return found;
}

}  // namespace

ZIVKStatus ZIVKS_AggMax_bool(const uint8_t* src, int32_t len, const int8_t* nulls, uint8_t* dst) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  const auto rows = static_cast<size_t>(len);
  *dst = nulls == nullptr ? is_any_true(src, rows) : max_of_values(src, rows, nulls);
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

// Without nulls the rows of whole blocks of sixteen count by their lowest bit.
ZIVKStatus ZIVKS_AggMin_bool(const uint8_t* src, int32_t len, const int8_t* nulls, uint8_t* dst) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  const auto rows = static_cast<size_t>(len);
  const size_t in_blocks = rows & ~size_t{15};
  if (nulls == nullptr) {
    *dst = (in_blocks == 0 || is_each_odd(src, in_blocks)) &&
           std::find(src + in_blocks, src + rows, 0) == src + rows;
  } else {
    *dst = min_of_values(src, rows, nulls);
  }
  leave_registers();
  return ZIVK_STS_NO_ERR;
}
