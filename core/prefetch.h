// Prefetch.
//
// On Arm a hint runs ahead of the loads where a function states a distance, once for every cache line. On
// x86-64 there is none in loops that write as much as they read: its processors follow streams by
// themselves, and hints of every kind were measured to be neutral or to cost up to three times the time of
// the loop. Loops that read far more than they write are another matter: in arrays beyond the caches a hint
// far ahead saves a fifth to a third of their time.
#ifndef ZIVKS_CORE_PREFETCH_H
#define ZIVKS_CORE_PREFETCH_H

#include "core/vector/register.h"

namespace zivks {

inline constexpr size_t kCacheLineBytes = 64;

// What the hints say is to come. In each case the data is used once.
enum class Prefetch { kRead, kReadToSecondLevelCache, kWrite };

// Hints at the `bytes` of memory that lie `distance` bytes ahead of `from`. The address may lie outside of
// any array: a hint does not fault.
template <size_t distance, size_t bytes = kCacheLineBytes, Prefetch prefetch = Prefetch::kRead>
ZIVKS_INLINE void prefetch_ahead(const void* from) {
  if constexpr (kPrefetches && distance > 0) {
    const uintptr_t start = reinterpret_cast<uintptr_t>(from) + distance;
    for (size_t line = 0; line < bytes; line += kCacheLineBytes) {
      const char* const ahead = reinterpret_cast<const char*>(start + line);
      if constexpr (prefetch == Prefetch::kReadToSecondLevelCache) {
        asm volatile("prfm pldl2strm, %0" : : "m"(*ahead));  // the compiler's own hints cannot say it
      } else {
        __builtin_prefetch(ahead, prefetch == Prefetch::kWrite, 0);
      }
    }
  }
}

inline constexpr size_t kReadAheadBytes = kPrefetches ? 0 : size_t{16} << 10;

// From this size on an array is taken for one that the caches do not hold. It is read with hints at what
// comes kReadAheadBytes later; in the caches they would cost a little.
inline constexpr size_t kReadAheadFrom = size_t{1} << 20;

// Whether a loop over so many bytes reads ahead, if it is one that gains from that.
ZIVKS_INLINE bool reads_ahead(size_t bytes) { return kReadAheadBytes > 0 && bytes >= kReadAheadFrom; }

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
