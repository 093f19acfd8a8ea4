// The allocators and their companions, with services of this program's own that record their arguments.
#include <gtest/gtest.h>
#include <zivk_core.h>

#include <optional>

#include "generic/function_table.h"

namespace {

struct {
  std::optional<int32_t> size;
  std::optional<void*> freed;
  std::optional<ZIVKStatus> status;
  void* memory = nullptr;  // what is given
} service;

constexpr ZIVKLibVersion kVersion = {3, 1, 4, "services of the test", "3.1.4"};
constexpr const char* kText = "text of the test";

}  // namespace

void* ZIVK_Malloc(int32_t size) {
  service.size = size;
  return service.memory;
}
void ZIVK_Free(void* ptr) { service.freed = ptr; }
const ZIVKLibVersion* ZIVK_GetLibVersion() { return &kVersion; }
const char* ZIVK_GetStatusString(ZIVKStatus status) {
  service.status = status;
  return kText;
}

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
      service.size.reset();
      return function->call({Slot::of(len)}).as<void*>();
    };
    for (void* given : {static_cast<void*>(&memory), static_cast<void*>(nullptr)}) {
      service.memory = given;
      for (int32_t len : {1, 7, 134217727, largest}) {
        EXPECT_EQ(allocate(len), given) << allocator.name;
        EXPECT_EQ(service.size, len * allocator.bytes) << allocator.name << " of " << len;
      }
    }
    service.memory = &memory;
    constexpr int32_t kLargest = std::numeric_limits<int32_t>::max(),
                      kLeast = std::numeric_limits<int32_t>::min();
    for (int32_t len : {0, -1, kLeast, kLeast + 1, -(1 << 28), largest + (allocator.bytes > 1), kLargest}) {
      if (len > 0 && allocator.bytes == 1) continue;
      EXPECT_EQ(allocate(len), nullptr) << allocator.name << " of " << len;
      EXPECT_EQ(service.size, std::nullopt) << allocator.name << " of " << len;
    }
  }
}

TEST(Allocation, FreePassesItsArgumentOnUntested) {
  char memory;
  for (void* ptr : {static_cast<void*>(&memory), static_cast<void*>(nullptr)}) {
    service.freed.reset();
    ZIVKS_Free(ptr);
    EXPECT_EQ(service.freed, ptr);
  }
}

TEST(Information, IsWhatTheServicesGive) {
  EXPECT_EQ(ZIVKS_GetLibVersion(), &kVersion);
  for (ZIVKStatus status : {0, 307, -1, 12345}) {
    EXPECT_EQ(ZIVKS_GetStatusString(status), kText);
    EXPECT_EQ(service.status, status);
  }
}

}  // namespace
}  // namespace zivks_test
