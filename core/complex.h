// Complex elements seen as the parts that they consist of.
#ifndef ZIVKS_CORE_COMPLEX_H
#define ZIVKS_CORE_COMPLEX_H

#include <zivks/types.h>

#include "core/operands.h"

namespace zivks {

// An element is kCount parts of a real type; a real element is one part.
template <class T>
struct PartsOf {
  using Type = T;
  static constexpr size_t kCount = 1;
};
template <class T>
struct TwoParts {
  using Type = T;
  static constexpr size_t kCount = 2;
};
template <>
struct PartsOf<ZIVK16sc> : TwoParts<int16_t> {};
template <>
struct PartsOf<ZIVK32sc> : TwoParts<int32_t> {};
template <>
struct PartsOf<ZIVK32fc> : TwoParts<float> {};
template <>
struct PartsOf<ZIVK64fc> : TwoParts<double> {};

template <class T>
using Part = typename PartsOf<T>::Type;

template <class T>
const Part<T>* parts_of(const T* elements) {
  return reinterpret_cast<const Part<T>*>(elements);
}
template <class T>
Part<T>* parts_of(T* elements) {
  return reinterpret_cast<Part<T>*>(elements);
}
template <class T>
size_t count_parts(int32_t len) {
  return PartsOf<T>::kCount * static_cast<size_t>(len);
}

// A constant element, as its parts in turn.
template <class T>
Repeated<Part<T>, PartsOf<T>::kCount> repeated(T element) {
  if constexpr (PartsOf<T>::kCount == 1) {
    return {broadcast(element)};
  } else {
    return {interleave(broadcast(element.re), broadcast(element.im)).first};
  }
}

}  // namespace zivks

#endif
