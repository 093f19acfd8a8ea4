// Radix sorts of positions.
#include <zivks/sort_radix.h>

#include "core/checks.h"
#include "sort/radix_handle.h"
#include "sort/radix_index_narrow.h"
#include "sort/radix_index_wide.h"

using namespace zivks;

namespace {

template <Numbers numbers, class T>
ZIVKStatus sort_index(const T* src, int32_t srcStride, int32_t* dstIdx, int32_t len, void* policy,
                      Direction direction) {
  if (ZIVKStatus status = check_arrays(len, src, dstIdx, policy)) return status;
  if (srcStride < int32_t{sizeof(T)}) return ZIVK_STS_SIZE_ERR;
  using Key = UnsignedOf<sizeof(T)>;
  const StridedKeys<Key> keys = {reinterpret_cast<const std::byte*>(src), srcStride};
  if constexpr (sizeof(T) <= sizeof(uint16_t)) {
    sort_narrow_keys<numbers>(keys, direction, dstIdx, len, policy);
  } else {
    sort_wide_keys<numbers>(keys, direction, dstIdx, static_cast<size_t>(len),
                            Keys<Key>{static_cast<std::byte*>(policy)});
  }
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_SortRadixIndexInit(int32_t len, ZIVKDataType dataType, void** policy) {
  return make_radix_handle(len, dataType, 3 * sizeof(uint32_t), 3 * sizeof(uint64_t), policy);
}
ZIVKStatus ZIVKS_SortRadixIndexRelease(void* policy) {
  ZIVKS_Free(policy);
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_SortRadixIndexAscend_8u(const uint8_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                         void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_16u(const uint16_t* src, int32_t srcStride, int32_t* dstIdx,
                                          int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_16s(const int16_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_32u(const uint32_t* src, int32_t srcStride, int32_t* dstIdx,
                                          int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_32s(const int32_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_32f(const float* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_64u(const uint64_t* src, int32_t srcStride, int32_t* dstIdx,
                                          int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_64s(const int64_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}
ZIVKStatus ZIVKS_SortRadixIndexAscend_64f(const double* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, Direction::kAscend);
}

ZIVKStatus ZIVKS_SortRadixIndexDescend_8u(const uint8_t* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                          void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_16u(const uint16_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_16s(const int16_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_32u(const uint32_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_32s(const int32_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_32f(const float* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                           void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_64u(const uint64_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kUnsigned>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_64s(const int64_t* src, int32_t srcStride, int32_t* dstIdx,
                                           int32_t len, void* policy) {
  return sort_index<Numbers::kSigned>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
ZIVKStatus ZIVKS_SortRadixIndexDescend_64f(const double* src, int32_t srcStride, int32_t* dstIdx, int32_t len,
                                           void* policy) {
  return sort_index<Numbers::kFloat>(src, srcStride, dstIdx, len, policy, Direction::kDescend);
}
