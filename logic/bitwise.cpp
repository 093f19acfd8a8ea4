// And, Or, Xor and Not.
#include <zivks/logic.h>

#include "core/checks.h"

using namespace zivks;

namespace {

// Elements by which hints run ahead of the loads.
constexpr size_t kHintElements = 512, kHintElementsOfNot = 256;

constexpr auto bitwise_and = [](auto a, auto b) { return a & b; };
constexpr auto bitwise_or = [](auto a, auto b) { return a | b; };
constexpr auto bitwise_xor = [](auto a, auto b) { return a ^ b; };

template <class T, class Kernel>
ZIVKStatus combine_arrays(const T* src1, const T* src2, T* dst, int32_t len, Kernel kernel) {
  constexpr size_t kDistance = kHintElements * sizeof(T);
  return map_arrays(dst, len, kernel, prefetched<kDistance>(src1), prefetched<kDistance>(src2));
}

template <class T, class Kernel>
ZIVKStatus combine_constant(const T* src, T val, T* dst, int32_t len, Kernel kernel) {
  const Register<T> constant = broadcast(val);
  return map_arrays(
      dst, len, [=](auto a) { return kernel(a, constant); }, prefetched<kHintElements * sizeof(T)>(src));
}

template <class T>
ZIVKStatus complement(const T* src, T* dst, int32_t len) {
  return map_arrays(
      dst, len, [](auto a) { return ~a; }, prefetched<kHintElementsOfNot * sizeof(T)>(src));
}

}  // namespace

ZIVKStatus ZIVKS_And_8u(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_and);
}
ZIVKStatus ZIVKS_And_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_and);
}
ZIVKStatus ZIVKS_And_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_and);
}

ZIVKStatus ZIVKS_And_8u_I(const uint8_t* src, uint8_t* srcDst, int32_t len) {
  return ZIVKS_And_8u(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_And_16u_I(const uint16_t* src, uint16_t* srcDst, int32_t len) {
  return ZIVKS_And_16u(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_And_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len) {
  return ZIVKS_And_32u(src, srcDst, srcDst, len);
}

ZIVKStatus ZIVKS_AndC_8u(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_and);
}
ZIVKStatus ZIVKS_AndC_16u(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_and);
}
ZIVKStatus ZIVKS_AndC_32u(const uint32_t* src, uint32_t val, uint32_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_and);
}

ZIVKStatus ZIVKS_AndC_8u_I(uint8_t val, uint8_t* srcDst, int32_t len) {
  return ZIVKS_AndC_8u(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_AndC_16u_I(uint16_t val, uint16_t* srcDst, int32_t len) {
  return ZIVKS_AndC_16u(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_AndC_32u_I(uint32_t val, uint32_t* srcDst, int32_t len) {
  return ZIVKS_AndC_32u(srcDst, val, srcDst, len);
}

ZIVKStatus ZIVKS_Or_8u(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_or);
}
ZIVKStatus ZIVKS_Or_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_or);
}
ZIVKStatus ZIVKS_Or_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_or);
}

ZIVKStatus ZIVKS_Or_8u_I(const uint8_t* src, uint8_t* srcDst, int32_t len) {
  return ZIVKS_Or_8u(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Or_16u_I(const uint16_t* src, uint16_t* srcDst, int32_t len) {
  return ZIVKS_Or_16u(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Or_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len) {
  return ZIVKS_Or_32u(src, srcDst, srcDst, len);
}

ZIVKStatus ZIVKS_OrC_8u(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_or);
}
ZIVKStatus ZIVKS_OrC_16u(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_or);
}
ZIVKStatus ZIVKS_OrC_32u(const uint32_t* src, uint32_t val, uint32_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_or);
}

ZIVKStatus ZIVKS_OrC_8u_I(uint8_t val, uint8_t* srcDst, int32_t len) {
  return ZIVKS_OrC_8u(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_OrC_16u_I(uint16_t val, uint16_t* srcDst, int32_t len) {
  return ZIVKS_OrC_16u(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_OrC_32u_I(uint32_t val, uint32_t* srcDst, int32_t len) {
  return ZIVKS_OrC_32u(srcDst, val, srcDst, len);
}

ZIVKStatus ZIVKS_Xor_8u(const uint8_t* src1, const uint8_t* src2, uint8_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_xor);
}
ZIVKStatus ZIVKS_Xor_16u(const uint16_t* src1, const uint16_t* src2, uint16_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_xor);
}
ZIVKStatus ZIVKS_Xor_32u(const uint32_t* src1, const uint32_t* src2, uint32_t* dst, int32_t len) {
  return combine_arrays(src1, src2, dst, len, bitwise_xor);
}

ZIVKStatus ZIVKS_Xor_8u_I(const uint8_t* src, uint8_t* srcDst, int32_t len) {
  return ZIVKS_Xor_8u(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Xor_16u_I(const uint16_t* src, uint16_t* srcDst, int32_t len) {
  return ZIVKS_Xor_16u(src, srcDst, srcDst, len);
}
ZIVKStatus ZIVKS_Xor_32u_I(const uint32_t* src, uint32_t* srcDst, int32_t len) {
  return ZIVKS_Xor_32u(src, srcDst, srcDst, len);
}

ZIVKStatus ZIVKS_XorC_8u(const uint8_t* src, uint8_t val, uint8_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_xor);
}
ZIVKStatus ZIVKS_XorC_16u(const uint16_t* src, uint16_t val, uint16_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_xor);
}
ZIVKStatus ZIVKS_XorC_32u(const uint32_t* src, uint32_t val, uint32_t* dst, int32_t len) {
  return combine_constant(src, val, dst, len, bitwise_xor);
}

ZIVKStatus ZIVKS_XorC_8u_I(uint8_t val, uint8_t* srcDst, int32_t len) {
  return ZIVKS_XorC_8u(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_XorC_16u_I(uint16_t val, uint16_t* srcDst, int32_t len) {
  return ZIVKS_XorC_16u(srcDst, val, srcDst, len);
}
ZIVKStatus ZIVKS_XorC_32u_I(uint32_t val, uint32_t* srcDst, int32_t len) {
  return ZIVKS_XorC_32u(srcDst, val, srcDst, len);
}

ZIVKStatus ZIVKS_Not_8u(const uint8_t* src, uint8_t* dst, int32_t len) { return complement(src, dst, len); }
ZIVKStatus ZIVKS_Not_16u(const uint16_t* src, uint16_t* dst, int32_t len) {
  return complement(src, dst, len);
}
ZIVKStatus ZIVKS_Not_32u(const uint32_t* src, uint32_t* dst, int32_t len) {
  return complement(src, dst, len);
}

ZIVKStatus ZIVKS_Not_8u_I(uint8_t* srcDst, int32_t len) { return ZIVKS_Not_8u(srcDst, srcDst, len); }
