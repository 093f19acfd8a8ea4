#include "reference/reference.h"

namespace zivks_test {
namespace {

template <class T>
T same(T value) {
  return value;
}
template <class T>
T zero() {
  return T{};
}

template <class T>
void add_type(References& references, const std::string& type) {
  references["ZIVKS_Copy_" + type] = elementwise(same<T>);
  references["ZIVKS_Move_" + type] = elementwise(same<T>);
  references["ZIVKS_Set_" + type] = elementwise(same<T>);
  references["ZIVKS_Zero_" + type] = elementwise(zero<T>);
}

}  // namespace

References copy_references() {
  References references;
  add_type<uint8_t>(references, "8u");
  add_type<int16_t>(references, "16s");
  add_type<int32_t>(references, "32s");
  add_type<float>(references, "32f");
  add_type<int64_t>(references, "64s");
  add_type<double>(references, "64f");
  add_type<ZIVK16sc>(references, "16sc");
  add_type<ZIVK32sc>(references, "32sc");
  add_type<ZIVK32fc>(references, "32fc");
  add_type<ZIVK64sc>(references, "64sc");
  add_type<ZIVK64fc>(references, "64fc");
  return references;
}

}  // namespace zivks_test
