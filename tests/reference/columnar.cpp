// Hashes and aggregates of columns, row by row.
#include <xxhash.h>

#include <algorithm>
#include <limits>
#include <string>

#include "reference/reference.h"

namespace zivks_test {
namespace {

using Text = std::basic_string<unsigned char>;

size_t index_of(Role role, const Function& function) {
  const auto has_role = [role](const Argument& argument) { return argument.role == role; };
  const auto found = std::find_if(function.arguments.begin(), function.arguments.end(), has_role);
  if (found == function.arguments.end()) throw std::logic_error(function.name + " lacks an argument");
  return static_cast<size_t>(found - function.arguments.begin());
}

// A column of a call: its rows, and which of them are null.
template <class T>
struct Column {
  std::vector<T> rows;
  std::vector<bool> nulls;
  bool has_nulls = false;  // a null vector, whatever it holds

  Column(const Function& function, const Operands& operands) {
    const auto length = static_cast<size_t>(operands.length);
    for (size_t i = 0; i < length; ++i) {
      if constexpr (std::is_same_v<T, Text>) {
        const size_t offsets = index_of(Role::kOffsets, function);
        const auto begin = input_element<int32_t>(function, operands, offsets, i),
                   end = input_element<int32_t>(function, operands, offsets, i + 1);
        const auto bytes = operands.arrays[0].begin();
        rows.emplace_back(bytes + begin, bytes + end);
      } else {
        rows.push_back(input_element<T>(function, operands, 0, i));
      }
    }
    nulls.resize(length);
    if (!function.has(Role::kNulls)) return;
    const size_t flags = index_of(Role::kNulls, function);
    has_nulls = operands.slots[flags].as<Nulls>() != Nulls::kAbsent;
    for (size_t i = 0; has_nulls && i < length; ++i) nulls[i] = operands.arrays[flags][i] != 0;
  }
};

template <class T>
Reference each_row(uint64_t (*hash)(const T&)) {
  return [hash](const Function& function, const Operands& operands) {
    const Column<T> column(function, operands);
    Outputs outputs(function, operands);
    for (size_t i = 0; i < column.rows.size(); ++i) {
      if (!column.nulls[i]) outputs.set(0, i, hash(column.rows[i]));
    }
    return outputs.take();
  };
}

uint64_t one_round(uint64_t key) {
  const uint64_t product = key * 0xC2B2AE3D27D4EB4F;
  return (product << 31 | product >> 33) * 0x9E3779B185EBCA87;
}
template <class T>
uint64_t hash_of_integer(const T& row) {
  return one_round(static_cast<uint64_t>(int64_t{row}));
}
uint64_t hash_of_float(const double& row) {
  return std::isnan(row) ? 0xA7551CC48D5C0000 : one_round(bit_cast<uint64_t>(row));
}
uint64_t hash_of_bool(const uint8_t& row) { return row != 0 ? 1231 : 1237; }
uint64_t hash_of_decimal64(const int64_t& row) { return static_cast<uint64_t>(row); }
uint64_t hash_of_decimal128(const ZIVKDecimal128& row) {
  const uint64_t words[] = {row.lo, row.hi % (uint64_t{1} << 63)};
  return XXH64(&words[0], 8, 0) ^ XXH64(&words[1], 8, 0);
}
uint64_t hash_of_text(const Text& row) { return XXH64(row.data(), row.size(), 0); }

uint64_t combined_hash(uint64_t a, uint64_t b) { return a * 31 + b; }

// Of rows that are not null, the first that none of the others beats; without any, `start`.
template <class T>
Reference best_row(bool (*less)(const T&, const T&), T start, T result(const T&), bool largest) {
  return [=](const Function& function, const Operands& operands) {
    const Column<T> column(function, operands);
    T best = column.has_nulls ? start : column.rows[0];
    for (size_t i = 0; i < column.rows.size(); ++i) {
      if (column.nulls[i]) continue;
      if (largest ? less(best, column.rows[i]) : less(column.rows[i], best)) best = column.rows[i];
    }
    Outputs outputs(function, operands);
    if constexpr (std::is_same_v<T, Text>) {
      for (size_t i = 0; i < best.size(); ++i) outputs.set(0, i, best[i]);
      outputs.set(1, 0, static_cast<int32_t>(best.size()));
    } else {
      outputs.set(0, 0, result(best));
    }
    return outputs.take();
  };
}

template <class T>
bool is_less(const T& a, const T& b) {
  return a < b;
}
template <class T>
T unchanged(const T& value) {
  return value;
}

constexpr uint64_t kSign = uint64_t{1} << 63;

ZIVKDecimal128 without_negative_zero(const ZIVKDecimal128& a) {
  return a.lo == 0 && a.hi == kSign ? ZIVKDecimal128{0, 0} : a;
}
bool is_less_decimal(const ZIVKDecimal128& left, const ZIVKDecimal128& right) {
  const ZIVKDecimal128 a = without_negative_zero(left), b = without_negative_zero(right);
  const bool a_is_negative = a.hi >= kSign, b_is_negative = b.hi >= kSign;
  if (a_is_negative != b_is_negative) return a_is_negative;
  const std::pair<uint64_t, uint64_t> a_magnitude = {a.hi % kSign, a.lo}, b_magnitude = {b.hi % kSign, b.lo};
  return a_is_negative ? b_magnitude < a_magnitude : a_magnitude < b_magnitude;
}

// --- Floats and truth values, where the order of rows matters ------------------------------

// Calls visit(first, count, is_block) for the units of a column: blocks of eight rows without a null, and the rows
// that are not null elsewhere.
template <class T, class Visit>
void visit_units(const Column<T>& column, Visit visit) {
  const size_t length = column.rows.size();
  for (size_t first = 0; first < length; first += 8) {
    const size_t end = std::min(first + 8, length);
    const bool is_block =
        end - first == 8 && std::find(column.nulls.begin() + static_cast<ptrdiff_t>(first),
                                      column.nulls.begin() + static_cast<ptrdiff_t>(end),
                                      true) == column.nulls.begin() + static_cast<ptrdiff_t>(end);
    if (is_block) {
      visit(first, size_t{8}, true);
    } else {
      for (size_t i = first; i < end; ++i) {
        if (!column.nulls[i]) visit(i, size_t{1}, false);
      }
    }
  }
}

// The greatest of numbers without a NaN, where -0 is below +0, or a NaN.
double extreme_of_block(std::vector<double> block, bool largest) {
  const auto is_nan = [](double x) { return std::isnan(x); };
  if (std::any_of(block.begin(), block.end(), is_nan)) return std::numeric_limits<double>::quiet_NaN();
  std::sort(block.begin(), block.end(),
            [](double a, double b) { return a < b || (a == b && std::signbit(a) && !std::signbit(b)); });
  return largest ? block.back() : block.front();
}

Reference aggregate_of_floats(const std::string& without_nulls, bool largest) {
  return [=](const Function& function, const Operands& operands) {
    const Column<double> column(function, operands);
    Outputs outputs(function, operands);
    if (!column.has_nulls) {
      const Function& plain = *find_function(without_nulls);
      const Operands same = {
          operands.length, {operands.arrays[0], {}, operands.arrays[3]}, {Slot(), Slot(), Slot()}};
      double result;
      std::memcpy(&result, extremes_references().at(without_nulls)(plain, same)[2].data(), sizeof result);
      outputs.set(0, 0, result);
      return outputs.take();
    }
    double best = largest ? std::numeric_limits<double>::lowest() : std::numeric_limits<double>::max();
    visit_units(column, [&](size_t first, size_t count, bool is_block) {
      const auto begin = column.rows.begin() + static_cast<ptrdiff_t>(first);
      const double unit =
          is_block ? extreme_of_block({begin, begin + static_cast<ptrdiff_t>(count)}, largest) : *begin;
      if (!(largest ? best > unit : best < unit)) best = unit;
    });
    outputs.set(0, 0, best);
    return outputs.take();
  };
}

Reference aggregate_of_bools(bool largest) {
  return [largest](const Function& function, const Operands& operands) {
    const Column<uint8_t> column(function, operands);
    const std::vector<uint8_t>& rows = column.rows;
    uint8_t found = largest ? 0 : 1;
    if (!column.has_nulls) {
      const size_t in_blocks = largest ? 0 : rows.size() / 16 * 16;
      for (size_t i = 0; i < rows.size(); ++i) {
        const bool is_true = i < in_blocks ? rows[i] % 2 != 0 : rows[i] != 0;
        found = largest ? found | is_true : found & is_true;
      }
    } else {
      visit_units(column, [&](size_t first, size_t count, bool is_block) {
        if (!is_block) {
          found = largest ? std::max(found, rows[first]) : std::min(found, rows[first]);
          return;
        }
        const auto begin = rows.begin() + static_cast<ptrdiff_t>(first),
                   end = begin + static_cast<ptrdiff_t>(count);
        if (largest) found = *std::max_element(begin, end) != 0;
        if (!largest) found = std::min<uint8_t>(found, *std::min_element(begin, end) != 0);
      });
    }
    Outputs outputs(function, operands);
    outputs.set(0, 0, found);
    return outputs.take();
  };
}

template <class T>
void add_integers(References& references, const std::string& type) {
  using Limits = std::numeric_limits<T>;
  references["ZIVKS_Hash_" + type] = each_row(hash_of_integer<T>);
  references["ZIVKS_AggMax_" + type] = best_row<T>(is_less<T>, Limits::min(), unchanged<T>, true);
  references["ZIVKS_AggMin_" + type] = best_row<T>(is_less<T>, Limits::max(), unchanged<T>, false);
}

}  // namespace

References columnar_references() {
  constexpr ZIVKDecimal128 kMost = {0x098A223FFFFFFFFF, 0x4B3B4CA85A86C47A},
                           kLeast = {kMost.lo, kMost.hi | kSign};
  References references = {
      {"ZIVKS_Hash_64f", each_row(hash_of_float)},
      {"ZIVKS_Hash_bool", each_row(hash_of_bool)},
      {"ZIVKS_Hash_decimal64", each_row(hash_of_decimal64)},
      {"ZIVKS_Hash_decimal128", each_row(hash_of_decimal128)},
      {"ZIVKS_Hash_varchar", each_row(hash_of_text)},
      {"ZIVKS_CombineHash", elementwise(combined_hash)},
      {"ZIVKS_AggMax_64f", aggregate_of_floats("ZIVKS_Max_64f", true)},
      {"ZIVKS_AggMin_64f", aggregate_of_floats("ZIVKS_Min_64f", false)},
      {"ZIVKS_AggMax_decimal128", best_row(is_less_decimal, kLeast, without_negative_zero, true)},
      {"ZIVKS_AggMin_decimal128", best_row(is_less_decimal, kMost, without_negative_zero, false)},
      {"ZIVKS_AggMax_bool", aggregate_of_bools(true)},
      {"ZIVKS_AggMin_bool", aggregate_of_bools(false)},
      {"ZIVKS_AggMax_varchar", best_row(is_less<Text>, Text(), unchanged<Text>, true)},
      {"ZIVKS_AggMin_varchar", best_row(is_less<Text>, Text(), unchanged<Text>, false)}};
  add_integers<int16_t>(references, "16s");
  add_integers<int32_t>(references, "32s");
  add_integers<int64_t>(references, "64s");
  return references;
}

}  // namespace zivks_test
