#include <gtest/gtest.h>
#include <zivk_core.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>

namespace {

TEST(Services, MemoryStartsOnACacheLine) {
  for (const int32_t size : {1, 63, 64, 65, 1000003}) {
    void* const memory = ZIVK_Malloc(size);
    ASSERT_NE(memory, nullptr) << size;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % 64, 0u) << size;
    std::memset(memory, 0xff, static_cast<std::size_t>(size));
    ZIVK_Free(memory);
  }
  EXPECT_EQ(ZIVK_Malloc(0), nullptr);
  EXPECT_EQ(ZIVK_Malloc(INT32_MIN), nullptr);
  ZIVK_Free(nullptr);
}

TEST(Services, VersionTextSpellsTheNumbers) {
  const ZIVKLibVersion* const version = ZIVK_GetLibVersion();
  EXPECT_EQ(version->text, std::to_string(version->major) + '.' + std::to_string(version->minor) + '.' +
                               std::to_string(version->patch));
  EXPECT_STREQ(version->name, "zivks");
}

TEST(Services, EveryStatusHasATextOfItsOwn) {
  const std::set<ZIVKStatus> statuses = {0,  1,   2,   7,   9,   10,  17,  18,  19,
                                         20, 200, 202, 307, 400, 401, 402, 405, 600};
  const std::string unknown = ZIVK_GetStatusString(-1);
  std::set<std::string> texts;
  for (ZIVKStatus status = -1; status <= 1000; ++status) {
    const std::string text = ZIVK_GetStatusString(status);
    EXPECT_EQ(text != unknown, statuses.count(status) == 1) << status;
    texts.insert(text);
  }
  EXPECT_EQ(texts.size(), statuses.size() + 1);
}

}  // namespace
