#include "number.h"

#include <algorithm>
#include <charconv>

namespace {

bool is_digit(char c) { return '0' <= c && c <= '9'; }

std::size_t count_digits(std::string_view text) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), is_digit) - text.begin());
}

// std::from_chars() takes no plus sign.
std::string_view without_plus(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

}  // namespace

Reading read_integer(std::string_view text, int64_t& value) {
  text = without_plus(text);
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error == std::errc::invalid_argument || rest != end) return Reading::kNoNumber;
  return error == std::errc() ? Reading::kNumber : Reading::kOutOfRange;
}

Reading read_decimal(std::string_view text, ZIVKDecimal128& value, int& fraction_digits) {
  text = without_plus(text);
  const bool is_negative = !text.empty() && text[0] == '-';
  if (is_negative) text.remove_prefix(1);
  std::string_view whole = text.substr(0, count_digits(text));
  text.remove_prefix(whole.size());
  if (!text.empty()) {
    if (text[0] != '.') return Reading::kNoNumber;
    text.remove_prefix(1);
  }
  std::string_view fraction = text;
  if (count_digits(fraction) != fraction.size()) return Reading::kNoNumber;
  if (whole.empty() && fraction.empty()) return Reading::kNoNumber;

  whole.remove_prefix(std::min(whole.find_first_not_of('0'), whole.size()));
  fraction = fraction.substr(0, fraction.find_last_not_of('0') + 1);
  if (whole.size() > kDecimalWholeDigits || fraction.size() > kDecimalScale) return Reading::kOutOfRange;
  unsigned __int128 magnitude = 0;
  const auto push = [&magnitude](char digit) {
    magnitude = 10 * magnitude + static_cast<unsigned>(digit - '0');
  };
  for (const char digit : whole) push(digit);
  for (const char digit : fraction) push(digit);
  for (std::size_t i = fraction.size(); i < kDecimalScale; ++i) push('0');
  value = {static_cast<uint64_t>(magnitude), static_cast<uint64_t>(magnitude >> 64)};
  if (is_negative && magnitude != 0) value.hi |= uint64_t{1} << 63;
  fraction_digits = std::max(fraction_digits, std::min(static_cast<int>(text.size()), kDecimalScale));
  return Reading::kNumber;
}

std::string to_text(ZIVKDecimal128 value, int fraction_digits) {
  const SignedDecimal number = to_signed(value);
  auto magnitude = static_cast<unsigned __int128>(number < 0 ? -number : number);
  std::string reversed;
  for (int place = 0; place <= kDecimalScale || magnitude != 0; ++place) {
    if (place == kDecimalScale && fraction_digits > 0) reversed += '.';
    if (place >= kDecimalScale - fraction_digits) {
      reversed += static_cast<char>('0' + static_cast<int>(magnitude % 10));
    }
    magnitude /= 10;
  }
  if (number < 0) reversed += '-';
  return {reversed.rbegin(), reversed.rend()};
}
