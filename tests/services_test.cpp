// The services that libzivk_core.so supplies.
#include <gtest/gtest.h>
#include <zivk_core.h>

#include <cstring>
#include <set>
#include <string>

namespace {

TEST(Services, MemoryIsAlignedToCacheLinesAndUsable) {
  for (int32_t size : {1, 2, 63, 64, 65, 1000, 1 << 20}) {
    void* const memory = ZIVK_Malloc(size);
    ASSERT_NE(memory, nullptr) << size;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(memory) % 64, 0U) << size;
    std::memset(memory, 0x5A, static_cast<size_t>(size));
    ZIVK_Free(memory);
  }
  for (int32_t size : {0, -1}) EXPECT_EQ(ZIVK_Malloc(size), nullptr);
  ZIVK_Free(nullptr);
}

TEST(Services, EveryStatusHasATextOfItsOwn) {
  const std::string unknown = ZIVK_GetStatusString(-1);
  std::set<std::string> texts = {unknown};
  for (ZIVKStatus status : {0, 1, 2, 7, 9, 10, 17, 18, 19, 20, 200, 202, 307, 400, 401, 402, 405, 600}) {
    EXPECT_TRUE(texts.insert(ZIVK_GetStatusString(status)).second) << status;
  }
  EXPECT_EQ(texts.count(""), 0U);
  for (ZIVKStatus status : {3, 601, 2147483647}) EXPECT_EQ(ZIVK_GetStatusString(status), unknown);
}

TEST(Services, VersionTextSaysTheNumbers) {
  const ZIVKLibVersion* const version = ZIVK_GetLibVersion();
  ASSERT_NE(version, nullptr);
  EXPECT_EQ(version->text, std::to_string(version->major) + "." + std::to_string(version->minor) + "." +
                               std::to_string(version->patch));
  EXPECT_NE(std::string(version->name), "");
}

}  // namespace
