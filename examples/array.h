// Arrays of the library's allocators, with an owner.
#ifndef ZIVKS_EXAMPLES_ARRAY_H
#define ZIVKS_EXAMPLES_ARRAY_H

#include <zivks.h>

#include <memory>
#include <new>
#include <stdexcept>

struct Release {
  void operator()(void* ptr) const { ZIVKS_Free(ptr); }
};

template <typename T>
using Array = std::unique_ptr<T[], Release>;

// Takes what a ZIVKS_Malloc_ function returned.
template <typename T>
Array<T> own(T* ptr) {
  if (ptr == nullptr) throw std::bad_alloc();
  return Array<T>(ptr);
}

inline void check(ZIVKStatus status) {
  if (status != ZIVK_STS_NO_ERR) throw std::runtime_error(ZIVKS_GetStatusString(status));
}

#endif
