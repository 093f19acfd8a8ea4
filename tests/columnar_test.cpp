// What columns of random rows do not show.
#include <gtest/gtest.h>
#include <zivks.h>

#include <algorithm>
#include <string>
#include <vector>

#include "reference/against_reference.h"

namespace zivks_test {
namespace {

class AggregateOfFloats : public AgainstReference {};

// A column of these has many ties between zeros, and often NaN.
TEST_P(AggregateOfFloats, AgreesOnColumnsOfZerosAndNans) {
  const double nan = nan_with_payload<double>(false, true);
  const std::vector<double> columns[] = {{0.0, -0.0},
                                         {0.0, -0.0, -1.0, 1.0},
                                         {-0.0, -1.0, -INFINITY},
                                         {0.0, 1.0, INFINITY},
                                         {nan, 0.0, -0.0, 1.0, -1.0},
                                         {-INFINITY},
                                         {INFINITY}};
  Random random(1);
  for (const std::vector<double>& values : columns) {
    for (int32_t length : {1, 3, 7, 8, 9, 20, 100, 1023, 1024, 1030, 3000}) {
      for (size_t variant = 0; variant < count_variants(function()); ++variant) {
        for (uint64_t one_in :
             {uint64_t{1}, uint64_t{100}}) {  // how often a row is any of the values, and not the last one
          Operands operands = random_operands(function(), length, variant);
          for (size_t i = 0; i < static_cast<size_t>(length); ++i) {
            const double row =
                random.below(one_in) == 0 ? values[random.below(values.size())] : values.back();
            std::memcpy(&operands.arrays[0][i * sizeof row], &row, sizeof row);
          }
          ASSERT_EQ(difference_from_reference(operands), "")
              << "length " << length << ", variant " << variant << ", first value " << values[0];
        }
      }
    }
  }
}

ZIVKS_FOR_FUNCTIONS(AggregateOfFloats, (std::vector<const Function*>{find_function("ZIVKS_AggMax_64f"),
                                                                     find_function("ZIVKS_AggMin_64f")}));

// Long texts of one length next to each other, and others between them.
TEST(HashOfTexts, DoesNotDependOnTheirNeighbours) {
  Random random(2);
  for (size_t size = 0; size < 300; ++size) {
    std::vector<int32_t> offsets = {0};
    for (size_t row = 0; row < 41; ++row) {
      const bool is_stray = size % 3 == 0 && row == 2 * size % 41;
      offsets.push_back(offsets.back() + static_cast<int32_t>(is_stray ? random.below(200) : size));
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(offsets.back()));
    for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random.next());
    std::vector<uint64_t> hashes(offsets.size() - 1);
    ASSERT_EQ(ZIVKS_Hash_varchar(bytes.data(), offsets.data(), 41, nullptr, hashes.data()), ZIVK_STS_NO_ERR);
    for (size_t row = 0; row < hashes.size(); ++row) {
      const int32_t own[] = {offsets[row], offsets[row + 1]};
      uint64_t alone;
      ASSERT_EQ(ZIVKS_Hash_varchar(bytes.data(), own, 1, nullptr, &alone), ZIVK_STS_NO_ERR);
      ASSERT_EQ(hashes[row], alone) << "size " << size << ", row " << row;
    }
  }
}

TEST(HashOfTexts, KnowsPublishedValues) {
  const std::string text = "abc";
  const int32_t offsets[] = {0, 0, 3};
  uint64_t hashes[2];
  ASSERT_EQ(ZIVKS_Hash_varchar(reinterpret_cast<const uint8_t*>(text.data()), offsets, 2, nullptr, hashes),
            0);
  EXPECT_EQ(hashes[0], 0xEF46DB3751D8E999);
  EXPECT_EQ(hashes[1], 0x44BC2CF5AD770999);
}

struct BestText {
  const char* what;
  std::string bytes;
  std::vector<int32_t> offsets;
  std::string largest, smallest;
  int32_t smallest_length;
};

// Rows whose end lies before their beginning, as well as zero bytes and texts of more than a word that begin alike.
TEST(AggregateOfTexts, FollowsTheRulesForOddRows) {
  using std::string_literals::operator""s;
  const BestText columns[] = {
      {"prefixes", "ababcabcd", {0, 2, 5, 9}, "abcd", "ab", 2},
      {"an empty row", "abab", {0, 2, 2, 4}, "ab", "", 0},
      {"all empty", "x", {1, 1, 1}, "", "", 0},
      {"zero bytes", "\0\0\0\0\0\0"s, {0, 1, 3, 6}, "\0\0\0"s, "\0"s, 1},
      {"unsigned bytes", "\x7F\x80", {0, 1, 2}, "\x80", "\x7F", 1},
      {"a common word", "12345678a12345678b12345678", {0, 9, 18, 26}, "12345678b", "12345678", 8},
      {"a falling offset", "cab", {0, 1, 0, 3}, "cab", "", -1},
      {"a falling offset first", "cab", {2, 0, 3}, "cab", "", -2},
      {"falling below an empty row", "cab", {1, 1, 0}, "", "", -1}};
  for (const BestText& column : columns) {
    const auto* const bytes = reinterpret_cast<const uint8_t*>(column.bytes.data());
    const auto rows = static_cast<int32_t>(column.offsets.size()) - 1;
    std::string text(40, '#');
    int32_t length = 99;
    const auto result = [&] { return text.substr(0, static_cast<size_t>(std::max(length, 0))); };
    ASSERT_EQ(ZIVKS_AggMax_varchar(bytes, column.offsets.data(), rows,
                                   reinterpret_cast<uint8_t*>(text.data()), &length),
              ZIVK_STS_NO_ERR);
    EXPECT_EQ(result(), column.largest) << column.what;
    EXPECT_EQ(text.substr(result().size()), std::string(40 - result().size(), '#')) << column.what;
    text.assign(40, '#');
    ASSERT_EQ(ZIVKS_AggMin_varchar(bytes, column.offsets.data(), rows,
                                   reinterpret_cast<uint8_t*>(text.data()), &length),
              ZIVK_STS_NO_ERR);
    EXPECT_EQ(result(), column.smallest) << column.what;
    EXPECT_EQ(length, column.smallest_length) << column.what;
  }
}

}  // namespace
}  // namespace zivks_test
