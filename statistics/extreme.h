// What the searches for extreme values, with and without a position, have in common.
#ifndef ZIVKS_STATISTICS_EXTREME_H
#define ZIVKS_STATISTICS_EXTREME_H

#include <cmath>

#include "core/reduce.h"
#include "statistics/range.h"

namespace zivks {

// Which end of a range is asked for. Elements and registers are compared alike.
struct Smallest {
  template <class T>
  static T of(const Range<T>& range) {
    return range.minimum();
  }
  template <class T>
  static Register<T> lanes_of(const Range<T>& range) {
    return range.minima();
  }
  template <class T>
  static auto beats(T candidate, T current) {
    return candidate < current;
  }
};
struct Largest {
  template <class T>
  static T of(const Range<T>& range) {
    return range.maximum();
  }
  template <class T>
  static Register<T> lanes_of(const Range<T>& range) {
    return range.maxima();
  }
  template <class T>
  static auto beats(T candidate, T current) {
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

template <class Measure>
inline constexpr auto include = [](auto range, auto x) { return range.with(Measure::of(x)); };
inline constexpr auto include_range = [](auto a, auto b) { return a.with(b); };

// The range of `start` and of the measures of an array of at least one register; range_of_stretch() is for
// pieces of one.
template <class Measure, class T>
ZIVKS_INLINE Range<T> range_of_array(const T* src, size_t len, Range<T> start) {
  return reduce_array(src, len, start, include<Measure>, include_range);
}
template <class Measure, size_t distance, class T>
ZIVKS_INLINE Range<T> range_of_stretch(const T* src, size_t len, Range<T> start) {
  return reduce_registers<distance>(src, len, start, include<Measure>, include_range);
}

// Floats are examined in whole blocks of 32 bytes, and the rest, the tail, by other rules.
template <class T>
constexpr size_t kBlock = 32 / sizeof(T);

template <class T>
constexpr size_t count_in_blocks(size_t len) {
  return len & ~(kBlock<T> - 1);
}

template <class T>
using Block = Lanes<T, kBlock<T>>;

template <class T>
inline constexpr auto kBlockParts = std::make_index_sequence<Block<T>::kParts>();

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
    if (len > N) return array.template load_ends<B, N>(len);
    const Register<T> all = load_repeatedly<N / 2>(src, len);
    return {{all, all}};
  }
}

template <class T, size_t... K>
ZIVKS_INLINE Range<T> range_of_block(Range<T> range, Block<T> block, std::index_sequence<K...>) {
  ((range = range.with(block.part[K])), ...);
  return range;
}
template <class T>
ZIVKS_INLINE Range<T> range_of_block(Block<T> block) {
  return range_of_block(Range<T>::of(block.part[0]), block, kBlockParts<T>);
}

}  // namespace zivks

#endif
