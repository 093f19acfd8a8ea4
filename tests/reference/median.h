// Median filters, window by window.
#ifndef ZIVKS_TESTS_REFERENCE_MEDIAN_H
#define ZIVKS_TESTS_REFERENCE_MEDIAN_H

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <type_traits>
#include <vector>

namespace zivks_test {

// Beyond the comparisons of a type: -0 is below +0.
template <class T>
bool is_below(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) {
    if (a == b) return std::signbit(a) && !std::signbit(b);
  }
  return a < b;
}

template <class T>
int is_greater(const void* a, const void* b) {
  return *static_cast<const T*>(a) > *static_cast<const T*>(b) ? 1 : 0;
}

// `samples` begins with the `mask` - 1 samples of the delay line, and `mask` is odd.
template <class T>
std::vector<T> reference_medians(const std::vector<T>& samples, size_t mask) {
  const size_t length = samples.size() - (mask - 1);
  constexpr bool is_float = std::is_floating_point_v<T>;
  const size_t in_blocks = (length - (mask - 1)) / (16 / sizeof(T)) * (16 / sizeof(T));
  std::vector<T> medians;
  for (size_t i = 0; i < length; ++i) {
    std::vector<T> window(samples.begin() + static_cast<std::ptrdiff_t>(i),
                          samples.begin() + static_cast<std::ptrdiff_t>(i + mask));
    const bool in_network = 3 <= mask && mask <= 9 && i >= mask - 1 && i < in_blocks;
    if (!is_float || !in_network) {
      std::qsort(window.data(), mask, sizeof(T), is_greater<T>);
    } else if (std::any_of(window.begin(), window.end(), [](T sample) { return sample != sample; })) {
      window[mask / 2] = std::numeric_limits<T>::quiet_NaN();
    } else {
      std::sort(window.begin(), window.end(), is_below<T>);
    }
    medians.push_back(window[mask / 2]);
  }
  return medians;
}

}  // namespace zivks_test

#endif
