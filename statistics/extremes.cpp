// Minimum and maximum of an array, or of its absolute values.
//
// The integer forms are plain. The floating-point forms examine whole blocks of 32 bytes with operations that
// pass a NaN on and put -0 below +0, and the rest, the tail, by comparisons that a NaN fails and that take
// the zeros for equal. What they begin with differs from member to member and can be seen in the result.
#include <zivks/statistics.h>

#include <cmath>
#include <limits>

#include "core/checks.h"
#include "core/reduce.h"

using namespace zivks;

namespace {

struct Minimum {
  template <class R>
  static R keep(R a, R b) {
    return minimum(a, b);
  }
  template <class R>
  static auto over_lanes(R all) {
    return reduce_minimum(all);
  }
  template <class T>
  static bool beats(T candidate, T current) {
    return candidate < current;
  }
};

struct Maximum {
  template <class R>
  static R keep(R a, R b) {
    return maximum(a, b);
  }
  template <class R>
  static auto over_lanes(R all) {
    return reduce_maximum(all);
  }
  template <class T>
  static bool beats(T candidate, T current) {
    return candidate > current;
  }
};

// What is compared: the elements as they are, or their absolute values.
struct Value {
  template <class R>
  static R of(R a) {
    return a;
  }
};

struct Magnitude {
  template <class R>
  static R of(R a) {
    return absolute(a);
  }
  static I16 of(I16 a) { return absolute_saturating(a); }
  static I32 of(I32 a) { return absolute_saturating(a); }
  static float of(float a) { return std::fabs(a); }
  static double of(double a) { return std::fabs(a); }
};

template <class T>
struct MinMax {
  T min, max;
};

// --- Integers --------------------------------------------------------------------------

template <class Order, class Measure, class T>
T extreme_of_integers(const T* src, size_t len) {
  constexpr size_t N = kRegisterElements<T>;
  if (len < N) return Order::over_lanes(Measure::of(load_repeatedly<N / 2>(src, len)));
  const auto keep = [](auto a, auto b) { return Order::keep(a, b); };
  return Order::over_lanes(reduce_registers(
      src, len, Measure::of(load(src)), [=](auto state, auto x) { return keep(state, Measure::of(x)); },
      keep));
}

template <class T>
MinMax<T> extremes_of_integers(const T* src, size_t len) {
  constexpr size_t N = kRegisterElements<T>;
  const auto over_lanes = [](MinMax<Register<T>> all) -> MinMax<T> {
    return {reduce_minimum(all.min), reduce_maximum(all.max)};
  };
  using State = MinMax<Register<T>>;
  const Register<T> start = len < N ? load_repeatedly<N / 2>(src, len) : load(src);
  if (len < N) return over_lanes({start, start});
  return over_lanes(reduce_registers(
      src, len, State{start, start},
      [](State state, auto x) -> State {
        return {minimum(state.min, x), maximum(state.max, x)};
      },
      [](State a, State b) -> State {
        return {minimum(a.min, b.min), maximum(a.max, b.max)};
      }));
}

// --- Floating point --------------------------------------------------------------------

template <class T>
constexpr size_t kBlock = 32 / sizeof(T);

template <class T>
using Block = Lanes<T, kBlock<T>>;

// Which NaN the lanes deliver depends on the processor; the result does not.
template <class T>
T with_canonical_nan(T value) {
  return value == value ? value : std::numeric_limits<T>::quiet_NaN();
}

// A block that holds all the elements behind the whole blocks of `src`. Its other elements are elements of
// the last whole block or, in an array shorter than a block, of the tail once more.
template <class T>
Block<T> load_tail(const T* src, size_t len) {
  constexpr size_t B = kBlock<T>;
  constexpr size_t N = kRegisterElements<T>;
  const Array<const T> array = {src};
  if (len >= B) return array.template load<B>(len - B);
  if constexpr (N == B) {
    return {{load_repeatedly<N / 2>(src, len)}};
  } else {
    if (len >= N) return array.template load_ends<B, N>(len);
    const Register<T> all = load_repeatedly<N / 2>(src, len);
    return {{all, all}};
  }
}

// `current` after the tail has been compared with it, element by element from src[first] on. `tail` may hold
// earlier elements too: they do not beat `current`.
template <class Order, class Measure, class T>
T absorb_tail(T current, Block<T> tail, const T* src, size_t first, size_t len) {
  if (current != current) return current;
  const Register<T> currents = broadcast(current);
  const Block<T> candidates = lift<T>(
      [=](auto x) {
        const auto measure = Measure::of(x);
        return select(measure == measure, measure, currents);
      },
      tail);
  Register<T> all = candidates.part[0];
  if constexpr (Block<T>::kParts == 2) all = Order::keep(all, candidates.part[1]);
  const T best = Order::over_lanes(all);
  if (!Order::beats(best, current)) return current;
  if (best != 0) return best;
  // Of several zeros the first one counts, and its sign.
  for (size_t i = first; i < len; ++i) {
    const T measure = Measure::of(src[i]);
    if (Order::beats(measure, current)) current = measure;
  }
  return current;
}

// `block_seed` begins the examination of whole blocks, `short_seed` that of an array shorter than one.
template <class Order, class Measure, class T>
T extreme_of_floats(const T* src, size_t len, T block_seed, T short_seed) {
  const size_t blocks = len & ~(kBlock<T> - 1);
  T current = short_seed;
  if (blocks > 0) {
    const auto keep = [](auto a, auto b) { return Order::keep(a, b); };
    current = with_canonical_nan(Order::over_lanes(reduce_registers(
        src, blocks, broadcast(block_seed), [=](auto state, auto x) { return keep(state, Measure::of(x)); },
        keep)));
    if (blocks == len) return current;
  }
  return absorb_tail<Order, Measure>(current, load_tail(src, len), src, blocks, len);
}

template <class T>
MinMax<T> extremes_of_floats(const T* src, size_t len) {
  using State = MinMax<Register<T>>;
  const size_t blocks = len & ~(kBlock<T> - 1);
  MinMax<T> current = {src[0], src[0]};
  if (blocks > 0) {
    const Register<T> start = load(src);
    const State all = reduce_registers(
        src, blocks, State{start, start},
        [](State state, auto x) -> State {
          return {minimum(state.min, x), maximum(state.max, x)};
        },
        [](State a, State b) -> State {
          return {minimum(a.min, b.min), maximum(a.max, b.max)};
        });
    current = {with_canonical_nan(reduce_minimum(all.min)), with_canonical_nan(reduce_maximum(all.max))};
    if (blocks == len) return current;
  }
  const Block<T> tail = load_tail(src, len);
  return {absorb_tail<Minimum, Value>(current.min, tail, src, blocks, len),
          absorb_tail<Maximum, Value>(current.max, tail, src, blocks, len)};
}

// --- Shapes of the exported functions --------------------------------------------------

template <class Order, class Measure, class T>
ZIVKStatus find_integer(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  *result = extreme_of_integers<Order, Measure>(src, static_cast<size_t>(len));
  return ZIVK_STS_NO_ERR;
}

template <class Order, class T>
ZIVKStatus find_float(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  *result = extreme_of_floats<Order, Value>(src, static_cast<size_t>(len), src[0], src[0]);
  return ZIVK_STS_NO_ERR;
}

// The smallest normal number begins the blocks, and stays if all else is below it.
template <class T>
ZIVKStatus find_largest_magnitude(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  *result = extreme_of_floats<Maximum, Magnitude>(src, static_cast<size_t>(len),
                                                  std::numeric_limits<T>::min(), std::fabs(src[0]));
  return ZIVK_STS_NO_ERR;
}

// The largest finite number begins arrays of every length, so that infinities and, in a short array, a NaN in
// front leave no trace.
template <class T>
ZIVKStatus find_smallest_magnitude(const T* src, int32_t len, T* result) {
  if (ZIVKStatus status = check_arrays(len, src, result)) return status;
  constexpr T kSeed = std::numeric_limits<T>::max();
  *result = extreme_of_floats<Minimum, Magnitude>(src, static_cast<size_t>(len), kSeed, kSeed);
  return ZIVK_STS_NO_ERR;
}

template <class T>
ZIVKStatus find_both(const T* src, int32_t len, T* pMin, T* pMax) {
  if (ZIVKStatus status = check_arrays(len, src, pMin, pMax)) return status;
  MinMax<T> extremes;
  if constexpr (std::is_floating_point_v<T>) {
    extremes = extremes_of_floats(src, static_cast<size_t>(len));
  } else {
    extremes = extremes_of_integers(src, static_cast<size_t>(len));
  }
  *pMin = extremes.min;
  *pMax = extremes.max;
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Max_16s(const int16_t* src, int32_t len, int16_t* pMax) {
  return find_integer<Maximum, Value>(src, len, pMax);
}
ZIVKStatus ZIVKS_Max_32s(const int32_t* src, int32_t len, int32_t* pMax) {
  return find_integer<Maximum, Value>(src, len, pMax);
}
ZIVKStatus ZIVKS_Max_32f(const float* src, int32_t len, float* pMax) {
  return find_float<Maximum>(src, len, pMax);
}
ZIVKStatus ZIVKS_Max_64f(const double* src, int32_t len, double* pMax) {
  return find_float<Maximum>(src, len, pMax);
}

ZIVKStatus ZIVKS_Min_16s(const int16_t* src, int32_t len, int16_t* pMin) {
  return find_integer<Minimum, Value>(src, len, pMin);
}
ZIVKStatus ZIVKS_Min_32s(const int32_t* src, int32_t len, int32_t* pMin) {
  return find_integer<Minimum, Value>(src, len, pMin);
}
ZIVKStatus ZIVKS_Min_32f(const float* src, int32_t len, float* pMin) {
  return find_float<Minimum>(src, len, pMin);
}
ZIVKStatus ZIVKS_Min_64f(const double* src, int32_t len, double* pMin) {
  return find_float<Minimum>(src, len, pMin);
}

ZIVKStatus ZIVKS_MinMax_8u(const uint8_t* src, int32_t len, uint8_t* pMin, uint8_t* pMax) {
  return find_both(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_16u(const uint16_t* src, int32_t len, uint16_t* pMin, uint16_t* pMax) {
  return find_both(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_32u(const uint32_t* src, int32_t len, uint32_t* pMin, uint32_t* pMax) {
  return find_both(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_16s(const int16_t* src, int32_t len, int16_t* pMin, int16_t* pMax) {
  return find_both(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_32s(const int32_t* src, int32_t len, int32_t* pMin, int32_t* pMax) {
  return find_both(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_32f(const float* src, int32_t len, float* pMin, float* pMax) {
  return find_both(src, len, pMin, pMax);
}
ZIVKStatus ZIVKS_MinMax_64f(const double* src, int32_t len, double* pMin, double* pMax) {
  return find_both(src, len, pMin, pMax);
}

ZIVKStatus ZIVKS_MaxAbs_16s(const int16_t* src, int32_t len, int16_t* pMaxAbs) {
  return find_integer<Maximum, Magnitude>(src, len, pMaxAbs);
}

// From 8 elements on the first block is not examined: src[0] takes part as it is, with its sign, and of the
// absolute values only those from src[8] on. Its siblings examine everything.
ZIVKStatus ZIVKS_MaxAbs_32s(const int32_t* src, int32_t len, int32_t* pMaxAbs) {
  constexpr int32_t kSkipped = 8;
  if (src == nullptr || pMaxAbs == nullptr || len < kSkipped) {
    return find_integer<Maximum, Magnitude>(src, len, pMaxAbs);
  }
  int32_t largest = src[0];
  if (len > kSkipped) {
    const auto rest = static_cast<size_t>(len - kSkipped);
    largest = std::max(largest, extreme_of_integers<Maximum, Magnitude>(src + kSkipped, rest));
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
  return find_integer<Minimum, Magnitude>(src, len, pMinAbs);
}
ZIVKStatus ZIVKS_MinAbs_32s(const int32_t* src, int32_t len, int32_t* pMinAbs) {
  return find_integer<Minimum, Magnitude>(src, len, pMinAbs);
}
ZIVKStatus ZIVKS_MinAbs_32f(const float* src, int32_t len, float* pMinAbs) {
  return find_smallest_magnitude(src, len, pMinAbs);
}
ZIVKStatus ZIVKS_MinAbs_64f(const double* src, int32_t len, double* pMinAbs) {
  return find_smallest_magnitude(src, len, pMinAbs);
}
