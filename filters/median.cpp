// Median filters.
//
// The median of integers is one number, however it is found. Floats are found by minima and maxima in some places and
// by a sort in the others, which can be told apart where there is a NaN, or zeros of both signs, in a window.
#include <zivks/core.h>
#include <zivks/filters.h>
#include <zivks/movement.h>
#include <zivks/sort.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

#include "core/checks.h"
#include "core/prefetch.h"
#include "core/reduce.h"
#include "filters/median_ranks.h"
#include "filters/median_windows.h"

using namespace zivks;

namespace {

// --- Handle ----------------------------------------------------------------------------

// The bytes of a sample, or 0 if median filters have no such samples.
int32_t bytes_of_sample(ZIVKDataType type) {
  switch (type) {
    case ZIVK_DT_8U: return sizeof(uint8_t);
    case ZIVK_DT_16S: return sizeof(int16_t);
    case ZIVK_DT_32S:
    case ZIVK_DT_32F: return sizeof(int32_t);
    case ZIVK_DT_64F: return sizeof(double);
    default: return 0;
  }
}

constexpr int32_t without_even(int32_t mask) { return mask - (mask % 2 == 0); }

constexpr ZIVKStatus status_of(int32_t mask) {
  return mask % 2 == 0 ? ZIVK_STS_EVEN_MASK_WARN : ZIVK_STS_NO_ERR;
}

// --- One window ------------------------------------------------------------------------

void sort_ascending(uint8_t* samples, int32_t len) { ZIVKS_SortAscend_8u_I(samples, len); }
void sort_ascending(int16_t* samples, int32_t len) { ZIVKS_SortAscend_16s_I(samples, len); }
void sort_ascending(int32_t* samples, int32_t len) { ZIVKS_SortAscend_32s_I(samples, len); }
void sort_ascending(float* samples, int32_t len) { ZIVKS_SortAscend_32f_I(samples, len); }
void sort_ascending(double* samples, int32_t len) { ZIVKS_SortAscend_64f_I(samples, len); }

// The samples that are filtered, preceded by those of the delay line, and where one window of them is sorted.
template <class T>
struct Signal {
  const T* src;
  const T* line;  // or null, for copies of src[0]
  size_t mask;
  T* window;

  // Copies the `count` samples that begin `first` samples behind the oldest of the line.
  void copy(size_t first, size_t count, T* to) const {
    const size_t in_line = std::min(count, mask - 1 - std::min(first, mask - 1));
    if (line != nullptr) {
      std::memcpy(to, line + first, in_line * sizeof(T));
    } else {
      std::fill_n(to, in_line, *src);
    }
    std::memcpy(to + in_line, src + (first + in_line - (mask - 1)), (count - in_line) * sizeof(T));
  }

  T sort_window() const {
    sort_ascending(window, static_cast<int32_t>(mask));
    return window[mask / 2];
  }
  T sort_copy(const T* samples) const {
    std::memcpy(window, samples, mask * sizeof(T));
    return sort_window();
  }
};

// --- Many windows ----------------------------------------------------------------------

constexpr bool is_short(size_t mask) { return mask <= 9; }

// Short masks other than 1.
template <class Order, class T>
void find_medians_of_few(const T* samples, size_t count, size_t mask, T* dst) {
  switch (mask) {
    case 3: return find_medians_of_3<Order>(samples, count, dst);
    case 5: return find_medians_of_5<Order>(samples, count, dst);
    case 7: return find_medians_of_7<Order>(samples, count, dst);
    default: return find_medians_of_9<Order>(samples, count, dst);
  }
}

// Every method gives the same medians of integers, and of floats without special values. The mask is at most
// kLongestRanked.
template <class T>
void find_medians(const T* samples, size_t count, size_t mask, T* dst) {
  if (is_short(mask)) return find_medians_of_few<PlainValues>(samples, count, mask, dst);
  if (has_halves<T>(mask)) return find_medians_of_halves(samples, count, mask, dst);
  return find_medians_by_ranks(samples, count, mask, dst);
}

// Floats are filtered in stretches. One in which all is plain, and most are, needs no more than that.
template <class T>
constexpr size_t kStretch = 8192 / sizeof(T);

// Watches for NaN and negative zeros in pairs of registers.
struct FloatWatch {
  F32 nan = {};
  I32 least = {};  // a negative zero has the bits of the least integer

  void see(F32 a, F32 b) {
    a = kept_in_register(a), b = kept_in_register(b);  // the compiler would rather load them twice
    nan = watch_nan(nan, a, b);
    least = minimum(least, minimum(I32(a), I32(b)));
  }
  bool is_calm() const {
    return !has_nan(nan) && !any_true(least == broadcast(std::numeric_limits<int32_t>::min()));
  }
};
struct DoubleWatch {
  F64 nan = {};
  I64 negative_zero = {};

  void see(F64 a, F64 b) {
    a = kept_in_register(a), b = kept_in_register(b);
    const I64 least = broadcast(std::numeric_limits<int64_t>::min());
    nan = watch_nan(nan, a, b);
    negative_zero |= (I64(a) == least) | (I64(b) == least);
  }
  bool is_calm() const { return !has_nan(nan) && !any_true(negative_zero); }
};

template <class T>
using Watch = std::conditional_t<sizeof(T) == sizeof(float), FloatWatch, DoubleWatch>;

// Whether there is neither a NaN nor a negative zero.
template <class T>
bool are_plain(const T* samples, size_t len) {
  constexpr size_t N = kRegisterElements<T>, kTurn = 8 * N;
  Watch<T> watch;
  if (len < N) {
    const Register<T> all = load_repeatedly<N / 2>(samples, len);
    watch.see(all, all);
  } else if (len < kTurn) {
    for (size_t i = 0; i + N <= len; i += N) watch.see(load(samples + i), load(samples + len - N));
  } else {
    const auto see_turn = [&watch](const T* turn) {
#pragma GCC unroll 4
      for (size_t k = 0; k < kTurn; k += 2 * N) watch.see(load(turn + k), load(turn + k + N));
    };
    for (size_t i = 0; i < len - kTurn; i += kTurn) see_turn(samples + i);
    see_turn(samples + len - kTurn);
  }
  return watch.is_calm();
}

// Positions behind the last one of each kind, or 0.
template <class T>
struct Last {
  size_t nan = 0, positive_zero = 0, negative_zero = 0;

  void see(T sample, size_t i) {
    if (sample != sample) nan = i + 1;
    if (sample == 0) (std::signbit(sample) ? negative_zero : positive_zero) = i + 1;
  }
};

// Sorts the windows of which `medians` need not be what a sort gives: those with a NaN, and those whose median is one
// of zeros of both signs.
template <class T>
void sort_windows_in_doubt(const Signal<T>& signal, const T* samples, size_t count, T* medians) {
  Last<T> last;
  for (size_t i = 0; i < count + signal.mask - 1; ++i) {
    last.see(samples[i], i);
    if (i + 1 < signal.mask) continue;
    const size_t k = i + 1 - signal.mask;
    if (last.nan > k || (medians[k] == 0 && last.positive_zero > k && last.negative_zero > k)) {
      medians[k] = signal.sort_copy(samples + k);
    }
  }
}

// What sorting each window gives.
template <class T>
void filter_as_sorted(const Signal<T>& signal, const T* samples, size_t count, T* dst) {
  if constexpr (!std::is_floating_point_v<T>) {
    find_medians(samples, count, signal.mask, dst);
  } else {
    for (size_t k = 0; k < count; k += kStretch<T>) {
      const size_t here = std::min(kStretch<T>, count - k);
      find_medians(samples + k, here, signal.mask, dst + k);
      if (!are_plain(samples + k, here + signal.mask - 1)) {
        sort_windows_in_doubt(signal, samples + k, here, dst + k);
      }
    }
  }
}

// What minima and maxima give, of short masks.
template <class T>
void filter_by_network(const T* samples, size_t count, size_t mask, T* dst) {
  if constexpr (!kExactFloatExtremesAreCostly) {
    find_medians_of_few<AnyValues>(samples, count, mask, dst);
  } else {
    for (size_t k = 0; k < count; k += kStretch<T>) {
      const size_t here = std::min(kStretch<T>, count - k);
      if (are_plain(samples + k, here + mask - 1)) {
        find_medians_of_few<PlainValues>(samples + k, here, mask, dst + k);
      } else {
        find_medians_of_few<AnyValues>(samples + k, here, mask, dst + k);
      }
    }
  }
}

// --- Whole arrays ----------------------------------------------------------------------

template <class... Arrays>
ZIVKStatus check(int32_t len, int32_t mask, Arrays... array) {
  if (ZIVKStatus status = check_arrays(len, array...)) return status;
  return mask < 1 || len < mask ? ZIVK_STS_MASK_SIZE_ERR : ZIVK_STS_NO_ERR;
}

// The first mask - 1 medians, whose windows begin in the delay line.
template <class T>
void filter_head(const Signal<T>& signal, T* dst) {
  constexpr size_t kMost = kRankedSamples<T>;
  T joined[kMost];
  const size_t count = signal.mask - 1;
  for (size_t k = 0; k < count;) {
    if (signal.mask <= kLongestRanked<T>) {
      const size_t here = std::min(count - k, kMost - count);
      signal.copy(k, here + count, joined);
      filter_as_sorted(signal, joined, here, dst + k);
      k += here;
    } else {
      signal.copy(k, signal.mask, signal.window);
      dst[k++] = signal.sort_window();
    }
  }
}

// The medians of `count` windows in the array.
template <class T>
void filter_rest(const Signal<T>& signal, const T* samples, size_t count, T* dst) {
  if (signal.mask <= kLongestRanked<T>) return filter_as_sorted(signal, samples, count, dst);
  for (size_t k = 0; k < count; ++k) dst[k] = signal.sort_copy(samples + k);
}

// Networks of minima and maxima find the medians behind the head up to number `count` - 1. That a few behind them are
// sorted, too, which networks could find in one more block, shows in the results.
template <class T>
size_t count_in_network(size_t len, size_t mask) {
  constexpr size_t kBlock = 16 / sizeof(T);
  const size_t count = (len - (mask - 1)) & ~(kBlock - 1);
  return std::is_floating_point_v<T> && is_short(mask) && count > mask - 1 ? count - (mask - 1) : 0;
}

template <class T>
ZIVKStatus filter(const T* src, T* dst, int32_t len, int32_t maskLen, const T* dlySrc, T* dlyDst,
                  ZIVKFilterMedianPolicy* policy) {
  if (ZIVKStatus status = check(len, maskLen, policy, dst, src)) return status;
  const auto all = static_cast<size_t>(len), mask = static_cast<size_t>(without_even(maskLen)),
             before = mask - 1;
  if (mask == 1) {
    std::memcpy(dst, src, all * sizeof(T));
    return status_of(maskLen);
  }
  prefetch_ahead<256 * sizeof(T)>(src);
  const Signal<T> signal = {src, dlySrc, mask, reinterpret_cast<T*>(policy)};
  filter_head(signal, dst);
  const size_t in_network = count_in_network<T>(all, mask);
  if constexpr (std::is_floating_point_v<T>) {
    if (in_network > 0) filter_by_network(src, in_network, mask, dst + before);
  }
  filter_rest(signal, src + in_network, all - before - in_network, dst + before + in_network);
  if (dlyDst != nullptr) std::memcpy(dlyDst, src + all - before, before * sizeof(T));
  return status_of(maskLen);
}

template <class T, class Allocate, class Copy, class Filter>
ZIVKStatus filter_in_place(Allocate allocate, Copy copy, Filter filter, T* srcDst, int32_t len,
                           int32_t maskLen, const T* dlySrc, T* dlyDst, ZIVKFilterMedianPolicy* policy) {
  if (ZIVKStatus status = check(len, maskLen, policy, srcDst)) return status;
  T* const src = allocate(len);
  ZIVKStatus status = copy(srcDst, src, len);  // refuses a null pointer
  if (status == ZIVK_STS_NO_ERR) status = filter(src, srcDst, len, maskLen, dlySrc, dlyDst, policy);
  ZIVKS_Free(src);
  return status;
}

}  // namespace

ZIVKStatus ZIVKS_FilterMedianInit(int32_t maskLen, ZIVKDataType dataType, ZIVKFilterMedianPolicy** policy) {
  constexpr int32_t kEnd = 0x7FFFFFF0;
  if (policy == nullptr) return ZIVK_STS_NULL_PTR_ERR;
  if (maskLen < 1) return ZIVK_STS_MASK_SIZE_ERR;
  const int32_t sample = bytes_of_sample(dataType);
  if (sample == 0) return ZIVK_STS_DATA_TYPE_ERR;
  if (maskLen >= kEnd / sample) return ZIVK_STS_MASK_SIZE_ERR;
  void* const memory = ZIVKS_Malloc_8u((sample * without_even(maskLen) + 15) & ~15);
  if (memory == nullptr) return ZIVK_STS_MALLOC_ERR;
  *policy = static_cast<ZIVKFilterMedianPolicy*>(memory);
  return status_of(maskLen);
}

ZIVKStatus ZIVKS_FilterMedianRelease(ZIVKFilterMedianPolicy* policy) {
  ZIVKS_Free(policy);
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_FilterMedian_8u(const uint8_t* src, uint8_t* dst, int32_t len, int32_t maskLen,
                                 const uint8_t* dlySrc, uint8_t* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter(src, dst, len, maskLen, dlySrc, dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_16s(const int16_t* src, int16_t* dst, int32_t len, int32_t maskLen,
                                  const int16_t* dlySrc, int16_t* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter(src, dst, len, maskLen, dlySrc, dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_32s(const int32_t* src, int32_t* dst, int32_t len, int32_t maskLen,
                                  const int32_t* dlySrc, int32_t* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter(src, dst, len, maskLen, dlySrc, dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_32f(const float* src, float* dst, int32_t len, int32_t maskLen,
                                  const float* dlySrc, float* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter(src, dst, len, maskLen, dlySrc, dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_64f(const double* src, double* dst, int32_t len, int32_t maskLen,
                                  const double* dlySrc, double* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter(src, dst, len, maskLen, dlySrc, dlyDst, policy);
}

ZIVKStatus ZIVKS_FilterMedian_8u_I(uint8_t* srcDst, int32_t len, int32_t maskLen, const uint8_t* dlySrc,
                                   uint8_t* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter_in_place(ZIVKS_Malloc_8u, ZIVKS_Copy_8u, ZIVKS_FilterMedian_8u, srcDst, len, maskLen, dlySrc,
                         dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_16s_I(int16_t* srcDst, int32_t len, int32_t maskLen, const int16_t* dlySrc,
                                    int16_t* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter_in_place(ZIVKS_Malloc_16s, ZIVKS_Copy_16s, ZIVKS_FilterMedian_16s, srcDst, len, maskLen,
                         dlySrc, dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_32s_I(int32_t* srcDst, int32_t len, int32_t maskLen, const int32_t* dlySrc,
                                    int32_t* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter_in_place(ZIVKS_Malloc_32s, ZIVKS_Copy_32s, ZIVKS_FilterMedian_32s, srcDst, len, maskLen,
                         dlySrc, dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_32f_I(float* srcDst, int32_t len, int32_t maskLen, const float* dlySrc,
                                    float* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter_in_place(ZIVKS_Malloc_32f, ZIVKS_Copy_32f, ZIVKS_FilterMedian_32f, srcDst, len, maskLen,
                         dlySrc, dlyDst, policy);
}
ZIVKStatus ZIVKS_FilterMedian_64f_I(double* srcDst, int32_t len, int32_t maskLen, const double* dlySrc,
                                    double* dlyDst, ZIVKFilterMedianPolicy* policy) {
  return filter_in_place(ZIVKS_Malloc_64f, ZIVKS_Copy_64f, ZIVKS_FilterMedian_64f, srcDst, len, maskLen,
                         dlySrc, dlyDst, policy);
}
