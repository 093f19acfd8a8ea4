#include <cstdlib>

#include "reference/reference.h"

namespace zivks_test {
namespace {

// The larger or the smaller of two. In whole blocks a NaN is the result and -0 is below +0. In the tail the
// result is the second number unless the comparison holds.
template <bool larger, class T>
T chosen(Place place, T a, T b) {
  if (place == Place::kTail) return (larger ? a >= b : a <= b) ? a : b;
  if (a != a || b != b) return std::numeric_limits<T>::quiet_NaN();
  if (a == b) return std::signbit(static_cast<double>(a)) != larger ? a : b;
  return (a > b) == larger ? a : b;
}

int32_t count_between(const std::vector<int32_t>& samples, int32_t lower, int32_t upper) {
  int32_t count = 0;
  for (int32_t sample : samples) count += lower < sample && sample < upper;
  return count;
}

std::tuple<uint16_t, int32_t> nearest(const std::vector<uint16_t>& table, uint16_t value) {
  size_t low = 0, high = table.size() - 1;
  while (high - low > 1) {
    const size_t middle = low + (high - low) / 2;
    if (table[middle] == value) return {value, static_cast<int32_t>(middle)};
    (value > table[middle] ? low : high) = middle;
  }
  const size_t found = std::abs(table[low] - value) <= std::abs(table[high] - value) ? low : high;
  return {table[found], static_cast<int32_t>(found)};
}

// Searches for the elements of an array, or for one constant.
std::vector<Bytes> nearest_of_all(const Function& function, const Operands& operands) {
  size_t table_argument = 0;
  while (function.arguments[table_argument].role != Role::kTable) ++table_argument;
  const Bytes& bytes = operands.arrays[table_argument];
  std::vector<uint16_t> table(bytes.size() / sizeof(uint16_t));
  std::memcpy(table.data(), bytes.data(), bytes.size());
  const bool is_array = function.arguments[0].is_array();
  Outputs outputs(function, operands);
  for (size_t i = 0; i < (is_array ? static_cast<size_t>(operands.length) : 1); ++i) {
    outputs.set(0, i, nearest(table, input_element<uint16_t>(function, operands, 0, i)));
  }
  return outputs.take();
}

template <class T>
T number_or(T element, T value) {
  return element != element ? value : element;
}

template <class T>
void add_every(References& references, const std::string& suffix) {
  references["ZIVKS_MaxEvery_" + suffix] = elementwise(chosen<true, T>);
  references["ZIVKS_MinEvery_" + suffix] = elementwise(chosen<false, T>);
}

}  // namespace

References comparison_references() {
  References references = {{"ZIVKS_CountInRange_32s", reduction(count_between)},
                           {"ZIVKS_FindNearestOne_16u", nearest_of_all},
                           {"ZIVKS_FindNearest_16u", nearest_of_all},
                           {"ZIVKS_ReplaceNAN_32f_I", elementwise(number_or<float>)},
                           {"ZIVKS_ReplaceNAN_64f_I", elementwise(number_or<double>)}};
  add_every<int16_t>(references, "16s_I");
  add_every<int32_t>(references, "32s_I");
  add_every<float>(references, "32f");
  add_every<double>(references, "64f");
  return references;
}

}  // namespace zivks_test
