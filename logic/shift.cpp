// Shifts of all elements by one count.
#include <zivks/logic.h>
#include <zivks/movement.h>

#include "core/checks.h"
#include "core/copy.h"

using namespace zivks;

namespace {

constexpr auto to_the_left = [](auto a, int count) { return shift_left(a, count); };
constexpr auto to_the_right = [](auto a, int count) { return shift_right(a, count); };

template <class T>
inline constexpr int32_t kBits = 8 * int32_t{sizeof(T)};

template <class T>
ZIVKStatus check_shift(const T* src, int32_t shift, T* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  return shift < 0 ? ZIVK_STS_SHIFT_ERR : ZIVK_STS_NO_ERR;
}

// A count below the width. A count of 0 copies.
template <class T, class Kernel>
ZIVKStatus shift_elements(const T* src, int32_t shift, T* dst, int32_t len, Kernel kernel) {
  const auto source = prefetched<128 * sizeof(T), Prefetch::kReadToSecondLevelCache>(src);
  const auto count = static_cast<size_t>(len);
  if (shift != 0)
    return map(
        dst, count, [=](auto a) { return kernel(a, shift); }, source);
  copy_upward(dst, count, source);
  return ZIVK_STS_NO_ERR;
}

// From the width on nothing is left of an element, and the source is not read.
template <class T, class Zero, class Kernel>
ZIVKStatus shift_out(const T* src, int32_t shift, T* dst, int32_t len, Zero zero, Kernel kernel) {
  if (ZIVKStatus status = check_shift(src, shift, dst, len)) return status;
  if (shift >= kBits<T>) return zero(dst, len);
  using Unsigned = UnsignedOf<sizeof(T)>;  // whose left shift is that of signed elements too
  return shift_elements(reinterpret_cast<const Unsigned*>(src), shift, reinterpret_cast<Unsigned*>(dst), len,
                        kernel);
}

// From the width on an element's sign is left.
template <class T>
ZIVKStatus shift_right_signed(const T* src, int32_t shift, T* dst, int32_t len) {
  if (ZIVKStatus status = check_shift(src, shift, dst, len)) return status;
  return shift_elements(src, std::min(shift, kBits<T> - 1), dst, len, to_the_right);
}

// Zero has no form for this type.
ZIVKStatus zero_16u(uint16_t* dst, int32_t len) {
  std::memset(dst, 0, static_cast<size_t>(len) * sizeof(uint16_t));
  return ZIVK_STS_NO_ERR;
}

// In place a count of 0 returns at once; for others the twin checks the sign of the count.
template <class T, class Twin>
ZIVKStatus shift_in_place(int32_t shift, T* srcDst, int32_t len, Twin twin) {
  if (ZIVKStatus status = check_arrays(len, srcDst)) return status;
  return shift == 0 ? ZIVK_STS_NO_ERR : twin(srcDst, shift, srcDst, len);
}

}  // namespace

ZIVKStatus ZIVKS_LShiftC_8u(const uint8_t* src, int32_t shift, uint8_t* dst, int32_t len) {
  return shift_out(src, shift, dst, len, ZIVKS_Zero_8u, to_the_left);
}
ZIVKStatus ZIVKS_LShiftC_16u(const uint16_t* src, int32_t shift, uint16_t* dst, int32_t len) {
  return shift_out(src, shift, dst, len, zero_16u, to_the_left);
}
ZIVKStatus ZIVKS_LShiftC_16s(const int16_t* src, int32_t shift, int16_t* dst, int32_t len) {
  return shift_out(src, shift, dst, len, ZIVKS_Zero_16s, to_the_left);
}
ZIVKStatus ZIVKS_LShiftC_32s(const int32_t* src, int32_t shift, int32_t* dst, int32_t len) {
  return shift_out(src, shift, dst, len, ZIVKS_Zero_32s, to_the_left);
}

ZIVKStatus ZIVKS_LShiftC_8u_I(int32_t shift, uint8_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_LShiftC_8u);
}
ZIVKStatus ZIVKS_LShiftC_16u_I(int32_t shift, uint16_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_LShiftC_16u);
}
ZIVKStatus ZIVKS_LShiftC_16s_I(int32_t shift, int16_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_LShiftC_16s);
}
ZIVKStatus ZIVKS_LShiftC_32s_I(int32_t shift, int32_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_LShiftC_32s);
}

ZIVKStatus ZIVKS_RShiftC_8u(const uint8_t* src, int32_t shift, uint8_t* dst, int32_t len) {
  return shift_out(src, shift, dst, len, ZIVKS_Zero_8u, to_the_right);
}
ZIVKStatus ZIVKS_RShiftC_16u(const uint16_t* src, int32_t shift, uint16_t* dst, int32_t len) {
  return shift_out(src, shift, dst, len, zero_16u, to_the_right);
}
ZIVKStatus ZIVKS_RShiftC_16s(const int16_t* src, int32_t shift, int16_t* dst, int32_t len) {
  return shift_right_signed(src, shift, dst, len);
}
ZIVKStatus ZIVKS_RShiftC_32s(const int32_t* src, int32_t shift, int32_t* dst, int32_t len) {
  return shift_right_signed(src, shift, dst, len);
}

ZIVKStatus ZIVKS_RShiftC_8u_I(int32_t shift, uint8_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_RShiftC_8u);
}
ZIVKStatus ZIVKS_RShiftC_16u_I(int32_t shift, uint16_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_RShiftC_16u);
}
ZIVKStatus ZIVKS_RShiftC_16s_I(int32_t shift, int16_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_RShiftC_16s);
}
ZIVKStatus ZIVKS_RShiftC_32s_I(int32_t shift, int32_t* srcDst, int32_t len) {
  return shift_in_place(shift, srcDst, len, ZIVKS_RShiftC_32s);
}
