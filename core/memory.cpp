// Typed allocation, version and status text: thin wrappers over the four services that the application
// supplies.
#include <zivk_core.h>
#include <zivks/core.h>

namespace {

// The service takes its size as a signed 32-bit number of bytes; a length whose size does not fit is refused
// here. One unsigned comparison refuses lengths below 1 as well.
template <class T>
T* allocate(int32_t len) {
  constexpr uint32_t kLargestLength = INT32_MAX / sizeof(T);
  if (static_cast<uint32_t>(len) - 1 >= kLargestLength) return nullptr;
  return static_cast<T*>(ZIVK_Malloc(len * static_cast<int32_t>(sizeof(T))));
}

}  // namespace

uint8_t* ZIVKS_Malloc_8u(int32_t len) { return allocate<uint8_t>(len); }
int8_t* ZIVKS_Malloc_8s(int32_t len) { return allocate<int8_t>(len); }
uint16_t* ZIVKS_Malloc_16u(int32_t len) { return allocate<uint16_t>(len); }
int16_t* ZIVKS_Malloc_16s(int32_t len) { return allocate<int16_t>(len); }
uint32_t* ZIVKS_Malloc_32u(int32_t len) { return allocate<uint32_t>(len); }
int32_t* ZIVKS_Malloc_32s(int32_t len) { return allocate<int32_t>(len); }
uint64_t* ZIVKS_Malloc_64u(int32_t len) { return allocate<uint64_t>(len); }
int64_t* ZIVKS_Malloc_64s(int32_t len) { return allocate<int64_t>(len); }
float* ZIVKS_Malloc_32f(int32_t len) { return allocate<float>(len); }
double* ZIVKS_Malloc_64f(int32_t len) { return allocate<double>(len); }
ZIVK8sc* ZIVKS_Malloc_8sc(int32_t len) { return allocate<ZIVK8sc>(len); }
ZIVK16sc* ZIVKS_Malloc_16sc(int32_t len) { return allocate<ZIVK16sc>(len); }
ZIVK32sc* ZIVKS_Malloc_32sc(int32_t len) { return allocate<ZIVK32sc>(len); }
ZIVK64sc* ZIVKS_Malloc_64sc(int32_t len) { return allocate<ZIVK64sc>(len); }
ZIVK32fc* ZIVKS_Malloc_32fc(int32_t len) { return allocate<ZIVK32fc>(len); }
ZIVK64fc* ZIVKS_Malloc_64fc(int32_t len) { return allocate<ZIVK64fc>(len); }

void ZIVKS_Free(void* ptr) { ZIVK_Free(ptr); }

const ZIVKLibVersion* ZIVKS_GetLibVersion(void) { return ZIVK_GetLibVersion(); }

const char* ZIVKS_GetStatusString(ZIVKStatus status) { return ZIVK_GetStatusString(status); }
