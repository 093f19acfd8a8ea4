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

// An order of values. States of a walk are in the order's own form: `enter` brings values into it, `leave`
// takes them out of it again.
struct Minimum {
  template <class R>
  static R enter(R value) {
    return value;
  }
  template <class R>
  static R keep(R a, R b) {
    return minimum(a, b);
  }
  template <class R>
  static auto leave(R state) {
    return reduce_minimum(state);
  }
  template <class T>
  static bool beats(T candidate, T current) {
    return candidate < current;
  }
};

// On x86-64 the maximum of floats is made of sign changes around the minimum; made once on the way in and
// once on the way out they cost next to nothing.
struct Maximum {
  template <class R>
  static constexpr bool kNegates = kMaximumNegates&& std::is_floating_point_v<ElementOf<R>>;

  template <class R>
  static R enter(R value) {
    if constexpr (kNegates<R>) return -value;
    if constexpr (!kNegates<R>) return value;
  }
  template <class R>
  static R keep(R a, R b) {
    if constexpr (kNegates<R>) return minimum(a, b);
    if constexpr (!kNegates<R>) return maximum(a, b);
  }
  template <class R>
  static auto leave(R state) {
    if constexpr (kNegates<R>) return -reduce_minimum(state);
    if constexpr (!kNegates<R>) return reduce_maximum(state);
  }
  template <class T>
  static bool beats(T candidate, T current) {
    return candidate > current;
  }
};

// What is compared: the elements as they are, or their absolute values.
struct Value {
  static constexpr bool kSigned = true;
  template <class R>
  static R of(R a) {
    return a;
  }
};

struct Magnitude {
  static constexpr bool kSigned = false;
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

// The states of both orders after all elements of an array of at least one register.
template <class T>
ZIVKS_INLINE MinMax<Register<T>> walk_both(const T* src, size_t len, Register<T> start) {
  using State = MinMax<Register<T>>;
  return reduce_registers(
      src, len, State{Minimum::enter(start), Maximum::enter(start)},
      [](State state, auto x) -> State {
        return {Minimum::keep(state.min, Minimum::enter(x)), Maximum::keep(state.max, Maximum::enter(x))};
      },
      [](State a, State b) -> State {
        return {Minimum::keep(a.min, b.min), Maximum::keep(a.max, b.max)};
      });
}

// --- Integers --------------------------------------------------------------------------

template <class Order, class Measure, class T>
T extreme_of_integers(const T* src, size_t len) {
  constexpr size_t N = kRegisterElements<T>;
  if (len < N) return Order::leave(Measure::of(load_repeatedly<N / 2>(src, len)));
  const auto keep = [](auto a, auto b) { return Order::keep(a, b); };
  return Order::leave(reduce_registers(
      src, len, Measure::of(load(src)), [=](auto state, auto x) { return keep(state, Measure::of(x)); },
      keep));
}

template <class T>
MinMax<T> extremes_of_integers(const T* src, size_t len) {
  constexpr size_t N = kRegisterElements<T>;
  const auto leave = [](MinMax<Register<T>> state) -> MinMax<T> {
    return {Minimum::leave(state.min), Maximum::leave(state.max)};
  };
  if (len < N) {
    const Register<T> all = load_repeatedly<N / 2>(src, len);
    return leave({all, all});
  }
  return leave(walk_both(src, len, load(src)));
}

// --- Floating point --------------------------------------------------------------------

template <class T>
constexpr size_t kBlock = 32 / sizeof(T);

template <class T>
using Block = Lanes<T, kBlock<T>>;

// A block that holds all the elements behind the whole blocks of `src`. Its other elements are elements of
// the last whole block or, in an array shorter than a block, of the tail once more.
template <class T>
ZIVKS_INLINE Block<T> load_tail(const T* src, size_t len) {
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

// The state after the tail. A NaN in the tail is passed over; one in the state stays.
template <class Order, class Measure, class T, size_t... K>
ZIVKS_INLINE Register<T> absorb_tail(Register<T> state, Block<T> tail, std::index_sequence<K...>) {
  const auto number_or_state = [=](auto x) {
    const auto measure = Order::enter(Measure::of(x));
    return select(measure == measure, measure, state);
  };
  Register<T> result = state;
  ((result = Order::keep(result, number_or_state(tail.part[K]))), ...);
  return result;
}

// Comparisons element by element, from src[first] on. This is what a tail means; it matters where zeros meet,
// since the first of them counts, and its sign.
template <class Order, class T>
[[gnu::noinline]] T compare_each(T current, const T* src, size_t first, size_t len) {
  for (size_t i = first; i < len; ++i) {
    if (Order::beats(src[i], current)) current = src[i];
  }
  return current;
}

// The result of a walk: `blocks` is the state behind the `count` elements of the whole blocks, if there are
// any, and `all` the state behind the tail.
template <class Order, class Measure, class T>
ZIVKS_INLINE T result_of(Register<T> all, Register<T> blocks, size_t count, const T* src, size_t len) {
  const T result = Order::leave(all);
  // Which NaN the lanes deliver depends on the processor; the result does not.
  if (result != result) return std::numeric_limits<T>::quiet_NaN();
  if (Measure::kSigned && result == 0 && count < len) {
    const T before = count > 0 ? T(Order::leave(blocks)) : src[0];
    return compare_each<Order>(before, src, count, len);
  }
  return result;
}

// `block_seed` begins the examination of whole blocks, `short_seed` that of an array shorter than one.
template <class Order, class Measure, class T>
T extreme_of_floats(const T* src, size_t len, T block_seed, T short_seed) {
  const size_t count = len & ~(kBlock<T> - 1);
  Register<T> blocks;
  if (count > 0) {
    const auto keep = [](auto a, auto b) { return Order::keep(a, b); };
    blocks = reduce_registers(
        src, count, Order::enter(broadcast(block_seed)),
        [=](auto state, auto x) { return keep(state, Order::enter(Measure::of(x))); }, keep);
  } else {
    if (short_seed != short_seed) return short_seed;
    blocks = Order::enter(broadcast(short_seed));
  }
  Register<T> all = blocks;
  if (count < len) {
    all = absorb_tail<Order, Measure, T>(blocks, load_tail(src, len),
                                         std::make_index_sequence<Block<T>::kParts>());
  }
  return result_of<Order, Measure>(all, blocks, count, src, len);
}

template <class T>
MinMax<T> extremes_of_floats(const T* src, size_t len) {
  constexpr auto parts = std::make_index_sequence<Block<T>::kParts>();
  const size_t count = len & ~(kBlock<T> - 1);
  MinMax<Register<T>> blocks;
  if (count > 0) {
    blocks = walk_both(src, count, load(src));
  } else {
    if (src[0] != src[0]) return {src[0], src[0]};
    blocks = {Minimum::enter(broadcast(src[0])), Maximum::enter(broadcast(src[0]))};
  }
  MinMax<Register<T>> all = blocks;
  if (count < len) {
    const Block<T> tail = load_tail(src, len);
    all = {absorb_tail<Minimum, Value, T>(blocks.min, tail, parts),
           absorb_tail<Maximum, Value, T>(blocks.max, tail, parts)};
  }
  return {result_of<Minimum, Value>(all.min, blocks.min, count, src, len),
          result_of<Maximum, Value>(all.max, blocks.max, count, src, len)};
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
