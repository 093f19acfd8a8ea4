// Medians of the windows of an array, by ranks: dst[k], for k below `count`, is the median of samples[k] ...
// samples[k + mask - 1].
//
// Samples are replaced by their ranks, their places in the order of a stretch of samples. Ranks are narrow whatever the
// type, so that a register holds many of them and few bits tell them apart. The bits of each window's middle rank are
// found from the highest to the lowest, by counting the ranks that are smaller.
#ifndef ZIVKS_FILTERS_MEDIAN_RANKS_H
#define ZIVKS_FILTERS_MEDIAN_RANKS_H

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>

#include "core/vector/register.h"

namespace zivks {

// An integer for each sample, in the order of samples.
template <class T>
using Key = std::conditional_t<std::is_floating_point_v<T>, SignedOf<T>, T>;

template <class T>
Key<T> key_of(T sample) {
  if constexpr (!std::is_floating_point_v<T>) return sample;
  const auto bits = read<Key<T>>(&sample);
  return bits < 0 ? bits ^ std::numeric_limits<Key<T>>::max() : bits;
}

// The samples of a stretch, whose keys, order and ranks take 8 KiB.
template <class T>
inline constexpr size_t kRankedSamples = (8 << 10) / (sizeof(T) + 2 * sizeof(int16_t));

// The samples of a window, at most, such that a stretch gives as many medians as half a window has samples.
template <class T>
inline constexpr size_t kLongestRanked = kRankedSamples<T> * 2 / 3;

// The middle ranks of a register of windows, whose first one begins at `ranks`. The mask is odd. Comparisons give -1, so
// that the sums count smaller ranks downwards.
ZIVKS_INLINE I16 middle_ranks(const int16_t* ranks, size_t mask, int16_t highest_bit) {
  const I16 middle = broadcast(static_cast<int16_t>(mask / 2));
  I16 found = {};
  for (int16_t bit = highest_bit; bit > 0; bit = static_cast<int16_t>(bit / 2)) {
    const I16 candidate = found | broadcast(bit);
    I16 even = {}, odd = I16(load(ranks) < candidate);  // two sums, which do not wait for each other
    for (size_t i = 1; i < mask; i += 2) {
      even += I16(load(ranks + i) < candidate);
      odd += I16(load(ranks + i + 1) < candidate);
    }
    found = select(even + odd >= -middle, candidate, found);
  }
  return found;
}

// The mask is at most kLongestRanked.
template <class T>
void find_medians_by_ranks(const T* samples, size_t count, size_t mask, T* dst) {
  constexpr size_t N = kRegisterElements<int16_t>, kMost = kRankedSamples<T>;
  Key<T> keys[kMost];
  uint16_t order[kMost];
  int16_t ranks[kMost + N];
  const size_t step = kMost - (mask - 1);
  for (size_t first = 0; first < count; first += step) {
    const size_t here = std::min(step, count - first), all = here + mask - 1;
    for (size_t i = 0; i < all; ++i) {
      keys[i] = key_of(samples[first + i]);
      order[i] = static_cast<uint16_t>(i);
    }
    std::sort(order, order + all, [&keys](uint16_t a, uint16_t b) { return keys[a] < keys[b]; });
    for (size_t i = 0; i < all; ++i) ranks[order[i]] = static_cast<int16_t>(i);
    std::fill_n(ranks + all, N, int16_t{0});

    int16_t highest_bit = 1;
    while (2 * static_cast<size_t>(highest_bit) < all) highest_bit = static_cast<int16_t>(2 * highest_bit);
    for (size_t k = 0; k < here; k += N) {
      int16_t middle[N];
      store(middle, middle_ranks(ranks + k, mask, highest_bit));
      for (size_t i = 0; i < std::min(N, here - k); ++i) {
        dst[first + k + i] = samples[first + order[static_cast<uint16_t>(middle[i])]];
      }
    }
  }
}

}  // namespace zivks

#endif
