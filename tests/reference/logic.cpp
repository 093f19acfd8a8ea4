// Bitwise operations, and shifts as multiplication and division by powers of two.
#include <algorithm>

#include "reference/reference.h"

namespace zivks_test {
namespace {

template <class T>
T bitwise_and(T a, T b) {
  return static_cast<T>(a & b);
}
template <class T>
T bitwise_or(T a, T b) {
  return static_cast<T>(a | b);
}
template <class T>
T bitwise_xor(T a, T b) {
  return static_cast<T>(a ^ b);
}
template <class T>
T complement(T a) {
  return static_cast<T>(~a);
}

// Step by step, so that counts beyond the width need no rule of their own.
constexpr int32_t kMostSteps = 64;

template <class T>
T shifted_left(T value, int32_t shift) {
  for (int32_t i = 0; i < std::min(shift, kMostSteps); ++i) {
    value = static_cast<T>(static_cast<BitsOf<T>>(value) * 2U);
  }
  return value;
}
template <class T>
T shifted_right(T value, int32_t shift) {
  for (int32_t i = 0; i < std::min(shift, kMostSteps); ++i) {
    const bool below_a_whole = value < 0 && value % 2 != 0;
    value = static_cast<T>(value / 2 - (below_a_whole ? 1 : 0));
  }
  return value;
}

template <class T>
void add_bitwise(References& references, const std::string& type) {
  references["ZIVKS_And_" + type] = references["ZIVKS_AndC_" + type] = elementwise(bitwise_and<T>);
  references["ZIVKS_Or_" + type] = references["ZIVKS_OrC_" + type] = elementwise(bitwise_or<T>);
  references["ZIVKS_Xor_" + type] = references["ZIVKS_XorC_" + type] = elementwise(bitwise_xor<T>);
  references["ZIVKS_Not_" + type] = elementwise(complement<T>);
}

template <class T>
void add_shifts(References& references, const std::string& type) {
  references["ZIVKS_LShiftC_" + type] = elementwise(shifted_left<T>);
  references["ZIVKS_RShiftC_" + type] = elementwise(shifted_right<T>);
}

}  // namespace

References logic_references() {
  References references;
  add_bitwise<uint8_t>(references, "8u");
  add_bitwise<uint16_t>(references, "16u");
  add_bitwise<uint32_t>(references, "32u");
  add_shifts<uint8_t>(references, "8u");
  add_shifts<uint16_t>(references, "16u");
  add_shifts<int16_t>(references, "16s");
  add_shifts<int32_t>(references, "32s");
  return references;
}

}  // namespace zivks_test
