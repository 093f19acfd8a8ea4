// Read prefetch.
//
// On Arm a hint runs ahead of the loads, once for every cache line. On x86-64 there is none: its processors
// follow streams by themselves, and hints of every kind were measured to be neutral or to cost up to three
// times the time of the loop.
#ifndef ZIVKS_CORE_PREFETCH_H
#define ZIVKS_CORE_PREFETCH_H

#include "core/vector/register.h"

namespace zivks {

inline constexpr size_t kCacheLineBytes = 64;

// Hints at the `bytes` of memory that lie `distance` bytes ahead of `from`, as data that is read, or written, once. The
// address may lie outside of any array: a hint does not fault.
template <size_t distance, size_t bytes = kCacheLineBytes, bool reads = true>
ZIVKS_INLINE void prefetch_ahead(const void* from) {
  if constexpr (kPrefetches && distance > 0) {
    const uintptr_t start = reinterpret_cast<uintptr_t>(from) + distance;
    for (size_t line = 0; line < bytes; line += kCacheLineBytes) {
      __builtin_prefetch(reinterpret_cast<const void*>(start + line), reads ? 0 : 1, 0);
    }
  }
}

inline constexpr size_t kReadAheadBytes = kPrefetches ? 0 : size_t{16} << 10;

// From this size on an array is read with hints at what comes kReadAheadBytes later; in the caches they
// would cost a little.
inline constexpr size_t kReadAheadFrom = size_t{1} << 20;

template <size_t bytes>
ZIVKS_INLINE void read_ahead(const void* from) {
  if constexpr (kReadAheadBytes == 0) return;
  const uintptr_t start = reinterpret_cast<uintptr_t>(from) + kReadAheadBytes;
  for (size_t line = 0; line < bytes; line += kCacheLineBytes) {
    __builtin_prefetch(reinterpret_cast<const void*>(start + line));
  }
}

}  // namespace zivks

#endif
