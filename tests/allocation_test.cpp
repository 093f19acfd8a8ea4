// The allocators and their companions.
#include <gtest/gtest.h>

#include "generic/function_table.h"
#include "generic/services.h"

namespace zivks_test {
namespace {

struct Allocator {
  const char* name;
  int32_t bytes;
};

constexpr Allocator kAllocators[] = {
    {"ZIVKS_Malloc_8u", 1},   {"ZIVKS_Malloc_8s", 1},   {"ZIVKS_Malloc_16u", 2},   {"ZIVKS_Malloc_16s", 2},
    {"ZIVKS_Malloc_8sc", 2},  {"ZIVKS_Malloc_32u", 4},  {"ZIVKS_Malloc_32s", 4},   {"ZIVKS_Malloc_32f", 4},
    {"ZIVKS_Malloc_16sc", 4}, {"ZIVKS_Malloc_64u", 8},  {"ZIVKS_Malloc_64s", 8},   {"ZIVKS_Malloc_64f", 8},
    {"ZIVKS_Malloc_32sc", 8}, {"ZIVKS_Malloc_32fc", 8}, {"ZIVKS_Malloc_64sc", 16}, {"ZIVKS_Malloc_64fc", 16}};

TEST(Allocation, AsksForTheBytesOfItsElements) {
  size_t rows = 0;
  for (const Function& function : all_functions()) {
    if (function.name.rfind("ZIVKS_Malloc_", 0) == 0) ++rows;
  }
  EXPECT_EQ(rows, std::size(kAllocators));
  char memory;
  for (const Allocator& allocator : kAllocators) {
    const int32_t largest = std::numeric_limits<int32_t>::max() / allocator.bytes;
    const Function* const function = find_function(allocator.name);
    ASSERT_NE(function, nullptr) << allocator.name;
    const auto allocate = [&](int32_t len) {
      services.size.reset();
      return function->call({Slot::of(len)}).as<void*>();
    };
    for (void* given : {static_cast<void*>(&memory), static_cast<void*>(nullptr)}) {
      services.memory = given;
      for (int32_t len : {1, 7, 134217727, largest}) {
        EXPECT_EQ(allocate(len), given) << allocator.name;
        EXPECT_EQ(services.size, len * allocator.bytes) << allocator.name << " of " << len;
      }
    }
    services.memory = &memory;
    constexpr int32_t kLargest = std::numeric_limits<int32_t>::max(),
                      kLeast = std::numeric_limits<int32_t>::min();
    for (int32_t len : {0, -1, kLeast, kLeast + 1, -(1 << 28), largest + (allocator.bytes > 1), kLargest}) {
      if (len > 0 && allocator.bytes == 1) continue;
      EXPECT_EQ(allocate(len), nullptr) << allocator.name << " of " << len;
      EXPECT_EQ(services.size, std::nullopt) << allocator.name << " of " << len;
    }
    services.memory.reset();
  }
}

TEST(Allocation, FreePassesItsArgumentOnUntested) {
  char memory;
  for (void* ptr : {static_cast<void*>(&memory), static_cast<void*>(nullptr)}) {
    services.freed.reset();
    ZIVKS_Free(ptr);
    EXPECT_EQ(services.freed, ptr);
  }
}

TEST(Information, IsWhatTheServicesGive) {
  EXPECT_EQ(ZIVKS_GetLibVersion(), &kServicesVersion);
  for (ZIVKStatus status : {0, 307, -1, 12345}) {
    EXPECT_EQ(ZIVKS_GetStatusString(status), kStatusText);
    EXPECT_EQ(services.status, status);
  }
}

}  // namespace
}  // namespace zivks_test
