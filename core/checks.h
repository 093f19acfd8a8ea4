// The argument checks that an exported function opens with.
#ifndef ZIVKS_CORE_CHECKS_H
#define ZIVKS_CORE_CHECKS_H

#include <zivks/types.h>

#include "core/loops.h"

namespace zivks {

// Whether an operand of a loop, or an array, is missing.
template <class T>
ZIVKS_INLINE bool is_null(const T* array) {
  return array == nullptr;
}
template <class Operand, class = typename Operand::Element>
ZIVKS_INLINE bool is_null(Operand operand) {
  return operand.memory() == nullptr;
}
template <class T>
ZIVKS_INLINE bool is_null(SplitArrays<T> arrays) {
  return is_null(arrays.re) || is_null(arrays.im);
}

// The checks of every function with arrays and a length, in their order: pointers, then length.
template <class... Operands>
ZIVKS_INLINE ZIVKStatus check_arrays(int32_t len, Operands... operand) {
  if ((is_null(operand) || ...)) return ZIVK_STS_NULL_PTR_ERR;
  if (len < 1) return ZIVK_STS_SIZE_ERR;
  return ZIVK_STS_NO_ERR;
}

// What most element-wise functions do: check, then map.
template <class Destination, class Kernel, class... Sources>
ZIVKS_INLINE ZIVKStatus map_arrays(Destination dst, int32_t len, Kernel kernel, Sources... src) {
  if (ZIVKStatus status = check_arrays(len, src..., dst)) return status;
  return map(dst, static_cast<size_t>(len), kernel, src...);
}

}  // namespace zivks

#endif
