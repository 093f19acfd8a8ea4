// Quicksort of keys together with their positions.
#include <zivks/sort.h>

#include <numeric>
#include <utility>

#include "core/checks.h"
#include "sort/direction.h"
#include "sort/three_way_partition.h"

using namespace zivks;

namespace {

template <class T>
struct KeysWithPositions {
  T* keys;
  int32_t* positions;

  ZIVKS_INLINE T key(ptrdiff_t i) const { return keys[i]; }
  ZIVKS_INLINE void exchange(ptrdiff_t i, ptrdiff_t j) const {
    std::swap(keys[i], keys[j]);
    std::swap(positions[i], positions[j]);
  }
};

// The part before the pivot takes a call of its own, the part behind it is the next turn.
template <Direction direction, class T>
void quicksort(KeysWithPositions<T> entries, ptrdiff_t low, ptrdiff_t high) {
  while (high - low >= 1) {
    const auto is_less = [](T a, T b) { return a < b; };
    const auto is_greater = [](T a, T b) { return a > b; };
    Partition partition;
    if constexpr (direction == Direction::kAscend) {
      partition = partition_at_random_pivot(entries, low, high, is_less, is_greater);
    } else {
      partition = partition_at_random_pivot(entries, low, high, is_greater, is_less);
    }
    quicksort<direction>(entries, low, partition.equal);
    low = partition.behind;
  }
}

template <Direction direction, class T>
ZIVKStatus sort_index(T* srcDst, int32_t* dstIdx, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, srcDst, dstIdx)) return status;
  std::iota(dstIdx, dstIdx + len, 0);
  reseed_by_clock();
  quicksort<direction>(KeysWithPositions<T>{srcDst, dstIdx}, 0, len - 1);
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_SortIndexAscend_8u_I(uint8_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kAscend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexAscend_16u_I(uint16_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kAscend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexAscend_16s_I(int16_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kAscend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexAscend_32s_I(int32_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kAscend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexAscend_32f_I(float* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kAscend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexAscend_64f_I(double* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kAscend>(srcDst, dstIdx, len);
}

ZIVKStatus ZIVKS_SortIndexDescend_8u_I(uint8_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kDescend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexDescend_16u_I(uint16_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kDescend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexDescend_16s_I(int16_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kDescend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexDescend_32s_I(int32_t* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kDescend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexDescend_32f_I(float* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kDescend>(srcDst, dstIdx, len);
}
ZIVKStatus ZIVKS_SortIndexDescend_64f_I(double* srcDst, int32_t* dstIdx, int32_t len) {
  return sort_index<Direction::kDescend>(srcDst, dstIdx, len);
}
