// Networks of minima and maxima that sort, merge and select registers lane by lane.
#ifndef ZIVKS_FILTERS_MEDIAN_NETWORKS_H
#define ZIVKS_FILTERS_MEDIAN_NETWORKS_H

#include "core/vector/register.h"

namespace zivks {

// What the networks exchange by. A NaN among floats comes out of every network that it enters, and -0 is below +0.
struct AnyValues {
  template <class R>
  static R lower(R a, R b) {
    return minimum(a, b);
  }
  template <class R>
  static R upper(R a, R b) {
    return maximum(a, b);
  }
};

// The same for integers, and for floats without NaN whose zeros have one sign. A NaN may change the medians of windows that
// it is in, and no others; zeros of both signs may be taken for each other.
struct PlainValues {
  template <class R>
  static R lower(R a, R b) {
    if constexpr (std::is_floating_point_v<ElementOf<R>>) return lesser(a, b);
    if constexpr (!std::is_floating_point_v<ElementOf<R>>) return minimum(a, b);
  }
  template <class R>
  static R upper(R a, R b) {
    if constexpr (std::is_floating_point_v<ElementOf<R>>) return greater(a, b);
    if constexpr (!std::is_floating_point_v<ElementOf<R>>) return maximum(a, b);
  }
};

// Registers of which each lane is looked at by itself, from the first register to the last.
template <class R, size_t n>
struct Column {
  R at[n];
};

// Every second one from number `first`, 0 or 1, on.
template <size_t first, class R, size_t n, size_t... I>
ZIVKS_INLINE Column<R, sizeof...(I)> every_second_over(std::index_sequence<I...>, const Column<R, n>& a) {
  return {{a.at[2 * I + first]...}};
}
template <size_t first, class R, size_t n>
ZIVKS_INLINE auto every_second(const Column<R, n>& a) {
  return every_second_over<first>(std::make_index_sequence<(n + 1 - first) / 2>(), a);
}

// Number i of two interleaved sorted lists, the last step of a merge.
template <class Order, size_t i, class R, size_t evens, size_t odds>
ZIVKS_INLINE R interleaved_at(const Column<R, evens>& even, const Column<R, odds>& odd) {
  constexpr size_t above = (i + 1) / 2, below = above - 1;
  if constexpr (i == 0) {
    return even.at[0];
  } else if constexpr (above >= evens) {
    return odd.at[below];
  } else if constexpr (below >= odds) {
    return even.at[above];
  } else if constexpr (i % 2 == 1) {
    return Order::lower(even.at[above], odd.at[below]);
  } else {
    return Order::upper(even.at[above], odd.at[below]);
  }
}
template <class Order, class R, size_t evens, size_t odds, size_t... I>
ZIVKS_INLINE Column<R, sizeof...(I)> interleave_sorted(std::index_sequence<I...>,
                                                       const Column<R, evens>& even,
                                                       const Column<R, odds>& odd) {
  return {{interleaved_at<Order, I>(even, odd)...}};
}

// Batcher's odd-even merge. The compiler leaves out what no used result depends on.
template <class Order, class R, size_t n, size_t k>
ZIVKS_INLINE Column<R, n + k> merge(const Column<R, n>& a, const Column<R, k>& b) {
  static_assert(n >= k);
  if constexpr (n == 1) {
    return {{Order::lower(a.at[0], b.at[0]), Order::upper(a.at[0], b.at[0])}};
  } else if constexpr (k == 1) {
    return interleave_sorted<Order>(std::make_index_sequence<n + k>(), merge<Order>(every_second<0>(a), b),
                                    every_second<1>(a));
  } else {
    return interleave_sorted<Order>(std::make_index_sequence<n + k>(),
                                    merge<Order>(every_second<0>(a), every_second<0>(b)),
                                    merge<Order>(every_second<1>(a), every_second<1>(b)));
  }
}

// The `count` registers from number `first` on.
template <size_t first, class R, size_t n, size_t... I>
ZIVKS_INLINE Column<R, sizeof...(I)> part_over(std::index_sequence<I...>, const Column<R, n>& a) {
  return {{a.at[first + I]...}};
}
template <size_t first, size_t count, class R, size_t n>
ZIVKS_INLINE Column<R, count> part_of(const Column<R, n>& a) {
  return part_over<first>(std::make_index_sequence<count>(), a);
}

// By 3, 5, 9, 12 and 16 exchanges for 3 to 7 registers, which are the fewest possible.
template <class Order, class R, size_t n>
ZIVKS_INLINE Column<R, n> sorted(const Column<R, n>& a) {
  constexpr size_t half = (n + 1) / 2;
  if constexpr (n == 1) {
    return a;
  } else {
    return merge<Order>(sorted<Order>(part_of<0, half>(a)), sorted<Order>(part_of<half, n - half>(a)));
  }
}

template <class Order, class R>
ZIVKS_INLINE R median_of_3(R a, R b, R c) {
  return Order::upper(Order::lower(a, b), Order::lower(Order::upper(a, b), c));
}

template <class Order, class R>
ZIVKS_INLINE R median_of_5(R a, R b, R c, R d, R e) {
  const R low = Order::upper(Order::lower(a, b), Order::lower(c, d));
  const R high = Order::lower(Order::upper(a, b), Order::upper(c, d));
  return median_of_3<Order>(low, high, e);
}

// Of any five of the seven samples neither the smallest nor the largest is the median. They are dropped, and the median of
// the other three and of the last two is that of all.
template <class Order, class R>
ZIVKS_INLINE R median_of_7(R a, R b, R c, R d, R e, R f, R g) {
  const auto ab = sorted<Order>(Column<R, 2>{{a, b}}), cd = sorted<Order>(Column<R, 2>{{c, d}});
  const auto low = sorted<Order>(Column<R, 2>{{ab.at[0], cd.at[0]}});
  const auto high = sorted<Order>(Column<R, 2>{{ab.at[1], cd.at[1]}});
  const R fifth = Order::lower(Order::upper(low.at[0], e), high.at[1]);
  return median_of_5<Order>(low.at[1], high.at[0], fifth, f, g);
}

}  // namespace zivks

#endif
