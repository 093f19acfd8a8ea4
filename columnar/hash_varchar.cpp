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

#include "columnar/column.h"
#include "columnar/text_lanes.h"
#include "core/checks.h"

using namespace zivks;

namespace {

// Rows one by one.
ZIVKS_INLINE void hash_rows(const uint8_t* src, const int32_t* offsets, size_t rows, const int8_t* nulls,
                            uint64_t* dst) {
  for (size_t i = 0; i < rows; ++i) {
    if (nulls == nullptr || nulls[i] == 0)
      dst[i] = xxh64::hash_text(src + offsets[i], text_length(offsets + i));
  }
}

// At least a block of rows of a column whose bytes end at byte `end`. Returns the number of rows that have been hashed.
ZIVKS_INLINE size_t hash_next(const uint8_t* src, const int32_t* offsets, int32_t end, size_t rows,
                              const int8_t* nulls, uint64_t* dst) {
  if constexpr (xxh64::kHashesTextsInLanes) {
    const xxh64::BlockOfTexts texts = {src, offsets, end};
    if (texts.has_room()) {
      if (texts.has_one_length()) return xxh64::hash_rows_of_one_size(src, offsets, end, rows, nulls, dst);
      xxh64::hash_block(texts, nulls, dst);
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
    i += hash_next(src, offsets + i, end, rows - i, flags_from(nulls, i), dst + i);
  }
  hash_rows(src, offsets + i, rows - i, flags_from(nulls, i), dst + i);
  leave_registers();
  return ZIVK_STS_NO_ERR;
}
