// Set and Zero.
#include <zivks/movement.h>

#include <cstring>

#include "core/checks.h"

using namespace zivks;

namespace {

template <class T>
ZIVKStatus set_bytes(uint8_t byte, T* dst, int32_t len) {
  if (ZIVKStatus status = check_arrays(len, dst)) return status;
  std::memset(dst, byte, static_cast<size_t>(len) * sizeof(T));
  return ZIVK_STS_NO_ERR;
}

// Elements are bits here: unsigned words of their width, or two 64-bit words for the widest.
template <class T>
ZIVKStatus set(T val, T* dst, int32_t len) {
  // memset is faster than any loop of stores, so it takes every value whose bytes are all alike.
  uint8_t bytes[sizeof(T)];
  std::memcpy(bytes, &val, sizeof(T));
  if (std::memcmp(bytes, bytes + 1, sizeof(T) - 1) == 0) return set_bytes(bytes[0], dst, len);

  if (ZIVKStatus status = check_arrays(len, dst)) return status;
  using Word = UnsignedOf<sizeof(T)>;
  constexpr size_t kWords = sizeof(T) / sizeof(Word);
  const auto pattern =
      interleave(broadcast(read<Word>(bytes)), broadcast(read<Word>(bytes + sizeof(T) - sizeof(Word)))).first;
  const size_t bytes_in_all = static_cast<size_t>(len) * sizeof(T);
  if (fill_past_caches(dst, bytes_in_all, U64(pattern), sizeof(T))) return ZIVK_STS_NO_ERR;
  return map(reinterpret_cast<Word*>(dst), kWords * static_cast<size_t>(len), unchanged,
             Repeated<Word, kWords>{pattern});
}

}  // namespace

ZIVKStatus ZIVKS_Set_8u(uint8_t val, uint8_t* dst, int32_t len) { return set_bytes(val, dst, len); }
ZIVKStatus ZIVKS_Set_16s(int16_t val, int16_t* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_32s(int32_t val, int32_t* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_32f(float val, float* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_64s(int64_t val, int64_t* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_64f(double val, double* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_16sc(ZIVK16sc val, ZIVK16sc* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_32sc(ZIVK32sc val, ZIVK32sc* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_32fc(ZIVK32fc val, ZIVK32fc* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_64sc(ZIVK64sc val, ZIVK64sc* dst, int32_t len) { return set(val, dst, len); }
ZIVKStatus ZIVKS_Set_64fc(ZIVK64fc val, ZIVK64fc* dst, int32_t len) { return set(val, dst, len); }

ZIVKStatus ZIVKS_Zero_8u(uint8_t* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_16s(int16_t* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_32s(int32_t* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_32f(float* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_64s(int64_t* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_64f(double* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_16sc(ZIVK16sc* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_32sc(ZIVK32sc* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_32fc(ZIVK32fc* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_64sc(ZIVK64sc* dst, int32_t len) { return set_bytes(0, dst, len); }
ZIVKStatus ZIVKS_Zero_64fc(ZIVK64fc* dst, int32_t len) { return set_bytes(0, dst, len); }
