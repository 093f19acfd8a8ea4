// Copy and Move. Elements are bytes here.
#include <zivks/movement.h>

#include <cstring>
#include <functional>

#include "core/checks.h"
#include "core/copy.h"

using namespace zivks;

namespace {

template <size_t prefetch_distance>
void move_upward(const uint8_t* src, uint8_t* dst, size_t bytes) {
  copy_upward(dst, bytes, prefetched<prefetch_distance>(src));
}

// Moves registers that end at byte `left`, and says how many bytes are left below them.
template <size_t registers>
ZIVKS_INLINE size_t move_below(const uint8_t* src, uint8_t* dst, size_t left) {
  constexpr size_t kBytes = registers * kRegisterBytes;
  Array<uint8_t>{dst}.store<kBytes>(left - kBytes, Array<const uint8_t>{src}.load<kBytes>(left - kBytes));
  return left - kBytes;
}

// From the last byte down: right unless `dst` lies below `src` in one array. The hints, however, climb from
// the start of the array.
template <size_t prefetch_distance>
void move_downward(const uint8_t* src, uint8_t* dst, size_t bytes) {
  if constexpr (!kPrefetches) {
    std::memmove(dst, src, bytes);
    return;
  }
  constexpr size_t kTurn = kTurnRegisters * kRegisterBytes;
  if (bytes <= kTurn) return move_upward<0>(src, dst, bytes);  // loads all before it stores
  const U8 first = load(src);
  size_t left = bytes;
  do {
    prefetch_ahead<prefetch_distance, kTurn>(src + (bytes - left));
    left = move_below<kTurnRegisters>(src, dst, left);
  } while (left >= kTurn);
  if (left > 4 * kRegisterBytes) left = move_below<4>(src, dst, left);
  if (left > 2 * kRegisterBytes) left = move_below<2>(src, dst, left);
  if (left > kRegisterBytes) move_below<1>(src, dst, left);
  store(dst, first);
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
  const auto move_bytes =
      std::greater<const T*>()(src, dst) ? move_upward<upward_distance> : move_downward<downward_distance>;
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
