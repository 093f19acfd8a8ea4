// Copy and Move.
//
// Elements are bytes here. The C library's memmove is the fastest way to move them; only the members that
// come with a prefetch distance walk by themselves, and only where there are hints at all.
#include <zivks/movement.h>

#include "core/checks.h"

using namespace zivks;

namespace {

[[maybe_unused]] void move_line(const uint8_t* src, uint8_t* dst) {
  Array<uint8_t>{dst}.store<kCacheLineBytes>(0, Array<const uint8_t>{src}.load<kCacheLineBytes>(0));
}

// From the first byte up, a line loaded whole before it is stored: right unless `dst` lies above `src` in one
// array.
template <size_t prefetch_distance>
void move_upward(const uint8_t* src, uint8_t* dst, size_t bytes) {
  size_t done = 0;
  if constexpr (kPrefetches && prefetch_distance > 0) {
    for (; done + kCacheLineBytes <= bytes; done += kCacheLineBytes) {
      prefetch_ahead<prefetch_distance>(src + done);
      move_line(src + done, dst + done);
    }
  }
  std::memmove(dst + done, src + done, bytes - done);
}

// From the last byte down: right unless `dst` lies below `src` in one array. The hints, however, climb from
// the start of the array.
template <size_t prefetch_distance>
void move_downward(const uint8_t* src, uint8_t* dst, size_t bytes) {
  size_t left = bytes;
  if constexpr (kPrefetches && prefetch_distance > 0) {
    for (; left >= kCacheLineBytes; left -= kCacheLineBytes) {
      prefetch_ahead<prefetch_distance>(src + (bytes - left));
      move_line(src + left - kCacheLineBytes, dst + left - kCacheLineBytes);
    }
  }
  std::memmove(dst, src, left);
}

template <size_t prefetch_distance = 0, class T>
ZIVKStatus copy(const T* src, T* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  move_upward<prefetch_distance>(reinterpret_cast<const uint8_t*>(src), reinterpret_cast<uint8_t*>(dst),
                                 static_cast<size_t>(len) * sizeof(T));
  return ZIVK_STS_NO_ERR;
}

template <size_t upward_distance = 0, size_t downward_distance = 0, class T>
ZIVKStatus move(const T* src, T* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, src, dst)) return status;
  const auto move_bytes = src > dst ? move_upward<upward_distance> : move_downward<downward_distance>;
  move_bytes(reinterpret_cast<const uint8_t*>(src), reinterpret_cast<uint8_t*>(dst),
             static_cast<size_t>(len) * sizeof(T));
  return ZIVK_STS_NO_ERR;
}

}  // namespace

ZIVKStatus ZIVKS_Copy_8u(const uint8_t* src, uint8_t* dst, int32_t len) { return copy<512>(src, dst, len); }
ZIVKStatus ZIVKS_Copy_16s(const int16_t* src, int16_t* dst, int32_t len) { return copy<1024>(src, dst, len); }
ZIVKStatus ZIVKS_Copy_32s(const int32_t* src, int32_t* dst, int32_t len) { return copy(src, dst, len); }
ZIVKStatus ZIVKS_Copy_32f(const float* src, float* dst, int32_t len) { return copy(src, dst, len); }
ZIVKStatus ZIVKS_Copy_64s(const int64_t* src, int64_t* dst, int32_t len) { return copy<4096>(src, dst, len); }
ZIVKStatus ZIVKS_Copy_64f(const double* src, double* dst, int32_t len) { return copy(src, dst, len); }
ZIVKStatus ZIVKS_Copy_16sc(const ZIVK16sc* src, ZIVK16sc* dst, int32_t len) {
  return copy<2048>(src, dst, len);
}
ZIVKStatus ZIVKS_Copy_32sc(const ZIVK32sc* src, ZIVK32sc* dst, int32_t len) {
  return copy<4096>(src, dst, len);
}
ZIVKStatus ZIVKS_Copy_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len) { return copy(src, dst, len); }
ZIVKStatus ZIVKS_Copy_64sc(const ZIVK64sc* src, ZIVK64sc* dst, int32_t len) { return copy(src, dst, len); }
ZIVKStatus ZIVKS_Copy_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len) { return copy(src, dst, len); }

ZIVKStatus ZIVKS_Move_8u(const uint8_t* src, uint8_t* dst, int32_t len) {
  return move<512, 528>(src, dst, len);
}
ZIVKStatus ZIVKS_Move_16s(const int16_t* src, int16_t* dst, int32_t len) { return move<1024>(src, dst, len); }
ZIVKStatus ZIVKS_Move_32s(const int32_t* src, int32_t* dst, int32_t len) { return move(src, dst, len); }
ZIVKStatus ZIVKS_Move_32f(const float* src, float* dst, int32_t len) { return move(src, dst, len); }
ZIVKStatus ZIVKS_Move_64s(const int64_t* src, int64_t* dst, int32_t len) { return move(src, dst, len); }
ZIVKStatus ZIVKS_Move_64f(const double* src, double* dst, int32_t len) { return move(src, dst, len); }
ZIVKStatus ZIVKS_Move_16sc(const ZIVK16sc* src, ZIVK16sc* dst, int32_t len) {
  return move<2048, 2064>(src, dst, len);
}
ZIVKStatus ZIVKS_Move_32sc(const ZIVK32sc* src, ZIVK32sc* dst, int32_t len) { return move(src, dst, len); }
ZIVKStatus ZIVKS_Move_32fc(const ZIVK32fc* src, ZIVK32fc* dst, int32_t len) { return move(src, dst, len); }
ZIVKStatus ZIVKS_Move_64sc(const ZIVK64sc* src, ZIVK64sc* dst, int32_t len) { return move(src, dst, len); }
ZIVKStatus ZIVKS_Move_64fc(const ZIVK64fc* src, ZIVK64fc* dst, int32_t len) { return move(src, dst, len); }
