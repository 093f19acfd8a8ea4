// Read prefetch.
//
// On Arm a hint runs ahead of the loads, once for every cache line. On x86-64 there is none: its processors
// follow streams by themselves, and hints of every kind were measured to be neutral or to cost up to three
// times the time of the loop.
#ifndef ZIVKS_CORE_PREFETCH_H
#define ZIVKS_CORE_PREFETCH_H

#include <cstddef>
#include <cstdint>

namespace zivks {

#if defined(__aarch64__)
inline constexpr bool kPrefetches = true;
#else
inline constexpr bool kPrefetches = false;
#endif

inline constexpr size_t kCacheLineBytes = 64;

// What the hints say is to come. In each case the data is used once.
enum class Prefetch { kRead, kReadToSecondLevelCache, kWrite };

// Hints at the `bytes` of memory that lie `distance` bytes ahead of `from`. The address may lie outside of any
// array: a hint does not fault.
template <size_t distance, size_t bytes = kCacheLineBytes, Prefetch prefetch = Prefetch::kRead>
[[gnu::always_inline]] inline void prefetch_ahead(const void* from) {
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

}  // namespace zivks

#endif
