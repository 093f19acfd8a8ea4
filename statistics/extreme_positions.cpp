// Minimum and maximum of an array, or of its absolute values, and where they stand.
//
// The search has two levels. A walk over stretches of the array looks at values alone and notes the first
// stretch that holds the extreme; the position is then looked for in that stretch only.
//
// Floats are examined in whole blocks of 32 bytes first. A NaN hides the block that it is in: a stretch with
// a NaN is walked once more, block by block. The rest, the tail, is compared element by element, so that a
// NaN there hides nothing but itself. Nothing beats a NaN in src[0]. Zeros are equal to each other, but
// within a block -0 is below +0, which is seen in the value that is found and not in its position.
//
// Absolute values begin with that of src[0] too. A seed of 0, or of the largest magnitude, at index 0 would
// come to the same: it stays only where src[0] has that magnitude.
#include <zivks/statistics.h>

#include <algorithm>
#include <array>

#include "core/checks.h"
#include "statistics/extreme.h"

using namespace zivks;

namespace {

// An extreme and the index of its element.
template <class T>
struct Found {
  T value;
  size_t index;
};

template <class T, class... Order>
using FoundEach = std::array<Found<T>, sizeof...(Order)>;

// The extreme of what has been walked over, to be located later: the first of the elements src[first] ...
// src[first + count - 1] that is equal to `value`.
template <class Order, class T>
struct Candidate {
  T value;
  size_t first, count;

  // Whether a stretch whose range is this one can hold something better, or a NaN.
  ZIVKS_INLINE auto challenged_by(const Range<T>& range) const {
    const Register<T> extreme = Order::lanes_of(range);
    return Order::beats(extreme, broadcast(value)) | (extreme != extreme);
  }
};

// --- Stretches -------------------------------------------------------------------------

template <class T, size_t... K>
ZIVKS_INLINE bool has_nan(Block<T> block, std::index_sequence<K...>) {
  return any_true(((block.part[K] != block.part[K]) | ...));
}

// Calls visit(block, index) for the blocks of a stretch that no NaN hides, until it returns true.
template <class T, class Visit>
ZIVKS_INLINE void visit_blocks(const T* src, size_t first, size_t count, Visit visit) {
  for (size_t i = first; i < first + count; i += kBlock<T>) {
    const Block<T> block = Array<const T>{src}.template load<kBlock<T>>(i);
    if (!has_nan(block, kBlockParts<T>) && visit(block, i)) return;
  }
}

// The candidate after a stretch with a NaN, of which only the blocks without one count: the first block with
// their extreme, if that is better.
template <class Order, class T, size_t... K>
[[gnu::noinline]] void settle_blocks(Candidate<Order, T>& best, const T* src, size_t first, size_t count,
                                     std::index_sequence<K...> parts) {
  Range<T> range = Range<T>::of(broadcast(best.value));
  visit_blocks(src, first, count, [&](Block<T> block, size_t) {
    range = range_of_block(range, block, parts);
    return false;
  });
  const T value = Order::of(range);
  if (!Order::beats(value, best.value)) return;
  visit_blocks(src, first, count, [&](Block<T> block, size_t i) {
    const bool holds_value = any_true(((block.part[K] == broadcast(value)) | ...));
    if (holds_value) best = {value, i, kBlock<T>};
    return holds_value;
  });
}

// The candidate after a stretch that challenges one of the candidates.
template <class Order, class T>
ZIVKS_INLINE void settle(Candidate<Order, T>& best, const Range<T>& range, const T* src, size_t first,
                         size_t count) {
  const T value = Order::of(range);
  if (value != value) return settle_blocks(best, src, first, count, kBlockParts<T>);
  if (Order::beats(value, best.value)) best = {value, first, count};
}

// Updates the candidates, which have been given src[0], with all stretches of an array of at least one
// register; floats in whole blocks. The last stretch may begin earlier, to fill a register: of elements that
// are met twice the second is no better than the first, which stays.
template <class Measure, size_t distance, class T, class... Order>
ZIVKS_INLINE void walk(const T* src, size_t len, Candidate<Order, T>&... best) {
  constexpr size_t N = kRegisterElements<T>;
  // Long enough that the comparison at its end costs little, short enough to be looked through once more:
  // 1 KiB, or more where elements are wide.
  constexpr size_t kStretch = std::max<size_t>(512, 1024 / sizeof(T));
  const bool ahead = reads_ahead(len * sizeof(T));
  // Where it pays, the first stretch ends where the array is aligned to registers; but floats go by blocks.
  size_t end = kStretch;
  if constexpr (kAligns && std::is_integral_v<T>) end += bytes_unaligned(src) / sizeof(T);
  for (size_t i = 0; i < len; i = end, end += kStretch) {
    const size_t first = std::min(i, len - N), count = std::min(end, len) - first;
    if (ahead) read_ahead<kStretch * sizeof(T)>(src + first);
    const auto range =
        range_of_stretch<Measure, distance>(src + first, count, Range<T>::of(Measure::of(load(src + first))));
    // The first stretch nearly always has something better than src[0], so it needs no test.
    if (i == 0 || any_true((best.challenged_by(range) | ...))) (settle(best, range, src, first, count), ...);
  }
}

// The index of the first element whose measure is the candidate's.
template <class Measure, class Order, class T, size_t... K>
ZIVKS_INLINE size_t locate(const Candidate<Order, T>& best, const T* src, std::index_sequence<K...>) {
  constexpr size_t N = kRegisterElements<T>, kTurn = sizeof...(K) * N;
  const Register<T> value = broadcast(best.value);
  const auto equal_at = [=](size_t i) { return Measure::of(load(src + i)) == value; };
  const size_t end = best.first + best.count;
  size_t i = best.first;
  while (i + kTurn < end && !any_true((equal_at(i + K * N) | ...))) i += kTurn;
  for (;; i += N) {
    i = std::min(i, end - N);
    const auto equal = equal_at(i);
    if (any_true(equal)) return i + first_true(equal);
    if (i == end - N) return end - 1;  // it is gone: another thread writes to the array
  }
}
template <class Measure, class Order, class T>
ZIVKS_INLINE size_t locate(const Candidate<Order, T>& best, const T* src) {
  return locate<Measure>(best, src, std::make_index_sequence<4>());
}

// The index of the element that load_repeatedly() or load_tail() has put into a lane, of an array that is
// too short for the lanes.
ZIVKS_INLINE size_t index_of_lane(size_t lane, size_t len) {
  size_t half = 1;  // the largest power of two below `len`
  while (2 * half < len) half *= 2;
  return lane < half ? lane : lane + len - 2 * half;
}

// --- Integers --------------------------------------------------------------------------

template <class Order, class T>
ZIVKS_INLINE Found<T> search_register(Register<T> all, size_t len) {
  const T value = Order::of(Range<T>::of(all));
  return {value, index_of_lane(first_true(all == broadcast(value)), len)};
}

template <class Measure, size_t distance, class T, class... Order>
ZIVKS_INLINE FoundEach<T, Order...> search_integers(const T* src, size_t len, Candidate<Order, T>... best) {
  constexpr size_t N = kRegisterElements<T>;
  if (len < N) {
    const Register<T> all = Measure::of(load_repeatedly<N / 2>(src, len));
    return {search_register<Order, T>(all, len)...};
  }
  ((best = {Measure::of(load(src))[0], 0, N}), ...);
  walk<Measure, distance>(src, len, best...);
  return {Found<T>{best.value, locate<Measure>(best, src)}...};
}

// --- Floating point --------------------------------------------------------------------

// What the whole blocks have found, or the element behind them that beats it. Of the lanes with elements of
// the last block, which may be a hidden one, none counts.
template <class Order, class T, size_t... K>
ZIVKS_INLINE Found<T> search_tail(Found<T> in_blocks, Block<T> tail, const T* src, size_t len,
                                  std::index_sequence<K...>) {
  constexpr size_t B = kBlock<T>, N = kRegisterElements<T>;
  if (len % B == 0) return in_blocks;
  const bool is_short = len < B;
  const size_t first_lane = is_short ? 0 : B - len % B;
  const Register<T> current = broadcast(in_blocks.value);
  const Lanes<SignedOf<T>, B> beats = {
      {Order::beats(tail.part[K], current) & lanes_from<T>(first_lane - K * N)...}};
  if (!any_true((beats.part[K] | ...))) return in_blocks;
  const Block<T> beating = {{select(beats.part[K], tail.part[K], current)...}};
  const T value = Order::of(range_of_block(beating));
  size_t part = 0;
  while (!any_true(beating.part[part] == broadcast(value))) ++part;
  const size_t lane = part * N + first_true(beating.part[part] == broadcast(value));
  const size_t index = is_short ? index_of_lane(lane, len) : len - B + lane;
  return {src[index], index};
}

// The candidate that the whole blocks have left, if there are any. Zeros have the sign that their block makes
// of them.
template <class Order, class T>
ZIVKS_INLINE Found<T> find_in_blocks(const Candidate<Order, T>& best, const T* src) {
  if (best.value == src[0]) return {src[0], 0};
  const size_t index = locate<Value>(best, src);
  if (best.value != 0) return {best.value, index};
  const size_t block = index & ~(kBlock<T> - 1);
  return {Order::of(range_of_block(Array<const T>{src}.template load<kBlock<T>>(block))), index};
}

template <class T, class... Order>
ZIVKS_INLINE FoundEach<T, Order...> search_floats(const T* src, size_t len, Candidate<Order, T>... best) {
  constexpr size_t B = kBlock<T>;
  const size_t count = count_in_blocks<T>(len);
  if (src[0] != src[0]) {
    FoundEach<T, Order...> found;
    found.fill({src[0], count > 0 ? B - 1 : 0});
    return found;
  }
  ((best = {src[0], 0, B}), ...);
  if (count > 0) walk<Value, 0>(src, count, best...);
  const Block<T> tail = load_tail(src, len);
  return {search_tail<Order>(find_in_blocks(best, src), tail, src, len, kBlockParts<T>)...};
}

// --- Shapes of the exported functions --------------------------------------------------

template <class Measure, size_t distance, class... Order, class T>
ZIVKS_INLINE FoundEach<T, Order...> search(const T* src, int32_t len) {
  if constexpr (std::is_floating_point_v<T>) {
    return search_floats(src, static_cast<size_t>(len), Candidate<Order, T>()...);
  } else {
    return search_integers<Measure, distance>(src, static_cast<size_t>(len), Candidate<Order, T>()...);
  }
}

template <class Order, class Measure = Value, class T>
[[gnu::flatten]] ZIVKStatus find_one(const T* src, int32_t len, T* pValue, int32_t* pIndx) {
  if (ZIVKStatus status = check_arrays(len, src, pValue, pIndx)) return status;
  const auto [found] = search<Measure, 0, Order>(src, len);
  *pValue = found.value;
  *pIndx = static_cast<int32_t>(found.index);
  return ZIVK_STS_NO_ERR;
}

// Reading is accompanied by prefetch hints `distance` bytes ahead.
template <size_t distance = 0, class T>
[[gnu::flatten]] ZIVKStatus find_both(const T* src, int32_t len, T* pMin, int32_t* pMinIndx, T* pMax,
                                      int32_t* pMaxIndx) {
  if (ZIVKStatus status = check_arrays(len, src, pMin, pMinIndx, pMax, pMaxIndx)) return status;
  const auto [smallest, largest] = search<Value, distance, Smallest, Largest>(src, len);
  *pMin = smallest.value;
  *pMinIndx = static_cast<int32_t>(smallest.index);
  *pMax = largest.value;
  *pMaxIndx = static_cast<int32_t>(largest.index);
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_MaxIndx_16s(const int16_t* src, int32_t len, int16_t* pMax, int32_t* pIndx) {
  return find_one<Largest>(src, len, pMax, pIndx);
}
ZIVKStatus ZIVKS_MaxIndx_32s(const int32_t* src, int32_t len, int32_t* pMax, int32_t* pIndx) {
  return find_one<Largest>(src, len, pMax, pIndx);
}
ZIVKStatus ZIVKS_MaxIndx_32f(const float* src, int32_t len, float* pMax, int32_t* pIndx) {
  return find_one<Largest>(src, len, pMax, pIndx);
}
ZIVKStatus ZIVKS_MaxIndx_64f(const double* src, int32_t len, double* pMax, int32_t* pIndx) {
  return find_one<Largest>(src, len, pMax, pIndx);
}

ZIVKStatus ZIVKS_MinIndx_16s(const int16_t* src, int32_t len, int16_t* pMin, int32_t* pIndx) {
  return find_one<Smallest>(src, len, pMin, pIndx);
}
ZIVKStatus ZIVKS_MinIndx_32s(const int32_t* src, int32_t len, int32_t* pMin, int32_t* pIndx) {
  return find_one<Smallest>(src, len, pMin, pIndx);
}
ZIVKStatus ZIVKS_MinIndx_32f(const float* src, int32_t len, float* pMin, int32_t* pIndx) {
  return find_one<Smallest>(src, len, pMin, pIndx);
}
ZIVKStatus ZIVKS_MinIndx_64f(const double* src, int32_t len, double* pMin, int32_t* pIndx) {
  return find_one<Smallest>(src, len, pMin, pIndx);
}

ZIVKStatus ZIVKS_MinMaxIndx_8u(const uint8_t* src, int32_t len, uint8_t* pMin, int32_t* pMinIndx,
                               uint8_t* pMax, int32_t* pMaxIndx) {
  return find_both<512>(src, len, pMin, pMinIndx, pMax, pMaxIndx);
}
ZIVKStatus ZIVKS_MinMaxIndx_16u(const uint16_t* src, int32_t len, uint16_t* pMin, int32_t* pMinIndx,
                                uint16_t* pMax, int32_t* pMaxIndx) {
  return find_both<1024>(src, len, pMin, pMinIndx, pMax, pMaxIndx);
}
ZIVKStatus ZIVKS_MinMaxIndx_32u(const uint32_t* src, int32_t len, uint32_t* pMin, int32_t* pMinIndx,
                                uint32_t* pMax, int32_t* pMaxIndx) {
  return find_both<2048>(src, len, pMin, pMinIndx, pMax, pMaxIndx);
}
ZIVKStatus ZIVKS_MinMaxIndx_16s(const int16_t* src, int32_t len, int16_t* pMin, int32_t* pMinIndx,
                                int16_t* pMax, int32_t* pMaxIndx) {
  return find_both(src, len, pMin, pMinIndx, pMax, pMaxIndx);
}
ZIVKStatus ZIVKS_MinMaxIndx_32s(const int32_t* src, int32_t len, int32_t* pMin, int32_t* pMinIndx,
                                int32_t* pMax, int32_t* pMaxIndx) {
  return find_both(src, len, pMin, pMinIndx, pMax, pMaxIndx);
}
ZIVKStatus ZIVKS_MinMaxIndx_32f(const float* src, int32_t len, float* pMin, int32_t* pMinIndx, float* pMax,
                                int32_t* pMaxIndx) {
  return find_both(src, len, pMin, pMinIndx, pMax, pMaxIndx);
}
ZIVKStatus ZIVKS_MinMaxIndx_64f(const double* src, int32_t len, double* pMin, int32_t* pMinIndx, double* pMax,
                                int32_t* pMaxIndx) {
  return find_both(src, len, pMin, pMinIndx, pMax, pMaxIndx);
}

ZIVKStatus ZIVKS_MaxAbsIndx_16s(const int16_t* src, int32_t len, int16_t* pMaxAbs, int32_t* pIndx) {
  return find_one<Largest, Magnitude>(src, len, pMaxAbs, pIndx);
}
ZIVKStatus ZIVKS_MaxAbsIndx_32s(const int32_t* src, int32_t len, int32_t* pMaxAbs, int32_t* pIndx) {
  return find_one<Largest, Magnitude>(src, len, pMaxAbs, pIndx);
}
ZIVKStatus ZIVKS_MinAbsIndx_16s(const int16_t* src, int32_t len, int16_t* pMinAbs, int32_t* pIndx) {
  return find_one<Smallest, Magnitude>(src, len, pMinAbs, pIndx);
}
ZIVKStatus ZIVKS_MinAbsIndx_32s(const int32_t* src, int32_t len, int32_t* pMinAbs, int32_t* pIndx) {
  return find_one<Smallest, Magnitude>(src, len, pMinAbs, pIndx);
}
