// Numbers and their texts.
#ifndef ZIVKS_EXAMPLES_QUERY_NUMBER_H
#define ZIVKS_EXAMPLES_QUERY_NUMBER_H

#include <zivks.h>

#include <cstdint>
#include <string>
#include <string_view>

// Decimals have this many digits behind the point, which leaves 20 ahead of it. With one scale for all there is
// nothing to be aligned before they are compared or hashed.
constexpr int kDecimalScale = 18;
constexpr int kDecimalWholeDigits = 20;

using SignedDecimal = __int128;

inline SignedDecimal to_signed(ZIVKDecimal128 decimal) {
  constexpr uint64_t kSign = uint64_t{1} << 63;
  const auto magnitude =
      static_cast<SignedDecimal>(static_cast<unsigned __int128>(decimal.hi & ~kSign) << 64 | decimal.lo);
  return (decimal.hi & kSign) != 0 ? -magnitude : magnitude;
}
inline int64_t to_signed(int64_t integer) { return integer; }

enum class Reading { kNumber, kOutOfRange, kNoNumber };

// Reads the whole text as a number: a sign or none, and digits, of which a decimal may have some behind a point.
// A decimal zero is never negative. `fraction_digits` is raised to the number of digits behind the point.
Reading read_integer(std::string_view text, int64_t& value);
Reading read_decimal(std::string_view text, ZIVKDecimal128& value, int& fraction_digits);

// A decimal with `fraction_digits` digits behind its point.
std::string to_text(ZIVKDecimal128 value, int fraction_digits);

#endif
