// Copying an array to another, or to itself.
#ifndef ZIVKS_CORE_COPY_H
#define ZIVKS_CORE_COPY_H

#include "core/loops.h"

namespace zivks {

// From the first element up: right unless `dst` lies above `src` in one array.
//
// On x86-64 nothing is faster than the C library's memmove. On Arm the loop is our own: it carries the
// hints, and it takes about half of memmove's instructions. map() allows for `dst` below `src` there.
template <class T, size_t distance, Prefetch hint>
void copy_upward(T* dst, size_t len, Array<const T, distance, hint> src) {
  static_assert(!(kPrefetches && kAligns));
  if constexpr (kPrefetches) {
    map(dst, len, unchanged, src);
  } else {
    std::memmove(dst, src.data, len * sizeof(T));
  }
}

}  // namespace zivks

#endif
