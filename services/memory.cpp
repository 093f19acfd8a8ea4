#include <zivk_core.h>

#include <cstddef>
#include <cstdlib>

namespace {

// One cache line: arrays share none, and vector loads from the start of an array straddle none.
constexpr std::size_t kAlignment = 64;

}  // namespace

void* ZIVK_Malloc(int32_t size) {
  if (size < 1) return nullptr;
  // aligned_alloc wants a multiple of the alignment.
  const std::size_t lines = (static_cast<std::size_t>(size) + kAlignment - 1) / kAlignment;
  return std::aligned_alloc(kAlignment, lines * kAlignment);
}

void ZIVK_Free(void* ptr) { std::free(ptr); }
