#include "reference/reference.h"

namespace zivks_test {
namespace {

// The larger or the smaller. Elements of whole blocks propagate NaN and order -0 below +0; those behind them
// take the second where the comparison fails.
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

template <class T>
void add_every(References& references, const std::string& suffix) {
  references["ZIVKS_MaxEvery_" + suffix] = elementwise(chosen<true, T>);
  references["ZIVKS_MinEvery_" + suffix] = elementwise(chosen<false, T>);
}

}  // namespace

References comparison_references() {
  References references = {{"ZIVKS_CountInRange_32s", reduction(count_between)}};
  add_every<int16_t>(references, "16s_I");
  add_every<int32_t>(references, "32s_I");
  add_every<float>(references, "32f");
  add_every<double>(references, "64f");
  return references;
}

}  // namespace zivks_test
