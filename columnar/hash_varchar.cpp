// Hashes of texts: XXH64 of each row.
//
// A row takes two dozen cycles from its first multiplication to its last, and where lengths change from row to row,
// mistaken branches cost more than the hash. So, where the vector unit multiplies, rows go in blocks:
//
// - Rows of one length take the same steps, half of them in the lanes of a register, the others in integers beside it.
// - Rows of several lengths all go in lanes, where each keeps its hash in the steps that it does not take.
//
// The last rows of a column, behind which there is nothing to read, and all rows elsewhere go one by one.
#include <zivks/columnar.h>

#include "columnar/nulls.h"
#include "columnar/text_lanes.h"
#include "core/checks.h"

using namespace zivks;
using namespace zivks::xxh64;

namespace {

// The flags of the rows from number k on, if there are any.
ZIVKS_INLINE const int8_t* from_row(const int8_t* nulls, size_t k) {
  return nulls == nullptr ? nullptr : nulls + k;
}

// Rows one by one.
ZIVKS_INLINE void hash_rows(const uint8_t* src, const int32_t* offsets, size_t rows, const int8_t* nulls,
                            uint64_t* dst) {
  int32_t begin = offsets[0];
  for (size_t i = 0; i < rows; ++i) {
    const int32_t end = offsets[i + 1];
    if (nulls == nullptr || nulls[i] == 0) dst[i] = hash_text(src + begin, end - begin);
    begin = end;
  }
}

// Hashes rows of one length, at least a block. Returns the number of rows that have been hashed.
size_t hash_uniform_rows(const uint8_t* src, const int32_t* offsets, int32_t end, size_t rows,
                         const int8_t* nulls, uint64_t* dst) {
  const auto size = static_cast<size_t>(offsets[1] - offsets[0]);
  constexpr decltype(&hash_rows_of_size<0, false, false>) kOfWords[2][2][4] = {
      {{hash_rows_of_size<0, false, false>, hash_rows_of_size<1, false, false>,
        hash_rows_of_size<2, false, false>, hash_rows_of_size<3, false, false>},
       {hash_rows_of_size<0, true, false>, hash_rows_of_size<1, true, false>,
        hash_rows_of_size<2, true, false>, hash_rows_of_size<3, true, false>}},
      {{hash_rows_of_size<0, false, true>, hash_rows_of_size<1, false, true>,
        hash_rows_of_size<2, false, true>, hash_rows_of_size<3, false, true>},
       {hash_rows_of_size<0, true, true>, hash_rows_of_size<1, true, true>, hash_rows_of_size<2, true, true>,
        hash_rows_of_size<3, true, true>}}};
  return kOfWords[size >= kStripe][size % 8 != 0][size % kStripe / 8](size, src, offsets, end, rows, nulls,
                                                                      dst);
}

[[gnu::noinline]] void hash_mixed_block(BlockOfTexts texts, const int8_t* nulls, uint64_t* dst) {
  const auto [first, second] = texts.hash();
  store_values(first, nulls, dst);
  store_values(second, from_row(nulls, kLanes), dst + kLanes);
}

// Hashes at least a block of rows, in lanes if it can be. Returns the number of rows that have been hashed.
ZIVKS_INLINE size_t hash_next(const uint8_t* src, const int32_t* offsets, int32_t end, size_t rows,
                              const int8_t* nulls, uint64_t* dst) {
  if constexpr (kHashesTextsInLanes) {
    const BlockOfTexts texts = {src, offsets, end};
    if (texts.has_room()) {
      if (texts.is_uniform()) return hash_uniform_rows(src, offsets, end, rows, nulls, dst);
      hash_mixed_block(texts, nulls == nullptr || is_clean(nulls) ? nullptr : nulls, dst);
      return kBlockRows;
    }
  }
  hash_rows(src, offsets, kBlockRows, nulls, dst);
  return kBlockRows;
}

}  // namespace

ZIVKStatus ZIVKS_Hash_varchar(const uint8_t* src, const int32_t* offsets, int32_t len, const int8_t* nulls,
                              uint64_t* dst) {
  if (ZIVKStatus status = check_arrays(len, src, offsets, dst)) return status;
  const auto rows = static_cast<size_t>(len);
  const int32_t end = offsets[rows];
  size_t i = 0;
  while (i + kBlockRows <= rows) {
    prefetch_ahead<256>(src + offsets[i]);
    i += hash_next(src, offsets + i, end, rows - i, from_row(nulls, i), dst + i);
  }
  hash_rows(src, offsets + i, rows - i, from_row(nulls, i), dst + i);
  leave_registers();
  return ZIVK_STS_NO_ERR;
}
