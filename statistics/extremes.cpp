// Minimum and maximum of an array, or of its absolute values.
//
// The integer forms are plain, but for ZIVKS_MaxAbs_32s(). The floating-point forms examine whole blocks of
// 32 bytes with operations that pass a NaN on and put -0 below +0, and the rest, the tail, by comparisons
// that a NaN fails and that take the zeros for equal. What they begin with differs from member to member and
// can be seen in the result.
#include <zivks/statistics.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/checks.h"
#include "core/reduce.h"
#include "statistics/extreme.h"

using namespace zivks;

namespace {

// --- Integers --------------------------------------------------------------------------

template <class Measure, class T>
ZIVKS_INLINE Range<T> range_of_integers(const T* src, size_t len) {
  constexpr size_t N = kRegisterElements<T>;
  if (len < N) return Range<T>::of(Measure::of(load_repeatedly<N / 2>(src, len)));
  return range_of_array<Measure>(src, len, Range<T>::of(Measure::of(load(src))));
}

// --- Floating point --------------------------------------------------------------------

// The range after the tail, whose NaNs are passed over: `included`, which the range holds already, stands in
// for them.
template <class Measure, class T, size_t... K>
ZIVKS_INLINE Range<T> with_tail(Range<T> range, Block<T> tail, Register<T> included,
                                std::index_sequence<K...>) {
  const auto number = [=](auto x) {
    const auto measure = Measure::of(x);
    return select(measure == measure, measure, included);
  };
  ((range = range.with(number(tail.part[K]))), ...);
  return range;
}

// What a tail means: comparisons element by element, from src[first] on.
template <class Order, class T>
[[gnu::noinline]] T compare_each(T current, const T* src, size_t first, size_t len) {
  for (size_t i = first; i < len; ++i) {
    if (Order::beats(src[i], current)) current = src[i];
  }
  return current;
}

template <class T>
struct FloatRanges {
  Range<T> blocks;  // of the whole blocks, or of what a shorter array begins with
  Range<T> all;     // with the tail
};

// The whole blocks begin with `block_seed`, an array shorter than a block with `short_seed`.
template <class Measure, class T>
ZIVKS_INLINE FloatRanges<T> ranges_of_floats(const T* src, size_t len, T block_seed, T short_seed) {
  const size_t count = count_in_blocks<T>(len);
  const Register<T> included = broadcast(short_seed);
  const Range<T> blocks = count > 0 ? range_of_array<Measure>(src, count, Range<T>::of(broadcast(block_seed)))
                                    : Range<T>::of(included);
  if (count == len) return {blocks, blocks};
  return {blocks, with_tail<Measure>(blocks, load_tail(src, len), included, kBlockParts<T>)};
}

// The extreme of the ranges. Where zeros meet in a tail the first of them counts, and its sign; of absolute
// values there is but one zero.
template <class Order, class Measure, class T>
ZIVKS_INLINE T extreme_of(FloatRanges<T> ranges, const T* src, size_t len, T short_seed) {
  const size_t count = count_in_blocks<T>(len);
  if (count == 0 && short_seed != short_seed) return short_seed;
  const T result = Order::of(ranges.all);
  if (std::is_same_v<Measure, Value> && result == 0 && count < len) {
    return compare_each<Order>(count > 0 ? Order::of(ranges.blocks) : short_seed, src, count, len);
  }
  return result;
}

// --- Shapes of the exported functions --------------------------------------------------

template <class Order, class Measure, class T>
[[gnu::flatten]] ZIVKStatus find_integer(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  *result = Order::of(range_of_integers<Measure>(src, static_cast<size_t>(len)));
  return ZIVK_STS_NO_ERR;
}

template <class T>
[[gnu::flatten]] ZIVKStatus find_both_integers(const T* src, int32_t len, T* pMin, T* pMax) {
  if (ZIVKStatus status = check_arrays(len, src, pMin, pMax)) return status;
  const Range<T> range = range_of_integers<Value>(src, static_cast<size_t>(len));
  *pMin = range.minimum();
  *pMax = range.maximum();
  return ZIVK_STS_NO_ERR;
}

template <class Order, class Measure, class T>
ZIVKS_INLINE ZIVKStatus find_float(const T* src, int32_t len, T* result, T block_seed, T short_seed) {
  const auto count = static_cast<size_t>(len);
  const FloatRanges<T> ranges = ranges_of_floats<Measure>(src, count, block_seed, short_seed);
  *result = extreme_of<Order, Measure>(ranges, src, count, short_seed);
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

template <class Order, class T>
[[gnu::flatten]] ZIVKStatus find_value(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  return find_float<Order, Value>(src, len, result, src[0], src[0]);
}

// The smallest normal number begins the blocks, and stays if all else is below it.
template <class T>
[[gnu::flatten]] ZIVKStatus find_largest_magnitude(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  return find_float<Largest, Magnitude>(src, len, result, std::numeric_limits<T>::min(), std::fabs(src[0]));
}

// The largest finite number begins arrays of every length, so that infinities and, in a short array, NaNs
// leave no trace.
template <class T>
[[gnu::flatten]] ZIVKStatus find_smallest_magnitude(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  constexpr T kSeed = std::numeric_limits<T>::max();
  return find_float<Smallest, Magnitude>(src, len, result, kSeed, kSeed);
}

template <class T>
[[gnu::flatten]] ZIVKStatus find_both_floats(const T* src, int32_t len, T* pMin, T* pMax) {
  if (ZIVKStatus status = check_arrays(len, src, pMin, pMax)) return status;
  const auto count = static_cast<size_t>(len);
  const T seed = src[0];
  const FloatRanges<T> ranges = ranges_of_floats<Value>(src, count, seed, seed);
  const T smallest = extreme_of<Smallest, Value>(ranges, src, count, seed);
  *pMax = extreme_of<Largest, Value>(ranges, src, count, seed);
  *pMin = smallest;
  leave_registers();
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Max_16s(const int16_t* src, int32_t len, int16_t* pMax) {
  return find_integer<Largest, Value>(src, len, pMax);
}
ZIVKStatus ZIVKS_Max_32s(const int32_t* src, int32_t len, int32_t* pMax) {
  return find_integer<Largest, Value>(src, len, pMax);
}
ZIVKStatus ZIVKS_Max_32f(const float* src, int32_t len, float* pMax) {
  return find_value<Largest>(src, len, pMax);
}
ZIVKStatus ZIVKS_Max_64f(const double* src, int32_t len, double* pMax) {
  return find_value<Largest>(src, len, pMax);
}

ZIVKStatus ZIVKS_Min_16s(const int16_t* src, int32_t len, int16_t* pMin) {
  return find_integer<Smallest, Value>(src, len, pMin);
}
ZIVKStatus ZIVKS_Min_32s(const int32_t* src, int32_t len, int32_t* pMin) {
  return find_integer<Smallest, Value>(src, len, pMin);
}
ZIVKStatus ZIVKS_Min_32f(const float* src, int32_t len, float* pMin) {
  return find_value<Smallest>(src, len, pMin);
}
ZIVKStatus ZIVKS_Min_64f(const double* src, int32_t len, double* pMin) {
  return find_value<Smallest>(src, len, pMin);
}

ZIVKStatus ZIVKS_MinMax_8u(const uint8_t* src, int32_t len, uint8_t* pMin, uint8_t* pMax) {
  return find_both_integers(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_16u(const uint16_t* src, int32_t len, uint16_t* pMin, uint16_t* pMax) {
  return find_both_integers(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_32u(const uint32_t* src, int32_t len, uint32_t* pMin, uint32_t* pMax) {
  return find_both_integers(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_16s(const int16_t* src, int32_t len, int16_t* pMin, int16_t* pMax) {
  return find_both_integers(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_32s(const int32_t* src, int32_t len, int32_t* pMin, int32_t* pMax) {
  return find_both_integers(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_32f(const float* src, int32_t len, float* pMin, float* pMax) {
  return find_both_floats(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_64f(const double* src, int32_t len, double* pMin, double* pMax) {
  return find_both_floats(src, len, pMin, pMax);
}

ZIVKStatus ZIVKS_MaxAbs_16s(const int16_t* src, int32_t len, int16_t* pMaxAbs) {
  return find_integer<Largest, Magnitude>(src, len, pMaxAbs);
}

// From 8 elements on the first block is not examined: src[0] takes part as it is, with its sign, and of the
// absolute values only those from src[8] on. Its siblings examine everything.
ZIVKStatus ZIVKS_MaxAbs_32s(const int32_t* src, int32_t len, int32_t* pMaxAbs) {
  if (ZIVKStatus status = check_arrays(len, src, pMaxAbs)) return status;
  constexpr int32_t kSkipped = 8;
  if (len < kSkipped) return find_integer<Largest, Magnitude>(src, len, pMaxAbs);
  int32_t largest = src[0];
  if (len > kSkipped) {
    int32_t of_rest;
    find_integer<Largest, Magnitude>(src + kSkipped, len - kSkipped, &of_rest);
    largest = std::max(largest, of_rest);
  }
  *pMaxAbs = largest;
  return ZIVK_STS_NO_ERR;
}

ZIVKStatus ZIVKS_MaxAbs_32f(const float* src, int32_t len, float* pMaxAbs) {
  return find_largest_magnitude(src, len, pMaxAbs);
}
ZIVKStatus ZIVKS_MaxAbs_64f(const double* src, int32_t len, double* pMaxAbs) {
  return find_largest_magnitude(src, len, pMaxAbs);
}

ZIVKStatus ZIVKS_MinAbs_16s(const int16_t* src, int32_t len, int16_t* pMinAbs) {
  return find_integer<Smallest, Magnitude>(src, len, pMinAbs);
}
ZIVKStatus ZIVKS_MinAbs_32s(const int32_t* src, int32_t len, int32_t* pMinAbs) {
  return find_integer<Smallest, Magnitude>(src, len, pMinAbs);
}
ZIVKStatus ZIVKS_MinAbs_32f(const float* src, int32_t len, float* pMinAbs) {
  return find_smallest_magnitude(src, len, pMinAbs);
}
ZIVKStatus ZIVKS_MinAbs_64f(const double* src, int32_t len, double* pMinAbs) {
  return find_smallest_magnitude(src, len, pMinAbs);
}
