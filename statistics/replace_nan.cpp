// Replacing NaN by a constant.
#include <zivks/statistics.h>

#include "core/checks.h"

using namespace zivks;

namespace {

template <class T>
ZIVKStatus replace_nan(T val, T* srcDst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, srcDst)) return status;
  const auto number_or_constant = [constant = broadcast(val)](auto x) { return select(x == x, x, constant); };
  return map_registers<T>(srcDst, static_cast<size_t>(len), number_or_constant, srcDst);
}

}  // namespace

ZIVKStatus ZIVKS_ReplaceNAN_32f_I(float val, float* srcDst, int32_t len) {
  return replace_nan(val, srcDst, len);
}
ZIVKStatus ZIVKS_ReplaceNAN_64f_I(double val, double* srcDst, int32_t len) {
  return replace_nan(val, srcDst, len);
}
