#include "reference/reference.h"

namespace zivks_test {
namespace {

template <class C>
PartOf<C> real(C value) {
  return value.re;
}
template <class C>
PartOf<C> imaginary(C value) {
  return value.im;
}
template <class C>
std::pair<PartOf<C>, PartOf<C>> split(C value) {
  return {value.re, value.im};
}
template <class C>
C merge(PartOf<C> re, PartOf<C> im) {
  return {re, im};
}

template <class T>
T negate(T value) {
  if constexpr (std::is_floating_point_v<T>) {  // only the sign bit changes, of a NaN too
    return bit_cast<T>(bit_cast<BitsOf<T>>(value) ^ (BitsOf<T>{1} << (8 * sizeof(T) - 1)));
  } else {
    return value == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : static_cast<T>(-value);
  }
}
template <class C>
C conjugate(C value) {
  return {value.re, negate(value.im)};
}

template <class C>
void add_type(References& references, const std::string& complex_type, const std::string& part_type) {
  references["ZIVKS_Real_" + complex_type] = elementwise(real<C>);
  references["ZIVKS_Imag_" + complex_type] = elementwise(imaginary<C>);
  references["ZIVKS_CplxToReal_" + complex_type] = elementwise(split<C>);
  references["ZIVKS_RealToCplx_" + part_type] = elementwise(merge<C>);
  references["ZIVKS_Conj_" + complex_type] = elementwise(conjugate<C>);
}

}  // namespace

References complex_layout_references() {
  References references;
  add_type<ZIVK16sc>(references, "16sc", "16s");
  add_type<ZIVK32fc>(references, "32fc", "32f");
  add_type<ZIVK64fc>(references, "64fc", "64f");
  return references;
}

}  // namespace zivks_test
