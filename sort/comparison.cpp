// Sorts by comparison, and by counting where keys are narrow.
#include <zivks/core.h>
#include <zivks/sort.h>

#include <algorithm>
#include <cstdlib>

#include "core/checks.h"
#include "sort/counting.h"

using namespace zivks;

namespace {

// What `qsort` compares by: 1 if the first key belongs behind the second and 0 otherwise, so never a negative
// number. A NaN is equal to everything.
template <class T, Direction direction>
int comes_after(const void* first, const void* second) {
  const T a = *static_cast<const T*>(first), b = *static_cast<const T*>(second);
  return direction == Direction::kAscend ? a > b : a < b;
}

// Some C libraries, that of GNU among them, take another algorithm where they have no memory for a copy of the keys.
// It counts on negative numbers and leaves the keys unsorted without them, which is made good here. With a NaN among
// the keys there is no order to make good.
template <class T, Direction direction>
void sort_by_comparison(T* keys, size_t len) {
  std::qsort(keys, len, sizeof(T), comes_after<T, direction>);
  const auto is_before = [](const T& a, const T& b) { return comes_after<T, direction>(&b, &a) != 0; };
  const auto is_nan = [](T key) { return key != key; };
  if (std::is_sorted(keys, keys + len, is_before) || std::any_of(keys, keys + len, is_nan)) return;
  std::make_heap(keys, keys + len, is_before);
  std::sort_heap(keys, keys + len, is_before);
}

// From this length on keys of 16 bits are counted, memory permitting.
constexpr size_t kCountedFrom = 4096;

template <Direction direction, class T>
ZIVKStatus sort(T* srcDst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, srcDst)) return status;
  const auto count = static_cast<size_t>(len);
  if constexpr (sizeof(T) == sizeof(uint8_t)) {
    sort_bytes_by_counting<direction>(srcDst, count);
  } else if constexpr (sizeof(T) == sizeof(uint16_t)) {
    int32_t* const counters = count >= kCountedFrom ? ZIVKS_Malloc_32s(kCountersOf16Bits) : nullptr;
    if (counters == nullptr) {
      sort_by_comparison<T, direction>(srcDst, count);
    } else {
      sort_by_counting<T, direction>(srcDst, count, counters);
      ZIVKS_Free(counters);
    }
  } else {
    sort_by_comparison<T, direction>(srcDst, count);
  }
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_SortAscend_8u_I(uint8_t* srcDst, int32_t len) {
  return sort<Direction::kAscend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortAscend_16u_I(uint16_t* srcDst, int32_t len) {
  return sort<Direction::kAscend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortAscend_16s_I(int16_t* srcDst, int32_t len) {
  return sort<Direction::kAscend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortAscend_32s_I(int32_t* srcDst, int32_t len) {
  return sort<Direction::kAscend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortAscend_32f_I(float* srcDst, int32_t len) {
  return sort<Direction::kAscend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortAscend_64f_I(double* srcDst, int32_t len) {
  return sort<Direction::kAscend>(srcDst, len);
}

ZIVKStatus ZIVKS_SortDescend_8u_I(uint8_t* srcDst, int32_t len) {
  return sort<Direction::kDescend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortDescend_16u_I(uint16_t* srcDst, int32_t len) {
  return sort<Direction::kDescend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortDescend_16s_I(int16_t* srcDst, int32_t len) {
  return sort<Direction::kDescend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortDescend_32s_I(int32_t* srcDst, int32_t len) {
  return sort<Direction::kDescend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortDescend_32f_I(float* srcDst, int32_t len) {
  return sort<Direction::kDescend>(srcDst, len);
}
ZIVKStatus ZIVKS_SortDescend_64f_I(double* srcDst, int32_t len) {
  return sort<Direction::kDescend>(srcDst, len);
}
