// Handles: what those of radix sorts ask for near the limit of sizes, and what Release does.
#include <gtest/gtest.h>

#include "generic/every_function.h"
#include "generic/services.h"

namespace zivks_test {
namespace {

class Handles : public testing::Test {
 protected:
  void SetUp() override { services.memory = nullptr; }
  void TearDown() override { services.memory.reset(); }
};

constexpr int32_t kNotAsked = 0;

TEST_F(Handles, OfRadixSortsAskForNoMoreThanASizeCanTell) {
  struct Limit {
    decltype(&ZIVKS_SortRadixInit) init;
    ZIVKDataType type;
    int32_t len, bytes;
  };
  constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
  std::vector<Limit> limits;
  for (ZIVKDataType type : {ZIVK_DT_32U, ZIVK_DT_32S, ZIVK_DT_32F}) {
    limits.insert(limits.end(), {{ZIVKS_SortRadixInit, type, 0x1FFFFFFF, 0x7FFFFFFC},
                                 {ZIVKS_SortRadixInit, type, 0x20000000, kNotAsked},
                                 {ZIVKS_SortRadixIndexInit, type, 0x0AAAAAAA, 0x7FFFFFF8},
                                 {ZIVKS_SortRadixIndexInit, type, 0x0AAAAAAB, kNotAsked}});
  }
  for (ZIVKDataType type : {ZIVK_DT_64U, ZIVK_DT_64S, ZIVK_DT_64F}) {
    limits.insert(limits.end(), {{ZIVKS_SortRadixInit, type, 0x0FFFFFFF, 0x7FFFFFF8},
                                 {ZIVKS_SortRadixInit, type, 0x10000000, kNotAsked},
                                 {ZIVKS_SortRadixIndexInit, type, 0x05555555, 0x7FFFFFF8},
                                 {ZIVKS_SortRadixIndexInit, type, 0x05555556, kNotAsked}});
  }
  for (auto init : {ZIVKS_SortRadixInit, ZIVKS_SortRadixIndexInit}) {
    limits.insert(limits.end(), {{init, ZIVK_DT_8U, kLargest, 1024},
                                 {init, ZIVK_DT_16U, kLargest, 262144},
                                 {init, ZIVK_DT_16S, kLargest, 262144},
                                 {init, ZIVK_DT_32S, kLargest, kNotAsked},
                                 {init, ZIVK_DT_64S, kLargest, kNotAsked}});
  }
  for (const Limit& limit : limits) {
    services.size = kNotAsked;
    void* policy = this;
    EXPECT_EQ(limit.init(limit.len, limit.type, &policy), ZIVK_STS_MALLOC_ERR);
    EXPECT_EQ(services.size, limit.bytes) << "type " << limit.type << ", length " << limit.len;
    EXPECT_EQ(policy, this);
  }
}

TEST_F(Handles, AreHandedToFreeUntested) {
  for (const Function* function : array_functions()) {
    if (function->arguments[0].role != Role::kHandle) continue;
    for (void* policy : {static_cast<void*>(this), static_cast<void*>(nullptr)}) {
      services.freed.reset();
      EXPECT_EQ(function->call({Slot::of(policy)}).as<ZIVKStatus>(), ZIVK_STS_NO_ERR);
      EXPECT_EQ(services.freed, policy) << function->name;
    }
  }
}

}  // namespace
}  // namespace zivks_test
