// The handles of radix sorts: blocks of bytes, without a header.
#ifndef ZIVKS_SORT_RADIX_HANDLE_H
#define ZIVKS_SORT_RADIX_HANDLE_H

#include <zivks/core.h>
#include <zivks/types.h>

#include <limits>

namespace zivks {

// Of keys of 8 and 16 bits: a counter for every value, whatever the length.
inline constexpr int32_t kHandleBytes8 = 256 * sizeof(int32_t);
inline constexpr int32_t kHandleBytes16 = 65536 * sizeof(int32_t);

// Makes a handle for `len` keys. Wider keys take `bytes_per_32` or `bytes_per_64` each; where that exceeds
// what a size can tell, the handle is asked for with size -1, which the allocation refuses.
inline ZIVKStatus make_radix_handle(int32_t len, ZIVKDataType type, int32_t bytes_per_32,
                                    int32_t bytes_per_64, void** policy) {
  if (policy == nullptr) return ZIVK_STS_NULL_PTR_ERR;
  if (len < 1) return ZIVK_STS_SIZE_ERR;
  const auto bytes_for_all = [len](int32_t each) {
    return len > std::numeric_limits<int32_t>::max() / each ? -1 : len * each;
  };
  int32_t bytes;
  switch (type) {
    case ZIVK_DT_8U: bytes = kHandleBytes8; break;
    case ZIVK_DT_16U:
    case ZIVK_DT_16S: bytes = kHandleBytes16; break;
    case ZIVK_DT_32U:
    case ZIVK_DT_32S:
    case ZIVK_DT_32F: bytes = bytes_for_all(bytes_per_32); break;
    case ZIVK_DT_64U:
    case ZIVK_DT_64S:
    case ZIVK_DT_64F: bytes = bytes_for_all(bytes_per_64); break;
    default: return ZIVK_STS_DATA_TYPE_ERR;
  }
  void* const memory = ZIVKS_Malloc_8u(bytes);
  if (memory == nullptr) return ZIVK_STS_MALLOC_ERR;
  *policy = memory;
  return ZIVK_STS_NO_ERR;
}

}  // namespace zivks

#endif
