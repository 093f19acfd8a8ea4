// Rounding of scaled floating-point values over arrays, in a mode that the caller selects.
#ifndef ZIVKS_CONVERT_ROUNDING_H
#define ZIVKS_CONVERT_ROUNDING_H

#include <zivks/types.h>

#include <type_traits>

#include "core/loops.h"
#include "core/rounding.h"

namespace zivks {

// A multiplication, for an element and for lanes.
template <class F>
ZIVKS_INLINE F times(F a, F multiplier) {
  return a * multiplier;
}
template <class F, size_t N>
ZIVKS_INLINE Lanes<F, N> times(Lanes<F, N> a, F multiplier) {
  return a * broadcast(multiplier);
}

// dst[i] = product(src[i]), rounded and clamped. `product` gives floats, for an element and for lanes of
// them.
//
// Blocks of B elements and the tail differ for products in float64 that are rounded to nearest.
template <ZIVKRoundMode mode, size_t B, class S, class T, class Product>
void map_rounded(T* dst, size_t len, Product product, const S* src) {
  const auto round = [product](auto a) ZIVKS_INLINE_LAMBDA { return round_saturating<T, mode>(product(a)); };
  constexpr bool kToNearest = mode == ZIVK_RND_NEAR || mode == kCurrentMode;
  if constexpr (kToNearest && std::is_same_v<decltype(product(S{})), double>) {
    map_blocks<B>(
        dst, len, round, [product](S a) { return round_nearest_in_tail<T>(product(a)); }, src);
  } else {
    map(dst, len, round, src);
  }
}

}  // namespace zivks

#endif
