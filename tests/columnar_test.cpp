// What columns of random rows do not show.
#include <gtest/gtest.h>
#include <xxhash.h>
#include <zivks.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "reference/against_reference.h"

namespace zivks_test {
namespace {

class AggregateOfFloats : public AgainstReference {
 protected:
  std::string difference_on(Operands operands, const std::vector<double>& rows) const {
    std::memcpy(operands.arrays[0].data(), rows.data(), operands.arrays[0].size());
    return difference_from_reference(operands);
  }
};

// Columns have many ties between zeros, and often NaN. Which values they are made of changes on the way.
TEST_P(AggregateOfFloats, AgreesOnColumnsOfZerosAndNans) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const double nan = nan_with_payload<double>(false, true);
  const std::vector<double> values[] = {{0.0, -0.0},      {-1.0},       {1.0},      {nan}, {-0.0},
                                        {nan, 0.0, -0.0}, {-0.0, -1.0}, {0.0},      {5.0}, {-5.0},
                                        {0.0, 1.0, -1.0}, {-kInfinity}, {kInfinity}};
  Random random(1);
  for (int32_t length : {1, 3, 7, 8, 9, 20, 100, 1023, 1024, 1030, 3000, 5000}) {
    for (size_t variant = 0; variant < count_variants(function()); ++variant) {
      for (int repetition = 0; repetition < 20; ++repetition) {
        std::vector<double> rows;
        while (rows.size() < static_cast<size_t>(length)) {
          const std::vector<double>& set = values[random.below(std::size(values))];
          for (uint64_t count = 1 + random.below(repetition < 10 ? 1200 : 12); count > 0; --count) {
            rows.push_back(set[random.below(set.size())]);
          }
        }
        ASSERT_EQ(difference_on(random_operands(function(), length, variant), rows), "")
            << "length " << length << ", variant " << variant << ", repetition " << repetition;
      }
    }
  }
}

// A zero that has been overtaken has no say about the sign of a later one.
TEST_P(AggregateOfFloats, ForgetsAZeroThatWasOvertaken) {
  for (double sign : {1.0, -1.0}) {
    std::vector<double> rows(2050, -sign);
    rows[0] = sign * 0.0, rows[1024] = sign * 5, rows[2048] = nan_with_payload<double>(true, false);
    rows[2049] = sign * -0.0;
    EXPECT_EQ(difference_on(random_operands(function(), 2050, static_cast<size_t>(Nulls::kNone)), rows), "");
  }
}

ZIVKS_FOR_FUNCTIONS(AggregateOfFloats, (std::vector<const Function*>{find_function("ZIVKS_AggMax_64f"),
                                                                     find_function("ZIVKS_AggMin_64f")}));

// Runs of texts of one length, and others between them, to their end at the end of the column.
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
    std::vector<int8_t> nulls(offsets.size() - 1);
    for (int8_t& null : nulls) null = random.below(10) == 0 ? -1 : 0;
    for (const int8_t* flags :
         {static_cast<const int8_t*>(nullptr), static_cast<const int8_t*>(nulls.data())}) {
      std::vector<uint64_t> hashes(nulls.size(), 1);
      ASSERT_EQ(ZIVKS_Hash_varchar(bytes.data(), offsets.data(), 41, flags, hashes.data()), ZIVK_STS_NO_ERR);
      for (size_t row = 0; row < hashes.size(); ++row) {
        const auto length = static_cast<size_t>(offsets[row + 1] - offsets[row]);
        const bool is_null = flags != nullptr && flags[row] != 0;
        ASSERT_EQ(hashes[row], is_null ? 1 : XXH64(bytes.data() + offsets[row], length, 0))
            << "size " << size << ", row " << row;
      }
    }
  }
}

// Offsets count from `src`, also backwards.
TEST(HashOfTexts, TakesOffsetsOfEitherSign) {
  const std::string text = "abcabc";
  const auto* const bytes = reinterpret_cast<const uint8_t*>(text.data());
  const int32_t offsets[] = {-3, 0, 0, 3};
  uint64_t hashes[3];
  ASSERT_EQ(ZIVKS_Hash_varchar(bytes + 3, offsets, 3, nullptr, hashes), ZIVK_STS_NO_ERR);
  EXPECT_EQ(hashes[0], 0x44BC2CF5AD770999);
  EXPECT_EQ(hashes[1], 0xEF46DB3751D8E999);
  EXPECT_EQ(hashes[2], hashes[0]);
}

TEST(HashOfNumbers, TellsZerosApartButNotNans) {
  const double rows[] = {0.0, -0.0, nan_with_payload<double>(true, true),
                         nan_with_payload<double>(false, false)};
  uint64_t hashes[4];
  ASSERT_EQ(ZIVKS_Hash_64f(rows, 4, nullptr, hashes), ZIVK_STS_NO_ERR);
  EXPECT_EQ(hashes[0], 0);
  EXPECT_EQ(hashes[1], 0x617AF2A1C0000000);
  EXPECT_EQ(hashes[2], 0xA7551CC48D5C0000);
  EXPECT_EQ(hashes[3], hashes[2]);
}

// With nulls a search begins with the bounds, which only a decimal beyond the one asked for beats.
TEST(AggregateOfDecimals, BeginsWithTheBoundsIfThereMayBeNulls) {
  constexpr uint64_t kSign = uint64_t{1} << 63, kUpper = 0x4B3B4CA85A86C47A, kLower = 0x098A223FFFFFFFFF;
  const int8_t no_nulls[16] = {};
  const int8_t* const both[] = {nullptr, no_nulls};
  for (uint64_t sign : {uint64_t{0}, kSign}) {
    for (uint64_t lower : {kLower - 1, kLower, kLower + 1}) {
      const std::vector<ZIVKDecimal128> rows(16, {lower, kUpper | sign});
      for (const int8_t* nulls : both) {
        const bool may_be_null = nulls != nullptr, is_beyond = lower > kLower;
        ZIVKDecimal128 most, least;
        ASSERT_EQ(ZIVKS_AggMax_decimal128(rows.data(), 16, nulls, &most), ZIVK_STS_NO_ERR);
        ASSERT_EQ(ZIVKS_AggMin_decimal128(rows.data(), 16, nulls, &least), ZIVK_STS_NO_ERR);
        EXPECT_EQ(most.lo, may_be_null && is_beyond && sign != 0 ? kLower : lower);
        EXPECT_EQ(least.lo, may_be_null && is_beyond && sign == 0 ? kLower : lower);
        EXPECT_EQ(most.hi, kUpper | sign);
        EXPECT_EQ(least.hi, kUpper | sign);
      }
    }
  }
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
