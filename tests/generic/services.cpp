#include "generic/services.h"

#include "generic/guarded_memory.h"

namespace zivks_test {

Services services;

void* memory_of(int32_t size) {
  static const GuardedMemory memory;
  return static_cast<size_t>(size) <= GuardedMemory::kCapacity ? memory.end() - size : nullptr;
}

}  // namespace zivks_test

using zivks_test::services;

void* ZIVK_Malloc(int32_t size) {
  services.size = size;
  return services.memory ? *services.memory : zivks_test::memory_of(size);
}
void ZIVK_Free(void* ptr) { services.freed = ptr; }
const ZIVKLibVersion* ZIVK_GetLibVersion() { return &zivks_test::kServicesVersion; }
const char* ZIVK_GetStatusString(ZIVKStatus status) {
  services.status = status;
  return zivks_test::kStatusText;
}

// The C library's clock; the library's calls come here, too.
extern "C" std::time_t time(std::time_t* now) noexcept {
  if (now != nullptr) *now = zivks_test::kClock;
  return zivks_test::kClock;
}
