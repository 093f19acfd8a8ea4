// What the library calls outside itself, under the control of the test program: the services that it imports, and
// the clock that seeds its random pivots.
#ifndef ZIVKS_TESTS_GENERIC_SERVICES_H
#define ZIVKS_TESTS_GENERIC_SERVICES_H

#include <zivk_core.h>

#include <ctime>
#include <optional>

namespace zivks_test {

// The arguments of the last calls, and what calls are given.
struct Services {
  std::optional<int32_t> size;
  std::optional<void*> freed;
  std::optional<ZIVKStatus> status;
  std::optional<void*> memory;  // given instead of memory_of(size)
};
extern Services services;

// Always the same memory for the same size. It ends at a page whose access ends the program; null if there is not
// as much.
void* memory_of(int32_t size);

inline constexpr ZIVKLibVersion kServicesVersion = {3, 1, 4, "services of the test", "3.1.4"};
inline constexpr char kStatusText[] = "text of the test";
inline constexpr std::time_t kClock = 1234567890;

}  // namespace zivks_test

#endif
