// A C++17 program that brings the services along: succeeds if the library calls them and hands on their
// results.
#include <zivk_core.h>
#include <zivks.h>

#include <cstdlib>

namespace {
int32_t requested_size = 0;
void* released = nullptr;
constexpr ZIVKLibVersion kVersion = {7, 8, 9, "own", "7.8.9"};
constexpr char kStatusText[] = "own text";
}  // namespace

void* ZIVK_Malloc(int32_t size) {
  requested_size = size;
  return std::malloc(static_cast<std::size_t>(size));
}
void ZIVK_Free(void* ptr) {
  released = ptr;
  std::free(ptr);
}
const ZIVKLibVersion* ZIVK_GetLibVersion() { return &kVersion; }
const char* ZIVK_GetStatusString(ZIVKStatus status) { return status == 12345 ? kStatusText : nullptr; }

int main() {
  ZIVK64fc* const array = ZIVKS_Malloc_64fc(3);
  const bool allocated = array != nullptr && requested_size == 48;
  ZIVKS_Free(array);
  return allocated && released == array && ZIVKS_GetLibVersion() == &kVersion &&
                 ZIVKS_GetStatusString(12345) == kStatusText
             ? EXIT_SUCCESS
             : EXIT_FAILURE;
}
